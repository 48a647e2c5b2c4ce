// The luma-chroma exports, a row each.
#include "zelcc/lumachroma.h"

#include "model/luma_decoding.h"
#include "model/luma_encoding.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};
constexpr Geometry encode420{{2, 2}, {2, 2}, zelStsOddSizeWarn};
constexpr Geometry encode422{{2, 1}, {2, 1}};
constexpr Geometry encode422Warns{{2, 1}, {2, 1}, zelStsOddSizeWarn};
constexpr Geometry encode422Single{{2, 1}, {1, 1}};
constexpr Geometry encode411{{4, 1}, {4, 1}, zelStsOddSizeWarn};
constexpr Geometry decode420{{1, 1}, {2, 2}, zelStsOddSizeWarn};
constexpr Geometry decodePairs{{1, 1}, {2, 1}};
constexpr Geometry decode411{{1, 1}, {4, 1}};

constexpr int none(int) { return 0; }
constexpr int all(int width) { return width; }
constexpr int blocksOf4(int width) { return width & ~3; }
constexpr int blocksOf8(int width) { return width & ~7; }
constexpr int blocksOf16(int width) { return width & ~15; }
constexpr int blocksOf32(int width) { return width & ~31; }
constexpr int sitesBy4(int width) { return ((width >> 1) & ~3) * 2; }
// The single block of half the size is meant to look at fewer bits than the loop before it: a row of 48 ends in 16 tail pixels.
constexpr int blocksOfWord422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }
constexpr int blocksOfWord420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
constexpr int blocksOf32Then16(int width) { return (width & ~31) + (width & 16); }
// The last site is never part of a block: it has no next site to interpolate with.
constexpr int sitesBy8BeforeLast(int width) { return (((width >> 1) - 1) & ~7) * 2; }

constexpr Model rounded420 = encode<roundedOf4, scalarOf4>;
constexpr Model word420 = encode<wordOf4, scalarOf4>;
constexpr Model words422 = encode<word422, scalar422>;
constexpr Model packed422 = encode<wordPacked422, scalarPacked422, scalar444>;

constexpr Model hdWord420 = encode<hdWordOf4, hdScalarOf4>;
constexpr Model full422 = encode<fullWord422, fullScalar422, fullSingle>;

template <DecodeRule Rule>
constexpr Decoder oneRule{.block = Rule, .tail = Rule};
template <DecodeRule Rule>
constexpr Model everywhere = decode<oneRule<Rule>>;

template <DecodeRule Block, DecodeRule Tail>
constexpr Decoder blockAndTail{.block = Block, .tail = Tail};
template <DecodeRule Block, DecodeRule Tail>
constexpr Model decodeRow = decode<blockAndTail<Block, Tail>>;

template <DecodeRule Tail>
constexpr Decoder twoBlockRules{.block = wordB, .tail = Tail, .alignedBlock = plainWordDecode};
template <DecodeRule Tail>
constexpr Model decodeByAlignment = decode<twoBlockRules<Tail>>;

template <DecodeRule Block>
constexpr Decoder packed{.block = Block, .tail = scalarATruncated, .onePixelWide = singleChromaDecode};
template <DecodeRule Block>
constexpr Model decodePacked = decode<packed<Block>>;

constexpr Decoder filter{.block = plainWordDecode, .tail = scalarDecodeAt4096, .interpolates = true};

constexpr auto pointersFirst = Checks::pointersThenSize;
constexpr auto sizeFirst = Checks::sizeThenPointers;
constexpr auto planesLast = Checks::planesAfterSize;
constexpr auto byAlignment = Peculiarity::differsByAlignment;

