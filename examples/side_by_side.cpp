#include "side_by_side.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

struct Place {
    int32_t x, y;
};

constexpr int32_t gap = 8;

// The corner of the tile with the highest sum of a measure of its pixels.
template <class Measure>
Place highest(ZelSize size, ZelSize tile, Measure measure) {
    const int32_t down = std::max(tile.height / 2, 1), across = std::max(tile.width / 2, 1);
    Place corner{0, 0};
    int64_t largest = -1;
    for (int32_t top = 0; top + tile.height <= size.height; top += down) {
        for (int32_t left = 0; left + tile.width <= size.width; left += across) {
            int64_t sum = 0;
            for (int32_t y = top; y < top + tile.height; ++y)
                for (int32_t x = left; x < left + tile.width; ++x) sum += measure(x, y);
            if (sum > largest) {
                largest = sum;
                corner = {left, top};
            }
        }
    }
    return corner;
}

int difference(const uint8_t* a, const uint8_t* b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

// Whether a run of one colour ends at a pixel and another one begins, as bands do.
bool isBetweenRuns(const Picture& picture, int32_t x, int32_t y) {
    constexpr int32_t run = 4;
    if (x + 1 < run || x + run >= picture.size.width) return false;
    const uint8_t* last = picture.pixel(x, y);
    const uint8_t* first = picture.pixel(x + 1, y);
    for (int32_t i = 1; i < run; ++i)
        if (difference(last, last - 3 * i) != 0 || difference(first, first + 3 * i) != 0) return false;
    return difference(last, first) != 0;
}

// Every pixel becomes a square of so many.
Picture enlarged(const Picture& picture, Place corner, ZelSize size, int32_t enlargement) {
    Picture large(ZelSize{size.width * enlargement, size.height * enlargement});
    for (int32_t y = 0; y < large.size.height; ++y)
        for (int32_t x = 0; x < large.size.width; ++x)
            std::copy_n(picture.pixel(corner.x + x / enlargement, corner.y + y / enlargement), 3, large.pixel(x, y));
    return large;
}

// The tile of the highest measure, of all pictures from left to right.
template <class Measure>
Picture enlargedBeside(const std::vector<const Picture*>& pictures, Measure measure) {
    constexpr int32_t side = 96, enlargement = 6;
    const ZelSize size = pictures.front()->size, tile{std::min(size.width, side), std::min(size.height, side)};
    const Place corner = highest(size, tile, measure);
    Picture all;
    for (const Picture* picture : pictures) {
        Picture large = enlarged(*picture, corner, tile, enlargement);
        all = all.pixels.empty() ? std::move(large) : beside(all, large);
    }
    return all;
}

}  // namespace

Picture beside(const Picture& left, const Picture& right) {
    Picture both(ZelSize{left.size.width + gap + right.size.width, left.size.height});
    for (int32_t y = 0; y < both.size.height; ++y) {
        std::copy_n(left.pixel(0, y), left.step(), both.pixel(0, y));
        std::copy_n(right.pixel(0, y), right.step(), both.pixel(left.size.width + gap, y));
    }
    return both;
}

Picture above(const Picture& upper, const Picture& lower) {
    Picture both(ZelSize{upper.size.width, upper.size.height + gap + lower.size.height});
    std::copy(upper.pixels.begin(), upper.pixels.end(), both.pixel(0, 0));
    std::copy(lower.pixels.begin(), lower.pixels.end(), both.pixel(0, upper.size.height + gap));
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

Picture detailBeside(const std::vector<const Picture*>& pictures) {
    return enlargedBeside(pictures,
                          [&](int32_t x, int32_t y) { return difference(pictures[0]->pixel(x, y), pictures[1]->pixel(x, y)); });
}

Picture bandsBeside(const Picture& original, const Picture& coarse, const Picture& other) {
    const auto isEdgeOfBand = [&](int32_t x, int32_t y) {
        constexpr int smooth = 3;  // the most by which all channels together change
        return isBetweenRuns(coarse, x, y) && difference(original.pixel(x, y), original.pixel(x + 1, y)) <= smooth;
    };
    return enlargedBeside({&coarse, &other}, isEdgeOfBand);
}
