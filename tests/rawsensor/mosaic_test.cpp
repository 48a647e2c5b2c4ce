// Mosaics of every grid beside the model: images from the minimum size on, regions inside, across and outside them, samples of
// several kinds. Images and the caller's buffer end or begin with an inaccessible page, and nothing but the region is written.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "harness/conversion_test.h"
#include "harness/guarded_memory.h"
#include "harness/random.h"
#include "rawsensor/mosaic_comparison.h"

namespace harness {
namespace {

enum class Samples { uniform, extremes, dark, flat, edge };

struct Scene {
    Samples samples;
    int dx = 0, dy = 0;  // across the edge
};

constexpr Scene scenes[] = {{Samples::uniform},     {Samples::extremes},     {Samples::dark},        {Samples::flat},
                            {Samples::edge, 1, 0},  {Samples::edge, 1, 1},   {Samples::edge, 0, 1},  {Samples::edge, -1, 1},
                            {Samples::edge, -1, 0}, {Samples::edge, -1, -1}, {Samples::edge, 0, -1}, {Samples::edge, 1, -1}};

model::Mosaic mosaicOf(ZelSize size, int grid, int highest, const Scene& scene, Random& random) {
    model::Mosaic m{size, grid, highest, {}};
    const int level = static_cast<int>(random.next() >> 40) & highest, noise = scene.dx * scene.dy == 0 ? 1 : 4;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const int any = static_cast<int>(random.next() >> 40);
            const bool isBright = scene.dx * (2 * x - size.width) + scene.dy * (2 * y - size.height) > 0;
            switch (scene.samples) {
                case Samples::uniform:
                    m.samples.push_back(any & highest);
                    break;
                case Samples::extremes:
                    m.samples.push_back(any & 1 ? highest : 0);
                    break;
                case Samples::dark:  // few values, and many ties
                    m.samples.push_back(any & 3);
                    break;
                case Samples::flat:
                    m.samples.push_back(level);
                    break;
                case Samples::edge:
                    m.samples.push_back((isBright ? highest / 4 * 3 : highest / 8) + any % noise);
                    break;
            }
        }
    return m;
}

// How images lie in memory.
struct Lay {
    bool atEnd = true;  // of the pages, otherwise at their start
    bool bottomUp = false;
    int padding = 0;  // of steps
};

MosaicRows lay(GuardedMemory& memory, const MosaicSide& side, const Lay& lay) {
    const size_t distance = side.rowBytes + static_cast<size_t>(lay.padding), bytes = side.bytes(distance);
    const auto pages = memory.pages(bytes + 1);
    return {lay.atEnd ? pages.last(bytes) : pages.first(bytes), side.rows, distance, lay.bottomUp};
}

class Mosaic : public testing::TestWithParam<MosaicExport> {
  protected:
    static constexpr uint8_t untouched = 0xa5;
    const MosaicExport& tested() const { return GetParam(); }

    MosaicRows layMosaic(const model::Mosaic& m, const Lay& placement) {
        const int bytes = tested().elementBytes;
        const MosaicRows rows = lay(sourceMemory_, {static_cast<size_t>(m.size.width * bytes), m.size.height}, placement);
        harness::layMosaic(m, bytes, rows);
        return rows;
    }

    // One region of a mosaic beside the model's pixels of its cut.
    testing::AssertionResult matches(const model::Mosaic& m, const ZelRect& region, const std::vector<model::Pixel>& expected,
                                     const Lay& placement) {
        MosaicExtent extent(tested(), m.size, region);
        extent.buffer.rowBytes += static_cast<size_t>(placement.padding);
        const auto fault = compareMosaic(tested(), m, region, expected, lay(sourceMemory_, extent.source, placement),
                                         lay(destinationMemory_, extent.destination, placement),
                                         lay(bufferMemory_, extent.buffer, {placement.atEnd, placement.bottomUp, 0}));
        return fault ? testing::AssertionFailure() << *fault : testing::AssertionSuccess();
    }

