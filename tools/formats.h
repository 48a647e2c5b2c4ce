// What a program has to know of a format beside its planes: what its channels mean, and how much it keeps of an image.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalog/registry.h"
#include "tools/geometry.h"

namespace tool {

using catalog::Conversion;
using catalog::Element;
using catalog::Format;
using catalog::Function;

enum class Space { rgb, ycbcr, ycocg, gray, mosaic, other };

Space spaceOf(const Format& format);
bool isWord(const Format& format);     // several channels in a word of 16 bits
int bitsOf(const Format& format);      // of its narrowest channel
Site siteOf(const Format& format);     // pixels that share the samples of a unit
int alphaPlane(const Format& format);  // -1 if there is no alpha
bool hasAlpha(const Format& format);

// The format itself, or the one with its planes in the order of the functions.
const Format& canonical(const Format& format);
// For each plane of the canonical format which plane of the file it is.
std::array<int, 4> fileOrder(const Format& format);

int numberOf(const Format& format);
const Format* findFormat(std::string_view name);
const Format& formatNamed(std::string_view name);      // throws a UsageError with names that look alike
const Function& functionNamed(std::string_view name);  // likewise; the prefix may be left out

// The first conversion of a function, which says what its planes are.
const Conversion& conversionOf(const Function& function);

}  // namespace tool
