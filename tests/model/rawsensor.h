// Colour images from the mosaic of a raw sensor, pixel by pixel. Samples are integers of any depth.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "zelcc/types.h"

namespace model {

using Pixel = std::array<int, 3>;  // red, green, blue

struct Mosaic {
    ZelSize size;
    int grid;
    int highest;  // sample of the depth
    std::vector<int> samples;

    int at(int x, int y) const { return samples[static_cast<size_t>(y) * size.width + x]; }
    // Red, green or blue, as the place in a pixel.
    int colourAt(int x, int y) const;
    bool contains(int x, int y) const { return x >= 0 && y >= 0 && x < size.width && y < size.height; }
};

Pixel interpolated(const Mosaic& mosaic, int x, int y);

// Both candidates of every pixel, and how much more homogeneous the row's one is. Beyond the image they are what reflected
// samples give.
class Homogeneity {
  public:
    explicit Homogeneity(const Mosaic& mosaic);

    // The result for a region inside the image, row by row.
    std::vector<Pixel> choose(const ZelRect& region) const;

  private:
    static constexpr int margin = 1, candidates = 2;  // the column's, the row's
    struct Cell {
        Pixel colour, luma;  // luma and two differences
    };

    int sample(int x, int y) const;
    int greenOf(int candidate, int x, int y) const;
    Pixel colourOf(int candidate, int x, int y) const;
    int homogeneityOf(int x, int y) const;
    const Cell& cell(int candidate, int x, int y) const { return cells_[candidate][index(x, y, margin + 1)]; }
    size_t index(int x, int y, int around) const {
        return static_cast<size_t>(y + around) * (mosaic_.size.width + 2 * around) + (x + around);
    }

    const Mosaic& mosaic_;
    std::array<std::vector<Cell>, candidates> cells_;
    std::vector<int> homogeneity_;
};

}  // namespace model
