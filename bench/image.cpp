#include "image.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace bench {

namespace {

constexpr size_t alignment = 64, page = 4096;

constexpr size_t roundUp(size_t value, size_t multiple) { return (value + multiple - 1) / multiple * multiple; }

int32_t stepOf(const PlaneShape& shape, Size size) {
    return size.width / shape.columns * static_cast<int32_t>(shape.samples.size());
}

int rowsOf(const PlaneShape& shape, Size size) { return size.height / shape.rows; }

size_t bytesOf(const PlaneShape& shape, Size size) { return size_t(stepOf(shape, size)) * rowsOf(shape, size); }

// x and y run from 0 to 1.
double sampleAt(char letter, double x, double y) {
    switch (letter) {
        case 'r':
            return 210 * x + 30;
        case 'g':
            return 180 * y + 20;
        case 'b':
            return 60 * (1 - x) + 10;
        case 'y':
            return 150 * x + 40;
        case 'u':
            return 30 * y + 80;
        case 'v':
            return 40 * (1 - y) + 140;
        default:
            return 255;
    }
}

}  // namespace

std::span<const PlaneShape> planesOf(Layout layout) {
    static constexpr PlaneShape rgb24[] = {{"rgb"}}, bgr24[] = {{"bgr"}}, rgba32[] = {{"rgbx"}}, bgra32[] = {{"bgrx"}};
    static constexpr PlaneShape rgbPlanes[] = {{"r"}, {"g"}, {"b"}};
    static constexpr PlaneShape ycc24[] = {{"yuv"}}, ycc32[] = {{"yuvx"}};
    static constexpr PlaneShape i444[] = {{"y"}, {"u"}, {"v"}};
    static constexpr PlaneShape i422[] = {{"y"}, {"u", 2}, {"v", 2}};
    static constexpr PlaneShape i420[] = {{"y"}, {"u", 2, 2}, {"v", 2, 2}};
    static constexpr PlaneShape i411[] = {{"y"}, {"u", 4}, {"v", 4}};
    static constexpr PlaneShape i410[] = {{"y"}, {"u", 4, 4}, {"v", 4, 4}};
    static constexpr PlaneShape nv12[] = {{"y"}, {"uv", 2, 2}}, nv21[] = {{"y"}, {"vu", 2, 2}};
    static constexpr PlaneShape nv11[] = {{"y"}, {"uv", 4}};
    static constexpr PlaneShape yuy2[] = {{"yuyv", 2}}, yvyu[] = {{"yvyu", 2}}, uyvy[] = {{"uyvy", 2}};
    switch (layout) {
        case Layout::rgb24:
            return rgb24;
        case Layout::bgr24:
            return bgr24;
        case Layout::rgba32:
            return rgba32;
        case Layout::bgra32:
            return bgra32;
        case Layout::rgbPlanes:
            return rgbPlanes;
        case Layout::ycc24:
            return ycc24;
        case Layout::ycc32:
            return ycc32;
        case Layout::i444:
            return i444;
        case Layout::i422:
            return i422;
        case Layout::i420:
            return i420;
        case Layout::i411:
            return i411;
        case Layout::i410:
            return i410;
        case Layout::nv12:
            return nv12;
        case Layout::nv21:
            return nv21;
        case Layout::nv11:
            return nv11;
        case Layout::yuy2:
            return yuy2;
        case Layout::yvyu:
            return yvyu;
        case Layout::uyvy:
            return uyvy;
    }
    return {};
}

size_t bytesOf(Layout layout, Size size) {
    size_t total = 0;
    for (const PlaneShape& shape : planesOf(layout)) total = roundUp(total, alignment) + bytesOf(shape, size);
    return total;
}

Image placeImage(Layout layout, Size size, uint8_t* memory) {
    Image image{layout, size, {}};
    size_t offset = 0;
    Plane* plane = image.planes.data();
    for (const PlaneShape& shape : planesOf(layout)) {
        offset = roundUp(offset, alignment);
        *plane++ = {memory + offset, stepOf(shape, size)};
        offset += bytesOf(shape, size);
    }
    return image;
}

void paint(const Image& image) {
    const Plane* plane = image.planes.data();
    for (const PlaneShape& shape : planesOf(image.layout)) {
        const int samples = static_cast<int>(shape.samples.size());
        for (int row = 0; row < rowsOf(shape, image.size); ++row) {
            uint8_t* bytes = plane->data + ptrdiff_t{plane->step} * row;
            const double y = double(row * shape.rows) / image.size.height;
            for (int i = 0; i < plane->step; ++i) {
                const double x = double(i / samples * shape.columns) / image.size.width;
                bytes[i] = static_cast<uint8_t>(sampleAt(shape.samples[i % samples], x, y));
            }
        }
        ++plane;
    }
}

Image withChromaExchanged(Image image) {
    std::swap(image.planes[1], image.planes[2]);
    return image;
}

double meanDifference(const Image& a, const Image& b) {
    double sum = 0, count = 0;
    const auto shapes = planesOf(a.layout);
    for (size_t p = 0; p < shapes.size(); ++p) {
        for (int row = 0; row < rowsOf(shapes[p], a.size); ++row) {
            const uint8_t* left = a.planes[p].data + ptrdiff_t{a.planes[p].step} * row;
            const uint8_t* right = b.planes[p].data + ptrdiff_t{b.planes[p].step} * row;
            for (int i = 0; i < a.planes[p].step; ++i) sum += std::abs(left[i] - right[i]);
            count += a.planes[p].step;
        }
    }
    return sum / count;
}

void FreeMemory::operator()(uint8_t* memory) const { std::free(memory); }

Memory allocate(size_t bytes) {
    const size_t whole = roundUp(bytes, page);
    Memory memory{static_cast<uint8_t*>(std::aligned_alloc(page, whole))};
    if (!memory) throw std::bad_alloc{};
    std::memset(memory.get(), 255, whole);
    return memory;
}

OwnImage::OwnImage(Layout layout, Size size)
    : memory(allocate(bytesOf(layout, size))), image(placeImage(layout, size, memory.get())) {}

}  // namespace bench
