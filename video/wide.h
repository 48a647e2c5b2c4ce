// Pairs with more than 8 bits a sample, from memory to memory: planes of words with chroma of each pixel or repeated to RGB of
// words, and RGB to planes of words with chroma averaged. Nothing is dithered. They give the same sums. Whole blocks only.
#pragma once

#include "video/destinations.h"
#include "video/loads.h"
#include "video/stores.h"
#include "video/sums.h"

namespace zel::ZEL_LEVEL::video {

namespace wide {

// Pixels of a row, two vectors of each channel, which are also those of a block of bytes.
constexpr int blockPixels = 2 * words;

ZEL_INLINE const uint8_t* from(const zelv::Call& call, int plane, int y) {
    return call.from[plane] + ptrdiff_t{call.fromStep[plane]} * y;
}
ZEL_INLINE Destination to(const zelv::Call& call, int plane, int y) { return destination(call, plane, y); }

// Luma of two rows, and chroma of a vector of pixels as U and V in turn: of each pixel, two vectors, or of every second one.
template <bool isPaired, bool ofPixels>
struct LumaChroma {
    static constexpr int groups = ofPixels ? 2 : 1;
    ZEL_INLINE LumaChroma(const zelv::Call& call, int y, int next)
        : luma{from(call, call.plan->in.place[0], y), from(call, call.plan->in.place[0], next)}, place(call.plan->in) {
        const zelv::Side& in = call.plan->in;
        for (int c = 0; c < 2; ++c) chroma[c] = from(call, isPaired ? 1 : in.place[c + 1], y >> in.sitesDown);
        isUFirst = !isPaired || in.place[1] < in.place[2];
    }

    ZEL_INLINE Words readLuma(int row, int at) const {
        if (at % blockPixels == 0) askAhead(luma[row] + ptrdiff_t{at} * 2, 2 * vectorBytes);
        return place((Words)loadBytes(luma[row] + ptrdiff_t{at} * 2));
    }
    // Of a block.
    ZEL_INLINE void readChroma(int at, Words (&v)[2][groups]) const {
        const auto read = [&](int c, ptrdiff_t byte) ZEL_INLINE_LAMBDA { return place((Words)loadBytes(chroma[c] + byte)); };
        const auto both = [&](Words a, Words b, Words& low, Words& high) ZEL_INLINE_LAMBDA {
            low = interleaveLow(a, b);
            high = interleaveHigh(a, b);
        };
        if constexpr (ofPixels) {
            unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
                const ptrdiff_t byte = ptrdiff_t{at} * 2 + part * vectorBytes;
                both(read(0, byte), read(1, byte), v[part][0], v[part][1]);
            });
        } else if constexpr (isPaired) {
            for (int part = 0; part < 2; ++part) v[part][0] = read(0, ptrdiff_t{at} * 2 + part * vectorBytes);
        } else {
            const auto spread = [&](int c) ZEL_INLINE_LAMBDA { return (Words)spreadHalves((Bytes)read(c, at)); };
            both(spread(0), spread(1), v[0][0], v[1][0]);
        }
    }

    const uint8_t *luma[2], *chroma[2];
    bool isUFirst;
    loads::Placed place;
};

// Two rows of pixels of three words, in the order of memory, and of planes.
struct Pixels {
    ZEL_INLINE void write(int y, int at, const Words (&v)[3]) const {
        InterleavedThree<Depth16u>::store(row[y] + ptrdiff_t{at} * 6, {v[0], v[1], v[2]});
    }
    Destination row[2];
};
struct Planes {
    ZEL_INLINE void write(int y, int at, const Words (&v)[3]) const {
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA { storeVector(row[y][c] + ptrdiff_t{at} * 2, v[c]); });
    }
    Destination row[2][3];
};

