// RGB to YCbCr with subsampled chroma. Luma is computed for each pixel. Chroma is computed once for each site, from the sums of
// the channels over its pixels: a box average, with the matrix last. A site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels
// (4:1:1).
#include "lumachroma/encode_sites.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// Rules by geometry and channel order. The shift of a truncated or rounded chroma rule goes with the pixels of a site.
using PackedLuma = TruncatedLuma<8>;
using Rounded420 = DifferenceChroma<Rounded, 6, Outer::c>;
using Rounded411 = DifferenceChroma<Rounded, 6, Outer::a>;

constexpr DifferenceConstants roundedFromBlue(int16_t bias) { return {.own = 7193, .other = 2425, .green = 4768, .bias = bias}; }
constexpr DifferenceConstants roundedFromRed(int16_t bias) { return {.own = 7193, .other = 1163, .green = 6029, .bias = bias}; }

// The biases hold 2 of the 32 that would round: the results truncate, and are meant to.
constexpr EncodeConstants<RoundedLuma, Rounded420> rounded420Rgb{
    {4211, 8258, 1606, 16 * 64 + 2}, {.fromA = roundedFromRed(128 * 64 + 2), .fromC = roundedFromBlue(128 * 64 + 2)}};
// Here nothing is added before the shift, and that is meant too.
constexpr EncodeConstants<RoundedLuma, Rounded411> rounded411Bgr{
    {1606, 8258, 4211, 16 * 64}, {.fromA = roundedFromBlue(128 * 64), .fromC = roundedFromRed(128 * 64)}};

// Packed 4:2:2 from RGB: luma of the blocks truncates, and in the tail the second pixel of a pair does: only the first one is
// rounded.
constexpr EncodeConstants<PackedLuma, Exact422> packedCbCr{{16843, 33030, 6423, 16 * 256},
                                                           {exactCb(Outer::a, bias422Packed), exactCr(Outer::a, bias422Packed)}};
constexpr EncodeConstants<PackedLuma, Exact422> packedCrCb{{16843, 33030, 6423, 16 * 256},
                                                           {exactCr(Outer::a, bias422Packed), exactCb(Outer::a, bias422Packed)}};
constexpr auto packedTailCbCr = exactCbCr<Exact422>(Outer::a, bias422Packed, lumaBiasTruncated);
constexpr auto packedTailCrCb = exactCrCb<Exact422>(Outer::a, bias422Packed, lumaBiasTruncated);

constexpr int columns411Rounded(int width) { return (width & ~31) + (width & 16); }

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
constexpr Kernel packed = kernel<EncodePairs<1, From, SiteMatrix<PackedLuma, Exact422>, ToPackedPairs>>(constants);
template <class From, const auto& constants>
constexpr Kernel packedTail = exact422<From, ToPackedPairs, constants>;

constexpr Conversion bgr24To420 =
    encode420(rgb24Two, planes420, word420<From3, word420Bgr>, exact420<From3, ToChromaPlanes, exact420Bgr>, columns420);
constexpr Conversion bgr32To420 =
    encode420(rgb32Two, planes420, word420<From4, word420Bgr>, exact420<From4, ToChromaPlanes, exact420Bgr>, columns420);

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
    encode411(rgb24Quad, kernel<EncodeQuads<From3, RoundedLuma, Rounded411>>(rounded411Bgr), exact411<From3>, columns411Rounded);
constexpr Conversion zeliBGRToYCbCr411_8u_AC4P3R =
    encode411(rgb32Quad, kernel<EncodeQuads<From4, WordLuma, Word420>>(word420Bgr), exact411<From4>, wholeBlocks<32>);

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
