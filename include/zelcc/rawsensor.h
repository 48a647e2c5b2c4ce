/*
 * Colour images from the mosaic of a raw sensor, whose samples each have one colour. The grid tells the colours of the top left
 * 2 x 2 samples of the whole source image (see ZelBayerGrid); they repeat over it.
 *
 * pSrc is the first sample of the whole image, srcSize its size. srcRoi is the region of it that is converted, and pDst is where
 * the region's top left pixel goes, as red, green, blue. A pixel depends on samples around it, also on those outside the region,
 * never on samples outside the image. A region that runs beyond the image is cut, one without a pixel in it writes nothing. Of
 * 16-bit samples a step counts without its lowest bit.
 *
 * Status, in this order: zelStsNullPtrErr if pSrc or pDst is null, zelStsSizeErr if srcSize is below the minimum, zelStsBadArgErr
 * if the grid is none of the four.
 */
#ifndef ZELCC_RAWSENSOR_H
#define ZELCC_RAWSENSOR_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Bilinear interpolation, with green chosen by gradients. The image has at least 2 x 2 samples.
 *
 * At a green sample the mean of the two neighbours beside it is one of the other colours, of the two above and below the other.
 * At a red or blue sample the opposite colour is the mean of the four diagonal neighbours. Green is there the mean of the
 * neighbours above and below if |S(x, y - 2) - S(x, y + 2)| < |S(x - 2, y) - S(x + 2, y)|, of those left and right if it is
 * greater, and of all four if both are equal. Means are rounded half up. In the two outermost columns and rows of the image green
 * is always the mean of all four, and a neighbour outside the image is replaced by the one on the opposite side.
 *
 * Where x or y of the region is negative, pixel (X, Y) of the image goes to pixel (X - x, Y - y) of the destination, and what
 * lies left of and above the image is not written. interpolation is ignored.
 *
 * Example: grid 1 of 10 20 / 30 40 -> RGB (10, 25, 40) (10, 20, 40) (10, 30, 40) (10, 25, 40) in a 2 x 2 image.
 */
ZEL_API ZelStatus zeliCFAToRGB_8u_C1C3R(const uint8_t* pSrc, ZelRect srcRoi, ZelSize srcSize, int32_t srcStep, uint8_t* pDst,
                                        int32_t dstStep, int32_t grid, int32_t interpolation);
ZEL_API ZelStatus zeliCFAToRGB_16u_C1C3R(const uint16_t* pSrc, ZelRect srcRoi, ZelSize srcSize, int32_t srcStep, uint16_t* pDst,
                                         int32_t dstStep, int32_t grid, int32_t interpolation);

/**
 * Adaptive homogeneity-directed interpolation. The image has at least 5 x 5 samples. Beyond its edges it is reflected about the
 * outermost ones.
 *
 * Every pixel is made twice, with green interpolated along the column and along the row; the candidate that has more neighbours
 * of like luma and chroma is taken. With a, b the neighbours of a red or blue sample c on the column or row, d, e those next to
 * them, green is ((a + b) >> 1) + ((2c - d - e) >> 2), limited to between a and b. The missing red and blue are green plus the
 * mean difference of their nearest samples to green. Luma and chroma are
 *
 *     Y = ( 66 R + 129 G +  25 B + 128) >> 8
 *     U = (-38 R -  74 G + 112 B + 128) >> 8
 *     V = (112 R -  94 G -  18 B + 128) >> 8
 *
 * and a neighbour (left, right, above, below) is alike if |dY| and dU^2 + dV^2 are no greater than what the row's candidate has
 * at most towards left and right and the column's at most towards above and below, whichever is less. The numbers of like
 * neighbours are compared in sums over 3 x 3 pixels. If they are equal, the pixel follows its left neighbour, the first one of a
 * row takes the row's candidate. So do the columns, if the region has pixels on both sides of it, at which the inner part of the
 * image begins and ends: that is at least 5 samples from its edges, with whole 2 x 2 cells that start with red. Squares of 16-bit
 * chroma wrap at 32 bits, and are then compared as signed numbers.
 *
 * Where x or y of the region is negative, it becomes 0, and the size stays as it is.
 *
 * pTmp is memory of 30 rows of tmpStep bytes for this call alone, where a row has room for the width of the region inside the
 * image and 6 samples more. It is not tested, for null neither, and needs no alignment.
 *
 * Example: grid 3 of 20 10 20 10 20 / 30 20 30 20 30 / 20 10 20 10 20 / 30 20 30 20 30 / 20 10 20 10 20 -> RGB (10, 20, 30) in a
 * 5 x 5 image.
 */
ZEL_API ZelStatus zeliDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, ZelRect srcRoi, ZelSize srcSize, int32_t srcStep, uint8_t* pDst,
                                           int32_t dstStep, int32_t grid, void* pTmp, int32_t tmpStep);
ZEL_API ZelStatus zeliDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, ZelRect srcRoi, ZelSize srcSize, int32_t srcStep,
                                            uint16_t* pDst, int32_t dstStep, int32_t grid, void* pTmp, int32_t tmpStep);

#ifdef __cplusplus
}
#endif

#endif
