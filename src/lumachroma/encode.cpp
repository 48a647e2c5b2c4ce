// RGB to YCbCr with subsampled chroma. Luma is computed for each pixel. Chroma is computed once for each site, from the sums of
// the channels over its pixels: a box average, with the matrix last. A site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels
// (4:1:1).
#include "lumachroma/encode_pairs.h"
#include "lumachroma/encoding.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// From the outer channels' differences; `firstFrom` names the channel whose difference comes first.
enum class Outer { a, c };

template <class Product, int shift, Outer firstFrom>
class DifferenceChroma {
  public:
    struct Constants {
        DifferenceConstants fromA, fromC;
    };
    static constexpr int weight = 32;  // of the sums

    ZEL_INLINE explicit DifferenceChroma(const Constants& k) : fromA_(k.fromA), fromC_(k.fromC) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const Words fromA = (Words)(fromA_(a, c, b) >> shift), fromC = (Words)(fromC_(c, a, b) >> shift);
        return firstFrom == Outer::a ? ChromaPair{fromA, fromC} : ChromaPair{fromC, fromA};
    }

  private:
    Difference<Product> fromA_, fromC_;
};

template <int shift>
class ExactChroma {
  public:
    struct Constants {
        ExactConstants first, second;
    };
    static constexpr int weight = 1;

    ZEL_INLINE explicit ExactChroma(const Constants& k) : first_(k.first), second_(k.second) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const ChannelPairs pairs(a, b, c);
        return {first_.template at<shift>(pairs), second_.template at<shift>(pairs)};
    }

  private:
    ExactSum first_, second_;
};

// Sites of four pixels of one row.
template <class From, class Luma, class Chroma>
struct QuadKernel {
    using Constants = EncodeConstants<Luma, Chroma>;
    static constexpr int sites = blockPixels / 4;

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit QuadKernel(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = From::load(row, block);
        storeVector(row.out[0] + block * blockPixels, luma(t));
        const ChromaPair pair = chroma(sums(t.a), sums(t.b), sums(t.c));
        storeQuarters(row.out[1] + block * sites, row.out[2] + block * sites, packBytes(pair.first, pair.second));
    }

  private:
    // Each lane has its four sums twice.
    ZEL_INLINE static Words sums(Bytes x) {
        const Dwords quads = mulAddPairs(pairSums<Chroma::weight>(x), splatWord(1));
        return packWords(quads, quads);
    }
};

// Rules by geometry and channel order. The shift of a truncated or rounded chroma rule goes with the pixels of a site.
using WordLuma = TruncatedLuma<7>;
using PackedLuma = TruncatedLuma<8>;
using Word420 = DifferenceChroma<Floored, 7, Outer::a>;
using Word422 = DifferenceChroma<Floored, 6, Outer::a>;
using Rounded420 = DifferenceChroma<Rounded, 6, Outer::c>;
using Rounded411 = DifferenceChroma<Rounded, 6, Outer::a>;
using Exact420 = ExactChroma<18>;
using Exact422 = ExactChroma<17>;

constexpr TruncatedLumaConstants wordLumaRgb{8422, 16515, 3212, 2112}, wordLumaBgr{3212, 16515, 8422, 2112};
// 128.125 at the scale of the shift that follows.
constexpr int16_t bias420Word = 16400, bias422Word = 8200;
constexpr DifferenceConstants fromBlue(int16_t bias) { return {.own = 28770, .other = 9699, .green = 19071, .bias = bias}; }
constexpr DifferenceConstants fromRed(int16_t bias) { return {.own = 28770, .other = 4653, .green = 24117, .bias = bias}; }
constexpr DifferenceConstants roundedFromBlue(int16_t bias) { return {.own = 7193, .other = 2425, .green = 4768, .bias = bias}; }
constexpr DifferenceConstants roundedFromRed(int16_t bias) { return {.own = 7193, .other = 1163, .green = 6029, .bias = bias}; }

