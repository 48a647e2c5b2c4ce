/*
 * Conversion of 8-bit luma and chroma to pixels packed into one 16-bit word, formats 444, 555 and 565, with and without an
 * ordered dither.
 *
 * Words. A name says which channels lie in a word from the lowest field upward, so that BGR has blue and RGB has red in the low
 * bits. Bits above the fields are 0. Words are in the machine's byte order.
 *
 *               bits 15 ................ 0
 *     BGR444      ---- rrrr gggg bbbb            RGB444      ---- bbbb gggg rrrr
 *     BGR555         - rrrrr ggggg bbbbb         RGB555         - bbbbb ggggg rrrrr
 *     BGR565         rrrrr gggggg bbbbb          RGB565         bbbbb gggggg rrrrr
 *
 * Without a dither a field is the high bits of its channel's byte; nothing is rounded. With it the channel's byte v is rounded to
 * one of the two levels around it: up if it is further above the lower one than a threshold, which depends on the pixel's place
 * in a pattern of 4 x 4 pixels. The pattern begins at the corner of the region, in the order of the rows of the call, and is,
 * from low thresholds to high ones:
 *
 *      0  8  2 10
 *     12  4 14  6
 *      3 11  1  9
 *     15  7 13  5
 *
 * So a region that is converted in parts comes out as in one call if all parts but the last are a multiple of 4 wide and high.
 * Black has fields of 0 at every place and white has full ones, but for the green of 565 at the highest threshold, where it is 62
 * and not 63.
 *
 * Colour. R, G and B are gamma-encoded and use 0 to 255. YCbCr is that of Recommendation ITU-R BT.601 in studio range, Y from 16
 * (black) to 235 (white), Cb and Cr from 16 to 240 around 128 (no colour). YUV is luma of full range, 0 to 255, with the analog
 * colour differences around 128:
 *
 *     R = 1.164 (Y - 16) + 1.596 (Cr - 128)                           R = Y + 1.140 (V - 128)
 *     G = 1.164 (Y - 16) - 0.813 (Cr - 128) - 0.392 (Cb - 128)        G = Y - 0.394 (U - 128) - 0.581 (V - 128)
 *     B = 1.164 (Y - 16) + 2.017 (Cb - 128)                           B = Y + 2.032 (U - 128)
 *
 * Any byte is accepted for Y, Cb, Cr, U and V, and results are bounded to 0 to 255 before they become fields. Every conversion
 * computes these formulas in an integer arithmetic of its own, which fixes its result to the last bit and stays within 1.5 of the
 * exact value. Values are cut off rather than rounded unless another thing is said.
 *
 * Columns. Some conversions without a dither compute the left part of each row, the leading columns, by one arithmetic and the
 * remaining columns by others; they differ by at most 1 before the fields are cut. How many columns lead depends on the width of
 * the region alone and is stated with each family; where it is not stated, all columns are computed alike. Alignment changes
 * nothing.
 *
 * Layouts, as the last part of a name gives them, source before destination:
 *
 *     C3   three bytes a pixel, Y Cb Cr, in the place of the source; one word a pixel in that of the destination
 *     C2   packed 4:2:2, four bytes a pair of pixels: Y0 Cb Y1 Cr; a row is 2 * width bytes, for odd widths too
 *     P3   three planes, Y, Cb, Cr or Y, U, V
 *
 * Chroma. A chroma site is 2 x 1 pixels in 4:2:2, 2 x 2 in 4:2:0 and 4 x 1 in 4:1:1; all pixels of a site take its chroma. Chroma
 * planes are ceil(width / 2) samples wide and in 4:2:0 ceil(height / 2) high, so that the last column or row of an odd size has
 * chroma of its own; in 4:1:1 they are floor(width / 4) wide.
 *
 * Arguments. Pointers are to the top left pixel of the region. Steps are distances in bytes from one row to the next; they may be
 * negative (an image stored bottom-up) or zero, and dstStep loses its lowest bit. Full-resolution planes share one step,
 * subsampled ones have a step each. Any address is served, odd ones too. roiSize counts pixels of full resolution. Nothing
 * outside the region is read or written, but where a family says so. Source and destination must not overlap.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr   a pointer, an array of planes or steps, or an entry of an array of planes is null
 *     zelStsSizeErr      width or height is below 1; in 4:1:1, width is below 4 or height below 1
 *     zelStsOddSizeWarn  4:1:1 alone: width is no multiple of 4; the whole region was converted
 *     zelStsNoErr        otherwise
 *
 * On an error nothing is written. Pointers are checked before the size, and the entries of arrays after it, but in 4:1:1 before
 * it. Steps are not checked.
 */
