// Fields of 16-bit words by shifts of each byte by itself.
#pragma once

#include "simd/fields.h"

namespace zel::ZEL_LEVEL {

namespace fields565 {

constexpr int blockWords = vectorBytes;  // of a block, which fill three vectors

// A vector of the results is made of bytes or words that are brought to the places of its bytes, and then moved there bit by bit.
struct Patterns {
    alignas(64) uint16_t words[3][32];           // for each 8 bytes, the four words among whose fields they are
    alignas(64) uint8_t lowest[3][64];           // of the bits of those words that go to a byte
    alignas(64) uint8_t fields[3][vectorBytes];  // the bits of a byte that its field has
};

inline constexpr Patterns patterns = [] {
    Patterns p{};
    for (int v = 0; v < 3; ++v)
        for (int i = 0; i < vectorBytes; ++i) {
            const int at = v * vectorBytes + i, word = at / 3, field = at % 3;
            p.fields[v][i] = field == 1 ? 0xfc : 0xf8;
            const int first = at / 8 * 8 / 3, loaded = 16 * v;
            p.words[v][i / 2] = uint16_t((first + i / 2 % 4 - loaded) % 32);
            constexpr int fieldStart[3] = {-3, 3, 8};
            p.lowest[v][i] = uint8_t((16 * (word - first) + fieldStart[field] + 64) % 64);
        }
    return p;
}();

}  // namespace fields565

// As many consecutive words as a vector has bytes, to three vectors of consecutive bytes.
ZEL_INLINE void expand565(Destination to, const uint8_t* from) {
    using fields565::patterns;
    unrolled<3>([&](auto v) ZEL_INLINE_LAMBDA {
        const Bytes fields = loadBytes(patterns.fields[v]);
        const Register words = _mm512_permutexvar_epi16(_mm512_load_si512(patterns.words[v]), (Register)loadBytes(from + 32 * v));
        const Bytes bytes = (Bytes)_mm512_multishift_epi64_epi8(_mm512_load_si512(patterns.lowest[v]), words) & fields;
        storeVector(to + v * vectorBytes, bytes);
    });
}

}  // namespace zel::ZEL_LEVEL