constexpr EncodeConstants<WordLuma, Word420> word420Bgr{wordLumaBgr, {fromBlue(bias420Word), fromRed(bias420Word)}};
constexpr EncodeConstants<WordLuma, Word420> word420Rgb{wordLumaRgb, {fromRed(bias420Word), fromBlue(bias420Word)}};
constexpr EncodeConstants<WordLuma, Word422> word422Bgr{wordLumaBgr, {fromBlue(bias422Word), fromRed(bias422Word)}};
constexpr EncodeConstants<WordLuma, Word422> word422Rgb{wordLumaRgb, {fromRed(bias422Word), fromBlue(bias422Word)}};

// The biases hold 2 of the 32 that would round: the results truncate, and are meant to.
constexpr EncodeConstants<RoundedLuma, Rounded420> rounded420Rgb{
    {4211, 8258, 1606, 16 * 64 + 2}, {.fromA = roundedFromRed(128 * 64 + 2), .fromC = roundedFromBlue(128 * 64 + 2)}};
// Here nothing is added before the shift, and that is meant too.
constexpr EncodeConstants<RoundedLuma, Rounded411> rounded411Bgr{
    {1606, 8258, 4211, 16 * 64}, {.fromA = roundedFromBlue(128 * 64), .fromC = roundedFromRed(128 * 64)}};

constexpr ExactConstants exactCb(Outer red, int32_t bias) {
    return red == Outer::a ? exact(-9699, -19071, 28770, bias) : exact(28770, -19071, -9699, bias);
}
constexpr ExactConstants exactCr(Outer red, int32_t bias) {
    return red == Outer::a ? exact(28770, -24117, -4653, bias) : exact(-4653, -24117, 28770, bias);
}
constexpr ExactConstants exactY(Outer red, int32_t bias, int32_t oddBias) {
    return red == Outer::a ? exact(16843, 33030, 6423, bias, oddBias) : exact(6423, 33030, 16843, bias, oddBias);
}

// The sums' biases hold 128 and an eighth, not a half: site averages are rounded down more often than up, and are meant to be.
constexpr int32_t lumaBias = 0x108000, lumaBiasTruncated = 0x100000, bias420 = 0x2008000, bias422 = 0x1004000,
                  bias422Packed = 0x1010000;

template <class Chroma>
constexpr EncodeConstants<ExactPixels, Chroma> exactCbCr(Outer red, int32_t bias, int32_t oddLumaBias = lumaBias) {
    return {exactY(red, lumaBias, oddLumaBias), {exactCb(red, bias), exactCr(red, bias)}};
}
template <class Chroma>
constexpr EncodeConstants<ExactPixels, Chroma> exactCrCb(Outer red, int32_t bias, int32_t oddLumaBias = lumaBias) {
    return {exactY(red, lumaBias, oddLumaBias), {exactCr(red, bias), exactCb(red, bias)}};
}

constexpr auto exact420RgbCbCr = exactCbCr<Exact420>(Outer::a, bias420), exact420RgbCrCb = exactCrCb<Exact420>(Outer::a, bias420);
constexpr auto exact420Bgr = exactCbCr<Exact420>(Outer::c, bias420);
constexpr auto exact422Rgb = exactCrCb<Exact422>(Outer::a, bias422), exact422Bgr = exactCbCr<Exact422>(Outer::c, bias422);

// Packed 4:2:2 from RGB: luma of the blocks truncates, and in the tail the second pixel of a pair does: only the first one is
// rounded.
constexpr EncodeConstants<PackedLuma, Exact422> packedCbCr{{16843, 33030, 6423, 16 * 256},
                                                           {exactCb(Outer::a, bias422Packed), exactCr(Outer::a, bias422Packed)}};
constexpr EncodeConstants<PackedLuma, Exact422> packedCrCb{{16843, 33030, 6423, 16 * 256},
                                                           {exactCr(Outer::a, bias422Packed), exactCb(Outer::a, bias422Packed)}};
