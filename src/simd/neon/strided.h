#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

template <int size, int channels>
ZEL_INLINE Dwords loadStrided(const uint8_t* p) {
    const auto sample = [&](int i) ZEL_INLINE_LAMBDA {
        int32_t dword = 0;
        __builtin_memcpy(&dword, p + i * channels * size, size);
        return dword;
    };
    return Dwords{sample(0), sample(1), sample(2), sample(3)};
}

template <int size, int channels>
ZEL_INLINE void storeStrided(uint8_t* p, Dwords v) {
    unrolled<4>([&](int i) ZEL_INLINE_LAMBDA {
        const int32_t dword = v[i];
        __builtin_memcpy(p + i * channels * size, &dword, size);
    });
}

}  // namespace zel::ZEL_LEVEL
