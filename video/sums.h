// The sums of docs/video.md on vectors. A term is a coefficient of two parts times a sample; the low part's product is cut off by
// 15 bits. The first channel's term is cut off by itself, those of the other two together.
#pragma once

#include "plan.h"
#include "simd/samples.h"
#include "video/lines.h"

namespace zel::ZEL_LEVEL::video {

// What is added to the sums of a channel in a row, for eight columns in turn.
struct alignas(16) Added {
    int32_t of[8];
};

struct Rows {
    Added added[4];
};

// A number that is known when compiled, or else isn't.
template <int known>
struct Shift {
    ZEL_INLINE operator int() const { return known != 0 ? known : bits; }
    int bits;
};

// Calls f with what the depths of most results have.
template <class F>
ZEL_INLINE void withShift(int bits, const F& f) {
    switch (bits) {
        case 13:
            return f(Shift<13>{bits});
        case 19:
            return f(Shift<19>{bits});
        case 21:
            return f(Shift<21>{bits});
        default:
            return f(Shift<0>{bits});
    }
}

// How sums become samples.
template <class Bits>
struct Result {
    ZEL_INLINE Result(Bits bits, int depthBits)
        : shift(bits),
          least(splatWord(-(1 << (depthBits - 1)))),
          most(splatWord((1 << (depthBits - 1)) - 1)),
          middle(splatWord(1 << (depthBits - 1))) {}

    // Of dwords by lanes: words in order.
    ZEL_INLINE Words packed(Dwords low, Dwords high) const { return limited(packWords(low >> int(shift), high >> int(shift))); }
    // Of columns in turn, where results fit words before they are limited.
    ZEL_INLINE Words joined(Dwords even, Dwords odd) const {
        return limited(blend<0xaa>((Words)(even >> int(shift)), (Words)(odd >> (int(shift) - 16))));
    }
    ZEL_INLINE Words limited(Words v) const { return (fillsWords ? v : atMost(atLeast(v, least), most)) + middle; }

    static constexpr bool fillsWords = std::is_same_v<Bits, Shift<13>>;  // as packs do

    Bits shift;
    Words least, most, middle;
};

// A pair of coefficients for words in turn.
struct Term {
    ZEL_INLINE Term(int16_t high0, int16_t high1, int16_t low0, int16_t low1)
        : high(splatWords(high0, high1)), low(splatWords(low0, low1)) {}

    template <bool whole>
    ZEL_INLINE Dwords of(Words pairs) const {
        const Dwords sum = mulAddPairs(pairs, high);
        return whole ? sum : sum + (mulAddPairs(pairs, low) >> 15);
    }

    Words high, low;
};

// A coefficient for the words of two vectors. The low part's product, cut off, is the high half of that by twice the low part,
// which is below 2^14: a word that is added by the same multiplication as the high part's.
struct Single {
    ZEL_INLINE Single(int16_t highPart, int16_t lowPart) : high(splatWords(highPart, 1)), low(splatWord(2 * lowPart)) {}

    template <bool whole>
    ZEL_INLINE void of(Words x, Dwords (&v)[2]) const {
        const Words rest = whole ? Words{} : mulHigh(x, low);
        v[0] = mulAddPairs(interleaveLow(x, rest), high);
        v[1] = mulAddPairs(interleaveHigh(x, rest), high);
    }

