// Every function of the library in one form, for programs that choose among them by name or format: which formats it leads from
// and to, a call that takes planes, steps and whatever else as data, and what a caller has to know. registry.cpp is written from
// the public headers and the tables beside them by catalog/write_registry when it is built. A program that has names and calls by
// other means compiles it with CATALOG_OF_NUMBERS, without these, and links to no function.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "zelcc.h"

namespace catalog {

enum class Element : uint8_t { u1, u8, s8, u16, s16, s32, f32, f64, u32 };

constexpr int bytesOf(Element e) {
    constexpr int bytes[] = {1, 1, 1, 2, 2, 4, 4, 8, 4};
    return bytes[static_cast<int>(e)];
}

// The sample of what no light passes through, in as many of the lowest bytes as it has.
constexpr uint64_t opaque(Element e) {
    constexpr uint64_t samples[] = {1,
                                    UINT8_MAX,
                                    INT8_MAX,
                                    UINT16_MAX,
                                    INT16_MAX,
                                    INT32_MAX,
                                    std::bit_cast<uint32_t>(1.0f),
                                    std::bit_cast<uint64_t>(1.0),
                                    UINT32_MAX};
    return samples[static_cast<int>(e)];
}

// Pixels that belong together.
struct Site {
    int width = 1, height = 1;
    bool operator==(const Site&) const = default;
};

// Units of a few samples that lie side by side; each serves width x height pixels.
struct Plane {
    std::string_view channels;  // of the samples of a unit, parted by spaces
    int bytes;
    int width;
    int height;

