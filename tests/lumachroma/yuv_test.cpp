// What sets the analog YUV conversions apart: exports without steps, grays, alpha.
#include "zelcc/yuv.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "harness/random.h"

namespace {

using Bytes = std::vector<uint8_t>;

// Memory at a multiple of 64, or so many bytes behind one, of random bytes.
class Buffer {
  public:
    explicit Buffer(size_t size, size_t offset = 0) : memory_(size + 128) {
        bytes_ = memory_.data() + (64 - reinterpret_cast<uintptr_t>(memory_.data()) % 64) % 64 + offset;
        harness::Random random(1);
        random.fill({bytes_, size}, harness::Content::uniform);
    }
    uint8_t* data() const { return bytes_; }
    Bytes bytes(size_t size) const { return {bytes_, bytes_ + size}; }

  private:
    Bytes memory_;
    uint8_t* bytes_;
};

// An export without steps beside the one that takes them, each seen as bytes to bytes. Planes lie in one buffer.
struct Pair {
    const char* name;
    bool isEncoder, hasRgbPlanes;
    int chromaHeight;
    ZelStatus (*stepless)(uint8_t* const rgb[3], uint8_t* const yuv[3], ZelSize size);
    ZelStatus (*stepped)(uint8_t* const rgb[3], int32_t rgbStep, uint8_t* const yuv[3], const int32_t steps[3], ZelSize size);
};

constexpr Pair pairs[] = {
    {"zeliRGBToYUV420_8u_C3P3", true, false, 2,
     [](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV420_8u_C3P3(rgb[0], yuv, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliRGBToYUV420_8u_C3P3R(rgb[0], step, yuv, steps, size);
     }},
    {"zeliRGBToYUV420_8u_P3", true, true, 2,
     [](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV420_8u_P3(rgb, yuv, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliRGBToYUV420_8u_P3R(rgb, step, yuv, steps, size);
     }},
    {"zeliRGBToYUV422_8u_C3P3", true, false, 1,
     [](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV422_8u_C3P3(rgb[0], yuv, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliRGBToYUV422_8u_C3P3R(rgb[0], step, yuv, steps, size);
     }},
    {"zeliRGBToYUV422_8u_P3", true, true, 1,
     [](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV422_8u_P3(rgb, yuv, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliRGBToYUV422_8u_P3R(rgb, step, yuv, steps, size);
     }},
    {"zeliYUV420ToRGB_8u_P3", false, true, 2,
     [](auto rgb, auto yuv, ZelSize size) { return zeliYUV420ToRGB_8u_P3(yuv, rgb, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliYUV420ToRGB_8u_P3R(yuv, steps, rgb, step, size);
     }},
    {"zeliYUV420ToRGB_8u_P3C3", false, false, 2,
     [](auto rgb, auto yuv, ZelSize size) { return zeliYUV420ToRGB_8u_P3C3(yuv, rgb[0], size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliYUV420ToRGB_8u_P3C3R(yuv, steps, rgb[0], step, size);
     }},
    {"zeliYUV422ToRGB_8u_P3", false, true, 1,
     [](auto rgb, auto yuv, ZelSize size) { return zeliYUV422ToRGB_8u_P3(yuv, rgb, size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliYUV422ToRGB_8u_P3R(yuv, steps, rgb, step, size);
     }},
    {"zeliYUV422ToRGB_8u_P3C3", false, false, 1,
     [](auto rgb, auto yuv, ZelSize size) { return zeliYUV422ToRGB_8u_P3C3(yuv, rgb[0], size); },
     [](auto rgb, int32_t step, auto yuv, auto steps, ZelSize size) {
         return zeliYUV422ToRGB_8u_P3C3R(yuv, steps, rgb[0], step, size);
     }},
};

struct Results {
    ZelStatus stepless, stepped;
    bool areEqual;
};

// `region` is that of the one with steps: the same, or one row of all pixels.
Results convertBoth(const Pair& pair, ZelSize size, ZelSize region) {
    const auto pixels = static_cast<size_t>(size.width) * size.height;
    const auto run = [&](bool stepless, ZelStatus& status) {
        const Buffer rgbBytes(3 * pixels + 64, 1), yuvBytes(3 * pixels + 64);  // off alignment, whatever the steps
        const size_t planeBytes = pair.hasRgbPlanes ? pixels : 0;
        uint8_t* const rgb[] = {rgbBytes.data(), rgbBytes.data() + planeBytes, rgbBytes.data() + 2 * planeBytes};
        const int chroma = pair.chromaHeight == 2 ? region.width / 2 : (region.width + 1) / 2;
        const size_t luma = (pixels + 15) / 16 * 16;
        uint8_t* const yuv[] = {yuvBytes.data(), yuvBytes.data() + luma, yuvBytes.data() + 2 * luma};
        const int32_t steps[] = {region.width, chroma, chroma};
        status = stepless ? pair.stepless(rgb, yuv, size)
                          : pair.stepped(rgb, pair.hasRgbPlanes ? region.width : 3 * region.width, yuv, steps, region);
        return pair.isEncoder ? yuvBytes.bytes(2 * luma + pixels) : rgbBytes.bytes(3 * pixels);
    };
    Results results{};
    results.areEqual = run(true, results.stepless) == run(false, results.stepped);
    return results;
}

TEST(Stepless, IsTheConversionWithStepsOfItsOwnOrOneLongRow) {
    for (const Pair& pair : pairs) {
        for (const ZelSize size :
             {ZelSize{16, 16}, {18, 15}, {18, 14}, {15, 20}, {17, 1}, {1, 5}, {2, 1}, {255, 3}, {256, 1}, {142, 9}}) {
            SCOPED_TRACE(testing::Message() << pair.name << ", " << size.width << " x " << size.height);
            const int pixels = size.width * size.height;
            const bool isLongRow = pair.chromaHeight == 1 && size.width % 2 == 0 && pixels >= 256;
            const Results rows = convertBoth(pair, size, size);
            EXPECT_EQ(rows.stepless, rows.stepped);
            // Where rows are whole blocks nothing starts anew with them.
            const bool isSame = !isLongRow || size.height == 1 || size.width % 16 == 0;
            EXPECT_EQ(rows.areEqual, isSame);
            if (isLongRow) {
                EXPECT_TRUE(convertBoth(pair, size, {pixels, 1}).areEqual);
            }
        }
    }
}

// A row without a step is aligned if its pointers are.
TEST(Stepless, TakesAlignmentOfOneLongRowFromThePointersAlone) {
    const Bytes gray(3 * 18 * 16, 15);
    const auto lumaOf = [&](ZelSize size, size_t offset) {
        const Buffer source(gray.size(), offset), destination(4 * gray.size());
        std::memcpy(source.data(), gray.data(), gray.size());
        uint8_t* const planes[] = {destination.data(), destination.data() + 320, destination.data() + 640};
        EXPECT_EQ(zeliRGBToYUV422_8u_C3P3(source.data(), planes, size), zelStsNoErr);
        return int{destination.data()[0]};
    };
    EXPECT_EQ(lumaOf({18, 16}, 0), 14);  // no step would be a multiple of 16
    EXPECT_EQ(lumaOf({18, 16}, 1), 15);
    EXPECT_EQ(lumaOf({18, 14}, 0), 15);  // rows, of such steps
    EXPECT_EQ(lumaOf({32, 4}, 0), 14);
}

// Of the 256 grays, those whose luma is not their value and those whose U or V is not 128.
struct Shifted {
    int luma, u, v;
    bool operator==(const Shifted&) const = default;
};

template <class Convert>
Shifted shiftedGrays(Convert convert) {
    constexpr int width = 16, height = 2;
    Shifted shifted{};
    for (int gray = 0; gray < 256; ++gray) {
        const Bytes rgb(width * height * 4, static_cast<uint8_t>(gray));
        const Buffer source(rgb.size()), planes[3] = {Buffer(width * height), Buffer(width * height), Buffer(width * height)};
        std::memcpy(source.data(), rgb.data(), rgb.size());
        uint8_t* const yuv[] = {planes[0].data(), planes[1].data(), planes[2].data()};
        EXPECT_EQ(convert(source.data(), yuv, ZelSize{width, height}), zelStsNoErr);
        shifted.luma += yuv[0][0] != gray;
        shifted.u += yuv[1][0] != 128;
        shifted.v += yuv[2][0] != 128;
    }
    return shifted;
}

TEST(AnalogGrays, KeepTheirValueSaveWhereProductsAreRounded) {
    constexpr int32_t aligned[] = {16, 16, 16}, other[] = {17, 17, 17};
    constexpr Shifted kept{}, some{31, 0, 34};
    EXPECT_EQ(shiftedGrays([&](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV_8u_C3P3R(rgb, 48, yuv, 16, size); }),
              kept);
    EXPECT_EQ(
        shiftedGrays([&](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV422_8u_C3P3R(rgb, 48, yuv, aligned, size); }),
        some);
    EXPECT_EQ(shiftedGrays([&](auto rgb, auto yuv, ZelSize size) {
                  return zeliRGBToYUV422_8u_C3P3R(rgb, 48, yuv, other, {size.width, 1});
              }),
              kept);
    EXPECT_EQ(
        shiftedGrays([&](auto rgb, auto yuv, ZelSize size) { return zeliRGBToYUV420_8u_C3P3R(rgb, 48, yuv, aligned, size); }),
        some);
    EXPECT_EQ(
        shiftedGrays([&](auto rgb, auto yuv, ZelSize size) { return zeliBGRToYUV420_8u_AC4P3R(rgb, 64, yuv, aligned, size); }),
        kept);
}

TEST(AnalogAlpha, GoesToAPlaneThatIsNotChecked) {
    constexpr uint8_t rgba[] = {255, 0, 0, 7, 0, 0, 255, 9};
    uint8_t y[2], u[2], v[2], alpha[2];
    uint8_t* const planes[] = {y, u, v, alpha};
    ASSERT_EQ(zeliRGBToYUV_8u_AC4P4R(rgba, 8, planes, 2, {2, 1}), zelStsNoErr);
    EXPECT_EQ(alpha[0], 7);
    EXPECT_EQ(alpha[1], 9);

    uint8_t* const withoutAlpha[] = {y, u, v, nullptr};
    EXPECT_EQ(zeliRGBToYUV_8u_AC4P4R(rgba, 8, withoutAlpha, 2, {2, 0}), zelStsSizeErr);
    uint8_t* const withoutV[] = {y, u, nullptr, alpha};
    EXPECT_EQ(zeliRGBToYUV_8u_AC4P4R(rgba, 8, withoutV, 2, {2, 1}), zelStsNullPtrErr);
}

// The colours at the ends of V are bounded by either rule, and those of U are not in need of it.
TEST(AnalogChroma, BoundsV) {
    const auto ends = [](int width) {
        Bytes rgb, yuv(3 * width);
        for (int x = 0; x < width; ++x)
            rgb.insert(rgb.end(), {uint8_t(x % 2 ? 0 : 255), uint8_t(x % 2 ? 255 : 0), uint8_t(x % 2 ? 255 : 0)});
        EXPECT_EQ(zeliRGBToYUV_8u_C3R(rgb.data(), 3 * width, yuv.data(), 3 * width, {width, 1}), zelStsNoErr);
        return std::vector<int>{yuv[0], yuv[1], yuv[2], yuv[3], yuv[4], yuv[5]};
    };
    EXPECT_EQ(ends(16), (std::vector<int>{76, 91, 255, 179, 165, 0}));
    EXPECT_EQ(ends(2), (std::vector<int>{76, 90, 255, 178, 165, 0}));
}

}  // namespace
