// The ways between formats, and the samples that are moved on them.
#include "catalog/path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>

namespace {

using catalog::Format;

const Format& formatOf(std::string_view name) { return catalog::formats()[*catalog::formatNumber(name)]; }

std::string wayOf(std::string_view source, std::string_view target, std::string_view matrix = "601",
                  std::string_view method = {}) {
    const auto steps = catalog::path(formatOf(source), formatOf(target), catalog::byMethod(matrix, method));
    if (!steps) return "none";
    std::string way;
    for (const catalog::Step& step : *steps)
        way += std::string(step.conversion ? catalog::functions()[step.conversion->function].name : "moved") + ' ';
    return way.substr(0, std::max<size_t>(way.size(), 1) - 1);
}

TEST(Path, TakesTheFunctionsThatLoseLeast) {
    const struct {
        std::string_view source, target, matrix, method, way;
    } cases[] = {
        {"rgb24", "rgb24", "601", "", ""},
        {"rgb24", "nv12", "601", "", "zeliRGBToYCbCr420_8u_C3P2R"},
        {"bgr24", "nv12", "709", "", "zeliBGRToYCbCr420_709CSC_8u_C3P2R"},
        {"bgr24", "rgb24", "601", "", "moved"},
        {"nv12", "nv21", "601", "", "moved"},
        {"yuv420p", "yv12", "601", "", "moved"},
        {"nv12", "yuv420p", "601", "", "zeliYCbCr420_8u_P2P3R"},
        {"bgr24", "nv12", "601", "", "zeliBGRToYCbCr420_8u_C3P3R zeliYCbCr420_8u_P3P2R"},
        {"yuyv422", "gray", "601", "", "zeliYCbCr422ToGray_8u_C2C1R"},
        {"yuv420p", "gray", "601", "", "zeliYCbCr420ToRGB_8u_P3C3R zeliRGBToGray_8u_C3C1R"},
        {"lab24", "hsv24", "601", "", "zeliLabToRGB_8u_C3R zeliRGBToHSV_8u_C3R"},
        {"xyza32", "xyz24", "601", "", "moved"},
        {"rgb48le", "nv12", "601", "", "zeliReduceBits_16u8u_C3R zeliRGBToYCbCr420_8u_C3P2R"},
        {"rgba64le", "rgba", "601", "", "zeliReduceBits_16u8u_C4R"},
        {"yuv420p", "yuv422p", "601", "filter", "zeliYCbCr420ToYCbCr422_Filter_8u_P3R"},
        {"yuv420p", "yuv422p", "601", "interlaced", "zeliYCbCr420To422_Interlace_8u_P3R"},
        {"rgb24", "rgb24", "601", "gamma", "zeliGammaFwd_8u_C3R"},
        {"bayer_rggb8", "rgb24", "601", "", "zeliCFAToRGB_8u_C1C3R"},
        {"bayer_rggb8", "rgb24", "601", "ahd", "zeliDemosaicAHD_8u_C1C3R"},
        {"rgb24", "rgb48le", "601", "", "none"},
        {"rgb24", "yuv420p", "601", "interlaced", "zeliRGBToCbYCr422_8u_C3C2R zeliCbYCr422ToYCbCr420_Interlace_8u_C2P3R"},
        {"rgb24", "nv12", "601", "tone-mean", "none"},
        {"monob", "gray", "601", "", "none"},
    };
    for (const auto& c : cases) EXPECT_EQ(wayOf(c.source, c.target, c.matrix, c.method), c.way) << c.source << " to " << c.target;
}

// Planes of the ends are those that the caller has, whatever their order.
TEST(Path, KnowsThePlanesOfItsEnds) {
    for (const Format& source : catalog::formats())
        for (const Format& target : catalog::formats()) {
            const auto steps = catalog::path(source, target, catalog::byMethod("601", {}));
            if (!steps || steps->empty()) continue;
            EXPECT_EQ(steps->front().source, &source);
            EXPECT_EQ(steps->back().target, &target);
            for (size_t i = 0; i < steps->size(); ++i) {
                const catalog::Step& step = (*steps)[i];
                EXPECT_TRUE(i == 0 || step.source == (*steps)[i - 1].target) << source.name << " to " << target.name;
                EXPECT_TRUE(step.conversion || catalog::canRearrange(*step.source, *step.target));
                const catalog::Conversion* const c = step.conversion;
                for (int plane = 0; c && plane < step.source->planeCount; ++plane)
                    EXPECT_EQ(step.source->planes[step.sourceOrder[plane]].channels,
                              catalog::formats()[c->source].planes[c->sourceOrder[plane]].channels);
                for (int plane = 0; c && plane < step.target->planeCount; ++plane)
                    EXPECT_EQ(step.target->planes[step.targetOrder[plane]].channels,
                              catalog::formats()[c->target].planes[c->targetOrder[plane]].channels);
            }
        }
}

struct Pixels {
    std::vector<uint8_t> planes[4];
    catalog::Side side;

