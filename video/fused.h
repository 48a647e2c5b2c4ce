// Pairs of formats that are asked for most, from memory to memory without lines: chroma of each pixel, repeated, or averaged over
// two columns and rows, nothing dithered. They give the same sums. Whole blocks only; what is left of the rows goes the common
// way.
#pragma once

#include "video/destinations.h"
#include "video/loads.h"
#include "video/stores.h"
#include "video/sums.h"

namespace zel::ZEL_LEVEL::video {

namespace fused {

constexpr int blockPixels = 2 * words;

// Dwords dealt out to the lanes in turn: 0 and as many on as there are lanes, and so on, to the first.
ZEL_INLINE Bytes dealt(Bytes v) {
    alignas(16) static constexpr uint8_t evensFirst[16] = {0, 1, 2, 3, 8, 9, 10, 11, 4, 5, 6, 7, 12, 13, 14, 15};
    if constexpr (lanes == 4) return inOrderOfQuarters(v);
    if constexpr (lanes == 2) return lowThenHighHalves(shuffle(v, everyLane(evensFirst)));
    return v;
}

// Samples of bytes or of words, chroma in a plane of pairs or in two. A block is read as two vectors of luma and two of pairs of
// chroma, both with lanes in turn, so that a pack of two results is in order; or with fours of pixels dealt out to the lanes of
// both, so that results of four bytes are whole vectors.
template <bool isWide, bool isPaired>
struct Source {
    static constexpr int bytes = isWide ? 2 : 1;
    static constexpr bool hasLumaBytes = !isWide;
    const uint8_t *luma[2], *first, *second;  // rows, and chroma in the order of the sums
    loads::Placed place;

    template <bool deals>
    ZEL_INLINE void readLuma(int row, int at, Words (&v)[2]) const {
        const uint8_t* const p = luma[row] + ptrdiff_t{at} * bytes;
        if constexpr (isWide) askAhead(p, 2 * vectorBytes);
        if constexpr (isWide && deals) {
            v[0] = place((Words)spreadHalves(loadBytes(p)));
            v[1] = place((Words)spreadHalves(loadBytes(p + vectorBytes)));
        } else if constexpr (isWide) {
            const PackOrder in = loadInPackOrder(p);
            v[0] = place((Words)in.first);
            v[1] = place((Words)in.second);
        } else {
            const Bytes in = ordered<deals>(loadBytes(p)) ^ splatByte(0x80);
            v[0] = (Words)interleaveLow(Bytes{}, in);
            v[1] = (Words)interleaveHigh(Bytes{}, in);
        }
    }
    template <bool deals>
    ZEL_INLINE static Bytes ordered(Bytes v) {
        return deals ? dealt(v) : v;
    }
    template <bool deals>
    ZEL_INLINE void readSites(int at, Words (&v)[2]) const {
        if constexpr (isWide && isPaired && deals) {
            const uint8_t* const p = first + ptrdiff_t{at} * bytes;
            v[0] = place((Words)spreadHalves(loadBytes(p)));
            v[1] = place((Words)spreadHalves(loadBytes(p + vectorBytes)));
        } else if constexpr (isWide && isPaired) {
            const PackOrder in = loadInPackOrder(first + ptrdiff_t{at} * bytes);
            v[0] = place((Words)in.first);
            v[1] = place((Words)in.second);
        } else if constexpr (isWide) {
            const Words a = place((Words)ordered<deals>(loadBytes(first + at))),
                        b = place((Words)ordered<deals>(loadBytes(second + at)));
            v[0] = interleaveLow(a, b);
            v[1] = interleaveHigh(a, b);
        } else {
            const Bytes pairs =
                isPaired ? loadBytes(first + at) : (Bytes)(loadWidened(first + at / 2) | loadWidened(second + at / 2) << 8);
            const Bytes in = ordered<deals>(pairs) ^ splatByte(0x80);
            v[0] = (Words)interleaveLow(Bytes{}, in);
            v[1] = (Words)interleaveHigh(Bytes{}, in);
        }
    }
};

// Packed 4:2:2 of bytes: a word is a pixel's luma and one sample of its site's chroma.
struct PairedSource {
    static constexpr bool hasLumaBytes = false;
    const uint8_t* row;
    bool isLumaFirst;

