// Analog YUV to RGB, from full resolution, 4:2:2 and 4:2:0. Block and tail of a row follow different rules where the table says
// so, and the coefficients of like rules differ by one from export to export. Meant: with shared coefficients or one rule, some
// colours would change by one.
#include "lumachroma/kernels/decode_pairs.h"
#include "lumachroma/rules/analog_decoding.h"
#include "lumachroma/stepless.h"
#include "zelcc/yuv.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr Rounding nearest = Rounding::nearest, down = Rounding::down;

using Words13 = AnalogDecode<AnalogWords<nearest, 13>>;
using Words13Truncated = AnalogDecode<AnalogWords<down, 13>>;
using Words12 = AnalogDecode<AnalogWords<nearest, 12>>;
using Exact = AnalogDecode<AnalogExact<nearest>>;
using ExactTruncated = AnalogDecode<AnalogExact<down>>;

constexpr AnalogWordConstants wordsUp{9339, 4760, 3228, 16646}, wordsDown{9338, 4759, 3227, 16645},
    wordsBlueUp{9338, 4759, 3227, 16646}, words4096{4669, 2380, 1614, 8323};

// Green is cut off where red and blue are rounded, unless it says that it is rounded too.
constexpr AnalogExactConstants exact{74711, 38076, 25821, 133169, 0}, exactGreenRounded{74711, 38076, 25821, 133169, 32768},
    exactDown{74710, 38075, 25820, 133168, 0}, exactDownGreenRounded{74710, 38075, 25820, 133168, 32768};
static_assert(are13BitsEnough<nearest>(74711) && are13BitsEnough<nearest>(133169) && are13BitsEnough<nearest>(74710) &&
              are13BitsEnough<nearest>(133168) && are13BitsEnough<down>(74711) && are13BitsEnough<down>(133169));

// The constants of a kernel of pairs as an object of its own, so that kernels can point to it. Packed rows have U first.
template <class Rule, const auto& constants>
constexpr DecodeConstants<Rule> forPairs{constants, ChromaOrder::qFirst};

template <class From, class To, class Rule, const auto& constants>
constexpr Kernel decode444 = kernel<PixelKernel<From, Rule, To>>(constants);
template <class To, class Rule, const auto& constants>
constexpr Kernel decode420 = kernel<DecodePairs<2, FromChromaPlanes<2>, Rule, To>>(forPairs<Rule, constants>);
template <class To, class Rule, const auto& constants>
constexpr Kernel decode422 = kernel<DecodePairs<1, FromChromaPlanes<1>, Rule, To>>(forPairs<Rule, constants>);
template <class To, class Rule, const auto& constants>
constexpr Kernel decodePacked422 = kernel<DecodePairs<1, FromPackedPairs, Rule, To>>(forPairs<Rule, constants>);

constexpr Conversion from444(Layout from, Layout to, Kernel block, Kernel tail = {}, int (*blockColumns)(int) = nullptr) {
    return {.site = {1, 1}, .from = from, .to = to, .block = block, .tail = tail, .blockColumns = blockColumns};
}

constexpr Conversion keepingAlpha(Kernel rule) {
    Conversion c = from444(packed4, packed4, rule);
    c.keepsAlpha = true;
    return c;
}

constexpr Conversion from420(Layout to, Kernel block, Kernel tail = {}, int (*blockColumns)(int) = nullptr) {
    return {.site = {2, 2},
            .from = planes420Crossed,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = blockColumns,
            .oddSize = OddSize::warned};
}

constexpr Conversion withOddPixel(Conversion c) {
    c.oddPixel = {takePixel, c.tail, c.tail};
    return c;
}

constexpr Conversion from422(Layout to, Kernel block, Kernel tail, int (*blockColumns)(int) = wholeBlocks<16>) {
    return withOddPixel(
        {.site = {2, 1}, .from = planes422Crossed, .to = to, .block = block, .tail = tail, .blockColumns = blockColumns});
}

}  // namespace

