#include "tools/frame.h"

#include <sys/mman.h>

#include <algorithm>
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
    if (p.width != 2 || filledPixels != 1 || std::ranges::count(p.channels, 'Y') != 2) return;
    const auto size = static_cast<size_t>(p.bytes / 4);
    uint8_t* luma = unit + (p.channels.starts_with('Y') ? 0 : size);
    std::memcpy(luma + 2 * size, luma, size);
}

template <int bytes>
void fillAlpha(const catalog::Plane& p, uint8_t* first, int32_t step, Size size, uint64_t opaque) {
    for (int y = 0; y < size.height; ++y) {
        uint8_t* at = first + int64_t{step} * y + p.bytes - bytes;
        for (int x = 0; x < size.width; ++x, at += p.bytes) std::memcpy(at, &opaque, bytes);
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
    for (int i = 0; i < format.planeCount; ++i) {
        const auto plane = static_cast<size_t>(format.order[static_cast<size_t>(i)]);
        planes.data[i] = file.data[plane];
        planes.steps[i] = file.steps[plane];
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
    const auto i = static_cast<size_t>(format.alphaPlane);
    const auto fill = [&](auto fillBytes) {
        fillBytes(format.planes[i], planes.data[i], planes.steps[i], size, catalog::opaque(format.element));
    };
    switch (catalog::bytesOf(format.element)) {
        case 1:
            return fill(fillAlpha<1>);
        case 2:
            return fill(fillAlpha<2>);
        case 4:
            return fill(fillAlpha<4>);
        default:
            return fill(fillAlpha<8>);
    }
}

}  // namespace tool
