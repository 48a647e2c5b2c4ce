#include "recoloured.h"

#include <array>

#include "gray_picture.h"

namespace {

using Weights = std::array<float, 3>;
using Matrix = std::array<float, 12>;

constexpr Weights luma{0.299F, 0.587F, 0.114F};
constexpr Weights redFilter{0.9F, 0.1F, 0};  // darkens a blue sky, as the filter before a black-and-white film does
constexpr Weights paperTint{1.08F, 0.98F, 0.76F};

// Moves every colour away from the gray of its luma, by a factor above 1.
constexpr Matrix saturation(float factor) {
    Matrix matrix{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i) matrix[4 * row + i] = (1 - factor) * luma[i] + (row == i ? factor : 0);
    return matrix;
}

// Luma in shades of one colour.
constexpr Matrix toned(const Weights& tint) {
    Matrix matrix{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i) matrix[4 * row + i] = tint[row] * luma[i];
    return matrix;
}

constexpr Matrix saturated = saturation(1.6F);
constexpr Matrix sepia = toned(paperTint);

void twist(const Picture& original, const std::string& name, const Matrix& matrix, Study& study) {
    Picture result(original.size);
    if (study.call("zeliColorTwist32f_8u_C3R, " + name, original.size, [&] {
            return zeliColorTwist32f_8u_C3R(original.pixels.data(), original.step(), result.pixels.data(), result.step(),
                                            original.size, matrix.data());
        }))
        study.keep(name, std::move(result));
}

}  // namespace

Study recoloured(const Picture& original) {
    const ZelSize size = original.size;
    Study study;
    GrayPicture gray(size);
    if (study.call("zeliRGBToGray_8u_C3C1R", size, [&] {
            return zeliRGBToGray_8u_C3C1R(original.pixels.data(), original.step(), gray.samples.data(), size.width, size);
        }))
        study.keep("gray-luma", gray.asColour());
    if (study.call("zeliColorToGray_8u_C3C1R, red filter", size, [&] {
            return zeliColorToGray_8u_C3C1R(original.pixels.data(), original.step(), gray.samples.data(), size.width, size,
                                            redFilter.data());
        }))
        study.keep("gray-red-filter", gray.asColour());
    twist(original, "saturated", saturated, study);
    twist(original, "sepia", sepia, study);
    return study;
}
