// RGB to and from YCbCr at full resolution: every pixel has its own chroma. Block and tail of a row follow different rules where
// the table says so: a colour may then convert differently at two places of one row. Meant: with one rule for both, the
// ends of rows would change.
#include "frame/layouts.h"
#include "lumachroma/kernels/decode_pixels.h"
#include "lumachroma/layouts.h"
#include "lumachroma/rules/encoding.h"
#include "simd/samples.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// Encoder rules: a pixel's a, b, c to Y, Cb, Cr.
template <class Luma, class Chroma>
struct Encode {
    struct Constants {
        typename Luma::Constants luma;
        typename Chroma::Constants cb, cr;
    };
    static constexpr Order order = Order::natural;

    Luma luma;
    Chroma cb, cr;

    ZEL_INLINE explicit Encode(const Constants& k) : luma(k.luma), cb(k.cb), cr(k.cr) {}
    ZEL_INLINE Triple operator()(Triple t) const { return {luma(t), cb(t), cr(t)}; }
};

using EncodeWord = Encode<TruncatedLuma<8>, TruncatedChroma<7>>;
using EncodeExact = Encode<ExactPixels, ExactPixels>;

// Packed pixels by rules in words, of channels that their layout lifts in its own way.
template <class From, class Rule, class To>
struct EncodeLiftedPixels : FewOperations {
    using Constants = typename Rule::Constants;
    static constexpr int sites = blockPixels;

    Rule rule;

    ZEL_INLINE explicit EncodeLiftedPixels(const Constants& k) : rule(k) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Lifted x = From::load(row.in[0] + block * blockPixels * From::bytes);
        const auto sample = [&]<class Sum>(const Sum& sum)
                                ZEL_INLINE_LAMBDA { return joinedInOrder<Sum::shift, From>(sum.of(x.first), sum.of(x.second)); };
        To::template store<Order::natural>(row, 0, block, {sample(rule.luma), sample(rule.cb), sample(rule.cr)});
    }
};

// RGB alone: Cb is a difference from channel c, Cr one from channel a. Only 2 of the 32 that would round are added before the
// shift, so this rule is one below the exact one for nearly half of all colours. Meant: rounded,
// those would change.
struct EncodeRounded {
    struct Constants {
        RoundedLumaConstants luma;
        DifferenceConstants cb, cr;
    };
    static constexpr Order order = Order::natural;

    template <Outer own>
    struct Chroma {
        static constexpr int shift = 6;
        Difference<Rounds> difference;

        using Products = Rounds;

        ZEL_INLINE UWords of(const LiftedHalf& x) const {
            const Words a = (Words)x.a, b = (Words)x.b, c = (Words)x.c;
            return own == Outer::a ? difference(a, c, b) : difference(c, a, b);
        }
    };

    RoundedLuma luma;
    Chroma<Outer::c> cb;
    Chroma<Outer::a> cr;

    ZEL_INLINE explicit EncodeRounded(const Constants& k)
        : luma(k.luma), cb{Difference<Rounds>(k.cb)}, cr{Difference<Rounds>(k.cr)} {}
    ZEL_INLINE Triple operator()(Triple t) const { return {luma(t), perPixel(cb, t), perPixel(cr, t)}; }
};

// Four bytes a pixel to four bytes a pixel by the exact rules, without taking the channels apart. The fourth byte stays.
class EncodeExactAlpha {
  public:
    using Constants = EncodeExact::Constants;
    static constexpr int sites = vectorBytes / 4;

    ZEL_INLINE explicit EncodeExactAlpha(const Constants& k) : luma_(k.luma), cb_(k.cb), cr_(k.cr) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Bytes pixels = loadBytes(row.in[0] + block * vectorBytes);
        const Words ac = evenBytes(pixels), b = oddBytes(pixels) & splatWords(0xff, 0), bb = (Words)((Dwords)b | (Dwords)b << 16);
        // Each sum has its byte in bits 16 to 23.
        const Dwords y = luma_(ac, bb) >> 16, cb = cb_(ac, bb) >> 8 & splatDword(0xff00), cr = cr_(ac, bb) & splatDword(0xff0000);
        storeThreeOfFour<1>(row.out[0] + block * vectorBytes, (Bytes)(y | cb | cr));
    }

  private:
    struct Sum {
        Words ac, bb;
        Dwords bias;

        ZEL_INLINE explicit Sum(const ExactConstants& k)
            : ac(splatWords(k.a, k.c)), bb(splatWords(k.b, k.b2)), bias(splatDword(k.bias)) {}
        ZEL_INLINE Dwords operator()(Words acPairs, Words bPairs) const {
            return mulAddPairs(acPairs, ac) + mulAddPairs(bPairs, bb) + bias;
        }
    };

    Sum luma_, cb_, cr_;
};

