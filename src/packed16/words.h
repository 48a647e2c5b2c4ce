// Pixels packed into 16-bit words, as sources of any rule for three bytes a pixel: a field of 5 or 6 bits becomes the high bits
// of its byte, and the low ones are 0. Channels are a, b, c from the lowest field upward.
#pragma once

#include "frame/layouts.h"

namespace zel::ZEL_LEVEL {

// The bits in `mask` of bytes that are shifted to the left, or by a negative number to the right.
template <int left, uint8_t mask>
ZEL_INLINE Bytes bits(Bytes x) {
    const UWords shifted = left < 0 ? (UWords)x >> -left : (UWords)x << left;
    return (Bytes)shifted & splatByte(mask);
}

struct Fields555 {
    ZEL_INLINE static Triple expand(Parted w) {
        return {bits<3, 0xf8>(w.even), bits<6, 0xc0>(w.odd) | bits<-2, 0x38>(w.even), bits<1, 0xf8>(w.odd)};
    }
};

struct Fields565 {
    ZEL_INLINE static Triple expand(Parted w) {
        return {bits<3, 0xf8>(w.even), bits<5, 0xe0>(w.odd) | bits<-3, 0x1c>(w.even), bits<0, 0xf8>(w.odd)};
    }
};

template <class Fields>
struct FromWords {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int r = 0) {
        return Fields::expand(loadParted(row.in[r] + block * blockPixels * 2));
    }
};

}  // namespace zel::ZEL_LEVEL
