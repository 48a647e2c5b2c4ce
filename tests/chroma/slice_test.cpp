// A frame smoothed in slices: the pieces fit together whatever the cuts and their order, and other slices are left alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "harness/conversion_test.h"
#include "model/chroma_resampling.h"
#include "zelcc/chroma.h"

namespace harness {
namespace {

constexpr ZelSize frame{104, 48};

struct Region {
    int firstRow, height;
    int32_t slice;
};

// Ascending rows at which slices begin.
std::vector<Region> cutAt(const std::vector<int>& cuts) {
    std::vector<Region> regions{{0, cuts.front(), model::topSlice}};
    for (size_t i = 0; i < cuts.size(); ++i) {
        const bool isLast = i + 1 == cuts.size();
        regions.push_back(
            {cuts[i], (isLast ? frame.height : cuts[i + 1]) - cuts[i], isLast ? model::bottomSlice : model::middleSlice});
    }
    return regions;
}

class SlicedFrame : public testing::Test {
  protected:
    SlicedFrame() {
        Random random(seed());
        random.fill(luma_, Content::uniform);
        random.fill(chroma_, Content::uniform);
    }

    // Each of the two conversions on a region of the frame, into a frame of the value given. Returns all that was written.
    struct Planes {
        explicit Planes(uint8_t value) : packed(2 * area, value), luma(area, value), cr(area / 4, value), cb(area / 4, value) {}
        bool operator==(const Planes&) const = default;
        std::vector<uint8_t> packed, luma, cr, cb;
    };
    void smooth(const Region& region, Planes& to) const {
        const ZelSize size{frame.width, region.height};
        const int at = region.firstRow * frame.width;
        EXPECT_EQ(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(&luma_[at], frame.width, &chroma_[at / 2], frame.width,
                                                         &to.packed[2 * at], 2 * frame.width, size, region.slice),
                  zelStsNoErr);
        uint8_t* const planes[] = {&to.luma[at], &to.cr[at / 4], &to.cb[at / 4]};
        constexpr int32_t steps[] = {frame.width, frame.width / 2, frame.width / 2};
        EXPECT_EQ(zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R(&luma_[at], frame.width, &chroma_[at / 2], frame.width, planes, steps,
                                                         size, region.slice),
                  zelStsNoErr);
    }
    Planes smooth(const std::vector<Region>& regions, uint8_t value) const {
        Planes to(value);
        for (const Region& region : regions) smooth(region, to);
        return to;
    }

    static constexpr int area = frame.width * frame.height;
    std::vector<uint8_t> luma_ = std::vector<uint8_t>(area), chroma_ = std::vector<uint8_t>(area / 2);
};

TEST_F(SlicedFrame, FitsTogetherWhateverTheCutsAndTheirOrder) {
    const Planes expected = smooth(cutAt({24}), 0);
    for (const std::vector<int>& cuts : {std::vector{24}, {4, 46}, {16, 32}, {8, 10, 12, 30}, {46}}) {
        std::vector<Region> regions = cutAt(cuts);
        EXPECT_EQ(smooth(regions, 0), expected);
        std::ranges::reverse(regions);
        EXPECT_EQ(smooth(regions, 255), expected);  // another value, which nothing is left of
    }
}

// A frame in one piece rounds some samples in other ways, but never by more than 1.
TEST_F(SlicedFrame, IsTheWholeFrameButForRounding) {
    const Planes pieces = smooth(cutAt({16, 32}), 0), whole = smooth({{0, frame.height, model::wholeImage}}, 255);
    for (const auto plane : {&Planes::packed, &Planes::luma, &Planes::cr, &Planes::cb})
        for (size_t i = 0; i < (pieces.*plane).size(); ++i) ASSERT_NEAR((pieces.*plane)[i], (whole.*plane)[i], 1) << i;
}

TEST_F(SlicedFrame, IsLeftAloneByUnknownSlices) {
    for (const int32_t slice : {0, 2, 3, 5, 8, 17, 20, 64, -2}) EXPECT_EQ(smooth({{16, 16, slice}}, 9), Planes(9)) << slice;
}

TEST_F(SlicedFrame, IsWholeWithFurtherBits) {
    const Planes whole = smooth({{0, frame.height, model::wholeImage}}, 0);
    for (const int32_t slice : {23, 31, 21 + 64, -1}) EXPECT_EQ(smooth({{0, frame.height, slice}}, 0), whole) << slice;
}

TEST_F(SlicedFrame, HasItsArgumentsCheckedBeforeTheSliceIsLookedAt) {
    uint8_t bytes[64] = {};
    for (const int32_t slice : {0, 2}) {
        EXPECT_EQ(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(nullptr, 4, bytes, 4, bytes, 8, {4, 4}, slice), zelStsNullPtrErr);
        EXPECT_EQ(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(bytes, 4, bytes, 4, bytes, 8, {4, 1}, slice), zelStsSizeErr);
    }
}

}  // namespace
}  // namespace harness
