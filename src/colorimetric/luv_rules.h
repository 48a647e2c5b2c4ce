// CIE LUV, white D65, of R, G and B or back. Bytes hold L, U and V as 255 L / 100, 255 (U + 134) / 354 and 255 (V + 140) / 262,
// words the same of 65535, floats as they are. Every depth has an arithmetic of its own, and all but bytes to LUV and floats
// to RGB have one for the leading columns and one for the others. Meant: with one for both, the ends of rows would change.
//
//     L = 116 Y^(1/3) - 16 or 903.3 Y, U = 13 L (4 X / D - un), V = 13 L (9 Y / D - vn), D = X + 15 Y + 3 Z
//
// All operations are in single precision, in the order written.
#pragma once

#include "colorimetric/cube_root.h"
#include "colorimetric/cut_off_bytes.h"
#include "simd/float_table.h"

namespace zel::ZEL_LEVEL::luv {

ZEL_INLINE Floats k(double x) { return splatFloat(float(x)); }
ZEL_INLINE Floats select(Dwords which, Floats a, Floats b) { return which ? a : b; }

struct Row {
    float r, g, b;
};
constexpr Row xRow{0.412453f, 0.35758f, 0.180423f}, yRow{0.212671f, 0.71516f, 0.072169f}, zRow{0.019334f, 0.119193f, 0.950227f};

ZEL_INLINE Floats sumOf(const Row& row, const FloatPixel& p) {
    return (splatFloat(row.r) * p.a + splatFloat(row.g) * p.b) + splatFloat(row.b) * p.c;
}

constexpr double un = 0.197839, vn = 0.468342;
constexpr double linearLimit = 0.008856, kappa = 903.3;

// Bytes. The results are cut off, so they can be computed in any way that comes near.
struct ToBytes {
    static constexpr float margin = 2.6e-4f;

    ZEL_INLINE static FloatPixel above(const FloatPixel& p) {
        const auto rowOfD = [](float Row::*weight) { return xRow.*weight + 15.0 * yRow.*weight + 3.0 * zRow.*weight; };
        const auto sum = [&](double r, double g, double b) { return k(b) * p.c + (k(g) * p.b + k(r) * p.a); };
        const Floats x = sum(xRow.r, xRow.g, xRow.b), y = sum(yRow.r, yRow.g, yRow.b);
        const Floats inverse = k(1) / atLeast(sum(rowOfD(&Row::r), rowOfD(&Row::g), rowOfD(&Row::b)), k(1e-3));
        const Floats root = cubeRoot(y).root;  // of 255 Y
        constexpr double cubeRootOf255 = 6.341325705384602;
        const Floats l = select(y <= k(linearLimit * 255), y * k(kappa / 100), root * k(295.8 / cubeRootOf255) + k(-40.8));
        constexpr double uGain = 13 * 100 / 354.0, vGain = 13 * 100 / 262.0;
        const Floats u = l * ((x * inverse) * k(4 * uGain) + k(-un * uGain)) + k(134 * 255 / 354.0 + 0.5 + margin);
        const Floats v = l * ((y * inverse) * k(9 * vGain) + k(-vn * vGain)) + k(140 * 255 / 262.0 + 0.5 + margin);
        // Black and white have an integer L. They are exact, and common, so they are moved away from it.
        const auto ends = (Dwords)(l < k(0.25)) | (Dwords)(l > k(254.99));
        return {l + select(ends, k(0.5), k(margin)), u, v};
    }

