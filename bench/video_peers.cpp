#include "video_peers.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "harness/random.h"
#include "zelcc/lumachroma.h"
#ifdef ZELCC_BENCH_LIBYUV
#include <libyuv.h>

#include "libyuv_level.h"
#endif
#ifdef ZELCC_BENCH_SWSCALE
extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}
#include "swscale_level.h"
#endif
#ifdef ZELCC_BENCH_ZIMG
#include <zimg.h>

#include "level.h"
#endif

namespace bench::video {
namespace {

bool isRgb(const ZelvFormat& f) { return std::strchr(f.components, 'R') != nullptr; }
int across(const ZelvFormat& f) { return f.sampling == zelv420 || f.sampling == zelv422 ? 1 : 0; }
int down(const ZelvFormat& f) { return f.sampling == zelv420 ? 1 : 0; }
int bytesOf(const ZelvFormat& f) { return f.depth > 8 ? 2 : 1; }

// The function of libzelcc between the same layouts, which has a matrix of its own.
void addFixed(const Task& task, const Frame& s, const Frame& d, std::vector<Peer>& peers) {
    const std::string name = task.name;
    const ZelSize size = s.size;
    const auto is = [&](const char* from, const char* to) { return name.find(from) == 0 && name.find(to) != std::string::npos; };
    const auto add = [&](const Call& call) { peers.push_back({"fixed", call}); };
    if (is("I420", " to BGRA") || is("J420", " to BGRA"))
        add([=, &s, &d] { zeliYCbCr420ToBGR_8u_P3C4R(s.readable(), s.steps, d.planes[0], d.steps[0], size, 255); });
    else if (is("NV12", " to BGRA"))
        add([=, &s, &d] {
            zeliYCbCr420ToBGR_8u_P2C4R(s.planes[0], s.steps[0], s.planes[1], s.steps[1], d.planes[0], d.steps[0], size, 255);
        });
    else if (is("I420", " to RGB") || is("J420", " to RGB"))
        add([=, &s, &d] { zeliYCbCr420ToBGR_709CSC_8u_P3C3R(s.readable(), s.steps, d.planes[0], d.steps[0], size); });
    else if (is("I444", " to BGRA"))
        add([=, &s, &d] { zeliYCbCrToBGR_709CSC_8u_P3C4R(s.readable(), s.steps[0], d.planes[0], d.steps[0], size, 255); });
    else if (is("BGRA to", "420"))
        add([=, &s, &d] { zeliBGRToYCbCr420_709CSC_8u_AC4P3R(s.planes[0], s.steps[0], d.planes, d.steps, size); });
    else if (is("RGB to", "NV12"))
        add([=, &s, &d] {
            zeliBGRToYCbCr420_709CSC_8u_C3P2R(s.planes[0], s.steps[0], d.planes[0], d.steps[0], d.planes[1], d.steps[1], size);
        });
    else if (is("RGB to", "J420") || is("RGB to", "I420"))
        add([=, &s, &d] { zeliBGRToYCbCr420_709CSC_8u_C3P3R(s.planes[0], s.steps[0], d.planes, d.steps, size); });
}

#ifdef ZELCC_BENCH_LIBYUV
struct Constants {
    const libyuv::YuvConstants *argb, *abgr;
};
Constants constantsOf(const ZelvFormat& f) {
    using namespace libyuv;
    if (f.range == zelvFull) return {&kYuvJPEGConstants, &kYvuJPEGConstants};
    if (f.matrix == 1) return {&kYuvH709Constants, &kYvuH709Constants};
    if (f.matrix == 9) return {&kYuv2020Constants, &kYvu2020Constants};
    return {&kYuvI601Constants, &kYvuI601Constants};
}

void addLibyuv(const Task& task, const Frame& s, const Frame& d, std::vector<Peer>& peers) {
    using namespace libyuv;
    const std::string name = task.name;
    const int w = s.size.width, h = s.size.height;
    const auto add = [&](const Call& call) { peers.push_back({"libyuv", call}); };
    const Constants k = constantsOf(isRgb(task.from) ? task.to : task.from);
    const auto half = [](int32_t step) { return step / 2; };
    if (name.find("to BGRA") != std::string::npos && task.from.layout == zelvPlanar) {
        if (task.from.depth == 8 && task.from.sampling == zelv420)
            add([=, &s, &d] {
                I420ToARGBMatrix(s.planes[0], s.steps[0], s.planes[1], s.steps[1], s.planes[2], s.steps[2], d.planes[0],
                                 d.steps[0], k.argb, w, h);
            });
        else if (task.from.depth == 8)
            add([=, &s, &d] {
                I444ToARGBMatrix(s.planes[0], s.steps[0], s.planes[1], s.steps[1], s.planes[2], s.steps[2], d.planes[0],
                                 d.steps[0], k.argb, w, h);
            });
        else
            add([=, &s, &d] {
                I010ToARGBMatrix(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), s.words(2), half(s.steps[2]),
                                 d.planes[0], d.steps[0], k.argb, w, h);
            });
    } else if (name.rfind("NV12 709 to BGRA", 0) == 0) {
        add([=, &s, &d] {
            NV12ToARGBMatrix(s.planes[0], s.steps[0], s.planes[1], s.steps[1], d.planes[0], d.steps[0], k.argb, w, h);
        });
    } else if (name.find("20 709 to RGB") != std::string::npos || name == "J420 to RGB") {
        // Its RGB24 has blue first: with the constants for swapped chroma, and V for U, red comes first.
        add([=, &s, &d] {
            I420ToRGB24Matrix(s.planes[0], s.steps[0], s.planes[2], s.steps[2], s.planes[1], s.steps[1], d.planes[0], d.steps[0],
                              k.abgr, w, h);
        });
    } else if (name == "BGRA to J420") {
        add([=, &s, &d] {
            ARGBToJ420(s.planes[0], s.steps[0], d.planes[0], d.steps[0], d.planes[1], d.steps[1], d.planes[2], d.steps[2], w, h);
        });
    } else if (name == "BGRA to I420 601") {
        add([=, &s, &d] {
            ARGBToI420(s.planes[0], s.steps[0], d.planes[0], d.steps[0], d.planes[1], d.steps[1], d.planes[2], d.steps[2], w, h);
        });
    } else if (name == "RGB to J420") {
        add([=, &s, &d] {
            RAWToJ420(s.planes[0], s.steps[0], d.planes[0], d.steps[0], d.planes[1], d.steps[1], d.planes[2], d.steps[2], w, h);
        });
    } else if (name == "P010 2020 to BGRA") {
        add([=, &s, &d] {
            P010ToARGBMatrix(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), d.planes[0], d.steps[0], k.argb, w, h);
        });
    } else if (name == "P210 2020 to BGRA") {
        add([=, &s, &d] {
            P210ToARGBMatrix(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), d.planes[0], d.steps[0], k.argb, w, h);
        });
    } else if (name == "P010 2020 to x2rgb10") {
        add([=, &s, &d] {
            P010ToAR30Matrix(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), d.planes[0], d.steps[0], k.argb, w, h);
        });
    } else if (name == "I010 2020 to x2rgb10") {
        add([=, &s, &d] {
            I010ToAR30Matrix(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), s.words(2), half(s.steps[2]),
                             d.planes[0], d.steps[0], k.argb, w, h);
        });
    } else if (name == "P010 to I010") {
        add([=, &s, &d] {
            P010ToI010(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), d.writableWords(0), half(d.steps[0]),
                       d.writableWords(1), half(d.steps[1]), d.writableWords(2), half(d.steps[2]), w, h);
        });
    } else if (name == "I010 to P010") {
        add([=, &s, &d] {
            I010ToP010(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), s.words(2), half(s.steps[2]),
                       d.writableWords(0), half(d.steps[0]), d.writableWords(1), half(d.steps[1]), w, h);
        });
    } else if (name == "I010 to I420") {
        add([=, &s, &d] {
            I010ToI420(s.words(0), half(s.steps[0]), s.words(1), half(s.steps[1]), s.words(2), half(s.steps[2]), d.planes[0],
                       d.steps[0], d.planes[1], d.steps[1], d.planes[2], d.steps[2], w, h);
        });
    }
}
#endif

