/*
 * Conversion between 8-bit RGB and luma-chroma images: 4:4:4, encoders to and decoders from 4:2:2, 4:2:0 and 4:1:1.
 *
 * Colour. R, G and B are gamma-encoded and use 0 to 255. Where a name has no word for it, luma and chroma are those of
 * Recommendation ITU-R BT.601 in studio range, Y from 16 (black) to 235 (white), Cb and Cr from 16 to 240 around 128 (no colour):
 *
 *     Y  =  0.257 R + 0.504 G + 0.098 B +  16         R = 1.164 (Y - 16) + 1.596 (Cr - 128)
 *     Cb = -0.148 R - 0.291 G + 0.439 B + 128         G = 1.164 (Y - 16) - 0.813 (Cr - 128) - 0.392 (Cb - 128)
 *     Cr =  0.439 R - 0.368 G - 0.071 B + 128         B = 1.164 (Y - 16) + 2.017 (Cb - 128)
 *
 * 709CSC: those of Recommendation ITU-R BT.709, in studio range too.
 *
 *     Y  =  0.183 R + 0.614 G + 0.062 B +  16         R = 1.164 (Y - 16) + 1.793 (Cr - 128)
 *     Cb = -0.101 R - 0.338 G + 0.439 B + 128         G = 1.164 (Y - 16) - 0.534 (Cr - 128) - 0.213 (Cb - 128)
 *     Cr =  0.439 R - 0.399 G - 0.040 B + 128         B = 1.164 (Y - 16) + 2.115 (Cb - 128)
 *
 * 709HDTV: the same matrix with luma in full range, Y from 0 to 255, and chroma around 128. Chroma is 2 % wider than that of
 * full-range BT.709 elsewhere. Its encoders limit every Y, Cb and Cr to 1 to 254, the codes that digital video interfaces leave
 * to the picture, so black is 1 and white 254; its decoders take all codes.
 *
 *     Y  =  0.213 R + 0.715 G + 0.072 B               R = Y + 1.540 (Cr - 128)
 *     Cb = -0.117 R - 0.394 G + 0.511 B + 128         G = Y - 0.459 (Cr - 128) - 0.183 (Cb - 128)
 *     Cr =  0.511 R - 0.464 G - 0.047 B + 128         B = Y + 1.816 (Cb - 128)
 *
 * docs/matrices.md tells which one a picture is in, and what the others make of it.
 *
 * A decoder takes any byte for Y, Cb and Cr and bounds its results to 0 to 255. Every conversion computes these formulas in
 * an integer arithmetic of its own, which fixes its result to the last bit and stays within 1.25 of the exact value.
 *
 * Columns. Most conversions compute the left part of each row, the leading columns, by one integer arithmetic and the remaining
 * columns by another; the two differ by at most 1. One colour can therefore become two values in one row. How many columns
 * lead depends on the width of the region alone and is stated with each conversion; where it is not stated, all columns are
 * computed alike. Converted in vertical strips, a region comes out as in one call if every strip but the last is a multiple of
 * 32 pixels wide and the last at least 4 (not so with the Filter conversion, which looks at the next site).
 *
 * Alignment. Any address and any step is served. Alignment changes no result but those of zeliYCbCr420ToBGR_8u_P3C3R and
 * zeliYCbCr422ToRGB_8u_P3C3R, which compute images whose pointers and steps are all multiples of 16 by another arithmetic.
 *
 * Layouts, as the last part of a name gives them, source before destination (one token stands for both):
 *
 *     C3   three bytes a pixel in the order of the name: R G B, B G R or Y Cb Cr
 *     C4   four bytes a pixel; a source's fourth is ignored, a destination's fourth is set to aval
 *     AC4  four bytes a pixel, the fourth is alpha; a source's alpha is ignored
 *     C2   packed 4:2:2, four bytes a pair of pixels: Y0 Cb Y1 Cr for YCbCr422, Y0 Cr Y1 Cb for YCrCb422, Cb Y0 Cr Y1 for
 *          CbYCr422
 *     P3   three planes in the order of the name: R, G, B; or Y, Cb, Cr for YCbCr; or Y, Cr, Cb for YCrCb
 *     P2   a luma plane, and a chroma plane of byte pairs: Cb Cr for YCbCr420, Cr Cb for YCrCb420
 *
 * AC4 destinations keep their fourth byte. It is rewritten with the value it held, so no other thread may write it during the
 * call.
 *
 * Chroma. A chroma site is 2 x 1 pixels in 4:2:2, 2 x 2 in 4:2:0 and 4 x 1 in 4:1:1. Encoders convert the average of the
 * site's pixels, all of the same weight (a box filter; chroma is sited in the centre of its pixels). Decoders give all pixels
 * of a site the site's chroma, but for the one whose name says Filter.
 *
 * Arguments. Pointers are to the top left pixel of the region. A step is the distance in bytes from one row to the next;
 * it may be negative (an image stored bottom-up) or zero. Planes of 4:4:4 images share one step; planes of subsampled images
 * have a step each. roiSize counts pixels of full resolution, for subsampled images too. Nothing outside the region is read
 * or written. Source and destination must not overlap, but the 4:4:4 conversions of one layout (C3R, AC4R, P3R) may be done in
 * place, with the same pointers and steps on both sides.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr   a pointer, an array of planes or steps, or an entry of an array of planes is null
 *     zelStsSizeErr      width or height is below the minimum: 1 x 1 in 4:4:4 conversions and in all decoders, 2 x 1 in
 *                        encoders to 4:2:2, 2 x 2 to 4:2:0 and 4 x 1 to 4:1:1
 *     zelStsOddSizeWarn  only where stated: the region does not end on a whole site; the whole sites were converted
 *     zelStsNoErr        otherwise
 *
 * On an error nothing is written. Pointers are checked before the size, save by zeliYCrCb420ToBGR_8u_P2C4R and
 * zeliYCrCb420ToRGB_8u_P2C4R, which check the size first. Steps are not checked.
 *
 * Each family below carries an example: an image of one colour, and what every conversion of the family makes of it. Triples
 * are R, G, B and Y, Cb, Cr whatever the order in memory.
 */
