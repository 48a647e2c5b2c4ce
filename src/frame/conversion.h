// What an export of most families is made of, as constant data, and the driver that runs it. A conversion goes over chroma sites
// (a site is one pixel at full resolution). Each of its streams is a run of bytes through memory with a fixed number of bytes a
// site: a row of packed pixels, a row of a plane, or one of the two rows under a row of 4:2:0 chroma. A kernel moves along all
// streams by whole blocks of sites; the driver walks the rows and puts what is left at a row's end through the same kernel by way
// of a buffer.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "frame/level.h"
#include "zelcc/types.h"

namespace zel::ZEL_LEVEL {

constexpr int maxSources = 6;
constexpr int maxDestinations = 4;
constexpr int maxStreamBlock = 256;  // bytes that a block takes at most in one stream

// Where a kernel reads and writes.
struct Row {
    const uint8_t* in[maxSources];
    uint8_t* out[maxDestinations];
    uint32_t alpha;  // the bits of the element that the caller gives
};

struct Stream {
    uint8_t plane;
    uint8_t bytes;       // a site
    int8_t row = 0;      // in the group of rows that is done at once; a source's may lie in a group before or after
    uint8_t rows = 1;    // that a group has in this plane
    uint8_t offset = 0;  // bytes from the plane's first pixel
};

// Steps may have any value and are added once more after the last row, so the sum wraps rather than overflows.
template <class Byte>
ZEL_INLINE Byte* moved(Byte* p, size_t bytes) {
    return reinterpret_cast<Byte*>(reinterpret_cast<uintptr_t>(p) + bytes);
}

// From one group of rows to the next.
struct Steps {
    size_t in[maxSources];
    size_t out[maxDestinations];
};

// A rule bound to its layouts: converts `count` blocks from the left edge of each of some groups of rows. It reads a whole block
// before it writes it, so a row may be converted over itself.
struct Kernel {
    void (*blocks)(const void* constants, const Row& first, const Steps& steps, size_t groups, size_t count) = nullptr;
    const void* constants = nullptr;
    int sites = 1;  // a block
};

// The kernel K, a type made from its `Constants` that converts one block of a row by its call operator, or some blocks by
// `blocks`. The constants must outlive the calls.
template <class K>
constexpr Kernel kernel(const typename K::Constants* constants) {
    constexpr auto blocks = [](const void* c, const Row& first, const Steps& steps, size_t groups, size_t count) {
        const auto& k = *static_cast<const typename K::Constants*>(c);
        Row row = first;  // which no store can reach, so the pointers stay in registers
        // Written out, or the pointers go through memory.
        const auto next = [&]() ZEL_INLINE_LAMBDA {
#pragma GCC unroll 8
            for (int i = 0; i < maxSources; ++i) row.in[i] = moved(row.in[i], steps.in[i]);
#pragma GCC unroll 8
            for (int i = 0; i < maxDestinations; ++i) row.out[i] = moved(row.out[i], steps.out[i]);
        };
        if constexpr (requires { K::blocks(k, row, count); }) {
            for (; groups != 0; --groups, next()) K::blocks(k, row, count);
        } else {
            const K convertBlock(k);
            for (; groups != 0; --groups, next())
                for (size_t i = 0; i < count; ++i) convertBlock(row, i);
        }
    };
    return {blocks, constants, K::sites};
}
template <class K>
constexpr Kernel kernel(const typename K::Constants& constants) {
    return kernel<K>(&constants);
}

struct Site {
    uint8_t width, height;  // in pixels
};

// The streams of an image.
struct Layout {
    int count;
    Stream streams[maxSources];
};

// The single pixel at the end of an odd row, where a packed 4:2:2 layout keeps it: it is converted as half of a site that is made
// up in a buffer.
struct OddPixel {
    void (*makeSite)(uint8_t* site, const uint8_t* pixel, int siteBytes, bool alone) = nullptr;
    Kernel rule{}, ruleAlone{};  // the second one where the row has no other pixel
};

struct Minimum {
    int width, height;
};

// A region that does not end on a whole site: cut down to whole sites, with or without a warning, or an error.
enum class OddSize { accepted, warned, refused };

// The order of the checks: pointer arguments, size, entries of plane arrays. Some conversions test for an empty region apart.
enum class Checks {
    pointersFirst,
    planesFirst,  // pointers and entries before the size
    sizeFirst,
    emptyFirst,    // an empty region, pointers and entries, the size
    emptyBetween,  // pointers, an empty region, entries, the size
    stepsLast,     // pointers and entries, the size, steps below 1
    rangeFirst,    // the range of values, then as stepsLast
};

struct Conversion {
    Site site;
    Layout from, to;
    Kernel block;                              // the rule of the columns that blockColumns counts from the left edge
    Kernel bypassing{};                        // the same with stores that bypass the cache, to multiples of 16
    Kernel tail{};                             // the rule of the others
    int (*blockColumns)(int width) = nullptr;  // null: the block rule owns the whole row
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = Checks::pointersFirst;
    OddPixel oddPixel{};
    bool lastSiteAlone = false;  // streams with an offset reach into the next site; the last one has none and takes its own
    Kernel lastSite{};           // a kernel of single sites for it, in place of the tail's
    bool keepsAlpha = false;
};

// A pair of conversions of which the images' alignment picks one: all addresses and steps multiples of 16, or not.
struct ByAlignment {
    const Conversion& aligned;
    const Conversion& other;
};

template <int pixels>
constexpr int wholeBlocks(int width) {
    return width & -pixels;
}

// The images of a call.
struct Images {
    const uint8_t* source[4];
    ptrdiff_t sourceStep[4];
    uint8_t* destination[4];
    ptrdiff_t destinationStep[4];
    ZelSize size;
    uint32_t alpha;  // the element's bits
    int32_t slice;
    const void* parameters;    // the caller's weights or matrix
    float lowerEnd, upperEnd;  // of the range of values
    bool stepsCut;             // a step as given was no multiple of the element
};

// The groups of rows that are converted: from the first up to the end, which is not among them. Negative numbers and an end of 0
// count from behind the last one.
struct Groups {
    int first = 0, end = 0;
};

#if ZEL_LANES < 4
// The places do not overlap.
inline void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
    // The last piece overlaps the one before it.
    const auto copyPieces = [&](auto piece) {
        constexpr size_t size = sizeof piece;
        for (size_t i = 0; i + size < bytes; i += size) __builtin_memcpy(to + i, from + i, size);
        __builtin_memcpy(to + bytes - size, from + bytes - size, size);
    };
    if (bytes >= 16) {
        copyPieces(__m128i{});
    } else if (bytes >= 8) {
        copyPieces(uint64_t{});
    } else if (bytes >= 4) {
        copyPieces(uint32_t{});
    } else {
        for (size_t i = 0; i < bytes; ++i) to[i] = from[i];
    }
}
#endif

