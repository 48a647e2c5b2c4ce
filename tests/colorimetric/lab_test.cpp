// What sets LUV and Lab apart, beyond the examples that their model shares with all conversions.
#include "zelcc/lab.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <vector>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// Black has no chromaticity: in the leading columns of words it is that of gray.
TEST(Luv, OfBlackWordsDiffersByColumn) {
    for (const int width : {1, 4, 7, 64, 67}) {
        const int block = width & ~3;
        std::vector<uint16_t> black(3 * width), luv(3 * width);
        ASSERT_EQ(zeliRGBToLUV_16u_C3R(black.data(), 6 * width, luv.data(), 6 * width, {width, 1}), zelStsNoErr);
        for (int x = 0; x < width; ++x) {
            EXPECT_EQ(luv[3 * x], 0);
            EXPECT_EQ(luv[3 * x + 1], x < block ? 24807 : 0) << "column " << x << " of " << width;
            EXPECT_EQ(luv[3 * x + 2], x < block ? 35019 : 0) << "column " << x << " of " << width;
        }
    }
}

// Every row of the table: luminances over and at its limits, among them those beyond white, and numbers that are none.
TEST(Luv, OfFloatsStaysWithinItsTable) {
    using Limits = std::numeric_limits<float>;
    std::vector<float> gray;
    for (int i = -8; i < 1100; ++i)
        for (const float step : {0.0f, 0.0009f}) gray.insert(gray.end(), 3, float(i) / 512 + step);
    for (const float v : {Limits::max(), Limits::lowest(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(),
                          Limits::denorm_min(), 1e10f, 1e-20f})
        gray.insert(gray.end(), 3, v);
    const int width = static_cast<int>(gray.size()) / 3;
    for (const model::Export& e : model::labExports()) {
        if (e.source.element != model::Element::f32 || e.source.channels[3].stride != 0) continue;
        std::vector<float> result(gray.size()), expected(gray.size());
        model::Call call;
        call.size = {width, 1};
        call.source.planes[0] = reinterpret_cast<uint8_t*>(gray.data());
        call.destination.planes[0] = reinterpret_cast<uint8_t*>(result.data());
        ASSERT_EQ(e.entry.call(call), zelStsNoErr);
        const model::Image source{&e.source, {{{call.source.planes[0]}}}};
        const model::Image destination{&e.destination, {{{reinterpret_cast<uint8_t*>(expected.data())}}}};
        e.model({source, destination, {width, 1}, e.blocks(width), false, {}});
        for (size_t i = 0; i < gray.size(); ++i) {
            if (std::isnan(expected[i]) && std::isnan(result[i])) continue;
            ASSERT_EQ(std::bit_cast<uint32_t>(result[i]), std::bit_cast<uint32_t>(expected[i])) << e.name << " of " << gray[i];
        }
    }
}

// Near black, L is a line up to the limit and not beyond it.
TEST(Lab, OfFloatsKnowsItsLimit) {
    const float limit = 0.008856f;
    for (const float y : {std::nextafter(limit, 0.0f), limit, std::nextafter(limit, 1.0f)}) {
        // Green alone that gives this Y, where there is one.
        float green = y / 0.71516f;
        for (int i = 0; i < 4 && green * 0.71516f != y; ++i) green = std::nextafter(green, green * 0.71516f < y ? 1.0f : 0.0f);
        if (green * 0.71516f != y) continue;
        const float rgb[3] = {0, green, 0};
        float lab[3];
        ASSERT_EQ(zeliRGBToLab_32f_C3R(rgb, 12, lab, 12, {1, 1}), zelStsNoErr);
        const float root = static_cast<float>(std::pow(double{y}, 0.3333333432674408));
        EXPECT_EQ(lab[0], y > limit ? 116 * root - 16 : 903.3f * y) << y;
    }
}

// The rows of words and floats may start at any byte.
TEST(Lab, TakesStepsAsTheyAre) {
    constexpr int width = 37, step = 6 * width + 1;
    std::vector<uint8_t> bgr(2 * 3 * width), lab(2 * step), back(bgr.size());
    Random random(seed());
    random.fill(bgr, Content::uniform);
    std::copy_n(bgr.begin(), 3 * width, bgr.begin() + 3 * width);
    auto* const words = reinterpret_cast<uint16_t*>(lab.data());
    ASSERT_EQ(zeliBGRToLab_8u16u_C3R(bgr.data(), 3 * width, words, step, {width, 2}), zelStsNoErr);
    EXPECT_TRUE(std::equal(lab.begin(), lab.begin() + 6 * width, lab.begin() + step));
    ASSERT_EQ(zeliLabToBGR_16u8u_C3R(words, step, back.data(), 3 * width, {width, 2}), zelStsNoErr);
    EXPECT_TRUE(std::equal(back.begin(), back.begin() + 3 * width, back.begin() + 3 * width));
}

}  // namespace
}  // namespace harness