    Words high, low;
};

// One channel of itself. `to` and `from` are channels.
template <bool whole, class Bits>
ZEL_INLINE void channelSums(const zelv::Sums& sums, const Added& added, const Result<Bits>& result, int to, int from,
                            const uint16_t* in, uint16_t* out, int count) {
    const Single term(sums.high[to][from], sums.low[to][from]);
    const Dwords low = (Dwords)everyLane(added.of), high = (Dwords)everyLane(added.of + 4);
    for (int i = 0; i < count; i += words) {
        Dwords v[2];
        term.of<whole>(loadLine(in + i), v);
        storeLine(out + i, result.packed(low + v[0], high + v[1]));
    }
}

// A channel whose only term moves it, and whose sums therefore are those of a shift. Halves go up.
ZEL_INLINE void movedSamples(int depth, const uint16_t* in, uint16_t* out, int count) {
    const auto half = (UWords)splatWord(1 << (16 - depth) >> 1);
    const int shift = 16 - depth;
    for (int i = 0; i < count; i += words)
        storeLine(out + i, (Words)(addSaturated((UWords)flipped(loadLine(in + i)), half) >> shift));
}

// What the first term is to several results: one of its own for each, the same for all, or 0.
enum class First { own, shared, none };

// Channels `first` to `last` of all three.
template <bool firstIsWhole, bool allAreWhole, First kind, int first, int last, class Bits>
ZEL_INLINE void matrixSums(const zelv::Sums& sums, const Rows& rows, const Result<Bits>& result, const uint16_t* const (&in)[4],
                           uint16_t* const (&out)[4], int count) {
    // Vectors of their own: what is stored could change the plan, as far as the compiler knows.
    const auto ones = [&](int c) { return Single(sums.high[c][0], sums.low[c][0]); };
    const auto twos = [&](int c) { return Term(sums.high[c][1], sums.high[c][2], sums.low[c][1], sums.low[c][2]); };
    constexpr int second = first < last ? first + 1 : first;
    const Single one[3] = {ones(first), ones(second), ones(last)};
    const Term two[3] = {twos(first), twos(second), twos(last)};
    Dwords added[3][2];
    for (int c = first; c <= last; ++c)
        for (int part = 0; part < 2; ++part) added[c - first][part] = (Dwords)everyLane(rows.added[c].of + 4 * part);
    for (int i = 0; i < count; i += words) {
        const Words x = loadLine(in[0] + i), y = loadLine(in[1] + i), z = loadLine(in[2] + i);
        const Words yzs[2] = {interleaveLow(y, z), interleaveHigh(y, z)};
        Dwords ofFirst[2];
        if constexpr (kind != First::none) one[0].template of<firstIsWhole>(x, ofFirst);
        unrolled<last - first + 1>([&](auto n) ZEL_INLINE_LAMBDA {
            if constexpr (kind == First::own && n != 0) one[n].template of<firstIsWhole>(x, ofFirst);
            const auto half = [&](int part) ZEL_INLINE_LAMBDA {
                const Dwords others = added[n][part] + two[n].template of<allAreWhole>(yzs[part]);
                return kind == First::none ? others : others + ofFirst[part];
            };
            storeLine(out[n + first] + i, result.packed(half(0), half(1)));
        });
    }
}

// What the parts of steps add to the sums of one channel.
struct PartsTerm {
    ZEL_INLINE PartsTerm(const zelv::Sums& sums, int to)
        : first(splatWords(sums.high[to][0], 0)), others(splatWords(sums.high[to][1], sums.high[to][2])) {}

    ZEL_INLINE Dwords of(Words firstPairs, Words otherPairs) const {
        return (mulAddPairs(firstPairs, first) + mulAddPairs(otherPairs, others)) >> 15;
    }

