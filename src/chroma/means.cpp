// Chroma resampled by means of two neighbours: 4:1:1 to and from 4:2:0, 1620 to and from 4:2:0. Luma moves unchanged.
//
// A mean rounds up or down by its place in the row: the leading columns round up. Meant: nothing but the width
// of the blocks of old explains it, but with one rounding for all, samples of every image would change by one.
#include "chroma/means.h"

#include "chroma/row_copy.h"
#include "frame/passes.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// The even samples of two vectors' worth.
ZEL_INLINE Bytes loadEven(const uint8_t* p) { return evenBytes(loadBytes(p), loadBytes(p + vectorBytes)); }

// Sources come as a sample and its right neighbour, a stream each. Destinations take a sample and the mean of the two, in one row
// or in two equal ones.
template <Mean kind, int planes, int rows>
struct AlongRow : FewOperations {
    static constexpr int sites = vectorBytes;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        unrolled<planes>([&](int p) ZEL_INLINE_LAMBDA {
            const Bytes own = loadBytes(row.in[2 * p] + block * vectorBytes),
                        next = loadBytes(row.in[2 * p + 1] + block * vectorBytes);
            const Bytes between = meanOf<kind>(own, next);
            unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
                storeInterleaved(row.out[p * rows + r] + block * 2 * vectorBytes, own, between);
            });
        });
    }
};

// Every second sample of a row, and its mean with the one in the row below.
template <Mean kind>
struct AcrossRows : FewOperations {
    static constexpr int sites = vectorBytes;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        unrolled<2>([&](int p) ZEL_INLINE_LAMBDA {
            const Bytes own = loadEven(row.in[2 * p] + block * 2 * vectorBytes);
            const Bytes below = loadEven(row.in[2 * p + 1] + block * 2 * vectorBytes);
            storeVector(row.out[2 * p] + block * vectorBytes, own);
            storeVector(row.out[2 * p + 1] + block * vectorBytes, meanOf<kind>(own, below));
        });
    }
};

struct EverySecond : FewOperations {
    static constexpr int sites = vectorBytes;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        unrolled<2>([&](int p) ZEL_INLINE_LAMBDA {
            storeVector(row.out[p] + block * vectorBytes, loadEven(row.in[p] + block * 2 * vectorBytes));
        });
    }
};

// Streams: a sample, its right neighbour, and the two below.
template <Mean kind>
struct BothWays : FewOperations {
    static constexpr int sites = vectorBytes;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int i) ZEL_INLINE_LAMBDA { return loadBytes(row.in[i] + block * vectorBytes); };
        const Bytes own = in(0), next = in(1), below = meanOf<kind>(own, in(2)), nextBelow = meanOf<kind>(next, in(3));
        const Bytes between = meanOf<kind>(own, next);
        storeInterleaved(row.out[0] + block * 2 * vectorBytes, own, between);
        storeInterleaved(row.out[1] + block * 2 * vectorBytes, below, meanOf<kind>(between, nextBelow));
    }
};

// The last sample of a row has nothing on its right: its pairs are equal.
template <int planes, int rows>
struct LastAlongRow {
    static constexpr int sites = 1;

    ZEL_INLINE void operator()(const Row& row, size_t) const {
        for (int p = 0; p < planes; ++p)
            for (int r = 0; r < rows; ++r) row.out[p * rows + r][0] = row.out[p * rows + r][1] = *row.in[2 * p];
    }
};

struct LastBothWays {
    static constexpr int sites = 1;

    ZEL_INLINE void operator()(const Row& row, size_t) const {
        const uint8_t own = *row.in[0], below = *row.in[2];
        row.out[0][0] = row.out[0][1] = own;
        row.out[1][0] = row.out[1][1] = static_cast<uint8_t>((own + below) >> 1);
    }
};

// The last site of each row, by a kernel of single sites that keeps to its own samples.
constexpr Conversion lastSite(Conversion c, Kernel kernel) {
    for (Stream& s : c.from.streams) s.offset = 0;
    return {.site = c.site, .from = c.from, .to = c.to, .block = kernel};
}

constexpr Conversion betweenColumns{.site = {4, 2},
                                    .from = layoutOf({{1, 1, 0, 2}, {1, 1, 0, 2, 1}, {2, 1, 0, 2}, {2, 1, 0, 2, 1}}),
                                    .to = layoutOf({{1, 2}, {2, 2}}),
                                    .block = withoutConstants<AlongRow<Mean::rounded, 2, 1>>,
                                    .tail = withoutConstants<AlongRow<Mean::truncated, 2, 1>>,
                                    .blockColumns = wholeBlocks<64>};
