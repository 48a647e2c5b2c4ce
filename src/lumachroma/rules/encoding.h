// RGB to YCbCr: the arithmetic of one pixel and of one chroma site.
//
//   BT.601, studio range           BT.709, studio range           BT.709, full range
//   Y   0.257  0.504  0.098   16    0.183  0.614  0.062   16       0.213  0.715  0.072    0
//   Cb -0.148 -0.291  0.439  128   -0.101 -0.338  0.439  128      -0.117 -0.394  0.511  128
//   Cr  0.439 -0.368 -0.071  128    0.439 -0.399 -0.040  128       0.511 -0.464 -0.047  128
//
// are the weights of R, G, B and the offsets. Chroma of the full-range matrix is wider than a byte and is limited.
//
// Each output has several fixed-point rules, whose results differ by one on some colours on purpose: high multiplies of 16-bit
// words, truncated or rounded, with each product floored by itself, and exact 32-bit sums. Channels are named a, b, c by their
// place in the pixel: a and c are red and blue in the order of the layout, b is green.
#pragma once

#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

// The weights of the channels in each sample, in the fixed point of the rules that use them. They are not roundings of one
// another.
struct SampleWeights {
    int r, g, b;
};
struct EncodeMatrix {
    SampleWeights y, cb, cr;
};

namespace bt601 {
// At scale 65536; with luma at 32768, for high multiplies; and at 16384, for rounding ones.
inline constexpr EncodeMatrix encode{{16843, 33030, 6423}, {-9699, -19071, 28770}, {28770, -24117, -4653}};
inline constexpr EncodeMatrix encodeWord{{8422, 16515, 3212}, encode.cb, encode.cr};
inline constexpr EncodeMatrix encodeRounded{{4211, 8258, 1606}, {-2425, -4768, 7193}, {7193, -6029, -1163}};
}  // namespace bt601

namespace bt709 {
inline constexpr EncodeMatrix encode{{11993, 40239, 4063}, {-6619, -22151, 28770}, {28770, -26149, -2621}};
inline constexpr EncodeMatrix encodeWord{{5997, 20120, 2032}, encode.cb, encode.cr};
}  // namespace bt709

namespace bt709Full {
// For high multiplies chroma is at scale 32768 too.
inline constexpr EncodeMatrix encode{{13959, 46858, 4719}, {-7668, -25821, 33489}, {33489, -30409, -3080}};
inline constexpr EncodeMatrix encodeWord{{6980, 23429, 2359}, {-3834, -12911, 16744}, {16744, -15204, -1540}};
}  // namespace bt709Full

// The outer channels by their place in the pixel.
enum class Outer { a, c };

// What a rule gives of channels that are lifted for its products.
template <class Rule>
ZEL_INLINE LiftedBytes ofLifted(const Rule& rule, Triple t) {
    using Products = typename Rule::Products;
    const LiftedBytes a = Products::lift(t.a), b = Products::lift(t.b), c = Products::lift(t.c);
    return {rule.of({a.first, b.first, c.first}), rule.of({a.second, b.second, c.second})};
}

// A byte per pixel of a rule that gives words below 2^(8 + shift).
template <class Rule>
ZEL_INLINE Bytes perPixel(const Rule& rule, Triple t) {
    const LiftedBytes words = ofLifted(rule, t);
    return joined<Rule::shift>(words.first, words.second);
}

// Y = (floor(a ka / 256) + floor(b kb / 256) + floor(c kc / 256) + bias) >> shift
struct TruncatedLumaConstants {
    uint16_t a, b, c, bias;
};

constexpr TruncatedLumaConstants truncatedLuma(const EncodeMatrix& m, Outer red, int bias) {
    const int a = red == Outer::a ? m.y.r : m.y.b, c = red == Outer::a ? m.y.b : m.y.r;
    return {uint16_t(a), uint16_t(m.y.g), uint16_t(c), uint16_t(bias)};
}

template <int dropped>
class TruncatedLuma {
  public:
    using Constants = TruncatedLumaConstants;
    static constexpr int shift = dropped;
    using Products = Floors<8 + shift>;

