#include "exports.h"

#include <memory>
#include <vector>

namespace bench {

namespace {

using enum Depth;
using enum Layout;
using enum Variant;

// Exports that name Cr first differ in the order of their plane arguments alone.
template <auto function>
Call bindCrFirstSource(const Image& source, const Image& destination) {
    return bind<function>(withChromaExchanged(source), destination);
}
template <auto function>
Call bindCrFirstDestination(const Image& source, const Image& destination) {
    return bind<function>(source, withChromaExchanged(destination));
}

// Reduction to as many levels as the destination has, or to a few in one depth. The variant says how.
template <auto function>
struct Reducing;
template <class From, class To,
          ZelStatus (*function)(const From*, int32_t, To*, int32_t, ZelSize, int32_t noise, ZelDitherType, int32_t levels)>
struct Reducing<function> {
    template <int noise, ZelDitherType dither>
    static ZelStatus reduce(const From* from, int32_t fromStep, To* to, int32_t toStep, ZelSize size) {
        return function(from, fromStep, to, toStep, size, noise, dither, sizeof(From) == sizeof(To) ? 8 : 256);
    }
};
template <ZelDitherType dither>
ZelStatus reduceToBits(const uint8_t* from, int32_t fromStep, uint8_t* to, int32_t toStep, ZelSize size) {
    return zeliReduceBits_8u1u_C1R(from, fromStep, to, toStep, 0, size, 0, 0, dither, 127);
}

// A whole image, with red in its corner.
template <auto function, class Element>
Call bindMosaic(const Image& source, const Image& destination) {
    const int width = source.size.width, height = source.size.height;
    return [=, from = source.planes[0], to = destination.planes[0]] {
        return function(reinterpret_cast<const Element*>(from.data), {0, 0, width, height}, {width, height}, from.step,
                        reinterpret_cast<Element*>(to.data), to.step, zelBayerRGGB, 0);
    };
}

// The same, with its buffer.
template <auto function, class Element>
Call bindBuffered(const Image& source, const Image& destination) {
    const int width = source.size.width, height = source.size.height;
    const int step = (width + 6) * int(sizeof(Element));
    const auto buffer = std::make_shared<std::vector<uint8_t>>(size_t(30) * size_t(step));
    return [=, from = source.planes[0], to = destination.planes[0]] {
        return function(reinterpret_cast<const Element*>(from.data), {0, 0, width, height}, {width, height}, from.step,
                        reinterpret_cast<Element*>(to.data), to.step, zelBayerRGGB, buffer->data(), step);
    };
}

constexpr Export makeRow(std::string_view name, Bind bind, Task task) { return {name, task, bind}; }

#define ROW(bind, name, ...) makeRow(#name, bind<name>, {__VA_ARGS__})

#define REDUCING(name, suffix, from, to, variant, noise, dither) \
    makeRow(#name suffix, bind<Reducing<name>::reduce<noise, dither>>, {from, to, variant})
#define REDUCTION(name, from, to)                                                                                             \
    REDUCING(name, "", from, to, toLevels, 0, zelDitherNone), REDUCING(name, "/bayer", from, to, ordered, 0, zelDitherBayer), \
        REDUCING(name, "/bayer+noise", from, to, orderedWithNoise, 20, zelDitherBayer),                                       \
        REDUCING(name, "/fs", from, to, floydSteinberg, 0, zelDitherFS),                                                      \
        REDUCING(name, "/fs+noise", from, to, floydSteinbergWithNoise, 20, zelDitherFS),                                      \
        REDUCING(name, "/jjn", from, to, jarvisJudiceNinke, 0, zelDitherJJN),                                                 \
        REDUCING(name, "/stucki", from, to, stucki, 0, zelDitherStucki),                                                      \
        REDUCING(name, "/stucki+noise", from, to, stuckiWithNoise, 20, zelDitherStucki)
#define REDUCTIONS(depth, from, to)                                                         \
    REDUCTION(zeliReduceBits_##depth##_C1R, Format(gray, from), Format(gray, to)),          \
        REDUCTION(zeliReduceBits_##depth##_C3R, Format(rgb24, from), Format(rgb24, to)),    \
        REDUCTION(zeliReduceBits_##depth##_AC4R, Format(rgba32, from), Format(rgba32, to)), \
        REDUCTION(zeliReduceBits_##depth##_C4R, Format(rgba32, from), Format(rgba32, to))

constexpr Export table[] = {
    // 4:4:4
    ROW(bind, zeliRGBToYCbCr_8u_C3R, rgb24, ycc24),
    ROW(bind, zeliRGBToYCbCr_8u_AC4R, rgba32, ycc32),
    ROW(bind, zeliRGBToYCbCr_8u_C3P3R, rgb24, i444),
    ROW(bind, zeliRGBToYCbCr_8u_AC4P3R, rgba32, i444),
    ROW(bind, zeliRGBToYCbCr_8u_P3R, rgbPlanes, i444),
    ROW(bind, zeliYCbCrToRGB_8u_C3R, ycc24, rgb24),
    ROW(bind, zeliYCbCrToRGB_8u_AC4R, ycc32, rgba32),
    ROW(bind, zeliYCbCrToRGB_8u_P3R, i444, rgbPlanes),
    ROW(bind, zeliYCbCrToRGB_8u_P3C3R, i444, rgb24),
    ROW(bind, zeliYCbCrToRGB_8u_P3C4R, i444, rgba32),
    ROW(bind, zeliYCbCrToBGR_8u_P3C3R, i444, bgr24),
    ROW(bind, zeliYCbCrToBGR_8u_P3C4R, i444, bgra32),

    ROW(bind, zeliYCbCrToBGR_709CSC_8u_P3C3R, i444, bgr24, matrix709),
    ROW(bind, zeliYCbCrToBGR_709CSC_8u_P3C4R, i444, bgra32, matrix709),

    // encoders
    ROW(bind, zeliRGBToYCbCr420_8u_C3P3R, rgb24, i420),
    ROW(bind, zeliRGBToYCbCr420_8u_C3P2R, rgb24, nv12),
    ROW(bind, zeliRGBToYCbCr420_8u_C4P2R, rgba32, nv12),
    ROW(bind, zeliBGRToYCbCr420_8u_C3P3R, bgr24, i420),
    ROW(bind, zeliBGRToYCbCr420_8u_AC4P3R, bgra32, i420),
    ROW(bindCrFirstDestination, zeliBGRToYCrCb420_8u_C3P3R, bgr24, i420),
    ROW(bindCrFirstDestination, zeliBGRToYCrCb420_8u_AC4P3R, bgra32, i420),
    ROW(bindCrFirstDestination, zeliRGBToYCrCb420_8u_AC4P3R, rgba32, i420),
    ROW(bind, zeliBGRToYCbCr411_8u_C3P3R, bgr24, i411),
    ROW(bind, zeliBGRToYCbCr411_8u_AC4P3R, bgra32, i411),
    ROW(bind, zeliRGBToYCbCr422_8u_C3C2R, rgb24, yuy2),
    ROW(bind, zeliRGBToYCrCb422_8u_C3C2R, rgb24, yvyu),
    ROW(bind, zeliRGBToYCbCr422_8u_P3C2R, rgbPlanes, yuy2),
    ROW(bind, zeliRGBToYCrCb422_8u_P3C2R, rgbPlanes, yvyu),
    ROW(bind, zeliRGBToYCbCr422_8u_C3P3R, rgb24, i422),
    ROW(bind, zeliBGRToYCbCr422_8u_C3P3R, bgr24, i422),
    ROW(bind, zeliBGRToYCbCr422_8u_AC4P3R, bgra32, i422),
    ROW(bind, zeliBGRToYCbCr422_8u_C3C2R, bgr24, yuy2),
    ROW(bind, zeliBGRToYCbCr422_8u_AC4C2R, bgra32, yuy2),
    ROW(bind, zeliBGRToYCbCr420_709CSC_8u_C3P3R, bgr24, i420, matrix709),
    ROW(bind, zeliBGRToYCbCr420_709CSC_8u_AC4P3R, bgra32, i420, matrix709),
    ROW(bind, zeliBGRToYCbCr420_709CSC_8u_C3P2R, bgr24, nv12, matrix709),
    ROW(bindCrFirstDestination, zeliBGRToYCrCb420_709CSC_8u_C3P3R, bgr24, i420, matrix709),
    ROW(bindCrFirstDestination, zeliBGRToYCrCb420_709CSC_8u_AC4P3R, bgra32, i420, matrix709),
    ROW(bind, zeliBGRToYCbCr420_709HDTV_8u_AC4P3R, bgra32, i420, matrix709Full),
    ROW(bind, zeliRGBToCbYCr422_8u_C3C2R, rgb24, uyvy),
    ROW(bind, zeliRGBToCbYCr422Gamma_8u_C3C2R, rgb24, uyvy, curve),
    ROW(bind, zeliBGRToCbYCr422_8u_AC4C2R, bgra32, uyvy),
    ROW(bind, zeliBGRToCbYCr422_709HDTV_8u_C3C2R, bgr24, uyvy, matrix709Full),
    ROW(bind, zeliBGRToCbYCr422_709HDTV_8u_AC4C2R, bgra32, uyvy, matrix709Full),

    // decoders
    ROW(bind, zeliYCbCr420ToBGR_8u_P3C3R, i420, bgr24),
    ROW(bind, zeliYCbCr420ToBGR_8u_P3C4R, i420, bgra32),
    ROW(bind, zeliYCbCr420ToRGB_8u_P3C3R, i420, rgb24),
    ROW(bindCrFirstSource, zeliYCrCb420ToRGB_8u_P3C4R, i420, rgba32),
    ROW(bindCrFirstSource, zeliYCrCb420ToBGR_Filter_8u_P3C4R, i420, bgra32, interpolate),
    ROW(bind, zeliYCbCr420ToBGR_8u_P2C3R, nv12, bgr24),
    ROW(bind, zeliYCbCr420ToBGR_8u_P2C4R, nv12, bgra32),
    ROW(bind, zeliYCbCr420ToRGB_8u_P2C3R, nv12, rgb24),
    ROW(bind, zeliYCbCr420ToRGB_8u_P2C4R, nv12, rgba32),
    ROW(bind, zeliYCrCb420ToBGR_8u_P2C3R, nv21, bgr24),
    ROW(bind, zeliYCrCb420ToBGR_8u_P2C4R, nv21, bgra32),
    ROW(bind, zeliYCrCb420ToRGB_8u_P2C3R, nv21, rgb24),
    ROW(bind, zeliYCrCb420ToRGB_8u_P2C4R, nv21, rgba32),
    ROW(bind, zeliYCbCr422ToRGB_8u_C2C3R, yuy2, rgb24),
    ROW(bind, zeliYCbCr422ToRGB_8u_C2C4R, yuy2, rgba32),
    ROW(bind, zeliYCbCr422ToRGB_8u_C2P3R, yuy2, rgbPlanes),
    ROW(bind, zeliYCbCr422ToBGR_8u_C2C3R, yuy2, bgr24),
    ROW(bind, zeliYCbCr422ToBGR_8u_C2C4R, yuy2, bgra32),
    ROW(bind, zeliYCrCb422ToRGB_8u_C2C3R, yvyu, rgb24),
    ROW(bind, zeliYCrCb422ToRGB_8u_C2C4R, yvyu, rgba32),
    ROW(bind, zeliYCrCb422ToRGB_8u_C2P3R, yvyu, rgbPlanes),
    ROW(bind, zeliYCrCb422ToBGR_8u_C2C3R, yvyu, bgr24),
    ROW(bind, zeliYCrCb422ToBGR_8u_C2C4R, yvyu, bgra32),
    ROW(bind, zeliYCbCr422ToRGB_8u_P3C3R, i422, rgb24),
    ROW(bind, zeliYCbCr422ToBGR_8u_P3C3R, i422, bgr24),
    ROW(bind, zeliYCbCr411ToBGR_8u_P3C3R, i411, bgr24),
    ROW(bind, zeliYCbCr411ToBGR_8u_P3C4R, i411, bgra32),
    ROW(bind, zeliYCbCr420ToBGR_709CSC_8u_P3C3R, i420, bgr24, matrix709),
    ROW(bind, zeliYCbCr420ToBGR_709HDTV_8u_P3C4R, i420, bgra32, matrix709Full),
    ROW(bind, zeliCbYCr422ToRGB_8u_C2C3R, uyvy, rgb24),
    ROW(bind, zeliCbYCr422ToBGR_8u_C2C4R, uyvy, bgra32),
    ROW(bind, zeliCbYCr422ToBGR_709HDTV_8u_C2C3R, uyvy, bgr24, matrix709Full),
    ROW(bind, zeliCbYCr422ToBGR_709HDTV_8u_C2C4R, uyvy, bgra32, matrix709Full),

    // analog YUV
    ROW(bind, zeliRGBToYUV_8u_C3R, rgb24, ycc24),
    ROW(bind, zeliRGBToYUV_8u_AC4R, rgba32, ycc32),
    ROW(bind, zeliRGBToYUV_8u_P3R, rgbPlanes, i444),
    ROW(bind, zeliRGBToYUV_8u_C3P3R, rgb24, i444),
    ROW(bind, zeliRGBToYUV_8u_AC4P4R, rgba32, i444a),
    ROW(bind, zeliRGBToYUV420_8u_C3P3R, rgb24, i420),
    ROW(bind, zeliRGBToYUV420_8u_C3P3, rgb24, i420),
    ROW(bind, zeliRGBToYUV420_8u_P3R, rgbPlanes, i420),
    ROW(bind, zeliRGBToYUV420_8u_P3, rgbPlanes, i420),
    ROW(bind, zeliBGRToYUV420_8u_AC4P3R, bgra32, i420),
    ROW(bind, zeliRGBToYUV422_8u_C3P3R, rgb24, i422),
    ROW(bind, zeliRGBToYUV422_8u_C3P3, rgb24, i422),
    ROW(bind, zeliRGBToYUV422_8u_P3R, rgbPlanes, i422),
    ROW(bind, zeliRGBToYUV422_8u_P3, rgbPlanes, i422),
    ROW(bind, zeliRGBToYUV422_8u_C3C2R, rgb24, yuy2),
    ROW(bind, zeliYUVToRGB_8u_C3R, ycc24, rgb24),
    ROW(bind, zeliYUVToRGB_8u_AC4R, ycc32, rgba32),
    ROW(bind, zeliYUVToRGB_8u_P3R, i444, rgbPlanes),
    ROW(bind, zeliYUVToRGB_8u_P3C3R, i444, rgb24),
    ROW(bind, zeliYUVToRGB_8u_C3C4R, ycc24, rgba32),
    ROW(bind, zeliYUV420ToRGB_8u_P3R, i420, rgbPlanes),
    ROW(bind, zeliYUV420ToRGB_8u_P3, i420, rgbPlanes),
    ROW(bind, zeliYUV420ToRGB_8u_P3C3R, i420, rgb24),
    ROW(bind, zeliYUV420ToRGB_8u_P3C3, i420, rgb24),
    ROW(bind, zeliYUV420ToBGR_8u_P3C3R, i420, bgr24),
    ROW(bind, zeliYUV420ToRGB_8u_P3AC4R, i420, rgba32),
    ROW(bind, zeliYUV422ToRGB_8u_P3R, i422, rgbPlanes),
    ROW(bind, zeliYUV422ToRGB_8u_P3, i422, rgbPlanes),
    ROW(bind, zeliYUV422ToRGB_8u_P3C3R, i422, rgb24),
    ROW(bind, zeliYUV422ToRGB_8u_P3C3, i422, rgb24),
    ROW(bind, zeliYUV422ToRGB_8u_P3AC4R, i422, rgba32),
    ROW(bind, zeliYUV422ToRGB_8u_C2C3R, yuy2, rgb24),

    // packed words
    ROW(bind, zeliBGR555ToYCbCr411_16u8u_C3P3R, Format(bgr24, word555), i411),
    ROW(bind, zeliBGR565ToYCbCr411_16u8u_C3P3R, Format(bgr24, word565), i411),
    ROW(bind, zeliBGR555ToYCbCr420_16u8u_C3P3R, Format(bgr24, word555), i420),
    ROW(bind, zeliBGR565ToYCbCr420_16u8u_C3P3R, Format(bgr24, word565), i420),
    ROW(bindCrFirstDestination, zeliBGR555ToYCrCb420_16u8u_C3P3R, Format(bgr24, word555), i420),
    ROW(bindCrFirstDestination, zeliBGR565ToYCrCb420_16u8u_C3P3R, Format(bgr24, word565), i420),
    ROW(bind, zeliBGR555ToYCbCr422_16u8u_C3C2R, Format(bgr24, word555), yuy2),
    ROW(bind, zeliBGR565ToYCbCr422_16u8u_C3C2R, Format(bgr24, word565), yuy2),
    ROW(bind, zeliBGR555ToYCbCr422_16u8u_C3P3R, Format(bgr24, word555), i422),
    ROW(bind, zeliBGR565ToYCbCr422_16u8u_C3P3R, Format(bgr24, word565), i422),
    ROW(bind, zeliBGR555ToYUV420_16u8u_C3P3R, Format(bgr24, word555), i420),
    ROW(bind, zeliBGR565ToYUV420_16u8u_C3P3R, Format(bgr24, word565), i420),
    ROW(bind, zeliRGB565ToYUV420_16u8u_C3P3R, Format(rgb24, word565), i420),
    ROW(bind, zeliRGB565ToYUV422_16u8u_C3P3R, Format(rgb24, word565), i422),
    ROW(bind, zeliBGR565ToBGR_16u8u_C3R, Format(bgr24, word565), bgr24),
    ROW(bind, zeliRGB565ToRGB_16u8u_C3R, Format(rgb24, word565), rgb24),
    ROW(bind, zeliBGRToBGR565_8u16u_C3R, bgr24, Format(bgr24, word565)),
    ROW(bind, zeliRGBToRGB565_8u16u_C3R, rgb24, Format(rgb24, word565)),

    // between chroma layouts
    ROW(bind, zeliCbYCr422ToYCbCr422_8u_C2P3R, uyvy, i422),
    ROW(bind, zeliCbYCr422ToYCbCr422_8u_C2R, uyvy, yuy2),
    ROW(bind, zeliYCbCr422ToCbYCr422_8u_C2R, yuy2, uyvy),
    ROW(bind, zeliYCbCr422ToCbYCr422_8u_P3C2R, i422, uyvy),
    ROW(bind, zeliYCbCr422ToYCrCb422_8u_C2R, yuy2, yvyu),
    ROW(bind, zeliYCbCr422ToYCrCb422_8u_P3C2R, i422, yvyu),
    ROW(bind, zeliYCbCr422_8u_C2P3R, yuy2, i422),
    ROW(bind, zeliYCbCr422_8u_P3C2R, i422, yuy2),
    ROW(bind, zeliYCrCb422ToYCbCr422_8u_C2P3R, yvyu, i422),
    ROW(bind, zeliYCbCr420_8u_P2P3R, nv12, i420),
    ROW(bind, zeliYCbCr420_8u_P3P2R, i420, nv12),
    ROW(bindCrFirstDestination, zeliYCbCr420ToYCrCb420_8u_P2P3R, nv12, i420),
    ROW(bindCrFirstSource, zeliYCrCb420ToYCbCr420_8u_P3P2R, i420, nv12),
    ROW(bind, zeliYCbCr411_8u_P2P3R, nv11, i411),
    ROW(bind, zeliYCbCr411_8u_P3P2R, i411, nv11),
    ROW(bind, zeliCbYCr422ToYCbCr420_8u_C2P2R, uyvy, nv12),
    ROW(bind, zeliCbYCr422ToYCbCr420_8u_C2P3R, uyvy, i420),
    ROW(bind, zeliYCbCr422ToYCbCr420_8u_C2P2R, yuy2, nv12),
    ROW(bind, zeliYCbCr422ToYCbCr420_8u_C2P3R, yuy2, i420),
    ROW(bind, zeliYCbCr422ToYCbCr420_8u_P3P2R, i422, nv12),
    ROW(bind, zeliYCbCr422ToYCbCr420_8u_P3R, i422, i420),
    ROW(bind, zeliYCrCb422ToYCbCr420_8u_C2P3R, yvyu, i420),
    ROW(bindCrFirstDestination, zeliCbYCr422ToYCrCb420_8u_C2P3R, uyvy, i420),
    ROW(bindCrFirstDestination, zeliYCbCr422ToYCrCb420_8u_C2P3R, yuy2, i420),
    ROW(bind, zeliYCbCr420ToCbYCr422_8u_P2C2R, nv12, uyvy),
    ROW(bind, zeliYCbCr420ToYCbCr422_8u_P2C2R, nv12, yuy2),
    ROW(bind, zeliYCbCr420ToYCbCr422_8u_P2P3R, nv12, i422),
    ROW(bind, zeliYCbCr420ToYCbCr422_8u_P3R, i420, i422),
    ROW(bindCrFirstSource, zeliYCrCb420ToCbYCr422_8u_P3C2R, i420, uyvy),
    ROW(bindCrFirstSource, zeliYCrCb420ToYCbCr422_8u_P3C2R, i420, yuy2),
    ROW(bindCrFirstSource, zeliYCrCb420ToYCbCr422_8u_P3R, i420, i422),
    ROW(bind, zeliCbYCr422ToYCbCr411_8u_C2P3R, uyvy, i411),
    ROW(bind, zeliYCbCr422ToYCbCr411_8u_C2P2R, yuy2, nv11),
    ROW(bind, zeliYCbCr422ToYCbCr411_8u_C2P3R, yuy2, i411),
    ROW(bind, zeliYCbCr422ToYCbCr411_8u_P3P2R, i422, nv11),
    ROW(bind, zeliYCbCr422ToYCbCr411_8u_P3R, i422, i411),
    ROW(bind, zeliYCrCb422ToYCbCr411_8u_C2P3R, yvyu, i411),
    ROW(bind, zeliYCbCr411ToYCbCr422_8u_P2C2R, nv11, yuy2),
    ROW(bind, zeliYCbCr411ToYCbCr422_8u_P2P3R, nv11, i422),
    ROW(bind, zeliYCbCr411ToYCbCr422_8u_P3C2R, i411, yuy2),
    ROW(bind, zeliYCbCr411ToYCbCr422_8u_P3R, i411, i422),
    ROW(bind, zeliYCbCr411ToYCrCb422_8u_P3C2R, i411, yvyu),
    ROW(bindCrFirstDestination, zeliYCbCr411ToYCrCb422_8u_P3R, i411, i422),
    ROW(bind, zeliYCbCr411ToYCbCr420_8u_P2P3R, nv11, i420),
    ROW(bind, zeliYCbCr411ToYCbCr420_8u_P3P2R, i411, nv12),
    ROW(bind, zeliYCbCr411ToYCbCr420_8u_P3R, i411, i420),
    ROW(bindCrFirstDestination, zeliYCbCr411ToYCrCb420_8u_P2P3R, nv11, i420),
    ROW(bind, zeliYCbCr420ToYCbCr411_8u_P2P3R, nv12, i411),
    ROW(bind, zeliYCbCr420ToYCbCr411_8u_P3P2R, i420, nv11),
    ROW(bindCrFirstSource, zeliYCrCb420ToYCbCr411_8u_P3P2R, i420, nv11),

    // with means between samples
    ROW(bind, zeliYCbCr411To420_8u_P3R, i411, i420),
    ROW(bind, zeliYCbCr420To411_8u_P3R, i420, i411),
    ROW(bind, zeliYCbCr1620To420_8u_P3R, i410, i420),
    ROW(bind, zeliYCbCr420To1620_8u_P3R, i420, i410),

    // by field
    ROW(bind, zeliCbYCr422ToYCbCr420_Interlace_8u_C2P3R, uyvy, i420, fieldwise),
    ROW(bind, zeliYCbCr422To420_Interlace_8u_P3R, i422, i420, fieldwise),
    ROW(bind, zeliYCbCr420To422_Interlace_8u_P3R, i420, i422, fieldwise),
    ROW(bind, zeliYCbCr420ToCbYCr422_Interlace_8u_P3C2R, i420, uyvy, fieldwise),

    // filtered
    ROW(bindCrFirstDestination, zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R, nv12, i420, smooth),
    ROW(bind, zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R, nv12, yuy2, smooth),
    ROW(bind, zeliYCbCr420ToYCbCr422_Filter_8u_P2P3R, nv12, i422, interpolate),
    ROW(bind, zeliYCbCr420ToYCbCr422_Filter_8u_P3R, i420, i422, interpolate),
    ROW(bindCrFirstSource, zeliYCrCb420ToYCbCr422_Filter_8u_P3R, i420, i422, interpolate),

    // intensity
    ROW(bind, zeliRGBToGray_8u_C3C1R, rgb24, gray),
    ROW(bind, zeliRGBToGray_8u_AC4C1R, rgba32, gray),
    ROW(bind, zeliColorToGray_8u_C3C1R, rgb24, gray),
    ROW(bind, zeliColorToGray_8u_AC4C1R, rgba32, gray),
    ROW(bind, zeliRGBToGray_16u_C3C1R, Format(rgb24, u16), Format(gray, u16)),
    ROW(bind, zeliRGBToGray_16u_AC4C1R, Format(rgba32, u16), Format(gray, u16)),
    ROW(bind, zeliColorToGray_16u_C3C1R, Format(rgb24, u16), Format(gray, u16)),
    ROW(bind, zeliColorToGray_16u_AC4C1R, Format(rgba32, u16), Format(gray, u16)),
    ROW(bind, zeliRGBToGray_16s_C3C1R, Format(rgb24, s16), Format(gray, s16)),
    ROW(bind, zeliRGBToGray_16s_AC4C1R, Format(rgba32, s16), Format(gray, s16)),
    ROW(bind, zeliColorToGray_16s_C3C1R, Format(rgb24, s16), Format(gray, s16)),
    ROW(bind, zeliColorToGray_16s_AC4C1R, Format(rgba32, s16), Format(gray, s16)),
    ROW(bind, zeliRGBToGray_32f_C3C1R, Format(rgb24, f32), Format(gray, f32)),
    ROW(bind, zeliRGBToGray_32f_AC4C1R, Format(rgba32, f32), Format(gray, f32)),
    ROW(bind, zeliColorToGray_32f_C3C1R, Format(rgb24, f32), Format(gray, f32)),
    ROW(bind, zeliColorToGray_32f_AC4C1R, Format(rgba32, f32), Format(gray, f32)),
    ROW(bind, zeliColorToGray_64f_C3C1R, Format(rgb24, f64), Format(gray, f64)),
    ROW(bind, zeliColorToGray_64f_AC4C1R, Format(rgba32, f64), Format(gray, f64)),
    ROW(bind, zeliGrayToRGB_8u_C1C3R, gray, rgb24),
    ROW(bind, zeliGrayToRGB_8u_C1C4R, gray, rgba32),
    ROW(bind, zeliGrayToRGB_16u_C1C3R, Format(gray, u16), Format(rgb24, u16)),
    ROW(bind, zeliGrayToRGB_16u_C1C4R, Format(gray, u16), Format(rgba32, u16)),
    ROW(bind, zeliGrayToRGB_32f_C1C3R, Format(gray, f32), Format(rgb24, f32)),
    ROW(bind, zeliGrayToRGB_32f_C1C4R, Format(gray, f32), Format(rgba32, f32)),
    ROW(bind, zeliYCbCr422ToGray_8u_C2C1R, yuy2, gray),

    // colour twist
    ROW(bind, zeliColorTwist32f_8u_C3R, rgb24, rgb24, matrix),
    ROW(bind, zeliColorTwist32f_8u_C3IR, rgb24, rgb24, inPlace),
    ROW(bind, zeliColorTwist32f_8u_AC4R, rgba32, rgba32, matrix),
    ROW(bind, zeliColorTwist32f_8u_AC4IR, rgba32, rgba32, inPlace),
    ROW(bind, zeliColorTwist32f_8u_P3R, rgbPlanes, rgbPlanes, matrix),
    ROW(bind, zeliColorTwist32f_8u_IP3R, rgbPlanes, rgbPlanes, inPlace),
    ROW(bind, zeliColorTwist32f_8s_C3R, Format(rgb24, s8), Format(rgb24, s8), matrix),
    ROW(bind, zeliColorTwist32f_8s_C3IR, Format(rgb24, s8), Format(rgb24, s8), inPlace),
    ROW(bind, zeliColorTwist32f_8s_AC4R, Format(rgba32, s8), Format(rgba32, s8), matrix),
    ROW(bind, zeliColorTwist32f_8s_AC4IR, Format(rgba32, s8), Format(rgba32, s8), inPlace),
    ROW(bind, zeliColorTwist32f_8s_P3R, Format(rgbPlanes, s8), Format(rgbPlanes, s8), matrix),
    ROW(bind, zeliColorTwist32f_8s_IP3R, Format(rgbPlanes, s8), Format(rgbPlanes, s8), inPlace),
    ROW(bind, zeliColorTwist32f_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), matrix),
    ROW(bind, zeliColorTwist32f_16u_C3IR, Format(rgb24, u16), Format(rgb24, u16), inPlace),
    ROW(bind, zeliColorTwist32f_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), matrix),
    ROW(bind, zeliColorTwist32f_16u_AC4IR, Format(rgba32, u16), Format(rgba32, u16), inPlace),
    ROW(bind, zeliColorTwist32f_16u_P3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), matrix),
    ROW(bind, zeliColorTwist32f_16u_IP3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), inPlace),
    ROW(bind, zeliColorTwist32f_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), matrix),
    ROW(bind, zeliColorTwist32f_16s_C3IR, Format(rgb24, s16), Format(rgb24, s16), inPlace),
    ROW(bind, zeliColorTwist32f_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), matrix),
    ROW(bind, zeliColorTwist32f_16s_AC4IR, Format(rgba32, s16), Format(rgba32, s16), inPlace),
    ROW(bind, zeliColorTwist32f_16s_P3R, Format(rgbPlanes, s16), Format(rgbPlanes, s16), matrix),
    ROW(bind, zeliColorTwist32f_16s_IP3R, Format(rgbPlanes, s16), Format(rgbPlanes, s16), inPlace),
    ROW(bind, zeliColorTwist_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), matrix),
    ROW(bind, zeliColorTwist_32f_C3IR, Format(rgb24, f32), Format(rgb24, f32), inPlace),
    ROW(bind, zeliColorTwist_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), matrix),
    ROW(bind, zeliColorTwist_32f_AC4IR, Format(rgba32, f32), Format(rgba32, f32), inPlace),
    ROW(bind, zeliColorTwist_32f_P3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), matrix),
    ROW(bind, zeliColorTwist_32f_IP3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), inPlace),
    ROW(bind, zeliColorTwist_32f_C4R, Format(rgba32, f32), Format(rgba32, f32), matrix),

    // gamma
    ROW(bind, zeliGammaFwd_8u_C3R, rgb24, rgb24, curve),
    ROW(bind, zeliGammaFwd_8u_C3IR, rgb24, rgb24, inPlace),
    ROW(bind, zeliGammaFwd_8u_AC4R, rgba32, rgba32, curve),
    ROW(bind, zeliGammaFwd_8u_AC4IR, rgba32, rgba32, inPlace),
    ROW(bind, zeliGammaFwd_8u_P3R, rgbPlanes, rgbPlanes, curve),
    ROW(bind, zeliGammaFwd_8u_IP3R, rgbPlanes, rgbPlanes, inPlace),
    ROW(bind, zeliGammaFwd_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), curve),
    ROW(bind, zeliGammaFwd_16u_C3IR, Format(rgb24, u16), Format(rgb24, u16), inPlace),
    ROW(bind, zeliGammaFwd_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), curve),
    ROW(bind, zeliGammaFwd_16u_AC4IR, Format(rgba32, u16), Format(rgba32, u16), inPlace),
    ROW(bind, zeliGammaFwd_16u_P3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), curve),
    ROW(bind, zeliGammaFwd_16u_IP3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), inPlace),
    ROW(bind, zeliGammaFwd_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), curve),
    ROW(bind, zeliGammaFwd_32f_C3IR, Format(rgb24, f32), Format(rgb24, f32), inPlace),
    ROW(bind, zeliGammaFwd_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), curve),
    ROW(bind, zeliGammaFwd_32f_AC4IR, Format(rgba32, f32), Format(rgba32, f32), inPlace),
    ROW(bind, zeliGammaFwd_32f_P3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), curve),
    ROW(bind, zeliGammaFwd_32f_IP3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), inPlace),
    ROW(bind, zeliGammaInv_8u_C3R, rgb24, rgb24, inverseCurve),
    ROW(bind, zeliGammaInv_8u_C3IR, rgb24, rgb24, inPlace),
    ROW(bind, zeliGammaInv_8u_AC4R, rgba32, rgba32, inverseCurve),
    ROW(bind, zeliGammaInv_8u_AC4IR, rgba32, rgba32, inPlace),
    ROW(bind, zeliGammaInv_8u_P3R, rgbPlanes, rgbPlanes, inverseCurve),
    ROW(bind, zeliGammaInv_8u_IP3R, rgbPlanes, rgbPlanes, inPlace),
    ROW(bind, zeliGammaInv_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), inverseCurve),
    ROW(bind, zeliGammaInv_16u_C3IR, Format(rgb24, u16), Format(rgb24, u16), inPlace),
    ROW(bind, zeliGammaInv_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), inverseCurve),
    ROW(bind, zeliGammaInv_16u_AC4IR, Format(rgba32, u16), Format(rgba32, u16), inPlace),
    ROW(bind, zeliGammaInv_16u_P3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), inverseCurve),
    ROW(bind, zeliGammaInv_16u_IP3R, Format(rgbPlanes, u16), Format(rgbPlanes, u16), inPlace),
    ROW(bind, zeliGammaInv_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), inverseCurve),
    ROW(bind, zeliGammaInv_32f_C3IR, Format(rgb24, f32), Format(rgb24, f32), inPlace),
    ROW(bind, zeliGammaInv_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), inverseCurve),
    ROW(bind, zeliGammaInv_32f_AC4IR, Format(rgba32, f32), Format(rgba32, f32), inPlace),
    ROW(bind, zeliGammaInv_32f_P3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), inverseCurve),
    ROW(bind, zeliGammaInv_32f_IP3R, Format(rgbPlanes, f32), Format(rgbPlanes, f32), inPlace),

    // tone mapping
    ROW(bind, zeliToneMapLinear_32f8u_C1R, Format(gray, f32), gray, byMaximum),
    ROW(bind, zeliToneMapMean_32f8u_C1R, Format(gray, f32), gray, byMean),

    // linear spaces
    ROW(bind, zeliRGBToXYZ_8u_C3R, rgb24, rgb24, toXyz),
    ROW(bind, zeliRGBToXYZ_8u_AC4R, rgba32, rgba32, toXyz),
    ROW(bind, zeliRGBToXYZ_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), toXyz),
    ROW(bind, zeliRGBToXYZ_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), toXyz),
    ROW(bind, zeliRGBToXYZ_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), toXyz),
    ROW(bind, zeliRGBToXYZ_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), toXyz),
    ROW(bind, zeliRGBToXYZ_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), toXyz),
    ROW(bind, zeliRGBToXYZ_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), toXyz),
    ROW(bind, zeliXYZToRGB_8u_C3R, rgb24, rgb24, fromXyz),
    ROW(bind, zeliXYZToRGB_8u_AC4R, rgba32, rgba32, fromXyz),
    ROW(bind, zeliXYZToRGB_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), fromXyz),
    ROW(bind, zeliXYZToRGB_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), fromXyz),
    ROW(bind, zeliXYZToRGB_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), fromXyz),
    ROW(bind, zeliXYZToRGB_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), fromXyz),
    ROW(bind, zeliXYZToRGB_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), fromXyz),
    ROW(bind, zeliXYZToRGB_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), fromXyz),
    ROW(bind, zeliRGBToYCC_8u_C3R, rgb24, rgb24, toYcc),
    ROW(bind, zeliRGBToYCC_8u_AC4R, rgba32, rgba32, toYcc),
    ROW(bind, zeliRGBToYCC_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), toYcc),
    ROW(bind, zeliRGBToYCC_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), toYcc),
    ROW(bind, zeliRGBToYCC_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), toYcc),
    ROW(bind, zeliRGBToYCC_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), toYcc),
    ROW(bind, zeliRGBToYCC_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), toYcc),
    ROW(bind, zeliRGBToYCC_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), toYcc),
    ROW(bind, zeliYCCToRGB_8u_C3R, rgb24, rgb24, fromYcc),
    ROW(bind, zeliYCCToRGB_8u_AC4R, rgba32, rgba32, fromYcc),
    ROW(bind, zeliYCCToRGB_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), fromYcc),
    ROW(bind, zeliYCCToRGB_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), fromYcc),
    ROW(bind, zeliYCCToRGB_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), fromYcc),
    ROW(bind, zeliYCCToRGB_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), fromYcc),
    ROW(bind, zeliYCCToRGB_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), fromYcc),
    ROW(bind, zeliYCCToRGB_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), fromYcc),

    // hue
    ROW(bind, zeliRGBToHLS_8u_C3R, rgb24, ycc24, toHls),
    ROW(bind, zeliRGBToHLS_8u_AC4R, rgba32, ycc32, toHls),
    ROW(bind, zeliRGBToHLS_16u_C3R, Format(rgb24, u16), Format(ycc24, u16), toHls),
    ROW(bind, zeliRGBToHLS_16u_AC4R, Format(rgba32, u16), Format(ycc32, u16), toHls),
    ROW(bind, zeliRGBToHLS_16s_C3R, Format(rgb24, s16), Format(ycc24, s16), toHls),
    ROW(bind, zeliRGBToHLS_16s_AC4R, Format(rgba32, s16), Format(ycc32, s16), toHls),
    ROW(bind, zeliRGBToHLS_32f_C3R, Format(rgb24, f32), Format(ycc24, f32), toHls),
    ROW(bind, zeliRGBToHLS_32f_AC4R, Format(rgba32, f32), Format(ycc32, f32), toHls),
    ROW(bind, zeliBGRToHLS_8u_AC4R, bgra32, ycc32, toHls),
    ROW(bind, zeliBGRToHLS_8u_C3P3R, bgr24, i444, toHls),
    ROW(bind, zeliBGRToHLS_8u_P3C3R, rgbPlanes, ycc24, toHls),
    ROW(bind, zeliBGRToHLS_8u_P3R, rgbPlanes, i444, toHls),
    ROW(bind, zeliBGRToHLS_8u_AC4P4R, bgra32, i444a, toHls),
    ROW(bind, zeliBGRToHLS_8u_AP4C4R, i444a, ycc32, toHls),
    ROW(bind, zeliBGRToHLS_8u_AP4R, i444a, i444a, toHls),
    ROW(bind, zeliHLSToRGB_8u_C3R, ycc24, rgb24, fromHls),
    ROW(bind, zeliHLSToRGB_8u_AC4R, ycc32, rgba32, fromHls),
    ROW(bind, zeliHLSToRGB_16u_C3R, Format(ycc24, u16), Format(rgb24, u16), fromHls),
    ROW(bind, zeliHLSToRGB_16u_AC4R, Format(ycc32, u16), Format(rgba32, u16), fromHls),
    ROW(bind, zeliHLSToRGB_16s_C3R, Format(ycc24, s16), Format(rgb24, s16), fromHls),
    ROW(bind, zeliHLSToRGB_16s_AC4R, Format(ycc32, s16), Format(rgba32, s16), fromHls),
    ROW(bind, zeliHLSToRGB_32f_C3R, Format(ycc24, f32), Format(rgb24, f32), fromHls),
    ROW(bind, zeliHLSToRGB_32f_AC4R, Format(ycc32, f32), Format(rgba32, f32), fromHls),
    ROW(bind, zeliHLSToBGR_8u_C3P3R, ycc24, rgbPlanes, fromHls),
    ROW(bind, zeliHLSToBGR_8u_P3C3R, i444, bgr24, fromHls),
    ROW(bind, zeliHLSToBGR_8u_P3R, i444, rgbPlanes, fromHls),
    ROW(bind, zeliHLSToBGR_8u_AC4P4R, ycc32, i444a, fromHls),
    ROW(bind, zeliHLSToBGR_8u_AP4C4R, i444a, bgra32, fromHls),
    ROW(bind, zeliHLSToBGR_8u_AP4R, i444a, i444a, fromHls),
    ROW(bind, zeliRGBToHSV_8u_C3R, rgb24, ycc24, toHsv),
    ROW(bind, zeliRGBToHSV_8u_AC4R, rgba32, ycc32, toHsv),
    ROW(bind, zeliRGBToHSV_16u_C3R, Format(rgb24, u16), Format(ycc24, u16), toHsv),
    ROW(bind, zeliRGBToHSV_16u_AC4R, Format(rgba32, u16), Format(ycc32, u16), toHsv),
    ROW(bind, zeliHSVToRGB_8u_C3R, ycc24, rgb24, fromHsv),
    ROW(bind, zeliHSVToRGB_8u_AC4R, ycc32, rgba32, fromHsv),
    ROW(bind, zeliHSVToRGB_16u_C3R, Format(ycc24, u16), Format(rgb24, u16), fromHsv),
    ROW(bind, zeliHSVToRGB_16u_AC4R, Format(ycc32, u16), Format(rgba32, u16), fromHsv),

    // uniform spaces
    ROW(bind, zeliRGBToLUV_8u_C3R, rgb24, rgb24, toLuv),
    ROW(bind, zeliRGBToLUV_8u_AC4R, rgba32, rgba32, toLuv),
    ROW(bind, zeliRGBToLUV_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), toLuv),
    ROW(bind, zeliRGBToLUV_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), toLuv),
    ROW(bind, zeliRGBToLUV_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), toLuv),
    ROW(bind, zeliRGBToLUV_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), toLuv),
    ROW(bind, zeliRGBToLUV_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), toLuv),
    ROW(bind, zeliRGBToLUV_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), toLuv),
    ROW(bind, zeliBGRToLUV_8u_C3R, bgr24, rgb24, toLuv),
    ROW(bind, zeliBGRToLUV_32f_C3R, Format(bgr24, f32), Format(rgb24, f32), toLuv),
    ROW(bind, zeliLUVToRGB_8u_C3R, rgb24, rgb24, fromLuv),
    ROW(bind, zeliLUVToRGB_8u_AC4R, rgba32, rgba32, fromLuv),
    ROW(bind, zeliLUVToRGB_16u_C3R, Format(rgb24, u16), Format(rgb24, u16), fromLuv),
    ROW(bind, zeliLUVToRGB_16u_AC4R, Format(rgba32, u16), Format(rgba32, u16), fromLuv),
    ROW(bind, zeliLUVToRGB_16s_C3R, Format(rgb24, s16), Format(rgb24, s16), fromLuv),
    ROW(bind, zeliLUVToRGB_16s_AC4R, Format(rgba32, s16), Format(rgba32, s16), fromLuv),
    ROW(bind, zeliLUVToRGB_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), fromLuv),
    ROW(bind, zeliLUVToRGB_32f_AC4R, Format(rgba32, f32), Format(rgba32, f32), fromLuv),
    ROW(bind, zeliLUVToBGR_8u_C3R, rgb24, bgr24, fromLuv),
    ROW(bind, zeliLUVToBGR_32f_C3R, Format(rgb24, f32), Format(bgr24, f32), fromLuv),
    ROW(bind, zeliRGBToLab_8u_C3R, rgb24, rgb24, toLab),
    ROW(bind, zeliBGRToLab_8u_C3R, bgr24, rgb24, toLab),
    ROW(bind, zeliBGRToLab_8u16u_C3R, bgr24, Format(rgb24, u16), toLab),
    ROW(bind, zeliRGBToLab_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), toLab),
    ROW(bind, zeliBGRToLab_32f_C3R, Format(bgr24, f32), Format(rgb24, f32), toLab),
    ROW(bind, zeliLabToRGB_8u_C3R, rgb24, rgb24, fromLab),
    ROW(bind, zeliLabToBGR_8u_C3R, rgb24, bgr24, fromLab),
    ROW(bind, zeliLabToBGR_16u8u_C3R, Format(rgb24, u16), bgr24, fromLab),
    ROW(bind, zeliLabToRGB_32f_C3R, Format(rgb24, f32), Format(rgb24, f32), fromLab),
    ROW(bind, zeliLabToBGR_32f_C3R, Format(rgb24, f32), Format(bgr24, f32), fromLab),

    // lifting
    ROW(bind, zeliBGRToYCoCg_8u16s_C3P3R, bgr24, Format(i444, s16), lift),
    ROW(bind, zeliBGRToYCoCg_8u16s_C4P3R, bgra32, Format(i444, s16), lift),
    ROW(bind, zeliBGRToYCoCg_Rev_8u16s_C3P3R, bgr24, Format(i444, s16), reversible),
    ROW(bind, zeliBGRToYCoCg_Rev_8u16s_C4P3R, bgra32, Format(i444, s16), reversible),
    ROW(bind, zeliSBGRToYCoCg_16s_C3P3R, Format(bgr24, s16), Format(i444, s16), lift),
    ROW(bind, zeliSBGRToYCoCg_16s_C4P3R, Format(bgra32, s16), Format(i444, s16), lift),
    ROW(bind, zeliSBGRToYCoCg_16s32s_C3P3R, Format(bgr24, s16), Format(i444, s32), lift),
    ROW(bind, zeliSBGRToYCoCg_16s32s_C4P3R, Format(bgra32, s16), Format(i444, s32), lift),
    ROW(bind, zeliSBGRToYCoCg_Rev_16s_C3P3R, Format(bgr24, s16), Format(i444, s16), reversible),
    ROW(bind, zeliSBGRToYCoCg_Rev_16s_C4P3R, Format(bgra32, s16), Format(i444, s16), reversible),
    ROW(bind, zeliSBGRToYCoCg_Rev_16s32s_C3P3R, Format(bgr24, s16), Format(i444, s32), reversible),
    ROW(bind, zeliSBGRToYCoCg_Rev_16s32s_C4P3R, Format(bgra32, s16), Format(i444, s32), reversible),
    ROW(bind, zeliRGBToYCoCg_8u_C3P3R, rgb24, i444, lift),
    ROW(bind, zeliYCoCgToBGR_16s8u_P3C3R, Format(i444, s16), bgr24, lift),
    ROW(bind, zeliYCoCgToBGR_16s8u_P3C4R, Format(i444, s16), bgra32, lift),
    ROW(bind, zeliYCoCgToBGR_Rev_16s8u_P3C3R, Format(i444, s16), bgr24, reversible),
    ROW(bind, zeliYCoCgToBGR_Rev_16s8u_P3C4R, Format(i444, s16), bgra32, reversible),
    ROW(bind, zeliYCoCgToRGB_8u_P3C3R, i444, rgb24, lift),
    ROW(bind, zeliYCoCgToSBGR_16s_P3C3R, Format(i444, s16), Format(bgr24, s16), lift),
    ROW(bind, zeliYCoCgToSBGR_16s_P3C4R, Format(i444, s16), Format(bgra32, s16), lift),
    ROW(bind, zeliYCoCgToSBGR_32s16s_P3C3R, Format(i444, s32), Format(bgr24, s16), lift),
    ROW(bind, zeliYCoCgToSBGR_32s16s_P3C4R, Format(i444, s32), Format(bgra32, s16), lift),
    ROW(bind, zeliYCoCgToSBGR_Rev_16s_P3C3R, Format(i444, s16), Format(bgr24, s16), reversible),
    ROW(bind, zeliYCoCgToSBGR_Rev_16s_P3C4R, Format(i444, s16), Format(bgra32, s16), reversible),
    ROW(bind, zeliYCoCgToSBGR_Rev_32s16s_P3C3R, Format(i444, s32), Format(bgr24, s16), reversible),
    ROW(bind, zeliYCoCgToSBGR_Rev_32s16s_P3C4R, Format(i444, s32), Format(bgra32, s16), reversible),

    // bit depth
    REDUCTIONS(8u, u8, u8),
    REDUCTIONS(16u, u16, u16),
    REDUCTIONS(16s, s16, s16),
    REDUCTIONS(16u8u, u16, u8),
    REDUCTIONS(16s8u, s16, u8),
    REDUCTIONS(32f8u, f32, u8),
    REDUCTIONS(32f16u, f32, u16),
    REDUCTIONS(32f16s, f32, s16),
    makeRow("zeliReduceBits_8u1u_C1R", bind<reduceToBits<zelDitherNone>>, {gray, bits, toLevels}),
    makeRow("zeliReduceBits_8u1u_C1R/stucki", bind<reduceToBits<zelDitherStucki>>, {gray, bits, stucki}),

    // raw sensors
    makeRow("zeliCFAToRGB_8u_C1C3R", bindMosaic<zeliCFAToRGB_8u_C1C3R, uint8_t>, {gray, rgb24, mosaic}),
    makeRow("zeliCFAToRGB_16u_C1C3R", bindMosaic<zeliCFAToRGB_16u_C1C3R, uint16_t>,
            {Format(gray, u16), Format(rgb24, u16), mosaic}),
    makeRow("zeliDemosaicAHD_8u_C1C3R", bindBuffered<zeliDemosaicAHD_8u_C1C3R, uint8_t>, {gray, rgb24, homogeneity}),
    makeRow("zeliDemosaicAHD_16u_C1C3R", bindBuffered<zeliDemosaicAHD_16u_C1C3R, uint16_t>,
            {Format(gray, u16), Format(rgb24, u16), homogeneity}),

    // to packed words
    ROW(bind, zeliYCbCrToBGR444_8u16u_C3R, ycc24, Format(bgr24, word444)),
    ROW(bind, zeliYCbCrToRGB444_8u16u_C3R, ycc24, Format(rgb24, word444)),
    ROW(bind, zeliYCbCrToBGR555_8u16u_C3R, ycc24, Format(bgr24, word555)),
    ROW(bind, zeliYCbCrToRGB555_8u16u_C3R, ycc24, Format(rgb24, word555)),
    ROW(bind, zeliYCbCrToBGR565_8u16u_C3R, ycc24, Format(bgr24, word565)),
    ROW(bind, zeliYCbCrToRGB565_8u16u_C3R, ycc24, Format(rgb24, word565)),
    ROW(bind, zeliYCbCrToBGR444_8u16u_P3C3R, i444, Format(bgr24, word444)),
    ROW(bind, zeliYCbCrToRGB444_8u16u_P3C3R, i444, Format(rgb24, word444)),
    ROW(bind, zeliYCbCrToBGR555_8u16u_P3C3R, i444, Format(bgr24, word555)),
    ROW(bind, zeliYCbCrToRGB555_8u16u_P3C3R, i444, Format(rgb24, word555)),
    ROW(bind, zeliYCbCrToBGR565_8u16u_P3C3R, i444, Format(bgr24, word565)),
    ROW(bind, zeliYCbCrToRGB565_8u16u_P3C3R, i444, Format(rgb24, word565)),
    ROW(bind, zeliYCbCr422ToBGR444_8u16u_C2C3R, yuy2, Format(bgr24, word444)),
    ROW(bind, zeliYCbCr422ToRGB444_8u16u_C2C3R, yuy2, Format(rgb24, word444)),
    ROW(bind, zeliYCbCr422ToBGR555_8u16u_C2C3R, yuy2, Format(bgr24, word555)),
    ROW(bind, zeliYCbCr422ToRGB555_8u16u_C2C3R, yuy2, Format(rgb24, word555)),
    ROW(bind, zeliYCbCr422ToBGR565_8u16u_C2C3R, yuy2, Format(bgr24, word565)),
    ROW(bind, zeliYCbCr422ToRGB565_8u16u_C2C3R, yuy2, Format(rgb24, word565)),
    ROW(bind, zeliYCbCr422ToBGR444_8u16u_P3C3R, i422, Format(bgr24, word444)),
    ROW(bind, zeliYCbCr422ToRGB444_8u16u_P3C3R, i422, Format(rgb24, word444)),
    ROW(bind, zeliYCbCr422ToBGR555_8u16u_P3C3R, i422, Format(bgr24, word555)),
    ROW(bind, zeliYCbCr422ToRGB555_8u16u_P3C3R, i422, Format(rgb24, word555)),
    ROW(bind, zeliYCbCr422ToBGR565_8u16u_P3C3R, i422, Format(bgr24, word565)),
    ROW(bind, zeliYCbCr422ToRGB565_8u16u_P3C3R, i422, Format(rgb24, word565)),
    ROW(bind, zeliYCbCr420ToBGR444_8u16u_P3C3R, i420, Format(bgr24, word444)),
    ROW(bind, zeliYCbCr420ToRGB444_8u16u_P3C3R, i420, Format(rgb24, word444)),
    ROW(bind, zeliYCbCr420ToBGR555_8u16u_P3C3R, i420, Format(bgr24, word555)),
    ROW(bind, zeliYCbCr420ToRGB555_8u16u_P3C3R, i420, Format(rgb24, word555)),
    ROW(bind, zeliYCbCr420ToBGR565_8u16u_P3C3R, i420, Format(bgr24, word565)),
    ROW(bind, zeliYCbCr420ToRGB565_8u16u_P3C3R, i420, Format(rgb24, word565)),
    ROW(bind, zeliYCbCr411ToBGR555_8u16u_P3C3R, i411, Format(bgr24, word555)),
    ROW(bind, zeliYCbCr411ToBGR565_8u16u_P3C3R, i411, Format(bgr24, word565)),
    ROW(bind, zeliYUV420ToBGR444_8u16u_P3C3R, i420, Format(bgr24, word444)),
    ROW(bind, zeliYUV420ToRGB444_8u16u_P3C3R, i420, Format(rgb24, word444)),
    ROW(bind, zeliYUV420ToBGR555_8u16u_P3C3R, i420, Format(bgr24, word555)),
    ROW(bind, zeliYUV420ToRGB555_8u16u_P3C3R, i420, Format(rgb24, word555)),
    ROW(bind, zeliYUV420ToBGR565_8u16u_P3C3R, i420, Format(bgr24, word565)),
    ROW(bind, zeliYUV420ToRGB565_8u16u_P3C3R, i420, Format(rgb24, word565)),

    // to packed words with a dither
    ROW(bind, zeliYCbCrToBGR444Dither_8u16u_C3R, ycc24, Format(bgr24, word444), dithered),
    ROW(bind, zeliYCbCrToRGB444Dither_8u16u_C3R, ycc24, Format(rgb24, word444), dithered),
    ROW(bind, zeliYCbCrToBGR555Dither_8u16u_C3R, ycc24, Format(bgr24, word555), dithered),
    ROW(bind, zeliYCbCrToRGB555Dither_8u16u_C3R, ycc24, Format(rgb24, word555), dithered),
    ROW(bind, zeliYCbCrToBGR565Dither_8u16u_C3R, ycc24, Format(bgr24, word565), dithered),
    ROW(bind, zeliYCbCrToRGB565Dither_8u16u_C3R, ycc24, Format(rgb24, word565), dithered),
    ROW(bind, zeliYCbCrToBGR444Dither_8u16u_P3C3R, i444, Format(bgr24, word444), dithered),
    ROW(bind, zeliYCbCrToRGB444Dither_8u16u_P3C3R, i444, Format(rgb24, word444), dithered),
    ROW(bind, zeliYCbCrToBGR555Dither_8u16u_P3C3R, i444, Format(bgr24, word555), dithered),
    ROW(bind, zeliYCbCrToRGB555Dither_8u16u_P3C3R, i444, Format(rgb24, word555), dithered),
    ROW(bind, zeliYCbCrToBGR565Dither_8u16u_P3C3R, i444, Format(bgr24, word565), dithered),
    ROW(bind, zeliYCbCrToRGB565Dither_8u16u_P3C3R, i444, Format(rgb24, word565), dithered),
    ROW(bind, zeliYCbCr422ToBGR444Dither_8u16u_C2C3R, yuy2, Format(bgr24, word444), dithered),
    ROW(bind, zeliYCbCr422ToRGB444Dither_8u16u_C2C3R, yuy2, Format(rgb24, word444), dithered),
    ROW(bind, zeliYCbCr422ToBGR555Dither_8u16u_C2C3R, yuy2, Format(bgr24, word555), dithered),
    ROW(bind, zeliYCbCr422ToRGB555Dither_8u16u_C2C3R, yuy2, Format(rgb24, word555), dithered),
    ROW(bind, zeliYCbCr422ToBGR565Dither_8u16u_C2C3R, yuy2, Format(bgr24, word565), dithered),
    ROW(bind, zeliYCbCr422ToRGB565Dither_8u16u_C2C3R, yuy2, Format(rgb24, word565), dithered),
    ROW(bind, zeliYCbCr422ToBGR444Dither_8u16u_P3C3R, i422, Format(bgr24, word444), dithered),
    ROW(bind, zeliYCbCr422ToRGB444Dither_8u16u_P3C3R, i422, Format(rgb24, word444), dithered),
    ROW(bind, zeliYCbCr422ToBGR555Dither_8u16u_P3C3R, i422, Format(bgr24, word555), dithered),
    ROW(bind, zeliYCbCr422ToRGB555Dither_8u16u_P3C3R, i422, Format(rgb24, word555), dithered),
    ROW(bind, zeliYCbCr422ToBGR565Dither_8u16u_P3C3R, i422, Format(bgr24, word565), dithered),
    ROW(bind, zeliYCbCr422ToRGB565Dither_8u16u_P3C3R, i422, Format(rgb24, word565), dithered),
    ROW(bind, zeliYCbCr420ToBGR444Dither_8u16u_P3C3R, i420, Format(bgr24, word444), dithered),
    ROW(bind, zeliYCbCr420ToRGB444Dither_8u16u_P3C3R, i420, Format(rgb24, word444), dithered),
    ROW(bind, zeliYCbCr420ToBGR555Dither_8u16u_P3C3R, i420, Format(bgr24, word555), dithered),
    ROW(bind, zeliYCbCr420ToRGB555Dither_8u16u_P3C3R, i420, Format(rgb24, word555), dithered),
    ROW(bind, zeliYCbCr420ToBGR565Dither_8u16u_P3C3R, i420, Format(bgr24, word565), dithered),
    ROW(bind, zeliYCbCr420ToRGB565Dither_8u16u_P3C3R, i420, Format(rgb24, word565), dithered),
    ROW(bind, zeliYUV420ToBGR444Dither_8u16u_P3C3R, i420, Format(bgr24, word444), dithered),
    ROW(bind, zeliYUV420ToRGB444Dither_8u16u_P3C3R, i420, Format(rgb24, word444), dithered),
    ROW(bind, zeliYUV420ToBGR555Dither_8u16u_P3C3R, i420, Format(bgr24, word555), dithered),
    ROW(bind, zeliYUV420ToRGB555Dither_8u16u_P3C3R, i420, Format(rgb24, word555), dithered),
    ROW(bind, zeliYUV420ToBGR565Dither_8u16u_P3C3R, i420, Format(bgr24, word565), dithered),
    ROW(bind, zeliYUV420ToRGB565Dither_8u16u_P3C3R, i420, Format(rgb24, word565), dithered),
};

constexpr bool isMeasured(std::string_view name) {
    for (const Export& row : table) {
        if (row.name == name) return true;
    }
    return name == "zelccGetLibVersion";
}

#define ZEL_EXPORT(name, group, columns) static_assert(isMeasured(#name), #name " has no row in the table");
#include "frame/exports.def"

}  // namespace

std::span<const Export> exports() { return table; }

}  // namespace bench
