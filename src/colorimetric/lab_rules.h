// CIE Lab, white D65, of R, G and B or back:
//
//     L = 116 f(Y) - 16 or 903.3 Y, a = 500 (f(X) - f(Y)), b = 200 (f(Y) - f(Z)), X, Y and Z as parts of white
//     f(v) = v^(1/3), up to 0.008856 the line 7.787 v + 0.13793103
//
// The way back cubes all through and knows no line. Bytes are rounded and words cut off. Meant: with the line,
// dark colours would change on the way back, and with one rounding, words.
#pragma once

#include "colorimetric/cube_root.h"
#include "colorimetric/cut_off_bytes.h"

namespace zel::ZEL_LEVEL::lab {

ZEL_INLINE Floats k(double x) { return splatFloat(float(x)); }
ZEL_INLINE Floats select(Dwords which, Floats a, Floats b) { return which ? a : b; }

// Products are added from blue to red.
struct Row {
    double b, g, r;
};
constexpr Row xRow{0.180423, 0.35758, 0.412453}, yRow{0.072169, 0.71516, 0.212671}, zRow{0.950227, 0.119193, 0.019334};

ZEL_INLINE Floats sumOf(const Row& row, const FloatPixel& p) { return (k(row.b) * p.c + k(row.g) * p.b) + k(row.r) * p.a; }
// The same in parts of white, nearly.
ZEL_INLINE Floats partOf(const Row& row, double white, const FloatPixel& p) {
    return k(row.r / white) * p.a + (k(row.g / white) * p.b + k(row.b / white) * p.c);
}

constexpr double whiteX = 242.366, whiteY = 255, whiteZ = 277.632;
constexpr double linearLimit = 0.008856, kappa = 903.3;

ZEL_INLINE Dwords isCurved(Floats v) { return (Dwords)(v > k(linearLimit)); }
ZEL_INLINE Floats line(Floats v) { return v * k(7.787) + k(0.13793103); }

struct Values {
    Floats fx, fy, fz;
};

// Bytes. The results are cut off, so they can be computed in any way that comes near.
struct ToBytes {
    static constexpr float margin = 1.5e-4f;

    ZEL_INLINE static FloatPixel above(const FloatPixel& p) {
        const auto f = [](Floats v) { return select(isCurved(v), cubeRoot(v).root, line(v)); };
        const Floats x = partOf(xRow, whiteX, p), y = partOf(yRow, whiteY, p), z = partOf(zRow, whiteZ, p), fy = f(y);
        const Floats l =
            select(isCurved(y), fy * k(116 * 2.55) + k(0.5 + margin - 16 * 2.55), y * k(kappa * 2.55) + k(0.5 + margin));
        return {l, (f(x) - fy) * k(500) + k(128.5 + margin), (fy - f(z)) * k(200) + k(128.5 + margin)};
    }

    ZEL_INLINE static FloatPixel exactly(const FloatPixel& p, unsigned which) {
        const auto f = [&](Floats v) {
            return select(isCurved(v), withPowers(Floats{}, v, which & signBits(isCurved(v))), line(v));
        };
        const Floats x = sumOf(xRow, p) / k(whiteX), y = sumOf(yRow, p) / k(whiteY), z = sumOf(zRow, p) / k(whiteZ);
        const Floats fy = f(y), l = select(isCurved(y), k(116) * fy - k(16), k(kappa) * y);
        return {(l * k(255)) / k(100) + k(0.5), (f(x) - fy) * k(500) + k(128.5), (fy - f(z)) * k(200) + k(128.5)};
    }
};

// f of X, Y and Z for floats and words, which need the powers narrowed to single precision to the last bit: where both bounds of
// one are the same, that is it.
struct Exactly {
    Floats fx, fy, fz;

    ZEL_INLINE Exactly(const Channels<Floats>& v, const Channels<CubeRootPower>& powers) {
        const auto low = [](const CubeRootPower& p) { return p.root + p.least; };
        const auto isDoubtful = [](Floats x, const CubeRootPower& p) {
            return (Dwords)(p.root + p.least != p.root + p.most) | (Dwords)(x >= k(0x1p60));
        };
        const auto doubtful = [&](Floats x, const CubeRootPower& p) { return isDoubtful(x, p) & isCurved(x); };
        Channels<Floats> f{low(powers.a), low(powers.b), low(powers.c)};
        const Channels<Dwords> which{doubtful(v.a, powers.a), doubtful(v.b, powers.b), doubtful(v.c, powers.c)};
        if (__builtin_expect(signBits(which.a | which.b | which.c) != 0, 0)) {
            f.a = withPowers(f.a, v.a, signBits(which.a));
            f.b = withPowers(f.b, v.b, signBits(which.b));
            f.c = withPowers(f.c, v.c, signBits(which.c));
        }
        fx = select(isCurved(v.a), f.a, line(v.a));
        fy = select(isCurved(v.b), f.b, line(v.b));
        fz = select(isCurved(v.c), f.c, line(v.c));
    }
};

// A component of white in double precision, and its reciprocal: whole, and as two floats of which the lesser is a little short.
// Both are positive, so that infinity remains one.
struct White {
    double value, reciprocal;
    float greater, lesser;

