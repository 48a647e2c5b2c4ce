/*
 * Reduction of bit depth: samples to fewer, equally spaced levels, and to smaller samples where two depths stand in the name.
 * docs/dithering.md shows the methods and says which is for what.
 *
 * Layouts: C1, C3 and C4 reduce all channels; AC4 leaves the fourth sample of every destination pixel alone. Depths: the first is
 * the source's, the second the destination's; one stands for both. Signed samples count from -32768, which is black. Black of
 * floats is 0 and white is 1; beyond them they are bounded, if nothing else is said, and what floats of no number, or beyond 1e6,
 * become is not defined.
 *
 * All arithmetic is in single precision, and results are cut off, not rounded: what comes out a little below an integer becomes
 * the integer below.
 *
 * Steps of any value are accepted, also such as lay rows over each other: rows are then converted in their order.
 */
#ifndef ZELCC_REDUCEBITS_H
#define ZELCC_REDUCEBITS_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Bytes to bits, the first pixel in the highest bit of its byte. A row begins dstBitOffset modulo 8 bits behind the highest bit
 * of its first byte. dtype is one of
 *
 * - zelDitherNone: a bit is set if the byte is above the threshold.
 * - zelDitherStucki: error diffusion by the weights of Stucki, in integers. Of every error 23 / 1024 a weight are passed on,
 * which is less than all of it.
 *
 * So the bytes 0, 255, 255, 0 become the bits 0110 by a threshold of 127.
 *
 * The bits of a row's first byte before the first pixel, and those of its last byte behind the last pixel, keep their values. But
 * a row that begins at an offset other than 0 and ends in the same byte clears the bits behind its end.
 *
 * The two arguments behind the size are not used.
 *
 * Status: zelStsNullPtrErr, zelStsSizeErr if a side is below 1 or the offset is negative, zelStsDitherTypeErr,
 * zelStsMemAllocErr (zelDitherStucki), in this order.
 */
ZEL_API ZelStatus zeliReduceBits_8u1u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          int32_t dstBitOffset, ZelSize roiSize, int32_t unused1, int32_t unused2,
                                          ZelDitherType dtype, uint8_t threshold);

/*
 * To a number of levels. With L = levels - 1, s a sample from black at 0 to white at W (255, 65535, 1), step = W / L and
 * q = trunc(s L / W) step, which is the level at or below s:
 *
 * - zelDitherNone: the nearest level; the lower one of two that are as near. Noise does not matter. The scale is that of W = 1
 *   whatever the depth, and levels come out as their fraction of white, cut off: 5 levels of bytes are 0, 63, 127, 191, 255.
 * - zelDitherBayer: q, or q + step if s - q is above a threshold, M[y % 4][x % 4] step, which all channels of a pixel share.
 *   x and y count from the corner of the region. M is, in fifteenths,
 *
 *        0   8   2  10
 *       12   4  14   6
 *        3  11   1   9
 *       15   7  13   5
 *
 * - zelDitherFS, zelDitherJJN, zelDitherStucki: q, or q + step if s - q is above step / 2, and the difference between the sample
 *   and its level is passed on to the pixels that follow, to the right and one or two rows below, by the weights of Floyd and
 *   Steinberg, of Jarvis, Judice and Ninke, or of Stucki. At black and white, and beyond, nothing is passed on. Rows all run from
 *   the left to the right. The channels are done one after the other, and each begins with what the last rows of the one before
 * it have left over.
 *
 * A dtype above 4 is no error: nothing is done.
 *
 * Noise, from 1 to 100 percent, moves every threshold: with zelDitherBayer by up to so many percent of a step up or down, with
 * the others by up to as many percent of a step around its middle. It has a fixed seed, so that a call always gives the same
 * result. Four neighbours share it with zelDitherJJN and zelDitherStucki, save for the last pixels of a row. With zelDitherBayer
 * the last width % 4 columns of C4, and of 8u_AC4, are compared with M alone, without noise and step.
 *
 * The highest level is cut off, too: of 8 levels of bytes a dither makes 254 as well as 255 of what is white or nearly white. Up
 * to 41 levels of bytes, those without 254 are all but 8, 15, 26 and 32, and with zelDitherBayer 29; without a dither, and from
 * 16 bits to 8, all are.
 *
 * Steps count in bytes as given with zelDitherNone, and lose what is no whole sample with the others.
 *
 * Status: zelStsNullPtrErr, zelStsSizeErr if a side is below 1, zelStsNoiseValErr if noise is not from 0 to 100,
 * zelStsDitherLevelsErr if levels is below 2 or above the limit of the depth, zelStsMemAllocErr (error diffusion, and noise), in
 * this order.
 *
 * Example, _8u_: (100, 150, 250) by 5 levels -> (127, 127, 255) in a 3 x 1 image; _16u_: (25700, 38550, 64250) by 5 levels ->
 * (32767, 32767, 65535); _16s_: (-7068, 5782, 31482) by 5 levels -> (-1, -1, 32767); _16u8u_: (25700, 38550, 64250) by 5 levels
 * -> (127, 127, 255); _16s8u_: (-7068, 5782, 31482) by 5 levels -> (127, 127, 255); _32f8u_: (0.4, 0.6, 0.98) by 5 levels ->
 * (127, 127, 255); _32f16u_: (0.4, 0.6, 0.98) by 5 levels -> (32767, 32767, 65535); _32f16s_: (0.4, 0.6, 0.98) by 5 levels ->
 * (-1, -1, 32767).
 */

