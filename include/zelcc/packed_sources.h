/*
 * Conversion of pixels packed into one 16-bit word, formats 555 and 565: to luma and chroma, and to and from 8-bit triples.
 *
 * Words. A name says which channels lie in a word from the lowest field upward, so that BGR has blue and RGB has red in the low
 * bits. Words are in the machine's byte order.
 *
 *               bits 15 ................ 0
 *     BGR555         - rrrrr ggggg bbbbb     the highest bit is not read
 *     BGR565         rrrrr gggggg bbbbb
 *     RGB565         bbbbb gggggg rrrrr
 *
 * A field becomes the high bits of a byte whose low bits are 0: 5 bits times 8, 6 bits times 4. The brightest word therefore has
 * 248 and 252 for its channels, not 255, and converts to less than white. Back in a word, the low bits of a byte are dropped:
 * every word comes back from its bytes as it was, and no byte is rounded up.
 *
 * Colour. R, G and B are gamma-encoded. YCbCr is that of Recommendation ITU-R BT.601 in studio range, Y from 16 (black) to 235
 * (white), Cb and Cr from 16 to 240 around 128 (no colour). YUV is luma of full range, 0 to 255, with the analog colour
 * differences:
 *
 *     Y  =  0.257 R + 0.504 G + 0.098 B +  16         Y = 0.299 R + 0.587 G + 0.114 B
 *     Cb = -0.148 R - 0.291 G + 0.439 B + 128         U = 0.492 (B - Y) + 128
 *     Cr =  0.439 R - 0.368 G - 0.071 B + 128         V = 0.877 (R - Y) + 128
 *
 * A V beyond 0 to 255 is bounded; U stays within 16 to 239. Every conversion computes these formulas in an integer arithmetic of
 * its own, which fixes its result to the last bit and stays within 1.25 of the exact value for the bytes of the words.
 *
 * Columns. The leading columns of each row are computed by one integer arithmetic and the remaining columns by another; the two
 * differ by at most 1. One colour can therefore become two values in one row. How many columns lead depends on the width of the
 * region alone and is stated with each family; where it is not stated, all columns are computed alike. Alignment changes nothing.
 *
 * Layouts, as the last part of a name gives them, source before destination:
 *
 *     C3   one word a pixel where the name has 16u in its place, three bytes a pixel in the order of the name where it has 8u
 *     C2   packed 4:2:2, four bytes a pair of pixels: Y0 Cb Y1 Cr
 *     P3   three planes in the order of the name: Y, Cb, Cr or Y, Cr, Cb or Y, U, V
 *
 * Chroma. A chroma site is 2 x 1 pixels in 4:2:2, 2 x 2 in 4:2:0 and 4 x 1 in 4:1:1. Its chroma is that of the average of its
 * pixels, all of the same weight.
 *
 * Arguments. Pointers are to the top left pixel of the region. A step is the distance in bytes from one row to the next; it may
 * be negative (an image stored bottom-up) or zero, and the step of an image of words loses its lowest bit. Any address is served,
 * odd ones too. roiSize counts pixels of full resolution. Nothing outside the region is read or written. Source and destination
 * must not overlap.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr   a pointer, an array of planes or steps, or an entry of an array of planes is null
 *     zelStsSizeErr      width or height is below the minimum, which each family states
 *     zelStsOddSizeWarn  only where stated: the region does not end on a whole site; the whole sites were converted
 *     zelStsNoErr        otherwise
 *
 * On an error nothing is written. Pointers and entries are checked before the size, but for the entries of zeliRGB565ToYUV420 and
 * zeliRGB565ToYUV422, which come after it. Steps are not checked.
 */
#ifndef ZELCC_PACKED_SOURCES_H
#define ZELCC_PACKED_SOURCES_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Words to YCbCr.
 *
 * Luma is rounded to the nearest, but for the leading columns, where it can be one below; chroma is cut off after an eighth, not
 * a half, has been added.
 *
 * Example, BGR565: 0xf800 -> YCbCr (80, 91, 236) in a 4 x 2 image; BGR555: 0x7c00 -> YCbCr (80, 91, 236).
 */

/**
 * To 4:1:1, minimum size 4 x 1. Chroma planes are floor(width / 4) by height samples. If width is no multiple of 4, luma of the
 * columns behind the last whole site is written too, and the status is zelStsOddSizeWarn.
 *
 * Leading columns: 32 * floor(width / 32).
 */
ZEL_API ZelStatus zeliBGR555ToYCbCr411_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYCbCr411_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);

/**
 * To 4:2:0, minimum size 2 x 2. Chroma planes are floor(width / 2) by floor(height / 2) samples. The last column of an odd width
 * and the last row of an odd height are neither read nor written, and the status is zelStsNoErr.
 *
 * Leading columns: 16 * floor(width / 16), and 4 more if width mod 8 is 4 or above.
 */
ZEL_API ZelStatus zeliBGR555ToYCbCr420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYCbCr420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR555ToYCrCb420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYCrCb420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);

/**
 * To 4:2:2, packed or in planes, minimum size 2 x 1. Chroma planes are floor(width / 2) by height samples. The last column of an
 * odd width is neither read nor written, and the status is zelStsNoErr.
 *
 * Leading columns: 32 * floor(width / 32), and 8 more if width mod 16 is 8 or above.
 */
ZEL_API ZelStatus zeliBGR555ToYCbCr422_16u8u_C3C2R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYCbCr422_16u8u_C3C2R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliBGR555ToYCbCr422_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYCbCr422_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                   const int32_t dstStep[3], ZelSize roiSize);

/*
 * Words to YUV.
 *
 * The last column of an odd width, and in 4:2:0 the last row of an odd height, are neither read nor written, and the status is
 * zelStsOddSizeWarn. Chroma planes are floor(width / 2) samples wide, in 4:2:0 floor(height / 2) high. Leading columns are those
 * of YCbCr 4:2:0 and 4:2:2. Values are rounded, but for luma of the remaining columns from RGB565, which is cut off.
 *
 * Example, BGR565: 0x001f -> YUV (28, 236, 103) in a 4 x 2 image; BGR555: 0x001f -> YUV (28, 236, 103); RGB565: 0xf800 -> YUV
 * (28, 236, 103).
 */

/** BGR words to 4:2:0, minimum size 2 x 2. */
ZEL_API ZelStatus zeliBGR555ToYUV420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGR565ToYUV420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], ZelSize roiSize);

/** RGB words to 4:2:0 and 4:2:2, minimum size 1 x 1; where there is no whole site nothing is written. */
ZEL_API ZelStatus zeliRGB565ToYUV420_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGB565ToYUV422_16u8u_C3P3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                 const int32_t dstStep[3], ZelSize roiSize);

/*
 * Words to triples and back, minimum size 1 x 1.
 *
 * Example, BGR565ToBGR: 0x07ff -> RGB (0, 252, 248) in a 1 x 1 image; RGB565ToRGB: 0x07ff -> RGB (248, 252, 0);
 * BGRToBGR565: RGB (128, 7, 255) -> 0x803f; RGBToRGB565: RGB (255, 7, 128) -> 0x803f. Triples are R, G, B whatever the order in
 * memory.
 */

/** Byte 0 of a pixel is that of the lowest field. */
ZEL_API ZelStatus zeliBGR565ToBGR_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                            ZelSize roiSize);
ZEL_API ZelStatus zeliRGB565ToRGB_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                            ZelSize roiSize);

/** Byte 0 of a pixel goes to the lowest field. */
ZEL_API ZelStatus zeliBGRToBGR565_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToRGB565_8u16u_C3R(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
