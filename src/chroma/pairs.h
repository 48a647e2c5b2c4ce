// Where chroma comes from and goes to. In between it is a vector of pairs: the two chroma samples of a site in turn, as many
// pairs as half a vector has bytes. In rules that fold rows of 4:1:1 into 4:2:0 or back, the two pairs of a dword belong to two
// rows.
//
// Packed layouts carry luma as well, which moves along: their luma streams come before the chroma streams of the other side.
#pragma once

#include "frame/passes.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

enum class PackedOrder { lumaFirst, chromaFirst };

struct Unpacked {
    Bytes luma, pairs;
};

// A vector's worth of pixels.
template <PackedOrder order>
ZEL_INLINE Unpacked unpack(const uint8_t* p) {
    const Bytes first = loadBytes(p), second = loadBytes(p + vectorBytes);
    const Bytes even = evenBytes(first, second), odd = oddBytes(first, second);
    return order == PackedOrder::lumaFirst ? Unpacked{even, odd} : Unpacked{odd, even};
}

template <PackedOrder order>
ZEL_INLINE void storePacked(Destination p, Bytes luma, Bytes pairs) {
    if constexpr (order == PackedOrder::lumaFirst)
        storeInterleaved(p, luma, pairs);
    else
        storeInterleaved(p, pairs, luma);
}

alignas(16) inline constexpr uint8_t firstThenSecond[16] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
alignas(16) inline constexpr uint8_t evenPairsThenOdd[16] = {0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15};
alignas(16) inline constexpr uint8_t byDwordPlace[16] = {0, 4, 8, 12, 2, 6, 10, 14, 1, 5, 9, 13, 3, 7, 11, 15};

ZEL_INLINE Bytes loadPairs(const uint8_t* first, const uint8_t* second) {
    return (Bytes)(loadWidened(first) | loadWidened(second) << 8);
}

ZEL_INLINE void storePairs(uint8_t* first, uint8_t* second, Bytes pairs) {
    storeHalves(first, second, shuffle(pairs, everyLane(firstThenSecond)));
}

// The pairs of a block and of the next one.
struct TwoBlocks {
    Bytes first, second;
};

// Sources. `stream` is the first one of chroma; streams of two rows follow each other row by row.

// `rows` rows of packed pixels; the chroma of the first one counts.
template <int rows, PackedOrder order>
struct PairsFromPacked {
    static constexpr int lumaStreams = rows;
    ZEL_INLINE static Bytes load(const Row& row, int, size_t block) {
        Bytes pairs{};
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            const Unpacked u = unpack<order>(row.in[r] + block * 2 * vectorBytes);
            storeVector(row.out[r] + block * vectorBytes, u.luma);
            if (r == 0) pairs = u.pairs;
        });
        return pairs;
    }
};

struct PairsFromInterleaved {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static Bytes load(const Row& row, int stream, size_t block) {
        return loadBytes(row.in[stream] + block * vectorBytes);
    }
};

struct PairsFromPlanes {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static Bytes load(const Row& row, int stream, size_t block) {
        const size_t at = block * vectorBytes / 2;
        return loadPairs(row.in[stream] + at, row.in[stream + 1] + at);
    }
    ZEL_INLINE static TwoBlocks loadTwo(const Row& row, int stream, size_t block) {
        const size_t at = block * vectorBytes / 2;
        const auto samples = [&](int i) { return spreadHalves(loadBytes(row.in[stream + i] + at)); };
        const Bytes first = samples(0), second = samples(1);
        return {interleaveLow(first, second), interleaveHigh(first, second)};
    }
};

// Of 4:1:1: each pair twice, or pairs of two rows in turn.
template <int rows>
struct FromQuarterInterleaved {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static Bytes load(const Row& row, int stream, size_t block) {
        const auto pairs = [&](int r) { return loadWordsAsDwords(row.in[stream + r] + block * vectorBytes / 2); };
        const UDwords first = pairs(0), second = rows == 1 ? first : pairs(1);
        return (Bytes)(first | second << 16);
    }
};

