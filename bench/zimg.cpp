#include <zimg.h>

#include <stdexcept>

#include "peers.h"

namespace bench {

namespace {

zimg_image_format formatOf(const Image& image) {
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    const bool rgb = image.layout == Layout::rgbPlanes;
    format.width = static_cast<unsigned>(image.size.width);
    format.height = static_cast<unsigned>(image.size.height);
    format.pixel_type = ZIMG_PIXEL_BYTE;
    format.color_family = rgb ? ZIMG_COLOR_RGB : ZIMG_COLOR_YUV;
    format.matrix_coefficients = rgb ? ZIMG_MATRIX_RGB : ZIMG_MATRIX_ST170_M;
    format.pixel_range = rgb ? ZIMG_RANGE_FULL : ZIMG_RANGE_LIMITED;
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

Call bindGraph(const Image& source, const Image& destination) {
    const zimg_image_format from = formatOf(source), to = formatOf(destination);
    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.cpu_type = ZIMG_CPU_AUTO_64B;
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
    if (task == encode || task == decode) peers.push_back({"zimg", bindGraph});
}

}  // namespace bench
