// Reduction of bit depth: every number of levels, tall images, the order of rows that share memory, errors, and memory.
#include <algorithm>
#include <cfenv>
#include <climits>
#include <cmath>
#include <string_view>
#include <vector>

#include "harness/conversion_test.h"
#include "harness/machine.h"
#include "zelcc/reducebits.h"

namespace harness {
namespace {

model::Parameters request(int noise, int dither, int levels) {
    return {.integers = {noise, dither, levels}, .hasIntegers = true};
}

bool isDithered(const model::Export& e) { return *e.slice.name; }
bool isDitheredByte(const model::Export& e) {
    return isDithered(e) && std::string_view(e.name).starts_with("zeliReduceBits_8u_");
}

bool isWordToByte(const model::Export& e) {
    const std::string_view name(e.name);
    return isDithered(e) && (name.starts_with("zeliReduceBits_16u8u_") || name.starts_with("zeliReduceBits_16s8u_"));
}

constexpr int dithers[] = {zelDitherFS, zelDitherJJN, zelDitherStucki, zelDitherBayer};
constexpr int noises[] = {0, 1, 50, 100};

class Reduction : public Conversion {
  protected:
    int largestLevels() const { return tested().parameters[1].integers[2] > 256 ? 65536 : 256; }
    testing::AssertionResult matches(const Pictures& pictures, const model::Parameters& parameters) {
        const auto fault = compareWithModel(tested(), pictures.source, pictures.destination, pictures.source.size, 0, parameters);
        if (!fault) return testing::AssertionSuccess();
        const auto& [noise, dither, levels] = parameters.integers;
        return testing::AssertionFailure() << tested().name << ", " << pictures.source.size.width << " x "
                                           << pictures.source.size.height << ", noise " << noise << ", dither " << dither << ", "
                                           << levels << " levels: " << *fault;
    }
};

bool isFloatToByte(const model::Export& e) {
    return isDithered(e) && std::string_view(e.name).starts_with("zeliReduceBits_32f8u_");
}

class ByteReduction : public Reduction {};
class FloatReduction : public Reduction {};
class WordReduction : public Reduction {};

// All bytes in all columns of the matrix, and at all phases of the noise.
TEST_P(ByteReduction, MatchesModelAtEveryNumberOfLevels) {
    Random random(seed());
    const Pictures pictures = lay({260, 5}, {dense, dense}, random, Content::uniform);
    const model::Image image = pictures.source.image();
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 260; ++x)
            for (int c = 0; c < image.layout->planes[0].unitBytes; ++c)
                image.store(image.layout->channels[c], x, y, static_cast<uint8_t>(x + y + c));
    for (int levels = 2; levels <= 256; ++levels) {
        ASSERT_TRUE(matches(pictures, request(0, zelDitherNone, levels)));
        for (const int dither : dithers)
            for (const int noise : noises) ASSERT_TRUE(matches(pictures, request(noise, dither, levels)));
    }
}

// Images that are large enough for tables of all results, and wider than the noise goes without repeating itself.
TEST_P(ByteReduction, MatchesModelOnLargeImages) {
    Random random(seed());
    const Pictures pictures = lay({1030, 34}, {dense, dense}, random, Content::uniform);
    for (int levels = 2; levels <= 256; levels += levels < 20 ? 1 : 59)
        for (const int dither : {int{zelDitherNone}, int{zelDitherBayer}})
            for (const int noise : {0, 50}) ASSERT_TRUE(matches(pictures, request(noise, dither, levels)));
}

// 256 levels have a form in integers: all words in all columns and rows of the matrix.
TEST_P(WordReduction, MatchesModelOnAllColoursAt256Levels) {
    Random random(seed());
    const Pictures pictures = lay({2048, 512}, {dense, dense}, random, Content::uniform);
    const model::Image image = pictures.source.image();
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 2048; ++x)
            for (int c = 0; c < image.layout->planes[0].unitBytes / 2; ++c)
                image.store(image.layout->channels[c], x, y, static_cast<uint16_t>(y / 4 * 512 + x / 4));
    for (const int dither : {int{zelDitherNone}, int{zelDitherBayer}}) ASSERT_TRUE(matches(pictures, request(0, dither, 256)));
}

