// RGB to studio-range YCbCr (ITU-R BT.601): the arithmetic of one pixel and of one chroma site.
//
//   Y  =  0.257 R + 0.504 G + 0.098 B + 16
//   Cb = -0.148 R - 0.291 G + 0.439 B + 128
//   Cr =  0.439 R - 0.368 G - 0.071 B + 128
//
// Each output has several fixed-point rules, whose results differ by one on some colours on purpose: high multiplies of 16-bit
// words, truncated or rounded, with each product floored by itself, and exact 32-bit sums. Channels are named a, b, c by their
// place in the pixel: a and c are red and blue in the order of the layout, b is green.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// The even or the odd pixels of a channel as words.
template <Parity parity>
ZEL_INLINE UWords times256(Bytes x) {
    return parity == Parity::even ? (UWords)x << 8 : (UWords)x & 0xff00;
}
template <Parity parity>
ZEL_INLINE Words times64(Bytes x) {
    return mulAddPairs(x, (Bytes)splatWord(parity == Parity::even ? 64 : 64 << 8));
}

// A byte per pixel from a rule that gives, for one parity, words whose bits from `shift` on are the result.
template <class Rule>
ZEL_INLINE Bytes perPixel(const Rule& rule, Triple t) {
    constexpr int shift = Rule::shift;
    return (Bytes)(rule.template at<Parity::even>(t) >> shift | (rule.template at<Parity::odd>(t) << (8 - shift) & 0xff00));
}

// Y = (floor(a ka / 256) + floor(b kb / 256) + floor(c kc / 256) + bias) >> shift
struct TruncatedLumaConstants {
    uint16_t a, b, c, bias;
};

template <int dropped>
class TruncatedLuma {
  public:
    using Constants = TruncatedLumaConstants;
    static constexpr int shift = dropped;

    ZEL_INLINE explicit TruncatedLuma(const Constants& k)
        : a_((UWords)splatWord(k.a)), b_((UWords)splatWord(k.b)), c_((UWords)splatWord(k.c)), bias_((UWords)splatWord(k.bias)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    template <Parity parity>
    ZEL_INLINE UWords at(Triple t) const {
        return mulHigh(times256<parity>(t.a), a_) + mulHigh(times256<parity>(t.b), b_) + mulHigh(times256<parity>(t.c), c_) +
               bias_;
    }

  private:
    UWords a_, b_, c_, bias_;
};

// Y = (round(a ka / 256) + round(b kb / 256) + round(c kc / 256) + bias) >> 6
struct RoundedLumaConstants {
    int16_t a, b, c, bias;
};

class RoundedLuma {
  public:
    using Constants = RoundedLumaConstants;
    static constexpr int shift = 6;

    ZEL_INLINE explicit RoundedLuma(const Constants& k)
        : a_(splatWord(2 * k.a)), b_(splatWord(2 * k.b)), c_(splatWord(2 * k.c)), bias_(splatWord(k.bias)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    template <Parity parity>
    ZEL_INLINE UWords at(Triple t) const {
        // The rounding multiply drops 15 bits: 64 x times 2 k leaves x k / 256.
        return (UWords)(mulRound(times64<parity>(t.a), a_) + mulRound(times64<parity>(t.b), b_) +
                        mulRound(times64<parity>(t.c), c_) + bias_);
    }

  private:
    Words a_, b_, c_, bias_;
};

// Chroma of single pixels: (floor(a ka / 512) + floor(b kb / 512) + floor(c kc / 512) + half) >> shift, with signed coefficients,
// so that a negative product is floored, not truncated. The half comes with the 128 of chroma.
struct TruncatedChromaConstants {
    int16_t a, b, c;
};

template <int dropped>
class TruncatedChroma {
  public:
    using Constants = TruncatedChromaConstants;
    static constexpr int shift = dropped;

