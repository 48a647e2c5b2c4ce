#include "cases.h"
#include "heap_memory.h"
#include "rawsensor/mosaic_comparison.h"

namespace fuzz {
namespace {

// Rows of an image that ends with its last one, whole samples apart.
class HeapRows {
  public:
    HeapRows(const harness::MosaicSide& side, int elementBytes, bool endsWithStep, Choices& choices)
        : distance_(side.rowBytes + static_cast<size_t>(elementBytes * choices.below(9))),
          memory_(endsWithStep ? side.rows * distance_ : side.bytes(distance_), choices.flag() ? choices.below(32) : 0),
          rows_(memory_.bytes(), side.rows, distance_, choices.flag()) {}

    const harness::MosaicRows& rows() const { return rows_; }

  private:
    size_t distance_;
    HeapMemory memory_;
    harness::MosaicRows rows_;
};

// What is left of the input at the start, random numbers elsewhere.
model::Mosaic mosaicOf(const harness::MosaicExport& tested, Choices& choices) {
    const int minimum = tested.minimum(), bytes = tested.elementBytes;
    const ZelSize size{choices.from(minimum, choices.oneOf({20, 80, 300})), choices.from(minimum, 24)};
    model::Mosaic mosaic{size, choices.below(4), tested.highest(), {}};
    std::vector<uint8_t> content(static_cast<size_t>(size.width * size.height * bytes));
    choices.random().fill(content, choices.flag() ? harness::Content::uniform : harness::Content::extremes);
    const int mask = choices.oneOf({tested.highest(), tested.highest(), 3});  // few values make ties
    choices.putInto(content);
    for (size_t i = 0; i < content.size(); i += static_cast<size_t>(bytes))
        mosaic.samples.push_back((bytes == 1 ? content[i] : content[i] | content[i + 1] << 8) & mask);
    return mosaic;
}

// Inside the image, across its edges or beside it.
ZelRect regionOf(ZelSize size, Choices& choices) {
    if (choices.flag()) return {0, 0, size.width, size.height};
    return {choices.from(-4, size.width), choices.from(-4, size.height), choices.from(0, size.width + 9),
            choices.from(0, size.height + 9)};
}

}  // namespace

std::optional<std::string> tryMosaic(Choices& choices) {
    const harness::MosaicExport& tested = choices.oneOf(harness::mosaicExports);
    const model::Mosaic mosaic = mosaicOf(tested, choices);
    const ZelRect region = regionOf(mosaic.size, choices);
    const harness::MosaicExtent extent(tested, mosaic.size, region);
    const int bytes = tested.elementBytes;
    const HeapRows source(extent.source, bytes, false, choices), destination(extent.destination, bytes, false, choices),
        buffer(extent.buffer, bytes, true, choices);

    std::optional<model::Homogeneity> homogeneity;
    if (tested.isHomogeneous) homogeneity.emplace(mosaic);
    const auto fault = compareMosaic(tested, mosaic, region, harness::modelOf(mosaic, homogeneity, extent.inside), source.rows(),
                                     destination.rows(), buffer.rows());
    if (!fault) return std::nullopt;
    return std::string(tested.name) + ", " + std::to_string(mosaic.size.width) + " x " + std::to_string(mosaic.size.height) +
           ", grid " + std::to_string(mosaic.grid) + ", region " + std::to_string(region.width) + " x " +
           std::to_string(region.height) + " at (" + std::to_string(region.x) + ", " + std::to_string(region.y) + "): " + *fault;
}

}  // namespace fuzz
