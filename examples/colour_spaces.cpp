#include "colour_spaces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "float_picture.h"
#include "gray_picture.h"
#include "side_by_side.h"

namespace {

// Lightness on a scale of 0 to 1.
float raised(float lightness) { return std::pow(std::max(lightness, 0.0F), 0.6F); }

// Linear light from 0 to 1, of which Lab and LUV are defined. Empty when the conversion failed.
FloatPicture linearLight(const Picture& original, Study& study) {
    const FloatPicture video(original);
    FloatPicture light(original.size);
    if (!study.call("zeliGammaInv_32f_C3R", original.size, [&] { return toLinearLight(video, light); }))
        return FloatPicture(ZelSize{0, 0});
    for (float& sample : light.samples) sample /= FloatPicture::white;
    return light;
}

// Colours beyond those of RGB, which Lab and LUV have, lose what is beyond. Empty when the conversion failed.
Picture videoOf(FloatPicture light, Study& study) {
    for (float& sample : light.samples) sample = std::clamp(sample, 0.0F, 1.0F) * FloatPicture::white;
    FloatPicture video(light.size);
    if (!study.call("zeliGammaFwd_32f_C3R", light.size, [&] { return toVideo(light, video); })) return {};
    return video.bytes();
}

Picture raisedInLab(const FloatPicture& light, Study& study) {
    const ZelSize size = light.size;
    FloatPicture lab(size), result(size);
    if (!study.call("zeliRGBToLab_32f_C3R", size, [&] {
            return zeliRGBToLab_32f_C3R(light.samples.data(), light.step(), lab.samples.data(), lab.step(), size);
        }))
        return {};
    for (std::size_t i = 0; i < lab.samples.size(); i += 3) lab.samples[i] = 100 * raised(lab.samples[i] / 100);
    if (!study.call("zeliLabToRGB_32f_C3R", size, [&] {
            return zeliLabToRGB_32f_C3R(lab.samples.data(), lab.step(), result.samples.data(), result.step(), size);
        }))
        return {};
    return videoOf(std::move(result), study);
}

Picture raisedInHls(const Picture& original, Study& study) {
    const ZelSize size = original.size;
    Picture hls(size), result(size);
    if (!study.call("zeliRGBToHLS_8u_C3R", size, [&] {
            return zeliRGBToHLS_8u_C3R(original.pixels.data(), original.step(), hls.pixels.data(), hls.step(), size);
        }))
        return {};
    for (std::size_t i = 1; i < hls.pixels.size(); i += 3)
        hls.pixels[i] = uint8_t(255 * raised(float(hls.pixels[i]) / 255) + 0.5F);
    if (!study.call("zeliHLSToRGB_8u_C3R", size, [&] {
            return zeliHLSToRGB_8u_C3R(hls.pixels.data(), hls.step(), result.pixels.data(), result.step(), size);
        }))
        return {};
    return result;
}

void raiseLightness(const Picture& original, const FloatPicture& light, Study& study) {
    const Picture inLab = raisedInLab(light, study), inHls = raisedInHls(original, study);
    if (!inLab.pixels.empty() && !inHls.pixels.empty()) study.keep("lighter-lab-hls", beside(inLab, inHls));
}

// By so many sixths of the circle, which is 255 long: 255 is red again as 0 is.
Picture turned(const Picture& hsv, int sixths, Study& study) {
    Picture turnedHsv = hsv, result(hsv.size);
    for (std::size_t i = 0; i < hsv.pixels.size(); i += 3)
        turnedHsv.pixels[i] = uint8_t((hsv.pixels[i] + 255 * sixths / 6) % 255);
    if (!study.call("zeliHSVToRGB_8u_C3R, " + std::to_string(60 * sixths) + " degrees", hsv.size, [&] {
            return zeliHSVToRGB_8u_C3R(turnedHsv.pixels.data(), turnedHsv.step(), result.pixels.data(), result.step(), hsv.size);
        }))
        return {};
    return result;
}

// Two rows of three, each picture half as large.
void turnHue(const Picture& original, Study& study) {
    const Picture half = halved(FloatPicture(original)).bytes();
    Picture hsv(half.size), all;
    if (!study.call("zeliRGBToHSV_8u_C3R", half.size, [&] {
            return zeliRGBToHSV_8u_C3R(half.pixels.data(), half.step(), hsv.pixels.data(), hsv.step(), half.size);
        }))
        return;
    for (const int first : {0, 3}) {
        Picture row;
        for (int sixths = first; sixths < first + 3; ++sixths) {
            Picture picture = turned(hsv, sixths, study);
            if (picture.pixels.empty()) return;
            row = sixths == first ? std::move(picture) : beside(row, picture);
        }
        all = first == 0 ? std::move(row) : above(all, row);
    }
    study.keep("hue-turned", std::move(all));
}

// From gray, which is black, to what one pixel of a hundred exceeds, which is white.
GrayPicture mapOf(const std::vector<float>& chroma, ZelSize size) {
    std::vector<float> sorted = chroma;
    const auto strong = sorted.end() - 1 - std::ptrdiff_t(sorted.size() / 100);
    std::nth_element(sorted.begin(), strong, sorted.end());
    const float white = std::max(*strong, 1.0F);  // a gray picture has nothing to amplify
    GrayPicture map(size);
    std::transform(chroma.begin(), chroma.end(), map.samples.begin(),
                   [white](float c) { return uint8_t(255 * std::min(c / white, 1.0F) + 0.5F); });
    return map;
}

// How colourful each pixel is, beside what the colours are at one lightness.
void mapChroma(const FloatPicture& light, Study& study) {
    constexpr float someLightness = 60;
    const ZelSize size = light.size;
    FloatPicture luv(size), result(size);
    if (!study.call("zeliRGBToLUV_32f_C3R", size, [&] {
            return zeliRGBToLUV_32f_C3R(light.samples.data(), light.step(), luv.samples.data(), luv.step(), size);
        }))
        return;
    std::vector<float> chroma(luv.samples.size() / 3);
    for (std::size_t i = 0; i < chroma.size(); ++i) {
        float* const pixel = &luv.samples[3 * i];
        chroma[i] = std::hypot(pixel[1], pixel[2]);
        pixel[0] = someLightness;
    }
    if (!study.call("zeliLUVToRGB_32f_C3R", size, [&] {
            return zeliLUVToRGB_32f_C3R(luv.samples.data(), luv.step(), result.samples.data(), result.step(), size);
        }))
        return;
    const Picture colours = videoOf(std::move(result), study);
    if (!colours.pixels.empty()) study.keep("chroma-luv", beside(mapOf(chroma, size).asColour(), colours));
}

}  // namespace

Study colourSpaces(const Picture& original) {
    Study study;
    const FloatPicture light = linearLight(original, study);
    if (light.samples.empty()) return study;
    raiseLightness(original, light, study);
    turnHue(original, study);
    mapChroma(light, study);
    return study;
}
