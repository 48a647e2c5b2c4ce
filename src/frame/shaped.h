// The walk over images of a known shape.
#pragma once

#include "frame/bypass.h"
#include "frame/driver.h"

namespace zel::ZEL_FRAME {

// The rows of some groups, of which the block rule owns the sites up to blockSites.
struct Rows {
    Row first;
    Steps steps;
    size_t groups, columns, blockSites;
};

// Rows that are more than whole blocks of one rule.
void convertRuns(const Conversion& c, const Images& images, const Rows& rows, const void* constants, bool bypassing);

// The groups of a call, counted from the first one. A height below 1 stays below 1, so that it has none.
ZEL_INLINE Groups groupsOf(Site site, ZelSize size, Groups part) {
    const int all = size.height >> __builtin_ctz(site.height);
    return {part.first < 0 ? all + part.first : part.first, part.end > 0 ? part.end : all + part.end};
}

// Bytes that a conversion reads and writes.
ZEL_INLINE constexpr size_t bytesOf(const Layout& layout) {
    size_t bytes = 0;
    for (int i = 0; i < layout.count; ++i) bytes += layout.streams[i].bytes;
    return bytes;
}

// Where the streams of an image begin, and how far it is to the next group.
template <class Byte>
ZEL_INLINE void setOut(Byte** places, size_t* steps, const Layout& layout, Byte* const* planes, const ptrdiff_t* planeSteps,
                       int firstGroup) {
#pragma GCC unroll 8
    for (int i = 0; i < maxSources; ++i) {
        if (i == layout.count) break;
        const Stream& s = layout.streams[i];
        const auto step = size_t(planeSteps[s.plane]);
        steps[i] = step * s.rows;
        places[i] = moved(planes[s.plane], steps[i] * size_t(firstGroup) + step * size_t(s.row) + s.offset);
    }
}

// The kernel is that of the call, which may not be the table's.
template <Shape shape>
ZEL_NOINLINE void convertShaped(const Conversion& c, const Images& images, const Call& call) {
    static constexpr Shape known = shape;
    constexpr size_t siteBytes = bytesOf(shape.from) + bytesOf(shape.to);
    const int width = images.size.width, columns = width >> __builtin_ctz(known.site.width);
    const Groups part = groupsOf(known.site, images.size, call.groups);
    const size_t groups = size_t(part.end - part.first), sites = size_t(columns) * groups;
    if (columns < 1 || part.first >= part.end || call.stores == Stores::bypassing || exceedsCaches(sites * siteBytes))
        return convertAny(c, images, call);

    size_t blockSites = size_t(columns);
    if constexpr (shape.hasTail) blockSites = quotient(unsigned(c.blockColumns(width)), known.site.width);
    const bool oddPixel = known.hasOddPixel && width % 2 != 0;
    const bool oneRule = blockSites == size_t(columns) && !oddPixel;
    Rows rows;
    rows.first.alpha = call.alpha;
    rows.first.place.group = size_t(part.first);
    setOut(rows.first.in, rows.steps.in, known.from, images.source, images.sourceStep, part.first);
    setOut(rows.first.out.places, rows.steps.out, known.to, images.destination, images.destinationStep, part.first);
    rows.groups = groups;
    rows.columns = size_t(columns);
    if (!known.seesPlace && (oneRule || (blockSites == 0 && !oddPixel)) &&
        isContiguous(known.from, images.sourceStep, size_t(columns)) &&
        isContiguous(known.to, images.destinationStep, size_t(columns))) {
        rows.groups = 1;
        rows.columns = sites;
        blockSites *= groups;
    }
    if (oneRule && (rows.columns & unsigned(c.block.sites - 1)) == 0) {
        c.block.blocks(call.constants ? call.constants : c.block.constants, rows.first, rows.steps, rows.groups,
                       quotient(rows.columns, c.block.sites));
    } else {
        rows.blockSites = blockSites;
        convertRuns(c, images, rows, call.constants, false);
    }
}

}  // namespace zel::ZEL_FRAME
