// libyuv held to the level that is measured.
#pragma once

#include <libyuv/cpu_id.h>

#include "level.h"

namespace bench {

// Before the first call. Each version has its own flags, so each file its own function.
static inline void holdLibyuvToLevel() {
    using namespace libyuv;
    constexpr int ssse3 = kCpuInitialized | kCpuHasX86 | kCpuHasSSE2 | kCpuHasSSSE3;
    constexpr int avx2 = ssse3 | kCpuHasSSE41 | kCpuHasSSE42 | kCpuHasAVX | kCpuHasAVX2 | kCpuHasFMA3 | kCpuHasF16C | kCpuHasERMS;
    MaskCpuFlags(byLevel(ssse3, avx2, -1));
}

}  // namespace bench
