// Two functions of 128 places, as tables of floats.
#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

constexpr int floatTablePlaces = 128;

#if ZEL_LANES == 4
// Each function by itself, for permutes.
struct FloatTables {
    alignas(64) float of[2][floatTablePlaces];
    constexpr float& at(int function, int place) { return of[function][place]; }
};
#else
// The two side by side, for loads of both.
struct FloatTables {
    alignas(64) float of[floatTablePlaces][2];
    constexpr float& at(int function, int place) { return of[place][function]; }
};
#endif

struct FloatPair {
    Floats first, second;
};

// Places are 0 to 127.
ZEL_INLINE FloatPair lookUp(const FloatTables& tables, Dwords places) {
#if ZEL_LANES == 4
    // Bit 5 of a place picks one of a pair of results, and bit 6 one of two pairs.
    const __mmask16 odd = _mm512_movepi32_mask((Register)(places << 26)), high = _mm512_movepi32_mask((Register)(places << 25));
    const auto function = [&](const float(&table)[floatTablePlaces]) ZEL_INLINE_LAMBDA {
        const auto quarter = [&](int i) ZEL_INLINE_LAMBDA {
            return _mm512_permutex2var_ps(_mm512_load_ps(table + 32 * i), (Register)places, _mm512_load_ps(table + 32 * i + 16));
        };
        const __m512 lower = _mm512_mask_blend_ps(odd, quarter(0), quarter(1)),
                     upper = _mm512_mask_blend_ps(odd, quarter(2), quarter(3));
        return (Floats)_mm512_mask_blend_ps(high, lower, upper);
    };
    return {function(tables.of[0]), function(tables.of[1])};
#else
    // Rows 0 and 1, and rows 2 and 3 of a lane's four.
    const auto row = [&](int i) ZEL_INLINE_LAMBDA { return reinterpret_cast<const __m64*>(tables.of[places[i]]); };
    const auto rows = [&](int i) ZEL_INLINE_LAMBDA { return _mm_loadh_pi(_mm_loadl_pi(_mm_setzero_ps(), row(i)), row(i + 1)); };
#if ZEL_LANES == 2
    const __m256 low = _mm256_set_m128(rows(4), rows(0)), high = _mm256_set_m128(rows(6), rows(2));
#else
    const __m128 low = rows(0), high = rows(2);
#endif
    return {(Floats)ZEL_MM(shuffle_ps)(low, high, 0x88), (Floats)ZEL_MM(shuffle_ps)(low, high, 0xdd)};
#endif
}

}  // namespace zel::ZEL_LEVEL
