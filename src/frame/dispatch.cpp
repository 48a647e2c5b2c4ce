// Runs once when the library is loaded and picks, for the whole process, the column of the dispatch table and the level of the
// kernels inside a column. Both stay 0 when a call comes before that: every processor that the library supports runs those.
#include <cstdint>

#include "zelcore.h"

extern "C" {
extern int32_t zelDispatchIndex;
extern int32_t zelKernelLevel;
int32_t zelDispatchIndex = 0;
int32_t zelKernelLevel = 0;
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

[[gnu::constructor]] void selectImplementations() {
    const uint64_t features = zelGetEnabledCpuFeatures();
    constexpr uint64_t smallCore = zelCpuSsse3 | zelCpuInOrder;
    zelDispatchIndex = (features & smallCore) == smallCore ? 1 : 0;

    const Level enabled = features & zelCpuAvx512 ? avx512 : features & zelCpuAvx2 ? avx2 : ssse3;
    const Level highest = highestLevel();
    zelKernelLevel = enabled < highest ? enabled : highest;
}

}  // namespace
