// What is refused, in the order that the header states, and that nothing is written then; the header's worked pixels.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "video/model.h"

namespace video {
namespace {

constexpr ZelvFormat nv12{zelvSemiPlanar, "YUV", zelv420, 8, zelvLowBits, zelvMatrix709, zelvLimited, zelvLeft, 0, 0};
constexpr ZelvFormat rgb24{zelvInterleaved, "RGB", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};

struct Fault {
    int32_t field;  // as its place in the list of statuses
    ZelvFormat format;
};

template <class Change>
ZelvFormat changed(ZelvFormat f, const Change& change) {
    change(f);
    return f;
}

// Eight of them have no end.
void setLetters(ZelvFormat& f, const char* letters) {
    for (size_t i = 0, length = std::strlen(letters); i < sizeof f.components; ++i)
        f.components[i] = i < length ? letters[i] : '\0';
}

std::vector<Fault> faults() {
    std::vector<Fault> all;
    const auto add = [&](int32_t field, const ZelvFormat& base, const auto& change) {
        all.push_back({field, changed(base, change)});
    };
    for (const int32_t layout : {-1, 6}) add(0, nv12, [&](ZelvFormat& f) { f.layout = layout; });
    for (const char* letters : {"", "UYV", "YUVA", "RGB", "Y", "YUVYUVYU", "YU", "YUB"})
        add(1, nv12, [&](ZelvFormat& f) { setLetters(f, letters); });
    for (const char* letters : {"RG", "RGG", "RGBAX", "RGBY", "rgb", "Y", "A", "YUYV"})
        add(1, rgb24, [&](ZelvFormat& f) { setLetters(f, letters); });
    add(1, nv12, [](ZelvFormat& f) { f = {zelvPlanar, "YUVX", zelv420, 8, 0, 1, 0, 0, 0, 0}; });
    add(1, nv12, [](ZelvFormat& f) { f = {zelvPaired, "YYUV", zelv422, 8, 0, 1, 0, 0, 0, 0}; });
    add(1, nv12, [](ZelvFormat& f) { f = {zelvDwords, "AUYV", zelv444, 10, 0, 1, 0, 0, 0, 0}; });
    add(1, nv12, [](ZelvFormat& f) { f = {zelvV210, "YVU", zelv422, 10, 0, 1, 0, 0, 0, 0}; });
    for (const int32_t sampling : {-1, 5}) add(2, nv12, [&](ZelvFormat& f) { f.sampling = sampling; });
    add(2, rgb24, [](ZelvFormat& f) { f.sampling = zelv420; });
    add(2, nv12, [](ZelvFormat& f) { f = {zelvPlanar, "Y", zelv420, 8, 0, 1, 0, 0, 0, 0}; });
    add(2, nv12, [](ZelvFormat& f) { f = {zelvPaired, "YUYV", zelv420, 8, 0, 1, 0, 0, 0, 0}; });
    for (const int32_t depth : {0, 7, 11, 13, 15, 17, 32}) add(3, nv12, [&](ZelvFormat& f) { f.depth = depth; });
    add(3, nv12, [](ZelvFormat& f) { f = {zelvV210, "YUV", zelv422, 8, 0, 1, 0, 0, 0, 0}; });
    for (const int32_t alignment : {-1, 1, 2}) add(4, nv12, [&](ZelvFormat& f) { f.alignment = alignment; });
    for (const int32_t matrix : {-1, 0, 2, 3, 10, 255, 257}) add(5, nv12, [&](ZelvFormat& f) { f.matrix = matrix; });
    add(5, rgb24, [](ZelvFormat& f) { f.matrix = zelvMatrix709; });
    for (const int32_t range : {-1, 2}) add(6, nv12, [&](ZelvFormat& f) { f.range = range; });
    add(6, rgb24, [](ZelvFormat& f) { f.depth = 32, f.range = zelvLimited; });
    for (const int32_t location : {-1, 3}) add(7, nv12, [&](ZelvFormat& f) { f.location = location; });
    add(7, rgb24, [](ZelvFormat& f) { f.location = zelvCentre; });
    add(8, nv12, [](ZelvFormat& f) { f.kr = 1; });
    add(8, nv12, [](ZelvFormat& f) { f.matrix = zelvMatrixGiven, f.kr = -1; });
    add(8, nv12, [](ZelvFormat& f) { f.matrix = zelvMatrixGiven, f.kr = 5000, f.kb = 2501; });
    return all;
}

TEST(VideoStatus, NamesTheSideAndTheFieldAndWritesNothing) {
    ZelvPlan plan, untouched;
    std::memset(&untouched, 0x5a, sizeof untouched);
    plan = untouched;
    const std::vector<Fault> all = faults();
    for (const Fault& fault : all) {
        EXPECT_EQ(zelvMakePlan(&plan, &fault.format, &rgb24, nullptr), zelvStsSourceLayoutErr - fault.field)
            << &fault - all.data();
        EXPECT_EQ(zelvMakePlan(&plan, &rgb24, &fault.format, nullptr), zelvStsDestinationLayoutErr - fault.field)
            << &fault - all.data();
        // The source is looked at first, and both before the options.
        const ZelvOptions none{7, 7, 7};
        EXPECT_EQ(zelvMakePlan(&plan, &fault.format, &all[0].format, &none), zelvStsSourceLayoutErr - fault.field);
        // An earlier field comes before this one.
        const ZelvFormat two = changed(fault.format, [](ZelvFormat& f) { f.layout = 9; });
        EXPECT_EQ(zelvMakePlan(&plan, &rgb24, &two, nullptr), zelvStsDestinationLayoutErr);
    }
    for (int option = 0; option < 3; ++option)
        for (const int32_t wrong : {-1, 2}) {
            ZelvOptions options{};
            (option == 0 ? options.up : option == 1 ? options.down : options.dither) = wrong;
            EXPECT_EQ(zelvMakePlan(&plan, &nv12, &rgb24, &options), zelvStsUpErr - option);
        }
    EXPECT_EQ(zelvMakePlan(nullptr, &nv12, &rgb24, nullptr), zelStsNullPtrErr);
    EXPECT_EQ(zelvMakePlan(&plan, nullptr, &rgb24, nullptr), zelStsNullPtrErr);
    EXPECT_EQ(zelvMakePlan(&plan, &nv12, nullptr, nullptr), zelStsNullPtrErr);
    EXPECT_EQ(std::memcmp(&plan, &untouched, sizeof plan), 0);
}

TEST(VideoStatus, OfConversionsComeInTheirOrderAndNothingIsWritten) {
    ZelvPlan plan, foreign;
    ASSERT_EQ(zelvMakePlan(&plan, &nv12, &rgb24, nullptr), zelStsNoErr);
    foreign = plan;
    ++foreign.content[0];
    uint8_t y[16] = {}, uv[8] = {}, rgb[48];
    std::memset(rgb, 77, sizeof rgb);
    const uint8_t *const src[2] = {y, uv}, *const missing[2] = {y, nullptr};
    uint8_t *const dst[1] = {rgb}, *const none[1] = {nullptr};
    const int32_t from[2] = {4, 4}, to[1] = {12};
    const ZelSize size{4, 4};
    EXPECT_EQ(zelvConvert(nullptr, src, from, dst, to, size), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&foreign, nullptr, from, dst, to, size), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&plan, src, nullptr, dst, to, size), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&plan, src, from, nullptr, to, size), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&plan, src, from, dst, nullptr, size), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&foreign, missing, from, dst, to, {0, 0}), zelStsContextMatchErr);
    EXPECT_EQ(zelvConvert(&plan, missing, from, dst, to, {0, 0}), zelStsNullPtrErr);
    EXPECT_EQ(zelvConvert(&plan, src, from, none, to, {0, 0}), zelStsNullPtrErr);
    for (const ZelSize wrong : {ZelSize{0, 4}, ZelSize{4, 0}, ZelSize{-1, 4}, ZelSize{4, -1}})
        EXPECT_EQ(zelvConvertRows(&plan, src, from, dst, to, wrong, -1, 0), zelStsSizeErr);
    constexpr int rows[][2] = {{-2, 2}, {4, 1}, {0, 0}, {0, -1}, {0, 5}, {2, 3}, {1, 2}, {0, 1}, {0, 3}, {2, INT32_MAX}};
    for (const auto& [first, count] : rows)
        EXPECT_EQ(zelvConvertRows(&plan, src, from, dst, to, size, first, count), zelStsBadArgErr);
    for (const uint8_t byte : rgb) ASSERT_EQ(byte, 77);
    EXPECT_EQ(zelvConvertRows(&plan, src, from, dst, to, size, 2, 2), zelStsNoErr);
    EXPECT_EQ(rgb[23], 77);
    EXPECT_NE(rgb[24], 77);
}

