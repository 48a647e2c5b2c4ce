// The exported calls: checks of arguments, and the level, picked once when the library is loaded.
#include <algorithm>
#include <cstdint>
#include <iterator>

#include "cached_calls.h"
#include "call.h"
#include "identifier.h"
#include "processor.h"
#include "zelvideo.h"

extern "C" {
#define ZEL_LEVEL(name, feature, flags) extern const zelv::Convert zel_##name##_video;
#include "levels.def"
[[gnu::visibility("hidden")]] extern int32_t zelvKernelLevel;
int32_t zelvKernelLevel = 0;
[[gnu::visibility("hidden")]] extern int32_t zelCachedCallBytes;
int32_t zelCachedCallBytes = INT32_MAX;  // see frame/bypass.h
}

namespace {

constexpr struct {
    uint64_t feature;
    const zelv::Convert* convert;
} levels[] = {
#define ZEL_LEVEL(name, feature, flags) {feature, &zel_##name##_video},
#include "levels.def"
};

// The number of the highest level among the features, 0 without any.
int32_t highestLevel(uint64_t features) {
    int32_t highest = 0;
    for (int32_t level = 0; level < int32_t{std::size(levels)}; ++level)
        if (features & levels[level].feature) highest = level;
    return highest;
}

// The enabled features can lower the level, but never raise it beyond what the processor has.
[[gnu::constructor]] void selectLevel() {
    zelvKernelLevel = std::min(highestLevel(zelGetEnabledCpuFeatures()), highestLevel(processorFeatures()));
    zelCachedCallBytes = cachedCallBytes();
}

template <class Entry>
bool anyNull(const Entry* entries, int count) {
    for (int i = 0; i < count; ++i)
        if (!entries[i]) return true;
    return false;
}

ZelStatus convert(const ZelvPlan* pPlan, const uint8_t* const pSrc[], const int32_t srcStep[], uint8_t* const pDst[],
                  const int32_t dstStep[], ZelSize size, bool whole, int32_t firstRow, int32_t rowCount) {
    if (!pPlan || !pSrc || !srcStep || !pDst || !dstStep) return zelStsNullPtrErr;
    zelv::Plan plan;
    __builtin_memcpy(&plan, pPlan, sizeof plan);
    if (plan.identifier != zelv::planIdentifier) return zelStsContextMatchErr;
    if (anyNull(pSrc, plan.in.planes) || anyNull(pDst, plan.out.planes)) return zelStsNullPtrErr;
    if (size.width < 1 || size.height < 1) return zelStsSizeErr;
    if (whole) rowCount = size.height;
    if (firstRow < 0 || firstRow >= size.height || rowCount < 1 || rowCount > size.height - firstRow) return zelStsBadArgErr;
    const bool paired = plan.in.sitesDown || plan.out.sitesDown, ends = firstRow + rowCount == size.height;
    if (paired && (firstRow % 2 != 0 || (rowCount % 2 != 0 && !ends))) return zelStsBadArgErr;
    (*levels[zelvKernelLevel].convert)(
        {&plan, pSrc, srcStep, pDst, dstStep, size.width, size.height, firstRow, firstRow + rowCount});
    return zelStsNoErr;
}

}  // namespace

ZelStatus zelvConvert(const ZelvPlan* pPlan, const uint8_t* const pSrc[], const int32_t srcStep[], uint8_t* const pDst[],
                      const int32_t dstStep[], ZelSize roiSize) {
    return convert(pPlan, pSrc, srcStep, pDst, dstStep, roiSize, true, 0, 0);
}

ZelStatus zelvConvertRows(const ZelvPlan* pPlan, const uint8_t* const pSrc[], const int32_t srcStep[], uint8_t* const pDst[],
                          const int32_t dstStep[], ZelSize roiSize, int32_t firstRow, int32_t rowCount) {
    return convert(pPlan, pSrc, srcStep, pDst, dstStep, roiSize, false, firstRow, rowCount);
}