template <int rows>
struct FromQuarterPlanes {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static Bytes load(const Row& row, int stream, size_t block) {
        const auto samples = [&](int i) { return loadBytesAsDwords(row.in[stream + i] + block * vectorBytes / 4); };
        const UDwords first = samples(0) | samples(1) << 8, second = rows == 1 ? first : samples(2) | samples(3) << 8;
        return (Bytes)(first | second << 16);
    }
};

// Destinations.

// The same chroma in `rows` rows of packed pixels.
template <int rows, PackedOrder order>
struct PairsToPacked {
    static constexpr int lumaStreams = rows;
    ZEL_INLINE static void store(const Row& row, int, size_t block, Bytes pairs) {
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            storePacked<order>(row.out[r] + block * 2 * vectorBytes, loadBytes(row.in[r] + block * vectorBytes), pairs);
        });
    }
};

struct PairsToInterleaved {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes pairs) {
        storeVector(row.out[stream] + block * vectorBytes, pairs);
    }
};

template <int rows>
struct PairsToPlanes {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes pairs) {
        const size_t at = block * vectorBytes / 2;
        unrolled<rows>(
            [&](int r) ZEL_INLINE_LAMBDA { storePairs(row.out[stream + 2 * r] + at, row.out[stream + 2 * r + 1] + at, pairs); });
    }
    ZEL_INLINE static void storeTwo(const Row& row, int stream, size_t block, TwoBlocks pairs) {
        const size_t at = block * vectorBytes / 2;
        const Bytes first = evenBytes(pairs.first, pairs.second), second = oddBytes(pairs.first, pairs.second);
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            storeVector(row.out[stream + 2 * r] + at, first);
            storeVector(row.out[stream + 2 * r + 1] + at, second);
        });
    }
};

// To 4:1:1: every second pair, from the first one, or those and the others to a second row.
template <int rows>
struct ToQuarterInterleaved {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes pairs) {
        const size_t at = block * vectorBytes / 2;
        const Bytes sorted = shuffle(pairs, everyLane(evenPairsThenOdd));
        if constexpr (rows == 2)
            storeHalves(row.out[stream] + at, row.out[stream + 1] + at, sorted);
        else
            storeLowHalves(row.out[stream] + at, sorted);
    }
};

template <int rows>
struct ToQuarterPlanes {
    static constexpr int lumaStreams = 0;
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Bytes pairs) {
        const size_t at = block * vectorBytes / 4;
        const Bytes sorted = shuffle(pairs, everyLane(byDwordPlace));
        storeQuarters(row.out[stream] + at, row.out[stream + 1] + at, sorted);
        if constexpr (rows == 2)
            storeQuarters(row.out[stream + 2] + at, row.out[stream + 3] + at, (Bytes)((UQwords)sorted >> 32));
    }
};

// A site takes `siteBytes` of the pairs. Planes are half as wide as pairs, so two blocks at a time give them whole vectors.
template <int siteBytes, class From, class To>
struct PairsKernel {
    using Constants = NoConstants;
    static constexpr int sites = vectorBytes / siteBytes;
    static constexpr int blocksAtOnce = 4;  // nothing but moves lies between them
    static constexpr bool keepsUp = true;

    ZEL_INLINE static void blocks(const Constants&, const Row& row, size_t count) {
        constexpr int in = To::lumaStreams, out = From::lumaStreams;
        constexpr bool loadsTwo = requires { From::loadTwo(row, in, count); };
        constexpr bool storesTwo = requires { To::storeTwo(row, out, count, TwoBlocks{}); };
        size_t i = 0;
        for (; (loadsTwo || storesTwo) && i + 2 <= count; i += 2) {
            TwoBlocks pairs;
            if constexpr (loadsTwo)
                pairs = From::loadTwo(row, in, i);
            else
                pairs = {From::load(row, in, i), From::load(row, in, i + 1)};
            if constexpr (storesTwo) {
                To::storeTwo(row, out, i, pairs);
            } else {
                To::store(row, out, i, pairs.first);
                To::store(row, out, i + 1, pairs.second);
            }
        }
        for (; i < count; ++i) To::store(row, out, i, From::load(row, in, i));
    }
};

}  // namespace zel::ZEL_LEVEL
