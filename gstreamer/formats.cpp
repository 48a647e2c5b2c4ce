#include "formats.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace zelconvert {
namespace {

// What GStreamer names by the machine's own order of bytes stands here by the little-endian one, which is that of all processors
// that the libraries have.
constexpr Format table[] = {
    {GST_VIDEO_FORMAT_I420, zelvPlanar, "YUV", zelv420},
    {GST_VIDEO_FORMAT_YV12, zelvPlanar, "YVU", zelv420},
    {GST_VIDEO_FORMAT_Y41B, zelvPlanar, "YUV", zelv411},
    {GST_VIDEO_FORMAT_Y42B, zelvPlanar, "YUV", zelv422},
    {GST_VIDEO_FORMAT_Y444, zelvPlanar, "YUV"},
    {GST_VIDEO_FORMAT_A420, zelvPlanar, "YUVA", zelv420},
    {GST_VIDEO_FORMAT_I420_10LE, zelvPlanar, "YUV", zelv420, 10},
    {GST_VIDEO_FORMAT_I422_10LE, zelvPlanar, "YUV", zelv422, 10},
    {GST_VIDEO_FORMAT_Y444_10LE, zelvPlanar, "YUV", zelv444, 10},
    {GST_VIDEO_FORMAT_A420_10LE, zelvPlanar, "YUVA", zelv420, 10},
    {GST_VIDEO_FORMAT_A422_10LE, zelvPlanar, "YUVA", zelv422, 10},
    {GST_VIDEO_FORMAT_A444_10LE, zelvPlanar, "YUVA", zelv444, 10},
    {GST_VIDEO_FORMAT_I420_12LE, zelvPlanar, "YUV", zelv420, 12},
    {GST_VIDEO_FORMAT_I422_12LE, zelvPlanar, "YUV", zelv422, 12},
    {GST_VIDEO_FORMAT_Y444_12LE, zelvPlanar, "YUV", zelv444, 12},
    {GST_VIDEO_FORMAT_Y444_16LE, zelvPlanar, "YUV", zelv444, 16},

    {GST_VIDEO_FORMAT_NV12, zelvSemiPlanar, "YUV", zelv420},
    {GST_VIDEO_FORMAT_NV21, zelvSemiPlanar, "YVU", zelv420},
    {GST_VIDEO_FORMAT_NV16, zelvSemiPlanar, "YUV", zelv422},
    {GST_VIDEO_FORMAT_NV61, zelvSemiPlanar, "YVU", zelv422},
    {GST_VIDEO_FORMAT_NV24, zelvSemiPlanar, "YUV"},
    {GST_VIDEO_FORMAT_P010_10LE, zelvSemiPlanar, "YUV", zelv420, 10, zelvHighBits},
    {GST_VIDEO_FORMAT_P012_LE, zelvSemiPlanar, "YUV", zelv420, 12, zelvHighBits},
    {GST_VIDEO_FORMAT_P016_LE, zelvSemiPlanar, "YUV", zelv420, 16},

    {GST_VIDEO_FORMAT_YUY2, zelvPaired, "YUYV", zelv422},
    {GST_VIDEO_FORMAT_YVYU, zelvPaired, "YVYU", zelv422},
    {GST_VIDEO_FORMAT_UYVY, zelvPaired, "UYVY", zelv422},
    {GST_VIDEO_FORMAT_VYUY, zelvPaired, "VYUY", zelv422},
    {GST_VIDEO_FORMAT_Y210, zelvPaired, "YUYV", zelv422, 10, zelvHighBits},
    {GST_VIDEO_FORMAT_Y212_LE, zelvPaired, "YUYV", zelv422, 12, zelvHighBits},
    {GST_VIDEO_FORMAT_v216, zelvPaired, "UYVY", zelv422, 16},
    {GST_VIDEO_FORMAT_v210, zelvV210, "YUV", zelv422, 10},

    {GST_VIDEO_FORMAT_AYUV, zelvInterleaved, "AYUV"},
    {GST_VIDEO_FORMAT_VUYA, zelvInterleaved, "VUYA"},
    {GST_VIDEO_FORMAT_v308, zelvInterleaved, "YUV"},
    {GST_VIDEO_FORMAT_IYU2, zelvInterleaved, "UYV"},
    {GST_VIDEO_FORMAT_AYUV64, zelvInterleaved, "AYUV", zelv444, 16},
    {GST_VIDEO_FORMAT_Y412_LE, zelvInterleaved, "UYVA", zelv444, 12, zelvHighBits},
    {GST_VIDEO_FORMAT_Y410, zelvDwords, "UYVA", zelv444, 10},

    {GST_VIDEO_FORMAT_GRAY8, zelvPlanar, "Y"},
    {GST_VIDEO_FORMAT_GRAY16_LE, zelvPlanar, "Y", zelv444, 16},

    {GST_VIDEO_FORMAT_RGB, zelvInterleaved, "RGB"},
    {GST_VIDEO_FORMAT_BGR, zelvInterleaved, "BGR"},
    {GST_VIDEO_FORMAT_RGBx, zelvInterleaved, "RGBX"},
    {GST_VIDEO_FORMAT_BGRx, zelvInterleaved, "BGRX"},
    {GST_VIDEO_FORMAT_xRGB, zelvInterleaved, "XRGB"},
    {GST_VIDEO_FORMAT_xBGR, zelvInterleaved, "XBGR"},
    {GST_VIDEO_FORMAT_RGBA, zelvInterleaved, "RGBA"},
    {GST_VIDEO_FORMAT_BGRA, zelvInterleaved, "BGRA"},
    {GST_VIDEO_FORMAT_ARGB, zelvInterleaved, "ARGB"},
    {GST_VIDEO_FORMAT_ABGR, zelvInterleaved, "ABGR"},
    {GST_VIDEO_FORMAT_ARGB64, zelvInterleaved, "ARGB", zelv444, 16},
    {GST_VIDEO_FORMAT_ARGB64_LE, zelvInterleaved, "ARGB", zelv444, 16},
    {GST_VIDEO_FORMAT_RGBA64_LE, zelvInterleaved, "RGBA", zelv444, 16},
    {GST_VIDEO_FORMAT_BGRA64_LE, zelvInterleaved, "BGRA", zelv444, 16},
    {GST_VIDEO_FORMAT_ABGR64_LE, zelvInterleaved, "ABGR", zelv444, 16},
    {GST_VIDEO_FORMAT_RGB10A2_LE, zelvDwords, "RGBA", zelv444, 10},
    {GST_VIDEO_FORMAT_BGR10A2_LE, zelvDwords, "BGRA", zelv444, 10},
    {GST_VIDEO_FORMAT_GBR, zelvPlanar, "GBR"},
    {GST_VIDEO_FORMAT_GBRA, zelvPlanar, "GBRA"},
    {GST_VIDEO_FORMAT_RGBP, zelvPlanar, "RGB"},
    {GST_VIDEO_FORMAT_BGRP, zelvPlanar, "BGR"},
    {GST_VIDEO_FORMAT_GBR_10LE, zelvPlanar, "GBR", zelv444, 10},
    {GST_VIDEO_FORMAT_GBRA_10LE, zelvPlanar, "GBRA", zelv444, 10},
    {GST_VIDEO_FORMAT_GBR_12LE, zelvPlanar, "GBR", zelv444, 12},
    {GST_VIDEO_FORMAT_GBRA_12LE, zelvPlanar, "GBRA", zelv444, 12},
};

std::optional<int32_t> matrixOf(GstVideoColorMatrix matrix) {
    switch (matrix) {
        case GST_VIDEO_COLOR_MATRIX_RGB:
            return zelvMatrixRgb;
        case GST_VIDEO_COLOR_MATRIX_FCC:
            return zelvMatrixFcc;
        case GST_VIDEO_COLOR_MATRIX_BT709:
            return zelvMatrix709;
        case GST_VIDEO_COLOR_MATRIX_BT601:
            return zelvMatrix601;
        case GST_VIDEO_COLOR_MATRIX_SMPTE240M:
            return zelvMatrix240;
        case GST_VIDEO_COLOR_MATRIX_BT2020:
            return zelvMatrix2020;
        default:
            return {};
    }
}

std::optional<int32_t> locationOf(GstVideoChromaSite site) {
    switch (static_cast<int>(site)) {
        case GST_VIDEO_CHROMA_SITE_UNKNOWN:  // between the pixels, as GStreamer's own converter has it
        case GST_VIDEO_CHROMA_SITE_JPEG:
            return zelvCentre;
        case GST_VIDEO_CHROMA_SITE_MPEG2:
            return zelvLeft;
        case GST_VIDEO_CHROMA_SITE_COSITED:
            return zelvTopLeft;
        default:
            return {};
    }
}

}  // namespace

