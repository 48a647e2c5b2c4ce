// Floats and doubles, and the thread's rounding mode.
#pragma once

#include "simd/neon/memory_words.h"
#include "simd/words/floats.h"
#include "simd/words/rounding.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Floats splatFloat(float x) { return (Floats)vdupq_n_f32(x); }
ZEL_INLINE Doubles splatDouble(double x) { return (Doubles)vdupq_n_f64(x); }

ZEL_INLINE Floats byMode(Floats v) { return computed(v); }
ZEL_INLINE Floats toFloats(Dwords v) { return (Floats)vcvtq_f32_s32(arm::s32(v)); }

namespace arm {
// Conversions saturate and give 0 for NaN, so what is not below the end of the dwords is left to be replaced.
constexpr double dwordEnd = 2147483648.0;
ZEL_INLINE Dwords inReach(Floats v, int32x4_t converted) {
    return (Dwords)vbslq_s32(vcltq_f32(f32(v), vdupq_n_f32(float(dwordEnd))), converted, vdupq_n_s32(INT32_MIN));
}
}  // namespace arm

ZEL_INLINE Dwords rounded(Floats v) { return arm::inReach(v, vcvtq_s32_f32(vrndiq_f32(arm::f32(v)))); }
ZEL_INLINE Dwords truncated(Floats v) { return arm::inReach(v, vcvtq_s32_f32(arm::f32(v))); }
ZEL_INLINE int32_t truncated(double x) {
    return x < arm::dwordEnd && x > -arm::dwordEnd - 1 ? static_cast<int32_t>(x) : INT32_MIN;
}
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    const auto qwords = [](Doubles v) ZEL_INLINE_LAMBDA {
        const uint64x2_t isBelow = vcltq_f64(arm::f64(v), vdupq_n_f64(arm::dwordEnd));
        return vbslq_s64(isBelow, vcvtq_s64_f64(arm::f64(v)), vdupq_n_s64(INT32_MIN));
    };
    return (Dwords)vqmovn_high_s64(vqmovn_s64(qwords(low)), qwords(high));
}
ZEL_INLINE Floats wholePart(Floats v) { return (Floats)vrndq_f32(arm::f32(v)); }

// The processor's own minima and maxima keep NaN and tell the zeros apart. Clang 14 takes them where it knows a limit of 0, so it
// may not see through the comparison.
ZEL_INLINE Floats atMost(Floats v, Floats limit) {
    const uint32x4_t isBelow = computed(vcltq_f32(arm::f32(v), arm::f32(limit)));
    return (Floats)vbslq_f32(isBelow, arm::f32(v), arm::f32(limit));
}
ZEL_INLINE Floats atLeast(Floats v, Floats limit) {
    const uint32x4_t isAbove = computed(vcgtq_f32(arm::f32(v), arm::f32(limit)));
    return (Floats)vbslq_f32(isAbove, arm::f32(v), arm::f32(limit));
}

ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c) { return vfmaq_f32(c, a, b); }
ZEL_INLINE Floats approximateReciprocal(Floats v) { return 1.0f / v; }

template <int place>
ZEL_INLINE Floats everyOf(Floats v) {
    return (Floats)vdupq_laneq_f32(arm::f32(v), place);
}

template <int half>
ZEL_INLINE Doubles widened(Floats v) {
    return (Doubles)(half ? vcvt_high_f64_f32(arm::f32(v)) : vcvt_f64_f32(vget_low_f32(arm::f32(v))));
}
template <int half>
ZEL_INLINE Doubles widened(Dwords v) {
    return (Doubles)vcvtq_f64_s64(half ? vmovl_high_s32(arm::s32(v)) : vmovl_s32(vget_low_s32(arm::s32(v))));
}
ZEL_INLINE Floats narrowed(Doubles low, Doubles high) {
    return (Floats)vcvt_high_f32_f64(vcvt_f32_f64(arm::f64(low)), arm::f64(high));
}

namespace arm {
// Bits 22 and 23 of the control word are the mode, 0 to nearest.
constexpr uint32_t roundingField = 3 << 22;
ZEL_INLINE uint32_t control() {
    uint64_t word;
    asm volatile("mrs %0, fpcr" : "=r"(word) : : "memory");
    return uint32_t(word);
}
ZEL_INLINE void setControl(uint32_t word) { asm volatile("msr fpcr, %0" : : "r"(uint64_t{word}) : "memory"); }
}  // namespace arm

ZEL_INLINE bool roundsToNearest() { return (arm::control() & arm::roundingField) == 0; }
ZEL_INLINE uint32_t setRoundNearestState() {
    const uint32_t old = arm::control();
    if ((old & arm::roundingField) != 0) arm::setControl(old & ~arm::roundingField);
    return old;
}
ZEL_INLINE void restoreRoundState(uint32_t old) {
    if ((old & arm::roundingField) != 0) arm::setControl(old);
}

}  // namespace zel::ZEL_LEVEL
