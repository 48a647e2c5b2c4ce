// Images that are converted in slices from top to bottom by rules that look at the rows above and below. A slice leaves its last
// pair of rows to the one below it, for which there are no rows yet, and that one begins two rows above its own first row.
#pragma once

#include "frame/passes.h"
#include "zelcc/chroma.h"

namespace zel::ZEL_FRAME {

// An image, or the part of it that a slice owns, in passes. A whole image of one pair of rows has its own.
struct Sliced {
    struct Extras {
        int32_t slice;
    };

    int sources, destinations;  // planes
    Passes top, middle, bottom, whole, wholePair;
    Site site{2, 2};
    Minimum minimum{2, 2};
    OddSize oddSize = OddSize::accepted;
    Checks checks = planesFirst;
};
template <>
inline constexpr bool isData<Sliced> = true;

constexpr int leastWidth(const Sliced& s) { return leastWidth(s.whole); }
ZEL_INLINE bool isOneRow(const Sliced&, const Images&) { return false; }

ZEL_NOINLINE inline void convert(const Sliced& s, Images& images, Sliced::Extras extras) {
    constexpr int wholeImage = zelSliceTop | zelSliceMiddle | zelSliceBottom;
    images.size.width &= ~1;
    images.size.height &= ~1;
    const int slice = extras.slice;
    if ((slice & wholeImage) == wholeImage) return convert(images.size.height == 2 ? s.wholePair : s.whole, images);
    if (slice != zelSliceTop && slice != zelSliceMiddle && slice != zelSliceBottom) return;
    if (slice != zelSliceTop) {
        images.size.height += 2;
        const auto up = [](int planes, auto& plane, const ptrdiff_t* step) {
            for (int i = 0; i < planes; ++i) plane[i] = moved(plane[i], -size_t(i == 0 ? 2 : 1) * size_t(step[i]));
        };
        up(s.sources, images.source, images.sourceStep);
        up(s.destinations, images.destination, images.destinationStep);
    }
    if (slice != zelSliceBottom) images.size.height -= 2;
    if (images.size.height != 0) convert(slice == zelSliceTop ? s.top : slice == zelSliceMiddle ? s.middle : s.bottom, images);
}

}  // namespace zel::ZEL_FRAME
