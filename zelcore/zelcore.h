/* zelcore: what zelCC asks of the machine: processor features, cache size, memory. */
#ifndef ZELCORE_H
#define ZELCORE_H

#include <stdint.h>

#if defined(__GNUC__)
#define ZELCORE_API __attribute__((visibility("default")))
#else
#define ZELCORE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Bits of zelGetEnabledCpuFeatures. A bit is set only where processor and operating system both support the feature. */
enum {
    zelCpuSsse3 = 1 << 4,
    zelCpuInOrder = 1 << 5, /**< A small core that executes in program order. */
    zelCpuAvx2 = 1 << 8,    /**< And FMA, which all but a few of these processors have. */
    zelCpuAvx512 = 1 << 9,  /**< F, BW, DQ, VL and VBMI together. */
    zelCpuNeon = 1 << 16,   /**< Advanced SIMD of AArch64. */
    zelCpuDotProduct = 1 << 17,
    zelCpuI8mm = 1 << 18, /**< Products of matrices of 8-bit integers. */
    zelCpuSve2 = 1 << 19
};

/** The processor features that this process may use. */
ZELCORE_API uint64_t zelGetEnabledCpuFeatures(void);

/** Stores the size of the largest cache in bytes. Returns 0, or -1 with nothing stored when the processor does not tell. */
ZELCORE_API int32_t zelGetMaxCacheSizeB(int32_t* pSizeByte);

/** Memory on a boundary of 64 bytes. Null for a count below 1 and when there is none left. */
ZELCORE_API void* zelMalloc(int32_t bytes);

/** Gives back what zelMalloc returned. Null is allowed. */
ZELCORE_API void zelFree(void* memory);

#ifdef __cplusplus
}
#endif

#endif
