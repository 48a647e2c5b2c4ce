// Pixels lifted channel by channel.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

namespace arm {

// The first half has the first pixels.
template <class Pixels>
struct LiftedChannels {
    static constexpr int bytes = Pixels::bytes;
    static constexpr bool packsInOrder = true;

    ZEL_INLINE static Lifted load(const uint8_t* p) {
        const Triple t = Pixels::load(p);
        const LiftedBytes a = times128(t.a), b = times128(t.b), c = times128(t.c);
        return {{a.first, b.first, c.first}, {a.second, b.second, c.second}};
    }
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
};

}  // namespace arm

struct LiftedThree : arm::LiftedChannels<Interleaved3> {};

struct LiftedFour : arm::LiftedChannels<Interleaved4> {
    static constexpr bool pairsPay(int) { return false; }
};

}  // namespace zel::ZEL_LEVEL
