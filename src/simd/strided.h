// One channel of interleaved samples: a vector's worth of them to the low ends of dwords, and back. No other byte is written, and
// none behind the last sample is read.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

template <int size, int channels>
ZEL_INLINE Dwords loadStrided(const uint8_t* p);
template <int size, int channels>
ZEL_INLINE void storeStrided(uint8_t* p, Dwords v);

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_STRIDED
#include ZEL_OWN_STRIDED
#else

namespace zel::ZEL_LEVEL {

namespace strided {

constexpr int count = vectorBytes / 4;

}  // namespace strided

template <int size, int channels>
ZEL_INLINE Dwords loadStrided(const uint8_t* p) {
    using namespace strided;
    // Not by way of memory, which would wait for all of the stores.
    const auto sample = [&](int i) ZEL_INLINE_LAMBDA {
        int32_t dword = 0;
        __builtin_memcpy(&dword, p + i * channels * size, size);
        return dword;
    };
    Dwords v{};
    unrolled<count>([&](int i) ZEL_INLINE_LAMBDA { v[i] = sample(i); });
    return v;
}

template <int size, int channels>
ZEL_INLINE void storeStrided(uint8_t* p, Dwords v) {
    using namespace strided;
    unrolled<count>([&](int i) ZEL_INLINE_LAMBDA {
        const int32_t dword = v[i];
        __builtin_memcpy(p + i * channels * size, &dword, size);
    });
}

}  // namespace zel::ZEL_LEVEL

#endif