// At 256 levels floats are counted: around every step, at the ends of what a dword holds and beyond, in all columns and rows of
// the matrix.
TEST_P(FloatReduction, MatchesModelAtEveryStepOf256Levels) {
    std::vector<float> values{0, -0.0f, 0x1p-140f, -0x1p-140f, 1e9f, -1e9f, INFINITY, -INFINITY, NAN, -NAN};
    const auto around = [&](float value) {
        for (int i = 0; i < 5; ++i) value = std::nextafter(value, -INFINITY);
        for (int i = 0; i < 10; ++i) values.push_back(value = std::nextafter(value, INFINITY));
    };
    for (const double end : {32768.0, 65536.0, 0x1p31, -0x1p31}) around(static_cast<float>(end / 255));
    for (int step = -2 * 30; step <= 257 * 30; ++step)
        if (step % 2 == 0 || step % 30 == 15) around(static_cast<float>(step / 30.0 / 255));
    Random random(seed());
    const int width = 2048, height = (static_cast<int>(values.size()) + 511) / 512 * 4;
    const Pictures pictures = lay({width, height}, {dense, dense}, random, Content::uniform);
    const model::Image image = pictures.source.image();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < image.layout->planes[0].unitBytes / 4; ++c)
                image.store(image.layout->channels[c], x, y, values[static_cast<size_t>(y / 4 * 512 + x / 4) % values.size()]);
    for (const int dither : {int{zelDitherNone}, int{zelDitherBayer}}) ASSERT_TRUE(matches(pictures, request(0, dither, 256)));
}

INSTANTIATE_TEST_SUITE_P(ReduceBits, FloatReduction, rows(model::reduceBitsExports(), isFloatToByte), nameOf);
INSTANTIATE_TEST_SUITE_P(ReduceBits, WordReduction, rows(model::reduceBitsExports(), isWordToByte), nameOf);
INSTANTIATE_TEST_SUITE_P(ReduceBits, ByteReduction, rows(model::reduceBitsExports(), isDitheredByte), nameOf);

// More rows than the lanes of all vectors, in which a lane comes to several rows; rows around the distance between the first and
// the last lane.
TEST_P(Reduction, MatchesModelOnTallImages) {
    Random random(seed());
    for (const int width : {1, 2, 3, 5, 15, 31, 40, 63, 64, 79, 110, 111, 112, 113, 114, 142, 143, 144, 145, 146, 147, 300})
        for (const int height : {7, 8, 9, 16, 17, 31, 32, 33, 35, 67, 100}) {
            const Content content = (width + height) % 3 == 0 ? Content::extremes : Content::uniform;
            const Pictures pictures = lay({width, height}, {dense, dense}, random, content);
            const int dither = dithers[random.next() % 4], noise = noises[random.next() % 4];
            const int levels = 2 + static_cast<int>(random.next() % (random.next() % 2 ? 5 : largestLevels() - 1));
            ASSERT_TRUE(matches(pictures, request(noise, dither, levels)));
        }
}

// Rows are written in their order where they lie over each other.
TEST_P(Reduction, MatchesModelWhereRowsOverlap) {
    Random random(seed());
    const int unit = tested().destination.planes[0].unitBytes;
    for (const int distance : {0, 1, -1, 2, 7, 30, -30, 69})
        for (const int dither : dithers) {
            Pictures pictures = lay({70, 40}, {dense, dense}, random, Content::uniform);
            PicturePlane& plane = pictures.destination.planes[0];
            if (distance < 0) plane.first += 39 * -distance * unit;
            plane.step = distance * unit;
            ASSERT_TRUE(matches(pictures, request(20, dither, 5))) << "rows " << distance << " pixels apart";
        }
}

