#include "harness/features.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "frame/levels.h"

namespace harness {
namespace {

const char* best() {
    const char* highest = nullptr;
    for (const zel::Level& level : zel::levels::all)
        if (!level.isColumn && canRun(level.features)) highest = level.name;
    return highest;
}

constexpr char everything[] = "all";

const char* setting() {
    const char* value = std::getenv("ZELCC_TEST_FEATURES");
    if (value && *value) return value;
    return best();
}

constinit const zel::Level* beingLoaded = nullptr;
constinit uint64_t noted = 0;

// The program's library once more, as another file, so that it is another library with variables and a choice of its own.
void* loadCopy(const zel::Level& level) {
    Dl_info info;
    if (!dladdr(dlsym(RTLD_DEFAULT, "zelccGetLibVersion"), &info)) return nullptr;
    std::ifstream original(info.dli_fname, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(original), {});
    const int file = memfd_create(level.name, 0);  // stays open, since its path is the name of the library
    if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return nullptr;
    beingLoaded = &level;
    void* library = dlopen(("/proc/self/fd/" + std::to_string(file)).c_str(), RTLD_NOW | RTLD_LOCAL);
    beingLoaded = nullptr;
    return library;
}

std::vector<Level> loadLevels() {
    if (std::strcmp(setting(), everything) != 0) return {{setting(), nullptr}};
    std::vector<Level> levels;
    for (const zel::Level& one : zel::levels::all) {
        if (!canRun(one.features)) continue;
        Level level{one.name, nullptr, one.isColumn};
        if (std::strcmp(one.name, best()) != 0) {
            level.library = loadCopy(one);
            if (!level.library) {
                std::fprintf(stderr, "The library cannot be loaded for %s: %s\n", one.name, dlerror());
                std::abort();
            }
        }
        levels.push_back(level);
    }
    return levels;
}

}  // namespace

std::string featuresName() { return setting(); }

bool isLevel(const std::string& name) { return zel::findLevel(name.c_str()) || name == everything; }

bool isNumber(const std::string& name) {
    char* end;
    std::strtoull(name.c_str(), &end, 0);
    return !name.empty() && *end == 0;
}

uint64_t features() {
    const char* const name = std::strcmp(setting(), everything) == 0 ? best() : setting();
    const zel::Level* const level = beingLoaded ? beingLoaded : zel::findLevel(name);
    return level ? level->features : std::strtoull(setting(), nullptr, 0);
}

#ifdef ZELCC_EMULATED_AVX512
const bool emulatesAvx512 = true;
#else
const bool emulatesAvx512 = false;
#endif

bool canRun(uint64_t features) {
    if (emulatesAvx512 && features & zelCpuAvx512) features = zelCpuSsse3 | zelCpuAvx2;
    return processorHas(features);
}

void noteLevels() { ++noted; }
uint64_t levelsNoted() { return noted; }

std::span<const Level> levels() {
    static const std::vector<Level> levels = loadLevels();
    return levels;
}

bool processorHas(uint64_t features) {
    uint64_t needed = features;
    for (const zel::Level& level : zel::levels::all)
        if (level.isColumn) needed &= ~(level.features & ~level.needed);
    return (needed & ~zel::processorFeatures()) == 0;
}

}  // namespace harness
