#include "model/bits.h"

#include <cstddef>
#include <vector>

namespace model {
namespace {

// Errors of an image in eighths of a level, with a margin.
class BitErrors {
  public:
    explicit BitErrors(ZelSize size) : pitch_(size.width + 4), cells_(static_cast<size_t>(pitch_) * (size.height + 2)) {}
    int32_t& at(int x, int y) { return cells_[static_cast<size_t>(y + 2) * pitch_ + x + 2]; }

    int32_t gathered(int x, int y) {
        return 2 * (at(x - 1, y - 2) + at(x + 1, y - 2) + at(x - 2, y - 1) + at(x + 2, y - 1)) +
               4 * (at(x, y - 2) + at(x - 1, y - 1) + at(x + 1, y - 1) + at(x - 2, y)) + 8 * (at(x, y - 1) + at(x - 1, y)) +
               (at(x - 2, y - 2) + at(x + 2, y - 2));
    }

  private:
    int pitch_;
    std::vector<int32_t> cells_;
};

void setBit(uint8_t* row, int bit, bool value) {
    const int mask = 0x80 >> bit % 8;
    row[bit / 8] = static_cast<uint8_t>(value ? row[bit / 8] | mask : row[bit / 8] & ~mask);
}

}  // namespace

void reduceToBits(const BitImage& image, bool isDiffused, const uint8_t* from, uint8_t* to) {
    BitErrors errors(image.size);
    const int first = image.offset % 8, end = first + image.size.width;
    for (int y = 0; y < image.size.height; ++y, from += image.fromStep, to += image.toStep) {
        for (int x = 0; x < image.size.width; ++x) {
            if (!isDiffused) {
                setBit(to, first + x, from[x] > image.threshold);
                continue;
            }
            const int32_t sum = (from[x] << 13) + 23 * errors.gathered(x, y);
            const bool isSet = sum > image.threshold << 13;
            errors.at(x, y) = (sum >> 10) - (isSet ? 2047 : 0);
            setBit(to, first + x, isSet);
        }
        if (first != 0)
            for (int bit = end; bit < 8; ++bit) setBit(to, bit, false);
    }
}

}  // namespace model
