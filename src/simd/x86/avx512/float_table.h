// Tables of floats in registers, by permutes over two of them.
#pragma once

#include "simd/float_table.h"

namespace zel::ZEL_LEVEL {

// Each function by itself, for permutes.
struct FloatTables {
    alignas(64) float of[2][floatTablePlaces];
    constexpr float& at(int function, int place) { return of[function][place]; }
};

// Places are 0 to 127.
ZEL_INLINE FloatPair lookUp(const FloatTables& tables, Dwords places) {
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
}

}  // namespace zel::ZEL_LEVEL
