// YCbCr with subsampled chroma to RGB. Chroma is replicated over the pixels of its site; one export interpolates it along the
// row.
#include "frame/passes.h"
#include "lumachroma/by_alignment.h"
#include "lumachroma/kernels/decode_pairs.h"
#include "lumachroma/rules/decoding.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// The same with chroma interpolated along the row: the odd pixel of a site takes the rounded mean of its site and the next. The
// chroma streams come a second time, one site on.
template <class Rule, class To>
struct FilteredKernel {
    using Constants = DecodeConstants<Rule>;
    static constexpr int sites = blockPixels / 2;

    Rule rule;

    ZEL_INLINE explicit FilteredKernel(const Constants& k) : rule(k.rule, k.order) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto samples = [&](int stream) { return loadWidened(row.in[stream] + block * sites); };
        const Words p = samples(2), q = samples(3), pNext = samples(4), qNext = samples(5);
        const auto even = rule.chroma(p, q), odd = rule.chroma((p + pNext + 1) >> 1, (q + qNext + 1) >> 1);
        unrolled<2>([&](int r) ZEL_INLINE_LAMBDA {
            To::template store<Rule::order>(row, r, block, rule.pixels(loadBytes(row.in[r] + block * blockPixels), even, odd));
        });
    }
};

constexpr DecodeMatrix plainMatrix{4769, 6537, 3330, 1605, 8263}, foldedMatrixCrCb{4768, 6537, 3330, 1606, 8262};

constexpr FoldedConstants folded420CbCr(ChannelOrder channels) {
    return foldedConstants(plainMatrix, {.r = 1779, .g = 1089, .b = 2211}, channels);
}
constexpr FoldedConstants folded420CrCb(ChannelOrder channels) {
    return foldedConstants(foldedMatrixCrCb, {.r = 1779, .g = 1084, .b = 2210}, channels);
}
constexpr FoldedConstants folded422(ChannelOrder channels) {
    return foldedConstants(foldedMatrixCrCb, {.r = 1783, .g = 1085, .b = 2214}, channels);
}

// Full range has a scale of its own. Its offsets are those of chroma alone.
constexpr FoldedConstants foldedFull(ChannelOrder channels) {
    return foldedConstants(bt709Full::word, {.r = 3146, .g = 1323, .b = 3711}, channels);
}

template <const DecodeMatrix& matrix, Green green>
constexpr BiasedConstants word(ChannelOrder channels) {
    return biasedConstants(matrix, channels, green, 8);
}
// Meant: there is no rounding term at all. With one, results that are cut off would be up to one higher.
constexpr BiasedConstants plain(ChannelOrder channels) { return biasedConstants(plainMatrix, channels, Green::subtracts, 0); }

template <const DecodeMatrix& matrix, int rounding>
constexpr ExactDecodeConstants exact(ChannelOrder channels) {
    return exactConstants(matrix, channels, rounding);
}

// The rule at scale 4096 in the terms of the one at 65536.
constexpr ExactDecodeConstants exact4096(ChannelOrder channels) {
    return exactConstants({16 * 4769, 16 * 6537, -16 * 3330, -16 * 1605, 16 * 8263}, channels, 0);
}

// 4:1:1 has coefficients of its own for luma and for green.
constexpr ExactDecodeConstants exact411 = exactConstants({76294, 104595, -53281, -25625, 132186}, ChannelOrder::bgr, 32768);

using WordAdding = BiasedDecode<Green::adds, 4, Last::rounded>;
using WordSubtracting = BiasedDecode<Green::subtracts, 4, Last::rounded>;
using Plain = BiasedDecode<Green::subtracts, 3>;
using Folded = FoldedDecode<3>;
using FoldedFull = FoldedDecode<4>;
constexpr ChromaOrder pFirst = ChromaOrder::pFirst, qFirst = ChromaOrder::qFirst;

// The constants of a kernel as an object of its own, so that kernels can point to it.
template <class Rule, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels, ChromaOrder order = pFirst>
constexpr DecodeConstants<Rule> constantsOf{constants(channels), order};

// Kernels by geometry, source, rule and destination, with the rule's constants, the channel order and that of interleaved chroma.
template <int rows, class From, class Rule, class To, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels,
          ChromaOrder order = pFirst>