    void expectMatches(const model::Mosaic& m, const std::vector<ZelRect>& regions) {
        std::optional<model::Homogeneity> homogeneity;
        if (tested().isHomogeneous) homogeneity.emplace(m);
        for (const ZelRect& region : regions) {
            const ZelRect inside = MosaicExtent(tested(), m.size, region).inside;
            const uint64_t lay = lays_++;
            const auto result = matches(m, region, modelOf(m, homogeneity, inside),
                                        {lay % 2 == 0, lay / 2 % 2 != 0, static_cast<int>(lay / 4 % 5) * tested().elementBytes});
            ASSERT_TRUE(result) << result.message() << "; image " << m.size.width << " x " << m.size.height << ", grid " << m.grid
                                << ", region " << region.width << " x " << region.height << " at (" << region.x << ", "
                                << region.y << ")";
        }
    }

    Random random_{seed()};
    GuardedMemory sourceMemory_, destinationMemory_, bufferMemory_;
    uint64_t lays_ = 0;
};

// Whole images, and regions of all parities that lie inside them, reach beyond them or begin before them.
std::vector<ZelRect> regionsOf(ZelSize size) {
    const auto [w, h] = size;
    return {{0, 0, w, h},
            {1, 0, w - 2, h},
            {0, 1, w, h - 1},
            {1, 1, w, h},
            {w / 3, h / 3, w / 2, h / 2},
            {w / 3 + 1, h / 2, w / 2, 3},
            {w - 1, h - 1, INT32_MAX, INT32_MAX},
            {w / 2, 0, 1, h},
            {-3, -2, w, h},
            {-2, -1, w + 9, h + 9}};
}

TEST_P(Mosaic, MatchesModelAtEverySizeAndPlacement) {
    // Beyond the vectors of all levels and the rows that they are filled with; the largest ones are of several tiles.
    std::vector<int> widths, heights;
    for (int w = tested().minimum(); w <= 22; ++w) widths.push_back(w);
    for (const int w : {31, 34, 63, 66, 70, 129, 144, 243, 250, 257, 491, 500}) widths.push_back(w);
    for (int h = tested().minimum(); h <= 14; ++h) heights.push_back(h);
    for (const int h : {34, 67}) heights.push_back(h);
    int grid = 0, scene = 0;
    for (const int width : widths) {
        for (const int height : heights) {
            if ((width > 22 || height > 14) && height % 4 != width % 4) continue;
            const ZelSize size{width, height};
            for (int i = 0; i < 4; ++i, ++grid) {
                const Scene& s = scenes[size_t(scene++) % std::size(scenes)];
                ASSERT_NO_FATAL_FAILURE(expectMatches(mosaicOf(size, grid % 4, tested().highest(), s, random_), regionsOf(size)));
            }
        }
    }
}

TEST_P(Mosaic, MatchesModelForEveryGridAndScene) {
    const ZelSize size{83, 29};
    for (int grid = 0; grid < 4; ++grid)
        for (const Scene& scene : scenes) {
            SCOPED_TRACE(&scene - scenes);
            const model::Mosaic m = mosaicOf(size, grid, tested().highest(), scene, random_);
            std::vector<ZelRect> regions = regionsOf(size);
            // The inner part begins at each column and row in turn, and ends there.
            for (int i = 0; i < 9; ++i) {
                regions.push_back({i, 8 - i, size.width - 2 * i, size.height - i});
                regions.push_back({i, 3, 8 + i, 12});
            }
            ASSERT_NO_FATAL_FAILURE(expectMatches(m, regions));
        }
}

TEST_P(Mosaic, KeepsFlatImagesFlat) {
    const ZelSize size{70, 9};
    const model::Mosaic m = mosaicOf(size, zelBayerGRBG, tested().highest(), {Samples::flat}, random_);
    const int level = m.at(0, 0);
    const std::vector<model::Pixel> pixels(static_cast<size_t>(size.width) * size.height, {level, level, level});
    EXPECT_TRUE(matches(m, {0, 0, size.width, size.height}, pixels, {}));
}

// A step of 0 repeats the first row, and one of words has no lowest bit.
TEST_P(Mosaic, TakesAnyStep) {
    const int bytes = tested().elementBytes;
    const ZelSize size{40, 8};
    const Lay lay{true, false, bytes};
    const model::Mosaic m = mosaicOf(size, zelBayerBGGR, tested().highest(), {Samples::uniform}, random_);
    const MosaicRows source = layMosaic(m, lay);
    std::vector<uint8_t> results[2], buffer(static_cast<size_t>(MosaicExport::bufferRows * tested().bufferStep(size.width)));
    const auto convert = [&](std::vector<uint8_t>& result, int32_t sourceStep, int32_t extra) {
        result.assign(static_cast<size_t>(3 * size.width * bytes + 2) * size.height, untouched);
        const MosaicCall call{source.first,
                              {0, 0, size.width, size.height},
                              size,
                              sourceStep,
                              result.data(),
                              3 * size.width * bytes + extra,
                              m.grid,
                              buffer.data(),
                              (size.width + 6) * bytes + extra};
        ASSERT_EQ(tested().call(call), zelStsNoErr);
    };
    convert(results[0], source.step, 0);
    convert(results[1], source.step + bytes - 1, bytes - 1);
    EXPECT_EQ(results[0], results[1]);

    model::Mosaic repeated = m;
    for (int y = 1; y < size.height; ++y) std::copy_n(m.samples.begin(), size.width, repeated.samples.begin() + y * size.width);
    convert(results[0], 0, 0);
    const MosaicRows all = layMosaic(repeated, lay);
    convert(results[1], all.step, 0);
    EXPECT_EQ(results[0], results[1]);
}

// Rows of several tiles, more than the buffer has bytes, beside the same rows in two parts.
TEST_P(Mosaic, ConvertsTallImagesLikeTheirParts) {
    if (!tested().isHomogeneous) GTEST_SKIP() << "takes no buffer";
    const int bytes = tested().elementBytes;
    const ZelSize size{262, 17000};
    Random random(seed());
    std::vector<uint8_t> source(static_cast<size_t>(size.width) * size.height * bytes);
    random.fill({source.data(), source.size()}, Content::uniform);
    for (uint8_t& b : source) b &= 3;  // which makes ties
    const int32_t step = 3 * size.width * bytes, bufferStep = tested().bufferStep(size.width);
    std::vector<uint8_t> whole(static_cast<size_t>(step) * size.height), parts(whole.size()),
        buffer(size_t(MosaicExport::bufferRows * bufferStep));
    const auto convert = [&](std::vector<uint8_t>& result, int y, int height) {
        const MosaicCall call{source.data(),
                              {0, y, size.width, height},
                              size,
                              size.width * bytes,
                              result.data() + static_cast<size_t>(y) * step,
                              step,
                              zelBayerRGGB,
                              buffer.data(),
                              bufferStep};
        ASSERT_EQ(tested().call(call), zelStsNoErr);
    };
    convert(whole, 0, size.height);
    for (int y = 0; y < size.height; y += 3400) convert(parts, y, 3400);
    EXPECT_TRUE(whole == parts);
}

// At any place where a pixel doesn't follow its left neighbour, and otherwise above rows that have red samples.
TEST_P(Mosaic, ComesOutOfRegionsAsOfOneCall) {
    const int bytes = tested().elementBytes, pixelBytes = 3 * bytes;
    const ZelSize size{61, 23};
    const int32_t step = size.width * pixelBytes, bufferStep = tested().bufferStep(size.width);
    std::vector<uint8_t> source(static_cast<size_t>(size.width * size.height * bytes)),
        buffer(size_t(MosaicExport::bufferRows * bufferStep));
    std::vector<uint8_t> whole(static_cast<size_t>(step) * size.height), parts(whole.size());
    random_.fill({source.data(), source.size()}, Content::uniform);
    for (int grid = 0; grid < 4; ++grid) {
        const auto convert = [&](std::vector<uint8_t>& result, const ZelRect& region) {
            const MosaicCall call{
                source.data(), region, size,          size.width * bytes, result.data() + region.y * step + region.x * pixelBytes,
                step,          grid,   buffer.data(), bufferStep};
            ASSERT_EQ(tested().call(call), zelStsNoErr);
        };
        convert(whole, {0, 0, size.width, size.height});
        const bool hasRedInEvenRows = grid == zelBayerRGGB || grid == zelBayerGRBG;
        for (int y = 1; y < size.height; ++y) {
            if (tested().isHomogeneous && y % 2 == hasRedInEvenRows) continue;
            std::ranges::fill(parts, untouched);
            convert(parts, {0, y, size.width, size.height - y});
            convert(parts, {0, 0, size.width, y});
            ASSERT_TRUE(parts == whole) << "cut above row " << y << ", grid " << grid;
        }
        for (int x = 1; x < size.width && !tested().isHomogeneous; ++x) {
            std::ranges::fill(parts, untouched);
            convert(parts, {x, 0, size.width - x, size.height});
            convert(parts, {0, 0, x, size.height});
            ASSERT_TRUE(parts == whole) << "cut at column " << x << ", grid " << grid;
        }
    }
}

TEST_P(Mosaic, ReportsTheFirstErrorAndWritesNothing) {
    const int minimum = tested().minimum();
    std::vector<uint8_t> source(400), destination(1200, untouched), buffer(MosaicExport::bufferRows * 64);
    const MosaicCall valid{source.data(), {0, 0, 6, 6}, {6, 6}, 12, destination.data(), 36, 0, buffer.data(), 24};
    struct Case {
        const char* name;
        ZelStatus status;
        void (*change)(MosaicCall&, int minimum);
    };
    constexpr Case cases[] = {
        {"null source before the size", zelStsNullPtrErr,
         [](MosaicCall& c, int) {
             c.source = nullptr, c.size = {0, 0};
         }},
        {"null destination before the grid", zelStsNullPtrErr, [](MosaicCall& c, int) { c.destination = nullptr, c.grid = 4; }},
        {"width before the grid", zelStsSizeErr, [](MosaicCall& c, int minimum) { c.size.width = minimum - 1, c.grid = 4; }},
        {"height", zelStsSizeErr, [](MosaicCall& c, int minimum) { c.size.height = minimum - 1; }},
        {"negative height", zelStsSizeErr, [](MosaicCall& c, int) { c.size.height = INT32_MIN; }},
        {"grid above", zelStsBadArgErr, [](MosaicCall& c, int) { c.grid = 4; }},
        {"grid below, of an empty region", zelStsBadArgErr, [](MosaicCall& c, int) { c.grid = -1, c.region.width = 0; }},
        {"size without a buffer", zelStsSizeErr, [](MosaicCall& c, int) { c.buffer = nullptr, c.size.width = 1; }},
        {"empty region", zelStsNoErr, [](MosaicCall& c, int) { c.region.width = 0, c.buffer = nullptr; }},
        {"negative side", zelStsNoErr, [](MosaicCall& c, int) { c.region.height = INT32_MIN, c.buffer = nullptr; }},
        {"right of the image", zelStsNoErr, [](MosaicCall& c, int) { c.region.x = 6, c.buffer = nullptr; }},
        {"far below the image", zelStsNoErr, [](MosaicCall& c, int) { c.region.y = INT32_MAX, c.buffer = nullptr; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MosaicCall call = valid;
        c.change(call, minimum);
        EXPECT_EQ(tested().call(call), c.status);
        EXPECT_TRUE(std::ranges::all_of(destination, [](uint8_t b) { return b == untouched; }));
    }
}

TEST_P(Mosaic, IgnoresTheInterpolationArgument) {
    if (tested().isHomogeneous) GTEST_SKIP() << "has none";
    std::vector<uint8_t> source(24 * 24 * 2), results[2];
    random_.fill({source.data(), source.size()}, Content::uniform);
    for (const int interpolation : {0, -77}) {
        std::vector<uint8_t>& result = results[interpolation != 0];
        result.resize(24 * 24 * 6);
        MosaicCall call{source.data(), {0, 0, 24, 24}, {24, 24}, 48, result.data(), 24 * 6, 0};
        call.interpolation = interpolation;
        EXPECT_EQ(tested().call(call), zelStsNoErr);
    }
    EXPECT_EQ(results[0], results[1]);
}

INSTANTIATE_TEST_SUITE_P(RawSensor, Mosaic, testing::ValuesIn(mosaicExports),
                         [](const testing::TestParamInfo<MosaicExport>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace harness
