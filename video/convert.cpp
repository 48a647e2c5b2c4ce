// The conversion of some rows by a plan: piece by piece, so that all lines stay in the nearest cache.
#include "call.h"
#include "video/fine.h"
#include "video/fused.h"
#include "video/moved.h"
#include "video/reordered.h"
#include "video/stores.h"
#include "video/sums.h"
#include "video/wide.h"

namespace zel::ZEL_LEVEL::video {
namespace {

using zelv::Combination;
using zelv::Layout;
using zelv::Model;

// The pattern's place among 64: the bits of the row and of its difference from the column, reversed and in turn.
constexpr int threshold(int row, int column) {
    int place = 0;
    for (int bit = 0; bit < 3; ++bit) {
        place |= ((row ^ column) >> bit & 1) << (5 - 2 * bit);
        place |= (row >> bit & 1) << (4 - 2 * bit);
    }
    return place;
}

struct Thresholds {
    int8_t of[8][8];
};
constexpr Thresholds thresholds = [] {
    Thresholds t{};
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) t.of[y][x] = int8_t(threshold(y, x));
    return t;
}();

class Converter {
  public:
    ZEL_INLINE explicit Converter(const zelv::Call& call)
        : call_(call),
          plan_(*call.plan),
          to_(call.plan->out),
          source_(call),
          alphaResult_(Shift<0>{call.plan->sums.alphaShift}, to_.alphaDepth) {}

    ZEL_NOINLINE void runFine() {
        Fine fine(call_, source_);
        fine_ = &fine;
        run();
    }

    ZEL_INLINE void run() {
        const int rowsTogether = plan_.in.sitesDown | to_.sitesDown ? 2 : 1;
        for (int64_t nextRow = call_.firstRow; nextRow < call_.endRow; nextRow += rowsTogether) {
            const int y = int(nextRow), end = call_.endRow - y > rowsTogether ? y + rowsTogether : call_.endRow;
            const int done = convertFused(call_, y, end);
            for (int64_t next = done != 0 ? done : convertWide(call_, y, end); next < call_.width; next += pieceLength) {
                const int x = int(next);
                piece_ = {x, call_.width - x < pieceLength ? call_.width - x : pieceLength};
                source_.start(piece_);
                if (fine_) fine_->start(piece_);
                for (int row = y; row < end; ++row) {
                    if (to_.model != Model::luma)
                        colours(row);
                    else
                        lumaAndChroma(row);
                }
            }
        }
    }

  private:
    ZEL_INLINE uint8_t* address(int plane, int y) const { return call_.to[plane] + ptrdiff_t{call_.toStep[plane]} * y; }

    ZEL_INLINE Rows addedIn(int y) const {
        Rows rows;
        const int shift = plan_.sums.shift;
        for (int c = 0; c < 3; ++c)
            for (int x = 0; x < 8; ++x) {
                const int32_t part = plan_.ordered ? (2 * thresholds.of[y & 7][x] + 1) << shift >> 7 : 1 << (shift - 1);
                rows.added[c].of[x] = plan_.sums.offset[c] + part;
            }
        for (int x = 0; x < 8; ++x) rows.added[3].of[x] = plan_.sums.offset[3] + (1 << (plan_.sums.alphaShift - 1));
        return rows;
    }

    ZEL_INLINE bool hasAlpha() const { return to_.alpha != zelv::Alpha::none; }
    ZEL_INLINE bool copiesAlpha() const { return to_.alpha == zelv::Alpha::present && plan_.in.alpha == zelv::Alpha::present; }

    ZEL_INLINE static void fill(uint16_t* line, int sample, int count) {
        const Words v = splatWord(sample);
        for (int i = 0; i < count; i += words) storeLine(line + i, v);
    }

    ZEL_INLINE const uint16_t* alpha(int y, const Rows& rows) {
        uint16_t* const line = out_[3].at(0);
        if (copiesAlpha())
            channelSums<false>(plan_.sums, rows.added[3], alphaResult_, 3, 0, source_.alpha(y, own_), line, piece_.pixels);
        else
            fill(line, (1 << to_.alphaDepth) - 1, piece_.pixels);
        return line;
    }

    template <class Call>
    ZEL_INLINE void withResult(const Call& call) const {
        withShift(plan_.sums.shift, [&](auto bits) ZEL_INLINE_LAMBDA { call(Result<decltype(bits)>(bits, to_.depth)); });
    }

    // A channel of itself.
    ZEL_NOINLINE void channel(const Rows& rows, int c, const uint16_t* in, uint16_t* out, int count) const {
        const zelv::Sums& sums = plan_.sums;
        const bool whole = sums.low[c][c] == 0;
        if (whole && sums.high[c][c] == 1 << 13 && sums.offset[c] == 0 && !plan_.ordered) {
            movedSamples(to_.depth, in, out, count);
            return;
        }
        withResult([&](const auto& result) ZEL_INLINE_LAMBDA {
            whole ? channelSums<true>(sums, rows.added[c], result, c, c, in, out, count)
                  : channelSums<false>(sums, rows.added[c], result, c, c, in, out, count);
        });
    }