#ifndef ZELCC_LUMACHROMA_H
#define ZELCC_LUMACHROMA_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB to YCbCr 4:4:4.
 *
 * Example: RGB (255, 0, 0) -> YCbCr (82, 90, 240) in a 1 x 1 image.
 */

/**
 * RGB pixels to YCbCr pixels.
 *
 * Leading columns: 16 * floor(width / 16). They are cut off rather than rounded, so that nearly every second value is one
 * lower than in the remaining columns, where values are rounded to the nearest.
 */
ZEL_API ZelStatus zeliRGBToYCbCr_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** RGB and alpha pixels to YCbCr and alpha pixels. Values are rounded to the nearest; the destination keeps its alpha. */
ZEL_API ZelStatus zeliRGBToYCbCr_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * RGB pixels or planes to Y, Cb and Cr planes; the alpha of an AC4 source is dropped.
 *
 * Leading columns: 8 * floor(width / 8).
 */
ZEL_API ZelStatus zeliRGBToYCbCr_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);

/*
 * YCbCr 4:4:4 to RGB.
 *
 * Example: YCbCr (67, 125, 153) -> RGB (99, 40, 53) in a 1 x 1 image.
 */

/**
 * YCbCr pixels to RGB pixels.
 *
 * Leading columns: 4 * floor(width / 4). They are rounded; values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCrToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** YCbCr and alpha pixels to RGB and alpha pixels. Values are cut off, not rounded; the destination keeps its alpha. */
ZEL_API ZelStatus zeliYCbCrToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * Y, Cb and Cr planes to R, G and B planes.
 *
 * Leading columns: 4 * floor(width / 4). They are cut off; values of the remaining columns are rounded.
 */
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);

/**
 * Y, Cb and Cr planes to RGB pixels.
 *
 * Leading columns: 8 * floor(width / 8). They are rounded; values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);

/**
 * Y, Cb and Cr planes to pixels R G B aval.
 *
 * Leading columns: 8 * floor(width / 8).
 */
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize, uint8_t aval);

/** Y, Cb and Cr planes to BGR pixels, or to pixels B G R aval. */
ZEL_API ZelStatus zeliYCbCrToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize, uint8_t aval);

