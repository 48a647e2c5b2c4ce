// RGB to analog YUV, at full resolution, 4:2:2 and 4:2:0. Block and tail of a row follow different rules where the table says so:
// a colour may then convert differently at two places of one row. Meant: with one rule for both, the ends of rows would change.
#include "frame/passes.h"
#include "lumachroma/kernels/encode_pairs.h"
#include "lumachroma/rules/analog_encoding.h"
#include "lumachroma/stepless.h"
#include "zelcc/yuv.h"

namespace zel::ZEL_LEVEL {
namespace {

// Four channels a pixel, of which the fourth moves to a plane of its own.
template <class Rule>
struct AlphaPlaneKernel {
    using Constants = typename Rule::Constants;
    static constexpr int sites = blockPixels;

    Rule rule;

    ZEL_INLINE explicit AlphaPlaneKernel(const Constants& k) : rule(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Quad q = Interleaved4::loadFour(row.in[0] + block * blockPixels * 4);
        ToPlanes::store<Rule::order>(row, 0, block, rule({q.a, q.b, q.c}));
        storeVector(row.out[3] + block * blockPixels, q.d);
    }
};

// The last pixel of an odd 4:2:2 row has a scale of its own, 32768, and luma and U that are cut off where V is rounded up. With
// L = 9798 R + 19235 G + 3736 B:
//   Y = L >> 15
//   U = ((((B << 15) - L + 16383) >> 15) 16121 >> 15) + 128, V = sat8(((((R << 15) - L + 32767) >> 15) 28737 >> 15) + 128)
template <bool hasPlanes>
struct SourceOfOne {
    ZEL_INLINE static int channel(const Row& row, int i) { return hasPlanes ? row.in[i][0] : row.in[0][i]; }
};

template <class From, bool toPlanes>
struct LonePixel {
    static constexpr int sites = 1;

