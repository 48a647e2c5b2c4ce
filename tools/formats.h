// The formats and functions that a user names.
#pragma once

#include <string>
#include <string_view>

#include "catalog/names.h"
#include "tools/geometry.h"

namespace tool {

using catalog::canonical;
using catalog::Conversion;
using catalog::Element;
using catalog::findFormat;
using catalog::Format;
using catalog::Function;
using catalog::hasAlpha;
using catalog::Model;
using catalog::numberOf;

const Format& formatNamed(std::string_view name);      // throws a UsageError with names that look alike
const Function& functionNamed(std::string_view name);  // likewise; the prefix may be left out

// The first conversion of a function, which says what its planes are.
const Conversion& conversionOf(const Function& function);

}  // namespace tool
