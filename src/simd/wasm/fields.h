// Fields of 16-bit words by shifts of all words alike: others are done word by word here.
#pragma once

#include "simd/fields.h"
#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

namespace fields565 {
constexpr int blockWords = vectorBytes;
}

ZEL_INLINE void expand565(Destination to, const uint8_t* from) {
    const UWords first = (UWords)loadBytes(from), second = (UWords)loadBytes(from + vectorBytes);
    const auto field = [](UWords low, UWords high, int bits) {
        const UWords ofByte = (UWords)splatWord(bits);
        return packBytes((Words)(low & ofByte), (Words)(high & ofByte));
    };
    Interleaved3::store<Order::natural>(
        to, {field(first << 3, second << 3, 0xf8), field(first >> 3, second >> 3, 0xfc), field(first >> 8, second >> 8, 0xf8)});
}

}  // namespace zel::ZEL_LEVEL