alignas(16) constexpr uint8_t lumaWithSecond[16] = {0, 128, 1, 128, 4, 128, 5, 128, 8, 128, 9, 128, 12, 128, 13, 128};
alignas(16) constexpr uint8_t colourOrder[16] = {0, 8, 4, 128, 1, 9, 5, 128, 2, 10, 6, 128, 3, 11, 7, 128};

// Y, q, p, alpha to a, b, c, alpha.
class DecodeExactAlpha {
  public:
    using Constants = ExactDecodeConstants;
    static constexpr int sites = vectorBytes / 4;

    ZEL_INLINE explicit DecodeExactAlpha(const Constants& k)
        : yToA_(k.ky, k.pa),
          yToB_(k.ky, k.pb),
          qToB_(0, k.qb),
          yToC_(k.ky, k.qc),
          biasA_(splatDword(k.biasA)),
          biasB_(splatDword(k.biasB)),
          biasC_(splatDword(k.biasC)) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Bytes pixels = loadBytes(row.in[0] + block * vectorBytes);
        const Words yp = evenBytes(pixels), yq = (Words)shuffle(pixels, everyLane(lumaWithSecond));
        const Dwords a = ((yToA_.low(yp) + biasA_) >> 16) + yToA_.high(yp);
        const Dwords b = ((yToB_.low(yp) + qToB_.low(yq) + biasB_) >> 16) + yToB_.high(yp) + qToB_.high(yq);
        const Dwords c = ((yToC_.low(yq) + biasC_) >> 16) + yToC_.high(yq);
        storeThreeOfFour<1>(row.out[0] + block * vectorBytes,
                            shuffle(packBytes(packWords(a, c), packWords(b, b)), everyLane(colourOrder)));
    }

  private:
    // A pair of products with the coefficients' low words and with their high words, which are whole after the shift.
    struct Products {
        Words lows, highs;

        ZEL_INLINE Products(int32_t even, int32_t odd)
            : lows(splatWords(lowWord(even), lowWord(odd))), highs(splatWords(highWord(even), highWord(odd))) {}
        ZEL_INLINE Dwords low(Words x) const { return mulAddPairs(x, lows); }
        ZEL_INLINE Dwords high(Words x) const { return mulAddPairs(x, highs); }
    };

    Products yToA_, yToB_, qToB_, yToC_;
    Dwords biasA_, biasB_, biasC_;
};

constexpr EncodeWord::Constants rgbWord{truncatedLuma(bt601::encode, Outer::a, 128 + 16 * 256), truncatedChroma(bt601::encode.cb),
                                        truncatedChroma(bt601::encode.cr)};
constexpr EncodeRounded::Constants rgbRounded{roundedLuma(bt601::encodeRounded, Outer::a, 16 * 64 + 2),
                                              fromBlue(bt601::encodeRounded, 128 * 64 + 2),
                                              fromRed(bt601::encodeRounded, 128 * 64 + 2)};
constexpr EncodeExact::Constants rgbExact{exactSum(bt601::encode.y, Outer::a, 0x108000),
                                          exactSum(bt601::encode.cb, Outer::a, 0x808000),
                                          exactSum(bt601::encode.cr, Outer::a, 0x808000)};

constexpr BiasedConstants wordRgbA = biasedConstants(bt601::wordA, ChannelOrder::rgb, Green::adds, 8);
constexpr BiasedConstants wordRgbATruncated = biasedConstants(bt601::wordA, ChannelOrder::rgb, Green::adds, 0);
constexpr BiasedConstants wordRgbB = biasedConstants(bt601::wordB, ChannelOrder::rgb, Green::adds, 8);
constexpr BiasedConstants wordBgrB = biasedConstants(bt601::wordB, ChannelOrder::bgr, Green::adds, 8);
constexpr BiasedConstants wordBgr709 = biasedConstants(bt709::word, ChannelOrder::bgr, Green::adds, 8);
constexpr BiasedConstants wordRgbBSubtracted = biasedConstants(bt601::wordB, ChannelOrder::rgb, Green::subtracts, 8);
constexpr BiasedConstants wordBgrBSubtracted = biasedConstants(bt601::wordB, ChannelOrder::bgr, Green::subtracts, 8);
constexpr BiasedConstants wordBgr709Subtracted = biasedConstants(bt709::word, ChannelOrder::bgr, Green::subtracts, 8);
constexpr ExactDecodeConstants exactRgbA = exactConstants(bt601::exactA, ChannelOrder::rgb, 0);
constexpr ExactDecodeConstants exactRgbARounded = exactConstants(bt601::exactA, ChannelOrder::rgb, 32768);
constexpr ExactDecodeConstants exactRgbB = exactConstants(bt601::exactB, ChannelOrder::rgb, 0);
constexpr ExactDecodeConstants exactRgbBRounded = exactConstants(bt601::exactB, ChannelOrder::rgb, 32768);

