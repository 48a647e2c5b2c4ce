// RGB to and from Photo YCC: luma, and the differences of blue and red from it, scaled and offset so that a wide gamut fits the
// samples. Each depth has an arithmetic of its own, and some have one for the leading columns and one for the others. Meant:
// with one arithmetic, results would change by one.
#include "colorimetric/byte_pixels.h"
#include "colorimetric/float_pixels.h"
#include "zelcc/colorimetric.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr float lumaGain = 0.7132668f, c1Gain = 0.4368627f;
constexpr float lumaBack = 1.3584f, c1Back = 2.2179f, c2Back = 1.8215f;

ZEL_INLINE Floats splat(float x) { return splatFloat(x); }
ZEL_INLINE Floats weighted(const FloatPixel& p) { return (splat(0.299f) * p.a + splat(0.587f) * p.b) + splat(0.114f) * p.c; }

// Floats. Nothing is limited on the way there.
struct ToYccOfFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats luma = weighted(p);
        return {splat(lumaGain) * luma, (p.c - luma) * splat(c1Gain) + splat(0.6117647f),
                (p.a - luma) * splat(0.53192f) + splat(0.5372549f)};
    }
};
struct FromYccOfFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats c1 = (p.b - splat(0.6117647f)) * splat(c1Back), c2 = (p.c - splat(0.5372549f)) * splat(c2Back);
        const Floats y = p.a * splat(lumaBack);
        return {limitedTo1(y + c2), limitedTo1((y - splat(0.194f) * c1) - c2 * splat(0.509f)), limitedTo1(y + c1)};
    }
};

// Signed words, as unsigned ones. Leading columns are rounded to the nearest, the others by a term that is cut off.
template <int c1Offset2, int c2Offset2>
struct ToYccOfSigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        constexpr bool rounds = c1Offset2 % 2 != 0;
        const Floats luma = weighted(p), y = splat(lumaGain) * luma;
        return {rounds ? y + splat(0.49999f) : y, (p.c - luma) * splat(c1Gain) + splat(c1Offset2 / 2.0f),
                (p.a - luma) * splat(0.5319216f) + splat(c2Offset2 / 2.0f)};
    }
};
using ToYccNearest = ToYccOfSigned<2 * 40092, 2 * 35209>;
using ToYccCutOff = ToYccOfSigned<2 * 40092 + 1, 2 * 35209 + 1>;

// No half is added here, but in unsigned words there is: these two differ. Meant: with a half in both, some
// results would rise by one.
struct FromYccOfSigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats c1 = (p.b - splat(40092)) * splat(c1Back), c2 = (p.c - splat(35209)) * splat(c2Back);
        const Floats y = p.a * splat(lumaBack);
        return {y + c2, (y - c1 * splat(0.194f)) - c2 * splat(0.509f), y + c1};
    }
};

// Unsigned words, with gains and weights merged.
struct ToYccOfUnsigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        return {((splat(0.213267f) * p.a + splat(0.49999f)) + splat(0.418688f) * p.b) + splat(0.0813124f) * p.c,
                ((splat(-0.130621f) * p.a + splat(40092.5f)) - splat(0.256437f) * p.b) + splat(0.387058f) * p.c,
                ((splat(0.372876f) * p.a + splat(35209.5f)) - splat(0.312237f) * p.b) - splat(0.0606389f) * p.c};
    }
};
struct FromYccOfUnsigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        const Floats y = p.a * splat(lumaBack) + splat(0.49999f), c1 = p.b - splat(40092), c2 = p.c - splat(35209);
        return {splat(c2Back) * c2 + y, (y - splat(0.4302726f) * c1) - c2 * splat(0.92714345f), y + c1 * splat(c1Back)};
    }
};

// Bytes in the leading columns: words, each product cut off by itself. With L the sum of the products (256 x k) >> 16,
//   Y = (L 2921 >> 16) >> 2, C1 = (((64 B - L) 1789 >> 16) + 624) >> 2, C2 = (((64 R - L) 2178 >> 16) + 548) >> 2
struct ToYccInWords {
    ZEL_INLINE static WordPixel of(const LiftedHalf& p) {
        const auto product = [](UWords v, int k) { return (Words)mulHigh(v, (UWords)splatWord(k)); };
        const Words luma = product(p.a, 4898) + product(p.b, 9617) + product(p.c, 1867);
        const auto difference = [&](UWords v, int gain, int offset) {
            return (mulHigh((Words)(v >> 2) - luma, splatWord(gain)) + splatWord(offset)) >> 2;
        };
        return {mulHigh(luma, splatWord(2921)) >> 2, difference(p.c, 1789, 624), difference(p.a, 2178, 548)};
    }
};

// With m(v, k) = 128 v k >> 16, yy = 5563 Y >> 8, c1 = m(C1 - 156, 18168), c2 = m(C2 - 137, 14921):
//   R = (yy + c2) >> 4, B = (yy + c1) >> 4, G = ((yy >> 1) + (-16679 c2 >> 16) + (-6357 c1 >> 16)) >> 3
struct FromYccInWords {
    ZEL_INLINE static WordPixel of(const LiftedHalf& p) {
        const auto chroma = [](UWords v, int middle, int k) {
            return mulHigh((Words)(v >> 1) - splatWord(middle << 7), splatWord(k));
        };
        const Words yy = (Words)mulHigh(p.a, (UWords)splatWord(5563));
        const Words c1 = chroma(p.b, 156, 18168), c2 = chroma(p.c, 137, 14921);
        return {(yy + c2) >> 4, ((yy >> 1) + mulHigh(c2, splatWord(-16679)) + mulHigh(c1, splatWord(-6357))) >> 3,
                (yy + c1) >> 4};
    }
};

