#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

using Bits = uint16_t;

ZEL_INLINE Bits negativeOnes(Bytes v) { return static_cast<Bits>(signBits(v)); }
ZEL_INLINE Bits zeros(Bytes v) { return negativeOnes((Bytes)(v == 0)); }

ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b) {
    const uint8x16_t halves = vcombine_u8(vdup_n_u8(uint8_t(bits)), vdup_n_u8(uint8_t(bits >> 8)));
    const uint8x16_t isSet = vtstq_u8(halves, (uint8x16_t)vdupq_n_u64(0x8040201008040201));
    return (Bytes)vbslq_u8(isSet, arm::u8(a), arm::u8(b));
}
ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b) {
    const UWords bit = {1, 2, 4, 8, 16, 32, 64, 128};
    return (UWords)vbslq_u16(vtstq_u16(vdupq_n_u16(bits), arm::u16(bit)), arm::u16(a), arm::u16(b));
}

}  // namespace zel::ZEL_LEVEL