#ifndef ZELCC_PACKED_DESTINATIONS_H
#define ZELCC_PACKED_DESTINATIONS_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * YCbCr 4:4:4, 4:2:2, 4:2:0 and 4:1:1 to words.
 *
 * Example, BGR444: YCbCr (100, 110, 150) -> 0x853 in a 4 x 1 image; RGB444: YCbCr (100, 110, 150) -> 0x358; BGR555: YCbCr (100,
 * 110, 150) -> 0x4147; RGB555: YCbCr (100, 110, 150) -> 0x1d50; BGR565: YCbCr (100, 110, 150) -> 0x82a7; RGB565: YCbCr (100, 110,
 * 150) -> 0x3ab0.
 */

/** 4:4:4, three bytes a pixel. Leading columns: 8 * floor(width / 8). */
ZEL_API ZelStatus zeliYCbCrToBGR444_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB444_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR555_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB555_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR565_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB565_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);

/** 4:4:4, three planes. */
ZEL_API ZelStatus zeliYCbCrToBGR444_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB444_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR555_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB555_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR565_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB565_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);

/**
 * 4:2:2, packed. The last pixel of an odd width takes the Cr of the pair before it. Leading columns: 8 * floor(width / 8).
 *
 * A region one pixel wide does not become words: each row stores three bytes, R, G and B for both names, with the one chroma byte
 * for Cb and Cr, and its rows are dstStep / 2 bytes apart, from the top downward. So the last row needs room for three bytes.
 */
ZEL_API ZelStatus zeliYCbCr422ToBGR444_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB444_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR555_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB555_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR565_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB565_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);

/** 4:2:2, three planes. A region one pixel wide is left as it is, and the status is zelStsNoErr. */
ZEL_API ZelStatus zeliYCbCr422ToBGR444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);

/** 4:2:0, three planes. */
ZEL_API ZelStatus zeliYCbCr420ToBGR444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);

/**
 * 4:1:1, three planes. Values are rounded before the fields are cut. The up to three columns behind the last whole site take the
 * chroma of that site. Leading columns: 4 * floor(width / 4).
 */
ZEL_API ZelStatus zeliYCbCr411ToBGR555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToBGR565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                   int32_t dstStep, ZelSize roiSize);

/*
 * YUV 4:2:0, three planes, to words.
 *
 * The last column of an odd width and the last row of an odd height are computed by another arithmetic than the rest. A region
 * one pixel wide or high is left as it is, and the status is zelStsNoErr.
 *
 * Where floor(width / 2) mod 4 is 2 (widths 4, 5, 12, 13, 20, 21 ...), all rows but the last one of an odd height are written up
 * to column 2 * floor(width / 2) + 1, with the luma of these columns and the chroma sample after the last of the whole sites.
 * Then the rows of luma and destination need room for 2 * floor(width / 2) + 2 pixels, and those of chroma for floor(width / 2) +
 * 1 samples. Where rows of the destination are closer than that, what is in the region has its own values.
 *
 * Example, BGR444: YUV (76, 85, 255) -> 0xd10 in a 2 x 2 image; RGB444: YUV (76, 85, 255) -> 0x1d; BGR555: YUV (76, 85, 255) ->
 * 0x6c40; RGB555: YUV (76, 85, 255) -> 0x5b; BGR565: YUV (76, 85, 255) -> 0xd880; RGB565: YUV (76, 85, 255) -> 0x9b.
 */