std::span<const Format> formats() { return table; }

const Format* formatOf(GstVideoFormat name) {
    const Format* found = std::ranges::find(table, name, &Format::name);
    return found == std::end(table) ? nullptr : found;
}

std::optional<ZelvFormat> description(const GstVideoInfo& info) {
    const Format* format = formatOf(GST_VIDEO_INFO_FORMAT(&info));
    if (!format) return {};
    ZelvFormat result{.layout = format->layout,
                      .components = {},
                      .sampling = format->sampling,
                      .depth = format->depth,
                      .alignment = format->alignment,
                      .matrix = zelvMatrixRgb,
                      .range = zelvFull,
                      .location = 0,
                      .kr = 0,
                      .kb = 0};
    std::strcpy(result.components, format->components);

    const GstVideoColorimetry& colorimetry = info.colorimetry;
    if (!isRgb(info)) {
        const std::optional<int32_t> matrix = matrixOf(colorimetry.matrix);
        if (!matrix || *matrix == zelvMatrixRgb) return {};
        result.matrix = *matrix;
    }
    if (colorimetry.range != GST_VIDEO_COLOR_RANGE_0_255 && colorimetry.range != GST_VIDEO_COLOR_RANGE_16_235) return {};
    result.range = colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255 ? zelvFull : zelvLimited;
    if (format->sampling != zelv444) {
        const std::optional<int32_t> location = locationOf(info.chroma_site);
        if (!location) return {};
        result.location = *location;
    }
    return result;
}

int32_t gridOf(const char* bayerFormat) {
    for (int32_t grid = 0; grid < 4; ++grid)
        if (bayerFormat && std::strcmp(bayerFormat, bayerFormats[grid]) == 0) return grid;
    return -1;
}

}  // namespace zelconvert
