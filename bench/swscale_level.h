// swscale held to the level that is measured.
#pragma once

extern "C" {
#include <libavutil/cpu.h>
}

#include "level.h"

namespace bench {

// Before the first context.
inline void holdSwscaleToLevel() {
    constexpr int avx512 = AV_CPU_FLAG_AVX512 | AV_CPU_FLAG_AVX512ICL;
    constexpr int beyondSsse3 = avx512 | AV_CPU_FLAG_SSE4 | AV_CPU_FLAG_SSE42 | AV_CPU_FLAG_AVX | AV_CPU_FLAG_AVX2 |
                                AV_CPU_FLAG_FMA3 | AV_CPU_FLAG_FMA4 | AV_CPU_FLAG_XOP | AV_CPU_FLAG_BMI1 | AV_CPU_FLAG_BMI2 |
                                AV_CPU_FLAG_AESNI;
    av_force_cpu_flags(av_get_cpu_flags() & ~byLevel(beyondSsse3, avx512, 0));
}

}  // namespace bench
