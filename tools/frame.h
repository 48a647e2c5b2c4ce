// Images in memory: planes in the order of the functions, somewhere in a block of bytes.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "tools/formats.h"
#include "tools/geometry.h"

namespace tool {

// Bytes on a boundary of 64, without a value at first.
class Buffer {
  public:
    explicit Buffer(size_t size = 0);
    uint8_t* data() const { return bytes_.get(); }
    size_t size() const { return size_; }

  private:
    struct Free {
        void operator()(uint8_t* p) const { std::free(p); }
    };
    std::unique_ptr<uint8_t, Free> bytes_;
    size_t size_;
};

// Planes of a canonical format.
struct Planes {
    std::array<uint8_t*, 4> data{};
    std::array<int32_t, 4> steps{};

    // The same from a row of pixels on, which is the first of a site.
    Planes fromRow(const Format& format, int row) const;
};

// The bytes of an image in a file, plane after plane without gaps; chroma that pixels fill in part is whole.
size_t fileBytes(const Format& format, Size size);
// The planes of such an image, of a format with planes in any order.
Planes inFile(const Format& format, Size size, uint8_t* bytes);

// An image of its own, with rows on boundaries of 64.
struct Frame {
    Frame() = default;
    Frame(const Format& format, Size size);
    Buffer buffer;
    Planes planes;
};

// Copies the part of the source and repeats its last pixels to the right and below until the target is full.
void copyExtended(const Format& format, const Planes& source, const Rect& part, const Planes& target, Size targetSize);
// Copies the first pixels of the source.
void copyPart(const Format& format, const Planes& source, const Planes& target, Size size);
// Fills the alpha of all pixels.
void makeOpaque(const Format& format, const Planes& planes, Size size);

}  // namespace tool
