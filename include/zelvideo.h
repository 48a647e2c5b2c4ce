/*
 * zelvideo: conversion of video frames between RGB, luma-chroma and gray of any matrix, range, depth and layout.
 *
 * Each side is described by a ZelvFormat. zelvMakePlan checks the pair and writes a plan into memory of the caller; zelvConvert
 * and zelvConvertRows convert images by it. A plan is plain data: it may be copied, kept as long as the process runs, and used by
 * any number of threads at once. No call asks for memory; a conversion uses less than 100 KiB of the stack.
 *
 * Results are the exact values of Recommendation ITU-T H.273 to within half a unit and the few hundredths that docs/video.md
 * states, and are defined there to the last bit. They depend on no width, no column, no alignment and no processor.
 *
 * Worked pixels, of images of 2 x 2 pixels of one colour, none of the options taken:
 *
 *     "RGB" 8 full            255   0   0  ->  "YUV" 420 8 matrix 1 limited     63  102  240
 *     "RGB" 8 full            255   0   0  ->  "YUV" 420 8 matrix 5 full        76   85  255
 *     "RGB" 8 full             16  32  64  ->  "YUV" 420 10 matrix 9 limited  166  576  479
 *     "YUV" 420 8 m. 1 lim.    63 102 240  ->  "RGB" 8 full                    255    1    0
 *     "YUV" 420 10 m. 9 lim.  400 600 450  ->  "RGB" 8 full                     72  104  145
 *     "YUV" 420 10 m. 9 lim.  400 600 450  ->  "YUV" 420 10 matrix 1 limited   407  597  449
 *     "YUV" 420 8 m. 5 full    76  85 255  ->  "YUV" 420 8 matrix 5 limited     81   90  240
 *     "YUV" 444 16 m. 8 full   40000 30000 36000  ->  "RGB" 16 full          46000 37232 39536
 */
#ifndef ZELVIDEO_H
#define ZELVIDEO_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** How the samples of an image lie in memory. Words and dwords are little-endian. */
enum {
    zelvPlanar = 0,      /**< A plane for each component, in the order of `components`; of depths above 8 in words. */
    zelvSemiPlanar = 1,  /**< A plane of Y, and one of pairs: NV12, NV21, P010 and kin. */
    zelvInterleaved = 2, /**< All components of a pixel side by side: packed RGB, AYUV, XV36 and kin. */
    zelvPaired = 3,      /**< 4:2:2, two pixels in four samples: YUY2, UYVY, Y210 and kin. */
    zelvDwords = 4, /**< 10 bits for each of three components in a dword, from its lowest bit on, and 2 bits: Y410, x2rgb10. */
    zelvV210 = 5    /**< 4:2:2 of 10 bits, six pixels in 16 bytes, as in files of that FourCC. */
};

/** Chroma sites. RGB and gray have zelv444. */
enum {
    zelv444 = 0, /**< A site a pixel. */
    zelv422 = 1, /**< 2 x 1 pixels. */
    zelv420 = 2, /**< 2 x 2. */
    zelv440 = 3, /**< 1 x 2. */
    zelv411 = 4  /**< 4 x 1. */
};

/** Where samples of 9 to 15 bits stand in their words. The other bits are ignored in a source and 0 in a destination. */
enum { zelvLowBits = 0, zelvHighBits = 1 };

/** MatrixCoefficients of H.273, and one more. */
enum {
    zelvMatrixRgb = 0,    /**< R, G and B themselves. */
    zelvMatrix709 = 1,    /**< BT.709. */
    zelvMatrixFcc = 4,    /**< Kr 0.30, Kb 0.11. */
    zelvMatrix470 = 5,    /**< BT.601 of 625 lines. JPEG, in full range. */
    zelvMatrix601 = 6,    /**< BT.601 of 525 lines, the same numbers. */
    zelvMatrix240 = 7,    /**< SMPTE 240M. */
    zelvMatrixYCgCo = 8,  /**< Cg stands in U and Co in V. In limited range both have the 219 steps of Y, as H.273 has it. */
    zelvMatrix2020 = 9,   /**< BT.2020 of non-constant luminance. */
    zelvMatrixGiven = 256 /**< By the fields kr and kb. */
};

/** VideoFullRangeFlag of H.273. */
enum { zelvLimited = 0, zelvFull = 1 };

/** ChromaLocType of H.273. In 4:2:2 and 4:1:1 top left is the same as left; in 4:4:0, left the same as centre. */
enum { zelvLeft = 0, zelvCentre = 1, zelvTopLeft = 2 };

/**
 * One side of a conversion. A field that doesn't matter, such as the location where there are no chroma sites, must be 0.
 */
typedef struct ZelvFormat {
    int32_t layout;
    /**
     * The components in the order in which they lie, ended by a zero: letters of Y, U (Cb), V (Cr); R, G, B; A for alpha, X for
     * bits that are ignored in a source and all set in a destination. Planar: "YUV", "YVU", "YUVA", "GBR", "GBRA", "Y" and any
     * other order; semi-planar: "YUV" (NV12) or "YVU" (NV21); interleaved: three or four of any order; paired: "YUYV", "UYVY",
     * "YVYU" or "VYUY"; dwords: four, of which the last is A or X ("UYVA" is Y410, "BGRX" x2rgb10); v210: "YUV".
     */
    char components[8];
    int32_t sampling;
    int32_t depth;     /**< Bits of a sample: 8, 9, 10, 12, 14 or 16; or 32 for floats, of which R, G and B go from 0 to 1. */
    int32_t alignment; /**< zelvLowBits or zelvHighBits. */
    int32_t matrix;
    int32_t range;
    int32_t location;
    int32_t kr; /**< Kr and Kb of zelvMatrixGiven in ten thousandths, each from 0, both together up to 7500. */
    int32_t kb;
} ZelvFormat;

