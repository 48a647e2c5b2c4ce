// Bytes lifted to words where words are moved by loads that begin some bytes off.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

// Three interleaved bytes a pixel. The first half has the first eight pixels of every lane.
struct LiftedThree {
    static constexpr int bytes = 3;
    static constexpr bool packsInOrder = true;

    ZEL_INLINE static Lifted load(const uint8_t* p) {
        const Triple t = Interleaved3::load(p);
        const auto low = [](Bytes v) { return (UWords)interleaveLow(Bytes{}, v); };
        const auto high = [](Bytes v) { return (UWords)interleaveHigh(Bytes{}, v); };
        return {{low(t.a), low(t.b), low(t.c)}, {high(t.a), high(t.b), high(t.c)}};
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

    // Each dword is made up of a pixel of the half's first vector and the pixel at the same place of the second.
    template <Half which, int bits = 8>
    ZEL_INLINE static LiftedHalf half(const uint8_t* p) {
        // A vector that begins some bytes off has its words where they are wanted. None reaches beyond the half.
        const auto words = [&](int place) ZEL_INLINE_LAMBDA {
            const uint8_t* const from = p + int(which) * 2 * vectorBytes + place;
            return (UWords)blend<0xaa>((Words)loadBytes(from), (Words)loadBytes(from + vectorBytes - 2));
        };
        const UWords ab = words(0), bc = words(1);
        if constexpr (bits == 8) return {ab << 8, ab & 0xff00, bc & 0xff00};
        const auto times64 = [](UWords x, int place) { return (UWords)mulAddBytes((Bytes)x, (Bytes)splatWord(64 << 8 * place)); };
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
};

}  // namespace zel::ZEL_LEVEL