template <int rows, class From, class To, class Bits>
ZEL_NOINLINE void decode(const zelv::Plan& plan, const From& source, const To& to, Bits bits, int count) {
    const From in = source;
    const To out = to;
    const zelv::Sums& sums = plan.sums;
    const Result<Bits> result(bits, plan.out.depth);
    int channel[4];
    for (int c = 0; c < 3; ++c) channel[plan.out.place[c]] = c;
    const auto term = [&](int place) {
        const auto &high = sums.high[channel[place]], &low = sums.low[channel[place]];
        return in.isUFirst ? Term(high[1], high[2], low[1], low[2]) : Term(high[2], high[1], low[2], low[1]);
    };
    const Term terms[3] = {term(0), term(1), term(2)};
    const Single ofLuma(sums.high[0][0], sums.low[0][0]);
    // R, G and B have the same.
    const Dwords added = splatDword(sums.offset[0] + (1 << (sums.shift - 1)));
    const int back = plan.out.shift;
    for (int i = 0; i < count; i += blockPixels) {
        Words sites[2][From::groups];
        in.readChroma(i, sites);
        unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
            const int at = i + part * words;
            Dwords luma[rows][2];
            Words results[rows][3];
            unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA {
                ofLuma.of<false>(in.readLuma(row, at), luma[row]);
                luma[row][0] += added;
                luma[row][1] += added;
            });
            unrolled<3>([&](auto p) ZEL_INLINE_LAMBDA {
                const Dwords first = terms[p].template of<false>(sites[part][0]);
                Dwords chroma[2] = {first, first};
                if constexpr (From::groups == 2) {
                    chroma[1] = terms[p].template of<false>(sites[part][1]);
                } else {
                    chroma[0] = interleaveLow(first, first);
                    chroma[1] = interleaveHigh(first, first);
                }
                unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA {
                    results[row][p] = result.packed(luma[row][0] + chroma[0], luma[row][1] + chroma[1]) << back;
                });
            });
            unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA { out.write(row, at, results[row]); });
        });
    }
}

// Two rows of RGB by a load of interleaved pixels with green in the middle, and by planes.
template <class Load>
struct Interleaved {
    ZEL_INLINE void read(int y, int at, Words (&v)[3][2]) const {
        constexpr int vectors = Load::items / words;
        unrolled<2 / vectors>([&](auto part) ZEL_INLINE_LAMBDA {
            Words read[4][2];
            askAhead(row[y] + ptrdiff_t{at + part * words} * Load::itemBytes, size_t(Load::items * Load::itemBytes));
            load.read(row[y] + ptrdiff_t{at + part * words} * Load::itemBytes, read);
            unrolled<vectors>([&](auto k) ZEL_INLINE_LAMBDA {
                v[0][part + k] = isRedFirst ? read[0][k] : read[2][k];
                v[1][part + k] = read[1][k];
                v[2][part + k] = isRedFirst ? read[2][k] : read[0][k];
            });
        });
    }
    static constexpr bool hasWords = Load::itemBytes == 6;
    const uint8_t* row[2];
    bool isRedFirst;
    Load load;
};
struct RgbPlanes {
    ZEL_INLINE void read(int y, int at, Words (&v)[3][2]) const {
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
            askAhead(row[y][c] + ptrdiff_t{at} * 2, 2 * vectorBytes);
            for (int part = 0; part < 2; ++part)
                v[c][part] = place((Words)loadBytes(row[y][c] + ptrdiff_t{at} * 2 + part * vectorBytes));
        });
    }
    static constexpr bool hasWords = true;
    const uint8_t* row[2][3];
    loads::Placed place;
};

// One result of three channels.
template <class Bits>
struct Triple {
    ZEL_INLINE Triple(const zelv::Plan& plan, Bits bits, int to)
        : first(plan.sums.high[to][0], plan.sums.low[to][0]),
          others(plan.sums.high[to][1], plan.sums.high[to][2], plan.sums.low[to][1], plan.sums.low[to][2]),
          parts(plan.sums, to),
          added(splatDword(plan.sums.offset[to] + (1 << (plan.sums.shift - 1)))),
          result(bits, plan.out.depth),
          back(plan.out.shift) {}

    ZEL_INLINE Words of(Words x, Words y, Words z) const {
        Dwords sum[2];
        of(x, y, z, sum);
        return result.packed(sum[0], sum[1]) << back;
    }
    ZEL_INLINE Words of(const Words (&v)[3], const Words (&rest)[3]) const {
        const Words none{};
        Dwords sum[2];
        of(v[0], v[1], v[2], sum);
        return result.packed(sum[0] + parts.of(interleaveLow(rest[0], none), interleaveLow(rest[1], rest[2])),
                             sum[1] + parts.of(interleaveHigh(rest[0], none), interleaveHigh(rest[1], rest[2])))
               << back;
    }
    ZEL_INLINE void of(Words x, Words y, Words z, Dwords (&sum)[2]) const {
        first.of<false>(x, sum);
        sum[0] += added + others.of<false>(interleaveLow(y, z));
        sum[1] += added + others.of<false>(interleaveHigh(y, z));
    }

    Single first;
    Term others;
    PartsTerm parts;
    Dwords added;
    Result<Bits> result;
    int back;
};

