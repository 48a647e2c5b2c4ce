// RGB to YCbCr with subsampled chroma. Luma is computed for each pixel. Chroma is computed once for each site, from the sums of
// the channels over its pixels: a box average, with the matrix last. A site is 2 x 1 (4:2:2), 2 x 2 (4:2:0) or 4 x 1 pixels
// (4:1:1).
#include "intensity/gamma_curve.h"
#include "lumachroma/encode_tables.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// Exact sums in 32 bits of any three weights.
template <int shift>
class SummedChroma {
  public:
    struct Constants {
        ExactConstants first, second;
    };
    static constexpr int lift = 0;

    ZEL_INLINE explicit SummedChroma(const Constants& k) : first_(k.first), second_(k.second) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const ChannelPairs ab(a, b), cb(c, b);
        return {first_.template at<shift>(ab, cb), second_.template at<shift>(ab, cb)};
    }

  private:
    ExactSum first_, second_;
};

// A source, each channel of which goes through a curve before the matrix.
template <class From>
struct Curved {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int stream = 0) {
        const Triple t = From::load(row, block, stream);
        Bytes channels[3] = {t.a, t.b, t.c};
        ByteLookup<curveOfBytes<GammaForward>>().replace(channels);
        return {channels[0], channels[1], channels[2]};
    }
};

using PackedLuma = TruncatedLuma<8>;
using Rounded420 = DifferenceChroma<Rounded, 6, Outer::c>;
using Rounded411 = DifferenceChroma<Rounded, 6, Outer::a>;

using FullLuma = Limited<WordLuma>;
using FullExactLuma = Limited<ExactPixels>;
using FullWord420 = Limited<DifferenceChroma<Floored, 6, Outer::a>>;
using FullWord422 = Limited<DifferenceChroma<Floored, 6, Outer::a, true>>;
using FullExact420 = Limited<Exact420<Outer::a>>;
using FullExact422 = Limited<Exact422<Outer::a>>;

template <class Chroma, Outer red>
constexpr EncodeConstants<RoundedLuma, Chroma> rounded(int lumaBias, int chromaBias) {
    return {roundedLuma(bt601::encodeRounded, red, lumaBias), differences<Chroma, red>(bt601::encodeRounded, chromaBias)};
}

constexpr auto word420Bgr709 = word<WordLuma, Word420, bgr>(bt709::encodeWord, halfUp, bias420Word);

// Meant: the biases hold 2 of the 32 that would round. With 32, nearly half of the results would rise by one.
constexpr auto rounded420Rgb = rounded<Rounded420, rgb>(16 * 64 + 2, 128 * 64 + 2);
// Meant: here not even the 2 are added, and with them some results would rise by one.
constexpr auto rounded411Bgr = rounded<Rounded411, bgr>(16 * 64, 128 * 64);

constexpr auto exact420Bgr709 = exact<ExactPixels, Exact420<Outer::a>, bgr>(bt709::encode, lumaBias, bias420);
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
// eighth, and the weights of Cr add up to 1 rather than 0. Meant: with one bias for both, chroma would change.
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
// half, of Cr less two last bits. Meant: with one bias for all, chroma would change by one at the ends of rows.
constexpr auto full420Bgr = word<FullLuma, FullWord420, bgr>(bt709Full::encodeWord, 64, 8224);
constexpr auto full422Bgr = word<FullLuma, FullWord422, bgr>(bt709Full::encodeWord, 64, 8224);
constexpr auto fullExact420Bgr = exact<FullExactLuma, FullExact420, bgr>(bt709Full::encode, 0x8000, bias420);
constexpr EncodeConstants<FullExactLuma, FullExact422> fullExact422Bgr{
    exactSum(bt709Full::encode.y, bgr, 0x8000), exactDifferences<FullExact422, bgr>(bt709Full::encode, 0x1010000, 0x100fffe)};

constexpr int columns411Rounded(int width) { return (width & ~31) + (width & 16); }

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
                           pairKernel<1, From, ToChromaFirst>(chromaFirstLastRgb));
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
                    pairKernel<1, From4, ToChromaFirst>(chromaFirstLastBgr));
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
