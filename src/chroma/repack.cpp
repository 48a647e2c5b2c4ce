// Luma and chroma moved between storage forms, chroma orders and subsampling schemes without arithmetic: chroma goes down by dropping
// samples and up by repeating them. An export is a source form, a destination form and what the table adds to them; the rule follows
// from the two subsampling schemes:
//
//     same scheme       every sample keeps its place
//     4:2:2 to 4:2:0    the first chroma row of a pair stays
//     4:2:0 to 4:2:2    both rows take the chroma row
//     4:2:2 to 4:1:1    the first sample of a pair stays
//     4:1:1 to 4:2:2    every sample twice
//     4:1:1 to 4:2:0    a fold: the samples of two rows in turn make one row of twice as many
//     4:2:0 to 4:1:1    the fold undone
//
// The fold puts samples beside each other that belong below each other. That is meant: it loses nothing.
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

template <Pairing p, Stores stores>
constexpr auto source() {
    constexpr Storage storage = p.from.storage;
    if constexpr (storage == packed)
        return Type<FromPacked<p.site().height, p.from.order, stores>>{};
    else if constexpr (p.halved(p.from) && storage == interleaved)
        return Type<FromQuarterInterleaved<p.rowsRead()>>{};
    else if constexpr (p.halved(p.from))
        return Type<FromQuarterPlanes<p.rowsRead()>>{};
    else if constexpr (storage == interleaved)
        return Type<FromInterleaved>{};
    else
        return Type<FromPlanes>{};
}

template <Pairing p, Stores stores>
constexpr auto destination() {
    constexpr Storage storage = p.to.storage;
    if constexpr (storage == packed)
        return Type<ToPacked<p.site().height, p.to.order, stores>>{};
    else if constexpr (p.halved(p.to) && storage == interleaved)
        return Type<ToQuarterInterleaved<p.rows(p.to), stores>>{};
    else if constexpr (p.halved(p.to))
        return Type<ToQuarterPlanes<p.rows(p.to)>>{};
    else if constexpr (storage == interleaved)
        return Type<ToInterleaved>{};
    else
        return Type<ToPlanes<p.rows(p.to)>>{};
}

template <class Kernel>
constexpr typename Kernel::Constants none{};
template <class K>
constexpr Kernel plain = kernel<K>(none<K>);

template <Pairing p, Stores stores>
constexpr Kernel pairsKernel = plain<
    PairsKernel<p.pairBytes(), typename decltype(source<p, stores>())::type, typename decltype(destination<p, stores>())::type>>;

// The pass that moves chroma, and luma with it on a packed side. Without one it can't bypass the cache.
template <Pairing p>
constexpr Conversion chroma{
    .site = p.site(),
    .from = streams(p, p.from, p.rowsRead(), false),
    .to = streams(p, p.to, p.rows(p.to), p.exchangesChroma()),
    .block = pairsKernel<p, Stores::cached>,
    .bypassing = p.from.storage == packed || p.to.storage == packed ? pairsKernel<p, Stores::bypassing> : Kernel{}};

// One chroma plane to one, unchanged, in every row or with rows dropped or repeated.
template <Pairing p, int from, int to>
constexpr Conversion chromaPlane{.site = p.site(),
                                 .from = {1, {{from, 1, 0, uint8_t(p.rows(p.from))}}},
                                 .to = {p.rows(p.to), {{to, 1, 0, uint8_t(p.rows(p.to))}, {to, 1, 1, uint8_t(p.rows(p.to))}}},
                                 .block = p.rows(p.to) == 1 ? copyOnce : copyTwice};

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
    BytePlaces places{};
    for (int pair = 0; pair < 16; pair += 4)
        for (const char sample : {'y', 'Y', 'u', 'v'})
            places.place[pair + placeOf(sample, p.to)] = uint8_t(pair + placeOf(sample, p.from));
    return places;
}();

