// Interleaved pixels of samples of any size: how a block becomes one vector per channel, and back. A block has as many pixels as
// a vector has samples, in natural order.
#pragma once

#include "simd/floats.h"
#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

template <class V>
struct Channels {
    V a, b, c;
};

// Every form has, for samples of a depth or of `size` bytes,
//
//     InterleavedThree<Depth>                   three samples a pixel
//         load(p), store(p, channels)
//     InterleavedFour<Depth>                    four
//         load(p)                               without the fourth
//     storeFour<size>(p, channels, fourth)
//     storeThree<size>(p, channels)             the fourth keeps its value, and may be written with it
//     storeThreeOfFour<size>(p, v)              the same of a vector of pixels
//     Repeated<size, channels>(samples, alpha)  samples of one channel, each `channels` times; of four, the last is alpha
//         vector<v>()                           one of as many vectors as there are channels
//     samples::loadBytesAsFloats<Depth>(p, x)   three bytes a pixel: part i of a channel has the pixels 4i to 4i + 3 of all lanes

namespace samples {

// Shuffles of three interleaved samples of `size` bytes within lanes; and blends: 3 has no common factor with the number of
// samples in a lane or a vector, so a channel's samples stand at different places of the three vectors, and two blends and one
// shuffle bring them together, or apart. That goes within `reach` bytes.
template <int size, int reach>
struct Triples {
    alignas(16) uint8_t gather[3][3][16];   // [vector][channel]
    alignas(16) uint8_t scatter[3][3][16];  // [vector][channel]
    alignas(64) uint8_t together[3][reach];
    alignas(64) uint8_t apart[3][reach];
    uint64_t place[3][3];  // [vector][channel]: the bytes of a vector, or of all its lanes, that are the channel's
};

template <int size, int reach>
inline constexpr Triples<size, reach> triplesWithin = [] {
    Triples<size, reach> t{};
    for (int v = 0; v < 3; ++v)
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 16; ++i) {
                const int from = (i / size * 3 + c) * size + i % size;
                t.gather[v][c][i] = from / 16 == v ? uint8_t(from % 16) : triples::none;
                const int to = 16 * v + i, sample = to / size;
                t.scatter[v][c][i] = sample % 3 == c ? uint8_t(sample / 3 * size + to % size) : triples::none;
            }
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < reach; ++i) {
            const int from = (i / size * 3 + c) * size + i % size;
            t.together[c][i] = uint8_t(from % reach);
            t.apart[c][from % reach] = uint8_t(i);
            t.place[from / reach][c] |= uint64_t{1} << from % reach;
        }
    return t;
}();

// The bytes of the first three of every four samples.
template <int size>
constexpr uint64_t coloursOfFour() {
    uint64_t places = 0;
    for (int i = 0; i < 64; ++i)
        if (i / size % 4 != 3) places |= uint64_t{1} << i;
    return places;
}

}  // namespace samples

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_SAMPLES
#include ZEL_OWN_SAMPLES
#else

namespace zel::ZEL_LEVEL {

namespace samples {

template <int size>
constexpr bool canBlend = traits.selectsAtOnce && (size == 2 || size == 4);

template <int size>
inline constexpr auto table = triplesWithin<size, laneBytes>;

template <int size>
ZEL_INLINE Bytes colours() {
    struct Mask {
        alignas(16) uint8_t bytes[16];
    };
    static constexpr Mask mask = [] {
        Mask m{};
        for (int i = 0; i < 16; ++i) m.bytes[i] = coloursOfFour<size>() >> i & 1 ? 0xff : 0;
        return m;
    }();
    return everyLane(mask.bytes);
}

// The bytes of the vectors x, y and z that belong to the channels or vectors with the given places.
template <uint64_t yPlaces, uint64_t zPlaces>
ZEL_INLINE Bytes blend(Bytes x, Bytes y, Bytes z) {
    constexpr auto words = [](uint64_t bytes) {
        int bits = 0;
        for (int i = 0; i < 8; ++i) bits |= int(bytes >> 2 * i & 1) << i;
        return bits;
    };
    return (Bytes)ZEL_LEVEL::blend<words(zPlaces)>(ZEL_LEVEL::blend<words(yPlaces)>((Words)x, (Words)y), (Words)z);
}

ZEL_INLINE Bytes reorder(Bytes v, const uint8_t (&pattern)[laneBytes]) { return shuffle(v, everyLane(pattern)); }

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
                b.of[c][part][i] = i % 4 == (isSigned ? 3 : 0) ? uint8_t(ofLane - b.start[part]) : triples::none;
            }
    }
    return b;
}();

