// The fields of 16-bit words, 5, 6 and 5 bits from the lowest upward, as the high bits of three bytes a word.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// As many consecutive words as a vector has bytes, to three vectors of consecutive bytes.
ZEL_INLINE void expand565(Destination to, const uint8_t* from);

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_FIELDS
#include ZEL_OWN_FIELDS
#else

namespace zel::ZEL_LEVEL {

namespace fields565 {

constexpr int blockWords = vectorBytes;  // of a block, which fill three vectors

// A vector of the results is made of bytes or words that are brought to the places of its bytes, and then moved there bit by bit.
struct Patterns {
    alignas(32) uint8_t forEven[3][vectorBytes], forOdd[3][vectorBytes];
    alignas(32) uint16_t toEven[3][vectorBytes / 2], toOdd[3][vectorBytes / 2];
    int start[3][lanes];                         // of the 8 words from which a lane is made
    alignas(64) uint8_t fields[3][vectorBytes];  // the bits of a byte that its field has
};

inline constexpr Patterns patterns = [] {
    Patterns p{};
    for (int v = 0; v < 3; ++v)
        for (int i = 0; i < vectorBytes; ++i) {
            const int at = v * vectorBytes + i, word = at / 3, field = at % 3;
            p.fields[v][i] = field == 1 ? 0xfc : 0xf8;
            const int lane = i / 16, first = (at - i % 16) / 3, start = first > blockWords - 8 ? blockWords - 8 : first;
            p.start[v][lane] = start;
            // The high byte of the product with a word that begins with the field's byte, or the low one.
            const uint8_t low = uint8_t(2 * (word - start)), high = uint8_t(low + 1), none = 0x80;
            constexpr uint16_t highByte[3] = {8 << 8, 1 << 13, 1 << 8}, lowByte[3] = {8, 32, 1};
            uint8_t* pair = (i % 2 == 0 ? p.forEven : p.forOdd)[v] + (i & ~1);
            pair[0] = field == 1 ? low : none;
            pair[1] = field == 0 ? low : high;
            (i % 2 == 0 ? p.toEven : p.toOdd)[v][i / 2] = i % 2 == 0 ? highByte[field] : lowByte[field];
        }
    return p;
}();

}  // namespace fields565

// As many consecutive words as a vector has bytes, to three vectors of consecutive bytes.
ZEL_INLINE void expand565(Destination to, const uint8_t* from) {
    using fields565::patterns;
    unrolled<3>([&](auto v) ZEL_INLINE_LAMBDA {
        const Bytes fields = loadBytes(patterns.fields[v]);
        const Bytes words = loadLanes(from + 2 * patterns.start[v][0], 2 * (patterns.start[v][lanes - 1] - patterns.start[v][0]));
        const auto moved = [&](const uint8_t* bytes) { return (UWords)shuffle(words, loadBytes(bytes)); };
        const auto by = [](const uint16_t* factors) { return (UWords)loadBytes(factors); };
        const UWords even = mulHigh(moved(patterns.forEven[v]), by(patterns.toEven[v]));
        const UWords odd = moved(patterns.forOdd[v]) * by(patterns.toOdd[v]);
        const UWords evenBytes = (UWords)fields & 0x00ff, oddBytes = (UWords)fields & 0xff00;
        const Bytes bytes = (Bytes)((even & evenBytes) | (odd & oddBytes));
        storeVector(to + v * vectorBytes, bytes);
    });
}

}  // namespace zel::ZEL_LEVEL

#endif
