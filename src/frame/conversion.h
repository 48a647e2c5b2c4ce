// What an export of most families is made of, as constant data, and the driver that runs it. A conversion goes over chroma sites
// (a site is one pixel at full resolution). Each of its streams is a run of bytes through memory with a fixed number of bytes a
// site: a row of packed pixels, a row of a plane, or one of the two rows under a row of 4:2:0 chroma. A kernel moves along all
// streams by whole blocks of sites; the driver walks the rows and puts what is left at a row's end through the same kernel by way
// of a buffer.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

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
    uint8_t alpha;
};

struct Stream {
    uint8_t plane;
    uint8_t bytes;       // a site
    uint8_t row = 0;     // in the group of rows that is done at once
    uint8_t rows = 1;    // that a group has in this plane
    uint8_t offset = 0;  // bytes from the plane's first pixel
};

// A rule bound to its layouts. It reads a whole block before it writes it, so a row may be converted over itself.
struct Kernel {
    void (*blocks)(const void* constants, const Row& row, size_t count) = nullptr;
    const void* constants = nullptr;
    int sites = 1;  // a block
};

// The kernel K, a type with `Constants`, `sites` and `blocks`. The constants must outlive the calls.
template <class K>
constexpr Kernel kernel(const typename K::Constants& constants) {
    constexpr auto blocks = [](const void* c, const Row& row, size_t count) {
        K::blocks(*static_cast<const typename K::Constants*>(c), row, count);
    };
    return {blocks, &constants, K::sites};
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

enum class OddSize { accepted, warned };
enum class Checks { pointersFirst, sizeFirst };

struct Conversion {
    Site site;
    Layout from, to;
    Kernel block;                              // the rule of the columns that blockColumns counts from the left edge
    Kernel tail{};                             // the rule of the others
    int (*blockColumns)(int width) = nullptr;  // null: the block rule owns the whole row
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = Checks::pointersFirst;
    OddPixel oddPixel{};
    bool lastSiteAlone = false;  // streams with an offset reach into the next site; the last one has none and takes its own
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
    uint8_t alpha;
};

// Steps may have any value and are added once more after the last row, so the sum wraps rather than overflows.
template <class Byte>
ZEL_INLINE Byte* moved(Byte* p, size_t bytes) {
    return reinterpret_cast<Byte*>(reinterpret_cast<uintptr_t>(p) + bytes);
}

// For the few bytes at a row's end. The places do not overlap.
ZEL_OWN_CODE inline void copyShort(uint8_t* to, const uint8_t* from, size_t bytes) {
#if ZEL_LANES == 4
    size_t done = 0;
    for (; bytes - done >= 64; done += 64) _mm512_storeu_si512(to + done, _mm512_loadu_si512(from + done));
    const __mmask64 rest = (uint64_t{1} << (bytes - done)) - 1;
    _mm512_mask_storeu_epi8(to + done, rest, _mm512_maskz_loadu_epi8(rest, from + done));
#else
    // The last piece overlaps the one before it.
    const auto copyPieces = [&](auto piece) {
        constexpr size_t size = sizeof piece;
        for (size_t i = 0; i + size < bytes; i += size) std::memcpy(to + i, from + i, size);
        std::memcpy(to + bytes - size, from + bytes - size, size);
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
#endif
}

// Fewer sites than a block.
ZEL_OWN_CODE inline void convertPart(const Conversion& c, const Kernel& kernel, const Row& row, size_t sites) {
    alignas(64) uint8_t source[maxSources][maxStreamBlock];
    alignas(64) uint8_t destination[maxDestinations][maxStreamBlock];
    Row buffer;
    buffer.alpha = row.alpha;
    for (int i = 0; i < c.from.count; ++i) {
        copyShort(source[i], row.in[i], sites * c.from.streams[i].bytes);
        buffer.in[i] = source[i];
    }
    for (int i = 0; i < c.to.count; ++i) {
        if (c.keepsAlpha) copyShort(destination[i], row.out[i], sites * c.to.streams[i].bytes);
        buffer.out[i] = destination[i];
    }
    kernel.blocks(kernel.constants, buffer, 1);
    for (int i = 0; i < c.to.count; ++i) copyShort(row.out[i], destination[i], sites * c.to.streams[i].bytes);
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
    kernel.blocks(kernel.constants, buffer, 1);
    for (int i = 0; i < c.to.count; ++i) copyShort(row.out[i], destination[i], c.to.streams[i].bytes / 2);
}

ZEL_INLINE void advance(const Conversion& c, Row& row, size_t sites) {
    for (int i = 0; i < c.from.count; ++i) row.in[i] += sites * c.from.streams[i].bytes;
    for (int i = 0; i < c.to.count; ++i) row.out[i] += sites * c.to.streams[i].bytes;
}

// The consecutive sites of a row that follow one rule.
struct Run {
    const Kernel* kernel;
    size_t blocks, rest;

    Run(const Kernel& k, unsigned sites) : kernel(&k), blocks(sites / unsigned(k.sites)), rest(sites % unsigned(k.sites)) {}

    ZEL_INLINE void operator()(const Conversion& c, Row& row) const {
        if (blocks != 0) {
            kernel->blocks(kernel->constants, row, blocks);
            advance(c, row, blocks * kernel->sites);
        }
        if (rest != 0) {
            convertPart(c, *kernel, row, rest);
            advance(c, row, rest);
        }
    }
};

ZEL_OWN_CODE inline void convert(const Conversion& c, const Images& images) {
    const int width = images.size.width;
    const unsigned columns = unsigned(width) / c.site.width, groups = unsigned(images.size.height) / c.site.height;
    const bool hasOddPixel = c.oddPixel.makeSite && width % 2 != 0;
    if (columns == 0 && !hasOddPixel) return;
    const unsigned sites = c.lastSiteAlone ? columns - 1 : columns;
    const unsigned blockSites = c.blockColumns ? unsigned(c.blockColumns(width)) / c.site.width : sites;
    const Run block(c.block, blockSites), tail(c.tail, sites - blockSites);

    Row start;
    size_t sourceStep[maxSources], destinationStep[maxDestinations];
    start.alpha = images.alpha;
    for (int i = 0; i < c.from.count; ++i) {
        const Stream& s = c.from.streams[i];
        const auto step = size_t(images.sourceStep[s.plane]);
        sourceStep[i] = step * s.rows;
        start.in[i] = moved(images.source[s.plane], step * s.row + s.offset);
    }
    for (int i = 0; i < c.to.count; ++i) {
        const Stream& s = c.to.streams[i];
        const auto step = size_t(images.destinationStep[s.plane]);
        destinationStep[i] = step * s.rows;
        start.out[i] = moved(images.destination[s.plane], step * s.row);
    }

    for (unsigned g = 0; g < groups; ++g) {
        Row row = start;
        block(c, row);
        tail(c, row);
        if (c.lastSiteAlone) {
            for (int i = 0; i < c.from.count; ++i) row.in[i] -= c.from.streams[i].offset;
            convertPart(c, c.tail, row, 1);
        }
        if (hasOddPixel) convertOddPixel(c, row, width == 1);
        for (int i = 0; i < c.from.count; ++i) start.in[i] = moved(start.in[i], sourceStep[i]);
        for (int i = 0; i < c.to.count; ++i) start.out[i] = moved(start.out[i], destinationStep[i]);
    }
}

}  // namespace zel::ZEL_LEVEL