    ZEL_INLINE void operator()(const Row& row, size_t) const {
        const int r = From::channel(row, 0), g = From::channel(row, 1), b = From::channel(row, 2);
        const int luma = 9798 * r + 19235 * g + 3736 * b;
        const int u = (((b << 15) - luma + 16383) >> 15) * 16121 >> 15, v = (((r << 15) - luma + 32767) >> 15) * 28737 >> 15;
        row.out[0][0] = uint8_t(luma >> 15);
        (toPlanes ? row.out[1] : row.out[0] + 1)[0] = uint8_t(u + 128);
        if (toPlanes) row.out[2][0] = uint8_t(v < -128 ? 0 : v > 127 ? 255 : v + 128);
    }
};

// Sources have three bytes a pixel or one in each of three planes.
inline void copyPixel(uint8_t* site, const uint8_t* pixel, int siteBytes, bool) {
    for (int i = 0; i < siteBytes / 2; ++i) site[i] = pixel[i];
}

// 4:4:4.
constexpr DirectMatrix::Constants direct{{19595, 38470, 7471, 128}, {-4816, -9469, 14286}, {20152, -16875, -3276}};
// Green of luma is one lower, so that the sum is 65535, and the half keeps gray as it is.
constexpr ExactDirectMatrix::Constants exactDirect{{{19595, 38469, 7471}, 32768},
                                                   exactSum({-4816, -9469, 14286}, Outer::a, (128 << 15) + 16384),
                                                   exactSum({20152, -16875, -3276}, Outer::a, (128 << 15) + 16384)};
constexpr ByteSum<8>::Constants luma65536{19595, 38470, 7471};
constexpr ExactDifferences::Constants exactRounded{luma65536, 32768, 32768};
// Luma is cut off, and differences are rounded from just above a half. Meant: with halves for both,
// luma would rise by one for about half of all colours.
constexpr ExactDifferences::Constants exactTruncated{luma65536, 0, 32767};
constexpr DoubledConstants doubled{{9798, 19235, 3736}, 16121, 28737};

template <class From, class To>
constexpr Kernel directWords = kernel<PixelKernel<From, DirectMatrix, To>>(direct);
template <class From, class To, const auto& constants>
constexpr Kernel exactPixels = kernel<PixelKernel<From, EncodeHalves<ExactDifferences>, To>>(constants);

// Sites.
constexpr EncodeConstants<ExactLuma, ExactSiteDifferences<2>> exact420{{luma65536, 32768},
                                                                       {exactSum({-19595, -38470, -7471}, Outer::a, 131071)}};
constexpr EncodeConstants<ExactLuma, ExactSiteDifferences<1>> exact422{{luma65536, 0},
                                                                       {exactSum({-19595, -38470, -7471}, Outer::a, 65535)}};
template <int rows>
constexpr typename RoundedDifferences<rows>::Constants rounded{{4899, 9617, 1868, 0}, 8061, 14369};

template <class From>
constexpr Kernel exactSites420 =
    kernel<EncodePairs<2, From, SiteMatrix<ExactLuma, ExactSiteDifferences<2>>, ToChromaPlanes>>(exact420);
template <class From, class To>
constexpr Kernel exactPairs = kernel<EncodePairs<1, From, SiteMatrix<ExactLuma, ExactSiteDifferences<1>>, To>>(exact422);
template <class From, class To>
constexpr Kernel doubledPairs = kernel<EncodePairs<1, From, DoubledPairs, To>>(doubled);
template <int rows>
constexpr Kernel roundedSites = kernel<EncodePairs<rows, From3, RoundedDifferences<rows>, ToChromaPlanes>>(rounded<rows>);

constexpr Layout planes4 = layoutOf({{0, 1}, {1, 1}, {2, 1}, {3, 1}});

constexpr Conversion encode444(Layout from, Layout to, Kernel block, Kernel tail, int (*blockColumns)(int)) {
    return {.site = {1, 1}, .from = from, .to = to, .block = block, .tail = tail, .blockColumns = blockColumns};
}

constexpr Conversion keepingAlpha(Kernel rule) {
    return {.site = {1, 1}, .from = packed4, .to = packed4, .block = rule, .keepsAlpha = true};
}

// The plane of alpha is the caller's word: it may be null.
struct ToAlphaPlane : Conversion {
    static constexpr int requiredPlanes = 3;
};
constexpr ToAlphaPlane toAlphaPlane(Kernel block, Kernel tail) {
    return {encode444(packed4, planes4, block, tail, wholeBlocks<8>)};
}

constexpr Conversion encode420(Layout from, Kernel block, Kernel tail = {}) {
    return {.site = {2, 2},
            .from = from,
            .to = planes420,
            .block = block,
            .tail = tail,
            .blockColumns = tail.blocks ? wholeBlocks<16> : nullptr,
            .oddSize = OddSize::warned};
}

template <class From, class To>
constexpr Conversion encode422(Layout from, Layout to, Kernel block = doubledPairs<From, To>) {
    constexpr bool toPlanes = To::hasLumaStreams;
    constexpr Kernel lone = withoutConstants<LonePixel<SourceOfOne<std::is_same_v<From, FromPlanes>>, toPlanes>>;
    return {.site = {2, 1},
            .from = from,
            .to = to,
            .block = block,
            .tail = exactPairs<From, To>,
            .blockColumns = wholeBlocks<16>,
            .oddPixel = {copyPixel, lone, lone}};
}

constexpr Conversion rgb24To422 = encode422<From3, ToChromaPlanes>(rgb24Pair, planes422),
                     rgb24To422Rounded = encode422<From3, ToChromaPlanes>(rgb24Pair, planes422, roundedSites<1>);

}  // namespace

namespace rows {

constexpr Conversion zeliRGBToYUV_8u_C3R =
    encode444(packed3, packed3, directWords<From3, ToPacked3>, exactPixels<From3, ToPacked3, exactTruncated>, wholeBlocks<16>);
constexpr Conversion zeliRGBToYUV_8u_AC4R = keepingAlpha(exactPixels<From4, ToColoursOf4, exactRounded>);
constexpr Conversion zeliRGBToYUV_8u_P3R =
    encode444(planes3, planes3, directWords<FromPlanes, ToPlanes>,
              kernel<PixelKernel<FromPlanes, ExactDirectMatrix, ToPlanes>>(exactDirect), wholeBlocks<4>);
constexpr Conversion zeliRGBToYUV_8u_C3P3R =
    encode444(packed3, planes3, directWords<From3, ToPlanes>, exactPixels<From3, ToPlanes, exactTruncated>, wholeBlocks<8>);
constexpr ToAlphaPlane zeliRGBToYUV_8u_AC4P4R =
    toAlphaPlane(kernel<AlphaPlaneKernel<EncodeHalves<DoubledDifferences>>>(doubled),
                 kernel<AlphaPlaneKernel<EncodeHalves<ExactDifferences>>>(exactRounded));

constexpr Conversion zeliRGBToYUV420_8u_C3P3R = encode420(rgb24Two, roundedSites<2>, exactSites420<From3>);
constexpr Conversion zeliRGBToYUV420_8u_P3R = encode420(rgbPlanesTwo, exactSites420<FromPlanes>);
constexpr Conversion zeliBGRToYUV420_8u_AC4P3R = encode420(rgb32Two, exactSites420<FromReversed<From4>>);
constexpr auto zeliRGBToYUV420_8u_C3P3 = stepless(zeliRGBToYUV420_8u_C3P3R);
constexpr auto zeliRGBToYUV420_8u_P3 = stepless(zeliRGBToYUV420_8u_P3R);

// Alignment picks the arithmetic of the blocks.
constexpr ByAlignment zeliRGBToYUV422_8u_C3P3R = byAlignment(rgb24To422Rounded, rgb24To422);
constexpr Conversion zeliRGBToYUV422_8u_P3R = encode422<FromPlanes, ToChromaPlanes>(rgbPlanesPair, planes422);
constexpr Conversion zeliRGBToYUV422_8u_C3C2R = encode422<From3, ToPackedPairs>(rgb24Pair, packed422);
constexpr auto zeliRGBToYUV422_8u_C3P3 = stepless(zeliRGBToYUV422_8u_C3P3R, 256);
constexpr auto zeliRGBToYUV422_8u_P3 = stepless(zeliRGBToYUV422_8u_P3R, 256);

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_yuv_encode ~, 1
#define ZEL_GROUP yuv_encode
#include "frame/table.h"
