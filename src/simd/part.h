// Less than a vector: what is left of a row, to and from a buffer.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Fewer bytes than a vector has, at least one. What places that overlap hold then is not defined.
ZEL_INLINE void copyShort(uint8_t* to, const uint8_t* from, size_t bytes);

// What does not fill a block goes through a buffer, a multiple of the vector. The rest of the block is zero there: it takes part
// in the arithmetic. Of bytes there is at least one.
ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes, size_t blockBytes);
ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes);

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_PART
#include ZEL_OWN_PART
#else

namespace zel::ZEL_LEVEL {

ZEL_INLINE void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
    // The last piece overlaps the one before it. Each goes through a register: images of one buffer may overlap by mistake, which
    // a copy from memory to memory must not meet.
    const auto copyPieces = [&](auto piece) {
        constexpr size_t size = sizeof piece;
        const auto copyAt = [&](size_t at) {
            __builtin_memcpy(&piece, from + at, size);
            __builtin_memcpy(to + at, &piece, size);
        };
        for (size_t i = 0; i + size < bytes; i += size) copyAt(i);
        copyAt(bytes - size);
    };
    if (bytes >= 16) {
        copyPieces(Lane{});
    } else if (bytes >= 8) {
        copyPieces(uint64_t{});
    } else if (bytes >= 4) {
        copyPieces(uint32_t{});
    } else {
        for (size_t i = 0; i < bytes; ++i) to[i] = from[i];
    }
}

ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes, size_t blockBytes) {
    for (size_t i = 0; i < blockBytes; i += laneBytes) *reinterpret_cast<Lane*>(buffer + i) = Lane{};
    copyShort(buffer, from, bytes);
}

ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes) { copyShort(to, buffer, bytes); }

}  // namespace zel::ZEL_LEVEL

#endif

namespace zel::ZEL_LEVEL {

ZEL_INLINE void copyBytes(uint8_t* to, const uint8_t* from, size_t bytes) {
    for (; bytes >= size_t{vectorBytes}; bytes -= vectorBytes, from += vectorBytes, to += vectorBytes)
        storeVector(to, loadBytes(from));
    if (bytes != 0) copyShort(to, from, bytes);
}

}  // namespace zel::ZEL_LEVEL
