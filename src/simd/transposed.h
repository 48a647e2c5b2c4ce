// Rows to columns, by fours.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// In each lane: dword i of v[k] becomes dword k of v[i].
ZEL_INLINE void transpose(Dwords (&v)[4]) {
    const auto low01 = (Bytes)interleaveLow(v[0], v[1]), high01 = (Bytes)interleaveHigh(v[0], v[1]);
    const auto low23 = (Bytes)interleaveLow(v[2], v[3]), high23 = (Bytes)interleaveHigh(v[2], v[3]);
    v[0] = (Dwords)interleaveLow64(low01, low23);
    v[1] = (Dwords)interleaveHigh64(low01, low23);
    v[2] = (Dwords)interleaveLow64(high01, high23);
    v[3] = (Dwords)interleaveHigh64(high01, high23);
}

}  // namespace zel::ZEL_LEVEL
