// RGB to YCbCr with subsampled chroma. Luma is computed for each pixel. Chroma is computed once for each site, from the sums of
// the channels over its pixels: a box average, with the matrix last. A site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels
// (4:1:1).
#include "intensity/gamma_curve.h"
#include "lumachroma/encode_pairs.h"
#include "lumachroma/encoding.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// From the outer channels' differences; `firstFrom` names the channel whose difference comes first. `sumWeight` is that of the
// sums.
template <class Product, int shift, Outer firstFrom, int sumWeight = 32>
class DifferenceChroma {
  public:
    struct Constants {
        DifferenceConstants fromA, fromC;
    };
    static constexpr int weight = sumWeight;

    ZEL_INLINE explicit DifferenceChroma(const Constants& k) : fromA_(k.fromA), fromC_(k.fromC) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const Words fromA = (Words)fromA_(a, c, b) >> shift, fromC = (Words)fromC_(c, a, b) >> shift;
        return firstFrom == Outer::a ? ChromaPair{fromA, fromC} : ChromaPair{fromC, fromA};
    }

  private:
    Difference<Product> fromA_, fromC_;
};

// Exact sums in 32 bits. Gray has no colour: the weights of a sample add up to 0, so it is made of the differences between its
// own channel and the other two, whose weights fit 16 bits:
//   (other (own - other channel) + green (own - green) + bias) >> shift
struct ExactChromaWeights {
    int16_t other, green;
    int32_t bias;
};

template <int shift, Outer firstFrom>
class ExactChroma {
  public:
    struct Constants {
        ExactChromaWeights fromA, fromC;
    };
    static constexpr int weight = 1;

    ZEL_INLINE explicit ExactChroma(const Constants& k)
        : fromA_(splatWords(k.fromA.green, k.fromA.other)),
          fromC_(splatWords(k.fromC.green, -k.fromC.other)),
          biasA_(splatDword(k.fromA.bias)),
          biasC_(splatDword(k.fromC.bias)) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const Words fromA = sums(WordPairs(a - b, a - c), fromA_, biasA_), fromC = sums(WordPairs(c - b, a - c), fromC_, biasC_);
        return firstFrom == Outer::a ? ChromaPair{fromA, fromC} : ChromaPair{fromC, fromA};
    }

  private:
    ZEL_INLINE static Words sums(const WordPairs& differences, Words k, Dwords bias) {
        return packWords((mulAddPairs(differences.low, k) + bias) >> shift, (mulAddPairs(differences.high, k) + bias) >> shift);
    }

    Words fromA_, fromC_;
    Dwords biasA_, biasC_;
};

// The same of any three weights.
template <int shift>
class SummedChroma {
  public:
    struct Constants {
        ExactConstants first, second;
    };
    static constexpr int weight = 1;

    ZEL_INLINE explicit SummedChroma(const Constants& k) : first_(k.first), second_(k.second) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const WordPairs ab(a, b), cb(c, b);
        return {first_.template at<shift>(ab, cb), second_.template at<shift>(ab, cb)};
    }

  private:
    ExactSum first_, second_;
};

// Sites of four pixels of one row.
template <class From, class Luma, class Chroma>
struct QuadKernel {
    using Constants = EncodeConstants<Luma, Chroma>;
    static constexpr int sites = blockPixels / 4;

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit QuadKernel(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = From::load(row, block);
        storeVector(row.out[0] + block * blockPixels, luma(t));
        storeQuarters(row.out[1] + block * sites, row.out[2] + block * sites, chroma(sums(t.a), sums(t.b), sums(t.c)).bounded());
    }

  private:
    // Each lane has its four sums twice.
    ZEL_INLINE static Words sums(Bytes x) {
        const Dwords quads = mulAddPairs(pairSums<Chroma::weight>(x), splatWord(1));
        return packWords(quads, quads);
    }
};

// The same, each channel through a curve before the matrix.
template <class From>
struct Curved {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int stream = 0) {
        const Triple t = From::load(row, block, stream);
        Bytes channels[3] = {t.a, t.b, t.c};
        ByteLookup<curveOfBytes<GammaForward>>().replace(channels);
        return {channels[0], channels[1], channels[2]};
    }
};

// Rules by geometry and channel order. The shift of a truncated or rounded chroma rule goes with the pixels of a site and the
// scale of its weights.
using WordLuma = TruncatedLuma<7>;
using PackedLuma = TruncatedLuma<8>;
using Word420 = DifferenceChroma<Floored, 7, Outer::a>;
using Word422 = DifferenceChroma<Floored, 6, Outer::a>;
using Rounded420 = DifferenceChroma<Rounded, 6, Outer::c>;
using Rounded411 = DifferenceChroma<Rounded, 6, Outer::a>;
template <Outer firstFrom>
using Exact420 = ExactChroma<18, firstFrom>;
template <Outer firstFrom>
using Exact422 = ExactChroma<17, firstFrom>;

