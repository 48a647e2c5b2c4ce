// The exports of many depths, a row each: gray, colour twist, gamma, tone mapping.
#include "zelcc/intensity.h"

#include <limits>

#include "model/intensity_gamma.h"
#include "model/intensity_gray.h"
#include "model/intensity_tone.h"
#include "model/intensity_twist.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};

constexpr int all(int width) { return width; }
constexpr int blocksOf4(int width) { return width & ~3; }
constexpr int blocksOf8(int width) { return width & ~7; }

template <Element E, int Channels>
constexpr Layout interleavedOf = pixels(E, Channels);
template <Element E>
constexpr Layout planesOf = threePlanes(E);

constexpr auto u8 = Element::u8, s8 = Element::s8, u16 = Element::u16, s16 = Element::s16, f32 = Element::f32;

constexpr const Layout &gray8u = interleavedOf<u8, 1>, &c3of8u = interleavedOf<u8, 3>, &c4of8u = interleavedOf<u8, 4>;
constexpr const Layout &gray16u = interleavedOf<u16, 1>, &c3of16u = interleavedOf<u16, 3>, &c4of16u = interleavedOf<u16, 4>;
constexpr const Layout &gray16s = interleavedOf<s16, 1>, &c3of16s = interleavedOf<s16, 3>, &c4of16s = interleavedOf<s16, 4>;
constexpr const Layout &gray32f = interleavedOf<f32, 1>, &c3of32f = interleavedOf<f32, 3>, &c4of32f = interleavedOf<f32, 4>;
constexpr const Layout &c3of8s = interleavedOf<s8, 3>, &c4of8s = interleavedOf<s8, 4>;
// Steps of doubles are used as they are.
constexpr Layout gray64f = pixels(Element::f64, 1, 1), c3of64f = pixels(Element::f64, 3, 1), c4of64f = pixels(Element::f64, 4, 1);

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// Common weights; such as carry a sum beyond the sample's range; and such as no
// word and no integer holds.
constexpr Parameters weights[] = {
    {},
    withCoefficients({0.299, 0.587, 0.114}),
    withCoefficients({0.2126, 0.7152, 0.0722}),
    withCoefficients({0.25, 0.5, 0.25}),
    withCoefficients({1, 1, 1}),
    withCoefficients({2, 0.7, -0.5}),
    withCoefficients({-1.3, 0.1, -3.7}),
    withCoefficients({0.5, 70000.25, 1e10}),
    withCoefficients({notANumber, 0.9, 0.9}),
};
constexpr std::span<const Parameters> givenWeights = std::span(weights).subspan(1);

constexpr Parameters alphas[] = {
    {.numbers = {0.25f}, .word = 0x1234},
    {.numbers = {0}, .word = 0},
    {.numbers = {-infinity}, .word = 0xff80},
};

// Rows of three factors and an offset; all four are factors where four channels are transformed.
constexpr Parameters matrices[] = {
    withCoefficients({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}),
    withCoefficients({1, 0, 0, 0.5, 0, 1, 0, -0.5, 0.5, 0, 0.5, 0, 0.5, 0.5, 0, 0}),
    withCoefficients({0.393, 0.769, 0.189, 0, 0.349, 0.686, 0.168, 0, 0.272, 0.534, 0.131, 0, 0.1, 0.2, 0.3, 0.4}),
    withCoefficients({1.7, -0.6, -0.1, 3.3, -0.3, 1.4, -0.1, -7.7, -0.3, -0.6, 1.9, 100, 0.3, -0.1, 0.7, -1.1}),
    withCoefficients({-1, 0, 0, 255, 0, -1, 0, 65535, 0, 0, -1, -1, 0, 0, -1, 1}),
    withCoefficients({0, 0, 0, 40000, 0, 0, 0, -1000, 0, 0, 0, 1000, 0, 0, 0, 1}),
    withCoefficients({5000, -3000, 1000, 1e8, -5000, 3000, -2000, -1e8, 0, 0, 9000, -3e8, 0, 0, 70, 1}),
    withCoefficients({1e8, 1, 1, 0, -1e8, 3, 7, 1, 16777216, 1, -16777216, 0.3, 1, -1, 1, 1e7}),
    withCoefficients({3e38, 3e38, 3e38, -3e38, -3e38, 3e38, 0, 3e38, 0, 0, infinity, -infinity, 1e-38, 1e-39, 0, 1e-40}),
    withCoefficients({notANumber, 0, 0, 0, 0, notANumber, 1, 1, 1, 1, 1, notANumber, 0, 1, 0, notANumber}),
};

