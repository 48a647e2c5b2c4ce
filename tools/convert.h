// zelcc convert.
#pragma once

#include <string>

#include "tools/way.h"

namespace tool {

struct ConvertOptions {
    std::string input, output;
    std::string from, to, size, crop;
    std::string inputKind = "auto", outputKind = "auto";
    // Of luma and chroma; empty where the file is asked, and then the usual is taken.
    std::string matrix, range, location;
    Wishes wishes;
    bool isProgressive = false;  // whatever the file says
    std::string gammaRange;
    int threads = 0;      // 0: as many as the machine has
    int64_t frames = -1;  // at most; -1: all
    bool isDry = false, isQuiet = false;
};

int convert(ConvertOptions options);

}  // namespace tool
