#include "side_by_side.h"

#include <algorithm>
#include <cstdlib>

namespace {

struct Place {
    int32_t x, y;
};

// The corner of the tile in which two pictures differ most.
Place mostDifferent(const Picture& a, const Picture& b, ZelSize tile) {
    const int32_t down = std::max(tile.height / 2, 1), across = std::max(tile.width / 2, 1);
    Place most{0, 0};
    int64_t largest = -1;
    for (int32_t top = 0; top + tile.height <= a.size.height; top += down) {
        for (int32_t left = 0; left + tile.width <= a.size.width; left += across) {
            int64_t sum = 0;
            for (int32_t y = top; y < top + tile.height; ++y)
                for (int32_t i = 0; i < 3 * tile.width; ++i) sum += std::abs(a.pixel(left, y)[i] - b.pixel(left, y)[i]);
            if (sum > largest) {
                largest = sum;
                most = {left, top};
            }
        }
    }
    return most;
}

// Every pixel becomes a square of so many.
Picture enlarged(const Picture& picture, Place corner, ZelSize size, int32_t enlargement) {
    Picture large(ZelSize{size.width * enlargement, size.height * enlargement});
    for (int32_t y = 0; y < large.size.height; ++y)
        for (int32_t x = 0; x < large.size.width; ++x)
            std::copy_n(picture.pixel(corner.x + x / enlargement, corner.y + y / enlargement), 3, large.pixel(x, y));
    return large;
}

}  // namespace

Picture beside(const Picture& left, const Picture& right) {
    constexpr int32_t gap = 8;
    Picture both(ZelSize{left.size.width + gap + right.size.width, left.size.height});
    for (int32_t y = 0; y < both.size.height; ++y) {
        std::copy_n(left.pixel(0, y), left.step(), both.pixel(0, y));
        std::copy_n(right.pixel(0, y), right.step(), both.pixel(left.size.width + gap, y));
    }
    return both;
}

Picture amplifiedDifference(const Picture& left, const Picture& right) {
    constexpr int gray = 128, amplification = 10;
    Picture result(left.size);
    for (std::size_t i = 0; i < result.pixels.size(); ++i) {
        const int amplified = gray + amplification * (right.pixels[i] - left.pixels[i]);
        result.pixels[i] = static_cast<uint8_t>(std::clamp(amplified, 0, 255));
    }
    return result;
}

Picture detailBeside(const Picture& left, const Picture& right) {
    constexpr int32_t side = 96, enlargement = 6;
    const ZelSize tile{std::min(left.size.width, side), std::min(left.size.height, side)};
    const Place corner = mostDifferent(left, right, tile);
    return beside(enlarged(left, corner, tile, enlargement), enlarged(right, corner, tile, enlargement));
}
