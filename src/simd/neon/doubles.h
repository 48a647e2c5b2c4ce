#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

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

ZEL_INLINE int32_t truncated(double x) {
    constexpr double end = 2147483648.0;
    return x < end && x > -end - 1 ? static_cast<int32_t>(x) : INT32_MIN;
}
ZEL_INLINE Dwords truncated(Floats v) { return arm::inReach(v, vcvtq_s32_f32(arm::f32(v))); }
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    const float64x2_t end = vdupq_n_f64(2147483648.0);
    const auto qwords = [&](Doubles v) ZEL_INLINE_LAMBDA {
        const uint64x2_t isBelow = vcltq_f64(arm::f64(v), end);
        return vbslq_s64(isBelow, vcvtq_s64_f64(arm::f64(v)), vdupq_n_s64(INT32_MIN));
    };
    return (Dwords)vqmovn_high_s64(vqmovn_s64(qwords(low)), qwords(high));
}

ZEL_INLINE Floats withoutCube(Floats v, Floats root) {
    const auto half = [](Doubles x, Doubles r) { return x - (r * r) * r; };
    return narrowed(half(widened<0>(v), widened<0>(root)), half(widened<1>(v), widened<1>(root)));
}

ZEL_INLINE unsigned bitsOf(Dwords comparison) { return signBits(comparison); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return signBits((Dwords)((Dwords)a != (Dwords)b)); }

}  // namespace zel::ZEL_LEVEL