    Words first, others;
};

// Channels `first` to `last` of all three, which have parts of steps; the first channel may have none.
template <int first, int last, class Bits>
ZEL_INLINE void fineSums(const zelv::Sums& sums, const Rows& rows, const Result<Bits>& result, const uint16_t* const (&in)[4],
                         const uint16_t* const (&rest)[4], uint16_t* const (&out)[4], int count) {
    for (int c = first; c <= last; ++c) {
        const Single one(sums.high[c][0], sums.low[c][0]);
        const Term two(sums.high[c][1], sums.high[c][2], sums.low[c][1], sums.low[c][2]);
        const PartsTerm parts(sums, c);
        const Dwords added[2] = {(Dwords)everyLane(rows.added[c].of), (Dwords)everyLane(rows.added[c].of + 4)};
        for (int i = 0; i < count; i += words) {
            const Words y = loadLine(in[1] + i), z = loadLine(in[2] + i), none{};
            const Words e = rest[0] ? loadLine(rest[0] + i) : none, g = loadLine(rest[1] + i), h = loadLine(rest[2] + i);
            Dwords sum[2];
            one.of<false>(loadLine(in[0] + i), sum);
            sum[0] += added[0] + two.of<false>(interleaveLow(y, z)) + parts.of(interleaveLow(e, none), interleaveLow(g, h));
            sum[1] += added[1] + two.of<false>(interleaveHigh(y, z)) + parts.of(interleaveHigh(e, none), interleaveHigh(g, h));
            storeLine(out[c] + i, result.packed(sum[0], sum[1]));
        }
    }
}

// Luma of every column and chroma of every second one to three channels.
template <bool firstIsWhole, bool fitsWords, class Bits>
ZEL_INLINE void siteSums(const zelv::Sums& sums, const Rows& rows, const Result<Bits>& result, const uint16_t* const (&in)[4],
                         uint16_t* const (&out)[4], int count) {
    const Term evens(sums.high[0][0], 0, sums.low[0][0], 0), odds(0, sums.high[0][0], 0, sums.low[0][0]);
    const auto terms = [&](int c) { return Term(sums.high[c][1], sums.high[c][2], sums.low[c][1], sums.low[c][2]); };
    const Term term[3] = {terms(0), terms(1), terms(2)};
    Dwords addedEven[3], addedOdd[3];
    for (int c = 0; c < 3; ++c) {
        const Added& a = rows.added[c];
        const Added byTurns{{a.of[0], a.of[2], a.of[4], a.of[6], a.of[1], a.of[3], a.of[5], a.of[7]}};
        addedEven[c] = (Dwords)everyLane(byTurns.of);
        addedOdd[c] = (Dwords)everyLane(byTurns.of + 4);
    }
    for (int i = 0; i < count; i += 2 * words) {
        const Words u = (Words)spreadHalves((Bytes)loadLine(in[1] + i / 2)),
                    v = (Words)spreadHalves((Bytes)loadLine(in[2] + i / 2));
        const Words sites[2] = {interleaveLow(u, v), interleaveHigh(u, v)};
        unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
            const int at = i + part * words;
            const Words y = loadLine(in[0] + at);
            const Dwords even = evens.of<firstIsWhole>(y), odd = odds.of<firstIsWhole>(y);
            unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
                const Dwords chroma = term[c].template of<false>(sites[part]);
                const Dwords first = even + (chroma + addedEven[c]), second = odd + (chroma + addedOdd[c]);
                if constexpr (fitsWords) {
                    storeLine(out[c] + at, result.joined(first, second));
                } else {
                    storeLine(out[c] + at, result.packed(interleaveLow(first, second), interleaveHigh(first, second)));
                }
            });
        });
    }
}

// All three of three, as floats. Chroma may have parts of steps.
ZEL_INLINE void floatSums(const zelv::Sums& sums, const Rows& rows, int to, const uint16_t* const (&in)[4],
                          const uint16_t* const (&rest)[4], float* out, int count) {
    constexpr int depth = 22;
    const bool isAlpha = to == zelv::alphaChannel;
    const Term one(sums.high[to][0], 0, sums.low[to][0], 0);
    const Term two = isAlpha ? Term(0, 0, 0, 0) : Term(sums.high[to][1], sums.high[to][2], sums.low[to][1], sums.low[to][2]);
    const PartsTerm parts(sums, isAlpha ? 0 : to);
    const int shift = isAlpha ? sums.alphaShift : sums.shift;
    const Added& a = rows.added[to];
    const auto results = [&](Words xs, Words yzs, Words ghs, int part) ZEL_INLINE_LAMBDA {
        Dwords sum = (Dwords)everyLane(a.of + 4 * part) + one.of<false>(xs) + two.of<false>(yzs);
        if (rest[1]) sum += parts.of(Words{}, ghs);
        return (Bytes)(toFloats((sum >> shift) + splatDword(1 << (depth - 1))) * splatFloat(1.0f / (1 << depth)));
    };
    for (int i = 0; i < count; i += words) {
        const Words x = loadLine(in[0] + i), y = loadLine(in[1] + i), z = loadLine(in[2] + i), none{};
        const Words g = rest[1] ? loadLine(rest[1] + i) : none, h = rest[1] ? loadLine(rest[2] + i) : none;
        auto* const p = reinterpret_cast<uint8_t*>(out + i);
        storeLanes(p, 32, results(interleaveLow(x, none), interleaveLow(y, z), interleaveLow(g, h), 0));
        storeLanes(p + 16, 32, results(interleaveHigh(x, none), interleaveHigh(y, z), interleaveHigh(g, h), 1));
    }
}

}  // namespace zel::ZEL_LEVEL::video
