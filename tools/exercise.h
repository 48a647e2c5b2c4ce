// Generated images, and calls of any function on them, to check and to measure it.
#pragma once

#include "tools/frame.h"

namespace tool {

// How images lie in memory: tight or with room between rows, from a boundary or one sample behind it, downward or upward.
enum class Lay { boundary, shifted, upward };

// An image with margins around its planes, which start with no value.
struct Laid {
    const Format& format;
    Buffer buffer;
    Planes planes;
};
// Only images whose rows may be apart have room between them.
Laid lay(const Format& format, Size size, Lay lay, bool takesSteps);
// Samples of its type in all of the buffer. The seed chooses them; they are the same on every machine.
void fill(const Laid& image, unsigned seed);
void clear(const Laid& image);
// Adds all bytes of the image and around it. Floats that are no numbers count as one.
uint64_t addTo(uint64_t sum, const Laid& image);

// What a function is given beside images; each value stands for others of every argument that it takes.
int variantCount(const Function& function);

class Exercise {
  public:
    Exercise(const Function& function, Size size, Lay lay, int variant, unsigned seed);

    ZelStatus call() const { return function_.call(call_); }
    // The same for a strip of rows of whole sites.
    ZelStatus callStrip(int row, int rows) const;
    uint64_t addTo(uint64_t sum) const { return tool::addTo(sum, target_); }

  private:
    void addArguments(int variant);

    const Function& function_;
    const Conversion& conversion_;
    Laid source_, target_;
    Buffer temporary_;
    catalog::Call call_;
};

uint64_t addBytes(uint64_t sum, const void* bytes, size_t count);
constexpr uint64_t emptySum = 0xcbf29ce484222325;

}  // namespace tool
