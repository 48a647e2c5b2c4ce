// Runs once when the library is loaded and picks, for the whole process, the column of the dispatch table and the level of the
// kernels inside a column. Both stay 0 when a call comes before that: every processor that the library supports runs those.
#include <cpuid.h>

#include <algorithm>
#include <cstdint>

#include "zelcore.h"

extern "C" {
extern int32_t zelDispatchIndex;
extern int32_t zelKernelLevel;
int32_t zelDispatchIndex = 0;
int32_t zelKernelLevel = 0;
[[gnu::visibility("hidden")]] extern int32_t zelCachedCallBytes;
int32_t zelCachedCallBytes = INT32_MAX;  // see frame/bypass.h
}

namespace {

enum Level { ssse3, avx2, avx512 };

// What the processor itself reports: the enabled features can lower the level, but never raise it beyond this.
Level highestLevel() {
    __builtin_cpu_init();
#ifdef ZEL_EMULATED_AVX512  // for tests, by what AVX2 has
    const bool widest = __builtin_cpu_supports("avx2");
#else
    const bool widest = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                        __builtin_cpu_supports("avx512vbmi");
#endif
    if (widest) return avx512;
    return __builtin_cpu_supports("avx2") ? avx2 : ssse3;
}

// The largest cache of data that the processor reports, 0 where it reports none.
int64_t largestCache() {
    unsigned a, b, c, d;
    constexpr unsigned leaves[] = {4, 0x8000001d};  // of two makers; one answers nothing to the other's
    int64_t largest = 0;
    for (const unsigned leaf : leaves)
        for (unsigned i = 0; __get_cpuid_count(leaf, i, &a, &b, &c, &d) && (a & 31) != 0 && i < 16; ++i) {
            const bool holdsData = (a & 31) != 2;
            const int64_t line = (b & 0xfff) + 1, partitions = (b >> 12 & 0x3ff) + 1, ways = (b >> 22) + 1;
            if (holdsData) largest = std::max(largest, line * partitions * ways * (int64_t{c} + 1));
        }
    return largest;
}

// Five eighths of the largest cache: on a Zen 4 with 1 MiB of L2 and 32 MiB of L3, the latter shared with other virtual machines,
// a copy that bypasses the caches overtakes the plain one where both images together have 20 to 22 MiB; at 16 MiB it still has
// 0.8 of its speed, at 24 MiB 1.25 times, at 32 MiB 1.3 to 1.9 times. Of a cache that many cores share, one thread has no more
// than that.
int32_t cachedCallBytes() {
#ifdef ZELCC_CACHED_CALL_BYTES
    return ZELCC_CACHED_CALL_BYTES;
#endif
    constexpr int64_t usual = 32 << 20, most = 64 << 20;
    const int64_t cache = largestCache();
    return static_cast<int32_t>((cache == 0 ? usual : std::min(cache, most)) / 8 * 5);
}

[[gnu::constructor]] void selectImplementations() {
    const uint64_t features = zelGetEnabledCpuFeatures();
    constexpr uint64_t smallCore = zelCpuSsse3 | zelCpuInOrder;
    zelDispatchIndex = (features & smallCore) == smallCore ? 1 : 0;

    const Level enabled = features & zelCpuAvx512 ? avx512 : features & zelCpuAvx2 ? avx2 : ssse3;
    const Level highest = highestLevel();
    zelKernelLevel = enabled < highest ? enabled : highest;
    zelCachedCallBytes = cachedCallBytes();
}

}  // namespace
