// A picture that is computed, with what a photograph has: gradients, shaded bodies, edges in all directions, texture, and lines
// down to the finest ones that a lens would let through.
#pragma once

#include <array>
#include <vector>

namespace bench {

struct SyntheticPhotograph {
    static constexpr int width = 768, height = 512;
    using Colour = std::array<double, 3>;  // red, green, blue from 0 to 1

    SyntheticPhotograph();

    std::vector<Colour> pixels;  // row by row
};

}  // namespace bench
