// Destinations of one 16-bit word a pixel: the channels a, b, c, cut down to the bits of their fields, from the low bits upward.
// Bits above the fields are 0.
#pragma once

#include "packed16/words.h"

namespace zel::ZEL_LEVEL {

template <int outerBits, int middleBits>
struct Format {
    static constexpr int outer = outerBits, middle = middleBits;
    static constexpr int middleAt = outer, highAt = outer + middle, end = 2 * outer + middle;  // in the word
};

using Format444 = Format<4, 4>;
using Format555 = Format<5, 5>;
using Format565 = Format<5, 6>;

struct WordBytes {
    Bytes low, high;
};

// Fields truncate: they are the high bits of their bytes.
template <class F>
ZEL_INLINE WordBytes cutDown(Triple t) {
    // b lies across the word's two bytes, with `shared` bits in the high one.
    constexpr int shared = F::highAt - 8;
    constexpr uint8_t aMask = (1 << F::outer) - 1, bMask = (1 << shared) - 1, cMask = aMask << shared;
    const Bytes low = bits<F::outer - 8, aMask>(t.a) | bits<shared, uint8_t(~aMask)>(t.b), c = bits<F::end - 16, cMask>(t.c);
    return {low, shared == 0 ? c : c | bits<shared - 8, bMask>(t.b)};
}

template <Order order>
ZEL_INLINE void storeWords(const Row& row, int r, size_t block, WordBytes bytes) {
    storePixelWords<order>(row.out[r] + block * blockPixels * 2, joinBytes<order>(bytes.low, bytes.high));
}

template <class F>
struct ToWords {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        storeWords<order>(row, r, block, cutDown<F>(t));
    }
};

}  // namespace zel::ZEL_LEVEL
