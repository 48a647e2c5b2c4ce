// Bytes lifted to words by shifts that widen.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

namespace arm {
ZEL_INLINE UWords liftedLow(Bytes v) { return (UWords)vzip1q_u8(vdupq_n_u8(0), u8(v)); }
ZEL_INLINE UWords liftedHigh(Bytes v) { return (UWords)vzip2q_u8(vdupq_n_u8(0), u8(v)); }
}  // namespace arm

struct LiftedThree {
    static constexpr int bytes = 3;

    ZEL_INLINE static Lifted load(const uint8_t* p) {
        using namespace arm;
        const Triple t = Interleaved3::load(p);
        return {{liftedLow(t.a), liftedLow(t.b), liftedLow(t.c)}, {liftedHigh(t.a), liftedHigh(t.b), liftedHigh(t.c)}};
    }
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
};

struct LiftedFour {
    static constexpr int bytes = 4;
    static constexpr bool pairsPay(int) { return false; }

    ZEL_INLINE static Lifted load(const uint8_t* p) {
        using namespace arm;
        const Triple t = Interleaved4::load(p);
        return {{liftedLow(t.a), liftedLow(t.b), liftedLow(t.c)}, {liftedHigh(t.a), liftedHigh(t.b), liftedHigh(t.c)}};
    }
    template <Half which>
    ZEL_INLINE static LiftedHalf half(const uint8_t* p) {
        const uint8x8x4_t v = vld4_u8(p + int(which) * 2 * vectorBytes);
        const auto lifted = [&](int c) ZEL_INLINE_LAMBDA { return (UWords)vshll_n_u8(v.val[c], 8); };
        return {lifted(0), lifted(1), lifted(2)};
    }
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
};

}  // namespace zel::ZEL_LEVEL
