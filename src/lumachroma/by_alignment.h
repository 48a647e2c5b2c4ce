// Exports whose arithmetic depends on where the images lie.
#pragma once

#include "frame/driver.h"

namespace zel::ZEL_FRAME {

// A pair of conversions of the same layouts, of which the images' alignment picks one: all addresses and steps multiples of 16,
// or not.
struct ByAlignment {
    using Extras = Nothing;

    const Conversion& aligned;
    const Conversion& other;
    Site site;
    Minimum minimum;
    OddSize oddSize;
    Checks checks;
};
template <>
inline constexpr bool isData<ByAlignment> = true;

constexpr ByAlignment byAlignment(const Conversion& aligned, const Conversion& other) {
    return {aligned, other, aligned.site, aligned.minimum, aligned.oddSize, aligned.checks};
}

constexpr int leastWidth(const ByAlignment& c) { return leastWidth(c.other); }
ZEL_INLINE bool isOneRow(const ByAlignment& c, const Images& images) {
    return isOneRow(c.aligned, images) && isOneRow(c.other, images);
}

ZEL_INLINE void convert(const ByAlignment& c, const Images& images, Nothing) {
    uintptr_t bits = 0;
    for (int i = 0; i < c.aligned.from.count; ++i) {
        const int plane = c.aligned.from.streams[i].plane;
        bits |= reinterpret_cast<uintptr_t>(images.source[plane]) | uintptr_t(images.sourceStep[plane]);
    }
    for (int i = 0; i < c.aligned.to.count; ++i) {
        const int plane = c.aligned.to.streams[i].plane;
        bits |= reinterpret_cast<uintptr_t>(images.destination[plane]) | uintptr_t(images.destinationStep[plane]);
    }
    convert(bits % 16 == 0 ? c.aligned : c.other, images);
}

}  // namespace zel::ZEL_FRAME
