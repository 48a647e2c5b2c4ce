// Lines of a source for one piece of some rows: its channels by pixels, and chroma on the grid of the destination's sites.
#pragma once

#include "call.h"
#include "video/loads.h"
#include "video/sites.h"

namespace zel::ZEL_LEVEL::video {

struct Piece {
    int x, pixels;
};

struct PixelRow {
    Line channel[4];
    int y;
};

struct ChromaRow {
    Line u, v;
    int y;
};

class Source {
  public:
    ZEL_INLINE explicit Source(const zelv::Call& call)
        : call_(call), plan_(*call.plan), side_(call.plan->in), reach_(call.plan->linear || call.plan->sited ? 4 : 0) {}

    ZEL_INLINE void start(const Piece& piece) {
        piece_ = piece;
        for (PixelRow& r : pixelRows_) r.y = none;
        for (ChromaRow& r : siteRows_) r.y = none;
        for (ChromaRow& r : fullRows_) r.y = none;
    }

    // All three channels of a row by pixels, and alpha where the source has it.
    ZEL_NOINLINE PixelRow& pixels(int y) {
        PixelRow& row = pixelRows_[y % 3];
        if (row.y == y) return row;
        row.y = y;
        const Span s = span(0);
        if (isInterleaved()) {
            uint16_t* const lines[4] = {row.channel[0].at(s.at), row.channel[1].at(s.at), row.channel[2].at(s.at),
                                        side_.alpha == zelv::Alpha::present ? row.channel[3].at(s.at) : nullptr};
            loadInterleaved(side_, address(0, y), s.first, s.count, lines);
            for (Line& line : row.channel) extendSpan(line, s);
            return row;
        }
        readLuma(y, row.channel[0]);
        if (side_.model == zelv::Model::rgb) {
            for (int c = 1; c < 3; ++c) readPlane(c, y, 0, row.channel[c]);
        } else if (side_.model == zelv::Model::luma) {
            const bool isPlain = side_.layout == Layout::planar && side_.sitesAcross + side_.sitesDown == 0;
            if (isPlain)
                for (int c = 1; c < 3; ++c) readPlane(c, y, 0, row.channel[c]);
            else
                readChroma(y, false, false, row.channel[1], row.channel[2]);
        }
        return row;
    }

    // The first channel alone. `own` is for it where no row of all channels has it.
    ZEL_INLINE const uint16_t* luma(int y, Line& own) {
        if (isInterleaved()) return pixels(y).channel[0].at(0);
        readLuma(y, own);
        return own.at(0);
    }

    ZEL_INLINE const uint16_t* alpha(int y, Line& own) {
        if (isInterleaved()) return pixels(y).channel[zelv::alphaChannel].at(0);
        readPlane(zelv::alphaChannel, y, 0, own);
        return own.at(0);
    }

    // Chroma of a row of pixels by sites of two pixels, for sums that repeat it.
    ZEL_INLINE const ChromaRow& sites(int y) { return siteRow(side_.sitesDown ? y >> 1 : y); }

    // Chroma as it is in memory, of a row of sites.
    ZEL_NOINLINE const ChromaRow& siteRow(int y) {
        ChromaRow& row = siteRows_[y % 4];
        if (row.y == y) return row;
        row.y = y;
        const Span s = span(side_.sitesAcross);
        switch (side_.layout) {
            case Layout::planar:
                readPlane(1, y, side_.sitesAcross, row.u);
                readPlane(2, y, side_.sitesAcross, row.v);
                return row;
            case Layout::semiPlanar: {
                const bool uFirst = side_.place[1] < side_.place[2];
                loadPairs(side_, address(1, y), s.first, s.count, (uFirst ? row.u : row.v).at(s.at),
                          (uFirst ? row.v : row.u).at(s.at));
                break;
            }
            case Layout::paired:
            case Layout::v210:
                loadPairedChroma(side_, address(0, y), s.first, s.count, row.u.at(s.at), row.v.at(s.at));
                break;
            default: {
                const PixelRow& all = pixels(y);
                row.u = all.channel[1];
                row.v = all.channel[2];
                return row;
            }
        }
        extendSpan(row.u, s);
        extendSpan(row.v, s);
        return row;
    }

