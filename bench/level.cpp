// The library takes processor features, cache size and memory from functions that it imports by name. The program defines
// these names itself, and so decides which level it measures.
#include "level.h"

#include <cpuid.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "zelcore.h"

namespace bench {

namespace {

bool isPresent(const zel::Level& level) { return (level.needed & ~zel::processorFeatures()) == 0; }

// Null when the variable names no level that the processor has.
const zel::Level* findLevel() {
    const char* wanted = wantedLevel();
    const zel::Level* found = nullptr;
    for (const zel::Level& level : zel::levels::all) {
        if (isPresent(level) && (!wanted || std::strcmp(level.name, wanted) == 0)) found = &level;
    }
    return found;
}

}  // namespace

std::string selectedLevel() {
    const zel::Level* level = findLevel();
    if (!level) throw std::runtime_error(std::string("this processor has no level ") + wantedLevel());
    return std::string(level->name);
}

std::string processorName() {
    char brand[49] = {};
    for (unsigned i = 0; i < 3; ++i) {
        unsigned words[4];
        if (!__get_cpuid(0x80000002u + i, &words[0], &words[1], &words[2], &words[3])) return "unknown processor";
        std::memcpy(brand + 16 * i, words, sizeof words);
    }
    const std::string name = brand;
    return name.substr(name.find_first_not_of(' '));
}

}  // namespace bench

// Runs before main, and before the initialisers of this program.
uint64_t zelGetEnabledCpuFeatures(void) {
    const zel::Level* level = bench::findLevel();
    return level ? level->features : zel::levels::lowest;
}

int32_t zelGetMaxCacheSizeB(int32_t* pSizeByte) {
    const long size = sysconf(_SC_LEVEL3_CACHE_SIZE);
    if (size < 1 || size > INT32_MAX) return -1;
    *pSizeByte = static_cast<int32_t>(size);
    return 0;
}

void* zelMalloc(int32_t bytes) {
    void* memory = nullptr;
    return bytes > 0 && posix_memalign(&memory, 64, static_cast<size_t>(bytes)) == 0 ? memory : nullptr;
}

void zelFree(void* memory) { std::free(memory); }
