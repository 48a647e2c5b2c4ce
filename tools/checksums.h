// The published checksums: what every function makes of a fixed set of images, and the versions in which that changed.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/formats.h"

namespace tool {

// Computed at the level of this process.
uint64_t checksum(const Function& function);

struct Published {
    std::string version, sum;
};
// By function, oldest first.
using Checksums = std::map<std::string, std::vector<Published>, std::less<>>;

std::string hexadecimal(uint64_t sum);
Checksums readChecksums(std::string_view text);
std::string writeChecksums(const Checksums& checksums);
// The list that this program was built with.
std::string_view publishedText();

}  // namespace tool
