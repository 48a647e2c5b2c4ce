// Conversions that take several passes, each over some of the planes or some of the rows: a plane that only moves, chroma, the
// rows at an edge that have a rule of their own. A pass is a conversion like any other.
#pragma once

#include <utility>

#include "frame/driver.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

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

template <int count>
constexpr Passes passes(Site site, const Pass (&list)[count], Minimum minimum) {
    return {.site = site, .passes = list, .count = count, .minimum = minimum};
}

ZEL_NOINLINE inline bool isOneRow(const Passes& p, const Images& images) {
    for (int i = 0; i < p.count; ++i)
        if (p.passes[i].lastSite || !isOneRow(p.passes[i].conversion, images)) return false;
    return true;
}

// All sites of a row but the last one, and that one, so that a row is done before one that overlaps it.
ZEL_NOINLINE inline void convertAroundLastSite(const Pass& pass, const Images& images, const Call& call) {
    const Conversion& c = pass.conversion;
    const int sites = images.size.width / c.site.width - 1, all = images.size.height / c.site.height;
    if (sites < 0) return;
    Images others = images, last = images;
    others.size.width = sites * c.site.width;
    last.size.width = c.site.width;
    for (int i = 0; i < c.from.count; ++i) {
        const Stream& s = c.from.streams[i];
        last.source[s.plane] = moved(images.source[s.plane], size_t(sites) * s.bytes);
    }
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        last.destination[s.plane] = moved(images.destination[s.plane], size_t(sites) * s.bytes);
    }
    const int first = call.groups.first < 0 ? all + call.groups.first : call.groups.first;
    const int end = call.groups.end > 0 ? call.groups.end : all + call.groups.end;
    const int band = rowsOverlap(c, images, size_t(sites) + 1) ? 1 : rowsAtOnce;
    for (int group = first; group < end; group += band) {
        Call part = call;
        part.groups = {group, end - group < band ? end : group + band};
        convert(c, others, part);
        part.stores = Stores::cached;
        convert(*pass.lastSite, last, part);
    }
}

ZEL_NOINLINE inline void convert(const Passes& p, Images& images, const Call& ofAll) {
    Call call{.alpha = ofAll.alpha};
    images.size.width &= -int{p.site.width};
    images.size.height &= -int{p.site.height};
    // All passes count together.
    call.stores = Stores::cached;
    if (exceedsCaches(size_t(images.size.width) * size_t(images.size.height) * maxSiteBytes)) {
        size_t bytes = 0;
        for (int i = 0; i < p.count; ++i) bytes += bytesOf(p.passes[i].conversion, images.size, p.passes[i].groups);
        if (exceedsCaches(bytes)) call.stores = Stores::bypassing;
    }
    for (int i = 0; i < p.count; ++i) {
        const Pass& pass = p.passes[i];
        call.groups = pass.groups;
        if (pass.lastSite)
            convertAroundLastSite(pass, images, call);
        else
            convert(pass.conversion, images, call, pass.driver);
    }
}
ZEL_INLINE void convert(const Passes& p, Images& images, Nothing = {}) { convert(p, images, ofWholeImages); }

template <const auto& passes, class Places = std::make_integer_sequence<int, passes.count>>
struct DrivenPasses;
template <const auto& passes, int... i>
struct DrivenPasses<passes, std::integer_sequence<int, i...>> {
    static constexpr Pass list[] = {
        {passes.passes[i].conversion, passes.passes[i].groups, passes.passes[i].lastSite,
         convertShaped<shapeOf(passes.passes[i].conversion), passes.passes[i].conversion.blockColumns>}...};
};

template <const auto& conversion>
requires std::is_base_of_v<Passes, std::remove_cvref_t<decltype(conversion)>>
inline constexpr auto driven<conversion> = [] {
    auto p = conversion;
    p.passes = DrivenPasses<conversion>::list;
    return p;
}();

}  // namespace zel::ZEL_LEVEL
