// Depths of samples: vectors of them as vectors of floats, and back.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// What is known of floats that become samples: nothing, or that they fit a dword.
enum class Reach { any, dword };

// Depths. A vector of samples takes `parts` vectors of floats; what `limited` takes back is bounded to the samples' range, NaN to
// its upper end, and rounded. `lowest` and `highest` are that range.
struct Depth8u {
    using Element = uint8_t;
    using Vector = Bytes;
    static constexpr int parts = 4;
    static constexpr float lowest = 0, highest = 255;

    template <int part>
    ZEL_INLINE static Floats toFloats(Bytes v) {
        const Words half = part < 2 ? lowBytes(v) : highBytes(v), none{};
        return ZEL_LEVEL::toFloats((Dwords)(part % 2 == 0 ? interleaveLow(half, none) : interleaveHigh(half, none)));
    }
    // The packs bound it from below, and the lowest dword stands for everything that is too low.
    template <Reach reach>
    ZEL_INLINE static Bytes limited(const Floats (&v)[parts]) {
        const auto sample = [&](int i) { return rounded(reach == Reach::dword ? v[i] : atMost(v[i], splatFloat(highest))); };
        return packBytes(packWords(sample(0), sample(1)), packWords(sample(2), sample(3)));
    }
};

struct Depth8s {
    using Element = int8_t;
    using Vector = Bytes;
    static constexpr int parts = 4;
    static constexpr float lowest = -128, highest = 127;

    template <int part>
    ZEL_INLINE static Floats toFloats(Bytes v) {
        const Words half = (Words)(part < 2 ? interleaveLow(Bytes{}, v) : interleaveHigh(Bytes{}, v)), none{};
        return ZEL_LEVEL::toFloats((Dwords)(part % 2 == 0 ? interleaveLow(none, half) : interleaveHigh(none, half)) >> 24);
    }
    template <Reach reach>
    ZEL_INLINE static Bytes limited(const Floats (&v)[parts]) {
        const auto sample = [&](int i) { return rounded(reach == Reach::dword ? v[i] : atMost(v[i], splatFloat(highest))); };
        return packSignedBytes(packWords(sample(0), sample(1)), packWords(sample(2), sample(3)));
    }
};

template <class Sample>
struct Depth16 {
    using Element = Sample;
    using Vector = Words;
    static constexpr int parts = 2;
    static constexpr bool isSigned = Sample(-1) < 0;
    static constexpr float lowest = isSigned ? -32768 : 0, highest = isSigned ? 32767 : 65535;

    template <int part>
    ZEL_INLINE static Floats toFloats(Words v) {
        const Words other = isSigned ? v : Words{};
        const Dwords half = (Dwords)(part == 0 ? interleaveLow(v, other) : interleaveHigh(v, other));
        return ZEL_LEVEL::toFloats(isSigned ? half >> 16 : half);
    }
    template <Reach reach>
    ZEL_INLINE static Words limited(const Floats (&v)[parts]) {
        constexpr bool saturated = reach == Reach::dword && (isSigned || traits.packsUnsignedWords);
        const auto sample = [&](int i) { return rounded(saturated ? v[i] : atMost(v[i], splatFloat(highest))); };
        return isSigned ? packWords(sample(0), sample(1)) : packUnsignedWords(sample(0), sample(1));
    }

    // By even and odd places, which needs no shuffle. What is joined keeps its low words.
    ZEL_INLINE static Floats evens(Words v) {
        return ZEL_LEVEL::toFloats(isSigned ? (Dwords)v << 16 >> 16 : (Dwords)v & splatDword(0xffff));
    }
    ZEL_INLINE static Floats odds(Words v) {
        return ZEL_LEVEL::toFloats(isSigned ? (Dwords)v >> 16 : (Dwords)((UDwords)v >> 16));
    }
    ZEL_INLINE static Words joined(Dwords even, Dwords odd) { return (Words)((even & splatDword(0xffff)) | odd << 16); }
};
using Depth16u = Depth16<uint16_t>;
using Depth16s = Depth16<int16_t>;

// Floats have no limits.
struct Depth32f {
    using Element = float;
    using Vector = Floats;
    static constexpr int parts = 1;

    template <int part>
    ZEL_INLINE static Floats toFloats(Floats v) {
        return v;
    }
    template <Reach>
    ZEL_INLINE static Floats limited(const Floats (&v)[parts]) {
        return v[0];
    }
};

struct Depth64f {
    using Element = double;
    using Vector = Doubles;
};

}  // namespace zel::ZEL_LEVEL