constexpr Conversion lastBetweenColumns = lastSite(betweenColumns, withoutConstants<LastAlongRow<2, 1>>);

// The last row takes itself for the one below, so that its means are itself.
constexpr Conversion betweenRows(int8_t below) {
    return {.site = {4, 2},
            .from = layoutOf({{1, 2}, {1, 2, below}, {2, 2}, {2, 2, below}}),
            .to = layoutOf({{1, 1, 0, 2}, {1, 1, 1, 2}, {2, 1, 0, 2}, {2, 1, 1, 2}}),
            .block = withoutConstants<AcrossRows<Mean::rounded>>,
            .tail = withoutConstants<AcrossRows<Mean::truncated>>,
            .blockColumns = wholeBlocks<128>};
}
constexpr Conversion betweenRowsInside = betweenRows(1), betweenRowsLast = betweenRows(0);

constexpr Conversion quarter{.site = {4, 4},
                             .from = layoutOf({{1, 2, 0, 2}, {2, 2, 0, 2}}),
                             .to = layoutOf({{1, 1}, {2, 1}}),
                             .block = withoutConstants<EverySecond>};

template <uint8_t plane>
constexpr Conversion doubled{.site = {4, 4},
                             .from = layoutOf({{plane, 1}, {plane, 1, 0, 1, 1}, {plane, 1, 1}, {plane, 1, 1, 1, 1}}),
                             .to = layoutOf({{plane, 2, 0, 2}, {plane, 2, 1, 2}}),
                             .block = withoutConstants<BothWays<Mean::rounded>>,
                             .tail = withoutConstants<BothWays<Mean::truncated>>,
                             .blockColumns = wholeBlocks<64>};
template <uint8_t plane>
constexpr Conversion lastDoubled = lastSite(doubled<plane>, withoutConstants<LastBothWays>);
template <uint8_t plane>
constexpr Conversion doubledLastRow{.site = {4, 4},
                                    .from = layoutOf({{plane, 1}, {plane, 1, 0, 1, 1}}),
                                    .to = layoutOf({{plane, 2, 0, 2}, {plane, 2, 1, 2}}),
                                    .block = withoutConstants<AlongRow<Mean::rounded, 1, 2>>,
                                    .tail = withoutConstants<AlongRow<Mean::truncated, 1, 2>>,
                                    .blockColumns = wholeBlocks<64>};
template <uint8_t plane>
constexpr Conversion lastDoubledLastRow = lastSite(doubledLastRow<plane>, withoutConstants<LastAlongRow<1, 2>>);

constexpr Groups allButLast{0, -1}, last{-1, 0};
constexpr Pass from411[] = {{copyLuma}, {betweenColumns, {}, &lastBetweenColumns}};
constexpr Pass to411[] = {{copyLuma}, {betweenRowsInside, allButLast}, {betweenRowsLast, last}};
constexpr Pass to1620[] = {{copyLuma}, {quarter}};
constexpr Pass from1620[] = {{copyLuma},
                             {doubled<1>, allButLast, &lastDoubled<1>},
                             {doubledLastRow<1>, last, &lastDoubledLastRow<1>},
                             {doubled<2>, allButLast, &lastDoubled<2>},
                             {doubledLastRow<2>, last, &lastDoubledLastRow<2>}};

// No part of a site is left out: such sizes are errors.
template <int count>
constexpr Passes wholeSites(Site site, const Pass (&list)[count]) {
    Passes p = passes(site, list, {site.width, site.height});
    p.oddSize = OddSize::refused;
    return p;
}

}  // namespace

namespace rows {

constexpr Passes zeliYCbCr411To420_8u_P3R = wholeSites({4, 4}, from411);
constexpr Passes zeliYCbCr420To411_8u_P3R = wholeSites({4, 2}, to411);
constexpr Passes zeliYCbCr420To1620_8u_P3R = wholeSites({4, 4}, to1620);
constexpr Passes zeliYCbCr1620To420_8u_P3R = wholeSites({4, 4}, from1620);

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_means ~, 1
#define ZEL_GROUP means
#include "frame/table.h"
