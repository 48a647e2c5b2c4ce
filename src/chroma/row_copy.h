// Rows and planes that move unchanged.
#pragma once

#include "frame/bypass.h"
#include "frame/kernel.h"
#include "simd/part.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Stores are brought to a vector's boundary, and the last one overlaps the one before it, but where that bypassed the caches: to
// touch its line once more would read it from memory.
ZEL_INLINE void copyRow(Destination to, const uint8_t* from, size_t bytes) {
    if (bytes < vectorBytes) return copyShort(to, from, bytes);
    if (isMovedAtOnce(to, from, bytes)) return moveAtOnce(to, from, bytes);
    const Bytes last = loadBytes(from + bytes - vectorBytes);
    storeVector(to, loadBytes(from));
    size_t i = vectorBytes - reinterpret_cast<uintptr_t>(static_cast<uint8_t*>(to)) % vectorBytes;
#pragma GCC unroll 4
    for (; i + vectorBytes <= bytes; i += vectorBytes) storeVector(to + i, loadBytes(from + i));
    if (!to.bypassing())
        storeVector(static_cast<uint8_t*>(to) + bytes - vectorBytes, last);
    else if (i != bytes)
        copyShort(to + i, from + i, bytes - i);
}

// A plane to a plane, each row to one row or to two. A block is a byte.
template <int rows>
inline void copyRows(const void*, const Row& first, const Steps& steps, size_t groups, size_t count) {
    askOnce<true>(first, [&](Row row) ZEL_INLINE_LAMBDA {
        for (size_t left = groups; left != 0; --left) {
            for (int r = 0; r < rows; ++r) {
                copyRow(static_cast<const Row&>(row).out[r], row.in[0], count);
                row.out[r] = moved(row.out[r], steps.out[r]);
            }
            row.in[0] = moved(row.in[0], steps.in[0]);
        }
    });
}

template <int rows>
inline constexpr Kernel copy{.blocks = copyRows<rows>, .blocksAtOnce = int{lineBytes}, .keepsUp = true};

inline constexpr Conversion copyLuma{.site = {1, 1}, .from = layoutOf({{0, 1}}), .to = layoutOf({{0, 1}}), .block = copy<1>};

}  // namespace zel::ZEL_LEVEL
