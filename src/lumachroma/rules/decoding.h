// YCbCr to RGB: the arithmetic of one pixel and of one chroma site. With u = Cb - 128 and v = Cr - 128:
//
//   BT.601, studio range           BT.709, studio range           BT.709, full range
//   R = 1.164 (Y - 16) + 1.596 v   1.164 (Y - 16) + 1.793 v       Y + 1.540 v
//   G = 1.164 (Y - 16) - 0.813 v   1.164 (Y - 16) - 0.534 v       Y - 0.459 v
//                      - 0.392 u                  - 0.213 u         - 0.183 u
//   B = 1.164 (Y - 16) + 2.017 u   1.164 (Y - 16) + 2.115 u       Y + 1.816 u
//
// ChannelOrder are named a, b, c by their place in the destination pixel, b being green. The chroma sample that drives a is
// called p, the one that drives c is q: Cr and Cb for RGB, Cb and Cr for BGR. So channel orders and chroma orders are a matter of
// the constants and of where a layout takes p and q from.
#pragma once

#include "lumachroma/rules/chroma_order.h"
#include "simd/picked.h"
#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// The word rules, with h(x, k) = floor(128 x k / 65536). Green either adds the products of negative coefficients or subtracts
// those of their magnitudes. The floors make these two different results, so it is a property of the rule.
enum class Green { adds, subtracts };

// What a chroma site adds to the luma term of its pixels; for a green that subtracts, b is what it takes away.
struct ChromaTerms {
    Words a, b, c;
};

// 64 Y times twice the coefficient is 128 Y times the coefficient.
constexpr int lumaLift = liftOf(6);
template <Parity parity>
ZEL_INLINE Words liftedLuma(Bytes luma) {
    return parity == Parity::even ? evenTimes<lumaLift>(luma) : oddTimes<lumaLift>(luma);
}

// How sums lose their last bits: shifted, after any rounding was added, or rounded to the nearest by a multiply.
enum class Last { shifted, rounded };

template <Green green, int bits, Last last = Last::shifted>
ZEL_INLINE Triple combine(Words evenLuma, Words oddLuma, const ChromaTerms& even, const ChromaTerms& odd) {
    const auto greenOf = [](Words y, Words b) { return green == Green::adds ? y + b : y - b; };
    const auto bytes = [](Words even, Words odd) {
        return last == Last::shifted ? packShifted<bits>(even, odd) : packRounded<bits>(even, odd);
    };
    return {bytes(evenLuma + even.a, oddLuma + odd.a), bytes(greenOf(evenLuma, even.b), greenOf(oddLuma, odd.b)),
            bytes(evenLuma + even.c, oddLuma + odd.c)};
}

// With u = p - 128 and v = q - 128:
//   a = sat8((h(Y - 16, ky) + h(u, pa) + rounding) >> shift)
//   b = sat8((h(Y - 16, ky) + h(u, pb) + h(v, qb) + rounding) >> shift), or with the two products subtracted
//   c = sat8((h(Y - 16, ky) + h(v, qc) + rounding) >> shift)
struct BiasedConstants {
    int16_t ky, pa, pb, qb, qc, rounding;
};

// With Last::rounded the rounding must be the half.
template <Green green, int shift, Last last = Last::shifted>
class BiasedDecode {
  public:
    using Constants = BiasedConstants;
    static constexpr Order order = Order::split;

    ZEL_INLINE explicit BiasedDecode(const Constants& k, ChromaOrder order = ChromaOrder::pFirst)
        : ky_(splatWord(2 * k.ky)),
          pa_(splatWord(k.pa)),
          pb_(splatWord(k.pb)),
          qb_(splatWord(k.qb)),
          qc_(splatWord(k.qc)),
          rounding_(splatWord(k.rounding)),
          pPlaces_(order == ChromaOrder::pFirst),
          qPlaces_(order == ChromaOrder::qFirst) {}

