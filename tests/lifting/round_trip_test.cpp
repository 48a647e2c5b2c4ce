// The reversible transforms restore every input, the full range of words and their wraps included.
#include <gtest/gtest.h>

#include <vector>

#include "harness/conversion_test.h"
#include "zelcc/lifting.h"

namespace harness {
namespace {

constexpr ZelSize size{331, 7};
constexpr int samples = size.width * size.height;

template <class Packed, class Plane, class Forward, class Inverse>
void expectRestored(Forward forward, Inverse inverse, Content content) {
    Random random(seed());
    std::vector<Packed> before(3 * samples), after(3 * samples);
    std::vector<Plane> planes(3 * samples);
    random.fill({reinterpret_cast<uint8_t*>(before.data()), before.size() * sizeof(Packed)}, content);
    Plane* const destinations[3] = {&planes[0], &planes[samples], &planes[2 * samples]};
    const Plane* const sources[3] = {destinations[0], destinations[1], destinations[2]};
    constexpr int32_t packedStep = 3 * size.width * sizeof(Packed), planeStep = size.width * sizeof(Plane);
    ASSERT_EQ(forward(before.data(), packedStep, destinations, planeStep, size), zelStsNoErr);
    ASSERT_EQ(inverse(sources, planeStep, after.data(), packedStep, size), zelStsNoErr);
    EXPECT_EQ(before, after);
}

TEST(ReversibleLifting, RestoresEveryInput) {
    for (const Content content : {Content::uniform, Content::extremes}) {
        expectRestored<uint8_t, int16_t>(zeliBGRToYCoCg_Rev_8u16s_C3P3R, zeliYCoCgToBGR_Rev_16s8u_P3C3R, content);
        expectRestored<int16_t, int16_t>(zeliSBGRToYCoCg_Rev_16s_C3P3R, zeliYCoCgToSBGR_Rev_16s_P3C3R, content);
        expectRestored<int16_t, int32_t>(zeliSBGRToYCoCg_Rev_16s32s_C3P3R, zeliYCoCgToSBGR_Rev_32s16s_P3C3R, content);
    }
}

// The two results that fit no word are drawn too rarely from random samples.
TEST(PlainLifting, TreatsDifferencesBeyondWordsByColumn) {
    constexpr int width = 71, block = width & ~3;
    std::vector<int16_t> pixels(3 * width), y(width), co(width), cg(width);
    int16_t* const planes[3] = {y.data(), co.data(), cg.data()};
    const auto convert = [&](int16_t b, int16_t g, int16_t r) {
        for (int x = 0; x < width; ++x) {
            pixels[3 * x] = b;
            pixels[3 * x + 1] = g;
            pixels[3 * x + 2] = r;
        }
        ASSERT_EQ(zeliSBGRToYCoCg_16s_C3P3R(pixels.data(), 6 * width, planes, 2 * width, {width, 1}), zelStsNoErr);
    };
    convert(-32768, 0, 32767);
    for (int x = 0; x < width; ++x) EXPECT_EQ(co[x], x < block ? 32767 : -32768) << "column " << x;
    convert(-32768, 32767, -32768);
    for (int x = 0; x < width; ++x) EXPECT_EQ(cg[x], x < block ? 32767 : -32768) << "column " << x;
}

}  // namespace
}  // namespace harness
