// Interleaved samples by blends and permutes over whole vectors.
#pragma once

#include "simd/samples.h"

namespace zel::ZEL_LEVEL {

namespace samples {

template <int size>
inline constexpr auto table = triplesWithin<size, vectorBytes>;

// The bytes of the vectors x, y and z that belong to the channels or vectors with the given places.
template <uint64_t yPlaces, uint64_t zPlaces>
ZEL_INLINE Bytes blend(Bytes x, Bytes y, Bytes z) {
    return (Bytes)_mm512_mask_mov_epi8(_mm512_mask_mov_epi8((Register)x, yPlaces, (Register)y), zPlaces, (Register)z);
}

// Three vectors that follow each other.
struct Loaded {
    Bytes v[3];

    ZEL_INLINE explicit Loaded(const uint8_t* p) : v{x86::loadOnce(p), x86::loadOnce(p + 64), x86::loadOnce(p + 128)} {}

    // The bytes of channel c.
    template <int size, int c>
    ZEL_INLINE Bytes channel() const {
        return blend<table<size>.place[1][c], table<size>.place[2][c]>(v[0], v[1], v[2]);
    }
};

ZEL_INLINE Bytes reorder(Bytes v, const uint8_t (&pattern)[vectorBytes]) { return triples::permute((Register)v, pattern); }

// The bytes of channels, each taken to the lowest or the highest byte of a dword. Part p of a block has the pixels 4p to 4p + 3
// of every lane.
template <bool isSigned>
struct BytesToDwords {
    alignas(64) uint8_t of[3][4][vectorBytes];  // [channel][part]
    int start[4];                               // of the 16 bytes in which a part lies, in the 48 of a lane
};

template <bool isSigned>
inline constexpr BytesToDwords<isSigned> bytesToDwords = [] {
    BytesToDwords<isSigned> b{};
    for (int part = 0; part < 4; ++part) {
        b.start[part] = part < 3 ? 12 * part : 32;
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < vectorBytes; ++i) {
                const int ofLane = 3 * (part * 4 + i % 16 / 4) + c;
                const int place = (i / 16 * 48 + ofLane) % 64;
                b.of[c][part][i] = i % 4 == (isSigned ? 3 : 0) ? uint8_t(place) : triples::none;
            }
    }
    return b;
}();

// Three interleaved bytes a pixel as floats.
template <class Depth>
ZEL_INLINE void loadBytesAsFloats(const uint8_t* p, Floats (&x)[3][4]) {
    constexpr bool isSigned = Depth::lowest < 0;
    constexpr auto& patterns = bytesToDwords<isSigned>;
    constexpr uint64_t taken = isSigned ? 0x8888888888888888u : 0x1111111111111111u;
    const Loaded loaded(p);
    const Bytes channels[3] = {loaded.channel<1, 0>(), loaded.channel<1, 1>(), loaded.channel<1, 2>()};
    unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
            const Bytes pattern = loadBytes(patterns.of[c][part]);
            const auto dwords = (Dwords)_mm512_maskz_permutexvar_epi8(taken, (Register)pattern, (Register)channels[c]);
            x[c][part] = toFloats(isSigned ? dwords >> 24 : dwords);
        });
    });
}

}  // namespace samples

// Three samples a pixel.
template <class Depth>
struct InterleavedThree {
    using V = typename Depth::Vector;
    static constexpr int size = sizeof(typename Depth::Element), bytes = 3 * size;

    ZEL_INLINE static Channels<V> load(const uint8_t* p) {
        const samples::Loaded loaded(p);
        const auto channel = [&](auto c) ZEL_INLINE_LAMBDA {
            return (V)samples::reorder(loaded.channel<size, c>(), samples::table<size>.together[c]);
        };
        return {channel(Constant<0>{}), channel(Constant<1>{}), channel(Constant<2>{})};
    }

