// Regions of one byte.
#pragma once

#include "frame/bypass.h"
#include "simd/vector.h"
#include "zelcore.h"

namespace zel::ZEL_LEVEL {

// A fill doesn't go by the rule of the others: where it has more bytes than this, it asks at each call how large the largest
// cache is. Who defines that function sees the question, and answers or refuses; a refusal leaves the stores to the caches.
constexpr int64_t fillAskingForCache = 0x80000;

ZEL_INLINE bool fillExceedsCaches(int64_t bytes) {
    int32_t cacheBytes = 0;
    return bytes > fillAskingForCache && zelGetMaxCacheSizeB(&cacheBytes) == 0 && bytes >= cacheBytes;
}

// Stores bypass the cache from its first boundary of a vector on.
ZEL_INLINE void streamFill(uint8_t* to, uint8_t value, size_t bytes) {
    const size_t toBoundary = (vectorBytes - reinterpret_cast<uintptr_t>(to) % vectorBytes) % vectorBytes;
    size_t done = toBoundary < bytes ? toBoundary : bytes;
    __builtin_memset(to, value, done);
    for (; done + vectorBytes <= bytes; done += vectorBytes) streamVector(to + done, splatByte(value));
    __builtin_memset(to + done, value, bytes - done);
}

ZEL_NOINLINE inline void fillImage(uint8_t value, uint8_t* to, ptrdiff_t step, ZelSize size) {
    const int64_t bytes = int64_t{size.width} * size.height;
    const Bypass bypassing(fillExceedsCaches(bytes));
    const bool packed = step == size.width;
    const auto rowBytes = static_cast<size_t>(packed ? bytes : size.width);
    for (int rows = packed ? 1 : size.height; rows != 0; --rows, to = moved(to, size_t(step))) {
        if (bypassing)
            streamFill(to, value, rowBytes);
        else
            __builtin_memset(to, value, rowBytes);
    }
}

}  // namespace zel::ZEL_LEVEL
