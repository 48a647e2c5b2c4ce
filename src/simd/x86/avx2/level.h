// Two lanes.
#pragma once

#define ZEL_WORDS "simd/x86/avx2/words.h"
#define ZEL_OWN_LIFTED "simd/x86/avx2/lifted.h"

namespace zel::ZEL_LEVEL {

constexpr Traits traits{
    .lanes = 2,
    .bypasses = true,
    .bypassesByWholeLines = false,
    .bypassesByParts = true,
    .selectsAtOnce = true,
    .packsUnsignedWords = true,
    .looksUpQuickly = false,
    .fuses = true,
    .drivesByShape = true,
    .holdsConstants = false,
    .droppedBits = 16,
    .independentVectors = 2,
};

using Register = __m256i;
using FloatRegister = __m256;
using DoubleRegister = __m256d;
#define ZEL_MM(op) _mm256_##op

}  // namespace zel::ZEL_LEVEL
