// A photograph sampled through each grid and interpolated again. OpenCV's method of a variable number of gradients is left out:
// of version 4.6 its picture lies two rows too high.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <opencv2/core.hpp>
#include <opencv2/core/version.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "libraw_demosaicing.h"
#include "quality.h"
#include "synthetic_photograph.h"
#include "zelcc.h"

namespace bench {
namespace {

constexpr int width = SyntheticPhotograph::width, height = SyntheticPhotograph::height;
constexpr size_t pixels = size_t(width) * height;
constexpr ZelSize size{width, height};
constexpr ZelRect all{0, 0, width, height};

struct Grid {
    const char* name;
    ZelBayerGrid own;
    int openCv, openCvEdgeAware;  // codes
    int libRaw;
    int colours[4];  // of the top left samples, row by row: red, green or blue
};

#define GRID(name, ...) \
    { #name, zelBayer##name, cv::COLOR_Bayer##name##2RGB, cv::COLOR_Bayer##name##2RGB_EA, LIBRAW_OPENBAYER_##name, __VA_ARGS__ }
constexpr Grid grids[] = {GRID(RGGB, {0, 1, 1, 2}), GRID(BGGR, {2, 1, 1, 0}), GRID(GRBG, {1, 0, 2, 1}), GRID(GBRG, {1, 2, 0, 1})};
#undef GRID

template <class Sample>
constexpr int white = sizeof(Sample) == 1 ? 255 : 65535;

template <class Sample>
using Samples = std::vector<Sample>;

template <class Sample>
using Method = std::function<void(const Samples<Sample>& mosaic, const Grid&, Samples<Sample>& result)>;

void check(ZelStatus status) {
    if (status != zelStsNoErr) throw std::runtime_error("a conversion failed with status " + std::to_string(status));
}

template <class Sample, auto function>
void byGradients(const Samples<Sample>& mosaic, const Grid& grid, Samples<Sample>& result) {
    constexpr int step = width * int(sizeof(Sample));
    check(function(mosaic.data(), all, size, step, result.data(), 3 * step, grid.own, 0));
}

template <class Sample, auto function>
void byHomogeneity(const Samples<Sample>& mosaic, const Grid& grid, Samples<Sample>& result) {
    constexpr int step = width * int(sizeof(Sample)), bufferStep = (width + 6) * int(sizeof(Sample));
    std::vector<uint8_t> buffer(30 * size_t(bufferStep));
    check(function(mosaic.data(), all, size, step, result.data(), 3 * step, grid.own, buffer.data(), bufferStep));
}

template <class Sample, int Grid::*code>
void byOpenCv(const Samples<Sample>& mosaic, const Grid& grid, Samples<Sample>& result) {
    constexpr int depth = sizeof(Sample) == 1 ? CV_8U : CV_16U;
    const cv::Mat source(height, width, CV_MAKETYPE(depth, 1), const_cast<Sample*>(mosaic.data()));
    cv::Mat destination(height, width, CV_MAKETYPE(depth, 3), result.data());
    cv::demosaicing(source, destination, grid.*code);
}

// Its samples have 16 bits; bytes are spread over their whole range, and rounded back.
template <class Sample>
void byLibRaw(const Samples<Sample>& mosaic, const Grid& grid, Samples<Sample>& result) {
    constexpr int scale = 65535 / white<Sample>;
    std::vector<uint16_t> words;
    for (const Sample sample : mosaic) words.push_back(static_cast<uint16_t>(sample * scale));
    LibRawDemosaicing demosaicing(std::move(words), width, height, static_cast<unsigned char>(grid.libRaw));
    if (!demosaicing.isOpen()) throw std::runtime_error("LibRaw opens no mosaic");
    const ushort(*image)[4] = demosaicing.run();
    for (size_t i = 0; i < 3 * pixels; ++i) result[i] = static_cast<Sample>((image[i / 3][i % 3] + scale / 2) / scale);
}

// In decibels, of all channels. Edges are left out: OpenCV repeats the pixels beside them.
template <class Sample>
double noiseRatio(const Samples<Sample>& original, const Samples<Sample>& result) {
    constexpr int margin = 8;
    double sum = 0;
    for (int y = margin; y < height - margin; ++y)
        for (int x = 3 * margin; x < 3 * (width - margin); ++x) {
            const size_t i = size_t(y) * 3 * width + size_t(x);
            const double error = double(result[i]) - original[i];
            sum += error * error;
        }
    const double mean = sum / (3.0 * (width - 2 * margin) * (height - 2 * margin));
    return 10 * std::log10(double(white<Sample>) * white<Sample> / mean);
}

template <class Sample>
struct Row {
    const char* name;
    Method<Sample> method;
};

template <class Sample>
void printRows(const SyntheticPhotograph& photograph, const std::vector<Row<Sample>>& rows) {
    Samples<Sample> original, mosaic(pixels), result(3 * pixels);
    for (const auto& pixel : photograph.pixels)
        for (const double c : pixel) original.push_back(static_cast<Sample>(std::lround(c * white<Sample>)));
    for (const Row<Sample>& row : rows) {
        std::printf("| %s | %d |", row.name, int(8 * sizeof(Sample)));
        for (const Grid& grid : grids) {
            for (size_t i = 0; i < pixels; ++i) mosaic[i] = original[3 * i + grid.colours[i / width % 2 * 2 + i % width % 2]];
            row.method(mosaic, grid, result);
            std::printf(" %.2f |", noiseRatio(original, result));
        }
        std::printf("\n");
    }
}

}  // namespace

void printMosaics() {
    const SyntheticPhotograph photograph;
    std::printf("| OpenCV " CV_VERSION ", LibRaw %s | Bits |", LibRaw::version());
    for (const Grid& grid : grids) std::printf(" %s |", grid.name);
    std::printf("\n| --- | ---: | ---: | ---: | ---: | ---: |\n");
    printRows<uint8_t>(photograph, {{"`zeliCFAToRGB`", byGradients<uint8_t, zeliCFAToRGB_8u_C1C3R>},
                                    {"OpenCV, bilinear", byOpenCv<uint8_t, &Grid::openCv>},
                                    {"OpenCV, edge-aware", byOpenCv<uint8_t, &Grid::openCvEdgeAware>},
                                    {"`zeliDemosaicAHD`", byHomogeneity<uint8_t, zeliDemosaicAHD_8u_C1C3R>},
                                    {"LibRaw, AHD", byLibRaw<uint8_t>}});
    printRows<uint16_t>(photograph, {{"`zeliCFAToRGB`", byGradients<uint16_t, zeliCFAToRGB_16u_C1C3R>},
                                     {"OpenCV, bilinear", byOpenCv<uint16_t, &Grid::openCv>},
                                     {"OpenCV, edge-aware", byOpenCv<uint16_t, &Grid::openCvEdgeAware>},
                                     {"`zeliDemosaicAHD`", byHomogeneity<uint16_t, zeliDemosaicAHD_16u_C1C3R>},
                                     {"LibRaw, AHD", byLibRaw<uint16_t>}});
}

}  // namespace bench
