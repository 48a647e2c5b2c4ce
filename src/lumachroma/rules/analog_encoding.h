// RGB to full-range luma and analog colour differences: the arithmetic of one pixel and of one chroma site.
//
//   Y = 0.299 R + 0.587 G + 0.114 B        U = 0.492 (B - Y) + 128        V = 0.877 (R - Y) + 128
//
// Chroma comes from the difference to luma, but for the direct rule, which has a matrix of its own. U stays inside a byte by
// every rule; V leaves it above and below, and is bounded.
#pragma once

#include "lumachroma/rules/chroma_pairs.h"
#include "lumachroma/rules/encoding.h"

namespace zel::ZEL_LEVEL {

// A sum a ka + b kb + c kc of bytes that is a fraction of 2 lowBits bits, exact in 16-bit words: each coefficient is a high part,
// at the weight 1 << lowBits, and a low one. The sum of the coefficients is 1 << 2 lowBits at most, or little above.
template <int lowBits>
class ByteSum {
  public:
    struct Constants {
        int a, b, c;
    };

    // No pair of products leaves a word: the high parts of b are such that a pair's add up to 128.
    ZEL_INLINE explicit ByteSum(const Constants& k)
        : highAb_(weights(high(k.a), 128 - high(k.a))),
          highCb_(weights(high(k.c), high(k.b) - (128 - high(k.a)))),
          lowAb_(weights(low(k.a), low(k.b))),
          lowC_(weights(low(k.c), 0)) {}

    struct Parts {
        UWords high;
        Words low;
    };
    // The bytes of a and of c in turn with those of b.
    ZEL_INLINE Parts operator()(Bytes ab, Bytes cb) const {
        return {(UWords)(mulAddBytes(ab, highAb_) + mulAddBytes(cb, highCb_)), mulAddBytes(ab, lowAb_) + mulAddBytes(cb, lowC_)};
    }

    // (sum + bias) >> 2 lowBits
    struct Bias {
        uint16_t high;
        uint8_t low;
    };
    static constexpr Bias bias(int bias) { return {uint16_t(bias >> lowBits), uint8_t(bias & ((1 << lowBits) - 1))}; }
    ZEL_INLINE static UWords whole(Parts sum, UWords biasHigh = UWords{}, Words biasLow = Words{}) {
        return (sum.high + (UWords)((sum.low + biasLow) >> lowBits) + biasHigh) >> lowBits;
    }

  private:
    static constexpr int high(int k) { return (k + (1 << (lowBits - 1))) >> lowBits; }
    static constexpr int low(int k) { return k - (high(k) << lowBits); }
    ZEL_INLINE static Bytes weights(int even, int odd) { return (Bytes)splatWord((even & 0xff) | odd << 8); }

    Bytes highAb_, highCb_, lowAb_, lowC_;
};

// Half the pixels of a block: the bytes of a and of c in turn with those of b, and a and c as words.
struct HalfBlock {
    Bytes ab, cb;
    Words a, c;
};
ZEL_INLINE HalfBlock lowHalf(Triple t) {
    return {interleaveLow(t.a, t.b), interleaveLow(t.c, t.b), lowBytes(t.a), lowBytes(t.c)};
}
ZEL_INLINE HalfBlock highHalf(Triple t) {
    return {interleaveHigh(t.a, t.b), interleaveHigh(t.c, t.b), highBytes(t.a), highBytes(t.c)};
}

// Chroma without its 128.
ZEL_INLINE Bytes packChroma(Words a, Words b) { return packSignedBytes(a, b) ^ splatByte(128); }

// Luma and chroma of each pixel from a rule for half a block, which leaves out the 128 of chroma.
template <class Rule>
struct EncodeHalves {
    using Constants = typename Rule::Constants;
    static constexpr Order order = Order::natural;

    Rule rule;

    ZEL_INLINE explicit EncodeHalves(const Constants& k) : rule(k) {}
    ZEL_INLINE Triple operator()(Triple t) const {
        const auto low = rule(lowHalf(t)), high = rule(highHalf(t));
        return {packBytes(low.y, high.y), packChroma(low.u, high.u), packChroma(low.v, high.v)};
    }
};

struct LumaAndChroma {
    Words y, u, v;
};

// d times the factor of V over 65536: the factor is above a signed word's, so 65536 is taken from it.
ZEL_INLINE Words timesVFactor(Words d, Words factorLess1) { return d + mulHigh(d, factorLess1); }

// The exact rule, with L = 19595 R + 38470 G + 7471 B:
//   Y = (L + lumaBias) >> 16
//   U = ((((B << 16) - L + chromaBias) >> 16) 32244 >> 16) + 128, V = ((((R << 16) - L + chromaBias) >> 16) 57475 >> 16) + 128
// B and R are whole, so the differences are those to L - chromaBias, rounded up.
constexpr int uFactor = 32244, vFactorLess1 = 57475 - 65536;

class ExactDifferences {
  public:
    struct Constants {
        ByteSum<8>::Constants luma;
        int lumaBias, chromaBias;
    };