TEST_P(Reduction, ReportsErrorsInOrder) {
    Random random(seed());
    const auto [source, destination] = lay({9, 4}, {aligned, aligned}, random, Content::uniform);
    const Snapshot before(destination);
    const int most = largestLevels();
    struct Case {
        int noise, dither, levels;
        ZelStatus status;
    };
    for (const auto& [noise, dither, levels, status] : {Case{101, 0, 5, zelStsNoiseValErr},
                                                        {-1, 4, 5, zelStsNoiseValErr},
                                                        {INT_MIN, 1, 5, zelStsNoiseValErr},
                                                        {101, 5, 1, zelStsNoiseValErr},
                                                        {100, 0, 1, zelStsDitherLevelsErr},
                                                        {0, 5, most + 1, zelStsDitherLevelsErr},
                                                        {0, 2, -5, zelStsDitherLevelsErr},
                                                        {0, 3, INT_MIN, zelStsDitherLevelsErr},
                                                        {0, 5, most, zelStsNoErr},
                                                        {100, -1, 2, zelStsNoErr},
                                                        {50, INT_MIN, 2, zelStsNoErr}}) {
        model::Call call{.source = source.operand(),
                         .destination = destination.operand(),
                         .size = {9, 4},
                         .parameters = request(noise, dither, levels)};
        EXPECT_EQ(tested().entry.call(call), status) << noise << " " << dither << " " << levels;
        call.size.width = 0;
        EXPECT_EQ(tested().entry.call(call), zelStsSizeErr);
        call.nullArgument = 1;
        EXPECT_EQ(tested().entry.call(call), zelStsNullPtrErr);
        EXPECT_EQ(before.difference(), std::nullopt);
    }
}

TEST_P(Reduction, WritesNothingAndLosesNothingWithoutMemory) {
    Random random(seed());
    const Pictures pictures = lay({37, 5}, {dense, dense}, random, Content::uniform);
    for (const int dither : dithers)
        for (const int noise : noises) {
            const FreshMachine fresh;
            ASSERT_TRUE(matches(pictures, request(noise, dither, 5)));
            const int requests = machine.requests;
            EXPECT_EQ(requests > 0, dither != zelDitherBayer || noise > 0);
            EXPECT_EQ(machine.blocksInUse, 0);
            const Snapshot before(pictures.destination);
            const model::Call call{.source = pictures.source.operand(),
                                   .destination = pictures.destination.operand(),
                                   .size = pictures.source.size,
                                   .parameters = request(noise, dither, 5)};
            for (int failing = 0; failing < requests; ++failing) {
                machine = {.requestsGranted = failing};
                EXPECT_EQ(tested().entry.call(call), zelStsMemAllocErr) << "request " << failing << " of " << requests;
                EXPECT_EQ(machine.blocksInUse, 0);
                EXPECT_EQ(before.difference(), std::nullopt);
            }
        }
}

INSTANTIATE_TEST_SUITE_P(ReduceBits, Reduction, rows(model::reduceBitsExports(), isDithered), nameOf);

// More than memory can be asked for.
TEST(ReductionValues, RefusesRowsThatNoMemoryHolds) {
    uint8_t pixel = 0;
    EXPECT_EQ(zeliReduceBits_8u_C1R(&pixel, 0, &pixel, 0, {INT_MAX, 1}, 0, zelDitherFS, 2), zelStsMemAllocErr);
    EXPECT_EQ(zeliReduceBits_8u_C1R(&pixel, 0, &pixel, 0, {INT_MAX, 1}, 0, zelDitherStucki, 2), zelStsMemAllocErr);
    EXPECT_EQ(zeliReduceBits_8u1u_C1R(&pixel, 0, &pixel, 0, 0, {INT_MAX, 1}, 0, 0, zelDitherStucki, 2), zelStsMemAllocErr);
}

std::vector<uint8_t> reduced(const std::vector<uint8_t>& bytes, int noise, ZelDitherType dither, int levels) {
    std::vector<uint8_t> results(bytes.size());
    const auto width = static_cast<int32_t>(bytes.size());
    EXPECT_EQ(zeliReduceBits_8u_C1R(bytes.data(), width, results.data(), width, {width, 1}, noise, dither, levels), zelStsNoErr);
    return results;
}

// Steps that are rounded down fall short of their levels.
TEST(ReductionValues, GoByTheRoundingMode) {
    const auto levelOf = [](float sample, int mode) {
        uint8_t level = 0;
        const int before = std::fegetround();
        std::fesetround(mode);
        zeliReduceBits_32f8u_C1R(&sample, 4, &level, 1, {1, 1}, 0, zelDitherBayer, 256);
        std::fesetround(before);
        return int{level};
    };
    EXPECT_EQ(levelOf(0.25f, FE_TONEAREST), 64);
    EXPECT_EQ(levelOf(0.25f, FE_UPWARD), 64);
    EXPECT_EQ(levelOf(0.25f, FE_DOWNWARD), 63);
    EXPECT_EQ(levelOf(0.25f, FE_TOWARDZERO), 63);
}

