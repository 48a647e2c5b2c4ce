// Sizes in pixels, and rounding them to whole sites.
#pragma once

#include <cstdint>
#include <numeric>

namespace tool {

struct Size {
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int x = 0, y = 0;
    Size size;
};

struct Site {
    int width = 1, height = 1;
    bool operator==(const Site&) const = default;
};

constexpr Site common(Site a, Site b) { return {std::lcm(a.width, b.width), std::lcm(a.height, b.height)}; }
constexpr int roundUp(int value, int multiple) { return (value + multiple - 1) / multiple * multiple; }
constexpr Size wholeSites(Size size, Site site) { return {roundUp(size.width, site.width), roundUp(size.height, site.height)}; }

}  // namespace tool
