#include "fields.h"

#include <algorithm>
#include <cstdlib>

#include "planar_frame.h"

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

struct Place {
    int32_t x, y;
};

// Copies a region of `from`, every pixel as a square of so many.
void paste(const Picture& from, Place corner, ZelSize size, int32_t enlargement, Picture& to, int32_t left) {
    for (int32_t y = 0; y < size.height * enlargement; ++y) {
        for (int32_t x = 0; x < size.width * enlargement; ++x) {
            const uint8_t* const source = from.pixel(corner.x + x / enlargement, corner.y + y / enlargement);
            std::copy_n(source, 3, to.pixel(left + x, y));
        }
    }
}

// Regions one beside the other, with a gap of black.
Picture beside(const Picture& left, const Picture& right, Place corner, ZelSize size, int32_t enlargement) {
    constexpr int32_t gap = 8;
    const int32_t width = size.width * enlargement;
    Picture both(ZelSize{2 * width + gap, size.height * enlargement});
    paste(left, corner, size, enlargement, both, 0);
    paste(right, corner, size, enlargement, both, width + gap);
    return both;
}

// The corner of the tile in which two pictures differ most.
Place mostDifferent(const Picture& a, const Picture& b, ZelSize tile) {
    Place most{0, 0};
    int64_t largest = -1;
    for (int32_t top = 0; top + tile.height <= a.size.height; top += tile.height / 2) {
        for (int32_t left = 0; left + tile.width <= a.size.width; left += tile.width / 2) {
            int64_t sum = 0;
            for (int32_t y = top; y < top + tile.height; ++y)
                for (int32_t i = 0; i < 3 * tile.width; ++i) sum += std::abs(a.pixel(left, y)[i] - b.pixel(left, y)[i]);
            if (sum > largest) {
                largest = sum;
                most = {left, top};
            }
        }
    }
    return most;
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

    comparison.sideBySide = beside(blind, aware, {0, 0}, frame.size, 1);
    const ZelSize tile{std::min(frame.size.width, 96), std::min(frame.size.height, 96)};
    comparison.detail = beside(blind, aware, mostDifferent(blind, aware, tile), tile, 6);
    return comparison;
}
