// What the tests know of an export: how to call it, what lies in memory on both sides, and what it is to compute.
#pragma once

#include <optional>
#include <span>

#include "model/entry.h"
#include "model/image.h"

namespace model {

// One conversion for the model to carry out: images that hold the converted pixels only.
struct Conversion {
    Image source, destination;
    ZelSize size;                  // whole chroma sites
    int blockPixels;               // the first pixels of a row, which follow the block rule
    bool aligned;                  // every pointer and step of the call is a multiple of 16
    std::optional<uint8_t> alpha;  // value of the alpha channel that the destination gains
    int32_t slice = 0;             // which part of a larger image the region is, of the conversions that ask for it
    Parameters parameters{};
};

using Model = void (*)(const Conversion&);
using ContentStatus = ZelStatus (*)(const Conversion&);
using Blocks = int (*)(int width);  // pixels of a row that follow the block rule

inline constexpr int32_t anyWidth = INT32_MIN, anyHeight = INT32_MIN;

struct Geometry {
    ZelSize minimum;
    ZelSize site;                          // only whole sites are converted
    ZelStatus statusOfRest = zelStsNoErr;  // when a part of the region is left over; an error refuses the region
    ZelSize statusSite{};                  // whose rest decides about the status, where parts of it are converted
};

// Pixels behind the right edge of a region that rows must have room for: some are written there, or read.
struct Room {
    int source = 0, destination = 0;
};

// Which check comes first when two of them fail.
enum class Checks {
    pointersThenSize,  // entries of plane arrays are checked with the pointers or after the size
    sizeThenPointers,
    planesAfterSize,    // pointers, size, entries of plane arrays
    planesBeforeSize,   // pointers and entries, size
    stepsBeforeSize,    // pointers and entries, steps, size
    emptyThenPlanes,    // pointers, a side below 1, entries, the minimum size
    emptyThenPointers,  // a side below 1, pointers and entries, the minimum size
};

enum class Peculiarity {
    none,
    differsByAlignment,    // images on 16-byte boundaries follow a block rule of their own
    trustsSourceArray,     // the array of source planes must not be null
    misplacesByFirstStep,  // some samples of the last plane are placed by the step of the plane before it
    unevenRows,            // equal source rows become different destination rows
    differsByAddress,      // where a row starts in memory decides the order in which it is added up
    trustsFourthPlane,     // its pointer must not be null
    halvesStepOfColumn,    // a single column of pixels has rows half a step apart
};

// A region that is a part of a larger image, of which rows above the region are read and written too.
struct Slice {
    const char* name = "";
    int32_t argument = 0;
    std::array<int, 4> sourceRowsAbove{};  // of each plane
    std::array<int, 4> destinationRowsAbove{};
};

struct Export {
    const char* name;
    Entry entry;
    const Layout& source;
    const Layout& destination;
    Geometry geometry;
    Blocks blocks;
    Model model;
    Checks checks = Checks::pointersThenSize;
    Peculiarity peculiarity = Peculiarity::none;
    Slice slice{};
    std::span<const Parameters> parameters{};  // that are tried
    bool needsCoefficients = false;            // a null pointer to them is an error
    bool checksSteps = false;                  // and accepts none below 1
    bool isRowwise = false;                    // no row has a say in another, nor does their number
    ContentStatus contentStatus = nullptr;     // of a valid region, where more than its size decides
    Room (*room)(ZelSize size) = nullptr;      // beyond the region, where that is not left alone

    constexpr Parameters firstParameters() const { return parameters.empty() ? Parameters{} : parameters.front(); }
    constexpr ZelSize converted(ZelSize size) const {
        return {size.width - size.width % geometry.site.width, size.height - size.height % geometry.site.height};
    }
    // What the images have room for.
    constexpr ZelSize sourceSize(ZelSize size) const {
        const ZelSize own = converted(size);
        return {own.width + (room ? room(size).source : 0), own.height};
    }
    constexpr ZelSize destinationSize(ZelSize size) const {
        const ZelSize own = converted(size);
        return {own.width + (room ? room(size).destination : 0), own.height};
    }
    constexpr ZelStatus status(ZelSize size) const {
        if (size.width < geometry.minimum.width || size.height < geometry.minimum.height) return zelStsSizeErr;
        const ZelSize site = geometry.statusSite.width ? geometry.statusSite : geometry.site;
        return size.width % site.width == 0 && size.height % site.height == 0 ? zelStsNoErr : geometry.statusOfRest;
    }
};

std::span<const Export> lumachromaExports();
std::span<const Export> yuvExports();
std::span<const Export> chromaExports();
std::span<const Export> intensityExports();
std::span<const Export> liftingExports();
std::span<const Export> reduceBitsExports();
std::span<const Export> packedSourceExports();
std::span<const Export> packedDestinationExports();
std::span<const Export> colorimetricExports();
std::span<const Export> hueExports();
std::span<const Export> labExports();

// All of them, a family each.
std::span<const std::span<const Export>> families();

}  // namespace model
