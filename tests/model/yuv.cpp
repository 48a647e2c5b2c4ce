// The exports to and from analog YUV, a row each.
#include "zelcc/yuv.h"

#include "model/yuv_decoding.h"
#include "model/yuv_encoding.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};
constexpr Geometry sites420{{1, 1}, {2, 2}, zelStsOddSizeWarn};
constexpr Geometry oddColumns420{{1, 1}, {1, 2}, zelStsOddSizeWarn, {2, 2}};

constexpr int none(int) { return 0; }
constexpr int blocksOf4(int width) { return width & ~3; }
constexpr int blocksOf8(int width) { return width & ~7; }
constexpr int blocksOf16(int width) { return width & ~15; }

template <DecodeRule Block, DecodeRule Tail = Block>
constexpr Decoder blockAndTail{.block = Block, .tail = Tail};
template <DecodeRule Block, DecodeRule Tail = Block>
constexpr Model decodeRow = decode<blockAndTail<Block, Tail>>;

constexpr Model encodeByAlignment = encodeAnalog<doubledOf2, scalarOf2, roundedOf2>;
constexpr Model encode422 = encodeAnalog<doubledOf2, scalarOf2>;
constexpr Model encode420 = encodeAnalog<scalarAnalogOf4, scalarAnalogOf4>;
constexpr Model encode420Rounded = encodeAnalog<roundedAnalogOf4, scalarAnalogOf4>;

constexpr Model decode422 = decodeRow<analogDown, analogTail>;

bool hasAlignedPlanes(const Image& image) {
    for (int i = 0; i < image.layout->planeCount; ++i)
        if (reinterpret_cast<uintptr_t>(image.planes[i].first) % 16 != 0) return false;
    return true;
}

// Without steps, an image of even width and 256 pixels or more is one row of them all.
template <Model M>
void asLongRow(const Conversion& c) {
    const int pixels = c.size.width * c.size.height;
    if (c.size.width % 2 != 0 || pixels < 256) return M(c);
    Conversion row = c;
    row.size = {pixels, 1};
    row.blockPixels = blocksOf16(pixels);
    row.aligned = hasAlignedPlanes(c.source) && hasAlignedPlanes(c.destination);
    M(row);
}

constexpr auto pointersFirst = Checks::pointersThenSize;
constexpr auto byAlignment = Peculiarity::differsByAlignment;
constexpr auto trustsFourth = Peculiarity::trustsFourthPlane;

