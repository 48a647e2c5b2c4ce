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
};

using Model = void (*)(const Conversion&);
using Blocks = int (*)(int width);  // pixels of a row that follow the block rule

struct Geometry {
    ZelSize minimum;
    ZelSize site;                          // only whole sites are converted
    ZelStatus statusOfRest = zelStsNoErr;  // when a part of the region is left over
};

enum class Peculiarity {
    none,
    sizeBeforePointers,  // a bad size is reported although a pointer is null
    planesAfterSize,     // a bad size is reported although an entry of a plane array is null
    differsByAlignment,  // images on 16-byte boundaries follow a block rule of their own
};

struct Export {
    const char* name;
    Entry entry;
    const Layout& source;
    const Layout& destination;
    Geometry geometry;
    Blocks blocks;
    Model model;
    Peculiarity peculiarity = Peculiarity::none;

    constexpr ZelSize converted(ZelSize size) const {
        return {size.width - size.width % geometry.site.width, size.height - size.height % geometry.site.height};
    }
    constexpr ZelStatus status(ZelSize size) const {
        if (size.width < geometry.minimum.width || size.height < geometry.minimum.height) return zelStsSizeErr;
        const ZelSize whole = converted(size);
        return whole.width == size.width && whole.height == size.height ? zelStsNoErr : geometry.statusOfRest;
    }
};

std::span<const Export> lumachromaExports();

}  // namespace model
