// Lines from one grid of chroma sites to another, where words hold all places that the weights of docs/video.md add. Others go by
// fine.h.
#pragma once

#include "video/lines.h"

namespace zel::ZEL_LEVEL::video {

// (a + b) / 2 and (a + 3 b) / 4, rounded. The mean that is cut off has lost a half only where the second one wouldn't have kept
// it.
ZEL_INLINE Words halfway(Words a, Words b) { return flipped((Words)mean((UWords)flipped(a), (UWords)flipped(b))); }
ZEL_INLINE Words quarterFrom(Words b, Words a) {
    const auto x = (UWords)flipped(a), y = (UWords)flipped(b);
    return flipped((Words)mean(meanBelow(x, y), y));
}
// (a + 2 b + c) / 4.
ZEL_INLINE Words around(Words a, Words b, Words c) {
    return flipped((Words)mean(meanBelow((UWords)flipped(a), (UWords)flipped(c)), (UWords)flipped(b)));
}

// `out` may be `a` or `b`.
template <class Rule>
ZEL_INLINE void combineLines(const uint16_t* a, const uint16_t* b, uint16_t* out, int count, const Rule& rule) {
    for (int i = 0; i < count; i += words) storeLine(out + i, rule(loadLine(a + i), loadLine(b + i)));
}

// The samples beyond the ends, as many as the filters look at.
template <class Number>
ZEL_INLINE void extend(Number* line, int from, int to, bool left, bool right) {
    for (int i = 1; i <= 4; ++i) {
        if (left) line[from - i] = line[from];
        if (right) line[to - 1 + i] = line[to - 1];
    }
}

// From sites of two pixels to pixels, of those from site `first` on. Interpolation looks one site to either side.
ZEL_INLINE void repeatTwice(const uint16_t* in, uint16_t* out, int pixels) {
    for (int i = 0; i < pixels; i += 2 * words) {
        const Twice v = twice(loadLine(in + i / 2));
        storeLine(out + i, v.first);
        storeLine(out + i + words, v.second);
    }
}
ZEL_INLINE void interpolateTwice(const uint16_t* in, uint16_t* out, int pixels, bool leftSited) {
    for (int i = 0; i < pixels; i += 2 * words) {
        const Words before = loadLine(in + i / 2 - 1), at = loadLine(in + i / 2), after = loadLine(in + i / 2 + 1);
        const Words even = leftSited ? at : quarterFrom(at, before),
                    odd = leftSited ? halfway(at, after) : quarterFrom(at, after);
        const Words e = (Words)spreadHalves((Bytes)even), o = (Words)spreadHalves((Bytes)odd);
        storeLine(out + i, interleaveLow(e, o));
        storeLine(out + i + words, interleaveHigh(e, o));
    }
}

// From sites of four pixels.
ZEL_INLINE void repeatFourTimes(const uint16_t* in, uint16_t* out, int pixels) {
    for (int i = 0; i < pixels; ++i) out[i] = in[i / 4];
}
ZEL_INLINE void interpolateFourTimes(const uint16_t* in, uint16_t* out, int pixels, bool leftSited) {
    for (int i = 0; i < pixels; ++i) {
        const auto site = [&](int k) -> int32_t { return int16_t(in[i / 4 + k]); };
        const int place = i % 4;
        int32_t eighths = 0;
        if (leftSited)
            eighths = 2 * ((4 - place) * site(0) + place * site(1));
        else if (place < 2)
            eighths = (3 - 2 * place) * site(-1) + (5 + 2 * place) * site(0);
        else
            eighths = (11 - 2 * place) * site(0) + (2 * place - 3) * site(1);
        out[i] = uint16_t((eighths + 4) >> 3);
    }
}

// Rows of pixels that go into a site with their weights, and the same for columns: one before the site's own.
struct SiteRows {
    const uint16_t* line[3];
    int weight[3];
    int count;
};

// Of two columns, with weights 0 1 1 or 1 2 1. `bits` is the binary logarithm of the sum of all weights.
ZEL_INLINE void meanOfTwo(const SiteRows& rows, bool sited, int bits, uint16_t* out, int sites) {
    const Dwords half = splatDword(1 << (bits - 1));
    Words own[3], before[3];
    for (int r = 0; r < rows.count; ++r) {
        own[r] = splatWords(sited ? 2 * rows.weight[r] : rows.weight[r], rows.weight[r]);
        before[r] = splatWords(0, rows.weight[r]);
    }
    for (int i = 0; i < sites; i += words) {
        const auto part = [&](int at) ZEL_INLINE_LAMBDA {
            Dwords sum = half;
            for (int r = 0; r < rows.count; ++r) {
                sum += mulAddPairs(loadLine(rows.line[r] + at), own[r]);
                if (sited) sum += mulAddPairs(loadLine(rows.line[r] + at - 2), before[r]);
            }
            return sum >> bits;
        };
        storeLine(out + i, (Words)lowThenHighHalves((Bytes)packWords(part(2 * i), part(2 * i + words))));
    }
}

// Of four columns, weighted alike or 1 2 3 4 3 2 1 around the first one. A row's.
ZEL_INLINE void meanOfFour(const uint16_t* in, bool sited, uint16_t* out, int sites) {
    for (int i = 0; i < sites; ++i) {
        int32_t sum = 0;
        if (sited)
            for (int k = -3; k <= 3; ++k) sum += (4 - (k < 0 ? -k : k)) * int16_t(in[4 * i + k]);
        else
            for (int k = 0; k < 4; ++k) sum += 4 * int16_t(in[4 * i + k]);
        out[i] = uint16_t((sum + 8) >> 4);
    }
}

}  // namespace zel::ZEL_LEVEL::video
