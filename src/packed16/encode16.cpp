// Packed 16-bit words to luma and subsampled chroma: the rules for bytes, on the words' fields.
#include "frame/driver.h"
#include "lumachroma/encode_tables.h"
#include "lumachroma/rules/analog_encoding.h"
#include "packed16/words.h"
#include "zelcc/packed_sources.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr Layout wordsTwo = layoutOf({{0, 4, 0, 2}, {0, 4, 1, 2}}), wordsPair = layoutOf({{0, 4}}),
                 wordsQuad = layoutOf({{0, 8}});

// YCbCr. The last column and row of an odd size are left out without a warning.
constexpr Conversion silently(Conversion c) {
    c.oddSize = OddSize::accepted;
    c.checks = planesFirst;
    return c;
}

template <class From>
constexpr Conversion toYCbCr420 = silently(encode420(wordsTwo, planes420, rules420<From, ToChromaPlanes>(word420Bgr, exact420Bgr),
                                                     columns420));
template <class From>
constexpr Conversion toYCrCb420 = withChromaExchanged(toYCbCr420<From>);

template <class From, class To>
constexpr Conversion toYCbCr422(Layout layout) {
    return silently(encode422(wordsPair, layout, rules422<From, To>(word422Bgr, exact422Bgr)));
}

// Sites of four pixels, and luma of the up to three pixels that are none.
struct Quads : Conversion {
    const Conversion& lumaOfRest;
};

ZEL_INLINE void convert(const Quads& quads, Images& images, Nothing) {
    convert(static_cast<const Conversion&>(quads), images);
    const int whole = images.size.width & ~3;
    images.source[0] += 2 * ptrdiff_t{whole};
    images.destination[0] += whole;
    images.size.width -= whole;
    convert(quads.lumaOfRest, images);
}

template <class From, class Luma>
struct LumaKernel {
    using Constants = typename Luma::Constants;
    static constexpr int sites = blockPixels;

    Luma luma;

    ZEL_INLINE explicit LumaKernel(const Constants& k) : luma(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        storeVector(row.out[0] + block * blockPixels, luma(From::load(row, block)));
    }
};

template <class From>
constexpr Conversion lumaOnly{.site = {1, 1},
                              .from = layoutOf({{0, 2}}),
                              .to = layoutOf({{0, 1}}),
                              .block = kernel<LumaKernel<From, ExactPixels>>(exact420Bgr.luma)};

constexpr Conversion checkingPlanesFirst(Conversion c) {
    c.checks = planesFirst;
    return c;
}
template <class From>
constexpr Quads toYCbCr411{checkingPlanesFirst(encode411(wordsQuad, rules411<From>(word420Bgr), wholeBlocks<32>)),
                           lumaOnly<From>};

// YUV. Blocks: with w = floor(9798 R / 256) + floor(19235 G / 256) + floor(3736 B / 256) of each pixel, 128 times its luma, and
// their sum W over a site of n pixels,
//   Y = (w + 64) >> 7
//   U = (8224 + floor((floor(128 SB / n) - floor(W / n)) cu / 65536)) >> 6, and V alike of SR
// A difference at scale 128 fits a signed word; its high multiply by a constant at scale 32768 leaves scale 64, where 8224 is
// 128.5.
template <int rows>
class FlooredDifferences {
  public:
    struct Constants {
        TruncatedLumaConstants luma;
        int16_t u, v;
    };
    struct Sums {
        Words a, c;
        UWords previous, last;  // of w + bias over the pairs of pixels of a row
    };

    ZEL_INLINE explicit FlooredDifferences(const Constants& k)
        : luma_(k.luma), lumaBias_(splatWord(k.luma.bias)), u_(splatWord(k.u)), v_(splatWord(k.v)) {}

    ZEL_INLINE Bytes lumaOf(Triple t, Sums& sums) const {
        const LiftedBytes luma = ofLifted(luma_, t);
        sums = {sums.a + pairSums<7 - rows>(t.a), sums.c + pairSums<7 - rows>(t.c), sums.last,
                sumsOfPairs(luma.first, luma.second)};
        return joined<TruncatedLuma<7>::shift>(luma.first, luma.second);
    }
    ZEL_INLINE ChromaPair chromaOf(const Sums& s) const {
        // The sum of a site does not fit a word, and its mean does.
        const UWords pair = rows == 2 ? meanBelow(s.previous, s.last) : s.last;
        const Words luma = (Words)(pair >> 1) - lumaBias_;
        const auto chroma = [&](Words own, Words k) { return (splatWord(128 * 64 + 32) + mulHigh(own - luma, k)) >> 6; };
        return {chroma(s.c, u_), chroma(s.a, v_)};
    }

