// The Rust crate `yuv`, whose functions are named by their layouts. Encoders and decoders of pairs have two accuracies.
#include "peers.h"

namespace bench {

namespace {

using enum Layout;
using enum Variant;

struct Coding {
    bool isBt709, isFullRange, isFast;
};
using Conversion = int(const Plane* source, const Plane* destination, Size size, Coding coding);

extern "C" Conversion* yuv_crate_find(const char* name);

std::string nameOf(Format format) {
    if (format.depth != Depth::u8) return {};
    switch (format.layout) {
        case rgb24:
            return "rgb";
        case bgr24:
            return "bgr";
        case rgba32:
            return "rgba";
        case bgra32:
            return "bgra";
        case i444:
            return "yuv444";
        case i422:
            return "yuv422";
        case i420:
            return "yuv420";
        case nv12:
            return "yuv_nv12";
        case nv21:
            return "yuv_nv21";
        case yuy2:
            return "yuyv422";
        case yvyu:
            return "yvyu422";
        case uyvy:
            return "uyvy422";
        case gray:
            return "yuv400";
        default:
            return {};
    }
}

}  // namespace

std::string yuvCrateVersion() { return "yuv " ZELCC_BENCH_YUV_CRATE_VERSION; }

void addYuvCrate(const Task& task, std::vector<Peer>& peers) {
    if (task.variant != replicate && task.variant != matrix709 && task.variant != matrix709Full) return;
    const std::string name = nameOf(task.source) + "_to_" + nameOf(task.destination);
    Conversion* const convert = yuv_crate_find(name.c_str());
    if (!convert) return;
    const bool isGray = task.source.layout == gray || task.destination.layout == gray;
    const bool hasAccuracies = (name.find("rgb") == 0 || name.find("bgr") == 0 || name.find("yuv_nv") == 0) && !isGray;
    for (const bool isFast : {false, true}) {
        if (isFast && !hasAccuracies) continue;
        const Coding coding{task.variant != replicate, task.variant == matrix709Full || isGray, isFast};
        peers.push_back({yuvCrateVersion() + " " + name + (isFast ? ", fast" : ""),
                         [=](const Image& source, const Image& destination) -> Call {
                             return [=] { return convert(source.planes.data(), destination.planes.data(), source.size, coding); };
                         }});
    }
}

}  // namespace bench
