// The power of a curve on vectors of doubles, within a known bound: near enough for nearly all samples. The table covers
// sixteen octaves of bases, and what is left within a segment of one, (1 + z)^a, is a polynomial of fifth degree.
#pragma once

#include "intensity/gamma_curve.h"
#include "simd/octaves.h"

namespace zel::ZEL_LEVEL {

// The bases start below both knees, and end far above white.
constexpr int lowestExponent = -6;
constexpr double endOfBases = 1 << (octaves + lowestExponent);

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

template <class Curve>
constexpr OctaveFunction powerInOctaves = [] {
    OctaveFunction f{.lowestExponent = lowestExponent, .ofSegments = {}, .ofOctaves = {}};
    for (int i = 0; i < segments; ++i) f.ofSegments[i] = rationalPower<Curve>(middleOfSegment(i));
    for (int i = 0; i < octaves; ++i) f.ofOctaves[i] = rationalPower<Curve>(powerOfTwo(lowestExponent + i));
    return f;
}();

template <class Curve>
class Powers {
  public:
    // Bases outside the table give any number.
    ZEL_INLINE Doubles operator()(Doubles u) const {
        const auto [z, scale] = octaves_(u);
        const Doubles z2 = z * z;
        return scale * ((c_[0] + c_[1] * z) + z2 * ((c_[2] + c_[3] * z) + z2 * (c_[4] + c_[5] * z)));
    }

  private:
    static constexpr const double (&c_)[6] = coefficients<Curve>;

    Octaves<powerInOctaves<Curve>> octaves_;
};

}  // namespace zel::ZEL_LEVEL