constexpr auto packedTailCbCr = exactCbCr<Exact422>(Outer::a, bias422Packed, lumaBiasTruncated);
constexpr auto packedTailCrCb = exactCrCb<Exact422>(Outer::a, bias422Packed, lumaBiasTruncated);

// The columns of the block rules. The odd terms are meant: in a row of 48 pixels the last 16 of 4:2:2 all follow the tail rule.
constexpr int columns422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }
constexpr int columns420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
constexpr int columns411Rounded(int width) { return (width & ~31) + (width & 16); }

constexpr Conversion encode420(Layout from, Layout to, Kernel block, Kernel tail, int (*columns)(int)) {
    return {.site = {2, 2},
            .from = from,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = columns,
            .minimum = {2, 2},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode411(Layout from, Kernel block, Kernel tail, int (*columns)(int)) {
    return {.site = {4, 1},
            .from = from,
            .to = planes411,
            .block = block,
            .tail = tail,
            .blockColumns = columns,
            .minimum = {4, 1},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode422(Layout from, Layout to, Kernel block, Kernel tail, OddSize oddSize = OddSize::accepted) {
    return {.site = {2, 1},
            .from = from,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = columns422,
            .minimum = {2, 1},
            .oddSize = oddSize};
}

// A pixel counted twice is a site of its own, whose second half is dropped: Y and the first chroma sample stay.
inline void repeatPixel(uint8_t* site, const uint8_t* pixel, int siteBytes, bool) {
    for (int i = 0; i < siteBytes; ++i) site[i] = pixel[i % (siteBytes / 2)];
}
constexpr Conversion encodePacked422(Layout from, Kernel block, Kernel tail) {
    return {.site = {2, 1},
            .from = from,
            .to = packed422,
            .block = block,
            .tail = tail,
            .blockColumns = wholeBlocks<8>,
            .minimum = {2, 1},
            .oddPixel = {repeatPixel, tail, tail}};
}

template <class From, class To>
constexpr Kernel rounded420 = kernel<EncodePairs<2, From, SiteMatrix<RoundedLuma, Rounded420>, To>>(rounded420Rgb);
template <class From, const auto& constants>
constexpr Kernel word420 = kernel<EncodePairs<2, From, SiteMatrix<WordLuma, Word420>, ToChromaPlanes>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel exact420 = kernel<EncodePairs<2, From, SiteMatrix<ExactPixels, Exact420>, To>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel word422 = kernel<EncodePairs<1, From, SiteMatrix<WordLuma, Word422>, To>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel exact422 = kernel<EncodePairs<1, From, SiteMatrix<ExactPixels, Exact422>, To>>(constants);
template <class From, const auto& constants>
constexpr Kernel packed = kernel<EncodePairs<1, From, SiteMatrix<PackedLuma, Exact422>, ToPackedPairs>>(constants);
template <class From, const auto& constants>
constexpr Kernel packedTail = exact422<From, ToPackedPairs, constants>;
template <class From>
constexpr Kernel exact411 = kernel<QuadKernel<From, ExactPixels, Exact420>>(exact420Bgr);

constexpr Conversion bgr24To420 =
    encode420(rgb24Two, planes420, word420<From3, word420Bgr>, exact420<From3, ToChromaPlanes, exact420Bgr>, columns420);
constexpr Conversion bgr32To420 =
    encode420(rgb32Two, planes420, word420<From4, word420Bgr>, exact420<From4, ToChromaPlanes, exact420Bgr>, columns420);

// The same kernels write Cr into the second plane and Cb into the third.
constexpr Conversion withChromaExchanged(Conversion c) {
    const Stream third = c.to.streams[2];
    c.to.streams[2] = c.to.streams[3];
    c.to.streams[3] = third;
    return c;
}

}  // namespace

namespace rows {

constexpr Conversion zeliRGBToYCbCr420_8u_C3P3R = encode420(rgb24Two, planes420, rounded420<From3, ToChromaPlanes>,
                                                            exact420<From3, ToChromaPlanes, exact420RgbCbCr>, wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr420_8u_C3P2R =
    encode420(rgb24Two, semiPlanar420, rounded420<From3, ToChromaInterleaved>,
              exact420<From3, ToChromaInterleaved, exact420RgbCbCr>, wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr420_8u_C4P2R =
    encode420(rgb32Two, semiPlanar420, rounded420<From4, ToChromaInterleaved>,
              exact420<From4, ToChromaInterleaved, exact420RgbCbCr>, wholeBlocks<8>);
constexpr Conversion zeliBGRToYCbCr420_8u_C3P3R = bgr24To420;
constexpr Conversion zeliBGRToYCrCb420_8u_C3P3R = withChromaExchanged(bgr24To420);
constexpr Conversion zeliBGRToYCbCr420_8u_AC4P3R = bgr32To420;
constexpr Conversion zeliBGRToYCrCb420_8u_AC4P3R = withChromaExchanged(bgr32To420);
constexpr Conversion zeliRGBToYCrCb420_8u_AC4P3R =
    encode420(rgb32Two, planes420, word420<From4, word420Rgb>, exact420<From4, ToChromaPlanes, exact420RgbCrCb>, columns420);

constexpr Conversion zeliBGRToYCbCr411_8u_C3P3R =
    encode411(rgb24Quad, kernel<QuadKernel<From3, RoundedLuma, Rounded411>>(rounded411Bgr), exact411<From3>, columns411Rounded);
constexpr Conversion zeliBGRToYCbCr411_8u_AC4P3R =
    encode411(rgb32Quad, kernel<QuadKernel<From4, WordLuma, Word420>>(word420Bgr), exact411<From4>, wholeBlocks<32>);

constexpr Conversion zeliRGBToYCbCr422_8u_C3C2R =
    encodePacked422(rgb24Pair, packed<From3, packedCbCr>, packedTail<From3, packedTailCbCr>);
constexpr Conversion zeliRGBToYCrCb422_8u_C3C2R =
    encodePacked422(rgb24Pair, packed<From3, packedCrCb>, packedTail<From3, packedTailCrCb>);
constexpr Conversion zeliRGBToYCbCr422_8u_P3C2R =
    encodePacked422(rgbPlanesPair, packed<FromPlanes, packedCbCr>, packedTail<FromPlanes, packedTailCbCr>);
constexpr Conversion zeliRGBToYCrCb422_8u_P3C2R =
    encodePacked422(rgbPlanesPair, packed<FromPlanes, packedCrCb>, packedTail<FromPlanes, packedTailCrCb>);

constexpr Conversion zeliRGBToYCbCr422_8u_C3P3R =
    encode422(rgb24Pair, planes422Crossed, word422<From3, ToChromaPlanes, word422Rgb>,
              exact422<From3, ToChromaPlanes, exact422Rgb>, OddSize::warned);
constexpr Conversion zeliBGRToYCbCr422_8u_C3P3R =
    encode422(rgb24Pair, planes422, word422<From3, ToChromaPlanes, word422Bgr>, exact422<From3, ToChromaPlanes, exact422Bgr>);
constexpr Conversion zeliBGRToYCbCr422_8u_AC4P3R =
    encode422(rgb32Pair, planes422, word422<From4, ToChromaPlanes, word422Bgr>, exact422<From4, ToChromaPlanes, exact422Bgr>);
constexpr Conversion zeliBGRToYCbCr422_8u_C3C2R =
    encode422(rgb24Pair, packed422, word422<From3, ToPackedPairs, word422Bgr>, exact422<From3, ToPackedPairs, exact422Bgr>);
constexpr Conversion zeliBGRToYCbCr422_8u_AC4C2R =
    encode422(rgb32Pair, packed422, word422<From4, ToPackedPairs, word422Bgr>, exact422<From4, ToPackedPairs, exact422Bgr>);

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_encode ~, 1
#define ZEL_GROUP encode
#include "frame/table.h"
