// Conversions that take several passes, each over some of the planes or some of the rows: a plane that only moves, chroma, the
// rows at an edge that have a rule of their own. A pass is a conversion like any other.
#pragma once

#include "frame/driver.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

struct NoConstants {};
inline constexpr NoConstants noConstants{};
template <class K>
inline constexpr Kernel withoutConstants = kernel<K>(noConstants);

struct Pass {
    const Conversion& conversion;
    Groups groups{};
};

struct Passes {
    using Given = Nothing;

    Site site;  // the region is cut down to whole ones
    const Pass* passes;
    int count;
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = planesFirst;
};

template <int count>
constexpr Passes passes(Site site, const Pass (&list)[count], Minimum minimum) {
    return {.site = site, .passes = list, .count = count, .minimum = minimum};
}

ZEL_INLINE bool isOneRow(const Passes& p, const Images& images) {
    for (int i = 0; i < p.count; ++i)
        if (!isOneRow(p.passes[i].conversion, images)) return false;
    return true;
}

ZEL_OWN_CODE inline void convert(const Passes& p, Images& images, Nothing = {}) {
    images.size.width &= -int{p.site.width};
    images.size.height &= -int{p.site.height};
    // All passes count together.
    Stores stores = Stores::cached;
    if (exceedsCaches(size_t(images.size.width) * size_t(images.size.height) * maxSiteBytes)) {
        size_t bytes = 0;
        for (int i = 0; i < p.count; ++i) bytes += bytesOf(p.passes[i].conversion, images.size, p.passes[i].groups);
        if (exceedsCaches(bytes)) stores = Stores::bypassing;
    }
    for (int i = 0; i < p.count; ++i) convert(p.passes[i].conversion, images, {}, p.passes[i].groups, stores);
}

}  // namespace zel::ZEL_LEVEL
