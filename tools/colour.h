// What a file says of the luma and chroma in it.
#pragma once

#include <optional>
#include <string>

namespace tool {

// Where the one sample of a site lies along a side of it.
enum class Place { unknown, first, centre };

struct Location {
    Place across = Place::unknown, down = Place::unknown;
    bool operator==(const Location&) const = default;
};

// Empty where nothing is said.
struct Colour {
    std::string matrix = {};  // as --matrix names it
    std::optional<bool> isFullRange = {};
    Location location = {};
};

}  // namespace tool
