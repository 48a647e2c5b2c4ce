// Runs once when the library is loaded and picks, for the whole process, the column of the dispatch table and the level of the
// kernels inside a column. Both stay 0 when a call comes before that: every processor that the library supports runs those.
#include <algorithm>
#include <cstdint>
#include <iterator>

#include "cached_calls.h"
#include "processor.h"
#include "zelcore.h"

extern "C" {
extern int32_t zelDispatchIndex;
extern int32_t zelKernelLevel;
int32_t zelDispatchIndex = 0;
int32_t zelKernelLevel = 0;
[[gnu::visibility("hidden")]] extern int32_t zelCachedCallBytes;
[[gnu::visibility("hidden")]] extern int32_t zelMovedAtOnceBytes;
int32_t zelCachedCallBytes = INT32_MAX;  // see frame/bypass.h
int32_t zelMovedAtOnceBytes = INT32_MAX;
}

namespace {

constexpr uint64_t levelFeatures[] = {
#define ZEL_LEVEL(name, feature, flags) feature,
#include "levels.def"
};

constexpr uint64_t columnFeatures = zelCpuSsse3 | zelCpuInOrder;

// The number of the highest level among the features, 0 without any.
int32_t highestLevel(uint64_t features) {
    int32_t highest = 0;
    for (int32_t level = 0; level < int32_t{std::size(levelFeatures)}; ++level)
        if (features & levelFeatures[level]) highest = level;
    return highest;
}

// What the processor itself reports: the enabled features can lower the level, but never raise it beyond this.
uint64_t presentFeatures() {
    const uint64_t features = processorFeatures();
#ifdef ZEL_EMULATED_AVX512  // for tests, by what AVX2 has
    if (features & zelCpuAvx2) return features | zelCpuAvx512;
#endif
    return features;
}

// On a Zen 5, vectors are faster in its first cache of 48 KiB (1.3 to 1.8 times), as fast at 16 KiB a row in the second one, and
// slower by up to a quarter there and in the third one where rows are longer.
constexpr int32_t leastMovedAtOnce = 32 << 10;

[[gnu::constructor]] void selectImplementations() {
    const uint64_t enabled = zelGetEnabledCpuFeatures();
    zelDispatchIndex = (enabled & columnFeatures) == columnFeatures ? 1 : 0;
    zelKernelLevel = std::min(highestLevel(enabled), highestLevel(presentFeatures()));
    zelCachedCallBytes = cachedCallBytes();
    if (movesStringsFast()) zelMovedAtOnceBytes = leastMovedAtOnce;
}

}  // namespace
