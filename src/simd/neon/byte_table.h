// Tables of bytes in registers, 64 bytes at a time.
#pragma once

#include "simd/byte_table.h"

namespace zel::ZEL_LEVEL {

// Four tables of 64 bytes in sixteen registers: each finds what is in it and leaves the rest.
class MadeByteTable {
  public:
    ZEL_INLINE explicit MadeByteTable(const uint8_t (&table)[256]) {
        for (int i = 0; i < 4; ++i)
            quarters_[i] = {{vld1q_u8(table + 64 * i), vld1q_u8(table + 64 * i + 16), vld1q_u8(table + 64 * i + 32),
                             vld1q_u8(table + 64 * i + 48)}};
    }

    ZEL_INLINE Bytes operator[](Bytes places) const {
        uint8x16_t found = vqtbl4q_u8(quarters_[0], arm::u8(places));
        unrolled<3>([&](auto i) ZEL_INLINE_LAMBDA {
            found = vqtbx4q_u8(found, quarters_[i + 1], arm::u8(places - splatByte(64 * (i + 1))));
        });
        return (Bytes)found;
    }

  private:
    uint8x16x4_t quarters_[4];
};

template <const ByteTable& table>
class ByteLookup {
  public:
    template <int count>
    ZEL_INLINE void replace(Bytes (&samples)[count]) const {
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA { samples[i] = table_[samples[i]]; });
    }

  private:
    MadeByteTable table_{table.of};
};

}  // namespace zel::ZEL_LEVEL
