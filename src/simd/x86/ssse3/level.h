// One lane, without what SSE4.1 brought.
#pragma once

#define ZEL_WORDS "simd/x86/ssse3/words.h"

namespace zel::ZEL_LEVEL {

constexpr Traits traits{
    .lanes = 1,
    .bypasses = true,
    .bypassesByWholeLines = false,
    .bypassesByParts = false,
    .selectsAtOnce = false,
    .packsUnsignedWords = false,
    .looksUpQuickly = false,
    .fuses = false,
    .drivesByShape = true,
    .holdsConstants = false,
    .droppedBits = 16,
    .independentVectors = 4,
};

using Register = __m128i;
using FloatRegister = __m128;
using DoubleRegister = __m128d;
#define ZEL_MM(op) _mm_##op

}  // namespace zel::ZEL_LEVEL
