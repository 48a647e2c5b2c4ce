// Images that are converted in slices from top to bottom by rules that look at the rows above and below. A slice leaves its last
// pair of rows to the one below it, for which there are no rows yet, and that one begins two rows above its own first row.
#pragma once

#include "frame/passes.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_LEVEL {

// An image, or the part of it that a slice owns, in passes. A whole image of one pair of rows has its own.
struct Sliced {
    Passes top, middle, bottom, whole, wholePair;
    Site site{2, 2};
    Minimum minimum{2, 2};
    OddSize oddSize = OddSize::accepted;
    Checks checks = Checks::planesFirst;
};

ZEL_INLINE bool isOneRow(const Sliced&, const Images&) { return false; }

ZEL_OWN_CODE inline void convert(const Sliced& s, const Images& images) {
    constexpr int wholeImage = zelSliceTop | zelSliceMiddle | zelSliceBottom;
    Images part = images;
    part.size.width &= ~1;
    part.size.height &= ~1;
    const int slice = images.slice;
    if ((slice & wholeImage) == wholeImage) return convert(part.size.height == 2 ? s.wholePair : s.whole, part);
    if (slice != zelSliceTop && slice != zelSliceMiddle && slice != zelSliceBottom) return;
    if (slice != zelSliceTop) {
        part.size.height += 2;
        for (int plane = 0; plane < 4; ++plane) {
            const size_t rows = plane == 0 ? 2 : 1;
            part.source[plane] = moved(part.source[plane], -rows * size_t(part.sourceStep[plane]));
            part.destination[plane] = moved(part.destination[plane], -rows * size_t(part.destinationStep[plane]));
        }
    }
    if (slice != zelSliceBottom) part.size.height -= 2;
    if (part.size.height != 0) convert(slice == zelSliceTop ? s.top : slice == zelSliceMiddle ? s.middle : s.bottom, part);
}

}  // namespace zel::ZEL_LEVEL
