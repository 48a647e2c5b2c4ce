// What makes an exact result of approximations: their bounds, in every rounding mode.
#include <array>
#include <bit>
#include <cmath>
#include <random>
#include <vector>

#include "colorimetric/lab_rules.h"
#include "simd/modes.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr int places = vectorBytes / 4;

TEST(SimdRoots, BoundsHoldThePower) {
    std::mt19937 random(20);
    std::vector<std::array<float, places>> numbers(1 << 14);
    for (auto& vector : numbers)
        for (float& v : vector) v = std::ldexp(1 + float(random() >> 8) / 0x1p24f, int(random() % 68) - 8);
    for (int exponent = -8; exponent < 60; ++exponent) {  // both ends of an octave
        numbers[size_t(exponent + 8)].fill(std::ldexp(1.0f, exponent));
        numbers[size_t(exponent + 108)].fill(std::nextafter(std::ldexp(2.0f, exponent), 0.0f));
    }
    inAllModes([&] {
        int outside = 0;
        for (const auto& vector : numbers) {
            const CubeRootPower power((Floats)loadBytes(vector.data()));
            const int mode = std::fegetround();
            std::fesetround(FE_TONEAREST);
            for (int i = 0; i < places; ++i) {
                const double wanted = std::pow(double{vector[size_t(i)]}, cubeRootExponent), root = power.root[i];
                outside += !(root + double{power.least[i]} <= wanted && wanted <= root + double{power.most[i]});
            }
            std::fesetround(mode);
        }
        EXPECT_EQ(outside, 0);
    });
}

// A product, or two of them, take the place of the quotients by white, which are doubles and narrowed. Whatever the exponent,
// they have to give the same float for each of the 2^23 significands.
TEST(SimdRoots, WhiteDividesLikeAProduct) {
    inAllModes([] {
        for (const lab::White& white : {lab::floatWhiteX, lab::floatWhiteZ}) {
            int wrong = 0;
            for (uint32_t bits = 0x3f800000; bits < 0x40000000; bits += places) {
                std::array<float, places> v;
                for (int i = 0; i < places; ++i) v[size_t(i)] = std::bit_cast<float>(bits + uint32_t(i));
                const Floats parts = lab::partOfWhite((Floats)loadBytes(v.data()), white);
                for (int i = 0; i < places; ++i) wrong += parts[i] != toFloat(v[size_t(i)] / now(white.value));
            }
            EXPECT_EQ(wrong, 0) << white.value;
        }
    });
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