    // The rows that a row of the destination's sites is made of, with their weights.
    struct TakenRows {
        int row[3], weight[3], count;
    };
    ZEL_INLINE TakenRows rowsOf(int y) const {
        const zelv::Side& to = plan_.out;
        if (plan_.sameDown || !to.sitesDown) return {{y}, {1}, 1};
        const int last = call_.height - 1;
        const auto bounded = [&](int i) { return i < 0 ? 0 : i > last ? last : i; };
        if (plan_.sited && to.topSited) return {{bounded(2 * y - 1), bounded(2 * y), bounded(2 * y + 1)}, {1, 2, 1}, 3};
        return {{bounded(2 * y), bounded(2 * y + 1)}, {1, 1}, 2};
    }

    // The channels that chroma is made of, on the destination's grid, of its row `y`.
    ZEL_NOINLINE void onGrid(int y, Line (&own)[3], const uint16_t* (&out)[4]) {
        const zelv::Side& to = plan_.out;
        const bool isRgb = side_.model == zelv::Model::rgb, sameDown = plan_.sameDown, sameAcross = plan_.sameAcross;
        const TakenRows taken = rowsOf(y);
        const int count = taken.count;
        SiteRows lines{{}, {taken.weight[0], taken.weight[1], taken.weight[2]}, count};
        const uint16_t* found[3][3];
        for (int i = 0; i < count; ++i) {
            if (isRgb) {
                const PixelRow& r = pixels(taken.row[i]);
                for (int c = 0; c < 3; ++c) found[i][c] = r.channel[c].at(0);
            } else {
                const ChromaRow& r = chroma(taken.row[i], sameDown, sameAcross);
                found[i][1] = r.u.at(0);
                found[i][2] = r.v.at(0);
            }
        }
        const int sites = (piece_.pixels + (1 << to.sitesAcross) - 1) >> to.sitesAcross;
        const int downBits = count - 1;
        for (int c = isRgb ? 0 : 1; c < 3; ++c) {
            for (int i = 0; i < count; ++i) lines.line[i] = found[i][c];
            uint16_t* const line = own[c].at(0);
            const bool sited = plan_.sited && to.leftSited;
            out[c] = line;
            if (to.sitesAcross == 1 && !sameAcross)
                meanOfTwo(lines, sited, downBits + (sited ? 2 : 1), line, sites);
            else if (to.sitesAcross == 2 && !sameAcross)
                meanOfFour(lines.line[0], sited, line, sites);
            else if (count == 1)
                out[c] = lines.line[0];
            else
                for (int i = 0; i < sites; i += words) {
                    const Words a = loadLine(lines.line[0] + i), b = loadLine(lines.line[1] + i);
                    storeLine(line + i, count == 2 ? halfway(a, b) : around(a, b, loadLine(lines.line[2] + i)));
                }
        }
        if (!isRgb) out[0] = out[1];
    }

  private:
    static constexpr int none = -8;

    // Samples of a line, those to either side that filters look at among them.
    struct Span {
        int first, count, at;
        bool left, right;  // at the edge of the image
    };
    ZEL_INLINE Span span(int across) const {
        const int all = ((call_.width - 1) >> across) + 1, start = piece_.x >> across;
        const int end = start + ((piece_.pixels + (1 << across) - 1) >> across);
        const int first = start - reach_ < 0 ? 0 : start - reach_, last = all - end < reach_ ? all : end + reach_;
        return {first, last - first, first - start, first == 0, last == all};
    }
    ZEL_INLINE void extendSpan(Line& line, const Span& s) const { extend(line.at(0), s.at, s.at + s.count, s.left, s.right); }

    ZEL_INLINE const uint8_t* address(int plane, int y) const { return call_.from[plane] + ptrdiff_t{call_.fromStep[plane]} * y; }
    ZEL_INLINE bool isInterleaved() const { return side_.layout == Layout::interleaved || side_.layout == Layout::dwords; }

