// Bytes picked by a multiply that takes them to the upper half of their word, or leaves them there.
#pragma once

#include "simd/picked.h"

namespace zel::ZEL_LEVEL {

template <int bits>
class Picked {
  public:
    ZEL_INLINE explicit Picked(bool even) : up_(splatWord(even ? 256 : 1)) {}

    ZEL_INLINE Words of(Bytes pairs) const { return (Words)((UWords)upper(pairs) >> (8 - bits)); }
    ZEL_INLINE Words centred(Bytes pairs) const { return upper(pairs ^ splatByte(0x80)) >> (8 - bits); }

  private:
    ZEL_INLINE Words upper(Bytes pairs) const { return (Words)pairs * up_ & splatWord(0xff00); }

    Words up_;
};

}  // namespace zel::ZEL_LEVEL
