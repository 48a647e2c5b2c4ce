/*
 * RGB and BGR to and from two spaces of hue: HLS, of hue, lightness and saturation, and HSV, of hue, saturation and value. Both
 * are bent cylinders around the gray axis: with M the highest and m the lowest of R, G and B on the scale from 0 to 1, and d = M
 * - m,
 *
 *     H = 60 (G - B) / d          where R is the highest, plus 360 if negative
 *         60 (B - R) / d + 120    where G is
 *         60 (R - G) / d + 240    where B is, in degrees
 *
 *     HLS:  L = (M + m) / 2,    S = d / (M + m), or d / (2 - M - m) above L = 0.5
 *     HSV:  V = M,              S = d / M
 *
 * and gray has H = S = 0. Samples are used as they are, encoded or linear.
 *
 * Scales. R, G, B, L, S and V run from 0 to 255 at 8u, from 0 to 65535 at 16u, from -32768 to 32767 at 16s and from 0 to 1 at
 * 32f; so does H, for 0 to 360 degrees.
 *
 * Layouts, source before destination where they differ:
 *
 *     C3   three samples a pixel
 *     AC4  four samples a pixel, the fourth is alpha
 *     P3   three planes, with one step for all
 *     AP4  four planes, the fourth is alpha, with one step for all; P4 the same as a destination
 *
 * Channels and planes are in the order of the names: R, G, B or B, G, R, and H, L, S or H, S, V. The alpha of an AC4R destination
 * is kept and that of its source not read; with a planar side alpha is copied. The alpha that is kept is rewritten with the value
 * it held, so no other thread may write it during the call.
 *
 * Arguments. Pointers are to the top left pixel of the region and need no alignment, not even that of a sample. A step is the
 * distance in bytes from one row to the next. In the conversions of RGB it may be negative (an image stored bottom-up) or zero,
 * and where a sample has 2 or 4 bytes, it loses the bits below that; in those of BGR it must be at least 1. Nothing outside the
 * region is read or written. Source and destination must not overlap, but may be the same image where their layouts are equal.
 *
 * Rounding. All arithmetic is that of single precision, every operation rounded by itself, in the rounding mode of the calling
 * thread.
 *
 * Reciprocals. Where a comment says "approximate", 1 / x is what the x86 instruction rcpps gives, with a relative error of up to
 * 1.5 * 2^-12, on other processors the rounded quotient; where it says "refined", it is that after one step of Newton's method,
 * 2 r - (x r) r, nearly exact. Makes of processors differ in the approximation: a few results differ by 1 between machines. On
 * one machine they are always the same.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr  a pointer, an array of planes or an entry of one is null
 *     zelStsStepErr     a step is below 1, in the conversions of BGR
 *     zelStsSizeErr     width or height is below 1
 *     zelStsNoErr       otherwise
 *
 * Colours in the examples are R, G, B, whatever their order in memory.
 *
 * Errors are reported in this order, but by zeliBGRToHLS_8u_AC4R, where the size comes before the steps. On an error nothing is
 * written.
 */
#ifndef ZELCC_HLS_H
#define ZELCC_HLS_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * RGB to HLS, cut off to integers. The leading columns, 8 * floor(width / 8) of C3 and 4 * floor(width / 4) of AC4, take the
 * approximate reciprocals of d and of the divisor of S, the remaining ones the refined ones: in the leading columns a saturation
 * of 255 may come out as 254. A few results differ by 1 between machines. Red's formula comes before green's and green's before
 * blue's.
 *
 * Example: RGB (90, 40, 20) -> HLS (12, 55, 162) in a 2 x 1 image.
 */
ZEL_API ZelStatus zeliRGBToHLS_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHLS_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of 16-bit samples, with refined reciprocals in all columns. A few results differ by 1 between machines.
 *
 * Example: 16u: RGB (90, 40, 20) -> HLS (3120, 55, 41704) in a 1 x 1 image;
 * 16s: RGB (-32678, -32728, -32748) -> HLS (-29648, -32713, 8936).
 */
