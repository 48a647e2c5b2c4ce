// The published checksums: what every function, and every conversion of libzelvideo on a list, makes of a fixed set of images,
// and the versions in which that changed.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/exercise.h"

namespace tool {

// What has a checksum.
struct Subject {
    std::string name;
    bool dependsOnProcessor;
    std::function<uint64_t()> sum;  // computed at the level of this process
};
std::vector<Subject> functionSubjects();
std::vector<Subject> describedSubjects();
std::vector<Subject> allSubjects();

// Calls with the size, lay and seed of every image of the set, one set for each variant.
using AddImage = std::function<uint64_t(uint64_t sum, Size size, Lay lay, int variant, unsigned seed)>;
uint64_t checksumOf(int variants, const AddImage& add);

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

// By name, oldest first.
using Checksums = std::map<std::string, std::vector<Published>, std::less<>>;

std::string hexadecimal(uint64_t sum);
Checksums readChecksums(std::string_view text);
std::string writeChecksums(const Checksums& checksums);
// The list that this program was built with.
std::string_view publishedText();

}  // namespace tool
