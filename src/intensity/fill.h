// Regions of one byte.
#pragma once

#include "frame/conversion.h"
#include "simd/vector.h"
#include "zelcore.h"

namespace zel::ZEL_LEVEL {

// More bytes than this may be more than the largest cache holds.
constexpr int64_t fillAskingForCache = 0x80000;

// Stores bypass the cache from its first boundary of a vector on.
ZEL_INLINE void streamFill(uint8_t* to, uint8_t value, size_t bytes) {
    const size_t toBoundary = (vectorBytes - reinterpret_cast<uintptr_t>(to) % vectorBytes) % vectorBytes;
    size_t done = toBoundary < bytes ? toBoundary : bytes;
    __builtin_memset(to, value, done);
    for (; done + vectorBytes <= bytes; done += vectorBytes) streamVector(to + done, splatByte(value));
    __builtin_memset(to + done, value, bytes - done);
}

ZEL_OWN_CODE inline void fillImage(uint8_t value, uint8_t* to, ptrdiff_t step, ZelSize size) {
    const int64_t bytes = int64_t{size.width} * size.height;
    int32_t cacheBytes = 0;
    const bool bypassing = bytes > fillAskingForCache && zelGetMaxCacheSizeB(&cacheBytes) == 0 && bytes >= cacheBytes;
    const bool packed = step == size.width;
    const auto rowBytes = static_cast<size_t>(packed ? bytes : size.width);
    for (int rows = packed ? 1 : size.height; rows != 0; --rows, to = moved(to, size_t(step))) {
        if (bypassing)
            streamFill(to, value, rowBytes);
        else
            __builtin_memset(to, value, rowBytes);
    }
    if (bypassing) storeFence();
}

}  // namespace zel::ZEL_LEVEL
