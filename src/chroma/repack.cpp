// Luma and chroma moved between storage forms, chroma orders and subsampling schemes without arithmetic: chroma goes down by
// dropping samples and up by repeating them. An export is a source form, a destination form and what the table adds to them; the
// rule follows from the two subsampling schemes:
//
//     same scheme       every sample keeps its place
//     4:2:2 to 4:2:0    the first chroma row of a pair stays
//     4:2:0 to 4:2:2    both rows take the chroma row
//     4:2:2 to 4:1:1    the first sample of a pair stays
//     4:1:1 to 4:2:2    every sample twice
//     4:1:1 to 4:2:0    a fold: the samples of two rows in turn make one row of twice as many
//     4:2:0 to 4:1:1    the fold undone
//
// The fold puts samples beside each other that belong below each other. Meant: it loses nothing, and the way
// back undoes it; averaged samples would not come back.
#include "chroma/pairs.h"
#include "chroma/row_copy.h"
#include "frame/passes.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_LEVEL {
namespace {

enum class Storage : uint8_t { packed, interleaved, planes };
enum class Sampling : uint8_t { s422, s420, s411 };

struct Form {
    Storage storage;
    Sampling sampling;
    bool crFirst = false;                        // Cr before Cb; never in an interleaved plane
    PackedOrder order = PackedOrder::lumaFirst;  // of a packed form
};

using enum Storage;
using enum Sampling;

constexpr Form yCbCr422{packed, s422}, yCrCb422{packed, s422, true}, cbYCr422{packed, s422, false, PackedOrder::chromaFirst};
constexpr Form i422{planes, s422}, i420{planes, s420}, i411{planes, s411};
constexpr Form i422CrCb{planes, s422, true}, i420CrCb{planes, s420, true};
constexpr Form semi420{interleaved, s420}, semi411{interleaved, s411};

constexpr Site siteOf(Sampling s) { return {uint8_t(s == s411 ? 4 : 2), uint8_t(s == s420 ? 2 : 1)}; }

// Two forms side by side: the pixels that a site of both covers, and what of a form's chroma lies in it.
struct Pairing {
    Form from, to;

    constexpr Site site() const {
        const Site a = siteOf(from.sampling), b = siteOf(to.sampling);
        return {a.width > b.width ? a.width : b.width, a.height > b.height ? a.height : b.height};
    }
    constexpr int samples(Form f) const { return site().width / siteOf(f.sampling).width; }
    constexpr int rows(Form f) const { return site().height / siteOf(f.sampling).height; }

    // All chroma rows of a source but those that 4:2:0 drops.
    constexpr int rowsRead() const { return from.sampling == s411 ? rows(from) : 1; }

