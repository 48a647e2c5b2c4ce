// The ways between formats: which functions are taken, by which wishes, and what is refused.
#include <gtest/gtest.h>

#include "tools/errors.h"
#include "tools/way.h"

namespace tool {
namespace {

struct Case {
    std::string_view name, from, to;
    Wishes wishes;
    std::vector<std::string_view> functions;  // "" where samples are moved
    bool isReachable = true;
};

Wishes byMatrix(const char* source, const char* target, bool filters = false) {
    return {.colours = {{.matrix = source}, {.matrix = target}}, .filter = filters};
}

const char video[] = "zelvConvert";

const Case cases[] = {
    {"Single", "nv12", "rgb24", {}, {"zeliYCbCr420ToRGB_8u_P2C3R"}},
    {"Same", "yuv420p", "yuv420p", {}, {}},
    {"ByMatrix", "bgr24", "nv12", byMatrix("709", "709"), {"zeliBGRToYCbCr420_709CSC_8u_C3P2R"}},
    {"MatrixOfVideo", "uyvy422", "rgb24", byMatrix("2020", "2020"), {video}},
    {"OtherMatrix", "nv12", "nv12", byMatrix("709", "2020"), {video}},
    {"MatrixOfFunctionsAlone", "yuv420p10le", "rgb24", byMatrix("yuv", "yuv"), {}, false},
    {"DeepMovedAtOnce", "yuv420p10le", "p010le", {}, {video}},
    {"DeepToOtherSpace", "yuv420p10le", "hls24", {}, {video, "zeliRGBToHLS_8u_C3R"}},
    {"OtherSpaceToDeep", "bayer_rggb16le", "p016le", {}, {"zeliCFAToRGB_16u_C1C3R", video}},
    {"SitesOfVideo", "yuv440p", "rgb24", byMatrix("601", "601", true), {video}},
    {"ExchangesRedAndBlue", "rgb24", "bgr24", {}, {""}},
    {"KeepsAlphaOfBytes", "rgba", "bgra", {}, {""}},
    {"KeepsAlphaByReduction", "rgba64le", "rgba", {}, {"zeliReduceBits_16u8u_C4R"}},
    {"LosesNothingOnTheWay", "bgra", "gbrp", {}, {""}},
    {"OtherOrderOfChroma", "bgr24", "nv21", {}, {"zeliBGRToYCbCr420_8u_C3P3R", ""}},
    {"NotThroughGray", "gray", "yuv444p", {}, {"zeliGrayToRGB_8u_C1C3R", "zeliRGBToYCbCr_8u_C3P3R"}},
    {"NotThroughWords", "rgb24", "rgb555le", {}, {"zeliRGBToYCbCr_8u_C3R", "zeliYCbCrToBGR555_8u16u_C3R"}},
    {"NotThroughFewerSites", "yuyv422", "bgra", {}, {"zeliYCbCr422ToBGR_8u_C2C4R"}},
    {"YCoCgIsNoDepth", "bgr24", "bgr48s", {}, {video, "zeliReduceBits_32f16s_C3R"}},
    {"Filter", "nv12", "yuyv422", {.filter = true}, {"zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R"}},
    {"FilterIsMissing", "gray", "rgb24", {.filter = true}, {}, false},
    {"FieldsKeptApart",
     "yuv420p",
     "rgb24",
     {.interlaced = true},
     {"zeliYCbCr420ToCbYCr422_Interlace_8u_P3C2R", "zeliCbYCr422ToRGB_8u_C2C3R"}},
    {"GammaInside", "rgb24", "uyvy422", {.gamma = "forward"}, {"zeliRGBToCbYCr422Gamma_8u_C3C2R"}},
    {"GammaBefore", "rgb24", "nv12", {.gamma = "inverse"}, {"zeliGammaInv_8u_C3R", "zeliRGBToYCbCr420_8u_C3P2R"}},
    {"WordsDithered", "yuv24", "rgb565le", {.dither = "bayer"}, {"zeliYCbCrToBGR565Dither_8u16u_C3R"}},
    {"LevelsBeforeWords",
     "bgr24",
     "rgb565le",
     {.dither = "stucki", .levels = 32},
     {"zeliReduceBits_8u_C3R", "zeliBGRToBGR565_8u16u_C3R"}},
    {"MeansInsteadOfFolds", "yuv411p", "yuv420p", {}, {"zeliYCbCr411To420_8u_P3R"}},
    {"Levels", "gray", "gray", {.levels = 4}, {"zeliReduceBits_8u_C1R"}},
    {"Threshold", "gray", "monob", {.threshold = 9}, {"zeliReduceBits_8u1u_C1R"}},
    {"Ahd", "bayer_grbg8", "rgb24", {.demosaic = "ahd"}, {"zeliDemosaicAHD_8u_C1C3R"}},
    {"Bilinear", "bayer_grbg16le", "rgb48le", {}, {"zeliCFAToRGB_16u_C1C3R"}},
    {"Tones", "grayf32le", "gray", {.toneMap = "mean"}, {"zeliToneMapMean_32f8u_C1R"}},
    {"TonesNotUnasked", "grayf32le", "gray", {}, {"zeliReduceBits_32f8u_C1R"}},
    {"Weights", "rgb24", "gray", {.weights = {1, 0, 0}}, {"zeliColorToGray_8u_C3C1R"}},
    {"Twist", "rgb24", "rgb24", {.twist = std::vector<double>(12)}, {"zeliColorTwist32f_8u_C3R"}},
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.from << " to " << c.to; }

class Ways : public testing::TestWithParam<Case> {};

TEST_P(Ways, AreTheExpected) {
    const Case& c = GetParam();
    const auto way = findWay(formatNamed(c.from), formatNamed(c.to), c.wishes);
    ASSERT_EQ(way.has_value(), c.isReachable);
    if (!way) {
        EXPECT_THROW(wayOrRefusal(formatNamed(c.from), formatNamed(c.to), c.wishes), NoWayError);
        return;
    }
    for (size_t i = 0; i < c.functions.size(); ++i) {
        ASSERT_LT(i, way->size());
        EXPECT_EQ((*way)[i].moves() ? "" : nameOf((*way)[i]), c.functions[i]);
    }
    EXPECT_EQ(way->size(), c.functions.size()) << describe(*way);
}

INSTANTIATE_TEST_SUITE_P(Known, Ways, testing::ValuesIn(cases), [](const auto& i) { return std::string(i.param.name); });

// Alpha is kept wherever it can be: no format on the way is without, and no function leaves it out.
TEST(AllWays, KeepAlphaOfBytes) {
    for (const char* from : {"rgba", "bgra", "gbrap", "hlsa32", "hlsap", "yuva32", "rgba64le", "bgraf32le"}) {
        for (const char* to : {"rgba", "bgra", "gbrap", "hlsa32", "hlsap", "yuva32", "hsva32", "xyza32"}) {
            const auto way = findWay(formatNamed(from), formatNamed(to), {});
            ASSERT_TRUE(way) << from << to;
            for (const Step& step : *way) {
                EXPECT_TRUE(hasAlpha(step.targetFormat())) << describe(*way);
                EXPECT_TRUE(step.alpha == Alpha::written || step.alpha == Alpha::copied) << describe(*way);
            }
        }
    }
}

// Of all pairs of formats: the steps fit together, by the one matrix, and where a single function leads, it is taken.
TEST(AllWays, FitTogether) {
    int count = 0;
    for (const Format& from : catalog::formats()) {
        for (const Format& to : catalog::formats()) {
            const auto way = findWay(canonical(from), canonical(to), {});
            if (!way || way->empty()) continue;
            ++count;
            int format = numberOf(canonical(from));
            for (const Step& step : *way) {
                ASSERT_EQ(step.source, format) << describe(*way);
                ASSERT_TRUE(!step.conversion || step.conversion->matrix.empty() || step.conversion->matrix == "601")
                    << describe(*way);
                ASSERT_TRUE(!step.isByVideo || step.sourceFormat().description.depth) << describe(*way);
                format = step.target;
                const bool endsInGray = from.model == Model::gray || to.model == Model::gray;
                ASSERT_TRUE(endsInGray || step.targetFormat().model != Model::gray) << describe(*way);
            }
            ASSERT_EQ(format, numberOf(canonical(to)));
            for (const catalog::Conversion& c : catalog::conversions()) {
                const Function& f = catalog::functions()[c.function];
                const bool isPlain = c.method.empty() && c.verb.empty() && (c.matrix.empty() || c.matrix == "601");
                if (isPlain && f.takesSteps && f.sourcePlanes && c.source == numberOf(canonical(from)) && c.target == format) {
                    ASSERT_EQ(way->size(), 1u) << describe(*way);
                }
            }
        }
    }
    EXPECT_GT(count, 4000);
}

TEST(Refusal, ListsWhatIsReachable) {
    try {
        wayOrRefusal(formatNamed("yuv420p"), formatNamed("bayer_rggb8"), {});
        FAIL();
    } catch (const NoWayError& e) {
        const std::string text = e.what();
        EXPECT_NE(text.find(" nv12 "), text.npos) << text;
        EXPECT_EQ(text.find(" bayer_rggb8 ", text.find("Reachable")), text.npos) << text;
    }
}

}  // namespace
}  // namespace tool
