// Conversions that take several passes, each over some of the planes or some of the rows: a plane that only moves, chroma, the
// rows at an edge that have a rule of their own. A pass is a conversion like any other.
#pragma once

#include <utility>

#include "frame/driver.h"
#include "simd/vector.h"

namespace zel::ZEL_FRAME {

// Streams with an offset reach into the next site. A row's last site has none, and is left to a conversion of its own.
struct Pass {
    const Conversion& conversion;
    Groups groups{};
    const Conversion* lastSite = nullptr;
    Driver driver = nullptr;  // as of a conversion
};

struct Passes {
    using Extras = Nothing;

    Site site;  // the region is cut down to whole ones
    const Pass* passes;
    int count;
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = planesFirst;
};
template <>
inline constexpr bool isData<Passes> = true;

template <int count>
constexpr Passes passes(Site site, const Pass (&list)[count], Minimum minimum) {
    return {.site = site, .passes = list, .count = count, .minimum = minimum};
}

bool isOneRow(const Passes& p, const Images& images);

constexpr int leastWidth(const Passes& p) {
    int least = 1;
    for (int i = 0; i < p.count; ++i) {
        const int ofPass = leastWidth(p.passes[i].conversion);
        least = ofPass > least ? ofPass : least;
    }
    return least;
}

void convert(const Passes& p, Images& images, const Call& ofAll);
ZEL_INLINE void convert(const Passes& p, Images& images, Nothing = {}) { convert(p, images, ofWholeImages); }

}  // namespace zel::ZEL_FRAME

namespace zel::ZEL_LEVEL {

template <const auto& passes, class Places = std::make_integer_sequence<int, passes.count>>
struct DrivenPasses;
template <const auto& passes, int... i>
struct DrivenPasses<passes, std::integer_sequence<int, i...>> {
    static constexpr Pass list[] = {{passes.passes[i].conversion, passes.passes[i].groups, passes.passes[i].lastSite,
                                     convertShaped<shapeOf(passes.passes[i].conversion)>}...};
};

template <const auto& conversion>
requires std::is_base_of_v<Passes, std::remove_cvref_t<decltype(conversion)>>
inline constexpr auto driven<conversion> = [] {
    auto p = conversion;
    p.passes = DrivenPasses<conversion>::list;
    return p;
}();

}  // namespace zel::ZEL_LEVEL