// A line of the header: "RGB" 8 full   255   0   0  ->  "YUV" 420 8 matrix 1 limited   63  102  240
struct Worked {
    ZelvFormat format;
    uint32_t pixel[3];
};
bool readSide(const std::string& text, Worked& side) {
    char letters[8], rest[64];
    int at = 0;
    if (std::sscanf(text.c_str(), " \"%7[A-Z]\"%n", letters, &at) != 1) return false;
    const bool isYuv = letters[0] == 'Y';
    side.format = {isYuv ? zelvPlanar : zelvInterleaved, "", zelv444, 0, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
    std::strcpy(side.format.components, letters);
    const char* const behind = text.c_str() + at;
    int sampling = 444, p0, p1, p2;
    if (isYuv ? std::sscanf(behind, "%d %d %*[a-z.] %d %63[a-z.] %d %d %d", &sampling, &side.format.depth, &side.format.matrix,
                            rest, &p0, &p1, &p2) != 7
              : std::sscanf(behind, "%d %63[a-z.] %d %d %d", &side.format.depth, rest, &p0, &p1, &p2) != 5)
        return false;
    side.format.sampling = sampling == 420 ? zelv420 : zelv444;
    side.format.range = rest[0] == 'f' ? zelvFull : zelvLimited;
    side.pixel[0] = static_cast<uint32_t>(p0);
    side.pixel[1] = static_cast<uint32_t>(p1);
    side.pixel[2] = static_cast<uint32_t>(p2);
    return true;
}

TEST(VideoHeader, WorkedPixelsHold) {
    std::ifstream header(ZELVIDEO_HEADER);
    std::string line;
    int found = 0;
    while (std::getline(header, line)) {
        const size_t arrow = line.find("  ->  ");
        if (arrow == std::string::npos) continue;
        Worked from, to;
        ASSERT_TRUE(readSide(line.substr(line.find('"'), arrow), from) && readSide(line.substr(arrow + 6), to)) << line;
        ++found;
        alignas(4) uint8_t in[3][48] = {}, out[3][48] = {};
        Picture source{from.format, {2, 2}, {in[0], in[1], in[2]}, {12, 12, 12}},
            result{to.format, {2, 2}, {out[0], out[1], out[2]}, {12, 12, 12}};
        for (int c = 0; c < 3; ++c)
            for (int y = 0; y < 2; ++y)
                for (int x = 0; x < 2; ++x)
                    if (c == 0 || from.format.sampling != zelv420 || x + y == 0)
                        setSample(source, Channel(c), x, y, from.pixel[c]);
        ZelvPlan plan;
        ASSERT_EQ(zelvMakePlan(&plan, &from.format, &to.format, nullptr), zelStsNoErr);
        ASSERT_EQ(
            zelvConvert(&plan, source.planes.data(), source.steps.data(), result.planes.data(), result.steps.data(), {2, 2}),
            zelStsNoErr);
        for (int c = 0; c < 3; ++c) EXPECT_EQ(sample(result, Channel(c), 0, 0), to.pixel[c]) << line;
    }
    EXPECT_GE(found, 8);
}

}  // namespace
}  // namespace video
