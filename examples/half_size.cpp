#include "half_size.h"

#include <algorithm>

#include "float_picture.h"
#include "side_by_side.h"

namespace {

// Where a side is odd, the last pixel stands for two.
FloatPicture averaged(const FloatPicture& picture) {
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

}  // namespace

HalfSize halfSize(const Picture& original) {
    HalfSize study;
    const FloatPicture video(original);
    FloatPicture light(original.size);
    if (!study.call("zeliGammaInv_32f_C3R, full size", original.size, [&] { return toLinearLight(video, light); })) return study;

    const FloatPicture halfLight = averaged(light);
    FloatPicture halfVideo(halfLight.size);
    if (!study.call("zeliGammaFwd_32f_C3R, half size", halfLight.size, [&] { return toVideo(halfLight, halfVideo); }))
        return study;

    const Picture asStored = averaged(video).bytes(), inLinearLight = halfVideo.bytes();
    study.difference = difference(asStored, inLinearLight);
    study.keep("half", beside(asStored, inLinearLight));
    study.keep("half-difference", amplifiedDifference(asStored, inLinearLight));
    study.keep("half-detail", detailBeside(asStored, inLinearLight));
    return study;
}
