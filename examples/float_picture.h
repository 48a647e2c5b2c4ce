// A picture of floats, R G B without gaps, on the scale of bytes: black is 0 and white is 255, and neither is a bound.
#pragma once

#include "picture.h"

struct FloatPicture {
    explicit FloatPicture(ZelSize pictureSize)
        : size(pictureSize), samples(std::size_t(3) * std::size_t(size.width) * std::size_t(size.height)) {}
    explicit FloatPicture(const Picture& picture) : size(picture.size), samples(picture.pixels.begin(), picture.pixels.end()) {}

    static constexpr float black = 0, white = 255;

    int32_t step() const { return 3 * size.width * int32_t(sizeof(float)); }

    // Bounded to what bytes hold, and rounded.
    Picture bytes() const;

    ZelSize size;
    std::vector<float> samples;
};

// By the transfer curve; both pictures have the same size.
ZelStatus toLinearLight(const FloatPicture& video, FloatPicture& light);
ZelStatus toVideo(const FloatPicture& light, FloatPicture& video);

// Every pixel the average of four. Where a side is odd, the last pixel stands for two.
FloatPicture halved(const FloatPicture& picture);
