// The power of a curve on vectors of doubles, within a known bound: near enough for nearly all samples. The table covers
// sixteen octaves of bases in sixteen segments each. Within a segment, that is around its middle c,
//
//     u^a = c^a (1 + z)^a,    z = u/c - 1,    |z| <= 1/33,
//
// and the second factor is a polynomial of fifth degree.
#pragma once

#include "intensity/gamma_curve.h"
#include "simd/doubles.h"

namespace zel::ZEL_LEVEL {

// How the bases are divided up. They start below both knees, and end far above white.
constexpr int segments = 16, octaves = 16, lowestExponent = -6;
constexpr double endOfBases = 1 << (octaves + lowestExponent);
constexpr int exponentBias = 1023;

// A vector of bases to their powers, of which the relative error is below 2^-40.7 by the polynomial and a few units of 2^-52 by
// its evaluation, in any rounding mode.
constexpr double powerError = 0x1p-40;

// Of (1 + z)^a, with the least relative error.
template <class Curve>
constexpr double coefficients[6] = {};
template <>
constexpr double coefficients<GammaForward>[6] = {0x1.fffffffffed4dp-1, 0x1.ccccccccdd308p-2,  -0x1.fae144e224791p-4,
                                                  0x1.05e34de2c4550p-4, -0x1.4e27adfeecde2p-5, 0x1.dabf269d56c4cp-6};
template <>
constexpr double coefficients<GammaInverse>[6] = {0x1.ffffffffffd44p-1, 0x1.1c71c71c72649p+1,  0x1.5ba7819b19444p+0,
                                                  0x1.9c08e3f29c4c4p-4, -0x1.408b4c3a512bdp-6, 0x1.c834da8103344p-8};

constexpr double middleOfSegment(int segment) { return 1 + (2 * segment + 1) / 32.0; }
constexpr double powerOfTwo(int exponent) { return exponent < 0 ? 1.0 / (1 << -exponent) : 1 << exponent; }

#if ZEL_LANES == 4
// A vector of bases finds its factors by permutes of these, by the leading bits of the mantissa and by the last bits of the
// exponent.
struct PowerTable {
    alignas(64) double reciprocals[segments], segmentPowers[segments], octavePowers[octaves];
};
template <class Curve>
constexpr PowerTable powerTable = [] {
    PowerTable t{};
    for (int i = 0; i < segments; ++i) {
        t.reciprocals[i] = 1 / middleOfSegment(i);
        t.segmentPowers[i] = rationalPower<Curve>(middleOfSegment(i));
    }
    for (int e = lowestExponent; e < lowestExponent + octaves; ++e)
        t.octavePowers[(exponentBias + e) % octaves] = rationalPower<Curve>(powerOfTwo(e));
    return t;
}();
#else
// The last bits of the exponent and the leading bits of the mantissa, which are a byte, make a place in one table.
struct PowerTable {
    alignas(16) double factors[octaves * segments][2];  // 1/c and c^a
};
template <class Curve>
constexpr PowerTable powerTable = [] {
    double segmentPowers[segments]{};
    for (int i = 0; i < segments; ++i) segmentPowers[i] = rationalPower<Curve>(middleOfSegment(i));
    PowerTable t{};
    for (int e = lowestExponent; e < lowestExponent + octaves; ++e) {
        const double octavePower = rationalPower<Curve>(powerOfTwo(e));
        for (int i = 0; i < segments; ++i) {
            double* factors = t.factors[(exponentBias + e) % octaves * segments + i];
            factors[0] = 1 / (middleOfSegment(i) * powerOfTwo(e));
            factors[1] = octavePower * segmentPowers[i];
        }
    }
    return t;
}();
#endif

template <class Curve>
class Powers {
  public:
    // Bases outside the table give any number.
    ZEL_INLINE Doubles operator()(Doubles u) const {
        Doubles z, scale;
#if ZEL_LANES == 4
        const Register bits = (Register)u, segment = _mm512_srli_epi64(bits, 48), octave = _mm512_srli_epi64(bits, 52);
        const auto pick = [](Register place, const Doubles(&table)[2]) {
            return (Doubles)_mm512_permutex2var_pd((__m512d)table[0], place, (__m512d)table[1]);
        };
        // The mantissa with the exponent of 1.
        const auto mantissa = (Doubles)_mm512_ternarylogic_epi64(bits, _mm512_set1_epi64(0x000fffffffffffff),
                                                                 _mm512_set1_epi64(0x3ff0000000000000), 0xea);
        z = mantissa * pick(segment, reciprocals_) - 1;
        scale = pick(segment, segmentPowers_) * pick(octave, octavePowers_);
#else
        factors(u, z, scale);
        z = u * z - 1;
#endif
        const Doubles z2 = z * z;
        return scale * ((c_[0] + c_[1] * z) + z2 * ((c_[2] + c_[3] * z) + z2 * (c_[4] + c_[5] * z)));
    }

  private:
    static constexpr const double (&c_)[6] = coefficients<Curve>;

#if ZEL_LANES == 4
    ZEL_INLINE static Doubles load(const double* p) { return (Doubles)_mm512_load_pd(p); }

    const Doubles reciprocals_[2] = {load(powerTable<Curve>.reciprocals), load(powerTable<Curve>.reciprocals + 8)};
    const Doubles segmentPowers_[2] = {load(powerTable<Curve>.segmentPowers), load(powerTable<Curve>.segmentPowers + 8)};
    const Doubles octavePowers_[2] = {load(powerTable<Curve>.octavePowers), load(powerTable<Curve>.octavePowers + 8)};
#else
    // The byte that is the low one of the upper word.
    template <int half>
    ZEL_INLINE static __m128d row(__m128i u) {
        return _mm_load_pd(powerTable<Curve>.factors[static_cast<uint8_t>(_mm_extract_epi16(u, half * 4 + 3))]);
    }
    ZEL_INLINE static void factors(Doubles u, Doubles& reciprocals, Doubles& scale) {
#if ZEL_LANES == 2
        const __m128i low = _mm256_castsi256_si128((Register)u), high = _mm256_extracti128_si256((Register)u, 1);
        const __m256d even = _mm256_set_m128d(row<0>(high), row<0>(low)), odd = _mm256_set_m128d(row<1>(high), row<1>(low));
        reciprocals = (Doubles)_mm256_unpacklo_pd(even, odd);
        scale = (Doubles)_mm256_unpackhi_pd(even, odd);
#else
        const __m128d even = row<0>((Register)u), odd = row<1>((Register)u);
        reciprocals = (Doubles)_mm_unpacklo_pd(even, odd);
        scale = (Doubles)_mm_unpackhi_pd(even, odd);
#endif
    }
#endif
};

}  // namespace zel::ZEL_LEVEL
