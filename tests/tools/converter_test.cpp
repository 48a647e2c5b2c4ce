// Images through the converter: threads, sizes of no whole sites, cuts and alpha.
#include "tools/converter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "tools/steps.h"

namespace tool {
namespace {

constexpr int manyThreads = 4;

std::vector<uint8_t> content(const Format& format, Size size) {
    std::vector<uint8_t> bytes(fileBytes(format, size));
    uint32_t state = 1;
    const auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
    for (uint8_t& b : bytes) b = static_cast<uint8_t>(next());
    const auto fill = [&](auto zero) {
        for (size_t i = 0; i + sizeof zero <= bytes.size(); i += sizeof zero) {
            const auto value = static_cast<decltype(zero)>(next() % 1000 / 1000.0);
            std::memcpy(bytes.data() + i, &value, sizeof value);
        }
    };
    if (format.element == Element::f32) fill(0.0f);
    if (format.element == Element::f64) fill(0.0);
    return bytes;
}

std::vector<uint8_t> run(const Job& job, std::vector<uint8_t> source, int threads) {
    Converter converter(job, threads);
    EXPECT_EQ(source.size(), converter.sourceBytes());
    // What a target holds before is no part of the result.
    std::vector<uint8_t> target(converter.targetBytes(), static_cast<uint8_t>(0xa0 + threads));
    const std::vector<uint8_t> before = source;
    converter.convert(source.data(), target.data());
    EXPECT_EQ(source, before);
    return target;
}

Job jobOf(const Step& step, Size size, const Wishes& wishes) {
    return {step.sourceFormat(), step.targetFormat(), size, {0, 0, size}, {step}, wishes};
}

// Wishes by which the step can be called at all.
Wishes wishesFor(const Step& step, const char* dither) {
    Wishes wishes{.dither = dither, .levels = 5};
    wishes.twist = {0.5, 0.25, 0.25, 1, 0, 1, 0, 2, 0.1, 0.2, 0.7, 3, 0, 0, 1, 0};
    wishes.weights = {0.25, 0.5, 0.25};
    if (step.targetFormat().element == Element::u1) wishes.levels.reset();
    return wishes;
}

TEST(Threads, MakeTheSameOfAllConversions) {
    constexpr Size sizes[] = {{64, 64}, {61, 47}, {20, 133}, {24, 42}};
    int count = 0;
    for (const Step& step : allSteps()) {
        const bool reduces = step.conversion->verb == "reduce";
        for (const char* dither : {"none", "bayer", "stucki"}) {
            const bool isServed = step.targetFormat().element != Element::u1 || std::strcmp(dither, "bayer") != 0;
            if (std::strcmp(dither, "none") != 0 && (!reduces || !isServed)) continue;
            for (const Size size : sizes) {
                const Job job = jobOf(step, size, wishesFor(step, dither));
                const auto source = content(job.from, size);
                EXPECT_TRUE(run(job, source, 1) == run(job, source, manyThreads))
                    << step.function().name << ' ' << dither << ' ' << size.width << 'x' << size.height;
                ++count;
            }
        }
    }
    EXPECT_GT(count, 1500);
}

TEST(Threads, MakeTheSameOfLongWays) {
    for (const auto& [from, to] :
         {std::pair{"rgba", "nv21"}, {"nv12", "rgb444le"}, {"rgb48le", "yuv410p"}, {"yuv410p", "lab24"}}) {
        const Size size{333, 251};
        const Format &source = formatNamed(from), &target = formatNamed(to);
        const Job job{source, target, size, {0, 0, size}, wayOrRefusal(source, target, {}), {}};
        ASSERT_GT(job.way.size(), 1u);
        EXPECT_TRUE(run(job, content(source, size), 1) == run(job, content(source, size), manyThreads)) << from << " to " << to;
    }
}

// What the function itself makes of images of whole sites.
TEST(Converter, CallsTheFunction) {
    const Size size{64, 32};
    const Format &from = formatNamed("yuv420p"), &to = formatNamed("rgb24");
    auto source = content(from, size);
    std::vector<uint8_t> expected(fileBytes(to, size));
    const uint8_t* const planes[] = {source.data(), source.data() + 64 * 32, source.data() + 64 * 32 + 32 * 16};
    const int32_t steps[] = {64, 32, 32};
    ASSERT_EQ(zeliYCbCr420ToRGB_8u_P3C3R(planes, steps, expected.data(), 3 * 64, {64, 32}), zelStsNoErr);
    EXPECT_EQ(run({from, to, size, {0, 0, size}, wayOrRefusal(from, to, {}), {}}, source, 1), expected);
}

struct Sites {
    const char *from, *to;
};
class Odd : public testing::TestWithParam<Sites> {};

// An image of any size becomes what an image with its last pixels repeated becomes, cut to the size.
TEST_P(Odd, SizesAreFilledUpByTheEdge) {
    const Format &from = formatNamed(GetParam().from), &to = formatNamed(GetParam().to);
    const Way way = wayOrRefusal(from, to, {});
    for (int width = 9; width <= 16; ++width) {
        for (int height = 5; height <= 8; ++height) {
            const Size size{width, height}, whole{roundUp(width, 4), roundUp(height, 4)};
            const auto small = content(from, size);
            // By samples of the plane: where the row or column is beyond, the last one.
            std::vector<uint8_t> large;
            size_t at = 0;
            for (const catalog::Plane& p : from.usedPlanes()) {
                const auto row = static_cast<size_t>(p.rowBytes(width)), rows = static_cast<size_t>(p.rows(height));
                const auto unit = static_cast<size_t>(p.bytes);
                for (size_t y = 0; y < static_cast<size_t>(p.rows(whole.height)); ++y)
                    for (size_t x = 0; x < static_cast<size_t>(p.rowBytes(whole.width)); ++x) {
                        size_t inUnit = x % unit, column = std::min(x / unit, row / unit - 1);
                        const bool isSecondLuma = from.name == "uyvy422" && inUnit == 3 && width % 2 && column == row / unit - 1;
                        if (isSecondLuma) inUnit = 1;
                        large.push_back(small[at + std::min(y, rows - 1) * row + column * unit + inUnit]);
                    }
                at += row * rows;
            }
            const auto expected = run({from, to, whole, {0, 0, whole}, way, {}}, large, 1);
            const auto result = run({from, to, size, {0, 0, size}, way, {}}, small, 1);
            size_t inWhole = 0, inResult = 0;
            for (const catalog::Plane& p : to.usedPlanes()) {
                for (int64_t y = 0; y < p.rows(height); ++y)
                    ASSERT_EQ(std::memcmp(&result[inResult + static_cast<size_t>(y * p.rowBytes(width))],
                                          &expected[inWhole + static_cast<size_t>(y * p.rowBytes(whole.width))],
                                          static_cast<size_t>(p.rowBytes(width))),
                              0)
                        << width << 'x' << height << " row " << y;
                inWhole += static_cast<size_t>(p.rowBytes(whole.width) * p.rows(whole.height));
                inResult += static_cast<size_t>(p.rowBytes(width) * p.rows(height));
            }
        }
    }
}

// Ways whose sites are those of the image above; in between no columns follow another rule than in the whole image.
INSTANTIATE_TEST_SUITE_P(Formats, Odd,
                         testing::Values(Sites{"yuv410p", "yuv420p"}, Sites{"yuv411p", "yuv420p"}, Sites{"uyvy422", "yuv420p"}),
                         [](const auto& i) { return std::string(i.param.from); });

TEST(Crop, IsThePartAlone) {
    const Size size{40, 24};
    const Rect part{8, 4, {12, 10}};
    const Format& format = formatNamed("yuv420p");
    const auto source = content(format, size);
    const auto result = run({format, format, size, part, {}, {}}, source, 2);
    for (int y = 0; y < 10; ++y)
        EXPECT_EQ(std::memcmp(&result[static_cast<size_t>(12 * y)], &source[static_cast<size_t>(40 * (y + 4) + 8)], 12), 0);
    EXPECT_EQ(result[12 * 10], source[40 * 24 + 20 * 2 + 4]);  // the first Cb
}

TEST(Planes, ChangePlaces) {
    const Size size{4, 2};
    const auto result =
        run({formatNamed("yv12"), formatNamed("yuv420p"), size, {0, 0, size}, {}, {}}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 1);
    EXPECT_EQ(result, (std::vector<uint8_t>{0, 1, 2, 3, 4, 5, 6, 7, 10, 11, 8, 9}));
}

struct AlphaCase {
    const char *from, *to;
    bool isKept;
};

// Alpha is the source's where it has one of the same kind, and opaque otherwise, whatever the function does with it.
TEST(Alpha, IsKeptOrOpaque) {
    const Size size{24, 6};
    for (const AlphaCase& c : {AlphaCase{"rgba", "bgra", true},
                               {"rgba", "hsva32", true},
                               {"yuv420p", "rgba", false},
                               {"gray", "rgba", false},
                               {"ycocgp16s", "bgra", false}}) {
        const Format &from = formatNamed(c.from), &to = formatNamed(c.to);
        const auto source = content(from, size);
        for (const char* matrix : {"601", "yuv"}) {
            const Wishes wishes{.colours = {{.matrix = matrix}, {.matrix = matrix}}};
            const auto result = run({from, to, size, {0, 0, size}, wayOrRefusal(from, to, wishes), wishes}, source, 2);
            for (size_t i = 3; i < result.size(); i += 4) ASSERT_EQ(result[i], c.isKept ? source[i] : 255) << c.from << c.to << i;
        }
    }
}

}  // namespace
}  // namespace tool
