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