/** How chroma becomes finer or coarser, and what is done with the bits that a smaller depth has no room for. */
typedef struct ZelvOptions {
    int32_t up;     /**< zelvRepeat or zelvLinear. */
    int32_t down;   /**< zelvMean or zelvSited. */
    int32_t dither; /**< zelvRound or zelvOrdered. */
} ZelvOptions;

enum {
    zelvRepeat = 0, /**< All pixels of a site have its chroma. */
    zelvLinear = 1  /**< Chroma is interpolated at the pixels, linearly between the sites where they are. */
};
enum {
    zelvMean = 0, /**< A site has the mean of its pixels. */
    zelvSited = 1 /**< Where sites coincide with pixels, weights 1 2 1 around those; the mean where they lie between. */
};
enum {
    zelvRound = 0,  /**< To the nearest, halves up. */
    zelvOrdered = 1 /**< A pattern of 8 x 8 thresholds that begins at the region. No effect on floats. */
};

/** What zelvMakePlan writes. The content is the library's own. */
typedef struct ZelvPlan {
    uint64_t content[40];
} ZelvPlan;

/** What zelvMakePlan refuses: a field of the source, a field of the destination, or an option. */
enum {
    zelvStsSourceLayoutErr = -1001,
    zelvStsSourceComponentsErr = -1002, /**< Not among those of the layout. */
    zelvStsSourceSamplingErr = -1003,   /**< Subsampled RGB or gray; not 4:2:2 in a layout that is. */
    zelvStsSourceDepthErr = -1004,      /**< No such depth, or not in the layout; floats of Y, U, V. */
    zelvStsSourceAlignmentErr = -1005,  /**< High bits where samples fill their words. */
    zelvStsSourceMatrixErr = -1006,     /**< Not served; zelvMatrixRgb for Y, another for R, G and B. */
    zelvStsSourceRangeErr = -1007,      /**< Neither limited nor full; limited floats. */
    zelvStsSourceLocationErr = -1008,   /**< Not served; not 0 without chroma sites. */
    zelvStsSourceWeightsErr = -1009,    /**< kr and kb beyond their limits; not 0 without zelvMatrixGiven. */
    zelvStsDestinationLayoutErr = -1101,
    zelvStsDestinationComponentsErr = -1102,
    zelvStsDestinationSamplingErr = -1103,
    zelvStsDestinationDepthErr = -1104,
    zelvStsDestinationAlignmentErr = -1105,
    zelvStsDestinationMatrixErr = -1106,
    zelvStsDestinationRangeErr = -1107,
    zelvStsDestinationLocationErr = -1108,
    zelvStsDestinationWeightsErr = -1109,
    zelvStsUpErr = -1201,
    zelvStsDownErr = -1202,
    zelvStsDitherErr = -1203
};

/**
 * Checks a pair of formats and writes the plan of the conversion from one to the other. Without options, pOptions null, all of
 * them are 0. Alpha that the source lacks is opaque.
 *
 * Statuses, the first that holds: zelStsNullPtrErr if pPlan or a format is null; the first field of the source in the order of
 * the list above, the first field of the destination, the first option that is refused. The plan is then left as it was.
 */
ZEL_API ZelStatus zelvMakePlan(ZelvPlan* pPlan, const ZelvFormat* pSource, const ZelvFormat* pDestination,
                               const ZelvOptions* pOptions);

/**
 * Converts a region. The arrays have an entry for each plane of the formats: its first sample, and the distance in bytes from one
 * row to the next, which may be negative. roiSize counts pixels, from 1 x 1 on; chroma of odd sizes is rounded up, and the sites
 * at the right and bottom edge then have fewer pixels. Samples beyond the edges are those of the edge. Nothing outside the region
 * is read or written. Source and destination must not overlap.
 *
 * Statuses, the first that holds: zelStsNullPtrErr if the plan, an array or an entry is null; zelStsContextMatchErr if the plan
 * wasn't written by this version's zelvMakePlan; zelStsSizeErr if width or height is below 1. Nothing is then written.
 */
ZEL_API ZelStatus zelvConvert(const ZelvPlan* pPlan, const uint8_t* const pSrc[], const int32_t srcStep[], uint8_t* const pDst[],
                              const int32_t dstStep[], ZelSize roiSize);

/**
 * The same for some rows of the region only: pointers and size are those of the whole. Rows of the source around them are read
 * where chroma is filtered. Calls that together have all rows give what one call gives, so threads may share a frame.
 *
 * Statuses as for zelvConvert, then zelStsBadArgErr if firstRow is not a row of the region, rowCount is below 1 or leads beyond
 * it, or, where a side has sites of two rows, firstRow is odd or rowCount is odd and doesn't end with the region.
 */
ZEL_API ZelStatus zelvConvertRows(const ZelvPlan* pPlan, const uint8_t* const pSrc[], const int32_t srcStep[],
                                  uint8_t* const pDst[], const int32_t dstStep[], ZelSize roiSize, int32_t firstRow,
                                  int32_t rowCount);

#ifdef __cplusplus
}
#endif

#endif
