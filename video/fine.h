// Chroma on another grid where it gets more binary places than the words of its samples hold. Each step is exact: numbers count
// 2^-8 of a step of 16 bits, and no way from grid to grid has more than 8 places.
#pragma once

#include "video/source.h"

namespace zel::ZEL_LEVEL::video {

struct alignas(64) FineLine {
    int32_t memory[lineMargin + pieceLength + lineRoom];

    ZEL_INLINE int32_t* at(int i) { return memory + lineMargin + i; }
    ZEL_INLINE const int32_t* at(int i) const { return memory + lineMargin + i; }
};

constexpr int dwords = vectorBytes / 4;
ZEL_INLINE Dwords loadFine(const int32_t* p) { return (Dwords)loadBytes(p); }
ZEL_INLINE void storeFine(int32_t* p, Dwords v) { storeVector(static_cast<void*>(p), v); }

// Lines for sums: whole steps, and what is left of each, in parts of 2^15.
struct Parts {
    const uint16_t *whole[4], *rest[4];
};

class Fine {
  public:
    ZEL_INLINE Fine(const zelv::Call& call, Source& source)
        : call_(call), plan_(*call.plan), side_(call.plan->in), source_(source) {}

    ZEL_INLINE void start(const Piece& piece) {
        piece_ = piece;
        for (Row& r : rows_) r.y = none;
    }

    // U and V of a row of pixels.
    ZEL_NOINLINE void pixels(int y, Parts& parts) {
        const bool isOnGrid = !plan_.sameAcross && !plan_.sameDown;
        Row& row = isOnGrid ? rows_[y % 3] : pixelRow_;
        if (!isOnGrid || row.y != y) read(y, false, false, row);
        for (int c = 1; c < 3; ++c) split(row.line[c - 1].at(0), 0, piece_.pixels, c, parts);
    }

    // The channels that chroma is made of, on the destination's grid, of its row `y`.
    ZEL_NOINLINE void onGrid(int y, Parts& parts) {
        const zelv::Side& to = plan_.out;
        const auto taken = source_.rowsOf(y);
        const bool isRgb = side_.model == zelv::Model::rgb, sited = plan_.sited && to.leftSited;
        const int sites = (piece_.pixels + (1 << to.sitesAcross) - 1) >> to.sitesAcross;
        const int across = plan_.sameAcross ? 0 : to.sitesAcross;
        if (!isRgb)
            for (int i = 0; i < taken.count; ++i) gridRow(taken.row[i]);
        for (int c = isRgb ? 0 : 1; c < 3; ++c) {
            int32_t *const sum = mixed_.at(0), *const result = across ? pixelRow_.line[0].at(0) : sum;
            const int first = -4, end = (sites << across) + 4;
            for (int i = 0; i < taken.count; ++i) {
                const bool isDouble = taken.weight[i] == 2;
                const auto add = [&](const auto& load) ZEL_INLINE_LAMBDA {
                    for (int x = first; x < end; x += dwords) storeFine(sum + x, i == 0 ? load(x) : loadFine(sum + x) + load(x));
                };
                if (isRgb) {
                    const auto* const row = reinterpret_cast<const uint8_t*>(source_.pixels(taken.row[i]).channel[c].at(0));
                    const int back = isDouble ? 7 : 8;
                    add([&](int x) ZEL_INLINE_LAMBDA { return (Dwords)loadWordsAsDwords(row + ptrdiff_t{x} * 2) << 16 >> back; });
                } else {
                    const int32_t* const row = gridRow(taken.row[i]).line[c - 1].at(0);
                    add([&](int x) ZEL_INLINE_LAMBDA { return loadFine(row + x) << (isDouble ? 1 : 0); });
                }
            }
            int bits = taken.count - 1;
            if (across == 1) {
                narrowTwice(sum, result, sites, sited);
                bits += sited ? 2 : 1;
            } else if (across == 2) {
                narrowFourTimes(sum, result, sites, sited);
                bits += sited ? 4 : 2;
            }
            split(result, bits, sites, c, parts);
        }
        if (!isRgb) {
            parts.whole[0] = parts.whole[1];
            parts.rest[0] = parts.rest[1];
        }
    }

  private:
    static constexpr int none = -8;

    struct Row {
        FineLine line[2];
        int y;
    };

    ZEL_INLINE void split(const int32_t* in, int bits, int count, int c, Parts& parts) {
        uint16_t *const whole = whole_[c].at(0), *const rest = rest_[c].at(0);
        for (int i = 0; i < count; i += words) {
            const Dwords low = loadFine(in + i) >> bits, high = loadFine(in + i + dwords) >> bits, below = splatDword(255);
            storeLine(whole + i, (Words)lowThenHighHalves((Bytes)packWords(low >> 8, high >> 8)));
            storeLine(rest + i, (Words)lowThenHighHalves((Bytes)(packWords(low & below, high & below) << 7)));
        }
        parts.whole[c] = whole;
        parts.rest[c] = rest;
    }

    // On the destination's grid in the directions in which both sides have the same sites, and by pixels in others.
    ZEL_INLINE const Row& gridRow(int y) {
        Row& row = rows_[y % 3];
        if (row.y != y) read(y, plan_.sameDown, plan_.sameAcross, row);
        return row;
    }