ZEL_API ZelStatus zeliYUV420ToBGR444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB444_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToBGR555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB555_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToBGR565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB565_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                 int32_t dstStep, ZelSize roiSize);

/*
 * YCbCr 4:4:4, 4:2:2 and 4:2:0 to words with an ordered dither.
 *
 * Example, BGR444Dither: YCbCr (100, 110, 150) -> 0x864 0x854 0x854 0x853 in a 4 x 1 image; RGB444Dither: YCbCr (100, 110, 150)
 * -> 0x468 0x458 0x458 0x358; BGR555Dither: YCbCr (100, 110, 150) -> 0x4168 0x4147 0x4168 0x4147; RGB555Dither: YCbCr (100, 110,
 * 150) -> 0x2170 0x1d50 0x2170 0x1d50; BGR565Dither: YCbCr (100, 110, 150) -> 0x82c8 0x82a7 0x82c8 0x82a7; RGB565Dither: YCbCr
 * (100, 110, 150) -> 0x42d0 0x3ab0 0x42d0 0x3ab0.
 */

/** 4:4:4, three bytes a pixel. */
ZEL_API ZelStatus zeliYCbCrToBGR444Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB444Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR555Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB555Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR565Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB565Dither_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                    ZelSize roiSize);

/** 4:4:4, three planes. */
ZEL_API ZelStatus zeliYCbCrToBGR444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint16_t* pDst,
                                                      int32_t dstStep, ZelSize roiSize);

/** 4:2:2, packed. The last pixel of an odd width takes its one chroma byte for Cb and Cr. */
ZEL_API ZelStatus zeliYCbCr422ToBGR444Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB444Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR555Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB555Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR565Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB565Dither_8u16u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                                         ZelSize roiSize);

/** 4:2:2, three planes. */
ZEL_API ZelStatus zeliYCbCr422ToBGR444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);

/**
 * 4:2:0, three planes.
 *
 * Where width and height are both odd, the last row is written two pixels too far: column width with the chroma of the last
 * pixel, column width + 1 with the next chroma sample. That row of luma, chroma and destination needs room for it, in a region of
 * a single pixel too.
 */
ZEL_API ZelStatus zeliYCbCr420ToBGR444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                         int32_t dstStep, ZelSize roiSize);

/*
 * YUV 4:2:0, three planes, to words with an ordered dither. All rows and columns are computed alike.
 *
 * Where width and height are both odd, the last row is written two pixels too far: column width with the chroma of the last
 * pixel, column width + 1 with the next chroma sample. That row of luma, chroma and destination needs room for it, in a region of
 * a single pixel too.
 *
 * Example, BGR444Dither: YUV (100, 110, 150) -> 0x864 0x754 0x864 0x754 in a 4 x 1 image; RGB444Dither: YUV (100, 110, 150) ->
 * 0x468 0x457 0x468 0x457; BGR555Dither: YUV (100, 110, 150) -> 0x4188 0x3d68 0x4188 0x3d67; RGB555Dither: YUV (100, 110, 150) ->
 * 0x2190 0x216f 0x2190 0x1d6f; BGR565Dither: YUV (100, 110, 150) -> 0x8308 0x7ae8 0x8308 0x7ae7; RGB565Dither: YUV (100, 110,
 * 150) -> 0x4310 0x42ef 0x4310 0x3aef.
 */

ZEL_API ZelStatus zeliYUV420ToBGR444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB444Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToBGR555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB555Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToBGR565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYUV420ToRGB565Dither_8u16u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint16_t* pDst,
                                                       int32_t dstStep, ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
