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
    const uint8_t* pixel(int32_t x, int32_t y) const { return pixels.data() + offset(x, y); }
    uint8_t* pixel(int32_t x, int32_t y) { return pixels.data() + offset(x, y); }
    std::size_t offset(int32_t x, int32_t y) const { return std::size_t(y) * std::size_t(step()) + 3 * std::size_t(x); }

    ZelSize size{0, 0};
    std::vector<uint8_t> pixels;
};
