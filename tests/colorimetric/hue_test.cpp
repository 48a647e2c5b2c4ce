// HLS and HSV: the generic tests, the numbers at which the rules change their branch, and what sets single exports apart.
#include <array>
#include <cmath>
#include <limits>
#include <string_view>
#include <vector>

#include "harness/conversion_test.h"
#include "zelcc/hls.h"

namespace harness {
namespace {

bool convertsAllColours(const model::Export& e) {
    const std::string_view name = e.name;
    return name.ends_with("_8u_C3R") || name.ends_with("_8u_C3P3R");
}

// Every colour that can be made of some samples: equal channels, the ends of the scale and its middle, sixths of the circle and
// their neighbours.
class HueBoundary : public Conversion {
  protected:
    template <class T>
    static std::vector<T> boundarySamples() {
        using Limits = std::numeric_limits<T>;
        if constexpr (Limits::is_integer) {
            std::vector<T> samples{Limits::min(), Limits::min() + 1, Limits::max() - 1, Limits::max()};
            const double full = double(Limits::max()) - Limits::min();
            for (int twelfth = 1; twelfth < 12; ++twelfth)
                for (const int beside : {0, 1}) samples.push_back(static_cast<T>(full * twelfth / 12 + Limits::min() + beside));
            return samples;
        } else {
            const T tiny = 1.1920928955078125e-07f;
            std::vector<T> samples{0,
                                   -T{0},
                                   1,
                                   -1,
                                   2,
                                   tiny,
                                   tiny / 2,
                                   -tiny,
                                   Limits::denorm_min(),
                                   Limits::infinity(),
                                   -Limits::infinity(),
                                   Limits::quiet_NaN(),
                                   Limits::max()};
            for (const float part : {1 / 6.0f, 1 / 3.0f, 0.5f, 2 / 3.0f, 5 / 6.0f})
                for (const float beside : {0.0f, 1.0f, part}) samples.push_back(std::nextafter(part, beside));
            return samples;
        }
    }

