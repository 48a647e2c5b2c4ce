// The way from a conversion to its kernels. What walks over images is the same at all levels and stands in the lowest one; the
// others refer to it.
#pragma once

#include <type_traits>

#include "frame/kernel.h"

namespace zel::ZEL_FRAME {

// n / k, for a power of two.
ZEL_INLINE size_t quotient(size_t n, int k) { return n >> __builtin_ctz(unsigned(k)); }

ZEL_INLINE bool hasOddPixel(const Conversion& c, ZelSize size) { return c.oddPixel.makeSite && size.width % 2 != 0; }

// Whether the rows of an image follow each other in memory.
ZEL_INLINE bool isContiguous(const Layout& layout, const ptrdiff_t* steps, size_t columns) {
    // The bound is one that is known, or loops stay where the count is known as well.
#pragma GCC unroll 8
    for (int i = 0; i < maxSources; ++i) {
        if (i == layout.count) break;
        const Stream& s = layout.streams[i];
        if (s.rows != 1 || steps[s.plane] != ptrdiff_t(columns * s.bytes)) return false;
    }
    return true;
}

// Whether the rule looks at columns, or at rows.
ZEL_INLINE bool dependsOnPlace(const Conversion& c, ZelSize size, size_t columns, size_t blockSites) {
    return c.block.seesPlace || (blockSites != 0 && blockSites != columns) || hasOddPixel(c, size);
}

// The sites at the left edge that the block rule owns, of a row's whole ones.
ZEL_INLINE size_t blockSitesOf(const Conversion& c, int width, size_t columns) {
    return c.blockColumns ? quotient(unsigned(c.blockColumns(width)), c.site.width) : columns;
}

// Whether all rows make up one.
ZEL_INLINE bool isOneRow(const Conversion& c, const Images& images) {
    const size_t columns = quotient(unsigned(images.size.width), c.site.width);
    return isContiguous(c.from, images.sourceStep, columns) && isContiguous(c.to, images.destinationStep, columns) &&
           !dependsOnPlace(c, images.size, columns, blockSitesOf(c, images.size.width, columns));
}

// The pixels from which on a row has a block.
constexpr int leastWidth(const Conversion& c) { return c.block.sites * c.site.width; }

// What of a conversion says how its rows lie.
struct Shape {
    Site site;
    Layout from, to;
    bool seesPlace, hasOddPixel, hasTail;
};

constexpr Shape shapeOf(const Conversion& c) {
    return {c.site, c.from, c.to, c.block.seesPlace, c.oddPixel.makeSite != nullptr, c.blockColumns != nullptr};
}

// Walks any image, by the conversion's own data.
void convertAny(const Conversion& c, const Images& images, const Call& call);

// Walks images of one shape. Those that the caches hold, which small ones are, have little left to be asked.
template <Shape shape>
void convertShaped(const Conversion& c, const Images& images, const Call& call);

extern const Call ofWholeImages;

ZEL_INLINE void convert(const Conversion& c, const Images& images, const Call& call, Driver driver) {
    (driver ? driver : convertAny)(c, images, call);
}
ZEL_INLINE void convert(const Conversion& c, const Images& images, const Call& call) { convert(c, images, call, c.driver); }
ZEL_INLINE void convert(const Conversion& c, const Images& images, Nothing = {}) { convert(c, images, ofWholeImages); }

template <class C>
ZEL_INLINE void convert(const WithAlpha<C>& c, Images& images, Alpha alpha) {
    convert(static_cast<const C&>(c), images, Call{.alpha = alpha});
}

}  // namespace zel::ZEL_FRAME

namespace zel::ZEL_LEVEL {

// A conversion of any kind, with drivers for its shape.
template <const auto& conversion>
inline constexpr const auto& driven = conversion;
template <const auto& conversion>
requires std::is_base_of_v<Conversion, std::remove_cvref_t<decltype(conversion)>>
inline constexpr auto driven<conversion> = [] {
    auto c = conversion;
    c.driver = convertShaped<shapeOf(conversion)>;
    return c;
}();

}  // namespace zel::ZEL_LEVEL
