#include "harness/features.h"

#include <cstdlib>
#include <cstring>

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

const char* setting() {
    const char* value = std::getenv("ZELCC_TEST_FEATURES");
    if (value && *value) return value;
    return processorHas(find("avx512")->features) ? "avx512" : processorHas(find("avx2")->features) ? "avx2" : "ssse3";
}

}  // namespace

std::string featuresName() { return setting(); }

bool isLevel(const std::string& name) { return find(name.c_str()); }

bool isNumber(const std::string& name) {
    char* end;
    std::strtoull(name.c_str(), &end, 0);
    return !name.empty() && *end == 0;
}

uint64_t features() {
    const Name* name = find(setting());
    return name ? name->features : std::strtoull(setting(), nullptr, 0);
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
