// What zelvMakePlan writes for the kernels of all levels. Plain data: no function stands here, for it would be of no level.
#pragma once

#include <cstdint>

namespace zelv {

// Channels in the order of the arithmetic: Y, U, V or R, G, B, and alpha.
constexpr int alphaChannel = 3;

enum class Model : uint8_t { rgb, luma, gray };
enum class Alpha : uint8_t { none, present, filler };

// The header's layouts.
enum class Layout : uint8_t { planar, semiPlanar, interleaved, paired, dwords, v210 };

struct Side {
    Layout layout;
    Model model;
    Alpha alpha;
    uint8_t sitesAcross, sitesDown;  // binary logarithms of the pixels of a site
    bool leftSited, topSited;        // sites coincide with pixels
    bool isFloat;
    uint8_t depth;       // of samples in words
    uint8_t alphaDepth;  // its own in dwords
    uint8_t shift;       // from the lowest bit of a word to the sample's in memory
    uint8_t planes;
    uint8_t samples;   // of a pixel, or of a pair of them
    uint8_t place[4];  // of a channel in that order, or its plane
};

// The sums of docs/video.md.
struct Sums {
    int16_t high[4][3], low[4][3];  // of destination and source channel; alpha has one term
    int32_t offset[4];
    uint8_t shift, alphaShift;
};

enum class Combination : uint8_t {
    channels,  // every channel of itself
    gray,      // all of the first one
    matrix     // the first one, or all, of all three
};

struct Plan {
    uint64_t identifier;
    Side in, out;
    Sums sums;
    Combination combination;
    bool linear, sited, ordered;
    bool sameAcross, sameDown;  // chroma of both sides has the same sites, in that direction
    bool isFine;                // chroma on another grid has places that its words don't hold
    bool firstIsWhole;          // the first term has no low part
    bool allAreWhole;           // no term has
};

}  // namespace zelv
