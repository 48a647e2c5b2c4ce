// The four functions of zelcore, in place of the real ones: the library imports them by name and finds these first.
#include "zelcore.h"

#include <cstdlib>

#include "harness/features.h"
#include "harness/machine.h"

namespace harness {

constinit Machine machine;

}  // namespace harness

uint64_t zelGetEnabledCpuFeatures(void) { return harness::features(); }

int32_t zelGetMaxCacheSizeB(int32_t* pSizeByte) {
    ++harness::machine.cacheQueries;
    if (harness::machine.cacheBytes < 0) return -1;
    *pSizeByte = harness::machine.cacheBytes;
    return 0;
}

void* zelMalloc(int32_t bytes) {
    ++harness::machine.requests;
    harness::machine.requestedBytes = bytes;
    void* memory = nullptr;
    const bool isGranted = harness::machine.hasMemory && harness::machine.requests <= harness::machine.requestsGranted;
    if (bytes < 1 || !isGranted || posix_memalign(&memory, 64, static_cast<size_t>(bytes)) != 0) return nullptr;
    ++harness::machine.blocksInUse;
    return memory;
}

void zelFree(void* memory) {
    if (memory) --harness::machine.blocksInUse;
    std::free(memory);
}
