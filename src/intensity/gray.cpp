// Colour to one intensity by weights, fixed ones or the caller's; intensity to colour; the luma of packed 4:2:2.
//
//     gray = c0 x0 + c1 x1 + c2 x2
//
// over the channels in the order in which they are stored. 8-bit images weigh in fixed point, the others in floats or doubles.
#include "frame/parameters.h"
#include "frame/passes.h"
#include "simd/lifted.h"
#include "simd/samples.h"
#include "simd/vector.h"
#include "zelcc/intensity.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr float fixedWeights[3] = {0.299f, 0.587f, 0.114f};

template <class Number>
struct GrayWeights {
    Number c[3];
};

// No weights are a request for the fixed ones, where there are any: doubles have none, and take what is there.
template <class Number>
struct WeightExtras {
    const Number* numbers = nullptr;
};

template <class Number>
GrayWeights<Number> weights(const WeightExtras<Number>& extras) {
    GrayWeights<Number> w;
    const void* const numbers = extras.numbers || sizeof(Number) == 8 ? static_cast<const void*>(extras.numbers) : fixedWeights;
    __builtin_memcpy(w.c, numbers, sizeof w.c);
    return w;
}

// Weights as words of 15 fractional bits. The fixed ones sum up to 32769, one more than 1. Meant: with 32768 some
// grays would fall by one. A weight that
// is negative, 2 or more loses its high bits.
struct WordWeights {
    uint16_t c[3];

    // Neither a weight nor a sum of products, with the half that rounds it, is beyond a signed word.
    constexpr bool areLight() const {
        unsigned most = 64, heaviest = 0;
        for (const uint16_t weight : c) {
            most += 255u * weight >> 8;
            heaviest = weight > heaviest ? weight : heaviest;
        }
        return most < 0x8000 && heaviest < 0x8000;
    }
};

constexpr double inWords(float c) { return double(c) * 32768.0 + 0.5; }
constexpr WordWeights fixedWordWeights{
    {uint16_t(inWords(fixedWeights[0])), uint16_t(inWords(fixedWeights[1])), uint16_t(inWords(fixedWeights[2]))}};

WordWeights wordWeights(const WeightExtras<float>& extras) {
    if (!extras.numbers) return fixedWordWeights;
    const GrayWeights<float> w = weights(extras);
    const auto word = [](float c) { return static_cast<uint16_t>(truncated(inWords(c))); };
    return {{word(w.c[0]), word(w.c[1]), word(w.c[2])}};
}

// Bytes, in most columns: products lose their low eight bits one by one, so that the sum has room in a word. Heavier weights than
// the fixed ones may carry it beyond the signed words, and then it comes out black.
template <class Pixels>
class GrayInWords : public FewOperations {
  public:
    using Constants = WordWeights;
    static constexpr int sites = blockPixels;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        if (k.areLight())
            convertBlocks<Light>(k, row, count);
        else
            convertBlocks<Heavy>(k, row, count);
    }

  private:
    struct Light : Floors<15> {
        ZEL_INLINE static UWords sum(UWords a, UWords b) { return a + b; }
        // s + 64 >> 7
        ZEL_INLINE static Bytes rounded(UWords first, UWords second) {
            return roundedInOrder<7, Pixels>((Words)first, (Words)second);
        }
    };
    struct Heavy : Floors<16> {
        ZEL_INLINE static UWords sum(UWords a, UWords b) { return addSaturated(a, b); }
        ZEL_INLINE static Bytes rounded(UWords first, UWords second) {
            return Pixels::inOrder(roundedHeavy(first), roundedHeavy(second));
        }
    };

    ZEL_INLINE static Words roundedHeavy(UWords s) {
        const Words half = (Words)addSaturated(s, (UWords)splatWord(64));
        return half >> 7 & ~(half >> 15);
    }

    template <class Sum>
    ZEL_INLINE static void convertBlocks(const Constants& k, const Row& row, size_t count) {
        const UWords c0 = (UWords)splatWord(k.c[0]), c1 = (UWords)splatWord(k.c[1]), c2 = (UWords)splatWord(k.c[2]);
        const auto gray = [&](const LiftedHalf& x) ZEL_INLINE_LAMBDA {
            return Sum::sum(Sum::sum(Sum::product(x.a, c0), Sum::product(x.b, c1)), Sum::product(x.c, c2));
        };
        for (size_t i = 0; i < count; ++i) {
            const Lifted x = Pixels::load(row.in[0] + i * blockPixels * Pixels::bytes);
            storeVector(row.out[0] + i * blockPixels, Sum::rounded(gray(x.first), gray(x.second)));
        }
    }
};

