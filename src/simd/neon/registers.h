// Vectors under the names that the compiler's own functions take them by.
#pragma once

#include "simd/words/types.h"

namespace zel::ZEL_LEVEL::arm {

template <class V>
ZEL_INLINE uint8x16_t u8(V v) {
    return (uint8x16_t)v;
}
template <class V>
ZEL_INLINE int8x16_t s8(V v) {
    return (int8x16_t)v;
}
template <class V>
ZEL_INLINE uint16x8_t u16(V v) {
    return (uint16x8_t)v;
}
template <class V>
ZEL_INLINE int16x8_t s16(V v) {
    return (int16x8_t)v;
}
template <class V>
ZEL_INLINE uint32x4_t u32(V v) {
    return (uint32x4_t)v;
}
template <class V>
ZEL_INLINE int32x4_t s32(V v) {
    return (int32x4_t)v;
}
template <class V>
ZEL_INLINE uint64x2_t u64(V v) {
    return (uint64x2_t)v;
}
template <class V>
ZEL_INLINE float32x4_t f32(V v) {
    return (float32x4_t)v;
}
template <class V>
ZEL_INLINE float64x2_t f64(V v) {
    return (float64x2_t)v;
}

}  // namespace zel::ZEL_LEVEL::arm
