// Positive doubles in sixteen octaves of sixteen segments each, for functions that turn products into products, such as powers:
//
//     u = 2^e c (1 + z),    f(u) = f(2^e) f(c) f(1 + z),    c the middle of a segment of 1 .. 2,    |z| <= 1/33
//
// What is left to the caller is f(1 + z).
#pragma once

#include "simd/doubles.h"

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

// Factors are found by permutes, by the leading bits of the mantissa and by the last bits of the exponent.
struct OctaveTable {
    alignas(64) double reciprocals[segments], ofSegments[segments], ofOctaves[octaves];
};
template <const OctaveFunction& f>
inline constexpr OctaveTable octaveTable = [] {
    OctaveTable t{};
    for (int i = 0; i < segments; ++i) {
        t.reciprocals[i] = 1 / middleOfSegment(i);
        t.ofSegments[i] = f.ofSegments[i];
    }
    for (int i = 0; i < octaves; ++i) t.ofOctaves[(exponentBias + f.lowestExponent + i) % octaves] = f.ofOctaves[i];
    return t;
}();

// Numbers outside the octaves give any result.
template <const OctaveFunction& f>
class Octaves {
  public:
    ZEL_INLINE InOctave operator()(Doubles u) const {
        const Register bits = (Register)u, segment = _mm512_srli_epi64(bits, 48), octave = _mm512_srli_epi64(bits, 52);
        const auto pick = [](Register place, const Doubles(&table)[2]) {
            return (Doubles)_mm512_permutex2var_pd((__m512d)table[0], place, (__m512d)table[1]);
        };
        // The mantissa with the exponent of 1.
        const auto mantissa = (Doubles)_mm512_ternarylogic_epi64(bits, _mm512_set1_epi64(0x000fffffffffffff),
                                                                 _mm512_set1_epi64(0x3ff0000000000000), 0xea);
        return {mantissa * pick(segment, reciprocals_) - 1, pick(segment, ofSegments_) * pick(octave, ofOctaves_)};
    }

  private:
    ZEL_INLINE static Doubles load(const double* p) { return (Doubles)_mm512_load_pd(p); }

    static constexpr const OctaveTable& table = octaveTable<f>;
    const Doubles reciprocals_[2] = {load(table.reciprocals), load(table.reciprocals + 8)};
    const Doubles ofSegments_[2] = {load(table.ofSegments), load(table.ofSegments + 8)};
    const Doubles ofOctaves_[2] = {load(table.ofOctaves), load(table.ofOctaves + 8)};
};

}  // namespace zel::ZEL_LEVEL