using FullLuma = Limited<WordLuma>;
using FullExactLuma = Limited<ExactPixels>;
using FullWord420 = Limited<DifferenceChroma<Floored, 6, Outer::a>>;
using FullWord422 = Limited<DifferenceChroma<Floored, 6, Outer::a, 64>>;
using FullExact420 = Limited<Exact420<Outer::a>>;
using FullExact422 = Limited<Exact422<Outer::a>>;

// Chroma rules take channel a's and channel c's difference: of RGB those are Cr and Cb, of BGR Cb and Cr.
constexpr Outer rgb = Outer::a, bgr = Outer::c;  // where red is

template <class Chroma, Outer red>
constexpr typename Chroma::Constants differences(const EncodeMatrix& m, int bias) {
    const DifferenceConstants cb = fromBlue(m, bias), cr = fromRed(m, bias);
    return red == rgb ? typename Chroma::Constants{cr, cb} : typename Chroma::Constants{cb, cr};
}

template <class Luma, class Chroma, Outer red>
constexpr EncodeConstants<Luma, Chroma> word(const EncodeMatrix& m, int lumaBias, int chromaBias) {
    return {truncatedLuma(m, red, lumaBias), differences<Chroma, red>(m, chromaBias)};
}

template <class Chroma, Outer red>
constexpr EncodeConstants<RoundedLuma, Chroma> rounded(int lumaBias, int chromaBias) {
    return {roundedLuma(bt601::encodeRounded, red, lumaBias), differences<Chroma, red>(bt601::encodeRounded, chromaBias)};
}

template <class Chroma, Outer red>
constexpr typename Chroma::Constants exactDifferences(const EncodeMatrix& m, int32_t cbBias, int32_t crBias) {
    const ExactChromaWeights cb{int16_t(-m.cb.r), int16_t(-m.cb.g), cbBias}, cr{int16_t(-m.cr.b), int16_t(-m.cr.g), crBias};
    return red == rgb ? typename Chroma::Constants{cr, cb} : typename Chroma::Constants{cb, cr};
}

template <class Luma, class Chroma, Outer red>
constexpr EncodeConstants<Luma, Chroma> exact(const EncodeMatrix& m, int32_t lumaBias, int32_t chromaBias) {
    return {exactSum(m.y, red, lumaBias), exactDifferences<Chroma, red>(m, chromaBias, chromaBias)};
}

// 16.5 and 128.125 at the scale of the shift that follows. The biases of chroma hold an eighth, not a half: site averages are
// rounded down more often than up, and are meant to be.
constexpr int halfUp = 2112, bias420Word = 16400, bias422Word = 8200;
constexpr int32_t lumaBias = 0x108000, bias420 = 0x2008000, bias422 = 0x1004000;

constexpr auto word420Rgb = word<WordLuma, Word420, rgb>(bt601::encodeWord, halfUp, bias420Word);
constexpr auto word420Bgr = word<WordLuma, Word420, bgr>(bt601::encodeWord, halfUp, bias420Word);
constexpr auto word422Rgb = word<WordLuma, Word422, rgb>(bt601::encodeWord, halfUp, bias422Word);
constexpr auto word422Bgr = word<WordLuma, Word422, bgr>(bt601::encodeWord, halfUp, bias422Word);
constexpr auto word420Bgr709 = word<WordLuma, Word420, bgr>(bt709::encodeWord, halfUp, bias420Word);

// The biases hold 2 of the 32 that would round: the results truncate, and are meant to.
constexpr auto rounded420Rgb = rounded<Rounded420, rgb>(16 * 64 + 2, 128 * 64 + 2);
// Here nothing is added before the shift, and that is meant too.
constexpr auto rounded411Bgr = rounded<Rounded411, bgr>(16 * 64, 128 * 64);

// With Cb first or with Cr first.
constexpr auto exact420RgbCbCr = exact<ExactPixels, Exact420<Outer::c>, rgb>(bt601::encode, lumaBias, bias420);
constexpr auto exact420RgbCrCb = exact<ExactPixels, Exact420<Outer::a>, rgb>(bt601::encode, lumaBias, bias420);
constexpr auto exact420Bgr = exact<ExactPixels, Exact420<Outer::a>, bgr>(bt601::encode, lumaBias, bias420);
constexpr auto exact420Bgr709 = exact<ExactPixels, Exact420<Outer::a>, bgr>(bt709::encode, lumaBias, bias420);
constexpr auto exact422RgbCbCr = exact<ExactPixels, Exact422<Outer::c>, rgb>(bt601::encode, lumaBias, bias422);
constexpr auto exact422RgbCrCb = exact<ExactPixels, Exact422<Outer::a>, rgb>(bt601::encode, lumaBias, bias422);
constexpr auto exact422Bgr = exact<ExactPixels, Exact422<Outer::a>, bgr>(bt601::encode, lumaBias, bias422);

