// Bytes as words, 256 times the samples, for products whose high halves are taken.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// The pixels of half a block, in an order of the layout's own, which the results leave when they become bytes.
struct LiftedHalf {
    UWords a, b, c;
};
enum class Half { first, second };
struct Lifted {
    LiftedHalf first, second;
};

// Three interleaved bytes a pixel. The first half has the first eight pixels of every lane.
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
        const Triple t = Interleaved3::load(p);
        const auto low = [](Bytes v) { return (UWords)interleaveLow(Bytes{}, v); };
        const auto high = [](Bytes v) { return (UWords)interleaveHigh(Bytes{}, v); };
        return {{low(t.a), low(t.b), low(t.c)}, {high(t.a), high(t.b), high(t.c)}};
#endif
    }

    // Words below 256 of both halves as bytes in the order of the pixels.
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
};

// Four interleaved bytes a pixel, lifted without taking the channels apart first. Signed products want 64 times the samples,
// which are 2 to the power of 6.
struct LiftedFour {
    static constexpr int bytes = 4;
    // Whether sums of pairs over some rows come faster from here than from channels taken apart.
    static constexpr bool pairsPay(int rows) { return lanes == 2 || (lanes == 4 && rows == 2); }

    ZEL_INLINE static Lifted load(const uint8_t* p) { return {half<Half::first>(p), half<Half::second>(p)}; }

#if ZEL_LANES == 4
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
#elif ZEL_LANES == 2
    // Each dword is made up of a pixel of the half's first vector and the pixel at the same place of the second.
    template <Half which, int bits = 8>
    ZEL_INLINE static LiftedHalf half(const uint8_t* p) {
        // A vector that begins some bytes off has its words where they are wanted. None reaches beyond the half.
        const auto words = [&](int place) ZEL_INLINE_LAMBDA {
            const uint8_t* const from = p + int(which) * 2 * vectorBytes + place;
            return (UWords)evenThenOdd((Words)loadBytes(from), (Words)loadBytes(from + vectorBytes - 2));
        };
        const UWords ab = words(0), bc = words(1);
        if constexpr (bits == 8) return {ab << 8, ab & 0xff00, bc & 0xff00};
        const auto times64 = [](UWords x, int place) { return (UWords)mulAddPairs((Bytes)x, (Bytes)splatWord(64 << 8 * place)); };
        return {times64(ab, 0), times64(ab, 1), times64(bc, 1)};
    }
    ZEL_INLINE static Bytes inOrder(Words first, Words second) {
        alignas(16) constexpr uint8_t order[16] = {0, 2, 4, 6, 1, 3, 5, 7, 8, 10, 12, 14, 9, 11, 13, 15};
        return inOrderOfQuarters(shuffle(packBytes(first, second), everyLane(order)));
    }
    ZEL_INLINE static UWords pairMeans(UWords first, UWords second) {
        return mean((UWords)evenDwords((Dwords)first, (Dwords)second), (UWords)oddDwords((Dwords)first, (Dwords)second));
    }
    ZEL_INLINE static void storeSites(uint8_t* p, uint8_t* q, Words first, Words second) {
        alignas(16) constexpr uint8_t order[16] = {0, 2, 1, 3, 4, 6, 5, 7, 8, 10, 9, 11, 12, 14, 13, 15};
        const __m256i sorted = (Register)shuffle(packBytes(first, second), everyLane(order));
        const __m128i low = _mm256_castsi256_si128(sorted), high = _mm256_extracti128_si256(sorted, 1);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm_unpacklo_epi16(low, high));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(q), _mm_unpackhi_epi16(low, high));
    }
    ZEL_INLINE static Bytes sitesInOrder(Words pairs) {
        alignas(16) constexpr uint8_t order[16] = {0, 1, 4, 5, 2, 3, 6, 7, 8, 9, 12, 13, 10, 11, 14, 15};
        return inOrderOfQuarters(shuffle((Bytes)pairs, everyLane(order)));
    }
#else
    // The pixels are in order. For sums of pairs, taking the channels apart is faster here.
    template <Half which>
    ZEL_INLINE static LiftedHalf half(const uint8_t* p) {
        alignas(16) constexpr uint8_t places[16] = {0, 1, 4, 5, 8, 9, 12, 13, 1, 2, 5, 6, 9, 10, 13, 14};
        p += int(which) * 2 * vectorBytes;
        const Bytes first = shuffle(loadBytes(p), everyLane(places)),
                    second = shuffle(loadBytes(p + vectorBytes), everyLane(places));
        const UWords ab = (UWords)interleaveLow64(first, second), bc = (UWords)interleaveHigh64(first, second);
        return {ab << 8, ab & 0xff00, bc & 0xff00};
    }
    ZEL_INLINE static Bytes inOrder(Words first, Words second) { return packBytes(first, second); }
#endif
};

}  // namespace zel::ZEL_LEVEL
