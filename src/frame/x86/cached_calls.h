// What a call may read and write together and still finds in the caches, for the constructors that set zelCachedCallBytes.
#pragma once

#include <algorithm>
#include <cstdint>

#include "processor.h"

// Five eighths of the largest cache: on a Zen 4 with 1 MiB of L2 and 32 MiB of L3, the latter shared with other virtual machines,
// a copy that bypasses the caches overtakes the plain one where both images together have 20 to 22 MiB; at 16 MiB it still has
// 0.8 of its speed, at 24 MiB 1.25 times, at 32 MiB 1.3 to 1.9 times. Of a cache that many cores share, one thread has no more
// than that.
static int32_t cachedCallBytes() {
#ifdef ZELCC_CACHED_CALL_BYTES
    return ZELCC_CACHED_CALL_BYTES;
#endif
    constexpr int64_t usual = 32 << 20, most = 64 << 20;
    const int64_t cache = largestCache();
    return static_cast<int32_t>((cache == 0 ? usual : std::min(cache, most)) / 8 * 5);
}
