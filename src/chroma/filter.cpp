// 4:2:0 with filtered rows: chroma interpolated by four taps on the way to 4:2:2, and images or slices of them whose luma and
// chroma rows are smoothed.
#include "chroma/means.h"
#include "chroma/pairs.h"
#include "chroma/row_copy.h"
#include "chroma/slices.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// (-1, 9, 9, -1) / 16, rounded.
class FourTaps {
  public:
    ZEL_INLINE Bytes operator()(Bytes a, Bytes b, Bytes c, Bytes d) const {
        return packBytes(sixteenths(interleaveLow(b, c), interleaveLow(a, d)),
                         sixteenths(interleaveHigh(b, c), interleaveHigh(a, d)));
    }

  private:
    ZEL_INLINE Words sixteenths(Bytes inner, Bytes outer) const {
        return (mulAddBytes(inner, inner_) + mulAddBytes(outer, outer_) + splatWord(8)) >> 4;
    }

    Bytes inner_ = splatByte(9), outer_ = splatByte(0xff);
};

// Four rows to the second of them and the row between the second and the third. A plane, or interleaved chroma to two planes.
template <bool isInterleaved>
struct FourTapKernel {
    static constexpr int sites = isInterleaved ? vectorBytes / 2 : vectorBytes;

    FourTaps taps{};

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int r) ZEL_INLINE_LAMBDA { return loadBytes(row.in[r] + block * vectorBytes); };
        const Bytes a = in(0), b = in(1), c = in(2), d = in(3), between = taps(a, b, c, d);
        if constexpr (isInterleaved) {
            storePairs(row.out[0] + block * sites, row.out[1] + block * sites, b);
            storePairs(row.out[2] + block * sites, row.out[3] + block * sites, between);
        } else {
            storeVector(row.out[0] + block * vectorBytes, b);
            storeVector(row.out[1] + block * vectorBytes, between);
        }
    }
};

// The four source rows, from the one that the first output row repeats.
struct TapRows {
    int8_t rows[4];
};

constexpr Conversion fourTapPlane(uint8_t from, uint8_t to, TapRows taps) {
    Conversion c{.site = {2, 2},
                 .from = {4, {}},
                 .to = layoutOf({{to, 1, 0, 2}, {to, 1, 1, 2}}),
                 .block = withoutConstants<FourTapKernel<false>>};
    for (int i = 0; i < 4; ++i) c.from.streams[i] = {from, 1, taps.rows[i]};
    return c;
}
constexpr Conversion fourTapInterleaved(TapRows taps) {
    Conversion c{.site = {2, 2},
                 .from = {4, {}},
                 .to = layoutOf({{1, 1, 0, 2}, {2, 1, 0, 2}, {1, 1, 1, 2}, {2, 1, 1, 2}}),
                 .block = withoutConstants<FourTapKernel<true>>};
    for (int i = 0; i < 4; ++i) c.from.streams[i] = {1, 2, taps.rows[i]};
    return c;
}

// Rows beyond the first and the last are those again.
constexpr TapRows tapsFirst{{0, 0, 1, 2}}, tapsInside{{-1, 0, 1, 2}}, tapsNextToLast{{-1, 0, 1, 1}}, tapsLast{{-1, 0, 0, 0}};
constexpr Groups first{0, 1}, last{-1, 0}, inside{1, -1}, allButFirst{1, 0}, allButLast{0, -1};
constexpr Groups insideOfTaps{1, -2}, nextToLast{-2, -1};

template <uint8_t from, uint8_t to>
constexpr Conversion planeParts[] = {fourTapPlane(from, to, tapsFirst), fourTapPlane(from, to, tapsInside),
                                     fourTapPlane(from, to, tapsNextToLast), fourTapPlane(from, to, tapsLast)};
constexpr Conversion interleavedParts[] = {fourTapInterleaved(tapsFirst), fourTapInterleaved(tapsInside),
                                           fourTapInterleaved(tapsNextToLast), fourTapInterleaved(tapsLast)};

template <int firstSource>
constexpr Pass planesTo422[] = {{copyLuma},
                                {planeParts<firstSource, 1>[0], first},
                                {planeParts<firstSource, 1>[1], insideOfTaps},
                                {planeParts<firstSource, 1>[2], nextToLast},
                                {planeParts<firstSource, 1>[3], last},
                                {planeParts<3 - firstSource, 2>[0], first},
                                {planeParts<3 - firstSource, 2>[1], insideOfTaps},
                                {planeParts<3 - firstSource, 2>[2], nextToLast},
                                {planeParts<3 - firstSource, 2>[3], last}};
constexpr Pass interleavedTo422[] = {{copyLuma},
                                     {interleavedParts[0], first},
                                     {interleavedParts[1], insideOfTaps},
                                     {interleavedParts[2], nextToLast},
                                     {interleavedParts[3], last}};

