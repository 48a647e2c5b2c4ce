// Pictures in memory that ends where they do.
#pragma once

#include <cstring>

#include "harness/guarded_memory.h"
#include "harness/random.h"
#include "video/model.h"

namespace video {

class Frame {
  public:
    // Rows with `gap` bytes between them, the last byte of each plane before an inaccessible page or the first one behind one.
    Frame(const ZelvFormat& format, ZelSize size, int gap, bool atStart, bool upward, harness::Random& random)
        : picture_{format, size, {}, {}} {
        for (int p = 0; p < planeCount(format); ++p) {
            const size_t step = static_cast<size_t>(rowBytes(format, p, size.width) + gap);
            const auto rows = static_cast<size_t>(rowCount(format, p, size.height)),
                       bytes = rows * step - static_cast<size_t>(gap);
            const auto pages = memory_[p].pages(bytes);
            bytes_[p] = atStart ? pages.first(bytes) : pages.last(bytes);
            random.fill(bytes_[p], harness::Content::uniform);
            picture_.planes[p] = bytes_[p].data() + (upward ? (rows - 1) * step : 0);
            picture_.steps[p] = static_cast<int32_t>(upward ? -step : step);
        }
    }

    const Picture& picture() const { return picture_; }
    std::span<const uint8_t> bytes(int plane) const { return bytes_[plane]; }
    void copyFrom(const Frame& other) {
        for (int p = 0; p < planeCount(picture_.format); ++p)
            std::memcpy(bytes_[p].data(), other.bytes_[p].data(), bytes_[p].size());
    }
    bool equals(const Frame& other) const {
        for (int p = 0; p < planeCount(picture_.format); ++p)
            if (std::memcmp(bytes_[p].data(), other.bytes_[p].data(), bytes_[p].size()) != 0) return false;
        return true;
    }

  private:
    Picture picture_;
    harness::GuardedMemory memory_[4];
    std::span<uint8_t> bytes_[4];
};

inline ZelStatus run(const ZelvPlan& plan, const Picture& from, const Picture& to) {
    return zelvConvert(&plan, from.planes.data(), from.steps.data(), to.planes.data(), to.steps.data(), from.size);
}

}  // namespace video