    // Samples as words.
    ZEL_INLINE ChromaTerms chroma(Words p, Words q) const {
        return terms((p << lift) - splatWord(128 << lift), (q << lift) - splatWord(128 << lift));
    }
    // Interleaved bytes.
    ZEL_INLINE ChromaTerms chroma(Bytes pairs) const { return terms(pPlaces_.centred(pairs), qPlaces_.centred(pairs)); }

    // The bytes of two pixels for each site: the even pixels in the low half of a lane, the odd ones in the high half.
    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& even, const ChromaTerms& odd) const {
        return combine<green, shift, last>(lumaTerm<Parity::even>(luma), lumaTerm<Parity::odd>(luma), even, odd);
    }
    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& pair) const { return pixels(luma, pair, pair); }

    // Chroma samples for each pixel.
    ZEL_INLINE Triple pixels(Bytes luma, Bytes p, Bytes q) const {
        const Picked<lift> even(true), odd(false);
        return pixels(luma, terms(even.centred(p), even.centred(q)), terms(odd.centred(p), odd.centred(q)));
    }

  private:
    static constexpr int lift = liftOf(7);

    ZEL_INLINE ChromaTerms terms(Words u, Words v) const {
        return {mulTop(u, pa_), mulTop(u, pb_) + mulTop(v, qb_), mulTop(v, qc_)};
    }
    template <Parity parity>
    ZEL_INLINE Words lumaTerm(Bytes luma) const {
        const Words term = mulTop(liftedLuma<parity>(luma) - splatWord(16 << lumaLift), ky_);
        return last == Last::shifted ? term + rounding_ : term;
    }

    Words ky_, pa_, pb_, qb_, qc_, rounding_;
    Picked<lift> pPlaces_, qPlaces_;
};

// Raw samples are multiplied, and the biases of luma and chroma stand in the offsets:
//   a = sat8((h(Y, ky) + h(p, pa) - offsetA) >> shift)
//   b = sat8((h(Y, ky) - (h(p, pb) + h(q, qb) - offsetB)) >> shift)
//   c = sat8((h(Y, ky) + h(q, qc) - offsetC) >> shift)
struct FoldedConstants {
    int16_t ky, pa, pb, qb, qc;
    int16_t offsetA, offsetB, offsetC;
};

template <int shift>
class FoldedDecode {
  public:
    using Constants = FoldedConstants;
    static constexpr Order order = Order::split;

    ZEL_INLINE explicit FoldedDecode(const Constants& k, ChromaOrder order = ChromaOrder::pFirst)
        : ky_(splatWord(2 * k.ky)),
          pa_(splatWord(2 * k.pa)),
          pb_(splatWord(2 * k.pb)),
          qb_(splatWord(2 * k.qb)),
          qc_(splatWord(2 * k.qc)),
          offsetA_(splatWord(k.offsetA)),
          offsetB_(splatWord(k.offsetB)),
          offsetC_(splatWord(k.offsetC)),
          pPlaces_(order == ChromaOrder::pFirst),
          qPlaces_(order == ChromaOrder::qFirst) {}

    ZEL_INLINE ChromaTerms chroma(Words p, Words q) const { return terms(p << lift, q << lift); }
    ZEL_INLINE ChromaTerms chroma(Bytes pairs) const { return terms(pPlaces_.of(pairs), qPlaces_.of(pairs)); }

    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& pair) const {
        const auto term = [&](Words lifted) { return mulTop(lifted, ky_); };
        return combine<Green::subtracts, shift>(term(liftedLuma<Parity::even>(luma)), term(liftedLuma<Parity::odd>(luma)), pair,
                                                pair);
    }

  private:
    static constexpr int lift = liftOf(6);

    ZEL_INLINE ChromaTerms terms(Words p, Words q) const {
        return {mulTop(p, pa_) - offsetA_, mulTop(p, pb_) + mulTop(q, qb_) - offsetB_, mulTop(q, qc_) - offsetC_};
    }

    Words ky_, pa_, pb_, qb_, qc_, offsetA_, offsetB_, offsetC_;
    Picked<lift> pPlaces_, qPlaces_;
};