#ifdef ZELCC_BENCH_SWSCALE
AVPixelFormat swscaleFormat(const ZelvFormat& f) {
    const std::string sampling = f.sampling == zelv420 ? "420" : f.sampling == zelv422 ? "422" : "444";
    const std::string bits = f.depth > 8 ? std::to_string(f.depth) + "le" : "";
    std::string name;
    if (f.layout == zelvDwords)
        name = "x2rgb10le";
    else if (f.layout == zelvInterleaved)
        name = std::strcmp(f.components, "BGRA") == 0 ? "bgra" : f.depth == 16 ? "rgb48le" : "rgb24";
    else if (f.layout == zelvSemiPlanar && f.depth == 8)
        name = "nv12";
    else if (f.layout == zelvSemiPlanar)
        name = "p" + sampling.substr(0, 1) + (sampling == "420" ? "0" : "2") + std::to_string(f.depth) + "le";
    else
        name = isRgb(f) ? "gbrp" + bits : "yuv" + sampling + "p" + bits;
    if (f.layout == zelvSemiPlanar && f.depth > 8)
        name = std::string(f.sampling == zelv420 ? "p0" : "p2") + std::to_string(f.depth) + "le";
    return av_get_pix_fmt(name.c_str());
}

void addSwscale(const Task& task, const Frame& s, const Frame& d, std::vector<Peer>& peers) {
    const AVPixelFormat from = swscaleFormat(task.from), to = swscaleFormat(task.to);
    if (from == AV_PIX_FMT_NONE || to == AV_PIX_FMT_NONE || !sws_isSupportedInput(from) || !sws_isSupportedOutput(to)) return;
    const std::shared_ptr<SwsContext> context(
        sws_getContext(s.size.width, s.size.height, from, d.size.width, d.size.height, to, SWS_POINT, nullptr, nullptr, nullptr),
        sws_freeContext);
    if (!context) return;
    const auto table = [](const ZelvFormat& f) {
        return sws_getCoefficients(f.matrix == 1 ? SWS_CS_ITU709 : f.matrix == 9 ? SWS_CS_BT2020 : SWS_CS_ITU601);
    };
    sws_setColorspaceDetails(context.get(), table(isRgb(task.from) ? task.to : task.from), task.from.range,
                             table(isRgb(task.to) ? task.from : task.to), task.to.range, 0, 1 << 16, 1 << 16);
    peers.push_back(
        {"swscale", [context, &s, &d] { sws_scale(context.get(), s.planes, s.steps, 0, s.size.height, d.planes, d.steps); }});
}
#endif

