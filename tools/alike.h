// Names that a misspelt word may stand for.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tool {

// As the end of a message, "; did you mean ...?": up to five names that the word is a part of or nearly is. Empty if none is.
std::string alike(std::string_view word, std::span<const std::string_view> names);

}  // namespace tool
