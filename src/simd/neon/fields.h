// Fields of 16-bit words by shifts that narrow.
#pragma once

#include "simd/fields.h"

namespace zel::ZEL_LEVEL {

namespace fields565 {
constexpr int blockWords = vectorBytes;
}

ZEL_INLINE void expand565(Destination to, const uint8_t* from) {
    const uint16x8_t first = arm::u16(loadBytes(from)), second = arm::u16(loadBytes(from + vectorBytes));
    const uint8x16_t low = vuzp1q_u8((uint8x16_t)first, (uint8x16_t)second),
                     high = vuzp2q_u8((uint8x16_t)first, (uint8x16_t)second);
    const uint8x16_t middle = vshrn_high_n_u16(vshrn_n_u16(first, 3), second, 3);
    vst3q_u8(to, (uint8x16x3_t{{vshlq_n_u8(low, 3), vandq_u8(middle, vdupq_n_u8(0xfc)), vandq_u8(high, vdupq_n_u8(0xf8))}}));
}

}  // namespace zel::ZEL_LEVEL
