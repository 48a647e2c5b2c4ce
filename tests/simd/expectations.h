// What processors do in ways of their own, and what the library therefore may rely on there.
#pragma once

#include <cstdint>
#include <limits>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

// A number that no dword can hold, as a dword: callers take the lowest one for too low, so they bound it from above before.
inline int32_t dwordBeyond() { return std::numeric_limits<int32_t>::min(); }

inline int32_t dwordOf(double whole) { return whole >= -0x1p31 && whole < 0x1p31 ? int32_t(whole) : dwordBeyond(); }

// The rounded high product of the two lowest words, which no word can hold. Nobody asks for it.
inline int16_t roundedProductOfLowest() {
#if defined(__aarch64__) || defined(__wasm__)
    return std::numeric_limits<int16_t>::max();
#else
    return std::numeric_limits<int16_t>::min();
#endif
}

}  // namespace zel::ZEL_LEVEL