// Sites of two pixels of all rows, or of a pixel in planes.
template <int rows, bool isFine, class From, class Bits>
ZEL_NOINLINE void encode(const zelv::Call& call, const From& source, int row, Bits bits, int count) {
    const From in = source;
    const zelv::Plan& plan = *call.plan;
    const zelv::Side& out = plan.out;
    const bool isPaired = out.layout == Layout::semiPlanar, reversed = isPaired && out.place[1] > out.place[2];
    const Destination luma[2] = {to(call, out.place[0], row), to(call, out.place[0], row + rows - 1)};
    const Destination u = to(call, isPaired ? 1 : out.place[1], row >> out.sitesDown),
                      v = to(call, isPaired ? 1 : out.place[2], row >> out.sitesDown);
    const Triple<Bits> ofLuma(plan, bits, 0), ofU(plan, bits, reversed ? 2 : 1), ofV(plan, bits, reversed ? 1 : 2);
    const Words ones = splatWord(1);
    const Dwords half = splatDword(isFine ? 0 : rows);
    const bool ofPixels = rows == 1 && out.sitesAcross == 0;
    for (int i = 0; i < count; i += blockPixels) {
        Dwords sum[3][2] = {{half, half}, {half, half}, {half, half}};
        unrolled<rows>([&](auto y) ZEL_INLINE_LAMBDA {
            Words x[3][2];
            in.read(y, i, x);
            unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
                storeVector(luma[y] + ptrdiff_t{i} * 2 + part * vectorBytes, ofLuma.of(x[0][part], x[1][part], x[2][part]));
                if (ofPixels) {
                    const ptrdiff_t byte = ptrdiff_t{i} * 2 + part * vectorBytes;
                    storeVector(u + byte, ofU.of(x[0][part], x[1][part], x[2][part]));
                    storeVector(v + byte, ofV.of(x[0][part], x[1][part], x[2][part]));
                } else {
                    unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA { sum[c][part] += mulAddPairs(x[c][part], ones); });
                }
            });
        });
        if (ofPixels) continue;
        Words site[3], rest[3];
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
            site[c] = packWords(sum[c][0] >> rows, sum[c][1] >> rows);
            const Dwords left = splatDword((1 << rows) - 1);
            if constexpr (isFine) rest[c] = packWords(sum[c][0] & left, sum[c][1] & left) << (15 - rows);
        });
        const auto of = [&](const Triple<Bits>& result) ZEL_INLINE_LAMBDA {
            if constexpr (isFine) return result.of(site, rest);
            return result.of(site[0], site[1], site[2]);
        };
        const Words us = of(ofU), vs = of(ofV);
        if (isPaired) {
            storeVector(u + ptrdiff_t{i} * 2, interleaveLow(us, vs));
            storeVector(u + ptrdiff_t{i} * 2 + vectorBytes, interleaveHigh(us, vs));
        } else {
            storeVector(u + i, lowThenHighHalves((Bytes)us));
            storeVector(v + i, lowThenHighHalves((Bytes)vs));
        }
    }
}

// Depths that are asked for most. What another one's low bits shift by is found when called.
template <class F>
ZEL_INLINE void withBits(const zelv::Plan& plan, const F& f) {
    const int bits = plan.sums.shift;
    bits == 19 ? f(Shift<19>{bits}) : f(Shift<0>{bits});
}

ZEL_INLINE bool decodes(const zelv::Plan& plan) {
    const zelv::Side &in = plan.in, &out = plan.out;
    const bool ofPixels = in.sitesAcross + in.sitesDown == 0;
    return plan.combination == zelv::Combination::matrix && in.model == zelv::Model::luma && out.model == zelv::Model::rgb &&
           !plan.ordered && in.depth > 8 && out.depth > 8 && !in.isFloat && !out.isFloat &&
           (ofPixels ? in.layout == Layout::planar : in.sitesAcross == 1 && in.layout <= Layout::semiPlanar && !plan.linear) &&
           (out.layout == Layout::planar ? out.samples == 3 : out.layout == Layout::interleaved && out.samples == 3);
}

