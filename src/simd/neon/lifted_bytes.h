// Bytes lifted by shifts that widen, for doubled products: 128 times the samples.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

namespace arm {
ZEL_INLINE LiftedBytes times128(Bytes x) {
    return {(UWords)vshll_n_u8(vget_low_u8(u8(x)), 7), (UWords)vshll_high_n_u8(u8(x), 7)};
}
}  // namespace arm

template <int bits>
struct Floors {
    ZEL_INLINE static LiftedBytes lift(Bytes x) { return arm::times128(x); }
    // A weight of 32768 and more is taken for one that is 65536 less, whose product lacks 256 x.
    ZEL_INLINE static UWords product(UWords lifted, UWords weight) {
        const UWords light = (UWords)mulTop((Words)lifted, (Words)weight);
        return bits < 16 ? light : light + (lifted << 1 & (UWords)((Words)weight >> 15));
    }
};

struct Rounds {
    ZEL_INLINE static LiftedBytes lift(Bytes x) { return arm::times128(x); }
    ZEL_INLINE static Words weight(int k) { return splatWord(k); }
    ZEL_INLINE static Words product(Words lifted, Words weight) { return mulRound(lifted, weight); }
};

constexpr Order liftedOrder = Order::natural;
ZEL_INLINE UWords sumsOfPairs(UWords first, UWords second) { return (UWords)vpaddq_u16(arm::u16(first), arm::u16(second)); }
template <int shift>
ZEL_INLINE Bytes joined(UWords first, UWords second) {
    return (Bytes)vshrn_high_n_u16(vshrn_n_u16(arm::u16(first), shift), arm::u16(second), shift);
}

}  // namespace zel::ZEL_LEVEL
