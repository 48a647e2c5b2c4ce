/*
 * Conversion from and to one intensity, matrices over the channels of a pixel, and transfer curves, at the depths 8u, 8s, 16u,
 * 16s, 32f and 64f.
 *
 * Channels. Nothing here depends on what the channels mean: channel 0 is the first of a pixel in memory, or the first plane.
 *
 * Layouts, as the last part of a name gives them, source before destination (one token stands for both):
 *
 *     C1   one sample a pixel
 *     C3   three samples a pixel
 *     C4   four samples a pixel, all of them data
 *     AC4  four samples a pixel, the fourth is alpha; a source's is not read, a destination's is kept
 *     P3   three planes, with one step for all
 *     I    before one of these: in place, one image is source and destination
 *
 * The alpha that an AC4 destination keeps is rewritten with the value it held, so no other thread may write it during the call.
 *
 * Arguments. Pointers are to the top left pixel of the region and need no alignment, not even that of a sample. A step is the
 * distance in bytes from one row to the next; where a sample has 2 or 4 bytes, it loses the bits below that. Nothing outside the
 * region is read or written. Source and destination of a conversion that is not in place must not overlap.
 *
 * Rounding. No operation is fused with another. Sums in floats and doubles follow the rounding mode of the calling thread, and so
 * do conversions from them to integers, except where it is stated that these round to the nearest.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr  a pointer, an array of planes or an entry of one is null
 *     zelStsSizeErr     width or height is below 1
 *     zelStsStepErr     a step is below 1, in the conversions that say so; the others take any step, negative ones and 0 included
 *     zelStsNoErr       otherwise
 *
 * Errors are reported in this order, and on an error nothing is written.
 */
#ifndef ZELCC_INTENSITY_H
#define ZELCC_INTENSITY_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Colour to gray:
 *
 *     gray = 0.299 x0 + 0.587 x1 + 0.114 x2              zeliRGBToGray
 *     gray = c[0] x0 + c[1] x1 + c[2] x2                 zeliColorToGray
 *
 * Null instead of the weights c stands for 0.299, 0.587 and 0.114, but not with the depth 64f, where it must not be null.
 *
 * Example: (200, 100, 50) -> 124 in a 1 x 1 image.
 */

/**
 * 8-bit samples. Weights are rounded to a multiple of 1/32768, and only the low 16 bits of that number count: the range is 0 to
 * below 2.
 *
 * Leading columns (4 * floor(width / 4) of C3, 8 * floor(width / 8) of AC4) are computed in 16 bits and may be 1 lower than the
 * remaining ones. A sum of 256 or more becomes 0 in the leading columns and its low 8 bits in the remaining ones.
 */
ZEL_API ZelStatus zeliRGBToGray_8u_C3C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToGray_8u_AC4C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliColorToGray_8u_C3C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           const float coeffs[3]);
ZEL_API ZelStatus zeliColorToGray_8u_AC4C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float coeffs[3]);

/**
 * Unsigned 16-bit samples, weighed in floats from the left to the right and rounded to an integer. The result must lie in 0 to
 * 65535: beyond it, in the remaining columns the low 16 bits are stored, and in the leading ones (4 * floor(width / 4)) the high
 * 16 bits are or-ed into other pixels of the same four.
 */
ZEL_API ZelStatus zeliRGBToGray_16u_C3C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToGray_16u_AC4C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliColorToGray_16u_C3C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize, const float coeffs[3]);
ZEL_API ZelStatus zeliColorToGray_16u_AC4C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, const float coeffs[3]);

/**
 * Signed 16-bit samples: 32768 is added to each, and subtracted from the rounded sum. Leading columns (4 * floor(width / 4)) are
 * bounded to -32768 to 32767, of the remaining ones the low 16 bits are stored.
 */
ZEL_API ZelStatus zeliRGBToGray_16s_C3C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToGray_16s_AC4C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliColorToGray_16s_C3C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float coeffs[3]);
ZEL_API ZelStatus zeliColorToGray_16s_AC4C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, const float coeffs[3]);

/** Floats: (c[0] x0 + c[1] x1) + c[2] x2, unbounded. */
ZEL_API ZelStatus zeliRGBToGray_32f_C3C1R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToGray_32f_AC4C1R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliColorToGray_32f_C3C1R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float coeffs[3]);
ZEL_API ZelStatus zeliColorToGray_32f_AC4C1R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                             const float coeffs[3]);

