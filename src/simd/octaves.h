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

#if ZEL_LANES == 4
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
#else
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
#endif

// Numbers outside the octaves give any result.
template <const OctaveFunction& f>
class Octaves {
  public:
#if ZEL_LANES == 4
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
#else
    ZEL_INLINE InOctave operator()(Doubles u) const {
#if ZEL_LANES == 2
        const __m128i low = _mm256_castsi256_si128((Register)u), high = _mm256_extracti128_si256((Register)u, 1);
        const __m256d even = _mm256_set_m128d(row<0>(high), row<0>(low)), odd = _mm256_set_m128d(row<1>(high), row<1>(low));
        const auto factors = (Doubles)_mm256_unpacklo_pd(even, odd), scale = (Doubles)_mm256_unpackhi_pd(even, odd);
#else
        const __m128d even = row<0>((Register)u), odd = row<1>((Register)u);
        const auto factors = (Doubles)_mm_unpacklo_pd(even, odd), scale = (Doubles)_mm_unpackhi_pd(even, odd);
#endif
        return {u * factors - 1, scale};
    }

  private:
    // The byte that is the low one of the upper word.
    template <int half>
    ZEL_INLINE static __m128d row(__m128i u) {
        return _mm_load_pd(octaveTable<f>.factors[static_cast<uint8_t>(_mm_extract_epi16(u, half * 4 + 3))]);
    }
#endif
};

}  // namespace zel::ZEL_LEVEL