    ZEL_INLINE static FloatPixel exactly(const FloatPixel& p, unsigned which) {
        const Floats x = sumOf(xRow, p) / k(255), y = sumOf(yRow, p) / k(255), z = sumOf(zRow, p) / k(255);
        const auto isLinear = (Dwords)(y <= k(linearLimit));
        const Floats root = withPowers(Floats{}, y, which & ~signBits(isLinear));
        const Floats l = select(isLinear, y * k(kappa), root * k(116) - k(16));
        const Floats d = (z * k(3) + x) + k(15) * y;
        const auto isBlack = (Dwords)(y == k(0));
        const Floats u = select(isBlack, Floats{}, (k(4) * x) / d), v = select(isBlack, Floats{}, (k(9) * y) / d);
        const Floats uf = ((u - k(un)) * k(13)) * l + k(134), vf = (k(13) * l) * (v - k(vn)) + k(140);
        return {(k(255) * l) / k(100), (uf * k(255)) / k(354) + k(0.5), (vf * k(255)) / k(262) + k(0.5)};
    }
};

// The cube root of luminance in words and floats: t of a grid point near it, and a series in (Y - t^3) r, where r = 1 / t^3.
// The first two and the last row are not what the grid would give in the last digits. Meant: with those of the
// grid, last digits of floats would change.
constexpr FloatTables rootTables = [] {
    FloatTables tables{};
    for (int i = 0; i < floatTablePlaces; ++i) {
        const double grid = (i + 1.0128) / floatTablePlaces;
        double root = 1;
        for (int step = 0; step < 40; ++step) root -= (root * root * root - grid) / (3 * root * root);
        const float t = static_cast<float>(root);
        tables.at(0, i) = t;
        tables.at(1, i) = static_cast<float>(1 / (double{t} * double{t} * double{t}));
    }
    const auto set = [&](int i, float t, float r) {
        tables.at(0, i) = t;
        tables.at(1, i) = r;
    };
    set(0, 0.19926899671554565f, 126.38040161132812f);
    set(1, 0.25053301453590393f, 63.592041015625f);
    set(127, 1.0000330209732056f, 0.9998999834060669f);
    return tables;
}();

constexpr float series[] = {0.3333333432674408f,  0.1111111119389534f,   0.06172839552164078f,  0.041152264922857285f,
                            0.03017832711338997f, 0.023472031578421593f, 0.019001169130206108f, 0.015834307298064232f};

// L of a luminance with its place in the tables.
template <int terms>
ZEL_INLINE Floats lightness(Floats y, Dwords place) {
    const FloatPair row = lookUp(rootTables, place);
    const Floats t = row.first, x = (y - (t * t) * t) * row.second;
    Floats sum = splatFloat(-series[terms - 1]);
    unrolled<terms - 1>([&](auto i) ZEL_INLINE_LAMBDA {
        constexpr int term = terms - 2 - i;
        sum = sum * x + splatFloat(term % 2 == 0 ? series[term] : -series[term]);
    });
    const Floats root = t * (sum * x + k(1));
    return select(y <= k(linearLimit), y * k(kappa), root * k(116) - k(16));
}

ZEL_INLINE Floats reciprocal(Floats v) {
    const Floats r = approximateReciprocal(v);
    return k(2) * r - (v * r) * r;
}

// X, Y and 1 / D. Black has no D: in the leading columns 3 stands for it, in the others U and V are set to 0.
template <bool isTail>
struct Chromaticity {
    Floats x, y, inverse;
    Dwords isBlack;

    ZEL_INLINE explicit Chromaticity(const FloatPixel& p) : x(sumOf(xRow, p)), y(sumOf(yRow, p)) {
        const Floats d = (k(3) * sumOf(zRow, p) + k(15) * y) + x;
        isBlack = (Dwords)(d == k(0));
        inverse = reciprocal(isTail ? d : d + (Floats)(isBlack & (Dwords)k(3)));
    }
    ZEL_INLINE Floats u() const { return (k(4) * x) * inverse; }
    ZEL_INLINE Floats v() const { return (k(9) * y) * inverse; }
    ZEL_INLINE Floats sample(Floats v) const { return isTail ? (Floats)((Dwords)v & ~isBlack) : v; }
};

template <bool isTail>
struct ToFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Chromaticity<isTail> c(p);
        const Floats place = atMost(atLeast(c.y * k(127.998046875), k(0)), k(127));
        const Floats l = lightness<8>(c.y, truncated(place));
        return {l, c.sample((k(13) * l) * (c.u() - k(un))), c.sample((k(13) * l) * (c.v() - k(vn)))};
    }
};

// U has no half added, V has.
template <bool isTail>
struct ToWords {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Chromaticity<isTail> c(p);
        const Floats l = lightness<6>(c.y * k(1.5259021893143654e-05), truncated(atMost(c.y, k(65535))) >> 9);
        return {l * k(655.3499755859375), c.sample((((c.u() - k(un)) * k(13)) * l + k(134)) * k(185.1271209716797)),
                c.sample((((c.v() - k(vn)) * k(13)) * l + k(140)) * k(250.1335906982422) + k(0.5))};
    }
};

