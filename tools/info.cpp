#include "tools/info.h"

#include <cstdio>

#include "tools/formats.h"
#include "tools/level.h"
#include "zelcore.h"

namespace tool {

int info() {
    const ZelLibraryVersion& version = *zelccGetLibVersion();
    std::string levels;
    for (const std::string& level : levelsOfProcessor()) levels += ' ' + level;
    std::printf("program    %s\n", ZELCC_VERSION);
    std::printf("library    %s, %s\n", version.version, version.buildDate);
    std::printf("class      %s: of processors; what runs on this one is the level\n", version.name);
    std::printf("level      %s\n", currentLevel().c_str());
    std::printf("levels    %s\n", levels.c_str());
    std::printf("features   %s\n", features().c_str());
    int32_t cache = 0;
    if (zelGetMaxCacheSizeB(&cache) == 0) std::printf("cache      %d KiB\n", cache / 1024);
    std::printf("functions  %zu, between %zu formats\n", catalog::functions().size(), catalog::formats().size());
    return 0;
}

}  // namespace tool
