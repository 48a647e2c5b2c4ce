#pragma once

#include "simd/samples.h"

namespace zel::ZEL_LEVEL {

template <class Depth, class V>
class Sites {
    static constexpr int size = sizeof(typename Depth::Element);

  public:
    ZEL_INLINE explicit Sites(bool first) {
        const Bytes even = size == 1 ? (Bytes)splatWord(0x00ff) : (Bytes)splatDword(0xffff);
        sites_ = first ? even : ~even;
    }
    ZEL_INLINE void store(Destination p, const Channels<V>& here, const Channels<V>& between) const {
        const auto joined = [&](V atSites, V others) ZEL_INLINE_LAMBDA {
            return (typename Depth::Vector)vbslq_u8(arm::u8(sites_), arm::u8(atSites), arm::u8(others));
        };
        InterleavedThree<Depth>::store(p, {joined(here.a, between.a), joined(here.b, between.b), joined(here.c, between.c)});
    }

  private:
    Bytes sites_;
};

}  // namespace zel::ZEL_LEVEL