    // RGB has the same luma in all of its channels, and chroma none of luma.
    template <int first, int last>
    ZEL_INLINE void matrix(const Rows& rows, const Parts& parts, uint16_t* const (&out)[4], int count) const {
        if (parts.rest[1]) return finely<first, last>(rows, parts, out, count);
        const uint16_t* const(&in)[4] = parts.whole;
        if constexpr (last == 0) {
            matrixOf<First::own, first, last>(rows, in, out, count);
        } else if constexpr (first == 0) {
            matrixOf<First::shared, first, last>(rows, in, out, count);
        } else {
            plan_.in.model == Model::rgb ? matrixOf<First::own, first, last>(rows, in, out, count)
                                         : matrixOf<First::none, first, last>(rows, in, out, count);
        }
    }

    template <int first, int last>
    ZEL_NOINLINE void finely(const Rows& rows, const Parts& in, uint16_t* const (&out)[4], int count) const {
        const Shift<0> bits{plan_.sums.shift};
        fineSums<first, last>(plan_.sums, rows, Result<Shift<0>>(bits, to_.depth), in.whole, in.rest, out, count);
    }

    template <First kind, int first, int last>
    ZEL_NOINLINE void matrixOf(const Rows& rows, const uint16_t* const (&in)[4], uint16_t* const (&out)[4], int count) const {
        if (plan_.allAreWhole) {
            const Shift<23> bits{plan_.sums.shift};
            matrixSums<true, true, kind, first, last>(plan_.sums, rows, Result<Shift<23>>(bits, to_.depth), in, out, count);
        } else if (plan_.firstIsWhole) {
            const Shift<21> bits{plan_.sums.shift};
            matrixSums<true, false, kind, first, last>(plan_.sums, rows, Result<Shift<21>>(bits, to_.depth), in, out, count);
        } else {
            withResult([&](const auto& result) ZEL_INLINE_LAMBDA {
                matrixSums<false, false, kind, first, last>(plan_.sums, rows, result, in, out, count);
            });
        }
    }

    ZEL_NOINLINE void sites(const Rows& rows, const uint16_t* const (&in)[4], uint16_t* const (&out)[4], int count) const {
        constexpr int mostOfWords = 12;
        if (plan_.firstIsWhole) {
            const Shift<21> bits{plan_.sums.shift};
            siteSums<true, true>(plan_.sums, rows, Result<Shift<21>>(bits, to_.depth), in, out, count);
        } else {
            withResult([&](const auto& result) ZEL_INLINE_LAMBDA {
                to_.depth <= mostOfWords ? siteSums<false, true>(plan_.sums, rows, result, in, out, count)
                                         : siteSums<false, false>(plan_.sums, rows, result, in, out, count);
            });
        }
    }

    // RGB or gray.
    ZEL_NOINLINE void colours(int y) {
        const Rows rows = addedIn(y);
        uint16_t* const lines[4] = {out_[0].at(0), out_[1].at(0), out_[2].at(0), nullptr};
        const uint16_t* done[4] = {lines[0], lines[1], lines[2], nullptr};
        const int n = piece_.pixels;
        if (to_.isFloat) {
            floats(y, rows);
            return;
        }
        if (to_.model == Model::gray) {
            if (plan_.combination == Combination::channels)
                channel(rows, 0, source_.luma(y, own_), lines[0], n);
            else
                matrix<0, 0>(rows, all(y), lines, n);
            storePlane(to_, lines[0], address(0, y), piece_.x, n);
            return;
        }
        if (plan_.combination == Combination::gray) {
            channel(rows, 0, source_.luma(y, own_), lines[0], n);
            done[1] = done[2] = done[0];
        } else if (plan_.combination == Combination::channels) {
            const PixelRow& in = source_.pixels(y);
            for (int c = 0; c < 3; ++c) channel(rows, c, in.channel[c].at(0), lines[c], n);
        } else if (plan_.in.sitesAcross == 1 && !plan_.linear) {
            const ChromaRow& chroma = source_.sites(y);
            const uint16_t* const in[4] = {source_.luma(y, own_), chroma.u.at(0), chroma.v.at(0)};
            sites(rows, in, lines, n);
        } else {
            matrix<0, 2>(rows, all(y), lines, n);
        }
        if (hasAlpha()) done[3] = alpha(y, rows);
        if (to_.planes == 1)
            storeInterleaved(to_, done, address(0, y), piece_.x, n);
        else
            for (int c = 0; c < to_.samples; ++c) storePlane(to_, done[c], address(to_.place[c], y), piece_.x, n);
    }

    // All channels of a row by pixels.
    ZEL_INLINE const Parts& all(int y) {
        if (fine_ && plan_.in.model == Model::luma) {
            all_.whole[0] = source_.luma(y, own_);
            fine_->pixels(y, all_);
        } else {
            const PixelRow& in = source_.pixels(y);
            for (int c = 0; c < 3; ++c) all_.whole[c] = in.channel[c].at(0);
            all_.rest[1] = nullptr;
        }
        all_.rest[0] = nullptr;
        return all_;
    }

