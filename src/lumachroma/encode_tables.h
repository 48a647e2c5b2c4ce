// RGB to YCbCr with subsampled chroma: rules by geometry and channel order with their constants, and conversions by geometry. A
// site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels (4:1:1).
#pragma once

#include "lumachroma/kernels/encode_lifted.h"
#include "lumachroma/kernels/encode_pairs.h"
#include "lumachroma/kernels/encode_quads.h"
#include "lumachroma/rules/site_encoding.h"

namespace zel::ZEL_LEVEL {

// Rules by geometry and channel order. The shift of a truncated chroma rule goes with the pixels of a site and the scale of its
// weights.
using WordLuma = TruncatedLuma<7>;
using Word420 = DifferenceChroma<Floored, 7, Outer::a>;
using Word422 = DifferenceChroma<Floored, 6, Outer::a>;
template <Outer firstFrom>
using Exact420 = ExactChroma<18, firstFrom>;
template <Outer firstFrom>
using Exact422 = ExactChroma<17, firstFrom>;

// Chroma rules take channel a's and channel c's difference: of RGB those are Cr and Cb, of BGR Cb and Cr.
inline constexpr Outer rgb = Outer::a, bgr = Outer::c;  // where red is

template <class Chroma, Outer red>
constexpr typename Chroma::Constants differences(const EncodeMatrix& m, int bias) {
    const DifferenceConstants cb = fromBlue(m, bias), cr = fromRed(m, bias);
    return red == rgb ? typename Chroma::Constants{cr, cb} : typename Chroma::Constants{cb, cr};
}

template <class Luma, class Chroma, Outer red>
constexpr EncodeConstants<Luma, Chroma> word(const EncodeMatrix& m, int lumaBias, int chromaBias) {
    return {truncatedLuma(m, red, lumaBias), differences<Chroma, red>(m, chromaBias)};
}

template <class Chroma, Outer red>
constexpr typename Chroma::Constants exactDifferences(const EncodeMatrix& m, int32_t cbBias, int32_t crBias) {
    const ExactChromaWeights cb{int16_t(-m.cb.r), int16_t(-m.cb.g), cbBias}, cr{int16_t(-m.cr.b), int16_t(-m.cr.g), crBias};
    return red == rgb ? typename Chroma::Constants{cr, cb} : typename Chroma::Constants{cb, cr};
}

template <class Luma, class Chroma, Outer red>
constexpr EncodeConstants<Luma, Chroma> exact(const EncodeMatrix& m, int32_t lumaBias, int32_t chromaBias) {
    return {exactSum(m.y, red, lumaBias), exactDifferences<Chroma, red>(m, chromaBias, chromaBias)};
}

// 16.5 and 128.125 at the scale of the shift that follows. The biases of chroma hold an eighth, not a half: site averages are
// rounded down more often than up. Meant: with a half, some chroma would rise by one.
inline constexpr int halfUp = 2112, bias420Word = 16400, bias422Word = 8200;
inline constexpr int32_t lumaBias = 0x108000, bias420 = 0x2008000, bias422 = 0x1004000;

inline constexpr auto word420Rgb = word<WordLuma, Word420, rgb>(bt601::encodeWord, halfUp, bias420Word);
inline constexpr auto word420Bgr = word<WordLuma, Word420, bgr>(bt601::encodeWord, halfUp, bias420Word);
inline constexpr auto word422Rgb = word<WordLuma, Word422, rgb>(bt601::encodeWord, halfUp, bias422Word);
inline constexpr auto word422Bgr = word<WordLuma, Word422, bgr>(bt601::encodeWord, halfUp, bias422Word);
// With Cb first or with Cr first.
inline constexpr auto exact420RgbCbCr = exact<ExactPixels, Exact420<Outer::c>, rgb>(bt601::encode, lumaBias, bias420);
inline constexpr auto exact420RgbCrCb = exact<ExactPixels, Exact420<Outer::a>, rgb>(bt601::encode, lumaBias, bias420);
inline constexpr auto exact420Bgr = exact<ExactPixels, Exact420<Outer::a>, bgr>(bt601::encode, lumaBias, bias420);
inline constexpr auto exact422RgbCbCr = exact<ExactPixels, Exact422<Outer::c>, rgb>(bt601::encode, lumaBias, bias422);
inline constexpr auto exact422RgbCrCb = exact<ExactPixels, Exact422<Outer::a>, rgb>(bt601::encode, lumaBias, bias422);
inline constexpr auto exact422Bgr = exact<ExactPixels, Exact422<Outer::a>, bgr>(bt601::encode, lumaBias, bias422);

// The columns of the block rules: in a row of 48 pixels the last 16 of 4:2:2 all follow the tail rule. Meant: without the odd
// terms some columns would change their rule.
constexpr int columns422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }
constexpr int columns420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
// The kernels of block and tail, of the rules that their constants are for.
struct Rules {
    Kernel block, tail;
};

// Pixels of four bytes can be lifted for rules in words.
template <class From, class Luma, class Chroma>
inline constexpr bool canBeLifted = false;
template <int shift, class Product, int chromaShift, Outer firstFrom>
inline constexpr bool canBeLifted<From4, TruncatedLuma<shift>, DifferenceChroma<Product, chromaShift, firstFrom>> = true;
template <class Product, int shift, Outer firstFrom>
inline constexpr bool canBeLifted<From4, RoundedLuma, DifferenceChroma<Product, shift, firstFrom>> = true;

template <int rows, class From, class To, class Luma, class Chroma>
constexpr Kernel pairKernel(const EncodeConstants<Luma, Chroma>& constants) {
    if constexpr (canBeLifted<From, Luma, Chroma> && LiftedFour::pairsPay(rows))
        return kernel<EncodeLifted<rows, LiftedFour, Luma, Chroma, To>>(constants);
    else
        return kernel<EncodePairs<rows, From, SiteMatrix<Luma, Chroma>, To>>(constants);
}
template <class From, class Luma, class Chroma>
constexpr Kernel quadKernel(const EncodeConstants<Luma, Chroma>& constants) {
    return kernel<QuadKernel<From, Luma, Chroma>>(constants);
}

template <class From, class To>
constexpr Rules rules420(const auto& block, const auto& tail) {
    return {pairKernel<2, From, To>(block), pairKernel<2, From, To>(tail)};
}
template <class From, class To>
constexpr Rules rules422(const auto& block, const auto& tail) {
    return {pairKernel<1, From, To>(block), pairKernel<1, From, To>(tail)};
}
template <class From>
constexpr Rules rules411(const auto& block) {
    return {quadKernel<From>(block), quadKernel<From>(exact420Bgr)};
}

constexpr Conversion encode420(Layout from, Layout to, Rules rules, int (*columns)(int)) {
    return {.site = {2, 2},
            .from = from,
            .to = to,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns,
            .minimum = {2, 2},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode411(Layout from, Rules rules, int (*columns)(int)) {
    return {.site = {4, 1},
            .from = from,
            .to = planes411,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns,
            .minimum = {4, 1},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode422(Layout from, Layout to, Rules rules, OddSize oddSize = OddSize::accepted) {
    return {.site = {2, 1},
            .from = from,
            .to = to,
            .block = rules.block,
            .tail = rules.tail,
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

}  // namespace zel::ZEL_LEVEL
