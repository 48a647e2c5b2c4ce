/*
 * Conversion between 8-bit RGB and analog YUV: 4:4:4, 4:2:2 and 4:2:0, both ways.
 *
 * Colour. R, G and B are gamma-encoded and use 0 to 255. Luma has the weights of Recommendation ITU-R BT.601 and the full range:
 * 0 is black and 255 white. U and V are the colour differences of analog television (PAL), moved by 128:
 *
 *     Y = 0.299 R + 0.587 G + 0.114 B         R = Y + 1.140 (V - 128)
 *     U = 0.492 (B - Y) + 128                 G = Y - 0.394 (U - 128) - 0.581 (V - 128)
 *     V = 0.877 (R - Y) + 128                 B = Y + 2.032 (U - 128)
 *
 * U runs from 16 to 239. V of strong reds and of their complements would be above 255 or below 0 and is bounded: those
 * colours do not come back. Decoders take any byte and bound their results. Every conversion computes these formulas in an
 * integer arithmetic of its own, which fixes its result to the last bit and stays within 1.5 of the exact value. A gray has
 * U and V of 128 and its own value as luma, but for the conversions that say otherwise.
 *
 * Columns. Most conversions compute the left part of each row, the leading columns, by one arithmetic and the remaining columns
 * by another; a colour can therefore become two values in one row. How many columns lead depends on the width of the region alone
 * and is stated with each conversion; where it is not stated, all columns are computed alike. The remaining columns of decoders
 * are rounded in red and blue and cut off in green, unless stated otherwise.
 *
 * Alignment. Any address and any step is served. Alignment changes no result but those of zeliRGBToYUV422_8u_C3P3R and
 * zeliRGBToYUV422_8u_C3P3.
 *
 * Layouts, as the last part of a name gives them, source before destination (one token stands for both):
 *
 *     C3   three bytes a pixel in the order of the name: R G B, B G R or Y U V
 *     C4   four bytes a pixel, the fourth of a destination is set to aval
 *     AC4  four bytes a pixel, the fourth is alpha; a source's is ignored, a destination's stays, but is set to 0 beside P3
 *     C2   packed 4:2:2, four bytes a pair of pixels: Y0 U Y1 V
 *     P3   three planes in the order of the name: R, G, B or Y, U, V
 *     P4   four planes: Y, U, V and the alpha of the source
 *
 * A kept fourth byte is rewritten with the value it held, so no other thread may write it during the call.
 *
 * Chroma. A chroma site is 2 x 1 pixels in 4:2:2 and 2 x 2 in 4:2:0. Encoders convert the average of the site's pixels, all of
 * the same weight. Decoders give all pixels of a site the site's chroma.
 *
 * Odd sizes. In 4:2:2 the last pixel of an odd width is a site of its own: chroma planes hold floor((width + 1) / 2) samples a
 * row, packed rows end with a luma byte and a chroma byte, U. In 4:2:0 the last column of an odd width and the last row of an odd
 * height are neither read nor written, the status is zelStsOddSizeWarn, and chroma planes are floor(width / 2) by floor(height /
 * 2) samples; zeliYUV420ToRGB_8u_P3AC4R differs.
 *
 * Arguments. Pointers are to the top left pixel of the region. A step is the distance in bytes from one row to the next; it may
 * be negative (an image stored bottom-up) or zero. Planes of 4:4:4 images share one step; planes of subsampled images have a
 * step each. roiSize counts pixels of full resolution, for subsampled images too. Nothing outside the region is read or written.
 * Source and destination must not overlap, but the 4:4:4 conversions of one layout (C3R, AC4R, P3R) may be done in place, with
 * the same pointers and steps on both sides.
 *
 * Names without an R at the end take no steps: their images are whole, and the rows of each plane follow each other without a
 * gap. A row is 3 * width bytes of RGB, width bytes of a plane of full resolution, and in 4:2:0 floor(width / 2), in 4:2:2
 * floor((width + 1) / 2) bytes of a chroma plane. Images of 4:2:2 that are of even width and have 256 pixels or more are
 * converted as one long row: their leading columns are counted once, from the first pixel of the image to its last one. All
 * others come out as the conversion with the R does them.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr   a pointer, an array of planes or steps, or an entry of an array of planes is null
 *     zelStsSizeErr      width or height is below 1
 *     zelStsOddSizeWarn  in 4:2:0, width or height is odd
 *     zelStsNoErr        otherwise
 *
 * On an error nothing is written. Pointers are checked before the size. Steps are not checked, nor is the pointer to the alpha
 * plane of zeliRGBToYUV_8u_AC4P4R.
 *
 * Each family below carries an example: an image of one colour, and what every conversion of the family makes of it. Triples
 * are R, G, B and Y, U, V whatever the order in memory.
 */
