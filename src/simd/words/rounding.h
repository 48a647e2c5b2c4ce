// The rounding mode, which belongs to the caller's thread. The control word is written only where it would change, and is
// restored whole, so that the flags of what ran in between go with it. Arithmetic stays between the two calls that it stands
// between.
#pragma once

#include <cstdint>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE bool roundsToNearest();

// Rounds to nearest from here on; the control word as it was.
ZEL_INLINE uint32_t setRoundNearestState();
ZEL_INLINE void restoreRoundState(uint32_t old);

}  // namespace zel::ZEL_LEVEL
