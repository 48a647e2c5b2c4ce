// Words of floats and doubles, in the caller's rounding modes.
#include "simd/floats.h"

#include <cmath>

#include "model/reciprocal.h"
#include "simd/check.h"
#include "simd/expectations.h"
#include "simd/modes.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {
namespace {

int32_t roundedToDword(double x) { return dwordOf(std::nearbyint(now(x))); }
int32_t truncatedToDword(double x) { return dwordOf(std::trunc(x)); }

// With 0 for numbers that no dword can hold.
Floats ofDwords(Floats v) { return Floats(Dwords(v) & ((Dwords(v) & 0x7fffffff) < 0x4f000000)); }
float ofDwords(float x) { return std::fabs(x) < 0x1p31f ? x : 0; }

TEST(SimdFloats, Splats) {
    for (float x : edges<float>())
        for (int i = 0; i < elements<Floats>; ++i) EXPECT_TRUE(isSame(splatFloat(x)[i], x)) << x;
    for (double x : edges<double>())
        for (int i = 0; i < elements<Doubles>; ++i) EXPECT_TRUE(isSame(splatDouble(x)[i], x)) << x;
}

TEST(SimdFloats, ElementByElement) {
    // What is no number becomes the limit, and of two zeros it is the limit's.
    each<Floats>(WORD(atMost), [](float v, float limit) { return v < limit ? v : limit; });
    each<Floats>(WORD(atLeast), [](float v, float limit) { return v > limit ? v : limit; });
    each<Floats>(WORD(byMode), [](float v) { return v; });
    compare<Floats, 2>(bitsApart(WORD(differing)), [](int i, const auto& x) {
        const int n = elements<Floats>;
        return i < n && std::memcmp(&x[i], &x[n + i], sizeof x[i]) != 0;
    });
    inAllModes([] {
        each<Dwords>(WORD(toFloats), [](int32_t x) { return toFloat(x); });
        each<Floats>(WORD(rounded), roundedToDword);
        each<Floats>(WORD(truncated), truncatedToDword);
        // What becomes 0 may have any sign.
        const auto withoutSign = [](Floats v) { return Floats(Dwords(v) & Dwords(v != 0.0f)); };
        each<Floats>(Word{"wholePart", [=](Floats v) { return withoutSign(wholePart(ofDwords(v))); }}, [](float x) {
            const float whole = std::trunc(ofDwords(x));
            return whole == 0 ? 0 : whole;
        });
        each<Floats>(WORD(nearMulAdd), [](float a, float b, float c) {
            return traits.fuses ? std::fma(a, b, c) : toFloat(toFloat(double{a} * b) + double{c});
        });
    });
}

TEST(SimdFloats, Doubles) {
    const int n = elements<Doubles>;
    compare<Floats, 1>(WORD(widened<0>), [](int i, const auto& x) { return x[i]; });
    compare<Floats, 1>(WORD(widened<1>), [](int i, const auto& x) { return x[n + i]; });
    compare<Dwords, 1>(WORD(widened<0>), [](int i, const auto& x) { return x[i]; });
    compare<Dwords, 1>(WORD(widened<1>), [](int i, const auto& x) { return x[n + i]; });
    inAllModes([] {
        compare<Doubles, 2>(WORD(narrowed), [](int i, const auto& x) { return toFloat(x[i]); });
        compare<Doubles, 2>(WORD(truncated), [](int i, const auto& x) { return truncatedToDword(x[i]); });
    });
    for (const auto& [x] : inputs<double, 1>()) ASSERT_EQ(truncated(x), truncatedToDword(x)) << x;
}

TEST(SimdFloats, ApproximateReciprocal) {
    inAllModes([] { each<Floats>(WORD(approximateReciprocal), model::approximateReciprocal); });
    for (const auto& [x] : inputs<float, 1>()) {
        if (!(std::fabs(x) > 0x1p-125f && std::fabs(x) < 0x1p125f)) continue;
        ASSERT_NEAR(double{approximateReciprocal(splatFloat(x))[0]} * x, 1, 0x1.8p-12) << x;
    }
}

// Ties, by which all modes are known.
[[gnu::noinline]] std::array<int32_t, 4> roundedTies() {
    const float ties[] = {0.5f, 1.5f, -0.5f, -1.5f};
    std::array<int32_t, 4> results;
    for (int i = 0; i < 4; ++i) {
        volatile float tie = ties[i];
        results[i] = rounded(splatFloat(tie))[0];
    }
    return results;
}

TEST(SimdFloats, RoundingState) {
    auto* volatile ties = roundedTies;  // nothing of it is computed elsewhere
    const auto toNearest = ties();
    EXPECT_EQ(toNearest, (std::array{0, 2, 0, -2}));
    inAllModes([&] {
        const auto before = ties();
        EXPECT_EQ(roundsToNearest(), before == toNearest);
        const auto old = setRoundNearestState();
        const auto meanwhile = ties();
        restoreRoundState(old);
        const auto after = ties();
        EXPECT_EQ(meanwhile, toNearest);
        EXPECT_EQ(after, before);
    });
}

// Samples of a depth become floats by parts, and a part of floats becomes samples.
template <class Depth, int part>
void convertsPart() {
    using V = typename Depth::Vector;
    using Sample = typename Depth::Element;
    constexpr int parts = Depth::parts, perLane = 4 * parts;
    const auto asSample = [](auto x) { return Sample(x); };
    compare<V, 1>(Word{"toFloats", [](V v) { return Depth::template toFloats<part>(v); }},
                  [&](int i, const auto& x) { return asSample(x[i / 4 * perLane + part * 4 + i % 4]); });

    const auto limits = [&](const char* name, auto word, auto bounded) {
        const auto ofPart = [&](Floats v) {
            Floats x[parts];
            for (int k = 0; k < parts; ++k) x[k] = k == part ? v : splatFloat(float(k) + 1);
            return word(x);
        };
        compare<Floats, 1>(Word{name, ofPart}, [&](int i, const auto& x) {
            const int own = i % perLane / 4;
            return own == part ? asSample(bounded(x[i / perLane * 4 + i % 4])) : asSample(own + 1);
        });
    };
    // What is no number becomes the highest sample.
    const auto bounded = [](float x) {
        const double highest = Depth::highest, lowest = Depth::lowest, v = std::nearbyint(now(x));
        return int32_t(!(v < highest) ? highest : v < lowest ? lowest : v);
    };
    limits(
        "limited", [](const Floats(&x)[parts]) { return Depth::template limited<Reach::any>(x); }, bounded);
    limits(
        "limited of dwords",
        [](Floats(&x)[parts]) {
            for (Floats& v : x) v = ofDwords(v);
            return Depth::template limited<Reach::dword>(x);
        },
        [&](float x) { return bounded(ofDwords(x)); });
}
template <class Depth>
void converts() {
    unrolled<Depth::parts>([](auto part) { convertsPart<Depth, part>(); });
}

TEST(SimdFloats, Depths) {
    inAllModes([] {
        converts<Depth8u>();
        converts<Depth8s>();
        converts<Depth16<uint16_t>>();
        converts<Depth16<int16_t>>();
    });
    const auto same = [](float x) { return x; };
    each<Floats>(Word{"toFloats", [](Floats v) { return Depth32f::toFloats<0>(v); }}, same);
    each<Floats>(Word{"limited", [](Floats v) { return Depth32f::limited<Reach::any>({v}); }}, same);
}

template <class Depth>
void convertsByTurns() {
    const auto sample = [](int16_t x) { return typename Depth::Element(x); };
    compare<Words, 1>(WORD(Depth::evens), [=](int i, const auto& x) { return sample(x[2 * i]); });
    compare<Words, 1>(WORD(Depth::odds), [=](int i, const auto& x) { return sample(x[2 * i + 1]); });
    compare<Dwords, 2>(WORD(Depth::joined), [](int i, const auto& x) { return x[i % 2 * elements<Dwords> + i / 2]; });
}

TEST(SimdFloats, DepthsByTurns) {
    convertsByTurns<Depth16<uint16_t>>();
    convertsByTurns<Depth16<int16_t>>();
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
