// Pixels as dwords by permutes over whole vectors.
#pragma once

#include "simd/pixel_dwords.h"

namespace zel::ZEL_LEVEL {

// Three interleaved bytes a pixel.
class PixelDwords3 {
    static constexpr int pixelsOfPart = 16, reach = 64;
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
        for (int i = 0; i < 3 * reach; ++i) {
            const int pixel = i / 3, part = pixel / 16, place = pixel % 16 / 4 * 16 + placeOfResult(pixel % 4, i % 3);
            p.results[i / reach][i % reach] = uint8_t((part - i / reach) * 64 + place);
        }
        return p;
    }();

  public:
    static constexpr int bytes = 3;

    template <int part>
    ZEL_INLINE static ChannelPairs load(const uint8_t* p) {
        constexpr int last = part == 3;
        const Register v = (Register)loadBytes(p + start(part));
        return {(Words)_mm512_maskz_permutexvar_epi8(0x5555555555555555, _mm512_load_si512(places.ac[last]), v),
                (Words)_mm512_maskz_permutexvar_epi8(0x1111111111111111, _mm512_load_si512(places.b[last]), v)};
    }

    ZEL_INLINE static void store(Destination p, const Bytes (&parts)[4]) {
        unrolled<3>([&](int i) ZEL_INLINE_LAMBDA {
            storeVector(p + 64 * i, (Bytes)_mm512_permutex2var_epi8((Register)parts[i], _mm512_load_si512(places.results[i]),
                                                                    (Register)parts[i + 1]));
        });
    }
};

// Four interleaved bytes a pixel, of which the fourth is not written.
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
            _mm512_mask_storeu_epi8(to, 0x7777777777777777u, (Register)colours);
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
