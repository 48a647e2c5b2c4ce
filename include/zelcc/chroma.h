/*
 * Conversion between the layouts of 8-bit luma-chroma images: storage forms, chroma orders and subsampling schemes.
 *
 * No conversion here changes the colour space or the range: a sample is moved, dropped, repeated or averaged.
 *
 * Layouts, as the last part of a name gives them, source before destination (one token stands for both):
 *
 *     C2   packed 4:2:2, four bytes a pair of pixels: Y0 Cb Y1 Cr for YCbCr422, Y0 Cr Y1 Cb for YCrCb422, Cb Y0 Cr Y1 for
 *          CbYCr422
 *     P3   three planes: Y, Cb, Cr for YCbCr; Y, Cr, Cb for YCrCb
 *     P2   a luma plane, and a chroma plane of byte pairs Cb Cr, Cb first whatever the name of the other side
 *
 * Chroma planes, for a region of width by height pixels:
 *
 *     422    width / 2 samples in each of height rows
 *     420    width / 2 samples in each of height / 2 rows
 *     411    width / 4 samples in each of height rows
 *     1620   width / 4 samples in each of height / 4 rows
 *
 * A chroma row of P2 is twice as many bytes.
 *
 * Whole sites. A region is cut down to whole chroma sites of both sides: an even width, with 4:1:1 on either side a multiple of
 * 4; an even height with 4:2:0 on either side. Columns and rows behind them are neither read nor written, and the status is
 * zelStsNoErr unless stated otherwise.
 *
 * Means. mean(a, b) is (a + b + 1) >> 1. Where a conversion takes means, some round up and some down by the place in the row, and
 * those places are part of the result. They are counted from the region's left edge and depend on its width alone.
 *
 * Arguments. Pointers are to the top left pixel of the region. A step is the distance in bytes from one row to the next;
 * it may be negative (an image stored bottom-up) or zero. Every plane has a step of its own. roiSize counts pixels of full
 * resolution. Nothing outside the region is read or written, save by the conversions of slices. Source and destination must
 * not overlap. Alignment changes no result; on multiples of 64 conversions are fastest.
 *
 * Status, of every conversion:
 *
 *     zelStsNullPtrErr   a pointer, an array of planes or steps, or an entry of an array of planes is null
 *     zelStsSizeErr      width or height is below the minimum, which is stated with each family
 *     zelStsOddSizeWarn  only where stated: the region does not end on a whole site; the whole sites were converted
 *     zelStsNoErr        otherwise
 *
 * On an error nothing is written. Pointers are checked before the size unless stated otherwise. Steps are not checked.
 *
 * Each family below carries an example: rows of samples from left to right, with a slash between rows. An image has as many as
 * its scheme says; what an example does not tell plays no part in it.
 */
#ifndef ZELCC_CHROMA_H
#define ZELCC_CHROMA_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * 4:2:2 to 4:2:2: another byte order or storage form, the same samples.
 *
 * The minimum size is 2 x 1.
 *
 * Two pixels with luma 10 20, Cb 30 and Cr 40 are the bytes 10 30 20 40 of YCbCr422, 10 40 20 30 of YCrCb422 and 30 10 40 20 of
 * CbYCr422.
 *
 * Example: luma 10 20, Cb 30, Cr 40 -> luma 10 20, Cb 30, Cr 40 in a 2 x 1 image.
 */

/** Packed to packed pixels. To YCrCb422 a height below 1 is no error: nothing is written and the status is zelStsNoErr. */
ZEL_API ZelStatus zeliCbYCr422ToYCbCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToCbYCr422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToYCrCb422_8u_C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                                ZelSize roiSize);

/** Packed pixels to Y, Cb and Cr planes. */
ZEL_API ZelStatus zeliYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCbCr422_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);

/** Y, Cb and Cr planes to pixels Y0 Cb Y1 Cr. */
ZEL_API ZelStatus zeliYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst, int32_t dstStep,
                                        ZelSize roiSize);