/*
 * YCbCr 4:4:4 to BGR by BT.709.
 *
 * Example: YCbCr (81, 114, 166) -> RGB (144, 58, 46) in a 1 x 1 image.
 */

/** Y, Cb and Cr planes, in studio range, to BGR pixels, or to pixels B G R aval. Values are rounded. */
ZEL_API ZelStatus zeliYCbCrToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                 ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR_709CSC_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                 ZelSize roiSize, uint8_t aval);

/*
 * RGB and BGR to 4:2:0.
 *
 * The minimum size is 2 x 2. If width or height is odd, the last column or row is neither read nor written and the status is
 * zelStsOddSizeWarn. Chroma planes are floor(width / 2) by floor(height / 2) samples; an interleaved chroma plane has as many
 * pairs.
 *
 * Unless stated otherwise, luma is rounded to the nearest, and chroma is cut off after an eighth, not a half, has been added.
 *
 * Example: RGB (0, 255, 0) -> YCbCr420 (145, 53, 34) in a 2 x 2 image.
 */

/**
 * RGB pixels to three planes, or to a luma plane and a plane of chroma pairs Cb Cr; the fourth byte of a C4 source is ignored.
 *
 * Leading columns: 8 * floor(width / 8). Their values are cut off.
 */
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                             uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                             uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/**
 * BGR or RGB pixels to planes Y, Cb, Cr, or for the YCrCb forms to planes Y, Cr, Cb; the alpha of an AC4 source is dropped.
 *
 * Leading columns: 16 * floor(width / 16), and 4 more if width mod 8 is 4 or above.
 */
ZEL_API ZelStatus zeliBGRToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);

/*
 * BGR to 4:2:0 by BT.709.
 *
 * Sizes, planes, rounding and statuses are those of the conversions to 4:2:0 above.
 *
 * Example: RGB (255, 0, 0) -> YCbCr420 (63, 102, 240) by 709CSC, (54, 98, 254) by 709HDTV in a 2 x 2 image.
 */

/**
 * BGR pixels to planes Y, Cb, Cr, or for the YCrCb forms to planes Y, Cr, Cb, or to a luma plane and a plane of chroma pairs Cb
 * Cr, all in studio range; the alpha of an AC4 source is dropped.
 *
 * Leading columns: 16 * floor(width / 16), and 4 more if width mod 8 is 4 or above.
 */
ZEL_API ZelStatus zeliBGRToYCbCr420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                    const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                     const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_709CSC_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                    const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_709CSC_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                     const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr420_709CSC_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                                    uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/**
 * BGR and alpha pixels to planes Y, Cb, Cr, with luma in full range and all samples limited to 1 to 254; the alpha is dropped.
 *
 * Leading columns: 16 * floor(width / 16). Their chroma is rounded.
 */
ZEL_API ZelStatus zeliBGRToYCbCr420_709HDTV_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                      const int32_t dstStep[3], ZelSize roiSize);

/*
 * RGB and BGR to 4:2:2.
 *
 * The minimum size is 2 x 1. Chroma planes are floor(width / 2) by height samples. Luma and chroma are rounded and cut off as
 * in 4:2:0, unless stated otherwise.
 *
 * Example: RGB (128, 64, 32) -> YCbCr422 (84, 104, 158) in a 2 x 1 image.
 */

/**
 * RGB pixels to Y, Cb and Cr planes.
 *
 * Leading columns: 32 * floor(width / 32), and 8 more if width mod 16 is 8 or above. The last column of an odd width is not
 * written, and the status is zelStsOddSizeWarn.
 */
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);

/**
 * BGR pixels to Y, Cb and Cr planes or to packed 4:2:2; the alpha of an AC4 source is dropped.
 *
 * Leading columns: 32 * floor(width / 32), and 8 more if width mod 16 is 8 or above. The last column of an odd width is not
 * written, and the status is zelStsNoErr.
 */
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);

/**
 * RGB pixels or planes to packed 4:2:2.
 *
 * Leading columns: 8 * floor(width / 8). Chroma is rounded everywhere. Luma is cut off in the leading columns; in the remaining
 * ones it is rounded for the first pixel of a pair and cut off for the second. The last pixel of an odd width is
 * written as two bytes, its luma and its first chroma (Cb in the YCbCr forms, Cr in the YCrCb forms), both rounded; the status
 * is zelStsNoErr.
 */
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);

