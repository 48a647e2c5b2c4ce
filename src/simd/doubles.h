// Roots of floats by way of doubles.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// What is left of v without the cube of a root that is right to 20 bits, nearly to single precision.
ZEL_INLINE Floats withoutCube(Floats v, Floats root) {
    const auto half = [](Doubles x, Doubles r) { return x - (r * r) * r; };
    return narrowed(half(widened<0>(v), widened<0>(root)), half(widened<1>(v), widened<1>(root)));
}

}  // namespace zel::ZEL_LEVEL
