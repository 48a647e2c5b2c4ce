// The walk over the rows of any image. What is left at a row's end goes through the same kernel once more, by a block that
// overlaps the one before it or by way of a buffer. It is the same at all levels, and compiled with the lowest one.
#include "frame/passes.h"
#include "frame/shaped.h"
#include "simd/part.h"

namespace zel::ZEL_FRAME {
namespace {

// Fewer sites than a block.
ZEL_NOINLINE void convertPart(const Conversion& c, const Kernel& kernel, const void* constants, const Row& row, size_t sites) {
    alignas(64) uint8_t source[maxSources][maxStreamBlock];
    alignas(64) uint8_t destination[maxDestinations][maxStreamBlock];
    Row buffer;
    buffer.alpha = row.alpha;
    buffer.place = row.place;
    const auto load = [&](uint8_t* to, const uint8_t* from, const Stream& s) {
        copyToBuffer(to, from, sites * s.bytes, unsigned(kernel.sites) * s.bytes);
    };
    for (int i = 0; i < c.from.count; ++i) {
        load(source[i], row.in[i], c.from.streams[i]);
        buffer.in[i] = source[i];
    }
    for (int i = 0; i < c.to.count; ++i) {
        if (c.keepsAlpha) load(destination[i], row.out[i], c.to.streams[i]);
        buffer.out[i] = destination[i];
    }
    kernel.blocks(constants, buffer, {}, 1, 1);
    for (int i = 0; i < c.to.count; ++i) copyFromBuffer(row.out[i], destination[i], sites * c.to.streams[i].bytes);
}

ZEL_NOINLINE void convertOddPixel(const Conversion& c, const Row& row, bool alone) {
    const Kernel& kernel = alone ? c.oddPixel.ruleAlone : c.oddPixel.rule;
    if (!kernel.blocks) return;
    alignas(64) uint8_t source[maxSources][maxStreamBlock];
    alignas(64) uint8_t destination[maxDestinations][maxStreamBlock];
    Row buffer;
    buffer.alpha = row.alpha;
    buffer.place = row.place;
    for (int i = 0; i < c.from.count; ++i) {
        c.oddPixel.makeSite(source[i], row.in[i], c.from.streams[i].bytes, alone);
        buffer.in[i] = source[i];
    }
    for (int i = 0; i < c.to.count; ++i) buffer.out[i] = destination[i];
    kernel.blocks(kernel.constants, buffer, {}, 1, 1);
    for (int i = 0; i < c.to.count; ++i) copyFromBuffer(row.out[i], destination[i], (c.to.streams[i].bytes + 1u) / 2);
}

// The row some sites further on. Field by field: a copy of the whole record would wait for the pointers that were just written.
struct MovedRow : Row {
    ZEL_INLINE MovedRow(const Conversion& c, const Row& row, size_t sites) {
        for (int i = 0; i < c.from.count; ++i) in[i] = row.in[i] + sites * c.from.streams[i].bytes;
        for (int i = 0; i < c.to.count; ++i) out[i] = row.out[i] + sites * c.to.streams[i].bytes;
        alpha = row.alpha;
        place = {row.place.column + sites, row.place.group};
        isFarAway = row.isFarAway;
    }
    ZEL_INLINE void next(const Conversion& c, const Steps& steps, size_t groups = 1) {
        for (int i = 0; i < c.from.count; ++i) in[i] = moved(in[i], steps.in[i] * groups);
        for (int i = 0; i < c.to.count; ++i) out[i] = moved(out[i], steps.out[i] * groups);
        place.group += groups;
    }
};

// Whether a block may start some sites from the left edge. A rule may tie a few columns together, and then counts whole ones.
ZEL_INLINE bool canStartAt(const Conversion& c, size_t sites) {
    const int columns = int(sites) * c.site.width;
    return columns == 0 || !c.blockColumns || c.blockColumns(columns) == columns;
}

// Whole blocks of a source that is far away: while a piece of a row is converted, the next one is on its way.
ZEL_NOINLINE void convertByPieces(const Conversion& c, const Kernel& kernel, const void* constants, const Row& first,
                                  const Steps& steps, size_t groups, size_t blocks) {
    constexpr unsigned pieceBytes = 2048;
    unsigned widest = 0;
    for (int i = 0; i < c.from.count; ++i)
        if (c.from.streams[i].bytes > widest) widest = c.from.streams[i].bytes;
    const unsigned least = unsigned(kernel.sites * kernel.blocksAtOnce), most = pieceBytes / widest & -least;
    const size_t sites = most != 0 ? most : least, piece = quotient(sites, kernel.sites);
    for (MovedRow row(c, first, 0); groups != 0; --groups, row.next(c, steps)) {
        for (size_t done = 0; done < blocks; done += piece) {
            MovedRow part(c, row, done * unsigned(kernel.sites));
            part.out.bypassing = first.out.bypassing;
            const bool endsRow = blocks - done <= piece;
            for (int i = 0; i < c.from.count; ++i) {
                const size_t bytes = sites * c.from.streams[i].bytes;
                prefetch<Use::read>(endsRow ? moved(row.in[i], steps.in[i]) : part.in[i] + bytes, bytes);
            }
            kernel.blocks(constants, part, steps, 1, endsRow ? blocks - done : piece);
        }
    }
}

ZEL_INLINE void convertBlocks(const Conversion& c, const Kernel& kernel, const void* constants, const Row& first,
                              const Steps& steps, size_t groups, size_t blocks) {
    if (__builtin_expect(first.isFarAway, false))
        convertByPieces(c, kernel, constants, first, steps, groups, blocks);
    else
        kernel.blocks(constants, first, steps, groups, blocks);
}

// Whole blocks, by stores that bypass the caches in those streams that a block extends by whole lines. The run begins with blocks
// that reach beyond the first boundary of a line, and a block that overlaps the one before it ends it, so the source must not
// lie in the destination.
ZEL_NOINLINE void convertByLines(const Conversion& c, const Kernel& kernel, const void* constants, const Row& first,
                                 const Steps& steps, size_t groups, size_t blocks) {
    size_t allSteps = 0;
    for (int i = 0; i < c.to.count; ++i) allSteps |= steps.out[i];
    // Groups whose rows lie alike in lines go together.
    const size_t together = allSteps % lineBytes == 0 ? groups : 1, sites = blocks * unsigned(kernel.sites);
    const unsigned sitesAtOnce = unsigned(kernel.sites * kernel.blocksAtOnce);
    int widest = 0;
    for (int i = 1; i < c.to.count; ++i)
        if (c.to.streams[i].bytes > c.to.streams[widest].bytes) widest = i;
    for (MovedRow start(c, first, 0); groups != 0; groups -= together, start.next(c, steps, together)) {
        const ptrdiff_t before = sitesToLine(start.out[widest], c.to.streams[widest].bytes);
        if (before < 0 || size_t(before) + sitesAtOnce > sites || !canStartAt(c, size_t(before))) {
            convertBlocks(c, kernel, constants, start, steps, together, blocks);
            continue;
        }
        MovedRow lines(c, start, size_t(before));
        for (int i = 0; i < c.to.count; ++i)
            if (isMultiple(lines.out[i], lineBytes) && c.to.streams[i].bytes * sitesAtOnce >= lineBytes)
                lines.out.bypassing |= uint8_t(1 << i);
        const size_t left = sites - size_t(before), rest = left & unsigned(kernel.sites - 1);
        if (before != 0)
            kernel.blocks(constants, start, steps, together, quotient(size_t(before) + unsigned(kernel.sites - 1), kernel.sites));
        convertBlocks(c, kernel, constants, lines, steps, together, quotient(left, kernel.sites));
        if (rest != 0) kernel.blocks(constants, MovedRow(c, start, sites - unsigned(kernel.sites)), steps, together, 1);
    }
}

// The consecutive sites of a row that follow one rule, with as many sites before them that are converted later.
struct Run {
    const Kernel& kernel;
    const void* constants;
    size_t before, sites, blocks, rest;
    ptrdiff_t lastBlock;  // where one more block ends with the last site; negative where the row has no room for it
    bool bypassing;

