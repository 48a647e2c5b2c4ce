// Adaptive homogeneity-directed interpolation of a mosaic: every pixel is made twice, with green interpolated along the column
// and along the row, and the candidate with the more homogeneous surroundings is taken.
//
// The region is converted in tiles of some columns, from top to bottom. Five stages follow each other at a distance of a row:
// samples, green, red and blue with luma and chroma, homogeneity, choice. Each keeps as many rows as the next one looks at, in
// memory of fixed size that the first level of the cache holds. Where a choice is tied a pixel follows its left neighbour; what a
// tile hands to the one on its right, a byte a row, stands in the caller's buffer.
#include "rawsensor/homogeneity.h"
#include "simd/part.h"

namespace zel::ZEL_LEVEL {
namespace {

enum Candidate { ofColumn, ofRow, candidates };

// Green needs two columns more than the three that its users look at on either side, and a tile begins in an even column.
constexpr int tileColumns = 256, leftMargin = 6, rightMargin = 5, margins = 12;
constexpr int columnsOfTile = tileColumns - margins;

// Columns on either side of a tile from which samples are loaded.
constexpr int reach = 5;

// Elements of a row, with room for what vectors reach beyond its ends.
template <class Element, int count>
struct Line {
    static constexpr int room = vectorBytes / int(sizeof(Element));
    alignas(64) Element elements[count + 2 * room];

    ZEL_INLINE Element* at(ptrdiff_t i) { return elements + room + i; }
    ZEL_INLINE uint8_t* bytesAt(ptrdiff_t i) { return reinterpret_cast<uint8_t*>(at(i)); }
};

// The columns of either parity.
template <class Element>
using Half = Line<Element, tileColumns / 2>;
template <class Element>
struct Halves {
    Half<Element> of[2];
};

template <class T, int count>
struct Ring {
    T rows[count];
    // Rows begin above the image.
    ZEL_INLINE T& operator[](int64_t y) { return rows[unsigned(y + 16) % count]; }
};

// The columns at which ties begin anew, in the rows top .. bottom - 1.
struct Starts {
    int columns[2];
    int top, bottom;
};

// Whether the last pixel of a tile's row takes the column's candidate, for all rows.
struct Ties {
    uint8_t* ofRow;
    bool areRead, areWritten;
};

template <class Depth>
class Tile {
    using Element = typename Depth::Element;
    using V = typename Depth::V;
    using Wide = typename Depth::Wide;
    using WideElement = typename Depth::WideElement;
    using Squares = typename Depth::Squares;
    using SquareElement = typename Depth::SquareElement;
    static constexpr int block = vectorBytes / int(sizeof(WideElement));  // columns of one parity

  public:
    ZEL_INLINE Tile(const Source<Element>& source, const Starts& starts, int left, int right)
        : source_(source),
          starts_(starts),
          left_(left),
          right_(right),
          first_((left - leftMargin + 1) & ~1),
          halfColumns_((right + rightMargin - first_ + 1) / 2) {
        for (int i = 0; i < reach; ++i) {
            reflected_[0][i] = reflected(int64_t{left} - reach + i, source.size.width);
            reflected_[1][i] = reflected(int64_t{source.size.width} + i, source.size.width);
        }
    }

    // Rows top .. bottom - 1.
    ZEL_INLINE void convert(int64_t top, int64_t bottom, uint8_t* out, size_t step, Ties ties) {
        for (int64_t y = top - 5; y < bottom + 5; ++y) {
            loadSamples(y);
            const int64_t green = y - 2, colours = y - 3, homogeneity = y - 4, choice = y - 5;
            if (green >= top - 3) interpolateGreen(green);
            if (colours >= top - 2) interpolateColours(colours);
            if (homogeneity >= top - 2) judge(homogeneity);
            if (choice >= top) {
                prefetch<Use::written>(moved(out, 2 * step), size_t(right_ - left_) * 3 * sizeof(Element));
                choose(choice, out, ties);
                out = moved(out, step);
                ++ties.ofRow;
            }
        }
    }

  private:
    struct Colours {
        Line<Element, tileColumns> of[3];
    };
    struct Planes {
        Halves<WideElement> y, u, v;
    };
    struct Distances {
        Halves<WideElement> luma;
        Halves<SquareElement> chroma;
    };
    struct Distance {
        Wide luma;
        Squares chroma;
    };

    template <class T>
    ZEL_INLINE static Wide load(Half<T>& line, ptrdiff_t i) {
        return (Wide)loadBytes(line.at(i));
    }