constexpr Kernel decode = kernel<DecodePairs<rows, From, Rule, To>>(constantsOf<Rule, constants, channels, order>);

constexpr Checks sizeFirst{Check::size, Check::pointers, Check::planes};

constexpr Conversion decode420(Layout from, Layout to, Kernel block, Kernel tail = {}, Checks checks = pointersFirst) {
    return {.site = {2, 2},
            .from = from,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = tail.blocks ? wholeBlocks<8> : nullptr,
            .oddSize = OddSize::warned,
            .checks = checks};
}

template <class To, ChannelOrder channels, FoldedConstants (*constants)(ChannelOrder), ChromaOrder order>
constexpr Conversion decodeSemiPlanar(Layout to, Checks checks = pointersFirst) {
    return decode420(semiPlanar420, to, decode<2, FromChromaInterleaved, Folded, To, constants, channels, order>, {}, checks);
}

template <Packed packed>
constexpr Conversion decodePacked422(Layout to, int (*columns)(int), Kernel block, Kernel tail, Kernel alone) {
    return {.site = {2, 1},
            .from = packed422,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = columns,
            .oddPixel = {borrowChroma<packed>, tail.blocks ? tail : block, alone}};
}

template <class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels, ChromaOrder order>
constexpr Conversion decodePacked(Layout to) {
    return decodePacked422<Packed::lumaFirst>(
        to, wholeBlocks<16>, decode<1, FromPackedPairs, Rule, To, constants, channels, order>,
        decode<1, FromPackedPairs, ExactDecode, To, exact<bt601::exactA, 0>, channels, order>,
        decode<1, FromPackedPairs, ExactDecode, To, exactPacked, channels, order>);
}

template <class To, ChannelOrder channels, ChromaOrder order>
constexpr Conversion decodePackedFolded(Layout to) {
    const Kernel rule = decode<1, FromPackedPairs, Folded, To, folded422, channels, order>;
    return decodePacked422<Packed::lumaFirst>(to, nullptr, rule, {}, rule);
}

// From Cb Y Cr Y, whose first chroma is the q of RGB and the p of BGR. A single pixel follows the rule of the tail.
template <class To, const DecodeMatrix& word_, const DecodeMatrix& exact_, ChannelOrder channels>
constexpr Conversion decodeChromaFirst(Layout to) {
    constexpr ChromaOrder order = channels == ChannelOrder::rgb ? qFirst : pFirst;
    // Another black than 16 stands in the rounding, which is no half then.
    using Rule = BiasedDecode<Green::adds, 4, word_.black == 16 ? Last::rounded : Last::shifted>;
    const Kernel tail = decode<1, FromChromaFirst, ExactDecode, To, exact<exact_, 32768>, channels, order>;
    return decodePacked422<Packed::chromaFirst>(
        to, wholeBlocks<8>, decode<1, FromChromaFirst, Rule, To, word<word_, Green::adds>, channels, order>, tail, tail);
}

constexpr Conversion decode411(Layout to, Kernel rule) { return {.site = {4, 1}, .from = planes411, .to = to, .block = rule}; }

constexpr ChannelOrder rgb = ChannelOrder::rgb, bgr = ChannelOrder::bgr;

// Planar members by rule, destination and channel order.
template <class Rule, class To, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels,
          const DecodeMatrix& tail = bt601::exactA>
constexpr Conversion decodePlanar420(Layout from, Layout to) {
    return decode420(from, to, decode<2, FromChromaPlanes<2>, Rule, To, constants, channels>,
                     decode<2, FromChromaPlanes<2>, ExactDecode, To, exact<tail, 32768>, channels>);
}
template <class Rule, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels,
          ExactDecodeConstants (*tail)(ChannelOrder)>
constexpr Conversion decodePlanar422(Layout from, int (*columns)(int)) {
    return {.site = {2, 1},
            .from = from,
            .to = rgb24Pair,
            .block = decode<1, FromChromaPlanes<1>, Rule, ToPacked3, constants, channels>,
            .tail = decode<1, FromChromaPlanes<1>, ExactDecode, ToPacked3, tail, channels>,
            .blockColumns = columns};
}

constexpr auto wordAAdding = word<bt601::wordA, Green::adds>, wordBAdding = word<bt601::wordB, Green::adds>;
constexpr auto wordBSubtracting = word<bt601::wordB, Green::subtracts>;

