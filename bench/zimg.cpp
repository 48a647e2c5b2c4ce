#include <zimg.h>

#include <stdexcept>

#include "level.h"
#include "peers.h"

namespace bench {

namespace {

zimg_pixel_type_e pixelTypeOf(Depth depth) {
    return depth == Depth::u8 ? ZIMG_PIXEL_BYTE : depth == Depth::u16 ? ZIMG_PIXEL_WORD : ZIMG_PIXEL_FLOAT;
}

zimg_image_format formatOf(const Image& image) {
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    const bool rgb = image.layout == Layout::rgbPlanes, gray = image.layout == Layout::gray;
    format.width = static_cast<unsigned>(image.size.width);
    format.height = static_cast<unsigned>(image.size.height);
    format.pixel_type = pixelTypeOf(image.depth);
    format.depth = 8 * static_cast<unsigned>(bytesOf(image.depth));
    format.color_family = gray ? ZIMG_COLOR_GREY : rgb ? ZIMG_COLOR_RGB : ZIMG_COLOR_YUV;
    format.matrix_coefficients = rgb ? ZIMG_MATRIX_RGB : ZIMG_MATRIX_ST170_M;
    format.pixel_range = rgb || gray ? ZIMG_RANGE_FULL : ZIMG_RANGE_LIMITED;
    return format;
}

zimg_image_buffer_const readableBuffer(const Image& image) {
    zimg_image_buffer_const buffer{};
    buffer.version = ZIMG_API_VERSION;
    for (int i = 0; i < 3; ++i) buffer.plane[i] = {image.planes[i].data, image.planes[i].step, ZIMG_BUFFER_MAX};
    return buffer;
}

zimg_image_buffer writableBuffer(const Image& image) {
    zimg_image_buffer buffer{};
    buffer.version = ZIMG_API_VERSION;
    for (int i = 0; i < 3; ++i) buffer.plane[i] = {image.planes[i].data, image.planes[i].step, ZIMG_BUFFER_MAX};
    return buffer;
}

Call bindGraph(const Image& source, const Image& destination, zimg_dither_type_e dither) {
    const zimg_image_format from = formatOf(source), to = formatOf(destination);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.cpu_type = byLevel(ZIMG_CPU_X86_SSSE3, ZIMG_CPU_X86_AVX2, ZIMG_CPU_AUTO_64B);
    parameters.dither_type = dither;
    const std::shared_ptr<zimg_filter_graph> graph(zimg_filter_graph_build(&from, &to, &parameters), zimg_filter_graph_free);
    size_t scratchBytes = 0;
    if (!graph || zimg_filter_graph_get_tmp_size(graph.get(), &scratchBytes)) throw std::runtime_error("zimg builds no graph");
    const std::shared_ptr<uint8_t[]> scratch = allocate(scratchBytes);
    return [graph, scratch, read = readableBuffer(source), write = writableBuffer(destination)] {
        return static_cast<int>(
            zimg_filter_graph_process(graph.get(), &read, &write, scratch.get(), nullptr, nullptr, nullptr, nullptr));
    };
}

}  // namespace

std::string zimgVersion() {
    unsigned major, minor, micro;
    zimg_get_version_info(&major, &minor, &micro);
    return "zimg " + std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(micro);
}

void addZimg(const Task& task, std::vector<Peer>& peers) {
    constexpr Task encode{Layout::rgbPlanes, Layout::i444}, decode{Layout::i444, Layout::rgbPlanes};
    const auto add = [&](zimg_dither_type_e dither) {
        peers.push_back({"zimg", [dither](const Image& from, const Image& to) { return bindGraph(from, to, dither); }});
    };
    if (task == encode || task == decode) add(ZIMG_DITHER_NONE);

    const bool isReduction = task.source.layout == Layout::gray && task.destination == Format(Layout::gray) &&
                             (task.source.depth == Depth::u16 || task.source.depth == Depth::f32);
    if (!isReduction) return;
    if (task.variant == Variant::toLevels) add(ZIMG_DITHER_NONE);
    if (task.variant == Variant::ordered) add(ZIMG_DITHER_ORDERED);
    if (task.variant == Variant::floydSteinberg) add(ZIMG_DITHER_ERROR_DIFFUSION);
}

}  // namespace bench