/** Doubles: (c[0] x0 + c[1] x1) + c[2] x2, unbounded. Steps count as given. */
ZEL_API ZelStatus zeliColorToGray_64f_C3C1R(const double* pSrc, int32_t srcStep, double* pDst, int32_t dstStep, ZelSize roiSize,
                                            const double coeffs[3]);
ZEL_API ZelStatus zeliColorToGray_64f_AC4C1R(const double* pSrc, int32_t srcStep, double* pDst, int32_t dstStep, ZelSize roiSize,
                                             const double coeffs[3]);

/*
 * Gray to colour: all three channels are the gray sample, and the fourth of C4 is aval.
 *
 * Example, GrayToRGB: 77 -> (77, 77, 77) in a 1 x 1 image; ToGray: YCbCr422 (77, 120, 130) -> 77 in a 2 x 1 image.
 */

/** One sample to three or four. */
ZEL_API ZelStatus zeliGrayToRGB_8u_C1C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGrayToRGB_16u_C1C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliGrayToRGB_32f_C1C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGrayToRGB_8u_C1C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         uint8_t aval);
ZEL_API ZelStatus zeliGrayToRGB_16u_C1C4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                          uint16_t aval);
ZEL_API ZelStatus zeliGrayToRGB_32f_C1C4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                          float aval);

/** The luma of packed 4:2:2 pixels (Y0 Cb Y1 Cr). A row of odd width ends with the luma of its last pixel. */
ZEL_API ZelStatus zeliYCbCr422ToGray_8u_C2C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);

/*
 * Colour twist, a matrix with offsets, t = matrix[4 * r .. 4 * r + 3]:
 *
 *     out[r] = t[0] x0 + t[1] x1 + t[2] x2 + t[3]        r = 0, 1, 2
 *
 * Sums are single-precision, (t[3] + t[0] x0) + (t[2] x2 + t[1] x1), with signed bytes ((t[0] x0 + t[1] x1) + t[2] x2) + t[3].
 * Integer results are rounded to the nearest, ties to even, whatever rounding mode the calling thread has (it is the same after
 * the call), and bounded to what a sample holds; NaN becomes the highest sample. Every one of these conversions reports
 * zelStsStepErr. In place, rows that overlap are converted one after the other from the top.
 *
 * Example: (100, 50, 20) by rows {0.5, 0.5, 0, 10}, {0, 1, 0, 0}, {0, 0, 2, -20} -> (85, 50, 20) in a 1 x 1 image.
 */

/** Unsigned 8-bit samples. */
ZEL_API ZelStatus zeliColorTwist32f_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                           ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize,
                                            const float matrix[12]);

