// Regions that one walk over whole chroma sites does not cover.
#pragma once

#include "frame/driver.h"

namespace zel::ZEL_FRAME {

// The end of a row that is written of a region of some size; null where that is the region's own.
using ColumnsWritten = int (*)(ZelSize size);

// Planar 4:2:0 to words: pairs of rows, and the last row of an odd height by itself. A row may be written beyond the region.
struct RowPairs {
    using Extras = Nothing;

    Conversion pairs, lastRow;
    ColumnsWritten ofPairs = nullptr, ofLastRow = nullptr;
    Minimum converted{1, 1};  // a smaller region stays as it is

    Site site{1, 1};
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = pointersFirst;
};
template <>
inline constexpr bool isData<RowPairs> = true;

constexpr int leastWidth(const RowPairs& p) { return leastWidth(p.pairs); }

// What is written beyond the region, and some columns before it, so that blocks need not be cut.
ZEL_NOINLINE inline void convertBeyond(const Conversion& c, const Images& images, ColumnsWritten columnsWritten, Groups rows) {
    if (!columnsWritten) return;
    const int written = columnsWritten(images.size), block = c.block.sites * c.site.width;
    if (written <= images.size.width) return;
    const int first = written > block ? (written - block) & ~3 : 0;  // at which the pattern of a dither begins anew
    Images columns = images;
    columns.source[0] += first;
    columns.source[1] += first / 2;
    columns.source[2] += first / 2;
    columns.destination[0] += ptrdiff_t{first} * 2;
    columns.size.width = written - first;
    convert(c, columns, Call{.groups = rows});
}

ZEL_NOINLINE inline void convert(const RowPairs& p, const Images& images, Nothing) {
    const auto [width, height] = images.size;
    if (width < p.converted.width || height < p.converted.height) return;
    // Beyond the region first: where rows are so close that this is in another row, that row's own pixels stay.
    const bool hasLastRow = height % 2 != 0;
    const Groups last{height / 2, height / 2 + 1};
    convertBeyond(p.pairs, images, p.ofPairs, {});
    if (hasLastRow) convertBeyond(p.lastRow, images, p.ofLastRow, last);
    convert(p.pairs, images);
    if (hasLastRow) convert(p.lastRow, images, Call{.groups = last});
}

// Packed 4:2:2. A row of a single pixel is not packed at all: three bytes are stored, R, G and B in this order for all names, and
// rows are only half a step apart. Meant: packed as others, columns of one pixel would come out different.
struct PackedPairs {
    using Extras = Nothing;

    Conversion rows, alone;

    Site site{1, 1};
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = pointersFirst;
};
template <>
inline constexpr bool isData<PackedPairs> = true;

constexpr int leastWidth(const PackedPairs& p) { return leastWidth(p.rows); }
ZEL_INLINE bool isOneRow(const PackedPairs& p, const Images& images) { return isOneRow(p.rows, images); }

ZEL_NOINLINE inline void convert(const PackedPairs& p, Images& images, Nothing) {
    if (images.size.width > 1) return convert(p.rows, images);
    images.destinationStep[0] /= 2;
    convert(p.alone, images);
}

// 4:1:1. The up to three pixels behind the whole sites take the chroma of the last one, by a rule of their own.
struct Quads : Conversion {
    Conversion restOfRow;
};
template <>
inline constexpr bool isData<Quads> = true;

ZEL_INLINE void convert(const Quads& q, Images& images, Nothing) {
    convert(static_cast<const Conversion&>(q), images);
    const int whole = images.size.width & ~3, rest = images.size.width - whole;
    images.source[0] += whole;
    images.source[1] += whole / 4 - 1;
    images.source[2] += whole / 4 - 1;
    images.destination[0] += ptrdiff_t{whole} * 2;
    images.size.width = 1;
    for (int i = 0; i < rest; ++i) {
        convert(q.restOfRow, images);
        images.source[0] += 1;
        images.destination[0] += 2;
    }
}

}  // namespace zel::ZEL_FRAME
