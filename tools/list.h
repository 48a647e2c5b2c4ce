// zelcc list.
#pragma once

#include <string>
#include <vector>

namespace tool {

// What: formats, conversions, functions, or all of them. Lines that have all of the words, whatever the case, are printed.
int list(const std::string& what, const std::vector<std::string>& words);

}  // namespace tool
