/*
 * The lifting transforms between RGB and YCoCg, a luma and two colour differences, in integers: a plain one, and a reversible one
 * (Rev in the name), whose inverse restores every input exactly. YCoCg is MatrixCoefficients 8 of Recommendation ITU-T H.273,
 * the reversible form is the one of video and image coding without loss.
 *
 *     plain                                          reversible
 *     Y  = ( R + 2G + B + 2) >> 2                    Co = R - B
 *     Co = ( R      - B + 1) >> 1                    t  = B + (Co >> 1)
 *     Cg = (-R + 2G - B + 2) >> 2                    Cg = G - t
 *                                                    Y  = t + (Cg >> 1)
 *
 *     R = Y + Co - Cg                                t  = Y - (Cg >> 1)
 *     G = Y      + Cg                                G  = Cg + t
 *     B = Y - Co - Cg                                B  = t - (Co >> 1)
 *                                                    R  = B + Co
 *
 * where >> rounds down. Gray has Co = Cg = 0 and Y = R = G = B. Samples are used as they are, encoded or linear; no offset is
 * added to a difference but in the two conversions between bytes and bytes.
 *
 * Names. BGR are bytes and SBGR signed words, both in the order blue, green, red; a fourth sample may follow. The planes are Y,
 * Co and Cg in this order. The depth tokens are those of the source and the destination: 8u are bytes, 16s signed 16-bit words,
 * 32s signed 32-bit words.
 *
 * Layouts, source before destination:
 *
 *     C3   three samples a pixel
 *     C4   four samples a pixel; a source's fourth is ignored, a destination's fourth is set to aval
 *     P3   three planes, with one step for all
 *
 * Arguments. Pointers are to the top left pixel of the region and need no alignment. A step is the distance in bytes from one row
 * to the next; it may be negative (an image stored bottom-up) or zero; where a sample has 2 or 4 bytes, it loses the bits below
 * that. Nothing outside the region is read or written. Source and destination must not overlap.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr  a pointer, an array of planes or an entry of one is null
 *     zelStsSizeErr     width or height is below 1, in the conversions that say so; the others then write nothing
 *     zelStsNoErr       otherwise
 *
 * Errors are reported in this order, and on an error nothing is written. Steps are not checked.
 *
 * Colours in the examples stand in the order of their memory: B, G, R and Y, Co, Cg.
 */
#ifndef ZELCC_LIFTING_H
#define ZELCC_LIFTING_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Bytes to planes of words. Width and height must be at least 1.
 *
 * Example: BGR (10, 200, 90) -> YCoCg (125, 40, 75) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliBGRToYCoCg_8u16s_C3P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCoCg_8u16s_C4P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);

