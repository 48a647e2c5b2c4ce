// Pixel layouts in memory: how a block of pixels becomes one vector of bytes per channel, and back. A block has as many pixels as
// a vector has bytes, lane l holding the pixels 16l to 16l+15.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

constexpr int blockPixels = vectorBytes;

// Channels are named by their place in the pixel, so one text serves RGB and BGR.
struct Triple {
    Bytes a, b, c;
};

struct Quad {
    Bytes a, b, c, d;
};

// The order of the 16 pixels in a lane of a channel: natural, or split as a pack of even and odd pixels leaves them: 0 2 4 .. 1 3
// 5 ..
enum class Order { natural, split };

// The even or the odd pixels of a row.
enum class Parity { even, odd };

constexpr int placeInLane(Order order, int pixel) { return order == Order::natural ? pixel : pixel / 2 + pixel % 2 * 8; }

// A word of each pixel of a block: of the pixels in the low halves of a channel's lanes and of those in the high halves, or, as a
// form likes it better, of the first half of the pixels and of the second.
struct PixelWords {
    Words low, high;
};

namespace triples {

constexpr uint8_t none = 0x80;  // a place from which a shuffle takes 0

}  // namespace triples

namespace quads {

// Of pixels in split order, those in natural order.
alignas(16) inline constexpr uint8_t natural[16] = {0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15};

}  // namespace quads

// Every form of the layouts has
//
//     Interleaved3                       three bytes a pixel
//         load(p), store<order>(p, t)    a block; the order is that of t, in memory the pixels are in order
//     Interleaved4                       four bytes a pixel
//         load(p), loadFour(p)           without the fourth, and with it
//         store<order>(p, t, alpha)      the same alpha for all
//         wantsDealt                     whether pixels are stored faster by
//         storeDealt<order>(p, t, alpha) if they were dealt out to the lanes in turn by fours
//         storeColours<order>(p, t)      the fourth byte keeps its value, and may be written with it
//     joinBytes<order>(low, high)        words of the bytes of two channels, the low ones first, in wordOrder(order)
//     storePixelWords<order>(p, words)   a block in order, of words that were joined from channels of that order

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_PIXELS
#include ZEL_OWN_PIXELS
#else

namespace zel::ZEL_LEVEL {

namespace triples {

struct LanePatterns {
    alignas(16) uint8_t place[3][3][16];  // [vector of the 48 bytes][channel]
};

// Byte i of vector v is of channel (v + i) % 3, and the bytes of a channel stand at different places of the three vectors. So
// where a choice is one operation, two choices and one shuffle bring a channel's bytes together, or a vector's.
struct ChoicePatterns {
    alignas(16) uint8_t isThird[3][16];   // the bytes 0, 3, 6 ..; 1, 4, 7 ..; 2, 5, 8 ..
    alignas(16) uint8_t together[3][16];  // from where the bytes of a channel go to their pixels
    alignas(16) uint8_t apart[3][16];     // and back
};

template <Order order>
inline constexpr ChoicePatterns choices = [] {
    ChoicePatterns p{};
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 16; ++i) {
            const int at = (3 * i + c) % 16;
            p.isThird[c][i] = i % 3 == c ? 0xff : 0;
            p.together[c][placeInLane(order, i)] = static_cast<uint8_t>(at);
            p.apart[c][at] = static_cast<uint8_t>(placeInLane(order, i));
        }
    return p;
}();

// Of the bytes 0, 3, 6 .. those of the first vector, of the next ones those of the second, and of the others those of the third.
ZEL_INLINE Bytes inThirds(Bytes first, Bytes second, Bytes third) {
    constexpr auto& isThird = choices<Order::natural>.isThird;
    return choose(everyLane(isThird[2]), third, choose(everyLane(isThird[1]), second, first));
}

// Where the bytes of each channel are in each of the three vectors that hold 16 pixels of a lane.
constexpr LanePatterns gatherPatterns() {
    LanePatterns p{};
    for (int v = 0; v < 3; ++v)
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 16; ++i) {
                const int at = 3 * i + c;
                p.place[v][c][i] = at / 16 == v ? static_cast<uint8_t>(at % 16) : none;
            }
    return p;
}

// Where the bytes of each of the three vectors are in each channel.
constexpr LanePatterns scatterPatterns(Order order) {
    LanePatterns p{};
    for (int v = 0; v < 3; ++v)
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 16; ++i) {
                const int at = 16 * v + i;
                p.place[v][c][i] = at % 3 == c ? static_cast<uint8_t>(placeInLane(order, at / 3)) : none;
            }
    return p;
}

inline constexpr LanePatterns gather = gatherPatterns();
template <Order order>
inline constexpr LanePatterns scatter = scatterPatterns(order);

}  // namespace triples

// Three interleaved bytes a pixel.
struct Interleaved3 {
    static constexpr int bytes = 3;

