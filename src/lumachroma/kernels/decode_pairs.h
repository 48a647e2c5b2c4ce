// From sites of two pixels a row, on one row or on two, and from sites of four pixels to RGB.
#pragma once

#include "lumachroma/layouts.h"
#include "lumachroma/rules/chroma_order.h"

namespace zel::ZEL_LEVEL {

// Sources: luma of one row or two, and the chroma terms of the sites under them.
template <int rows>
struct FromChromaPlanes {
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int r) { return loadBytes(row.in[r] + block * blockPixels); }
    template <class Rule>
    ZEL_INLINE static auto chroma(const Rule& rule, const Row& row, size_t block) {
        const size_t at = block * blockPixels / 2;
        return rule.chroma(loadWidened(row.in[rows] + at), loadWidened(row.in[rows + 1] + at));
    }
};

struct FromChromaInterleaved {
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int r) { return loadBytes(row.in[r] + block * blockPixels); }
    template <class Rule>
    ZEL_INLINE static auto chroma(const Rule& rule, const Row& row, size_t block) {
        return rule.chroma(loadBytes(row.in[2] + block * blockPixels));
    }
};

template <Packed packed, bool deals = false>
struct FromPacked422 {
    using Dealt = FromPacked422<packed, true>;
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int) {
        return packed == Packed::lumaFirst ? parted(row, block).even : parted(row, block).odd;
    }
    template <class Rule>
    ZEL_INLINE static auto chroma(const Rule& rule, const Row& row, size_t block) {
        return rule.chroma(packed == Packed::lumaFirst ? parted(row, block).odd : parted(row, block).even);
    }

  private:
    ZEL_INLINE static Parted parted(const Row& row, size_t block) {
        return loadParted<deals>(row.in[0] + block * blockPixels * 2);
    }
};
using FromPackedPairs = FromPacked422<Packed::lumaFirst>;
using FromChromaFirst = FromPacked422<Packed::chromaFirst>;

// A rule with the order in which interleaved chroma comes.
template <class Rule>
struct DecodeConstants {
    typename Rule::Constants rule;
    ChromaOrder order;
};

template <int rows, class From, class Rule, class To>
struct DecodePairs : FewOperations {
    using Constants = DecodeConstants<Rule>;
    static constexpr int sites = blockPixels / 2;
    static constexpr bool seesPlace = looksAtPlace<To>;

    Rule rule;

    ZEL_INLINE explicit DecodePairs(const Constants& k) : rule(k.rule, k.order) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        // Sources that can deal pixels out to the lanes do so for destinations that store them faster then.
        if constexpr (requires {
                          typename From::Dealt;
                          requires To::wantsDealt;
                      })
            convert<typename From::Dealt>(
                row, block, [&](int r, Triple t) ZEL_INLINE_LAMBDA { To::template storeDealt<Rule::order>(row, r, block, t); });
        else
            convert<From>(row, block,
                          [&](int r, Triple t) ZEL_INLINE_LAMBDA { To::template store<Rule::order>(row, r, block, t); });
    }

  private:
    template <class Source, class Put>
    ZEL_INLINE void convert(const Row& row, size_t block, const Put& put) const {
        const auto terms = Source::chroma(rule, row, block);
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA { put(r, rule.pixels(Source::luma(row, block, r), terms)); });
    }
};

// Sites of four pixels of one row.
template <class Rule, class To>
struct DecodeQuads : FewOperations {
    using Constants = typename Rule::Constants;
    static constexpr int sites = blockPixels / 4;

    Rule rule;

    ZEL_INLINE explicit DecodeQuads(const Constants& k) : rule(k) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Bytes p = loadQuadrupled(row.in[1] + block * sites), q = loadQuadrupled(row.in[2] + block * sites);
        To::template store<Rule::order>(row, 0, block, rule.pixels(loadBytes(row.in[0] + block * blockPixels), p, q));
    }
};

// An odd pixel of a packed row has a chroma byte of its own; the other one is the previous pair's.
template <Packed packed>
inline void borrowChroma(uint8_t* site, const uint8_t* pixel, int, bool alone) {
    constexpr int y = packed == Packed::lumaFirst ? 0 : 1, c = 1 - y;
    site[y] = site[2 + y] = pixel[y];
    site[c] = pixel[c];
    site[2 + c] = alone ? pixel[c] : pixel[c - 2];
}

// An odd pixel of planes has samples of its own in all of them.
inline void takePixel(uint8_t* site, const uint8_t* pixel, int, bool) { site[0] = pixel[0]; }

}  // namespace zel::ZEL_LEVEL