  private:
    TruncatedLuma<7> luma_;
    Words lumaBias_, u_, v_;
};

constexpr int uOfBgr = 16122, uOfRgb = 16121;  // Meant: with one of them for both, U would change
template <int rows, int u>
constexpr typename FlooredDifferences<rows>::Constants flooredConstants{{9798, 19235, 3736, 64}, u, 28737};

// Tails follow the exact rule. Luma of RGB565 words is cut off there; all other luma is rounded.
enum class TailLuma { rounded, truncated };
template <int shift, TailLuma luma>
constexpr EncodeConstants<ExactLuma, ExactSiteDifferences<shift>> tailConstants{
    {{19595, 38470, 7471}, luma == TailLuma::rounded ? 32768 : 0},
    {exactSum({-19595, -38470, -7471}, Outer::a, (65536 << (shift - 1)) - 1)}};

template <class From, int rows, int u, TailLuma luma>
constexpr Conversion toYuv(Minimum minimum, Checks checks) {
    constexpr int shift = rows;  // of 2 or 4 pixels a site
    return {.site = {2, rows},
            .from = rows == 2 ? wordsTwo : wordsPair,
            .to = rows == 2 ? planes420 : planes422,
            .block = kernel<EncodePairs<rows, From, FlooredDifferences<rows>, ToChromaPlanes>>(flooredConstants<rows, u>),
            .tail = kernel<EncodePairs<rows, From, SiteMatrix<ExactLuma, ExactSiteDifferences<shift>>, ToChromaPlanes>>(
                tailConstants<shift, luma>),
            .blockColumns = rows == 2 ? columns420 : columns422,
            .minimum = minimum,
            .oddSize = OddSize::warned,
            .checks = checks};
}
template <class Fields>
constexpr Conversion bgrToYuv420 = toYuv<FromReversed<FromWords<Fields>>, 2, uOfBgr, TailLuma::rounded>({2, 2}, planesFirst);
template <int rows>
constexpr Conversion rgbToYuv = toYuv<FromWords<Fields565>, rows, uOfRgb, TailLuma::truncated>({1, 1}, pointersFirst);

using From555 = FromWords<Fields555>;
using From565 = FromWords<Fields565>;

}  // namespace

namespace rows {

constexpr auto zeliBGR555ToYCbCr411_16u8u_C3P3R = toYCbCr411<From555>;
constexpr auto zeliBGR565ToYCbCr411_16u8u_C3P3R = toYCbCr411<From565>;
constexpr Conversion zeliBGR555ToYCbCr420_16u8u_C3P3R = toYCbCr420<From555>;
constexpr Conversion zeliBGR565ToYCbCr420_16u8u_C3P3R = toYCbCr420<From565>;
constexpr Conversion zeliBGR555ToYCrCb420_16u8u_C3P3R = toYCrCb420<From555>;
constexpr Conversion zeliBGR565ToYCrCb420_16u8u_C3P3R = toYCrCb420<From565>;
constexpr Conversion zeliBGR555ToYCbCr422_16u8u_C3C2R = toYCbCr422<From555, ToPackedPairs>(packed422);
constexpr Conversion zeliBGR565ToYCbCr422_16u8u_C3C2R = toYCbCr422<From565, ToPackedPairs>(packed422);
constexpr Conversion zeliBGR555ToYCbCr422_16u8u_C3P3R = toYCbCr422<From555, ToChromaPlanes>(planes422);
constexpr Conversion zeliBGR565ToYCbCr422_16u8u_C3P3R = toYCbCr422<From565, ToChromaPlanes>(planes422);

constexpr Conversion zeliBGR555ToYUV420_16u8u_C3P3R = bgrToYuv420<Fields555>;
constexpr Conversion zeliBGR565ToYUV420_16u8u_C3P3R = bgrToYuv420<Fields565>;
constexpr Conversion zeliRGB565ToYUV420_16u8u_C3P3R = rgbToYuv<2>;
constexpr Conversion zeliRGB565ToYUV422_16u8u_C3P3R = rgbToYuv<1>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_encode16 ~, 1
#define ZEL_GROUP encode16
#include "frame/table.h"
