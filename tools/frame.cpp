#include "tools/frame.h"

#include <sys/mman.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace tool {

namespace {

constexpr size_t boundary = 64;
constexpr size_t largePage = 1 << 21;

// Units of a plane in so many pixels.
int64_t unitsOf(const catalog::Plane& p, int pixels) { return p.rowBytes(pixels) / p.bytes; }

// A second luma sample of the unit, where a row ends with the first, becomes its like.
void completeUnit(const catalog::Plane& p, uint8_t* unit, int filledPixels) {
    if (p.width != 2 || p.bytes != 4 || filledPixels != 1) return;
    const int luma = p.channels.starts_with('Y') ? 0 : 1;
    unit[luma + 2] = unit[luma];
}

template <typename Sample>
void fillAlpha(const catalog::Plane& p, uint8_t* first, int32_t step, Size size, Sample opaque) {
    for (int y = 0; y < size.height; ++y) {
        uint8_t* at = first + int64_t{step} * y + p.bytes - sizeof opaque;
        for (int x = 0; x < size.width; ++x, at += p.bytes) std::memcpy(at, &opaque, sizeof opaque);
    }
}

}  // namespace

Buffer::Buffer(size_t size) : size_(size) {
    void* memory = nullptr;
    const bool isLarge = size >= largePage;
    if (size && posix_memalign(&memory, isLarge ? largePage : boundary, size) != 0) throw std::bad_alloc();
    if (isLarge) madvise(memory, size / largePage * largePage, MADV_HUGEPAGE);  // a hint
    bytes_.reset(static_cast<uint8_t*>(memory));
}

Planes Planes::fromRow(const Format& format, int row) const {
    Planes part = *this;
    for (int i = 0; i < format.planeCount; ++i) part.data[i] += int64_t{steps[i]} * (row / format.planes[i].height);
    return part;
}

size_t fileBytes(const Format& format, Size size) {
    int64_t bytes = 0;
    for (const catalog::Plane& p : format.usedPlanes()) bytes += p.rowBytes(size.width) * p.rows(size.height);
    return static_cast<size_t>(bytes);
}

Planes inFile(const Format& format, Size size, uint8_t* bytes) {
    Planes file, planes;
    for (int i = 0; i < format.planeCount; ++i) {
        const catalog::Plane& p = format.planes[i];
        file.data[i] = bytes;
        file.steps[i] = static_cast<int32_t>(p.rowBytes(size.width));
        bytes += p.rowBytes(size.width) * p.rows(size.height);
    }
    const auto order = fileOrder(format);
    for (int i = 0; i < format.planeCount; ++i) {
        planes.data[i] = file.data[order[i]];
        planes.steps[i] = file.steps[order[i]];
    }
    return planes;
}

Frame::Frame(const Format& format, Size size) {
    size_t bytes = 0;
    std::array<size_t, 4> offsets{};
    for (int i = 0; i < format.planeCount; ++i) {
        const catalog::Plane& p = format.planes[i];
        planes.steps[i] = static_cast<int32_t>((p.rowBytes(size.width) + boundary - 1) / boundary * boundary);
        offsets[i] = bytes;
        bytes += static_cast<size_t>(planes.steps[i]) * static_cast<size_t>(p.rows(size.height));
    }
    buffer = Buffer(bytes);
    std::memset(buffer.data(), 0, bytes);
    for (int i = 0; i < format.planeCount; ++i) planes.data[i] = buffer.data() + offsets[i];
}

void copyExtended(const Format& format, const Planes& source, const Rect& part, const Planes& target, Size targetSize) {
    for (int i = 0; i < format.planeCount; ++i) {
        const catalog::Plane& p = format.planes[i];
        const int64_t filled = unitsOf(p, part.size.width), units = unitsOf(p, targetSize.width);
        const int64_t rows = p.rows(part.size.height);
        for (int64_t y = 0; y < p.rows(targetSize.height); ++y) {
            const int64_t row = part.y / p.height + std::min(y, rows - 1);
            uint8_t* to = target.data[i] + y * target.steps[i];
            std::memcpy(to, source.data[i] + row * source.steps[i] + int64_t{part.x} / p.width * p.bytes,
                        static_cast<size_t>(filled * p.bytes));
            uint8_t* last = to + (filled - 1) * p.bytes;
            completeUnit(p, last, part.size.width % p.width);
            for (int64_t x = filled; x < units; ++x) std::memcpy(to + x * p.bytes, last, static_cast<size_t>(p.bytes));
        }
    }
}

void copyPart(const Format& format, const Planes& source, const Planes& target, Size size) {
    for (int i = 0; i < format.planeCount; ++i) {
        const catalog::Plane& p = format.planes[i];
        for (int64_t y = 0; y < p.rows(size.height); ++y)
            std::memcpy(target.data[i] + y * target.steps[i], source.data[i] + y * source.steps[i],
                        static_cast<size_t>(p.rowBytes(size.width)));
    }
}

void makeOpaque(const Format& format, const Planes& planes, Size size) {
    const int i = alphaPlane(format);
    const auto fill = [&](auto opaque) { fillAlpha(format.planes[i], planes.data[i], planes.steps[i], size, opaque); };
    switch (format.element) {
        case Element::u8:
            return fill(uint8_t{UINT8_MAX});
        case Element::s8:
            return fill(int8_t{INT8_MAX});
        case Element::u16:
            return fill(uint16_t{UINT16_MAX});
        case Element::s16:
            return fill(int16_t{INT16_MAX});
        case Element::s32:
            return fill(int32_t{INT32_MAX});
        case Element::f32:
            return fill(1.0f);
        case Element::f64:
            return fill(1.0);
        case Element::u1:
            return;
    }
}

uint32_t opaqueAlpha(const Format& format) {
    if (format.element == Element::s8) return INT8_MAX;
    if (format.element == Element::s16) return INT16_MAX;
    return UINT32_MAX;
}

}  // namespace tool