    // Of a row of sites or of pixels, by sites or by pixels.
    ZEL_NOINLINE void read(int y, bool sitesDown, bool sitesAcross, Row& row) {
        row.y = y;
        const int across = sitesAcross ? 0 : side_.sitesAcross, first = -8;
        const bool down = !sitesDown && side_.sitesDown > 0;
        const int last = (call_.height - 1) >> side_.sitesDown, near = down ? y >> 1 : y;
        int other = near, ofOther = 0;  // quarters
        if (down && plan_.linear && !(side_.topSited && y % 2 == 0)) {
            other += y % 2 == 0 ? -1 : 1;
            other = other < 0 ? 0 : other > last ? last : other;
            ofOther = side_.topSited ? 2 : 1;
        }
        const ChromaRow &a = source_.siteRow(near), &b = source_.siteRow(other);
        const int pixels = piece_.pixels, sites = ((pixels - 1) >> across) + 9;
        for (int c = 0; c < 2; ++c) {
            const uint16_t *const p = (c == 0 ? a.u : a.v).at(0), *const q = (c == 0 ? b.u : b.v).at(0);
            int32_t *const in = (across ? mixed_ : row.line[c]).at(0), *const out = row.line[c].at(0);
            const Words weights = splatWords(256 - 64 * ofOther, 64 * ofOther);
            for (int i = first; i < sites; i += words) {
                const Words v = (Words)spreadHalves((Bytes)loadLine(p + i)), w = (Words)spreadHalves((Bytes)loadLine(q + i));
                storeFine(in + i, mulAddPairs(interleaveLow(v, w), weights));
                storeFine(in + i + dwords, mulAddPairs(interleaveHigh(v, w), weights));
            }
            if (across == 0) continue;
            if (across == 1)
                widenTwice(in, out, sites);
            else
                widenFourTimes(in, out, sites);
            // Filters that follow look beyond the piece, and the image.
            if (piece_.x == 0) extend(out, 0, pixels, true, false);
            if (piece_.x + pixels == call_.width) extend(out, 0, pixels, false, true);
        }
    }

    // By columns, from two sites before the piece to four behind it.
    ZEL_INLINE void widenTwice(const int32_t* in, int32_t* out, int sites) const {
        for (int k = -2; k < sites - 4; k += dwords) {
            const Dwords at = loadFine(in + k), after = loadFine(in + k + 1);
            Dwords even = at, odd = at;
            if (plan_.linear && side_.leftSited) {
                odd = (at + after) >> 1;
            } else if (plan_.linear) {
                const Dwords three = at + at + at;
                even = (three + loadFine(in + k - 1)) >> 2;
                odd = (three + after) >> 2;
            }
            const Dwords e = (Dwords)spreadHalves((Bytes)even), o = (Dwords)spreadHalves((Bytes)odd);
            storeFine(out + 2 * k, interleaveLow(e, o));
            storeFine(out + 2 * k + dwords, interleaveHigh(e, o));
        }
    }
    ZEL_INLINE void widenFourTimes(const int32_t* in, int32_t* out, int sites) const {
        for (int i = 0; i < 4; ++i) {
            const int place = !plan_.linear ? 0 : side_.leftSited ? 2 * i : 2 * i - 3;
            const int beside = place < 0 ? -1 : 1, eighths = place * beside;
            for (int k = -2; k < sites - 4; ++k) out[4 * k + i] = ((8 - eighths) * in[k] + eighths * in[k + beside]) >> 3;
        }
    }

    // Sums of columns with their weights, 1 1 or 1 2 1 around the first one.
    ZEL_INLINE static void narrowTwice(const int32_t* in, int32_t* out, int sites, bool sited) {
        struct Columns {
            Dwords even, odd;
        };
        const auto columns = [&](int at) ZEL_INLINE_LAMBDA {
            const Dwords low = loadFine(in + at), high = loadFine(in + at + dwords);
            return Columns{evenDwords(low, high), oddDwords(low, high)};
        };
        for (int i = 0; i < sites; i += dwords) {
            const Columns own = columns(2 * i);
            Dwords sum = own.even + own.odd;
            if (sited) sum += own.even + columns(2 * i - 2).odd;
            storeFine(out + i, (Dwords)lowThenHighHalves((Bytes)sum));
        }
    }
    // 1 1 1 1, or 1 2 3 4 3 2 1 around the first one.
    ZEL_INLINE static void narrowFourTimes(const int32_t* in, int32_t* out, int sites, bool sited) {
        for (int i = 0; i < sites; ++i) {
            const int32_t* const p = in + 4 * i;
            out[i] = sited ? p[-3] + p[3] + 2 * (p[-2] + p[2]) + 3 * (p[-1] + p[1]) + 4 * p[0] : p[0] + p[1] + p[2] + p[3];
        }
    }

    const zelv::Call& call_;
    const zelv::Plan& plan_;
    const zelv::Side& side_;
    Source& source_;
    Piece piece_{};
    Row rows_[3], pixelRow_;
    FineLine mixed_;
    Line whole_[3], rest_[3];
};

}  // namespace zel::ZEL_LEVEL::video