    template <bool deals>
    ZEL_INLINE void readLuma(int, int at, Words (&v)[2]) const {
        read<deals>(at, isLumaFirst, v);
    }
    template <bool deals>
    ZEL_INLINE void readSites(int at, Words (&v)[2]) const {
        read<deals>(at, !isLumaFirst, v);
    }
    // The first or the second bytes of the words.
    template <bool deals>
    ZEL_INLINE void read(int at, bool first, Words (&v)[2]) const {
        const uint8_t* const p = row + ptrdiff_t{at} * 2;
        const PackOrder in =
            deals ? PackOrder{spreadHalves(loadBytes(p)), spreadHalves(loadBytes(p + vectorBytes))} : loadInPackOrder(p);
        const Words pixels[2] = {(Words)in.first, (Words)in.second};
        for (int part = 0; part < 2; ++part)
            v[part] = (first ? pixels[part] << 8 : pixels[part] & splatWord(int16_t(0xff00))) ^ splatWord(INT16_MIN);
    }
};

// Results of a block in the order of memory.
template <int samples>
struct ByteSink {
    static constexpr int itemBytes = samples;
    static constexpr bool isLimited = true, deals = samples == 4;  // limited by the pack
    static constexpr int shift = 21;
    ZEL_INLINE void write(Destination p, const Words (&v)[3][2]) const {
        const Bytes a = packBytes(v[0][0], v[0][1]), b = packBytes(v[1][0], v[1][1]), c = packBytes(v[2][0], v[2][1]);
        if constexpr (samples == 3) {
            InterleavedThree<Depth8u>::store(p, {a, b, c});
        } else {
            const Bytes alpha = splatByte(0xff);
            const Words ab[2] = {(Words)interleaveLow(a, b), (Words)interleaveHigh(a, b)};
            const Words cd[2] = {(Words)interleaveLow(c, alpha), (Words)interleaveHigh(c, alpha)};
            unrolled<2>([&](auto half) ZEL_INLINE_LAMBDA {
                storeVector(p + 2 * half * vectorBytes, interleaveLow(ab[half], cd[half]));
                storeVector(p + (2 * half + 1) * vectorBytes, interleaveHigh(ab[half], cd[half]));
            });
        }
    }
};

struct TenSink {
    static constexpr int itemBytes = 4;
    static constexpr bool isLimited = false, deals = true;
    static constexpr int shift = 19;
    ZEL_INLINE void write(Destination p, const Words (&v)[3][2]) const {
        for (int part = 0; part < 2; ++part) {
            const Words low = v[0][part] | v[1][part] << 10;
            const Words high = (Words)((UWords)v[1][part] >> 6) | v[2][part] << 4 | splatWord(0xc000);
            storeVector(p + 2 * part * vectorBytes, interleaveLow(low, high));
            storeVector(p + (2 * part + 1) * vectorBytes, interleaveHigh(low, high));
        }
    }
};

// What the sums need, by the order of the results in memory.
struct Numbers {
    ZEL_INLINE explicit Numbers(const zelv::Plan& plan) : sums(plan.sums) {
        const int shift = sums.shift, depth = plan.out.depth;
        for (int c = 0; c < 3; ++c) {
            at[plan.out.place[c]] = c;
            const int32_t middle = 1 << (depth - 1);
            added[plan.out.place[c]] = sums.offset[c] + (1 << (shift - 1)) + middle * (1 << shift);
        }
        most = splatWord((1 << depth) - 1);
        const bool reversed = plan.in.layout != Layout::planar && plan.in.place[1] > plan.in.place[2];
        site[0] = reversed ? 2 : 1;
        site[1] = reversed ? 1 : 2;
    }
    ZEL_INLINE Term chroma(int place) const {
        const auto &high = sums.high[at[place]], &low = sums.low[at[place]];
        return {high[site[0]], high[site[1]], low[site[0]], low[site[1]]};
    }
    const zelv::Sums& sums;
    int at[4], site[2];
    int32_t added[4];
    Words most;
};

// `rows` of luma share their sites. To bytes, luma's term has no low part.
template <int rows, class From, class To>
ZEL_NOINLINE void decode(const zelv::Plan& plan, const From& from, const To& to, const Destination (&out)[2], int count) {
    const Numbers n(plan);
    const zelv::Sums& sums = n.sums;
    const Term evens(sums.high[0][0], 0, sums.low[0][0], 0), odds(0, sums.high[0][0], 0, sums.low[0][0]);
    // Vectors of their own: what is stored could change the plan, as far as the compiler knows.
    const Term terms[3] = {n.chroma(0), n.chroma(1), n.chroma(2)};
    const Dwords added[3] = {splatDword(n.added[0]), splatDword(n.added[1]), splatDword(n.added[2])};
    const Words most = n.most;
    constexpr int shift = To::shift;
    for (int i = 0; i < count; i += blockPixels) {
        Words sites[2], luma[2][2], results[2][3][2];
        from.template readSites<To::deals>(i, sites);
        unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA { from.template readLuma<To::deals>(row, i, luma[row]); });
        unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
            Dwords even[2], odd[2];
            unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA {
                even[row] = evens.of<To::isLimited>(luma[row][part]);
                odd[row] = odds.of<To::isLimited>(luma[row][part]);
            });
            unrolled<3>([&](auto p) ZEL_INLINE_LAMBDA {
                const Dwords chroma = terms[p].template of<false>(sites[part]) + added[p];
                unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA {
                    const Words v =
                        blend<0xaa>((Words)((even[row] + chroma) >> shift), (Words)((odd[row] + chroma) >> (shift - 16)));
                    results[row][p][part] = To::isLimited ? v : atMost(atLeast(v, Words{}), most);
                });
            });
        });
        unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA { to.write(out[row] + ptrdiff_t{i} * To::itemBytes, results[row]); });
    }
}

