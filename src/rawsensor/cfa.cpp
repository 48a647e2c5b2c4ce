// Bilinear interpolation of a mosaic, with green by gradients.
#include "frame/bypass.h"
#include "rawsensor/mosaic.h"
#include "simd/part.h"
#include "simd/sites.h"

namespace zel::ZEL_LEVEL {
namespace {

// Columns and rows at the image's edges, where green is the mean.
constexpr int edge = 2;

// Lanes alone are too short to bypass the caches.
constexpr bool canBypass = traits.bypassesByParts;

// Some rows with the two above them and the two below. Beyond the image's edges they are reflected, which gives the neighbours
// that are left there their weights.
template <int count>
struct SourceRows {
    const uint8_t* at[count + 4];

    ZEL_INLINE SourceRows movedBy(size_t bytes) const {
        SourceRows moved = *this;
        for (const uint8_t*& row : moved.at) row += bytes;
        return moved;
    }
};
template <int count>
struct PixelRows {
    uint8_t* at[count];
    bool bypassing = false;  // the caches, with what is stored to multiples of the vector
};

// How green is found at a sample of red or blue.
enum class Green { byGradient, byMean };

// A rounded mean, and the bits that made it so.
template <class V>
struct Mean {
    V value, differing;
};
template <class V>
ZEL_INLINE Mean<V> meanOf(V a, V b) {
    return {mean(a, b), a ^ b};
}

// (a + b + c + d + 2) >> 2. The mean of the pairs' means is too high by 1 where a pair was rounded up and so are the two.
template <class V>
ZEL_INLINE V meanOf(const Mean<V>& ab, const Mean<V>& cd) {
    return mean(ab.value, cd.value) - ((ab.differing | cd.differing) & (ab.value ^ cd.value) & 1);
}

// A block of the pixels of some rows, of which every other one has a sample of the row's colour. What rows have in common is
// computed once.
template <class Depth, Green green, bool isRedRow, int count>
ZEL_INLINE void convertBlock(const SourceRows<count>& rows, const PixelRows<count>& out, size_t pixel,
                             const Sites<typename Depth::Channel, typename Depth::V> (&sites)[count]) {
    using V = typename Depth::V;
    constexpr ptrdiff_t size = sizeof(typename Depth::Element);
    const auto at = [&](int row, int columns)
                        ZEL_INLINE_LAMBDA { return computed((V)loadBytes(rows.at[row] + pixel * size + columns * size)); };
    V column[count + 4];
    unrolled<count + 4>([&](int r) ZEL_INLINE_LAMBDA { column[r] = at(r, 0); });
    Mean<V> beside[count + 2];
    unrolled<count + 2>([&](int r) ZEL_INLINE_LAMBDA { beside[r] = meanOf(at(r + 1, -1), at(r + 1, 1)); });
    unrolled<count>([&](auto r) ZEL_INLINE_LAMBDA {
        const V here = column[r + 2];
        const Mean<V> above = meanOf(column[r + 1], column[r + 3]);
        V between = meanOf(above, beside[r + 1]);
        if constexpr (green == Green::byGradient) {
            const V vertical = distance(column[r], column[r + 4]), horizontal = distance(at(r + 2, -2), at(r + 2, 2));
            between = vertical > horizontal ? beside[r + 1].value : vertical < horizontal ? above.value : between;
        }
        // Red and blue, of which the row has the one.
        const V diagonal = meanOf(beside[r], beside[r + 2]);
        constexpr bool isRed = isRedRow == (r % 2 == 0);
        const auto inOrder = [](V own, V middle, V other) ZEL_INLINE_LAMBDA {
            return isRed ? Channels<V>{own, middle, other} : Channels<V>{other, middle, own};
        };
        sites[r].store(Destination(out.at[r] + pixel * 3 * size, canBypass && out.bypassing), inOrder(here, between, diagonal),
                       inOrder(beside[r + 1].value, here, above.value));
    });
}

// The first pixel that goes to a multiple of the vector, of as many as a block has.
template <size_t size, size_t block>
ZEL_INLINE size_t firstAligned(const uint8_t* out) {
    constexpr size_t inverseOf3 = 43;  // in numbers up to 64
    return (0 - reinterpret_cast<uintptr_t>(out) / size) * inverseOf3 % block;
}

// The whole blocks of pixels `first` to end - 1 of the rows.
template <class Depth, Green green, bool isRedRow, int count>
ZEL_NOINLINE void convertBlocks(const SourceRows<count>& rows, const PixelRows<count>& out, size_t first, size_t end,
                                bool firstHasColour) {
    using RowSites = Sites<typename Depth::Channel, typename Depth::V>;
    constexpr size_t block = vectorBytes / sizeof(typename Depth::Element);
    const SourceRows<count> from = rows;
    const PixelRows<count> to = out;
    const auto convert = [&](const RowSites(&sites)[count]) ZEL_INLINE_LAMBDA {
        for (size_t at = first; at + block <= end; at += block) convertBlock<Depth, green, isRedRow, count>(from, to, at, sites);
    };
    if constexpr (count == 1)
        convert({RowSites(firstHasColour)});
    else
        convert({RowSites(firstHasColour), RowSites(!firstHasColour)});
}

// Some pixels of the rows; `firstHasColour` tells the kind of the first one. Blocks are stored to multiples of the vector, but
// for the first and the last one, which overlap those beside them.
template <class Depth, Green green, bool isRedRow, int count>
ZEL_NOINLINE void convertRun(const SourceRows<count>& rows, const PixelRows<count>& out, size_t pixels, bool firstHasColour) {
    constexpr size_t size = sizeof(typename Depth::Element), block = vectorBytes / size, margin = 2 * size;
    constexpr size_t bufferBytes = 2 * vectorBytes;
    alignas(64) uint8_t source[count + 4][bufferBytes], pixelBuffer[count][3 * vectorBytes];
    SourceRows<count> from = rows;
    PixelRows<count> to = out;
    const bool isBuffered = pixels < block;
    if (isBuffered) {
        for (int i = 0; i < count + 4; ++i) {
            copyToBuffer(source[i], rows.at[i] - margin, pixels * size + 2 * margin, bufferBytes);
            from.at[i] = source[i] + margin;
        }
        for (int i = 0; i < count; ++i) to.at[i] = pixelBuffer[i];
    }
    const auto convert = [&](const PixelRows<count>& pixelRows, size_t first, size_t end) {
        convertBlocks<Depth, green, isRedRow, count>(from, pixelRows, first, end, firstHasColour == (first % 2 == 0));
    };
    // Pixels first .. end - 1 of a block from `start` on. Nothing else is stored: the lines beside them bypass the caches.
    const auto convertPart = [&](size_t start, size_t first, size_t end) {
        PixelRows<count> buffer;
        for (int i = 0; i < count; ++i) buffer.at[i] = moved<uint8_t>(pixelBuffer[i], 0 - start * 3 * size);
        convert(buffer, start, start + block);
        for (int i = 0; i < count; ++i)
            copyBytes(out.at[i] + first * 3 * size, pixelBuffer[i] + (first - start) * 3 * size, (end - first) * 3 * size);
    };
    if (pixels < 2 * block) {
        convert(to, 0, block);
        if (pixels > block) convert(to, pixels - block, pixels);
    } else {
        const size_t start = firstAligned<size, block>(to.at[0]), rest = (pixels - start) % block;
        if (start != 0 && out.bypassing)
            convertPart(0, 0, start);
        else if (start != 0)
            convert(to, 0, block);
        convert(to, start, pixels);
        if (rest != 0 && out.bypassing)
            convertPart(pixels - block, pixels - rest, pixels);
        else if (rest != 0)
            convert(to, pixels - block, pixels);
    }
    if (isBuffered)
        for (int i = 0; i < count; ++i) copyFromBuffer(out.at[i], pixelBuffer[i], pixels * 3 * size);
}

// A pixel at the left or right edge, where green is the mean.
template <class Element>
ZEL_INLINE void convertEdgePixel(const uint8_t* const* rows, int x, int width, bool hasColour, bool isRedRow, uint8_t* out) {
    const auto at = [](const uint8_t* row, int column) {
        Element e;
        __builtin_memcpy(&e, row + column * ptrdiff_t{sizeof e}, sizeof e);
        return unsigned(e);
    };
    const int left = reflected(x - 1, width), right = reflected(x + 1, width);
    const uint8_t *const upper = rows[1], *const row = rows[2], *const lower = rows[3];
    const unsigned here = at(row, x), beside = at(row, left) + at(row, right), above = at(upper, x) + at(lower, x);
    unsigned own = (beside + 1) >> 1, green = here, other = (above + 1) >> 1;
    if (hasColour) {
        own = here;
        green = (beside + above + 2) >> 2;
        other = (at(upper, left) + at(upper, right) + at(lower, left) + at(lower, right) + 2) >> 2;
    }
    const Element pixel[3] = {Element(isRedRow ? own : other), Element(green), Element(isRedRow ? other : own)};
    __builtin_memcpy(out, pixel, sizeof pixel);
}

// Columns left .. right - 1 of the rows from y on.
template <class Depth, Green green, int count>
ZEL_NOINLINE void convertRows(const Source<typename Depth::Element>& source, int y, int left, int right,
                              const PixelRows<count>& out) {
    using Element = typename Depth::Element;
    constexpr ptrdiff_t size = sizeof(Element);
    const int width = source.size.width;
    SourceRows<count> rows;
    for (int i = 0; i < count + 4; ++i) rows.at[i] = source.row(reflected(int64_t{y} + i - 2, source.size.height));
    const int innerLeft = smaller(greater(left, edge), right), innerRight = greater(smaller(right, width - edge), innerLeft);
    for (int r = 0; r < count; ++r) {
        const bool isRedRow = source.grid.isRedRow(y + r);
        for (int x = left; x < right; ++x) {
            if (x == innerLeft) x = innerRight;
            if (x == right) break;
            convertEdgePixel<Element>(rows.at + r, x, width, (x & 1) == source.grid.colourColumn(y + r), isRedRow,
                                      out.at[r] + (x - left) * 3 * size);
        }
    }
    if (innerLeft == innerRight) return;
    const SourceRows<count> inner = rows.movedBy(size_t(innerLeft * size));
    PixelRows<count> innerOut = out;
    for (uint8_t*& row : innerOut.at) row += (innerLeft - left) * 3 * size;
    const auto convert = source.grid.isRedRow(y) ? convertRun<Depth, green, true, count> : convertRun<Depth, green, false, count>;
    convert(inner, innerOut, size_t(innerRight - innerLeft), (innerLeft & 1) == source.grid.colourColumn(y));
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
    const size_t pixels = size_t(part.right - part.left) * size_t(part.bottom - part.top);
    const Bypass bypassing(canBypass && exceedsCaches(pixels * 4 * sizeof(Element)));
    for (int y = part.top; y < part.bottom;) {
        uint8_t* const second = moved(out, step);
        const int last = size.height - edge - 1;
        if (y < edge || y > last) {
            convertRows<Depth, Green::byMean, 1>(source, y, part.left, part.right, {{out}, bypassing});
        } else if (y == last || y + 1 == part.bottom) {
            convertRows<Depth, Green::byGradient, 1>(source, y, part.left, part.right, {{out}, bypassing});
        } else {
            convertRows<Depth, Green::byGradient, 2>(source, y, part.left, part.right, {{out, second}, bypassing});
            ++y;
            out = second;
        }
        ++y;
        out = moved(out, step);
    }
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
