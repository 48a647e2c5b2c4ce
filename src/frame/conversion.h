// What an export of most families is made of, as constant data. A conversion goes over chroma sites (a site is one pixel at full
// resolution). Each of its streams is a run of bytes through memory with a fixed number of bytes a site: a row of packed pixels,
// a row of a plane, or one of the two rows under a row of 4:2:0 chroma. A kernel moves along all streams by whole blocks of
// sites; a driver walks the rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "simd/vector.h"
#include "zelcc/types.h"

namespace zel::ZEL_FRAME {

constexpr int maxSources = 6;
constexpr int maxDestinations = 6;
constexpr int maxStreamBlock = 256;  // bytes that a block takes at most in one stream

// What an export takes behind the size, its extras, reaches the conversion as a type of its own, `Extras`: nothing in most.
struct Nothing {};

// The element that becomes the fourth of every pixel, as its bits.
struct Alpha {
    uint32_t bits = 0;

    Alpha() = default;
    ZEL_INLINE Alpha(uint8_t alpha) : bits(alpha) {}
    ZEL_INLINE Alpha(uint16_t alpha) : bits(alpha) {}
    ZEL_INLINE Alpha(int16_t alpha) : bits(uint16_t(alpha)) {}
    ZEL_INLINE Alpha(float alpha) : bits(__builtin_bit_cast(uint32_t, alpha)) {}
};

// Where a row stands, counted from the region's corner.
struct Place {
    size_t column = 0;  // in sites
    size_t group = 0;   // of rows
};

// Where a kernel writes. The driver sets pointers; a kernel sees with each of them whether its stores bypass the caches.
struct Destinations {
    uint8_t* places[maxDestinations];
    uint8_t bypassing = 0;  // a bit each

    ZEL_INLINE uint8_t*& operator[](int i) { return places[i]; }
    ZEL_INLINE Destination operator[](int i) const { return {places[i], (bypassing >> i & 1) != 0}; }
};

// Where a kernel reads and writes.
struct Row {
    const uint8_t* in[maxSources];
    Destinations out;
    Alpha alpha;
    Place place;
    bool isFarAway = false;  // the source is in no cache, and worth asking for
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
    int sites = 1;           // a block, a power of two
    bool seesPlace = false;  // the result depends on where the pixels stand in the region
    int blocksAtOnce = 1;    // that are stored so soon after each other that their parts of a line meet before it goes to memory
    bool keepsUp = false;    // blocks are done as fast as memory takes them
};

struct Site {
    uint8_t width, height;  // in pixels, powers of two
};

// The streams of an image.
struct Layout {
    int count;
    Stream streams[maxSources];
};

template <int count>
constexpr Layout layoutOf(const Stream (&streams)[count]) {
    Layout layout{count, {}};
    for (int i = 0; i < count; ++i) layout.streams[i] = streams[i];
    return layout;
}
// One layout's streams behind the other's.
constexpr Layout joined(Layout layout, const Layout& behind) {
    for (int i = 0; i < behind.count; ++i) layout.streams[layout.count++] = behind.streams[i];
    return layout;
}
// The same streams in each row of a group.
constexpr Layout inRows(int rows, const Layout& ofOne) {
    Layout layout{};
    for (int row = 0; row < rows; ++row)
        for (int i = 0; i < ofOne.count; ++i) {
            Stream& s = layout.streams[layout.count++] = ofOne.streams[i];
            s.row = int8_t(row);
            s.rows = uint8_t(rows);
        }
    return layout;
}

// The single pixel at the end of an odd row: it is converted as half of a site that is made up in a buffer.
struct OddPixel {
    void (*makeSite)(uint8_t* site, const uint8_t* pixel, int siteBytes, bool alone) = nullptr;
    Kernel rule{}, ruleAlone{};  // the second one where the row has no other pixel; without it such a row is left as it is
};

struct Minimum {
    int width, height;
};

// A region that does not end on a whole site: cut down to whole sites, with or without a warning, or an error.
enum class OddSize { accepted, warned, refused };

// What can be wrong with a call.
enum class Check : uint8_t {
    none,
    pointers,  // a null pointer among the arguments: images, arrays of planes or steps, extras
    planes,    // a null entry of an array of planes
    size,      // below the minimum, or odd where that is refused
    empty,     // a side below 1
    steps,     // a step below 1
    extras,    // extras, which know their own status
};

// The checks of a conversion, in the order in which they are made.
constexpr int maxChecks = 6;
struct Checks {
    Check list[maxChecks];
};
inline constexpr Checks pointersFirst{Check::pointers, Check::size, Check::planes},
    planesFirst{Check::pointers, Check::planes, Check::size};

struct Conversion;
struct Images;
struct Call;

// Walks the rows of a conversion.
using Driver = void (*)(const Conversion& c, const Images& images, const Call& call);

struct Conversion {
    using Extras = Nothing;

    Site site;
    Layout from, to;
    Kernel block;                              // the rule of the columns that blockColumns counts from the left edge
    Kernel tail{};                             // the rule of the others
    int (*blockColumns)(int width) = nullptr;  // null: the block rule owns the whole row
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = pointersFirst;
    OddPixel oddPixel{};
    bool keepsAlpha = false;
    Driver driver = nullptr;  // one for its shape, where the table has given it one
};

// Kinds of conversions that are data and nothing else, so that levels share what walks over their images.
template <class C>
inline constexpr bool isData = false;
template <>
inline constexpr bool isData<Conversion> = true;

// A conversion of any kind whose destination takes the caller's alpha.
template <class C>
struct WithAlpha : C {
    using Extras = Alpha;
};
template <class C>
inline constexpr bool isData<WithAlpha<C>> = isData<C>;
template <class C>
constexpr WithAlpha<C> withAlpha(const C& c) {
    return {c};
}

// The images of a call, as many as it has. A conversion may cut them down for its passes.
struct Images {
    const uint8_t* source[4];
    ptrdiff_t sourceStep[4];
    uint8_t* destination[4];
    ptrdiff_t destinationStep[4];
    ZelSize size;
};

// The groups of rows that are converted: from the first up to the end, which is not among them. Negative numbers and an end of 0
// count from behind the last one.
struct Groups {
    int first = 0, end = 0;
};

// Whether stores bypass the caches, where a call of several conversions knows better than each of them.
enum class Stores { bySize, cached, bypassing };

// What a kind of conversion may say of a call to the driver.
struct Call {
    Alpha alpha{};
    Groups groups{};
    Stores stores = Stores::bySize;
    const void* constants = nullptr;  // made at the call, in place of the kernels' own
};

}  // namespace zel::ZEL_FRAME
