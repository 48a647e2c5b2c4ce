// One call on a region of a mosaic beside the model, on memory of the caller's, at all levels().
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/rawsensor.h"
#include "rawsensor/mosaic_exports.h"

namespace harness {

// An image in memory, of which `bytes` is all there is.
struct MosaicRows {
    std::span<uint8_t> bytes;
    uint8_t* first;
    int32_t step;

    // Rows that follow each other from the first to the last byte, upwards or downwards.
    MosaicRows(std::span<uint8_t> memory, int rows, size_t distance, bool bottomUp)
        : bytes(memory),
          first(memory.data() + (bottomUp && rows > 0 ? (rows - 1) * distance : 0)),
          step(static_cast<int32_t>(bottomUp ? 0 - distance : distance)) {}

    uint8_t* row(int y) const { return first + static_cast<ptrdiff_t>(y) * step; }
};

struct MosaicSide {
    size_t rowBytes;
    int rows;
    size_t bytes(size_t distance) const { return rows == 0 ? 0 : (rows - 1) * distance + rowBytes; }
};

// What a call on a region reads and writes.
struct MosaicExtent {
    ZelRect inside;                   // what of the region lies in the image
    int skippedColumns, skippedRows;  // of the destination, before it
    MosaicSide source, destination, buffer;

    MosaicExtent(const MosaicExport& tested, ZelSize size, const ZelRect& region);
};

// The pixels of a region inside the image.
std::vector<model::Pixel> modelOf(const model::Mosaic& mosaic, const std::optional<model::Homogeneity>& homogeneity,
                                  const ZelRect& inside);

void layMosaic(const model::Mosaic& mosaic, int elementBytes, const MosaicRows& rows);

// Returns what differs, if anything.
std::optional<std::string> compareMosaic(const MosaicExport& tested, const model::Mosaic& mosaic, const ZelRect& region,
                                         const std::vector<model::Pixel>& expected, const MosaicRows& source,
                                         const MosaicRows& destination, const MosaicRows& buffer);

}  // namespace harness
