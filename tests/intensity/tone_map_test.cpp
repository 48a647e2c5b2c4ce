// Tone mapping: the statistics, what becomes of images without light, and how the destination is cleared.
#include <cfloat>
#include <cmath>
#include <string_view>

#include "harness/conversion_test.h"
#include "harness/machine.h"
#include "zelcc/intensity.h"

namespace harness {
namespace {

class ToneMapping : public Conversion {
  protected:
    Pictures layFlat(ZelSize size, const Placements& placements, float value) {
        Random random(seed());
        const Pictures pictures = lay(size, placements, random, Content::uniform);
        const model::Image image = pictures.source.image();
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) image.store(image.layout->channels[0], x, y, value);
        return pictures;
    }
};

constexpr int fillWithoutQuery = 524288;  // bytes

// Only a large image is worth a look at the cache, and its size doesn't show.
TEST_P(ToneMapping, AsksForTheCacheOfLargeBlackImagesAlone) {
    for (const ZelSize size : {ZelSize{1024, 512}, {fillWithoutQuery + 1, 1}, {1024, 513}}) {
        const int bytes = size.width * size.height;
        for (const int cache : {-1, bytes - 1, bytes, bytes + 1}) {
            for (const Placements& placements :
                 {Placements{aligned, aligned}, {dense, dense}, {aligned, {.name = "apart", .stepUnit = 64, .gaps = {16}}}}) {
                const FreshMachine fresh;
                machine.cacheBytes = cache;
                const auto [source, destination] = layFlat(size, placements, -0.0f);
                const auto fault = compareWithModel(tested(), source, destination, size, 0);
                ASSERT_FALSE(fault) << *fault;
                EXPECT_EQ(machine.cacheQueries, bytes > fillWithoutQuery ? 1 : 0);
                EXPECT_EQ(machine.requests, 0);
            }
        }
    }
    const FreshMachine fresh;
    ASSERT_TRUE(matchesModel({1024, 513}, {aligned, aligned}));
    EXPECT_EQ(machine.cacheQueries, 0);
}

TEST_P(ToneMapping, LeavesTheDestinationOfNegativeImages) {
    for (const float value : {-1.0f, -1e-44f, -FLT_MAX}) {
        const auto [source, destination] = layFlat({37, 3}, {dense, dense}, value);
        const Snapshot before(destination);
        EXPECT_EQ(tested().entry.call({.source = source.operand(), .destination = destination.operand(), .size = source.size}),
                  zelStsNoOperationWarn);
        EXPECT_EQ(before.difference(), std::nullopt);
    }
}

// A large sample, a small one and the large one's negative, each 16 behind the one before: single precision loses the small one,
// or rounds it in one way or another, by which of the three it has to add, and in which order.
void fillWithCancelling(const model::Image& image, int y, int width, Random& random) {
    const auto set = [&](int x, float value) { image.store(image.layout->channels[0], x, y, value); };
    for (int x = 0; x < width; ++x) {
        const int third = x / 16 % 3, first = x - 16 * third;
        const float large = std::ldexp(1.0f, 24 + first % 5), small = static_cast<float>(random.next() >> 44) * 0x1p-18f;
        const bool isWhole = first + 32 < width;
        set(x, isWhole && third == 0 ? large : isWhole && third == 2 ? -large : small);
    }
}

TEST_P(ToneMapping, AddsUpInTheStatedOrder) {
    for (const int offset : {0, 1, 2, 4, 8, 12, 15, 20}) {
        const Placement placement{.name = "at some offset", .offsets = allPlanes(offset), .gaps = {offset}};
        for (int width = 1; width <= 200; ++width) {
            const ZelSize size{width, width % 3 + 1};
            Random random(seed() + width);
            const auto [source, destination] = lay(size, {placement, dense}, random, Content::uniform);
            for (int y = 0; y < size.height; ++y) fillWithCancelling(source.image(), y, width, random);
            const auto fault = compareWithModel(tested(), source, destination, size, 0);
            ASSERT_FALSE(fault) << tested().name << ", " << width << " samples at offset " << offset << ": " << *fault;
        }
    }
}

// Bytes take the place of the samples that they come from.
TEST_P(ToneMapping, WorksOverItsSource) {
    for (const int width : {1, 3, 6, 7, 16, 33, 70, 131, 640}) {
        for (const Placement& placement : {aligned, dense}) {
            const ZelSize size{width, 3};
            Random random(seed());
            const auto [source, apart] = lay(size, {placement, aligned}, random, Content::uniform);
            Picture over = source;
            over.layout = &tested().destination;
            const ZelStatus status =
                tested().entry.call({.source = source.operand(), .destination = apart.operand(), .size = size});
            ASSERT_EQ(tested().entry.call({.source = source.operand(), .destination = over.operand(), .size = size}), status);
            for (int y = 0; y < size.height && status == zelStsNoErr; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(over.planes[0].first[y * over.planes[0].step + x],
                              apart.planes[0].first[y * apart.planes[0].step + x])
                        << tested().name << ", width " << width << ", (" << x << ", " << y << ")";
        }
    }
}

bool isToneMapping(const model::Export& e) { return std::string_view(e.name).starts_with("zeliToneMap"); }

INSTANTIATE_TEST_SUITE_P(Intensity, ToneMapping, rows(model::intensityExports(), isToneMapping), nameOf);

using Bytes = std::vector<int>;

Bytes mapped(ZelStatus (*conversion)(const float*, int32_t, uint8_t*, int32_t, ZelSize), std::vector<float> samples) {
    std::vector<uint8_t> bytes(samples.size(), 99);
    const auto width = static_cast<int32_t>(samples.size());
    EXPECT_EQ(conversion(samples.data(), 4 * width, bytes.data(), width, {width, 1}), zelStsNoErr);
    return {bytes.begin(), bytes.end()};
}

TEST(ToneMappingValues, WrapByMaximum) {
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {3}), Bytes({255}));
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {255, 127.9f, 0, -1, -3, -256}), Bytes({255, 127, 0, 255, 253, 0}));
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {255, 1, 2, 3, 4, 5, 6, -1e20f}), Bytes({255, 1, 2, 3, 4, 5, 6, 0}));
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {1e-37f, -1}), Bytes({0, 0})) << "the scale is infinite";
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {FLT_MIN, -1}), Bytes({0, 0})) << "too small to divide by";
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {NAN, 255, 7}), Bytes({0, 255, 7})) << "not a maximum";
    EXPECT_EQ(mapped(zeliToneMapLinear_32f8u_C1R, {41}), Bytes({254})) << "255 / 41 is rounded down";
}

TEST(ToneMappingValues, AreBoundByMean) {
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {3}), Bytes({127}));
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {1020, -510, 0, 0}), Bytes({255, 0, 0, 0}));
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {100, 155}), Bytes({100, 155}));
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {2e-38f, 0}), Bytes({255, 0})) << "the scale is infinite";
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {FLT_MIN, 0}), Bytes({0, 0})) << "too small to divide by";
    EXPECT_EQ(mapped(zeliToneMapMean_32f8u_C1R, {NAN, 255, 7}), Bytes({0, 0, 0})) << "no mean";
}

}  // namespace
}  // namespace harness
