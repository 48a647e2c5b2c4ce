#include "rawsensor/mosaic_comparison.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#include "harness/features.h"

namespace harness {
namespace {

int load(const uint8_t* p, int bytes) {
    uint16_t word;
    if (bytes == 1) return *p;
    std::memcpy(&word, p, 2);
    return word;
}
void store(uint8_t* p, int bytes, int value) {
    const auto word = static_cast<uint16_t>(value);
    if (bytes == 1)
        *p = static_cast<uint8_t>(value);
    else
        std::memcpy(p, &word, 2);
}

ZelRect cut(const ZelRect& region, ZelSize size, bool moves) {
    const auto end = [](int start, int length, int limit) { return std::min<int64_t>(int64_t{start} + length, limit); };
    const int x = std::max(region.x, 0), y = std::max(region.y, 0);
    return {x, y, static_cast<int>(std::max<int64_t>(end(moves ? x : region.x, region.width, size.width) - x, 0)),
            static_cast<int>(std::max<int64_t>(end(moves ? y : region.y, region.height, size.height) - y, 0))};
}

}  // namespace

// Where a region that begins outside the image is not moved, its destination begins there too.
MosaicExtent::MosaicExtent(const MosaicExport& tested, ZelSize size, const ZelRect& region)
    : inside(cut(region, size, tested.isHomogeneous)),
      skippedColumns(tested.isHomogeneous ? 0 : inside.x - region.x),
      skippedRows(tested.isHomogeneous ? 0 : inside.y - region.y) {
    const auto bytes = static_cast<size_t>(tested.elementBytes);
    const int columns = inside.width == 0 ? 0 : skippedColumns + inside.width;
    source = {size.width * bytes, size.height};
    destination = {3 * columns * bytes, inside.height == 0 ? 0 : skippedRows + inside.height};
    buffer = {static_cast<size_t>(tested.bufferStep(inside.width)), MosaicExport::bufferRows};
}

std::vector<model::Pixel> modelOf(const model::Mosaic& m, const std::optional<model::Homogeneity>& homogeneity,
                                  const ZelRect& inside) {
    if (homogeneity) return homogeneity->choose(inside);
    std::vector<model::Pixel> pixels;
    for (int y = inside.y; y < inside.y + inside.height; ++y)
        for (int x = inside.x; x < inside.x + inside.width; ++x) pixels.push_back(interpolated(m, x, y));
    return pixels;
}

void layMosaic(const model::Mosaic& m, int elementBytes, const MosaicRows& rows) {
    for (int y = 0; y < m.size.height; ++y)
        for (int x = 0; x < m.size.width; ++x) store(rows.row(y) + x * elementBytes, elementBytes, m.at(x, y));
}

std::optional<std::string> compareMosaic(const MosaicExport& tested, const model::Mosaic& m, const ZelRect& region,
                                         const std::vector<model::Pixel>& expected, const MosaicRows& source,
                                         const MosaicRows& destination, const MosaicRows& buffer) {
    constexpr uint8_t untouched = 0xa5;
    const int bytes = tested.elementBytes;
    const MosaicExtent extent(tested, m.size, region);
    const ZelRect& inside = extent.inside;
    layMosaic(m, bytes, source);
    MosaicCall call{source.first,     region, m.size,       source.step, destination.first,
                    destination.step, m.grid, buffer.first, buffer.step};
    std::vector<uint8_t> wanted(destination.bytes.size(), untouched);
    const auto forEachSample = [&](auto f) {
        for (int y = 0; y < inside.height; ++y)
            for (int x = 0; x < inside.width; ++x)
                for (int c = 0; c < 3; ++c)
                    f(x, y, c, destination.row(y + extent.skippedRows) + (3 * (x + extent.skippedColumns) + c) * bytes,
                      expected[static_cast<size_t>(y) * inside.width + x][c]);
    };
    forEachSample(
        [&](int, int, int, const uint8_t* at, int want) { store(wanted.data() + (at - destination.bytes.data()), bytes, want); });
    noteLevels();
    for (const Level& level : levels()) {
        if (level.hasOwnExportsOnly) continue;
        call.library = level.library;
        std::ranges::fill(destination.bytes, untouched);
        const ZelStatus status = tested.call(call);
        std::ostringstream fault;
        fault << level.name << ": ";
        if (status != zelStsNoErr) {
            fault << "status " << status;
            return fault.str();
        }
        if (std::ranges::equal(wanted, destination.bytes)) continue;
        fault << "written beyond the region";
        forEachSample([&](int x, int y, int c, const uint8_t* at, int want) {
            if (load(at, bytes) != want)
                fault << "; pixel (" << inside.x + x << ", " << inside.y + y << ") channel " << c << " " << load(at, bytes)
                      << " instead of " << want;
        });
        return fault.str();
    }
    return std::nullopt;
}

}  // namespace harness
