// Calls of any function on generated images, to check and to measure it.
#pragma once

#include "tools/frame.h"

namespace tool {

// How images lie in memory: tight or with room between rows, from a boundary or one sample behind it, downward or upward.
enum class Lay { boundary, shifted, upward };

// What a function is given beside images; each value stands for others of every argument that it takes.
int variantCount(const Function& function);

class Exercise {
  public:
    // The seed chooses the content, which is the same on every machine.
    Exercise(const Function& function, Size size, Lay lay, int variant, unsigned seed);

    ZelStatus call() const { return function_.call(call_); }
    // The same for a strip of rows of whole sites.
    ZelStatus callStrip(int row, int rows) const;
    // Adds all bytes of the destination and around it. Floats that are no numbers count as one.
    uint64_t addTo(uint64_t sum) const;

  private:
    struct Image {
        const Format& format;
        Buffer buffer;
        Planes planes;
    };

    Image lay(const Format& format, Size size, Lay lay) const;
    void fill(const Image& image, unsigned seed) const;
    void addArguments(int variant);

    const Function& function_;
    const Conversion& conversion_;
    Image source_, target_;
    Buffer temporary_;
    catalog::Call call_;
};

uint64_t addBytes(uint64_t sum, const void* bytes, size_t count);
constexpr uint64_t emptySum = 0xcbf29ce484222325;

}  // namespace tool
