// RGB to studio-range YCbCr with subsampled chroma (ITU-R BT.601): rules of chroma sites, kernels and conversions by geometry. A
// site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels (4:1:1).
#pragma once

#include "lumachroma/encode_pairs.h"
#include "lumachroma/encoding.h"

namespace zel::ZEL_LEVEL {

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
struct EncodeQuads {
    using Constants = EncodeConstants<Luma, Chroma>;
    static constexpr int sites = blockPixels / 4;

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit EncodeQuads(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

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

// Rules by geometry and channel order. The shift of a truncated chroma rule goes with the pixels of a site.
using WordLuma = TruncatedLuma<7>;
using Word420 = DifferenceChroma<Floored, 7, Outer::a>;
using Word422 = DifferenceChroma<Floored, 6, Outer::a>;
using Exact420 = ExactChroma<18>;
using Exact422 = ExactChroma<17>;

inline constexpr TruncatedLumaConstants wordLumaRgb{8422, 16515, 3212, 2112}, wordLumaBgr{3212, 16515, 8422, 2112};
// 128.125 at the scale of the shift that follows.
inline constexpr int16_t bias420Word = 16400, bias422Word = 8200;
constexpr DifferenceConstants fromBlue(int16_t bias) { return {.own = 28770, .other = 9699, .green = 19071, .bias = bias}; }
constexpr DifferenceConstants fromRed(int16_t bias) { return {.own = 28770, .other = 4653, .green = 24117, .bias = bias}; }

inline constexpr EncodeConstants<WordLuma, Word420> word420Bgr{wordLumaBgr, {fromBlue(bias420Word), fromRed(bias420Word)}};
inline constexpr EncodeConstants<WordLuma, Word420> word420Rgb{wordLumaRgb, {fromRed(bias420Word), fromBlue(bias420Word)}};
inline constexpr EncodeConstants<WordLuma, Word422> word422Bgr{wordLumaBgr, {fromBlue(bias422Word), fromRed(bias422Word)}};
inline constexpr EncodeConstants<WordLuma, Word422> word422Rgb{wordLumaRgb, {fromRed(bias422Word), fromBlue(bias422Word)}};

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
inline constexpr int32_t lumaBias = 0x108000, lumaBiasTruncated = 0x100000, bias420 = 0x2008000, bias422 = 0x1004000,
                         bias422Packed = 0x1010000;

template <class Chroma>
constexpr EncodeConstants<ExactPixels, Chroma> exactCbCr(Outer red, int32_t bias, int32_t oddLumaBias = lumaBias) {
    return {exactY(red, lumaBias, oddLumaBias), {exactCb(red, bias), exactCr(red, bias)}};
}
template <class Chroma>
constexpr EncodeConstants<ExactPixels, Chroma> exactCrCb(Outer red, int32_t bias, int32_t oddLumaBias = lumaBias) {
    return {exactY(red, lumaBias, oddLumaBias), {exactCr(red, bias), exactCb(red, bias)}};
}

inline constexpr auto exact420RgbCbCr = exactCbCr<Exact420>(Outer::a, bias420),
                      exact420RgbCrCb = exactCrCb<Exact420>(Outer::a, bias420);
inline constexpr auto exact420Bgr = exactCbCr<Exact420>(Outer::c, bias420);
inline constexpr auto exact422Rgb = exactCrCb<Exact422>(Outer::a, bias422), exact422Bgr = exactCbCr<Exact422>(Outer::c, bias422);

// The columns of the block rules. The odd terms are meant: in a row of 48 pixels the last 16 of 4:2:2 all follow the tail rule.
constexpr int columns422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }
constexpr int columns420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }

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

// The same kernels write Cr into the second plane and Cb into the third.
constexpr Conversion withChromaExchanged(Conversion c) {
    const Stream third = c.to.streams[2];
    c.to.streams[2] = c.to.streams[3];
    c.to.streams[3] = third;
    return c;
}

template <class From, const auto& constants>
constexpr Kernel word420 = kernel<EncodePairs<2, From, SiteMatrix<WordLuma, Word420>, ToChromaPlanes>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel exact420 = kernel<EncodePairs<2, From, SiteMatrix<ExactPixels, Exact420>, To>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel word422 = kernel<EncodePairs<1, From, SiteMatrix<WordLuma, Word422>, To>>(constants);
template <class From, class To, const auto& constants>
constexpr Kernel exact422 = kernel<EncodePairs<1, From, SiteMatrix<ExactPixels, Exact422>, To>>(constants);
template <class From>
constexpr Kernel exact411 = kernel<EncodeQuads<From, ExactPixels, Exact420>>(exact420Bgr);

}  // namespace zel::ZEL_LEVEL
