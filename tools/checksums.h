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
// The sum of a function that takes the processor's approximate reciprocal begins so. What follows is the sum of all processors
// that have none and divide.
constexpr std::string_view byProcessor = "by-processor:";
// Whether this one has.
bool approximatesReciprocals();
// What this processor is to give, empty where only its levels can be compared.
std::string_view wantedSum(const Published& entry);

// By function, oldest first.
using Checksums = std::map<std::string, std::vector<Published>, std::less<>>;

std::string hexadecimal(uint64_t sum);
Checksums readChecksums(std::string_view text);
std::string writeChecksums(const Checksums& checksums);
// The list that this program was built with.
std::string_view publishedText();

}  // namespace tool