/** Y, Cb and Cr planes to pixels Y0 Cr Y1 Cb. A height below 1 is no error: nothing is written. */
ZEL_API ZelStatus zeliYCbCr422ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);

/** Y, Cb and Cr planes to pixels Cb Y0 Cr Y1. An odd width is answered with zelStsOddSizeWarn. */
ZEL_API ZelStatus zeliYCbCr422ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);

/*
 * 4:2:0 to 4:2:0 and 4:1:1 to 4:1:1: chroma from one interleaved plane to two and back, the same samples.
 *
 * The minimum size of 4:2:0 is 2 x 2. The minimum width of 4:1:1 is 4; a height below 1 is no error there: nothing is written
 * and the status is zelStsNoErr.
 *
 * Example, 420: Cb 1 3, Cr 2 4 -> Cb 1 3, Cr 2 4 in a 4 x 2 image; 411: Cb 1 3, Cr 2 4 -> Cb 1 3, Cr 2 4 in an 8 x 1 image.
 */

/** Luma and interleaved chroma to planes Y, Cb, Cr. */
ZEL_API ZelStatus zeliYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                        uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                        uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);

/**
 * Luma and interleaved chroma to planes Y, Cr, Cb.
 *
 * The order of the checks: the pointers, the array among them; a width or height below 1; the entries of the array; the minimum
 * size.
 */
ZEL_API ZelStatus zeliYCbCr420ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);

/** Planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb, to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY, int32_t dstYStep,
                                        uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY, int32_t dstYStep,
                                        uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/*
 * 4:2:2 to 4:2:0: out[k][i] = in[2k][i]. The chroma of odd rows is dropped.
 *
 * The minimum size is 2 x 2.
 *
 * Example: chroma 10 / 20 / 30 / 40 -> chroma 10 / 30 in a 2 x 4 image.
 */

/** Packed pixels to planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCbCr420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCrCb420_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);

/** Packed pixels to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                                  uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCbCr420_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                                  uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/** Planes to planes, or to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/*
 * 4:2:0 to 4:2:2: out[2k][i] = out[2k + 1][i] = in[k][i].
 *
 * The minimum size is 2 x 2.
 *
 * Example: chroma 10 / 30 -> chroma 10 / 10 / 30 / 30 in a 2 x 4 image.
 */

/** Luma and interleaved chroma to packed pixels. */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToCbYCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);

/** Planes Y, Cr, Cb to packed pixels. The array of source planes itself is not checked and must not be null; its entries are. */
ZEL_API ZelStatus zeliYCrCb420ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToCbYCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);

/**
 * Luma and interleaved chroma, or planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb, to planes Y, Cb, Cr.
 *
 * The destination's chroma planes should have one step. Where they differ, some samples of the odd rows of Cr go to another
 * place: with n = floor(width / 2), sample i of row 2k + 1 lies at 2k * dstStep[2] + dstStep[1] + i instead of
 * (2k + 1) * dstStep[2] + i for all i from n - n mod 64 up to but not including n - n mod 8.
 */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:2:2 to 4:1:1: out[k][i] = in[k][2i]. Every second chroma sample of a row is dropped.
 *
 * The minimum width is 4. A height below 1 is no error unless stated otherwise: nothing is written and the status is zelStsNoErr.
 *
 * Example: chroma 10 20 30 40 -> chroma 10 30 in an 8 x 1 image.
 */

/** Packed pixels to planes Y, Cb, Cr. From YCbCr422 the minimum size is 4 x 1. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCbCr411_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                  const int32_t dstStep[3], ZelSize roiSize);

/** Packed pixels to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr411_8u_C2P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                                  uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/** Planes to planes, or to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr422ToYCbCr411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/*
 * 4:1:1 to 4:2:2: out[k][2i] = out[k][2i + 1] = in[k][i].
 *
 * The minimum width is 4. A height below 1 is no error: nothing is written and the status is zelStsNoErr.
 *
 * Example: chroma 10 30 -> chroma 10 10 30 30 in an 8 x 1 image.
 */

