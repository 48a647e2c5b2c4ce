// Bytes lifted to words by permutes that leave their low bytes 0.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

// Three interleaved bytes a pixel. The first half has the first eight pixels of every lane.
struct LiftedThree {
    static constexpr int bytes = 3;
    static constexpr bool packsInOrder = true;

    ZEL_INLINE static Lifted load(const uint8_t* p) {
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
        const auto v0 = (Register)x86::loadOnce(p), v1 = (Register)x86::loadOnce(p + 64), v2 = (Register)x86::loadOnce(p + 128);
        const Register channels[3] = {triples::blendThirds(v0, v2, v1), triples::blendThirds(v1, v0, v2),
                                      triples::blendThirds(v2, v1, v0)};
        const auto part = [&](int half, int c) ZEL_INLINE_LAMBDA {
            const Register pattern = _mm512_load_si512(places.of[half][c]);
            return (UWords)_mm512_maskz_permutexvar_epi8(highBytes, pattern, channels[c]);
        };
        return {{part(0, 0), part(0, 1), part(0, 2)}, {part(1, 0), part(1, 1), part(1, 2)}};
    }

    // Words below 256 of both halves as bytes in the order of the pixels.
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
};

// Four interleaved bytes a pixel, lifted without taking the channels apart first. Signed products want 64 times the samples,
// which are 2 to the power of 6.
struct LiftedFour {
    static constexpr int bytes = 4;
    static constexpr bool packsInOrder = false;
    // Whether sums of pairs over some rows come faster from here than from channels taken apart.
    static constexpr bool pairsPay(int rows) { return lanes == 2 || (lanes == 4 && rows == 2); }

    ZEL_INLINE static Lifted load(const uint8_t* p) { return {half<Half::first>(p), half<Half::second>(p)}; }

    // The even pixels of a half are its first words, the odd ones the others.
    template <Half which, int bits = 8>
    ZEL_INLINE static LiftedHalf half(const uint8_t* p) {
        constexpr uint64_t highBytes = 0xaaaaaaaaaaaaaaaau;
        const Register v0 = (Register)loadBytes(p + int(which) * 128), v1 = (Register)loadBytes(p + int(which) * 128 + 64);
        const auto channel = [&](int c) ZEL_INLINE_LAMBDA {
            return (UWords)_mm512_maskz_permutex2var_epi8(highBytes, v0, (Register)loadBytes(places.channel[c]), v1) >>
                   (8 - bits);
        };
        return {channel(0), channel(1), channel(2)};
    }
    // Words below 256 of both halves as bytes in the order of the pixels.
    ZEL_INLINE static Bytes inOrder(Words first, Words second) {
        return (Bytes)_mm512_permutex2var_epi8((Register)first, (Register)loadBytes(places.pixels), (Register)second);
    }
    // Of each two adjacent pixels of a block the rounded mean, in an order of sites that they leave when they are stored.
    ZEL_INLINE static UWords pairMeans(UWords first, UWords second) {
        return mean((UWords)_mm512_shuffle_i64x2((Register)first, (Register)second, 0x44),
                    (UWords)_mm512_shuffle_i64x2((Register)first, (Register)second, 0xee));
    }
    // Words below 256 of the sites as the bytes of two planes.
    ZEL_INLINE static void storeSites(uint8_t* p, uint8_t* q, Words first, Words second) {
        const Register sorted = _mm512_permutex2var_epi8((Register)first, (Register)loadBytes(places.sites), (Register)second);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_castsi512_si256(sorted));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(q), _mm512_extracti64x4_epi64(sorted, 1));
    }
    ZEL_INLINE static Bytes sitesInOrder(Words pairs) { return (Bytes)pairs; }

  private:
    struct Places {
        alignas(64) uint8_t channel[3][64];
        alignas(64) uint8_t pixels[64], sites[64];
    };
    static constexpr Places places = [] {
        Places t{};
        for (int i = 0; i < 64; ++i) {
            const int word = i / 2, pixel = word % 16 * 2 + word / 16;
            for (int c = 0; c < 3; ++c) t.channel[c][i] = uint8_t(4 * pixel + c);
            t.pixels[i] = uint8_t(i / 32 * 64 + i % 2 * 32 + i % 32 / 2 * 2);
            t.sites[i] = uint8_t(2 * i);
        }
        return t;
    }();
};

}  // namespace zel::ZEL_LEVEL