// The bytes at a row's end that do not fill a block go through a buffer of whole vectors.
ZEL_INLINE void copyToBuffer(uint8_t* buffer, const uint8_t* from, size_t bytes) {
#if ZEL_LANES == 4
    // Whole vectors are stored, so that the kernel's loads need not wait for them.
    for (size_t i = 0; i < bytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_store_si512(buffer + i, _mm512_maskz_loadu_epi8(mask, from + i));
    }
#else
    copyShort(buffer, from, bytes);
#endif
}

ZEL_INLINE void copyFromBuffer(uint8_t* to, const uint8_t* buffer, size_t bytes) {
#if ZEL_LANES == 4
    for (size_t i = 0; i < bytes; i += 64) {
        const __mmask64 mask = bytes - i >= 64 ? ~uint64_t{0} : (uint64_t{1} << (bytes - i)) - 1;
        _mm512_mask_storeu_epi8(to + i, mask, _mm512_load_si512(buffer + i));
    }
#else
    copyShort(to, buffer, bytes);
#endif
}

// Fewer sites than a block.
ZEL_OWN_CODE inline void convertPart(const Conversion& c, const Kernel& kernel, const void* constants, const Row& row,
                                     size_t sites) {
    alignas(64) uint8_t source[maxSources][maxStreamBlock];
    alignas(64) uint8_t destination[maxDestinations][maxStreamBlock];
    Row buffer;
    buffer.alpha = row.alpha;
    for (int i = 0; i < c.from.count; ++i) {
        copyToBuffer(source[i], row.in[i], sites * c.from.streams[i].bytes);
        buffer.in[i] = source[i];
    }
    for (int i = 0; i < c.to.count; ++i) {
        if (c.keepsAlpha) copyToBuffer(destination[i], row.out[i], sites * c.to.streams[i].bytes);
        buffer.out[i] = destination[i];
    }
    kernel.blocks(constants, buffer, {}, 1, 1);
    for (int i = 0; i < c.to.count; ++i) copyFromBuffer(row.out[i], destination[i], sites * c.to.streams[i].bytes);
}