    ZEL_INLINE explicit ExactDifferences(const Constants& k)
        : sum_(k.luma),
          lumaBias_((UWords)splatWord(ByteSum<8>::bias(k.lumaBias).high)),
          upHigh_((UWords)splatWord(ByteSum<8>::bias(65535 - k.chromaBias).high)),
          upLow_(splatWord(ByteSum<8>::bias(65535 - k.chromaBias).low)),
          uFactor_(splatWord(uFactor)),
          vFactorLess1_(splatWord(vFactorLess1)) {}

    ZEL_INLINE LumaAndChroma operator()(HalfBlock h) const {
        const auto sum = sum_(h.ab, h.cb);
        const Words up = (Words)ByteSum<8>::whole(sum, upHigh_, upLow_);
        return {(Words)ByteSum<8>::whole(sum, lumaBias_), mulHigh(h.c - up, uFactor_), timesVFactor(h.a - up, vFactorLess1_)};
    }

  private:
    ByteSum<8> sum_;
    UWords lumaBias_, upHigh_;
    Words upLow_, uFactor_, vFactorLess1_;
};

// Luma alone: Y = (a ka + b kb + c kc + bias) >> 16, with a bias that is a multiple of 256.
class ExactLuma {
  public:
    struct Constants {
        ByteSum<8>::Constants luma;
        int bias;
    };

    ZEL_INLINE explicit ExactLuma(const Constants& k) : sum_(k.luma), bias_((UWords)splatWord(k.bias >> 8)) {}

    ZEL_INLINE Bytes operator()(Triple t) const {
        const auto half = [&](HalfBlock h) { return (Words)ByteSum<8>::whole(sum_(h.ab, h.cb), bias_); };
        return packBytes(half(lowHalf(t)), half(highHalf(t)));
    }

  private:
    ByteSum<8> sum_;
    UWords bias_;
};

// Chroma of a site by the exact rule, from the sums of the channels over its 1 << shift pixels, S being the sum of their L:
//   U = ((((SB << 16) - S + bias) >> 16) 32244 >> (16 + shift)) + 128, and V alike
template <int shift>
class ExactSiteDifferences {
  public:
    struct Constants {
        ExactConstants minusLuma;  // the bias with it
    };
    static constexpr int lift = 0;

    ZEL_INLINE explicit ExactSiteDifferences(const Constants& k)
        : minusLuma_(k.minusLuma), uFactor_(splatWord(uFactor)), vFactorLess1_(splatWord(vFactorLess1)) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const Words minusLuma = minusLuma_.template at<16>(ChannelPairs(a, b), ChannelPairs(c, b));
        return {(mulHigh(c + minusLuma, uFactor_) >> shift) + 128, (timesVFactor(a + minusLuma, vFactorLess1_) >> shift) + 128};
    }

  private:
    ExactSum minusLuma_;
    Words uFactor_, vFactorLess1_;
};

// The multiply-add rule. W = (9798 R + 19235 G + 3736 B) >> 14 is twice the luma and a bit more; with the differences doubled
// too, a high multiply by constants at scale 32768 leaves whole levels:
//   Y = W >> 1, U = floor((2 B - W) 16121 / 65536) + 128, V = floor((2 R - W) 28737 / 65536) + 128
// Luma is cut off, not rounded.
struct DoubledConstants {
    ByteSum<7>::Constants luma;
    int16_t u, v;
};

class DoubledDifferences {
  public:
    using Constants = DoubledConstants;

    ZEL_INLINE explicit DoubledDifferences(const Constants& k) : sum_(k.luma), u_(splatWord(k.u)), v_(splatWord(k.v)) {}

    ZEL_INLINE LumaAndChroma operator()(HalfBlock h) const {
        const Words doubled = (Words)ByteSum<7>::whole(sum_(h.ab, h.cb));
        return {doubled >> 1, mulHigh(h.c + h.c - doubled, u_), mulHigh(h.a + h.a - doubled, v_)};
    }

  private:
    ByteSum<7> sum_;
    Words u_, v_;
};

// Rules for sites that take chroma from the outer channels' and luma's sums.
struct DifferenceSums {
    Words a, c;
    UWords luma;
};