/** Signed 8-bit samples. */
ZEL_API ZelStatus zeliColorTwist32f_8s_C3R(const int8_t* pSrc, int32_t srcStep, int8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8s_AC4R(const int8_t* pSrc, int32_t srcStep, int8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8s_P3R(const int8_t* const pSrc[3], int32_t srcStep, int8_t* const pDst[3], int32_t dstStep,
                                           ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8s_C3IR(int8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8s_AC4IR(int8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_8s_IP3R(int8_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize,
                                            const float matrix[12]);

/** Unsigned 16-bit samples. */
ZEL_API ZelStatus zeliColorTwist32f_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep, uint16_t* const pDst[3],
                                            int32_t dstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize,
                                             const float matrix[12]);

/** Signed 16-bit samples. */
ZEL_API ZelStatus zeliColorTwist32f_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16s_P3R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* const pDst[3],
                                            int32_t dstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16s_C3IR(int16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16s_AC4IR(int16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist32f_16s_IP3R(int16_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize,
                                             const float matrix[12]);

/** Floats, unbounded; sums follow the rounding mode of the calling thread. */
ZEL_API ZelStatus zeliColorTwist_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                         const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                          const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                                         ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist_32f_C3IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);
ZEL_API ZelStatus zeliColorTwist_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize, const float matrix[12]);

/**
 * All four channels of float pixels by a matrix without offsets, m = matrix[4 * r .. 4 * r + 3], r = 0 to 3:
 *
 *     out[r] = ((m[0] x0 + m[1] x1) + m[2] x2) + m[3] x3
 *
 * Images with both steps equal to 4 * width, which is a quarter of a row, are read and written without gaps as 16 * width *
 * height bytes from the two pointers.
 *
 * Example: (0.5, 1, 2) by rows {1, 1, 0, 0}, {0, 2, 0, 0}, {0, 0.5, 0.25, 0}, {0, 0, 0, 1} -> (1.5, 2, 1) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliColorTwist_32f_C4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                         const float matrix[16]);

/*
 * The transfer curve of Recommendation ITU-R BT.709, from linear light to video, and its inverse. v is a sample on a scale on
 * which black is 0 and white is 1:
 *
 *     Fwd:  v < 0.018 ? 4.5 v : 1.099 v^0.45 - 0.099
 *     Inv:  v < 0.0812 ? v / 4.5 : ((v + 0.099) / 1.099)^(1 / 0.45)
 *
 * The knees do not quite meet: 0.018 becomes 0.081. A step below 1 is an error. The powers are those of the C library's pow, in
 * double precision.
 *
 * Status, in addition: zelStsRangeErr, before all others, if vMax - vMin is not above 0 (depth 32f); zelStsMemAllocErr, after all
 * others, if there is no memory for the table of a large image (depth 16u).
 *
 * Example, Fwd_8u: (200, 100, 50) -> (226, 159, 109) in a 1 x 1 image; Inv_8u: (200, 100, 50) -> (157, 43, 14);
 * Fwd_16u: (50000, 20000, 1000) -> (57279, 35732, 4500); Inv_16u: (50000, 20000, 1000) -> (38194, 7097, 222);
 * Fwd_32f: (0.5, 0.2, 0.01) from 0 to 1 -> (0.7055, 0.4337, 0.0450); Inv_32f: (0.5, 0.2, 0.045) from 0 to 1 ->
 * (0.2596, 0.0554, 0.0100).
 */

/** 8-bit samples, 255 is white. No memory is taken. */
ZEL_API ZelStatus zeliGammaFwd_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_C3IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_AC4IR(uint8_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_8u_IP3R(uint8_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize);

/**
 * 16-bit samples, 65535 is white. The sums before rounding are single-precision numbers, so results near a half may be 1 away
 * from the nearest integer to the curve. From 65537 samples on (3 * width * height, whatever the layout), a table of 128 KiB is
 * taken for the call.
 */
ZEL_API ZelStatus zeliGammaFwd_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep, uint16_t* const pDst[3], int32_t dstStep,
                                       ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaFwd_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_P3R(const uint16_t* const pSrc[3], int32_t srcStep, uint16_t* const pDst[3], int32_t dstStep,
                                       ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_C3IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_AC4IR(uint16_t* pSrcDst, int32_t srcDstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliGammaInv_16u_IP3R(uint16_t* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize);

/** Floats, vMin is black and vMax is white; neither bounds the samples or the results. NaN stays NaN. */
ZEL_API ZelStatus zeliGammaFwd_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                       float vMin, float vMax);
ZEL_API ZelStatus zeliGammaFwd_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                        float vMin, float vMax);
ZEL_API ZelStatus zeliGammaFwd_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                                       ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaFwd_32f_C3IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaFwd_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaFwd_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_C3R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                       float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_AC4R(const float* pSrc, int32_t srcStep, float* pDst, int32_t dstStep, ZelSize roiSize,
                                        float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_P3R(const float* const pSrc[3], int32_t srcStep, float* const pDst[3], int32_t dstStep,
                                       ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_C3IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_AC4IR(float* pSrcDst, int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);
ZEL_API ZelStatus zeliGammaInv_32f_IP3R(float* const pSrcDst[3], int32_t srcDstStep, ZelSize roiSize, float vMin, float vMax);

/*
 * Tone mapping of floats to bytes, by a factor k that the whole region gives. The products x k are rounded to floats and cut off.
 *
 * The source is read twice. Nothing is written and zelStsNoOperationWarn is returned if what becomes white is below 0; if it is
 * at most the smallest normal float, all bytes become 0. Every step is taken. A destination that begins where the source does,
 * with the same step, is served too.
 *
 * Example: (0.5, 1.0, 2.5) -> (51, 102, 255) by Linear, (47, 95, 239) by Mean in a 3 x 1 image.
 */

/**
 * k = 255 / m, where m is the highest sample; NaN is never the highest. Of a product, the low 8 bits of the integer are stored,
 * so that samples below 0 wrap around. m itself may become 254, since k is rounded to a float.
 */
ZEL_API ZelStatus zeliToneMapLinear_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);

/**
 * k = 255 / (2 mean). Products are bounded to 0 to 255; NaN becomes 0.
 *
 * Sums are taken as floats along the row, in an order that depends on the address of each row modulo 16, and then as doubles: the
 * last bits of k, and with them single values, may change when an image moves in memory.
 */
ZEL_API ZelStatus zeliToneMapMean_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
