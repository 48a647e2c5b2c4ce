// Interleaved bytes by blends and permutes over whole vectors.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

namespace triples {

// 3 and 64 have no common factor, so a channel's 64 bytes stand at 64 different places of the three vectors,
// and two blends and one permute bring them together, or apart.
struct WidePatterns {
    alignas(64) uint8_t gather[3][64];
    alignas(64) uint8_t scatter[3][64];
};

constexpr WidePatterns widePatterns(Order order) {
    WidePatterns p{};
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 64; ++i) {
            p.gather[c][i] = static_cast<uint8_t>((3 * i + c) % 64);
            const int vector = (c - i % 3 + 3) % 3;  // the one whose byte i belongs to channel c
            const int pixel = (64 * vector + i) / 3;
            p.scatter[c][i] = static_cast<uint8_t>(pixel / 16 * 16 + placeInLane(order, pixel % 16));
        }
    return p;
}

// The places i with i % 3 == remainder.
constexpr uint64_t everyThird(int remainder) {
    uint64_t mask = 0;
    for (int i = remainder; i < 64; i += 3) mask |= uint64_t{1} << i;
    return mask;
}

template <Order order>
inline constexpr WidePatterns wide = widePatterns(order);

// Bytes of v0 where i % 3 is 0, of v1 where it is 1, of v2 where it is 2.
ZEL_INLINE Register blendThirds(Register v0, Register v1, Register v2) {
    return _mm512_mask_mov_epi8(_mm512_mask_mov_epi8(v0, everyThird(1), v1), everyThird(2), v2);
}
ZEL_INLINE Bytes permute(Register v, const uint8_t (&pattern)[64]) {
    return (Bytes)_mm512_permutexvar_epi8(_mm512_load_si512(pattern), v);
}

}  // namespace triples

// Three interleaved bytes a pixel.
struct Interleaved3 {
    static constexpr int bytes = 3;

    ZEL_INLINE static Triple load(const uint8_t* p) {
        using namespace triples;
        const auto v0 = (Register)x86::loadOnce(p), v1 = (Register)x86::loadOnce(p + 64), v2 = (Register)x86::loadOnce(p + 128);
        const auto& patterns = wide<Order::natural>;
        return {permute(blendThirds(v0, v2, v1), patterns.gather[0]), permute(blendThirds(v1, v0, v2), patterns.gather[1]),
                permute(blendThirds(v2, v1, v0), patterns.gather[2])};
    }

    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t) {
        using namespace triples;
        const auto& patterns = wide<order>;
        const Register a = (Register)permute((Register)t.a, patterns.scatter[0]);
        const Register b = (Register)permute((Register)t.b, patterns.scatter[1]);
        const Register c = (Register)permute((Register)t.c, patterns.scatter[2]);
        storeVector(p, blendThirds(a, b, c));
        storeVector(p + 64, blendThirds(b, c, a));
        storeVector(p + 128, blendThirds(c, a, b));
    }
};

