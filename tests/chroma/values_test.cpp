// Chroma worked out by hand: byte orders, which of two means rounds where, and the weights of the filters.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

#include "harness/guarded_memory.h"
#include "zelcc/chroma.h"

namespace {

using Bytes = std::vector<uint8_t>;

// Three planes without gaps.
struct Planes {
    Planes(int lumaWidth, int lumaHeight, int chromaWidth, int chromaHeight)
        : steps{lumaWidth, chromaWidth, chromaWidth},
          bytes{Bytes(lumaWidth * lumaHeight), Bytes(chromaWidth * chromaHeight), Bytes(chromaWidth * chromaHeight)} {}

    std::array<const uint8_t*, 3> from() const { return {bytes[0].data(), bytes[1].data(), bytes[2].data()}; }
    std::array<uint8_t*, 3> to() { return {bytes[0].data(), bytes[1].data(), bytes[2].data()}; }

    std::array<int32_t, 3> steps;
    std::array<Bytes, 3> bytes;
};

using PlanesToPlanes = ZelStatus (*)(const uint8_t* const[3], const int32_t[3], uint8_t* const[3], const int32_t[3], ZelSize);

// Converts planes whose two chroma planes are alike, and returns one of those it makes, which must be alike too.
Bytes convertChroma(PlanesToPlanes convert, ZelSize size, int sourceWidth, const Bytes& chroma, int width, int height) {
    Planes source(size.width, size.height, sourceWidth, static_cast<int>(chroma.size()) / sourceWidth);
    Planes destination(size.width, size.height, width, height);
    source.bytes[1] = source.bytes[2] = chroma;
    EXPECT_EQ(convert(source.from().data(), source.steps.data(), destination.to().data(), destination.steps.data(), size),
              zelStsNoErr);
    EXPECT_EQ(destination.bytes[1], destination.bytes[2]);
    return destination.bytes[1];
}

TEST(ChromaValues, StandInTheByteOrderOfTheName) {
    const Bytes pair{1, 2, 3, 4};
    Bytes out(4);
    ASSERT_EQ(zeliYCbCr422ToCbYCr422_8u_C2R(pair.data(), 4, out.data(), 4, {2, 1}), zelStsNoErr);
    EXPECT_EQ(out, Bytes({2, 1, 4, 3}));
    ASSERT_EQ(zeliCbYCr422ToYCbCr422_8u_C2R(pair.data(), 4, out.data(), 4, {2, 1}), zelStsNoErr);
    EXPECT_EQ(out, Bytes({2, 1, 4, 3}));
    ASSERT_EQ(zeliYCbCr422ToYCrCb422_8u_C2R(pair.data(), 4, out.data(), 4, {2, 1}), zelStsNoErr);
    EXPECT_EQ(out, Bytes({1, 4, 3, 2}));

    Planes planes(2, 2, 1, 1);
    planes.bytes = {Bytes{1, 2, 3, 4}, {5}, {6}};
    Bytes pairs(8);
    ASSERT_EQ(zeliYCrCb420ToCbYCr422_8u_P3C2R(planes.from().data(), planes.steps.data(), pairs.data(), 4, {2, 2}), zelStsNoErr);
    EXPECT_EQ(pairs, Bytes({6, 1, 5, 2, 6, 3, 5, 4}));
    Bytes luma(4), chroma(2);
    ASSERT_EQ(
        zeliYCrCb420ToYCbCr420_8u_P3P2R(planes.from().data(), planes.steps.data(), luma.data(), 2, chroma.data(), 2, {2, 2}),
        zelStsNoErr);
    EXPECT_EQ(chroma, Bytes({6, 5}));
}

TEST(ChromaValues, OfTwoRowsShareARowInTurns) {
    Planes planes(8, 2, 2, 2);
    planes.bytes[1] = {1, 2, 3, 4};
    planes.bytes[2] = {5, 6, 7, 8};
    Bytes luma(16), pairs(8);
    ASSERT_EQ(zeliYCbCr411ToYCbCr420_8u_P3P2R(planes.from().data(), planes.steps.data(), luma.data(), 8, pairs.data(), 8, {8, 2}),
              zelStsNoErr);
    EXPECT_EQ(pairs, Bytes({1, 5, 3, 7, 2, 6, 4, 8}));
    EXPECT_EQ(convertChroma(zeliYCbCr411ToYCbCr420_8u_P3R, {8, 2}, 2, {1, 2, 3, 4}, 4, 1), Bytes({1, 3, 2, 4}));
}

// The mean of i and i + 1 is i + 1 where it rounds, and i where it is cut off.
TEST(ChromaValues, RoundInBlocksOf16WithASampleBehindThem) {
    const auto meansThatRound = [](int samples) {
        Bytes rows(4 * samples);
        std::iota(rows.begin(), rows.begin() + samples, uint8_t{0});
        const Bytes doubled = convertChroma(zeliYCbCr411To420_8u_P3R, {4 * samples, 4}, samples, rows, 2 * samples, 2);
        int rounded = 0;
        for (int i = 0; i + 1 < samples; ++i) {
            EXPECT_EQ(doubled[2 * i], i);
            rounded += doubled[2 * i + 1] == i + 1;
            EXPECT_EQ(doubled[2 * i + 1] == i + 1, i < rounded) << "after the first that is cut off";
        }
        EXPECT_EQ(doubled[2 * samples - 2], samples - 1);
        EXPECT_EQ(doubled[2 * samples - 1], samples - 1);
        return rounded;
    };
    EXPECT_EQ(meansThatRound(1), 0);
    EXPECT_EQ(meansThatRound(16), 0);
    EXPECT_EQ(meansThatRound(17), 16);
    EXPECT_EQ(meansThatRound(33), 32);
    EXPECT_EQ(meansThatRound(64), 48);
    EXPECT_EQ(meansThatRound(65), 64);
    EXPECT_EQ(meansThatRound(80), 64);
    EXPECT_EQ(meansThatRound(81), 80);
}

TEST(ChromaValues, RoundInBlocksOf32BetweenRows) {
    const auto meansThatRound = [](int samples) {
        Bytes rows(4 * samples);
        std::fill(rows.begin() + 2 * samples, rows.end(), 1);
        const Bytes doubled = convertChroma(zeliYCbCr420To411_8u_P3R, {4 * samples, 4}, 2 * samples, rows, samples, 4);
        EXPECT_TRUE(std::all_of(doubled.begin() + 2 * samples, doubled.end(), [](int v) { return v == 1; }));
        return std::count(doubled.begin() + samples, doubled.begin() + 2 * samples, 1);
    };
    EXPECT_EQ(meansThatRound(31), 0);
    EXPECT_EQ(meansThatRound(32), 32);
    EXPECT_EQ(meansThatRound(63), 32);
}

TEST(ChromaValues, OfAQuarterEachWayAreDoubledByMeans) {
    EXPECT_EQ(convertChroma(zeliYCbCr1620To420_8u_P3R, {4, 4}, 1, {77}, 2, 2), Bytes({77, 77, 77, 77}));
    EXPECT_EQ(convertChroma(zeliYCbCr1620To420_8u_P3R, {8, 8}, 2, {10, 20, 40, 81}, 4, 4), Bytes({10, 15, 20, 20,  //
                                                                                                  25, 32, 50, 50,  //
                                                                                                  40, 60, 81, 81,  //
                                                                                                  40, 60, 81, 81}));
    // Sample 15 is the last of a block: its means round, the inner one with the sample behind the block too.
    Bytes rows(34);
    rows[33] = 1;
    const Bytes doubled = convertChroma(zeliYCbCr1620To420_8u_P3R, {68, 8}, 17, rows, 34, 4);
    EXPECT_EQ(Bytes(doubled.begin() + 34 + 30, doubled.begin() + 68), Bytes({0, 1, 0, 0}));
}

TEST(ChromaValues, OfAFieldAreWeightedByTheirDistance) {
    EXPECT_EQ(convertChroma(zeliYCbCr422To420_Interlace_8u_P3R, {2, 4}, 1, {10, 20, 31, 41}, 1, 2), Bytes({15, 36}));
    EXPECT_EQ(convertChroma(zeliYCbCr420To422_Interlace_8u_P3R, {2, 8}, 1, {0, 100, 8, 200}, 1, 8),
              Bytes({0, 100, 3, 113, 7, 163, 8, 200}));
    EXPECT_EQ(convertChroma(zeliYCbCr420To422_Interlace_8u_P3R, {2, 4}, 1, {3, 5}, 1, 4), Bytes({3, 5, 3, 5}));
}

TEST(ChromaValues, AreInterpolatedBetweenFourRowsAndBounded) {
    EXPECT_EQ(convertChroma(zeliYCbCr420ToYCbCr422_Filter_8u_P3R, {2, 8}, 1, {0, 0, 255, 255}, 1, 8),
              Bytes({0, 0, 0, 128, 255, 255, 255, 255}));
    EXPECT_EQ(convertChroma(zeliYCbCr420ToYCbCr422_Filter_8u_P3R, {2, 8}, 1, {16, 32, 64, 128}, 1, 8),
              Bytes({16, 22, 32, 45, 64, 98, 128, 132}));
}

// A whole image adds a level where it does not take means, short of the largest.
TEST(ChromaValues, GoWithLumaThatGainsALevelInPackedImages) {
    constexpr ZelSize size{34, 8};
    for (const uint8_t value : {100, 255}) {
        const Bytes luma(size.width * size.height, value), chroma(size.width * size.height / 2, 50);
        Bytes packed(2 * luma.size());
        ASSERT_EQ(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(luma.data(), 34, chroma.data(), 34, packed.data(), 68, size, 21),
                  zelStsNoErr);
        for (int y = 0; y < size.height; ++y) {
            for (int x = 0; x < size.width; ++x) {
                const bool takesMeans = y >= 2 && y < size.height - 2 && x < 32;
                EXPECT_EQ(packed[y * 68 + 2 * x], takesMeans ? value : std::min(value + 1, 255)) << x << ", " << y;
                EXPECT_EQ(packed[y * 68 + 2 * x + 1], 50) << x << ", " << y;
            }
        }
    }
    const Bytes luma{10, 10, 20, 20}, chroma{7, 8};
    Bytes packed(8);
    ASSERT_EQ(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(luma.data(), 2, chroma.data(), 2, packed.data(), 4, {2, 2}, 21),
              zelStsNoErr);
    EXPECT_EQ(packed, Bytes({13, 7, 13, 8, 18, 7, 18, 8}));
}

// In three conversions most samples of the last plane's second row go by the step of the plane before it.
TEST(ChromaValues, FollowTheStepOfTheFirstChromaPlane) {
    constexpr ZelSize size{20, 2};
    Planes source(20, 2, 10, 1);
    source.bytes[1] = source.bytes[2] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    for (const auto convert : {zeliYCbCr420ToYCbCr422_8u_P3R, zeliYCrCb420ToYCbCr422_8u_P3R}) {
        Bytes luma(40), first(20), second(40);
        uint8_t* const planes[] = {luma.data(), first.data(), second.data()};
        constexpr int32_t steps[] = {20, 10, 24};
        ASSERT_EQ(convert(source.from().data(), source.steps.data(), planes, steps, size), zelStsNoErr);
        EXPECT_EQ(second, Bytes({1, 2, 3, 4,  5, 6, 7, 8, 9, 10,  //
                                 1, 2, 3, 4,  5, 6, 7, 8, 0, 0,   //
                                 0, 0, 0, 0,  0, 0, 0, 0, 0, 0,   //
                                 0, 0, 9, 10, 0, 0, 0, 0, 0, 0}));
    }
}

// The last chroma row of a 4:1:1 image whose odd rows are dropped needn't exist.
TEST(ChromaValues, OfDroppedRowsAreNotRead) {
    constexpr ZelSize size{80, 4};
    harness::GuardedMemory memory;
    const std::span<uint8_t> rows = memory.pages(60).last(60);
    std::ranges::fill(rows, uint8_t{5});
    Planes luma(80, 4, 0, 0), destination(80, 4, 40, 2);
    const uint8_t* const planes[] = {luma.bytes[0].data(), rows.data(), rows.data()};
    constexpr int32_t steps[] = {80, 20, 20};
    ASSERT_EQ(zeliYCbCr411To420_8u_P3R(planes, steps, destination.to().data(), destination.steps.data(), size), zelStsNoErr);
    EXPECT_EQ(destination.bytes[1], Bytes(80, 5));
}

}  // namespace
