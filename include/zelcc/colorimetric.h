/*
 * Conversion between RGB and two linear spaces: CIE XYZ and Photo YCC, at the depths 8u, 16u, 16s and 32f.
 *
 * Samples are converted as they are: nothing here undoes or applies a transfer curve. XYZ in the sense of colorimetry comes out
 * of linear RGB, and Photo YCC is defined on encoded R'G'B'.
 *
 * Scales. Black to white is 0 to 255 at 8u, 0 to 65535 at 16u, -32768 to 32767 at 16s and 0 to 1 at 32f, for all channels.
 *
 * Layouts, as the last part of a name gives them, for source and destination alike:
 *
 *     C3   three samples a pixel: R, G, B and X, Y, Z or Y, C1, C2
 *     AC4  four samples a pixel, the fourth is alpha; a source's is not read, a destination's is kept
 *
 * The alpha that an AC4 destination keeps is rewritten with the value it held, so no other thread may write it during the call.
 *
 * Arguments. Pointers are to the top left pixel of the region and need no alignment, not even that of a sample. A step is the
 * distance in bytes from one row to the next; it may be negative (an image stored bottom-up) or zero; where a sample has 2 or 4
 * bytes, it loses the bits below that. Nothing outside the region is read or written. Source and destination must not overlap,
 * but may be the same image.
 *
 * Rounding. Sums of floats are made up from the left to the right, every operation rounded by itself, in the rounding mode of the
 * calling thread.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr  a pointer is null
 *     zelStsSizeErr     width or height is below 1
 *     zelStsNoErr       otherwise
 *
 * Errors are reported in this order, and on an error nothing is written. Steps are not checked.
 */
#ifndef ZELCC_COLORIMETRIC_H
#define ZELCC_COLORIMETRIC_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB with the primaries of Recommendation ITU-R BT.709 to CIE XYZ, white D65:
 *
 *     X = 0.412453 R + 0.35758  G + 0.180423 B
 *     Y = 0.212671 R + 0.71516  G + 0.072169 B
 *     Z = 0.019334 R + 0.119193 G + 0.950227 B
 *
 * White has X 0.950456, Y 1 and Z 1.088754 of it, so Z of bright colours is beyond the scale, and is limited to it.
 *
 * Example: 8u: (200, 100, 50) -> (127, 117, 63) in a 1 x 1 image; 16u: (65535, 65535, 65535) -> (62288, 65535, 65535);
 * 16s: (7232, -12768, -22768) -> (-7315, -9237, -20109); 32f: (0.5, 0.25, 1) -> (0.476045, 0.357294, 0.989692).
 */

/**
 * 8-bit samples, cut off to integers. The leading columns, 8 * floor(width / 8) of C3 and 4 * floor(width / 4) of AC4, are
 * computed with 15 fractional bits and the remaining ones with 16; the two differ by at most 1.
 */
ZEL_API ZelStatus zeliRGBToXYZ_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToXYZ_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** 16-bit samples: sums of floats, cut off to integers and limited to the scale; signed samples are converted 32768 higher. */
ZEL_API ZelStatus zeliRGBToXYZ_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToXYZ_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToXYZ_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToXYZ_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats. Z alone is limited to 0 to 1; X and Y pass as they are. */
ZEL_API ZelStatus zeliRGBToXYZ_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToXYZ_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * CIE XYZ to RGB, limited to the scale:
 *
 *     R =  3.240479 X - 1.53715  Y - 0.498535 Z
 *     G = -0.969256 X + 1.875991 Y + 0.041556 Z
 *     B =  0.055648 X - 0.204043 Y + 1.057311 Z
 *
 * Example: 8u: (127, 117, 63) -> (200, 99, 49) in a 1 x 1 image; 16u: (25453, 23531, 12659) -> (39998, 19999, 9999);
 * 16s: (-7315, -9237, -20109) -> (7230, -12769, -22769); 32f: (0.476045, 0.357295, 0.989692) -> (0.5, 0.25, 1).
 */

/**
 * 8-bit samples, cut off to integers. The leading columns, 8 * floor(width / 8) of C3 and 4 * floor(width / 4) of AC4, are
 * computed with 13 fractional bits and the remaining ones with 16.
 */
ZEL_API ZelStatus zeliXYZToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliXYZToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** 16-bit samples: sums of floats, cut off to integers and limited to the scale; signed samples are converted 32768 higher. */
ZEL_API ZelStatus zeliXYZToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliXYZToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliXYZToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliXYZToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats, limited to 0 to 1. */
ZEL_API ZelStatus zeliXYZToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliXYZToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * RGB to Photo YCC, with luma L = 0.299 R + 0.587 G + 0.114 B on a scale of 0 to 1:
 *
 *     Y  = 0.7132668 L
 *     C1 = 0.4368627 (B - L) + 0.6117647        156 of 255
 *     C2 = 0.53192   (R - L) + 0.5372549        137 of 255
 *
 * Example: 8u: (200, 100, 50) -> (88, 123, 177) in a 1 x 1 image; 16u: (40000, 20000, 10000) -> (17718, 33609, 43273);
 * 16s: (7232, -12768, -22768) -> (-15050, 841, 10505); 32f: (0.5, 0.25, 1) -> (0.292618, 0.869405, 0.584995).
 */

/**
 * 8-bit samples, in fixed point. The leading columns, 8 * floor(width / 8) of C3 and 4 * floor(width / 4) of AC4, are computed in
 * 16 bits, with every product cut off by itself, and the remaining ones in 32 bits.
 */
ZEL_API ZelStatus zeliRGBToYCC_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCC_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * 16-bit samples by sums of floats, rounded by a half or, at 16s in the leading columns, 4 * floor(width / 4), to the nearest
 * with ties to the even integer. Signed samples are converted 32768 higher.
 */
ZEL_API ZelStatus zeliRGBToYCC_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCC_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCC_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCC_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats, of any size. */
ZEL_API ZelStatus zeliRGBToYCC_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCC_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * Photo YCC to RGB, limited to the scale, which bright colours of Photo YCC are beyond:
 *
 *     y = 1.3584 Y,    c1 = 2.2179 (C1 - 0.6117647),    c2 = 1.8215 (C2 - 0.5372549)
 *
 *     R = y + c2
 *     G = y - 0.194 c1 - 0.509 c2
 *     B = y + c1
 *
 * Example: 8u: (88, 123, 177) -> (192, 96, 46) in a 1 x 1 image; 16u: (17718, 33609, 43273) -> (38757, 19381, 9689);
 * 16s: (-15050, 841, 10505) -> (5988, -13387, -23079); 32f: (0.292618, 0.869405, 0.584995) -> (0.48445, 0.24237, 0.96891).
 */

/**
 * 8-bit samples, in fixed point, cut off to integers. The leading columns, 8 * floor(width / 8) of C3 and 4 * floor(width / 4) of
 * AC4, are computed in 16 bits, with every product cut off by itself, and the remaining ones in 32 bits.
 */
ZEL_API ZelStatus zeliYCCToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCCToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** 16-bit samples by sums of floats: 16u is rounded by a half, 16s is cut off. Signed samples are converted 32768 higher. */
ZEL_API ZelStatus zeliYCCToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCCToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCCToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCCToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Floats, limited to 0 to 1. */
ZEL_API ZelStatus zeliYCCToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCCToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
