// How rules pick their samples from interleaved bytes.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Where p stands in interleaved chroma.
enum class ChromaOrder { pFirst, qFirst };

// The bytes at even or odd places, times a weight that the two rules take differently, picked by a multiply-add.
ZEL_INLINE Bytes weights(int even, int odd) { return (Bytes)splatWord(even | odd << 8); }
ZEL_INLINE Bytes weightsOf(bool evenPlaces, int weight) { return weights(evenPlaces ? weight : 0, evenPlaces ? 0 : weight); }

}  // namespace zel::ZEL_LEVEL