namespace quads {

// The places of 32 pixels' channels: a and b from two vectors in turn, and c at even places.
struct ScatterPatterns {
    alignas(64) uint8_t ab[2][64];  // [half of the block]
    alignas(64) uint8_t c[2][64];
};

// Words and their neighbours are brought together by interleaves of lanes: lane l takes the pixels 4l, 16 + 4l and the three
// after each, of its half of the block.
constexpr ScatterPatterns scatterPatterns(Order order) {
    ScatterPatterns s{};
    for (int half = 0; half < 2; ++half)
        for (int i = 0; i < 64; ++i) {
            const int inLane = i % 16 / 2, pixel = 32 * half + i / 16 * 4 + inLane / 4 * 16 + inLane % 4;
            const int place = pixel / 16 * 16 + placeInLane(order, pixel % 16);
            s.ab[half][i] = static_cast<uint8_t>(i % 2 * 64 + place);
            s.c[half][i] = static_cast<uint8_t>(place);
        }
    return s;
}

template <Order order>
inline constexpr ScatterPatterns scatter = scatterPatterns(order);

// Where 32 pixels have their channels a and b, and c and d.
struct GatherPatterns {
    alignas(64) uint8_t ab[64];
    alignas(64) uint8_t cd[64];
};

constexpr GatherPatterns gatherPatterns() {
    GatherPatterns g{};
    for (int i = 0; i < 64; ++i) {
        g.ab[i] = static_cast<uint8_t>(i % 32 * 4 + i / 32);
        g.cd[i] = static_cast<uint8_t>(g.ab[i] + 2);
    }
    return g;
}

inline constexpr GatherPatterns gather = gatherPatterns();

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
        // Two channels of half a block each.
        const Register v0 = (Register)loadBytes(p), v1 = (Register)loadBytes(p + 64), v2 = (Register)loadBytes(p + 128),
                       v3 = (Register)loadBytes(p + 192);
        const Register ab = (Register)loadBytes(quads::gather.ab), cd = (Register)loadBytes(quads::gather.cd);
        const Register ab01 = _mm512_permutex2var_epi8(v0, ab, v1), ab23 = _mm512_permutex2var_epi8(v2, ab, v3);
        const Register cd01 = _mm512_permutex2var_epi8(v0, cd, v1), cd23 = _mm512_permutex2var_epi8(v2, cd, v3);
        const auto lowHalves = [](Register low, Register high) {
            return (Bytes)_mm512_inserti64x4(low, _mm512_castsi512_si256(high), 1);
        };
        return {lowHalves(ab01, ab23), (Bytes)_mm512_shuffle_i64x2(ab01, ab23, 0xee), lowHalves(cd01, cd23),
                (Bytes)_mm512_shuffle_i64x2(cd01, cd23, 0xee)};
    }

    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t, Bytes alpha) {
        storeQuarters<order>(t, alpha, [&](int i, Bytes v) ZEL_INLINE_LAMBDA { storeVector(p + 64 * i, v); });
    }

    // Pixels that were dealt out to the lanes in turn by fours.
    template <Order order>
    ZEL_INLINE static void storeDealt(Destination p, Triple t, Bytes alpha) {
        storeQuarters<order>(t, alpha, [&](int i, Bytes v) ZEL_INLINE_LAMBDA { storeVector(p + vectorBytes * i, v); });
    }

    // The fourth byte of every pixel is not written.
    template <Order order>
    ZEL_INLINE static void storeColours(uint8_t* p, Triple t) {
        storeQuarters<order>(t, Bytes{}, [&](int i, Bytes v) ZEL_INLINE_LAMBDA {
            _mm512_mask_storeu_epi8(p + 64 * i, 0x7777777777777777u, (Register)v);
        });
    }

  private:
    // Calls put(i, v) for the quarters of the 16 pixels of all lanes.
    template <Order order, class Put>
    ZEL_INLINE static void storeQuarters(Triple t, Bytes alpha, const Put& put) {
        constexpr auto& patterns = quads::scatter<order>;
        unrolled<2>([&](int half) ZEL_INLINE_LAMBDA {
            const auto ab = (Words)_mm512_permutex2var_epi8((Register)t.a, _mm512_load_si512(patterns.ab[half]), (Register)t.b);
            const auto cd = (Words)_mm512_mask_permutexvar_epi8((Register)alpha, 0x5555555555555555,
                                                                _mm512_load_si512(patterns.c[half]), (Register)t.c);
            put(2 * half, (Bytes)interleaveLow(ab, cd));
            put(2 * half + 1, (Bytes)interleaveHigh(ab, cd));
        });
    }
};

constexpr Order wordOrder(Order) { return Order::natural; }

struct JoinPatterns {
    alignas(64) uint8_t half[2][64];  // of the pixels
};
template <Order order>
inline constexpr JoinPatterns joinPatterns = [] {
    JoinPatterns p{};
    for (int i = 0; i < 128; ++i) {
        const int pixel = i / 2, source = i % 2;
        p.half[i / 64][i % 64] = static_cast<uint8_t>(64 * source + pixel / 16 * 16 + placeInLane(order, pixel % 16));
    }
    return p;
}();

// From the bytes of two channels, the low ones of the words first.
template <Order order>
ZEL_INLINE PixelWords joinBytes(Bytes low, Bytes high) {
    const auto half = [&](int i) {
        const Register pattern = _mm512_load_si512(joinPatterns<order>.half[i]);
        return (Words)_mm512_permutex2var_epi8((Register)low, pattern, (Register)high);
    };
    return {half(0), half(1)};
}

// The order is that of the channels from which the words come.
template <Order order>
ZEL_INLINE void storePixelWords(Destination p, PixelWords w) {
    storeVector(p, w.low);
    storeVector(p + vectorBytes, w.high);
}

}  // namespace zel::ZEL_LEVEL