// Where luma is the result's own scale, the sum of chroma is cut off by itself, and all that is left are sums of bytes.
template <int rows, class From, class To>
ZEL_NOINLINE void decodeUnscaled(const zelv::Plan& plan, const From& from, const To& to, const Destination (&out)[2], int count) {
    const Numbers n(plan);
    const zelv::Sums& sums = n.sums;
    constexpr int shift = To::shift;
    // Luma is taken as it is, not from the middle.
    const int32_t lifted = -32768 * int32_t{sums.high[0][0]};
    const Term terms[3] = {n.chroma(0), n.chroma(1), n.chroma(2)};
    const Dwords added[3] = {splatDword(n.added[0] + lifted), splatDword(n.added[1] + lifted), splatDword(n.added[2] + lifted)};
    for (int i = 0; i < count; i += blockPixels) {
        Words sites[2], chroma[3][2], results[3][2];
        from.template readSites<To::deals>(i, sites);
        unrolled<3>([&](auto p) ZEL_INLINE_LAMBDA {
            const auto sum = [&](int part) { return (terms[p].template of<false>(sites[part]) + added[p]) >> shift; };
            const Words both = packWords(sum(0), sum(1));
            chroma[p][0] = interleaveLow(both, both);
            chroma[p][1] = interleaveHigh(both, both);
        });
        unrolled<rows>([&](auto row) ZEL_INLINE_LAMBDA {
            const Bytes y = From::template ordered<To::deals>(loadBytes(from.luma[row] + i));
            const Words luma[2] = {lowBytes(y), highBytes(y)};
            unrolled<3>([&](auto p) ZEL_INLINE_LAMBDA {
                results[p][0] = luma[0] + chroma[p][0];
                results[p][1] = luma[1] + chroma[p][1];
            });
            to.write(out[row] + ptrdiff_t{i} * To::itemBytes, results);
        });
    }
}