/** 8-bit samples, 2 to 256 levels. */
ZEL_API ZelStatus zeliReduceBits_8u_C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                        int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                        int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_8u_C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                        int32_t noise, ZelDitherType dtype, int32_t levels);

/** 16-bit samples, 2 to 65536 levels. */
ZEL_API ZelStatus zeliReduceBits_16u_C1R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u_C3R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                          int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u_C4R(const uint16_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);

/** Signed 16-bit samples: black is -32768, white 32767. 2 to 65536 levels. */
ZEL_API ZelStatus zeliReduceBits_16s_C1R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s_C3R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s_AC4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                          int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s_C4R(const int16_t* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                         int32_t noise, ZelDitherType dtype, int32_t levels);

/** 16-bit samples to 8 bits, 2 to 256 levels. With a dither a level is cut down to its high byte. */
ZEL_API ZelStatus zeliReduceBits_16u8u_C1R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u8u_C3R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u8u_AC4R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                            ZelSize roiSize, int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16u8u_C4R(const uint16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);

/** Signed 16-bit samples to 8 bits, 2 to 256 levels. With a dither a level is cut down to its high byte. */
ZEL_API ZelStatus zeliReduceBits_16s8u_C1R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s8u_C3R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s8u_AC4R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_16s8u_C4R(const int16_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);

/** Floats to 8 bits, 2 to 256 levels. Black is 0 and white is 1. */
ZEL_API ZelStatus zeliReduceBits_32f8u_C1R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f8u_C3R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f8u_AC4R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f8u_C4R(const float* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                           int32_t noise, ZelDitherType dtype, int32_t levels);

/** Floats to 16 bits, 2 to 65536 levels. */
ZEL_API ZelStatus zeliReduceBits_32f16u_C1R(const float* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16u_C3R(const float* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16u_AC4R(const float* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                             int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16u_C4R(const float* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);

/** Floats to signed 16 bits, 2 to 65536 levels. */
ZEL_API ZelStatus zeliReduceBits_32f16s_C1R(const float* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16s_C3R(const float* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16s_AC4R(const float* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                             int32_t noise, ZelDitherType dtype, int32_t levels);
ZEL_API ZelStatus zeliReduceBits_32f16s_C4R(const float* pSrc, int32_t srcStep, int16_t* pDst, int32_t dstStep, ZelSize roiSize,
                                            int32_t noise, ZelDitherType dtype, int32_t levels);

#ifdef __cplusplus
}
#endif

#endif
