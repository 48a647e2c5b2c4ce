// Sizes in pixels, and rounding them to whole sites.
#pragma once

#include <cstdint>
#include <numeric>

#include "catalog/registry.h"

namespace tool {

struct Size {
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int x = 0, y = 0;
    Size size;
};

using catalog::Site;

constexpr Site common(Site a, Site b) { return {std::lcm(a.width, b.width), std::lcm(a.height, b.height)}; }
constexpr int roundUp(int value, int multiple) { return (value + multiple - 1) / multiple * multiple; }
constexpr Size wholeSites(Size size, Site site) { return {roundUp(size.width, site.width), roundUp(size.height, site.height)}; }

}  // namespace tool
