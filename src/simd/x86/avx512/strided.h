// One channel by permutes and masks.
#pragma once

#include "simd/strided.h"

namespace zel::ZEL_LEVEL {

namespace strided {

constexpr int count = vectorBytes / 4;

// Of samples of `size` bytes, `channels` of them apart: the bytes of a vector of dwords in two vectors from the first sample on,
// and of the two behind them; and the bytes of those vectors in the dwords.
template <int size, int channels>
struct Places {
    static constexpr int distance = size * channels, span = distance * (count - 1) + size, vectors = (span + 63) / 64;
    alignas(64) uint8_t gathered[64]{}, scattered[vectors][64]{};
    uint64_t fromFirst = 0, fromSecond = 0, to[vectors]{};

    constexpr Places() {
        for (int i = 0; i < 64; ++i) {
            const int place = i / 4 * distance + i % 4;
            gathered[i] = uint8_t(place % 128);
            if (i % 4 < size) (place < 128 ? fromFirst : fromSecond) |= uint64_t{1} << i;
        }
        for (int i = 0; i < span; ++i) {
            scattered[i / 64][i % 64] = uint8_t(i / distance * 4 + i % distance % 4);
            if (i % distance < size) to[i / 64] |= uint64_t{1} << i % 64;
        }
    }
};
template <int size, int channels>
inline constexpr Places<size, channels> places;

}  // namespace strided

template <int size, int channels>
ZEL_INLINE Dwords loadStrided(const uint8_t* p) {
    using namespace strided;
    constexpr auto& t = places<size, channels>;
    Register v[4]{};
    unrolled<t.vectors>([&](auto i) ZEL_INLINE_LAMBDA {
        constexpr int left = t.span - 64 * i;
        constexpr uint64_t bytes = left >= 64 ? ~uint64_t{0} : (uint64_t{1} << (left & 63)) - 1;
        v[i] = _mm512_maskz_loadu_epi8(bytes, p + 64 * i);
    });
    const Register pattern = _mm512_load_si512(t.gathered);
    const Register first = _mm512_maskz_permutex2var_epi8(t.fromFirst, v[0], pattern, v[1]);
    if constexpr (t.vectors <= 2) return (Dwords)first;
    return (Dwords)_mm512_or_si512(first, _mm512_maskz_permutex2var_epi8(t.fromSecond, v[2], pattern, v[3]));
}

template <int size, int channels>
ZEL_INLINE void storeStrided(uint8_t* p, Dwords v) {
    using namespace strided;
    constexpr auto& t = places<size, channels>;
    unrolled<t.vectors>([&](auto i) ZEL_INLINE_LAMBDA {
        _mm512_mask_storeu_epi8(p + 64 * i, t.to[i], _mm512_permutexvar_epi8(_mm512_load_si512(t.scattered[i]), (Register)v));
    });
}

}  // namespace zel::ZEL_LEVEL
