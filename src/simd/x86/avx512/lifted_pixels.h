// Lifted pixels, half a block in order from two vectors.
#pragma once

#include "simd/lifted_pixels.h"

namespace zel::ZEL_LEVEL {

// Interleaved pixels of three bytes, or of four of which the fourth is not written.
template <int channels>
struct LiftedPixels {
    static constexpr int bytes = channels;
    static_assert(channels == 3 || channels == 4);

    // A half has 32 pixels in order.
    ZEL_INLINE static Lifted load(const uint8_t* p) {
        const auto half = [&](int h) ZEL_INLINE_LAMBDA {
            const Register v0 = (Register)loadBytes(p + start(h)), v1 = (Register)loadBytes(p + start(h) + 64);
            const auto channel = [&](int c) ZEL_INLINE_LAMBDA {
                constexpr uint64_t highBytes = 0xaaaaaaaaaaaaaaaau;
                return (UWords)_mm512_maskz_permutex2var_epi8(highBytes, v0, _mm512_load_si512(places.channel[h][c]), v1);
            };
            return LiftedHalf{channel(0), channel(1), channel(2)};
        };
        return {half(0), half(1)};
    }

    ZEL_INLINE static void store(Destination p, const WordPixel& first, const WordPixel& second) {
        const Register ab[2] = {(Register)packBytes(first.a, first.b), (Register)packBytes(second.a, second.b)};
        const Register c = (Register)packBytes(first.c, second.c);
        unrolled<channels>([&](auto v) ZEL_INLINE_LAMBDA {
            constexpr int h = halfOf(v);
            const Register pattern = _mm512_load_si512(places.results[v]);
            if constexpr (channels == 4) {
                _mm512_mask_storeu_epi8(p + 64 * v, 0x7777777777777777u, _mm512_permutex2var_epi8(ab[h], pattern, c));
            } else if constexpr (v == 1) {
                const Register sorted = _mm512_permutex2var_epi8(ab[0], pattern, ab[1]);
                storeVector(p + 64,
                            (Bytes)_mm512_mask_permutexvar_epi8(sorted, places.thirds, _mm512_load_si512(places.third), c));
            } else {
                storeVector(p + 64 * v, (Bytes)_mm512_permutex2var_epi8(ab[h], pattern, c));
            }
        });
    }

  private:
    // Of the two vectors that a half is loaded from.
    static constexpr int start(int half) { return half * (channels == 4 ? 128 : 64); }
    static constexpr int halfOf(int vector) { return vector * 64 / channels / 32; }

    // Results are packed to a and b of each half, by lanes eight of the one and eight of the other, and c of both halves.
    struct Places {
        alignas(64) uint8_t channel[2][3][64]{}, results[channels][64]{}, third[64]{};
        uint64_t thirds = 0;  // the bytes of the middle one of three vectors that are of c
    };
    static constexpr Places places = [] {
        Places p{};
        for (int h = 0; h < 2; ++h)
            for (int c = 0; c < 3; ++c)
                for (int i = 0; i < 64; ++i) p.channel[h][c][i] = uint8_t((32 * h + i / 2) * channels + c - start(h));
        for (int i = 0; i < 64 * channels; ++i) {
            const int pixel = i / channels, c = i % channels, half = pixel / 32, vector = i / 64;
            const int place = pixel % 32 / 8 * 16 + pixel % 8, ofC = place + half * 8;
            const bool joinsHalves = channels == 3 && vector == 1;
            if (joinsHalves && c == 2) {
                p.thirds |= uint64_t{1} << i % 64;
                p.third[i % 64] = uint8_t(ofC);
            }
            p.results[vector][i % 64] = uint8_t(c == 2 ? 64 + ofC : c == 3 ? 0 : (joinsHalves ? half * 64 : 0) + c * 8 + place);
        }
        return p;
    }();
};

}  // namespace zel::ZEL_LEVEL
