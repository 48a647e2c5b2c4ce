// Bytes as words, 256 times the samples, for products whose high halves are taken.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// Of each channel two vectors, whose results make up a block when they are packed.
struct Lifted {
    UWords first[3], second[3];
};

ZEL_INLINE Lifted lifted(Triple t) {
    const auto low = [](Bytes v) { return (UWords)interleaveLow(Bytes{}, v); };
    const auto high = [](Bytes v) { return (UWords)interleaveHigh(Bytes{}, v); };
    return {{low(t.a), low(t.b), low(t.c)}, {high(t.a), high(t.b), high(t.c)}};
}

// Three interleaved bytes a pixel.
struct LiftedThree {
    static constexpr int bytes = 3;
    ZEL_INLINE static Lifted load(const uint8_t* p) {
#if ZEL_LANES == 4
        struct Places {
            alignas(64) uint8_t of[2][3][64];
        };
        static constexpr Places places = [] {
            Places t{};
            for (int half = 0; half < 2; ++half)
                for (int c = 0; c < 3; ++c)
                    for (int i = 1; i < 64; i += 2) {
                        const int pixel = i / 16 * 16 + half * 8 + i % 16 / 2;
                        t.of[half][c][i] = uint8_t((3 * pixel + c) % 64);
                    }
            return t;
        }();
        constexpr uint64_t highBytes = 0xaaaaaaaaaaaaaaaau;
        const Register v0 = (Register)loadBytes(p), v1 = (Register)loadBytes(p + 64), v2 = (Register)loadBytes(p + 128);
        const Register channels[3] = {triples::blendThirds(v0, v2, v1), triples::blendThirds(v1, v0, v2),
                                      triples::blendThirds(v2, v1, v0)};
        const auto part = [&](int half, int c) ZEL_INLINE_LAMBDA {
            const Register pattern = _mm512_load_si512(places.of[half][c]);
            return (UWords)_mm512_maskz_permutexvar_epi8(highBytes, pattern, channels[c]);
        };
        return {{part(0, 0), part(0, 1), part(0, 2)}, {part(1, 0), part(1, 1), part(1, 2)}};
#else
        return lifted(Interleaved3::load(p));
#endif
    }
};

}  // namespace zel::ZEL_LEVEL
