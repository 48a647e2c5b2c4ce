// Sizes up to the largest of their type: rows in memory that is mapped again and again, and rows that lie over each other.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <list>

#include "harness/endless_memory.h"
#include "video/model.h"

namespace video {
namespace {

constexpr ZelvFormat i420{zelvPlanar, "YUV", zelv420, 8, 0, zelvMatrix709, zelvLimited, 0, 0, 0};
constexpr ZelvFormat nv12{zelvSemiPlanar, "YUV", zelv420, 8, 0, zelvMatrix709, zelvLimited, 0, 0, 0};
constexpr ZelvFormat yuy2{zelvPaired, "YUYV", zelv422, 8, 0, zelvMatrix709, zelvLimited, 0, 0, 0};
constexpr ZelvFormat v210{zelvV210, "YUV", zelv422, 10, 0, zelvMatrix709, zelvLimited, 0, 0, 0};
constexpr ZelvFormat rgb{zelvInterleaved, "RGB", zelv444, 8, 0, zelvMatrixRgb, zelvFull, 0, 0, 0};
constexpr int32_t most = INT32_MAX;

struct SizeCase {
    const char* name;
    ZelvFormat from, to;
    ZelvOptions options;
};
void PrintTo(const SizeCase& c, std::ostream* out) { *out << c.name; }

class VideoSizes : public ::testing::TestWithParam<SizeCase> {
  protected:
    void SetUp() override {
        if (sizeof(void*) < 8) GTEST_SKIP() << "the address space is too small";
        ASSERT_EQ(zelvMakePlan(&plan_, &GetParam().from, &GetParam().to, &GetParam().options), zelStsNoErr);
    }

    // Planes whose samples are all the same.
    struct Planes {
        Planes(const ZelvFormat& f, int width, uint8_t byte) {
            for (int p = 0; p < planeCount(f); ++p) {
                const auto bytes = size_t(rowBytesOf(f, p, width));
                memory.emplace_back(bytes);
                data[p] = memory.back().data();
                std::memset(data[p], byte, std::min(bytes, harness::EndlessMemory::period));
            }
        }
        // Wider than an int counts.
        static int64_t rowBytesOf(const ZelvFormat& f, int plane, int width) {
            const int part = 48;
            return (int64_t{width} + part - 1) / part * rowBytes(f, plane, part);
        }
        std::list<harness::EndlessMemory> memory;
        uint8_t* data[4] = {};
        int32_t steps[4] = {};
    };

    ZelvPlan plan_;
};

TEST_P(VideoSizes, TheWidestRow) {
    const char* const part = std::getenv("ZELCC_TEST_SAMPLE");
    if (part && std::atoi(part) > 1) GTEST_SKIP() << "gigabytes take too long for a sample";
    const ZelvFormat &from = GetParam().from, &to = GetParam().to;
    const Planes source(from, most, 0x80), result(to, most, 0);
    constexpr int few = 960;
    const Planes expected(to, few, 0);
    const auto convert = [&](const Planes& out, int width) {
        return zelvConvert(&plan_, source.data, source.steps, out.data, out.steps, {width, 1});
    };
    ASSERT_EQ(convert(expected, few), zelStsNoErr);
    ASSERT_EQ(convert(result, most), zelStsNoErr);
    for (int p = 0; p < planeCount(to); ++p) {
        const auto bytes = size_t(rowBytes(to, p, few / 2));
        const int64_t last = Planes::rowBytesOf(to, p, most - most % 48) - int64_t(bytes);
        EXPECT_EQ(std::memcmp(result.data[p], expected.data[p], bytes), 0) << "plane " << p;
        EXPECT_EQ(std::memcmp(result.data[p] + last, expected.data[p], bytes), 0) << "the end of plane " << p;
    }
}

TEST_P(VideoSizes, TheLastRowsOfTheHighestImage) {
    const ZelvFormat &from = GetParam().from, &to = GetParam().to;
    constexpr int width = 48;
    const Planes source(from, width, 0x80), result(to, width, 0), expected(to, width, 0);
    ASSERT_EQ(zelvConvert(&plan_, source.data, source.steps, expected.data, expected.steps, {width, 8}), zelStsNoErr);
    ASSERT_EQ(zelvConvertRows(&plan_, source.data, source.steps, result.data, result.steps, {width, most}, most - 7, 7),
              zelStsNoErr);
    for (int p = 0; p < planeCount(to); ++p)
        EXPECT_EQ(std::memcmp(result.data[p], expected.data[p], size_t(rowBytes(to, p, width))), 0) << "plane " << p;
}

INSTANTIATE_TEST_SUITE_P(Video, VideoSizes,
                         ::testing::Values(SizeCase{"fused", i420, rgb, {}},
                                           SizeCase{"filtered", i420, rgb, {zelvLinear, zelvSited, 0}},
                                           SizeCase{"encoded", rgb, i420, {0, zelvSited, 0}}, SizeCase{"moved", nv12, nv12, {}},
                                           SizeCase{"groups", i420, v210, {}}, SizeCase{"ofGroups", v210, yuy2, {}}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace video
