// Luma and chroma to packed words: the rules, and the kernels by where pixels come from and what becomes of their channels.
#pragma once

#include "lumachroma/kernels/decode_pairs.h"
#include "lumachroma/kernels/decode_pixels.h"
#include "lumachroma/rules/analog_decoding.h"
#include "packed16/packing.h"
#include "packed16/regions.h"

namespace zel::ZEL_LEVEL {

// Studio range. Blocks follow the rule for words, of set B; what is left over follows an exact one, of set A. Meant: they
// are no two roundings of one matrix, and with one for both the ends of rows would change.
using WordRule = BiasedDecode<Green::subtracts, 4>;
constexpr BiasedConstants truncatedWord(ChannelOrder channels) {
    return biasedConstants(bt601::wordB, channels, Green::subtracts, 0);
}
constexpr BiasedConstants roundedWord(ChannelOrder channels) {
    return biasedConstants(bt601::wordB, channels, Green::subtracts, 8);
}
template <int rounding>
constexpr ExactDecodeConstants exactA(ChannelOrder channels) {
    return exactConstants(bt601::exactA, channels, rounding);
}

// Analog YUV. The rule for words speaks of v and red first, but is the same with u and blue in their place.
using AnalogRule = AnalogDecode<AnalogWords<Rounding::down, 13>>;
constexpr AnalogWordConstants analogWord(ChannelOrder channels) {
    if (channels == ChannelOrder::rgb) return {.rv = 9338, .gv = 4759, .gu = 3227, .bu = 16646};
    return {.rv = 16646, .gv = 3227, .gu = 4759, .bu = 9338};
}
constexpr ExactDecodeConstants exactAnalog(ChannelOrder channels) {
    return exactConstants({65536, 74711, -38076, -25821, 133169, 0}, channels, 0);
}

template <class Rule, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels>
inline constexpr typename Rule::Constants constantsOf = constants(channels);
template <class Rule, typename Rule::Constants (*constants)(ChannelOrder), ChannelOrder channels, ChromaOrder order>
inline constexpr DecodeConstants<Rule> constantsOfPairs{constants(channels), order};

inline constexpr Layout wordPixels = layoutOf({{0, 2}}), wordPairs = layoutOf({{0, 4}}), wordQuads = layoutOf({{0, 8}});
inline constexpr Layout wordPairsTwo = layoutOf({{0, 4, 0, 2}, {0, 4, 1, 2}}), wordPairsFirst = layoutOf({{0, 4, 0, 2}});
inline constexpr Layout packedTriples = layoutOf({{0, 3}}), planes444 = layoutOf({{0, 1}, {1, 1}, {2, 1}}),
                        planes444Crossed = layoutOf({{0, 1}, {2, 1}, {1, 1}});
inline constexpr Layout planes420First = layoutOf({{0, 2, 0, 2}, {1, 1}, {2, 1}}),
                        planes420FirstCrossed = layoutOf({{0, 2, 0, 2}, {2, 1}, {1, 1}});

// The chroma that drives the lowest field comes first: Cb where that is blue, in words named BGR.
constexpr const Layout& chromaFirst(ChannelOrder channels, const Layout& cbFirst, const Layout& crFirst) {
    return channels == ChannelOrder::bgr ? cbFirst : crFirst;
}

template <ChannelOrder channels, class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder)>
constexpr Kernel fromTriples = [] {
    if constexpr (channels == ChannelOrder::bgr)
        return kernel<PixelKernel<From3, Decode<Rule>, To>>(constantsOf<Rule, constants, channels>);
    else
        return kernel<PixelKernel<From3, DecodeCrossed<Rule>, To>>(constantsOf<Rule, constants, channels>);
}();
template <ChannelOrder channels, class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder)>
constexpr Kernel fromPlanes = kernel<PixelKernel<FromPlanes, Decode<Rule>, To>>(constantsOf<Rule, constants, channels>);
template <ChannelOrder channels, class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder)>
constexpr Kernel fromPackedPairs = kernel<DecodePairs<1, FromPackedPairs, Rule, To>>(
    constantsOfPairs<Rule, constants, channels, channels == ChannelOrder::bgr ? ChromaOrder::pFirst : ChromaOrder::qFirst>);
template <ChannelOrder channels, int rows, class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder)>
constexpr Kernel fromPlanarPairs =
    kernel<DecodePairs<rows, FromChromaPlanes<rows>, Rule, To>>(constantsOfPairs<Rule, constants, channels, ChromaOrder::pFirst>);

template <ChannelOrder channels, class To>
constexpr Conversion planar444{.site = {1, 1},
                               .from = chromaFirst(channels, planes444, planes444Crossed),
                               .to = wordPixels,
                               .block = fromPlanes<channels, To, WordRule, truncatedWord>};

template <ChannelOrder channels, class To>
constexpr Conversion planar422{.site = {2, 1},
                               .from = chromaFirst(channels, planes422, planes422Crossed),
                               .to = wordPairs,
                               .block = fromPlanarPairs<channels, 1, To, WordRule, truncatedWord>,
                               .oddPixel = {takePixel, fromPlanarPairs<channels, 1, To, WordRule, truncatedWord>}};

// Pairs of rows, whose odd pixels may have a rule of their own, and a last row.
constexpr RowPairs planar420(ChannelOrder channels, Kernel pairs, Kernel oddPixels, Kernel lastRow) {
    return {.pairs = {.site = {2, 2},
                      .from = chromaFirst(channels, planes420, planes420Crossed),
                      .to = wordPairsTwo,
                      .block = pairs,
                      .oddPixel = {takePixel, oddPixels, oddPixels}},
            .lastRow = {.site = {2, 2},
                        .from = chromaFirst(channels, planes420First, planes420FirstCrossed),
                        .to = wordPairsFirst,
                        .block = lastRow,
                        .oddPixel = {takePixel, lastRow, lastRow}}};
}
template <ChannelOrder channels, class To, class Rule, typename Rule::Constants (*constants)(ChannelOrder)>
constexpr RowPairs planar420OfOneRule = planar420(channels, fromPlanarPairs<channels, 2, To, Rule, constants>,
                                                  fromPlanarPairs<channels, 2, To, Rule, constants>,
                                                  fromPlanarPairs<channels, 1, To, Rule, constants>);

}  // namespace zel::ZEL_LEVEL