/**
 * The same, reversible.
 *
 * Example: BGR (10, 200, 90) -> YCoCg (125, 80, 150) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliBGRToYCoCg_Rev_8u16s_C3P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                                 ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCoCg_Rev_8u16s_C4P3R(const uint8_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                                 ZelSize roiSize);

/**
 * Signed words to planes of words. Two results fit no word: Co is 32768 of R 32767 and B -32768, and so is Cg of G 32767 and
 * R and B -32768. In the leading columns, 4 * floor(width / 4), they become 32767, in the remaining ones -32768. Width and height
 * must be at least 1.
 *
 * Example: SBGR (-1000, 200, 3001) -> YCoCg (600, 2001, -400) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliSBGRToYCoCg_16s_C3P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                            ZelSize roiSize);
ZEL_API ZelStatus zeliSBGRToYCoCg_16s_C4P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                            ZelSize roiSize);

/**
 * The same, reversible. Sums wrap at 16 bits, and those of the inverse undo it. Any size is accepted.
 *
 * Example: SBGR (-30000, 200, 30001) -> YCoCg (16484, -5535, -32568) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliSBGRToYCoCg_Rev_16s_C3P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliSBGRToYCoCg_Rev_16s_C4P3R(const int16_t* pSrc, int32_t srcStep, int16_t* const pDst[3], int32_t dstStep,
                                                ZelSize roiSize);

/**
 * Signed words to planes of dwords, which hold every result. Width and height must be at least 1 with C3; with C4 any size is
 * accepted.
 *
 * Example: SBGR (-32768, -32768, 32767) -> YCoCg (-16384, 32768, -16384) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliSBGRToYCoCg_16s32s_C3P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3], int32_t dstStep,
                                               ZelSize roiSize);
ZEL_API ZelStatus zeliSBGRToYCoCg_16s32s_C4P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3], int32_t dstStep,
                                               ZelSize roiSize);

/**
 * The same, reversible. Width and height must be at least 1 with C3; with C4 any size is accepted.
 *
 * Example: SBGR (-32768, -32768, 32767) -> YCoCg (-16385, 65535, -32767) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliSBGRToYCoCg_Rev_16s32s_C3P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3], int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliSBGRToYCoCg_Rev_16s32s_C4P3R(const int16_t* pSrc, int32_t srcStep, int32_t* const pDst[3], int32_t dstStep,
                                                   ZelSize roiSize);

/**
 * Bytes in the order red, green, blue to planes of bytes, with the plain transform: 128 is added to the differences, and they are
 * limited to 0 to 255. Width and height must be at least 1.
 *
 * Example: RGB (255, 0, 0) -> YCoCg (64, 255, 64) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliRGBToYCoCg_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                          ZelSize roiSize);

/**
 * Its inverse. Results are limited to 0 to 255. Any size is accepted.
 *
 * Example: YCoCg (64, 255, 64) -> RGB (255, 0, 1) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);

/**
 * Planes of words to bytes: sums wrap at 16 bits, and what they come to is limited to 0 to 255. Any size is accepted.
 *
 * Example: YCoCg (125, 40, 75) -> BGR (10, 200, 90) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToBGR_16s8u_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToBGR_16s8u_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);

/**
 * The same, reversible. Any size is accepted.
 *
 * Example: YCoCg (125, 80, 150) -> BGR (10, 200, 90) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToBGR_Rev_16s8u_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                 ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToBGR_Rev_16s8u_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                 ZelSize roiSize, uint8_t aval);

/**
 * Planes of words to signed words: sums wrap at 16 bits. Any size is accepted with C3; with C4 width and height must be at
 * least 1.
 *
 * Example: YCoCg (32767, 2, 1) -> SBGR (32764, -32768, -32768) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToSBGR_16s_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToSBGR_16s_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                            ZelSize roiSize, int16_t aval);

/**
 * The same, reversible. Any size is accepted.
 *
 * Example: YCoCg (16484, -5535, -32568) -> SBGR (-30000, 200, 30001) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToSBGR_Rev_16s_P3C3R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToSBGR_Rev_16s_P3C4R(const int16_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                                ZelSize roiSize, int16_t aval);

/**
 * Planes of dwords to signed words: sums wrap at 32 bits, and their low 16 bits are stored. Width and height must be at least 1.
 *
 * Example: YCoCg (-16384, 32768, -16384) -> SBGR (-32768, -32768, -32768) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToSBGR_32s16s_P3C3R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                               ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToSBGR_32s16s_P3C4R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                               ZelSize roiSize, int16_t aval);

/**
 * The same, reversible. Any size is accepted.
 *
 * Example: YCoCg (-16385, 65535, -32767) -> SBGR (-32768, -32768, 32767) in a 1 x 1 image.
 */
ZEL_API ZelStatus zeliYCoCgToSBGR_Rev_32s16s_P3C3R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize);
ZEL_API ZelStatus zeliYCoCgToSBGR_Rev_32s16s_P3C4R(const int32_t* const pSrc[3], int32_t srcStep, int16_t* pDst, int32_t dstStep,
                                                   ZelSize roiSize, int16_t aval);

#ifdef __cplusplus
}
#endif

#endif