    ZEL_INLINE Run(const Kernel& k, const void* constantsOfCall, size_t before, size_t sites, bool overlapping, bool bypassing)
        : kernel(k),
          constants(constantsOfCall ? constantsOfCall : k.constants),
          before(before),
          sites(sites),
          blocks(quotient(sites, k.sites)),
          rest(sites & unsigned(k.sites - 1)),
          lastBlock(overlapping ? ptrdiff_t(before + sites) - k.sites : -1),
          bypassing(bypassing) {}

    ZEL_INLINE void operator()(const Conversion& c, const Row& start, const Steps& steps, size_t groups) const {
        if (blocks != 0 && bypassing)
            convertByLines(c, kernel, constants, start, steps, groups, blocks);
        else if (blocks != 0 && before == 0)
            convertBlocks(c, kernel, constants, start, steps, groups, blocks);
        else if (blocks != 0)
            convertBlocks(c, kernel, constants, MovedRow(c, start, before), steps, groups, blocks);
        if (rest == 0) return;
        if (lastBlock >= 0) {
            kernel.blocks(constants, MovedRow(c, start, size_t(lastBlock)), steps, groups, 1);
        } else {
            MovedRow part(c, start, before + sites - rest);
            for (; groups != 0; --groups, part.next(c, steps)) convertPart(c, kernel, constants, part, rest);
        }
    }
};

// The odd pixels behind the runs of some rows.
ZEL_NOINLINE void convertOddPixels(const Conversion& c, MovedRow end, const Steps& steps, size_t groups, bool alone) {
    for (; groups != 0; --groups, end.next(c, steps)) convertOddPixel(c, end, alone);
}

// Whether a row is written over what an earlier one has left.
ZEL_INLINE bool rowsOverlap(const Conversion& c, const Images& images, size_t columns) {
    bool overlap = false;
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        const ptrdiff_t step = images.destinationStep[s.plane];
        overlap |= size_t(step < 0 ? -step : step) < columns * s.bytes;
    }
    return overlap;
}

// Whether an image is source and destination.
ZEL_INLINE bool sharesImages(const Conversion& c, const Row& first) {
    bool shared = false;
    for (int i = 0; i < c.from.count; ++i)
        for (int k = 0; k < c.to.count; ++k) shared |= first.in[i] == first.out[k];
    return shared;
}

constexpr int rowsAtOnce = 16;

ZEL_INLINE size_t bytesOf(const Conversion& c, ZelSize size, Groups part) {
    const Groups groups = groupsOf(c.site, size, part);
    if (size.width < 1 || groups.first >= groups.end) return 0;
    return quotient(unsigned(size.width), c.site.width) * size_t(groups.end - groups.first) * (bytesOf(c.from) + bytesOf(c.to));
}

// Whether a large image gains. One that is its own source is in the caches when it is written, and so are lines of which a part
// is kept. Where arithmetic takes longer than memory, stores that wait in the caches are the ones that hold nothing up, unless
// there are more of them than loads.
bool gainsByBypass(const Conversion& c, const Images& images, const Rows& rows) {
    return (c.block.keepsUp || bytesOf(c.to) > bytesOf(c.from)) && !c.keepsAlpha && !sharesImages(c, rows.first) &&
           !rowsOverlap(c, images, rows.columns);
}

// Whether a source is asked for ahead of time: where more is read than written, and in more streams than a processor foresees.
ZEL_INLINE bool isWorthAskingFor(const Conversion& c) { return c.from.count + c.to.count > 2 && bytesOf(c.from) > bytesOf(c.to); }

// All sites of a row but the last one, and that one, so that a row is done before one that overlaps it.
ZEL_NOINLINE void convertAroundLastSite(const Pass& pass, const Images& images, const Call& call) {
    const Conversion& c = pass.conversion;
    const int sites = images.size.width / c.site.width - 1, all = images.size.height / c.site.height;
    if (sites < 0) return;
    Images others = images, last = images;
    others.size.width = sites * c.site.width;
    last.size.width = c.site.width;
    for (int i = 0; i < c.from.count; ++i) {
        const Stream& s = c.from.streams[i];
        last.source[s.plane] = moved(images.source[s.plane], size_t(sites) * s.bytes);
    }
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        last.destination[s.plane] = moved(images.destination[s.plane], size_t(sites) * s.bytes);
    }
    const int first = call.groups.first < 0 ? all + call.groups.first : call.groups.first;
    const int end = call.groups.end > 0 ? call.groups.end : all + call.groups.end;
    const int band = rowsOverlap(c, images, size_t(sites) + 1) ? 1 : rowsAtOnce;
    for (int group = first; group < end; group += band) {
        Call part = call;
        part.groups = {group, end - group < band ? end : group + band};
        convert(c, others, part);
        part.stores = Stores::cached;
        convert(*pass.lastSite, last, part);
    }
}

}  // namespace

