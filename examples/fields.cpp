#include "fields.h"

#include <algorithm>

#include "planar_frame.h"
#include "side_by_side.h"

namespace {

using PlanesToPlanes = ZelStatus (*)(const uint8_t* const[3], const int32_t[3], uint8_t* const[3], const int32_t[3], ZelSize);

struct Way {
    const char* toName;
    PlanesToPlanes to420;
    const char* backName;
    PlanesToPlanes to422;
};

// The first drops the chroma of every second row, which is that of the odd field, and gives both rows of a pair the other's.
constexpr Way fieldBlind{"zeliYCbCr422ToYCbCr420_8u_P3R", zeliYCbCr422ToYCbCr420_8u_P3R, "zeliYCbCr420ToYCbCr422_8u_P3R",
                         zeliYCbCr420ToYCbCr422_8u_P3R};
constexpr Way fieldAware{"zeliYCbCr422To420_Interlace_8u_P3R", zeliYCbCr422To420_Interlace_8u_P3R,
                         "zeliYCbCr420To422_Interlace_8u_P3R", zeliYCbCr420To422_Interlace_8u_P3R};

ZelStatus convert(PlanesToPlanes by, const PlanarFrame& from, PlanarFrame& to) {
    return by(from.planes().data(), from.steps.data(), to.planes().data(), to.steps.data(), from.size);
}

Picture decode(const PlanarFrame& frame) {
    Picture picture(frame.size);
    zeliYCbCr422ToRGB_8u_P3C3R(frame.planes().data(), frame.steps.data(), picture.pixels.data(), picture.step(), picture.size);
    return picture;
}

// Empty when a conversion failed.
Picture thereAndBack(const Way& way, const PlanarFrame& original, const Picture& reference,
                     std::vector<Conversion>& conversions) {
    PlanarFrame between(original.size, {2, 2}), back(original.size, {2, 1});
    conversions.push_back(timed(way.toName, original.size, [&] { return convert(way.to420, original, between); }));
    if (conversions.back().status < 0) return {};
    conversions.push_back(timed(way.backName, original.size, [&] { return convert(way.to422, between, back); }));
    if (conversions.back().status < 0) return {};
    Picture decoded = decode(back);
    conversions.back().error = difference(reference, decoded);
    return decoded;
}

}  // namespace

Picture interlaced(const Picture& scene, int32_t movement) {
    Picture frame(ZelSize{scene.size.width & ~1, scene.size.height & ~3});
    for (int32_t y = 0; y < frame.size.height; ++y) {
        const int32_t moved = y % 2 == 0 ? 0 : std::min(movement, frame.size.width);
        std::copy_n(scene.pixel(0, y), 3 * moved, frame.pixel(0, y));  // what comes into view is made of what stood at the border
        std::copy_n(scene.pixel(0, y), 3 * (frame.size.width - moved), frame.pixel(moved, y));
    }
    return frame;
}

FieldComparison compareFields(const Picture& frame) {
    FieldComparison comparison;
    PlanarFrame original(frame.size, {2, 1});
    comparison.conversions.push_back(timed("zeliRGBToYCbCr422_8u_C3P3R", frame.size, [&] {
        return zeliRGBToYCbCr422_8u_C3P3R(frame.pixels.data(), frame.step(), original.planes().data(), original.steps.data(),
                                          frame.size);
    }));
    if (comparison.conversions.back().status < 0) return comparison;

    const Picture reference = decode(original);
    const Picture blind = thereAndBack(fieldBlind, original, reference, comparison.conversions);
    const Picture aware = thereAndBack(fieldAware, original, reference, comparison.conversions);
    if (blind.pixels.empty() || aware.pixels.empty()) return comparison;

    comparison.sideBySide = beside(blind, aware);
    comparison.detail = detailBeside(blind, aware);
    return comparison;
}
