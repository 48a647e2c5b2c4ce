// A frame of three planes, Y, Cb and Cr, with chroma halved in both directions; and its file form, a video of one frame.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "zelcc.h"

struct Frame420 {
    // A side that is odd loses its last row or column: a chroma site needs 2 x 2 pixels.
    explicit Frame420(ZelSize pictureSize);

    std::array<const uint8_t*, 3> planes() const;
    std::array<uint8_t*, 3> planes();

    ZelSize size;
    std::array<int32_t, 3> steps;
    std::array<std::vector<uint8_t>, 3> samples;
};

// Throws std::runtime_error.
void writeY4m(const std::string& path, const Frame420& frame);
