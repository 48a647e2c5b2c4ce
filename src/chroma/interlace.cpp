// 4:2:2 to and from 4:2:0 of interlaced frames. Even rows are one field and odd rows the other; chroma is a weighted mean of two
// rows of one field, and the weights differ by field because the fields' chroma rows lie at different heights.
#include "chroma/pairs.h"
#include "chroma/row_copy.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// Of two rows, in eighths.
struct LineWeights {
    uint8_t upper, lower;
};

class WeightedMean {
  public:
    ZEL_INLINE explicit WeightedMean(LineWeights w) : weights_((Bytes)splatWord(w.upper | w.lower << 8)) {}
    ZEL_INLINE Bytes operator()(Bytes upper, Bytes lower) const {
        return packBytes(eighths(interleaveLow(upper, lower)), eighths(interleaveHigh(upper, lower)));
    }

  private:
    ZEL_INLINE Words eighths(Bytes pairs) const { return (mulAddBytes(pairs, weights_) + splatWord(4)) >> 3; }

    Bytes weights_;
};

// Two rows of a field to `rows` rows of it. Streams: the two rows of each plane.
template <int rows>
struct FieldPlanes : FewOperations {
    struct Constants {
        LineWeights weights[rows];
    };
    static constexpr int sites = vectorBytes;

    Constants weights;

    ZEL_INLINE explicit FieldPlanes(const Constants& k) : weights(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        unrolled<2>([&](int p) ZEL_INLINE_LAMBDA {
            const Bytes upper = loadBytes(row.in[2 * p] + block * vectorBytes),
                        lower = loadBytes(row.in[2 * p + 1] + block * vectorBytes);
            unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
                storeVector(row.out[rows * p + r] + block * vectorBytes, WeightedMean(weights.weights[r])(upper, lower));
            });
        });
    }
};

// Two packed rows to their luma and one row of chroma.
struct FieldFromPacked : FewOperations {
    using Constants = FieldPlanes<1>::Constants;
    static constexpr int sites = vectorBytes / 2;

    WeightedMean mean;

    ZEL_INLINE explicit FieldFromPacked(const Constants& k) : mean(k.weights[0]) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto in = [&](int r)
                            ZEL_INLINE_LAMBDA { return unpack<PackedOrder::chromaFirst>(row.in[r] + block * 2 * vectorBytes); };
        const Unpacked upper = in(0), lower = in(1);
        storeVector(row.out[0] + block * vectorBytes, upper.luma);
        storeVector(row.out[1] + block * vectorBytes, lower.luma);
        storePairs(row.out[2] + block * sites, row.out[3] + block * sites, mean(upper.pairs, lower.pairs));
    }
};

// Two rows of luma and of each chroma plane to two packed rows.
struct FieldToPacked : FewOperations {
    using Constants = FieldPlanes<2>::Constants;
    static constexpr int sites = vectorBytes / 2;

    WeightedMean first, second;

    ZEL_INLINE explicit FieldToPacked(const Constants& k) : first(k.weights[0]), second(k.weights[1]) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto chroma = [&](int r) ZEL_INLINE_LAMBDA {
            return loadPairs(row.in[2 + r] + block * sites, row.in[4 + r] + block * sites);
        };
        const Bytes upper = chroma(0), lower = chroma(1);
        const auto out = [&](int r, Bytes pairs) ZEL_INLINE_LAMBDA {
            storePacked<PackedOrder::chromaFirst>(row.out[r] + block * 2 * vectorBytes,
                                                  loadBytes(row.in[r] + block * vectorBytes), pairs);
        };
        out(0, first(upper, lower));
        out(1, second(upper, lower));
    }
};

// To 4:2:0: rows 0 and 2 of four make the row of the top field, 1 and 3 that of the bottom field.
constexpr FieldPlanes<1>::Constants topDown{{{6, 2}}}, bottomDown{{{2, 6}}};

// To 4:2:2: rows 2 to 5 of each four and of the next four come from four source rows; the first two and the last two are the
// source's own.
constexpr FieldPlanes<2>::Constants topUp{{{5, 3}, {1, 7}}}, bottomUp{{{7, 1}, {3, 5}}}, own{{{8, 0}, {0, 8}}};