    ZEL_INLINE void floats(int y, const Rows& rows) {
        alignas(64) float lines[4][pieceLength + 2 * words];
        const float* done[4] = {lines[0], lines[1], lines[2], lines[3]};
        Parts in{};
        if (plan_.combination == Combination::gray)
            in.whole[0] = in.whole[1] = in.whole[2] = source_.luma(y, own_);
        else
            in = all(y);
        for (int c = 0; c < 3; ++c) floatSums(plan_.sums, rows, c, in.whole, in.rest, lines[c], piece_.pixels);
        if (copiesAlpha()) {
            const uint16_t* const a = source_.alpha(y, own_);
            const uint16_t* const ones[4] = {a, a, a, nullptr};
            floatSums(plan_.sums, rows, zelv::alphaChannel, ones, {}, lines[3], piece_.pixels);
        } else if (hasAlpha()) {
            for (int i = 0; i < piece_.pixels; ++i) lines[3][i] = 1;
        }
        uint8_t* addresses[4] = {};
        for (int i = 0; i < to_.planes; ++i) addresses[i] = address(i, y);
        storeFloats(to_, done, addresses, piece_.x, piece_.pixels);
    }

    // Luma of a row and, on the first row of a site, its chroma.
    ZEL_NOINLINE void lumaAndChroma(int y) {
        const Rows rows = addedIn(y);
        const int n = piece_.pixels;
        uint16_t* const lines[4] = {out_[0].at(0), out_[1].at(0), out_[2].at(0), nullptr};
        const uint16_t* done[4] = {lines[0], lines[1], lines[2], nullptr};
        if (plan_.combination == Combination::channels)
            channel(rows, 0, source_.luma(y, own_), lines[0], n);
        else
            matrix<0, 0>(rows, all(y), lines, n);
        const bool hasChroma = !to_.sitesDown || y % 2 == 0;
        const int site = to_.sitesDown ? y >> 1 : y;
        const int sites = (n + (1 << to_.sitesAcross) - 1) >> to_.sitesAcross, firstSite = piece_.x >> to_.sitesAcross;
        if (hasChroma) chroma(site, sites, lines);
        if (hasAlpha()) done[3] = alpha(y, rows);
        switch (to_.layout) {
            case Layout::planar:
            case Layout::semiPlanar:
                storePlane(to_, lines[0], address(to_.place[0], y), piece_.x, n);
                if (to_.planes == 4) storePlane(to_, done[3], address(to_.place[3], y), piece_.x, n);
                if (!hasChroma) break;
                if (to_.layout == Layout::semiPlanar) {
                    const bool uFirst = to_.place[1] < to_.place[2];
                    storePairs(to_, lines[uFirst ? 1 : 2], lines[uFirst ? 2 : 1], address(1, site), firstSite, sites);
                } else {
                    for (int c = 1; c < 3; ++c) storePlane(to_, lines[c], address(to_.place[c], site), firstSite, sites);
                }
                break;
            case Layout::paired:
            case Layout::v210:
                lines[0][n] = lines[0][n - 1];
                storePaired(to_, lines[0], lines[1], lines[2], address(0, y), piece_.x, n);
                break;
            default:
                storeInterleaved(to_, done, address(0, y), piece_.x, n);
        }
    }

    ZEL_INLINE void chroma(int site, int sites, uint16_t* const (&lines)[4]) {
        if (plan_.in.model == Model::gray) {
            for (int c = 1; c < 3; ++c) fill(lines[c], 1 << (to_.depth - 1), sites);
            return;
        }
        Parts in{};
        if (fine_)
            fine_->onGrid(site, in);
        else
            source_.onGrid(site, grid_, in.whole);
        const Rows rows = addedIn(site);
        if (fine_ || plan_.combination != Combination::channels)
            matrix<1, 2>(rows, in, lines, sites);
        else
            for (int c = 1; c < 3; ++c) channel(rows, c, in.whole[c], lines[c], sites);
    }

    const zelv::Call& call_;
    const zelv::Plan& plan_;
    const zelv::Side& to_;
    Source source_;
    Result<Shift<0>> alphaResult_;
    Piece piece_{};
    Parts all_{};
    Fine* fine_ = nullptr;
    Line own_, grid_[3], out_[4];  // one of the source, chroma on its grid, results
};

void convert(const zelv::Call& given) {
    const zelv::Plan& plan = *given.plan;
    const bool isMoved = moved::serves(plan), isReordered = reordered::serves(plan);
    zelv::Call call = given;
    const Bypass bypass(gainsByBypass(call, traits.bypassesByWholeLines || isMoved || isReordered));
    call.bypassing = bypass;
    if (isMoved)
        convertMoved(call);
    else if (isReordered)
        convertReordered(call);
    else if (plan.isFine)
        Converter(call).runFine();
    else
        Converter(call).run();
}

}  // namespace
}  // namespace zel::ZEL_LEVEL::video

#define ZELV_NAME_(level) zel_##level##_video
#define ZELV_NAME(level) ZELV_NAME_(level)
extern "C" {
extern const zelv::Convert ZELV_NAME(ZEL_LEVEL);
const zelv::Convert ZELV_NAME(ZEL_LEVEL) = zel::ZEL_LEVEL::video::convert;
}