// Where each pixel has chroma of its own: three planes of bytes to bytes.
template <class To>
ZEL_NOINLINE void decodePixels(const zelv::Plan& plan, const uint8_t* const (&in)[3], const To& to, Destination out, int count) {
    const Numbers n(plan);
    const Term terms[3] = {n.chroma(0), n.chroma(1), n.chroma(2)};
    const Words luma = splatWords(n.sums.high[0][0], 0);
    const Dwords added = splatDword(n.added[0]);  // R, G and B have the same
    for (int i = 0; i < count; i += vectorBytes) {
        const auto read = [&](int c) { return To::deals ? dealt(loadBytes(in[c] + i)) : loadBytes(in[c] + i); };
        const Bytes middle = splatByte(0x80), x = read(0) ^ middle, u = read(1) ^ middle, v = read(2) ^ middle;
        Words results[3][2];
        unrolled<2>([&](auto part) ZEL_INLINE_LAMBDA {
            const auto filled = [&](Bytes b) ZEL_INLINE_LAMBDA {
                return (Words)(part == 0 ? interleaveLow(Bytes{}, b) : interleaveHigh(Bytes{}, b));
            };
            const Words xs = filled(x), us = filled(u), vs = filled(v);
            const Words sites[2] = {interleaveLow(us, vs), interleaveHigh(us, vs)};
            const Dwords first[2] = {mulAddPairs(interleaveLow(xs, Words{}), luma) + added,
                                     mulAddPairs(interleaveHigh(xs, Words{}), luma) + added};
            unrolled<3>([&](auto p) ZEL_INLINE_LAMBDA {
                const auto sum = [&](int half) ZEL_INLINE_LAMBDA {
                    return (first[half] + terms[p].template of<false>(sites[half])) >> To::shift;
                };
                results[p][part] = packWords(sum(0), sum(1));
            });
        });
        to.write(out + ptrdiff_t{i} * To::itemBytes, results);
    }
}

// Dwords of a block of interleaved bytes, four of three or four samples: lanes of 16 pixels in turn, or of four samples as they
// come, which `inOrder` makes up for when all are packed.
template <int samples>
ZEL_INLINE void readPixels(const uint8_t* p, UDwords (&v)[4]) {
    if constexpr (samples == 4) {
        for (int i = 0; i < 4; ++i) v[i] = (UDwords)loadBytes(p + vectorBytes * i);
    } else {
        const auto in = InterleavedThree<Depth8u>::load(p);
        const Words low[2] = {(Words)interleaveLow(in.a, in.b), (Words)interleaveLow(in.c, Bytes{})};
        const Words high[2] = {(Words)interleaveHigh(in.a, in.b), (Words)interleaveHigh(in.c, Bytes{})};
        v[0] = (UDwords)interleaveLow(low[0], low[1]);
        v[1] = (UDwords)interleaveHigh(low[0], low[1]);
        v[2] = (UDwords)interleaveLow(high[0], high[1]);
        v[3] = (UDwords)interleaveHigh(high[0], high[1]);
    }
}

template <int samples>
ZEL_INLINE Bytes inOrder(Bytes packed) {
    return samples == 4 ? inOrderOfQuarters(packed) : packed;
}

// Coefficients of a result by the places of the source's samples: those at even bytes of a dword and at odd ones. Samples are
// taken as they are, `count` of them added up, which stand for 256 / count as many each.
struct ByteTerm {
    ZEL_INLINE ByteTerm(const zelv::Plan& plan, int to, int countBits) {
        int16_t h[4] = {};
        int32_t all = 0;
        for (int c = 0; c < 3; ++c) {
            h[plan.in.place[c]] = plan.sums.high[to][c];
            all += plan.sums.high[to][c];
        }
        even = splatWords(h[0], h[2]);
        odd = splatWords(h[1], h[3]);
        const int64_t constant = int64_t{plan.sums.offset[to]} - int64_t{32768} * all + (int64_t{1} << (plan.sums.shift - 1)) +
                                 (int64_t{128} << plan.sums.shift);
        added = splatDword(int32_t(constant >> (8 - countBits)));
    }
    ZEL_INLINE Dwords of(Words evens, Words odds) const { return mulAddPairs(evens, even) + mulAddPairs(odds, odd) + added; }

    Words even, odd;
    Dwords added;
};

