// Bilinear interpolation of a mosaic, with green by gradients.
#include "frame/arguments.h"
#include "frame/bypass.h"
#include "rawsensor/mosaic.h"
#include "simd/part.h"
#include "simd/sites.h"

namespace zel::ZEL_LEVEL {
namespace {

// Columns and rows at the image's edges, where green is the mean.
constexpr int edge = 2;

// The edges of as many rows as fill the widest vectors are made at once.
constexpr int edgeRows = 32;

// Pixels of a vector.
template <class Element>
constexpr size_t blockOf = vectorBytes / sizeof(Element);

// Lanes alone are too short to bypass the caches.
constexpr bool canBypass = traits.bypassesByParts;

// Some rows with the two above them and the two below. Beyond the image's edges they are reflected, which gives the neighbours
// that are left there their weights.
template <int count>
struct SourceRows {
    const uint8_t* at[count + 4];
    size_t step = 0;  // to as many rows further down
};
template <int count>
struct PixelRows {
    uint8_t* at[count];
    size_t step = 0;
};

// What exceeds the caches: what a call moves, and its source, too.
struct Excess {
    bool call, source;
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
// computed once. at(row, columns) has the samples of a row beside the pixels, from two rows above the first one on; the pixels go
// to an offset in their rows.
template <class Depth, Green green, bool isRedRow, Stores stores = Stores::cached, int count, class At>
ZEL_INLINE void convertBlock(const At& at, const PixelRows<count>& out, ptrdiff_t offset,
                             const Sites<typename Depth::Channel, typename Depth::V> (&sites)[count]) {
    using V = typename Depth::V;
    constexpr int reach = green == Green::byGradient ? 0 : 1;
    V column[count + 4];
    unrolled<count + 4 - reach, reach>([&](int r) ZEL_INLINE_LAMBDA { column[r] = at(r, 0); });
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
        sites[r].store(Destination(out.at[r] + offset, stores == Stores::bypassing), inOrder(here, between, diagonal),
                       inOrder(beside[r + 1].value, here, above.value));
    });
}

// The first pixel that goes to a multiple of the vector, of as many as a block has.
template <size_t size, size_t block>
ZEL_INLINE size_t firstAligned(const uint8_t* out) {
    constexpr size_t inverseOf3 = 43;  // in numbers up to 64
    return (0 - reinterpret_cast<uintptr_t>(out) / size) * inverseOf3 % block;
}

// Pixels `first` to end - 1 of the rows, at least a block, and of as many rows further down as there are groups. The last block
// overlaps the one before it.
template <class Depth, Green green, bool isRedRow, Stores stores = Stores::cached, int count>
ZEL_NOINLINE void convertBlocks(const SourceRows<count>& rows, const PixelRows<count>& out, size_t first, size_t end,
                                bool firstHasColour, int groups = 1) {
    using RowSites = Sites<typename Depth::Channel, typename Depth::V>;
    using V = typename Depth::V;
    constexpr size_t size = sizeof(typename Depth::Element), block = blockOf<typename Depth::Element>;
    const SourceRows<count> from = rows;
    const PixelRows<count> to = out;
    for (size_t read = 0, written = 0; groups != 0; --groups, read += from.step, written += to.step)
        for (size_t at = first;; at = end - block) {
            const bool hasColour = firstHasColour == ((at - first) % 2 == 0);
            const auto convert = [&](const RowSites(&sites)[count]) ZEL_INLINE_LAMBDA {
                for (; at + block <= end; at += block) {
                    const auto samples = [&](int row, int columns) ZEL_INLINE_LAMBDA {
                        return computed((V)loadBytes(from.at[row] + ptrdiff_t(read + at * size) + columns * ptrdiff_t{size}));
                    };
                    convertBlock<Depth, green, isRedRow, stores>(samples, to, ptrdiff_t(written + at * 3 * size), sites);
                }
            };
            if constexpr (count == 1)
                convert({RowSites(hasColour)});
            else
                convert({RowSites(hasColour), RowSites(!hasColour)});
            if (at == end) break;
        }
}

// Less than a block of pixels, through buffers; `firstHasColour` tells the kind of the first one.
template <class Depth, Green green, bool isRedRow, int count>
ZEL_INLINE void convertShort(const SourceRows<count>& rows, const PixelRows<count>& out, size_t pixels, bool firstHasColour) {
    constexpr size_t size = sizeof(typename Depth::Element), block = blockOf<typename Depth::Element>, margin = 2 * size;
    constexpr size_t bufferBytes = 2 * vectorBytes;
    alignas(64) uint8_t source[count + 4][bufferBytes], pixelBuffer[count][3 * vectorBytes];
    SourceRows<count> from;
    PixelRows<count> to;
    for (int i = 0; i < count + 4; ++i) {
        copyToBuffer(source[i], rows.at[i] - margin, pixels * size + 2 * margin, bufferBytes);
        from.at[i] = source[i] + margin;
    }
    for (int i = 0; i < count; ++i) to.at[i] = pixelBuffer[i];
    convertBlocks<Depth, green, isRedRow>(from, to, 0, block, firstHasColour);
    for (int i = 0; i < count; ++i) copyFromBuffer(out.at[i], pixelBuffer[i], pixels * 3 * size);
}

// At least a block of pixels that bypass the caches, where they fill multiples of the vector.
template <class Depth, Green green, bool isRedRow, int count>
ZEL_INLINE void convertPastCaches(const SourceRows<count>& rows, const PixelRows<count>& out, size_t pixels,
                                  bool firstHasColour) {
    constexpr size_t size = sizeof(typename Depth::Element), block = blockOf<typename Depth::Element>;
    const auto hasColour = [&](size_t pixel) { return firstHasColour == (pixel % 2 == 0); };
    // Pixels first .. end - 1 of a block from `start` on. Nothing else is stored: the lines beside them bypass the caches.
    const auto convertPart = [&](size_t start, size_t first, size_t end) {
        alignas(64) uint8_t pixelBuffer[count][3 * vectorBytes];
        PixelRows<count> buffer;
        for (int i = 0; i < count; ++i) buffer.at[i] = moved<uint8_t>(pixelBuffer[i], 0 - start * 3 * size);
        convertBlocks<Depth, green, isRedRow>(rows, buffer, start, start + block, hasColour(start));
        for (int i = 0; i < count; ++i)
            copyBytes(out.at[i] + first * 3 * size, pixelBuffer[i] + (first - start) * 3 * size, (end - first) * 3 * size);
    };
    const size_t start = firstAligned<size, block>(out.at[0]), rest = (pixels - start) % block;
    if (start != 0) convertPart(0, 0, start);
    convertBlocks<Depth, green, isRedRow, Stores::bypassing>(rows, out, start, pixels - rest, hasColour(start));
    if (rest != 0) convertPart(pixels - block, pixels - rest, pixels);
}

// The pixels of a call by the image's columns and rows.
template <class Element>
struct Target {
    uint8_t* origin;
    size_t step;