    // One side has half as many samples a row as the other.
    constexpr bool halved(Form f) const { return f.sampling == s411 && samples(from) != samples(to); }
    constexpr int pairBytes() const { return halved(from) || halved(to) ? 4 : 2; }
    constexpr bool exchangesChroma() const { return from.crFirst != to.crFirst; }
};

// The streams of a form: luma only with a packed form on either side, since it is copied by itself otherwise.
constexpr Layout streams(Pairing p, Form f, int chromaRows, bool exchanged) {
    Layout layout{};
    const auto add = [&](int plane, int bytes, int row, int rows) {
        layout.streams[layout.count++] = {uint8_t(plane), uint8_t(bytes), int8_t(row), uint8_t(rows)};
    };
    const Site site = p.site();
    const bool isPacked = f.storage == packed, withLuma = p.from.storage == packed || p.to.storage == packed;
    for (int r = 0; withLuma && r < site.height; ++r) add(0, isPacked ? 2 * site.width : site.width, r, site.height);
    for (int r = 0; !isPacked && r < chromaRows; ++r) {
        const int samples = p.samples(f), rows = p.rows(f);
        if (f.storage == interleaved) {
            add(1, 2 * samples, r, rows);
        } else {
            add(exchanged ? 2 : 1, samples, r, rows);
            add(exchanged ? 1 : 2, samples, r, rows);
        }
    }
    return layout;
}

template <class T>
struct Type {
    using type = T;
};

template <Pairing p>
constexpr auto source() {
    constexpr Storage storage = p.from.storage;
    if constexpr (storage == packed)
        return Type<PairsFromPacked<p.site().height, p.from.order>>{};
    else if constexpr (p.halved(p.from) && storage == interleaved)
        return Type<FromQuarterInterleaved<p.rowsRead()>>{};
    else if constexpr (p.halved(p.from))
        return Type<FromQuarterPlanes<p.rowsRead()>>{};
    else if constexpr (storage == interleaved)
        return Type<PairsFromInterleaved>{};
    else
        return Type<PairsFromPlanes>{};
}

template <Pairing p>
constexpr auto destination() {
    constexpr Storage storage = p.to.storage;
    if constexpr (storage == packed)
        return Type<PairsToPacked<p.site().height, p.to.order>>{};
    else if constexpr (p.halved(p.to) && storage == interleaved)
        return Type<ToQuarterInterleaved<p.rows(p.to)>>{};
    else if constexpr (p.halved(p.to))
        return Type<ToQuarterPlanes<p.rows(p.to)>>{};
    else if constexpr (storage == interleaved)
        return Type<PairsToInterleaved>{};
    else
        return Type<PairsToPlanes<p.rows(p.to)>>{};
}

template <Pairing p>
constexpr Kernel pairsKernel =
    withoutConstants<PairsKernel<p.pairBytes(), typename decltype(source<p>())::type, typename decltype(destination<p>())::type>>;

// The pass that moves chroma, and luma with it on a packed side.
template <Pairing p>
constexpr Conversion chroma{.site = p.site(),
                            .from = streams(p, p.from, p.rowsRead(), p.exchangesChroma() && p.from.storage == planes),
                            .to = streams(p, p.to, p.rows(p.to), p.exchangesChroma() && p.from.storage != planes),
                            .block = pairsKernel<p>};

// One chroma plane to one, unchanged, in every row or with rows dropped or repeated.
template <Pairing p, int from, int to>
constexpr Conversion chromaPlane{.site = p.site(),
                                 .from = layoutOf({{from, 1, 0, uint8_t(p.rows(p.from))}}),
                                 .to = {p.rows(p.to), {{to, 1, 0, uint8_t(p.rows(p.to))}, {to, 1, 1, uint8_t(p.rows(p.to))}}},
                                 .block = p.rows(p.to) == 1 ? copy<1> : copy<2>};

// Packed pixels in another byte order: the shuffle of four pairs.
struct BytePlaces {
    alignas(16) uint8_t place[16];
};

constexpr int placeOf(char sample, Form f) {
    constexpr const char* orders[2][2] = {{"yuYv", "yvYu"}, {"uyvY", "vyuY"}};
    const char* order = orders[f.order == PackedOrder::chromaFirst][f.crFirst];
    for (int i = 0;; ++i)
        if (order[i] == sample) return i;
}

template <Pairing p>
constexpr BytePlaces byteOrder = [] {
    constexpr char samples[] = {'y', 'Y', 'u', 'v'};
    BytePlaces places{};
    for (int pair = 0; pair < 16; pair += 4)
        for (const char sample : samples) places.place[pair + placeOf(sample, p.to)] = uint8_t(pair + placeOf(sample, p.from));
    return places;
}();

struct ReorderKernel {
    using Constants = BytePlaces;
    static constexpr int sites = vectorBytes / 4, blocksAtOnce = 4;
    static constexpr bool keepsUp = true;

    // Several of the narrower vectors at a time, or the loop costs as much as their stores.
    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const Bytes places = everyLane(k.place);
#pragma GCC unroll(vectorBytes == lineBytes ? 1 : 4)
        for (size_t i = 0; i < count; ++i)
            storeVector(row.out[0] + i * vectorBytes, shuffle(loadBytes(row.in[0] + i * vectorBytes), places));
    }
};

