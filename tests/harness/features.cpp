#include "harness/features.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "zelcore.h"

namespace harness {
namespace {

struct Name {
    const char* text;
    uint64_t features;
};
constexpr Name names[] = {
    {"ssse3", zelCpuSsse3},
    {"avx2", zelCpuSsse3 | zelCpuAvx2},
    {"avx512", zelCpuSsse3 | zelCpuAvx2 | zelCpuAvx512},
    {"s8", zelCpuSsse3 | zelCpuInOrder},
};

const Name* find(const char* text) {
    for (const Name& name : names)
        if (std::strcmp(name.text, text) == 0) return &name;
    return nullptr;
}

const char* best() { return canRun(find("avx512")->features) ? "avx512" : canRun(find("avx2")->features) ? "avx2" : "ssse3"; }

constexpr char everything[] = "all";

const char* setting() {
    const char* value = std::getenv("ZELCC_TEST_FEATURES");
    if (value && *value) return value;
    return best();
}

constinit const Name* beingLoaded = nullptr;
constinit uint64_t noted = 0;

// The program's library once more, as another file, so that it is another library with variables and a choice of its own.
void* loadCopy(const Name& level) {
    Dl_info info;
    if (!dladdr(dlsym(RTLD_DEFAULT, "zelccGetLibVersion"), &info)) return nullptr;
    std::ifstream original(info.dli_fname, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(original), {});
    const int file = memfd_create(level.text, 0);  // stays open, since its path is the name of the library
    if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return nullptr;
    beingLoaded = &level;
    void* library = dlopen(("/proc/self/fd/" + std::to_string(file)).c_str(), RTLD_NOW | RTLD_LOCAL);
    beingLoaded = nullptr;
    return library;
}

std::vector<Level> loadLevels() {
    if (std::strcmp(setting(), everything) != 0) return {{setting(), nullptr}};
    std::vector<Level> levels;
    for (const Name& name : names) {
        if (!canRun(name.features)) continue;
        Level level{name.text, nullptr, (name.features & zelCpuInOrder) != 0};
        if (std::strcmp(name.text, best()) != 0) {
            level.library = loadCopy(name);
            if (!level.library) {
                std::fprintf(stderr, "The library cannot be loaded for %s: %s\n", name.text, dlerror());
                std::abort();
            }
        }
        levels.push_back(level);
    }
    return levels;
}

}  // namespace

std::string featuresName() { return setting(); }

bool isLevel(const std::string& name) { return find(name.c_str()) || name == everything; }

bool isNumber(const std::string& name) {
    char* end;
    std::strtoull(name.c_str(), &end, 0);
    return !name.empty() && *end == 0;
}

uint64_t features() {
    const Name* name = beingLoaded ? beingLoaded : find(std::strcmp(setting(), everything) == 0 ? best() : setting());
    return name ? name->features : std::strtoull(setting(), nullptr, 0);
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
    __builtin_cpu_init();
    if (features & zelCpuSsse3 && !__builtin_cpu_supports("ssse3")) return false;
    if (features & zelCpuAvx2 && !__builtin_cpu_supports("avx2")) return false;
    return !(features & zelCpuAvx512) ||
           (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
            __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi"));
}

}  // namespace harness
