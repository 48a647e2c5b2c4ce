// The tables of the octaves in registers.
#pragma once

#include "simd/octaves.h"

namespace zel::ZEL_LEVEL {

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
