// Vectors of bytes and words by bits, one a element, the first element's lowest.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

#if ZEL_LANES == 4
using Bits = uint64_t;
#elif ZEL_LANES == 2
using Bits = uint32_t;
#else
using Bits = uint16_t;
#endif

// The elements that are negative as signed numbers.
ZEL_INLINE Bits negativeOnes(Bytes v) {
#if ZEL_LANES == 4
    return _mm512_movepi8_mask((Register)v);
#else
    return static_cast<Bits>(ZEL_MM(movemask_epi8)((Register)v));
#endif
}

// The elements that are 0.
ZEL_INLINE Bits zeros(Bytes v) {
#if ZEL_LANES == 4
    return _mm512_testn_epi8_mask((Register)v, (Register)v);
#else
    return negativeOnes((Bytes)(v == Bytes{}));
#endif
}

// The elements of a where the bit is set, otherwise those of b. Words have the low half of the bits.
ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b) {
#if ZEL_LANES == 4
    return (Bytes)_mm512_mask_blend_epi8(bits, (Register)b, (Register)a);
#else
    // Byte i of the bits goes to the elements 8i .. 8i + 7, which test a bit each.
#if ZEL_LANES == 2
    const Bytes eighths = (Bytes)_mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303);
#else
    const Bytes eighths = (Bytes)_mm_set_epi64x(0x0101010101010101, 0);
#endif
    struct Tested {
        alignas(16) uint8_t bit[16];
    };
    static constexpr Tested tested{{1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128}};
    const Bytes bit = everyLane(tested.bit);
    const Bytes isSet = (Bytes)((shuffle((Bytes)splatDword(int32_t(bits)), eighths) & bit) == bit);
    return (a & isSet) | (b & ~isSet);
#endif
}

ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b) {
#if ZEL_LANES == 4
    return (UWords)_mm512_mask_blend_epi16(static_cast<uint32_t>(bits), (Register)b, (Register)a);
#else
    const UWords bit = (UWords)loadBytes([] {
        struct Tested {
            alignas(vectorBytes) uint16_t bit[vectorBytes / 2];
        };
        static constexpr Tested tested = [] {
            Tested t{};
            for (int i = 0; i < vectorBytes / 2; ++i) t.bit[i] = static_cast<uint16_t>(1 << i);
            return t;
        }();
        return tested.bit;
    }());
    const UWords isSet = (UWords)(((UWords)splatWord(int(bits)) & bit) == bit);
    return (a & isSet) | (b & ~isSet);
#endif
}

}  // namespace zel::ZEL_LEVEL
