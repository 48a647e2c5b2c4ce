// Tables of bytes in four registers, by permutes over two of them.
#pragma once

#include "simd/byte_table.h"

namespace zel::ZEL_LEVEL {

// Best with several vectors at a time.
template <const ByteTable& table>
class ByteLookup {
  public:
    ZEL_INLINE ByteLookup() {
        for (int i = 0; i < 4; ++i) quarters_[i] = (Register)loadBytes(table.of + i * vectorBytes);
    }

    template <int count>
    ZEL_INLINE void replace(Bytes (&samples)[count]) const {
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA {
            const Register places = (Register)samples[i], low = _mm512_permutex2var_epi8(quarters_[0], places, quarters_[1]),
                           high = _mm512_permutex2var_epi8(quarters_[2], places, quarters_[3]);
            samples[i] = (Bytes)_mm512_mask_blend_epi8(_mm512_movepi8_mask(places), low, high);
        });
    }

  private:
    Register quarters_[4];
};

class MadeByteTable {
  public:
    ZEL_INLINE explicit MadeByteTable(const uint8_t (&table)[256]) {
        for (int i = 0; i < 256 / vectorBytes; ++i) parts_[i] = loadBytes(table + i * vectorBytes);
    }

    ZEL_INLINE Bytes operator[](Bytes places) const {
        const auto half = [&](int i) ZEL_INLINE_LAMBDA {
            return _mm512_permutex2var_epi8((Register)parts_[i], (Register)places, (Register)parts_[i + 1]);
        };
        return (Bytes)_mm512_mask_blend_epi8(_mm512_movepi8_mask((Register)places), half(0), half(2));
    }

  private:
    Bytes parts_[256 / vectorBytes];
};

}  // namespace zel::ZEL_LEVEL