    ZEL_INLINE explicit TruncatedLuma(const Constants& k)
        : a_((UWords)splatWord(k.a)), b_((UWords)splatWord(k.b)), c_((UWords)splatWord(k.c)), bias_((UWords)splatWord(k.bias)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    // Of lifted samples.
    static constexpr int bits = 8;
    ZEL_INLINE UWords of(const LiftedHalf& x) const {
        return Products::product(x.a, a_) + Products::product(x.b, b_) + Products::product(x.c, c_) + bias_;
    }
    ZEL_INLINE Words words(const LiftedHalf& x) const { return (Words)(of(x) >> shift); }

  private:
    UWords a_, b_, c_, bias_;
};

// Y = (round(a ka / 256) + round(b kb / 256) + round(c kc / 256) + bias) >> 6
struct RoundedLumaConstants {
    int16_t a, b, c, bias;
};

constexpr RoundedLumaConstants roundedLuma(const EncodeMatrix& m, Outer red, int bias) {
    const int a = red == Outer::a ? m.y.r : m.y.b, c = red == Outer::a ? m.y.b : m.y.r;
    return {int16_t(a), int16_t(m.y.g), int16_t(c), int16_t(bias)};
}

class RoundedLuma {
  public:
    using Constants = RoundedLumaConstants;
    static constexpr int shift = 6;
    using Products = Rounds;

    ZEL_INLINE explicit RoundedLuma(const Constants& k)
        : a_(Products::weight(k.a)), b_(Products::weight(k.b)), c_(Products::weight(k.c)), bias_(splatWord(k.bias)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    // Of lifted samples.
    static constexpr int bits = 6;
    ZEL_INLINE UWords of(const LiftedHalf& x) const { return (UWords)sum(x); }
    ZEL_INLINE Words words(const LiftedHalf& x) const { return sum(x) >> shift; }

  private:
    ZEL_INLINE Words sum(const LiftedHalf& x) const {
        return Products::product((Words)x.a, a_) + Products::product((Words)x.b, b_) + Products::product((Words)x.c, c_) + bias_;
    }

    Words a_, b_, c_, bias_;
};

// Chroma of single pixels: (floor(a ka / 512) + floor(b kb / 512) + floor(c kc / 512) + half) >> shift, with signed coefficients,
// so that a negative product is floored, not truncated. The half comes with the 128 of chroma.
struct TruncatedChromaConstants {
    int16_t a, b, c;
};

constexpr TruncatedChromaConstants truncatedChroma(const SampleWeights& w) { return {int16_t(w.r), int16_t(w.g), int16_t(w.b)}; }

template <int dropped>
class TruncatedChroma {
  public:
    using Constants = TruncatedChromaConstants;
    static constexpr int shift = dropped;
    using Products = Floors<16>;

    ZEL_INLINE explicit TruncatedChroma(const Constants& k) : a_(splatWord(k.a)), b_(splatWord(k.b)), c_(splatWord(k.c)) {}

    ZEL_INLINE Bytes operator()(Triple t) const { return perPixel(*this, t); }

    ZEL_INLINE UWords of(const LiftedHalf& x) const {
        // The signed product of half as much.
        const auto product = [](UWords lifted, Words k) { return mulTop((Words)(lifted >> 1), k); };
        return (UWords)(product(x.a, a_) + product(x.b, b_) + product(x.c, c_) + splatWord((128 << shift) + (1 << (shift - 1))));
    }

  private:
    Words a_, b_, c_;
};

// Chroma as a difference from one of the two outer channels, with a floor or a rounding for each product, before the final shift:
//   bias + own * ko - (other * kt + green * kg)
// of channels that are 32 times the samples for a product that drops 16 bits, or 15 rounding.
// The constants are magnitudes: the negated product of a floor is not the floor of the negated product.
struct DifferenceConstants {
    int16_t own, other, green, bias;
};

constexpr DifferenceConstants fromBlue(const EncodeMatrix& m, int bias) {
    return {int16_t(m.cb.b), int16_t(-m.cb.r), int16_t(-m.cb.g), int16_t(bias)};
}
constexpr DifferenceConstants fromRed(const EncodeMatrix& m, int bias) {
    return {int16_t(m.cr.r), int16_t(-m.cr.b), int16_t(-m.cr.g), int16_t(bias)};
}

struct Floored {
    static constexpr int lift = liftOf(5);
    ZEL_INLINE static Words weight(int k) { return splatWord(k); }
    ZEL_INLINE static Words product(Words x, Words k) { return mulTop(x, k); }
};
struct Rounded {
    static constexpr int lift = 5;
    ZEL_INLINE static Words weight(int k) { return splatWord(k); }
    ZEL_INLINE static Words product(Words x, Words k) { return mulRound(x, k); }
};

template <class Product>
class Difference {
  public:
    ZEL_INLINE explicit Difference(const DifferenceConstants& k)
        : own_(Product::weight(k.own)),
          other_(Product::weight(k.other)),
          green_(Product::weight(k.green)),
          bias_(splatWord(k.bias)) {}

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

constexpr ExactConstants exactSum(const SampleWeights& w, Outer red, int32_t bias, int32_t oddBias) {
    const int half = w.g / 2, a = red == Outer::a ? w.r : w.b, c = red == Outer::a ? w.b : w.r;
    return {int16_t(a), int16_t(w.g - half), int16_t(c), int16_t(half), bias, oddBias};
}
constexpr ExactConstants exactSum(const SampleWeights& w, Outer red, int32_t bias) { return exactSum(w, red, bias, bias); }

// Two channels as pairs of words, ready for the multiply-add.
struct ChannelPairs {
    Words low, high;

