// The transfer curve of Recommendation ITU-R BT.709 and its inverse, on values of which 0 is black and 1 is white: a line up to
// the knee, a power above it. The knee of the inverse is 0.0812, where the forward curve has 0.081 at its own. Meant: the two
// do not meet, and with one knee for both, dark samples would change.
#pragma once

#include <cstdint>

#include "simd/byte_table.h"

namespace zel::ZEL_LEVEL {

// A number of the arithmetic, Value, is a double or a vector of them: both are computed by the same operations in the same order.
struct GammaForward {
    static constexpr double knee = 0.018, slope = 4.5;
    static constexpr int numerator = 9, denominator = 20;
    static constexpr double exponent = 0.45, factor = 1.099, subtrahend = 0.099;

    template <class Value>
    ZEL_INLINE static constexpr Value base(Value v) {
        return v;
    }
    ZEL_INLINE static constexpr double ofPower(double p) { return p * factor - subtrahend; }
};

struct GammaInverse {
    static constexpr double knee = 0.0812, slope = 0.2222222222222222;
    static constexpr int numerator = 20, denominator = 9;
    static constexpr double exponent = 2.2222222222222223, factor = 1, subtrahend = 0;

    template <class Value>
    ZEL_INLINE static constexpr Value base(Value v) {
        return (v + 0.099) * 0.9099181073703366;
    }
    ZEL_INLINE static constexpr double ofPower(double p) { return p; }
};

// The rules of single samples, by the power function of the C library.
template <class Curve>
ZEL_INLINE double powerOf(double v) {
    return __builtin_pow(Curve::base(v), Curve::exponent);
}

// 16-bit words count in 65535ths. Sums that the narrowing to single precision turns into whole odd numbers count as ties, which
// go to the even number below.
constexpr double wordUnit = 1.5259021896696422e-05;

template <class Curve>
ZEL_INLINE uint16_t gammaOfWord(uint16_t x) {
    const double v = x * wordUnit;
    const double w = v < Curve::knee ? x * Curve::slope : Curve::ofPower(powerOf<Curve>(v)) * 65535;
    const auto f = static_cast<float>(w + 0.5);
    const auto r = static_cast<int32_t>(f);
    return static_cast<uint16_t>(r % 2 != 0 && f == static_cast<float>(r) ? r - 1 : r);
}

// Floats count from the bottom of a range of the caller's, whose width is 1.
struct GammaRange {
    float bottom, width;
};

template <class Curve>
ZEL_INLINE float gammaOfFloat(float x, GammaRange range) {
    const float d = x - range.bottom;
    const double v = double(d) * (1.0 / double(range.width));
    const double out = v < Curve::knee ? double(d) * Curve::slope : Curve::ofPower(powerOf<Curve>(v)) * double(range.width);
    return static_cast<float>(out + double(range.bottom));
}

// What the tables of the library need, when it is compiled.
constexpr double integerPower(double x, int exponent) {
    double result = 1;
    for (double square = x; exponent != 0; exponent /= 2, square *= square)
        if (exponent % 2 != 0) result *= square;
    return result;
}

// From above, Newton's steps only go down, until they are below the grain of the arithmetic.
constexpr double root(double x, int degree) {
    double y = x > 1 ? x : 1;
    for (;;) {
        const double next = y - (y - x / integerPower(y, degree - 1)) / degree;
        if (!(next < y)) return y;
        y = next;
    }
}

template <class Curve>
constexpr double rationalPower(double x) {
    return integerPower(root(x, Curve::denominator), Curve::numerator);
}

// The line has two ties, at 1 and 3, and they go to the even byte. No other byte is near one.
template <class Curve>
constexpr ByteTable gammaBytes() {
    ByteTable bytes{};
    for (int i = 0; i < 256; ++i) {
        const double v = i / 255.0;
        const double exact = v < Curve::knee ? i * Curve::slope : Curve::ofPower(rationalPower<Curve>(Curve::base(v))) * 255;
        const auto below = static_cast<int>(exact);
        const double rest = exact - below;
        bytes.of[i] = static_cast<uint8_t>(rest > 0.5 || (rest == 0.5 && below % 2 != 0) ? below + 1 : below);
    }
    return bytes;
}

template <class Curve>
inline constexpr ByteTable curveOfBytes = gammaBytes<Curve>();

}  // namespace zel::ZEL_LEVEL