constexpr Conversion planar420ToBgrPlain = decodePlanar420<Plain, ToPacked3, plain, bgr>(planes420, rgb24Two);
constexpr Conversion planar420ToBgr = decodePlanar420<WordAdding, ToPacked3, wordBAdding, bgr>(planes420, rgb24Two);
constexpr Conversion planar422ToRgbPlain =
    decodePlanar422<Plain, plain, rgb, exact<bt601::exactB, 0>>(planes422Crossed, wholeBlocks<8>);
constexpr Conversion planar422ToRgb =
    decodePlanar422<WordAdding, wordBAdding, rgb, exact<bt601::exactB, 0>>(planes422Crossed, wholeBlocks<8>);

// Chroma comes a second time, one site on.
constexpr Layout nextChroma = layoutOf({{2, 1, 0, 1, 1}, {1, 1, 0, 1, 1}});

// The last site of a row has no next one and takes its own.
constexpr Conversion filtered420{.site = {2, 2},
                                 .from = joined(planes420Crossed, nextChroma),
                                 .to = rgb32Two,
                                 .block = kernel<FilteredKernel<Plain, ToPacked4>>(constantsOf<Plain, plain, bgr>),
                                 .tail = kernel<FilteredKernel<ExactDecode, ToPacked4>>(constantsOf<ExactDecode, exact4096, bgr>),
                                 .blockColumns = wholeBlocks<16>};
constexpr Conversion filtered420LastSite{
    .site = {2, 2}, .from = joined(planes420Crossed, chromaCrossed), .to = rgb32Two, .block = filtered420.tail};
constexpr Pass filteredPass[] = {{filtered420, {}, &filtered420LastSite}};
constexpr Passes filtered{
    .site = {2, 2}, .passes = filteredPass, .count = 1, .oddSize = OddSize::warned, .checks = pointersFirst};

}  // namespace

