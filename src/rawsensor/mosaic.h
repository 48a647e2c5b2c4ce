// The mosaic of a raw sensor: which sample has which colour, and the part of it that a call converts.
#pragma once

#include "frame/kernel.h"
#include "simd/samples.h"
#include "zelcc/rawsensor.h"

namespace zel::ZEL_LEVEL {

// Three elements a pixel.
struct Samples8 {
    using Channel = Depth8u;
    using Element = uint8_t;
    using V = Bytes;
    ZEL_INLINE static void storePixels(uint8_t* p, V r, V g, V b) { InterleavedThree<Depth8u>::store(p, {r, g, b}); }
};
struct Samples16 {
    using Channel = Depth16u;
    using Element = uint16_t;
    using V = UWords;
    ZEL_INLINE static void storePixels(uint8_t* p, V r, V g, V b) {
        InterleavedThree<Depth16u>::store(p, {(Words)r, (Words)g, (Words)b});
    }
};

// Whether red stands in the odd columns and the odd rows of the image. In every row the samples of red or blue, its colour, take
// turns with those of green.
struct Grid {
    int redColumn, redRow;

    ZEL_INLINE explicit Grid(int32_t grid)
        : redColumn(grid == zelBayerBGGR || grid == zelBayerGRBG), redRow(grid == zelBayerBGGR || grid == zelBayerGBRG) {}

    ZEL_INLINE bool isRedRow(int64_t y) const { return (y & 1) == redRow; }
    // The parity of the columns that have the row's colour.
    ZEL_INLINE int colourColumn(int64_t y) const { return redColumn ^ redRow ^ int(y & 1); }
};

// Columns left .. right - 1, rows top .. bottom - 1.
struct Part {
    int left, top, right, bottom;

    ZEL_INLINE bool isEmpty() const { return left >= right || top >= bottom; }
};

ZEL_INLINE int smaller(int a, int b) { return a < b ? a : b; }
ZEL_INLINE int greater(int a, int b) { return a > b ? a : b; }

// Where a side ends that is cut at the limit. It may be of any length.
ZEL_INLINE int endOf(int start, int length, int limit) {
    const int64_t end = int64_t{start} + length;
    return end < limit ? int(end < INT32_MIN ? INT32_MIN : end) : limit;
}

template <class Element>
struct Source {
    const uint8_t* first;
    ptrdiff_t step;
    ZelSize size;
    Grid grid;

    ZEL_INLINE const uint8_t* row(int y) const { return moved(first, size_t(y) * size_t(step)); }
};

template <class Element>
constexpr ptrdiff_t stepOf(int32_t step) {
    return step & -static_cast<int32_t>(sizeof(Element));
}

ZEL_INLINE ZelStatus checked(const void* source, const void* destination, ZelSize size, int minimum, int32_t grid) {
    if (!source || !destination) return zelStsNullPtrErr;
    if (size.width < minimum || size.height < minimum) return zelStsSizeErr;
    return grid < zelBayerBGGR || grid > zelBayerGRBG ? zelStsBadArgErr : zelStsNoErr;
}

// An index beyond the edges is reflected about the outermost samples, until it is inside.
ZEL_INLINE constexpr int reflected(int64_t index, int64_t size) {
    while (index < 0 || index >= size) index = index < 0 ? -index : 2 * (size - 1) - index;
    return int(index);
}

}  // namespace zel::ZEL_LEVEL