    template <class T>
    void tryAllColours() {
        const std::vector<T> samples = boundarySamples<T>();
        const size_t count = samples.size(), colours = count * count * count;
        for (const int width : {331, 64, 3}) {
            const ZelSize size{width, static_cast<int>(colours / width) + 1};
            Random random(seed());
            const auto [source, destination] = lay(size, {dense, dense}, random, Content::uniform);
            const model::Image image = source.image();
            for (int y = 0; y < size.height; ++y)
                for (int x = 0; x < width; ++x) {
                    size_t colour = (size_t(y) * width + x) * 7919 % colours;
                    for (int c = 0; c < 3; ++c, colour /= count)
                        image.store(image.layout->channels[c], x, y, samples[colour % count]);
                }
            const auto fault = compareWithModel(tested(), source, destination, size, 0);
            ASSERT_FALSE(fault) << tested().name << ", width " << width << ": " << *fault;
        }
    }
};

TEST_P(HueBoundary, MatchesModelOnEveryColourOfThem) {
    switch (tested().source.element) {
        case model::Element::u16:
            return tryAllColours<uint16_t>();
        case model::Element::s16:
            return tryAllColours<int16_t>();
        case model::Element::f32:
            return tryAllColours<float>();
        default:
            return tryAllColours<uint8_t>();
    }
}

// The same pixel in every column.
template <class T, class Function>
std::vector<T> convertRow(Function function, std::array<T, 3> pixel, int width) {
    std::vector<T> source, destination(3 * static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) source.insert(source.end(), pixel.begin(), pixel.end());
    const auto step = static_cast<int32_t>(3 * sizeof(T)) * width;
    EXPECT_EQ(function(source.data(), step, destination.data(), step, {width, 1}), zelStsNoErr);
    return destination;
}

template <class T, class Function>
void expectPixels(Function function, std::array<T, 3> pixel, int width, std::array<T, 3> block, std::array<T, 3> tail,
                  int blockWidth) {
    const std::vector<T> row = convertRow<T>(function, pixel, width);
    for (int x = 0; x < width; ++x)
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(row[3 * x + c], (x < width - width % blockWidth ? block : tail)[c]) << "column " << x << ", channel " << c;
}

TEST(Hue, OfGrayIsZero) {
    for (const int width : {7, 75}) {
        expectPixels<uint8_t>(zeliRGBToHLS_8u_C3R, {0, 0, 0}, width, {0, 0, 0}, {0, 0, 0}, 8);
        expectPixels<uint8_t>(zeliRGBToHLS_8u_C3R, {255, 255, 255}, width, {0, 255, 0}, {0, 255, 0}, 8);
        expectPixels<uint8_t>(zeliRGBToHSV_8u_C3R, {77, 77, 77}, width, {0, 0, 77}, {0, 0, 77}, 4);
        expectPixels<int16_t>(zeliRGBToHLS_16s_C3R, {-32768, -32768, -32768}, width, {-32768, -32768, -32768},
                              {-32768, -32768, -32768}, 4);
        expectPixels<float>(zeliRGBToHLS_32f_C3R, {0.5f, 0.50000006f, 0.5f}, width, {0, 0.5f, 0}, {0, 0.5f, 0}, 4);
    }
}

TEST(Hue, HighestOfHsvIsRed) {
    expectPixels<uint8_t>(zeliHSVToRGB_8u_C3R, {255, 255, 200}, 7, {200, 0, 0}, {200, 0, 0}, 4);
    expectPixels<uint16_t>(zeliHSVToRGB_16u_C3R, {65535, 65535, 40000}, 7, {40000, 0, 0}, {40000, 0, 0}, 4);
}

// The formulas of red and of green meet at 42.5.
TEST(Hue, OfYellowGoesByColumn) {
    const std::vector<uint8_t> row = convertRow<uint8_t>(zeliRGBToHSV_8u_C3R, {200, 200, 0}, 71);
    EXPECT_NEAR(row[0], 42.5, 0.5);
    for (int x = 1; x < 68; ++x) EXPECT_EQ(row[3 * x], row[0]) << "column " << x;
    for (int x = 69; x < 71; ++x) EXPECT_EQ(row[3 * x], row[3 * 68]) << "column " << x;
}

TEST(Lightness, OfGrayWordsLosesItsLowBitInLeadingColumns) {
    expectPixels<uint16_t>(zeliHLSToRGB_16u_C3R, {0, 12345, 0}, 4, {12344, 12344, 12344}, {}, 4);
    expectPixels<uint16_t>(zeliHLSToRGB_16u_C3R, {0, 12345, 0}, 3, {}, {12345, 12345, 12345}, 4);
    expectPixels<uint16_t>(zeliHLSToRGB_16u_C3R, {0, 514, 0}, 71, {512, 512, 512}, {514, 514, 514}, 4);
    expectPixels<int16_t>(zeliHLSToRGB_16s_C3R, {5, -12345, -32768}, 71, {-12345, -12345, -12345}, {-12345, -12345, -12345}, 4);
}

TEST(HueSteps, AreTestedBeforeTheSizeOfPlanes) {
    uint8_t plane[3][16] = {};
    uint8_t* const planes[3] = {plane[0], plane[1], plane[2]};
    const uint8_t* const sources[3] = {plane[0], plane[1], plane[2]};
    EXPECT_EQ(zeliBGRToHLS_8u_P3R(sources, 0, planes, 16, {0, 1}), zelStsStepErr);
    EXPECT_EQ(zeliBGRToHLS_8u_AC4R(plane[0], 0, plane[1], 16, {0, 1}), zelStsSizeErr);
    EXPECT_EQ(zeliBGRToHLS_8u_AC4R(plane[0], 0, plane[1], 16, {1, 1}), zelStsStepErr);
}

INSTANTIATE_TEST_SUITE_P(Hue, HueBoundary, rows(model::hueExports()), nameOf);

}  // namespace

INSTANTIATE_TEST_SUITE_P(Hue, ColourConversion, rows(model::hueExports(), convertsAllColours), nameOf);

}  // namespace harness
