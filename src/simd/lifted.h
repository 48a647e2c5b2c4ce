// Bytes as words, lifted for products whose high parts are taken.
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

// The bytes of a vector in two halves, in an order of the form's own, which they leave when they become bytes again.
struct LiftedBytes {
    UWords first, second;
};

// Every form has
//
//     Floors<bits>                   products that are floored, with weights below 2^bits, at most 16
//         lift(x)                    the bytes of a vector, lifted for them
//         product(lifted, weight)    floor(x weight / 256)
//     Rounds                         signed ones that are rounded
//         lift(x), weight(k)         both factors
//         product(lifted, weight)    floor((x k + 128) / 256)
//     liftedOrder                    the order in which a pack of both halves leaves them
//     sumsOfPairs(first, second)     words of both halves, of each two adjacent bytes, added up
//     joined<shift>(first, second)   words below 2^(8 + shift) of both halves of lifted bytes as bytes, without the last bits
//     LiftedThree                    three bytes a pixel
//         load(p)                    both halves of a block, lifted for Floors
//         inOrder(first, second)     words below 256 of both halves as bytes in the order of the pixels
//         packsInOrder               whether packs leave them so, too
//     LiftedFour                     four, lifted without taking the channels apart first
//         load(p), inOrder(first, second)
//         pairsPay(rows)             whether sums of pairs over some rows come faster from here than from channels taken apart;
//                                    then there are also
//         half<which, bits>(p)       one half, 2^bits times the samples; signed products want 6
//         pairMeans(first, second)   of each two adjacent pixels the rounded mean, in an order of sites that they leave by
//         storeSites(p, q, first, second), sitesInOrder(pairs)   as the bytes of two planes, or in order

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_LIFTED_BYTES
#include ZEL_OWN_LIFTED_BYTES
#else

namespace zel::ZEL_LEVEL {

// 256 times the samples. The first half has the bytes at even places.
template <int bits>
struct Floors {
    ZEL_INLINE static LiftedBytes lift(Bytes x) { return {(UWords)x << 8, (UWords)x & 0xff00}; }
    ZEL_INLINE static UWords product(UWords lifted, UWords weight) { return mulHighOfBytes(lifted, weight); }
};

// 64 times the samples, and twice the weight.
struct Rounds {
    ZEL_INLINE static LiftedBytes lift(Bytes x) { return {(UWords)evenTimes<6>(x), (UWords)oddTimes<6>(x)}; }
    ZEL_INLINE static Words weight(int k) { return splatWord(2 * k); }
    ZEL_INLINE static Words product(Words lifted, Words weight) { return mulRound(lifted, weight); }
};

constexpr Order liftedOrder = Order::split;
ZEL_INLINE UWords sumsOfPairs(UWords first, UWords second) { return first + second; }
template <int shift>
ZEL_INLINE Bytes joined(UWords first, UWords second) {
    return (Bytes)(first >> shift | (second << (8 - shift) & 0xff00));
}

}  // namespace zel::ZEL_LEVEL

#endif

#ifdef ZEL_OWN_LIFTED
#include ZEL_OWN_LIFTED
#else

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
    static constexpr bool packsInOrder = true;
    // Whether sums of pairs over some rows come faster from here than from channels taken apart.
    static constexpr bool pairsPay(int rows) { return lanes == 2 || (lanes == 4 && rows == 2); }

    ZEL_INLINE static Lifted load(const uint8_t* p) { return {half<Half::first>(p), half<Half::second>(p)}; }

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
};

}  // namespace zel::ZEL_LEVEL

#endif

namespace zel::ZEL_LEVEL {

// Words below 2^(8 + shift) of both halves as bytes in the order of the pixels, without the last bits.
template <int shift, class Pixels>
ZEL_INLINE Bytes joinedInOrder(UWords first, UWords second) {
    if constexpr (liftedOrder == Order::natural && Pixels::packsInOrder) return joined<shift>(first, second);
    return Pixels::inOrder((Words)(first >> shift), (Words)(second >> shift));
}

// The numbers nearest to words / 2^bits, the higher one of two, which a byte can hold.
template <int bits, class Pixels>
ZEL_INLINE Bytes roundedInOrder(Words first, Words second) {
    if constexpr (Pixels::packsInOrder) return packRounded<bits>(first, second);
    const auto rounded = [](Words x) ZEL_INLINE_LAMBDA { return mulRound(x, splatWord(1 << (15 - bits))); };
    return Pixels::inOrder(rounded(first), rounded(second));
}

}  // namespace zel::ZEL_LEVEL
