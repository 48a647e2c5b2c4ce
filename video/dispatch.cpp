// The exported calls: checks of arguments, and the level, picked once when the library is loaded.
#include <cstdint>

#include "call.h"
#include "identifier.h"
#include "zelcore.h"
#include "zelvideo.h"

extern "C" {
extern const zelv::Convert zel_ssse3_video, zel_avx2_video, zel_avx512_video;
[[gnu::visibility("hidden")]] extern int32_t zelvKernelLevel;
int32_t zelvKernelLevel = 0;
}

namespace {

// What the processor itself reports: the enabled features can lower the level, but never raise it beyond this.
int32_t highestLevel() {
    __builtin_cpu_init();
    const bool widest = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                        __builtin_cpu_supports("avx512vbmi");
    if (widest) return 2;
    return __builtin_cpu_supports("avx2") ? 1 : 0;
}

[[gnu::constructor]] void selectLevel() {
    const uint64_t features = zelGetEnabledCpuFeatures();
    const int32_t enabled = features & zelCpuAvx512 ? 2 : features & zelCpuAvx2 ? 1 : 0, highest = highestLevel();
    zelvKernelLevel = enabled < highest ? enabled : highest;
}

zelv::Convert selected() {
    switch (zelvKernelLevel) {
        case 2:
            return zel_avx512_video;
        case 1:
            return zel_avx2_video;
        default:
            return zel_ssse3_video;
    }
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
    selected()({&plan, pSrc, srcStep, pDst, dstStep, size.width, size.height, firstRow, firstRow + rowCount});
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
