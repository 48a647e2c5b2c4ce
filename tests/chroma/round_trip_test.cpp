// Conversions that lose nothing, each beside the one that takes its result back.
#include <algorithm>
#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

struct Trip {
    const char *there, *back;
};

constexpr Trip trips[] = {
    // Another storage or order of the same chroma.
    {"zeliCbYCr422ToYCbCr422_8u_C2R", "zeliYCbCr422ToCbYCr422_8u_C2R"},
    {"zeliYCbCr422ToCbYCr422_8u_C2R", "zeliCbYCr422ToYCbCr422_8u_C2R"},
    {"zeliCbYCr422ToYCbCr422_8u_C2P3R", "zeliYCbCr422ToCbYCr422_8u_P3C2R"},
    {"zeliYCrCb422ToYCbCr422_8u_C2P3R", "zeliYCbCr422ToYCrCb422_8u_P3C2R"},
    {"zeliYCbCr422_8u_C2P3R", "zeliYCbCr422_8u_P3C2R"},
    {"zeliYCbCr422ToYCrCb422_8u_C2R", "zeliYCbCr422ToYCrCb422_8u_C2R"},  // an exchange is its own inverse
    {"zeliYCbCr411_8u_P2P3R", "zeliYCbCr411_8u_P3P2R"},
    {"zeliYCbCr420_8u_P2P3R", "zeliYCbCr420_8u_P3P2R"},
    {"zeliYCbCr420ToYCrCb420_8u_P2P3R", "zeliYCrCb420ToYCbCr420_8u_P3P2R"},
    // Rows of chroma repeated, then dropped.
    {"zeliYCbCr420ToCbYCr422_8u_P2C2R", "zeliCbYCr422ToYCbCr420_8u_C2P2R"},
    {"zeliYCbCr420ToYCbCr422_8u_P2C2R", "zeliYCbCr422ToYCbCr420_8u_C2P2R"},
    {"zeliYCbCr420ToYCbCr422_8u_P2P3R", "zeliYCbCr422ToYCbCr420_8u_P3P2R"},
    {"zeliYCbCr420ToYCbCr422_8u_P3R", "zeliYCbCr422ToYCbCr420_8u_P3R"},
    {"zeliYCrCb420ToCbYCr422_8u_P3C2R", "zeliCbYCr422ToYCrCb420_8u_C2P3R"},
    {"zeliYCrCb420ToYCbCr422_8u_P3C2R", "zeliYCbCr422ToYCrCb420_8u_C2P3R"},
    // Samples of chroma repeated, then dropped.
    {"zeliYCbCr411ToYCbCr422_8u_P2C2R", "zeliYCbCr422ToYCbCr411_8u_C2P2R"},
    {"zeliYCbCr411ToYCbCr422_8u_P3C2R", "zeliYCbCr422ToYCbCr411_8u_C2P3R"},
    {"zeliYCbCr411ToYCbCr422_8u_P3R", "zeliYCbCr422ToYCbCr411_8u_P3R"},
    {"zeliYCbCr411ToYCrCb422_8u_P3C2R", "zeliYCrCb422ToYCbCr411_8u_C2P3R"},
    // Two rows of 4:1:1 chroma in one of 4:2:0.
    {"zeliYCbCr411ToYCbCr420_8u_P2P3R", "zeliYCbCr420ToYCbCr411_8u_P3P2R"},
    {"zeliYCbCr411ToYCbCr420_8u_P3P2R", "zeliYCbCr420ToYCbCr411_8u_P2P3R"},
    {"zeliYCbCr411ToYCrCb420_8u_P2P3R", "zeliYCrCb420ToYCbCr411_8u_P3P2R"},
    // Twice the chroma both ways, then every second sample of every second row.
    {"zeliYCbCr1620To420_8u_P3R", "zeliYCbCr420To1620_8u_P3R"},
};

const model::Export* find(std::string_view name) {
    const auto exports = model::chromaExports();
    const auto found = std::ranges::find(exports, name, &model::Export::name);
    return found == exports.end() ? nullptr : &*found;
}

ZelStatus convert(const model::Export& by, const Picture& from, const Picture& to) {
    return by.entry.call({.source = from.operand(), .destination = to.operand(), .size = from.size, .slice = by.slice.argument});
}

class RoundTrip : public testing::TestWithParam<Trip> {};

TEST_P(RoundTrip, ReturnsTheInput) {
    const auto *there = find(GetParam().there), *back = find(GetParam().back);
    ASSERT_TRUE(there && back);
    Random random(seed());
    PictureMemory originalMemory, betweenMemory, returnedMemory;
    for (const int width : {4, 12, 64, 68, 132, 260, 640}) {
        const ZelSize size{width, 8};
        const Picture original = originalMemory.lay(there->source, size, dense);
        const Picture between = betweenMemory.lay(there->destination, size, dense);
        const Picture returned = returnedMemory.lay(there->source, size, dense);
        for (const Picture* picture : {&original, &between, &returned}) picture->fill(random, Content::uniform);
        ASSERT_EQ(convert(*there, original, between), zelStsNoErr);
        ASSERT_EQ(convert(*back, between, returned), zelStsNoErr);
        for (int i = 0; i < original.layout->planeCount; ++i) {
            const size_t bytes = size_t(original.planes[i].step) * original.layout->planes[i].rows(size.height);
            EXPECT_TRUE(std::equal(original.planes[i].first, original.planes[i].first + bytes, returned.planes[i].first))
                << "width " << width << ", plane " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Chroma, RoundTrip, testing::ValuesIn(trips),
                         [](const auto& info) { return std::string(info.param.there); });

}  // namespace
}  // namespace harness