/*
 * RGB and BGR to 4:2:2 packed as Cb Y0 Cr Y1.
 *
 * The minimum size is 2 x 1. Luma is rounded, and chroma cut off as in 4:2:0 unless stated otherwise. The last pixel of an odd
 * width is written as two bytes, its Cb and its luma, both rounded; the status is zelStsNoErr.
 *
 * Example: RGB (128, 64, 32) -> YCbCr422 (84, 104, 158) by CbYCr422_8u, (134, 102, 155) by Gamma, (75, 104, 162) by 709HDTV in a
 * 2 x 1 image.
 */

/**
 * RGB pixels. The Gamma form takes R, G and B through the transfer curve of Recommendation ITU-R BT.709 first, as
 * zeliGammaFwd_8u_C3R does, and so starts from linear light.
 *
 * Leading columns: 4 * floor(width / 4). Their chroma is rounded.
 */
ZEL_API ZelStatus zeliRGBToCbYCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToCbYCr422Gamma_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                  ZelSize roiSize);

/**
 * BGR and alpha pixels; the alpha is dropped.
 *
 * Leading columns: 8 * floor(width / 8). Their chroma is rounded.
 */
ZEL_API ZelStatus zeliBGRToCbYCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);

/**
 * BGR pixels by BT.709, with luma in full range and all samples limited to 1 to 254; the alpha of an AC4 source is dropped.
 *
 * Leading columns: 32 * floor(width / 32). Chroma is rounded everywhere.
 */
ZEL_API ZelStatus zeliBGRToCbYCr422_709HDTV_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                     ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToCbYCr422_709HDTV_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                      ZelSize roiSize);

/*
 * BGR to 4:1:1.
 *
 * The minimum size is 4 x 1. If width is no multiple of 4, the columns behind the last whole site are neither read nor written
 * and the status is zelStsOddSizeWarn. Chroma planes are floor(width / 4) by height samples.
 * Luma and chroma are rounded and cut off as in 4:2:0, unless stated otherwise.
 *
 * Example: RGB (64, 128, 192) -> YCbCr411 (116, 165, 95) in a 4 x 1 image.
 */

/**
 * BGR pixels to Y, Cb and Cr planes.
 *
 * Leading columns: 16 * floor(width / 16). Their values are cut off.
 */
ZEL_API ZelStatus zeliBGRToYCbCr411_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);

/**
 * BGR and alpha pixels to Y, Cb and Cr planes; the alpha is dropped.
 *
 * Leading columns: 32 * floor(width / 32).
 */
ZEL_API ZelStatus zeliBGRToYCbCr411_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:2:0 to RGB and BGR.
 *
 * If width or height is odd, the last column or row is neither read nor written and the status is zelStsOddSizeWarn. A region
 * one pixel wide or high is no error: nothing is written, and the status is the same.
 *
 * Example: YCbCr420 (81, 114, 166) -> RGB (136, 50, 47) in a 2 x 2 image.
 */

/**
 * Planes Y, Cb, Cr to BGR pixels.
 *
 * Leading columns: 8 * floor(width / 8). Their values are cut off if all four pointers and all four steps are multiples of 16,
 * and rounded otherwise, so this result depends on alignment.
 */
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);

/** Planes Y, Cb, Cr to pixels B G R aval. */
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);

/**
 * Planes Y, Cb, Cr to RGB pixels, or planes Y, Cr, Cb to pixels R G B aval.
 *
 * Leading columns: 8 * floor(width / 8).
 */
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);

/** A luma plane and a plane of chroma pairs Cb Cr to BGR or RGB pixels, with aval as the fourth byte in the C4 forms. */
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);

/** A luma plane and a plane of chroma pairs Cr Cb to BGR or RGB pixels, with aval as the fourth byte in the C4 forms. */
ZEL_API ZelStatus zeliYCrCb420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCrCb, int32_t srcCrCbStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);

/**
 * Planes Y, Cr, Cb to pixels B G R aval, with chroma interpolated along the row.
 *
 * The left pixel of a site has the chroma of the site, the right one the mean of the site's and the next site's, halves rounded
 * up; the last site of a row has its own chroma in both. There is no filter across rows. Leading columns, counted in
 * sites: 8 * floor((floor(width / 2) - 1) / 8).
 */