// Smoothing rules for a row b between a and c. The vector form of old rounds up at each of its two levels and the scalar form
// cuts off; which pixels have which is part of the result.
struct RoundedTwice {
    static constexpr Mean chroma = Mean::rounded;
    ZEL_INLINE static Bytes luma(Bytes a, Bytes b, Bytes c) { return mean(mean(a, b), mean(b, c)); }
};

// (a + 2 b + c) >> 2
struct CutOff {
    static constexpr Mean chroma = Mean::truncated;
    ZEL_INLINE static Bytes luma(Bytes a, Bytes b, Bytes c) { return meanOf<Mean::truncated>(meanOf<Mean::truncated>(a, c), b); }
};

// (a + 2 b + c + 4) >> 2, bounded: a whole level more, not a rounding. Meant: without it luma would fall by one
// level. Chroma does without.
struct Raised {
    static constexpr Mean chroma = Mean::truncated;
    ZEL_INLINE static Bytes luma(Bytes a, Bytes b, Bytes c) { return addSaturated(CutOff::luma(a, b, c), splatByte(1)); }
};

// Streams: four rows of luma and two of interleaved chroma to two packed rows.
template <class Rule>
struct SmoothPacked : FewOperations {
    static constexpr int sites = vectorBytes / 2;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int i) ZEL_INLINE_LAMBDA { return loadBytes(row.in[i] + block * vectorBytes); };
        const Bytes above = in(0), upper = in(1), lower = in(2), below = in(3), chroma = meanOf<Rule::chroma>(in(4), in(5));
        const auto out = [&](int r, Bytes luma) ZEL_INLINE_LAMBDA {
            storePacked<PackedOrder::lumaFirst>(row.out[r] + block * 2 * vectorBytes, luma, chroma);
        };
        out(0, Rule::luma(above, upper, lower));
        out(1, Rule::luma(upper, lower, below));
    }
};

template <class Rule>
struct SmoothLuma : FewOperations {
    static constexpr int sites = vectorBytes;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int i) ZEL_INLINE_LAMBDA { return loadBytes(row.in[i] + block * vectorBytes); };
        storeVector(row.out[0] + block * vectorBytes, Rule::luma(in(0), in(1), in(2)));
    }
};

template <class Rule>
struct SmoothChroma : FewOperations {
    static constexpr int sites = vectorBytes / 2;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int i) ZEL_INLINE_LAMBDA { return loadBytes(row.in[i] + block * vectorBytes); };
        storePairs(row.out[0] + block * sites, row.out[1] + block * sites, meanOf<Rule::chroma>(in(0), in(1)));
    }
};

// A rule for the leading columns and one for the others.
struct Rules {
    Kernel leading, others;
    int (*columns)(int width);
};
template <template <class> class K, int multiple>
constexpr Rules roundedThenCutOff{withoutConstants<K<RoundedTwice>>, withoutConstants<K<CutOff>>, wholeBlocks<multiple>};
template <template <class> class K, int multiple>
constexpr Rules roundedThenRaised{withoutConstants<K<RoundedTwice>>, withoutConstants<K<Raised>>, wholeBlocks<multiple>};
template <template <class> class K>
constexpr Rules raised{withoutConstants<K<Raised>>, {}, nullptr};

constexpr Conversion ruled(Site site, Layout from, Layout to, Rules rules) {
    return {.site = site, .from = from, .to = to, .block = rules.leading, .tail = rules.others, .blockColumns = rules.columns};
}

// Where the rows above and below come from: at an edge of the image, from the row itself.
enum class Edge { none, top, bottom, both };

constexpr Conversion packedPair(Edge edge, Rules rules) {
    const bool atTop = edge == Edge::top || edge == Edge::both, atBottom = edge == Edge::bottom || edge == Edge::both;
    const int8_t above = atTop ? 0 : -1, below = atBottom ? 1 : 2, nextChroma = edge == Edge::both ? 0 : atBottom ? -1 : 1;
    return ruled({2, 2}, layoutOf({{0, 2, above, 2}, {0, 2, 0, 2}, {0, 2, 1, 2}, {0, 2, below, 2}, {1, 2}, {1, 2, nextChroma}}),
                 {2, {{0, 4, 0, 2}, {0, 4, 1, 2}}}, rules);
}

constexpr Conversion lumaRow(Edge edge, Rules rules) {
    const int8_t above = edge == Edge::top ? 0 : -1, below = edge == Edge::bottom ? 0 : 1;
    return ruled({1, 1}, layoutOf({{0, 1, above}, {0, 1}, {0, 1, below}}), layoutOf({{0, 1}}), rules);
}