constexpr Parameters ranges[] = {
    {.numbers = {0, 1}},
    {.numbers = {0, 255}},
    {.numbers = {-0.5f, 1.5f}},
    {.numbers = {0.001f, 0.0011f}},
    {.numbers = {-1e-40f, 1e-40f}},
    {.numbers = {0, infinity}},
    {.numbers = {notANumber, 1}},
};

constexpr Export toGray(const char* name, Entry entry, const Layout& source, const Layout& destination, Blocks blocks,
                        Model model) {
    Export e{name, entry, source, destination, everyPixel, blocks, model};
    e.isRowwise = true;
    if (entry.takesCoefficients) e.parameters = source.element == Element::f64 ? givenWeights : weights;
    return e;
}

constexpr Export fromGray(const char* name, Entry entry, const Layout& source, const Layout& destination, Model model) {
    Export e{name, entry, source, destination, everyPixel, all, model};
    e.isRowwise = true;
    e.parameters = alphas;
    return e;
}

constexpr Export inOneLayout(const char* name, Entry entry, const Layout& layout, Model model) {
    Export e{name, entry, layout, layout, everyPixel, all, model, Checks::planesBeforeSize};
    e.isRowwise = true;
    e.checksSteps = true;
    return e;
}

constexpr Export twisting(const char* name, Entry entry, const Layout& layout, Model model) {
    Export e = inOneLayout(name, entry, layout, model);
    e.parameters = matrices;
    e.needsCoefficients = true;
    return e;
}

constexpr Export curving(const char* name, Entry entry, const Layout& layout, Model model) {
    Export e = inOneLayout(name, entry, layout, model);
    if (layout.element == Element::f32) {
        e.parameters = ranges;
        e.contentStatus = statusOfRange;
    }
    return e;
}

constexpr Export toneMapping(const char* name, Entry entry, Model model, ContentStatus status, Peculiarity peculiarity) {
    Export e{name, entry, gray32f, gray8u, everyPixel, all, model, Checks::pointersThenSize, peculiarity};
    e.isRowwise = true;
    e.contentStatus = status;
    return e;
}