// Bytes, in the last columns: the sum is exact, rounded to the nearest and cut down to a byte.
template <class Pixels>
class GrayInDwords : public FewOperations {
  public:
    using Constants = WordWeights;
    static constexpr int sites = blockPixels;

    ZEL_INLINE explicit GrayInDwords(const Constants& k)
        : c01_(splatWords(k.c[0] & 0x7fff, k.c[1] & 0x7fff)),
          c2AndHalf_(splatWords(k.c[2] & 0x7fff, 0x4000)),
          ones_{whole(k.c[0]), whole(k.c[1]), whole(k.c[2])} {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = Pixels::load(row.in[0] + block * blockPixels * Pixels::bytes);
        const Words low = words(lowBytes(t.a), lowBytes(t.b), lowBytes(t.c));
        const Words high = words(highBytes(t.a), highBytes(t.b), highBytes(t.c));
        const Bytes ones = (t.a & ones_[0]) + (t.b & ones_[1]) + (t.c & ones_[2]);
        storeVector(row.out[0] + block * blockPixels, packBytes(low, high) + ones);
    }

  private:
    // The bit that a signed word has no room for is worth 1.
    ZEL_INLINE static Bytes whole(uint16_t c) { return splatByte(c & 0x8000 ? 0xff : 0); }

    ZEL_INLINE Words words(Words a, Words b, Words c) const {
        const Words one = splatWord(1);
        const auto bytes = [&](Words ab, Words c1) {
            return (mulAddPairs(ab, c01_) + mulAddPairs(c1, c2AndHalf_)) >> 15 & splatDword(0xff);
        };
        return packWords(bytes(interleaveLow(a, b), interleaveLow(c, one)), bytes(interleaveHigh(a, b), interleaveHigh(c, one)));
    }

    Words c01_, c2AndHalf_;
    Bytes ones_[3];
};

template <class Vector>
struct Sum {
    Vector c0, c1, c2;
    ZEL_INLINE Vector operator()(Vector x0, Vector x1, Vector x2) const { return (c0 * x0 + c1 * x1) + c2 * x2; }
};

template <class Layout>
class GrayInFloats {
  public:
    using Constants = GrayWeights<float>;
    static constexpr int sites = vectorBytes / 4;

    ZEL_INLINE explicit GrayInFloats(const Constants& k) : sum_{splatFloat(k.c[0]), splatFloat(k.c[1]), splatFloat(k.c[2])} {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Layout::load(row.in[0] + block * sites * Layout::bytes);
        storeVector(row.out[0] + block * vectorBytes, sum_(x.a, x.b, x.c));
    }

  private:
    Sum<Floats> sum_;
};

template <class Layout>
class GrayInDoubles {
  public:
    using Constants = GrayWeights<double>;
    static constexpr int sites = vectorBytes / 8;

    ZEL_INLINE explicit GrayInDoubles(const Constants& k) : sum_{splatDouble(k.c[0]), splatDouble(k.c[1]), splatDouble(k.c[2])} {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Layout::load(row.in[0] + block * sites * Layout::bytes);
        storeVector(row.out[0] + block * vectorBytes, sum_(x.a, x.b, x.c));
    }

  private:
    Sum<Doubles> sum_;
};

// Two results a dword, of an even and an odd pixel, to words.
struct CutToWords {
    ZEL_INLINE static Words words(Dwords even, Dwords odd) { return Depth16u::joined(even, odd); }
};

// Of each four results d0 to d3 the words are low(d0) | high(d2), high(d0) | low(d1), low(d2) | high(d1), high(d2) | low(d3):
// results that a word has no room for leak into their neighbours. Meant: bounded, results of
// weights that add up to more than 1 would change.
struct MixIntoWords {
    ZEL_INLINE static Words words(Dwords even, Dwords odd) {
        const UDwords leaking = (UDwords)((UQwords)even >> 32 | (UQwords)odd << 32) >> 16;
        return (Words)(even | odd << 16 | (Dwords)leaking);
    }
};

