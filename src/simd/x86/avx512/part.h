// Less than a vector by masks.
#pragma once

#include "simd/part.h"

namespace zel::ZEL_LEVEL {

// A few bytes, at AVX-512 less than a vector, between places that do not overlap.
ZEL_INLINE void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
    const __mmask64 mask = (uint64_t{1} << bytes) - 1;
    _mm512_mask_storeu_epi8(to, mask, _mm512_maskz_loadu_epi8(mask, from));
}

// What does not fill a block goes through a buffer. The rest of the block is zero there: it takes part in the arithmetic.
ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes, size_t blockBytes) {
    // Whole vectors are stored, so that the kernel's loads need not wait for them.
    for (size_t i = 0; i < blockBytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_store_si512(buffer + i, _mm512_maskz_loadu_epi8(i < bytes ? mask : 0, from + i));
    }
}

ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes) {
    for (size_t i = 0; i < bytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_mask_storeu_epi8(to + i, mask, _mm512_load_si512(buffer + i));
    }
}

}  // namespace zel::ZEL_LEVEL