constexpr Export exports[] = {
    // Encoders.
    {NAMED(zeliRGBToYUV_8u_C3R), rgb24, ycc24, everyPixel, blocksOf16, encodeAnalog<direct, truncatedAnalog>},
    {NAMED(zeliRGBToYUV_8u_C3P3R), rgb24, ycc444, everyPixel, blocksOf8, encodeAnalog<direct, truncatedAnalog>},
    {NAMED(zeliRGBToYUV_8u_AC4R), rgba32, ycca32, everyPixel, none, encodeAnalog<scalarAnalog, scalarAnalog>},
    {NAMED(zeliRGBToYUV_8u_P3R), rgbPlanes, ycc444, everyPixel, blocksOf4, encodeAnalog<direct, directTail>},
    {NAMED(zeliRGBToYUV_8u_AC4P4R), rgba32, yuva444, everyPixel, blocksOf8, encodeAnalog<doubledAnalog, scalarAnalog>,
     pointersFirst, trustsFourth},

    {NAMED(zeliRGBToYUV420_8u_C3P3R), rgb24, yCbCr420, sites420, blocksOf16, encode420Rounded},
    {NAMED(zeliRGBToYUV420_8u_P3R), rgbPlanes, yCbCr420, sites420, none, encode420},
    {NAMED(zeliBGRToYUV420_8u_AC4P3R), bgra32, yCbCr420, sites420, none, encode420},
    {NAMED(zeliRGBToYUV420_8u_C3P3), rgb24, yCbCr420, sites420, blocksOf16, encode420Rounded},
    {NAMED(zeliRGBToYUV420_8u_P3), rgbPlanes, yCbCr420, sites420, none, encode420},

    {NAMED(zeliRGBToYUV422_8u_C3P3R), rgb24, yuv422, everyPixel, blocksOf16, encodeByAlignment, pointersFirst, byAlignment},
    {NAMED(zeliRGBToYUV422_8u_P3R), rgbPlanes, yuv422, everyPixel, blocksOf16, encode422},
    {NAMED(zeliRGBToYUV422_8u_C3C2R), rgb24, yuyv, everyPixel, blocksOf16, encode422},
    {NAMED(zeliRGBToYUV422_8u_C3P3), rgb24, yuv422, everyPixel, blocksOf16, asLongRow<encodeByAlignment>, pointersFirst,
     byAlignment},
    {NAMED(zeliRGBToYUV422_8u_P3), rgbPlanes, yuv422, everyPixel, blocksOf16, asLongRow<encode422>},

    // Decoders.
    {NAMED(zeliYUVToRGB_8u_C3R), ycc24, rgb24, everyPixel, blocksOf8, decodeRow<analogUp, analogTail>},
    {NAMED(zeliYUVToRGB_8u_AC4R), ycca32, rgba32, everyPixel, none, decodeRow<analogTail>},
    {NAMED(zeliYUVToRGB_8u_P3R), ycc444, rgbPlanes, everyPixel, none, decodeRow<analogLower>},
    {NAMED(zeliYUVToRGB_8u_P3C3R), ycc444, rgb24, everyPixel, blocksOf16, decodeRow<analogDown, analogLowerRounded>},
    {NAMED(zeliYUVToRGB_8u_C3C4R), ycc24, rgba32, everyPixel, blocksOf8, decodeRow<analogAt4096, analogTail>},

    {NAMED(zeliYUV420ToRGB_8u_P3R), yCbCr420, rgbPlanes, sites420, none, decodeRow<analogTail>},
    {NAMED(zeliYUV420ToRGB_8u_P3C3R), yCbCr420, rgb24, sites420, blocksOf8, decode422},
    {NAMED(zeliYUV420ToBGR_8u_P3C3R), yCbCr420, bgr24, sites420, blocksOf8, decodeRow<analogUp, analogTail>},
    {NAMED(zeliYUV420ToRGB_8u_P3AC4R), yuv420RoundedUp, rgba32, oddColumns420, blocksOf4,
     withZeroAlpha<decodeRow<analogBlueUp, analogTailRounded>>},
    {NAMED(zeliYUV420ToRGB_8u_P3), yCbCr420, rgbPlanes, sites420, none, decodeRow<analogTail>},
    {NAMED(zeliYUV420ToRGB_8u_P3C3), yCbCr420, rgb24, sites420, blocksOf8, decode422},

    {NAMED(zeliYUV422ToRGB_8u_P3R), yuv422, rgbPlanes, everyPixel, blocksOf16, decode422},
    {NAMED(zeliYUV422ToRGB_8u_P3C3R), yuv422, rgb24, everyPixel, blocksOf16, decode422},
    {NAMED(zeliYUV422ToRGB_8u_P3AC4R), yuv422, rgba32, everyPixel, blocksOf8,
     withZeroAlpha<decodeRow<analogTruncated, analogTailTruncated>>},
    {NAMED(zeliYUV422ToRGB_8u_C2C3R), yuyv, rgb24, everyPixel, blocksOf16, decode422},
    {NAMED(zeliYUV422ToRGB_8u_P3), yuv422, rgbPlanes, everyPixel, blocksOf16, asLongRow<decode422>},
    {NAMED(zeliYUV422ToRGB_8u_P3C3), yuv422, rgb24, everyPixel, blocksOf16, asLongRow<decode422>},
};

}  // namespace

std::span<const Export> yuvExports() { return exports; }

}  // namespace model