// The exact rule, at scale 65536:
//   a = sat8((Y ky + p pa + biasA) >> 16), b = sat8((Y ky + p pb + q qb + biasB) >> 16), c = sat8((Y ky + q qc + biasC) >> 16)
// The multiply-add takes 16-bit coefficients, so each is split into a signed low word and a high word; the products of the high
// words are whole and are added after the shift.
struct ExactDecodeConstants {
    int32_t ky, pa, pb, qb, qc;
    int32_t biasA, biasB, biasC;
};

constexpr int lowWord(int32_t k) { return static_cast<int16_t>(k); }
constexpr int highWord(int32_t k) { return (k - lowWord(k)) >> 16; }

class ExactDecode {
  public:
    using Constants = ExactDecodeConstants;

    ZEL_INLINE explicit ExactDecode(const Constants& k, ChromaOrder order = ChromaOrder::pFirst)
        : pPlaces_(order == ChromaOrder::pFirst),
          qPlaces_(order == ChromaOrder::qFirst),
          yp_{splatWords(lowWord(k.ky), lowWord(k.pa)), splatWords(lowWord(k.ky), lowWord(k.pb))},
          yq_{splatWords(0, lowWord(k.qb)), splatWords(lowWord(k.ky), lowWord(k.qc))},
          ky_(splatWord(highWord(k.ky))),
          pa_(splatWord(highWord(k.pa))),
          pb_(splatWord(highWord(k.pb))),
          qb_(splatWord(highWord(k.qb))),
          qc_(splatWord(highWord(k.qc))),
          biasA_(splatDword(k.biasA)),
          biasB_(splatDword(k.biasB)),
          biasC_(splatDword(k.biasC)) {}

    // The chroma of a site's even or odd pixels.
    struct Chroma {
        Words p, q;
    };
    ZEL_INLINE Chroma chroma(Words p, Words q) const { return {p, q}; }
    ZEL_INLINE Chroma chroma(Bytes pairs) const { return {pPlaces_.of(pairs), qPlaces_.of(pairs)}; }
    ZEL_INLINE Triple pixels(Bytes luma, const Chroma& even, const Chroma& odd) const {
        return pixels(luma, (Bytes)(even.p | odd.p << 8), (Bytes)(even.q | odd.q << 8));
    }
    ZEL_INLINE Triple pixels(Bytes luma, const Chroma& pair) const { return pixels(luma, pair, pair); }

    // Luma and both chroma samples of each pixel.
    ZEL_INLINE Triple pixels(Bytes luma, Bytes p, Bytes q) const {
        const Half low = half(lowBytes(luma), lowBytes(p), lowBytes(q)), high = half(highBytes(luma), highBytes(p), highBytes(q));
        return {packBytes(low.a, high.a), packBytes(low.b, high.b), packBytes(low.c, high.c)};
    }

    static constexpr Order order = Order::natural;

  private:
    struct Half {
        Words a, b, c;
    };

    ZEL_INLINE Half half(Words y, Words p, Words q) const {
        const Words ypLow = interleaveLow(y, p), ypHigh = interleaveHigh(y, p), yqLow = interleaveLow(y, q),
                    yqHigh = interleaveHigh(y, q);
        const auto outer = [](Words low, Words high, Words k, Dwords bias) {
            return packWords((mulAddPairs(low, k) + bias) >> 16, (mulAddPairs(high, k) + bias) >> 16);
        };
        const auto green = [&](Words yp, Words yq) { return (mulAddPairs(yp, yp_[1]) + mulAddPairs(yq, yq_[0]) + biasB_) >> 16; };
        const Words whole = y * ky_;
        return {outer(ypLow, ypHigh, yp_[0], biasA_) + whole + p * pa_,
                packWords(green(ypLow, yqLow), green(ypHigh, yqHigh)) + whole + p * pb_ + q * qb_,
                outer(yqLow, yqHigh, yq_[1], biasC_) + whole + q * qc_};
    }