// Two rows of luma and one of chroma, in the order of memory.
template <int samples, bool isPaired>
ZEL_NOINLINE void encode(const zelv::Plan& plan, const uint8_t* const (&in)[2], const Destination (&luma)[2], Destination u,
                         Destination v, int count) {
    const bool reversed = isPaired && plan.out.place[1] > plan.out.place[2];
    const ByteTerm ofLuma(plan, 0, 0), ofU(plan, reversed ? 2 : 1, 2), ofV(plan, reversed ? 1 : 2, 2);
    constexpr int lumaShift = 15, siteShift = 17;
    const Words low = splatWord(0xff);
    for (int i = 0; i < count; i += blockPixels) {
        Words evens[4], odds[4];
        unrolled<2>([&](auto row) ZEL_INLINE_LAMBDA {
            UDwords pixels[4];
            Dwords y[4];
            askAhead(in[row] + ptrdiff_t{i} * samples, size_t{blockPixels} * samples);
            readPixels<samples>(in[row] + ptrdiff_t{i} * samples, pixels);
            unrolled<4>([&](auto k) ZEL_INLINE_LAMBDA {
                const Words even = (Words)pixels[k] & low, odd = (Words)((UWords)pixels[k] >> 8);
                y[k] = ofLuma.of(even, odd) >> lumaShift;
                evens[k] = row == 0 ? even : evens[k] + even;
                odds[k] = row == 0 ? odd : odds[k] + odd;
            });
            storeVector(luma[row] + i, inOrder<samples>(packBytes(packWords(y[0], y[1]), packWords(y[2], y[3]))));
        });
        Dwords us[2], vs[2];
        unrolled<2>([&](auto k) ZEL_INLINE_LAMBDA {
            const auto acrossed = [&](const Words(&x)[4]) ZEL_INLINE_LAMBDA {
                const Dwords a = (Dwords)x[2 * k], b = (Dwords)x[2 * k + 1];
                return (Words)evenDwords(a, b) + (Words)oddDwords(a, b);
            };
            const Words even = acrossed(evens), odd = acrossed(odds);
            us[k] = ofU.of(even, odd) >> siteShift;
            vs[k] = ofV.of(even, odd) >> siteShift;
        });
        const auto ordered = [](const Dwords(&x)[2]) { return (Words)inOrder<samples>((Bytes)packWords(x[0], x[1])); };
        const Bytes both = packBytes(ordered(us), ordered(vs));
        if constexpr (isPaired)
            storeVector(u + i, interleaveLow(both, (Bytes)interleaveHigh64(both, both)));
        else
            storeHalves(u + i / 2, v + i / 2, both);
    }
}

template <int rows, class From, class To>
ZEL_INLINE void decodeRows(const zelv::Plan& plan, const From& from, const To& to, const Destination (&out)[2], int count) {
    if constexpr (From::hasLumaBytes && To::isLimited)
        if (plan.sums.high[0][0] * 256 == 1 << plan.sums.shift) return decodeUnscaled<rows>(plan, from, to, out, count);
    decode<rows>(plan, from, to, out, count);
}

ZEL_INLINE void decodePaired(const zelv::Call& call, int y, int, int count) {
    const zelv::Plan& plan = *call.plan;
    const PairedSource from{call.from[0] + ptrdiff_t{call.fromStep[0]} * y, plan.in.place[0] == 0};
    const Destination to[2] = {destination(call, 0, y), destination(call, 0, y)};
    if (plan.out.samples == 3)
        decodeRows<1>(plan, from, ByteSink<3>{}, to, count);
    else
        decodeRows<1>(plan, from, ByteSink<4>{}, to, count);
}

template <bool isWide, bool isPaired>
ZEL_INLINE void decodeFrom(const zelv::Call& call, int y, int rows, int count) {
    const zelv::Plan& plan = *call.plan;
    const zelv::Side &in = plan.in, &out = plan.out;
    const auto row = [&](int plane, int at) { return call.from[plane] + ptrdiff_t{call.fromStep[plane]} * at; };
    const int site = y >> in.sitesDown, next = rows > 1 ? y + 1 : y;
    const Source<isWide, isPaired> from{{row(in.place[0], y), row(in.place[0], next)},
                                        row(isPaired ? 1 : in.place[1], site),
                                        row(isPaired ? 1 : in.place[2], site),
                                        loads::Placed(in)};
    const Destination to[2] = {destination(call, 0, y), destination(call, 0, next)};
    const auto write = [&](const auto& sink) {
        rows > 1 ? decodeRows<2>(plan, from, sink, to, count) : decodeRows<1>(plan, from, sink, to, count);
    };
    if (out.layout == Layout::dwords) {
        if constexpr (isWide) write(TenSink{});
    } else {
        out.samples == 3 ? write(ByteSink<3>{}) : write(ByteSink<4>{});
    }
}