    ZEL_INLINE ChannelPairs(Words even, Words odd) : low(interleaveLow(even, odd)), high(interleaveHigh(even, odd)) {}
};

class ExactSum {
  public:
    ZEL_INLINE explicit ExactSum(const ExactConstants& k)
        : ab_(splatWords(k.a, k.b)), cb_(splatWords(k.c, k.b2)), bias_(splatDwords(k.bias, k.oddBias)) {}

    template <int shift>
    ZEL_INLINE Words at(const ChannelPairs& ab, const ChannelPairs& cb) const {
        const auto sums = [&](Words x, Words y) { return (mulAddPairs(x, ab_) + mulAddPairs(y, cb_) + bias_) >> shift; };
        return packWords(sums(ab.low, cb.low), sums(ab.high, cb.high));
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
        return packBytes(half(lowBytes(t.a), lowBytes(t.b), lowBytes(t.c)), half(highBytes(t.a), highBytes(t.b), highBytes(t.c)));
    }

  private:
    ZEL_INLINE Words half(Words a, Words b, Words c) const {
        return sum_.template at<shift>(ChannelPairs(a, b), ChannelPairs(c, b));
    }

    ExactSum sum_;
};
using ExactPixels = ExactPixelsAt<16>;

// (a ka + b kb + c kc + bias) >> 15, exactly, in words: every weight is 128 high + low, and what is multiplied is a channel less
// 128, which is its byte with the top bit inverted:
//   (sum of high (x - 128) + (sum of low (x - 128) >> 7) + offset) >> 8
struct ByteLumaConstants {
    struct Part {
        uint8_t a, b, c;
    } high, low;
    uint16_t offset;
};

constexpr ByteLumaConstants byteLuma(const SampleWeights& w, Outer red, int bias) {
    const int a = red == Outer::a ? w.r : w.b, b = w.g, c = red == Outer::a ? w.b : w.r;
    return {{uint8_t(a / 128), uint8_t(b / 128), uint8_t(c / 128)},
            {uint8_t(a % 128), uint8_t(b % 128), uint8_t(c % 128)},
            uint16_t(a + b + c + bias / 128)};
}

class ByteLuma {
  public:
    using Constants = ByteLumaConstants;

    ZEL_INLINE explicit ByteLuma(const Constants& k) : high_(k.high), low_(k.low), offset_((UWords)splatWord(k.offset)) {}

    ZEL_INLINE Bytes operator()(Triple t) const {
        const Bytes a = t.a ^ splatByte(0x80), b = t.b ^ splatByte(0x80), c = t.c ^ splatByte(0x80);
        return packBytes(half(interleaveLow(a, b), interleaveLow(c, c)), half(interleaveHigh(a, b), interleaveHigh(c, c)));
    }

  private:
    struct Sum {
        Bytes ab, c;

        ZEL_INLINE explicit Sum(const Constants::Part& k) : ab((Bytes)splatWord(k.a | k.b << 8)), c((Bytes)splatWord(k.c)) {}
        ZEL_INLINE Words operator()(Bytes abPairs, Bytes cPairs) const {
            return mulAddBytes(ab, abPairs) + mulAddBytes(c, cPairs);
        }
    };

    ZEL_INLINE Words half(Bytes ab, Bytes c) const {
        return (Words)(((UWords)(high_(ab, c) + (low_(ab, c) >> 7)) + offset_) >> 8);
    }

    Sum high_, low_;
    UWords offset_;
};

}  // namespace zel::ZEL_LEVEL
