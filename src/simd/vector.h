// The vector layer: words, which each processor defines, and what is built of them for all. Every word is declared with its
// result for all operands; families speak no other language.
#pragma once

#include "simd/words/crossing.h"
#include "simd/words/floats.h"
#include "simd/words/integers.h"
#include "simd/words/memory.h"
#include "simd/words/rounding.h"
#include "simd/words/types.h"
#include ZEL_WORDS

namespace zel::ZEL_LEVEL {

// The mean of unsigned words, cut off.
ZEL_INLINE UWords meanBelow(UWords a, UWords b) { return (a & b) + ((a ^ b) >> 1); }

// |a - b| of unsigned bytes or words.
template <class V>
ZEL_INLINE V distance(V a, V b) {
    return subtractSaturated(a, b) | subtractSaturated(b, a);
}

// Words of a byte vector: the bytes at even places and at odd places, as numbers.
ZEL_INLINE Words evenBytes(Bytes a) { return (Words)a & splatWord(0x00ff); }
ZEL_INLINE Words oddBytes(Bytes a) { return (Words)((UWords)a >> 8); }

// The bytes of the low or the high half of each lane as words.
ZEL_INLINE Words lowBytes(Bytes a) { return (Words)interleaveLow(a, Bytes{}); }
ZEL_INLINE Words highBytes(Bytes a) { return (Words)interleaveHigh(a, Bytes{}); }

// Halves of a vector of signed words as dwords, by lanes.
ZEL_INLINE Dwords lowWords(Words v) { return (Dwords)interleaveLow(v, v) >> 16; }
ZEL_INLINE Dwords highWords(Words v) { return (Dwords)interleaveHigh(v, v) >> 16; }

// A quarter of a vector of consecutive bytes, each four times.
ZEL_INLINE Bytes loadQuadrupled(const uint8_t* p) {
    alignas(16) constexpr uint8_t fourTimes[16] = {0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12};
    return shuffle((Bytes)loadBytesAsDwords(p), everyLane(fourTimes));
}

}  // namespace zel::ZEL_LEVEL
