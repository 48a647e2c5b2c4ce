// Pieces of rows between loads, sums and stores. Samples of a source fill their words and are taken from the middle, so that they
// are signed; samples of a destination are what will be stored.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL::video {

constexpr int words = vectorBytes / 2;

// Pixels of a piece, a multiple of all blocks, sites and groups, and what a line has to the left and to the right of it:
// neighbours for the filters, and room for the rest of a block.
constexpr int pieceLength = 768;
constexpr int lineMargin = 32;
constexpr int lineRoom = 192;

struct alignas(64) Line {
    uint16_t memory[lineMargin + pieceLength + lineRoom];

    ZEL_INLINE uint16_t* at(int i) { return memory + lineMargin + i; }
    ZEL_INLINE const uint16_t* at(int i) const { return memory + lineMargin + i; }
};

ZEL_INLINE Words loadLine(const uint16_t* p) { return (Words)loadBytes(p); }
ZEL_INLINE void storeLine(uint16_t* p, Words v) { storeVector(static_cast<void*>(p), v); }

ZEL_INLINE Words flipped(Words v) { return v ^ splatWord(0x8000); }

// Words in order over the whole vector, each twice: two vectors.
struct Twice {
    Words first, second;
};
ZEL_INLINE Twice twice(Words v) {
    const Words spread = (Words)spreadHalves((Bytes)v);
    return {interleaveLow(spread, spread), interleaveHigh(spread, spread)};
}

}  // namespace zel::ZEL_LEVEL::video
