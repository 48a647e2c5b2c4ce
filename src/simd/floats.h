// Vectors of floats and doubles, and vectors of integer samples as floats and back. Arithmetic comes from the compiler's vector
// types: every operation is rounded by itself, in the order written.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

typedef float Floats __attribute__((vector_size(vectorBytes)));
typedef double Doubles __attribute__((vector_size(vectorBytes)));

#if ZEL_LANES == 4
using FloatRegister = __m512;
using DoubleRegister = __m512d;
#elif ZEL_LANES == 2
using FloatRegister = __m256;
using DoubleRegister = __m256d;
#else
using FloatRegister = __m128;
using DoubleRegister = __m128d;
#endif

ZEL_INLINE Floats splatFloat(float x) { return (Floats)ZEL_MM(set1_ps)(x); }
ZEL_INLINE Doubles splatDouble(double x) { return (Doubles)ZEL_MM(set1_pd)(x); }

ZEL_INLINE Floats toFloats(Dwords v) { return (Floats)ZEL_MM(cvtepi32_ps)((Register)v); }

// By the rounding mode of the thread; what no dword can hold gives the lowest one.
ZEL_INLINE Dwords rounded(Floats v) { return (Dwords)ZEL_MM(cvtps_epi32)((FloatRegister)v); }

// To the integer toward zero, of what a dword can hold.
ZEL_INLINE Floats wholePart(Floats v) {
#if ZEL_LANES == 4
    return (Floats)_mm512_roundscale_ps((__m512)v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
#elif ZEL_LANES == 2
    return (Floats)_mm256_round_ps((__m256)v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
#else
    return (Floats)_mm_cvtepi32_ps(_mm_cvttps_epi32((__m128)v));
#endif
}

// v < limit ? v : limit and v > limit ? v : limit, so NaN gives the limit.
ZEL_INLINE Floats atMost(Floats v, Floats limit) { return (Floats)ZEL_MM(min_ps)((FloatRegister)v, (FloatRegister)limit); }
ZEL_INLINE Floats atLeast(Floats v, Floats limit) { return (Floats)ZEL_MM(max_ps)((FloatRegister)v, (FloatRegister)limit); }

// 1 / v to about 12 bits. How the rest is filled differs between makes of processors, but on one it is the same at every level:
// the widest has no such instruction, and takes halves, for its own approximation has other values.
ZEL_INLINE Floats approximateReciprocal(Floats v) {
#if ZEL_LANES == 4
    const __m512 wide = (__m512)v;
    const __m256 low = _mm256_rcp_ps(_mm512_castps512_ps256(wide)), high = _mm256_rcp_ps(_mm512_extractf32x8_ps(wide, 1));
    return (Floats)_mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1);
#else
    return (Floats)ZEL_MM(rcp_ps)((FloatRegister)v);
#endif
}

// Dwords to unsigned words, those below 0 to 0; above 65535 they saturate, but at the lowest level there must be none.
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) {
#if ZEL_LANES == 1
    const Dwords middle = splatDword(32768);
    const auto lifted = [&](Dwords x) { return (x & ~(x >> 31)) - middle; };
    return packWords(lifted(a), lifted(b)) ^ splatWord(0x8000);
#else
    return (Words)ZEL_MM(packus_epi32)((Register)a, (Register)b);
#endif
}

// The even and the odd dwords of each lane of a, then those of b.
ZEL_INLINE Bytes evenDwords(Bytes a, Bytes b) { return (Bytes)ZEL_MM(shuffle_ps)((FloatRegister)a, (FloatRegister)b, 0x88); }
ZEL_INLINE Bytes oddDwords(Bytes a, Bytes b) { return (Bytes)ZEL_MM(shuffle_ps)((FloatRegister)a, (FloatRegister)b, 0xdd); }

// The float at one place of each lane, at all places of the lane.
template <int place>
ZEL_INLINE Floats everyOf(Floats v) {
    return (Floats)ZEL_MM(shuffle_ps)((FloatRegister)v, (FloatRegister)v, place * 0x55);
}

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
        constexpr bool saturated = reach == Reach::dword && (isSigned || lanes > 1);
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
