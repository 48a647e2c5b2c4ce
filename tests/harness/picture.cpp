#include "harness/picture.h"

#include <algorithm>
#include <cstdio>

namespace harness {
namespace {

std::string describeByte(const Picture& picture, int plane, const uint8_t* address) {
    const model::PlaneShape& shape = picture.layout->planes[plane];
    const PicturePlane& p = picture.planes[plane];
    char text[100];
    for (int row = -p.rowsAbove; row < shape.rows(picture.size.height); ++row) {
        const std::ptrdiff_t offset = address - (p.first + std::ptrdiff_t{row} * p.step);
        if (offset < 0 || offset >= shape.rowBytes(picture.size.width)) continue;
        const int pixel = static_cast<int>(offset) / shape.unitBytes << shape.xShift;
        std::snprintf(text, sizeof text, "plane %d, row %d, byte %d, pixel (%d, %d)", plane, row, static_cast<int>(offset), pixel,
                      row * (1 << shape.yShift));
        return text;
    }
    std::snprintf(text, sizeof text, "plane %d, outside the rows, %td bytes from the first", plane, address - p.first);
    return text;
}

}  // namespace

model::Operand Picture::operand() const {
    model::Operand operand;
    for (size_t i = 0; i < planes.size(); ++i) {
        operand.planes[i] = planes[i].first;
        operand.steps[i] = planes[i].step;
    }
    return operand;
}

model::Image Picture::image() const {
    model::Image image{layout, {}};
    for (size_t i = 0; i < planes.size(); ++i) image.planes[i] = {planes[i].first, planes[i].step};
    return image;
}

bool Picture::isAligned() const {
    return std::ranges::all_of(
        usedPlanes(), [](const PicturePlane& p) { return reinterpret_cast<uintptr_t>(p.first) % 16 == 0 && p.step % 16 == 0; });
}

void Picture::fill(Random& random, Content content) const {
    for (const PicturePlane& p : usedPlanes()) random.fill(p.memory, content);
}

Snapshot::Snapshot(const Picture& picture) : picture_(picture) {
    for (int i = 0; i < picture.layout->planeCount; ++i)
        copies_[i].assign(picture.planes[i].memory.begin(), picture.planes[i].memory.end());
}

model::Image Snapshot::image() {
    model::Image image = picture_.image();
    for (int i = 0; i < picture_.layout->planeCount; ++i) {
        const PicturePlane& p = picture_.planes[i];
        image.planes[i].first = copies_[i].data() + (p.first - p.memory.data());
    }
    return image;
}

std::optional<std::string> Snapshot::difference() const {
    for (int i = 0; i < picture_.layout->planeCount; ++i) {
        const std::span<const uint8_t> memory = picture_.planes[i].memory;
        if (std::ranges::equal(memory, copies_[i])) continue;
        const auto [found, expected] = std::ranges::mismatch(memory, copies_[i]);
        char values[40];
        std::snprintf(values, sizeof values, ": %d instead of %d", *found, *expected);
        return describeByte(picture_, i, &*found) + values;
    }
    return std::nullopt;
}

std::optional<std::string> compareWithModel(const model::Export& tested, const Picture& source, const Picture& destination,
                                            ZelSize size, uint8_t alpha) {
    const bool inPlace = source.planes[0].first == destination.planes[0].first;
    Snapshot original(source), expected(destination);

    const ZelStatus status = tested.entry.call({.source = source.operand(),
                                                .destination = destination.operand(),
                                                .size = size,
                                                .alpha = alpha,
                                                .slice = tested.slice.argument});
    if (status != tested.status(size))
        return "status " + std::to_string(status) + " instead of " + std::to_string(tested.status(size));

    model::Conversion conversion{.source = original.image(),
                                 .destination = expected.image(),
                                 .size = tested.converted(size),
                                 .blockPixels = tested.blocks(size.width),
                                 .aligned = source.isAligned() && destination.isAligned(),
                                 .alpha = {},
                                 .slice = tested.slice.argument};
    if (tested.entry.takesAlpha) conversion.alpha = alpha;
    if (status >= zelStsNoErr) tested.model(conversion);

    if (const auto fault = expected.difference()) return "destination " + *fault;
    if (inPlace) return std::nullopt;
    if (const auto fault = original.difference()) return "source " + *fault;
    return std::nullopt;
}

}  // namespace harness