    constexpr explicit White(double x)
        : value(x), reciprocal(1 / x), greater(float((1 - 0x1p-25) / x)), lesser(float((1 / x - greater) * (1 - 0x1p-22))) {}
};
constexpr White floatWhiteX(0.950456023), floatWhiteZ(1.08875394);

// The quotient in double precision, narrowed. The product with the reciprocal narrows to the same number, and so does a fused one
// with its two parts, whatever the 24 bits of v are; a test tries them all.
ZEL_INLINE Floats partOfWhite(Floats v, const White& white) {
    if constexpr (traits.fuses) return nearMulAdd(v, splatFloat(white.greater), v * splatFloat(white.lesser));
    const Doubles reciprocal = splatDouble(white.reciprocal);
    return narrowed(widened<0>(v) * reciprocal, widened<1>(v) * reciprocal);
}

struct ToFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats x = partOfWhite(sumOf(xRow, p), floatWhiteX), y = sumOf(yRow, p),
                     z = partOfWhite(sumOf(zRow, p), floatWhiteZ);
        const Exactly f({x, y, z}, {CubeRootPower(x), CubeRootPower(y), CubeRootPower(z)});
        return {select(isCurved(y), k(116) * f.fy - k(16), k(kappa) * y), (f.fx - f.fy) * k(500), (f.fy - f.fz) * k(200)};
    }
};

// Words of bytes, cut off. L comes of a power that was not narrowed.
struct ToWords {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats x = sumOf(xRow, p) / k(whiteX), y = sumOf(yRow, p) / k(whiteY), z = sumOf(zRow, p) / k(whiteZ);
        const CubeRootPower power(y);
        const Exactly f({x, y, z}, {CubeRootPower(x), power, CubeRootPower(z)});
        const Floats l = select(isCurved(y), lightness(y, power), k(kappa) * y);
        return {(l * k(65535)) / k(100), ((f.fx - f.fy) * k(500) + k(128)) * k(255), ((f.fy - f.fz) * k(200) + k(128)) * k(255)};
    }

  private:
    ZEL_INLINE static Floats lightness(Floats y, const CubeRootPower& power) {
        const Floats low = bound(power.root, power.least), high = bound(power.root, power.most);
        const unsigned which = signBits((Dwords)(low != high) & isCurved(y));
        return __builtin_expect(which != 0, 0) ? withLightness(low, y, which) : low;
    }
    ZEL_INLINE static Floats bound(Floats root, Floats rest) {
        const auto half = [](Doubles a, Doubles b) { return (a + b) * splatDouble(116) - splatDouble(16); };
        return narrowed(half(widened<0>(root), widened<0>(rest)), half(widened<1>(root), widened<1>(rest)));
    }
    ZEL_NOINLINE static Floats withLightness(Floats l, Floats y, unsigned which) {
        for (int i = 0; i < vectorBytes / 4; ++i)
            if (which >> i & 1) l[i] = static_cast<float>(116.0 * __builtin_pow(y[i], cubeRootExponent) - 16.0);
        return l;
    }
};

// The way back.
ZEL_INLINE FloatPixel rgbOf(const Values& v, double x, double y, double z) {
    const auto cube = [](double white, Floats f) { return ((k(white) * f) * f) * f; };
    const Floats xv = cube(x, v.fx), yv = y == 1 ? (v.fy * v.fy) * v.fy : cube(y, v.fy), zv = cube(z, v.fz);
    return {(k(3.240479) * xv - k(1.53715) * yv) - k(0.498535) * zv, (k(-0.969256) * xv + k(1.875991) * yv) + k(0.041556) * zv,
            (k(0.055648) * xv - k(0.204043) * yv) + k(1.057311) * zv};
}

struct FromFloats {
    static constexpr bool prefersRegisters = true;

    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats fy = (p.a + k(16)) / k(116);
        return rgbOf({p.b / k(500) + fy, fy, fy - p.c / k(200)}, 0.950456, 1, 1.0887539);
    }
};

// Integers to bytes, which are cut off: with a half added, of words without.
struct Scale {
    double lightness, chroma, half;
};
constexpr Scale ofBytes{255, 1, 0.5}, ofWords{65535, 255, 0};

template <const Scale& scale>
struct FromSamples {
    static constexpr float margin = 4e-4f;

    ZEL_INLINE static FloatPixel above(const FloatPixel& p) {
        const Floats fy = p.a * k(100 / scale.lightness / 116) + k(16 / 116.0);
        const auto difference = [](Floats v, double gain) { return v * k(1 / scale.chroma / gain) - k(128 / gain); };
        const FloatPixel rgb = rgbOf({fy + difference(p.b, 500), fy, fy - difference(p.c, 200)}, whiteX, whiteY, whiteZ);
        // Beyond black and white, the middle of theirs.
        const auto limited = [](Floats v) { return atMost(atLeast(v + k(scale.half + margin), k(0.5)), k(255.5)); };
        return {limited(rgb.a), limited(rgb.b), limited(rgb.c)};
    }

    ZEL_INLINE static FloatPixel exactly(const FloatPixel& p, unsigned) {
        const Floats fy = ((p.a * k(100)) / k(scale.lightness) + k(16)) / k(116);
        const auto chroma = [](Floats v) { return (scale.chroma == 1 ? v : v / k(scale.chroma)) - k(128); };
        const FloatPixel rgb = rgbOf({chroma(p.b) / k(500) + fy, fy, fy - chroma(p.c) / k(200)}, whiteX, whiteY, whiteZ);
        return {withHalf(rgb.a), withHalf(rgb.b), withHalf(rgb.c)};
    }

  private:
    // The half is added in double precision; the sum is given as an integer.
    ZEL_INLINE static Floats withHalf(Floats v) {
        if (scale.half == 0) return v;
        const Doubles half = splatDouble(scale.half);
        return toFloats(truncated(widened<0>(v) + half, widened<1>(v) + half));
    }
};

}  // namespace zel::ZEL_LEVEL::lab