    // The columns that the tile looks at, those outside the image reflected.
    ZEL_NOINLINE void loadSamples(int64_t y) {
        const uint8_t* row = source_.row(reflected(y, source_.size.height));
        const int from = left_ - reach, to = right_ + reach, inFrom = greater(from, 0), inTo = smaller(to, source_.size.width);
        const auto sample = [&](int x) { return row + x * ptrdiff_t{sizeof(Element)}; };
        const auto place = [&](int x) { return row_.bytesAt(x - first_); };
        const auto mirror = [&](int begin, int end, const int* columns) {
            for (int x = begin; x < end; ++x) __builtin_memcpy(place(x), sample(columns[x - begin]), sizeof(Element));
        };
        mirror(from, inFrom, reflected_[0]);
        copyBytes(place(inFrom), sample(inFrom), size_t(inTo - inFrom) * sizeof(Element));
        mirror(inTo, to, reflected_[1]);
        // Tiles are too narrow for the processor to foresee their rows.
        prefetch<Use::read>(moved(sample(inFrom), 2 * size_t(source_.step)), size_t(inTo - inFrom) * sizeof(Element));

        Halves<WideElement>& halves = samples_[y];
        for (int i = 0; i < halfColumns_; i += block) {
            const V v = (V)loadBytes(row_.at(2 * i));
            storeVector(halves.of[0].at(i), Depth::even(v));
            storeVector(halves.of[1].at(i), Depth::odd(v));
        }
    }

    // What green is below a sample of the row's colour: from c and its neighbours a, b of green and d, e of its colour.
    ZEL_INLINE static Wide belowSample(Wide c, Wide a, Wide b, Wide d, Wide e) {
        const Wide green = ((a + b) >> 1) + ((c + c - d - e) >> 2);
        const Wide low = a < b ? a : b, high = a < b ? b : a, raised = green < low ? low : green;
        return c - (raised < high ? raised : high);
    }

    ZEL_NOINLINE void interpolateGreen(int64_t y) {
        const int parity = source_.grid.colourColumn(y);
        Half<WideElement>&own = samples_[y].of[parity], &green = samples_[y].of[1 - parity];
        Half<WideElement>&up = samples_[y - 1].of[parity], &down = samples_[y + 1].of[parity], &up2 = samples_[y - 2].of[parity],
        &down2 = samples_[y + 2].of[parity];
        for (int i = 0; i < halfColumns_; i += block) {
            const Wide c = load(own, i);
            storeVector(belowSample_[ofColumn][y].at(i),
                        belowSample(c, load(up, i), load(down, i), load(up2, i), load(down2, i)));
            storeVector(belowSample_[ofRow][y].at(i),
                        belowSample(c, load(green, i + parity - 1), load(green, i + parity), load(own, i - 1), load(own, i + 1)));
        }
    }

    ZEL_NOINLINE void interpolateColours(int64_t y) {
        const bool isRed = source_.grid.isRedRow(y);
        if (source_.grid.colourColumn(y) == 0)
            isRed ? coloursOf<0, true>(y) : coloursOf<0, false>(y);
        else
            isRed ? coloursOf<1, true>(y) : coloursOf<1, false>(y);
    }

    ZEL_INLINE static Wide limited(Wide v) {
        const Wide none{}, highest = none + Depth::highest, raised = v < none ? none : v;
        return raised < highest ? raised : highest;
    }

    template <int parity, bool isRed>
    ZEL_INLINE void coloursOf(int64_t y) {
        for (int c = 0; c < candidates; ++c) {
            Half<WideElement>&up = belowSample_[c][y - 1], &here = belowSample_[c][y], &down = belowSample_[c][y + 1];
            Planes& planes = planes_[c][y];
            Colours& colours = colours_[c][y];
            for (int i = 0; i < halfColumns_; i += block) {
                Wide r[2], g[2], b[2];
                const auto put = [&](int kind, Wide own, Wide green, Wide other) ZEL_INLINE_LAMBDA {
                    r[kind] = isRed ? own : other;
                    g[kind] = green;
                    b[kind] = isRed ? other : own;
                    const auto x = Depth::lumaChroma(r[kind], g[kind], b[kind]);
                    storeVector(planes.y.of[kind].at(i), x.y);
                    storeVector(planes.u.of[kind].at(i), x.u);
                    storeVector(planes.v.of[kind].at(i), x.v);
                };
                const Wide own = load(samples_[y].of[parity], i), green = load(samples_[y].of[1 - parity], i);
                // At the row's colour.
                const Wide greenHere = own - load(here, i);
                const Wide diagonal =
                    load(up, i + parity - 1) + load(up, i + parity) + load(down, i + parity - 1) + load(down, i + parity);
                put(parity, own, greenHere, limited(greenHere + (diagonal >> 2)));
                // At green.
                const Wide beside = load(here, i - parity) + load(here, i + 1 - parity), above = load(up, i) + load(down, i);
                put(1 - parity, limited(green + (beside >> 1)), green, limited(green + (above >> 1)));

                storeVector(colours.of[0].at(2 * i), Depth::joined(r[0], r[1]));
                storeVector(colours.of[1].at(2 * i), Depth::joined(g[0], g[1]));
                storeVector(colours.of[2].at(2 * i), Depth::joined(b[0], b[1]));
            }
        }
    }

