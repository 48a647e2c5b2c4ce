// A picture in memory: rows of R G B bytes without gaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelcc.h"

struct Picture {
    Picture() = default;
    explicit Picture(ZelSize pictureSize)
        : size(pictureSize), pixels(std::size_t(3) * std::size_t(size.width) * std::size_t(size.height)) {}

    int32_t step() const { return 3 * size.width; }

    ZelSize size{0, 0};
    std::vector<uint8_t> pixels;
};
