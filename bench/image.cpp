#include "image.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace bench {

namespace {

constexpr size_t alignment = 64, page = 4096;

constexpr size_t roundUp(size_t value, size_t multiple) { return (value + multiple - 1) / multiple * multiple; }

constexpr bool isWord(Depth depth) { return depth == Depth::word444 || depth == Depth::word555 || depth == Depth::word565; }

int unitBytes(const PlaneShape& shape, Depth depth);

int32_t stepOf(const PlaneShape& shape, Depth depth, Size size) { return size.width / shape.columns * unitBytes(shape, depth); }

int rowsOf(const PlaneShape& shape, Size size) { return size.height / shape.rows; }

size_t bytesOf(const PlaneShape& shape, Depth depth, Size size) {
    return size_t(stepOf(shape, depth, size)) * rowsOf(shape, size);
}

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

// A depth on the scale of 8 bits: value = sample * scale + bias.
struct Scale {
    double scale, bias;
};

constexpr Scale scaleOf(Depth depth) {
    switch (depth) {
        case Depth::u8:
            return {1, 0};
        case Depth::s8:
            return {1, 128};
        case Depth::u16:
            return {1.0 / 257, 0};
        case Depth::s16:
            return {1.0 / 256, 128};
        case Depth::s32:
            return {1.0 / (1 << 24), 128};
        case Depth::f32:
        case Depth::f64:
            return {255, 0};
        default:
            return {};
    }
}

// Calls f with a value of the type of a depth's samples.
template <class F>
auto withSample(Depth depth, const F& f) {
    switch (depth) {
        case Depth::s8:
            return f(int8_t{});
        case Depth::u16:
            return f(uint16_t{});
        case Depth::s16:
            return f(int16_t{});
        case Depth::s32:
            return f(int32_t{});
        case Depth::f32:
            return f(float{});
        case Depth::f64:
            return f(double{});
        default:
            return f(uint8_t{});
    }
}

}  // namespace

int bytesOf(Depth depth) {
    return withSample(depth, [](auto sample) { return static_cast<int>(sizeof sample); });
}

namespace {

int unitBytes(const PlaneShape& shape, Depth depth) {
    return isWord(depth) ? 2 : static_cast<int>(shape.samples.size()) * bytesOf(depth);
}

// The lowest bit of a word's field and the number of its bits.
struct Field {
    int shift, bits;
};

constexpr Field fieldOf(Depth depth, int sample) {
    const int outer = depth == Depth::word444 ? 4 : 5, green = depth == Depth::word565 ? 6 : outer;
    return sample == 0 ? Field{0, outer} : sample == 1 ? Field{outer, green} : Field{outer + green, outer};
}

// A sample of a unit.
void write(uint8_t* unit, Depth depth, int sample, double value) {
    if (isWord(depth)) {
        const auto [shift, bits] = fieldOf(depth, sample);
        uint16_t word;
        std::memcpy(&word, unit, sizeof word);
        const int mask = (1 << bits) - 1;
        word = static_cast<uint16_t>((word & ~(mask << shift)) | static_cast<int>(value) >> (8 - bits) << shift);
        std::memcpy(unit, &word, sizeof word);
        return;
    }
    const Scale scale = scaleOf(depth);
    withSample(depth, [&](auto number) {
        number = static_cast<decltype(number)>((value - scale.bias) / scale.scale);
        std::memcpy(unit + sample * sizeof number, &number, sizeof number);
    });
}

double read(const uint8_t* unit, Depth depth, int sample) {
    if (isWord(depth)) {
        const auto [shift, bits] = fieldOf(depth, sample);
        uint16_t word;
        std::memcpy(&word, unit, sizeof word);
        return (word >> shift & ((1 << bits) - 1)) << (8 - bits);
    }
    const Scale scale = scaleOf(depth);
    return withSample(depth, [&](auto number) {
        std::memcpy(&number, unit + sample * sizeof number, sizeof number);
        return double(number) * scale.scale + scale.bias;
    });
}

}  // namespace

