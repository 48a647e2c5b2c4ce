#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

typedef float Floats __attribute__((vector_size(vectorBytes)));
typedef double Doubles __attribute__((vector_size(vectorBytes)));

namespace arm {

ZEL_INLINE float32x4_t f32(auto v) { return (float32x4_t)v; }
ZEL_INLINE float64x2_t f64(auto v) { return (float64x2_t)v; }
ZEL_INLINE Floats select(uint32x4_t which, Floats a, Floats b) { return (Floats)vbslq_u32(which, u32(a), u32(b)); }

// Conversions saturate and make 0 of NaN, so only what is not below 2^31 is left to be replaced.
constexpr float dwordEnd = 2147483648.0f;
ZEL_INLINE Dwords inReach(Floats v, int32x4_t converted) {
    return (Dwords)vbslq_s32(vcltq_f32(f32(v), vdupq_n_f32(dwordEnd)), converted, vdupq_n_s32(INT32_MIN));
}

}  // namespace arm

ZEL_INLINE Floats splatFloat(float x) { return (Floats)vdupq_n_f32(x); }
ZEL_INLINE Doubles splatDouble(double x) { return (Doubles)vdupq_n_f64(x); }

ZEL_INLINE Floats toFloats(Dwords v) { return (Floats)vcvtq_f32_s32(arm::s32(v)); }
ZEL_INLINE Dwords rounded(Floats v) { return arm::inReach(v, vcvtq_s32_f32(vrndiq_f32(arm::f32(v)))); }
ZEL_INLINE Floats wholePart(Floats v) { return (Floats)vrndq_f32(arm::f32(v)); }

// The processor's own minima and maxima keep NaN and tell the zeros apart. Clang 14 takes them where it knows a limit of 0, so it
// may not see through the comparison.
ZEL_INLINE Floats atMost(Floats v, Floats limit) {
    return arm::select(computed(vcltq_f32(arm::f32(v), arm::f32(limit))), v, limit);
}
ZEL_INLINE Floats atLeast(Floats v, Floats limit) {
    return arm::select(computed(vcgtq_f32(arm::f32(v), arm::f32(limit))), v, limit);
}

ZEL_INLINE Floats approximateReciprocal(Floats v) { return 1.0f / v; }

ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) { return (Words)vqmovun_high_s32(vqmovun_s32(arm::s32(a)), arm::s32(b)); }
ZEL_INLINE Bytes evenDwords(Bytes a, Bytes b) { return (Bytes)vuzp1q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Bytes oddDwords(Bytes a, Bytes b) { return (Bytes)vuzp2q_u32(arm::u32(a), arm::u32(b)); }

template <int place>
ZEL_INLINE Floats everyOf(Floats v) {
    return (Floats)vdupq_laneq_f32(arm::f32(v), place);
}

}  // namespace zel::ZEL_LEVEL