    Picked<0> pPlaces_, qPlaces_;
    Words yp_[2], yq_[2], ky_, pa_, pb_, qb_, qc_;
    Dwords biasA_, biasB_, biasC_;
};

// The coefficients of a rule, and the luma of black.
struct DecodeMatrix {
    int32_t y, crToR, crToG, cbToG, cbToB;
    int32_t black = 16;
};

// Exact ones are signed, at scale 65536; those of words are magnitudes, at scale 8192.
namespace bt601 {
// Set A and set B are two roundings of one matrix.
inline constexpr DecodeMatrix exactA{76284, 104595, -53281, -25690, 132186}, exactB{76282, 104593, -53279, -25689, 132184};
inline constexpr DecodeMatrix wordA{9536, 13074, 6660, 3203, 16523}, wordB{9535, 13074, 6660, 3211, 16523};
}  // namespace bt601

namespace bt709 {
inline constexpr DecodeMatrix exact{76284, 117506, -34996, -13959, 138609}, word{9535, 14688, 4375, 1745, 17326};
}  // namespace bt709

namespace bt709Full {
inline constexpr DecodeMatrix exact{65536, 100925, -30081, -11993, 119013, 0}, word{8192, 12616, 3760, 1499, 14877, 0};
}  // namespace bt709Full

enum class ChannelOrder { rgb, bgr };

// The rule takes 16 from luma. Where black is 0, the product with the scale of luma is whole, and the rounding gives it back.
constexpr BiasedConstants biasedConstants(const DecodeMatrix& m, ChannelOrder channels, Green green, int rounding) {
    const int sign = green == Green::adds ? -1 : 1;
    const int16_t y = int16_t(m.y), crToR = int16_t(m.crToR), cbToB = int16_t(m.cbToB);
    const int16_t crToG = int16_t(sign * m.crToG), cbToG = int16_t(sign * m.cbToG);
    const int16_t added = int16_t(rounding + (16 - m.black) * m.y / 512);
    if (channels == ChannelOrder::rgb) return {y, crToR, crToG, cbToG, cbToB, added};
    return {y, cbToB, cbToG, crToG, crToR, added};
}

struct FoldedOffsets {
    int16_t r, g, b;
};

constexpr FoldedConstants foldedConstants(const DecodeMatrix& m, FoldedOffsets offsets, ChannelOrder channels) {
    const bool rgb = channels == ChannelOrder::rgb;
    const BiasedConstants k = biasedConstants(m, channels, Green::subtracts, 0);
    return {k.ky, k.pa, k.pb, k.qb, k.qc, rgb ? offsets.r : offsets.b, offsets.g, rgb ? offsets.b : offsets.r};
}

constexpr ExactDecodeConstants exactConstants(const DecodeMatrix& m, ChannelOrder channels, int32_t rounding) {
    const int32_t luma = rounding - m.black * m.y;
    const int32_t red = luma - 128 * m.crToR, green = luma - 128 * (m.crToG + m.cbToG), blue = luma - 128 * m.cbToB;
    if (channels == ChannelOrder::rgb) return {m.y, m.crToR, m.crToG, m.cbToG, m.cbToB, red, green, blue};
    return {m.y, m.cbToB, m.cbToG, m.crToG, m.crToR, blue, green, red};
}

// Some packed 4:2:2 has biases of its own, in red, green and blue 57, 14 and 13 below those of the matrix.
constexpr ExactDecodeConstants exactPacked(ChannelOrder channels) {
    ExactDecodeConstants k = exactConstants(bt601::exactA, channels, 0);
    const bool rgb = channels == ChannelOrder::rgb;
    k.biasA -= rgb ? 57 : 13;
    k.biasB -= 14;
    k.biasC -= rgb ? 13 : 57;
    return k;
}

}  // namespace zel::ZEL_LEVEL
