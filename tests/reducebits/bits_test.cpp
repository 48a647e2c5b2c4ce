// Bytes to bits: every offset and width, both methods, beside the model.
#include "model/bits.h"

#include <climits>
#include <vector>

#include "harness/conversion_test.h"
#include "harness/guarded_memory.h"
#include "harness/machine.h"
#include "zelcc/reducebits.h"

namespace harness {
namespace {

using model::BitImage;

ZelStatus convertBits(const BitImage& image, bool isDiffused, const uint8_t* from, uint8_t* to) {
    return zeliReduceBits_8u1u_C1R(from, image.fromStep, to, image.toStep, image.offset, image.size, 12345, -1,
                                   isDiffused ? zelDitherStucki : zelDitherNone, static_cast<uint8_t>(image.threshold));
}

class Bits : public testing::TestWithParam<bool> {
  protected:
    // The last bytes of both images are the last ones before an inaccessible page.
    void compare(BitImage image) {
        const int rowBytes = (image.offset % 8 + image.size.width + 7) / 8, rows = image.size.height;
        const size_t fromBytes = static_cast<size_t>(image.fromStep) * (rows - 1) + image.size.width,
                     toBytes = static_cast<size_t>(image.toStep) * (rows - 1) + rowBytes;
        const std::span<uint8_t> from = source_.pages(fromBytes).last(fromBytes), to = destination_.pages(toBytes).last(toBytes);
        random_.fill(from, Content::uniform);
        random_.fill(to, Content::uniform);
        std::vector<uint8_t> expected(to.begin(), to.end());
        model::reduceToBits(image, GetParam(), from.data(), expected.data());
        ASSERT_EQ(convertBits(image, GetParam(), from.data(), to.data()), zelStsNoErr);
        ASSERT_TRUE(std::equal(to.begin(), to.end(), expected.begin()))
            << image.size.width << " x " << image.size.height << ", bit offset " << image.offset << ", threshold "
            << image.threshold << ", steps " << image.fromStep << ", " << image.toStep;
    }

    Random random_{seed()};
    GuardedMemory source_, destination_;
};

TEST_P(Bits, MatchModelAtEveryOffsetAndWidth) {
    for (int width = 1; width <= 70; ++width)
        for (const int offset : {0, 1, 2, 3, 4, 5, 6, 7, 8, 11, INT_MAX})
            for (const int threshold : {0, 1, 127, 200, 254, 255})
                compare({{width, 3}, offset, threshold, width + offset % 3, (offset % 8 + width + 7) / 8 + width % 3});
    for (const int width : {127, 128, 129, 255, 256, 300, 640, 1021})
        for (const int offset : {0, 3, 7}) compare({{width, 100}, offset, 128, width, width / 8 + 3});
}

// One memory for all rows, and rows that share bytes.
TEST_P(Bits, MatchModelWhereRowsOverlap) {
    for (const int step : {0, 1, 2, 3})
        for (const int offset : {0, 5}) compare({{70, 50}, offset, 127, step == 2 ? 0 : 70, step});
}

INSTANTIATE_TEST_SUITE_P(ReduceBits, Bits, testing::Bool(),
                         [](const auto& info) { return info.param ? "ByDiffusion" : "ByThreshold"; });

TEST(BitValues, StandForThemselves) {
    const std::vector<uint8_t> pixels{0, 255, 255, 0};
    uint8_t byte = 0xff;
    const auto convert = [&](int offset, int width, uint8_t old) {
        byte = old;
        EXPECT_EQ(zeliReduceBits_8u1u_C1R(pixels.data() + 1, 1, &byte, 1, offset, {width, 1}, 0, 0, zelDitherNone, 127),
                  zelStsNoErr);
        return int{byte};
    };
    EXPECT_EQ(convert(7, 1, 0x00), 0x01);
    EXPECT_EQ(convert(7, 1, 0xfe), 0xff);
    EXPECT_EQ(convert(3, 1, 0xff), 0xf0);  // what lies behind is cleared
    EXPECT_EQ(convert(0, 1, 0x2a), 0xaa);  // but not at offset 0
    EXPECT_EQ(convert(0, 3, 0x00), 0xc0);
}

// Parts of whole bytes can be made by several threads at once; others share a byte, and follow each other from the left.
TEST(BitValues, OfAThresholdComeOutOfStripsAsOfOneCall) {
    constexpr int width = 75, rowBytes = (width + 7) / 8;
    std::vector<uint8_t> pixels(3 * width), whole(3 * rowBytes, 0x5a);
    Random random(seed());
    random.fill(pixels, Content::uniform);
    const auto convert = [&](std::vector<uint8_t>& bits, int x, int columns) {
        ASSERT_EQ(zeliReduceBits_8u1u_C1R(pixels.data() + x, width, bits.data() + x / 8, rowBytes, x % 8, {columns, 3}, 0, 0,
                                          zelDitherNone, 127),
                  zelStsNoErr);
    };
    convert(whole, 0, width);
    for (int cut = 1; cut < width; ++cut) {
        std::vector<uint8_t> parts(3 * rowBytes, 0x5a);
        convert(parts, 0, cut);
        convert(parts, cut, width - cut);
        // A part that ends in the byte in which it begins, at an offset, clears what lies behind it.
        const bool clearsTheEnd = cut % 8 != 0 && cut / 8 == rowBytes - 1;
        EXPECT_EQ(parts == whole, !clearsTheEnd) << "cut at column " << cut;
    }
}

TEST(BitErrorsReported, InOrder) {
    const FreshMachine fresh;
    const uint8_t pixels[4]{200, 200, 200, 200};
    uint8_t bits = 0x5a;
    const auto statusOf = [&](const uint8_t* from, uint8_t* to, int offset, ZelSize size, int dither) {
        return zeliReduceBits_8u1u_C1R(from, 4, to, 1, offset, size, 0, 0, static_cast<ZelDitherType>(dither), 127);
    };
    for (const int dither : {1, 2, 4, 5, -1}) {
        EXPECT_EQ(statusOf(nullptr, &bits, -1, {0, 1}, dither), zelStsNullPtrErr);
        EXPECT_EQ(statusOf(pixels, nullptr, -1, {0, 1}, dither), zelStsNullPtrErr);
        EXPECT_EQ(statusOf(pixels, &bits, 0, {0, 1}, dither), zelStsSizeErr);
        EXPECT_EQ(statusOf(pixels, &bits, 0, {1, -1}, dither), zelStsSizeErr);
        EXPECT_EQ(statusOf(pixels, &bits, -1, {4, 1}, dither), zelStsSizeErr);
        EXPECT_EQ(statusOf(pixels, &bits, INT_MIN, {4, 1}, dither), zelStsSizeErr);
        EXPECT_EQ(statusOf(pixels, &bits, 0, {4, 1}, dither), zelStsDitherTypeErr);
    }
    EXPECT_EQ(machine.requests, 0);
    machine.requestsGranted = 0;
    EXPECT_EQ(statusOf(pixels, &bits, 0, {4, 1}, zelDitherStucki), zelStsMemAllocErr);
    EXPECT_EQ(bits, 0x5a);
    EXPECT_EQ(machine.blocksInUse, 0);
    EXPECT_EQ(statusOf(pixels, &bits, 0, {4, 1}, zelDitherNone), zelStsNoErr);
    EXPECT_EQ(bits, 0xfa);
}

}  // namespace
}  // namespace harness
