// Rows to columns, by fours.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// In each lane: dword i of v[k] becomes dword k of v[i].
ZEL_INLINE void transpose(Dwords (&v)[4]) {
    const auto low01 = (Bytes)interleaveLow(v[0], v[1]), high01 = (Bytes)interleaveHigh(v[0], v[1]);
    const auto low23 = (Bytes)interleaveLow(v[2], v[3]), high23 = (Bytes)interleaveHigh(v[2], v[3]);
    v[0] = (Dwords)interleaveLow64(low01, low23);
    v[1] = (Dwords)interleaveHigh64(low01, low23);
    v[2] = (Dwords)interleaveLow64(high01, high23);
    v[3] = (Dwords)interleaveHigh64(high01, high23);
}

// Lane l from the 16 bytes at at(l).
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    const auto lane = [&](int l) ZEL_INLINE_LAMBDA { return _mm_loadu_si128(static_cast<const __m128i*>(at(l))); };
#if ZEL_LANES == 1
    return (Bytes)lane(0);
#else
    const __m256i pair = _mm256_inserti128_si256(_mm256_castsi128_si256(lane(0)), lane(1), 1);
#if ZEL_LANES == 2
    return (Bytes)pair;
#else
    const __m256i upper = _mm256_inserti128_si256(_mm256_castsi128_si256(lane(2)), lane(3), 1);
    return (Bytes)_mm512_inserti64x4(_mm512_castsi256_si512(pair), upper, 1);
#endif
#endif
}

}  // namespace zel::ZEL_LEVEL