namespace rows {

// The two exports whose arithmetic depends on alignment: images that lie on multiples of 16 throughout have a rule without
// rounding.
constexpr ByAlignment zeliYCbCr420ToBGR_8u_P3C3R = byAlignment(planar420ToBgrPlain, planar420ToBgr);
constexpr ByAlignment zeliYCbCr422ToRGB_8u_P3C3R = byAlignment(planar422ToRgbPlain, planar422ToRgb);

constexpr auto zeliYCbCr420ToBGR_8u_P3C4R =
    withAlpha(decode420(planes420, rgb32Two, decode<2, FromChromaPlanes<2>, Folded, ToPacked4, folded420CbCr, bgr>));
constexpr Conversion zeliYCbCr420ToRGB_8u_P3C3R =
    decodePlanar420<WordAdding, ToPacked3, wordBAdding, rgb>(planes420Crossed, rgb24Two);
constexpr auto zeliYCrCb420ToRGB_8u_P3C4R =
    withAlpha(decodePlanar420<WordSubtracting, ToPacked4, wordBSubtracting, rgb>(planes420, rgb32Two));

constexpr Conversion zeliYCbCr420ToBGR_709CSC_8u_P3C3R =
    decodePlanar420<WordAdding, ToPacked3, word<bt709::word, Green::adds>, bgr, bt709::exact>(planes420, rgb24Two);
constexpr auto zeliYCbCr420ToBGR_709HDTV_8u_P3C4R =
    withAlpha(decode420(planes420, rgb32Two, decode<2, FromChromaPlanes<2>, FoldedFull, ToPacked4, foldedFull, bgr>));

constexpr Conversion zeliYCbCr420ToBGR_8u_P2C3R = decodeSemiPlanar<ToPacked3, bgr, folded420CbCr, pFirst>(rgb24Two);
constexpr auto zeliYCbCr420ToBGR_8u_P2C4R = withAlpha(decodeSemiPlanar<ToPacked4, bgr, folded420CbCr, pFirst>(rgb32Two));
constexpr Conversion zeliYCbCr420ToRGB_8u_P2C3R = decodeSemiPlanar<ToPacked3, rgb, folded420CbCr, qFirst>(rgb24Two);
constexpr auto zeliYCbCr420ToRGB_8u_P2C4R = withAlpha(decodeSemiPlanar<ToPacked4, rgb, folded420CbCr, qFirst>(rgb32Two));
constexpr Conversion zeliYCrCb420ToBGR_8u_P2C3R = decodeSemiPlanar<ToPacked3, bgr, folded420CrCb, qFirst>(rgb24Two);
constexpr auto zeliYCrCb420ToBGR_8u_P2C4R =
    withAlpha(decodeSemiPlanar<ToPacked4, bgr, folded420CrCb, qFirst>(rgb32Two, sizeFirst));
constexpr Conversion zeliYCrCb420ToRGB_8u_P2C3R = decodeSemiPlanar<ToPacked3, rgb, folded420CrCb, pFirst>(rgb24Two);
constexpr auto zeliYCrCb420ToRGB_8u_P2C4R =
    withAlpha(decodeSemiPlanar<ToPacked4, rgb, folded420CrCb, pFirst>(rgb32Two, sizeFirst));

constexpr auto zeliYCrCb420ToBGR_Filter_8u_P3C4R = withAlpha(filtered);

constexpr Conversion zeliYCbCr422ToRGB_8u_C2C3R = decodePacked<ToPacked3, WordAdding, wordAAdding, rgb, qFirst>(rgb24Pair);
constexpr Conversion zeliYCbCr422ToRGB_8u_C2P3R = decodePacked<ToPlanes, WordAdding, wordAAdding, rgb, qFirst>(rgbPlanesPair);
constexpr Conversion zeliYCrCb422ToRGB_8u_C2P3R = decodePacked<ToPlanes, WordAdding, wordAAdding, rgb, pFirst>(rgbPlanesPair);
constexpr Conversion zeliYCbCr422ToBGR_8u_C2C3R = decodePacked<ToPacked3, WordAdding, wordBAdding, bgr, pFirst>(rgb24Pair);
constexpr auto zeliYCbCr422ToBGR_8u_C2C4R =
    withAlpha(decodePacked<ToPacked4, WordSubtracting, wordBSubtracting, bgr, pFirst>(rgb32Pair));

constexpr auto zeliYCbCr422ToRGB_8u_C2C4R = withAlpha(decodePackedFolded<ToPacked4, rgb, qFirst>(rgb32Pair));
constexpr Conversion zeliYCrCb422ToRGB_8u_C2C3R = decodePackedFolded<ToPacked3, rgb, pFirst>(rgb24Pair);
constexpr auto zeliYCrCb422ToRGB_8u_C2C4R = withAlpha(decodePackedFolded<ToPacked4, rgb, pFirst>(rgb32Pair));
constexpr Conversion zeliYCrCb422ToBGR_8u_C2C3R = decodePackedFolded<ToPacked3, bgr, qFirst>(rgb24Pair);
constexpr auto zeliYCrCb422ToBGR_8u_C2C4R = withAlpha(decodePackedFolded<ToPacked4, bgr, qFirst>(rgb32Pair));

constexpr Conversion zeliYCbCr422ToBGR_8u_P3C3R =
    decodePlanar422<WordAdding, wordBAdding, bgr, exact<bt601::exactA, 0>>(planes422, wholeBlocks<16>);

constexpr Conversion zeliCbYCr422ToRGB_8u_C2C3R = decodeChromaFirst<ToPacked3, bt601::wordB, bt601::exactB, rgb>(rgb24Pair);
constexpr auto zeliCbYCr422ToBGR_8u_C2C4R = withAlpha(decodeChromaFirst<ToPacked4, bt601::wordB, bt601::exactB, bgr>(rgb32Pair));
constexpr Conversion zeliCbYCr422ToBGR_709HDTV_8u_C2C3R =
    decodeChromaFirst<ToPacked3, bt709Full::word, bt709Full::exact, bgr>(rgb24Pair);
constexpr auto zeliCbYCr422ToBGR_709HDTV_8u_C2C4R =
    withAlpha(decodeChromaFirst<ToPacked4, bt709Full::word, bt709Full::exact, bgr>(rgb32Pair));

constexpr Conversion zeliYCbCr411ToBGR_8u_P3C3R = decode411(rgb24Quad, kernel<DecodeQuads<ExactDecode, ToPacked3>>(exact411));
constexpr auto zeliYCbCr411ToBGR_8u_P3C4R =
    withAlpha(decode411(rgb32Quad, kernel<DecodeQuads<ExactDecode, ToPacked4>>(exact411)));

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_decode ~, 1
#define ZEL_GROUP decode
#include "frame/table.h"