ZEL_OWN_CODE inline void convertOddPixel(const Conversion& c, const Row& row, bool alone) {
    alignas(64) uint8_t source[maxSources][maxStreamBlock];
    alignas(64) uint8_t destination[maxDestinations][maxStreamBlock];
    Row buffer;
    buffer.alpha = row.alpha;
    for (int i = 0; i < c.from.count; ++i) {
        c.oddPixel.makeSite(source[i], row.in[i], c.from.streams[i].bytes, alone);
        buffer.in[i] = source[i];
    }
    for (int i = 0; i < c.to.count; ++i) buffer.out[i] = destination[i];
    const Kernel& kernel = alone ? c.oddPixel.ruleAlone : c.oddPixel.rule;
    kernel.blocks(kernel.constants, buffer, {}, 1, 1);
    for (int i = 0; i < c.to.count; ++i) copyFromBuffer(row.out[i], destination[i], c.to.streams[i].bytes / 2);
}

// The row some sites further on. Field by field: a copy of the whole record would wait for the pointers that were just written.
struct MovedRow : Row {
    ZEL_INLINE MovedRow(const Conversion& c, const Row& row, size_t sites) {
        for (int i = 0; i < c.from.count; ++i) in[i] = row.in[i] + sites * c.from.streams[i].bytes;
        for (int i = 0; i < c.to.count; ++i) out[i] = row.out[i] + sites * c.to.streams[i].bytes;
        alpha = row.alpha;
    }
    ZEL_INLINE void next(const Conversion& c, const Steps& steps, size_t groups = 1) {
        for (int i = 0; i < c.from.count; ++i) in[i] = moved(in[i], steps.in[i] * groups);
        for (int i = 0; i < c.to.count; ++i) out[i] = moved(out[i], steps.out[i] * groups);
    }
};

// The consecutive sites of a row that follow one rule, with as many sites before them that are converted later.
struct Run {
    const Kernel& kernel;
    const Kernel& whole;  // the same rule for all blocks but the last one
    const void* constants;
    size_t before, sites, blocks, rest;
    ptrdiff_t lastBlock;  // where one more block ends with the last site; negative where the row has no room for it

    Run(const Kernel& k, const Kernel& whole, const void* constantsOfCall, size_t before, size_t sites, bool overlapping)
        : kernel(k),
          whole(whole),
          constants(constantsOfCall ? constantsOfCall : k.constants),
          before(before),
          sites(sites),
          blocks(sites / unsigned(k.sites)),
          rest(sites % unsigned(k.sites)),
          lastBlock(overlapping ? ptrdiff_t(before + sites) - k.sites : -1) {}

    ZEL_INLINE void operator()(const Conversion& c, const Row& start, const Steps& steps, size_t groups) const {
        if (blocks != 0 && before == 0) whole.blocks(constants, start, steps, groups, blocks);
        if (blocks != 0 && before != 0) whole.blocks(constants, MovedRow(c, start, before), steps, groups, blocks);
        if (rest == 0) return;
        if (lastBlock >= 0) {
            kernel.blocks(constants, MovedRow(c, start, size_t(lastBlock)), steps, groups, 1);
        } else {
            MovedRow part(c, start, before + sites - rest);
            for (; groups != 0; --groups, part.next(c, steps)) convertPart(c, kernel, constants, part, rest);
        }
    }
};

// What stands at the end of rows beside the runs: a last site that has no neighbour, or an odd pixel.
ZEL_OWN_CODE inline void convertEnds(const Conversion& c, MovedRow end, const Steps& steps, size_t groups, bool hasOddPixel,
                                     bool alone) {
    if (c.lastSiteAlone)
        for (int i = 0; i < c.from.count; ++i) end.in[i] -= c.from.streams[i].offset;
    if (c.lastSite.blocks) c.lastSite.blocks(c.lastSite.constants, end, steps, groups, 1);
    for (; groups != 0; --groups, end.next(c, steps)) {
        if (c.lastSiteAlone && !c.lastSite.blocks) convertPart(c, c.tail, c.tail.constants, end, 1);
        if (hasOddPixel) convertOddPixel(c, end, alone);
    }
}

// Rows that follow each other in memory are one long row to a rule that does not look at columns.
ZEL_INLINE bool isContiguous(const Conversion& c, const Images& images) {
    const size_t columns = unsigned(images.size.width) / c.site.width;
    bool contiguous = true;
    for (int i = 0; i < c.from.count; ++i) {
        const Stream& s = c.from.streams[i];
        contiguous &= s.rows == 1 && images.sourceStep[s.plane] == ptrdiff_t(columns * s.bytes);
    }
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        contiguous &= s.rows == 1 && images.destinationStep[s.plane] == ptrdiff_t(columns * s.bytes);
    }
    return contiguous;
}

