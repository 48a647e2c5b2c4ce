// Cube roots and the power that stands for one in lightness, on vectors of single precision.
//
// The rules of LUV and Lab raise a double to 0.3333333432674408, the float nearest to 1/3, which isn't 1/3 and shows in some
// results. The power function itself takes one number at a time, so vectors come near its result, within a known bound, and
// call it for the few numbers where that leaves open what a result is.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

constexpr double cubeRootExponent = 0.3333333432674408;

struct CubeRoot {
    Floats root;           // relative error below 2^-22.5
    Floats inverseSquare;  // 1 / root^2, within 2^-20
};

// Of positive normal numbers; others give anything.
ZEL_INLINE CubeRoot cubeRoot(Floats v) {
    const auto k = [](double x) { return splatFloat(float(x)); };
    // The bits of a float are nearly linear in its logarithm, of which a third is a third of the words: within 4 %.
    const auto third = (Dwords)mulHigh((UWords)v, (UWords)splatWord(0x5555));
    const auto r = (Floats)(splatDword(0x54a14000) - third);
    // What is wrong is h = 1 - v r^3, at most 0.107, so v^(1/3) is v r^2 g with g = (1 - h)^(-2/3) = 1 + h q(h), and v^(-2/3) is
    // r^2 g.
    const Floats square = r * r, near = v * square, h = nearMulAdd(-near, r, k(1));
    constexpr double q[] = {0.6666659862882264, 0.5555308071281423, 0.49399015884067465, 0.45929663830837375, 0.4171875036352189};
    Floats qh = k(q[4]);
    for (int i = 3; i >= 0; --i) qh = nearMulAdd(qh, h, k(q[i]));
    return {nearMulAdd(qh, near * h, near), square * nearMulAdd(qh, h, k(1))};
}

// By how much the cube of a root that is right to 20 bits exceeds v, nearly to single precision.
ZEL_INLINE Floats cubeLess(Floats v, Floats root) {
    if constexpr (traits.fuses) {
        const Floats square = root * root, rest = nearMulAdd(root, root, -square);
        return nearMulAdd(rest, root, nearMulAdd(square, root, -v));
    }
    const auto half = [](Doubles x, Doubles r) { return (r * r) * r - x; };
    return narrowed(half(widened<0>(v), widened<0>(root)), half(widened<1>(v), widened<1>(root)));
}

// The power of a number between 2^-8 and 2^60 lies between root + least and root + most.
struct CubeRootPower {
    Floats root, least, most;

    ZEL_INLINE explicit CubeRootPower(Floats v) {
        const auto k = [](double x) { return splatFloat(float(x)); };
        const CubeRoot c = cubeRoot(v);
        root = c.root;
        // What the root lacks by a step of Newton's, and then v^(1/3) to the exponent: that is (1 + 2^-25) / 3, so a factor of
        // 1 + 2^-25 ln v / 3, where the logarithm is wanted to ten bits. It is the bits of v, which are linear in the exponent
        // and the significand, and a polynomial of the significand.
        const auto bits = (Dwords)v;
        const auto significand = (Floats)((bits & splatDword(0x007fffff)) | splatDword(0x3f800000));
        constexpr double scale = 0x1p-25 * 0.6931471805599453 / 3;
        const auto term = [&](double x) { return k(scale * x); };
        Floats factor = nearMulAdd(significand, term(0.158248703), term(-1.051875022));
        factor = nearMulAdd(significand, factor, term(2.047884148));
        factor = nearMulAdd(significand, factor, term(-2.153620711 - 126));
        factor = nearMulAdd(toFloats(bits), term(0x1p-23), factor);
        const Floats excess = cubeLess(v, root), step = c.inverseSquare * k(-1 / 3.0);
        const auto rest = [&](double margin) { return nearMulAdd(excess, step, root * (factor + k(margin))); };
        least = rest(-0x1p-36);
        most = rest(0x1p-36);
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
