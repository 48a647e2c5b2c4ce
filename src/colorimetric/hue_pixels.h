// What the rules of the hue spaces share.
#pragma once

#include "simd/pixels.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// What a pixel's extremes say about it.
struct Extent {
    Bytes highest, range;

    ZEL_INLINE explicit Extent(const Triple& t)
        : highest(atLeast(atLeast(t.a, t.b), t.c)), range(highest - atMost(atMost(t.a, t.b), t.c)) {}
};

// 1 / v as the processor approximates it, and with one step of Newton's method.
struct Bare {
    ZEL_INLINE static Floats of(Floats v) { return approximateReciprocal(v); }
};
struct Refined {
    ZEL_INLINE static Floats of(Floats v) {
        const Floats r = approximateReciprocal(v);
        return (splatFloat(2) * r) - ((v * r) * r);
    }
};

// The pixels 4 part to 4 part + 3 of every lane, as floats.
template <int part>
ZEL_INLINE Floats floatsOf(Bytes v) {
    constexpr uint8_t none = triples::none, first = 4 * part;
    alignas(16) static constexpr uint8_t places[16] = {first,     none, none, none, first + 1, none, none, none,
                                                       first + 2, none, none, none, first + 3, none, none, none};
    return toFloats((Dwords)shuffle(v, everyLane(places)));
}

// Floats of which two bytes are told, those of the sign, the exponent and the highest places.
template <int part>
ZEL_INLINE Floats floatsOf(Bytes low, Bytes high) {
    const auto words = (Words)(part < 2 ? interleaveLow(low, high) : interleaveHigh(low, high));
    return (Floats)(part % 2 == 0 ? interleaveLow(Words{}, words) : interleaveHigh(Words{}, words));
}

// Four vectors of dwords, one for each part, as bytes, limited to 0 to 255.
ZEL_INLINE Bytes bytesOf(const Dwords (&v)[4]) { return packBytes(packWords(v[0], v[1]), packWords(v[2], v[3])); }

}  // namespace zel::ZEL_LEVEL