TEST(ReductionValues, StandForThemselves) {
    EXPECT_EQ(reduced({0, 126, 127, 128, 255}, 0, zelDitherNone, 2), (std::vector<uint8_t>{0, 0, 0, 255, 255}));
    EXPECT_EQ(reduced({0, 60, 120, 200, 255}, 0, zelDitherNone, 5), (std::vector<uint8_t>{0, 63, 127, 191, 255}));
    // Half of the pixels of mid-gray are white, by the first row of the matrix: 0 8 2 10 fifteenths.
    EXPECT_EQ(reduced({128, 128, 128, 128, 128}, 0, zelDitherBayer, 2), (std::vector<uint8_t>{255, 0, 255, 0, 255}));
    // 100 leaves 100 to its neighbour, of which 7 / 16 arrive: 143.75 is white and leaves -111.25.
    EXPECT_EQ(reduced({100, 100, 100, 200}, 0, zelDitherFS, 2), (std::vector<uint8_t>{0, 255, 0, 255}));

    std::vector<uint8_t> all(256);
    for (int i = 0; i < 256; ++i) all[i] = static_cast<uint8_t>(i);
    EXPECT_EQ(reduced(all, 100, zelDitherNone, 256), all);
}

// On average a dithered picture is as bright as the original.
TEST(ReductionValues, DithersKeepTheMean) {
    constexpr int width = 256, height = 128;
    std::vector<uint8_t> source(width * height), result(width * height);
    for (int i = 0; i < width * height; ++i) source[i] = static_cast<uint8_t>(40 + i % width * 3 / 4);
    const auto meanOf = [](const std::vector<uint8_t>& pixels) {
        double sum = 0;
        for (const uint8_t p : pixels) sum += p;
        return sum / static_cast<double>(pixels.size());
    };
    for (const ZelDitherType dither : {zelDitherFS, zelDitherJJN, zelDitherStucki, zelDitherBayer})
        for (const int noise : {0, 20}) {
            ASSERT_EQ(zeliReduceBits_8u_C1R(source.data(), width, result.data(), width, {width, height}, noise, dither, 4),
                      zelStsNoErr);
            // Levels are cut off, and ordered thresholds are 1/30 of a step above an even distribution.
            EXPECT_NEAR(meanOf(result), meanOf(source), dither == zelDitherBayer ? 4 : 1.5) << dither << ", noise " << noise;
        }
}

// The numbers of levels whose white is 254 as well as 255 are those that the header names.
TEST(ReductionValues, WhiteIs254AtTheNumbersOfLevelsThatAreTold) {
    constexpr int width = 1024, height = 64;
    std::vector<uint8_t> source(width * height), result(width * height);
    std::vector<uint16_t> words(width * height);
    Random random(seed());
    for (int i = 0; i < width * height; ++i) {
        const auto bright = static_cast<uint16_t>(i % 4 == 0 ? 65535 : 65535 - random.next() % (i % 2 ? 8192 : 65536));
        words[i] = bright;
        source[i] = static_cast<uint8_t>(bright >> 8);
    }
    const auto has254 = [&] { return std::find(result.begin(), result.end(), 254) != result.end(); };
    for (const ZelDitherType dither : {zelDitherNone, zelDitherFS, zelDitherJJN, zelDitherStucki, zelDitherBayer})
        for (int levels = 2; levels <= 41; ++levels) {
            const bool byEach = levels == 8 || levels == 15 || levels == 26 || levels == 32;
            const bool told = dither != zelDitherNone && (byEach || (dither == zelDitherBayer && levels == 29));
            zeliReduceBits_8u_C1R(source.data(), width, result.data(), width, {width, height}, 0, dither, levels);
            EXPECT_EQ(has254(), told) << levels << " levels, dither " << dither;
            zeliReduceBits_16u8u_C1R(words.data(), 2 * width, result.data(), width, {width, height}, 0, dither, levels);
            EXPECT_FALSE(has254()) << levels << " levels from 16 bits, dither " << dither;
        }
}

}  // namespace
}  // namespace harness