    ZEL_INLINE static Triple load(const uint8_t* p) {
        const Bytes v[3] = {loadLanes(p, 48), loadLanes(p + 16, 48), loadLanes(p + 32, 48)};
        const auto channel = [&](int c) ZEL_INLINE_LAMBDA {
            if constexpr (traits.selectsAtOnce) {
                const Bytes chosen = triples::inThirds(v[c], v[(c + 2) % 3], v[(c + 1) % 3]);
                return shuffle(chosen, everyLane(triples::choices<Order::natural>.together[c]));
            } else {
                const auto part = [&](int i) { return shuffle(v[i], everyLane(triples::gather.place[i][c])); };
                return part(0) | part(1) | part(2);
            }
        };
        return {channel(0), channel(1), channel(2)};
    }

    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t) {
        const Bytes channels[3] = {t.a, t.b, t.c};
        if constexpr (traits.selectsAtOnce) {
            const auto spread = [&](int c) { return shuffle(channels[c], everyLane(triples::choices<order>.apart[c])); };
            const Bytes a = spread(0), b = spread(1), c = spread(2);
            storeLanesInTurn(p, triples::inThirds(a, b, c), triples::inThirds(b, c, a), triples::inThirds(c, a, b));
        } else {
            const auto vector = [&](int v) {
                const auto part = [&](int c) { return shuffle(channels[c], everyLane(triples::scatter<order>.place[v][c])); };
                return part(0) | part(1) | part(2);
            };
            storeLanesInTurn(p, vector(0), vector(1), vector(2));
        }
    }
};

namespace quads {

alignas(16) inline constexpr uint8_t transpose[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};

}  // namespace quads

// Four interleaved bytes a pixel, the fourth alpha or ignored.
struct Interleaved4 {
    static constexpr int bytes = 4;
    // Whether pixels that were dealt out to the lanes in turn by fours are stored faster.
    static constexpr bool wantsDealt = lanes == 2;

    ZEL_INLINE static Triple load(const uint8_t* p) {
        const Quad q = loadFour(p);
        return {q.a, q.b, q.c};
    }

    ZEL_INLINE static Quad loadFour(const uint8_t* p) {
        const Bytes pattern = everyLane(quads::transpose);
        const auto part = [&](int i) { return (Dwords)shuffle(loadLanes(p + 16 * i, 64), pattern); };
        const Dwords v0 = part(0), v1 = part(1), v2 = part(2), v3 = part(3);
        const Bytes low01 = (Bytes)interleaveLow(v0, v1), low23 = (Bytes)interleaveLow(v2, v3);
        const Bytes high01 = (Bytes)interleaveHigh(v0, v1), high23 = (Bytes)interleaveHigh(v2, v3);
        return {interleaveLow64(low01, low23), interleaveHigh64(low01, low23), interleaveLow64(high01, high23),
                interleaveHigh64(high01, high23)};
    }

    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t, Bytes alpha) {
        storeInterleaved<order>(t, alpha, [&](auto... v) ZEL_INLINE_LAMBDA { storeLanesInTurn(p, v...); });
    }

    // Pixels that were dealt out to the lanes in turn by fours.
    template <Order order>
    ZEL_INLINE static void storeDealt(Destination p, Triple t, Bytes alpha) {
        storeInterleaved<order>(t, alpha, [&](auto... v) ZEL_INLINE_LAMBDA { storeVectors(p, v...); });
    }

    // The fourth byte of every pixel is written with what it held.
    template <Order order>
    ZEL_INLINE static void storeColours(uint8_t* p, Triple t) {
        storeInterleaved<order>(t, Bytes{}, [&](auto... v) ZEL_INLINE_LAMBDA {
            int i = 0;
            const auto withKept = [&](Bytes colours) ZEL_INLINE_LAMBDA {
                return colours | (loadLanes(p + 16 * i++, 64) & (Bytes)splatDword(int32_t(0xff000000u)));
            };
            const Bytes whole[] = {withKept(v)...};
            storeLanesInTurn(p, whole[0], whole[1], whole[2], whole[3]);
        });
    }

  private:
    // Calls put with the quarters of the 16 pixels of all lanes.
    template <Order order, class Put>
    ZEL_INLINE static void storeInterleaved(Triple t, Bytes alpha, const Put& put) {
        const auto sorted = [](Bytes v) { return order == Order::natural ? v : shuffle(v, everyLane(quads::natural)); };
        const Bytes a = sorted(t.a), b = sorted(t.b), c = sorted(t.c);
        const Words abLow = (Words)interleaveLow(a, b), abHigh = (Words)interleaveHigh(a, b);
        const Words cdLow = (Words)interleaveLow(c, alpha), cdHigh = (Words)interleaveHigh(c, alpha);
        put((Bytes)interleaveLow(abLow, cdLow), (Bytes)interleaveHigh(abLow, cdLow), (Bytes)interleaveLow(abHigh, cdHigh),
            (Bytes)interleaveHigh(abHigh, cdHigh));
    }
};

constexpr Order wordOrder(Order order) { return order; }

// From the bytes of two channels, the low ones of the words first.
template <Order order>
ZEL_INLINE PixelWords joinBytes(Bytes low, Bytes high) {
    return {(Words)interleaveLow(low, high), (Words)interleaveHigh(low, high)};
}

// The order is that of the channels from which the words come.
template <Order order>
ZEL_INLINE void storePixelWords(Destination p, PixelWords w) {
    if constexpr (order == Order::split)
        storeLanesInTurn(p, (Bytes)interleaveLow(w.low, w.high), (Bytes)interleaveHigh(w.low, w.high));
    else
        storeLanesInTurn(p, (Bytes)w.low, (Bytes)w.high);
}

}  // namespace zel::ZEL_LEVEL

#endif
