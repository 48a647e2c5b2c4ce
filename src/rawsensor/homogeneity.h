// The arithmetic of homogeneity-directed interpolation at one depth. It is done in elements of twice the depth's width, for the
// columns of either parity apart, so that all elements of a vector have samples of one kind.
#pragma once

#include "rawsensor/mosaic.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

template <class V>
struct LumaChroma {
    V y, u, v;
};

struct Homogeneity8 : Samples8 {
    using Wide = Words;
    using WideElement = int16_t;
    using Squares = UWords;
    using SquareElement = uint16_t;
    static constexpr int highest = 255;

    ZEL_INLINE static Wide even(V v) { return evenBytes(v); }
    ZEL_INLINE static Wide odd(V v) { return oddBytes(v); }
    // Of the low halves of the elements.
    ZEL_INLINE static V joined(Wide even, Wide odd) { return (V)((even & splatWord(0x00ff)) | odd << 8); }

    // Y  = ( 66 R + 129 G +  25 B + 128) >> 8     at most 219
    // U  = (-38 R -  74 G + 112 B + 128) >> 8     the sum fits a word, as does that of V
    // V  = (112 R -  94 G -  18 B + 128) >> 8
    // by the differences to G. The sum of Y fits an unsigned word.
    ZEL_INLINE static LumaChroma<Wide> lumaChroma(Wide r, Wide g, Wide b) {
        const UWords green = (UWords)g, red = (UWords)r - green, blue = (UWords)b - green;
        return {(Wide)((green * 220 + red * 66 + blue * 25 + 128) >> 8), (Wide)(blue * 112 - red * 38 + 128) >> 8,
                (Wide)(red * 112 - blue * 18 + 128) >> 8};
    }
    // No more than 57248.
    ZEL_INLINE static Squares sumOfSquares(Wide u, Wide v) { return (Squares)u * (Squares)u + (Squares)v * (Squares)v; }

    // Sums over 3 x 3 cells of -4 .. 4.
    ZEL_INLINE static Bytes sumsAt(const uint8_t* above, const uint8_t* here, const uint8_t* below) {
        const auto three = [](const uint8_t* row) { return loadBytes(row - 1) + loadBytes(row) + loadBytes(row + 1); };
        return three(above) + three(here) + three(below);
    }
};

struct Homogeneity16 : Samples16 {
    using Wide = Dwords;
    using WideElement = int32_t;
    using Squares = Dwords;
    using SquareElement = int32_t;
    static constexpr int highest = 65535;

    ZEL_INLINE static Wide even(V v) { return (Wide)v & splatDword(0xffff); }
    ZEL_INLINE static Wide odd(V v) { return (Wide)((UDwords)v >> 16); }
    ZEL_INLINE static V joined(Wide even, Wide odd) { return (V)((even & splatDword(0xffff)) | odd << 16); }

    // By pairs of signed words, which lie 32768 lower than the samples: U and V have weights whose sum is 0, and Y gets 220 times
    // as much back.
    ZEL_INLINE static LumaChroma<Wide> lumaChroma(Wide r, Wide g, Wide b) {
        const Words redBlue = (Words)((r | b << 16) ^ splatDword(int32_t(0x80008000u)));
        const Words greenOne = (Words)((g ^ splatDword(0x8000)) | splatDword(1 << 16));
        const auto sum = [&](int red, int green, int blue) ZEL_INLINE_LAMBDA {
            return mulAddPairs(redBlue, splatWords(red, blue)) + mulAddPairs(greenOne, splatWords(green, 128));
        };
        return {(sum(66, 129, 25) + splatDword(220 * 32768)) >> 8, sum(-38, -74, 112) >> 8, sum(112, -94, -18) >> 8};
    }
    // Meant: wraps, and is a signed number then. Bounded, the choice of a direction could change.
    ZEL_INLINE static Squares sumOfSquares(Wide u, Wide v) {
        return (Squares)((UDwords)u * (UDwords)u + (UDwords)v * (UDwords)v);
    }

    ZEL_INLINE static Bytes sumsAt(const uint8_t* above, const uint8_t* here, const uint8_t* below) {
        const auto three = [](const uint8_t* row) {
            return (UWords)loadBytes(row - 2) + (UWords)loadBytes(row) + (UWords)loadBytes(row + 2);
        };
        const auto half = [&](int bytes) { return (Words)(three(above + bytes) + three(here + bytes) + three(below + bytes)); };
        return lowThenHighHalves(packSignedBytes(half(0), half(vectorBytes)));
    }
};

}  // namespace zel::ZEL_LEVEL