/** Luma and interleaved chroma to packed pixels, or to planes Y, Cb, Cr. */
ZEL_API ZelStatus zeliYCbCr411ToYCbCr422_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToYCbCr422_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);

/** Planes to packed pixels. */
ZEL_API ZelStatus zeliYCbCr411ToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                  int32_t dstStep, ZelSize roiSize);

/** Planes to planes Y, Cb, Cr, for YCrCb422 Y, Cr, Cb. */
ZEL_API ZelStatus zeliYCbCr411ToYCbCr422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToYCrCb422_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:1:1 to 4:2:0, a fold: out[k][2i] = in[2k][i] and out[k][2i + 1] = in[2k + 1][i].
 *
 * No sample is lost, but half of them stand one chroma column from where they belong. The conversions from 4:2:0 to 4:1:1 below
 * undo it.
 *
 * The minimum size is 4 x 2.
 *
 * Example: chroma 10 20 / 30 40 -> chroma 10 30 20 40 in an 8 x 2 image.
 */

/** Luma and interleaved chroma to planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb. */
ZEL_API ZelStatus zeliYCbCr411ToYCbCr420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToYCrCb420_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);

/** Planes to luma and interleaved chroma, or to planes. */
ZEL_API ZelStatus zeliYCbCr411ToYCbCr420_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToYCbCr420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                                const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:2:0 to 4:1:1, the fold undone: out[2k][i] = in[k][2i] and out[2k + 1][i] = in[k][2i + 1].
 *
 * The minimum size is 4 x 2.
 *
 * Example: chroma 10 30 20 40 -> chroma 10 20 / 30 40 in an 8 x 2 image.
 */

/** Luma and interleaved chroma to planes Y, Cb, Cr. */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr411_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                  int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                  ZelSize roiSize);

/** Planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb, to luma and interleaved chroma. */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToYCbCr411_8u_P3P2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDstY,
                                                  int32_t dstYStep, uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);

/*
 * 4:1:1 to 4:2:0 and back with means between samples, not the fold above.
 *
 * Example, 411To420: chroma 10 20 / 1 2 / 30 40 / 3 4 -> chroma 10 15 20 20 / 30 35 40 40 in an 8 x 4 image; 420To411:
 * chroma 10 11 20 21 / 30 31 40 41 -> chroma 10 20 / 20 30 / 30 40 / 30 40.
 */

/**
 * Planes to planes, chroma interpolated along the row: out[k][2i] = in[2k][i], and out[k][2i + 1] is the mean of in[2k][i] and
 * in[2k][i + 1], the last sample standing for its missing neighbour. Odd chroma rows are not read.
 *
 * With n = width / 4 the means of i < 16 * floor((n - 1) / 16) are (a + b + 1) >> 1, those of the other samples (a + b) >> 1.
 *
 * zelStsSizeErr: width or height is below 4 or no multiple of 4.
 */
ZEL_API ZelStatus zeliYCbCr411To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                           const int32_t dstStep[3], ZelSize roiSize);

/**
 * Planes to planes, chroma interpolated between rows: out[2k][i] = in[k][2i], and out[2k + 1][i] is the mean of in[k][2i] and
 * in[k + 1][2i], the last row standing for its missing neighbour. Odd samples of a row are not used.
 *
 * With n = width / 4 the means of i < 32 * floor(n / 32) are (a + b + 1) >> 1, those of the other samples (a + b) >> 1.
 *
 * zelStsSizeErr: width is below 4 or no multiple of 4, or height is below 2 or odd.
 */
ZEL_API ZelStatus zeliYCbCr420To411_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                           const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:2:0 to and from 1620, chroma a quarter as wide and a quarter as high as luma.
 *
 * zelStsSizeErr: width or height is below 4 or no multiple of 4.
 *
 * Example, 1620To420: chroma 10 20 / 50 60 -> chroma 10 15 20 20 / 30 27 40 40 / 50 55 60 60 / 50 55 60 60 in an 8 x 8 image;
 * 420To1620: chroma 10 15 20 20 / 30 27 40 40 / 50 55 60 60 / 50 55 60 60 -> chroma 10 20 / 50 60.
 */

