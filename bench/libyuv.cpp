// libyuv names pixels by their order in a little-endian word: ARGB is B, G, R, A in memory, ABGR is R, G, B, A, RGB24 is
// B, G, R and RAW is R, G, B. Where it has no conversion of its own, two or three steps over the whole frame do the task.
#include <libyuv.h>

#include "bind.h"
#include "libyuv_level.h"
#include "peers.h"

namespace bench {

namespace {

using enum Depth;
using enum Layout;
using enum Variant;
using namespace libyuv;

using Maker = decltype(Peer::bind);

struct Row {
    Task task;
    const char* steps;
    Maker bind;
};

Maker via(Layout between, Maker first, Maker second) {
    return [=](const Image& source, const Image& destination) -> Call {
        const auto middle = std::make_shared<OwnImage>(between, source.size);
        return [middle, toMiddle = first(source, middle->image), fromMiddle = second(middle->image, destination)] {
            const int status = toMiddle();
            return status ? status : fromMiddle();
        };
    };
}

template <auto function>
Call bindCrFirst(const Image& source, const Image& destination) {
    return bind<function>(source, withChromaExchanged(destination));
}

Call bindBilinear(const Image& source, const Image& destination) {
    return detail::bind(I420ToARGBMatrixFilter, source, destination, &kYuvI601Constants, kFilterBilinear);
}

template <auto function, auto constants>
Call bindMatrix(const Image& source, const Image& destination) {
    return detail::bind(function, source, destination, constants);
}

// Pairs of pixels are as wide as one of 32 bits.
constexpr uint8_t exchangeBytes[16] = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14};
constexpr uint8_t exchangeChroma[16] = {0, 3, 2, 1, 4, 7, 6, 5, 8, 11, 10, 9, 12, 15, 14, 13};

template <const uint8_t (&order)[16]>
int shufflePairs(const uint8_t* source, int sourceStep, uint8_t* destination, int destinationStep, int width, int height) {
    return ARGBShuffle(source, sourceStep, destination, destinationStep, order, width / 2, height);
}

template <auto function>
Call bindCrFirstSource(const Image& source, const Image& destination) {
    return bind<function>(withChromaExchanged(source), destination);
}

// The dither of its own choice.
int ditheredI420(const uint8_t* y, int yStep, const uint8_t* u, int uStep, const uint8_t* v, int vStep, uint8_t* destination,
                 int destinationStep, int width, int height) {
    return I420ToRGB565Dither(y, yStep, u, uStep, v, vStep, destination, destinationStep, nullptr, width, height);
}
int ditheredArgb(const uint8_t* source, int sourceStep, uint8_t* destination, int destinationStep, int width, int height) {
    return ARGBToRGB565Dither(source, sourceStep, destination, destinationStep, nullptr, width, height);
}

const Row table[] = {
    // 4:4:4
    {{rgb24, i444}, "RAWToARGB, ARGBToI444", via(bgra32, bind<RAWToARGB>, bind<ARGBToI444>)},
    {{rgba32, i444}, "ABGRToARGB, ARGBToI444", via(bgra32, bind<ABGRToARGB>, bind<ARGBToI444>)},
    {{rgbPlanes, i444}, "MergeARGBPlane, ARGBToI444", via(bgra32, bind<MergeARGBPlane>, bind<ARGBToI444>)},
    {{i444, rgbPlanes}, "I444ToRAW, SplitRGBPlane", via(rgb24, bind<I444ToRAW>, bind<SplitRGBPlane>)},
    {{i444, rgb24}, "I444ToRAW", bind<I444ToRAW>},
    {{i444, bgr24}, "I444ToRGB24", bind<I444ToRGB24>},
    {{i444, rgba32}, "I444ToABGR", bind<I444ToABGR>},
    {{i444, bgra32}, "I444ToARGB", bind<I444ToARGB>},

    {{i444, bgr24, matrix709}, "I444ToRGB24Matrix, BT.709", bindMatrix<I444ToRGB24Matrix, &kYuvH709Constants>},
    {{i444, bgra32, matrix709}, "H444ToARGB", bind<H444ToARGB>},

    // encoders to 4:2:0
    {{rgb24, i420}, "RAWToI420", bind<RAWToI420>},
    {{bgr24, i420}, "RGB24ToI420", bind<RGB24ToI420>},
    {{rgba32, i420}, "ABGRToI420", bind<ABGRToI420>},
    {{bgra32, i420}, "ARGBToI420", bind<ARGBToI420>},
    {{rgb24, nv12}, "RAWToARGB, ARGBToNV12", via(bgra32, bind<RAWToARGB>, bind<ARGBToNV12>)},
    {{rgb24, nv12}, "RAWToI420, I420ToNV12", via(i420, bind<RAWToI420>, bind<I420ToNV12>)},
    {{rgba32, nv12}, "ABGRToNV12", bind<ABGRToNV12>},

    // encoders to 4:2:2
    {{rgb24, i422}, "RAWToARGB, ARGBToI422", via(bgra32, bind<RAWToARGB>, bind<ARGBToI422>)},
    {{bgr24, i422}, "RGB24ToARGB, ARGBToI422", via(bgra32, bind<RGB24ToARGB>, bind<ARGBToI422>)},
    {{bgra32, i422}, "ARGBToI422", bind<ARGBToI422>},
    {{rgb24, yuy2}, "RAWToARGB, ARGBToYUY2", via(bgra32, bind<RAWToARGB>, bind<ARGBToYUY2>)},
    {{bgr24, yuy2}, "RGB24ToARGB, ARGBToYUY2", via(bgra32, bind<RGB24ToARGB>, bind<ARGBToYUY2>)},
    {{bgra32, yuy2}, "ARGBToYUY2", bind<ARGBToYUY2>},
    {{rgbPlanes, yuy2}, "MergeARGBPlane, ARGBToYUY2", via(bgra32, bind<MergeARGBPlane>, bind<ARGBToYUY2>)},
    {{rgb24, yvyu},
     "RAWToARGB, ARGBToI422, I422ToYUY2",
     via(bgra32, bind<RAWToARGB>, via(i422, bindCrFirst<ARGBToI422>, bind<I422ToYUY2>))},
    {{rgbPlanes, yvyu},
     "MergeARGBPlane, ARGBToI422, I422ToYUY2",
     via(bgra32, bind<MergeARGBPlane>, via(i422, bindCrFirst<ARGBToI422>, bind<I422ToYUY2>))},

    {{rgb24, uyvy}, "RAWToARGB, ARGBToUYVY", via(bgra32, bind<RAWToARGB>, bind<ARGBToUYVY>)},
    {{bgra32, uyvy}, "ARGBToUYVY", bind<ARGBToUYVY>},

    // packed words
    {{Format(bgr24, word565), i420}, "RGB565ToI420", bind<RGB565ToI420>},
    {{Format(bgr24, word555), i420}, "ARGB1555ToI420", bind<ARGB1555ToI420>},
    {{Format(rgb24, word565), i420}, "RGB565ToARGB, ABGRToI420", via(rgba32, bind<RGB565ToARGB>, bind<ABGRToI420>)},
    {{Format(bgr24, word565), i422}, "RGB565ToARGB, ARGBToI422", via(bgra32, bind<RGB565ToARGB>, bind<ARGBToI422>)},
    {{Format(bgr24, word555), i422}, "ARGB1555ToARGB, ARGBToI422", via(bgra32, bind<ARGB1555ToARGB>, bind<ARGBToI422>)},
    {{Format(bgr24, word565), yuy2}, "RGB565ToARGB, ARGBToYUY2", via(bgra32, bind<RGB565ToARGB>, bind<ARGBToYUY2>)},
    {{Format(bgr24, word555), yuy2}, "ARGB1555ToARGB, ARGBToYUY2", via(bgra32, bind<ARGB1555ToARGB>, bind<ARGBToYUY2>)},
    {{Format(bgr24, word565), bgr24}, "RGB565ToARGB, ARGBToRGB24", via(bgra32, bind<RGB565ToARGB>, bind<ARGBToRGB24>)},
    {{Format(rgb24, word565), rgb24}, "RGB565ToARGB, ARGBToRGB24", via(rgba32, bind<RGB565ToARGB>, bind<ARGBToRGB24>)},
    {{bgr24, Format(bgr24, word565)}, "RGB24ToARGB, ARGBToRGB565", via(bgra32, bind<RGB24ToARGB>, bind<ARGBToRGB565>)},
    {{rgb24, Format(rgb24, word565)}, "RGB24ToARGB, ARGBToRGB565", via(rgba32, bind<RGB24ToARGB>, bind<ARGBToRGB565>)},

    // decoders of 4:2:0
    {{i420, rgb24}, "I420ToRAW", bind<I420ToRAW>},
    {{i420, bgr24}, "I420ToRGB24", bind<I420ToRGB24>},
    {{i420, rgba32}, "I420ToABGR", bind<I420ToABGR>},
    {{i420, bgra32}, "I420ToARGB", bind<I420ToARGB>},
    {{i420, bgr24, matrix709}, "H420ToRGB24", bind<H420ToRGB24>},
    {{i420, bgra32, matrix709Full}, "H420ToARGB", bind<H420ToARGB>},
    {{i420, bgra32, matrix709Full}, "I420ToARGBMatrix, BT.709 full", bindMatrix<I420ToARGBMatrix, &kYuvF709Constants>},
    {{i420, bgra32, interpolate}, "I420ToARGBMatrixFilter, bilinear", bindBilinear},
    {{nv12, rgb24}, "NV12ToRAW", bind<NV12ToRAW>},
    {{nv12, bgr24}, "NV12ToRGB24", bind<NV12ToRGB24>},
    {{nv12, rgba32}, "NV12ToABGR", bind<NV12ToABGR>},
    {{nv12, bgra32}, "NV12ToARGB", bind<NV12ToARGB>},
    {{nv21, rgb24}, "NV21ToRAW", bind<NV21ToRAW>},
    {{nv21, bgr24}, "NV21ToRGB24", bind<NV21ToRGB24>},
    {{nv21, rgba32}, "NV21ToABGR", bind<NV21ToABGR>},
    {{nv21, bgra32}, "NV21ToARGB", bind<NV21ToARGB>},

    // decoders of 4:2:2
    {{i422, rgb24}, "I422ToRAW", bind<I422ToRAW>},
    {{i422, bgr24}, "I422ToRGB24", bind<I422ToRGB24>},
    {{yuy2, rgb24}, "YUY2ToARGB, ARGBToRAW", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToRAW>)},
    {{yuy2, rgb24}, "YUY2ToI422, I422ToRAW", via(i422, bind<YUY2ToI422>, bind<I422ToRAW>)},
    {{yuy2, bgr24}, "YUY2ToARGB, ARGBToRGB24", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToRGB24>)},
    {{yuy2, bgr24}, "YUY2ToI422, I422ToRGB24", via(i422, bind<YUY2ToI422>, bind<I422ToRGB24>)},
    {{yuy2, rgba32}, "YUY2ToARGB, ARGBToABGR", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToABGR>)},
    {{yuy2, rgba32}, "YUY2ToI422, I422ToABGR", via(i422, bind<YUY2ToI422>, bind<I422ToABGR>)},
    {{yuy2, bgra32}, "YUY2ToARGB", bind<YUY2ToARGB>},
    {{yuy2, rgbPlanes},
     "YUY2ToI422, I422ToRAW, SplitRGBPlane",
     via(i422, bind<YUY2ToI422>, via(rgb24, bind<I422ToRAW>, bind<SplitRGBPlane>))},
    {{uyvy, rgb24}, "UYVYToARGB, ARGBToRAW", via(bgra32, bind<UYVYToARGB>, bind<ARGBToRAW>)},
    {{uyvy, rgb24}, "UYVYToI422, I422ToRAW", via(i422, bind<UYVYToI422>, bind<I422ToRAW>)},
    {{uyvy, bgra32}, "UYVYToARGB", bind<UYVYToARGB>},
    {{uyvy, bgr24, matrix709Full},
     "UYVYToI422, I422ToRGB24Matrix, BT.709 full",
     via(i422, bind<UYVYToI422>, bindMatrix<I422ToRGB24Matrix, &kYuvF709Constants>)},
    {{uyvy, bgra32, matrix709Full},
     "UYVYToI422, I422ToARGBMatrix, BT.709 full",
     via(i422, bind<UYVYToI422>, bindMatrix<I422ToARGBMatrix, &kYuvF709Constants>)},
    {{yvyu, rgb24}, "YUY2ToI422, I422ToRAW", via(i422, bindCrFirst<YUY2ToI422>, bind<I422ToRAW>)},
    {{yvyu, bgr24}, "YUY2ToI422, I422ToRGB24", via(i422, bindCrFirst<YUY2ToI422>, bind<I422ToRGB24>)},
    {{yvyu, rgba32}, "YUY2ToI422, I422ToABGR", via(i422, bindCrFirst<YUY2ToI422>, bind<I422ToABGR>)},
    {{yvyu, bgra32}, "YUY2ToI422, I422ToARGB", via(i422, bindCrFirst<YUY2ToI422>, bind<I422ToARGB>)},
    {{yvyu, rgbPlanes},
     "YUY2ToI422, I422ToRAW, SplitRGBPlane",
     via(i422, bindCrFirst<YUY2ToI422>, via(rgb24, bind<I422ToRAW>, bind<SplitRGBPlane>))},

    // to packed words, of which the bits without a field become alpha
    {{i420, Format(bgr24, word565)}, "I420ToRGB565", bind<I420ToRGB565>},
    {{i420, Format(bgr24, word555)}, "I420ToARGB1555", bind<I420ToARGB1555>},
    {{i420, Format(bgr24, word444)}, "I420ToARGB4444", bind<I420ToARGB4444>},
    {{i422, Format(bgr24, word565)}, "I422ToRGB565", bind<I422ToRGB565>},
    {{i422, Format(bgr24, word555)}, "I422ToARGB, ARGBToARGB1555", via(bgra32, bind<I422ToARGB>, bind<ARGBToARGB1555>)},
    {{i422, Format(bgr24, word444)}, "I422ToARGB, ARGBToARGB4444", via(bgra32, bind<I422ToARGB>, bind<ARGBToARGB4444>)},
    {{yuy2, Format(bgr24, word565)}, "YUY2ToARGB, ARGBToRGB565", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToRGB565>)},
    {{yuy2, Format(bgr24, word555)}, "YUY2ToARGB, ARGBToARGB1555", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToARGB1555>)},
    {{yuy2, Format(bgr24, word444)}, "YUY2ToARGB, ARGBToARGB4444", via(bgra32, bind<YUY2ToARGB>, bind<ARGBToARGB4444>)},
    {{i444, Format(bgr24, word565)}, "I444ToARGB, ARGBToRGB565", via(bgra32, bind<I444ToARGB>, bind<ARGBToRGB565>)},
    {{i444, Format(bgr24, word555)}, "I444ToARGB, ARGBToARGB1555", via(bgra32, bind<I444ToARGB>, bind<ARGBToARGB1555>)},
    {{i444, Format(bgr24, word444)}, "I444ToARGB, ARGBToARGB4444", via(bgra32, bind<I444ToARGB>, bind<ARGBToARGB4444>)},
    {{i420, Format(bgr24, word565), dithered}, "I420ToRGB565Dither", bind<ditheredI420>},
    {{i422, Format(bgr24, word565), dithered},
     "I422ToARGB, ARGBToRGB565Dither",
     via(bgra32, bind<I422ToARGB>, bind<ditheredArgb>)},
    {{yuy2, Format(bgr24, word565), dithered},
     "YUY2ToARGB, ARGBToRGB565Dither",
     via(bgra32, bind<YUY2ToARGB>, bind<ditheredArgb>)},
    {{i444, Format(bgr24, word565), dithered},
     "I444ToARGB, ARGBToRGB565Dither",
     via(bgra32, bind<I444ToARGB>, bind<ditheredArgb>)},

    // between chroma layouts
    {{yuy2, uyvy}, "ARGBShuffle", bind<shufflePairs<exchangeBytes>>},
    {{uyvy, yuy2}, "ARGBShuffle", bind<shufflePairs<exchangeBytes>>},
    {{yuy2, yvyu}, "ARGBShuffle", bind<shufflePairs<exchangeChroma>>},
    {{yuy2, i422}, "YUY2ToI422", bind<YUY2ToI422>},
    {{yvyu, i422}, "YUY2ToI422", bindCrFirst<YUY2ToI422>},
    {{uyvy, i422}, "UYVYToI422", bind<UYVYToI422>},
    {{i422, yuy2}, "I422ToYUY2", bind<I422ToYUY2>},
    {{i422, yvyu}, "I422ToYUY2", bindCrFirstSource<I422ToYUY2>},
    {{i422, uyvy}, "I422ToUYVY", bind<I422ToUYVY>},
    {{nv12, i420}, "NV12ToI420", bind<NV12ToI420>},
    {{i420, nv12}, "I420ToNV12", bind<I420ToNV12>},
    {{yuy2, i420}, "YUY2ToI420", bind<YUY2ToI420>},
    {{yvyu, i420}, "YUY2ToI420", bindCrFirst<YUY2ToI420>},
    {{uyvy, i420}, "UYVYToI420", bind<UYVYToI420>},
    {{yuy2, nv12}, "YUY2ToNV12", bind<YUY2ToNV12>},
    {{uyvy, nv12}, "UYVYToNV12", bind<UYVYToNV12>},
    {{i422, i420}, "I422ToI420", bind<I422ToI420>},
    {{i422, nv12}, "I422ToI420, I420ToNV12", via(i420, bind<I422ToI420>, bind<I420ToNV12>)},
    {{i420, yuy2}, "I420ToYUY2", bind<I420ToYUY2>},
    {{i420, uyvy}, "I420ToUYVY", bind<I420ToUYVY>},
    {{nv12, yuy2}, "NV12ToI420, I420ToYUY2", via(i420, bind<NV12ToI420>, bind<I420ToYUY2>)},
    {{nv12, uyvy}, "NV12ToI420, I420ToUYVY", via(i420, bind<NV12ToI420>, bind<I420ToUYVY>)},
    {{i420, i422}, "I420ToI422", bind<I420ToI422>},
    {{nv12, i422}, "NV12ToI420, I420ToI422", via(i420, bind<NV12ToI420>, bind<I420ToI422>)},

    // gray
    {{rgb24, gray}, "RAWToJ400", bind<RAWToJ400>},
    {{rgba32, gray}, "ABGRToJ400", bind<ABGRToJ400>},
    {{gray, rgba32}, "J400ToARGB", bind<J400ToARGB>},
    {{yuy2, gray}, "YUY2ToY", bind<YUY2ToY>},
};

}  // namespace

std::string libyuvVersion() { return "libyuv " + std::to_string(LIBYUV_VERSION); }

void addLibyuv(const Task& task, std::vector<Peer>& peers) {
    holdLibyuvToLevel();
    for (const Row& row : table) {
        if (row.task == task) peers.push_back({libyuvVersion() + " " + row.steps, row.bind});
    }
}

}  // namespace bench
