// Every other pixel of a block, whose channels are made in one way there and in another between.
#pragma once

#include "simd/samples.h"

// Sites<Depth, V>(first).store(p, here, between) stores a block of pixels of three samples, of which every other one is from
// `here`, the first one or not.

#ifdef ZEL_OWN_SITES
#include ZEL_OWN_SITES
#else

namespace zel::ZEL_LEVEL {

template <class Depth, class V>
class Sites {
    static constexpr int size = sizeof(typename Depth::Element);

  public:
    // Whether the first pixel is one of them.
    ZEL_INLINE explicit Sites(bool first) {
        const Bytes even = size == 1 ? (Bytes)splatWord(0x00ff) : (Bytes)splatDword(0xffff);
        sites_ = first ? even : ~even;
    }

    // Interleaved pixels.
    ZEL_INLINE void store(Destination p, const Channels<V>& here, const Channels<V>& between) const {
        const auto joined = [&](V atSites, V others) ZEL_INLINE_LAMBDA {
            return (typename Depth::Vector)choose(sites_, (Bytes)atSites, (Bytes)others);
        };
        InterleavedThree<Depth>::store(p, {joined(here.a, between.a), joined(here.b, between.b), joined(here.c, between.c)});
    }

  private:
    Bytes sites_;
};

}  // namespace zel::ZEL_LEVEL

#endif