// Bytes in the other columns: exact sums, of which ten bits are cut off before the gain. The differences lie in -198 to -2, and
// are stored as bytes, 256 higher.
ZEL_INLINE WordPixel samplesOf(const LiftedHalf& p) { return {(Words)(p.a >> 8), (Words)(p.b >> 8), (Words)(p.c >> 8)}; }

constexpr Form luma14{4898, 9617, 1867}, blueLess{-4898, -9617, 16384 - 1867}, redLess{16384 - 4898, -9617, -1867};
struct ToYccInDwords {
    ZEL_INLINE static WordPixel of(const LiftedHalf& lifted) {
        const WordPairs pairs(samplesOf(lifted));
        const auto gained = [](Words v, int gain) { return mulHigh(v, splatWord(gain)); };
        return {gained(sumOf<luma14, 10>(pairs), 2921), gained(sumOf<blueLess, 10>(pairs), 1789) + splatWord(256 - 100),
                gained(sumOf<redLess, 10>(pairs), 2178) + splatWord(256 - 119)};
    }
};

// With a = 7460 C2 - 1022020, b = 9084 C1 - 1417104, y = 5564 Y:
//   R = (a + y) >> 12, B = (y + b) >> 12, G = (-2084 (a >> 8) - 794 (b >> 8) + 16 y) >> 16
struct FromYccInDwords {
    ZEL_INLINE static WordPixel of(const LiftedHalf& lifted) {
        const WordPixel p = samplesOf(lifted);
        const auto outer = [&](Words chroma, int k, int bias) {
            const Words products = splatWords(5564, k);
            const auto half = [&](Words pairs) { return (mulAddPairs(pairs, products) + splatDword(bias)) >> 12; };
            return packWords(half(interleaveLow(p.a, chroma)), half(interleaveHigh(p.a, chroma)));
        };
        const auto eighth = [](Words chroma, int k, int bias) {
            const auto half = [&](Words pairs) { return (mulAddPairs(pairs, splatWords(k, 0)) + splatDword(bias)) >> 8; };
            return packWords(half(interleaveLow(chroma, Words{})), half(interleaveHigh(chroma, Words{})));
        };
        // 16 y is 89024 Y, of which 65536 Y is whole after the shift.
        const Words a = eighth(p.c, 7460, -1022020), b = eighth(p.b, 9084, -1417104);
        const auto half = [](Words ab, Words y0) {
            return (mulAddPairs(ab, splatWords(-2084, -794)) + mulAddPairs(y0, splatWords(89024 - 65536, 0))) >> 16;
        };
        const Words green = packWords(half(interleaveLow(a, b), interleaveLow(p.a, Words{})),
                                      half(interleaveHigh(a, b), interleaveHigh(p.a, Words{})));
        return {outer(p.c, 7460, -1022020), green + p.a, outer(p.b, 9084, -1417104)};
    }
};

using Words16u = WordSamples<false, CutOff>;
using Words16s = WordSamples<true, CutOff>;

template <template <class> class Pixels>
constexpr Conversion toYccOfSigned = [] {
    Conversion c = floatPixels<WordSamples<true, ToNearest>, Pixels, ToYccNearest>;
    c.tail = floatPixels<Words16s, Pixels, ToYccCutOff>.block;
    c.blockColumns = wholeBlocks<4>;
    return c;
}();

}  // namespace

namespace rows {

constexpr auto zeliRGBToYCC_8u_C3R = bytePixels3<WordKernel3<ToYccInWords>, WordKernel3<ToYccInDwords>>;
constexpr auto zeliRGBToYCC_8u_AC4R = bytePixels4<WordKernel4<ToYccInWords>, WordKernel4<ToYccInDwords>>;
constexpr auto zeliRGBToYCC_16u_C3R = floatPixels<Words16u, ThreeSamples, ToYccOfUnsigned>;
constexpr auto zeliRGBToYCC_16u_AC4R = floatPixels<Words16u, FourSamples, ToYccOfUnsigned>;
constexpr auto zeliRGBToYCC_16s_C3R = toYccOfSigned<ThreeSamples>;
constexpr auto zeliRGBToYCC_16s_AC4R = toYccOfSigned<FourSamples>;
constexpr auto zeliRGBToYCC_32f_C3R = floatPixels<FloatSamples, ThreeSamples, ToYccOfFloats>;
constexpr auto zeliRGBToYCC_32f_AC4R = floatPixels<FloatSamples, FourSamples, ToYccOfFloats>;

constexpr auto zeliYCCToRGB_8u_C3R = bytePixels3<WordKernel3<FromYccInWords>, WordKernel3<FromYccInDwords>>;
constexpr auto zeliYCCToRGB_8u_AC4R = bytePixels4<WordKernel4<FromYccInWords>, WordKernel4<FromYccInDwords>>;
constexpr auto zeliYCCToRGB_16u_C3R = floatPixels<Words16u, ThreeSamples, FromYccOfUnsigned>;
constexpr auto zeliYCCToRGB_16u_AC4R = floatPixels<Words16u, FourSamples, FromYccOfUnsigned>;
constexpr auto zeliYCCToRGB_16s_C3R = floatPixels<Words16s, ThreeSamples, FromYccOfSigned>;
constexpr auto zeliYCCToRGB_16s_AC4R = floatPixels<Words16s, FourSamples, FromYccOfSigned>;
constexpr auto zeliYCCToRGB_32f_C3R = floatPixels<FloatSamples, ThreeSamples, FromYccOfFloats>;
constexpr auto zeliYCCToRGB_32f_AC4R = floatPixels<FloatSamples, FourSamples, FromYccOfFloats>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_ycc ~, 1
#define ZEL_GROUP ycc
#include "frame/table.h"