    ZEL_INLINE uint8_t* at(int x, int y) const { return moved(origin, size_t(y) * step + size_t(x) * 3 * sizeof(Element)); }
};

enum class Side { left, right };

// Of the samples of the four outermost columns at a side of the image, those to the left of the two outermost ones, in them and
// to their right.
template <class Element>
struct EdgeSamples {
    static constexpr int count = 4;
    alignas(16) uint8_t of[2][3][16];  // [side][where]
};
template <class Element>
inline constexpr EdgeSamples<Element> edgeSamples = [] {
    constexpr int count = EdgeSamples<Element>::count, size = sizeof(Element);
    EdgeSamples<Element> e{};
    for (int side = 0; side < 2; ++side)
        for (int where = 0; where < 3; ++where)
            for (int i = 0; i < 16; ++i) {
                const int column = (side == 0 ? 0 : count - edge) + i / size % edge + where - 1;
                e.of[side][where][i] = uint8_t((i / size / count * count + reflected(column, count)) * size + i % size);
            }
    return e;
}();

// The pixels of a part in the two outermost columns at a side of the image. Two don't fill a vector, so those of many rows are
// made at once: the samples of a row stand behind those of the row two above it, which is of the same kind.
template <class Depth, class Element = typename Depth::Element>
ZEL_NOINLINE void convertEdge(const Source<Element>& source, Side side, const Part& part, const Target<Element>& target) {
    using V = typename Depth::V;
    using RowSites = Sites<typename Depth::Channel, V>;
    constexpr int samples = EdgeSamples<Element>::count, block = int(blockOf<Element>);
    const int width = source.size.width, first = side == Side::left ? 0 : width - edge;
    const int left = greater(first, part.left), right = smaller(first + edge, part.right);
    if (left >= right) return;
    // Pairs begin with a red row, and the first line with the row above.
    const int top = part.top - !source.grid.isRedRow(part.top), firstSample = side == Side::left ? 0 : width - samples;
    const int rows = part.bottom - top;
    alignas(64) Element lines[2][(edgeRows / 2 + 1) * samples], pixels[2][edgeRows / 2 * samples * 3];
    const auto gather = [&](const auto& copy) ZEL_INLINE_LAMBDA {
        Element *upper = lines[0], *lower = lines[1];
        for (int64_t y = int64_t{top} - 1; y <= part.bottom; y += 2, upper += samples, lower += samples) {
            copy(upper, source.row(reflected(y, source.size.height)));
            copy(lower, source.row(reflected(y + 1, source.size.height)));
        }
    };
    if (width >= samples)
        gather([&](Element* line, const uint8_t* row) ZEL_INLINE_LAMBDA {
            __builtin_memcpy(line, row + firstSample * ptrdiff_t{sizeof(Element)}, samples * sizeof(Element));
        });
    else
        gather([&](Element* line, const uint8_t* row) {
            for (int i = 0; i < samples; ++i)
                __builtin_memcpy(line + i, row + reflected(firstSample + i, width) * ptrdiff_t{sizeof(Element)}, sizeof(Element));
        });
    Bytes where[3];
    unrolled<3>([&](int i) ZEL_INLINE_LAMBDA { where[i] = everyLane(edgeSamples<Element>.of[int(side)][i]); });
    const PixelRows<2> to{{reinterpret_cast<uint8_t*>(pixels[0]), reinterpret_cast<uint8_t*>(pixels[1])}};
    const bool firstHasColour = (first & 1) == source.grid.colourColumn(top);
    const RowSites sites[2] = {RowSites(firstHasColour), RowSites(!firstHasColour)};
    for (int i = 0; i < (rows + 1) / 2 * samples; i += block) {
        const auto at = [&](int row, int columns) ZEL_INLINE_LAMBDA {
            return (V)shuffle(loadBytes(lines[(row - 1) % 2] + (row - 1) / 2 * samples + i), where[columns + 1]);
        };
        convertBlock<Depth, Green::byMean, true>(at, to, i * 3 * ptrdiff_t{sizeof(Element)}, sites);
    }
    const auto put = [&](auto count) ZEL_INLINE_LAMBDA {
        uint8_t* out = target.at(left, part.top);
        for (auto i = unsigned(part.top - top); i < unsigned(rows); ++i, out = moved(out, target.step))
            __builtin_memcpy(out, pixels[i % 2] + (i / 2 * samples + unsigned(left - first)) * 3, 3 * count * sizeof(Element));
    };
    right - left == edge ? put(Constant<edge>{}) : put(Constant<1>{});
}

// Groups of rows from y on, between the columns at the edges.
template <class Depth, Green green, bool isRedRow, int count, class Element = typename Depth::Element>
ZEL_NOINLINE void convertRows(const Source<Element>& source, int y, int groups, int left, int right,
                              const Target<Element>& target, Excess excess) {
    SourceRows<count> rows;
    for (int i = 0; i < count + 4; ++i)
        rows.at[i] = source.row(reflected(int64_t{y} + i - 2, source.size.height)) + left * ptrdiff_t{sizeof(Element)};
    rows.step = count * size_t(source.step);
    PixelRows<count> out;
    for (int i = 0; i < count; ++i) out.at[i] = target.at(left, y + i);
    out.step = count * target.step;
    const auto pixels = size_t(right - left);
    const bool isShort = pixels < blockOf<Element>, firstHasColour = (left & 1) == source.grid.colourColumn(y);
    // Single rows are too few to bypass the caches.
    constexpr bool canPass = canBypass && count > 1;
    if (!isShort && !(canPass && excess.call))
        return convertBlocks<Depth, green, isRedRow>(rows, out, 0, pixels, firstHasColour, groups);
    for (; groups != 0; --groups) {
        if (isShort) {
            convertShort<Depth, green, isRedRow>(rows, out, pixels, firstHasColour);
        } else if constexpr (canPass) {
            // What the next rows add to the sources of these.
            for (int i = 4; excess.source && i < count + 4; ++i)
                prefetch<Use::read>(moved(rows.at[i], rows.step), pixels * sizeof(Element));
            convertPastCaches<Depth, green, isRedRow>(rows, out, pixels, firstHasColour);
        }
        for (const uint8_t*& row : rows.at) row = moved(row, rows.step);
        for (uint8_t*& row : out.at) row = moved(row, out.step);
    }
}

// The region is not moved where it begins outside the image: what is there is left out of the destination.
ZEL_INLINE Part partOf(ZelRect roi, ZelSize size) {
    return {greater(roi.x, 0), greater(roi.y, 0), endOf(roi.x, roi.width, size.width), endOf(roi.y, roi.height, size.height)};
}

// The columns of a part that are not at the image's edges.
struct InnerColumns {
    int left, right;

