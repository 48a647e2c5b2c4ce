// Pixel layouts on the streams of a row: where a kernel's blocks come from and go to.
#pragma once

#include "frame/kernel.h"
#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// Packed pixels in one stream for each of the rows that are done at once.
template <class Pixels>
struct FromPacked {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int r = 0) {
        return Pixels::load(row.in[r] + block * blockPixels * Pixels::bytes);
    }
};
using From3 = FromPacked<Interleaved3>;
using From4 = FromPacked<Interleaved4>;

// Three streams for each row.
struct FromPlanes {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int r = 0) {
        const auto plane = [&](int i) { return loadBytes(row.in[3 * r + i] + block * blockPixels); };
        return {plane(0), plane(1), plane(2)};
    }
};

// Pixels whose channels stand in the reverse order, for rules that name channels by their colour.
template <class From>
struct FromReversed {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int r = 0) {
        const Triple t = From::load(row, block, r);
        return {t.c, t.b, t.a};
    }
};

struct ToPacked3 {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        Interleaved3::store<order>(row.out[r] + block * blockPixels * 3, t);
    }
};

// The fourth byte of every pixel is the caller's alpha.
struct ToPacked4 {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        Interleaved4::store<order>(row.out[r] + block * blockPixels * 4, t, splatByte(uint8_t(row.alpha.bits)));
    }

    static constexpr bool wantsDealt = Interleaved4::wantsDealt;
    template <Order order>
    ZEL_INLINE static void storeDealt(const Row& row, int r, size_t block, Triple t) {
        Interleaved4::storeDealt<order>(row.out[r] + block * blockPixels * 4, t, splatByte(uint8_t(row.alpha.bits)));
    }
};

// The fourth byte of every pixel stays.
struct ToColoursOf4 {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        Interleaved4::storeColours<order>(row.out[r] + block * blockPixels * 4, t);
    }
};

template <class To>
struct ToReversed {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        To::template store<order>(row, r, block, {t.c, t.b, t.a});
    }
};

struct ToPlanes {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        const auto put = [&](int i, Bytes v) {
            storeVector(row.out[3 * r + i] + block * blockPixels,
                        order == Order::natural ? v : shuffle(v, everyLane(quads::natural)));
        };
        put(0, t.a);
        put(1, t.b);
        put(2, t.c);
    }
};

// A rule from pixels to pixels, of one row.
template <class From, class Rule, class To>
struct PixelKernel : FewOperations {
    using Constants = typename Rule::Constants;
    static constexpr int sites = blockPixels;
    static constexpr bool seesPlace = looksAtPlace<To>;

    Rule rule;

    ZEL_INLINE explicit PixelKernel(const Constants& k) : rule(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        To::template store<Rule::order>(row, 0, block, rule(From::load(row, block)));
    }
};

}  // namespace zel::ZEL_LEVEL
