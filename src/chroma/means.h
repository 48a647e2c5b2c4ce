// Means of bytes, the rounded one beside the truncated one. Rows that take both take them by the column.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

enum class Mean { rounded, truncated };

template <Mean kind>
ZEL_INLINE Bytes meanOf(Bytes a, Bytes b) {
    if constexpr (kind == Mean::rounded)
        return mean(a, b);
    else
        return mean(a, b) - ((a ^ b) & splatByte(1));
}

}  // namespace zel::ZEL_LEVEL