struct SaturateToWords {
    ZEL_INLINE static Words words(Dwords even, Dwords odd) {
        alignas(16) constexpr uint8_t inTurn[16] = {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15};
        return (Words)shuffle((Bytes)packWords(even, odd), everyLane(inTurn));
    }
};

// Signed words are weighed as unsigned ones, 32768 above.
template <template <class> class Layout, class Depth, class Store>
class GrayOfWords : public FewOperations {
  public:
    using Constants = GrayWeights<float>;
    static constexpr int sites = vectorBytes / 2;

    ZEL_INLINE explicit GrayOfWords(const Constants& k) : sum_{splatFloat(k.c[0]), splatFloat(k.c[1]), splatFloat(k.c[2])} {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Layout<Depth16u>::load(row.in[0] + block * sites * Layout<Depth16u>::bytes);
        const Words samples[3] = {fromZero(x.a), fromZero(x.b), fromZero(x.c)};
        const auto gray = [&](Floats x0, Floats x1, Floats x2) ZEL_INLINE_LAMBDA {
            const Dwords result = rounded(sum_(x0, x1, x2));
            return Depth::isSigned ? (Dwords)((UDwords)result - (UDwords)splatDword(32768)) : result;
        };
        using D = Depth16u;
        const Dwords evens = gray(D::evens(samples[0]), D::evens(samples[1]), D::evens(samples[2]));
        const Dwords odds = gray(D::odds(samples[0]), D::odds(samples[1]), D::odds(samples[2]));
        storeVector(row.out[0] + block * vectorBytes, Store::words(evens, odds));
    }

  private:
    ZEL_INLINE static Words fromZero(Words x) { return Depth::isSigned ? x ^ splatWord(0x8000) : x; }

    Sum<Floats> sum_;
};

// Samples of `size` bytes, each `channels` times, or three times and the caller's alpha.
template <int size, int channels>
struct Replicate {
    static constexpr int sites = vectorBytes / size;
    static constexpr bool keepsUp = true;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Repeated<size, channels> repeated(row.in[0] + block * vectorBytes, row.alpha.bits);
        const Destination out = row.out[0] + block * vectorBytes * channels;
        unrolled<channels>([&](auto v) ZEL_INLINE_LAMBDA { storeVector(out + v * vectorBytes, repeated.template vector<v>()); });
    }
};

// The even bytes of packed pixels. A site is a pair of them.
struct EvenBytes {
    static constexpr int sites = vectorBytes / 2;
    static constexpr bool keepsUp = true;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const uint8_t* const in = row.in[0] + block * 2 * vectorBytes;
        storeVector(row.out[0] + block * vectorBytes, evenBytes(loadBytes(in), loadBytes(in + vectorBytes)));
    }
};

constexpr Conversion conversion(int bytesFrom, int bytesTo, Kernel block, Kernel tail = {}, int (*blockColumns)(int) = nullptr) {
    return {.site = {1, 1},
            .from = layoutOf({{0, uint8_t(bytesFrom)}}),
            .to = layoutOf({{0, uint8_t(bytesTo)}}),
            .block = block,
            .tail = tail,
            .blockColumns = blockColumns};
}

template <class Lifted, class Pixels, int columns>
constexpr Parametric<WordWeights, WeightExtras<float>> grayOfBytes{
    conversion(Pixels::bytes, 1, parametric<GrayInWords<Lifted>>, parametric<GrayInDwords<Pixels>>, wholeBlocks<columns>),
    wordWeights};

template <template <class> class Layout, class Depth, class Store>
constexpr Parametric<GrayWeights<float>, WeightExtras<float>> grayOfWords{
    conversion(Layout<Depth>::bytes, 2, parametric<GrayOfWords<Layout, Depth, Store>>,
               parametric<GrayOfWords<Layout, Depth, CutToWords>>, wholeBlocks<4>),
    weights<float>};