namespace rows {

constexpr Conversion zeliYUVToRGB_8u_C3R = from444(packed3, packed3, decode444<From3, ToPacked3, Words13, wordsUp>,
                                                   decode444<From3, ToPacked3, Exact, exact>, wholeBlocks<8>);
constexpr Conversion zeliYUVToRGB_8u_AC4R = keepingAlpha(decode444<From4, ToColoursOf4, Exact, exact>);
constexpr Conversion zeliYUVToRGB_8u_P3R = from444(planes3, planes3, decode444<FromPlanes, ToPlanes, Exact, exactDown>);
constexpr Conversion zeliYUVToRGB_8u_P3C3R =
    from444(planes3, packed3, decode444<FromPlanes, ToPacked3, Words13, wordsDown>,
            decode444<FromPlanes, ToPacked3, Exact, exactDownGreenRounded>, wholeBlocks<16>);
constexpr auto zeliYUVToRGB_8u_C3C4R = withAlpha(from444(packed3, packed4, decode444<From3, ToPacked4, Words12, words4096>,
                                                         decode444<From3, ToPacked4, Exact, exact>, wholeBlocks<8>));

constexpr Conversion zeliYUV420ToRGB_8u_P3R = from420(rgbPlanesTwo, decode420<ToPlanes, Exact, exact>);
constexpr Conversion zeliYUV420ToRGB_8u_P3C3R =
    from420(rgb24Two, decode420<ToPacked3, Words13, wordsDown>, decode420<ToPacked3, Exact, exact>, wholeBlocks<8>);
constexpr Conversion zeliYUV420ToBGR_8u_P3C3R = from420(rgb24Two, decode420<ToReversed<ToPacked3>, Words13, wordsUp>,
                                                        decode420<ToReversed<ToPacked3>, Exact, exact>, wholeBlocks<8>);
// Alone among 4:2:0 it converts an odd column.
constexpr Conversion zeliYUV420ToRGB_8u_P3AC4R = withOddPixel(from420(
    rgb32Two, decode420<ToPacked4, Words13, wordsBlueUp>, decode420<ToPacked4, Exact, exactGreenRounded>, wholeBlocks<4>));
constexpr auto zeliYUV420ToRGB_8u_P3 = stepless(zeliYUV420ToRGB_8u_P3R);
constexpr auto zeliYUV420ToRGB_8u_P3C3 = stepless(zeliYUV420ToRGB_8u_P3C3R);

constexpr Conversion zeliYUV422ToRGB_8u_P3R =
    from422(rgbPlanesPair, decode422<ToPlanes, Words13, wordsDown>, decode422<ToPlanes, Exact, exact>);
constexpr Conversion zeliYUV422ToRGB_8u_P3C3R =
    from422(rgb24Pair, decode422<ToPacked3, Words13, wordsDown>, decode422<ToPacked3, Exact, exact>);
// Nothing is rounded here.
constexpr Conversion zeliYUV422ToRGB_8u_P3AC4R = from422(rgb32Pair, decode422<ToPacked4, Words13Truncated, wordsBlueUp>,
                                                         decode422<ToPacked4, ExactTruncated, exact>, wholeBlocks<8>);
constexpr Conversion zeliYUV422ToRGB_8u_C2C3R{
    .site = {2, 1},
    .from = packed422,
    .to = rgb24Pair,
    .block = decodePacked422<ToPacked3, Words13, wordsDown>,
    .tail = decodePacked422<ToPacked3, Exact, exact>,
    .blockColumns = wholeBlocks<16>,
    .oddPixel = {borrowChroma<Packed::lumaFirst>, decodePacked422<ToPacked3, Exact, exact>,
                 decodePacked422<ToPacked3, Exact, exact>}};
constexpr auto zeliYUV422ToRGB_8u_P3 = stepless(zeliYUV422ToRGB_8u_P3R, 256);
constexpr auto zeliYUV422ToRGB_8u_P3C3 = stepless(zeliYUV422ToRGB_8u_P3C3R, 256);

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_yuv_decode ~, 1
#define ZEL_GROUP yuv_decode
#include "frame/table.h"
