// Colour bars and a synthetic photograph through the conversions of zimg and swscale, which give what these differ by and why.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "harness/random.h"
#include "video/model.h"
#ifdef ZELVIDEO_SWSCALE
extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}
#endif
#ifdef ZELVIDEO_ZIMG
#include <zimg.h>
#endif

namespace video {
namespace {

constexpr ZelSize size{192, 96};

ZelvFormat planar(const char* components, int sampling, int depth, int matrix, int range) {
    ZelvFormat f{zelvPlanar, "", sampling, depth, zelvLowBits, matrix, range, zelvLeft, 0, 0};
    std::snprintf(f.components, sizeof f.components, "%s", components);
    return f;
}

class Image {
  public:
    explicit Image(const ZelvFormat& f) : picture{f, size, {}, {}} {
        for (int p = 0; p < planeCount(f); ++p) {
            picture.steps[p] = (rowBytes(f, p, size.width) + 63) / 64 * 64;
            const size_t bytes = static_cast<size_t>(picture.steps[p]) * size.height;
            memory_[p].reset(static_cast<uint8_t*>(std::aligned_alloc(64, bytes)));
            std::memset(memory_[p].get(), 0, bytes);
            picture.planes[p] = memory_[p].get();
        }
    }
    Picture picture;

  private:
    struct Free {
        void operator()(uint8_t* p) const { std::free(p); }
    };
    std::unique_ptr<uint8_t, Free> memory_[4];
};

// Bars above, below them slopes of light with noise and some edges.
void paint(const Image& image) {
    harness::Random random(11);
    const ZelvFormat& f = image.picture.format;
    const double top = std::ldexp(1.0, f.depth) - 1;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            for (int c = 0; c < 3; ++c) {
                double value = (7 - x / 24) >> (c == 1 ? 2 : c == 0 ? 1 : 0) & 1 ? 0.75 : 0;
                if (y >= size.height / 2) {
                    value = 0.5 + 0.3 * std::sin(x * 0.05 + c) * std::cos(y * 0.07 - c) + 0.1 * ((x / 40 + y / 20) % 2);
                    value += static_cast<double>(random.next() >> 40) / (1 << 24) * 0.05;
                }
                setSample(image.picture, Channel(c), x, y, static_cast<uint32_t>(std::lround(value * top)));
            }
}

struct Difference {
    int most = 0;
    double mean = 0;
};
Difference between(const Image& a, const Image& b) {
    Difference d;
    const ZelvFormat& f = a.picture.format;
    int64_t sum = 0, count = 0;
    for (int c = 0; c < 3; ++c) {
        const int across = c > 0 && !isRgb(f) ? sitesAcross(f) : 1, down = c > 0 && !isRgb(f) ? sitesDown(f) : 1;
        for (int y = 0; y < size.height / down; ++y)
            for (int x = 0; x < size.width / across; ++x) {
                const int one = std::abs(static_cast<int>(sample(a.picture, Channel(c), x, y)) -
                                         static_cast<int>(sample(b.picture, Channel(c), x, y)));
                d.most = std::max(d.most, one);
                sum += one;
                ++count;
            }
    }
    d.mean = static_cast<double>(sum) / static_cast<double>(count);
    return d;
}

void ours(const Image& from, const Image& to, const ZelvOptions& options = {}) {
    ZelvPlan plan;
    const Picture &f = from.picture, &t = to.picture;
    ASSERT_EQ(zelvMakePlan(&plan, &f.format, &t.format, &options), zelStsNoErr);
    ASSERT_EQ(zelvConvert(&plan, f.planes.data(), f.steps.data(), t.planes.data(), t.steps.data(), size), zelStsNoErr);
}

struct Stream {
    const char* name;
    int sampling, depth, matrix, range;
};
constexpr Stream streams[] = {
    {"JPEG", zelv420, 8, 5, zelvFull},
    {"JPEG 4:4:4", zelv444, 8, 5, zelvFull},
    {"709 of 8 bits", zelv420, 8, 1, zelvLimited},
    {"709 of 10", zelv422, 10, 1, zelvLimited},
    {"2020 of 10", zelv420, 10, 9, zelvLimited},
    {"2020 of 12", zelv444, 12, 9, zelvLimited},
};

#ifdef ZELVIDEO_ZIMG
void byZimg(const Image& from, const Image& to) {
    const auto formatOf = [](const ZelvFormat& f) {
        zimg_image_format z;
        zimg_image_format_default(&z, ZIMG_API_VERSION);
        z.width = size.width;
        z.height = size.height;
        z.pixel_type = f.depth > 8 ? ZIMG_PIXEL_WORD : ZIMG_PIXEL_BYTE;
        z.depth = static_cast<unsigned>(f.depth);
        z.subsample_w = sitesAcross(f) == 2;
        z.subsample_h = sitesDown(f) == 2;
        z.color_family = isRgb(f) ? ZIMG_COLOR_RGB : ZIMG_COLOR_YUV;
        z.matrix_coefficients = static_cast<zimg_matrix_coefficients_e>(f.matrix);
        z.pixel_range = f.range == zelvFull ? ZIMG_RANGE_FULL : ZIMG_RANGE_LIMITED;
        z.chroma_location = ZIMG_CHROMA_LEFT;
        return z;
    };
    const zimg_image_format in = formatOf(from.picture.format), out = formatOf(to.picture.format);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter_uv = ZIMG_RESIZE_BILINEAR;
    const std::unique_ptr<zimg_filter_graph, decltype(&zimg_filter_graph_free)> graph(
        zimg_filter_graph_build(&in, &out, &parameters), zimg_filter_graph_free);
    ASSERT_TRUE(graph);
    size_t bytes = 0;
    zimg_filter_graph_get_tmp_size(graph.get(), &bytes);
    const std::unique_ptr<void, decltype(&std::free)> scratch(std::aligned_alloc(64, (bytes + 63) / 64 * 64), std::free);
    zimg_image_buffer_const source{};
    zimg_image_buffer result{};
    source.version = result.version = ZIMG_API_VERSION;
    for (int i = 0; i < 3; ++i) {
        source.plane[i] = {from.picture.planes[i], from.picture.steps[i], ZIMG_BUFFER_MAX};
        result.plane[i] = {to.picture.planes[i], to.picture.steps[i], ZIMG_BUFFER_MAX};
    }
    ASSERT_EQ(zimg_filter_graph_process(graph.get(), &source, &result, scratch.get(), nullptr, nullptr, nullptr, nullptr), 0);
}

// It computes in floats and rounds once to the nearest, halves to even: the two differ by one where the exact value is a half, as
// it is in bars of full range, or at 8 bits within a hundredth of it. Its filter to coarser sites reaches over four rows where
// these lie between rows, so the way there is compared without sites; the way back has them, interpolated.
TEST(VideoPeers, ZimgDiffersByOneAtHalves) {
    for (const Stream& s : streams) {
        const ZelvFormat rgb = planar("RGB", zelv444, s.depth, zelvMatrixRgb, zelvFull);
        const ZelvFormat whole = planar("YUV", zelv444, s.depth, s.matrix, s.range),
                         yuv = planar("YUV", s.sampling, s.depth, s.matrix, s.range);
        const Image picture(rgb), mine(whole), its(whole), sites(yuv), mineBack(rgb), itsBack(rgb);
        paint(picture);
        ours(picture, mine);
        byZimg(picture, its);
        const Difference there = between(mine, its);
        ours(picture, sites, {zelvLinear, zelvSited, zelvRound});
        ours(sites, mineBack, {zelvLinear, zelvSited, zelvRound});
        byZimg(sites, itsBack);
        const Difference back = between(mineBack, itsBack);
        std::printf("zimg, %s: at most %d, %.4f in the mean; back %d, %.4f\n", s.name, there.most, there.mean, back.most,
                    back.mean);
        EXPECT_LE(there.most, 1) << s.name;
        EXPECT_LE(back.most, 1) << s.name;
        EXPECT_LE(there.mean, s.range == zelvFull ? 0.06 : 0.01) << s.name;
        EXPECT_LE(back.mean, 0.01) << s.name;
    }
}
#endif

#ifdef ZELVIDEO_SWSCALE
void bySwscale(const Image& from, const Image& to) {
    const auto formatOf = [](const ZelvFormat& f) {
        const std::string depth = f.depth > 8 ? std::to_string(f.depth) + "le" : "";
        const std::string sampling = f.sampling == zelv420 ? "420" : f.sampling == zelv422 ? "422" : "444";
        return av_get_pix_fmt((isRgb(f) ? "gbrp" + depth : "yuv" + sampling + "p" + depth).c_str());
    };
    const ZelvFormat &f = from.picture.format, &t = to.picture.format;
    const int flags = SWS_POINT | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
    const std::unique_ptr<SwsContext, decltype(&sws_freeContext)> context(
        sws_getContext(size.width, size.height, formatOf(f), size.width, size.height, formatOf(t), flags, nullptr, nullptr,
                       nullptr),
        sws_freeContext);
    ASSERT_TRUE(context);
    const int matrix = isRgb(f) ? t.matrix : f.matrix;
    const int* const table = sws_getCoefficients(matrix == 1 ? SWS_CS_ITU709 : matrix == 9 ? SWS_CS_BT2020 : SWS_CS_ITU601);
    sws_setColorspaceDetails(context.get(), table, f.range, table, t.range, 0, 1 << 16, 1 << 16);
    sws_scale(context.get(), from.picture.planes.data(), from.picture.steps.data(), 0, size.height, to.picture.planes.data(),
              to.picture.steps.data());
}

// Its coefficients and sums have fewer bits, full range is a second step of its own, and its point sampling takes a site's chroma
// from one pixel: so the way there is compared without sites, and the way back repeats chroma on both sides.
TEST(VideoPeers, SwscaleDiffersByItsFewerBits) {
    for (const Stream& s : streams) {
        const ZelvFormat rgb = planar("GBR", zelv444, s.depth, zelvMatrixRgb, zelvFull);
        const ZelvFormat whole = planar("YUV", zelv444, s.depth, s.matrix, s.range),
                         yuv = planar("YUV", s.sampling, s.depth, s.matrix, s.range);
        const Image picture(rgb), mine(whole), its(whole), sites(yuv), mineBack(rgb), itsBack(rgb);
        paint(picture);
        ours(picture, mine);
        bySwscale(picture, its);
        const Difference there = between(mine, its);
        ours(picture, sites);
        ours(sites, mineBack);
        bySwscale(sites, itsBack);
        const Difference back = between(mineBack, itsBack);
        std::printf("swscale, %s: at most %d, %.4f in the mean; back %d, %.4f\n", s.name, there.most, there.mean, back.most,
                    back.mean);
        const int unit = 1 << (s.depth - 8);
        EXPECT_LE(there.most, 2 * unit) << s.name;
        EXPECT_LE(back.most, 4 * unit) << s.name;
        EXPECT_LE(there.mean, 0.8 * unit) << s.name;
        EXPECT_LE(back.mean, 1.0 * unit) << s.name;
    }
}
#endif

TEST(VideoPeers, OwnWaysThereAndBackKeepThePicture) {
    for (const Stream& s : streams) {
        const ZelvFormat rgb = planar("RGB", zelv444, 8, zelvMatrixRgb, zelvFull);
        const ZelvFormat yuv = planar("YUV", zelv444, s.depth, s.matrix, s.range);
        const Image picture(rgb), there(yuv), back(rgb);
        paint(picture);
        ours(picture, there);
        ours(there, back);
        EXPECT_LE(between(picture, back).most, s.depth == 8 ? 2 : 0) << s.name;
    }
}

}  // namespace
}  // namespace video
