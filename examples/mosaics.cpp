#include "mosaics.h"

#include <string>
#include <utility>
#include <vector>

#include "side_by_side.h"

namespace {

struct Grid {
    const char* name;
    ZelBayerGrid type;
    int channels[4];  // of the top left samples, row by row: red, green or blue
};
constexpr Grid grids[] = {{"rggb", zelBayerRGGB, {0, 1, 1, 2}},
                          {"bggr", zelBayerBGGR, {2, 1, 1, 0}},
                          {"grbg", zelBayerGRBG, {1, 0, 2, 1}},
                          {"gbrg", zelBayerGBRG, {1, 2, 0, 1}}};

using Samples = std::vector<uint8_t>;

// Of every pixel one channel.
Samples sampled(const Picture& original, const Grid& grid) {
    Samples samples;
    samples.reserve(original.pixels.size() / 3);
    for (int32_t y = 0; y < original.size.height; ++y)
        for (int32_t x = 0; x < original.size.width; ++x)
            samples.push_back(original.pixel(x, y)[grid.channels[2 * (y % 2) + x % 2]]);
    return samples;
}

// Empty when the conversion failed.
template <class Method>
Picture coloured(const char* name, const Picture& original, const Grid& grid, Study& study, Method method) {
    Picture result(original.size);
    if (!study.call(std::string(name) + ", " + grid.name, original.size, [&] { return method(result); })) return {};
    study.conversions.back().error = difference(original, result);
    return result;
}

}  // namespace

Study mosaics(const Picture& original) {
    const ZelSize size = original.size;
    const ZelRect whole{0, 0, size.width, size.height};
    // 30 rows, six samples longer than those of the picture.
    const int32_t bufferStep = size.width + 6;
    Samples buffer(30 * std::size_t(bufferStep));
    Study study;
    for (const Grid& grid : grids) {
        const Samples samples = sampled(original, grid);
        const Picture byGradients = coloured("zeliCFAToRGB_8u_C1C3R", original, grid, study, [&](Picture& result) {
            return zeliCFAToRGB_8u_C1C3R(samples.data(), whole, size, size.width, result.pixels.data(), result.step(), grid.type,
                                         0);
        });
        const Picture byHomogeneity = coloured("zeliDemosaicAHD_8u_C1C3R", original, grid, study, [&](Picture& result) {
            return zeliDemosaicAHD_8u_C1C3R(samples.data(), whole, size, size.width, result.pixels.data(), result.step(),
                                            grid.type, buffer.data(), bufferStep);
        });
        if (byGradients.pixels.empty() || byHomogeneity.pixels.empty()) continue;
        const std::string name = std::string("mosaic-") + grid.name;
        study.keep(name, beside(byGradients, byHomogeneity));
        study.keep(name + "-detail", detailBeside({&original, &byGradients, &byHomogeneity}));
    }
    return study;
}
