// Vectors of lanes of 16 bytes. Arithmetic, comparison, shifts by a constant and logic come from the compiler's vector types: a
// comparison gives -1 where it holds and 0 elsewhere, and each float operation is rounded by itself, in the order written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

constexpr int lanes = traits.lanes;
constexpr int laneBytes = 16;
constexpr int vectorBytes = lanes * laneBytes;

typedef uint8_t Bytes __attribute__((vector_size(vectorBytes)));
typedef int16_t Words __attribute__((vector_size(vectorBytes)));
typedef uint16_t UWords __attribute__((vector_size(vectorBytes)));
typedef int32_t Dwords __attribute__((vector_size(vectorBytes)));
typedef uint32_t UDwords __attribute__((vector_size(vectorBytes)));
typedef uint64_t UQwords __attribute__((vector_size(vectorBytes)));
typedef float Floats __attribute__((vector_size(vectorBytes)));
typedef double Doubles __attribute__((vector_size(vectorBytes)));

// One lane by itself, in memory.
typedef uint8_t Lane __attribute__((vector_size(laneBytes), may_alias));

// A bit for every byte of a vector, the lowest for the first.
using Bits = std::conditional_t<lanes == 4, uint64_t, std::conditional_t<lanes == 2, uint32_t, uint16_t>>;

// f(0), f(1) .. f(n - 1), written out: the numbers are constants, so that what they pick stays in registers.
template <int value>
struct Constant {
    constexpr operator int() const { return value; }
};
template <int n, int i = 0, class F>
ZEL_INLINE void unrolled(const F& f) {
    if constexpr (i < n) {
        f(Constant<i>{});
        unrolled<n, i + 1>(f);
    }
}

}  // namespace zel::ZEL_LEVEL