/** Planes to planes: out[k][i] = in[2k][2i]. */
ZEL_API ZelStatus zeliYCbCr420To1620_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                            const int32_t dstStep[3], ZelSize roiSize);

/**
 * Planes to planes, chroma interpolated in both directions. With a = in[k][i], b = in[k][i + 1], c = in[k + 1][i] and
 * d = in[k + 1][i + 1] the four samples out[2k][2i], out[2k][2i + 1], out[2k + 1][2i] and out[2k + 1][2i + 1] are
 *
 *     a          mean(a, b)
 *     mean(a, c)  mean(mean(a, b), mean(b, d))
 *
 * In the last column the right sample of each pair equals the left one. In the last row the two rows are equal, both as the upper
 * one.
 *
 * With n = width / 4 all means of i < 16 * floor((n - 1) / 16) are (a + b + 1) >> 1, those of the other samples (a + b) >> 1.
 */
ZEL_API ZelStatus zeliYCbCr1620To420_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* const pDst[3],
                                            const int32_t dstStep[3], ZelSize roiSize);

/*
 * 4:2:2 to and from 4:2:0 of interlaced frames. Even rows are one field and odd rows the other, in chroma as in luma; chroma is
 * interpolated between rows of one field.
 *
 * The minimum size is 2 x 4. A region is cut down to an even width and a height that is a multiple of 4; if that takes anything
 * away, the status is zelStsOddSizeWarn.
 *
 * Example, YCbCr422To: chroma 10 / 20 / 30 / 40 -> chroma 15 / 35 in a 2 x 4 image; CbYCr422To: chroma 10 / 20 / 30 / 40 ->
 * chroma 15 / 35; YCbCr420To: chroma 10 / 20 / 30 / 40 -> chroma 10 / 20 / 18 / 23 / 28 / 33 / 30 / 40 in a 2 x 8 image.
 */

/**
 * 4:2:2 to 4:2:0, planes or pixels Cb Y0 Cr Y1 to planes. Four chroma rows a, b, c, d make two:
 *
 *     (3 a + c + 2) >> 2
 *     (b + 3 d + 2) >> 2
 */
ZEL_API ZelStatus zeliYCbCr422To420_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                     uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                                            const int32_t dstStep[3], ZelSize roiSize);

/**
 * 4:2:0 to 4:2:2, planes to planes or to pixels Cb Y0 Cr Y1. The first two and the last two rows are those of the source. In
 * between, source rows a, b, c, d from 2k on make the rows from 4k + 2 on:
 *
 *     (5 a + 3 c + 4) >> 3
 *     (7 b + d + 4) >> 3
 *     (a + 7 c + 4) >> 3
 *     (3 b + 5 d + 4) >> 3
 */
ZEL_API ZelStatus zeliYCbCr420To422_Interlace_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                     uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                            int32_t dstStep, ZelSize roiSize);

/*
 * 4:2:0 to 4:2:2 with chroma interpolated by four taps: out[2k] = in[k], and
 *
 *     out[2k + 1] = (9 (in[k] + in[k + 1]) - in[k - 1] - in[k + 2] + 8) >> 4, bounded to 0 to 255
 *
 * where the first and the last row stand for the rows beyond them. Luma stays.
 *
 * The minimum size is 2 x 8. The region is cut down to an even width and a height that is a multiple of 8.
 *
 * The filter overshoots at edges.
 *
 * Example: chroma 0 / 0 / 160 / 160 -> chroma 0 / 0 / 0 / 80 / 160 / 170 / 160 / 160 in a 2 x 8 image.
 */

/** Planes Y, Cb, Cr, for YCrCb420 Y, Cr, Cb, or luma and interleaved chroma to planes Y, Cb, Cr. */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                       uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToYCbCr422_Filter_8u_P3R(const uint8_t* const pSrc[3], const int32_t srcStep[3],
                                                       uint8_t* const pDst[3], const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                         int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                         ZelSize roiSize);

