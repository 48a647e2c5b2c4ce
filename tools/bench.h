// zelcc bench.
#pragma once

#include <string>

namespace tool {

struct BenchOptions {
    std::string function;
    std::string size = "1920x1080";
    int threads = 1;
    double seconds = 1;
};

int bench(const BenchOptions& options);

}  // namespace tool
