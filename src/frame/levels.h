// The levels and columns of the library as data, for programs that define zelGetEnabledCpuFeatures and so choose among them.
#pragma once

#if !defined(__wasm__)  // which has one level, and nothing to load
#include <dlfcn.h>
#endif

#include <cstdint>
#include <cstring>

#include "zelcore.h"

namespace zel {

struct Level {
    const char* name;
    uint64_t features;  // that select it
    uint64_t needed;    // that the processor must have; a column runs on any
    bool isColumn;
};

namespace levels {

constexpr uint64_t lowest = [] {
    uint64_t features = 0;
#define ZEL_LEVEL(name, feature, flags) \
    if (features == 0) features = feature;
#include "levels.def"
    return features;
}();

constexpr int count = 0
#define ZEL_LEVEL(name, feature, flags) +1
#define ZEL_COLUMN(name, feature, flags) +1
#include "levels.def"
    ;

struct List {
    Level of[count]{};
    constexpr const Level* begin() const { return of; }
    constexpr const Level* end() const { return of + count; }
};

// Columns, then levels, lowest first: each has the features of those before it.
constexpr List all = [] {
    List list;
    Level* next = list.of;
    uint64_t sum = 0;
#define ZEL_COLUMN(name, feature, flags) *next++ = {#name, lowest | feature, lowest, true};
#include "levels.def"
#define ZEL_LEVEL(name, feature, flags) \
    sum |= feature;                     \
    *next++ = {#name, sum, sum, false};
#include "levels.def"
    return list;
}();

}  // namespace levels

// Null where there is none of that name.
inline const Level* findLevel(const char* name) {
    for (const Level& level : levels::all)
        if (std::strcmp(level.name, name) == 0) return &level;
    return nullptr;
}

#if !defined(__wasm__)
// What libzelcore itself reports.
inline uint64_t processorFeatures() {
    const auto ask = reinterpret_cast<uint64_t (*)()>(dlsym(RTLD_NEXT, "zelGetEnabledCpuFeatures"));
    return ask ? ask() : 0;
}
#endif

}  // namespace zel