    ZEL_INLINE static void store(Destination p, Channels<V> x) {
        constexpr auto& t = samples::table<size>;
        const Bytes channels[3] = {(Bytes)x.a, (Bytes)x.b, (Bytes)x.c};
        const auto spread = [&](int c) ZEL_INLINE_LAMBDA { return samples::reorder(channels[c], t.apart[c]); };
        const Bytes v[3] = {spread(0), spread(1), spread(2)};
        unrolled<3>([&](auto i) ZEL_INLINE_LAMBDA {
            storeVector(p + 64 * i, samples::blend<t.place[i][1], t.place[i][2]>(v[0], v[1], v[2]));
        });
    }
};

// Four samples a pixel, of which the fourth is not read.
template <class Depth>
struct InterleavedFour {
    using V = typename Depth::Vector;
    static constexpr int size = sizeof(typename Depth::Element), bytes = 4 * size;

    ZEL_INLINE static Channels<V> load(const uint8_t* p) {
        if constexpr (size == 8) {
            const auto part = [&](int i) { return loadLanes(p + 16 * i, 64); };
            const Bytes v0 = part(0), v1 = part(1), v2 = part(2), v3 = part(3);
            return {(V)interleaveLow64(v0, v2), (V)interleaveHigh64(v0, v2), (V)interleaveLow64(v1, v3)};
        } else {
            // Vectors as they stand in memory leave every fourth dword of a channel in a lane.
            const auto part = [&](int i) { return loadBytes(p + 64 * i); };
            const auto sorted = [](Bytes v) {
                const __m512i places = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
                return (V)_mm512_permutexvar_epi32(places, (Register)v);
            };
            // ab: two dwords of channel a, then two of b.
            struct Half {
                Bytes ab, cd;
            };
            const auto half = [](Bytes x, Bytes y) {
                if constexpr (size == 4) {
                    return Half{(Bytes)interleaveLow((Dwords)x, (Dwords)y), (Bytes)interleaveHigh((Dwords)x, (Dwords)y)};
                } else {
                    const Words first = interleaveLow((Words)x, (Words)y), second = interleaveHigh((Words)x, (Words)y);
                    return Half{(Bytes)interleaveLow(first, second), (Bytes)interleaveHigh(first, second)};
                }
            };
            const Half low = half(part(0), part(1)), high = half(part(2), part(3));
            return {sorted(interleaveLow64(low.ab, high.ab)), sorted(interleaveHigh64(low.ab, high.ab)),
                    sorted(interleaveLow64(low.cd, high.cd))};
        }
    }
};

// A vector of samples, each `channels` times in turn; of four, the last one is alpha instead.
template <int size, int channels>
class Repeated {
    // What a vector of results needs lies in the samples, at AVX2 and below in the 16 bytes from `start` on.
    struct Places {
        alignas(64) uint8_t of[channels][vectorBytes];
        alignas(64) uint8_t alpha[vectorBytes];
        uint64_t samples;  // the bytes of a vector of results that are not alpha, as bits
        int start[channels];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int v = 0; v < channels; ++v) {
            const auto byteOf = [&](int i) { return (v * vectorBytes + i) / size / channels * size + i % size; };
            p.start[v] = 0;
            for (int i = 0; i < vectorBytes; ++i) {
                const bool isAlpha = channels == 4 && i / size % 4 == 3;
                p.of[v][i] = isAlpha ? triples::none : uint8_t(byteOf(i) - p.start[v]);
                p.alpha[i] = isAlpha ? 0xff : 0;
                if (!isAlpha) p.samples |= uint64_t{1} << i;
            }
        }
        return p;
    }();

  public:
    ZEL_INLINE Repeated(const uint8_t* samples, uint32_t alpha) : in_(samples), alpha_(splat(alpha) & loadBytes(places.alpha)) {}

    // Result `v` of as many vectors as there are channels.
    template <int v>
    ZEL_INLINE Bytes vector() const {
        const Bytes pattern = loadBytes(places.of[v]);
        const auto repeated = (Bytes)_mm512_maskz_permutexvar_epi8(places.samples, (Register)pattern, (Register)loadBytes(in_));
        return channels == 4 ? repeated | alpha_ : repeated;
    }

  private:
    ZEL_INLINE static Bytes splat(uint32_t element) {
        if constexpr (size == 1) return splatByte(uint8_t(element));
        if constexpr (size == 2) return (Bytes)splatWord(int(element));
        return (Bytes)splatDword(int32_t(element));
    }

    const uint8_t* in_;
    Bytes alpha_;
};

