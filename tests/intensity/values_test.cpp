// Gray and colour twist: values worked out by hand from the rules, without the model.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "harness/guarded_memory.h"
#include "zelcc/intensity.h"

namespace harness {
namespace {

using Bytes = std::vector<int>;
using Weights = std::array<float, 3>;

// The gray of a row of equal pixels.
template <class T>
std::vector<int> grayRow(ZelStatus (*conversion)(const T*, int32_t, T*, int32_t, ZelSize, const float*), int channels, int width,
                         std::array<int, 3> colour, const float* weights) {
    std::vector<T> pixels, row(width);
    for (int x = 0; x < width; ++x) {
        for (const int sample : colour) pixels.push_back(static_cast<T>(sample));
        if (channels == 4) pixels.push_back(static_cast<T>(77));
    }
    EXPECT_EQ(conversion(pixels.data(), 0, row.data(), 0, {width, 1}, weights), zelStsNoErr);
    return {row.begin(), row.end()};
}

TEST(GrayValues, OfBytesAreThoseOfTheRuleThatOwnsThePixel) {
    const Bytes c3 = grayRow(zeliColorToGray_8u_C3C1R, 3, 15, {142, 174, 43}, nullptr);
    const Bytes c4 = grayRow(zeliColorToGray_8u_AC4C1R, 4, 15, {142, 174, 43}, nullptr);
    for (int x = 0; x < 15; ++x) {
        EXPECT_EQ(c3[x], x < 12 ? 149 : 150) << x;
        EXPECT_EQ(c4[x], x < 8 ? 149 : 150) << x;
    }
}

TEST(GrayValues, OfBytesOverflowInTwoWays) {
    constexpr Weights sum{1, 1, 1}, two{2, 0.5f, 0}, negative{-1, 0, 0}, huge{65536, 0, -1e30f}, unknown{NAN, 0, 1};
    const auto blockAndTail = [](std::array<int, 3> colour, const Weights& w) {
        const Bytes row = grayRow(zeliColorToGray_8u_C3C1R, 3, 5, colour, w.data());
        return std::array{row[3], row[4]};
    };
    EXPECT_EQ(blockAndTail({255, 255, 255}, sum), (std::array{0, 253}));
    EXPECT_EQ(blockAndTail({255, 100, 0}, two), (std::array{50, 50})) << "a weight of 2 has no bits left";
    EXPECT_EQ(blockAndTail({100, 0, 0}, negative), (std::array{100, 100})) << "-1 is 1";
    EXPECT_EQ(blockAndTail({255, 0, 255}, huge), (std::array{0, 0}));
    EXPECT_EQ(blockAndTail({255, 255, 80}, unknown), (std::array{80, 80}));
}

// 70000 is 1 0x1170 in two words: the high one goes to a pixel beside it, the last one's is lost.
TEST(GrayValues, OfWordsSpillIntoTheirNeighbours) {
    constexpr Weights sum{1, 1, 1};
    const auto gray = [&](int bright) {
        std::vector<uint16_t> pixels(15), row(5);
        pixels[3 * bright] = pixels[3 * bright + 2] = 35000;
        EXPECT_EQ(zeliColorToGray_16u_C3C1R(pixels.data(), 30, row.data(), 10, {5, 1}, sum.data()), zelStsNoErr);
        return row;
    };
    EXPECT_EQ(gray(0), (std::vector<uint16_t>{0x1170, 1, 0, 0, 0}));
    EXPECT_EQ(gray(1), (std::vector<uint16_t>{0, 0x1170, 1, 0, 0}));
    EXPECT_EQ(gray(2), (std::vector<uint16_t>{1, 0, 0x1170, 1, 0}));
    EXPECT_EQ(gray(3), (std::vector<uint16_t>{0, 0, 0, 0x1170, 0}));
    EXPECT_EQ(gray(4), (std::vector<uint16_t>{0, 0, 0, 0, 0x1170}));
}

TEST(GrayValues, OfWordsThatNoIntegerHolds) {
    constexpr Weights sum{1, 1, 1}, huge{1e10f, 0, 0};
    EXPECT_EQ(grayRow(zeliColorToGray_16u_AC4C1R, 4, 5, {9, 9, 9}, huge.data()), Bytes({0x8000, 0x8000, 0x8000, 0x8000, 0}));
    EXPECT_EQ(grayRow(zeliColorToGray_16s_C3C1R, 3, 5, {9, 9, 9}, huge.data()), Bytes({32767, 32767, 32767, 32767, -32768}));
    EXPECT_EQ(grayRow(zeliColorToGray_16s_C3C1R, 3, 5, {0, 0, 0}, sum.data()), Bytes({32767, 32767, 32767, 32767, 0}));
}

TEST(GrayValues, WithoutWeightsAreThoseOfTheFixedOnes) {
    std::vector<float> pixels(9), given(3), fixed(3);
    for (int i = 0; i < 9; ++i) pixels[i] = 1.0f / static_cast<float>(i + 3);
    ASSERT_EQ(zeliColorToGray_32f_C3C1R(pixels.data(), 36, given.data(), 12, {3, 1}, nullptr), zelStsNoErr);
    ASSERT_EQ(zeliRGBToGray_32f_C3C1R(pixels.data(), 36, fixed.data(), 12, {3, 1}), zelStsNoErr);
    EXPECT_EQ(given, fixed);
    EXPECT_FLOAT_EQ(fixed[0], 0.299f / 3 + 0.587f / 4 + 0.114f / 5);
}

// Rows are taken from the first to the last, so the last one stays where all are stored in one place.
TEST(GrayValues, OfRowsInOnePlaceAreThoseOfTheLast) {
    const uint16_t pixels[] = {1, 1, 1, 500, 500, 500, 9000, 9000, 9000};
    uint16_t row[1];
    ASSERT_EQ(zeliRGBToGray_16u_C3C1R(pixels, 6, row, 1, {1, 3}), zelStsNoErr);  // a step of 1 is one of 0
    EXPECT_EQ(row[0], 9000);
    const uint8_t grays[] = {3, 4, 5};
    uint8_t colours[4];
    ASSERT_EQ(zeliGrayToRGB_8u_C1C4R(grays, 1, colours, 0, {1, 3}, 0), zelStsNoErr);
    EXPECT_EQ(Bytes(colours, colours + 4), Bytes({5, 5, 5, 0}));
}

// A row of odd width ends with its last luma byte.
TEST(GrayValues, OfPackedPixelsNeedNoChroma) {
    for (const int width : {1, 3, 7, 15, 33, 65, 131}) {
        GuardedMemory memory;
        const auto pages = memory.pages(1);
        uint8_t* const row = pages.data() + pages.size() - (2 * width - 1);
        for (int i = 0; i < 2 * width - 1; ++i) row[i] = static_cast<uint8_t>(i);
        std::vector<uint8_t> luma(width);
        ASSERT_EQ(zeliYCbCr422ToGray_8u_C2C1R(row, 2 * width - 1, luma.data(), width, {width, 1}), zelStsNoErr);
        for (int x = 0; x < width; ++x) ASSERT_EQ(luma[x], static_cast<uint8_t>(2 * x)) << width;
    }
}

constexpr int width = 21;

// What becomes of each channel of one colour, in the first and in the last of some pixels.
template <class T>
std::array<Bytes, 2> twisted(ZelStatus (*conversion)(T*, int32_t, ZelSize, const float*), std::array<int, 3> colour,
                             const std::array<float, 12>& matrix) {
    std::vector<T> pixels;
    for (int x = 0; x < width; ++x)
        for (const int sample : colour) pixels.push_back(static_cast<T>(sample));
    EXPECT_EQ(conversion(pixels.data(), 1000, {width, 1}, matrix.data()), zelStsNoErr);
    return {Bytes(pixels.begin(), pixels.begin() + 3), Bytes(pixels.end() - 3, pixels.end())};
}
std::array<Bytes, 2> everywhere(const Bytes& bytes) { return {bytes, bytes}; }

constexpr std::array<float, 12> byHalf{1, 0, 0, 0.5f, 0, 1, 0, 0.5f, 0, 0, 1, -0.5f};
constexpr std::array<float, 12> beyond{0, 0, 0, 40000, 0, 0, 0, -1000, 0, 0, 0, -3e9f};
constexpr std::array<float, 12> unknown{NAN, 0, 0, 0, 0, INFINITY, 0, -INFINITY, 0, 0, 0, NAN};
// What is left of 1 when numbers of 2^24 that cancel are added to it, in the order of the sums.
constexpr std::array<float, 12> large{16777216, -16777216, 0, 1, 0, 16777216, 1, -16777216, 16777216, 0, 1, -16777216};

TEST(TwistValues, RoundTiesToEven) {
    EXPECT_EQ(twisted(zeliColorTwist32f_8u_C3IR, {0, 1, 3}, byHalf), everywhere({0, 2, 2}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16u_C3IR, {0, 1, 3}, byHalf), everywhere({0, 2, 2}));
    EXPECT_EQ(twisted(zeliColorTwist32f_8s_C3IR, {-2, -3, -4}, byHalf), everywhere({-2, -2, -4}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16s_C3IR, {-2, -3, -4}, byHalf), everywhere({-2, -2, -4}));
}

TEST(TwistValues, AreBoundedToTheirType) {
    EXPECT_EQ(twisted(zeliColorTwist32f_8u_C3IR, {1, 1, 1}, beyond), everywhere({255, 0, 0}));
    EXPECT_EQ(twisted(zeliColorTwist32f_8s_C3IR, {1, 1, 1}, beyond), everywhere({127, -128, -128}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16u_C3IR, {1, 1, 1}, beyond), everywhere({40000, 0, 0}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16s_C3IR, {1, 1, 1}, beyond), everywhere({32767, -1000, -32768}));
}

TEST(TwistValues, AreTheHighestOfWhatIsNoNumber) {
    EXPECT_EQ(twisted(zeliColorTwist32f_8u_C3IR, {1, 1, 1}, unknown), everywhere({255, 255, 255}));
    EXPECT_EQ(twisted(zeliColorTwist32f_8s_C3IR, {1, 1, 1}, unknown), everywhere({127, 127, 127}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16u_C3IR, {1, 1, 1}, unknown), everywhere({65535, 65535, 65535}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16s_C3IR, {1, 1, 1}, unknown), everywhere({32767, 32767, 32767}));
}

TEST(TwistValues, AddTheOffsetFirstButToSignedBytesLast) {
    EXPECT_EQ(twisted(zeliColorTwist32f_8u_C3IR, {1, 1, 1}, large), everywhere({0, 0, 1}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16u_C3IR, {1, 1, 1}, large), everywhere({0, 0, 1}));
    EXPECT_EQ(twisted(zeliColorTwist32f_16s_C3IR, {1, 1, 1}, large), everywhere({0, 0, 1}));
    EXPECT_EQ(twisted(zeliColorTwist32f_8s_C3IR, {1, 1, 1}, large), everywhere({1, 0, 0}));

    std::vector<float> pixels(3 * width, 1);
    ASSERT_EQ(zeliColorTwist_32f_C3IR(pixels.data(), 12 * width, {width, 1}, large.data()), zelStsNoErr);
    for (int x = 0; x < width; ++x) {
        EXPECT_EQ(pixels[3 * x], 0);
        EXPECT_EQ(pixels[3 * x + 1], 0);
        EXPECT_EQ(pixels[3 * x + 2], 1);
    }
}

TEST(TwistValues, TransformAlphaAsAColour) {
    constexpr std::array<float, 16> matrix{0, 0, 0, 1, 16777216, 1, 0, -16777216, 0, 0, 2, 0, 0.5f, 0, 0, 0};
    const std::vector<float> pixels{1, 1, 3, 1, 8, 0, 1, -1};
    std::vector<float> results(8);
    ASSERT_EQ(zeliColorTwist_32f_C4R(pixels.data(), 32, results.data(), 32, {2, 1}, matrix.data()), zelStsNoErr);
    EXPECT_EQ(results, (std::vector<float>{1, 0, 6, 0.5f, -1, 150994944, 2, 4}));
}

// Steps of four bytes a pixel on both sides are taken for those of an image without gaps, and it is read through as such.
TEST(TwistValues, OfFourChannelsMergeRowsByTheirPixels) {
    constexpr std::array<float, 16> swap{0, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 0};
    std::vector<float> pixels(4 * 6), results(4 * 6 + 4, 7), expected = results;
    for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<float>(i);
    const ZelSize size{2, 3};
    ASSERT_EQ(zeliColorTwist_32f_C4R(pixels.data(), 8, results.data(), 8, size, swap.data()), zelStsNoErr);
    for (size_t i = 0; i < pixels.size(); ++i) expected[i] = pixels[i / 4 * 4 + 3 - i % 4];
    EXPECT_EQ(results, expected);

    // With one step of that size alone, the rows of that side overlap.
    std::fill(results.begin(), results.end(), 7.0f);
    ASSERT_EQ(zeliColorTwist_32f_C4R(pixels.data(), 8, results.data(), 32, size, swap.data()), zelStsNoErr);
    for (size_t i = 0; i < pixels.size(); ++i) {
        const size_t pixel = i / 4, start = pixel / 2 * 2 + pixel % 2 * 4;
        EXPECT_EQ(results[i], pixels[start + 3 - i % 4]) << i;
    }
}

}  // namespace
}  // namespace harness
