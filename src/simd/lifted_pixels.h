// Whole pixels in words: channels lifted to 256 times the samples, a block in two halves, and results of words that become bytes
// by saturation.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

struct WordPixel {
    Words a, b, c;
};

// LiftedPixels<channels> loads both halves of a block and stores words of both as bytes, saturated; the fourth of four bytes
// keeps its value, and may be written with it.

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_LIFTED_PIXELS
#include ZEL_OWN_LIFTED_PIXELS
#else

namespace zel::ZEL_LEVEL {

// Interleaved pixels of three bytes, or of four of which the fourth is written with what it held.
template <int channels>
struct LiftedPixels {
    static constexpr int bytes = channels;
    static_assert(channels == 3 || channels == 4);

    // A half has eight pixels of every lane.
    ZEL_INLINE static Lifted load(const uint8_t* p) {
        const auto low = [](Bytes v) { return (UWords)interleaveLow(Bytes{}, v); };
        const auto high = [](Bytes v) { return (UWords)interleaveHigh(Bytes{}, v); };
        const Triple t = std::conditional_t<channels == 3, Interleaved3, Interleaved4>::load(p);
        return {{low(t.a), low(t.b), low(t.c)}, {high(t.a), high(t.b), high(t.c)}};
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

#endif