constexpr Call ofWholeImages{};

void convertRuns(const Conversion& c, const Images& images, const Rows& rows, const void* constants, bool bypassing) {
    // The last block of a run may cover sites once more, as long as the source is still there, and a block of the tail may cover
    // sites of the block rule, which comes after it.
    const bool inPlace = sharesImages(c, rows.first);
    const size_t sites = rows.columns;
    const Run block(c.block, constants, 0, rows.blockSites, !inPlace, bypassing),
        tail(c.tail, constants, rows.blockSites, sites - rows.blockSites, !inPlace, false);

    // A few rows at a time, so that they are still in the cache for the next run, unless each row has to be done before the next
    // one.
    const bool oddPixel = hasOddPixel(c, images.size);
    const size_t band = rowsOverlap(c, images, rows.columns) ? 1 : size_t{rowsAtOnce};
    size_t groups = rows.groups;
    for (MovedRow start(c, rows.first, 0);; start.next(c, rows.steps, band)) {
        const size_t now = groups < band ? groups : band;
        if (tail.sites != 0) tail(c, start, rows.steps, now);
        if (block.sites != 0) block(c, start, rows.steps, now);
        if (oddPixel) convertOddPixels(c, MovedRow(c, start, sites), rows.steps, now, images.size.width == 1);
        groups -= now;
        if (groups == 0) return;
    }
}

