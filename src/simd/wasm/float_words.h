// Floats and doubles. There is one rounding mode, to the nearest.
#pragma once

#include "simd/words/floats.h"
#include "simd/words/rounding.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Floats splatFloat(float x) { return (Floats)wasm_f32x4_splat(x); }
ZEL_INLINE Doubles splatDouble(double x) { return (Doubles)wasm_f64x2_splat(x); }

ZEL_INLINE Floats byMode(Floats v) { return v; }
ZEL_INLINE Floats toFloats(Dwords v) { return (Floats)wasm_f32x4_convert_i32x4((v128_t)v); }

namespace wasm {
// Conversions saturate and give 0 for NaN, so what is not below the end of the dwords is left to be replaced.
constexpr double dwordEnd = 2147483648.0;
ZEL_INLINE Dwords inReach(v128_t isBelow, v128_t converted) {
    return (Dwords)wasm_v128_bitselect(converted, wasm_i32x4_const_splat(INT32_MIN), isBelow);
}
ZEL_INLINE Dwords toDwords(v128_t v) {
    return inReach(wasm_f32x4_lt(v, wasm_f32x4_const_splat(float(dwordEnd))), wasm_i32x4_trunc_sat_f32x4(v));
}
}  // namespace wasm

ZEL_INLINE Dwords rounded(Floats v) { return wasm::toDwords(wasm_f32x4_nearest((v128_t)v)); }
ZEL_INLINE Dwords truncated(Floats v) { return wasm::toDwords((v128_t)v); }
ZEL_INLINE int32_t truncated(double x) {
    return x < wasm::dwordEnd && x > -wasm::dwordEnd - 1 ? static_cast<int32_t>(x) : INT32_MIN;
}
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    const v128_t l = (v128_t)low, h = (v128_t)high, end = wasm_f64x2_const_splat(wasm::dwordEnd);
    const v128_t isBelow = wasm_i32x4_shuffle(wasm_f64x2_lt(l, end), wasm_f64x2_lt(h, end), 0, 2, 4, 6);
    return wasm::inReach(isBelow,
                         wasm_i64x2_shuffle(wasm_i32x4_trunc_sat_f64x2_zero(l), wasm_i32x4_trunc_sat_f64x2_zero(h), 0, 2));
}
ZEL_INLINE Floats wholePart(Floats v) { return (Floats)wasm_f32x4_trunc((v128_t)v); }

// The limit stands first, for the machine keeps its first operand unless the second one is beyond it.
ZEL_INLINE Floats atMost(Floats v, Floats limit) { return (Floats)wasm_f32x4_pmin((v128_t)limit, (v128_t)v); }
ZEL_INLINE Floats atLeast(Floats v, Floats limit) { return (Floats)wasm_f32x4_pmax((v128_t)limit, (v128_t)v); }

ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c) { return a * b + c; }
ZEL_INLINE Floats approximateReciprocal(Floats v) { return 1.0f / v; }

template <int place>
ZEL_INLINE Floats everyOf(Floats v) {
    return __builtin_shufflevector(v, v, place, place, place, place);
}

template <int half>
ZEL_INLINE Doubles widened(Floats v) {
    return (Doubles)wasm_f64x2_promote_low_f32x4((v128_t)__builtin_shufflevector(v, v, 2 * half, 2 * half + 1, 2, 3));
}
template <int half>
ZEL_INLINE Doubles widened(Dwords v) {
    return (Doubles)wasm_f64x2_convert_low_i32x4((v128_t)__builtin_shufflevector(v, v, 2 * half, 2 * half + 1, 2, 3));
}
ZEL_INLINE Floats narrowed(Doubles low, Doubles high) {
    return (Floats)wasm_i64x2_shuffle(wasm_f32x4_demote_f64x2_zero((v128_t)low), wasm_f32x4_demote_f64x2_zero((v128_t)high), 0,
                                      2);
}

ZEL_INLINE bool roundsToNearest() { return true; }
ZEL_INLINE uint32_t setRoundNearestState() { return 0; }
ZEL_INLINE void restoreRoundState(uint32_t) {}

}  // namespace zel::ZEL_LEVEL
