// Of bytes in pairs, such as interleaved chroma, those at even or at odd places, as words, lifted: which of them is known at the
// call.
#pragma once

#include "simd/vector.h"

// Picked<bits>(even)     2^bits times
//     of(pairs)          the bytes, at most 6 bits
//     centred(pairs)     the bytes less 128, at most 7

#ifdef ZEL_OWN_PICKED
#include ZEL_OWN_PICKED
#else

namespace zel::ZEL_LEVEL {

template <int bits>
class Picked {
  public:
    ZEL_INLINE explicit Picked(bool even) : weights_((Bytes)splatWord(1 << (even ? bits : bits + 8))) {}

    ZEL_INLINE Words of(Bytes pairs) const { return mulAddBytes(pairs, weights_); }
    // The multiply-add takes unsigned and signed bytes: x - 128 is x with its top bit inverted.
    ZEL_INLINE Words centred(Bytes pairs) const { return mulAddBytes(weights_, pairs ^ splatByte(0x80)); }

  private:
    Bytes weights_;
};

}  // namespace zel::ZEL_LEVEL

#endif
