// All colours of 8-bit RGB to a space and back.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <opencv2/core.hpp>
#include <opencv2/core/version.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "quality.h"
#include "zelcc.h"

namespace bench {
namespace {

constexpr int side = 4096, channels = 3;
constexpr size_t samples = size_t(side) * side * channels;
using Samples = std::vector<uint8_t>;

Samples allColours() {
    Samples picture(samples);
    for (size_t i = 0; i < samples / channels; ++i)
        for (int c = 0; c < channels; ++c) picture[i * channels + c] = static_cast<uint8_t>(i >> 8 * c);
    return picture;
}

// Takes the first picture to the space and from there into the second.
using RoundTrip = std::function<void(const Samples&, Samples&)>;

void check(ZelStatus status) {
    if (status != zelStsNoErr) throw std::runtime_error("a conversion failed with status " + std::to_string(status));
}

template <class Sample>
using Function = ZelStatus (*)(const uint8_t*, int32_t, Sample*, int32_t, ZelSize);
template <class Sample>
using InverseFunction = ZelStatus (*)(const Sample*, int32_t, uint8_t*, int32_t, ZelSize);

// In one region of so many columns, and what is left in one row.
template <class Sample>
RoundTrip by(Function<Sample> to, InverseFunction<Sample> from, int width = side) {
    return [=](const Samples& colours, Samples& result) {
        std::vector<Sample> space(samples);
        const auto convert = [&](size_t first, int columns, int rows) {
            const ZelSize size{columns, rows};
            const int32_t step = channels * columns, spaceStep = step * int32_t(sizeof(Sample));
            check(to(&colours[first], step, &space[first], spaceStep, size));
            check(from(&space[first], spaceStep, &result[first], step, size));
        };
        const int pixels = side * side, rows = pixels / width, rest = pixels % width;
        convert(0, width, rows);
        if (rest > 0) convert(samples - size_t(rest) * channels, rest, 1);
    };
}

RoundTrip byOpenCv(int to, int from) {
    return [=](const Samples& colours, Samples& result) {
        const cv::Mat source(side, side, CV_8UC3, const_cast<uint8_t*>(colours.data()));
        cv::Mat space, destination(side, side, CV_8UC3, result.data());
        cv::cvtColor(source, space, to);
        cv::cvtColor(space, destination, from);
    };
}

#define OPENCV(to, from) "OpenCV, `" #to "`, `" #from "`", byOpenCv(cv::COLOR_##to, cv::COLOR_##from)

struct Row {
    const char* space;
    const char* contender;
    RoundTrip trip;
};

// Widths below the shortest block have the rule of the last columns alone.
const Row table[] = {
    {"XYZ", "zelCC", by(zeliRGBToXYZ_8u_C3R, zeliXYZToRGB_8u_C3R)},
    {"", "zelCC, last columns", by(zeliRGBToXYZ_8u_C3R, zeliXYZToRGB_8u_C3R, 7)},
    {"", OPENCV(RGB2XYZ, XYZ2RGB)},
    {"Photo YCC", "zelCC", by(zeliRGBToYCC_8u_C3R, zeliYCCToRGB_8u_C3R)},
    {"", "zelCC, last columns", by(zeliRGBToYCC_8u_C3R, zeliYCCToRGB_8u_C3R, 7)},
    {"LUV", "zelCC", by(zeliRGBToLUV_8u_C3R, zeliLUVToRGB_8u_C3R)},
    {"", "zelCC, last columns", by(zeliRGBToLUV_8u_C3R, zeliLUVToRGB_8u_C3R, 7)},
    {"", OPENCV(LRGB2Luv, Luv2LRGB)},
    {"", OPENCV(RGB2Luv, Luv2RGB)},
    {"Lab", "zelCC", by(zeliRGBToLab_8u_C3R, zeliLabToRGB_8u_C3R)},
    {"", "zelCC, 16 bits for Lab", by(zeliBGRToLab_8u16u_C3R, zeliLabToBGR_16u8u_C3R)},
    {"", OPENCV(LRGB2Lab, Lab2LRGB)},
    {"", OPENCV(RGB2Lab, Lab2RGB)},
    {"HLS", "zelCC", by(zeliRGBToHLS_8u_C3R, zeliHLSToRGB_8u_C3R)},
    {"", "zelCC, last columns", by(zeliRGBToHLS_8u_C3R, zeliHLSToRGB_8u_C3R, 7)},
    {"", OPENCV(RGB2HLS_FULL, HLS2RGB_FULL)},
    {"", OPENCV(RGB2HLS, HLS2RGB)},
    {"HSV", "zelCC", by(zeliRGBToHSV_8u_C3R, zeliHSVToRGB_8u_C3R)},
    {"", OPENCV(RGB2HSV_FULL, HSV2RGB_FULL)},
    {"", OPENCV(RGB2HSV, HSV2RGB)},
};

struct Errors {
    double mean = 0;  // of all samples
    int largest = 0;
    double unchanged = 0;  // the share of the colours
};

Errors errorsOf(const Samples& colours, const Samples& result) {
    uint64_t sum = 0, unchanged = 0;
    Errors errors;
    for (size_t i = 0; i < samples; i += channels) {
        int ofPixel = 0;
        for (int c = 0; c < channels; ++c) {
            const int error = std::abs(result[i + c] - colours[i + c]);
            sum += uint64_t(error);
            ofPixel = std::max(ofPixel, error);
        }
        errors.largest = std::max(errors.largest, ofPixel);
        unchanged += ofPixel == 0;
    }
    errors.mean = double(sum) / samples;
    errors.unchanged = double(unchanged) / (double(samples) / channels);
    return errors;
}

}  // namespace

void printRoundTripsOfSpaces() {
    const Samples colours = allColours();
    Samples result(samples);
    std::printf("| Space | By (OpenCV is " CV_VERSION
                ") | Mean error | Largest error | Unchanged |\n| --- | --- | ---: | ---: | ---: |\n");
    for (const Row& row : table) {
        row.trip(colours, result);
        const Errors errors = errorsOf(colours, result);
        std::printf("| %s | %s | %.3f | %d | %.1f %% |\n", row.space, row.contender, errors.mean, errors.largest,
                    100 * errors.unchanged);
    }
}

}  // namespace bench