    // Between two columns or rows.
    ZEL_INLINE static Distance distance(Planes& a, int parityA, ptrdiff_t iA, Planes& b, int parityB, ptrdiff_t iB) {
        const auto difference = [&](Halves<WideElement>& planeA, Halves<WideElement>& planeB)
                                    ZEL_INLINE_LAMBDA { return load(planeA.of[parityA], iA) - load(planeB.of[parityB], iB); };
        return {absolute(difference(a.y, b.y)), Depth::sumOfSquares(difference(a.u, b.u), difference(a.v, b.v))};
    }
    template <class T>
    ZEL_INLINE static T least(T a, T b) {
        return a < b ? a : b;
    }
    template <class T>
    ZEL_INLINE static T most(T a, T b) {
        return a < b ? b : a;
    }

    // The row's candidate's like neighbours less the column's.
    struct Neighbours {
        Distance left, right, up, down;
    };
    ZEL_INLINE static Wide homogeneity(const Neighbours& row, const Neighbours& column) {
        const Wide luma = least(most(row.left.luma, row.right.luma), most(column.up.luma, column.down.luma));
        const Squares chroma = least(most(row.left.chroma, row.right.chroma), most(column.up.chroma, column.down.chroma));
        const auto isLike = [&](const Distance& d) { return (Wide)(d.luma <= luma) & (Wide)(d.chroma <= chroma); };
        const auto likes = [&](const Neighbours& n) { return isLike(n.left) + isLike(n.right) + isLike(n.up) + isLike(n.down); };
        return likes(column) - likes(row);
    }

    // At columns of one parity. A row's distance to the row below is kept, for that row's distance to the row above.
    template <int parity>
    ZEL_INLINE Wide homogeneityAt(int64_t y, ptrdiff_t i, const Distance (&left)[candidates],
                                  const Distance (&right)[candidates]) {
        Neighbours n[candidates];
        unrolled<candidates>([&](auto c) ZEL_INLINE_LAMBDA {
            WideElement* const luma = toRowAbove_[c].luma.of[parity].at(i);
            SquareElement* const chroma = toRowAbove_[c].chroma.of[parity].at(i);
            n[c] = {left[c],
                    right[c],
                    {(Wide)loadBytes(luma), (Squares)loadBytes(chroma)},
                    distance(planes_[c][y], parity, i, planes_[c][y + 1], parity, i)};
            storeVector(luma, n[c].down.luma);
            storeVector(chroma, n[c].down.chroma);
        });
        return homogeneity(n[ofRow], n[ofColumn]);
    }

    ZEL_NOINLINE void judge(int64_t y) {
        Line<Element, tileColumns>& cells = cells_[y];
        for (int i = 0; i < halfColumns_; i += block) {
            Distance before[candidates], between[candidates], behind[candidates];
            unrolled<candidates>([&](auto c) ZEL_INLINE_LAMBDA {
                Planes& here = planes_[c][y];
                before[c] = distance(here, 1, i - 1, here, 0, i);
                between[c] = distance(here, 0, i, here, 1, i);
                behind[c] = distance(here, 1, i, here, 0, i + 1);
            });
            const Wide even = homogeneityAt<0>(y, i, before, between), odd = homogeneityAt<1>(y, i, between, behind);
            storeVector(cells.at(2 * i), Depth::joined(even, odd));
        }
    }

    // The pixels that take the column's candidate, those with negative sums. One with a sum of 0 takes what the one before it
    // takes, which is how a carry propagates: negative sums generate one.
    ZEL_INLINE static Bits decided(Bits negative, Bits tied, bool columnBefore) {
        const Bits sum = static_cast<Bits>((negative | tied) + negative + columnBefore);
        return static_cast<Bits>(negative | (tied & ~sum));
    }

