// Luma and chroma to packed words whose fields are dithered.
#include "packed16/decoders.h"
#include "packed16/dither.h"
#include "zelcc/packed_destinations.h"

namespace zel::ZEL_LEVEL {
namespace {

// The odd pixel of a packed row takes its one chroma byte for both, whatever stands before it. Meant: words without a
// dither do otherwise, and by their rule the last pixels of rows would change.
inline void repeatChroma(uint8_t* site, const uint8_t* pixel, int, bool) {
    site[0] = site[2] = pixel[0];
    site[1] = site[3] = pixel[1];
}

// The last row of an odd height is written two pixels too far where the width is odd too. Meant: callers
// would find these pixels unwritten.
constexpr int columnsOfLastRow(ZelSize size) { return size.width % 2 != 0 ? size.width + 2 : size.width; }

constexpr RowPairs overshooting(RowPairs p) {
    p.ofLastRow = columnsOfLastRow;
    return p;
}

// One rule each, for whole rows.
template <ChannelOrder channels, class F>
struct To {
    using Pixels = ToDitheredWords<F, 1, 1>;
    using Pairs = ToDitheredWords<F, 2, 1>;
    using Squares = ToDitheredWords<F, 2, 2>;

    static constexpr Conversion fromInterleaved{
        .site = {1, 1}, .from = packedTriples, .to = wordPixels, .block = fromTriples<channels, Pixels, WordRule, truncatedWord>};
    static constexpr Conversion from444 = planar444<channels, Pixels>;

    static constexpr Kernel packedPairs = fromPackedPairs<channels, Pairs, WordRule, truncatedWord>;
    static constexpr Conversion fromPacked422{.site = {2, 1},
                                              .from = packed422,
                                              .to = wordPairs,
                                              .block = packedPairs,
                                              .oddPixel = {repeatChroma, packedPairs, packedPairs}};

    static constexpr Conversion from422 = [] {
        Conversion c = planar422<channels, Pairs>;
        c.oddPixel.ruleAlone = c.block;
        return c;
    }();

    static constexpr RowPairs from420 = overshooting(planar420OfOneRule<channels, Squares, WordRule, truncatedWord>);
    static constexpr RowPairs fromYuv420 = overshooting(planar420OfOneRule<channels, Squares, AnalogRule, analogWord>);
};

constexpr ChannelOrder rgb = ChannelOrder::rgb, bgr = ChannelOrder::bgr;

}  // namespace

namespace rows {

constexpr Conversion zeliYCbCrToBGR444Dither_8u16u_C3R = To<bgr, Format444>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB444Dither_8u16u_C3R = To<rgb, Format444>::fromInterleaved;
constexpr Conversion zeliYCbCrToBGR555Dither_8u16u_C3R = To<bgr, Format555>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB555Dither_8u16u_C3R = To<rgb, Format555>::fromInterleaved;
constexpr Conversion zeliYCbCrToBGR565Dither_8u16u_C3R = To<bgr, Format565>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB565Dither_8u16u_C3R = To<rgb, Format565>::fromInterleaved;

constexpr Conversion zeliYCbCrToBGR444Dither_8u16u_P3C3R = To<bgr, Format444>::from444;
constexpr Conversion zeliYCbCrToRGB444Dither_8u16u_P3C3R = To<rgb, Format444>::from444;
constexpr Conversion zeliYCbCrToBGR555Dither_8u16u_P3C3R = To<bgr, Format555>::from444;
constexpr Conversion zeliYCbCrToRGB555Dither_8u16u_P3C3R = To<rgb, Format555>::from444;
constexpr Conversion zeliYCbCrToBGR565Dither_8u16u_P3C3R = To<bgr, Format565>::from444;
constexpr Conversion zeliYCbCrToRGB565Dither_8u16u_P3C3R = To<rgb, Format565>::from444;

constexpr Conversion zeliYCbCr422ToBGR444Dither_8u16u_C2C3R = To<bgr, Format444>::fromPacked422;
constexpr Conversion zeliYCbCr422ToRGB444Dither_8u16u_C2C3R = To<rgb, Format444>::fromPacked422;
constexpr Conversion zeliYCbCr422ToBGR555Dither_8u16u_C2C3R = To<bgr, Format555>::fromPacked422;
constexpr Conversion zeliYCbCr422ToRGB555Dither_8u16u_C2C3R = To<rgb, Format555>::fromPacked422;
constexpr Conversion zeliYCbCr422ToBGR565Dither_8u16u_C2C3R = To<bgr, Format565>::fromPacked422;
constexpr Conversion zeliYCbCr422ToRGB565Dither_8u16u_C2C3R = To<rgb, Format565>::fromPacked422;

constexpr Conversion zeliYCbCr422ToBGR444Dither_8u16u_P3C3R = To<bgr, Format444>::from422;
constexpr Conversion zeliYCbCr422ToRGB444Dither_8u16u_P3C3R = To<rgb, Format444>::from422;
constexpr Conversion zeliYCbCr422ToBGR555Dither_8u16u_P3C3R = To<bgr, Format555>::from422;
constexpr Conversion zeliYCbCr422ToRGB555Dither_8u16u_P3C3R = To<rgb, Format555>::from422;
constexpr Conversion zeliYCbCr422ToBGR565Dither_8u16u_P3C3R = To<bgr, Format565>::from422;
constexpr Conversion zeliYCbCr422ToRGB565Dither_8u16u_P3C3R = To<rgb, Format565>::from422;

constexpr RowPairs zeliYCbCr420ToBGR444Dither_8u16u_P3C3R = To<bgr, Format444>::from420;
constexpr RowPairs zeliYCbCr420ToRGB444Dither_8u16u_P3C3R = To<rgb, Format444>::from420;
constexpr RowPairs zeliYCbCr420ToBGR555Dither_8u16u_P3C3R = To<bgr, Format555>::from420;
constexpr RowPairs zeliYCbCr420ToRGB555Dither_8u16u_P3C3R = To<rgb, Format555>::from420;
constexpr RowPairs zeliYCbCr420ToBGR565Dither_8u16u_P3C3R = To<bgr, Format565>::from420;
constexpr RowPairs zeliYCbCr420ToRGB565Dither_8u16u_P3C3R = To<rgb, Format565>::from420;

constexpr RowPairs zeliYUV420ToBGR444Dither_8u16u_P3C3R = To<bgr, Format444>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB444Dither_8u16u_P3C3R = To<rgb, Format444>::fromYuv420;
constexpr RowPairs zeliYUV420ToBGR555Dither_8u16u_P3C3R = To<bgr, Format555>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB555Dither_8u16u_P3C3R = To<rgb, Format555>::fromYuv420;
constexpr RowPairs zeliYUV420ToBGR565Dither_8u16u_P3C3R = To<bgr, Format565>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB565Dither_8u16u_P3C3R = To<rgb, Format565>::fromYuv420;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_dither16 ~, 1
#define ZEL_GROUP dither16
#include "frame/table.h"