#ifdef ZELCC_BENCH_ZIMG
// Planes of low bits alone.
void addZimg(const Task& task, const Frame& s, const Frame& d, std::vector<Peer>& peers) {
    if (task.from.layout != zelvPlanar || task.to.layout != zelvPlanar) return;
    const auto formatOf = [&](const ZelvFormat& f) {
        zimg_image_format z;
        zimg_image_format_default(&z, ZIMG_API_VERSION);
        z.width = static_cast<unsigned>(s.size.width);
        z.height = static_cast<unsigned>(s.size.height);
        z.pixel_type = f.depth > 8 ? ZIMG_PIXEL_WORD : ZIMG_PIXEL_BYTE;
        z.depth = static_cast<unsigned>(f.depth);
        z.subsample_w = static_cast<unsigned>(across(f));
        z.subsample_h = static_cast<unsigned>(down(f));
        z.color_family = isRgb(f) ? ZIMG_COLOR_RGB : ZIMG_COLOR_YUV;
        z.matrix_coefficients = static_cast<zimg_matrix_coefficients_e>(f.matrix);
        z.pixel_range = f.range == zelvFull ? ZIMG_RANGE_FULL : ZIMG_RANGE_LIMITED;
        return z;
    };
    const zimg_image_format from = formatOf(task.from), to = formatOf(task.to);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.cpu_type = byLevel(ZIMG_CPU_X86_SSSE3, ZIMG_CPU_X86_AVX2, ZIMG_CPU_AUTO_64B);
    parameters.resample_filter = parameters.resample_filter_uv = ZIMG_RESIZE_POINT;
    const std::shared_ptr<zimg_filter_graph> graph(zimg_filter_graph_build(&from, &to, &parameters), zimg_filter_graph_free);
    size_t bytes = 0;
    if (!graph || zimg_filter_graph_get_tmp_size(graph.get(), &bytes)) return;
    const std::shared_ptr<void> scratch(std::aligned_alloc(64, (bytes + 63) / 64 * 64), std::free);
    peers.push_back({"zimg", [graph, scratch, &task, &s, &d] {
                         zimg_image_buffer_const in{};
                         zimg_image_buffer out{};
                         in.version = out.version = ZIMG_API_VERSION;
                         // It counts R, G, B.
                         const auto place = [](const ZelvFormat& f, int i) { return isRgb(f) ? (i + 2) % 3 : i; };
                         for (int i = 0; i < 3; ++i) {
                             in.plane[i] = {s.planes[place(task.from, i)], s.steps[place(task.from, i)], ZIMG_BUFFER_MAX};
                             out.plane[i] = {d.planes[place(task.to, i)], d.steps[place(task.to, i)], ZIMG_BUFFER_MAX};
                         }
                         zimg_filter_graph_process(graph.get(), &in, &out, scratch.get(), nullptr, nullptr, nullptr, nullptr);
                     }});
}
#endif

}  // namespace