constexpr int leadingChroma(int width) { return (width / 2 & ~15) * 2; }
constexpr Conversion chromaRow(int8_t next) {
    return ruled({2, 2}, layoutOf({{1, 2}, {1, 2, next}}), layoutOf({{2, 1}, {1, 1}}),
                 {withoutConstants<SmoothChroma<RoundedTwice>>, withoutConstants<SmoothChroma<CutOff>>, leadingChroma});
}

constexpr Rules packedEdge = roundedThenCutOff<SmoothPacked, 8>, packedInside = roundedThenCutOff<SmoothPacked, 32>;
constexpr Conversion packedTop = packedPair(Edge::top, packedEdge), packedMiddle = packedPair(Edge::none, packedInside),
                     packedBottom = packedPair(Edge::bottom, packedEdge);
constexpr Conversion packedWholeTop = packedPair(Edge::top, raised<SmoothPacked>),
                     packedWholeInside = packedPair(Edge::none, roundedThenRaised<SmoothPacked, 32>),
                     packedWholeBottom = packedPair(Edge::bottom, raised<SmoothPacked>),
                     packedWholePair = packedPair(Edge::both, raised<SmoothPacked>);

constexpr Pass packedTopSlice[] = {{packedTop, first}, {packedMiddle, allButFirst}};
constexpr Pass packedMiddleSlice[] = {{packedMiddle}};
constexpr Pass packedBottomSlice[] = {{packedMiddle, allButLast}, {packedBottom, last}};
constexpr Pass packedImage[] = {{packedWholeTop, first}, {packedWholeInside, inside}, {packedWholeBottom, last}};
constexpr Pass packedPairImage[] = {{packedWholePair}};

constexpr Rules lumaRules = roundedThenCutOff<SmoothLuma, 16>;
constexpr Conversion lumaTop = lumaRow(Edge::top, lumaRules), lumaInside = lumaRow(Edge::none, lumaRules),
                     lumaBottom = lumaRow(Edge::bottom, lumaRules);
constexpr Conversion lumaPairTop = lumaRow(Edge::top, raised<SmoothLuma>),
                     lumaPairBottom = lumaRow(Edge::bottom, raised<SmoothLuma>);
constexpr Conversion chromaWithNext = chromaRow(1), chromaWithPrevious = chromaRow(-1), chromaAlone = chromaRow(0);

constexpr Pass planesTopSlice[] = {{lumaTop, first}, {lumaInside, allButFirst}, {chromaWithNext}};
constexpr Pass planesMiddleSlice[] = {{lumaInside}, {chromaWithNext}};
constexpr Pass planesBottomSlice[] = {
    {lumaInside, allButLast}, {lumaBottom, last}, {chromaWithNext, allButLast}, {chromaWithPrevious, last}};
constexpr Pass planesImage[] = {
    {lumaTop, first}, {lumaInside, inside}, {lumaBottom, last}, {chromaWithNext, allButLast}, {chromaWithPrevious, last}};
constexpr Pass planesPairImage[] = {{lumaPairTop, first}, {lumaPairBottom, last}, {chromaAlone}};

template <int count>
constexpr Passes inPairs(const Pass (&list)[count]) {
    return passes({2, 2}, list, {2, 2});
}

}  // namespace

namespace rows {

constexpr Passes zeliYCbCr420ToYCbCr422_Filter_8u_P3R = passes({2, 8}, planesTo422<1>, {2, 8});
constexpr Passes zeliYCrCb420ToYCbCr422_Filter_8u_P3R = passes({2, 8}, planesTo422<2>, {2, 8});
constexpr Passes zeliYCbCr420ToYCbCr422_Filter_8u_P2P3R = passes({2, 8}, interleavedTo422, {2, 8});

constexpr Sliced zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R{.sources = 2,
                                                        .destinations = 1,
                                                        .top = inPairs(packedTopSlice),
                                                        .middle = inPairs(packedMiddleSlice),
                                                        .bottom = inPairs(packedBottomSlice),
                                                        .whole = inPairs(packedImage),
                                                        .wholePair = inPairs(packedPairImage)};
constexpr Sliced zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R{.sources = 2,
                                                        .destinations = 3,
                                                        .top = inPairs(planesTopSlice),
                                                        .middle = inPairs(planesMiddleSlice),
                                                        .bottom = inPairs(planesBottomSlice),
                                                        .whole = inPairs(planesImage),
                                                        .wholePair = inPairs(planesPairImage),
                                                        .site = {2, 2},
                                                        .minimum = {2, 2},
                                                        .oddSize = OddSize::accepted,
                                                        .checks = {Check::empty, Check::pointers, Check::planes, Check::size}};

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_filter ~, 1
#define ZEL_GROUP filter
#include "frame/table.h"
