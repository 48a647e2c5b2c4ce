// A picture of one byte a pixel, without gaps between its rows.
#pragma once

#include "picture.h"

struct GrayPicture {
    explicit GrayPicture(ZelSize pictureSize) : size(pictureSize), samples(std::size_t(size.width) * std::size_t(size.height)) {}

    Picture asColour() const {
        Picture picture(size);
        zeliGrayToRGB_8u_C1C3R(samples.data(), size.width, picture.pixels.data(), picture.step(), size);
        return picture;
    }

    ZelSize size;
    std::vector<uint8_t> samples;
};