Frame::Frame(const ZelvFormat& f, ZelSize area) : size(area) {
    harness::Random random(7);
    const int count = f.layout == zelvPlanar ? static_cast<int>(std::strlen(f.components)) : f.layout == zelvSemiPlanar ? 2 : 1;
    for (int p = 0; p < count; ++p) {
        const bool ofSites = p > 0 && !isRgb(f);
        const int width = ofSites ? (area.width + across(f)) >> across(f) : area.width,
                  height = ofSites ? (area.height + down(f)) >> down(f) : area.height;
        const int samples = f.layout == zelvSemiPlanar && p == 1 ? 2
                            : f.layout == zelvInterleaved        ? static_cast<int>(std::strlen(f.components))
                                                                 : 1;
        steps[p] = (width * samples * (f.layout == zelvDwords ? 4 : bytesOf(f)) + 63) / 64 * 64;
        const size_t bytes = static_cast<size_t>(steps[p]) * static_cast<size_t>(height);
        memory.emplace_back(static_cast<uint8_t*>(std::aligned_alloc(64, bytes)), std::free);
        planes[p] = memory.back().get();
        random.fill({planes[p], bytes}, harness::Content::uniform);
        if (f.depth > 8 && f.depth < 16 && f.layout != zelvDwords)
            for (size_t i = 0; i < bytes / 2; ++i) {
                uint16_t& word = writableWords(p)[i];
                word =
                    static_cast<uint16_t>(f.alignment == zelvHighBits ? word & 0xffff << (16 - f.depth) : word >> (16 - f.depth));
            }
    }
}

std::vector<Peer> peersOf(const Task& task, const Frame& source, const Frame& destination) {
    std::vector<Peer> peers;
    addFixed(task, source, destination, peers);
#ifdef ZELCC_BENCH_LIBYUV
    holdLibyuvToLevel();
    addLibyuv(task, source, destination, peers);
#endif
#ifdef ZELCC_BENCH_SWSCALE
    holdSwscaleToLevel();
    addSwscale(task, source, destination, peers);
#endif
#ifdef ZELCC_BENCH_ZIMG
    addZimg(task, source, destination, peers);
#endif
    return peers;
}

}  // namespace bench::video
