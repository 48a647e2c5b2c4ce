// Colour to one intensity by weights, fixed ones or the caller's; intensity to colour; the luma of packed 4:2:2.
//
//     gray = c0 x0 + c1 x1 + c2 x2
//
// over the channels in the order in which they are stored. 8-bit images weigh in fixed point, the others in floats or doubles.
#include "frame/parameters.h"
#include "frame/passes.h"
#include "simd/samples.h"
#include "zelcc/intensity.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr float fixedWeights[3] = {0.299f, 0.587f, 0.114f};

template <class Number>
struct Weights {
    Number c[3];
};

// No weights are a request for the fixed ones, where there are any: doubles have none, and take what is there.
template <class Number>
Weights<Number> weights(const Images& images) {
    Weights<Number> w;
    const void* const given = images.parameters || sizeof(Number) == 8 ? images.parameters : fixedWeights;
    __builtin_memcpy(w.c, given, sizeof w.c);
    return w;
}

// Weights as words of 15 fractional bits. The fixed ones sum up to 32769, one more than 1, and that is meant. A weight that is
// negative, 2 or more loses its high bits.
struct WordWeights {
    uint16_t c[3];
};

WordWeights wordWeights(const Images& images) {
    const Weights<float> w = weights<float>(images);
    const auto word = [](float c) { return static_cast<uint16_t>(_mm_cvttsd_si32(_mm_set_sd(double(c) * 32768.0 + 0.5))); };
    return {{word(w.c[0]), word(w.c[1]), word(w.c[2])}};
}

ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)ZEL_MM(adds_epu16)((Register)a, (Register)b); }
ZEL_INLINE Words atLeastZero(UWords a) { return (Words)ZEL_MM(max_epi16)((Register)a, Register{}); }

// Bytes, in most columns: products lose their low eight bits one by one, so that the sum has room in a word. Heavier weights
// carry it beyond the signed words, and it comes out black.
template <class Pixels>
class GrayInWords {
  public:
    using Constants = WordWeights;
    static constexpr int sites = blockPixels;

    ZEL_INLINE explicit GrayInWords(const Constants& k)
        : c0_((UWords)splatWord(k.c[0])), c1_((UWords)splatWord(k.c[1])), c2_((UWords)splatWord(k.c[2])) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = Pixels::load(row.in[0] + block * blockPixels * Pixels::bytes);
        const auto even = [](Bytes v) { return (UWords)v << 8; };
        const auto odd = [](Bytes v) { return (UWords)v & (UWords)splatWord(0xff00); };
        const Words evens = sum(even(t.a), even(t.b), even(t.c)), odds = sum(odd(t.a), odd(t.b), odd(t.c));
        storeVector(row.out[0] + block * blockPixels, evens >> 7 | (odds << 1 & splatWord(0xff00)));
    }

  private:
    // 128 times the result.
    ZEL_INLINE Words sum(UWords x0, UWords x1, UWords x2) const {
        const UWords half = (UWords)splatWord(64);
        return atLeastZero(addSaturated(addSaturated(addSaturated(mulHigh(x0, c0_), mulHigh(x1, c1_)), mulHigh(x2, c2_)), half));
    }

    UWords c0_, c1_, c2_;
};

// Bytes, in the last columns: the sum is exact, rounded to the nearest and cut down to a byte.
template <class Pixels>
class GrayInDwords {
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
    using Constants = Weights<float>;
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
    using Constants = Weights<double>;
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
// results that a word has no room for leak into their neighbours, and that is meant.
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
class GrayOfWords {
  public:
    using Constants = Weights<float>;
    static constexpr int sites = vectorBytes / 2;

    ZEL_INLINE explicit GrayOfWords(const Constants& k) : sum_{splatFloat(k.c[0]), splatFloat(k.c[1]), splatFloat(k.c[2])} {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Layout<Depth16u>::load(row.in[0] + block * sites * Layout<Depth16u>::bytes);
        const Words lifted[3] = {lift(x.a), lift(x.b), lift(x.c)};
        const auto gray = [&](auto part) ZEL_INLINE_LAMBDA {
            const auto channel = [&](int c) ZEL_INLINE_LAMBDA { return Depth16u::toFloats<part>(lifted[c]); };
            const Dwords result = rounded(sum_(channel(0), channel(1), channel(2)));
            return Depth::isSigned ? (Dwords)((UDwords)result - (UDwords)splatDword(32768)) : result;
        };
        storeVector(row.out[0] + block * vectorBytes, Store::words(gray(Constant<0>{}), gray(Constant<1>{})));
    }

  private:
    ZEL_INLINE static Words lift(Words x) { return Depth::isSigned ? x ^ splatWord(0x8000) : x; }

    Sum<Floats> sum_;
};

// Samples of `size` bytes, each `channels` times, or three times and the caller's alpha.
template <int size, int channels>
struct Replicate {
    using Constants = NoConstants;
    static constexpr int sites = vectorBytes / size;
    static constexpr int reach = ZEL_LANES == 4 ? 64 : 16;  // of a shuffle

    struct Places {
        alignas(64) uint8_t of[channels][reach];
        uint64_t alpha;  // the bytes of a vector that are alpha
    };
    static constexpr Places places = [] {
        Places p{};
        for (int v = 0; v < channels; ++v)
            for (int i = 0; i < reach; ++i) {
                const int sample = (v * reach + i) / size;
                const bool isAlpha = sample % 4 == 3 && channels == 4;
                p.of[v][i] = isAlpha ? triples::none : uint8_t(sample / channels * size + i % size);
                if (isAlpha && v == 0) p.alpha |= uint64_t{1} << i;
            }
        return p;
    }();

