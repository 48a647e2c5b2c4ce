// zelcc check: a checksum of every function at every level, beside the published ones.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct CheckOptions {
    std::vector<std::string> words;
    std::string write;  // the list to bring up to date
    bool printsSums = false;
};

int check(const CheckOptions& options);

}  // namespace tool