template <Stores stores>
struct ReorderKernel {
    using Constants = BytePlaces;
    static constexpr int sites = vectorBytes / 4;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const Bytes places = everyLane(k.place);
        for (size_t i = 0; i < count; ++i)
            store<stores>(row.out[0] + i * vectorBytes, shuffle(loadBytes(row.in[0] + i * vectorBytes), places));
    }
};

template <Pairing p>
constexpr Conversion reorder{.site = {2, 1},
                             .from = {1, {{0, 4}}},
                             .to = {1, {{0, 4}}},
                             .block = kernel<ReorderKernel<Stores::cached>>(byteOrder<p>),
                             .bypassing = kernel<ReorderKernel<Stores::bypassing>>(byteOrder<p>)};

template <Pairing p>
constexpr Pass reorderOnly[] = {{reorder<p>}};
template <Pairing p>
constexpr Pass withLuma[] = {{chroma<p>}};
template <Pairing p>
constexpr Pass lumaThenChroma[] = {{copyLuma}, {chroma<p>}};
template <Pairing p>
constexpr Pass planeByPlane[] = {
    {copyLuma}, {chromaPlane<p, 1, p.exchangesChroma() ? 2 : 1>}, {chromaPlane<p, 2, p.exchangesChroma() ? 1 : 2>}};

// A minimum of no height makes a height below 1 no error: nothing is written.
constexpr int any = INT32_MIN;

template <Form from, Form to>
constexpr Passes repack(Minimum minimum, Bypass bypass = {}) {
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
    result.bypass = bypass;
    return result;
}

// When large images bypass the cache. The steps count with their signs, so images stored bottom-up never do.
ZEL_INLINE bool areMultiplesOf16(std::initializer_list<uintptr_t> values) {
    uintptr_t bits = 0;
    for (const uintptr_t value : values) bits |= value;
    return bits % 16 == 0;
}

inline bool packedImageIsLarge(const Images& i) {
    int64_t steps = 0;
    for (int plane = 0; plane < 4; ++plane) steps += int64_t{i.sourceStep[plane]} + i.destinationStep[plane];
    return steps * i.size.height > 0x80000 &&
           areMultiplesOf16({reinterpret_cast<uintptr_t>(i.destination[0]), uintptr_t(i.destinationStep[0])});
}
inline bool semiPlanarImageIsLarge(const Images& i) {
    return int64_t{i.size.width} * i.size.height * 7 / 2 > 0x180000 &&
           areMultiplesOf16({reinterpret_cast<uintptr_t>(i.source[0]), uintptr_t(i.sourceStep[0]),
                             reinterpret_cast<uintptr_t>(i.destination[0]), uintptr_t(i.destinationStep[0]),
                             reinterpret_cast<uintptr_t>(i.destination[1]), uintptr_t(i.destinationStep[1])});
}
template <int pixels>
bool lumaIsLarge(const Images& i) {
    return int64_t{i.size.width} * i.size.height >= pixels;
}
constexpr Bypass largePacked{packedImageIsLarge}, largeSemiPlanar{semiPlanarImageIsLarge};
constexpr Bypass largeLuma{lumaIsLarge<348603>}, largerLuma{lumaIsLarge<0x80001>};

// 4:2:0 to planar 4:2:2 with two chroma steps: in the last plane, the samples behind the last whole 64 of a row and before the last
// whole 8 reach the second row of a pair by the step of the first chroma plane. It is meant: images with such steps have always come
// out so. Stores follow each other as they did in blocks of 64, 32, 16, 8 and 1, since the rows may meet.
template <int bytes>
void repeatRowsByFirstStep(const Images& images) {
    const int n = images.size.width / 2;
    constexpr bool isInterleaved = bytes == 2;
    for (int plane = 1; plane <= 2; ++plane) {
        const int from = isInterleaved ? 1 : images.exchanged ? 3 - plane : plane;
        for (int k = 0; k < images.size.height / 2; ++k) {
        }
    }
}

}  // namespace