    ZEL_INLINE InnerColumns(const Part& part, int width)
        : left(greater(part.left, edge)), right(smaller(part.right, width - edge)) {}
    ZEL_INLINE int64_t count() const { return int64_t{right} - left; }
};

// Of any arguments, which aren't checked yet.
template <class Element>
bool hasShortRows(const Element*, ZelRect roi, ZelSize size, int32_t, Element*, int32_t, int32_t, int32_t) {
    return size.width < edge || InnerColumns(partOf(roi, size), size.width).count() < int64_t{blockOf<Element>};
}

template <class Depth, class Element = typename Depth::Element>
ZelStatus interpolate(const Element* pSrc, ZelRect roi, ZelSize size, int32_t srcStep, Element* pDst, int32_t dstStep,
                      int32_t grid, int32_t) {
    if (const ZelStatus error = checked(pSrc, pDst, size, 2, grid); error != zelStsNoErr) return error;
    const Part part = partOf(roi, size);
    if (part.isEmpty()) return zelStsNoErr;
    const Source<Element> source{reinterpret_cast<const uint8_t*>(pSrc), stepOf<Element>(srcStep), size, Grid(grid)};
    const auto step = size_t(stepOf<Element>(dstStep));
    const Target<Element> target{
        moved(reinterpret_cast<uint8_t*>(pDst), 0 - size_t(roi.y) * step - size_t(roi.x) * 3 * sizeof(Element)), step};
    const size_t pixels = size_t(part.right - part.left) * size_t(part.bottom - part.top);
    const Bypass bypassing(canBypass && exceedsCaches(pixels * 4 * sizeof(Element)));
    // The source stays in the caches that the pixels bypass, unless the call moves twice what they hold.
    const Excess excess{bypassing, exceedsCaches(pixels * 2 * sizeof(Element))};
    const InnerColumns inner(part, size.width);
    Part rows = part;
    for (; rows.top < part.bottom; rows.top = rows.bottom) {
        // As many rows as the edges' are made of at once, from a red row on.
        rows.bottom = rows.top + smaller(part.bottom - rows.top, edgeRows - (rows.top + source.grid.redRow) % edgeRows);
        convertEdge<Depth>(source, Side::left, rows, target);
        convertEdge<Depth>(source, Side::right, rows, target);
        for (int y = rows.top, groups, count; inner.count() > 0 && y < rows.bottom; y += groups * count) {
            const int innerEnd = smaller(rows.bottom, size.height - edge);
            const bool isRed = source.grid.isRedRow(y), isInner = y >= edge && y < innerEnd;
            count = isInner && isRed && y + 1 < innerEnd ? 2 : 1;
            groups = count == 2 ? (innerEnd - y) / 2 : 1;
            const auto convert =
                count == 2 ? convertRows<Depth, Green::byGradient, true, 2>
                : isInner
                    ? (isRed ? convertRows<Depth, Green::byGradient, true, 1> : convertRows<Depth, Green::byGradient, false, 1>)
                    : (isRed ? convertRows<Depth, Green::byMean, true, 1> : convertRows<Depth, Green::byMean, false, 1>);
            convert(source, y, groups, inner.left, inner.right, target, excess);
        }
    }
    return zelStsNoErr;
}

}  // namespace

namespace rows {

constexpr auto zeliCFAToRGB_8u_C1C3R = ByLevel{interpolate<Samples8>, hasShortRows<uint8_t>};
constexpr auto zeliCFAToRGB_16u_C1C3R = ByLevel{interpolate<Samples16>, hasShortRows<uint16_t>};

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_cfa ~, 1
#define ZEL_GROUP cfa
#include "frame/table.h"