    Pixels(const Format& f, ZelSize size) {
        for (int i = 0; i < f.planeCount; ++i) {
            side.steps[i] = static_cast<int32_t>(f.planes[i].rowBytes(size.width)) + 8 * (i + 1);
            planes[i].resize(static_cast<size_t>(side.steps[i]) * f.planes[i].rows(size.height), 0xee);
            side.planes[i] = planes[i].data();
        }
    }
};

// There and back all samples are what they were.
TEST(Rearrange, LosesNothing) {
    constexpr ZelSize size{1032, 4};  // more than a block
    int count = 0;
    for (const Format& source : catalog::formats())
        for (const Format& target : catalog::formats()) {
            if (&source == &target || !catalog::canRearrange(source, target) || !catalog::canRearrange(target, source)) continue;
            if (catalog::hasAlpha(source) && !catalog::hasAlpha(target)) continue;
            Pixels first(source, size), between(target, size), last(source, size);
            for (int i = 0; i < source.planeCount; ++i)
                for (int64_t y = 0; y < source.planes[i].rows(size.height); ++y) {
                    uint8_t* const row = &first.planes[i][y * first.side.steps[i]];
                    std::iota(row, row + source.planes[i].rowBytes(size.width), static_cast<uint8_t>(41 * y + 97 * i));
                }
            catalog::rearrange(source, first.side, target, between.side, size);
            catalog::rearrange(target, between.side, source, last.side, size);
            for (int i = 0; i < source.planeCount; ++i)
                EXPECT_EQ(first.planes[i], last.planes[i]) << source.name << ' ' << target.name;
            ++count;
        }
    EXPECT_GT(count, 40);
}

TEST(Rearrange, PutsSamplesWhereTheFormatHasThem) {
    uint8_t yuyv[] = {1, 2, 3, 4, 5, 6, 7, 8};
    uint8_t y[4], cr[2], cb[2];
    catalog::rearrange(formatOf("yuyv422"), {{yuyv}, {8}}, formatOf("yv16"), {{y, cr, cb}, {4, 2, 2}}, {4, 1});
    EXPECT_EQ(std::vector(y, y + 4), (std::vector<uint8_t>{1, 3, 5, 7}));
    EXPECT_EQ(std::vector(cb, cb + 2), (std::vector<uint8_t>{2, 6}));
    EXPECT_EQ(std::vector(cr, cr + 2), (std::vector<uint8_t>{4, 8}));
    uint16_t rgb[] = {1, 2, 3}, bgra[4];
    catalog::rearrange(formatOf("rgb48le"), {{rgb}, {6}}, formatOf("bgra64le"), {{bgra}, {8}}, {1, 1});
    EXPECT_EQ(std::vector(bgra, bgra + 4), (std::vector<uint16_t>{3, 2, 1, 65535}));
}

}  // namespace