// Three interleaved bytes a pixel as floats.
template <class Depth>
ZEL_INLINE void loadBytesAsFloats(const uint8_t* p, Floats (&x)[3][4]) {
    constexpr bool isSigned = Depth::lowest < 0;
    constexpr auto& patterns = bytesToDwords<isSigned>;
    unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
        const Bytes pixels = loadLanes(p + patterns.start[part], 48);
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
            const Bytes pattern = loadBytes(patterns.of[c][part]);
            const auto dwords = (Dwords)shuffle(pixels, pattern);
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
        if constexpr (size == 1) {
            const Triple t = Interleaved3::load(p);
            return {(V)t.a, (V)t.b, (V)t.c};
        }
        constexpr auto& t = samples::table<size>;
        const Bytes v[3] = {loadLanes(p, 48), loadLanes(p + 16, 48), loadLanes(p + 32, 48)};
        if constexpr (samples::canBlend<size>) {
            const auto channel = [&](auto c) ZEL_INLINE_LAMBDA {
                return (V)samples::reorder(samples::blend<t.place[1][c], t.place[2][c]>(v[0], v[1], v[2]), t.together[c]);
            };
            return {channel(Constant<0>{}), channel(Constant<1>{}), channel(Constant<2>{})};
        } else if constexpr (size == 8) {
            return {(V)joinQwords<0, 1>(v[0], v[1]), (V)joinQwords<1, 0>(v[0], v[2]), (V)joinQwords<0, 1>(v[1], v[2])};
        } else {
            const auto channel = [&](int c) ZEL_INLINE_LAMBDA {
                const auto part = [&](int i) { return shuffle(v[i], everyLane(t.gather[i][c])); };
                return (V)(part(0) | part(1) | part(2));
            };
            return {channel(0), channel(1), channel(2)};
        }
    }

    ZEL_INLINE static void store(Destination p, Channels<V> x) {
        if constexpr (size == 1) return Interleaved3::store<Order::natural>(p, {(Bytes)x.a, (Bytes)x.b, (Bytes)x.c});
        constexpr auto& t = samples::table<size>;
        const Bytes channels[3] = {(Bytes)x.a, (Bytes)x.b, (Bytes)x.c};
        const auto spread = [&](int c) ZEL_INLINE_LAMBDA { return samples::reorder(channels[c], t.apart[c]); };
        const auto vector = [&](auto i) ZEL_INLINE_LAMBDA {
            if constexpr (samples::canBlend<size>)
                return samples::blend<t.place[i][1], t.place[i][2]>(spread(0), spread(1), spread(2));
            const auto part = [&](int c) { return shuffle(channels[c], everyLane(t.scatter[i][c])); };
            return part(0) | part(1) | part(2);
        };
        storeLanesInTurn(p, vector(Constant<0>{}), vector(Constant<1>{}), vector(Constant<2>{}));
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
            const auto part = [&](int i) { return loadLanes(p + 16 * i, 64); };
            const auto sorted = [](Bytes v) { return (V)v; };
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
            p.start[v] = byteOf(0) < vectorBytes - 16 ? byteOf(0) : vectorBytes - 16;
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
        const Bytes repeated = shuffle(everyLane(in_ + places.start[v]), pattern);
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
    const Bytes taken = samples::colours<size>();
    storeVector(p, (v & taken) | (loadBytes(p) & ~taken));
}

namespace samples {

// Four channels of samples of `size` bytes to pixels: calls put with four vectors of them, whose lanes lie in turn in memory.
template <int size, class Put>
ZEL_INLINE void interleaveFour(Bytes a, Bytes b, Bytes c, Bytes d, const Put& put) {
    static_assert(size == 1 || size == 2 || size == 4);
    const auto sorted = [](Bytes v) { return (Dwords)v; };
    const Dwords channels[4] = {sorted(a), sorted(b), sorted(c), sorted(d)};
    if constexpr (size == 1) {
        const auto low = [&](int i) { return (Words)interleaveLow((Bytes)channels[i], (Bytes)channels[i + 1]); };
        const auto high = [&](int i) { return (Words)interleaveHigh((Bytes)channels[i], (Bytes)channels[i + 1]); };
        put((Bytes)interleaveLow(low(0), low(2)), (Bytes)interleaveHigh(low(0), low(2)), (Bytes)interleaveLow(high(0), high(2)),
            (Bytes)interleaveHigh(high(0), high(2)));
    } else if constexpr (size == 2) {
        const auto low = [&](int i) { return (Dwords)interleaveLow((Words)channels[i], (Words)channels[i + 1]); };
        const auto high = [&](int i) { return (Dwords)interleaveHigh((Words)channels[i], (Words)channels[i + 1]); };
        put((Bytes)interleaveLow(low(0), low(2)), (Bytes)interleaveHigh(low(0), low(2)), (Bytes)interleaveLow(high(0), high(2)),
            (Bytes)interleaveHigh(high(0), high(2)));
    } else {
        const auto low = [&](int i) { return (Bytes)interleaveLow(channels[i], channels[i + 1]); };
        const auto high = [&](int i) { return (Bytes)interleaveHigh(channels[i], channels[i + 1]); };
        put(interleaveLow64(low(0), low(2)), interleaveHigh64(low(0), low(2)), interleaveLow64(high(0), high(2)),
            interleaveHigh64(high(0), high(2)));
    }
}

}  // namespace samples

template <int size, class V>
ZEL_INLINE void storeFour(Destination p, Channels<V> x, V fourth) {
    samples::interleaveFour<size>((Bytes)x.a, (Bytes)x.b, (Bytes)x.c, (Bytes)fourth,
                                  [&](auto... v) ZEL_INLINE_LAMBDA { storeLanesInTurn(p, v...); });
}

// The fourth sample of each is written with what it held.
template <int size, class V>
ZEL_INLINE void storeThree(uint8_t* p, Channels<V> x) {
    samples::interleaveFour<size>((Bytes)x.a, (Bytes)x.b, (Bytes)x.c, Bytes{}, [&](auto... v) ZEL_INLINE_LAMBDA {
        int i = 0;
        const auto withKept = [&](Bytes colours) ZEL_INLINE_LAMBDA {
            return colours | (loadLanes(p + 16 * i++, 64) & ~samples::colours<size>());
        };
        const Bytes whole[] = {withKept(v)...};
        storeLanesInTurn(p, whole[0], whole[1], whole[2], whole[3]);
    });
}

}  // namespace zel::ZEL_LEVEL

#endif
