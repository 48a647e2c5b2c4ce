// The public layer: for each export a function of the lowest level, which finds what the processor's level has in its place.
#pragma once

#include "frame/arguments.h"

extern "C" [[gnu::visibility("hidden")]] int32_t zelKernelLevel;

namespace zel::ZEL_FRAME {

// Whether all rows of an image make up one, for conversions of one shape.
template <Shape shape>
ZEL_NOINLINE bool makesOneRow(const Conversion& c, const Images& images) {
    static constexpr Shape known = shape;
    const size_t columns = quotient(unsigned(images.size.width), known.site.width);
    return isContiguous(known.from, images.sourceStep, columns) && isContiguous(known.to, images.destinationStep, columns) &&
           !dependsOnPlace(c, images.size, columns, blockSitesOf(c, images.size.width, columns));
}

// Rows that are shorter than a block are left to a level with shorter ones, unless they make up a long one.
template <const auto& conversion, const OfLevel* const* levels, int place>
ZEL_INLINE const OfLevel& withBlocks(const Images& images) {
    using C = std::remove_cvref_t<decltype(conversion)>;
    unsigned level = unsigned(zelKernelLevel);
    const int width = images.size.width;
    if (__builtin_expect(width < levels[level][place].leastWidth, false)) {
        bool oneRow;
        if constexpr (std::is_base_of_v<Conversion, C>)
            oneRow = makesOneRow<shapeOf(conversion)>(conversion, images);
        else
            oneRow = isOneRow(conversion, images);
        while (!oneRow && level > 0 && width < levels[level][place].leastWidth) --level;
    }
    return levels[level][place];
}

// By the lowest level's conversion, and the tables of all levels.
template <const auto& conversion, const OfLevel* const* levels, int place, class Signature>
struct Export;
template <const auto& conversion, const OfLevel* const* levels, int place, class... A>
struct Export<conversion, levels, place, ZelStatus(A...)> {
    static ZelStatus call(A... a) {
        using C = std::remove_cvref_t<decltype(conversion)>;
        if constexpr (!isData<C>) {
            return (*static_cast<ZelStatus (*const*)(A...)>(levels[unsigned(zelKernelLevel)][place].conversionOrFunction))(a...);
        } else {
            return Checked<conversion>::call(
                [](Images& images, const typename C::Extras& extras) ZEL_INLINE_LAMBDA {
                    const C& c = *static_cast<const C*>(withBlocks<conversion, levels, place>(images).conversionOrFunction);
                    return Checked<conversion>::converted(c, images, extras);
                },
                a...);
        }
    }
};

}  // namespace zel::ZEL_FRAME