// A vector of four-sample pixels to memory, but for the fourth sample of each, which is written with what it held.
template <int size>
ZEL_INLINE void storeThreeOfFour(uint8_t* p, Bytes v) {
    _mm512_mask_storeu_epi8(p, samples::coloursOfFour<size>(), (Register)v);
}

namespace samples {

// Four channels of samples of `size` bytes to pixels: calls put(i, v) for four vectors of them, which follow each other in
// memory.
template <int size, class Put>
ZEL_INLINE void interleaveFour(Bytes a, Bytes b, Bytes c, Bytes d, const Put& put) {
    static_assert(size == 1 || size == 2 || size == 4);
    const auto sorted = [](Bytes v) { return (Dwords)inOrderOfQuarters(v); };
    const Dwords channels[4] = {sorted(a), sorted(b), sorted(c), sorted(d)};
    if constexpr (size == 1) {
        const auto low = [&](int i) { return (Words)interleaveLow((Bytes)channels[i], (Bytes)channels[i + 1]); };
        const auto high = [&](int i) { return (Words)interleaveHigh((Bytes)channels[i], (Bytes)channels[i + 1]); };
        put(0, (Bytes)interleaveLow(low(0), low(2)));
        put(1, (Bytes)interleaveHigh(low(0), low(2)));
        put(2, (Bytes)interleaveLow(high(0), high(2)));
        put(3, (Bytes)interleaveHigh(high(0), high(2)));
    } else if constexpr (size == 2) {
        const auto low = [&](int i) { return (Dwords)interleaveLow((Words)channels[i], (Words)channels[i + 1]); };
        const auto high = [&](int i) { return (Dwords)interleaveHigh((Words)channels[i], (Words)channels[i + 1]); };
        put(0, (Bytes)interleaveLow(low(0), low(2)));
        put(1, (Bytes)interleaveHigh(low(0), low(2)));
        put(2, (Bytes)interleaveLow(high(0), high(2)));
        put(3, (Bytes)interleaveHigh(high(0), high(2)));
    } else {
        const auto low = [&](int i) { return (Bytes)interleaveLow(channels[i], channels[i + 1]); };
        const auto high = [&](int i) { return (Bytes)interleaveHigh(channels[i], channels[i + 1]); };
        put(0, interleaveLow64(low(0), low(2)));
        put(1, interleaveHigh64(low(0), low(2)));
        put(2, interleaveLow64(high(0), high(2)));
        put(3, interleaveHigh64(high(0), high(2)));
    }
}

}  // namespace samples

template <int size, class V>
ZEL_INLINE void storeFour(Destination p, Channels<V> x, V fourth) {
    samples::interleaveFour<size>((Bytes)x.a, (Bytes)x.b, (Bytes)x.c, (Bytes)fourth,
                                  [&](int i, Bytes v) ZEL_INLINE_LAMBDA { storeVector(p + 64 * i, v); });
}

// The fourth sample of each is not written.
template <int size, class V>
ZEL_INLINE void storeThree(uint8_t* p, Channels<V> x) {
    samples::interleaveFour<size>((Bytes)x.a, (Bytes)x.b, (Bytes)x.c, Bytes{},
                                  [&](int i, Bytes v) ZEL_INLINE_LAMBDA { storeThreeOfFour<size>(p + 64 * i, v); });
}

}  // namespace zel::ZEL_LEVEL
