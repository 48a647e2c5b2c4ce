// Model of the conversions between chroma layouts that filter: interlaced frames, chroma interpolated between four rows, and
// images that are smoothed in slices.
#pragma once

#include <algorithm>
#include <array>

#include "model/chroma_samples.h"

namespace model {

// Rows of a field are every second one of a frame. Chroma of a 4:2:0 field lies a quarter of a row pair from its luma, at
// another height in either field.
inline void halveFields(const Conversion& c) {
    copyLuma(c);
    setChroma(c, [](const ChromaRows& from, int row, int i) {
        const int group = row / 2 * 4;
        if (row % 2 == 0) return (3 * from.at(group, i) + from.at(group + 2, i) + 2) >> 2;
        return (from.at(group + 1, i) + 3 * from.at(group + 3, i) + 2) >> 2;
    });
}

inline void doubleFields(const Conversion& c) {
    constexpr std::array<std::array<int, 2>, 4> weights{{{5, 3}, {7, 1}, {1, 7}, {3, 5}}};
    copyLuma(c);
    setChroma(c, [&](const ChromaRows& from, int row, int i) {
        const int fieldOfRow = row % 2;
        if (row < 2) return int{from.at(fieldOfRow, i)};
        if (row >= c.size.height - 2) return int{from.at(c.size.height / 2 - 2 + fieldOfRow, i)};
        const int first = (row - 2) / 4 * 2 + fieldOfRow;
        const auto& [upper, lower] = weights[(row - 2) % 4];
        return (upper * from.at(first, i) + lower * from.at(first + 2, i) + 4) >> 3;
    });
}

// Every second row of 4:2:2 is (-1, 9, 9, -1) / 16 of the four 4:2:0 rows around it.
inline void interpolateRows(const Conversion& c) {
    copyLuma(c);
    const int last = c.size.height / 2 - 1;
    setChroma(c, [&](const ChromaRows& from, int row, int i) {
        const auto at = [&](int k) { return int{from.at(std::clamp(k, 0, last), i)}; };
        const int k = row / 2;
        if (row % 2 == 0) return at(k);
        return std::clamp((9 * (at(k) + at(k + 1)) - at(k - 1) - at(k + 2) + 8) >> 4, 0, 255);
    });
}

enum SliceArgument { topSlice = 1, middleSlice = 4, bottomSlice = 16, wholeImage = 21 };

// What the two smoothing conversions share. The last two rows of a slice belong to the next one, which starts two rows back.
struct SmoothedRegion {
    explicit SmoothedRegion(const Conversion& c)
        : image(c.source),
          width(c.size.width),
          height(c.size.height),
          isWhole(c.slice == wholeImage),
          startsImage(isWhole || c.slice == topSlice),
          endsImage(isWhole || c.slice == bottomSlice),
          firstRow(startsImage ? 0 : -2),
          endRow(endsImage ? height : height - 2) {}

    // (1, 2, 1) / 4 of three rows, an edge of the image repeated; by means that round, or from one sum.
    int luma(int x, int y, bool byMeans, int constant) const {
        const auto at = [&](int row) { return int{image.sample(image.layout->channels[0], x, row)}; };
        const int above = at(startsImage && y == 0 ? y : y - 1), here = at(y),
                  below = at(endsImage && y == height - 1 ? y : y + 1);
        if (byMeans) return roundedMean(roundedMean(above, here), roundedMean(here, below));
        return std::min((above + 2 * here + below + constant) >> 2, 255);
    }

    // The mean of a chroma row and the next one; the last row of the image has the one before it instead.
    int chroma(const ChromaRows& from, int row, int i, bool rounds) const {
        const int other = endsImage && row == height / 2 - 1 ? row - 1 : row + 1;
        return mean(from.at(row, i), from.at(other, i), rounds);
    }

    const Image& image;
    int width, height;
    bool isWhole, startsImage, endsImage;
    int firstRow, endRow;
};

inline void smoothLumaRow(const Conversion& c, const SmoothedRegion& region, int y, int columnsByMeans, int constant) {
    for (int x = 0; x < region.width; ++x) {
        const int luma = region.luma(x, y, x < columnsByMeans, constant);
        c.destination.sample(c.destination.layout->channels[0], x, y) = static_cast<uint8_t>(luma);
    }
}

// A whole image of one row pair has rules of its own: no means, and chroma as it is.
inline void smoothToPacked(const Conversion& c) {
    const SmoothedRegion region(c);
    const bool isPair = region.isWhole && region.height == 2;
    for (int y = region.firstRow; y < region.endRow; ++y) {
        const bool isOuterPair = (region.startsImage && y < 2) || (region.endsImage && y >= region.height - 2);
        const int columnsByMeans = !isOuterPair ? region.width & ~31 : region.isWhole ? 0 : region.width & ~7;
        smoothLumaRow(c, region, y, columnsByMeans, region.isWhole ? 4 : 0);
        for (const int channel : {1, 2}) {
            const ChromaRows from(c.source, channel), to(c.destination, channel);
            for (int i = 0; i < region.width / 2; ++i)
                to.at(y, i) =
                    static_cast<uint8_t>(isPair ? from.at(0, i) : region.chroma(from, y >> 1, i, 2 * i < columnsByMeans));
        }
    }
}

inline void smoothToPlanes(const Conversion& c) {
    const SmoothedRegion region(c);
    const bool isPair = region.isWhole && region.height == 2;
    const int columnsByMeans = isPair ? 0 : region.width & ~15, samples = region.width / 2;
    for (int y = region.firstRow; y < region.endRow; ++y) smoothLumaRow(c, region, y, columnsByMeans, isPair ? 4 : 0);
    for (const int channel : {1, 2}) {
        const ChromaRows from(c.source, channel), to(c.destination, channel);
        for (int row = region.firstRow / 2; row < region.endRow / 2; ++row)
            for (int i = 0; i < samples; ++i)
                to.at(row, i) = static_cast<uint8_t>(isPair ? from.at(row, i) : region.chroma(from, row, i, i < (samples & ~15)));
    }
}

}  // namespace model
