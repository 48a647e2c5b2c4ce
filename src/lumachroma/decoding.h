// Studio-range YCbCr (ITU-R BT.601) to RGB: the arithmetic of one pixel and of one chroma site.
//
//   R = 1.164 (Y - 16) + 1.596 (Cr - 128)
//   G = 1.164 (Y - 16) - 0.813 (Cr - 128) - 0.392 (Cb - 128)
//   B = 1.164 (Y - 16) + 2.017 (Cb - 128)
//
// Channels are named a, b, c by their place in the destination pixel, b being green. The chroma sample that drives a is called p,
// the one that drives c is q: Cr and Cb for RGB, Cb and Cr for BGR. So channel orders and chroma orders are a matter of the
// constants and of where a layout takes p and q from.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// The word rules, with h(x, k) = floor(128 x k / 65536):
//   a = sat8((h(Y - lumaBias, ky) + h(p - chromaBias, pa) + offsetA) >> shift)
//   b = sat8((h(Y - lumaBias, ky) + h(p - chromaBias, pb) + h(q - chromaBias, qb) + offsetB) >> shift)
//   c = sat8((h(Y - lumaBias, ky) + h(q - chromaBias, qc) + offsetC) >> shift)
// Green either adds the products of negative coefficients or subtracts the products of their magnitudes. The floors make these
// two different results, so it is a property of the rule.
enum class Green : int8_t { adds = 0, subtracts = -1 };

struct WordDecodeConstants {
    int16_t lumaBias, chromaBias;
    int16_t ky, pa, pb, qb, qc;
    int16_t offsetA, offsetB, offsetC;
    Green green;
    int8_t shift;
};

// What a chroma site adds to the luma term of its pixels.
struct ChromaTerms {
    Words a, b, c;
};

class WordDecode {
  public:
    using Constants = WordDecodeConstants;

    ZEL_INLINE explicit WordDecode(const Constants& k)
        : lumaBias_(splatWord(k.lumaBias * 64)),
          chromaBias_(splatWord(k.chromaBias * 128)),
          ky_(splatWord(2 * k.ky)),
          pa_(splatWord(k.pa)),
          pb_(splatWord(k.pb)),
          qb_(splatWord(k.qb)),
          qc_(splatWord(k.qc)),
          offsetA_(splatWord(k.offsetA)),
          offsetB_(splatWord(k.offsetB - int(k.green))),
          offsetC_(splatWord(k.offsetC)),
          green_(splatWord(int(k.green))),
          scale_(splatWord(1 << (16 - k.shift))) {}

    // Chroma samples as words.
    ZEL_INLINE ChromaTerms chroma(Words p, Words q) const {
        const Words u = (p << 7) - chromaBias_, v = (q << 7) - chromaBias_;
        // -x is the complement of x plus 1, and the 1 is in the offset.
        const Words green = (mulHigh(u, pb_) + mulHigh(v, qb_)) ^ green_;
        return {mulHigh(u, pa_) + offsetA_, green + offsetB_, mulHigh(v, qc_) + offsetC_};
    }

    // The bytes of two pixels for each chroma site: the even pixels in the low half of a lane, the odd ones in the high half.
    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& even, const ChromaTerms& odd) const {
        const Words y0 = lumaTerm(luma, 64), y1 = lumaTerm(luma, 64 << 8);
        return {packBytes(scaled(y0 + even.a), scaled(y1 + odd.a)), packBytes(scaled(y0 + even.b), scaled(y1 + odd.b)),
                packBytes(scaled(y0 + even.c), scaled(y1 + odd.c))};
    }

    ZEL_INLINE Triple pixels(Bytes luma, const ChromaTerms& pair) const { return pixels(luma, pair, pair); }

    // A chroma sample for each pixel.
    ZEL_INLINE Triple pixels(Bytes luma, Bytes p, Bytes q) const {
        return pixels(luma, chroma(evenBytes(p), evenBytes(q)), chroma(oddBytes(p), oddBytes(q)));
    }

    static constexpr Order order = Order::split;

  private:
    // 64 Y times twice the coefficient is 128 Y times the coefficient, and picks the parity on the way.
    ZEL_INLINE Words lumaTerm(Bytes luma, int weight) const {
        return mulHigh(mulAddPairs(luma, (Bytes)splatWord(weight)) - lumaBias_, ky_);
    }
    // A floored shift that may differ from call to call, as one multiply.
    ZEL_INLINE Words scaled(Words x) const { return mulHigh(x, scale_); }

    Words lumaBias_, chromaBias_, ky_, pa_, pb_, qb_, qc_, offsetA_, offsetB_, offsetC_, green_, scale_;
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

    ZEL_INLINE explicit ExactDecode(const Constants& k)
        : yp_{splatWords(lowWord(k.ky), lowWord(k.pa)), splatWords(lowWord(k.ky), lowWord(k.pb))},
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

    Words yp_[2], yq_[2], ky_, pa_, pb_, qb_, qc_;
    Dwords biasA_, biasB_, biasC_;
};

// The coefficients of each rule. Set A and set B are two roundings of one matrix.
namespace bt601 {

struct DecodeMatrix {
    int32_t y, crToR, crToG, cbToG, cbToB;
};

constexpr DecodeMatrix exactA{76284, 104595, -53281, -25690, 132186}, exactB{76282, 104593, -53279, -25689, 132184};
constexpr DecodeMatrix wordA{9536, 13074, 6660, 3203, 16523}, wordB{9535, 13074, 6660, 3211, 16523};

enum class Channels { rgb, bgr };

constexpr WordDecodeConstants word(const DecodeMatrix& m, Channels channels, Green green, int16_t rounding) {
    const int sign = green == Green::adds ? -1 : 1;
    const int16_t crToG = int16_t(sign * m.crToG), cbToG = int16_t(sign * m.cbToG), crToR = int16_t(m.crToR),
                  cbToB = int16_t(m.cbToB);
    const bool rgb = channels == Channels::rgb;
    return {16,
            128,
            int16_t(m.y),
            rgb ? crToR : cbToB,
            rgb ? crToG : cbToG,
            rgb ? cbToG : crToG,
            rgb ? cbToB : crToR,
            rounding,
            rounding,
            rounding,
            green,
            4};
}

constexpr ExactDecodeConstants exact(const DecodeMatrix& m, Channels channels, int32_t rounding) {
    const int32_t luma = rounding - 16 * m.y;
    const int32_t red = luma - 128 * m.crToR, green = luma - 128 * (m.crToG + m.cbToG), blue = luma - 128 * m.cbToB;
    if (channels == Channels::rgb) return {m.y, m.crToR, m.crToG, m.cbToG, m.cbToB, red, green, blue};
    return {m.y, m.cbToB, m.cbToG, m.crToG, m.crToR, blue, green, red};
}

}  // namespace bt601

}  // namespace zel::ZEL_LEVEL
