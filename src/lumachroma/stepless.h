// Exports that take no steps: the rows of every plane follow each other without a gap. Each is a conversion with steps, which are
// made from its layouts; some take images that are large enough for one long row instead, so that no row starts anew and the
// block rule runs across the ends of rows.
#pragma once

#include "frame/arguments.h"
#include "lumachroma/by_alignment.h"

namespace zel::ZEL_FRAME {

constexpr int never = INT32_MAX;

template <class C>
struct Stepless {
    using Extras = typename C::Extras;

    const C& stepped;
    int longRowFrom = never;  // pixels of an image of even width
    Site site{};
    Minimum minimum{};
    OddSize oddSize{};
    Checks checks{};
};
template <class C>
inline constexpr bool isData<Stepless<C>> = isData<C>;

template <class C>
constexpr Stepless<C> stepless(const C& c, int longRowFrom = never) {
    return {c, longRowFrom, c.site, c.minimum, c.oddSize, c.checks};
}

// Has the layouts of the conversion.
ZEL_INLINE const Conversion& withLayouts(const Conversion& c) { return c; }
ZEL_INLINE const Conversion& withLayouts(const ByAlignment& c) { return c.aligned; }

ZEL_INLINE uint64_t pixelsOf(ZelSize size) { return uint64_t(unsigned(size.width)) * unsigned(size.height); }

template <class C>
ZEL_INLINE bool isLongRow(const Stepless<C>& s, ZelSize size) {
    return s.longRowFrom != never && size.width % 2 == 0 && pixelsOf(size) >= unsigned(s.longRowFrom);
}

template <class C>
constexpr int leastWidth(const Stepless<C>& s) {
    return leastWidth(s.stepped);
}

template <class C>
ZEL_INLINE bool isOneRow(const Stepless<C>& s, const Images& images) {
    return isLongRow(s, images.size);
}

// A sample that an odd pixel has for itself counts.
ZEL_INLINE ptrdiff_t packedRowBytes(const Conversion& c, const Stream& s, int width) {
    const int added = c.oddPixel.makeSite ? c.site.width - 1 : 0;
    return ptrdiff_t((int64_t{width} * s.bytes + added) >> __builtin_ctz(c.site.width));
}

template <class C>
ZEL_INLINE void convert(const Stepless<C>& s, Images& images, typename C::Extras extras) {
    const Conversion& any = withLayouts(s.stepped);
    const auto forEachPlane = [&](const auto& f) {
        for (int i = 0; i < any.from.count; ++i) f(any.from.streams[i], images.source, images.sourceStep);
        for (int i = 0; i < any.to.count; ++i) f(any.to.streams[i], images.destination, images.destinationStep);
    };
    if (!isLongRow(s, images.size)) {
        forEachPlane([&](const Stream& stream, auto&, auto& steps) {
            steps[stream.plane] = packedRowBytes(any, stream, images.size.width);
        });
        return convert(s.stepped, images, extras);
    }
    // A row has no step, so the pointers alone decide about alignment. Its length is an int.
    constexpr unsigned atOnce = 1u << 30;
    uint64_t rest = pixelsOf(images.size);
    for (; rest > atOnce; rest -= atOnce) {
        images.size = {int(atOnce), 1};
        convert(s.stepped, images, extras);
        forEachPlane([&](const Stream& stream, auto& planes, auto&) {
            planes[stream.plane] = moved(planes[stream.plane], quotient(atOnce, any.site.width) * stream.bytes);
        });
    }
    images.size = {int(rest), 1};
    convert(s.stepped, images, extras);
}

}  // namespace zel::ZEL_FRAME
