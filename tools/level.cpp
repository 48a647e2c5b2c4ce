#include "tools/level.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "tools/errors.h"
#include "zelcore.h"

namespace tool {

namespace {

struct Level {
    const char* name;
    uint64_t features;
};

constexpr Level levels[] = {
    {"s8", zelCpuSsse3 | zelCpuInOrder},
    {"ssse3", zelCpuSsse3},
    {"avx2", zelCpuSsse3 | zelCpuAvx2},
    {"avx512", zelCpuSsse3 | zelCpuAvx2 | zelCpuAvx512},
};

// What libzelcore itself reports.
uint64_t processorFeatures() {
    const auto ask = reinterpret_cast<uint64_t (*)()>(dlsym(RTLD_NEXT, "zelGetEnabledCpuFeatures"));
    return ask ? ask() : 0;
}

// Any processor can run the column for in-order cores.
bool isPresent(const Level& level) { return (level.features & ~(processorFeatures() | zelCpuInOrder)) == 0; }

const Level* findLevel(const char* name) {
    for (const Level& level : levels)
        if (std::strcmp(level.name, name) == 0) return &level;
    return nullptr;
}

}  // namespace

std::vector<std::string> levelsOfProcessor() {
    std::vector<std::string> names;
    for (const Level& level : levels)
        if (isPresent(level)) names.emplace_back(level.name);
    return names;
}

std::string currentLevel() {
    const char* name = std::getenv(levelVariable);
    if (!name) return processorFeatures() & zelCpuInOrder ? "s8" : levelsOfProcessor().back();
    const Level* level = findLevel(name);
    std::string present;
    for (const std::string& one : levelsOfProcessor()) present += ' ' + one;
    if (!level || !isPresent(*level))
        throw UsageError(std::string(levelVariable) + "=" + name + " is no level of this processor, which has:" + present);
    return name;
}

std::string features() {
    struct Feature {
        uint64_t bit;
        const char* name;
    };
    constexpr Feature known[] = {
        {zelCpuSsse3, "SSSE3"}, {zelCpuAvx2, "AVX2"}, {zelCpuAvx512, "AVX-512"}, {zelCpuInOrder, "in-order"}};
    std::string text;
    for (const Feature& f : known)
        if (processorFeatures() & f.bit) text += (text.empty() ? "" : " ") + std::string(f.name);
    return text;
}

}  // namespace tool

// Takes the place of the one that the library would call, before main and before the initialisers of this program.
extern "C" __attribute__((visibility("default"))) uint64_t zelGetEnabledCpuFeatures(void) {
    const char* name = std::getenv(tool::levelVariable);
    const tool::Level* level = name ? tool::findLevel(name) : nullptr;
    return level && tool::isPresent(*level) ? level->features : tool::processorFeatures();
}