// The way back. Quotients of leading columns are products: by the constant nearest to the reciprocal, or by an approximate
// reciprocal, whose last bits depend on the make of the processor. The others are true ones.
template <bool isRefined>
struct ByReciprocals {
    static constexpr bool isTrue = false;
    ZEL_INLINE static Floats scaled(Floats v, double to, double from) { return v * k(to / from); }
    ZEL_INLINE static Floats over(Floats a, Floats b) { return a * (isRefined ? reciprocal(b) : approximateReciprocal(b)); }
};
struct ByDivision {
    static constexpr bool isTrue = true;
    ZEL_INLINE static Floats scaled(Floats v, double to, double from) { return (to == 1 ? v : v * k(to)) / k(from); }
    ZEL_INLINE static Floats over(Floats a, Floats b) { return a / b; }
};

struct Inverse {
    double full, un, vn, limit;
};
constexpr Inverse ofFloats{1, 0.197839, 0.468342, 1.1920929e-07};
constexpr Inverse ofBytes{255, 0.19783941, 0.4683422, 1.1920929e-05}, ofWords{65535, 0.19783941, 0.4683422, 1.1920929e-05};

template <const Inverse& inverse, class Division>
ZEL_INLINE FloatPixel xyzOf(const FloatPixel& luv) {
    const auto [l, u, v] = luv;
    const Floats t = Division::scaled(l + k(16), 1, 116);
    const Floats y = select(l >= k(7.9996247), (t * t) * t, Division::scaled(l, 1, kappa)) * k(inverse.full);
    const Floats up = Division::over(u, k(13) * l) + k(inverse.un), vp = Division::over(v, k(13) * l) + k(inverse.vn);
    const auto isTiny = (Dwords)(atLeast(vp, -vp) < k(inverse.limit));
    const Floats w = Division::over(y, select(isTiny, vp + k(9e-05), vp));
    const Floats x = (up * k(2.25)) * w;
    return {x, y, (w * k(3) - k(5) * y) - Division::scaled(x, 1, 3)};
}

// The approximate reciprocal of 0 is infinite, so black is set at the end.
ZEL_INLINE FloatPixel unlessBlack(Floats l, const FloatPixel& p) {
    const auto visible = ~(Dwords)(l < k(9e-05));
    const auto unless = [&](Floats v) { return (Floats)((Dwords)v & visible); };
    return {unless(p.a), unless(p.b), unless(p.c)};
}

struct FromFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const auto [x, y, z] = xyzOf<ofFloats, ByDivision>(p);
        return unlessBlack(p.a, {limitedTo1((k(3.240479) * x - k(1.53715) * y) - k(0.498535) * z),
                                 limitedTo1((k(1.875991) * y - k(0.969256) * x) + k(0.041556) * z),
                                 limitedTo1((k(0.055648) * x - k(0.204043) * y) + k(1.057311) * z)});
    }
};

// Integers.
template <const Inverse& inverse, class Division>
struct FromSamples {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats l = Division::scaled(p.a, 100, inverse.full);
        const auto [x, y, z] = xyzOf<inverse, Division>(
            {l, Division::scaled(p.b, 354, inverse.full) - k(134), Division::scaled(p.c, 262, inverse.full) - k(140)});
        const Floats blue = k(0.055648) * x - k(0.204043) * y, blueOfZ = k(1.057311) * z;
        return unlessBlack(l, {((k(0.5) - k(1.53715) * y) + k(3.240479) * x) - k(0.498535) * z,
                               ((k(1.875991) * y + k(0.5)) - k(0.969256) * x) + k(0.041556) * z,
                               Division::isTrue ? sumInDoubles(blue, blueOfZ) : (blue + k(0.5)) + blueOfZ});
    }

  private:
    // a + 0.5 + b in double precision, cut off.
    ZEL_INLINE static Floats sumInDoubles(Floats a, Floats b) {
        const auto half = [](Doubles x, Doubles y) { return (x + splatDouble(0.5)) + y; };
        return toFloats(truncated(half(widened<0>(a), widened<0>(b)), half(widened<1>(a), widened<1>(b))));
    }
};

}  // namespace zel::ZEL_LEVEL::luv
