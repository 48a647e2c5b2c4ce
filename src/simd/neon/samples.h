// Interleaved samples by loads and stores of structures.
#pragma once

#include "simd/samples.h"

namespace zel::ZEL_LEVEL {

namespace arm {

// Structures of three and four samples of `size` bytes.
template <int size>
ZEL_INLINE void loadThree(const uint8_t* p, Bytes (&v)[3]) {
    const auto parts = [&] {
        if constexpr (size == 1) return vld3q_u8(p);
        if constexpr (size == 2) return vld3q_u16(reinterpret_cast<const uint16_t*>(p));
        if constexpr (size == 4) return vld3q_u32(reinterpret_cast<const uint32_t*>(p));
        if constexpr (size == 8) return vld3q_u64(reinterpret_cast<const uint64_t*>(p));
    }();
    for (int i = 0; i < 3; ++i) v[i] = (Bytes)parts.val[i];
}
template <int size>
ZEL_INLINE void loadFour(const uint8_t* p, Bytes (&v)[4]) {
    const auto parts = [&] {
        if constexpr (size == 1) return vld4q_u8(p);
        if constexpr (size == 2) return vld4q_u16(reinterpret_cast<const uint16_t*>(p));
        if constexpr (size == 4) return vld4q_u32(reinterpret_cast<const uint32_t*>(p));
        if constexpr (size == 8) return vld4q_u64(reinterpret_cast<const uint64_t*>(p));
    }();
    for (int i = 0; i < 4; ++i) v[i] = (Bytes)parts.val[i];
}
template <int size>
ZEL_INLINE void storeThree(uint8_t* p, Bytes a, Bytes b, Bytes c) {
    if constexpr (size == 1) vst3q_u8(p, (uint8x16x3_t{{u8(a), u8(b), u8(c)}}));
    if constexpr (size == 2) vst3q_u16(reinterpret_cast<uint16_t*>(p), (uint16x8x3_t{{u16(a), u16(b), u16(c)}}));
    if constexpr (size == 4) vst3q_u32(reinterpret_cast<uint32_t*>(p), (uint32x4x3_t{{u32(a), u32(b), u32(c)}}));
    if constexpr (size == 8) vst3q_u64(reinterpret_cast<uint64_t*>(p), (uint64x2x3_t{{u64(a), u64(b), u64(c)}}));
}
template <int size>
ZEL_INLINE void storeFour(uint8_t* p, Bytes a, Bytes b, Bytes c, Bytes d) {
    if constexpr (size == 1) vst4q_u8(p, (uint8x16x4_t{{u8(a), u8(b), u8(c), u8(d)}}));
    if constexpr (size == 2) vst4q_u16(reinterpret_cast<uint16_t*>(p), (uint16x8x4_t{{u16(a), u16(b), u16(c), u16(d)}}));
    if constexpr (size == 4) vst4q_u32(reinterpret_cast<uint32_t*>(p), (uint32x4x4_t{{u32(a), u32(b), u32(c), u32(d)}}));
}

}  // namespace arm

namespace samples {

template <class Depth>
ZEL_INLINE void loadBytesAsFloats(const uint8_t* p, Floats (&x)[3][4]) {
    const Triple t = Interleaved3::load(p);
    const Bytes channels[3] = {t.a, t.b, t.c};
    unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA { x[c][part] = Depth::template toFloats<part>(channels[c]); });
    });
}

}  // namespace samples

template <class Depth>
struct InterleavedThree {
    using V = typename Depth::Vector;
    static constexpr int size = sizeof(typename Depth::Element), bytes = 3 * size;

    ZEL_INLINE static Channels<V> load(const uint8_t* p) {
        Bytes v[3];
        arm::loadThree<size>(p, v);
        return {(V)v[0], (V)v[1], (V)v[2]};
    }
    ZEL_INLINE static void store(Destination p, Channels<V> x) { arm::storeThree<size>(p, (Bytes)x.a, (Bytes)x.b, (Bytes)x.c); }
};

template <class Depth>
struct InterleavedFour {
    using V = typename Depth::Vector;
    static constexpr int size = sizeof(typename Depth::Element), bytes = 4 * size;

    ZEL_INLINE static Channels<V> load(const uint8_t* p) {
        Bytes v[4];
        arm::loadFour<size>(p, v);
        return {(V)v[0], (V)v[1], (V)v[2]};
    }
};

// Result `v` of as many vectors as there are channels; of four, the last sample of each pixel is alpha instead.
template <int size, int channels>
class Repeated {
    struct Places {
        alignas(16) uint8_t of[channels][16], alpha[16];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int v = 0; v < channels; ++v)
            for (int i = 0; i < 16; ++i) {
                const bool isAlpha = channels == 4 && i / size % 4 == 3;
                p.of[v][i] = isAlpha ? triples::none : uint8_t((v * 16 + i) / size / channels * size + i % size);
                p.alpha[i] = isAlpha ? 0xff : 0;
            }
        return p;
    }();

  public:
    ZEL_INLINE Repeated(const uint8_t* samples, uint32_t alpha)
        : samples_(loadBytes(samples)), alpha_(splat(alpha) & loadBytes(places.alpha)) {}

    template <int v>
    ZEL_INLINE Bytes vector() const {
        const Bytes repeated = shuffle(samples_, loadBytes(places.of[v]));
        return channels == 4 ? repeated | alpha_ : repeated;
    }

  private:
    ZEL_INLINE static Bytes splat(uint32_t element) {
        if constexpr (size == 1) return splatByte(uint8_t(element));
        if constexpr (size == 2) return (Bytes)splatWord(int(element));
        return (Bytes)splatDword(int32_t(element));
    }

    const Bytes samples_, alpha_;
};

// A vector of four-sample pixels to memory, but for the fourth sample of each, which is written with what it held.
template <int size>
ZEL_INLINE void storeThreeOfFour(uint8_t* p, Bytes v) {
    const uint8x16_t isColour = [] {
        if constexpr (size == 1) return (uint8x16_t)vdupq_n_u32(0x00ffffff);
        if constexpr (size == 2) return (uint8x16_t)vdupq_n_u64(0x0000ffffffffffff);
        return arm::u8(UDwords{~0u, ~0u, ~0u, 0});
    }();
    storeVector(p, (Bytes)vbslq_u8(isColour, arm::u8(v), arm::u8(loadBytes(p))));
}

template <int size, class V>
ZEL_INLINE void storeFour(Destination p, Channels<V> x, V fourth) {
    arm::storeFour<size>(p, (Bytes)x.a, (Bytes)x.b, (Bytes)x.c, (Bytes)fourth);
}

template <int size, class V>
ZEL_INLINE void storeThree(uint8_t* p, Channels<V> x) {
    Bytes kept[4];
    arm::loadFour<size>(p, kept);
    arm::storeFour<size>(p, (Bytes)x.a, (Bytes)x.b, (Bytes)x.c, kept[3]);
}

}  // namespace zel::ZEL_LEVEL
