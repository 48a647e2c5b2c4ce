// Formats, functions and methods by what users call them, and what one may mean by a name that there isn't.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "catalog/registry.h"

namespace catalog {

// The number of a format or function of just that name; none if there is none.
std::optional<int> formatNumber(std::string_view name);
std::optional<int> functionNumber(std::string_view name);

// As FFmpeg has it: a name without the order of bytes stands for the one that this processor has.
const Format* findFormat(std::string_view name);
// With or without the prefix.
const Function* findFunction(std::string_view name);

// Of Conversion, each once, in order.
std::vector<std::string_view> methods();  // and verbs

// The end of a sentence about a name that is none of these: all of a few, or those that the word is a part of or nearly is, or
// nothing.
std::string suggestion(std::string_view word, std::span<const std::string_view> names);
std::string suggestedFormats(std::string_view word);
std::string suggestedFunctions(std::string_view word);

}  // namespace catalog
