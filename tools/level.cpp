#include "tools/level.h"

#include <cstdint>
#include <cstdlib>

#include "frame/levels.h"
#include "tools/errors.h"
#include "zelcore.h"

namespace tool {

namespace {

bool isPresent(const zel::Level& level) { return (level.needed & ~zel::processorFeatures()) == 0; }

}  // namespace

std::vector<std::string> levelsOfProcessor() {
    std::vector<std::string> names;
    for (const zel::Level& level : zel::levels::all)
        if (isPresent(level)) names.emplace_back(level.name);
    return names;
}

std::string currentLevel() {
    const char* name = std::getenv(levelVariable);
    if (!name) {
        for (const zel::Level& level : zel::levels::all)
            if (level.isColumn && (level.features & ~zel::processorFeatures()) == 0) return level.name;
        return levelsOfProcessor().back();
    }
    const zel::Level* level = zel::findLevel(name);
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
    constexpr Feature known[] = {{zelCpuSsse3, "SSSE3"},      {zelCpuAvx2, "AVX2"}, {zelCpuAvx512, "AVX-512"},
                                 {zelCpuInOrder, "in-order"}, {zelCpuNeon, "NEON"}, {zelCpuDotProduct, "dot"},
                                 {zelCpuI8mm, "I8MM"},        {zelCpuSve2, "SVE2"}};
    std::string text;
    for (const Feature& f : known)
        if (zel::processorFeatures() & f.bit) text += (text.empty() ? "" : " ") + std::string(f.name);
    return text;
}

}  // namespace tool

// Takes the place of the one that the library would call, before main and before the initialisers of this program.
extern "C" __attribute__((visibility("default"))) uint64_t zelGetEnabledCpuFeatures(void) {
    const char* name = std::getenv(tool::levelVariable);
    const zel::Level* level = name ? zel::findLevel(name) : nullptr;
    return level && tool::isPresent(*level) ? level->features : zel::processorFeatures();
}
