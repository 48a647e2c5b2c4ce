// What the system tells of the processor.
#pragma once

#include <sys/auxv.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "zelcore.h"

namespace {

// The features that processor and system have.
uint64_t processorFeatures() {
    // Their bits in the system's words, as all kernels have them.
    constexpr struct {
        unsigned long word;
        int bit;
        uint64_t feature;
    } known[] = {
        {AT_HWCAP, 1, zelCpuNeon}, {AT_HWCAP, 20, zelCpuDotProduct}, {AT_HWCAP2, 13, zelCpuI8mm}, {AT_HWCAP2, 1, zelCpuSve2}};
    uint64_t features = 0;
    for (const auto& one : known)
        if (getauxval(one.word) >> one.bit & 1) features |= one.feature;
    return features;
}

// The largest cache of data in bytes, 0 where the system reports none. Programs may not ask the processor itself.
[[maybe_unused]] int64_t largestCache() {
    int64_t largest = 0;
    for (char index = '0'; index < '8'; ++index) {
        char path[] = "/sys/devices/system/cpu/cpu0/cache/index0/size";
        path[sizeof path - sizeof "0/size"] = index;
        std::FILE* const file = std::fopen(path, "re");
        if (!file) break;
        long kibibytes = 0;
        if (std::fscanf(file, "%ldK", &kibibytes) == 1) largest = std::max(largest, int64_t{kibibytes} << 10);
        std::fclose(file);
    }
    return largest;
}

}  // namespace