/*
 * Smoothing of whole images or of slices, on the way from luma and interleaved chroma to another layout. Luma row y becomes
 * (Y[y - 1] + 2 Y[y] + Y[y + 1]) / 4, where the first and the last row of the image stand for the rows beyond them. Chroma row k
 * becomes the mean of rows k and k + 1, and the last one that of the last two.
 *
 * The argument layout says where in the image the region lies:
 *
 *     zelSliceTop                                        at the top edge
 *     zelSliceMiddle                                     at neither edge
 *     zelSliceBottom                                     at the bottom edge
 *     zelSliceTop | zelSliceMiddle | zelSliceBottom      the whole image; other bits may be set as well
 *
 * Any other value writes nothing, and the status is zelStsNoErr. With height cut down to even, these rows of luma are written,
 * counted from the region's first row, and half as many of chroma; the rest is left to the slice below, which starts with it:
 *
 *     top      0 to height - 3
 *     middle  -2 to height - 3
 *     bottom  -2 to height - 1
 *     whole    0 to height - 1
 *
 * So the rows above a middle or a bottom slice must exist: three of luma and one of chroma in the source, two of luma and one of
 * chroma in the destination.
 *
 * The minimum size is 2 x 2. The region is cut down to an even width and an even height.
 *
 * Example of a whole image, P2C2R: luma 10 10 / 20 20 / 30 30 / 40 40, chroma 50 / 61 -> luma 13 13 / 21 21 / 31 31 / 38 38,
 * chroma 55 / 55 / 55 / 55 in a 2 x 4 image; P2P3R: luma 10 10 / 20 20 / 30 30 / 40 40, chroma 50 / 61 -> luma 12 12 / 20 20 /
 * 30 30 / 37 37, chroma 55 / 55.
 */
enum { zelSliceTop = 1, zelSliceMiddle = 4, zelSliceBottom = 16 };

/**
 * To pixels Y0 Cb Y1 Cr: the two rows of a pair take the smoothed chroma of its row.
 *
 * In the leading columns luma is mean(mean(Y[y - 1], Y[y]), mean(Y[y], Y[y + 1])) and chroma mean(a, b). In the others luma is
 * (Y[y - 1] + 2 Y[y] + Y[y + 1]) >> 2 and chroma (a + b) >> 1. Leading columns: 32 * floor(width / 32), but 8 * floor(width / 8)
 * in the first two rows of a top slice and the last two of a bottom slice. Width counts even.
 *
 * In a whole image nothing leads in the first two and the last two rows, and luma of the columns that do not lead is one higher,
 * (Y[y - 1] + 2 Y[y] + Y[y + 1] + 4) >> 2, bounded to 255. A whole image of height 2 keeps its chroma.
 */
ZEL_API ZelStatus zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                         int32_t srcCbCrStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize,
                                                         int32_t layout);

/**
 * To planes Y, Cr, Cb of 4:2:0.
 *
 * Luma of the leading 16 * floor(width / 16) columns is mean(mean(Y[y - 1], Y[y]), mean(Y[y], Y[y + 1])), of the others
 * (Y[y - 1] + 2 Y[y] + Y[y + 1]) >> 2. The leading 16 * floor(width / 32) samples of chroma are mean(a, b), the others
 * (a + b) >> 1. A whole image of height 2 keeps its chroma, and its luma is (Y[y - 1] + 2 Y[y] + Y[y + 1] + 4) >> 2, bounded to
 * 255.
 *
 * A width or height below 1 is reported before null pointers, and those before the minimum size.
 */
ZEL_API ZelStatus zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr,
                                                         int32_t srcCbCrStep, uint8_t* const pDst[3], const int32_t dstStep[3],
                                                         ZelSize roiSize, int32_t layout);

#ifdef __cplusplus
}
#endif

#endif