template <Pairing p>
constexpr Conversion reorder{
    .site = {2, 1}, .from = layoutOf({{0, 4}}), .to = layoutOf({{0, 4}}), .block = kernel<ReorderKernel>(byteOrder<p>)};

template <Pairing p>
constexpr Pass reorderOnly[] = {{reorder<p>}};
template <Pairing p>
constexpr Pass withLuma[] = {{chroma<p>}};
template <Pairing p>
constexpr Pass lumaThenChroma[] = {{copyLuma}, {chroma<p>}};
template <Pairing p>
constexpr Pass planeByPlane[] = {
    {copyLuma}, {chromaPlane < p, 1, p.exchangesChroma() ? 2 : 1 > }, {chromaPlane < p, 2, p.exchangesChroma() ? 1 : 2 > }};

// A minimum of no height makes a height below 1 no error: nothing is written.
constexpr int any = INT32_MIN;

template <Form from, Form to>
constexpr Passes repack(Minimum minimum) {
    constexpr Pairing p{from, to};
    constexpr bool samplesStay = p.samples(from) == p.samples(to);
    Passes result{};
    if constexpr (from.storage == packed && to.storage == packed)
        result = passes(p.site(), reorderOnly<p>, minimum);
    else if constexpr (from.storage == packed || to.storage == packed)
        result = passes(p.site(), withLuma<p>, minimum);
    else if constexpr (from.storage == planes && to.storage == planes && samplesStay)
        result = passes(p.site(), planeByPlane<p>, minimum);
    else
        result = passes(p.site(), lumaThenChroma<p>, minimum);
    return result;
}

// 4:2:0 to planar 4:2:2 with two chroma steps that differ: the second row of a pair lies where the step of the first chroma plane
// puts it, in the last plane too, for the samples behind the last whole 64 of a row and before its last whole 8. Meant: by
// the steps as they are given, these samples would go to other places. Rows may then meet, so blocks are stored in the order of
// old: 64, 32, 16, 8, 1.
template <Pairing p>
void repeatRowsByFirstStep(const Images& images) {
    constexpr bool isInterleaved = p.from.storage == interleaved;
    constexpr int stride = isInterleaved ? 2 : 1;
    constexpr int blocks[] = {64, 32, 16, 8, 1};
    const int n = images.size.width / 2;
    for (int plane = 1; plane <= 2; ++plane) {
        const int sourcePlane = isInterleaved ? 1 : p.exchangesChroma() ? 3 - plane : plane;
        const uint8_t* from = images.source[sourcePlane] + (isInterleaved ? plane - 1 : 0);
        uint8_t* to = images.destination[plane];
        const auto sourceStep = size_t(images.sourceStep[sourcePlane]), step = size_t(images.destinationStep[plane]);
        for (int k = 0; k < images.size.height / 2; ++k) {
            int i = 0;
            for (const int block : blocks) {
                const size_t secondStep = block == 64 || block == 1 ? step : size_t(images.destinationStep[1]);
                for (; n - i >= block; i += block) {
                    for (int j = i; j < i + block; ++j) to[j] = from[j * stride];
                    uint8_t* second = moved(to, secondStep);
                    for (int j = i; j < i + block; ++j) second[j] = from[j * stride];
                }
            }
            from = moved(from, sourceStep);
            to = moved(to, 2 * step);
        }
    }
}

// Where the two chroma steps of the destination differ, only the first pass, that of luma, is like the others.
struct RepeatedRows : Passes {
    void (*byFirstStep)(const Images& images);
};

[[maybe_unused]] ZEL_INLINE bool isOneRow(const RepeatedRows& r, const Images& images) {
    return isOneRow(static_cast<const Passes&>(r), images);
}

