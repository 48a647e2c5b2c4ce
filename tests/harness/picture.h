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
    Snapshot(const Snapshot&) = delete;

    model::Image image();
    // Gives the picture back what it was copied with.
    void restore() const;
    // Copies the picture anew.
    void take();
    // Takes over what the picture has where both have something that is not a number: any will do.
    void acceptNaNs();
    // Where the picture differs from the copy first, in words.
    std::optional<std::string> difference() const;

  private:
    // A copy that lies as its original does relative to the processor's vectors.
    class Copy {
      public:
        void assign(std::span<const uint8_t> bytes);
        std::span<uint8_t> bytes() const { return bytes_; }

      private:
        std::vector<uint8_t> memory_;
        std::span<uint8_t> bytes_;
    };

    Picture picture_;
    std::array<Copy, 4> copies_;
};

// Runs an export at all levels() and its model on the same pictures. Returns what is wrong with the export's status, its
// destination or its source, if anything. A picture that is its own destination is converted in place.
std::optional<std::string> compareWithModel(const model::Export& tested, const Picture& source, const Picture& destination,
                                            ZelSize size, uint8_t alpha, const model::Parameters& parameters);
inline std::optional<std::string> compareWithModel(const model::Export& tested, const Picture& source, const Picture& destination,
                                                   ZelSize size, uint8_t alpha) {
    return compareWithModel(tested, source, destination, size, alpha, tested.firstParameters());
}

}  // namespace harness
