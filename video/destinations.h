// Rows that a call writes, and whether its stores bypass the caches: by the rule of all families.
#pragma once

#include "call.h"
#include "frame/bypass.h"

namespace zel::ZEL_LEVEL::video {

ZEL_INLINE Destination destination(const zelv::Call& call, int plane, int y) {
    uint8_t* const p = call.to[plane] + ptrdiff_t{call.toStep[plane]} * y;
    return {p, call.bypassing && isMultiple(p, lineBytes)};
}

// Of 24 pixels in rows and columns of whole sites and groups.
ZEL_INLINE size_t bytesOf(const zelv::Side& side) {
    const size_t sample = side.isFloat ? 4 : side.depth > 8 ? 2 : 1;
    switch (side.layout) {
        case zelv::Layout::planar:
        case zelv::Layout::semiPlanar: {
            const size_t alpha = side.alpha == zelv::Alpha::none ? 0 : 24;
            const size_t others = side.model == zelv::Model::gray ? 0 : 2 * 24 >> (side.sitesAcross + side.sitesDown);
            return sample * (24 + others + alpha);
        }
        case zelv::Layout::interleaved:
            return sample * side.samples * 24;
        case zelv::Layout::paired:
            return sample * 2 * 24;
        case zelv::Layout::dwords:
            return 4 * 24;
        default:
            return 64;
    }
}

// Whether the call's images are in no cache and it gains: where no image is source and destination, and where it keeps up with
// memory or stores more than it loads.
ZEL_INLINE bool gainsByBypass(const zelv::Call& call, bool keepsUp) {
    const size_t from = bytesOf(call.plan->in), to = bytesOf(call.plan->out);
    const size_t pixels = size_t(call.width) * size_t(call.endRow - call.firstRow);
    if (!exceedsCaches(pixels / 24 * (from + to)) || !(keepsUp || to > from)) return false;
    bool shared = false;
    for (int i = 0; i < call.plan->in.planes; ++i)
        for (int k = 0; k < call.plan->out.planes; ++k) shared |= call.from[i] == call.to[k];
    return !shared;
}

}  // namespace zel::ZEL_LEVEL::video
