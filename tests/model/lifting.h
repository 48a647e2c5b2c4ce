// Model of the lifting transforms. Channels are in their stored order: B, G, R (or R, G, B of the biased pair) and Y, Co, Cg.
#pragma once

#include <algorithm>
#include <array>
#include <limits>

#include "model/export.h"

namespace model {

using Triplet = std::array<int64_t, 3>;
using Lifting = Triplet (*)(Triplet);

inline int64_t wrapped(int64_t value, int bits) {
    const int shift = 64 - bits;
    return static_cast<int64_t>(static_cast<uint64_t>(value) << shift) >> shift;
}

inline Triplet plainForward(Triplet p) {
    const auto [b, g, r] = p;
    return {(r + 2 * g + b + 2) >> 2, (r - b + 1) >> 1, (2 * g - r - b + 2) >> 2};
}
inline Triplet plainInverse(Triplet p) {
    const auto [y, co, cg] = p;
    return {y - co - cg, y + cg, y + co - cg};
}

// Each step wraps at the width of the planes, before the next one shifts it.
template <int Bits>
Triplet reversibleForward(Triplet p) {
    const auto [b, g, r] = p;
    const int64_t co = wrapped(r - b, Bits), t = wrapped(b + (co >> 1), Bits), cg = wrapped(g - t, Bits);
    return {wrapped(t + (cg >> 1), Bits), co, cg};
}
template <int Bits>
Triplet reversibleInverse(Triplet p) {
    const auto [y, co, cg] = p;
    const int64_t t = wrapped(y - (cg >> 1), Bits), b = wrapped(t - (co >> 1), Bits);
    return {b, wrapped(cg + t, Bits), wrapped(b + co, Bits)};
}

inline Triplet biasedForward(Triplet p) {
    const auto [y, co, cg] = plainForward({p[2], p[1], p[0]});
    return {y, co + 128, cg + 128};
}
inline Triplet biasedInverse(Triplet p) {
    const auto [b, g, r] = plainInverse({p[0], p[1] - 128, p[2] - 128});
    return {r, g, b};
}

// How a result becomes a sample; the last columns may have a way of their own.
enum class Fit { wraps, saturates, saturatesOfLowWord, saturatesInBlocks };

template <class To, Fit fit>
To fitted(int64_t value, bool inBlock) {
    using Limits = std::numeric_limits<To>;
    if (fit == Fit::saturatesOfLowWord) value = wrapped(value, 16);
    if (fit == Fit::saturates || fit == Fit::saturatesOfLowWord || (fit == Fit::saturatesInBlocks && inBlock))
        value = std::clamp<int64_t>(value, Limits::min(), Limits::max());
    return static_cast<To>(value);
}

template <class From, class To, Lifting lift, Fit fit>
void lifting(const Conversion& c) {
    const auto& from = c.source.layout->channels;
    const auto& to = c.destination.layout->channels;
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            Triplet p;
            for (int i = 0; i < 3; ++i) p[i] = c.source.load<From>(from[i], x, y);
            p = lift(p);
            for (int i = 0; i < 3; ++i) c.destination.store(to[i], x, y, fitted<To, fit>(p[i], x < c.blockPixels));
            if (to[3].stride == 0) continue;
            c.destination.store(to[3], x, y, static_cast<To>(sizeof(To) == 1 ? *c.alpha : c.parameters.word));
        }
}

}  // namespace model
