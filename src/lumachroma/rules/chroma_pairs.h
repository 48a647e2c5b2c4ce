// The two chroma samples of a site that is encoded, and the sums that they are made of.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// The two chroma samples of a site, in the order of the destination's planes or bytes.
struct ChromaPair {
    Words first, second;

    // Bounded to bytes, the first samples of a lane in its low half, the second ones in the high half.
    ZEL_INLINE Bytes bounded() const { return packBytes(first, second); }
};

// The same before the last bits are dropped.
template <int shift>
struct ScaledPair {
    Words first, second;

    ZEL_INLINE Bytes bounded() const { return packShifted<shift>(first, second); }
    ZEL_INLINE ChromaPair unscaled() const { return {first >> shift, second >> shift}; }
};

// Codes limited to 1 to 254: a digital video interface keeps 0 and 255 for its timing references.
ZEL_INLINE Bytes limited(Bytes codes) { return atMost(atLeast(codes, splatByte(1)), splatByte(254)); }

template <class Pair>
struct LimitedPair : Pair {
    ZEL_INLINE Bytes bounded() const { return limited(Pair::bounded()); }
};
template <class Pair>
ZEL_INLINE LimitedPair<Pair> limited(Pair pair) {
    return {pair};
}

// A rule for luma or for chroma whose codes are limited.
template <class Rule>
struct Limited : Rule {
    using Rule::Rule;

    template <class... Channels>
    ZEL_INLINE auto operator()(Channels... channels) const {
        return limited(Rule::operator()(channels...));
    }
};

template <class Luma, class Chroma>
struct EncodeConstants {
    typename Luma::Constants luma;
    typename Chroma::Constants chroma;
};

}  // namespace zel::ZEL_LEVEL
