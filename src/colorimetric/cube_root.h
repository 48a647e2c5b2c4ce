// Cube roots and the power that stands for one in lightness, on vectors of single precision.
//
// The rules of LUV and Lab raise a double to 0.3333333432674408, the float nearest to 1/3, which isn't 1/3 and shows in some
// results. The power function itself takes one number at a time, so vectors come near its result, within a known bound, and
// call it for the few numbers where that leaves open what a result is.
#pragma once

#include "simd/doubles.h"

namespace zel::ZEL_LEVEL {

constexpr double cubeRootExponent = 0.3333333432674408;

struct CubeRoot {
    Floats root;     // relative error below 2^-22.5
    Floats inverse;  // and 2^-21
};

// Of positive normal numbers; others give anything.
ZEL_INLINE CubeRoot cubeRoot(Floats v) {
    const auto k = [](double x) { return splatFloat(float(x)); };
    // The bits of a float are nearly linear in its logarithm, of which a third is a third of the words: within 4 %.
    const auto third = (Dwords)mulHigh((UWords)v, (UWords)splatWord(0x5555));
    auto r = (Floats)(splatDword(0x54a14000) - third);
    // What is wrong is h = 1 - v r^3, at most 0.107, so v^(1/3) is v r^2 g with g = (1 - h)^(-2/3) = 1 + h q(h), and its inverse
    // r g^2 (1 - h).
    const Floats near = (v * r) * r, h = k(1) - near * r;
    constexpr double q[] = {0.6666659862882264, 0.5555308071281423, 0.49399015884067465, 0.45929663830837375, 0.4171875036352189};
    Floats hq = k(q[4]);
    for (int i = 3; i >= 0; --i) hq = hq * h + k(q[i]);
    hq *= h;
    const Floats g = k(1) + hq;
    return {near * hq + near, (r * g) * (g * (k(1) - h))};
}

// The power of a number between 2^-8 and 2^60 is `root + rest` within `margin`.
struct CubeRootPower {
    Floats root, rest, margin;

    ZEL_INLINE explicit CubeRootPower(Floats v) {
        const auto k = [](double x) { return splatFloat(float(x)); };
        const CubeRoot c = cubeRoot(v);
        root = c.root;
        // What the root lacks by a step of Newton's, and then v^(1/3) to the exponent: that is (1 + 2^-25) / 3, so a factor of
        // 1 + 2^-25 ln v / 3, where the logarithm is wanted to ten bits: exponent, mantissa, and the bulge between.
        const auto bits = (Dwords)v;
        const auto mantissa = (Floats)((bits & splatDword(0x007fffff)) | splatDword(0x3f800000)) - k(1);
        const Floats linear = toFloats(bits - splatDword(0x3f800000)) * k(0x1p-23);
        const Floats bulge = (mantissa - mantissa * mantissa) * (k(0.4407) + mantissa * (k(-0.2392) + mantissa * k(0.0774)));
        rest = withoutCube(v, root) * ((c.inverse * c.inverse) * k(1 / 3.0)) +
               (root * k(0x1p-25 * 0.6931471805599453 / 3)) * (linear + bulge);
        margin = root * k(0x1p-36);
    }
};

// By the power function, of the elements with a bit in `which`.
ZEL_NOINLINE inline Floats withPowers(Floats powers, Floats v, unsigned which) {
    float last = 0, power = 0;
    for (; which != 0; which &= which - 1) {
        const int i = __builtin_ctz(which);
        if (v[i] != last) {  // areas of one colour are common
            last = v[i];
            power = static_cast<float>(__builtin_pow(last, cubeRootExponent));
        }
        powers[i] = power;
    }
    return powers;
}

}  // namespace zel::ZEL_LEVEL