    // A unit that pixels fill in part counts as a whole one.
    constexpr int64_t rowBytes(int64_t pixels) const { return (pixels + width - 1) / width * bytes; }
    constexpr int64_t rows(int64_t pixels) const { return (pixels + height - 1) / height; }
    // Samples of a unit, of which a packed word is one.
    constexpr int samples(Element e) const { return bytes / bytesOf(e); }
    // Calls with the channel of each sample of a unit.
    template <typename Use>
    constexpr void forEachSample(Use use) const {
        for (std::string_view rest = channels; !rest.empty();) {
            const size_t end = std::min(rest.find(' '), rest.size());
            use(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
};

// What the channels of a format mean. Others are spaces that functions convert from and to RGB alone.
enum class Model : uint8_t { rgb, ycbcr, gray, ycocg, mosaic, other };

// How libzelvideo describes a format, by the names in zelvideo.h; of depth 0 if it doesn't.
struct Description {
    int32_t layout;
    const char* components;
    int32_t sampling, depth, alignment;
};

struct Format {
    std::string_view name;  // as users of FFmpeg know it, where it has one
    std::string_view title;
    Element element;
    int planeCount;
    std::array<Plane, 4> planes;  // in the order of a file
    Model model;
    int bits;  // of the narrowest channel; of floats those that are certain
    Site site;
    int alphaPlane;               // -1 if there is no alpha
    bool isPacked;                // several channels or pixels share a sample
    int grid;                     // of a mosaic, as ZelBayerGrid; otherwise -1
    int canonical;                // the number of the format that has the same planes in the order of the functions: often itself
    std::array<int8_t, 4> order;  // for each plane of that format the plane of this one
    std::string_view ffmpegName;  // where FFmpeg has it
    Description description;

    constexpr std::span<const Plane> usedPlanes() const { return {planes.data(), static_cast<size_t>(planeCount)}; }
};

constexpr bool hasAlpha(const Format& format) { return format.alphaPlane >= 0; }

// One side of a call: planes in the order of the function's arguments.
struct Side {
    std::array<void*, 4> planes{};
    std::array<int32_t, 4> steps{};
};

struct Call {
    Side source, destination;            // a function that works in place has the second alone
    ZelSize size{};                      // of the region, of a mosaic's whole image
    ZelRect region{};                    // of a mosaic
    uint32_t alpha = 0;                  // as opaque() has it
    const void* coefficients = nullptr;  // in the type that the function takes
    float lowest = 0, highest = 1;
    int32_t noise = 0, levels = 256, threshold = 127, bitOffset = 0;
    ZelDitherType dither = zelDitherNone;
    int32_t slice = zelSliceTop | zelSliceMiddle | zelSliceBottom;
    int32_t grid = zelBayerRGGB;
    void* temporary = nullptr;
    int32_t temporaryStep = 0;
};

// What a function reads and writes behind the right edge of some sizes, which its images must have room for.
enum class Beyond : uint8_t {
    nothing,
    pair,      // one more pair of pixels in all rows, if the number of pairs is 2 more than a multiple of 4
    corner,    // two pixels behind the last row, if width and height are odd
    notAWord,  // three bytes in place of a word, in rows half as far apart, if the width is 1
};

constexpr bool goesBeyond(Beyond beyond, ZelSize size) {
    switch (beyond) {
        case Beyond::pair:
            return size.width > 1 && size.height > 1 && size.width / 2 % 4 == 2;
        case Beyond::corner:
            return size.width % 2 != 0 && size.height % 2 != 0;
        case Beyond::notAWord:
            return size.width == 1;
        default:
            return false;
    }
}

// What a function takes beside images, steps and size.
enum class Extra : uint8_t { alpha, coefficients, range, reduction, threshold, bitOffset, slice, grid, temporary };

// What becomes of the destination's alpha, where it has one beside the channels.
enum class Alpha : uint8_t { written, kept, zero };

// A function of whatever type.
using Entry = void (*)();

struct Function {
    std::string_view name;
    std::string_view header;
    ZelStatus (*callAt)(Entry, const Call&);  // the function itself, or that of another copy of the library
    Entry entry;
    Element from, to;
    int8_t sourcePlanes, targetPlanes;  // pointers that it takes; none for the source if it works in place
    bool takesSteps;
    bool takesDoubles = false;  // of coefficients; others are floats
    int8_t coefficientCount = 0;
    uint16_t extras = 0;                      // a bit each
    int8_t sourceSteps = 0, targetSteps = 0;  // one is for all planes, more are one each
    bool worksInPlace = false;                // with the same planes and steps on both sides
    Alpha alpha = Alpha::written;
    bool needsEqualSteps = false;  // of the destination's planes of chroma: some samples are placed by the other's
    Beyond beyond = Beyond::nothing;
    bool dependsOnProcessor = false;  // on its approximate reciprocal
    Site site{};                      // only whole ones are converted to their last pixel
    // An image that is cut between rows at multiples of these comes out as in one call; 0 if every cut may show. By ways to
    // reduce: to the nearest level, by the thresholds of a matrix, by noise or error diffusion. All are the same for those that
    // don't reduce.
    std::array<int8_t, 3> rowsOfParts{};

    ZelStatus call(const Call& c) const { return callAt(entry, c); }
    constexpr bool takes(Extra extra) const { return extras >> static_cast<int>(extra) & 1; }
    constexpr int rowsOfPart(ZelDitherType dither, bool hasNoise) const {
        return rowsOfParts[hasNoise || (dither != zelDitherNone && dither != zelDitherBayer) ? 2 : dither == zelDitherBayer];
    }
    // Of the memory that Extra::temporary is, for regions of a width.
    static constexpr int temporaryRows = 30;
    constexpr int64_t temporaryStep(int32_t width) const { return (int64_t{width} + 6) * bytesOf(from); }
};

// What a function makes of one format. One that looks at no meaning of its channels serves several.
struct Conversion {
    uint16_t function, source, target;               // numbers in the lists
    std::array<int8_t, 4> sourceOrder, targetOrder;  // for each plane of the function the plane of the format
    std::string_view verb;                           // what it does to samples, if it doesn't lead from one meaning to another
    std::string_view matrix;                         // by which luma and chroma are computed or undone
    std::string_view method;                         // filter, interlaced, dither ..., where there is a plain way too
};

// Of luma and chroma.
struct Matrix {
    std::string_view name;
    std::optional<int32_t> number;    // as libzelvideo has it; those that only functions have are none of a standard
    std::optional<bool> isFullRange;  // of the functions, where there are some
};

std::span<const Matrix> matrices();
std::span<const Format> formats();      // by name
std::span<const Function> functions();  // by name
std::span<const Conversion> conversions();

inline int numberOf(const Format& format) { return static_cast<int>(&format - formats().data()); }
inline const Format& canonical(const Format& format) { return formats()[static_cast<size_t>(format.canonical)]; }

}  // namespace catalog
