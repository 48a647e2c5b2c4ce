#pragma once

#include <cstdint>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

constexpr uint32_t roundingField = 3 << 22, roundNearest = 0;

namespace arm {

ZEL_INLINE uint64_t control() {
    uint64_t word;
    asm volatile("mrs %0, fpcr" : "=r"(word));
    return word;
}
// Arithmetic that uses the mode may not be moved across, so memory stands for it.
ZEL_INLINE void setControl(uint64_t word) { asm volatile("msr fpcr, %0" : : "r"(word) : "memory"); }

}  // namespace arm

ZEL_INLINE uint32_t setRoundNearestState(uint32_t wanted = roundNearest) {
    const auto old = static_cast<uint32_t>(arm::control());
    if ((old & roundingField) != wanted) arm::setControl((old & ~roundingField) | wanted);
    return old;
}

ZEL_INLINE void restoreRoundState(uint32_t old) {
    if ((old & roundingField) != roundNearest) arm::setControl(old);
}

}  // namespace zel::ZEL_LEVEL