    ZEL_INLINE explicit TruncatedChroma(const Constants& k) : a_(splatWord(k.a)), b_(splatWord(k.b)), c_(splatWord(k.c)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    template <Parity parity>
    ZEL_INLINE UWords at(Triple t) const {
        const auto product = [](Bytes x, Words k) { return mulHigh((Words)(times256<parity>(x) >> 1), k); };
        return (UWords)(product(t.a, a_) + product(t.b, b_) + product(t.c, c_) + splatWord((128 << shift) + (1 << (shift - 1))));
    }

  private:
    Words a_, b_, c_;
};

// Chroma as a difference from one of the two outer channels, with a floor or a rounding for each product, before the final shift:
//   bias + own * ko - (other * kt + green * kg)
// The constants are magnitudes: the negated product of a floor is not the floor of the negated product.
struct DifferenceConstants {
    int16_t own, other, green, bias;
};

struct Floored {
    ZEL_INLINE static Words product(Words x, Words k) { return mulHigh(x, k); }
};
struct Rounded {
    ZEL_INLINE static Words product(Words x, Words k) { return mulRound(x, k); }
};

template <class Product>
class Difference {
  public:
    ZEL_INLINE explicit Difference(const DifferenceConstants& k)
        : own_(splatWord(k.own)), other_(splatWord(k.other)), green_(splatWord(k.green)), bias_(splatWord(k.bias)) {}

    ZEL_INLINE UWords operator()(Words own, Words other, Words green) const {
        return (UWords)(bias_ + Product::product(own, own_) -
                        (Product::product(other, other_) + Product::product(green, green_)));
    }

  private:
    Words own_, other_, green_, bias_;
};

// Exact sums in 32 bits: (a ka + b kb + c kc + bias) >> shift. A coefficient of b that does not fit 16 bits is given in two
// parts.
struct ExactConstants {
    int16_t a, b, c, b2;
    int32_t bias, oddBias;  // for the even and the odd of a pair of pixels; a site has the first alone
};

constexpr ExactConstants exact(int a, int b, int c, int32_t bias, int32_t oddBias) {
    const int half = b / 2;
    return {int16_t(a), int16_t(b - half), int16_t(c), int16_t(half), bias, oddBias};
}
constexpr ExactConstants exact(int a, int b, int c, int32_t bias) { return exact(a, b, c, bias, bias); }

// Channels as pairs of words, ready for the multiply-add.
struct ChannelPairs {
    Words abLow, abHigh, cbLow, cbHigh;

    ZEL_INLINE ChannelPairs(Words a, Words b, Words c)
        : abLow(interleaveLow(a, b)), abHigh(interleaveHigh(a, b)), cbLow(interleaveLow(c, b)), cbHigh(interleaveHigh(c, b)) {}
};

class ExactSum {
  public:
    ZEL_INLINE explicit ExactSum(const ExactConstants& k)
        : ab_(splatWords(k.a, k.b)), cb_(splatWords(k.c, k.b2)), bias_(splatDwords(k.bias, k.oddBias)) {}

    template <int shift>
    ZEL_INLINE Dwords at(Words ab, Words cb) const {
        return (mulAddPairs(ab, ab_) + mulAddPairs(cb, cb_) + bias_) >> shift;
    }
    template <int shift>
    ZEL_INLINE Words at(const ChannelPairs& p) const {
        return packWords(at<shift>(p.abLow, p.cbLow), at<shift>(p.abHigh, p.cbHigh));
    }

  private:
    Words ab_, cb_;
    Dwords bias_;
};

// The exact sum of each pixel.
template <int shift>
class ExactPixelsAt {
  public:
    using Constants = ExactConstants;

    ZEL_INLINE explicit ExactPixelsAt(const ExactConstants& k) : sum_(k) {}

    ZEL_INLINE Bytes operator()(Triple t) const {
        const ChannelPairs low(lowBytes(t.a), lowBytes(t.b), lowBytes(t.c)), high(highBytes(t.a), highBytes(t.b), highBytes(t.c));
        return packBytes(sum_.at<shift>(low), sum_.at<shift>(high));
    }

  private:
    ExactSum sum_;
};
using ExactPixels = ExactPixelsAt<16>;

}  // namespace zel::ZEL_LEVEL
