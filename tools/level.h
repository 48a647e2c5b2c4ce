// The level of the library in this process. It is chosen when the library is loaded, from the features that this program tells
// it: those of the processor, or no more than the environment variable ZELCC_LEVEL names.
#pragma once

#include <string>
#include <vector>

namespace tool {

constexpr const char* levelVariable = "ZELCC_LEVEL";

// Lowest first; s8 is the column for small in-order cores.
std::vector<std::string> levelsOfProcessor();
// Throws a UsageError if the variable names a level that is not known or not there.
std::string currentLevel();
std::string features();  // in words, of the processor

}  // namespace tool