    ZEL_NOINLINE void choose(int64_t y, uint8_t* out, Ties tie) {
        constexpr int blockPixels = vectorBytes, storedPixels = vectorBytes / int(sizeof(Element));
        constexpr size_t pixelBytes = 3 * sizeof(Element);
        const bool hasStarts = y >= starts_.top && y < starts_.bottom;
        bool columnBefore = tie.areRead && *tie.ofRow;
        for (int x = left_; x < right_; x += blockPixels) {
            const int i = x - first_;
            const Bytes sums = Depth::sumsAt(cells_[y - 1].bytesAt(i), cells_[y].bytesAt(i), cells_[y + 1].bytesAt(i));
            Bits tied = zeros(sums);
            for (const int start : starts_.columns)
                if (hasStarts && start >= x && start < x + blockPixels) tied &= static_cast<Bits>(~(Bits{1} << (start - x)));
            const Bits byColumn = decided(signBits(sums), tied, columnBefore);
            columnBefore = byColumn >> (smaller(blockPixels, right_ - x) - 1) & 1;
            for (int part = 0; part < blockPixels && x + part < right_; part += storedPixels) {
                const auto channel = [&](int n) {
                    const auto of = [&](int c) { return (V)loadBytes(colours_[c][y].of[n].at(i + part)); };
                    return ZEL_LEVEL::choose(static_cast<Bits>(byColumn >> part), of(ofColumn), of(ofRow));
                };
                const int pixels = smaller(storedPixels, right_ - x - part);
                uint8_t* const to = out + size_t(x + part - left_) * pixelBytes;
                if (pixels == storedPixels) {
                    Depth::storePixels(to, channel(0), channel(1), channel(2));
                } else {
                    alignas(64) uint8_t buffer[3 * vectorBytes];
                    Depth::storePixels(buffer, channel(0), channel(1), channel(2));
                    copyFromBuffer(to, buffer, size_t(pixels) * pixelBytes);
                }
            }
        }
        if (tie.areWritten) *tie.ofRow = columnBefore;
    }

    const Source<Element>& source_;
    const Starts& starts_;
    const int left_, right_, first_, halfColumns_;
    int reflected_[2][reach];  // what is loaded for the columns to the left of the image and to its right
    Line<Element, tileColumns> row_;
    Ring<Halves<WideElement>, 5> samples_;
    Ring<Half<WideElement>, 3> belowSample_[candidates];  // at the row's colour, the sample less its green
    Ring<Colours, 3> colours_[candidates];
    Ring<Planes, 2> planes_[candidates];
    Distances toRowAbove_[candidates];
    Ring<Line<Element, tileColumns>, 3> cells_;
};

// The inner part of a side, at least `edge` samples from the image's edges, of whole cells that start with red.
struct Inner {
    int begin, end;

    ZEL_INLINE Inner(int from, int to, int size, int redParity) {
        constexpr int edge = 5;
        begin = greater(from, edge);
        begin += (begin & 1) != redParity;
        end = begin + ((smaller(to, size - edge) - begin) & ~1);
    }
};

template <class Depth, class Element = typename Depth::Element>
ZelStatus demosaic(const Element* pSrc, ZelRect roi, ZelSize size, int32_t srcStep, Element* pDst, int32_t dstStep, int32_t grid,
                   void* pTmp, int32_t tmpStep) {
    if (const ZelStatus error = checked(pSrc, pDst, size, 5, grid); error != zelStsNoErr) return error;
    const int left = greater(roi.x, 0), top = greater(roi.y, 0);
    const Part part{left, top, endOf(left, roi.width, size.width), endOf(top, roi.height, size.height)};
    if (part.isEmpty()) return zelStsNoErr;

    const Source<Element> source{reinterpret_cast<const uint8_t*>(pSrc), stepOf<Element>(srcStep), size, Grid(grid)};
    const Inner columns(left, part.right, size.width, source.grid.redColumn),
        rows(top, part.bottom, size.height, source.grid.redRow);
    const bool hasInner = columns.begin < columns.end && rows.begin < rows.end;
    const Starts starts{{columns.begin, columns.end}, hasInner ? rows.begin : part.bottom, hasInner ? rows.end : part.bottom};

    // The tiles of some rows, as many as the buffer has bytes.
    uint8_t* const ties = static_cast<uint8_t*>(moved(pTmp, tmpStep < 0 ? 29 * size_t(stepOf<Element>(tmpStep)) : 0));
    const int64_t rowsAtOnce = 30 * (int64_t{part.right} - left + 6) * int64_t{sizeof(Element)};
    const auto step = size_t(stepOf<Element>(dstStep));
    for (int64_t from = top; from < part.bottom; from += rowsAtOnce) {
        const int64_t to = from + rowsAtOnce < part.bottom ? from + rowsAtOnce : part.bottom;
        uint8_t* out = moved(reinterpret_cast<uint8_t*>(pDst), size_t(from - top) * step);
        for (int x = left; x < part.right; x += columnsOfTile, out += columnsOfTile * 3 * sizeof(Element)) {
            const int end = part.right - x < columnsOfTile ? part.right : x + columnsOfTile;
            Tile<Depth>(source, starts, x, end).convert(from, to, out, step, {ties, x != left, end != part.right});
            if (end == part.right) break;
        }
    }
    return zelStsNoErr;
}

}  // namespace

namespace rows {

constexpr auto zeliDemosaicAHD_8u_C1C3R = demosaic<Homogeneity8>;
constexpr auto zeliDemosaicAHD_16u_C1C3R = demosaic<Homogeneity16>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_ahd ~, 1
#define ZEL_GROUP ahd
#include "frame/table.h"
