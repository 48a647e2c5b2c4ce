// Kernels of rules that convert a pixel's three samples in single precision, whatever the depth of the images: 16-bit words,
// signed ones as unsigned ones 32768 above, and floats. A fourth sample of a pixel stays.
#pragma once

#include <type_traits>

#include "frame/passes.h"
#include "simd/samples.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

struct FloatPixel {
    Floats a, b, c;
};

// How floats become unsigned words: cut off or rounded to the nearest, limited to 0 to 65535.
struct CutOff {
    ZEL_INLINE static Dwords dwords(Floats v) { return truncated(atMost(v, splatFloat(65535))); }
};
struct ToNearest {
    ZEL_INLINE static Dwords dwords(Floats v) { return rounded(atMost(v, splatFloat(65535))); }
};

// Samples of a depth as floats and back. A vector of samples takes `parts` vectors of floats.
template <bool isSigned, class Rounding>
struct WordSamples {
    using Depth = Depth16u;
    static constexpr int parts = 2;

    template <int part>
    ZEL_INLINE static Floats floats(Words v) {
        return Depth::toFloats<part>(fromZero(v));
    }
    ZEL_INLINE static Words samples(const Floats (&v)[parts]) {
        return fromZero(packUnsignedWords(Rounding::dwords(v[0]), Rounding::dwords(v[1])));
    }

  private:
    ZEL_INLINE static Words fromZero(Words v) { return isSigned ? v ^ splatWord(0x8000) : v; }
};

struct FloatSamples {
    using Depth = Depth32f;
    static constexpr int parts = 1;

    template <int>
    ZEL_INLINE static Floats floats(Floats v) {
        return v;
    }
    ZEL_INLINE static Floats samples(const Floats (&v)[parts]) { return v[0]; }
};

template <class Depth>
struct ThreeSamples {
    static constexpr int bytes = 3 * sizeof(typename Depth::Element);
    using V = typename Depth::Vector;
    ZEL_INLINE static Channels<V> load(const uint8_t* p) { return InterleavedThree<Depth>::load(p); }
    ZEL_INLINE static void store(uint8_t* p, Channels<V> x) { InterleavedThree<Depth>::store(p, x); }
};
template <class Depth>
struct FourSamples {
    static constexpr int bytes = 4 * sizeof(typename Depth::Element);
    using V = typename Depth::Vector;
    ZEL_INLINE static Channels<V> load(const uint8_t* p) { return InterleavedFour<Depth>::load(p); }
    ZEL_INLINE static void store(uint8_t* p, Channels<V> x) { storeThree<sizeof(typename Depth::Element)>(p, x); }
};

// Rule::of is a function of a pixel.
template <class Samples, template <class> class Pixels, class Rule>
struct FloatPixelKernel {
    using Depth = typename Samples::Depth;
    using Layout = Pixels<Depth>;
    static constexpr int sites = vectorBytes / sizeof(typename Depth::Element);

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Layout::load(row.in[0] + block * sites * Layout::bytes);
        Floats a[Samples::parts], b[Samples::parts], c[Samples::parts];
        unrolled<Samples::parts>([&](auto part) ZEL_INLINE_LAMBDA {
            const FloatPixel p = Rule::of(
                {Samples::template floats<part>(x.a), Samples::template floats<part>(x.b), Samples::template floats<part>(x.c)});
            a[part] = p.a;
            b[part] = p.b;
            c[part] = p.c;
        });
        Layout::store(row.out[0] + block * sites * Layout::bytes,
                      {Samples::samples(a), Samples::samples(b), Samples::samples(c)});
    }
};

// Limited to 0 to 1; NaN stays.
ZEL_INLINE Floats limitedTo1(Floats v) { return atMost(splatFloat(1), atLeast(Floats{}, v)); }

constexpr Conversion packedConversion(int bytes, bool keepsAlpha, Kernel block, Kernel tail = {},
                                      int (*blockColumns)(int width) = nullptr) {
    const Layout layout = layoutOf({{0, uint8_t(bytes)}});
    return {.site = {1, 1},
            .from = layout,
            .to = layout,
            .block = block,
            .tail = tail,
            .blockColumns = blockColumns,
            .keepsAlpha = keepsAlpha};
}

// Rules of one depth in pixels of three or four samples.
template <class Samples, template <class> class Pixels>
constexpr Conversion sampleConversion(Kernel block, Kernel tail = {}) {
    constexpr int element = sizeof(typename Samples::Depth::Element), bytes = Pixels<typename Samples::Depth>::bytes;
    return packedConversion(bytes, bytes == 4 * element, block, tail, tail.blocks != nullptr ? wholeBlocks<4> : nullptr);
}

template <class Samples, template <class> class Pixels, class Rule>
constexpr Conversion floatPixels = sampleConversion<Samples, Pixels>(withoutConstants<FloatPixelKernel<Samples, Pixels, Rule>>);

}  // namespace zel::ZEL_LEVEL
