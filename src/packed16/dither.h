// Packed words whose fields are dithered: a channel is rounded up or down by a threshold that the pixel's place in a pattern of 4
// x 4 pixels decides. With D the distance of two levels, in 256ths of a byte's step:
//
//   q = v (2^bits - 1) >> 8;  e = 256 v - q D;  field = e > threshold ? q + 1 : q
//
// For any one threshold that is a staircase, and this one has the same steps, at all 48 thresholds and 256 bytes:
//
//   field = (256 min(v + offset / 256, 255) + offset % 256) factor >> (32 - bits)
//
// with offset = D - 1 - threshold and factor = 2^(32 - bits) / D, but where q is often lower than 256 v / D and the stairs are
// not quite straight.
#pragma once

#include "packed16/packing.h"

namespace zel::ZEL_LEVEL {
namespace dither {

constexpr int thresholds4[4][4] = {
    {0, 2312, 578, 2890}, {3468, 1156, 4046, 1734}, {867, 3179, 289, 2601}, {4335, 2023, 3757, 1445}};
// Not quite a multiple of the same pattern: rounded as it is.
constexpr int thresholds5[4][4] = {{0, 1118, 279, 1398}, {1678, 559, 1957, 839}, {419, 1538, 139, 1258}, {2097, 978, 1817, 699}};

constexpr int thresholdOf(int bits, int row, int column) {
    return bits == 4 ? thresholds4[row][column] : bits == 5 ? thresholds5[row][column] : thresholds5[row][column] >> 1;
}
constexpr int distanceOf(int bits) { return bits == 4 ? 4352 : bits == 5 ? 2105 : 1036; }

struct Stairs {
    uint16_t factor, offset;
    bool steepens = false;  // the fraction of the offset grows by v, up to 255
};

constexpr Stairs stairsOf(int bits, int threshold) {
    if (bits == 5 && threshold == 0) return {63600, 2047};
    if (bits == 5 && threshold == 139) return {63624, 2025};
    if (bits == 6 && threshold <= 69) return {64540, 1023};
    if (bits == 6 && threshold == 139) return {64540, 897, true};
    if (bits == 6 && threshold == 1048) return {64758, 0};
    constexpr uint16_t factors[] = {61681, 63763, 64778};
    return {factors[bits - 4], uint16_t(distanceOf(bits) - 1 - threshold)};
}

constexpr bool areTheSteps(int bits) {
    for (int place = 0; place < 16; ++place) {
        const int threshold = thresholdOf(bits, place / 4, place % 4);
        const Stairs s = stairsOf(bits, threshold);
        for (int v = 0; v < 256; ++v) {
            const int q = v * ((1 << bits) - 1) >> 8, field = v * 256 - q * distanceOf(bits) > threshold ? q + 1 : q;
            const int whole = v + s.offset / 256, fraction = s.offset % 256 + s.steepens * v;
            const uint32_t x = uint32_t((whole < 255 ? whole : 255) * 256 + (fraction < 255 ? fraction : 255));
            if (int(x * s.factor >> (32 - bits)) != field) return false;
        }
    }
    return true;
}
static_assert(areTheSteps(4) && areTheSteps(5) && areTheSteps(6));

// The stairs of the 16 pixels of a lane, in the order of a channel, by the row's place and that of the first pixel.
struct Phase {
    alignas(16) uint8_t whole[16], fraction[16], steepening[16];
    alignas(16) uint16_t lowFactors[8], highFactors[8];
    bool steepens;  // at any pixel
};
struct Pattern {
    Phase at[4][4];
};

template <int bits, Order order>
inline constexpr Pattern pattern = [] {
    Pattern p{};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int pixel = 0; pixel < 16; ++pixel) {
                Phase& phase = p.at[row][column];
                const Stairs s = stairsOf(bits, thresholdOf(bits, row, (column + pixel) % 4));
                const int i = placeInLane(order, pixel), word = placeInLane(wordOrder(order), pixel);
                phase.whole[i] = uint8_t(s.offset / 256);
                phase.fraction[i] = uint8_t(s.offset % 256);
                phase.steepening[i] = s.steepens ? 0xff : 0;
                phase.steepens |= s.steepens;
                (word < 8 ? phase.lowFactors : phase.highFactors)[word % 8] = s.factor;
            }
    return p;
}();

// Fields at the top of their words.
template <int bits, Order order>
ZEL_INLINE PixelWords quantized(Bytes v, const Phase& phase) {
    const Bytes whole = addSaturated(v, everyLane(phase.whole));
    Bytes fraction = everyLane(phase.fraction);
    if (bits == 6 && phase.steepens) fraction = addSaturated(fraction, v & everyLane(phase.steepening));
    const PixelWords x = joinBytes<order>(fraction, whole);
    const auto& highFactors = wordOrder(order) == Order::split ? phase.highFactors : phase.lowFactors;
    return {(Words)mulHigh((UWords)x.low, (UWords)everyLane(phase.lowFactors)),
            (Words)mulHigh((UWords)x.high, (UWords)everyLane(highFactors))};
}

// From the top of a word to bits `at` and above.
template <int bits, int at>
ZEL_INLINE UWords placed(Words field) {
    const UWords shifted = (UWords)field >> (16 - bits - at);
    if constexpr (at == 0) return shifted;
    return shifted & (UWords)splatWord(((1 << bits) - 1) << at);
}

}  // namespace dither

// Chroma sites of so many pixels.
template <class F, int siteWidth, int siteHeight>
struct ToDitheredWords {
    static constexpr bool seesPlace = true;

    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        using namespace dither;
        static_assert(blockPixels % 4 == 0);
        const size_t y = (row.place.group * siteHeight + unsigned(r)) % 4, x = row.place.column * siteWidth % 4;
        const Phase &outer = pattern<F::outer, order>.at[y][x], &middle = pattern<F::middle, order>.at[y][x];
        const PixelWords a = quantized<F::outer, order>(t.a, outer), b = quantized<F::middle, order>(t.b, middle),
                         c = quantized<F::outer, order>(t.c, outer);
        const auto word = [](Words a, Words b, Words c) {
            return (Words)(placed<F::outer, 0>(a) | placed<F::middle, F::middleAt>(b) | placed<F::outer, F::highAt>(c));
        };
        storePixelWords<order>(row.out[r] + block * blockPixels * 2, {word(a.low, b.low, c.low), word(a.high, b.high, c.high)});
    }
};

}  // namespace zel::ZEL_LEVEL
