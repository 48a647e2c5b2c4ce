#include "zelcore.h"

#include <algorithm>
#include <cstdlib>

#include "processor.h"

uint64_t zelGetEnabledCpuFeatures(void) { return processorFeatures(); }

int32_t zelGetMaxCacheSizeB(int32_t* pSizeByte) {
    if (!pSizeByte) return -1;
    const int64_t size = largestCache();
    if (size == 0) return -1;
    *pSizeByte = static_cast<int32_t>(std::min<int64_t>(size, INT32_MAX));
    return 0;
}

void* zelMalloc(int32_t bytes) {
    if (bytes < 1) return nullptr;
    void* memory = nullptr;
    return posix_memalign(&memory, 64, static_cast<size_t>(bytes)) == 0 ? memory : nullptr;
}

void zelFree(void* memory) { std::free(memory); }