    ZEL_INLINE explicit Replicate(Constants) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Bytes x = loadBytes(row.in[0] + block * vectorBytes);
        uint8_t* const out = row.out[0] + block * vectorBytes * channels;
        const Bytes alpha = channels == 4 ? splat(row.alpha) : Bytes{};
        unrolled<channels>([&](auto v) ZEL_INLINE_LAMBDA {
#if ZEL_LANES == 4
            const Register pattern = _mm512_load_si512(places.of[v]);
            if constexpr (channels == 4)
                storeVector(out + v * 64, _mm512_mask_permutexvar_epi8((Register)alpha, ~places.alpha, pattern, (Register)x));
            else
                storeVector(out + v * 64, _mm512_permutexvar_epi8(pattern, (Register)x));
#else
            const Bytes repeated = shuffle(x, everyLane(places.of[v]));
            storeLanes(out + v * 16, 16 * channels, channels == 4 ? repeated | alphaOnly(alpha) : repeated);
#endif
        });
    }

  private:
    ZEL_INLINE static Bytes splat(uint32_t element) {
        if constexpr (size == 1) return splatByte(uint8_t(element));
        if constexpr (size == 2) return (Bytes)splatWord(int(element));
        return (Bytes)splatDword(int32_t(element));
    }
#if ZEL_LANES != 4
    ZEL_INLINE static Bytes alphaOnly(Bytes alpha) {
        struct Mask {
            alignas(16) uint8_t bytes[16];
        };
        static constexpr Mask mask = [] {
            Mask m{};
            for (int i = 0; i < 16; ++i) m.bytes[i] = places.alpha >> i & 1 ? 0xff : 0;
            return m;
        }();
        return alpha & everyLane(mask.bytes);
    }
#endif
};

// The even bytes of packed pixels. A site is a pair of them.
struct EvenBytes {
    using Constants = NoConstants;
    static constexpr int sites = vectorBytes / 2;

    ZEL_INLINE explicit EvenBytes(Constants) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const PackOrder x = loadInPackOrder(row.in[0] + block * 2 * vectorBytes);
        storeVector(row.out[0] + block * vectorBytes, packBytes(evenBytes(x.first), evenBytes(x.second)));
    }
};

constexpr Conversion conversion(int bytesFrom, int bytesTo, Kernel block, Kernel tail = {}, int (*blockColumns)(int) = nullptr) {
    return {.site = {1, 1},
            .from = {1, {{0, uint8_t(bytesFrom)}}},
            .to = {1, {{0, uint8_t(bytesTo)}}},
            .block = block,
            .tail = tail,
            .blockColumns = blockColumns};
}

template <class Pixels, int columns>
constexpr Parametric<WordWeights> grayOfBytes{
    conversion(Pixels::bytes, 1, parametric<GrayInWords<Pixels>>, parametric<GrayInDwords<Pixels>>, wholeBlocks<columns>),
    wordWeights};

template <template <class> class Layout, class Depth, class Store>
constexpr Parametric<Weights<float>> grayOfWords{
    conversion(Layout<Depth>::bytes, 2, parametric<GrayOfWords<Layout, Depth, Store>>,
               parametric<GrayOfWords<Layout, Depth, CutToWords>>, wholeBlocks<4>),
    weights<float>};

template <template <class> class Layout>
constexpr Parametric<Weights<float>> grayOfFloats{
    conversion(Layout<Depth32f>::bytes, 4, parametric<GrayInFloats<Layout<Depth32f>>>), weights<float>};

template <template <class> class Layout>
constexpr Parametric<Weights<double>> grayOfDoubles{
    conversion(Layout<Depth64f>::bytes, 8, parametric<GrayInDoubles<Layout<Depth64f>>>), weights<double>};

template <int size, int channels>
constexpr Conversion colourOfGray = conversion(size, size* channels, withoutConstants<Replicate<size, channels>>);

// An odd row ends with a lone luma byte: what would be behind it is not read.
void makePair(uint8_t* site, const uint8_t* pixel, int, bool) { site[0] = pixel[0]; }

constexpr Kernel evenBytesKernel = withoutConstants<EvenBytes>;

}  // namespace

namespace rows {

constexpr auto zeliRGBToGray_8u_C3C1R = grayOfBytes<Interleaved3, 4>;
constexpr auto zeliRGBToGray_8u_AC4C1R = grayOfBytes<Interleaved4, 8>;
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
constexpr auto zeliGrayToRGB_8u_C1C4R = colourOfGray<1, 4>;
constexpr auto zeliGrayToRGB_16u_C1C4R = colourOfGray<2, 4>;
constexpr auto zeliGrayToRGB_32f_C1C4R = colourOfGray<4, 4>;

constexpr Conversion zeliYCbCr422ToGray_8u_C2C1R{.site = {2, 1},
                                                 .from = {1, {{0, 4}}},
                                                 .to = {1, {{0, 2}}},
                                                 .block = evenBytesKernel,
                                                 .oddPixel = {makePair, evenBytesKernel, evenBytesKernel}};

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_gray ~, 1
#define ZEL_GROUP gray
#include "frame/table.h"