// The multiply-add rule for pairs: chroma as above of the pair's sums, halved after the multiply.
class DoubledPairs {
  public:
    using Constants = DoubledConstants;
    using Sums = DifferenceSums;

    ZEL_INLINE explicit DoubledPairs(const Constants& k) : sum_(k.luma), u_(splatWord(k.u)), v_(splatWord(k.v)) {}

    ZEL_INLINE Bytes lumaOf(Triple t, Sums& sums) const {
        const auto half = [&](HalfBlock h) { return (Words)ByteSum<7>::whole(sum_(h.ab, h.cb)); };
        const Words low = half(lowHalf(t)), high = half(highHalf(t));
        sums = {pairSums<1>(t.a), pairSums<1>(t.c),
                (UWords)packWords(mulAddPairs(low, splatWord(1)), mulAddPairs(high, splatWord(1)))};
        return packBytes(low >> 1, high >> 1);
    }
    ZEL_INLINE ChromaPair chromaOf(const Sums& s) const {
        const auto chroma = [&](Words own, Words k) { return (mulHigh(own - (Words)s.luma, k) >> 1) + 128; };
        return {chroma(s.c, u_), chroma(s.a, v_)};
    }

  private:
    ByteSum<7> sum_;
    Words u_, v_;
};

// The rounding rule. With w = round(4899 R / 256) + round(9617 G / 256) + round(1868 B / 256) of each pixel, 64 times its luma,
// and their sum w2 or w4 over a site of one row or of two:
//   Y = w >> 6
//   U = (round((64 SB - w2) 8061 / 32768) >> 6) + 128, or (round((32 SB - (w4 >> 1)) 8061 / 32768) >> 6) + 128, and V alike
// Rounding three times and then cutting off makes some grays one darker than they are, and V of some 127. Meant: one
// rounding of the sum would change those grays.
template <int rows>
class RoundedDifferences {
  public:
    struct Constants {
        RoundedLumaConstants luma;
        int16_t u, v;
    };
    using Sums = DifferenceSums;

    ZEL_INLINE explicit RoundedDifferences(const Constants& k) : luma_(k.luma), u_(splatWord(k.u)), v_(splatWord(k.v)) {}

    ZEL_INLINE Bytes lumaOf(Triple t, Sums& sums) const {
        const LiftedBytes luma = ofLifted(luma_, t);
        sums.a += pairSums<7 - rows>(t.a);
        sums.c += pairSums<7 - rows>(t.c);
        sums.luma += sumsOfPairs(luma.first, luma.second);
        return joined<RoundedLuma::shift>(luma.first, luma.second);
    }
    ZEL_INLINE ChromaPair chromaOf(const Sums& s) const {
        const Words luma = (Words)(s.luma >> (rows - 1));
        const auto chroma = [&](Words own, Words k) { return (mulRound(own - luma, k) >> 6) + 128; };
        return {chroma(s.c, u_), chroma(s.a, v_)};
    }

  private:
    RoundedLuma luma_;
    Words u_, v_;
};

// The direct rule, of single pixels: luma and chroma each from a matrix, every product floored by itself.
class DirectMatrix {
  public:
    struct Constants {
        TruncatedLumaConstants luma;
        TruncatedChromaConstants u, v;
    };
    static constexpr Order order = liftedOrder;

    ZEL_INLINE explicit DirectMatrix(const Constants& k) : luma_(k.luma), u_(k.u), v_(k.v) {}
    ZEL_INLINE Triple operator()(Triple t) const {
        return {packed<UWords>(luma_, t), packed<Words>(u_, t), packed<Words>(v_, t)};
    }

  private:
    template <class Number, class Rule>
    ZEL_INLINE static Bytes packed(const Rule& rule, Triple t) {
        const auto of = [&](auto sums) { return (Words)((Number)sums >> Rule::shift); };
        const LiftedBytes words = ofLifted(rule, t);
        return packBytes(of(words.first), of(words.second));
    }

    TruncatedLuma<8> luma_;
    TruncatedChroma<6> u_, v_;
};

// The direct rule in exact sums.
class ExactDirectMatrix {
  public:
    struct Constants {
        ExactLuma::Constants luma;
        ExactConstants u, v;
    };
    static constexpr Order order = Order::natural;

    ZEL_INLINE explicit ExactDirectMatrix(const Constants& k) : luma_(k.luma), u_(k.u), v_(k.v) {}
    ZEL_INLINE Triple operator()(Triple t) const { return {luma_(t), u_(t), v_(t)}; }

  private:
    ExactLuma luma_;
    ExactPixelsAt<15> u_, v_;
};

}  // namespace zel::ZEL_LEVEL