// Whether a row is written over what an earlier one has left.
ZEL_INLINE bool rowsOverlap(const Conversion& c, const Images& images, size_t columns) {
    bool overlap = false;
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        const ptrdiff_t step = images.destinationStep[s.plane];
        overlap |= size_t(step < 0 ? -step : step) < columns * s.bytes;
    }
    return overlap;
}

ZEL_INLINE bool hasOddPixel(const Conversion& c, ZelSize size) { return c.oddPixel.makeSite && size.width % 2 != 0; }

// Whether all rows make up one.
ZEL_INLINE bool isOneRow(const Conversion& c, const Images& images) {
    const unsigned width = unsigned(images.size.width);
    const unsigned whole = width - width % c.site.width,
                   blockColumns = c.blockColumns ? unsigned(c.blockColumns(int(width))) : whole;
    const bool oneRule = (blockColumns == 0 || blockColumns == whole) && !c.lastSiteAlone && !hasOddPixel(c, images.size);
    return oneRule && isContiguous(c, images);
}

// Whether an image is source and destination.
ZEL_INLINE bool sharesImages(const Conversion& c, const Row& first) {
    bool shared = false;
    for (int i = 0; i < c.from.count; ++i)
        for (int k = 0; k < c.to.count; ++k) shared |= first.in[i] == first.out[k];
    return shared;
}

// Constants that are made at the call take the place of the kernels' own.
ZEL_OWN_CODE inline void convert(const Conversion& c, const Images& images, Groups part = {}, bool bypassing = false,
                                 const void* constants = nullptr) {
    const int width = images.size.width, allGroups = images.size.height / c.site.height;
    const int firstGroup = part.first < 0 ? allGroups + part.first : part.first;
    const int endGroup = part.end > 0 ? part.end : allGroups + part.end;
    const bool oddPixel = hasOddPixel(c, images.size);
    size_t columns = unsigned(width) / c.site.width;
    if ((columns == 0 && !oddPixel) || firstGroup >= endGroup) return;
    auto groups = size_t(endGroup - firstGroup);
    size_t blockSites = c.blockColumns ? unsigned(c.blockColumns(width)) / c.site.width : columns - c.lastSiteAlone;
    if (isOneRow(c, images)) {
        columns *= groups;
        blockSites *= groups;
        groups = 1;
    }
    const size_t sites = columns - c.lastSiteAlone;
    Row first;
    Steps steps{};
    first.alpha = images.alpha;
    for (int i = 0; i < c.from.count; ++i) {
        const Stream& s = c.from.streams[i];
        const auto step = size_t(images.sourceStep[s.plane]);
        steps.in[i] = step * s.rows;
        first.in[i] = moved(images.source[s.plane], step * size_t(s.row + ptrdiff_t{firstGroup} * s.rows) + s.offset);
    }
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        const auto step = size_t(images.destinationStep[s.plane]);
        steps.out[i] = step * s.rows;
        first.out[i] = moved(images.destination[s.plane], step * size_t(s.row + ptrdiff_t{firstGroup} * s.rows));
    }

    // The last block of a run may cover sites once more, as long as the source is still there, and a block of the tail may cover
    // sites of the block rule, which comes after it.
    const bool inPlace = sharesImages(c, first);
    const Kernel& whole = bypassing && c.bypassing.blocks ? c.bypassing : c.block;
    const Run block(c.block, whole, constants, 0, blockSites, !inPlace),
        tail(c.tail, c.tail, constants, blockSites, sites - blockSites, !inPlace);

    // Where a row takes several runs, a few rows at a time, so that they are still in the cache for the next run, unless each row
    // has to be done before the next one.
    constexpr size_t rowsAtOnce = 16;
    const bool hasEnds = c.lastSiteAlone || oddPixel, oneRun = tail.sites == 0 && block.rest == 0 && !hasEnds;
    const size_t band = oneRun ? groups : rowsOverlap(c, images, columns) ? 1 : rowsAtOnce;
    for (MovedRow start(c, first, 0);; start.next(c, steps, band)) {
        const size_t now = groups < band ? groups : band;
        if (tail.sites != 0) tail(c, start, steps, now);
        if (block.sites != 0) block(c, start, steps, now);
        if (hasEnds) convertEnds(c, MovedRow(c, start, sites), steps, now, oddPixel, width == 1);
        groups -= now;
        if (groups == 0) return;
    }
}

}  // namespace zel::ZEL_LEVEL
