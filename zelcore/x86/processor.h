// What cpuid tells of the processor.
#pragma once

#include <cpuid.h>

#include <algorithm>
#include <cstdint>

#include "zelcore.h"

namespace {

struct Registers {
    uint32_t eax, ebx, ecx, edx;
};

Registers cpuid(uint32_t leaf, uint32_t subleaf = 0) {
    Registers r{};
    if (leaf <= static_cast<uint32_t>(__get_cpuid_max(leaf & 0x80000000u, nullptr)))
        __cpuid_count(leaf, subleaf, r.eax, r.ebx, r.ecx, r.edx);
    return r;
}

constexpr bool has(uint32_t word, int bit) { return (word >> bit & 1) != 0; }

// The register sets that the operating system saves on a task switch.
uint64_t savedRegisterSets() {
    uint32_t low, high;
    asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return uint64_t{high} << 32 | low;
}

// The 32 nm and 45 nm Atom cores (Bonnell, Saltwell): the last ones of the line that execute in order.
bool isInOrderCore(const Registers& leaf1) {
    const uint32_t family = leaf1.eax >> 8 & 15;
    const uint32_t model = (leaf1.eax >> 4 & 15) | (leaf1.eax >> 12 & 0xf0);
    const Registers vendor = cpuid(0);
    const bool intel =
        vendor.ebx == signature_INTEL_ebx && vendor.ecx == signature_INTEL_ecx && vendor.edx == signature_INTEL_edx;
    return intel && family == 6 && (model == 0x1c || model == 0x26 || model == 0x27 || model == 0x35 || model == 0x36);
}

int64_t largestCache(uint32_t leaf) {
    int64_t largest = 0;
    for (uint32_t index = 0; index < 16; ++index) {
        const Registers r = cpuid(leaf, index);
        const uint32_t type = r.eax & 31;
        if (type == 0) break;
        constexpr uint32_t instructionCache = 2;
        if (type == instructionCache) continue;
        const int64_t ways = (r.ebx >> 22) + 1, partitions = (r.ebx >> 12 & 1023) + 1, line = (r.ebx & 4095) + 1;
        largest = std::max(largest, ways * partitions * line * (int64_t{r.ecx} + 1));
    }
    return largest;
}

// The features that processor and system have.
uint64_t processorFeatures() {
    const Registers leaf1 = cpuid(1);
    uint64_t features = 0;
    if (has(leaf1.ecx, 9)) features |= zelCpuSsse3;
    if (isInOrderCore(leaf1)) features |= zelCpuInOrder;

    const bool osxsave = has(leaf1.ecx, 27), avx = has(leaf1.ecx, 28);
    if (!osxsave || !avx) return features;
    const uint64_t saved = savedRegisterSets();
    const Registers leaf7 = cpuid(7);
    constexpr uint64_t ymmState = 0x06, zmmState = 0xe6;
    const bool fma = has(leaf1.ecx, 12);
    if ((saved & ymmState) == ymmState && has(leaf7.ebx, 5) && fma) features |= zelCpuAvx2;
    const bool f = has(leaf7.ebx, 16), dq = has(leaf7.ebx, 17), bw = has(leaf7.ebx, 30), vl = has(leaf7.ebx, 31);
    const bool vbmi = has(leaf7.ecx, 1);
    if ((saved & zmmState) == zmmState && f && dq && bw && vl && vbmi) features |= zelCpuAvx512;
    return features;
}

// Whether the string instructions move long rows by whole lines.
[[maybe_unused]] bool movesStringsFast() { return has(cpuid(7).ebx, 9); }

// The largest cache of data in bytes, 0 where the processor reports none.
[[maybe_unused]] int64_t largestCache() {
    constexpr uint32_t intelCaches = 4, amdCaches = 0x8000001d;  // one maker answers nothing to the other's
    return std::max(largestCache(intelCaches), largestCache(amdCaches));
}

}  // namespace
