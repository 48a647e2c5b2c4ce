/*
 * Conversion between RGB and the two uniform spaces of CIE 1976, L*u*v* and L*a*b*, white D65. LUV is at the depths 8u, 16u, 16s
 * and 32f, Lab at 8u and 32f, and at 16u with 8-bit BGR.
 *
 * R, G and B have the primaries of Recommendation ITU-R BT.709 and are taken as linear: nothing here undoes or applies a transfer
 * curve. They are first
 *
 *     X = 0.412453 R + 0.35758  G + 0.180423 B
 *     Y = 0.212671 R + 0.71516  G + 0.072169 B        on a scale where white is 1
 *     Z = 0.019334 R + 0.119193 G + 0.950227 B
 *
 * Names. RGB and BGR are the order of the colours in memory; L, U, V and L, a, b are always in this order. Black to white is 0 to
 * 255 at 8u, 0 to 65535 at 16u, -32768 to 32767 at 16s and 0 to 1 at 32f.
 *
 * Layouts, as the last part of a name gives them, for source and destination alike:
 *
 *     C3   three samples a pixel
 *     AC4  four samples a pixel, the fourth is alpha; a source's is not read, a destination's is kept
 *
 * The alpha that an AC4 destination keeps is rewritten with the value it held, so no other thread may write it during the call.
 *
 * Arguments. Pointers are to the top left pixel of the region and need no alignment, not even that of a sample. A step is the
 * distance in bytes from one row to the next; it may be negative (an image stored bottom-up) or zero. In LUV it loses the bits
 * below the size of a sample; in Lab it counts as it is. Nothing outside the region is read or written. Source and destination
 * must not overlap, but may be the same image where both have one depth.
 *
 * Rounding. Arithmetic is in single precision, every operation rounded by itself, to the nearest. Where LUV takes an approximate
 * reciprocal, as said below, its last bits depend on the make of an x86 processor, and others have the rounded quotient in its
 * place: a result that lies at the edge of an integer may differ by 1 between two makes, far outside of the colours of RGB by
 * more; of floats the last digits may. All other results, those of Lab and of 8-bit RGB to LUV among them, are the same on every
 * processor. On one processor no instruction set makes a difference.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr  a pointer is null
 *     zelStsSizeErr     width or height is below 1
 *     zelStsNoErr       otherwise
 *
 * Errors are reported in this order, and on an error nothing is written. Steps are not checked.
 */
#ifndef ZELCC_LAB_H
#define ZELCC_LAB_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB or BGR to LUV:
 *
 *     L = 116 Y^(1/3) - 16, or 903.3 Y where Y is at most 0.008856
 *     U = 13 L (4 X / D - 0.197839)
 *     V = 13 L (9 Y / D - 0.468342)        D = X + 15 Y + 3 Z
 *
 * L is 0 to 100, U -134 to 220 and V -140 to 122. At 32f they are stored as they are. Integers have these ranges on the whole
 * scale: at 8u 255 L / 100, 255 (U + 134) / 354 and 255 (V + 140) / 262, at 16u the same with 65535, at 16s 32768 less.
 *
 * Example: RGBToLUV_8u: (200, 100, 50) -> (187, 129, 174) in a 1 x 1 image; BGRToLUV_8u: (50, 100, 200) -> (187, 129, 174);
 * 16u: (40000, 20000, 10000) -> (43547, 32270, 43718); 16s: (7232, -12768, -22768) -> (10779, -498, 10950); RGBToLUV_32f: (0.5,
 * 0.25, 1) -> (66.3127, 15.8907, -88.8923); BGRToLUV_32f: (1, 0.25, 0.5) -> (66.3127, 15.8907, -88.8923).
 */

/**
 * 8-bit samples. L is cut off, U and V are rounded. The root is the power function of double precision with the exponent
 * 0.3333333432674408.
 */
ZEL_API ZelStatus zeliRGBToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToLUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToLUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * 16-bit samples. L and U are cut off and V is rounded. The root comes of a table of 128 rows and a series of the sixth degree,
 * and 1 / D is the approximate reciprocal of the processor with one step of Newton's. Black has no D: in the leading columns,
 * 4 * floor(width / 4), it has the U and V of gray, (0, 24807, 35019) at 16u, in the remaining ones all samples are lowest. A few
 * results differ by 1 between processors of different vendors.
 */
ZEL_API ZelStatus zeliRGBToLUV_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToLUV_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToLUV_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToLUV_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * Floats. The root comes of the same table, at most its last row, and a series of the eighth degree, 1 / D as at 16 bits. Black
 * has U and V 0. Results are not limited. The last digits of U and V differ between processors of different vendors.
 */
