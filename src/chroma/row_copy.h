// Rows and planes that move unchanged.
#pragma once

#include "frame/driver.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Stores are brought to a vector's boundary, and the last one overlaps the one before it.
ZEL_INLINE void copyRow(uint8_t* to, const uint8_t* from, size_t bytes) {
    if (bytes < vectorBytes) return copyShort(to, from, bytes);
    const Bytes last = loadBytes(from + bytes - vectorBytes);
    storeVector(to, loadBytes(from));
    for (size_t i = vectorBytes - reinterpret_cast<uintptr_t>(to) % vectorBytes; i + vectorBytes <= bytes; i += vectorBytes)
        storeVector(to + i, loadBytes(from + i));
    storeVector(to + bytes - vectorBytes, last);
}

// Loads and stores at these distances, a little less than 64 KiB apart, would meet in the same sets of the cache.
ZEL_INLINE bool streamsCollide(const uint8_t* to, const uint8_t* from) {
    const auto distance = static_cast<uint16_t>(reinterpret_cast<uintptr_t>(to) - reinterpret_cast<uintptr_t>(from));
    return distance >= 65217 && distance <= 65519;
}

// The same with stores that bypass the cache.
ZEL_INLINE void streamRow(uint8_t* to, const uint8_t* from, size_t bytes) {
    if (bytes < vectorBytes || streamsCollide(to, from)) return copyRow(to, from, bytes);
    const Bytes last = loadBytes(from + bytes - vectorBytes);
    storeVector(to, loadBytes(from));
    for (size_t i = vectorBytes - reinterpret_cast<uintptr_t>(to) % vectorBytes; i + vectorBytes <= bytes; i += vectorBytes)
        streamVector(to + i, loadBytes(from + i));
    storeVector(to + bytes - vectorBytes, last);
}

// A plane to a plane, each row to one row or to two. A block is a byte.
template <int rows, Stores stores = Stores::cached>
inline void copyRows(const void*, const Row& first, const Steps& steps, size_t groups, size_t count) {
    const uint8_t* from = first.in[0];
    uint8_t* to[rows];
    for (int r = 0; r < rows; ++r) to[r] = first.out[r];
    for (; groups != 0; --groups) {
        for (int r = 0; r < rows; ++r) {
            if constexpr (stores == Stores::bypassing)
                streamRow(to[r], from, count);
            else
                copyRow(to[r], from, count);
            to[r] = moved(to[r], steps.out[r]);
        }
        from = moved(from, steps.in[0]);
    }
}

template <int rows, Stores stores = Stores::cached>
inline constexpr Kernel copy{copyRows<rows, stores>};

// Large images of luma may bypass the cache.
inline constexpr Conversion copyLuma{
    .site = {1, 1}, .from = {1, {{0, 1}}}, .to = {1, {{0, 1}}}, .block = copy<1>, .bypassing = copy<1, Stores::bypassing>};

}  // namespace zel::ZEL_LEVEL
