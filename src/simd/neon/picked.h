// Bytes picked by two shifts: out of the word to one side and back.
#pragma once

#include "simd/picked.h"

namespace zel::ZEL_LEVEL {

template <int bits>
class Picked {
  public:
    ZEL_INLINE explicit Picked(bool even) : out_(splatWord(even ? 8 : -8)), back_(splatWord(even ? bits - 8 : bits)) {}

    ZEL_INLINE Words of(Bytes pairs) const {
        return (Words)vshlq_u16(vshlq_u16(arm::u16(pairs), arm::s16(out_)), arm::s16(back_));
    }
    ZEL_INLINE Words centred(Bytes pairs) const {
        return (Words)vshlq_s16(vshlq_s16(arm::s16(pairs ^ splatByte(0x80)), arm::s16(out_)), arm::s16(back_));
    }

  private:
    Words out_, back_;
};

}  // namespace zel::ZEL_LEVEL