ZEL_INLINE void decodePlanes(const zelv::Call& call, int y, int count) {
    const zelv::Plan& plan = *call.plan;
    const auto row = [&](int c) {
        const int plane = plan.in.place[c];
        return call.from[plane] + ptrdiff_t{call.fromStep[plane]} * y;
    };
    const uint8_t* const in[3] = {row(0), row(1), row(2)};
    const Destination to = destination(call, 0, y);
    plan.out.samples == 3 ? decodePixels(plan, in, ByteSink<3>{}, to, count) : decodePixels(plan, in, ByteSink<4>{}, to, count);
}

ZEL_INLINE bool hasChromaOfPixels(const zelv::Side& in) { return in.sitesAcross + in.sitesDown == 0; }

ZEL_INLINE bool decodes(const zelv::Plan& plan) {
    const zelv::Side &in = plan.in, &out = plan.out;
    if (plan.combination != zelv::Combination::matrix || in.model != zelv::Model::luma || out.model != zelv::Model::rgb ||
        out.isFloat || plan.ordered)
        return false;
    if (hasChromaOfPixels(in)) {
        if (in.layout != Layout::planar || in.depth > 8) return false;
    } else if (in.layout == Layout::paired) {
        if (in.depth > 8 || plan.linear) return false;
    } else if (in.sitesAcross != 1 || in.layout > Layout::semiPlanar || plan.linear) {
        return false;
    }
    const bool copiesAlpha = in.alpha == zelv::Alpha::present && out.alpha == zelv::Alpha::present;
    if (out.alpha != zelv::Alpha::none && (copiesAlpha || out.place[zelv::alphaChannel] != 3)) return false;
    return (out.layout == Layout::interleaved && out.depth == 8) || (out.layout == Layout::dwords && in.depth > 8);
}

ZEL_INLINE bool encodes(const zelv::Plan& plan) {
    const zelv::Side &in = plan.in, &out = plan.out;
    return plan.allAreWhole && in.layout == Layout::interleaved && in.depth == 8 && !in.isFloat &&
           out.model == zelv::Model::luma && out.layout <= Layout::semiPlanar && out.sitesAcross == 1 && out.sitesDown == 1 &&
           out.alpha == zelv::Alpha::none && !plan.sited;
}

}  // namespace fused

// As many pixels of the rows from `y` to `end` as there are whole blocks, where the plan is one of these. Otherwise 0.
ZEL_INLINE int convertFused(const zelv::Call& call, int y, int end) {
    const zelv::Plan& plan = *call.plan;
    const zelv::Side &in = plan.in, &out = plan.out;
    const int count = call.width / fused::blockPixels * fused::blockPixels, rows = end - y;
    if (count == 0) return 0;
    if (fused::decodes(plan)) {
        if (fused::hasChromaOfPixels(in)) {
            fused::decodePlanes(call, y, count);
            return count;
        }
        const bool isWide = in.depth > 8, isPaired = in.layout == Layout::semiPlanar;
        const auto decode = [&] {
            if (in.layout == Layout::paired) return fused::decodePaired;
            if (isWide) return isPaired ? fused::decodeFrom<true, true> : fused::decodeFrom<true, false>;
            return isPaired ? fused::decodeFrom<false, true> : fused::decodeFrom<false, false>;
        }();
        if (rows > 1 && !in.sitesDown) return 0;
        decode(call, y, rows, count);
        return count;
    }
    if (rows == 2 && fused::encodes(plan)) {
        const auto row = [&](int at) { return call.from[0] + ptrdiff_t{call.fromStep[0]} * at; };
        const auto to = [&](int plane, int at) { return destination(call, plane, at); };
        const uint8_t* const from[2] = {row(y), row(y + 1)};
        const Destination luma[2] = {to(out.place[0], y), to(out.place[0], y + 1)};
        const bool isPaired = out.layout == Layout::semiPlanar;
        const Destination u = to(isPaired ? 1 : out.place[1], y >> 1), v = to(isPaired ? 1 : out.place[2], y >> 1);
        const auto encode = in.samples == 3 ? isPaired ? fused::encode<3, true> : fused::encode<3, false>
                            : isPaired ? fused::encode<4, true>
                                            : fused::encode<4, false>;
        encode(plan, from, luma, u, v, count);
        return count;
    }
    return 0;
}

}  // namespace zel::ZEL_LEVEL::video
