// Full-range luma and analog colour differences to RGB: the arithmetic of one pixel and of one chroma site. With u = U - 128 and
// v = V - 128:
//
//   R = Y + 1.140 v        G = Y - 0.394 u - 0.581 v        B = Y + 2.032 u
//
// Luma is whole, so every rule says what chroma adds to it, once for each site, and bounds the sum to a byte.
#pragma once

#include "lumachroma/rules/decoding.h"

namespace zel::ZEL_LEVEL {

// Red and blue of the rules below at a scale of 2^bits, floor(c k / 2^bits) or with half of it added first, come whole from one
// high multiply of the sample times 2^weightShift; the sum of luma with its shift changes no floor.
enum class Rounding { nearest, down };

template <Rounding rounding, int bits>
struct OuterTerm {
    static constexpr int weightShift = (rounding == Rounding::nearest ? 15 : droppedBits) - bits;

    ZEL_INLINE static Words of(Words weighted, Words k) {
        return rounding == Rounding::nearest ? mulRound(weighted, k) : mulTop(weighted, k);
    }
};

// The word rules: with h(x, k) = floor(128 x k / 65536) and s = bits - 9,
//   R = sat8((2^s Y + h(v, rv) + half) >> s), B alike, G = sat8((2^s Y - h(v, gv) - h(u, gu) + half) >> s)
// where half is 2^(s - 1) or, rounding down, 0. The two floors of green stay apart.
struct AnalogWordConstants {
    int16_t rv, gv, gu, bu;
};

template <Rounding rounding, int bits>
class AnalogWords {
  public:
    using Constants = AnalogWordConstants;
    using Outer = OuterTerm<rounding, bits>;

    ZEL_INLINE explicit AnalogWords(const Constants& k)
        : rv_(splatWord(k.rv)), gv_(splatWord(k.gv)), gu_(splatWord(k.gu)), bu_(splatWord(k.bu)) {}

    // Of weighted samples.
    ZEL_INLINE ChromaTerms operator()(Words v, Words u) const {
        constexpr int shift = bits - 9, half = rounding == Rounding::nearest ? 1 << (shift - 1) : 0;
        constexpr int to128 = liftOf(7) - Outer::weightShift;
        const Words green = splatWord(half) - mulTop(v << to128, gv_) - mulTop(u << to128, gu_);
        return {Outer::of(v, rv_), green >> shift, Outer::of(u, bu_)};
    }

  private:
    Words rv_, gv_, gu_, bu_;
};

// The exact rule, at a scale of 65536:
//   R = sat8(((Y << 16) + v rv + rounding) >> 16), G = sat8(((Y << 16) - v gv - u gu + greenRounding) >> 16), B alike
// For the 256 values that v and u have, 13 bits of rv and bu are enough; green is summed in 32 bits.
struct AnalogExactConstants {
    int32_t rv, gv, gu, bu, greenRounding;
};

constexpr int to13Bits(int32_t k) { return k / 8; }

// Whether 13 bits of a coefficient give what all of it gives.
template <Rounding rounding>
constexpr bool are13BitsEnough(int32_t k) {
    for (int c = -128; c < 128; ++c) {
        const bool nearest = rounding == Rounding::nearest;
        if ((c * k + (nearest ? 32768 : 0)) >> 16 != (c * to13Bits(k) + (nearest ? 4096 : 0)) >> 13) return false;
    }
    return true;
}

template <Rounding rounding>
class AnalogExact {
  public:
    using Constants = AnalogExactConstants;
    using Outer = OuterTerm<rounding, 13>;

    ZEL_INLINE explicit AnalogExact(const Constants& k)
        : rv_(splatWord(to13Bits(k.rv))),
          bu_(splatWord(to13Bits(k.bu))),
          green_(splatWords(65536 - k.gv, -k.gu)),
          greenRounding_(splatDword(k.greenRounding << Outer::weightShift)) {}

    // The coefficient of v is above a signed word's: v itself is taken off after the shift.
    ZEL_INLINE ChromaTerms operator()(Words v, Words u) const {
        const auto half = [&](Words vu) { return (mulAddPairs(vu, green_) + greenRounding_) >> (16 + Outer::weightShift); };
        const Words green = packWords(half(interleaveLow(v, u)), half(interleaveHigh(v, u)));
        return {Outer::of(v, rv_), green - (v >> Outer::weightShift), Outer::of(u, bu_)};
    }

  private:
    Words rv_, bu_, green_;
    Dwords greenRounding_;
};

// A rule for chroma terms, for sites of any kind. Where a layout speaks of p and q, p is v and q is u.
template <class Terms>
class AnalogDecode {
  public:
    using Constants = typename Terms::Constants;
    static constexpr Order order = Order::split;

    ZEL_INLINE explicit AnalogDecode(const Constants& k, ChromaOrder order = ChromaOrder::pFirst)
        : terms_(k), vPlaces_(order == ChromaOrder::pFirst), uPlaces_(order == ChromaOrder::qFirst) {}

    // Samples as words.
    ZEL_INLINE ChromaTerms chroma(Words v, Words u) const {
        const auto weighted = [](Words x) { return (x << lift) - splatWord(128 << lift); };
        return terms_(weighted(v), weighted(u));
    }
    // Interleaved bytes.
    ZEL_INLINE ChromaTerms chroma(Bytes pairs) const { return terms_(vPlaces_.centred(pairs), uPlaces_.centred(pairs)); }

    // The bytes of two pixels for each site: the even pixels in the low half of a lane, the odd ones in the high half.
    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& even, const ChromaTerms& odd) const {
        const Words evenLuma = evenBytes(luma), oddLuma = oddBytes(luma);
        return {packBytes(evenLuma + even.a, oddLuma + odd.a), packBytes(evenLuma + even.b, oddLuma + odd.b),
                packBytes(evenLuma + even.c, oddLuma + odd.c)};
    }
    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& pair) const { return pixels(luma, pair, pair); }

    // Chroma samples for each pixel.
    ZEL_INLINE Triple operator()(Triple yuv) const {
        const Picked<lift> even(true), odd(false);
        return pixels(yuv.a, terms_(even.centred(yuv.c), even.centred(yuv.b)), terms_(odd.centred(yuv.c), odd.centred(yuv.b)));
    }

  private:
    static constexpr int lift = Terms::Outer::weightShift;

    Terms terms_;
    Picked<lift> vPlaces_, uPlaces_;
};

}  // namespace zel::ZEL_LEVEL
