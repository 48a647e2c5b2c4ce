// Images that the contenders convert: layouts of planes, and views of planes in memory.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace bench {

enum class Layout {
    rgb24,
    bgr24,
    rgba32,
    bgra32,
    rgbPlanes,
    ycc24,
    ycc32,
    i444,
    i444a,
    i422,
    i420,
    i411,
    i410,
    nv12,
    nv21,
    nv11,
    yuy2,
    yvyu,
    uyvy,
    gray,
    bits,  // eight pixels a byte
};

// Samples of more or less than 8 bits hold the same picture: 255 is the highest value of the unsigned depths and 1 of the floats,
// and 128 is 0 of the signed ones. The samples of a pixel may also be the fields of a 16-bit word, from the lowest upward.
enum class Depth { u8, s8, u16, s16, s32, f32, f64, word444, word555, word565 };

int bytesOf(Depth depth);

struct Format {
    Layout layout;
    Depth depth;

    constexpr Format(Layout l, Depth d = Depth::u8) : layout(l), depth(d) {}
    bool operator==(const Format&) const = default;
};

// The samples that one site of a plane holds, a letter each (u is Cb, v is Cr, x is unused), and the pixels that it covers.
struct PlaneShape {
    std::string_view samples;
    int columns = 1;
    int rows = 1;
};

std::span<const PlaneShape> planesOf(Layout layout);

struct Size {
    int width;
    int height;
};

struct Plane {
    uint8_t* data = nullptr;
    int32_t step = 0;
};

// Planes in memory of somebody else. Planes that the layout lacks are null.
struct Image {
    Layout layout{};
    Depth depth{};
    Size size{};
    std::array<Plane, 4> planes{};
};

// Rows follow each other without a gap, planes too, but each plane begins on a boundary of 64 bytes.
size_t bytesOf(Format format, Size size);
Image placeImage(Format format, Size size, uint8_t* memory);

// A smooth, strongly coloured picture, on which methods that differ in rounding and siting agree within a few levels.
void paint(const Image& image);

// The same planes with the second and the third exchanged: Cr before Cb.
Image withChromaExchanged(Image image);

// The mean of |a - b| over all samples but the unused ones of two images of one format, on the scale of 8 bits.
double meanDifference(const Image& a, const Image& b);

struct FreeMemory {
    void operator()(uint8_t* memory) const;
};
using Memory = std::unique_ptr<uint8_t[], FreeMemory>;

// Memory on a page boundary, touched.
Memory allocate(size_t bytes);

// An image with memory of its own.
struct OwnImage {
    OwnImage(Format format, Size size);

    Memory memory;
    Image image;
};

}  // namespace bench
