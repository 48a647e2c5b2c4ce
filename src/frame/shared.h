// The public layer: for each export a function of the lowest level, which finds what the processor's level has in its place.
#pragma once

#include "frame/arguments.h"

extern "C" [[gnu::visibility("hidden")]] int32_t zelKernelLevel;

namespace zel::ZEL_FRAME {

ZEL_INLINE unsigned levelInUse() { return unsigned(zelKernelLevel); }

// Rows that are shorter than a block are left to a level with shorter ones, unless they make up a long one.
template <class C>
ZEL_NOINLINE const C& withBlocks(const OfLevel* const* levels, unsigned level, int place, const Images& images) {
    const auto of = [&]() ZEL_INLINE_LAMBDA -> const C& { return *static_cast<const C*>(levels[level][place].it); };
    if (!isOneRow(of(), images))
        while (level > 0 && images.size.width < levels[level][place].leastWidth) --level;
    return of();
}

// By the lowest level's conversion, and the tables of all levels.
template <const auto& conversion, const OfLevel* const* levels, int place, class Signature>
struct Export;
template <const auto& conversion, const OfLevel* const* levels, int place, class... A>
struct Export<conversion, levels, place, ZelStatus(A...)> {
    static ZelStatus call(A... a) {
        using C = std::remove_cvref_t<decltype(conversion)>;
        if constexpr (!isData<C>) {
            return (*static_cast<ZelStatus (*const*)(A...)>(levels[levelInUse()][place].it))(a...);
        } else {
            return Checked<conversion>::call(
                [](Images& images, const typename C::Extras& extras) ZEL_INLINE_LAMBDA {
                    const OfLevel& highest = levels[levelInUse()][place];
                    const C& c = images.size.width < highest.leastWidth ? withBlocks<C>(levels, levelInUse(), place, images)
                                                                        : *static_cast<const C*>(highest.it);
                    return Checked<conversion>::converted(c, images, extras);
                },
                a...);
        }
    }
};

}  // namespace zel::ZEL_FRAME
