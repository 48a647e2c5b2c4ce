// A planar frame with chroma halved in both directions; and its file form, a video of one frame.
#pragma once

#include <string>

#include "planar_frame.h"

struct Frame420 : PlanarFrame {
    // A side that is odd loses its last row or column: a chroma site needs 2 x 2 pixels.
    explicit Frame420(ZelSize pictureSize) : PlanarFrame({pictureSize.width & ~1, pictureSize.height & ~1}, {2, 2}) {}
};

// Throws std::runtime_error.
void writeY4m(const std::string& path, const Frame420& frame);