constexpr Export exports[] = {
    // Gray.
    toGray(NAMED(zeliRGBToGray_8u_C3C1R), c3of8u, gray8u, blocksOf4, grayOfBytes),
    toGray(NAMED(zeliRGBToGray_8u_AC4C1R), c4of8u, gray8u, blocksOf8, grayOfBytes),
    toGray(NAMED(zeliColorToGray_8u_C3C1R), c3of8u, gray8u, blocksOf4, grayOfBytes),
    toGray(NAMED(zeliColorToGray_8u_AC4C1R), c4of8u, gray8u, blocksOf8, grayOfBytes),
    toGray(NAMED(zeliRGBToGray_16s_C3C1R), c3of16s, gray16s, blocksOf4, grayOfSignedWords),
    toGray(NAMED(zeliRGBToGray_16s_AC4C1R), c4of16s, gray16s, blocksOf4, grayOfSignedWords),
    toGray(NAMED(zeliColorToGray_16s_C3C1R), c3of16s, gray16s, blocksOf4, grayOfSignedWords),
    toGray(NAMED(zeliColorToGray_16s_AC4C1R), c4of16s, gray16s, blocksOf4, grayOfSignedWords),
    toGray(NAMED(zeliRGBToGray_16u_C3C1R), c3of16u, gray16u, blocksOf4, grayOfWords),
    toGray(NAMED(zeliRGBToGray_16u_AC4C1R), c4of16u, gray16u, blocksOf4, grayOfWords),
    toGray(NAMED(zeliColorToGray_16u_C3C1R), c3of16u, gray16u, blocksOf4, grayOfWords),
    toGray(NAMED(zeliColorToGray_16u_AC4C1R), c4of16u, gray16u, blocksOf4, grayOfWords),
    toGray(NAMED(zeliRGBToGray_32f_C3C1R), c3of32f, gray32f, all, grayOfNumbers<float>),
    toGray(NAMED(zeliRGBToGray_32f_AC4C1R), c4of32f, gray32f, all, grayOfNumbers<float>),
    toGray(NAMED(zeliColorToGray_32f_C3C1R), c3of32f, gray32f, all, grayOfNumbers<float>),
    toGray(NAMED(zeliColorToGray_32f_AC4C1R), c4of32f, gray32f, all, grayOfNumbers<float>),
    toGray(NAMED(zeliColorToGray_64f_C3C1R), c3of64f, gray64f, all, grayOfNumbers<double>),
    toGray(NAMED(zeliColorToGray_64f_AC4C1R), c4of64f, gray64f, all, grayOfNumbers<double>),
    toGray(NAMED(zeliYCbCr422ToGray_8u_C2C1R), yuyv, gray8u, all, lumaOnly),

    fromGray(NAMED(zeliGrayToRGB_8u_C1C3R), gray8u, c3of8u, spreadGray<uint8_t, 3>),
    fromGray(NAMED(zeliGrayToRGB_8u_C1C4R), gray8u, c4of8u, spreadGray<uint8_t, 4>),
    fromGray(NAMED(zeliGrayToRGB_16u_C1C3R), gray16u, c3of16u, spreadGray<uint16_t, 3>),
    fromGray(NAMED(zeliGrayToRGB_16u_C1C4R), gray16u, c4of16u, spreadGray<uint16_t, 4>),
    fromGray(NAMED(zeliGrayToRGB_32f_C1C3R), gray32f, c3of32f, spreadGray<float, 3>),
    fromGray(NAMED(zeliGrayToRGB_32f_C1C4R), gray32f, c4of32f, spreadGray<float, 4>),

    // Colour twist.
    twisting(NAMED(zeliColorTwist32f_8u_C3R), c3of8u, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8u_C3IR), c3of8u, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8u_AC4R), c4of8u, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8u_AC4IR), c4of8u, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8u_P3R), planesOf<u8>, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8u_IP3R), planesOf<u8>, twistToNearest<uint8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_C3R), c3of8s, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_C3IR), c3of8s, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_AC4R), c4of8s, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_AC4IR), c4of8s, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_P3R), planesOf<s8>, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_8s_IP3R), planesOf<s8>, twistToNearest<int8_t>),
    twisting(NAMED(zeliColorTwist32f_16u_C3R), c3of16u, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16u_C3IR), c3of16u, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16u_AC4R), c4of16u, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16u_AC4IR), c4of16u, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16u_P3R), planesOf<u16>, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16u_IP3R), planesOf<u16>, twistToNearest<uint16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_C3R), c3of16s, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_C3IR), c3of16s, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_AC4R), c4of16s, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_AC4IR), c4of16s, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_P3R), planesOf<s16>, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist32f_16s_IP3R), planesOf<s16>, twistToNearest<int16_t>),
    twisting(NAMED(zeliColorTwist_32f_C3R), c3of32f, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_C3IR), c3of32f, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_AC4R), c4of32f, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_AC4IR), c4of32f, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_P3R), planesOf<f32>, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_IP3R), planesOf<f32>, twist<float>),
    twisting(NAMED(zeliColorTwist_32f_C4R), c4of32f, transformFour),

    // Gamma.
    curving(NAMED(zeliGammaFwd_8u_C3R), c3of8u, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_8u_C3IR), c3of8u, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_8u_AC4R), c4of8u, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_8u_AC4IR), c4of8u, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_8u_P3R), planesOf<u8>, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_8u_IP3R), planesOf<u8>, applyCurve<uint8_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_C3R), c3of16u, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_C3IR), c3of16u, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_AC4R), c4of16u, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_AC4IR), c4of16u, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_P3R), planesOf<u16>, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_16u_IP3R), planesOf<u16>, applyCurve<uint16_t, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_C3R), c3of32f, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_C3IR), c3of32f, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_AC4R), c4of32f, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_AC4IR), c4of32f, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_P3R), planesOf<f32>, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaFwd_32f_IP3R), planesOf<f32>, applyCurve<float, ForwardCurve>),
    curving(NAMED(zeliGammaInv_8u_C3R), c3of8u, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_8u_C3IR), c3of8u, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_8u_AC4R), c4of8u, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_8u_AC4IR), c4of8u, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_8u_P3R), planesOf<u8>, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_8u_IP3R), planesOf<u8>, applyCurve<uint8_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_C3R), c3of16u, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_C3IR), c3of16u, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_AC4R), c4of16u, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_AC4IR), c4of16u, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_P3R), planesOf<u16>, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_16u_IP3R), planesOf<u16>, applyCurve<uint16_t, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_C3R), c3of32f, applyCurve<float, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_C3IR), c3of32f, applyCurve<float, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_AC4R), c4of32f, applyCurve<float, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_AC4IR), c4of32f, applyCurve<float, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_P3R), planesOf<f32>, applyCurve<float, InverseCurve>),
    curving(NAMED(zeliGammaInv_32f_IP3R), planesOf<f32>, applyCurve<float, InverseCurve>),

    // Tone mapping.
    toneMapping(NAMED(zeliToneMapLinear_32f8u_C1R), toneMapByMaximum, statusOfMaximum, Peculiarity::none),
    toneMapping(NAMED(zeliToneMapMean_32f8u_C1R), toneMapByMean, statusOfMean, Peculiarity::differsByAddress),
};

}  // namespace

std::span<const Export> intensityExports() { return exports; }

}  // namespace model
