/* Types, status values and enumerations that all conversions share. */
#ifndef ZELCC_TYPES_H
#define ZELCC_TYPES_H

#include <stdint.h>

#if defined(__GNUC__)
#define ZEL_API __attribute__((visibility("default")))
#else
#define ZEL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Result of every conversion: 0 is success, a positive value a warning (the conversion ran), a negative value an error
 * (nothing was written).
 */
typedef int32_t ZelStatus;

enum {
    zelStsNoErr = 0,             /**< Success. */
    zelStsNoOperationWarn = 1,   /**< The image maximum is below zero; no pixel was written. */
    zelStsOddSizeWarn = 35,      /**< The size is no multiple of the chroma site: whole sites were converted, the rest not. */
    zelStsBadArgErr = -5,        /**< A selector argument is out of range. */
    zelStsSizeErr = -6,          /**< Width or height is below the minimum of the conversion. */
    zelStsNullPtrErr = -8,       /**< A pointer argument or an entry of a plane array is null. */
    zelStsMemAllocErr = -9,      /**< Temporary memory could not be had. */
    zelStsStepErr = -14,         /**< A step is below 1, in the families that test it. */
    zelStsContextMatchErr = -17, /**< A state record does not carry its identifier. */
    zelStsRangeErr = -49,        /**< The upper bound of a range is not above the lower one. */
    zelStsDitherLevelsErr = -54, /**< The number of levels is below 2 or above what the depth has. */
    zelStsNoiseValErr = -55,     /**< The noise is above 100 percent. */
    zelStsDitherTypeErr = -224   /**< The dither type is not served by this conversion. */
};

/** Size of a region in full-resolution pixels. Chroma sizes are derived from it. */
typedef struct ZelSize {
    int32_t width;
    int32_t height;
} ZelSize;

/** A region inside a larger image, in pixels from the image's top left corner. */
typedef struct ZelRect {
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} ZelRect;

/** Dither methods of bit-depth reduction. Other values have a meaning too, so it is a number. */
typedef int32_t ZelDitherType;

enum {
    zelDitherNone = 0,   /**< Nearest level. */
    zelDitherFS = 1,     /**< Floyd-Steinberg error diffusion. */
    zelDitherJJN = 2,    /**< Jarvis-Judice-Ninke error diffusion. */
    zelDitherStucki = 3, /**< Stucki error diffusion. */
    zelDitherBayer = 4   /**< Ordered dither. */
};

/** Colour filter array of a raw sensor: the colours of the top left 2 x 2 pixels, row by row. */
typedef enum ZelBayerGrid { zelBayerBGGR = 0, zelBayerRGGB = 1, zelBayerGBRG = 2, zelBayerGRBG = 3 } ZelBayerGrid;

/** Version of the library and the processor class that was selected when it was loaded. */
typedef struct ZelLibraryVersion {
    int32_t major;
    int32_t minor;
    int32_t majorBuild;
    int32_t build;
    char targetCpu[4];     /**< "v8", or "s8" of small in-order cores of x86; padded with zero bytes. */
    const char* name;      /**< Name of the library and the processor class. */
    const char* version;   /**< Version in words. */
    const char* buildDate; /**< Date of the release. */
} ZelLibraryVersion;

#ifdef __cplusplus
}
#endif

#endif
