// Images in memory together with all bytes around them that a conversion has to leave alone.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "harness/random.h"
#include "model/export.h"

namespace harness {

struct PicturePlane {
    uint8_t* first = nullptr;  // first byte of the top row
    int32_t step = 0;
    std::span<uint8_t> memory;  // rows, gaps between them and margins
    int rowsAbove = 0;          // before the first
};

struct Picture {
    const model::Layout* layout = nullptr;
    ZelSize size{};
    std::array<PicturePlane, 4> planes{};

    std::span<const PicturePlane> usedPlanes() const { return {planes.data(), static_cast<size_t>(layout->planeCount)}; }
    model::Operand operand() const;
    model::Image image() const;
    bool isAligned() const;  // every pointer and every step is a multiple of 16
    void fill(Random& random, Content content) const;
};

// A copy of all memory of a picture, in which the model works and with which the picture is compared.
class Snapshot {
  public:
    explicit Snapshot(const Picture& picture);

    model::Image image();
    // Where the picture differs from the copy first, in words.
    std::optional<std::string> difference() const;

  private:
    Picture picture_;
    std::array<std::vector<uint8_t>, 4> copies_;
};

// Runs an export and its model on the same pictures. Returns what is wrong with the export's status, its destination or its
// source, if anything. A picture that is its own destination is converted in place.
std::optional<std::string> compareWithModel(const model::Export& tested, const Picture& source, const Picture& destination,
                                            ZelSize size, uint8_t alpha);

}  // namespace harness
