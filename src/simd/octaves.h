// Positive doubles in sixteen octaves of sixteen segments each, for functions that turn products into products, such as powers:
//
//     u = 2^e c (1 + z),    f(u) = f(2^e) f(c) f(1 + z),    c the middle of a segment of 1 .. 2,    |z| <= 1/33
//
// What is left to the caller is f(1 + z).
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

constexpr int segments = 16, octaves = 16, exponentBias = 1023;
constexpr double middleOfSegment(int segment) { return 1 + (2 * segment + 1) / 32.0; }
constexpr double powerOfTwo(int exponent) { return exponent < 0 ? 1.0 / (1 << -exponent) : 1 << exponent; }

// f of the middles and of the powers of two from the lowest exponent on.
struct OctaveFunction {
    int lowestExponent;
    alignas(64) double ofSegments[segments], ofOctaves[octaves];
};

struct InOctave {
    Doubles z, scale;  // scale is f(2^e) f(c)
};

// Octaves<f>()(u) gives the parts of doubles in the octaves of f; those of other numbers are any.

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_OCTAVES
#include ZEL_OWN_OCTAVES
#else

namespace zel::ZEL_LEVEL {

// The last bits of the exponent and the leading bits of the mantissa, which are a byte, make a place in one table.
struct OctaveTable {
    alignas(16) double factors[octaves * segments][2];  // of u for 1 + z, and the scale
};
template <const OctaveFunction& f>
inline constexpr OctaveTable octaveTable = [] {
    OctaveTable t{};
    for (int octave = 0; octave < octaves; ++octave) {
        const int exponent = f.lowestExponent + octave;
        for (int i = 0; i < segments; ++i) {
            double* factors = t.factors[(exponentBias + exponent) % octaves * segments + i];
            factors[0] = 1 / (middleOfSegment(i) * powerOfTwo(exponent));
            factors[1] = f.ofOctaves[octave] * f.ofSegments[i];
        }
    }
    return t;
}();

// Numbers outside the octaves give any result.
template <const OctaveFunction& f>
class Octaves {
  public:
    ZEL_INLINE InOctave operator()(Doubles u) const {
        // The byte that is the low one of the upper word.
        const auto row = [&](int i)
                             ZEL_INLINE_LAMBDA { return octaveTable<f>.factors[static_cast<uint8_t>(((UWords)u)[4 * i + 3])]; };
        const PairsOfDoubles rows = loadPairsAt(row);
        return {u * rows.first - 1, rows.second};
    }
};

}  // namespace zel::ZEL_LEVEL

#endif
