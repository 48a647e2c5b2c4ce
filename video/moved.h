// Channels that are each of itself, on the same sites: between planes and pairs, bytes and words, bits of a word, and ranges.
// From memory to memory.
#pragma once

#include "video/destinations.h"
#include "video/loads.h"
#include "video/stores.h"
#include "video/sums.h"

namespace zel::ZEL_LEVEL::video {

namespace moved {

// Samples that are only moved. Halves go up, as in the sums of a term that shifts.
struct Shifted {
    static constexpr bool keepsBytes = true;
    ZEL_INLINE Shifted(const zelv::Plan& plan, int)
        : up(16 - plan.in.depth - plan.in.shift),
          mask((UWords)splatWord(0xffff << (16 - plan.in.depth))),
          half((UWords)splatWord(1 << (16 - plan.out.depth) >> 1)),
          down(16 - plan.out.depth),
          back(plan.out.shift) {}

    template <bool isWide>
    ZEL_INLINE Words operator()(Words v) const {
        const UWords filled = isWide ? ((UWords)v << up) & mask : (UWords)v;
        return (Words)(addSaturated(filled, half) >> down << back);
    }

    int up;
    UWords mask, half;
    int down, back;
};

// Samples of another range.
struct Scaled {
    static constexpr bool keepsBytes = false;
    ZEL_INLINE Scaled(const zelv::Plan& plan, int channel)
        : up(16 - plan.in.depth - plan.in.shift),
          mask(splatWord(0xffff << (16 - plan.in.depth))),
          term(plan.sums.high[channel][channel], plan.sums.low[channel][channel]),
          added(splatDword(plan.sums.offset[channel] + (1 << (plan.sums.shift - 1)))),
          result(Shift<0>{plan.sums.shift}, plan.out.depth),
          back(plan.out.shift) {}

    template <bool isWide>
    ZEL_INLINE Words operator()(Words v) const {
        Dwords sum[2];
        term.of<false>(flipped(isWide ? v << up & mask : v), sum);
        return result.packed(added + sum[0], added + sum[1]) << back;
    }

    int up;
    Words mask;
    Single term;
    Dwords added;
    Result<Shift<0>> result;
    int back;
};

// The same from bytes to bytes, with 8 bits of a fraction or, where samples become more, 7. For each of the ranges a quarter of
// its last bit more gives the results of the sums, for all bytes.
struct ScaledBytes {
    static constexpr bool keepsBytes = false;
    ZEL_INLINE ScaledBytes(const zelv::Plan& plan, int channel) {
        const zelv::Sums& sums = plan.sums;
        const int32_t coefficient = sums.high[channel][channel] * 32768 + sums.low[channel][channel];
        shift = coefficient < 1 << 28 ? 8 : 7;
        factor = (UWords)splatWord((coefficient + (1 << (19 - shift))) >> (20 - shift));
        const int bits = sums.shift - shift;
        const int32_t middle = sums.offset[channel] + (1 << (sums.shift - 1)) + (128 << sums.shift) + (1 << (bits - 2));
        const int32_t constant = (middle - coefficient) >> bits;
        added = (UWords)splatWord(constant > 0 ? constant : 0);
        subtracted = (UWords)splatWord(constant < 0 ? -constant : 0);
    }

    template <bool>
    ZEL_INLINE Words operator()(Words v) const {
        const UWords sum = subtractSaturated(addSaturated(mulHigh((UWords)v, factor), added), subtracted);
        return atMost((Words)(sum >> shift), splatWord(255));
    }

