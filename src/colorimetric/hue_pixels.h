// Kernels of rules from the three channels of 8-bit pixels to three, in every layout of the hue spaces, and what the rules of all
// depths share.
#pragma once

#include <type_traits>

#include "frame/layouts.h"
#include "frame/passes.h"
#include "simd/samples.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Layouts: the streams, and a block of pixels from and to them. The fourth channel is taken along where it is a sample like the
// others.
struct Packed3 {
    static constexpr Layout layout = layoutOf({{0, 3}});
    ZEL_INLINE static Quad load(const Row& row, size_t block) {
        const Triple t = From3::load(row, block);
        return {t.a, t.b, t.c, Bytes{}};
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Quad q) {
        ToPacked3::store<Order::natural>(row, 0, block, {q.a, q.b, q.c});
    }
};
struct Packed4 {
    static constexpr Layout layout = layoutOf({{0, 4}});
    ZEL_INLINE static Quad load(const Row& row, size_t block) {
        return Interleaved4::loadFour(row.in[0] + block * blockPixels * 4);
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Quad q) {
        storeFour<1>(row.out[0] + block * blockPixels * 4, Channels<Bytes>{q.a, q.b, q.c}, q.d);
    }
};
struct ColoursOf4 {
    static constexpr Layout layout = layoutOf({{0, 4}});
    ZEL_INLINE static Quad load(const Row& row, size_t block) { return Packed4::load(row, block); }
    ZEL_INLINE static void store(const Row& row, size_t block, Quad q) {
        ToColoursOf4::store<Order::natural>(row, 0, block, {q.a, q.b, q.c});
    }
};
struct Planes3 {
    static constexpr Layout layout = layoutOf({{0, 1}, {1, 1}, {2, 1}});
    ZEL_INLINE static Quad load(const Row& row, size_t block) {
        const Triple t = FromPlanes::load(row, block);
        return {t.a, t.b, t.c, Bytes{}};
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Quad q) {
        ToPlanes::store<Order::natural>(row, 0, block, {q.a, q.b, q.c});
    }
};
struct Planes4 {
    static constexpr Layout layout = layoutOf({{0, 1}, {1, 1}, {2, 1}, {3, 1}});
    ZEL_INLINE static Quad load(const Row& row, size_t block) {
        const Triple t = FromPlanes::load(row, block);
        return {t.a, t.b, t.c, loadBytes(row.in[3] + block * blockPixels)};
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Quad q) {
        ToPlanes::store<Order::natural>(row, 0, block, {q.a, q.b, q.c});
        storeVector(row.out[3] + block * blockPixels, q.d);
    }
};

// Rule::of is a function of a pixel.
template <class From, class To, class Rule>
struct HueKernel {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Quad q = From::load(row, block);
        const Triple t = Rule::of({q.a, q.b, q.c});
        To::store(row, block, {t.a, t.b, t.c, q.d});
    }
};

template <class From, class To, class Block, class Tail = Block>
constexpr Conversion hueConversion(int (*blockColumns)(int width) = nullptr) {
    Conversion c{.site = {1, 1},
                 .from = From::layout,
                 .to = To::layout,
                 .block = withoutConstants<HueKernel<From, To, Block>>,
                 .keepsAlpha = std::is_same_v<To, ColoursOf4>};
    if (!std::is_same_v<Block, Tail>) {
        c.tail = withoutConstants<HueKernel<From, To, Tail>>;
        c.blockColumns = blockColumns;
    }
    return c;
}

// What a pixel's extremes say about it.
struct Extent {
    Bytes highest, range;

    ZEL_INLINE explicit Extent(const Triple& t)
        : highest(atLeast(atLeast(t.a, t.b), t.c)), range(highest - atMost(atMost(t.a, t.b), t.c)) {}
};

// 1 / v as the processor approximates it, and with one step of Newton's method.
struct Bare {
    ZEL_INLINE static Floats of(Floats v) { return approximateReciprocal(v); }
};
struct Refined {
    ZEL_INLINE static Floats of(Floats v) {
        const Floats r = approximateReciprocal(v);
        return (splatFloat(2) * r) - ((v * r) * r);
    }
};

// The pixels 4 part to 4 part + 3 of every lane, as floats.
template <int part>
ZEL_INLINE Floats floatsOf(Bytes v) {
    constexpr uint8_t none = triples::none, first = 4 * part;
    alignas(16) static constexpr uint8_t places[16] = {first,     none, none, none, first + 1, none, none, none,
                                                       first + 2, none, none, none, first + 3, none, none, none};
    return toFloats((Dwords)shuffle(v, everyLane(places)));
}

// Floats of which two bytes are told, those of the sign, the exponent and the highest places.
template <int part>
ZEL_INLINE Floats floatsOf(Bytes low, Bytes high) {
    const auto words = (Words)(part < 2 ? interleaveLow(low, high) : interleaveHigh(low, high));
    return (Floats)(part % 2 == 0 ? interleaveLow(Words{}, words) : interleaveHigh(Words{}, words));
}

// Four vectors of dwords, one for each part, as bytes, limited to 0 to 255.
ZEL_INLINE Bytes bytesOf(const Dwords (&v)[4]) { return packBytes(packWords(v[0], v[1]), packWords(v[2], v[3])); }

}  // namespace zel::ZEL_LEVEL
