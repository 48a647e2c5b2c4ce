// From RGB to sites of two pixels a row, on one row or on two: luma of each pixel, chroma from sums over the pixels of a site.
#pragma once

#include "lumachroma/layouts.h"
#include "lumachroma/rules/chroma_pairs.h"

namespace zel::ZEL_LEVEL {

// Chroma to two planes, and to bytes in turn.
template <class Pair>
ZEL_INLINE void storeSites(uint8_t* first, uint8_t* second, Pair chroma) {
    storeHalves(first, second, chroma.bounded());
}
template <class Pair>
ZEL_INLINE Bytes inTurn(Pair chroma) {
    return shuffle(chroma.bounded(), everyLane(quads::natural));
}

// Destinations. The first chroma stream follows the luma rows. Chroma is bounded to bytes.
struct ToChromaPlanes {
    static constexpr bool hasLumaStreams = true;
    template <class Pair>
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes, Pair chroma) {
        const size_t at = block * blockPixels / 2;
        storeSites(row.out[stream] + at, row.out[stream + 1] + at, chroma);
    }
};

struct ToChromaInterleaved {
    static constexpr bool hasLumaStreams = true;
    template <class Pair>
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes, Pair chroma) {
        storeVector(row.out[stream] + block * blockPixels, inTurn(chroma));
    }
};

template <Packed packed>
struct ToPacked422 {
    static constexpr bool hasLumaStreams = false;
    template <class Pair>
    ZEL_INLINE static void store(const Row& row, int, size_t block, Bytes luma, Pair chroma) {
        const Bytes pairs = inTurn(chroma);
        const bool lumaFirst = packed == Packed::lumaFirst;
        storeInterleaved(row.out[0] + block * blockPixels * 2, lumaFirst ? luma : pairs, lumaFirst ? pairs : luma);
    }
};
using ToPackedPairs = ToPacked422<Packed::lumaFirst>;
using ToChromaFirst = ToPacked422<Packed::chromaFirst>;

// A rule for luma of single pixels, and one for chroma of the sums of the channels over a site, 2^lift times.
template <class Luma, class Chroma>
struct SiteMatrix {
    using Constants = EncodeConstants<Luma, Chroma>;
    struct Sums {
        Words a, b, c;
    };

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit SiteMatrix(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

    ZEL_INLINE Bytes lumaOf(Triple t, Sums& sums) const {
        sums.a += pairSums<Chroma::lift>(t.a);
        sums.b += pairSums<Chroma::lift>(t.b);
        sums.c += pairSums<Chroma::lift>(t.c);
        return luma(t);
    }
    ZEL_INLINE auto chromaOf(const Sums& sums) const { return chroma(sums.a, sums.b, sums.c); }
};

// The rule gives luma of each row's pixels and gathers what chroma is made of.
template <int rows, class From, class Rule, class To>
struct EncodePairs : FewOperations {
    using Constants = typename Rule::Constants;
    static constexpr int sites = blockPixels / 2;

    Rule rule;

    ZEL_INLINE explicit EncodePairs(const Constants& k) : rule(k) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        typename Rule::Sums sums{};
        Bytes y{};
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            y = rule.lumaOf(From::load(row, block, r), sums);
            if constexpr (To::hasLumaStreams) storeVector(row.out[r] + block * blockPixels, y);
        });
        To::store(row, rows, block, y, rule.chromaOf(sums));
    }
};

}  // namespace zel::ZEL_LEVEL
