// Pixels of three or four bytes as dwords, for sums over the channels of a pixel: a block of them in four parts.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// The channels of a pixel in two pairs of words, as the multiply-add takes them.
struct ChannelPairs {
    Words ac;  // in turn
    Words b;   // in turn with words of any value below 256
};

// The three results of a pixel: bytes that are made of the words in the high halves of dwords by saturation. In a lane they stand
// as the places below say.
ZEL_INLINE Bytes packHighWords(Dwords a, Dwords b, Dwords c) { return packBytes(highWords(a, b), (Words)c); }
constexpr uint8_t placeOfResult(int pixel, int channel) {
    return uint8_t(channel == 2 ? 8 + 2 * pixel + 1 : 2 * pixel + channel);
}

// PixelDwords3 and PixelDwords4, of three and four bytes a pixel, have
//
//     load<part>(p)    one of the four parts of a block
//     store(p, parts)  of packHighWords of each part; the fourth byte keeps its value, and may be written with it

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_PIXEL_DWORDS
#include ZEL_OWN_PIXEL_DWORDS
#else

namespace zel::ZEL_LEVEL {

// Three interleaved bytes a pixel.
class PixelDwords3 {
    static constexpr int pixelsOfPart = 4, reach = 16;  // of every lane
    static constexpr int partBytes = 3 * pixelsOfPart;

    // The last part is loaded with bytes in front of it, none behind it.
    static constexpr int start(int part) { return part < 3 ? part * partBytes : 4 * partBytes - reach; }

    struct Places {
        alignas(64) uint8_t ac[2][reach], b[2][reach];  // of the last part and the others
        alignas(64) uint8_t results[4][reach];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int last = 0; last < 2; ++last)
            for (int i = 0; i < reach; ++i) {
                const int pixel = (last ? reach - partBytes : 0) + i / 4 * 3;
                p.ac[last][i] = i % 2 == 0 ? uint8_t(pixel + i % 4) : triples::none;
                p.b[last][i] = i % 4 == 0 ? uint8_t(pixel + 1) : triples::none;
            }
        // What goes to the vector of the part's own number stands at the high end, what goes to the one before at the low end.
        for (int i = 0; i < 4 * partBytes; ++i) {
            const int part = i / partBytes, ofPart = i % partBytes;
            const int place = i / reach == part ? ofPart + reach - partBytes : ofPart;
            p.results[part][place] = placeOfResult(ofPart / 3, ofPart % 3);
        }
        return p;
    }();

  public:
    static constexpr int bytes = 3;

    template <int part>
    ZEL_INLINE static ChannelPairs load(const uint8_t* p) {
        constexpr int last = part == 3;
        const Bytes v = loadLanes(p + start(part), 48);
        return {(Words)shuffle(v, everyLane(places.ac[last])), (Words)shuffle(v, everyLane(places.b[last]))};
    }

    ZEL_INLINE static void store(Destination p, const Bytes (&parts)[4]) {
        Bytes v[4];
        unrolled<4>([&](int i) ZEL_INLINE_LAMBDA { v[i] = shuffle(parts[i], everyLane(places.results[i])); });
        storeLanesInTurn(p, window<4>(v[0], v[1]), window<8>(v[1], v[2]), window<12>(v[2], v[3]));
    }
};

// Four interleaved bytes a pixel, of which the fourth is written with what it held.
struct PixelDwords4 {
    static constexpr int bytes = 4;

    template <int part>
    ZEL_INLINE static ChannelPairs load(const uint8_t* p) {
        const Bytes v = loadBytes(p + part * vectorBytes);
        return {evenBytes(v), oddBytes(v)};
    }

    ZEL_INLINE static void store(uint8_t* p, const Bytes (&parts)[4]) {
        unrolled<4>([&](int i) ZEL_INLINE_LAMBDA {
            const Bytes colours = shuffle(parts[i], everyLane(places.of));
            uint8_t* const to = p + i * vectorBytes;
            storeVector(to, colours | (loadBytes(to) & (Bytes)splatDword(int32_t(0xff000000u))));
        });
    }

  private:
    struct Places {
        alignas(16) uint8_t of[16];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int i = 0; i < 16; ++i) p.of[i] = i % 4 == 3 ? triples::none : placeOfResult(i / 4, i % 4);
        return p;
    }();
};

}  // namespace zel::ZEL_LEVEL

#endif
