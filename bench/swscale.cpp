extern "C" {
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <stdexcept>

#include "peers.h"
#include "swscale_level.h"

namespace bench {

namespace {

// Its names of words begin with the highest field.
AVPixelFormat formatOf(Format format) {
    const bool isBgr = format.layout == Layout::bgr24;
    if (format.depth == Depth::word444) return isBgr ? AV_PIX_FMT_RGB444 : AV_PIX_FMT_BGR444;
    if (format.depth == Depth::word555) return isBgr ? AV_PIX_FMT_RGB555 : AV_PIX_FMT_BGR555;
    if (format.depth == Depth::word565) return isBgr ? AV_PIX_FMT_RGB565 : AV_PIX_FMT_BGR565;
    if (format.depth != Depth::u8) return AV_PIX_FMT_NONE;
    switch (format.layout) {
        case Layout::rgb24:
            return AV_PIX_FMT_RGB24;
        case Layout::bgr24:
            return AV_PIX_FMT_BGR24;
        case Layout::rgba32:
            return AV_PIX_FMT_RGBA;
        case Layout::bgra32:
            return AV_PIX_FMT_BGRA;
        case Layout::rgbPlanes:
            return AV_PIX_FMT_GBRP;
        case Layout::i444:
            return AV_PIX_FMT_YUV444P;
        case Layout::i422:
            return AV_PIX_FMT_YUV422P;
        case Layout::i420:
            return AV_PIX_FMT_YUV420P;
        case Layout::i411:
            return AV_PIX_FMT_YUV411P;
        case Layout::i410:
            return AV_PIX_FMT_YUV410P;
        case Layout::nv12:
            return AV_PIX_FMT_NV12;
        case Layout::nv21:
            return AV_PIX_FMT_NV21;
        case Layout::yuy2:
            return AV_PIX_FMT_YUYV422;
        case Layout::yvyu:
            return AV_PIX_FMT_YVYU422;
        case Layout::uyvy:
            return AV_PIX_FMT_UYVY422;
        default:
            return AV_PIX_FMT_NONE;
    }
}

struct Picture {
    uint8_t* data[4];
    int steps[4];

    explicit Picture(const Image& image) {
        // Planar RGB counts its planes from green.
        const bool rotated = image.layout == Layout::rgbPlanes;
        for (int i = 0; i < 4; ++i) {
            const Plane& plane = image.planes[rotated && i < 3 ? (i + 1) % 3 : i];
            data[i] = plane.data;
            steps[i] = plane.step;
        }
    }
};

bool isRgb(Layout layout) { return layout <= Layout::rgbPlanes; }

enum class Matrix { bt601, bt709, bt709Full };

// RGB is full range on either side.
void setMatrix(SwsContext* context, const Image& source, const Image& destination, Matrix matrix) {
    if (matrix == Matrix::bt601) return;
    const int* table = sws_getCoefficients(SWS_CS_ITU709);
    const bool full = matrix == Matrix::bt709Full;
    sws_setColorspaceDetails(context, table, isRgb(source.layout) || full, table, isRgb(destination.layout) || full, 0, 1 << 16,
                             1 << 16);
}

template <int method, Matrix matrix = Matrix::bt601>
Call bindScaler(const Image& source, const Image& destination) {
    const auto [width, height] = source.size;
    // Its vector code for interleaved chroma runs past the end of rows that are shorter than a vector, and crashes.
    if ((source.layout == Layout::nv12 || source.layout == Layout::nv21) && width < 64) return {};
    const std::shared_ptr<SwsContext> context(
        sws_getContext(width, height, formatOf({source.layout, source.depth}), width, height,
                       formatOf({destination.layout, destination.depth}), method, nullptr, nullptr, nullptr),
        sws_freeContext);
    if (!context) throw std::runtime_error("swscale refuses a pair of formats that it says it supports");
    setMatrix(context.get(), source, destination, matrix);
    return [context, height = height, from = Picture(source), to = Picture(destination)] {
        const int rows = sws_scale(context.get(), from.data, from.steps, 0, height, to.data, to.steps);
        return rows == height ? 0 : -1;
    };
}

}  // namespace

std::string swscaleVersion() {
    const unsigned version = swscale_version();
    return "swscale " + std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 255) + "." +
           std::to_string(version & 255);
}

void addSwscale(const Task& task, std::vector<Peer>& peers) {
    holdSwscaleToLevel();
    const AVPixelFormat source = formatOf(task.source), destination = formatOf(task.destination);
    if (source == AV_PIX_FMT_NONE || destination == AV_PIX_FMT_NONE) return;
    if (!sws_isSupportedInput(source) || !sws_isSupportedOutput(destination)) return;
    // Chroma is interpolated between rows only, and by four taps, on the way to planar 4:2:2.
    // Words are dithered unless one insists.
    if (task.variant == Variant::replicate || task.variant == Variant::dithered)
        peers.push_back({"swscale", bindScaler<SWS_POINT>});
    if (task.variant == Variant::matrix709) peers.push_back({"swscale, BT.709", bindScaler<SWS_POINT, Matrix::bt709>});
    if (task.variant == Variant::matrix709Full)
        peers.push_back({"swscale, BT.709 full", bindScaler<SWS_POINT, Matrix::bt709Full>});
    if (task.variant == Variant::interpolate && task.destination == Layout::i422)
        peers.push_back({"swscale, bicubic", bindScaler<SWS_BICUBIC>});
}

}  // namespace bench
