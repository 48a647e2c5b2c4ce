// A frame of three planes, Y, Cb and Cr, without gaps between their rows.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "zelcc.h"

struct PlanarFrame {
    // Of whole chroma sites.
    PlanarFrame(ZelSize frameSize, ZelSize site);

    std::array<const uint8_t*, 3> planes() const;
    std::array<uint8_t*, 3> planes();

    ZelSize size;
    std::array<int32_t, 3> steps;
    std::array<std::vector<uint8_t>, 3> samples;
};