// Packed 4:2:2 from RGB: chroma is rounded. Luma of the blocks truncates, and in the tail the second pixel of a pair does: only
// the first one is rounded.
constexpr int32_t bias422Rounded = 0x1010000, lumaBiasTruncated = 0x100000;

template <class Chroma>
constexpr EncodeConstants<PackedLuma, Chroma> packed{
    truncatedLuma(bt601::encode, rgb, 16 * 256), exactDifferences<Chroma, rgb>(bt601::encode, bias422Rounded, bias422Rounded)};
template <class Chroma>
constexpr EncodeConstants<ExactPixels, Chroma> packedTail{exactSum(bt601::encode.y, rgb, lumaBias, lumaBiasTruncated),
                                                          packed<Chroma>.chroma};

// Cb Y Cr Y from RGB: blocks by exact sums at scale 32768. Chroma has a half, less one last bit in Cr, where the tail has an
// eighth, and both are meant. The weights of Cr add up to 1 rather than 0.
constexpr EncodeConstants<ByteLuma, SummedChroma<15>> chromaFirstRgb{
    byteLuma(bt601::encodeWord.y, rgb, 0x84000),
    {exactSum(bt601::encodeRounded.cb, rgb, 0x404000), exactSum(bt601::encodeRounded.cr, rgb, 0x403fff)}};
// From BGR: luma by words, chroma rounded.
constexpr EncodeConstants<WordLuma, Exact422<Outer::a>> chromaFirstBgr{
    truncatedLuma(bt601::encodeWord, bgr, halfUp),
    exactDifferences<Exact422<Outer::a>, bgr>(bt601::encode, bias422Rounded, bias422Rounded)};
// A last pixel has rounded chroma.
constexpr auto chromaFirstLastRgb = exact<ExactPixels, Exact422<Outer::c>, rgb>(bt601::encode, lumaBias, bias422Rounded);
constexpr auto chromaFirstLastBgr = exact<ExactPixels, Exact422<Outer::a>, bgr>(bt601::encode, lumaBias, bias422Rounded);

// Full range: luma without an offset; chroma of the blocks has a half, in the tail of 4:2:0 an eighth. In that of 4:2:2 it has a
// half, of Cr less two last bits. All of it is meant.
constexpr auto full420Bgr = word<FullLuma, FullWord420, bgr>(bt709Full::encodeWord, 64, 8224);
constexpr auto full422Bgr = word<FullLuma, FullWord422, bgr>(bt709Full::encodeWord, 64, 8224);
constexpr auto fullExact420Bgr = exact<FullExactLuma, FullExact420, bgr>(bt709Full::encode, 0x8000, bias420);
constexpr EncodeConstants<FullExactLuma, FullExact422> fullExact422Bgr{
    exactSum(bt709Full::encode.y, bgr, 0x8000), exactDifferences<FullExact422, bgr>(bt709Full::encode, 0x1010000, 0x100fffe)};

// The columns of the block rules. The odd terms are meant: in a row of 48 pixels the last 16 of 4:2:2 all follow the tail rule.
constexpr int columns422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }
constexpr int columns420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
constexpr int columns411Rounded(int width) { return (width & ~31) + (width & 16); }

// The kernels of block and tail, of the rules that their constants are for.
struct Rules {
    Kernel block, tail;
};

template <int rows, class From, class To, class Luma, class Chroma>
constexpr Kernel pairs(const EncodeConstants<Luma, Chroma>& constants) {
    return kernel<EncodePairs<rows, From, SiteMatrix<Luma, Chroma>, To>>(constants);
}
template <class From, class Luma, class Chroma>
constexpr Kernel quads(const EncodeConstants<Luma, Chroma>& constants) {
    return kernel<QuadKernel<From, Luma, Chroma>>(constants);
}

template <class From, class To>
constexpr Rules rules420(const auto& block, const auto& tail) {
    return {pairs<2, From, To>(block), pairs<2, From, To>(tail)};
}
template <class From, class To>
constexpr Rules rules422(const auto& block, const auto& tail) {
    return {pairs<1, From, To>(block), pairs<1, From, To>(tail)};
}
template <class From>
constexpr Rules rules411(const auto& block) {
    return {quads<From>(block), quads<From>(exact420Bgr)};
}