std::span<const PlaneShape> planesOf(Layout layout) {
    static constexpr PlaneShape rgb24[] = {{"rgb"}}, bgr24[] = {{"bgr"}}, rgba32[] = {{"rgbx"}}, bgra32[] = {{"bgrx"}};
    static constexpr PlaneShape rgbPlanes[] = {{"r"}, {"g"}, {"b"}};
    static constexpr PlaneShape ycc24[] = {{"yuv"}}, ycc32[] = {{"yuvx"}};
    static constexpr PlaneShape i444[] = {{"y"}, {"u"}, {"v"}}, i444a[] = {{"y"}, {"u"}, {"v"}, {"x"}};
    static constexpr PlaneShape i422[] = {{"y"}, {"u", 2}, {"v", 2}};
    static constexpr PlaneShape i420[] = {{"y"}, {"u", 2, 2}, {"v", 2, 2}};
    static constexpr PlaneShape i411[] = {{"y"}, {"u", 4}, {"v", 4}};
    static constexpr PlaneShape i410[] = {{"y"}, {"u", 4, 4}, {"v", 4, 4}};
    static constexpr PlaneShape nv12[] = {{"y"}, {"uv", 2, 2}}, nv21[] = {{"y"}, {"vu", 2, 2}};
    static constexpr PlaneShape nv11[] = {{"y"}, {"uv", 4}};
    static constexpr PlaneShape yuy2[] = {{"yuyv", 2}}, yvyu[] = {{"yvyu", 2}}, uyvy[] = {{"uyvy", 2}};
    static constexpr PlaneShape gray[] = {{"y"}}, bits[] = {{"x", 8}};
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
        case Layout::i444a:
            return i444a;
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
        case Layout::gray:
            return gray;
        case Layout::bits:
            return bits;
    }
    return {};
}

size_t bytesOf(Format format, Size size) {
    size_t total = 0;
    for (const PlaneShape& shape : planesOf(format.layout))
        total = roundUp(total, alignment) + bytesOf(shape, format.depth, size);
    return total;
}

Image placeImage(Format format, Size size, uint8_t* memory) {
    Image image{format.layout, format.depth, size, {}};
    size_t offset = 0;
    Plane* plane = image.planes.data();
    for (const PlaneShape& shape : planesOf(format.layout)) {
        offset = roundUp(offset, alignment);
        *plane++ = {memory + offset, stepOf(shape, format.depth, size)};
        offset += bytesOf(shape, format.depth, size);
    }
    return image;
}

void paint(const Image& image) {
    const Plane* plane = image.planes.data();
    for (const PlaneShape& shape : planesOf(image.layout)) {
        const int samples = static_cast<int>(shape.samples.size()), bytes = unitBytes(shape, image.depth);
        for (int row = 0; row < rowsOf(shape, image.size); ++row) {
            uint8_t* unit = plane->data + ptrdiff_t{plane->step} * row;
            const double y = double(row * shape.rows) / image.size.height;
            for (int i = 0; i < plane->step / bytes; ++i, unit += bytes) {
                const double x = double(i * shape.columns) / image.size.width;
                for (int k = 0; k < samples; ++k) write(unit, image.depth, k, sampleAt(shape.samples[k], x, y));
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
        const std::string_view letters = shapes[p].samples;
        const int bytes = unitBytes(shapes[p], a.depth);
        for (int row = 0; row < rowsOf(shapes[p], a.size); ++row) {
            const uint8_t* left = a.planes[p].data + ptrdiff_t{a.planes[p].step} * row;
            const uint8_t* right = b.planes[p].data + ptrdiff_t{b.planes[p].step} * row;
            for (int at = 0; at < a.planes[p].step; at += bytes) {
                for (size_t k = 0; k < letters.size(); ++k) {
                    if (letters[k] == 'x') continue;
                    const int sample = static_cast<int>(k);
                    sum += std::abs(read(left + at, a.depth, sample) - read(right + at, b.depth, sample));
                    ++count;
                }
            }
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

OwnImage::OwnImage(Format format, Size size)
    : memory(allocate(bytesOf(format, size))), image(placeImage(format, size, memory.get())) {}

}  // namespace bench
