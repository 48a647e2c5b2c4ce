// Pixels as dwords by tables of two registers.
#pragma once

#include "simd/pixel_dwords.h"

namespace zel::ZEL_LEVEL {

class PixelDwords3 {
    static constexpr int start(int part) { return part < 3 ? part * 12 : 32; }
    struct Places {
        alignas(16) uint8_t ac[2][16], b[2][16], results[3][16];
    };
    // Of the results, a vector is made of two parts that follow each other.
    static constexpr Places places = [] {
        Places p{};
        for (int last = 0; last < 2; ++last)
            for (int i = 0; i < 16; ++i) {
                const int pixel = (last ? 4 : 0) + i / 4 * 3;
                p.ac[last][i] = i % 2 == 0 ? uint8_t(pixel + i % 4) : triples::none;
                p.b[last][i] = i % 4 == 0 ? uint8_t(pixel + 1) : triples::none;
            }
        for (int i = 0; i < 48; ++i) {
            const int part = i / 12;
            p.results[i / 16][i % 16] = uint8_t((part - i / 16) * 16 + placeOfResult(i / 3 % 4, i % 3));
        }
        return p;
    }();

  public:
    static constexpr int bytes = 3;

    template <int part>
    ZEL_INLINE static ChannelPairs load(const uint8_t* p) {
        constexpr int last = part == 3;
        const Bytes v = loadBytes(p + start(part));
        return {(Words)shuffle(v, loadBytes(places.ac[last])), (Words)shuffle(v, loadBytes(places.b[last]))};
    }
    ZEL_INLINE static void store(Destination p, const Bytes (&parts)[4]) {
        unrolled<3>([&](int i) ZEL_INLINE_LAMBDA {
            const uint8x16x2_t both = {{arm::u8(parts[i]), arm::u8(parts[i + 1])}};
            storeVector(p + 16 * i, (Bytes)vqtbl2q_u8(both, arm::u8(loadBytes(places.results[i]))));
        });
    }
};

struct PixelDwords4 {
    static constexpr int bytes = 4;

    template <int part>
    ZEL_INLINE static ChannelPairs load(const uint8_t* p) {
        const Bytes v = loadBytes(p + part * vectorBytes);
        return {evenBytes(v), oddBytes(v)};
    }
    ZEL_INLINE static void store(uint8_t* p, const Bytes (&parts)[4]) {
        unrolled<4>([&](int i) ZEL_INLINE_LAMBDA {
            uint8_t* const to = p + i * vectorBytes;
            // What has no place keeps what the memory held.
            storeVector(to, (Bytes)vqtbx1q_u8(arm::u8(loadBytes(to)), arm::u8(parts[i]), arm::u8(loadBytes(places.of))));
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
