#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
    // The last piece overlaps the one before it.
    const auto copyPieces = [&](auto piece) ZEL_INLINE_LAMBDA {
        constexpr size_t size = sizeof piece;
        for (size_t i = 0; i + size < bytes; i += size) __builtin_memcpy(to + i, from + i, size);
        __builtin_memcpy(to + bytes - size, from + bytes - size, size);
    };
    if (bytes >= 16) {
        copyPieces(Bytes{});
    } else if (bytes >= 8) {
        copyPieces(uint64_t{});
    } else if (bytes >= 4) {
        copyPieces(uint32_t{});
    } else {
        for (size_t i = 0; i < bytes; ++i) to[i] = from[i];
    }
}

ZEL_INLINE void copyBytes(uint8_t* to, const uint8_t* from, size_t bytes) {
    for (; bytes >= size_t{vectorBytes}; bytes -= vectorBytes, from += vectorBytes, to += vectorBytes)
        storeVector(to, loadBytes(from));
    if (bytes != 0) copyShort(to, from, bytes);
}

ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes, size_t blockBytes) {
    for (size_t i = 0; i < blockBytes; i += 16) storeVector(buffer + i, Bytes{});
    copyShort(buffer, from, bytes);
}

ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes) { copyShort(to, buffer, bytes); }

}  // namespace zel::ZEL_LEVEL