ZEL_INLINE void decodeRows(const zelv::Call& call, int y, int rows, int count) {
    const zelv::Plan& plan = *call.plan;
    const zelv::Side &in = plan.in, &out = plan.out;
    const auto withSource = [&](const auto& source) ZEL_INLINE_LAMBDA {
        constexpr bool isOneRow = std::remove_reference_t<decltype(source)>::groups == 2;
        const auto write = [&](const auto& result, auto bits) ZEL_INLINE_LAMBDA {
            if constexpr (!isOneRow)
                if (rows == 2) return decode<2>(plan, source, result, bits, count);
            decode<1>(plan, source, result, bits, count);
        };
        const int last = y + rows - 1;
        if (out.layout == Layout::interleaved) {
            const Pixels pixels{{to(call, 0, y), to(call, 0, last)}};
            const int bits = plan.sums.shift;
            bits == 13 ? write(pixels, Shift<13>{bits}) : write(pixels, Shift<0>{bits});
        } else {
            const Planes planes{
                {{to(call, 0, y), to(call, 1, y), to(call, 2, y)}, {to(call, 0, last), to(call, 1, last), to(call, 2, last)}}};
            withBits(plan, [&](auto bits) ZEL_INLINE_LAMBDA { write(planes, bits); });
        }
    };
    const int next = y + rows - 1;
    if (in.sitesAcross == 0)
        withSource(LumaChroma<false, true>(call, y, next));
    else if (in.layout == Layout::semiPlanar)
        withSource(LumaChroma<true, false>(call, y, next));
    else
        withSource(LumaChroma<false, false>(call, y, next));
}

ZEL_INLINE bool encodes(const zelv::Plan& plan) {
    const zelv::Side &in = plan.in, &out = plan.out;
    const bool isInterleaved = in.layout == Layout::interleaved || in.layout == Layout::dwords;
    const bool hasFourInOne = in.place[zelv::alphaChannel] == 3 && (in.layout == Layout::dwords || in.depth == 8);
    return plan.combination == zelv::Combination::matrix && in.model == zelv::Model::rgb && out.model == zelv::Model::luma &&
           !plan.ordered && !plan.sited && !in.isFloat && out.depth > 8 && out.layout <= Layout::semiPlanar &&
           (out.sitesAcross == 1 || (out.sitesAcross + out.sitesDown == 0 && out.layout == Layout::planar)) &&
           out.alpha == zelv::Alpha::none &&
           (isInterleaved ? in.place[1] == 1 && (in.samples == 3 || hasFourInOne) : in.depth > 8);
}

ZEL_INLINE void encodeRows(const zelv::Call& call, int y, int rows, int count) {
    const zelv::Plan& plan = *call.plan;
    const zelv::Side& in = plan.in;
    const auto withSource = [&](const auto& source) ZEL_INLINE_LAMBDA {
        if constexpr (std::remove_cvref_t<decltype(source)>::hasWords)
            if (plan.isFine) {
                const Shift<0> bits{plan.sums.shift};
                return rows == 2 ? encode<2, true>(call, source, y, bits, count) : encode<1, true>(call, source, y, bits, count);
            }
        withBits(plan, [&](auto bits) ZEL_INLINE_LAMBDA {
            rows == 2 ? encode<2, false>(call, source, y, bits, count) : encode<1, false>(call, source, y, bits, count);
        });
    };
    const int last = y + rows - 1;
    const auto interleaved = [&](const auto& load) ZEL_INLINE_LAMBDA {
        using Load = std::remove_cv_t<std::remove_reference_t<decltype(load)>>;
        withSource(Interleaved<Load>{{from(call, 0, y), from(call, 0, last)}, in.place[0] == 0, load});
    };
    if (in.layout == Layout::planar) {
        RgbPlanes planes{{}, loads::Placed(in)};
        for (int c = 0; c < 3; ++c) {
            planes.row[0][c] = from(call, in.place[c], y);
            planes.row[1][c] = from(call, in.place[c], last);
        }
        withSource(planes);
    } else if (in.layout == Layout::dwords) {
        interleaved(loads::Tens{});
    } else if (in.depth > 8) {
        interleaved(loads::Words3<loads::Placed>{loads::Placed(in)});
    } else if (in.samples == 3) {
        interleaved(loads::Bytes3{});
    } else {
        interleaved(loads::Bytes4{});
    }
}

}  // namespace wide

// As many pixels of the rows from `y` to `end` as there are whole blocks, where the plan is one of these. Otherwise 0.
ZEL_INLINE int convertWide(const zelv::Call& call, int y, int end) {
    const zelv::Plan& plan = *call.plan;
    const int count = call.width / wide::blockPixels * wide::blockPixels, rows = end - y;
    if (count == 0) return 0;
    if (wide::decodes(plan)) {
        if (rows == 2 && !plan.in.sitesDown) return 0;
        wide::decodeRows(call, y, rows, count);
        return count;
    }
    if (wide::encodes(plan) && rows == 1 + plan.out.sitesDown) {
        wide::encodeRows(call, y, rows, count);
        return count;
    }
    return 0;
}

}  // namespace zel::ZEL_LEVEL::video
