// The rounding mode of vector conversions from float to integer, which belongs to the caller's thread. The control word is
// written only where it would change, and is restored whole, so that the flags of what ran in between go with it.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

constexpr uint32_t roundingField = 0x6000, roundNearest = 0;

// The control word as it was.
ZEL_INLINE uint32_t setRoundNearestState(uint32_t wanted = roundNearest) {
    const uint32_t old = _mm_getcsr();
    if ((old & roundingField) != wanted) _mm_setcsr((old & ~roundingField) | wanted);
    return old;
}

ZEL_INLINE void restoreRoundState(uint32_t old) {
    if ((old & roundingField) != roundNearest) _mm_setcsr(old);
}

}  // namespace zel::ZEL_LEVEL