constexpr Conversion encode420(Layout from, Layout to, Rules rules, int (*columns)(int)) {
    return {.site = {2, 2},
            .from = from,
            .to = to,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns,
            .minimum = {2, 2},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode411(Layout from, Rules rules, int (*columns)(int)) {
    return {.site = {4, 1},
            .from = from,
            .to = planes411,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns,
            .minimum = {4, 1},
            .oddSize = OddSize::warned};
}
constexpr Conversion encode422(Layout from, Layout to, Rules rules, OddSize oddSize = OddSize::accepted) {
    return {.site = {2, 1},
            .from = from,
            .to = to,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns422,
            .minimum = {2, 1},
            .oddSize = oddSize};
}

// A pixel counted twice is a site of its own, whose second half is dropped: Y and the first chroma sample stay.
inline void repeatPixel(uint8_t* site, const uint8_t* pixel, int siteBytes, bool) {
    for (int i = 0; i < siteBytes; ++i) site[i] = pixel[i % (siteBytes / 2)];
}
constexpr Conversion encodePacked422(Layout from, Rules rules, int (*columns)(int), Kernel last) {
    return {.site = {2, 1},
            .from = from,
            .to = packed422,
            .block = rules.block,
            .tail = rules.tail,
            .blockColumns = columns,
            .minimum = {2, 1},
            .oddPixel = {repeatPixel, last, last}};
}

template <class From, Outer firstFrom>
constexpr Conversion encodeLumaFirst(Layout from) {
    constexpr Rules rules = rules422<From, ToPackedPairs>(packed<Exact422<firstFrom>>, packedTail<Exact422<firstFrom>>);
    return encodePacked422(from, rules, wholeBlocks<8>, rules.tail);
}
template <class From>
constexpr Conversion encodeChromaFirstRgb(Layout from) {
    return encodePacked422(from, rules422<From, ToChromaFirst>(chromaFirstRgb, exact422RgbCbCr), wholeBlocks<4>,
                           pairs<1, From, ToChromaFirst>(chromaFirstLastRgb));
}
template <class From>
constexpr Conversion encodeChromaFirstFull(Layout from) {
    constexpr Rules rules = rules422<From, ToChromaFirst>(full422Bgr, fullExact422Bgr);
    return encodePacked422(from, rules, wholeBlocks<32>, rules.tail);
}

constexpr Rules word420Bgr24 = rules420<From3, ToChromaPlanes>(word420Bgr, exact420Bgr),
                word420Bgr32 = rules420<From4, ToChromaPlanes>(word420Bgr, exact420Bgr),
                word709Bgr24 = rules420<From3, ToChromaPlanes>(word420Bgr709, exact420Bgr709),
                word709Bgr32 = rules420<From4, ToChromaPlanes>(word420Bgr709, exact420Bgr709);
constexpr Conversion bgr24To420 = encode420(rgb24Two, planes420, word420Bgr24, columns420),
                     bgr32To420 = encode420(rgb32Two, planes420, word420Bgr32, columns420),
                     bgr24To420By709 = encode420(rgb24Two, planes420, word709Bgr24, columns420),
                     bgr32To420By709 = encode420(rgb32Two, planes420, word709Bgr32, columns420);

// The same kernels write Cr into the second plane and Cb into the third.
constexpr Conversion withChromaExchanged(Conversion c) {
    const Stream third = c.to.streams[2];
    c.to.streams[2] = c.to.streams[3];
    c.to.streams[3] = third;
    return c;
}

}  // namespace

namespace rows {

constexpr Conversion zeliRGBToYCbCr420_8u_C3P3R =
    encode420(rgb24Two, planes420, rules420<From3, ToChromaPlanes>(rounded420Rgb, exact420RgbCbCr), wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr420_8u_C3P2R =
    encode420(rgb24Two, semiPlanar420, rules420<From3, ToChromaInterleaved>(rounded420Rgb, exact420RgbCbCr), wholeBlocks<8>);
constexpr Conversion zeliRGBToYCbCr420_8u_C4P2R =
    encode420(rgb32Two, semiPlanar420, rules420<From4, ToChromaInterleaved>(rounded420Rgb, exact420RgbCbCr), wholeBlocks<8>);
constexpr Conversion zeliBGRToYCbCr420_8u_C3P3R = bgr24To420;
constexpr Conversion zeliBGRToYCrCb420_8u_C3P3R = withChromaExchanged(bgr24To420);
constexpr Conversion zeliBGRToYCbCr420_8u_AC4P3R = bgr32To420;
constexpr Conversion zeliBGRToYCrCb420_8u_AC4P3R = withChromaExchanged(bgr32To420);
constexpr Conversion zeliRGBToYCrCb420_8u_AC4P3R =
    encode420(rgb32Two, planes420, rules420<From4, ToChromaPlanes>(word420Rgb, exact420RgbCrCb), columns420);

constexpr Conversion zeliBGRToYCbCr420_709CSC_8u_C3P3R = bgr24To420By709;
constexpr Conversion zeliBGRToYCrCb420_709CSC_8u_C3P3R = withChromaExchanged(bgr24To420By709);
constexpr Conversion zeliBGRToYCbCr420_709CSC_8u_AC4P3R = bgr32To420By709;
constexpr Conversion zeliBGRToYCrCb420_709CSC_8u_AC4P3R = withChromaExchanged(bgr32To420By709);
constexpr Conversion zeliBGRToYCbCr420_709CSC_8u_C3P2R =
    encode420(rgb24Two, semiPlanar420, rules420<From3, ToChromaInterleaved>(word420Bgr709, exact420Bgr709), columns420);
constexpr Conversion zeliBGRToYCbCr420_709HDTV_8u_AC4P3R =
    encode420(rgb32Two, planes420, rules420<From4, ToChromaPlanes>(full420Bgr, fullExact420Bgr), wholeBlocks<16>);

constexpr Conversion zeliBGRToYCbCr411_8u_C3P3R = encode411(rgb24Quad, rules411<From3>(rounded411Bgr), columns411Rounded);
constexpr Conversion zeliBGRToYCbCr411_8u_AC4P3R = encode411(rgb32Quad, rules411<From4>(word420Bgr), wholeBlocks<32>);

// Of RGB, Cb is the difference of the last channel.
constexpr Conversion zeliRGBToYCbCr422_8u_C3C2R = encodeLumaFirst<From3, Outer::c>(rgb24Pair);
constexpr Conversion zeliRGBToYCrCb422_8u_C3C2R = encodeLumaFirst<From3, Outer::a>(rgb24Pair);
constexpr Conversion zeliRGBToYCbCr422_8u_P3C2R = encodeLumaFirst<FromPlanes, Outer::c>(rgbPlanesPair);
constexpr Conversion zeliRGBToYCrCb422_8u_P3C2R = encodeLumaFirst<FromPlanes, Outer::a>(rgbPlanesPair);

constexpr Conversion zeliRGBToCbYCr422_8u_C3C2R = encodeChromaFirstRgb<From3>(rgb24Pair);
constexpr Conversion zeliRGBToCbYCr422Gamma_8u_C3C2R = encodeChromaFirstRgb<Curved<From3>>(rgb24Pair);
constexpr Conversion zeliBGRToCbYCr422_8u_AC4C2R =
    encodePacked422(rgb32Pair, rules422<From4, ToChromaFirst>(chromaFirstBgr, exact422Bgr), wholeBlocks<8>,
                    pairs<1, From4, ToChromaFirst>(chromaFirstLastBgr));
constexpr Conversion zeliBGRToCbYCr422_709HDTV_8u_C3C2R = encodeChromaFirstFull<From3>(rgb24Pair);
constexpr Conversion zeliBGRToCbYCr422_709HDTV_8u_AC4C2R = encodeChromaFirstFull<From4>(rgb32Pair);

constexpr Conversion zeliRGBToYCbCr422_8u_C3P3R =
    encode422(rgb24Pair, planes422Crossed, rules422<From3, ToChromaPlanes>(word422Rgb, exact422RgbCrCb), OddSize::warned);
constexpr Conversion zeliBGRToYCbCr422_8u_C3P3R =
    encode422(rgb24Pair, planes422, rules422<From3, ToChromaPlanes>(word422Bgr, exact422Bgr));
constexpr Conversion zeliBGRToYCbCr422_8u_AC4P3R =
    encode422(rgb32Pair, planes422, rules422<From4, ToChromaPlanes>(word422Bgr, exact422Bgr));
constexpr Conversion zeliBGRToYCbCr422_8u_C3C2R =
    encode422(rgb24Pair, packed422, rules422<From3, ToPackedPairs>(word422Bgr, exact422Bgr));
constexpr Conversion zeliBGRToYCbCr422_8u_AC4C2R =
    encode422(rgb32Pair, packed422, rules422<From4, ToPackedPairs>(word422Bgr, exact422Bgr));

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_encode ~, 1
#define ZEL_GROUP encode
#include "frame/table.h"
