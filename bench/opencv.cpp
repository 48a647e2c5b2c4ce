#include <opencv2/core.hpp>
#include <opencv2/core/version.hpp>
#include <opencv2/imgproc.hpp>

#include "peers.h"

namespace bench {

namespace {

using enum Layout;

struct Row {
    Task task;
    const char* name;
    int code;
};

constexpr Row makeRow(const char* name, int code, Task task) { return {task, name, code}; }

#define ROW(source, destination, code) makeRow(#code, cv::COLOR_##code, {source, destination})

// The packed 4:4:4 form is full-range YUV, with other factors but as many operations.
constexpr Row table[] = {
    ROW(rgb24, ycc24, RGB2YUV),       ROW(ycc24, rgb24, YUV2RGB),

    ROW(rgb24, i420, RGB2YUV_I420),   ROW(bgr24, i420, BGR2YUV_I420),   ROW(rgba32, i420, RGBA2YUV_I420),
    ROW(bgra32, i420, BGRA2YUV_I420),

    ROW(i420, rgb24, YUV2RGB_I420),   ROW(i420, bgr24, YUV2BGR_I420),   ROW(i420, rgba32, YUV2RGBA_I420),
    ROW(i420, bgra32, YUV2BGRA_I420), ROW(nv12, rgb24, YUV2RGB_NV12),   ROW(nv12, bgr24, YUV2BGR_NV12),
    ROW(nv12, rgba32, YUV2RGBA_NV12), ROW(nv12, bgra32, YUV2BGRA_NV12), ROW(nv21, rgb24, YUV2RGB_NV21),
    ROW(nv21, bgr24, YUV2BGR_NV21),   ROW(nv21, rgba32, YUV2RGBA_NV21), ROW(nv21, bgra32, YUV2BGRA_NV21),

    ROW(yuy2, rgb24, YUV2RGB_YUY2),   ROW(yuy2, bgr24, YUV2BGR_YUY2),   ROW(yuy2, rgba32, YUV2RGBA_YUY2),
    ROW(yuy2, bgra32, YUV2BGRA_YUY2), ROW(yvyu, rgb24, YUV2RGB_YVYU),   ROW(yvyu, bgr24, YUV2BGR_YVYU),
    ROW(yvyu, rgba32, YUV2RGBA_YVYU), ROW(yvyu, bgra32, YUV2BGRA_YVYU),
};

// A 4:2:0 image is one matrix of one channel, half as high again, whose planes follow each other without a gap.
cv::Mat matrixOf(const Image& image) {
    const auto shapes = planesOf(image.layout);
    const int width = image.size.width, height = image.size.height;
    const bool planar = shapes.size() > 1;
    const int channels = planar ? 1 : static_cast<int>(shapes[0].samples.size()) / shapes[0].columns;
    const int rows = planar ? height * 3 / 2 : height;
    return cv::Mat(rows, width, CV_8UC(channels), image.planes[0].data, static_cast<size_t>(image.planes[0].step));
}

Call bindCode(int code, const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    return [code, from = matrixOf(source), to = matrixOf(destination)]() mutable {
        cv::cvtColor(from, to, code);
        return 0;
    };
}

}  // namespace

std::string openCvVersion() { return "OpenCV " CV_VERSION; }

void addOpenCv(const Task& task, std::vector<Peer>& peers) {
    for (const Row& row : table) {
        if (row.task != task) continue;
        peers.push_back({std::string("OpenCV ") + row.name, [code = row.code](const Image& source, const Image& destination) {
                             return bindCode(code, source, destination);
                         }});
    }
}

}  // namespace bench
