// AArch64: the one level of it, by Advanced SIMD, which all of these processors have.
#pragma once

#include <arm_neon.h>

#define ZEL_WORDS "simd/neon/words.h"
#define ZEL_OWN_BYTE_TABLE "simd/neon/byte_table.h"
#define ZEL_OWN_FIELDS "simd/neon/fields.h"
#define ZEL_OWN_LIFTED "simd/neon/lifted.h"
#define ZEL_OWN_LIFTED_BYTES "simd/neon/lifted_bytes.h"
#define ZEL_OWN_PICKED "simd/neon/picked.h"
#define ZEL_OWN_PIXELS "simd/neon/pixels.h"
#define ZEL_OWN_PIXEL_DWORDS "simd/neon/pixel_dwords.h"
#define ZEL_OWN_SAMPLES "simd/neon/samples.h"

namespace zel::ZEL_LEVEL {

constexpr Traits traits{
    .lanes = 1,
    .bypasses = false,
    .bypassesByWholeLines = false,
    .bypassesByParts = false,
    .selectsAtOnce = true,
    .packsUnsignedWords = true,
    .looksUpQuickly = true,
    .fuses = true,
    .drivesByShape = true,
    .holdsConstants = true,
    .droppedBits = 15,
    .independentVectors = 4,
};

}  // namespace zel::ZEL_LEVEL
