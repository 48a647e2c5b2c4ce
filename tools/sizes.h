// Sizes and regions as the command line gives them.
#pragma once

#include <string>

#include "tools/formats.h"

namespace tool {

// Steps of the widest pixels of so long a row are still numbers that functions take.
constexpr int largestSide = 1 << 20;

// WIDTHxHEIGHT.
Size parseSize(const std::string& text);
// WIDTHxHEIGHT+X+Y inside the frame, from a whole site of the format on, in both fields if there are two; the whole frame if the
// text is empty.
Rect parseCrop(const std::string& text, const Format& format, Size size, bool hasFields = false);

}  // namespace tool
