// Values worked out by hand from the rules, without the model: they hold the model and the library to the same numbers.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <span>
#include <string_view>

#include "harness/placement.h"
#include "zelcc/lumachroma.h"

namespace {

using harness::aligned;
using Triple = std::array<int, 3>;

// What becomes of the pixel at `x` in the first row of an image of one colour. Both are red, green, blue or Y, Cb, Cr. Each
// colour is one on which the rule that owns the pixel gives another result than the rules beside it.
struct Pin {
    const char* name;
    int width, x;
    Triple from, to;
};

constexpr Pin pins[] = {
    {"zeliRGBToYCbCr_8u_C3R", 17, 15, {64, 27, 233}, {68, 213, 129}},
    {"zeliRGBToYCbCr_8u_C3R", 17, 16, {40, 170, 77}, {120, 106, 78}},
    {"zeliRGBToYCbCr_8u_AC4R", 17, 0, {40, 170, 77}, {120, 106, 78}},
    {"zeliRGBToYCbCr_8u_P3R", 9, 7, {198, 21, 80}, {85, 128, 201}},
    {"zeliRGBToYCbCr_8u_P3R", 9, 8, {40, 170, 77}, {120, 106, 78}},
    {"zeliRGBToYCbCr420_8u_C3P3R", 14, 7, {83, 60, 245}, {91, 205, 125}},
    {"zeliRGBToYCbCr420_8u_C3P3R", 14, 8, {39, 34, 147}, {58, 176, 122}},
    {"zeliBGRToYCbCr420_8u_C3P3R", 24, 15, {24, 117, 65}, {87, 119, 90}},
    {"zeliBGRToYCbCr420_8u_C3P3R", 24, 16, {39, 34, 147}, {58, 176, 122}},
    {"zeliBGRToYCbCr420_8u_C3P3R", 28, 19, {24, 117, 65}, {87, 119, 90}},
    {"zeliBGRToYCbCr420_8u_C3P3R", 28, 20, {39, 34, 147}, {58, 176, 122}},
    {"zeliBGRToYCbCr411_8u_C3P3R", 60, 47, {88, 99, 127}, {100, 141, 121}},
    {"zeliBGRToYCbCr411_8u_C3P3R", 60, 48, {39, 34, 147}, {58, 176, 122}},
    {"zeliBGRToYCbCr411_8u_AC4P3R", 60, 31, {24, 117, 65}, {87, 119, 90}},
    {"zeliBGRToYCbCr411_8u_AC4P3R", 60, 32, {39, 34, 147}, {58, 176, 122}},
    {"zeliRGBToYCbCr422_8u_C3C2R", 13, 7, {151, 54, 61}, {87, 117, 170}},
    {"zeliRGBToYCbCr422_8u_C3C2R", 13, 8, {170, 50, 151}, {100, 155, 174}},
    {"zeliRGBToYCbCr422_8u_C3C2R", 13, 11, {205, 106, 168}, {138, 141, 167}},
    {"zeliBGRToYCbCr422_8u_C3C2R", 48, 31, {31, 192, 128}, {133, 123, 62}},
    {"zeliBGRToYCbCr422_8u_C3C2R", 48, 32, {163, 115, 58}, {122, 95, 153}},
    {"zeliBGRToYCbCr422_8u_C3C2R", 60, 39, {31, 192, 128}, {133, 123, 62}},
    {"zeliBGRToYCbCr422_8u_C3C2R", 60, 40, {163, 115, 58}, {122, 95, 153}},
    {"zeliYCbCrToRGB_8u_C3R", 7, 3, {165, 133, 155}, {217, 149, 184}},
    {"zeliYCbCrToRGB_8u_C3R", 7, 4, {164, 53, 146}, {201, 187, 20}},
    {"zeliYCbCrToRGB_8u_AC4R", 16, 0, {164, 53, 146}, {201, 187, 20}},
    {"zeliYCbCrToRGB_8u_P3R", 7, 3, {179, 145, 142}, {212, 171, 223}},
    {"zeliYCbCrToRGB_8u_P3R", 7, 4, {162, 68, 139}, {188, 185, 49}},
    {"zeliYCbCrToRGB_8u_P3C3R", 15, 7, {104, 192, 209}, {232, 11, 231}},
    {"zeliYCbCrToRGB_8u_P3C3R", 15, 8, {129, 157, 79}, {53, 159, 190}},
    {"zeliYCbCrToRGB_8u_P3C4R", 15, 7, {69, 118, 154}, {103, 45, 42}},
    {"zeliYCbCrToRGB_8u_P3C4R", 15, 8, {59, 150, 107}, {17, 58, 94}},
    {"zeliYCbCrToBGR_8u_P3C3R", 15, 14, {104, 192, 209}, {232, 11, 231}},
    {"zeliYCbCrToBGR_8u_P3C4R", 15, 14, {69, 118, 154}, {103, 45, 42}},
    {"zeliYCbCr420ToBGR_8u_P3C3R", 14, 7, {65, 187, 133}, {64, 30, 176}},
    {"zeliYCbCr420ToBGR_8u_P3C3R", 14, 8, {162, 68, 139}, {188, 185, 49}},
    {"zeliYCbCr420ToBGR_8u_P3C4R", 14, 13, {104, 103, 177}, {181, 73, 52}},
    {"zeliYCbCr420ToBGR_8u_P2C3R", 14, 13, {104, 103, 177}, {181, 73, 52}},
    {"zeliYCbCr420ToRGB_8u_P3C3R", 14, 7, {104, 192, 209}, {232, 11, 231}},
    {"zeliYCbCr420ToRGB_8u_P3C3R", 14, 8, {162, 68, 139}, {188, 185, 49}},
    {"zeliYCrCb420ToRGB_8u_P3C4R", 14, 7, {69, 118, 154}, {103, 45, 42}},
    {"zeliYCrCb420ToRGB_8u_P3C4R", 14, 8, {162, 68, 139}, {188, 185, 49}},
    {"zeliYCrCb420ToRGB_8u_P2C4R", 14, 13, {141, 94, 170}, {213, 124, 77}},
    {"zeliYCrCb420ToBGR_Filter_8u_P3C4R", 18, 15, {65, 187, 133}, {64, 30, 176}},
    {"zeliYCrCb420ToBGR_Filter_8u_P3C4R", 16, 0, {88, 197, 81}, {8, 95, 223}},
    {"zeliYCbCr422ToRGB_8u_C2C3R", 31, 15, {165, 133, 155}, {217, 149, 184}},
    {"zeliYCbCr422ToRGB_8u_C2C3R", 31, 16, {164, 53, 146}, {201, 187, 20}},
    {"zeliYCbCr422ToRGB_8u_C2C3R", 31, 30, {164, 53, 146}, {201, 187, 20}},
    {"zeliYCbCr422ToBGR_8u_C2C3R", 31, 15, {104, 192, 209}, {232, 11, 231}},
    {"zeliYCbCr422ToBGR_8u_C2C4R", 31, 15, {69, 118, 154}, {103, 45, 42}},
    {"zeliYCrCb422ToRGB_8u_C2C3R", 31, 30, {144, 173, 136}, {161, 125, 239}},
    {"zeliYCbCr422ToBGR_8u_P3C3R", 30, 15, {104, 192, 209}, {232, 11, 231}},
    {"zeliYCbCr422ToBGR_8u_P3C3R", 30, 16, {164, 53, 146}, {201, 187, 20}},
    {"zeliYCbCr422ToRGB_8u_P3C3R", 14, 7, {65, 187, 133}, {64, 30, 176}},
    {"zeliYCbCr422ToRGB_8u_P3C3R", 14, 8, {129, 157, 79}, {53, 159, 190}},
    {"zeliYCbCr411ToBGR_8u_P3C3R", 16, 0, {131, 120, 119}, {120, 144, 118}},
    {"zeliYCbCrToBGR_709CSC_8u_P3C3R", 15, 14, {113, 52, 116}, {91, 135, 0}},
    {"zeliYCbCrToBGR_709CSC_8u_P3C4R", 15, 14, {219, 79, 254}, {255, 180, 133}},
    {"zeliBGRToYCbCr420_709CSC_8u_C3P3R", 28, 19, {56, 10, 18}, {33, 127, 148}},
    {"zeliBGRToYCbCr420_709CSC_8u_C3P3R", 28, 20, {185, 10, 234}, {71, 208, 195}},
    {"zeliBGRToYCbCr420_709HDTV_8u_AC4P3R", 28, 15, {137, 105, 184}, {117, 165, 141}},
    {"zeliBGRToYCbCr420_709HDTV_8u_AC4P3R", 28, 16, {172, 30, 242}, {76, 219, 190}},
    {"zeliRGBToCbYCr422_8u_C3C2R", 6, 3, {81, 95, 100}, {95, 132, 122}},
    {"zeliRGBToCbYCr422_8u_C3C2R", 6, 4, {18, 129, 223}, {107, 185, 72}},
    {"zeliBGRToCbYCr422_8u_AC4C2R", 14, 7, {111, 14, 142}, {65, 170, 161}},
    {"zeliBGRToCbYCr422_709HDTV_8u_C3C2R", 48, 31, {67, 50, 229}, {66, 218, 128}},
    {"zeliBGRToCbYCr422_709HDTV_8u_C3C2R", 48, 32, {249, 201, 74}, {202, 57, 158}},
    {"zeliYCbCr420ToBGR_709CSC_8u_P3C3R", 14, 7, {70, 20, 123}, {54, 88, 0}},
    {"zeliYCbCr420ToBGR_709CSC_8u_P3C3R", 14, 8, {93, 101, 167}, {160, 75, 33}},
    {"zeliYCbCr420ToBGR_709HDTV_8u_P3C4R", 14, 13, {108, 109, 78}, {31, 135, 74}},
    {"zeliCbYCr422ToRGB_8u_C2C3R", 15, 7, {185, 55, 156}, {241, 202, 49}},
    {"zeliCbYCr422ToBGR_8u_C2C4R", 15, 8, {133, 147, 95}, {84, 156, 175}},
    {"zeliCbYCr422ToBGR_709HDTV_8u_C2C3R", 15, 7, {248, 22, 204}, {255, 232, 55}},
    {"zeliCbYCr422ToBGR_709HDTV_8u_C2C4R", 15, 14, {52, 234, 203}, {167, 0, 244}},
    {"zeliYCbCr422ToRGB_8u_C2P3R", 1, 0, {148, 90, 90}, {92, 199, 77}},
    {"zeliYCbCr422ToBGR_8u_C2C4R", 1, 0, {148, 90, 90}, {92, 199, 77}},
    {"zeliRGBToYUV_8u_C3R", 31, 15, {10, 163, 157}, {117, 148, 34}},
    {"zeliRGBToYUV_8u_C3R", 31, 16, {6, 245, 140}, {161, 117, 0}},
    {"zeliRGBToYUV_8u_C3P3R", 15, 7, {124, 242, 18}, {181, 48, 78}},
    {"zeliRGBToYUV_8u_C3P3R", 15, 8, {125, 250, 137}, {199, 97, 62}},
    {"zeliRGBToYUV_8u_AC4R", 16, 0, {252, 243, 60}, {225, 46, 151}},
    {"zeliRGBToYUV_8u_P3R", 19, 15, {207, 249, 25}, {211, 36, 125}},
    {"zeliRGBToYUV_8u_P3R", 19, 16, {142, 82, 146}, {107, 147, 159}},
    {"zeliRGBToYUV_8u_AC4P4R", 15, 7, {16, 176, 188}, {129, 156, 28}},
    {"zeliRGBToYUV_8u_AC4P4R", 15, 8, {186, 159, 94}, {160, 95, 150}},
    {"zeliRGBToYUV420_8u_C3P3R", 30, 15, {3, 236, 31}, {142, 72, 5}},
    {"zeliRGBToYUV420_8u_C3P3R", 30, 16, {231, 210, 86}, {202, 71, 153}},
    {"zeliRGBToYUV420_8u_P3R", 16, 0, {27, 124, 25}, {84, 99, 78}},
    {"zeliBGRToYUV420_8u_AC4P3R", 16, 0, {254, 203, 30}, {199, 45, 176}},
    {"zeliRGBToYUV422_8u_C3P3R", 31, 15, {192, 67, 6}, {97, 83, 210}},
    {"zeliRGBToYUV422_8u_C3P3R", 31, 16, {162, 228, 116}, {195, 89, 99}},
    {"zeliRGBToYUV422_8u_C3P3R", 31, 30, {236, 222, 87}, {210, 66, 150}},
    {"zeliRGBToYUV422_8u_P3R", 31, 15, {170, 212, 173}, {195, 117, 106}},
    {"zeliRGBToYUV422_8u_P3R", 31, 16, {158, 81, 212}, {118, 174, 162}},
    {"zeliRGBToYUV422_8u_P3R", 1, 0, {16, 50, 162}, {52, 181, 96}},
    {"zeliRGBToYUV422_8u_C3C2R", 30, 15, {250, 210, 12}, {199, 36, 172}},
    {"zeliYUVToRGB_8u_C3R", 15, 7, {61, 173, 103}, {32, 58, 152}},
    {"zeliYUVToRGB_8u_C3R", 15, 8, {61, 147, 78}, {4, 82, 100}},
    {"zeliYUVToRGB_8u_AC4R", 16, 0, {194, 138, 209}, {255, 142, 214}},
    {"zeliYUVToRGB_8u_P3R", 16, 0, {223, 197, 243}, {255, 129, 255}},
    {"zeliYUVToRGB_8u_P3C3R", 31, 15, {92, 44, 253}, {234, 53, 0}},
    {"zeliYUVToRGB_8u_P3C3R", 31, 16, {26, 15, 190}, {97, 34, 0}},
    {"zeliYUVToRGB_8u_C3C4R", 15, 7, {235, 146, 110}, {214, 239, 255}},
    {"zeliYUV420ToRGB_8u_P3R", 16, 0, {184, 193, 139}, {197, 151, 255}},
    {"zeliYUV420ToRGB_8u_P3C3R", 14, 7, {153, 53, 203}, {238, 139, 1}},
    {"zeliYUV420ToRGB_8u_P3C3R", 14, 8, {117, 124, 16}, {0, 183, 109}},
    {"zeliYUV420ToBGR_8u_P3C3R", 14, 7, {74, 229, 203}, {160, 0, 255}},
    {"zeliYUV420ToRGB_8u_P3AC4R", 7, 3, {218, 81, 216}, {255, 186, 122}},
    {"zeliYUV420ToRGB_8u_P3AC4R", 7, 6, {130, 183, 14}, {0, 175, 242}},
    {"zeliYUV422ToRGB_8u_P3C3R", 31, 15, {192, 169, 189}, {255, 141, 255}},
    {"zeliYUV422ToRGB_8u_P3C3R", 31, 30, {192, 43, 98}, {158, 242, 19}},
    {"zeliYUV422ToRGB_8u_P3AC4R", 15, 7, {125, 171, 197}, {203, 68, 212}},
    {"zeliYUV422ToRGB_8u_P3AC4R", 15, 14, {99, 87, 168}, {144, 91, 15}},
    {"zeliYUV422ToRGB_8u_C2C3R", 30, 15, {128, 207, 103}, {100, 112, 255}},
};

Triple read(const harness::Picture& picture, int x) {
    const model::Image image = picture.image();
    Triple triple;
    for (int c = 0; c < 3; ++c) triple[c] = image.sample(picture.layout->channels[c], x, 0);
    return triple;
}

Triple convertFlat(const Pin& pin, const harness::Placement& source) {
    const model::Export* tested = nullptr;
    for (const auto exports : {model::lumachromaExports(), model::yuvExports()})
        for (const model::Export& e : exports)
            if (e.name == std::string_view(pin.name)) tested = &e;
    if (!tested) return {-1, -1, -1};
    const ZelSize size{pin.width, 2};
    harness::PictureMemory sourceMemory, destinationMemory;
    const harness::Picture from = sourceMemory.lay(tested->source, tested->converted(size), source);
    const harness::Picture to = destinationMemory.lay(tested->destination, tested->converted(size), aligned);
    const model::Image image = from.image();
    for (int c = 0; c < 3; ++c) {
        const model::Channel& channel = from.layout->channels[c];
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                if (channel.position(x) < from.layout->planes[channel.plane].rowBytes(size.width))
                    image.sample(channel, x, y) = static_cast<uint8_t>(pin.from[c]);
    }
    tested->entry.call({.source = from.operand(), .destination = to.operand(), .size = size, .alpha = 0});
    return read(to, pin.x);
}

TEST(LumaChromaValues, AreThoseOfTheRuleThatOwnsThePixel) {
    for (const Pin& pin : pins)
        EXPECT_EQ(convertFlat(pin, aligned), pin.to) << pin.name << ", pixel " << pin.x << " of " << pin.width;
}

TEST(LumaChromaValues, FollowAnotherBlockRuleInMisalignedImages) {
    constexpr Pin misaligned[] = {
        {"zeliYCbCr420ToBGR_8u_P3C3R", 14, 7, {104, 192, 209}, {232, 11, 231}},
        {"zeliYCbCr422ToRGB_8u_P3C3R", 14, 7, {104, 192, 209}, {232, 11, 231}},
        {"zeliRGBToYUV422_8u_C3P3R", 31, 15, {15, 15, 15}, {15, 128, 128}},
    };
    for (const Pin& pin : misaligned) {
        EXPECT_EQ(convertFlat(pin, harness::dense), pin.to) << pin.name;
        EXPECT_NE(convertFlat(pin, aligned), pin.to) << pin.name;
    }
}

using Bytes = std::vector<int>;

template <size_t N>
Bytes bytes(const uint8_t (&array)[N]) {
    return {array, array + N};
}

constexpr uint8_t redBlueGreen[] = {255, 0, 0, 0, 0, 255, 0, 255, 0};
constexpr uint8_t blueRedGreen[] = {0, 0, 255, 255, 0, 0, 0, 255, 0};  // the same as B, G, R

// The last pixel of an odd row has room for one chroma byte: the one that stands first in the order of the name.
TEST(LumaChromaValues, StandInTheByteOrderOfPacked422) {
    uint8_t ycc[6];
    ASSERT_EQ(zeliRGBToYCbCr422_8u_C3C2R(redBlueGreen, 9, ycc, 6, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(ycc), Bytes({82, 165, 40, 175, 145, 54}));
    ASSERT_EQ(zeliRGBToYCrCb422_8u_C3C2R(redBlueGreen, 9, ycc, 6, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(ycc), Bytes({82, 175, 40, 165, 145, 34}));
    std::memset(ycc, 1, sizeof ycc);
    ASSERT_EQ(zeliBGRToYCbCr422_8u_C3C2R(blueRedGreen, 9, ycc, 6, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(ycc), Bytes({82, 165, 41, 175, 1, 1}));
}

// The last pixel of an odd row borrows the second chroma of the pair before it; alone it takes its only one for both.
TEST(LumaChromaValues, BorrowTheChromaThatAnOddRowLacks) {
    constexpr uint8_t yuyv[] = {82, 90, 145, 240, 41, 54};
    uint8_t rgb[9];
    ASSERT_EQ(zeliYCbCr422ToRGB_8u_C2C3R(yuyv, 6, rgb, 9, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(rgb), Bytes({255, 0, 0, 255, 73, 73, 207, 0, 0}));
    ASSERT_EQ(zeliYCrCb422ToRGB_8u_C2C3R(yuyv, 6, rgb, 9, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(rgb), Bytes({16, 63, 255, 89, 137, 255, 0, 45, 254}));

    std::memset(rgb, 1, sizeof rgb);
    ASSERT_EQ(zeliYCbCr422ToBGR_8u_C2C3R(yuyv + 4, 2, rgb, 9, {1, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(rgb), Bytes({0, 118, 0, 1, 1, 1, 1, 1, 1}));
}

// The same where chroma comes first. A pair's chroma and a single pixel's are rounded differently.
TEST(LumaChromaValues, StandInTheByteOrderOfChromaFirst) {
    uint8_t ycc[6];
    ASSERT_EQ(zeliRGBToCbYCr422_8u_C3C2R(redBlueGreen, 9, ycc, 6, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(ycc), Bytes({165, 82, 175, 41, 54, 145}));
    ASSERT_EQ(zeliBGRToCbYCr422_709HDTV_8u_C3C2R(blueRedGreen, 9, ycc, 6, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(ycc), Bytes({178, 54, 187, 18, 28, 182}));

    uint8_t rgb[9];
    constexpr uint8_t uyvy[] = {90, 82, 240, 145, 54, 41};
    ASSERT_EQ(zeliCbYCr422ToRGB_8u_C2C3R(uyvy, 6, rgb, 9, {3, 1}), zelStsNoErr);
    EXPECT_EQ(bytes(rgb), Bytes({255, 1, 0, 255, 74, 74, 208, 0, 0}));
    ASSERT_EQ(zeliCbYCr422ToRGB_8u_C2C3R(uyvy + 4, 2, rgb, 9, {1, 1}), zelStsNoErr);
    EXPECT_EQ(Bytes(rgb, rgb + 3), Bytes({0, 118, 0}));
}

// A digital video interface keeps the codes 0 and 255 for itself.
TEST(LumaChromaValues, StayWithin1To254InFullRange) {
    constexpr int width = 48;  // block and tail
    for (const int level : {0, 255}) {
        for (int bits = 0; bits < 8; ++bits) {
            uint8_t bgra[2][4 * width], luma[2][width], cb[width / 2], cr[width / 2];
            for (int i = 0; i < 2 * 4 * width; ++i) (&bgra[0][0])[i] = bits >> i % 4 & 1 ? 255 : level * (i % 4 == 3);
            uint8_t* const planes[] = {luma[0], cb, cr};
            constexpr int32_t steps[] = {width, width / 2, width / 2};
            uint8_t uyvy[2 * width];
            ASSERT_EQ(zeliBGRToYCbCr420_709HDTV_8u_AC4P3R(bgra[0], 4 * width, planes, steps, {width, 2}), zelStsNoErr);
            ASSERT_EQ(zeliBGRToCbYCr422_709HDTV_8u_AC4C2R(bgra[0], 4 * width, uyvy, 2 * width, {width, 1}), zelStsNoErr);
            for (const std::span<const uint8_t> codes : {std::span<const uint8_t>(luma[0], width), {cb}, {cr}, {uyvy}})
                for (const uint8_t code : codes) EXPECT_TRUE(code >= 1 && code <= 254) << int(code) << " of colour " << bits;
            const int y = bits == 0 ? 1 : bits == 7 ? 254 : luma[0][0];
            EXPECT_EQ(luma[1][0], y);
            EXPECT_EQ(uyvy[2 * width - 1], y);
        }
    }
}

TEST(LumaChromaValues, StandInThePlanesOfTheName) {
    constexpr uint8_t bgra[] = {0, 0, 255, 9, 0, 255, 0, 9, 255, 0, 0, 9, 0, 255, 255, 9};  // red, green, blue, yellow
    uint8_t luma[4], first[1], second[1], pairs[2];
    uint8_t* const planes[] = {luma, first, second};
    constexpr int32_t steps[] = {2, 1, 1};
    ASSERT_EQ(zeliBGRToYCbCr420_8u_AC4P3R(bgra, 8, planes, steps, {2, 2}), zelStsNoErr);
    EXPECT_EQ(bytes(luma), Bytes({82, 145, 41, 210}));
    EXPECT_EQ(bytes(first), Bytes({100}));
    EXPECT_EQ(bytes(second), Bytes({132}));
    ASSERT_EQ(zeliBGRToYCrCb420_8u_AC4P3R(bgra, 8, planes, steps, {2, 2}), zelStsNoErr);
    EXPECT_EQ(bytes(first), Bytes({132}));
    EXPECT_EQ(bytes(second), Bytes({100}));

    constexpr uint8_t rgba[] = {255, 0, 0, 9, 0, 255, 0, 9, 0, 0, 255, 9, 255, 255, 0, 9};
    ASSERT_EQ(zeliRGBToYCbCr420_8u_C4P2R(rgba, 8, luma, 2, pairs, 2, {2, 2}), zelStsNoErr);
    EXPECT_EQ(bytes(pairs), Bytes({100, 132}));

    constexpr uint8_t redLuma[] = {82, 82, 82, 82}, redCbCr[] = {90, 240}, redCrCb[] = {240, 90};
    uint8_t pixels[16];
    ASSERT_EQ(zeliYCbCr420ToBGR_8u_P2C4R(redLuma, 2, redCbCr, 2, pixels, 8, {2, 2}, 7), zelStsNoErr);
    EXPECT_EQ(bytes(pixels), Bytes({0, 1, 255, 7, 0, 1, 255, 7, 0, 1, 255, 7, 0, 1, 255, 7}));
    ASSERT_EQ(zeliYCrCb420ToRGB_8u_P2C4R(redLuma, 2, redCrCb, 2, pixels, 8, {2, 2}, 7), zelStsNoErr);
    EXPECT_EQ(bytes(pixels), Bytes({255, 0, 0, 7, 255, 0, 0, 7, 255, 0, 0, 7, 255, 0, 0, 7}));
}

TEST(LumaChromaValues, AreInterpolatedBetweenSites) {
    constexpr uint8_t luma[12] = {126, 126, 126, 126, 126, 126, 126, 126, 126, 126, 126, 126};
    constexpr uint8_t cr[] = {100, 151, 128}, cb[] = {128, 128, 128};
    const uint8_t* const planes[] = {luma, cr, cb};
    constexpr int32_t steps[] = {6, 3, 3};
    uint8_t bgra[48];
    ASSERT_EQ(zeliYCrCb420ToBGR_Filter_8u_P3C4R(planes, steps, bgra, 24, {6, 2}, 3), zelStsNoErr);
    constexpr Triple expected[] = {{83, 150, 128},  {124, 129, 128}, {164, 109, 128},
                                   {147, 118, 128}, {128, 128, 128}, {128, 128, 128}};
    for (int i = 0; i < 12; ++i) {
        const uint8_t* p = bgra + 4 * i;
        EXPECT_EQ(Triple({p[2], p[1], p[0]}), expected[i % 6]) << i;
        EXPECT_EQ(p[3], 3) << i;
    }
}

}  // namespace