ZEL_API ZelStatus zeliYCrCb420ToBGR_Filter_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                    int32_t dstStep, ZelSize roiSize, uint8_t aval);

/*
 * 4:2:0 to BGR by BT.709.
 *
 * Odd sizes and statuses are those of the conversions from 4:2:0 above.
 *
 * Example: YCbCr420 (81, 114, 166) -> RGB (144, 58, 46) by 709CSC, (140, 66, 56) by 709HDTV in a 2 x 2 image.
 */

/**
 * Planes Y, Cb, Cr, in studio range, to BGR pixels. Values are rounded.
 *
 * Leading columns: 8 * floor(width / 8).
 */
ZEL_API ZelStatus zeliYCbCr420ToBGR_709CSC_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                    int32_t dstStep, ZelSize roiSize);

/** Planes Y, Cb, Cr, with luma in full range, to pixels B G R aval. */
ZEL_API ZelStatus zeliYCbCr420ToBGR_709HDTV_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                     int32_t dstStep, ZelSize roiSize, uint8_t aval);

/*
 * 4:2:2 to RGB and BGR.
 *
 * The status is zelStsNoErr for every width. A row of packed 4:2:2 is 2 * width bytes: the last pixel of an odd width has
 * its luma and first chroma in the stream, and takes the second chroma of the pair before it. If width is 1 there is none,
 * and the one chroma byte serves as both. From planes, the last column of an odd width is not written.
 *
 * Example: YCbCr422 (74, 158, 114) -> RGB (45, 67, 128) in a 2 x 1 image.
 */

/**
 * Packed 4:2:2 to RGB pixels or to R, G and B planes, which share one step.
 *
 * Leading columns: 16 * floor(width / 16). They are rounded; values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);

/**
 * Packed 4:2:2 to BGR pixels, or to pixels B G R aval.
 *
 * Leading columns: 16 * floor(width / 16). They are rounded; values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);

/** Packed 4:2:2 to RGB or BGR pixels, with aval as the fourth byte in the C4 forms. Values are cut off. */
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);

/**
 * Planes Y, Cb, Cr to BGR pixels.
 *
 * Leading columns: 16 * floor(width / 16). They are rounded; values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);

/**
 * Planes Y, Cb, Cr to RGB pixels.
 *
 * Leading columns: 8 * floor(width / 8). Their values are cut off if all four pointers and all four steps are multiples of 16,
 * and rounded otherwise, so this result depends on alignment. Values of the remaining columns are cut off.
 */
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);

/*
 * 4:2:2 packed as Cb Y0 Cr Y1 to RGB and BGR.
 *
 * The status is zelStsNoErr for every width. A row is 2 * width bytes: the last pixel of an odd width has its Cb and its luma in
 * the stream, and takes the Cr of the pair before it, or if width is 1 its Cb for Cr. Values are rounded. Leading columns:
 * 8 * floor(width / 8).
 *
 * Example: YCbCr422 (74, 158, 114) -> RGB (45, 67, 128) by CbYCr422ToRGB, (45, 67, 128) by ToBGR_8u, (52, 75, 128) by 709HDTV in
 * a 2 x 1 image.
 */

/** To RGB pixels, or to pixels B G R aval. */
ZEL_API ZelStatus zeliCbYCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);

/** By BT.709, with luma in full range, to BGR pixels, or to pixels B G R aval. */
ZEL_API ZelStatus zeliCbYCr422ToBGR_709HDTV_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                     ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToBGR_709HDTV_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                     ZelSize roiSize, uint8_t aval);

/*
 * 4:1:1 to BGR.
 *
 * Columns behind the last whole site are neither read nor written, so a region less than 4 pixels wide stays as it is; the
 * status is zelStsNoErr.
 *
 * Example: YCbCr411 (128, 100, 150) -> RGB (165, 123, 74) in a 4 x 1 image.
 */

/** Planes Y, Cb, Cr to BGR pixels, or to pixels B G R aval. Values are rounded. */
ZEL_API ZelStatus zeliYCbCr411ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);

#ifdef __cplusplus
}
#endif

#endif