template <template <class> class Layout>
constexpr Parametric<GrayWeights<float>, WeightExtras<float>> grayOfFloats{
    conversion(Layout<Depth32f>::bytes, 4, parametric<GrayInFloats<Layout<Depth32f>>>), weights<float>};

template <template <class> class Layout>
constexpr Parametric<GrayWeights<double>, WeightExtras<double>> grayOfDoubles{
    conversion(Layout<Depth64f>::bytes, 8, parametric<GrayInDoubles<Layout<Depth64f>>>), weights<double>};

template <int size, int channels>
constexpr Conversion colourOfGray = conversion(size, size* channels, withoutConstants<Replicate<size, channels>>);

// An odd row ends with a lone luma byte: what would be behind it is not read.
void makePair(uint8_t* site, const uint8_t* pixel, int, bool) { site[0] = pixel[0]; }

constexpr Kernel evenBytesKernel = withoutConstants<EvenBytes>;

}  // namespace

namespace rows {

constexpr auto zeliRGBToGray_8u_C3C1R = grayOfBytes<LiftedThree, Interleaved3, 4>;
constexpr auto zeliRGBToGray_8u_AC4C1R = grayOfBytes<LiftedFour, Interleaved4, 8>;
constexpr auto zeliRGBToGray_16u_C3C1R = grayOfWords<InterleavedThree, Depth16u, MixIntoWords>;
constexpr auto zeliRGBToGray_16u_AC4C1R = grayOfWords<InterleavedFour, Depth16u, MixIntoWords>;
constexpr auto zeliRGBToGray_16s_C3C1R = grayOfWords<InterleavedThree, Depth16s, SaturateToWords>;
constexpr auto zeliRGBToGray_16s_AC4C1R = grayOfWords<InterleavedFour, Depth16s, SaturateToWords>;
constexpr auto zeliRGBToGray_32f_C3C1R = grayOfFloats<InterleavedThree>;
constexpr auto zeliRGBToGray_32f_AC4C1R = grayOfFloats<InterleavedFour>;

constexpr auto zeliColorToGray_8u_C3C1R = zeliRGBToGray_8u_C3C1R;
constexpr auto zeliColorToGray_8u_AC4C1R = zeliRGBToGray_8u_AC4C1R;
constexpr auto zeliColorToGray_16u_C3C1R = zeliRGBToGray_16u_C3C1R;
constexpr auto zeliColorToGray_16u_AC4C1R = zeliRGBToGray_16u_AC4C1R;
constexpr auto zeliColorToGray_16s_C3C1R = zeliRGBToGray_16s_C3C1R;
constexpr auto zeliColorToGray_16s_AC4C1R = zeliRGBToGray_16s_AC4C1R;
constexpr auto zeliColorToGray_32f_C3C1R = zeliRGBToGray_32f_C3C1R;
constexpr auto zeliColorToGray_32f_AC4C1R = zeliRGBToGray_32f_AC4C1R;
constexpr auto zeliColorToGray_64f_C3C1R = grayOfDoubles<InterleavedThree>;
constexpr auto zeliColorToGray_64f_AC4C1R = grayOfDoubles<InterleavedFour>;

constexpr auto zeliGrayToRGB_8u_C1C3R = colourOfGray<1, 3>;
constexpr auto zeliGrayToRGB_16u_C1C3R = colourOfGray<2, 3>;
constexpr auto zeliGrayToRGB_32f_C1C3R = colourOfGray<4, 3>;
constexpr auto zeliGrayToRGB_8u_C1C4R = withAlpha(colourOfGray<1, 4>);
constexpr auto zeliGrayToRGB_16u_C1C4R = withAlpha(colourOfGray<2, 4>);
constexpr auto zeliGrayToRGB_32f_C1C4R = withAlpha(colourOfGray<4, 4>);

constexpr Conversion zeliYCbCr422ToGray_8u_C2C1R{.site = {2, 1},
                                                 .from = layoutOf({{0, 4}}),
                                                 .to = layoutOf({{0, 2}}),
                                                 .block = evenBytesKernel,
                                                 .oddPixel = {makePair, evenBytesKernel, evenBytesKernel}};

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_gray ~, 1
#define ZEL_GROUP gray
#include "frame/table.h"
