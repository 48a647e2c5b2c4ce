#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

struct WordPixel {
    Words a, b, c;
};

template <int channels>
struct LiftedPixels {
    static constexpr int bytes = channels;
    static_assert(channels == 3 || channels == 4);

    ZEL_INLINE static Lifted load(const uint8_t* p) {
        if constexpr (channels == 3)
            return LiftedThree::load(p);
        else
            return LiftedFour::load(p);
    }
    ZEL_INLINE static void store(Destination p, const WordPixel& first, const WordPixel& second) {
        const Triple t{packBytes(first.a, second.a), packBytes(first.b, second.b), packBytes(first.c, second.c)};
        if constexpr (channels == 3)
            Interleaved3::store<Order::natural>(p, t);
        else
            Interleaved4::storeColours<Order::natural>(p, t);
    }
};

}  // namespace zel::ZEL_LEVEL
