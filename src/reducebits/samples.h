// Samples as the numbers that reduction works on, and back.
#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

constexpr int vectorFloats = vectorBytes / 4;

// The level q, and one step more where the threshold is below what is left over.
ZEL_INLINE Floats levelOrNext(Floats q, Floats step, Floats threshold, Floats leftOver) {
    if constexpr (traits.selectsAtOnce) return threshold < leftOver ? q + step : q;
    return q + (Floats)((Dwords)(threshold < leftOver) & (Dwords)step);
}

// A vector of floats from consecutive samples, or from samples in dwords, and one sample. `top` is white, and `unit` what brings
// it to 1.
struct From8u {
    static constexpr bool isSigned = false;
    static constexpr int bytes = 1;
    static constexpr float top = 255, unit = 0.003921569f;

    ZEL_INLINE static Floats load(const uint8_t* p) { return numbers((Dwords)loadBytesAsDwords(p)); }
    ZEL_INLINE static Floats numbers(Dwords samples) { return toFloats(samples); }
    ZEL_INLINE static float loadOne(const uint8_t* p) { return *p; }
};

// Signed words are taken from their least one on, so that black is 0.
template <bool signedWords>
struct From16 {
    static constexpr bool isSigned = signedWords;
    static constexpr int bytes = 2;
    static constexpr float top = 65535, unit = 1.5259022e-5f;

    ZEL_INLINE static Floats load(const uint8_t* p) { return numbers((Dwords)loadWordsAsDwords(p)); }
    ZEL_INLINE static Floats numbers(Dwords samples) { return toFloats(isSigned ? samples ^ splatDword(0x8000) : samples); }
    ZEL_INLINE static float loadOne(const uint8_t* p) {
        uint16_t word;
        __builtin_memcpy(&word, p, sizeof word);
        return float(isSigned ? word ^ 0x8000 : word);
    }
};
using From16u = From16<false>;
using From16s = From16<true>;

struct From32f {
    static constexpr bool isSigned = true;
    static constexpr int bytes = 4;
    static constexpr float top = 1, unit = 1;

    ZEL_INLINE static Floats load(const uint8_t* p) { return (Floats)loadBytes(p); }
    ZEL_INLINE static Floats numbers(Dwords samples) { return (Floats)samples; }
    ZEL_INLINE static float loadOne(const uint8_t* p) {
        float x;
        __builtin_memcpy(&x, p, sizeof x);
        return x;
    }
};

// A vector of samples from `parts` vectors of levels, which count from black at 0. Levels beyond the samples' range saturate.
struct To8u {
    using Sample = uint8_t;
    static constexpr int bytes = 1, parts = 4;
    static constexpr bool isSigned = false;
    static constexpr float white = 255;

    ZEL_INLINE static Bytes pack(const Dwords (&x)[parts]) {
        return inOrderOfQuarters(packBytes(packWords(x[0], x[1]), packWords(x[2], x[3])));
    }
    // Of words, which saturate.
    ZEL_INLINE static Bytes packHighBytes(const Dwords (&x)[parts]) {
        const auto high = [](Dwords a, Dwords b) { return (Words)((UWords)packUnsignedWords(a, b) >> 8); };
        return inOrderOfQuarters(packBytes(high(x[0], x[1]), high(x[2], x[3])));
    }
};

struct To16u {
    using Sample = uint16_t;
    static constexpr int bytes = 2, parts = 2;
    static constexpr bool isSigned = false;
    static constexpr float white = 65535;

    ZEL_INLINE static Bytes pack(const Dwords (&x)[parts]) { return lowThenHighHalves((Bytes)packUnsignedWords(x[0], x[1])); }
};

struct To16s {
    using Sample = int16_t;
    static constexpr int bytes = 2, parts = 2;
    static constexpr bool isSigned = true;
    static constexpr float white = 65535;

    ZEL_INLINE static Bytes pack(const Dwords (&x)[parts]) {
        return lowThenHighHalves((Bytes)(packUnsignedWords(x[0], x[1]) ^ splatWord(0x8000)));
    }
};

// The low 16 bits, so that a level above white comes out dark.
struct ToLow16 {
    using Sample = uint16_t;
    static constexpr int bytes = 2, parts = 2;
    static constexpr bool isSigned = false;
    static constexpr float white = 65535;

    ZEL_INLINE static Bytes pack(const Dwords (&x)[parts]) {
        const auto low = [](Dwords v) { return v << 16 >> 16; };
        return lowThenHighHalves((Bytes)packWords(low(x[0]), low(x[1])));
    }
};

}  // namespace zel::ZEL_LEVEL