constexpr Conversion perFourRows(Layout from, Layout to, Kernel kernel) {
    return {.site = {2, 4}, .from = from, .to = to, .block = kernel};
}

// The chroma rows a and b of `rows`, by plane.
constexpr Layout chromaRows(int8_t a, int8_t b, uint8_t rows) {
    return layoutOf({{1, 1, a, rows}, {1, 1, b, rows}, {2, 1, a, rows}, {2, 1, b, rows}});
}

constexpr Conversion planesDown(int8_t field, const FieldPlanes<1>::Constants& weights) {
    return perFourRows(chromaRows(field, field + 2, 4), layoutOf({{1, 1, field, 2}, {2, 1, field, 2}}),
                       kernel<FieldPlanes<1>>(weights));
}
constexpr Conversion packedDown(int8_t field, const FieldPlanes<1>::Constants& weights) {
    const int8_t second = field + 2;
    return perFourRows(layoutOf({{0, 4, field, 4}, {0, 4, second, 4}}),
                       {4, {{0, 2, field, 4}, {0, 2, second, 4}, {1, 1, field, 2}, {2, 1, field, 2}}},
                       kernel<FieldFromPacked>(weights));
}

// Chroma rows a and b of the source to rows `first` and `second` of the destination.
constexpr Conversion planesUp(int8_t a, int8_t b, int8_t first, int8_t second, const FieldPlanes<2>::Constants& weights) {
    return perFourRows(chromaRows(a, b, 2), chromaRows(first, second, 4), kernel<FieldPlanes<2>>(weights));
}
constexpr Conversion packedUp(int8_t a, int8_t b, int8_t first, int8_t second, const FieldPlanes<2>::Constants& weights) {
    return perFourRows(layoutOf({{0, 2, first, 4}, {0, 2, second, 4}, {1, 1, a, 2}, {1, 1, b, 2}, {2, 1, a, 2}, {2, 1, b, 2}}),
                       {2, {{0, 4, first, 4}, {0, 4, second, 4}}}, kernel<FieldToPacked>(weights));
}

constexpr Conversion planesDownFields[] = {planesDown(0, topDown), planesDown(1, bottomDown)};
constexpr Conversion packedDownFields[] = {packedDown(0, topDown), packedDown(1, bottomDown)};

constexpr Conversion planesUpParts[] = {planesUp(0, 1, 0, 1, own), planesUp(0, 2, 2, 4, topUp), planesUp(1, 3, 3, 5, bottomUp),
                                        planesUp(0, 1, 2, 3, own)};
constexpr Conversion packedUpParts[] = {packedUp(0, 1, 0, 1, own), packedUp(0, 2, 2, 4, topUp), packedUp(1, 3, 3, 5, bottomUp),
                                        packedUp(0, 1, 2, 3, own)};

constexpr Groups first{0, 1}, allButLast{0, -1}, last{-1, 0};
constexpr Pass planesTo420[] = {{copyLuma}, {planesDownFields[0]}, {planesDownFields[1]}};
constexpr Pass packedTo420[] = {{packedDownFields[0]}, {packedDownFields[1]}};
constexpr Pass planesTo422[] = {{copyLuma},
                                {planesUpParts[0], first},
                                {planesUpParts[1], allButLast},
                                {planesUpParts[2], allButLast},
                                {planesUpParts[3], last}};
constexpr Pass packedTo422[] = {
    {packedUpParts[0], first}, {packedUpParts[1], allButLast}, {packedUpParts[2], allButLast}, {packedUpParts[3], last}};

template <int count>
constexpr Passes interlaced(const Pass (&list)[count]) {
    Passes p = passes({2, 4}, list, {2, 4});
    p.oddSize = OddSize::warned;
    return p;
}

}  // namespace

namespace rows {

constexpr Passes zeliYCbCr422To420_Interlace_8u_P3R = interlaced(planesTo420);
constexpr Passes zeliCbYCr422ToYCbCr420_Interlace_8u_C2P3R = interlaced(packedTo420);
constexpr Passes zeliYCbCr420To422_Interlace_8u_P3R = interlaced(planesTo422);
constexpr Passes zeliYCbCr420ToCbYCr422_Interlace_8u_P3C2R = interlaced(packedTo422);

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_interlace ~, 1
#define ZEL_GROUP interlace
#include "frame/table.h"
