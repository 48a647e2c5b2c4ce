// RGB to and from CIE XYZ, white D65, by a matrix on the samples as they are. Bytes are converted in fixed point, the leading
// columns with 15 or 13 fractional bits and the others with 16: a colour may come out different by one at two places of a row.
// Meant: with one scale for both, the ends of rows would change.
#include "colorimetric/byte_pixels.h"
#include "colorimetric/float_pixels.h"
#include "simd/pixel_dwords.h"
#include "zelcc/colorimetric.h"

namespace zel::ZEL_LEVEL {
namespace {

// A row of the matrix.
struct FloatForm {
    float a, b, c;
};

// In this order, every operation rounded by itself.
ZEL_INLINE Floats sumOf(const FloatForm& k, const FloatPixel& p) {
    return (splatFloat(k.a) * p.a + splatFloat(k.b) * p.b) + splatFloat(k.c) * p.c;
}

constexpr FloatForm x{0.412453f, 0.35758f, 0.180423f}, y{0.212671f, 0.71516f, 0.072169f}, z{0.019334f, 0.119193f, 0.950227f};
constexpr FloatForm red{3.240479f, -1.53715f, -0.498535f}, green{-0.969256f, 1.875991f, 0.041556f},
    blue{0.055648f, -0.204043f, 1.057311f};

struct ToXyz {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) { return {sumOf(x, p), sumOf(y, p), sumOf(z, p)}; }
};
struct FromXyz {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) { return {sumOf(red, p), sumOf(green, p), sumOf(blue, p)}; }
};

// Of floats, Z alone is limited on the way there and every colour on the way back. Meant: X and Y above 1 would be
// lost if all were limited.
struct ToXyzOfFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) { return {sumOf(x, p), sumOf(y, p), limitedTo1(sumOf(z, p))}; }
};
struct FromXyzOfFloats {
    ZEL_INLINE static FloatPixel of(const FloatPixel& p) {
        return {limitedTo1(sumOf(red, p)), limitedTo1(sumOf(green, p)), limitedTo1(sumOf(blue, p))};
    }
};

// Bytes: nothing is added before the shift, so results are cut off.
struct FixedMatrix {
    Form rows[3];
};
constexpr FixedMatrix toXyz15{{{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}}},
    toXyz16{{{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}}},
    fromXyz13{{{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}}},
    fromXyz16{{{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}}};

// Sums whose results are their high words. The last bit of that is in the coefficients if they are words then, too. A product
// with the part of a coefficient beyond signed words is whole in the high word.
template <Form form, int shift>
ZEL_INLINE Dwords highSums(const ChannelPairs& p) {
    static_assert(shift == 15 || shift == 16);
    constexpr auto doubledIsWord = [](int32_t k) { return lowPart(2 * k) == 2 * k; };
    constexpr bool doublesCoefficients = shift == 15 && doubledIsWord(form.a) && doubledIsWord(form.b) && doubledIsWord(form.c);
    constexpr auto part = [](int32_t k) { return lowPart(doublesCoefficients ? 2 * k : k); };
    Dwords sum = mulAddPairs(p.ac, splatWords(part(form.a), part(form.c))) + mulAddPairs(p.b, splatWords(part(form.b), 0));
    if constexpr (highPart(form.a) != 0 || highPart(form.b) != 0 || highPart(form.c) != 0)
        sum += (mulAddPairs(p.ac, splatWords(highPart(form.a), highPart(form.c))) +
                mulAddPairs(p.b, splatWords(highPart(form.b), 0)))
               << 16;
    return shift == 16 || doublesCoefficients ? sum : sum + sum;
}

template <const FixedMatrix& matrix, int shift>
struct Fixed {
    ZEL_INLINE static Bytes of(ChannelPairs p) {
        constexpr int ofSamples = shift < 15 ? 16 - shift : 0;
        p = {p.ac << ofSamples, p.b << ofSamples};
        return packHighWords(highSums<matrix.rows[0], shift + ofSamples>(p), highSums<matrix.rows[1], shift + ofSamples>(p),
                             highSums<matrix.rows[2], shift + ofSamples>(p));
    }
};

// Rule::of makes a part of the results from one of the pixels.
template <class Pixels, class Rule>
struct MatrixKernel {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const size_t at = block * blockPixels * Pixels::bytes;
        Bytes parts[4];
        unrolled<4>([&](auto i) ZEL_INLINE_LAMBDA { parts[i] = Rule::of(Pixels::template load<i>(row.in[0] + at)); });
        Pixels::store(row.out[0] + at, parts);
    }
};

template <class Block, class Tail>
constexpr auto matrix3 = bytePixels3<MatrixKernel<PixelDwords3, Block>, MatrixKernel<PixelDwords3, Tail>>;
template <class Block, class Tail>
constexpr auto matrix4 = bytePixels4<MatrixKernel<PixelDwords4, Block>, MatrixKernel<PixelDwords4, Tail>>;

using Words16u = WordSamples<false, CutOff>;
using Words16s = WordSamples<true, CutOff>;

}  // namespace

namespace rows {

constexpr auto zeliRGBToXYZ_8u_C3R = matrix3<Fixed<toXyz15, 15>, Fixed<toXyz16, 16>>;
constexpr auto zeliRGBToXYZ_8u_AC4R = matrix4<Fixed<toXyz15, 15>, Fixed<toXyz16, 16>>;
constexpr auto zeliRGBToXYZ_16u_C3R = floatPixels<Words16u, ThreeSamples, ToXyz>;
constexpr auto zeliRGBToXYZ_16u_AC4R = floatPixels<Words16u, FourSamples, ToXyz>;
constexpr auto zeliRGBToXYZ_16s_C3R = floatPixels<Words16s, ThreeSamples, ToXyz>;
constexpr auto zeliRGBToXYZ_16s_AC4R = floatPixels<Words16s, FourSamples, ToXyz>;
constexpr auto zeliRGBToXYZ_32f_C3R = floatPixels<FloatSamples, ThreeSamples, ToXyzOfFloats>;
constexpr auto zeliRGBToXYZ_32f_AC4R = floatPixels<FloatSamples, FourSamples, ToXyzOfFloats>;

constexpr auto zeliXYZToRGB_8u_C3R = matrix3<Fixed<fromXyz13, 13>, Fixed<fromXyz16, 16>>;
constexpr auto zeliXYZToRGB_8u_AC4R = matrix4<Fixed<fromXyz13, 13>, Fixed<fromXyz16, 16>>;
constexpr auto zeliXYZToRGB_16u_C3R = floatPixels<Words16u, ThreeSamples, FromXyz>;
constexpr auto zeliXYZToRGB_16u_AC4R = floatPixels<Words16u, FourSamples, FromXyz>;
constexpr auto zeliXYZToRGB_16s_C3R = floatPixels<Words16s, ThreeSamples, FromXyz>;
constexpr auto zeliXYZToRGB_16s_AC4R = floatPixels<Words16s, FourSamples, FromXyz>;
constexpr auto zeliXYZToRGB_32f_C3R = floatPixels<FloatSamples, ThreeSamples, FromXyzOfFloats>;
constexpr auto zeliXYZToRGB_32f_AC4R = floatPixels<FloatSamples, FourSamples, FromXyzOfFloats>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_xyz ~, 1
#define ZEL_GROUP xyz
#include "frame/table.h"