ZEL_API ZelStatus zeliRGBToHLS_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHLS_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHLS_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHLS_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of floats, with true divisions. Nothing is limited, and a d of no more than 2^-23 is gray.
 *
 * Example: RGB (0.75, 0.5, 0.25) -> HLS (0.083333, 0.5, 0.5) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliRGBToHLS_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHLS_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * BGR to HLS: the conversion of RGB with the channels in the other order, approximate reciprocals in the leading
 * 4 * floor(width / 4) columns and refined ones in the remaining ones. A few results differ by 1 between machines. Steps must be
 * at least 1; this one tests the size before them, and those below the steps before the size.
 *
 * Example: RGB (90, 40, 20) -> HLS (12, 55, 162) in a 4 x 1 image.
 */
ZEL_API ZelStatus zeliBGRToHLS_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                         ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_AP4C4R(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                         ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToHLS_8u_AP4R(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                       ZelSize roiSize);

/**
 * HLS to RGB. With H in degrees,
 *
 *     M1 = L + L S, or (L + S) - L S above L = 0.5,    M2 = 2 L - M1
 *     F(h) = M2 + (M1 - M2) h / 60 below 60,    M1 below 180,    M2 + (M1 - M2) (240 - h) / 60 below 240,    M2 from there on
 *     R = F(H + 120),    G = F(H),    B = F(H - 120)
 *
 * where H + 120 above 360 and H - 120 below 0 are turned by 360, H itself is not. Results are cut off to integers.
 *
 * Example: HLS (12, 55, 162) -> RGB (89, 39, 20) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliHLSToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of unsigned 16-bit samples, with 15 bits of result: every result is even. Only gray pixels, S = 0, in the last width
 * mod 4 columns keep their lightness as it is.
 *
 * Example: HLS (0, 32768, 65535) -> RGB (65534, 0, 0) in a 3 x 1 image.
 */
ZEL_API ZelStatus zeliHLSToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of signed 16-bit samples. The leading 4 * floor(width / 4) columns multiply by the reciprocals of the scales and of 60
 * and are rounded to the nearest; the remaining ones divide, and are rounded by adding a little less than a half: they differ by
 * at most 1.
 *
 * Example: HLS (-32768, 0, 32767) -> RGB (32767, -32767, -32767) in a 4 x 1 image.
 */
ZEL_API ZelStatus zeliHLSToRGB_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToRGB_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of floats. The leading 4 * floor(width / 4) columns multiply by the reciprocal of 60, the remaining ones divide: they
 * differ in the last places. Nothing is limited. Gray pixels, S = 0, keep their lightness as it is.
 *
 * Example: HLS (0.083333, 0.5, 0.5) -> RGB (0.75, 0.5, 0.25) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliHLSToRGB_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToRGB_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * HLS to BGR: the conversion to RGB with the channels in the other order. Steps must be at least 1, and are tested before the
 * size.
 *
 * Example: HLS (12, 55, 162) -> RGB (89, 39, 20) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliHLSToBGR_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToBGR_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToBGR_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                         ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToBGR_8u_AP4C4R(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                         ZelSize roiSize);
ZEL_API ZelStatus zeliHLSToBGR_8u_AP4R(const uint8_t* const pSrc[4], int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                       ZelSize roiSize);

/**
 * RGB to HSV, rounded to the nearest, with the approximate reciprocals of d and V in all columns. A few results differ by 1
 * between machines. Of channels that share the maximum, blue's formula comes first, and then in the leading 4 * floor(width / 4)
 * columns red's, in the remaining ones green's: the hue of yellow may differ by 1.
 *
 * Example: RGB (90, 40, 20) -> HSV (12, 198, 90) in a 5 x 1 image.
 */
ZEL_API ZelStatus zeliRGBToHSV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHSV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * The same of 16-bit samples, with true divisions; H and S are rounded by adding a half and cutting off.
 *
 * Example: RGB (60000, 30000, 15000) -> HSV (3641, 49151, 60000) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliRGBToHSV_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToHSV_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * HSV to RGB. With i and f the whole part and the rest of H in sixths of the circle, p = V - V S, q = V - V S f, t = p + V S f:
 *
 *     i         0  1  2  3  4  5
 *     R, G, B   V  q  p  p  t  V
 *               t  V  V  q  p  p
 *               p  p  t  V  V  q
 *
 * rounded to the nearest. V is stored as it is, and the highest H counts as 0.
 *
 * Example: 8u: HSV (12, 198, 90) -> RGB (90, 40, 20) in a 1 x 1 image; 16u: HSV (3641, 49151, 60000) -> RGB (60000, 30001,
 * 15000).
 */
ZEL_API ZelStatus zeliHSVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHSVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHSVToRGB_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliHSVToRGB_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
