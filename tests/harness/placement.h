// Where an image is put in memory: its alignment, the gaps between its rows, their order, and what lies beside it.
#pragma once

#include <array>
#include <span>

#include "harness/guarded_memory.h"
#include "harness/picture.h"

namespace harness {

enum class Edge {
    open,   // accessible bytes on both sides, which must keep their values
    start,  // the first byte is the first one behind an inaccessible page
    end,    // the last byte is the last one before an inaccessible page
};

struct Placement {
    const char* name;
    std::array<int, 4> offsets{};  // of each plane's first byte from a multiple of 64; ignored at an edge
    int stepUnit = 1;              // steps are rounded up to a multiple of this ...
    std::array<int, 4> gaps{};     // ... and these bytes are added for each plane
    Edge edge = Edge::open;
    bool bottomUp = false;  // negative steps
    bool oneRow = false;    // a step of zero: all rows are the same memory
    int rowPixels = 0;      // if not 0, rows of so many pixels follow each other without a gap
};

constexpr std::array<int, 4> allPlanes(int value) { return {value, value, value, value}; }
constexpr std::array<int, 4> onlyPlane(int plane, int value) {
    std::array<int, 4> values{};
    values[plane] = value;
    return values;
}

// Where the export takes an image: as it is, but for those that take no steps.
inline Placement suited(const model::Export& tested, Placement placement, ZelSize size) {
    if (tested.entry.takesSteps) return placement;
    placement.rowPixels = size.width;
    placement.bottomUp = placement.oneRow = false;
    return placement;
}

inline constexpr Placement aligned{.name = "aligned", .stepUnit = 64};
inline constexpr Placement dense{.name = "at offset 1", .offsets = allPlanes(1)};

struct Placements {
    Placement source, destination;
};

// All placements that a conversion is tried in.
std::span<const Placements> placements();

// Memory of one picture at a time.
class PictureMemory {
  public:
    Picture lay(const model::Layout& layout, ZelSize size, const Placement& placement, const std::array<int, 4>& rowsAbove = {});

  private:
    std::array<GuardedMemory, 4> memory_;
};

}  // namespace harness
