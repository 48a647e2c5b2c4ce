#include "harness/placement.h"

#include <cstdlib>

namespace harness {
namespace {

constexpr int margin = 64;

constexpr Placement offsetBy(const char* name, int offset, int stepUnit, int gap) {
    return {.name = name, .offsets = allPlanes(offset), .stepUnit = stepUnit, .gaps = allPlanes(gap)};
}

constexpr Placement by4 = offsetBy("at offset 4", 4, 1, 5);
constexpr Placement by8 = offsetBy("at offset 8", 8, 8, 8);
constexpr Placement dense5 = offsetBy("at offset 15", 15, 1, 31);
constexpr Placement dense6 = offsetBy("at offset 16", 16, 16, 16);
constexpr Placement by32 = offsetBy("at offset 32", 32, 32, 0);
constexpr Placement by48 = offsetBy("at offset 48", 48, 16, 0);
constexpr Placement unequal{.name = "with unequal steps", .stepUnit = 16, .gaps = {0, 16, 48, 80}};
constexpr Placement oddSteps{.name = "with odd steps", .stepUnit = 2, .gaps = {1, 3, 7, 5}};
constexpr Placement atEnd{.name = "at the end of a page", .edge = Edge::end};
constexpr Placement atStart{.name = "at the start of a page", .edge = Edge::start};
constexpr Placement bottomUp{.name = "bottom-up", .stepUnit = 16, .bottomUp = true};
constexpr Placement bottomUpAtEnd{.name = "bottom-up at the end of a page", .edge = Edge::end, .bottomUp = true};
constexpr Placement bottomUpAtStart{.name = "bottom-up at the start of a page", .edge = Edge::start, .bottomUp = true};
constexpr Placement oneRow{.name = "of one row", .oneRow = true};

// All rows of a destination may only share their memory when they are equal, or their order would matter.
constexpr Placements all[] = {
    {aligned, aligned},
    {dense, dense},
    {by4, by4},
    {by8, by8},
    {dense5, dense5},
    {dense6, dense6},
    {by32, by32},
    {by48, by48},
    {aligned, dense},
    {dense, aligned},
    {aligned, dense6},
    {by48, dense5},
    {unequal, unequal},
    {oddSteps, unequal},
    {unequal, oddSteps},
    {atEnd, atEnd},
    {atStart, atStart},
    {atEnd, aligned},
    {aligned, atEnd},
    {bottomUp, bottomUp},
    {bottomUp, aligned},
    {atStart, bottomUpAtEnd},
    {bottomUpAtEnd, bottomUpAtStart},
    {oneRow, dense},
    {oneRow, oneRow},
};

}  // namespace

std::span<const Placements> placements() { return all; }

Picture PictureMemory::lay(const model::Layout& layout, ZelSize size, const Placement& placement,
                           const std::array<int, 4>& rowsAbove) {
    Picture picture{&layout, size, {}};
    for (int i = 0; i < layout.planeCount; ++i) {
        const size_t rowBytes = layout.planes[i].rowBytes(size.width);
        const size_t rows = layout.planes[i].rows(size.height) + rowsAbove[i];
        const int gap = placement.gaps[layout.hasCommonStep() ? 0 : i];
        const size_t padded = (rowBytes + placement.stepUnit - 1) / placement.stepUnit * placement.stepUnit + gap;
        const size_t step = placement.oneRow ? 0 : placement.rowPixels ? layout.planes[i].rowBytes(placement.rowPixels) : padded;
        const auto signedStep = static_cast<int32_t>(placement.bottomUp ? 0 - step : step);
        const size_t pitch = std::abs(layout.pitch(signedStep));
        const size_t extent = rowBytes == 0 || rows == 0 ? 0 : (rows - 1) * pitch + rowBytes;

        const std::span<uint8_t> pages = memory_[i].pages(extent + 4 * margin);
        size_t lowest = 2 * margin + placement.offsets[i], begin = lowest - margin, end = lowest + extent + margin;
        if (placement.edge == Edge::start) {
            lowest = begin = 0;
            end = extent + margin;
        } else if (placement.edge == Edge::end) {
            lowest = pages.size() - extent;
            begin = lowest - margin;
            end = pages.size();
        }
        PicturePlane& plane = picture.planes[i];
        plane.memory = pages.subspan(begin, end - begin);
        plane.first = pages.data() + lowest;
        plane.rowsAbove = rowsAbove[i];
        plane.step = signedStep;
        if (placement.bottomUp && extent > 0) plane.first += (rows - 1) * pitch;
        plane.first += plane.rowsAbove * layout.pitch(plane.step);
    }
    return picture;
}

}  // namespace harness