constexpr Layout planesCrossed =
    layoutOf({{0, 1}, {2, 1}, {1, 1}});  // the chroma that drives red before the one that drives blue

constexpr Conversion conversion(Layout from, Layout to, Kernel block, Kernel tail = {}, int (*blockColumns)(int) = nullptr) {
    return {.site = {1, 1}, .from = from, .to = to, .block = block, .tail = tail, .blockColumns = blockColumns};
}

constexpr Conversion keepingAlpha(Kernel rule) {
    Conversion c = conversion(packed4, packed4, rule);
    c.keepsAlpha = true;
    return c;
}

template <class From>
constexpr Kernel encodeWord = kernel<EncodeLiftedPixels<From, EncodeWord, ToPlanes>>(rgbWord);
template <class From, class To>
constexpr Kernel encodeExact = kernel<PixelKernel<From, EncodeExact, To>>(rgbExact);
template <class To, Green green, const BiasedConstants& constants>
constexpr Kernel decodeWord = kernel<PixelKernel<FromPlanes, Decode<BiasedDecode<green, 4>>, To>>(constants);
template <class To, const ExactDecodeConstants& constants>
constexpr Kernel decodeExact = kernel<PixelKernel<FromPlanes, Decode<ExactDecode>, To>>(constants);

}  // namespace

namespace rows {

constexpr Conversion zeliRGBToYCbCr_8u_C3R =
    conversion(packed3, packed3, kernel<PixelKernel<From3, EncodeRounded, ToPacked3>>(rgbRounded), encodeExact<From3, ToPacked3>,
               wholeBlocks<16>);
constexpr Conversion zeliRGBToYCbCr_8u_AC4R = keepingAlpha(kernel<EncodeExactAlpha>(rgbExact));
constexpr Conversion zeliRGBToYCbCr_8u_AC4P3R =
    conversion(packed4, planes3, encodeWord<LiftedFour>, encodeExact<From4, ToPlanes>, wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr_8u_C3P3R =
    conversion(packed3, planes3, encodeWord<LiftedThree>, encodeExact<From3, ToPlanes>, wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr_8u_P3R =
    conversion(planes3, planes3, kernel<PixelKernel<FromPlanes, EncodeWord, ToPlanes>>(rgbWord),
               encodeExact<FromPlanes, ToPlanes>, wholeBlocks<8>);

constexpr Conversion zeliYCbCrToRGB_8u_C3R =
    conversion(packed3, packed3, kernel<PixelKernel<From3, DecodeCrossed<BiasedDecode<Green::adds, 4>>, ToPacked3>>(wordRgbA),
               kernel<PixelKernel<From3, DecodeCrossed<ExactDecode>, ToPacked3>>(exactRgbA), wholeBlocks<4>);
constexpr Conversion zeliYCbCrToRGB_8u_AC4R = keepingAlpha(kernel<DecodeExactAlpha>(exactRgbA));
constexpr Conversion zeliYCbCrToRGB_8u_P3R =
    conversion(planesCrossed, planes3, decodeWord<ToPlanes, Green::adds, wordRgbATruncated>,
               decodeExact<ToPlanes, exactRgbARounded>, wholeBlocks<4>);
constexpr Conversion zeliYCbCrToRGB_8u_P3C3R = conversion(planesCrossed, packed3, decodeWord<ToPacked3, Green::adds, wordRgbB>,
                                                          decodeExact<ToPacked3, exactRgbB>, wholeBlocks<8>);
constexpr auto zeliYCbCrToRGB_8u_P3C4R =
    withAlpha(conversion(planesCrossed, packed4, decodeWord<ToPacked4, Green::subtracts, wordRgbBSubtracted>,
                         decodeExact<ToPacked4, exactRgbBRounded>, wholeBlocks<8>));
constexpr Conversion zeliYCbCrToBGR_8u_P3C3R = conversion(planes3, packed3, decodeWord<ToPacked3, Green::adds, wordBgrB>);
constexpr auto zeliYCbCrToBGR_8u_P3C4R =
    withAlpha(conversion(planes3, packed4, decodeWord<ToPacked4, Green::subtracts, wordBgrBSubtracted>));
constexpr Conversion zeliYCbCrToBGR_709CSC_8u_P3C3R =
    conversion(planes3, packed3, decodeWord<ToPacked3, Green::adds, wordBgr709>);
constexpr auto zeliYCbCrToBGR_709CSC_8u_P3C4R =
    withAlpha(conversion(planes3, packed4, decodeWord<ToPacked4, Green::subtracts, wordBgr709Subtracted>));

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_full ~, 1
#define ZEL_GROUP full
#include "frame/table.h"
