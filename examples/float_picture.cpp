#include "float_picture.h"

#include <algorithm>

Picture FloatPicture::bytes() const {
    Picture picture(size);
    std::transform(samples.begin(), samples.end(), picture.pixels.begin(),
                   [](float sample) { return uint8_t(std::clamp(sample, black, white) + 0.5F); });
    return picture;
}

ZelStatus toLinearLight(const FloatPicture& video, FloatPicture& light) {
    return zeliGammaInv_32f_C3R(video.samples.data(), video.step(), light.samples.data(), light.step(), video.size,
                                FloatPicture::black, FloatPicture::white);
}

ZelStatus toVideo(const FloatPicture& light, FloatPicture& video) {
    return zeliGammaFwd_32f_C3R(light.samples.data(), light.step(), video.samples.data(), video.step(), light.size,
                                FloatPicture::black, FloatPicture::white);
}

FloatPicture halved(const FloatPicture& picture) {
    FloatPicture half(ZelSize{(picture.size.width + 1) / 2, (picture.size.height + 1) / 2});
    const auto row = [&](int32_t y) {
        return picture.samples.data() +
               std::size_t(3) * std::size_t(picture.size.width) * std::size_t(std::min(y, picture.size.height - 1));
    };
    float* to = half.samples.data();
    for (int32_t y = 0; y < half.size.height; ++y) {
        const float* const upper = row(2 * y);
        const float* const lower = row(2 * y + 1);
        for (int32_t x = 0; x < half.size.width; ++x) {
            const int32_t left = 3 * (2 * x), right = 3 * std::min(2 * x + 1, picture.size.width - 1);
            for (int32_t i = 0; i < 3; ++i) *to++ = (upper[left + i] + upper[right + i] + lower[left + i] + lower[right + i]) / 4;
        }
    }
    return half;
}
