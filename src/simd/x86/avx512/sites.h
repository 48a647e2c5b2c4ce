// Every other pixel by permutes over whole vectors.
#pragma once

#include "simd/sites.h"

namespace zel::ZEL_LEVEL {

template <class Depth, class V>
class Sites {
    static constexpr int size = sizeof(typename Depth::Element);

  public:
    // Whether the first pixel is one of them.
    ZEL_INLINE explicit Sites(bool first) {
        unrolled<3>([&](int c) ZEL_INLINE_LAMBDA { patterns_[c] = _mm512_load_si512(places.apart[first][c]); });
    }

    // Interleaved pixels.
    ZEL_INLINE void store(Destination p, const Channels<V>& here, const Channels<V>& between) const {
        constexpr auto& t = samples::table<size>;
        const auto spread = [&](int c, V atSites, V others) ZEL_INLINE_LAMBDA {
            return (Bytes)_mm512_permutex2var_epi8((Register)atSites, patterns_[c], (Register)others);
        };
        const Bytes v[3] = {spread(0, here.a, between.a), spread(1, here.b, between.b), spread(2, here.c, between.c)};
        unrolled<3>([&](auto i) ZEL_INLINE_LAMBDA {
            storeVector(p + 64 * i, samples::blend<t.place[i][1], t.place[i][2]>(v[0], v[1], v[2]));
        });
    }

  private:
    // Where a byte comes from: of the vector at sites, or behind it of the other one.
    struct Places {
        alignas(64) uint8_t apart[2][3][64];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int first = 0; first < 2; ++first)
            for (int c = 0; c < 3; ++c)
                for (int i = 0; i < 64; ++i) {
                    const int from = samples::table<size>.apart[c][i], isSite = from / size % 2 != first;
                    p.apart[first][c][i] = uint8_t(isSite ? from : from + 64);
                }
        return p;
    }();

    Register patterns_[3];
};

}  // namespace zel::ZEL_LEVEL
