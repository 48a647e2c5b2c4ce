#include "exposures.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "float_picture.h"
#include "gray_picture.h"
#include "side_by_side.h"

namespace {

// The darkest exposure, a quarter of the light, clips nothing.
constexpr std::array<int, 3> stops{-2, 0, 2};

// What a camera of 8 bits makes of a scene. Empty when the conversion failed.
Picture exposed(const FloatPicture& scene, int stop, Study& study) {
    FloatPicture light = scene, video(scene.size);
    for (float& sample : light.samples) sample = std::ldexp(sample, stop);
    if (!study.call("zeliGammaFwd_32f_C3R, " + std::to_string(stop) + " stops", scene.size,
                    [&] { return toVideo(light, video); }))
        return {};
    return video.bytes();
}

// The scene as an average of what its exposures tell of it, each sample the more trusted the farther it is from black and white.
class Merger {
  public:
    explicit Merger(ZelSize size) : sum_(size), weights_(sum_.samples.size()) {}

    bool add(const Picture& exposure, int stop, Study& study) {
        const FloatPicture video(exposure);
        FloatPicture light(exposure.size);
        if (!study.call("zeliGammaInv_32f_C3R, " + std::to_string(stop) + " stops", exposure.size,
                        [&] { return toLinearLight(video, light); }))
            return false;
        for (std::size_t i = 0; i < weights_.size(); ++i) {
            // White may stand for any light above it and counts nothing; black in all exposures must remain black.
            const float weight = std::min(video.samples[i] + 1, FloatPicture::white - video.samples[i]);
            sum_.samples[i] += weight * std::ldexp(light.samples[i], -stop);
            weights_[i] += weight;
        }
        return true;
    }

    FloatPicture scene() const {
        FloatPicture average(sum_.size);
        for (std::size_t i = 0; i < weights_.size(); ++i) average.samples[i] = sum_.samples[i] / weights_[i];
        return average;
    }

  private:
    FloatPicture sum_;
    std::vector<float> weights_;
};

// Maps the luma of the merged picture, which the curve has brought to where steps look even.
void toneMap(const FloatPicture& video, Study& study) {
    const ZelSize size = video.size;
    const int32_t step = size.width * int32_t(sizeof(float));
    std::vector<float> luma(std::size_t(size.width) * std::size_t(size.height));
    if (!study.call("zeliRGBToGray_32f_C3C1R", size,
                    [&] { return zeliRGBToGray_32f_C3C1R(video.samples.data(), video.step(), luma.data(), step, size); }))
        return;
    GrayPicture byMaximum(size), byMean(size);
    const bool isMapped = study.call("zeliToneMapLinear_32f8u_C1R", size, [&] {
        return zeliToneMapLinear_32f8u_C1R(luma.data(), step, byMaximum.samples.data(), size.width, size);
    }) && study.call("zeliToneMapMean_32f8u_C1R", size, [&] {
        return zeliToneMapMean_32f8u_C1R(luma.data(), step, byMean.samples.data(), size.width, size);
    });
    if (isMapped) study.keep("tone-mapped", beside(byMaximum.asColour(), byMean.asColour()));
}

}  // namespace

Study exposures(const Picture& original) {
    Study study;
    const FloatPicture photograph(original);
    FloatPicture scene(original.size);
    if (!study.call("zeliGammaInv_32f_C3R, scene", original.size, [&] { return toLinearLight(photograph, scene); })) return study;

    Picture series;
    Merger merger(original.size);
    for (const int stop : stops) {
        const Picture exposure = exposed(scene, stop, study);
        if (exposure.pixels.empty() || !merger.add(exposure, stop, study)) return study;
        series = series.pixels.empty() ? exposure : beside(series, exposure);
    }
    study.keep("exposures", std::move(series));

    const FloatPicture merged = merger.scene();
    FloatPicture video(original.size);
    if (!study.call("zeliGammaFwd_32f_C3R, merged", original.size, [&] { return toVideo(merged, video); })) return study;
    study.conversions.back().error = difference(original, video.bytes());
    toneMap(video, study);
    return study;
}