[[maybe_unused]] ZEL_NOINLINE void convert(const RepeatedRows& r, Images& images, Nothing) {
    Passes passes = r;
    const bool equal = images.destinationStep[1] == images.destinationStep[2];
    if (!equal) passes.count = 1;
    convert(passes, images);
    if (!equal) r.byFirstStep(images);
}

template <Form from, Form to>
constexpr RepeatedRows repackToPlanar422() {
    return {repack<from, to>({2, 2}), repeatRowsByFirstStep<Pairing{from, to}>};
}

constexpr Passes with(Passes p, Checks checks) {
    p.checks = checks;
    return p;
}
constexpr Passes with(Passes p, OddSize oddSize) {
    p.oddSize = oddSize;
    return p;
}

}  // namespace

namespace rows {

// The same scheme.
constexpr Passes zeliCbYCr422ToYCbCr422_8u_C2R = repack<cbYCr422, yCbCr422>({2, 1});
constexpr Passes zeliYCbCr422ToCbYCr422_8u_C2R = repack<yCbCr422, cbYCr422>({2, 1});
constexpr Passes zeliYCbCr422ToYCrCb422_8u_C2R = repack<yCbCr422, yCrCb422>({2, any});
constexpr Passes zeliCbYCr422ToYCbCr422_8u_C2P3R = repack<cbYCr422, i422>({2, 1});
constexpr Passes zeliYCrCb422ToYCbCr422_8u_C2P3R = repack<yCrCb422, i422>({2, 1});
constexpr Passes zeliYCbCr422_8u_C2P3R = repack<yCbCr422, i422>({2, 1});
constexpr Passes zeliYCbCr422_8u_P3C2R = repack<i422, yCbCr422>({2, 1});
constexpr Passes zeliYCbCr422ToYCrCb422_8u_P3C2R = repack<i422, yCrCb422>({2, any});
// Meant: alone among its kin this one warns of an odd width. Callers would miss the warning.
constexpr Passes zeliYCbCr422ToCbYCr422_8u_P3C2R = with(repack<i422, cbYCr422>({2, 1}), OddSize::warned);
constexpr Passes zeliYCbCr411_8u_P2P3R = repack<semi411, i411>({4, any});
constexpr Passes zeliYCbCr411_8u_P3P2R = repack<i411, semi411>({4, any});
constexpr Passes zeliYCbCr420_8u_P2P3R = repack<semi420, i420>({2, 2});
constexpr Passes zeliYCbCr420_8u_P3P2R = repack<i420, semi420>({2, 2});
constexpr Passes zeliYCbCr420ToYCrCb420_8u_P2P3R =
    with(repack<semi420, i420CrCb>({2, 2}), {Check::pointers, Check::empty, Check::planes, Check::size});
constexpr Passes zeliYCrCb420ToYCbCr420_8u_P3P2R = repack<i420CrCb, semi420>({2, 2});

// 4:2:2 to 4:2:0.
constexpr Passes zeliCbYCr422ToYCbCr420_8u_C2P2R = repack<cbYCr422, semi420>({2, 2});
constexpr Passes zeliCbYCr422ToYCbCr420_8u_C2P3R = repack<cbYCr422, i420>({2, 2});
constexpr Passes zeliCbYCr422ToYCrCb420_8u_C2P3R = repack<cbYCr422, i420CrCb>({2, 2});
constexpr Passes zeliYCbCr422ToYCbCr420_8u_C2P2R = repack<yCbCr422, semi420>({2, 2});
constexpr Passes zeliYCbCr422ToYCbCr420_8u_C2P3R = repack<yCbCr422, i420>({2, 2});
constexpr Passes zeliYCbCr422ToYCbCr420_8u_P3P2R = repack<i422, semi420>({2, 2});
constexpr Passes zeliYCbCr422ToYCbCr420_8u_P3R = repack<i422, i420>({2, 2});
constexpr Passes zeliYCbCr422ToYCrCb420_8u_C2P3R = repack<yCbCr422, i420CrCb>({2, 2});
constexpr Passes zeliYCrCb422ToYCbCr420_8u_C2P3R = repack<yCrCb422, i420>({2, 2});

// 4:2:0 to 4:2:2. From YCrCb planes to packed pixels the array of source planes is taken as it is: a null array, unlike a null
// plane, is the caller's fault, and no status is promised for it.
constexpr Passes zeliYCbCr420ToCbYCr422_8u_P2C2R = repack<semi420, cbYCr422>({2, 2});
constexpr Passes zeliYCbCr420ToYCbCr422_8u_P2C2R = repack<semi420, yCbCr422>({2, 2});
constexpr Passes zeliYCrCb420ToCbYCr422_8u_P3C2R = repack<i420CrCb, cbYCr422>({2, 2});
constexpr Passes zeliYCrCb420ToYCbCr422_8u_P3C2R = repack<i420CrCb, yCbCr422>({2, 2});
constexpr auto zeliYCbCr420ToYCbCr422_8u_P2P3R = repackToPlanar422<semi420, i422>();
constexpr auto zeliYCbCr420ToYCbCr422_8u_P3R = repackToPlanar422<i420, i422>();
constexpr auto zeliYCrCb420ToYCbCr422_8u_P3R = repackToPlanar422<i420CrCb, i422>();

// 4:2:2 to 4:1:1.
constexpr Passes zeliCbYCr422ToYCbCr411_8u_C2P3R = repack<cbYCr422, i411>({4, any});
constexpr Passes zeliYCbCr422ToYCbCr411_8u_C2P2R = repack<yCbCr422, semi411>({4, any});
constexpr Passes zeliYCbCr422ToYCbCr411_8u_C2P3R = repack<yCbCr422, i411>({4, 1});
constexpr Passes zeliYCbCr422ToYCbCr411_8u_P3P2R = repack<i422, semi411>({4, any});
constexpr Passes zeliYCbCr422ToYCbCr411_8u_P3R = repack<i422, i411>({4, any});
constexpr Passes zeliYCrCb422ToYCbCr411_8u_C2P3R = repack<yCrCb422, i411>({4, any});

// 4:1:1 to 4:2:2.
constexpr Passes zeliYCbCr411ToYCbCr422_8u_P2C2R = repack<semi411, yCbCr422>({4, any});
constexpr Passes zeliYCbCr411ToYCbCr422_8u_P2P3R = repack<semi411, i422>({4, any});
constexpr Passes zeliYCbCr411ToYCbCr422_8u_P3C2R = repack<i411, yCbCr422>({4, any});
constexpr Passes zeliYCbCr411ToYCbCr422_8u_P3R = repack<i411, i422>({4, any});
constexpr Passes zeliYCbCr411ToYCrCb422_8u_P3C2R = repack<i411, yCrCb422>({4, any});
constexpr Passes zeliYCbCr411ToYCrCb422_8u_P3R = repack<i411, i422CrCb>({4, any});

// 4:1:1 to 4:2:0 and back.
constexpr Passes zeliYCbCr411ToYCbCr420_8u_P2P3R = repack<semi411, i420>({4, 2});
constexpr Passes zeliYCbCr411ToYCbCr420_8u_P3P2R = repack<i411, semi420>({4, 2});
constexpr Passes zeliYCbCr411ToYCbCr420_8u_P3R = repack<i411, i420>({4, 2});
constexpr Passes zeliYCbCr411ToYCrCb420_8u_P2P3R = repack<semi411, i420CrCb>({4, 2});
constexpr Passes zeliYCbCr420ToYCbCr411_8u_P2P3R = repack<semi420, i411>({4, 2});
constexpr Passes zeliYCbCr420ToYCbCr411_8u_P3P2R = repack<i420, semi411>({4, 2});
constexpr Passes zeliYCrCb420ToYCbCr411_8u_P3P2R = repack<i420CrCb, semi411>({4, 2});

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_repack ~, 1
#define ZEL_GROUP repack
#include "frame/table.h"