#ifndef ZELCC_YUV_H
#define ZELCC_YUV_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB to YUV 4:4:4.
 *
 * Example: RGB (204, 87, 65) -> YUV (119, 101, 202) in a 1 x 1 image.
 */

/**
 * RGB pixels to YUV pixels or to Y, U and V planes.
 *
 * Leading columns: 16 * floor(width / 16) of C3R, 8 * floor(width / 8) of C3P3R. They are rounded; luma of the remaining columns
 * is cut off.
 */
ZEL_API ZelStatus zeliRGBToYUV_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);

/** RGB and alpha pixels to YUV and alpha pixels. Luma is rounded to the nearest; the destination keeps its alpha. */
ZEL_API ZelStatus zeliRGBToYUV_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/**
 * R, G and B planes to Y, U and V planes.
 *
 * Leading columns: 4 * floor(width / 4). All are rounded.
 */
ZEL_API ZelStatus zeliRGBToYUV_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);

/**
 * RGB and alpha pixels to Y, U, V and alpha planes.
 *
 * Leading columns: 8 * floor(width / 8). Their luma is cut off, that of the remaining columns is rounded. The pointer to the
 * fourth plane is not checked.
 */
ZEL_API ZelStatus zeliRGBToYUV_8u_AC4P4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[4], int32_t dstStep,
                                         ZelSize roiSize);

/*
 * YUV 4:4:4 to RGB.
 *
 * Example: YUV (90, 99, 128) -> RGB (90, 101, 31) in a 1 x 1 image.
 */

/**
 * YUV pixels to RGB pixels.
 *
 * Leading columns: 8 * floor(width / 8). They are rounded.
 */
ZEL_API ZelStatus zeliYUVToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** YUV and alpha pixels to RGB and alpha pixels. Red and blue are rounded, green is cut off; the destination keeps its alpha. */
ZEL_API ZelStatus zeliYUVToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Y, U and V planes to R, G and B planes. Red and blue are rounded, green is cut off. */
ZEL_API ZelStatus zeliYUVToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                      ZelSize roiSize);

/**
 * Y, U and V planes to RGB pixels.
 *
 * Leading columns: 16 * floor(width / 16). All are rounded.
 */
ZEL_API ZelStatus zeliYUVToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                        ZelSize roiSize);

/**
 * YUV pixels to pixels R G B aval.
 *
 * Leading columns: 8 * floor(width / 8). They are rounded.
 */
ZEL_API ZelStatus zeliYUVToRGB_8u_C3C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                        uint8_t aval);

/*
 * RGB and BGR to 4:2:0.
 *
 * Example: RGB (0, 255, 0) -> YUV (150, 54, 0) in a 2 x 2 image.
 */

/**
 * RGB pixels to Y, U and V planes.
 *
 * Leading columns: 16 * floor(width / 16). Of the 256 grays 31 get a luma one below their value there, and 34 others a V of 127.
 * Luma of the remaining columns is rounded.
 */
ZEL_API ZelStatus zeliRGBToYUV420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV420_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3], ZelSize roiSize);