void convertAny(const Conversion& c, const Images& images, const Call& call) {
    const int width = images.size.width;
    const Groups groups = groupsOf(c.site, images.size, call.groups);
    const bool oddPixel = hasOddPixel(c, images.size);
    Rows rows;
    rows.columns = quotient(unsigned(width), c.site.width);
    if (width < 1 || (rows.columns == 0 && !oddPixel) || groups.first >= groups.end) return;
    rows.groups = size_t(groups.end - groups.first);
    rows.blockSites = blockSitesOf(c, width, rows.columns);
    const bool oneRow = !dependsOnPlace(c, images.size, rows.columns, rows.blockSites) &&
                        isContiguous(c.from, images.sourceStep, rows.columns) &&
                        isContiguous(c.to, images.destinationStep, rows.columns);
    rows.first.alpha = call.alpha;
    rows.first.place = {0, size_t(groups.first)};
    setOut(rows.first.in, rows.steps.in, c.from, images.source, images.sourceStep, groups.first);
    setOut(rows.first.out.places, rows.steps.out, c.to, images.destination, images.destinationStep, groups.first);

    bool large = call.stores == Stores::bypassing;
    if (call.stores == Stores::bySize && exceedsCaches(rows.columns * rows.groups * maxSiteBytes))
        large = exceedsCaches(rows.columns * rows.groups * (bytesOf(c.from) + bytesOf(c.to)));
    const Bypass bypassing(large && gainsByBypass(c, images, rows));
    rows.first.isFarAway = large && isWorthAskingFor(c);

    if (oneRow) {
        rows.columns *= rows.groups;
        rows.blockSites *= rows.groups;
        rows.groups = 1;
    }

    const bool blocksOnly = rows.blockSites == rows.columns && (rows.columns & unsigned(c.block.sites - 1)) == 0 && !oddPixel;
    const void* const used = call.constants ? call.constants : c.block.constants;
    const size_t blocks = quotient(rows.columns, c.block.sites);
    if (!blocksOnly)
        convertRuns(c, images, rows, call.constants, bypassing);
    else if (bypassing)
        convertByLines(c, c.block, used, rows.first, rows.steps, rows.groups, blocks);
    else
        convertBlocks(c, c.block, used, rows.first, rows.steps, rows.groups, blocks);
}

bool isOneRow(const Passes& p, const Images& images) {
    for (int i = 0; i < p.count; ++i)
        if (p.passes[i].lastSite || !isOneRow(p.passes[i].conversion, images)) return false;
    return true;
}

void convert(const Passes& p, Images& images, const Call& ofAll) {
    Call call{.alpha = ofAll.alpha};
    images.size.width &= -int{p.site.width};
    images.size.height &= -int{p.site.height};
    // All passes count together.
    call.stores = Stores::cached;
    if (exceedsCaches(size_t(images.size.width) * size_t(images.size.height) * maxSiteBytes)) {
        size_t bytes = 0;
        for (int i = 0; i < p.count; ++i) bytes += bytesOf(p.passes[i].conversion, images.size, p.passes[i].groups);
        if (exceedsCaches(bytes)) call.stores = Stores::bypassing;
    }
    for (int i = 0; i < p.count; ++i) {
        const Pass& pass = p.passes[i];
        call.groups = pass.groups;
        if (pass.lastSite)
            convertAroundLastSite(pass, images, call);
        else
            convert(pass.conversion, images, call, pass.driver);
    }
}

}  // namespace zel::ZEL_FRAME