    UWords factor, added, subtracted;
    int shift;
};

// A vector of words, or half of one of bytes, in order.
template <bool isWide>
ZEL_INLINE Words read(const uint8_t* p) {
    return isWide ? (Words)loadBytes(p) : loadWidened(p) << 8;
}

// A row of as many samples, by blocks of two vectors of words.
template <bool fromWords, bool toWords>
struct Plane {
    static constexpr int items = 2 * words, itemBytes = fromWords ? 2 : 1, resultBytes = toWords ? 2 : 1;
    template <class Rule>
    ZEL_INLINE static void block(const Rule& rule, const uint8_t* const (&in)[2], const Destination (&out)[2], ptrdiff_t i) {
        const uint8_t* const p = in[0] + i * itemBytes;
        if constexpr (toWords) {
            storeVector(out[0] + 2 * i, rule.template operator()<fromWords>(read<fromWords>(p)));
            storeVector(out[0] + 2 * i + vectorBytes,
                        rule.template operator()<fromWords>(read<fromWords>(p + words * itemBytes)));
        } else if constexpr (fromWords) {
            const PackOrder v = loadInPackOrder(p);
            storeVector(out[0] + i, packBytes(rule.template operator()<true>((Words)v.first),
                                              rule.template operator()<true>((Words)v.second)));
        } else if constexpr (Rule::keepsBytes) {
            storeVector(out[0] + i, loadBytes(p));
        } else {
            const Bytes v = loadBytes(p);
            storeVector(out[0] + i, packBytes(rule.template operator()<false>((Words)interleaveLow(Bytes{}, v)),
                                              rule.template operator()<false>((Words)interleaveHigh(Bytes{}, v))));
        }
    }
};

// Two planes of as many samples to pairs of them.
template <bool fromWords, bool toWords>
struct Join {
    static constexpr int items = words, itemBytes = fromWords ? 2 : 1, resultBytes = toWords ? 4 : 2;
    template <class Rule>
    ZEL_INLINE static void block(const Rule& rule, const uint8_t* const (&in)[2], const Destination (&out)[2], ptrdiff_t i) {
        const Words a = rule.template operator()<fromWords>(read<fromWords>(in[0] + i * itemBytes)),
                    b = rule.template operator()<fromWords>(read<fromWords>(in[1] + i * itemBytes));
        if constexpr (toWords)
            stores::storeInterleavedWords(out[0] + 4 * i, a, b);
        else
            storeVector(out[0] + 2 * i, a | b << 8);
    }
};

// And back.
template <bool fromWords, bool toWords>
struct Part {
    static constexpr int items = 2 * words, itemBytes = fromWords ? 4 : 2, resultBytes = toWords ? 2 : 1;
    template <class Rule>
    ZEL_INLINE static void block(const Rule& rule, const uint8_t* const (&in)[2], const Destination (&out)[2], ptrdiff_t i) {
        Words a[2], b[2];
        for (int part = 0; part < 2; ++part) {
            const uint8_t* const p = in[0] + (i + part * words) * itemBytes;
            if constexpr (fromWords) {
                const loads::Split v = loads::split(p);
                a[part] = v.even;
                b[part] = v.odd;
            } else {
                const auto v = (Words)loadBytes(p);
                a[part] = v << 8;
                b[part] = v & splatWord(0xff00);
            }
            a[part] = rule.template operator()<fromWords>(a[part]);
            b[part] = rule.template operator()<fromWords>(b[part]);
        }
        if constexpr (toWords) {
            for (int part = 0; part < 2; ++part) {
                storeVector(out[0] + 2 * i + part * vectorBytes, a[part]);
                storeVector(out[1] + 2 * i + part * vectorBytes, b[part]);
            }
        } else {
            storeVector(out[0] + i, lowThenHighHalves(packBytes(a[0], a[1])));
            storeVector(out[1] + i, lowThenHighHalves(packBytes(b[0], b[1])));
        }
    }
};

// The last items by copies that end with the block.
template <class Kind, class Rule>
ZEL_NOINLINE void row(const Rule& given, const uint8_t* const (&in)[2], const Destination (&out)[2], ptrdiff_t count) {
    const Rule rule = given;
    ptrdiff_t i = 0;
    const auto blocks = [&](const Destination(&to)[2]) ZEL_INLINE_LAMBDA {
        for (; i + Kind::items <= count; i += Kind::items) Kind::block(rule, in, to, i);
    };
    if (traits.bypasses && (out[0].bypassing() || out[1].bypassing()))
        blocks(out);
    else  // code of its own: to ask at each store would take longer than it
        blocks({static_cast<uint8_t*>(out[0]), static_cast<uint8_t*>(out[1])});
    if (i == count) return;
    alignas(64) uint8_t from[2][Kind::items * Kind::itemBytes], to[2][Kind::items * Kind::resultBytes];
    const size_t read = size_t(count - i) * Kind::itemBytes, written = size_t(count - i) * Kind::resultBytes;
    for (int k = 0; k < 2; ++k) {
        __builtin_memset(from[k], 0, sizeof from[k]);
        if (in[k]) __builtin_memcpy(from[k], in[k] + i * Kind::itemBytes, read);
    }
    const uint8_t* const sources[2] = {from[0], from[1]};
    const Destination results[2] = {to[0], to[1]};
    Kind::block(rule, sources, results, 0);
    for (int k = 0; k < 2; ++k)
        if (out[k]) __builtin_memcpy(out[k] + i * Kind::resultBytes, to[k], written);
}

template <template <bool, bool> class Kind, class Rule>
ZEL_INLINE void rowBy(const zelv::Plan& plan, const Rule& rule, const uint8_t* const (&in)[2], const Destination (&out)[2],
                      ptrdiff_t count) {
    if constexpr (std::is_same_v<Rule, ScaledBytes>) return row<Kind<false, false>, Rule>(rule, in, out, count);
    const bool fromWords = plan.in.depth > 8, toWords = plan.out.depth > 8;
    const auto call = fromWords ? toWords ? row<Kind<true, true>, Rule> : row<Kind<true, false>, Rule>
                      : toWords ? row<Kind<false, true>, Rule>
                                : row<Kind<false, false>, Rule>;
    call(rule, in, out, count);
}

// Chroma has the same sites, and both of its channels the same sum.
ZEL_INLINE bool serves(const zelv::Plan& plan) {
    const zelv::Side &in = plan.in, &out = plan.out;
    if (plan.combination != zelv::Combination::channels || plan.ordered || in.model != zelv::Model::luma || out.model != in.model)
        return false;
    if (in.layout > Layout::semiPlanar || out.layout > Layout::semiPlanar || out.alpha != zelv::Alpha::none) return false;
    const zelv::Sums& sums = plan.sums;
    const bool sameSums =
        sums.high[1][1] == sums.high[2][2] && sums.low[1][1] == sums.low[2][2] && sums.offset[1] == sums.offset[2];
    // Pairs in the other order go the common way.
    const bool bothPaired = in.layout == Layout::semiPlanar && out.layout == Layout::semiPlanar;
    return plan.sameAcross && plan.sameDown && sameSums && (!bothPaired || in.place[1] == out.place[1]);
}

// Whether no channel's sum is more than a shift.
ZEL_INLINE bool onlyShifts(const zelv::Plan& plan) {
    for (int c = 0; c < 3; ++c)
        if (plan.sums.high[c][c] != 1 << 13 || plan.sums.low[c][c] != 0 || plan.sums.offset[c] != 0) return false;
    return true;
}

template <class Rule>
ZEL_NOINLINE void convert(const zelv::Call& call) {
    const zelv::Plan& plan = *call.plan;
    const zelv::Side &in = plan.in, &out = plan.out;
    const Rule ofLuma(plan, 0), ofChroma(plan, 1);
    const auto from = [&](int plane, int y) { return call.from[plane] + ptrdiff_t{call.fromStep[plane]} * y; };
    const auto to = [&](int plane, int y) { return destination(call, plane, y); };
    const auto plane = [&](const Rule& rule, const uint8_t* source, Destination result, ptrdiff_t count) {
        rowBy<Plane>(plan, rule, {source, nullptr}, {result, nullptr}, count);
    };
    const ptrdiff_t sites = ((call.width - 1) >> in.sitesAcross) + 1;
    const bool fromPairs = in.layout == Layout::semiPlanar, toPairs = out.layout == Layout::semiPlanar;
    const int firstFrom = fromPairs && in.place[1] > in.place[2] ? 2 : 1,
              firstTo = toPairs && out.place[1] > out.place[2] ? 2 : 1;
    for (int y = call.firstRow; y < call.endRow; ++y) {
        plane(ofLuma, from(in.place[0], y), to(out.place[0], y), call.width);
        if (in.sitesDown && y % 2 != 0) continue;
        const int site = y >> in.sitesDown;
        if (fromPairs && toPairs) {
            plane(ofChroma, from(1, site), to(1, site), 2 * sites);
        } else if (fromPairs) {
            rowBy<Part>(plan, ofChroma, {from(1, site), nullptr},
                        {to(out.place[firstFrom], site), to(out.place[3 - firstFrom], site)}, sites);
        } else if (toPairs) {
            rowBy<Join>(plan, ofChroma, {from(in.place[firstTo], site), from(in.place[3 - firstTo], site)},
                        {to(1, site), nullptr}, sites);
        } else {
            for (int c = 1; c < 3; ++c) plane(ofChroma, from(in.place[c], site), to(out.place[c], site), sites);
        }
    }
}

}  // namespace moved

ZEL_INLINE void convertMoved(const zelv::Call& call) {
    if (moved::onlyShifts(*call.plan))
        moved::convert<moved::Shifted>(call);
    else if (call.plan->in.depth == 8 && call.plan->out.depth == 8)
        moved::convert<moved::ScaledBytes>(call);
    else
        moved::convert<moved::Scaled>(call);
}

}  // namespace zel::ZEL_LEVEL::video
