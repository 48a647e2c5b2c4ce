#include "harness/picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <set>
#include <string_view>

#include "harness/features.h"

namespace harness {
namespace {

std::string describeByte(const Picture& picture, int plane, const uint8_t* address) {
    const model::PlaneShape& shape = picture.layout->planes[plane];
    const PicturePlane& p = picture.planes[plane];
    char text[100];
    for (int row = -p.rowsAbove; row < shape.rows(picture.size.height); ++row) {
        const std::ptrdiff_t offset = address - (p.first + row * picture.layout->pitch(p.step));
        if (offset < 0 || offset >= shape.rowBytes(picture.size.width)) continue;
        const int pixel = static_cast<int>(offset) / shape.unitBytes << shape.xShift;
        std::snprintf(text, sizeof text, "plane %d, row %d, byte %d, pixel (%d, %d)", plane, row, static_cast<int>(offset), pixel,
                      row * (1 << shape.yShift));
        return text;
    }
    std::snprintf(text, sizeof text, "plane %d, outside the rows, %td bytes from the first", plane, address - p.first);
    return text;
}

// Calls function(plane, address) for every element of type T in the rows of a picture.
template <class T, class Function>
void forEachElement(const Picture& picture, Function function) {
    for (int i = 0; i < picture.layout->planeCount; ++i) {
        const PicturePlane& p = picture.planes[i];
        const model::PlaneShape& shape = picture.layout->planes[i];
        for (int row = -p.rowsAbove; row < shape.rows(picture.size.height); ++row)
            for (int byte = 0; byte < shape.rowBytes(picture.size.width); byte += sizeof(T))
                function(i, p.first + row * picture.layout->pitch(p.step) + byte);
    }
}

// Samples of one scale, mostly positive; or any number there is, with all those that are treated apart.
template <class T>
void fillNumbers(const Picture& picture, Random& random, Content content) {
    using Limits = std::numeric_limits<T>;
    constexpr T special[] = {0,
                             -T{0},
                             1,
                             Limits::infinity(),
                             -Limits::infinity(),
                             Limits::quiet_NaN(),
                             Limits::denorm_min(),
                             -Limits::denorm_min(),
                             Limits::max(),
                             Limits::lowest(),
                             Limits::min(),
                             -Limits::min()};
    constexpr T scales[] = {1, 1, 255, T(1e-3)};
    const T scale = scales[random.next() % std::size(scales)];
    forEachElement<T>(picture, [&](int, uint8_t* address) {
        const uint64_t word = random.next();
        T value = scale * (T(word >> 40) * T(0x1p-23) - T(0.25));
        if (content == Content::extremes) std::memcpy(&value, &word, sizeof value);
        if (content == Content::extremes && word >> 62 == 0) value = special[word % std::size(special)];
        std::memcpy(address, &value, sizeof value);
    });
}

bool hasColumnOfItsOwn(std::string_view name) {
    static const std::set<std::string_view> names = [] {
        std::set<std::string_view> names;
#define ZEL_EXPORT(name, group, columns) \
    if (columns > 1) names.insert(#name);
#include "../../src/frame/exports.def"
#undef ZEL_EXPORT
        return names;
    }();
    return names.contains(name);
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
    for (size_t i = 0; i < planes.size(); ++i) image.planes[i] = {planes[i].first, layout->pitch(planes[i].step)};
    return image;
}

bool Picture::isAligned() const {
    return std::ranges::all_of(
        usedPlanes(), [](const PicturePlane& p) { return reinterpret_cast<uintptr_t>(p.first) % 16 == 0 && p.step % 16 == 0; });
}

void Picture::fill(Random& random, Content content) const {
    for (const PicturePlane& p : usedPlanes()) random.fill(p.memory, content);
    if (layout->element == model::Element::f32) fillNumbers<float>(*this, random, content);
    if (layout->element == model::Element::f64) fillNumbers<double>(*this, random, content);
}

void Snapshot::Copy::assign(std::span<const uint8_t> bytes) {
    constexpr size_t alignment = 64;
    memory_.resize(bytes.size() + alignment);
    const uintptr_t from = reinterpret_cast<uintptr_t>(bytes.data()), to = reinterpret_cast<uintptr_t>(memory_.data());
    bytes_ = std::span(memory_).subspan((from - to) % alignment, bytes.size());
    std::ranges::copy(bytes, bytes_.begin());
}

Snapshot::Snapshot(const Picture& picture) : picture_(picture) { take(); }

void Snapshot::take() {
    for (int i = 0; i < picture_.layout->planeCount; ++i) copies_[i].assign(picture_.planes[i].memory);
}

model::Image Snapshot::image() {
    model::Image image = picture_.image();
    for (int i = 0; i < picture_.layout->planeCount; ++i) {
        const PicturePlane& p = picture_.planes[i];
        image.planes[i].first = copies_[i].bytes().data() + (p.first - p.memory.data());
    }
    return image;
}

std::optional<std::string> Snapshot::difference() const {
    for (int i = 0; i < picture_.layout->planeCount; ++i) {
        const std::span<const uint8_t> memory = picture_.planes[i].memory;
        const std::span<const uint8_t> copy = copies_[i].bytes();
        if (std::memcmp(memory.data(), copy.data(), memory.size()) == 0) continue;
        const auto [found, expected] = std::ranges::mismatch(memory, copy);
        char values[40];
        std::snprintf(values, sizeof values, ": %d instead of %d", *found, *expected);
        return describeByte(picture_, i, &*found) + values;
    }
    return std::nullopt;
}

void Snapshot::restore() const {
    for (int i = 0; i < picture_.layout->planeCount; ++i)
        std::ranges::copy(copies_[i].bytes(), picture_.planes[i].memory.begin());
}

void Snapshot::acceptNaNs() {
    const auto accept = [&]<class T>(T) {
        forEachElement<T>(picture_, [&](int plane, uint8_t* address) {
            uint8_t* copy = copies_[plane].bytes().data() + (address - picture_.planes[plane].memory.data());
            T found, expected;
            std::memcpy(&found, address, sizeof found);
            std::memcpy(&expected, copy, sizeof expected);
            if (std::isnan(found) && std::isnan(expected)) std::memcpy(copy, address, sizeof found);
        });
    };
    if (picture_.layout->element == model::Element::f32) accept(float());
    if (picture_.layout->element == model::Element::f64) accept(double());
}

std::optional<std::string> compareWithModel(const model::Export& tested, const Picture& source, const Picture& destination,
                                            ZelSize size, uint8_t alpha, const model::Parameters& parameters) {
    const bool inPlace = source.planes[0].first == destination.planes[0].first;
    Snapshot original(source), expected(destination);

    model::Conversion conversion{.source = original.image(),
                                 .destination = expected.image(),
                                 .size = tested.converted(size),
                                 .blockPixels = tested.blocks(size.width),
                                 .aligned = source.isAligned() && destination.isAligned(),
                                 .alpha = {},
                                 .slice = tested.slice.argument,
                                 .parameters = parameters};
    if (tested.entry.takesAlpha) conversion.alpha = alpha;
    ZelStatus expectedStatus = tested.status(size);
    if (expectedStatus >= zelStsNoErr && tested.contentStatus) expectedStatus = tested.contentStatus(conversion);

    if (expectedStatus >= zelStsNoErr && expectedStatus != zelStsNoOperationWarn) tested.model(conversion);

    const auto faultOf = [&](const Level& level) -> std::optional<std::string> {
        const ZelStatus status = tested.entry.call({.source = source.operand(),
                                                    .destination = destination.operand(),
                                                    .size = size,
                                                    .alpha = alpha,
                                                    .slice = tested.slice.argument,
                                                    .parameters = parameters,
                                                    .library = level.library});
        if (status != expectedStatus) return "status " + std::to_string(status) + " instead of " + std::to_string(expectedStatus);
        expected.acceptNaNs();
        if (const auto fault = expected.difference()) return "destination " + *fault;
        if (inPlace) return std::nullopt;
        if (const auto fault = original.difference()) return "source " + *fault;
        return std::nullopt;
    };
    const std::span<const Level> all = levels();
    noteLevels();
    std::optional<Snapshot> before;
    if (all.size() > 1) before.emplace(destination);
    bool isFirst = true;
    for (const Level& level : all) {
        if (level.hasOwnExportsOnly && !hasColumnOfItsOwn(tested.name)) continue;
        if (!isFirst) before->restore();
        isFirst = false;
        if (const auto fault = faultOf(level)) return std::string(level.name) + ": " + *fault;
    }
    return std::nullopt;
}

}  // namespace harness
