// Bilinear interpolation of a mosaic, with green by gradients.
#include "rawsensor/mosaic.h"
#include "simd/part.h"

namespace zel::ZEL_LEVEL {
namespace {

// A row and those around it. Beyond the image's edges they are reflected, which gives the neighbours that are left there their
// weights.
struct FiveRows {
    const uint8_t *up2, *up, *here, *down, *down2;

    ZEL_INLINE FiveRows movedBy(size_t bytes) const {
        return {up2 + bytes, up + bytes, here + bytes, down + bytes, down2 + bytes};
    }
};

// How green is found at a sample of red or blue.
enum class Green { byGradient, byMean };

// A block of a row's pixels, of which those at `sites` have samples of the row's colour and the others of green.
template <class Depth, Green green, bool isRedRow>
ZEL_INLINE void convertBlock(const FiveRows& rows, uint8_t* out, typename Depth::V sites) {
    using V = typename Depth::V;
    const auto at = [](const uint8_t* row, int columns) {
        return (V)loadBytes(row + columns * ptrdiff_t{sizeof(typename Depth::Element)});
    };
    const V here = at(rows.here, 0), up = at(rows.up, 0), down = at(rows.down, 0), left = at(rows.here, -1),
            right = at(rows.here, 1);
    const V beside = mean(left, right), above = mean(up, down);
    const V diagonal = meanOfFour(at(rows.up, -1), at(rows.up, 1), at(rows.down, -1), at(rows.down, 1));
    V between = meanOfFour(up, down, left, right);
    if constexpr (green == Green::byGradient) {
        const V vertical = distance(at(rows.up2, 0), at(rows.down2, 0)),
                horizontal = distance(at(rows.here, -2), at(rows.here, 2));
        between = vertical > horizontal ? beside : vertical < horizontal ? above : between;
    }
    const auto bySite = [&](V atColour, V atGreen) { return (atColour & sites) | (atGreen & ~sites); };
    const V own = bySite(here, beside), other = bySite(diagonal, above);
    Depth::storePixels(out, isRedRow ? own : other, bySite(between, here), isRedRow ? other : own);
}

// The first pixel that goes to a multiple of the vector, of as many as a block has.
template <size_t size, size_t block>
ZEL_INLINE size_t firstAligned(const uint8_t* out) {
    constexpr size_t inverseOf3 = 43;  // in numbers up to 64
    return (0 - reinterpret_cast<uintptr_t>(out) / size) * inverseOf3 % block;
}

// Some pixels of a row; `firstHasColour` tells the kind of the first one. Blocks are stored to multiples of the vector, but for
// the first and the last one, which overlap those beside them.
template <class Depth, Green green, bool isRedRow>
ZEL_OWN_CODE void convertRun(const FiveRows& rows, uint8_t* out, size_t pixels, bool firstHasColour) {
    using V = typename Depth::V;
    constexpr size_t size = sizeof(typename Depth::Element), block = vectorBytes / size;
    const V even = Depth::atEvenPlaces(), sites = firstHasColour ? even : ~even;
    const auto sitesFrom = [&](size_t at) { return at % 2 == 0 ? sites : ~sites; };
    const auto convert = [&](size_t at, V sitesOfBlock) ZEL_INLINE_LAMBDA {
        convertBlock<Depth, green, isRedRow>(rows.movedBy(at * size), out + at * 3 * size, sitesOfBlock);
    };
    if (pixels >= 2 * block) {
        const size_t start = firstAligned<size, block>(out);
        if (start != 0) convert(0, sites);
        size_t at = start;
        for (const V sitesOfBlock = sitesFrom(start); at + block <= pixels; at += block) convert(at, sitesOfBlock);
        if (at != pixels) convert(pixels - block, sitesFrom(pixels));
        return;
    }
    if (pixels >= block) {
        convert(0, sites);
        convert(pixels - block, sitesFrom(pixels));
        return;
    }
    constexpr size_t margin = 2 * size, bufferBytes = 2 * vectorBytes;
    alignas(64) uint8_t source[5][bufferBytes], pixelBuffer[3 * vectorBytes];
    const uint8_t* const from[5] = {rows.up2, rows.up, rows.here, rows.down, rows.down2};
    for (int i = 0; i < 5; ++i) copyToBuffer(source[i], from[i] - margin, pixels * size + 2 * margin, bufferBytes);
    const FiveRows copies{source[0], source[1], source[2], source[3], source[4]};
    convertBlock<Depth, green, isRedRow>(copies.movedBy(margin), pixelBuffer, sites);
    copyFromBuffer(out, pixelBuffer, pixels * 3 * size);
}

// A pixel at the left or right edge, where green is the mean.
template <class Element>
ZEL_INLINE void convertEdgePixel(const FiveRows& rows, int x, int width, bool hasColour, bool isRedRow, uint8_t* out) {
    const auto at = [](const uint8_t* row, int column) {
        Element e;
        __builtin_memcpy(&e, row + column * ptrdiff_t{sizeof e}, sizeof e);
        return unsigned(e);
    };
    const int left = reflected(x - 1, width), right = reflected(x + 1, width);
    const unsigned here = at(rows.here, x), beside = at(rows.here, left) + at(rows.here, right),
                   above = at(rows.up, x) + at(rows.down, x);
    unsigned own = (beside + 1) >> 1, green = here, other = (above + 1) >> 1;
    if (hasColour) {
        own = here;
        green = (beside + above + 2) >> 2;
        other = (at(rows.up, left) + at(rows.up, right) + at(rows.down, left) + at(rows.down, right) + 2) >> 2;
    }
    const Element pixel[3] = {Element(isRedRow ? own : other), Element(green), Element(isRedRow ? other : own)};
    __builtin_memcpy(out, pixel, sizeof pixel);
}

template <class Depth, Green green>
ZEL_INLINE void convertInner(const FiveRows& rows, uint8_t* out, size_t pixels, bool firstHasColour, bool isRedRow) {
    if (isRedRow)
        convertRun<Depth, green, true>(rows, out, pixels, firstHasColour);
    else
        convertRun<Depth, green, false>(rows, out, pixels, firstHasColour);
}

// Columns left .. right - 1 of row y.
template <class Depth>
ZEL_OWN_CODE void convertRow(const Source<typename Depth::Element>& source, int y, int left, int right, uint8_t* out) {
    using Element = typename Depth::Element;
    constexpr int edge = 2;
    constexpr ptrdiff_t size = sizeof(Element);
    const int width = source.size.width, height = source.size.height;
    const auto row = [&](int distance) { return source.row(reflected(int64_t{y} + distance, height)); };
    const FiveRows rows{row(-2), row(-1), row(0), row(1), row(2)};
    const bool isRedRow = source.grid.isRedRow(y);
    const auto hasColour = [&](int x) { return (x & 1) == source.grid.colourColumn(y); };
    const auto convertEdge = [&](int from, int to) {
        for (int x = from; x < to; ++x)
            convertEdgePixel<Element>(rows, x, width, hasColour(x), isRedRow, out + (x - left) * 3 * size);
    };
    const int innerLeft = smaller(greater(left, edge), right), innerRight = greater(smaller(right, width - edge), innerLeft);
    convertEdge(left, innerLeft);
    convertEdge(innerRight, right);
    if (innerLeft == innerRight) return;
    const FiveRows inner = rows.movedBy(size_t(innerLeft * size));
    uint8_t* const innerOut = out + (innerLeft - left) * 3 * size;
    const auto pixels = size_t(innerRight - innerLeft);
    if (y >= edge && y < height - edge)
        convertInner<Depth, Green::byGradient>(inner, innerOut, pixels, hasColour(innerLeft), isRedRow);
    else
        convertInner<Depth, Green::byMean>(inner, innerOut, pixels, hasColour(innerLeft), isRedRow);
}

// The region is not moved where it begins outside the image: what is there is left out of the destination.
template <class Depth, class Element = typename Depth::Element>
ZelStatus interpolate(const Element* pSrc, ZelRect roi, ZelSize size, int32_t srcStep, Element* pDst, int32_t dstStep,
                      int32_t grid, int32_t) {
    if (const ZelStatus error = checked(pSrc, pDst, size, 2, grid); error != zelStsNoErr) return error;
    const Part part{greater(roi.x, 0), greater(roi.y, 0), endOf(roi.x, roi.width, size.width),
                    endOf(roi.y, roi.height, size.height)};
    if (part.isEmpty()) return zelStsNoErr;
    const Source<Element> source{reinterpret_cast<const uint8_t*>(pSrc), stepOf<Element>(srcStep), size, Grid(grid)};
    const auto step = size_t(stepOf<Element>(dstStep));
    uint8_t* out = moved(reinterpret_cast<uint8_t*>(pDst), (size_t(part.left) - size_t(roi.x)) * 3 * sizeof(Element));
    out = moved(out, (size_t(part.top) - size_t(roi.y)) * step);
    for (int y = part.top; y < part.bottom; ++y, out = moved(out, step)) convertRow<Depth>(source, y, part.left, part.right, out);
    return zelStsNoErr;
}

}  // namespace

namespace rows {

constexpr auto zeliCFAToRGB_8u_C1C3R = interpolate<Samples8>;
constexpr auto zeliCFAToRGB_16u_C1C3R = interpolate<Samples16>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_cfa ~, 1
#define ZEL_GROUP cfa
#include "frame/table.h"