    ZEL_INLINE void readPlane(int channel, int y, int across, Line& line) const {
        const Span s = span(across);
        loadPlane(side_, address(side_.place[channel], y), s.first, s.count, line.at(s.at));
        extendSpan(line, s);
    }

    ZEL_INLINE void readLuma(int y, Line& line) const {
        if (side_.layout == Layout::planar || side_.layout == Layout::semiPlanar) {
            readPlane(0, y, 0, line);
        } else {
            const Span s = span(0);
            loadPairedLuma(side_, address(0, y), s.first, s.count, line.at(s.at));
            extendSpan(line, s);
        }
    }

    // Of a row of sites or of pixels, by sites or by pixels.
    ZEL_INLINE const ChromaRow& chroma(int y, bool sitesDown, bool sitesAcross) {
        const bool across = !sitesAcross && side_.sitesAcross > 0, down = !sitesDown && side_.sitesDown > 0;
        if (!across && !down) return siteRow(y);
        if (!across && !plan_.linear) return siteRow(y >> 1);
        ChromaRow& row = fullRows_[y % 3];
        if (row.y == y) return row;
        row.y = y;
        readChroma(y, sitesDown, sitesAcross, row.u, row.v);
        return row;
    }

    ZEL_NOINLINE void readChroma(int y, bool sitesDown, bool sitesAcross, Line& u, Line& v) {
        const bool across = !sitesAcross && side_.sitesAcross > 0, down = !sitesDown && side_.sitesDown > 0;
        const ChromaRow* row = nullptr;
        if (!down) {
            row = &siteRow(y);
        } else if (!plan_.linear || (side_.topSited && y % 2 == 0)) {
            row = &siteRow(y >> 1);
        } else {
            const int last = (call_.height - 1) >> 1, other = (y >> 1) + (y % 2 == 0 ? -1 : 1);
            const ChromaRow &near = siteRow(y >> 1), &far = siteRow(other < 0 ? 0 : other > last ? last : other);
            const auto mix = [&](const Line& a, const Line& b, Line& out) {
                constexpr int from = -lineMargin;
                const int count = piece_.pixels + 8 - from;
                if (side_.topSited)
                    combineLines(a.at(from), b.at(from), out.at(from), count,
                                 [](Words p, Words q) ZEL_INLINE_LAMBDA { return halfway(p, q); });
                else
                    combineLines(a.at(from), b.at(from), out.at(from), count,
                                 [](Words p, Words q) ZEL_INLINE_LAMBDA { return quarterFrom(p, q); });
            };
            mix(near.u, far.u, between_.u);
            mix(near.v, far.v, between_.v);
            row = &between_;
        }
        const auto widen = [&](const Line& in, Line& out) {
            if (!across) {
                out = in;
                return;
            }
            // Filters that follow look beyond the piece.
            const int pixels = piece_.pixels, from = -2 * reach_;
            if (side_.sitesAcross == 1)
                plan_.linear ? interpolateTwice(in.at(from / 2), out.at(from), pixels - 2 * from, side_.leftSited)
                             : repeatTwice(in.at(from / 2), out.at(from), pixels - 2 * from);
            else
                plan_.linear ? interpolateFourTimes(in.at(from / 4), out.at(from), pixels - 2 * from, side_.leftSited)
                             : repeatFourTimes(in.at(from / 4), out.at(from), pixels - 2 * from);
            if (piece_.x == 0) extend(out.at(0), 0, pixels, true, false);
            if (piece_.x + pixels == call_.width) extend(out.at(0), 0, pixels, false, true);
        };
        widen(row->u, u);
        widen(row->v, v);
    }

    const zelv::Call& call_;
    const zelv::Plan& plan_;
    const zelv::Side& side_;
    int reach_;
    Piece piece_{};
    PixelRow pixelRows_[3];
    ChromaRow siteRows_[4], fullRows_[3], between_;
};

}  // namespace zel::ZEL_LEVEL::video
