// RGB to and from YCoCg, a luma and two differences of integers: the arithmetic of one pixel, in vectors of words or dwords. It
// wraps at the width of the elements, which the reversible transform undoes.
#pragma once

#include <type_traits>

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

template <class V>
struct Colour {
    V b, g, r;
};

template <class V>
struct LumaAndDifferences {
    V y, co, cg;
};

// Sums that wrap.
template <class V>
using Unsigned = std::conditional_t<std::is_same_v<V, Words>, UWords, UDwords>;
template <class V>
ZEL_INLINE V sum(V a, V b) {
    return (V)((Unsigned<V>)a + (Unsigned<V>)b);
}
template <class V>
ZEL_INLINE V difference(V a, V b) {
    return (V)((Unsigned<V>)a - (Unsigned<V>)b);
}

// Y  = ( R + 2G + B + 2) >> 2          R = Y + Co - Cg
// Co = ( R      - B + 1) >> 1          G = Y      + Cg
// Cg = (-R + 2G - B + 2) >> 2          B = Y - Co - Cg
//
// The way back is exact up to the rounding of the way there. Forward, no sum may leave the elements.
struct Plain {
    template <class V>
    ZEL_INLINE static LumaAndDifferences<V> forward(const Colour<V>& x) {
        const V outer = x.r + x.b, green = x.g + x.g + 2;
        return {(green + outer) >> 2, (x.r - x.b + 1) >> 1, (green - outer) >> 2};
    }
    template <class V>
    ZEL_INLINE static Colour<V> inverse(const LumaAndDifferences<V>& x) {
        const V magenta = difference(x.y, x.cg);
        return {difference(magenta, x.co), sum(x.y, x.cg), sum(magenta, x.co)};
    }
};

// Co = R - B                           t = Y - (Cg >> 1)
//  t = B + (Co >> 1)                   G = Cg + t
// Cg = G - t                           B = t - (Co >> 1)
//  Y = t + (Cg >> 1)                   R = B + Co
//
// Each step is undone by the like one, wraps included, so the way back restores every input.
struct Reversible {
    template <class V>
    ZEL_INLINE static LumaAndDifferences<V> forward(const Colour<V>& x) {
        const V co = difference(x.r, x.b), t = sum(x.b, co >> 1), cg = difference(x.g, t);
        return {sum(t, cg >> 1), co, cg};
    }
    template <class V>
    ZEL_INLINE static Colour<V> inverse(const LumaAndDifferences<V>& x) {
        const V t = difference(x.y, x.cg >> 1), b = difference(t, x.co >> 1);
        return {b, sum(x.cg, t), sum(b, x.co)};
    }
};

}  // namespace zel::ZEL_LEVEL
