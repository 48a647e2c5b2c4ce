// The raw formats of GStreamer that libzelvideo has, and a description of one side of a stream for it.
#pragma once

#include <gst/video/video.h>

#include <optional>
#include <span>

#include "zelvideo.h"

namespace zelconvert {

struct Format {
    GstVideoFormat name;
    int32_t layout;
    const char* components;
    int32_t sampling = zelv444;
    int32_t depth = 8;
    int32_t alignment = zelvLowBits;
};

std::span<const Format> formats();
const Format* formatOf(GstVideoFormat name);

inline bool isRgb(const GstVideoInfo& info) { return GST_VIDEO_INFO_IS_RGB(&info); }
// Fields of a frame share no chroma: their rows are images of their own where sites have two.
inline bool hasSitesOfTwoRows(const GstVideoInfo& info) {
    const Format* format = formatOf(GST_VIDEO_INFO_FORMAT(&info));
    return format && format->sampling == zelv420;
}

// None if there is no such format, or its matrix, range or chroma site isn't served.
std::optional<ZelvFormat> description(const GstVideoInfo& info);

// Grids of video/x-bayer by the names of its formats; -1 for another one.
inline constexpr const char* bayerFormats[] = {"bggr", "rggb", "gbrg", "grbg"};  // in the order of ZelBayerGrid
int32_t gridOf(const char* bayerFormat);

}  // namespace zelconvert