constexpr Export exports[] = {
    // Full resolution.
    {NAMED(zeliRGBToYCbCr_8u_C3R), rgb24, ycc24, everyPixel, blocksOf16, encode<rounded444, scalar444>},
    {NAMED(zeliRGBToYCbCr_8u_AC4R), rgba32, ycca32, everyPixel, none, encode<scalar444, scalar444>},
    {NAMED(zeliRGBToYCbCr_8u_C3P3R), rgb24, ycc444, everyPixel, blocksOf8, encode<word444, scalar444>},
    {NAMED(zeliRGBToYCbCr_8u_AC4P3R), rgba32, ycc444, everyPixel, blocksOf8, encode<word444, scalar444>},
    {NAMED(zeliRGBToYCbCr_8u_P3R), rgbPlanes, ycc444, everyPixel, blocksOf8, encode<word444, scalar444>},

    {NAMED(zeliYCbCrToRGB_8u_C3R), ycc24, rgb24, everyPixel, blocksOf4, decodeRow<wordA, scalarATruncated>},
    {NAMED(zeliYCbCrToRGB_8u_AC4R), ycca32, rgba32, everyPixel, none, everywhere<scalarATruncated>},
    {NAMED(zeliYCbCrToRGB_8u_P3R), ycc444, rgbPlanes, everyPixel, blocksOf4, decodeRow<wordATruncated, scalarA>},
    {NAMED(zeliYCbCrToRGB_8u_P3C3R), ycc444, rgb24, everyPixel, blocksOf8, decodeRow<wordB, scalarBTruncated>},
    {NAMED(zeliYCbCrToRGB_8u_P3C4R), ycc444, rgba32, everyPixel, blocksOf8, decodeRow<wordBSubtracted, scalarB>},
    {NAMED(zeliYCbCrToBGR_8u_P3C3R), ycc444, bgr24, everyPixel, all, everywhere<wordB>},
    {NAMED(zeliYCbCrToBGR_8u_P3C4R), ycc444, bgra32, everyPixel, all, everywhere<wordBSubtracted>},

    {NAMED(zeliYCbCrToBGR_709CSC_8u_P3C3R), ycc444, bgr24, everyPixel, all, everywhere<hdWord>},
    {NAMED(zeliYCbCrToBGR_709CSC_8u_P3C4R), ycc444, bgra32, everyPixel, all, everywhere<hdWordSubtracted>},

    // Encoders to 4:2:0.
    {NAMED(zeliRGBToYCbCr420_8u_C3P3R), rgb24, yCbCr420, encode420, sitesBy4, rounded420},
    {NAMED(zeliRGBToYCbCr420_8u_C3P2R), rgb24, nv12, encode420, sitesBy4, rounded420},
    {NAMED(zeliRGBToYCbCr420_8u_C4P2R), rgba32, nv12, encode420, sitesBy4, rounded420},
    {NAMED(zeliBGRToYCbCr420_8u_C3P3R), bgr24, yCbCr420, encode420, blocksOfWord420, word420},
    {NAMED(zeliBGRToYCrCb420_8u_C3P3R), bgr24, yCrCb420, encode420, blocksOfWord420, word420},
    {NAMED(zeliBGRToYCbCr420_8u_AC4P3R), bgra32, yCbCr420, encode420, blocksOfWord420, word420},
    {NAMED(zeliBGRToYCrCb420_8u_AC4P3R), bgra32, yCrCb420, encode420, blocksOfWord420, word420},
    {NAMED(zeliRGBToYCrCb420_8u_AC4P3R), rgba32, yCrCb420, encode420, blocksOfWord420, word420},

    {NAMED(zeliBGRToYCbCr420_709CSC_8u_C3P3R), bgr24, yCbCr420, encode420, blocksOfWord420, hdWord420},
    {NAMED(zeliBGRToYCbCr420_709CSC_8u_AC4P3R), bgra32, yCbCr420, encode420, blocksOfWord420, hdWord420},
    {NAMED(zeliBGRToYCbCr420_709CSC_8u_C3P2R), bgr24, nv12, encode420, blocksOfWord420, hdWord420},
    {NAMED(zeliBGRToYCrCb420_709CSC_8u_C3P3R), bgr24, yCrCb420, encode420, blocksOfWord420, hdWord420},
    {NAMED(zeliBGRToYCrCb420_709CSC_8u_AC4P3R), bgra32, yCrCb420, encode420, blocksOfWord420, hdWord420},
    {NAMED(zeliBGRToYCbCr420_709HDTV_8u_AC4P3R), bgra32, yCbCr420, encode420, blocksOf16, encode<fullWordOf4, fullScalarOf4>},

    // Encoders to 4:1:1.
    {NAMED(zeliBGRToYCbCr411_8u_C3P3R), bgr24, yCbCr411, encode411, blocksOf32Then16, encode<plainRoundedOf4, scalarOf4>},
    {NAMED(zeliBGRToYCbCr411_8u_AC4P3R), bgra32, yCbCr411, encode411, blocksOf32, word420},

    // Encoders to 4:2:2.
    {NAMED(zeliRGBToYCbCr422_8u_C3C2R), rgb24, yuyv, encode422Single, blocksOf8, packed422},
    {NAMED(zeliRGBToYCrCb422_8u_C3C2R), rgb24, yvyu, encode422Single, blocksOf8, packed422},
    {NAMED(zeliRGBToYCbCr422_8u_P3C2R), rgbPlanes, yuyv, encode422Single, blocksOf8, packed422},
    {NAMED(zeliRGBToYCrCb422_8u_P3C2R), rgbPlanes, yvyu, encode422Single, blocksOf8, packed422},
    {NAMED(zeliRGBToYCbCr422_8u_C3P3R), rgb24, yCbCr422, encode422Warns, blocksOfWord422, words422},
    {NAMED(zeliBGRToYCbCr422_8u_C3P3R), bgr24, yCbCr422, encode422, blocksOfWord422, words422},
    {NAMED(zeliBGRToYCbCr422_8u_AC4P3R), bgra32, yCbCr422, encode422, blocksOfWord422, words422},
    {NAMED(zeliBGRToYCbCr422_8u_C3C2R), bgr24, yuyv, encode422, blocksOfWord422, words422},
    {NAMED(zeliBGRToYCbCr422_8u_AC4C2R), bgra32, yuyv, encode422, blocksOfWord422, words422},

    {NAMED(zeliRGBToCbYCr422_8u_C3C2R), rgb24, uyvy, encode422Single, blocksOf4, encode<scalarAt15, scalar422, scalar444>},
    {NAMED(zeliRGBToCbYCr422Gamma_8u_C3C2R), rgb24, uyvy, encode422Single, blocksOf4,
     encode<scalarAt15, scalar422, scalar444, transferredRgb>},
    {NAMED(zeliBGRToCbYCr422_8u_AC4C2R), bgra32, uyvy, encode422Single, blocksOf8,
     encode<wordWithRoundedChroma, scalar422, scalar444>},
    {NAMED(zeliBGRToCbYCr422_709HDTV_8u_C3C2R), bgr24, uyvy, encode422Single, blocksOf32, full422},
    {NAMED(zeliBGRToCbYCr422_709HDTV_8u_AC4C2R), bgra32, uyvy, encode422Single, blocksOf32, full422},

    // Decoders from 4:2:0.
    {NAMED(zeliYCbCr420ToBGR_8u_P3C3R), yCbCr420, bgr24, decode420, sitesBy4, decodeByAlignment<scalarA>, pointersFirst,
     byAlignment},
    {NAMED(zeliYCbCr420ToBGR_8u_P3C4R), yCbCr420, bgra32, decode420, all, everywhere<folded420>},
    {NAMED(zeliYCbCr420ToRGB_8u_P3C3R), yCbCr420, rgb24, decode420, sitesBy4, decodeRow<wordB, scalarA>},
    {NAMED(zeliYCrCb420ToRGB_8u_P3C4R), yCrCb420, rgba32, decode420, sitesBy4, decodeRow<wordBSubtracted, scalarA>},
    {NAMED(zeliYCbCr420ToBGR_8u_P2C3R), nv12, bgr24, decode420, all, everywhere<folded420>},
    {NAMED(zeliYCbCr420ToBGR_8u_P2C4R), nv12, bgra32, decode420, all, everywhere<folded420>},
    {NAMED(zeliYCbCr420ToRGB_8u_P2C3R), nv12, rgb24, decode420, all, everywhere<folded420>},
    {NAMED(zeliYCbCr420ToRGB_8u_P2C4R), nv12, rgba32, decode420, all, everywhere<folded420>},
    {NAMED(zeliYCrCb420ToBGR_8u_P2C3R), nv21, bgr24, decode420, all, everywhere<foldedCrCb420>},
    {NAMED(zeliYCrCb420ToBGR_8u_P2C4R), nv21, bgra32, decode420, all, everywhere<foldedCrCb420>, sizeFirst},
    {NAMED(zeliYCrCb420ToRGB_8u_P2C3R), nv21, rgb24, decode420, all, everywhere<foldedCrCb420>},
    {NAMED(zeliYCrCb420ToRGB_8u_P2C4R), nv21, rgba32, decode420, all, everywhere<foldedCrCb420>, sizeFirst},
    {NAMED(zeliYCrCb420ToBGR_Filter_8u_P3C4R), yCrCb420, bgra32, decode420, sitesBy8BeforeLast, decode<filter>, planesLast},

    {NAMED(zeliYCbCr420ToBGR_709CSC_8u_P3C3R), yCbCr420, bgr24, decode420, sitesBy4, decodeRow<hdWord, hdScalar>},
    {NAMED(zeliYCbCr420ToBGR_709HDTV_8u_P3C4R), yCbCr420, bgra32, decode420, all, everywhere<fullFoldedDecode>},

    // Decoders from 4:2:2.
    {NAMED(zeliYCbCr422ToRGB_8u_C2C3R), yuyv, rgb24, everyPixel, blocksOf16, decodePacked<wordA>},
    {NAMED(zeliYCbCr422ToRGB_8u_C2P3R), yuyv, rgbPlanes, everyPixel, blocksOf16, decodePacked<wordA>},
    {NAMED(zeliYCrCb422ToRGB_8u_C2P3R), yvyu, rgbPlanes, everyPixel, blocksOf16, decodePacked<wordA>},
    {NAMED(zeliYCbCr422ToBGR_8u_C2C3R), yuyv, bgr24, everyPixel, blocksOf16, decodePacked<wordB>},
    {NAMED(zeliYCbCr422ToBGR_8u_C2C4R), yuyv, bgra32, everyPixel, blocksOf16, decodePacked<wordBSubtracted>},
    {NAMED(zeliYCbCr422ToRGB_8u_C2C4R), yuyv, rgba32, everyPixel, all, everywhere<folded422>},
    {NAMED(zeliYCrCb422ToRGB_8u_C2C3R), yvyu, rgb24, everyPixel, all, everywhere<folded422>},
    {NAMED(zeliYCrCb422ToRGB_8u_C2C4R), yvyu, rgba32, everyPixel, all, everywhere<folded422>},
    {NAMED(zeliYCrCb422ToBGR_8u_C2C3R), yvyu, bgr24, everyPixel, all, everywhere<folded422>},
    {NAMED(zeliYCrCb422ToBGR_8u_C2C4R), yvyu, bgra32, everyPixel, all, everywhere<folded422>},
    {NAMED(zeliYCbCr422ToBGR_8u_P3C3R), yCbCr422, bgr24, decodePairs, blocksOf16, decodeRow<wordB, scalarATruncated>},
    {NAMED(zeliYCbCr422ToRGB_8u_P3C3R), yCbCr422, rgb24, decodePairs, blocksOf8, decodeByAlignment<scalarBTruncated>,
     pointersFirst, byAlignment},

    {NAMED(zeliCbYCr422ToRGB_8u_C2C3R), uyvy, rgb24, everyPixel, blocksOf8, decodeRow<wordB, scalarB>},
    {NAMED(zeliCbYCr422ToBGR_8u_C2C4R), uyvy, bgra32, everyPixel, blocksOf8, decodeRow<wordB, scalarB>},
    {NAMED(zeliCbYCr422ToBGR_709HDTV_8u_C2C3R), uyvy, bgr24, everyPixel, blocksOf8, decodeRow<fullWordDecode, fullScalar>},
    {NAMED(zeliCbYCr422ToBGR_709HDTV_8u_C2C4R), uyvy, bgra32, everyPixel, blocksOf8, decodeRow<fullWordDecode, fullScalar>},

    // Decoders from 4:1:1.
    {NAMED(zeliYCbCr411ToBGR_8u_P3C3R), yCbCr411, bgr24, decode411, none, everywhere<scalar411>},
    {NAMED(zeliYCbCr411ToBGR_8u_P3C4R), yCbCr411, bgra32, decode411, none, everywhere<scalar411>},
};

}  // namespace

std::span<const Export> lumachromaExports() { return exports; }

}  // namespace model
