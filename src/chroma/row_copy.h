// Rows and planes that move unchanged.
#pragma once

#include "frame/conversion.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// At least a vector. Stores are brought to a vector's boundary, and the last one overlaps the one before it.
ZEL_INLINE void copyRow(uint8_t* to, const uint8_t* from, size_t bytes) {
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
    if (streamsCollide(to, from)) return copyRow(to, from, bytes);
    const Bytes last = loadBytes(from + bytes - vectorBytes);
    storeVector(to, loadBytes(from));
    for (size_t i = vectorBytes - reinterpret_cast<uintptr_t>(to) % vectorBytes; i + vectorBytes <= bytes; i += vectorBytes)
        streamVector(to + i, loadBytes(from + i));
    storeVector(to + bytes - vectorBytes, last);
}

// One row to one row or to several.
template <int rows, Stores stores = Stores::cached>
struct CopyKernel {
    struct Constants {};
    static constexpr int sites = vectorBytes;  // of a byte each

    ZEL_INLINE static void blocks(const Constants&, const Row& row, size_t count) {
        for (int r = 0; r < rows; ++r) {
            if constexpr (stores == Stores::bypassing)
                streamRow(row.out[r], row.in[0], count * vectorBytes);
            else
                copyRow(row.out[r], row.in[0], count * vectorBytes);
        }
    }
};

// Luma to luma, of which large images may bypass the cache.
inline constexpr CopyKernel<1>::Constants copyConstants{};
inline constexpr CopyKernel<2>::Constants copyTwiceConstants{};
inline constexpr CopyKernel<1, Stores::bypassing>::Constants streamConstants{};
inline constexpr Kernel copyOnce = kernel<CopyKernel<1>>(copyConstants), copyTwice = kernel<CopyKernel<2>>(copyTwiceConstants);
inline constexpr Conversion copyLuma{.site = {1, 1},
                                     .from = {1, {{0, 1}}},
                                     .to = {1, {{0, 1}}},
                                     .block = copyOnce,
                                     .bypassing = kernel<CopyKernel<1, Stores::bypassing>>(streamConstants)};

}  // namespace zel::ZEL_LEVEL