/** R, G and B planes to Y, U and V planes. Luma is rounded. */
ZEL_API ZelStatus zeliRGBToYUV420_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                         const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV420_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], ZelSize roiSize);

/** BGR and alpha pixels to Y, U and V planes; the alpha is dropped. Luma is rounded. */
ZEL_API ZelStatus zeliBGRToYUV420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                            const int32_t dstStep[3], ZelSize roiSize);

/*
 * RGB to 4:2:2.
 *
 * Luma is cut off in all columns.
 *
 * Example: RGB (64, 128, 192) -> YUV (116, 165, 82) in a 2 x 1 image.
 */

/**
 * RGB pixels to Y, U and V planes.
 *
 * Leading columns: 16 * floor(width / 16). If all pointers and all steps are multiples of 16 (of the form without steps, those
 * that it makes up, and of an image that is one long row the pointers alone), the leading columns have an arithmetic of their
 * own, by which 31 grays get a luma one below their value and 34 others a V of 127.
 */
ZEL_API ZelStatus zeliRGBToYUV422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV422_8u_C3P3(const uint8_t* pSrc, uint8_t* const pDst[3], ZelSize roiSize);

/**
 * R, G and B planes to Y, U and V planes, or RGB pixels to packed 4:2:2.
 *
 * Leading columns: 16 * floor(width / 16).
 */
ZEL_API ZelStatus zeliRGBToYUV422_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3],
                                         const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV422_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYUV422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/*
 * 4:2:0 to RGB and BGR.
 *
 * Example: YUV (73, 108, 188) -> RGB (141, 46, 32) in a 2 x 2 image.
 */

/** Y, U and V planes to R, G and B planes. Red and blue are rounded, green is cut off. */
ZEL_API ZelStatus zeliYUV420ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], ZelSize roiSize);

/**
 * Y, U and V planes to RGB or BGR pixels.
 *
 * Leading columns: 8 * floor(width / 8). They are rounded.
 */
ZEL_API ZelStatus zeliYUV420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst, int32_t dstStep,
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst, int32_t dstStep,
                                           ZelSize roiSize);

/**
 * Y, U and V planes to pixels R G B 0.
 *
 * Leading columns: 4 * floor(width / 4). All are rounded. The last column of an odd width is converted too, with a chroma sample
 * of its own: chroma planes are floor((width + 1) / 2) by floor(height / 2) samples. The status is zelStsOddSizeWarn all the
 * same. A last odd row is not written.
 */
ZEL_API ZelStatus zeliYUV420ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                            int32_t dstStep, ZelSize roiSize);

/*
 * 4:2:2 to RGB.
 *
 * Example: YUV (175, 136, 193) -> RGB (249, 134, 191) in a 2 x 1 image.
 */

/**
 * Y, U and V planes to R, G and B planes or to RGB pixels.
 *
 * Leading columns: 16 * floor(width / 16). They are rounded.
 */
ZEL_API ZelStatus zeliYUV422ToRGB_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV422ToRGB_8u_P3(const uint8_t* const pSrc[3], uint8_t* const pDst[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYUV422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst, int32_t dstStep,
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliYUV422ToRGB_8u_P3C3(const uint8_t* const pSrc[3], uint8_t* pDst, ZelSize roiSize);

/**
 * Y, U and V planes to pixels R G B 0.
 *
 * Leading columns: 8 * floor(width / 8). Nothing is rounded, values of all columns are cut off.
 */
ZEL_API ZelStatus zeliYUV422ToRGB_8u_P3AC4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                            int32_t dstStep, ZelSize roiSize);

/**
 * Packed 4:2:2 to RGB pixels.
 *
 * Leading columns: 16 * floor(width / 16). They are rounded. The last pixel of an odd width takes V of the pair before it; if
 * width is 1 there is none, and the one chroma byte serves as both.
 */
ZEL_API ZelStatus zeliYUV422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
