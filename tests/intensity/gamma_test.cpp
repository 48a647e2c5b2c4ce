// Gamma: every word, the memory of a call, and what is reported first.
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "harness/conversion_test.h"
#include "harness/machine.h"
#include "zelcc/intensity.h"

namespace harness {
namespace {

bool isGamma(const model::Export& e) { return std::string_view(e.name).starts_with("zeliGamma"); }
bool isGammaOfWords(const model::Export& e) { return isGamma(e) && e.source.element == model::Element::u16; }
bool isGammaOfFloats(const model::Export& e) { return isGamma(e) && e.source.element == model::Element::f32; }

constexpr int pixelsWithoutTable = 21845;  // of three samples: 65535, and one pixel more is beyond 65536

class GammaOfWords : public Conversion {
  protected:
    // A row whose colour samples are the words from `first` on.
    Pictures layWords(int pixels, int first) {
        Random random(seed());
        const Pictures pictures = lay({pixels, 1}, {dense, dense}, random, Content::uniform);
        const model::Image image = pictures.source.image();
        for (int x = 0; x < pixels; ++x)
            for (int c = 0; c < 3; ++c) image.store(image.layout->channels[c], x, 0, static_cast<uint16_t>(first + 3 * x + c));
        return pictures;
    }
};

TEST_P(GammaOfWords, MatchesModelOnEveryWord) {
    for (const int pixels : {10923, pixelsWithoutTable + 1}) {
        for (int first = 0; first < 65536; first += 3 * pixels) {
            const auto [source, destination] = layWords(pixels, first);
            const auto fault = compareWithModel(tested(), source, destination, source.size, 0);
            ASSERT_FALSE(fault) << tested().name << ", " << pixels << " pixels: " << *fault;
        }
    }
}

// A table of all words pays from 65537 samples on. Alpha isn't counted.
TEST_P(GammaOfWords, TakesMemoryForLargeImagesAlone) {
    for (const ZelSize size :
         {ZelSize{pixelsWithoutTable, 1}, {1, pixelsWithoutTable}, {pixelsWithoutTable + 1, 1}, {163, 135}}) {
        const FreshMachine fresh;
        ASSERT_TRUE(matchesModel(size, {dense, dense}));
        const bool isLarge = size.width * size.height > pixelsWithoutTable;
        EXPECT_EQ(machine.requests, isLarge ? 1 : 0) << size.width << " x " << size.height;
        EXPECT_EQ(machine.requestedBytes, isLarge ? 131072 : 0);
        EXPECT_EQ(machine.blocksInUse, 0);
    }
}

TEST_P(GammaOfWords, WritesNothingWithoutMemory) {
    const FreshMachine fresh;
    machine.hasMemory = false;
    const auto [source, destination] = layWords(pixelsWithoutTable + 1, 0);
    model::Call call{.source = source.operand(), .destination = destination.operand(), .size = source.size};
    const Snapshot before(destination);
    const auto expect = [&](ZelStatus status, int requests) {
        EXPECT_EQ(tested().entry.call(call), status);
        EXPECT_EQ(machine.requests, requests);
        EXPECT_EQ(before.difference(), std::nullopt);
    };
    expect(zelStsMemAllocErr, 1);
    call.destination.steps[0] = 0;
    expect(zelStsStepErr, 1);
    call.size.height = -1;
    expect(zelStsSizeErr, 1);
    call.nullArgument = 0;
    expect(zelStsNullPtrErr, 1);

    EXPECT_TRUE(matchesModel({pixelsWithoutTable, 1}, {dense, dense}));
    EXPECT_EQ(machine.requests, 1);
}

INSTANTIATE_TEST_SUITE_P(Intensity, GammaOfWords, rows(model::intensityExports(), isGammaOfWords), nameOf);

class GammaOfFloats : public Conversion {};

TEST_P(GammaOfFloats, ReportsItsRangeBeforeAllElse) {
    constexpr float infinity = std::numeric_limits<float>::infinity(), notANumber = std::numeric_limits<float>::quiet_NaN();
    struct Case {
        float minimum, maximum;
        ZelStatus status;
    };
    Random random(seed());
    const auto [source, destination] = lay({5, 3}, {aligned, aligned}, random, Content::uniform);
    const Snapshot before(destination);
    for (const auto& [minimum, maximum, status] : {Case{1, 1, zelStsRangeErr},
                                                   {1, 0, zelStsRangeErr},
                                                   {infinity, 0, zelStsRangeErr},
                                                   {0, -infinity, zelStsRangeErr},
                                                   {1e8f, 1e8f + 1, zelStsRangeErr},
                                                   {notANumber, 1, zelStsNullPtrErr},
                                                   {infinity, infinity, zelStsNullPtrErr},
                                                   {0, 1e-45f, zelStsNullPtrErr}}) {
        model::Call call{.source = source.operand(),
                         .destination = destination.operand(),
                         .size = {0, 3},
                         .parameters = {.numbers = {minimum, maximum}},
                         .nullArgument = 0};
        call.destination.steps[0] = 0;
        EXPECT_EQ(tested().entry.call(call), status) << minimum << " to " << maximum;
        call.nullArgument = -1;
        EXPECT_EQ(tested().entry.call(call), status == zelStsRangeErr ? zelStsRangeErr : zelStsSizeErr);
        call.size = {5, 3};
        EXPECT_EQ(tested().entry.call(call), status == zelStsRangeErr ? zelStsRangeErr : zelStsStepErr);
        EXPECT_EQ(before.difference(), std::nullopt);
    }
}

INSTANTIATE_TEST_SUITE_P(Intensity, GammaOfFloats, rows(model::intensityExports(), isGammaOfFloats), nameOf);

// Results of C3 rows, as numbers.
template <class T>
std::vector<T> convert(ZelStatus (*conversion)(const T*, int32_t, T*, int32_t, ZelSize), std::vector<T> samples) {
    const auto step = static_cast<int32_t>(samples.size() * sizeof(T));
    std::vector<T> results(samples.size());
    EXPECT_EQ(conversion(samples.data(), step, results.data(), step, {static_cast<int32_t>(samples.size() / 3), 1}), zelStsNoErr);
    return results;
}

TEST(GammaValues, OfBytesStandInTheTables) {
    const std::vector<uint8_t> ends{0, 1, 2, 3, 4, 5, 6, 7, 250, 251, 252, 253, 254, 255, 255};
    EXPECT_EQ(convert(zeliGammaFwd_8u_C3R, ends),
              (std::vector<uint8_t>{0, 4, 9, 14, 18, 23, 27, 30, 253, 253, 254, 254, 255, 255, 255}));
    EXPECT_EQ(convert(zeliGammaInv_8u_C3R, ends),
              (std::vector<uint8_t>{0, 0, 0, 1, 1, 1, 1, 2, 245, 247, 249, 251, 253, 255, 255}));
}

// The sum with a half is narrowed before it is cut off, so some words are not the nearest to the exact curve.
TEST(GammaValues, OfWordsAreMostlyTheNearest) {
    const auto countOthers = [](auto conversion, auto curve) {
        std::vector<uint16_t> words(65538);
        for (size_t i = 0; i < words.size(); ++i) words[i] = static_cast<uint16_t>(i);
        const std::vector<uint16_t> results = convert(conversion, words);
        int others = 0;
        for (int x = 0; x < 65536; ++x) {
            const int nearest = static_cast<int>(std::nearbyint(curve(x)));
            others += results[x] != nearest;
            EXPECT_LE(std::abs(results[x] - nearest), 1) << x;
        }
        return others;
    };
    EXPECT_EQ(countOthers(zeliGammaFwd_16u_C3R,
                          [](int x) {
                              const double v = x * 1.5259021896696422e-05;
                              return v < 0.018 ? x * 4.5 : (1.099 * std::pow(v, 0.45) - 0.099) * 65535;
                          }),
              119);
    EXPECT_EQ(countOthers(zeliGammaInv_16u_C3R,
                          [](int x) {
                              const double v = x * 1.5259021896696422e-05;
                              return v < 0.0812 ? x / 4.5 : std::pow((v + 0.099) / 1.099, 1 / 0.45) * 65535;
                          }),
              54);
}

TEST(GammaValues, OfFloatsGoBeyondTheRange) {
    const float samples[] = {-2, 10.01f, 110};  // of a range from 10 to 110: below, 0.0001 of it, its end
    float results[3];
    ASSERT_EQ(zeliGammaFwd_32f_C3R(samples, 12, results, 12, {1, 1}, 10, 110), zelStsNoErr);
    EXPECT_EQ(results[0], -44);
    EXPECT_FLOAT_EQ(results[1], 10.045f);
    EXPECT_EQ(results[2], 110);
    ASSERT_EQ(zeliGammaInv_32f_C3R(samples, 12, results, 12, {1, 1}, 10, 110), zelStsNoErr);
    EXPECT_FLOAT_EQ(results[0], 10 - 12 / 4.5f);
    EXPECT_FLOAT_EQ(results[1], 10.0022222f);
    EXPECT_EQ(results[2], 110);
}

}  // namespace
}  // namespace harness
