// Less than a vector: what is left of a row, to and from a buffer.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// A few bytes, at AVX-512 less than a vector, between places that do not overlap.
ZEL_INLINE void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
#if ZEL_LANES == 4
    const __mmask64 mask = (uint64_t{1} << bytes) - 1;
    _mm512_mask_storeu_epi8(to, mask, _mm512_maskz_loadu_epi8(mask, from));
#else
    // The last piece overlaps the one before it.
    const auto copyPieces = [&](auto piece) {
        constexpr size_t size = sizeof piece;
        for (size_t i = 0; i + size < bytes; i += size) __builtin_memcpy(to + i, from + i, size);
        __builtin_memcpy(to + bytes - size, from + bytes - size, size);
    };
    if (bytes >= 16) {
        copyPieces(__m128i{});
    } else if (bytes >= 8) {
        copyPieces(uint64_t{});
    } else if (bytes >= 4) {
        copyPieces(uint32_t{});
    } else {
        for (size_t i = 0; i < bytes; ++i) to[i] = from[i];
    }
#endif
}

ZEL_INLINE void copyBytes(uint8_t* to, const uint8_t* from, size_t bytes) {
    for (; bytes >= size_t{vectorBytes}; bytes -= vectorBytes, from += vectorBytes, to += vectorBytes)
        storeVector(to, loadBytes(from));
    if (bytes != 0) copyShort(to, from, bytes);
}

// What does not fill a block goes through a buffer. The rest of the block is zero there: it takes part in the arithmetic.
ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes, size_t blockBytes) {
#if ZEL_LANES == 4
    // Whole vectors are stored, so that the kernel's loads need not wait for them.
    for (size_t i = 0; i < blockBytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_store_si512(buffer + i, _mm512_maskz_loadu_epi8(i < bytes ? mask : 0, from + i));
    }
#else
    for (size_t i = 0; i < blockBytes; i += 16) _mm_store_si128(reinterpret_cast<__m128i*>(buffer + i), _mm_setzero_si128());
    copyShort(buffer, from, bytes);
#endif
}

ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes) {
#if ZEL_LANES == 4
    for (size_t i = 0; i < bytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_mask_storeu_epi8(to + i, mask, _mm512_load_si512(buffer + i));
    }
#else
    copyShort(to, buffer, bytes);
#endif
}

}  // namespace zel::ZEL_LEVEL