ZEL_API ZelStatus zeliRGBToLUV_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToLUV_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToLUV_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * LUV to RGB or BGR, limited to the scale. L below 0.00009 is black, whatever U and V are; otherwise
 *
 *     Y = ((L + 16) / 116)^3, or L / 903.3 where L is below 7.9996247
 *     u = U / (13 L) + 0.197839,  v = V / (13 L) + 0.468342        0.19783941 and 0.4683422 of integers
 *     w = Y / v, where a v nearly 0 is raised by 0.00009
 *     X = 2.25 u w,  Z = 3 w - 5 Y - X / 3
 *     R =  3.240479 X - 1.53715  Y - 0.498535 Z
 *     G = -0.969256 X + 1.875991 Y + 0.041556 Z
 *     B =  0.055648 X - 0.204043 Y + 1.057311 Z
 *
 * Example: LUVToRGB_8u: (187, 129, 174) -> (199, 99, 49) in a 1 x 1 image; LUVToBGR_8u: (187, 129, 174) -> (49, 99, 199); 16u:
 * (43547, 32270, 43718) -> (39998, 20000, 9999); 16s: (10779, -498, 10950) -> (7230, -12768, -22769); LUVToRGB_32f: (66.3127,
 * 15.8907, -88.8923) -> (0.5, 0.25, 1); LUVToBGR_32f: (66.3127, 15.8907, -88.8923) -> (1, 0.25, 0.5).
 */

/**
 * 8-bit samples, rounded. The leading columns, 8 * floor(width / 8), multiply by approximate reciprocals of the processor, which
 * are good to 12 bits, so that makes of processors differ by 1 in some pixels; the remaining ones divide.
 */
ZEL_API ZelStatus zeliLUVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * 16-bit samples, rounded. The leading columns, 4 * floor(width / 4), multiply by approximate reciprocals with one step of
 * Newton's, so that makes of processors differ by 1 in a few pixels; the remaining ones divide.
 */
ZEL_API ZelStatus zeliLUVToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats. */
ZEL_API ZelStatus zeliLUVToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLUVToBGR_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * RGB or BGR to Lab:
 *
 *     L = 116 f(Y) - 16, or 903.3 Y where Y is at most 0.008856
 *     a = 500 (f(X / 0.950456) - f(Y))
 *     b = 200 (f(Y) - f(Z / 1.08875394))
 *     f(v) = v^(1/3), or 7.787 v + 0.13793103 where v is at most 0.008856
 *
 * The root is the power function of double precision with the exponent 0.3333333432674408.
 *
 * Example: RGBToLab_8u: (200, 100, 50) -> (188, 145, 160) in a 1 x 1 image; BGRToLab_8u_: (50, 100, 200) -> (188, 145, 160);
 * 8u16u: (50, 100, 200) -> (48257, 36980, 40893); RGBToLab_32f: (0.5, 0.25, 1) -> (66.3127, 42.2814, -51.822); BGRToLab_32f:
 * (1, 0.25, 0.5) -> (66.3127, 42.2814, -51.822).
 */

/** 8-bit samples, rounded: 255 L / 100, a + 128 and b + 128. No colour goes beyond a byte. */
ZEL_API ZelStatus zeliRGBToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToLab_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** 8-bit samples to 16-bit ones, cut off: 65535 L / 100, 255 (a + 128) and 255 (b + 128). */
ZEL_API ZelStatus zeliBGRToLab_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats. L is 0 to 100. Nothing is limited. */
ZEL_API ZelStatus zeliRGBToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToLab_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * Lab to RGB or BGR. Roots are undone by cubes all through; the line near black is not, so dark colours don't come back.
 *
 *     fy = (L + 16) / 116,  fx = a / 500 + fy,  fz = fy - b / 200
 *     X = 0.950456 fx^3,  Y = fy^3,  Z = 1.0887539 fz^3        and R, G and B as from LUV
 *
 * Example: LabToRGB_8u: (188, 145, 160) -> (200, 100, 51) in a 1 x 1 image; LabToBGR_8u: (188, 145, 160) -> (51, 100, 200);
 * 16u8u: (48257, 36980, 40893) -> (49, 99, 199); LabToRGB_32f: (66.3127, 42.2814, -51.822) -> (0.5, 0.25, 1); LabToBGR_32f:
 * (66.3127, 42.2814, -51.822) -> (1, 0.25, 0.5).
 */

/** 8-bit samples, rounded and limited to a byte. */
ZEL_API ZelStatus zeliLabToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLabToBGR_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** 16-bit samples to 8-bit ones, cut off and limited to a byte: a result may be 1 below that of the same colour at 8u. */
ZEL_API ZelStatus zeliLabToBGR_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats. Nothing is limited. */
ZEL_API ZelStatus zeliLabToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliLabToBGR_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
