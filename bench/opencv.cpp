#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <opencv2/core.hpp>
#include <opencv2/core/version.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>

#include "level.h"
#include "peers.h"

namespace bench {

namespace {

// OpenCV has read this variable before any function of the program runs, so the program begins once more with it.
[[gnu::constructor]] void holdToLevel(int, char** arguments, char**) {
    constexpr const char *name = "OPENCV_CPU_DISABLE", *avx512 = "AVX512-SKX,AVX512-ICL",
                         *beyondSsse3 = "SSE4.1,SSE4.2,POPCNT,FP16,AVX,AVX2,FMA3,AVX512-SKX,AVX512-ICL";
    const char* const disabled = byLevel<const char*>(beyondSsse3, avx512, nullptr);
    if (!disabled || std::getenv(name)) return;
    setenv(name, disabled, true);
    execv("/proc/self/exe", arguments);
}

using enum Depth;
using enum Layout;

constexpr Format bgr565(bgr24, word565), rgb565(rgb24, word565);

struct Row {
    Task task;
    const char* name;
    int code;
};

constexpr Row makeRow(const char* name, int code, Task task) { return {task, name, code}; }

#define ROW(source, destination, code) makeRow(#code, cv::COLOR_##code, {source, destination})
#define ROW_OF(variant, source, destination, code) makeRow(#code, cv::COLOR_##code, {source, destination, Variant::variant})

// The packed 4:4:4 form is full-range YUV, with other factors but as many operations.
constexpr Row table[] = {
    ROW(rgb24, ycc24, RGB2YUV),
    ROW(ycc24, rgb24, YUV2RGB),

    ROW(rgb24, i420, RGB2YUV_I420),
    ROW(bgr24, i420, BGR2YUV_I420),
    ROW(rgba32, i420, RGBA2YUV_I420),
    ROW(bgra32, i420, BGRA2YUV_I420),

    ROW(i420, rgb24, YUV2RGB_I420),
    ROW(i420, bgr24, YUV2BGR_I420),
    ROW(i420, rgba32, YUV2RGBA_I420),
    ROW(i420, bgra32, YUV2BGRA_I420),
    ROW(nv12, rgb24, YUV2RGB_NV12),
    ROW(nv12, bgr24, YUV2BGR_NV12),
    ROW(nv12, rgba32, YUV2RGBA_NV12),
    ROW(nv12, bgra32, YUV2BGRA_NV12),
    ROW(nv21, rgb24, YUV2RGB_NV21),
    ROW(nv21, bgr24, YUV2BGR_NV21),
    ROW(nv21, rgba32, YUV2RGBA_NV21),
    ROW(nv21, bgra32, YUV2BGRA_NV21),

    ROW(yuy2, rgb24, YUV2RGB_YUY2),
    ROW(yuy2, bgr24, YUV2BGR_YUY2),
    ROW(yuy2, rgba32, YUV2RGBA_YUY2),
    ROW(yuy2, bgra32, YUV2BGRA_YUY2),
    ROW(uyvy, rgb24, YUV2RGB_UYVY),
    ROW(uyvy, bgra32, YUV2BGRA_UYVY),
    ROW(yvyu, rgb24, YUV2RGB_YVYU),
    ROW(yvyu, bgr24, YUV2BGR_YVYU),
    ROW(yvyu, rgba32, YUV2RGBA_YVYU),
    ROW(yvyu, bgra32, YUV2BGRA_YVYU),
    ROW(yuy2, gray, YUV2GRAY_YUY2),

    ROW(bgr565, bgr24, BGR5652BGR),
    ROW(rgb565, rgb24, BGR5652BGR),
    ROW(bgr24, bgr565, BGR2BGR565),
    ROW(rgb24, rgb565, BGR2BGR565),

    ROW(rgb24, gray, RGB2GRAY),
    ROW(rgba32, gray, RGBA2GRAY),
    ROW(gray, rgb24, GRAY2RGB),
    ROW(gray, rgba32, GRAY2RGBA),

    ROW_OF(toXyz, rgb24, rgb24, RGB2XYZ),
    ROW_OF(fromXyz, rgb24, rgb24, XYZ2RGB),
    ROW_OF(toLuv, rgb24, rgb24, LRGB2Luv),
    ROW_OF(toLuv, bgr24, rgb24, LBGR2Luv),
    ROW_OF(fromLuv, rgb24, rgb24, Luv2LRGB),
    ROW_OF(fromLuv, rgb24, bgr24, Luv2LBGR),
    ROW_OF(toLab, rgb24, rgb24, LRGB2Lab),
    ROW_OF(toLab, bgr24, rgb24, LBGR2Lab),
    ROW_OF(fromLab, rgb24, rgb24, Lab2LRGB),
    ROW_OF(fromLab, rgb24, bgr24, Lab2LBGR),
};

// By variant, of bytes and floats. The hue of floats is in degrees.
constexpr Row hueTable[] = {
    makeRow("RGB2HLS_FULL", cv::COLOR_RGB2HLS_FULL, {rgb24, ycc24, Variant::toHls}),
    makeRow("HLS2RGB_FULL", cv::COLOR_HLS2RGB_FULL, {ycc24, rgb24, Variant::fromHls}),
    makeRow("RGB2HSV_FULL", cv::COLOR_RGB2HSV_FULL, {rgb24, ycc24, Variant::toHsv}),
    makeRow("HSV2RGB_FULL", cv::COLOR_HSV2RGB_FULL, {ycc24, rgb24, Variant::fromHsv}),
};

// Deeper samples, with the same functions.
constexpr int conversionOf(const Task& task) {
    for (const Row& row : table)
        if (row.task == task) return int(&row - table);
    const Depth depth = task.source.depth;
    const bool isLinear =
        task.variant == Variant::replicate || task.variant == Variant::toXyz || task.variant == Variant::fromXyz;
    const bool converts = depth == u8 || (depth == u16 && isLinear) || depth == f32;
    if (!converts || task.destination.depth != depth) return -1;
    for (const Row& row : table)
        if (row.task == Task{task.source.layout, task.destination.layout, task.variant}) return int(&row - table);
    return -1;
}

bool isTransform(const Task& task) {
    const bool toGray = task.variant == Variant::replicate && task.destination.layout == gray &&
                        (task.source.depth == s16 || task.source.depth == f64);
    return toGray || (task.variant == Variant::matrix && task.source.layout != rgbPlanes);
}

// A 4:2:0 image is one matrix of one channel, half as high again, whose planes follow each other without a gap.
cv::Mat matrixOf(const Image& image) {
    const auto shapes = planesOf(image.layout);
    const int width = image.size.width, height = image.size.height;
    const bool planar = shapes.size() > 1;
    const bool words = image.depth == word444 || image.depth == word555 || image.depth == word565;  // of two bytes
    const int channels = planar ? 1 : words ? 2 : static_cast<int>(shapes[0].samples.size()) / shapes[0].columns;
    const int rows = planar ? height * 3 / 2 : height;
    constexpr int types[] = {CV_8U, CV_8S, CV_16U, CV_16S, CV_32S, CV_32F, CV_64F, CV_8U, CV_8U, CV_8U};
    return cv::Mat(rows, width, CV_MAKETYPE(types[int(image.depth)], channels), image.planes[0].data,
                   static_cast<size_t>(image.planes[0].step));
}

Call bindCode(int code, const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    return [code, from = matrixOf(source), to = matrixOf(destination)]() mutable {
        cv::cvtColor(from, to, code);
        return 0;
    };
}

// As many rows and columns of the matrix as there are channels on either side. 16-bit and float samples are computed in floats.
Call bindTransform(const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    const cv::Mat from = matrixOf(source);
    cv::Mat to = matrixOf(destination);
    const cv::Mat whole(4, 4, CV_32F, const_cast<float*>(parameters<float>));
    const cv::Mat m = whole(cv::Rect(0, 0, from.channels(), to.channels())).clone();
    return [from, to, m]() mutable {
        cv::transform(from, to, m);
        return 0;
    };
}

// A table of all results, made beforehand.
bool isTable(const Task& task) {
    const bool curved = task.variant == Variant::curve || task.variant == Variant::inverseCurve;
    return curved && task.source.depth == u8 && task.source.layout != rgbPlanes && task.destination == task.source;
}

double curveAt(double v) { return v < 0.018 ? 4.5 * v : 1.099 * std::pow(v, 0.45) - 0.099; }
double inverseCurveAt(double v) { return v < 0.0812 ? v / 4.5 : std::pow((v + 0.099) / 1.099, 1 / 0.45); }

template <double (*at)(double)>
Call bindTable(const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    cv::Mat results(1, 256, CV_8U);
    for (int i = 0; i < 256; ++i) results.at<uint8_t>(i) = static_cast<uint8_t>(std::lround(255 * at(i / 255.0)));
    return [from = matrixOf(source), to = matrixOf(destination), results]() mutable {
        cv::LUT(from, results, to);
        return 0;
    };
}

template <Variant variant>
Call bindToneMap(const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    return [from = matrixOf(source), to = matrixOf(destination)]() mutable {
        double white = 0;
        if (variant == Variant::byMaximum)
            cv::minMaxLoc(from, nullptr, &white);
        else
            white = 2 * cv::mean(from)[0];
        from.convertTo(to, CV_8U, 255 / white);
        return 0;
    };
}

// With red in the corner, which OpenCV names by the pixel one row and one column further on.
template <int code>
Call bindMosaic(const Image& source, const Image& destination) {
    cv::setNumThreads(1);
    return [from = matrixOf(source), to = matrixOf(destination)]() mutable {
        cv::demosaicing(from, to, code);
        return 0;
    };
}

}  // namespace

std::string openCvVersion() {
    const bool isHeld = byLevel(!cv::checkHardwareSupport(CV_CPU_SSE4_1) && !cv::checkHardwareSupport(CV_CPU_AVX2),
                                !cv::checkHardwareSupport(CV_CPU_AVX512_SKX), true);
    if (!isHeld) throw std::runtime_error("OpenCV is not held to the level");
    return "OpenCV " CV_VERSION;
}

void addOpenCv(const Task& task, std::vector<Peer>& peers) {
    if (const int i = conversionOf(task); i >= 0) {
        peers.push_back({std::string("OpenCV ") + table[i].name,
                         [code = table[i].code](const Image& source, const Image& destination) {
                             return bindCode(code, source, destination);
                         },
                         task.variant == Variant::fromXyz && task.source.depth == f32});  // which isn't limited there
    }
    const Depth depth = task.source.depth;
    for (const Row& row : hueTable)
        if ((depth == u8 || depth == f32) &&
            task == Task{{row.task.source.layout, depth}, {row.task.destination.layout, depth}, row.task.variant})
            peers.push_back(
                {std::string("OpenCV ") + row.name,
                 [code = row.code](const Image& source, const Image& destination) { return bindCode(code, source, destination); },
                 depth == f32});
    if (task.variant == Variant::mosaic) {
        peers.push_back({"OpenCV BayerBG2RGB", bindMosaic<cv::COLOR_BayerBG2RGB>});
        peers.push_back({"OpenCV BayerBG2RGB_EA", bindMosaic<cv::COLOR_BayerBG2RGB_EA>});
    }
    if (isTransform(task)) peers.push_back({"OpenCV transform", bindTransform});
    if (task.variant == Variant::byMaximum) peers.push_back({"OpenCV minMaxLoc, convertTo", bindToneMap<Variant::byMaximum>});
    if (task.variant == Variant::byMean) peers.push_back({"OpenCV mean, convertTo", bindToneMap<Variant::byMean>});
    if (isTable(task))
        peers.push_back({"OpenCV LUT", task.variant == Variant::curve ? bindTable<curveAt> : bindTable<inverseCurveAt>});
}

}  // namespace bench
