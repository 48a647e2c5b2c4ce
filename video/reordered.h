// Pixels of three or four bytes whose colours come out in the same order or in the opposite one, from memory to memory.
#pragma once

#include "call.h"
#include "simd/samples.h"
#include "video/moved.h"

namespace zel::ZEL_LEVEL::video {

namespace reordered {

// Sums of the same depth and range, bytes, and green in the middle; the fourth byte is alpha, or none.
ZEL_INLINE bool isPixel(const zelv::Side& side) {
    return side.model == zelv::Model::rgb && side.layout == zelv::Layout::interleaved && side.depth == 8 && !side.isFloat &&
           side.place[1] == 1 && (side.samples == 3 || side.place[zelv::alphaChannel] == 3);
}
ZEL_INLINE bool serves(const zelv::Plan& plan) {
    return plan.combination == zelv::Combination::channels && !plan.ordered && isPixel(plan.in) && isPixel(plan.out) &&
           moved::onlyShifts(plan);
}

struct Colours {
    bool isReversed, keepsAlpha;
};

template <int from, int to>
ZEL_INLINE void block(Colours order, const uint8_t* in, Destination out) {
    Triple t;
    Bytes alpha = splatByte(0xff);
    if constexpr (from == 4) {
        const Quad q = Interleaved4::loadFour(in);
        t = {q.a, q.b, q.c};
        if (order.keepsAlpha) alpha = q.d;
    } else {
        t = Interleaved3::load(in);
    }
    if (order.isReversed) t = {t.c, t.b, t.a};
    if constexpr (to == 4)
        storeFour<1>(out, Channels<Bytes>{t.a, t.b, t.c}, alpha);
    else
        Interleaved3::store<Order::natural>(out, t);
}

// The last pixels by copies that end with the block.
template <int from, int to>
ZEL_NOINLINE void row(Colours order, const uint8_t* in, Destination out, ptrdiff_t pixels) {
    ptrdiff_t i = 0;
    for (; i + blockPixels <= pixels; i += blockPixels) block<from, to>(order, in + i * from, out + i * to);
    if (i == pixels) return;
    alignas(64) uint8_t source[blockPixels * from] = {}, result[blockPixels * to];
    __builtin_memcpy(source, in + i * from, size_t(pixels - i) * from);
    block<from, to>(order, source, result);
    __builtin_memcpy(out + i * to, result, size_t(pixels - i) * to);
}

}  // namespace reordered

ZEL_INLINE void convertReordered(const zelv::Call& call) {
    const zelv::Side &in = call.plan->in, &out = call.plan->out;
    const reordered::Colours order{in.place[0] != out.place[0], in.alpha == zelv::Alpha::present && out.alpha == in.alpha};
    const auto convertRow = in.samples == 3    ? out.samples == 3 ? reordered::row<3, 3> : reordered::row<3, 4>
                               : out.samples == 3 ? reordered::row<4, 3>
                                               : reordered::row<4, 4>;
    for (int y = call.firstRow; y < call.endRow; ++y)
        convertRow(order, call.from[0] + ptrdiff_t{call.fromStep[0]} * y, destination(call, 0, y), call.width);
}

}  // namespace zel::ZEL_LEVEL::video
