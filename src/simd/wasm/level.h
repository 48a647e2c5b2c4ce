// WebAssembly: the one level of it, by its vectors of 128 bits. The relaxed instructions are never used, for their results may
// differ from machine to machine.
#pragma once

#include <wasm_simd128.h>

#define ZEL_WORDS "simd/wasm/words.h"
#define ZEL_OWN_FIELDS "simd/wasm/fields.h"
#define ZEL_OWN_PICKED "simd/wasm/picked.h"

namespace zel::ZEL_LEVEL {

constexpr Traits traits{
    .lanes = 1,
    .bypasses = false,
    .bypassesByWholeLines = false,
    .bypassesByParts = false,
    .selectsAtOnce = true,
    .packsUnsignedWords = true,
    .looksUpQuickly = false,
    .fuses = false,
    .drivesByShape = false,
    .holdsConstants = false,
    .droppedBits = 16,
    .independentVectors = 4,
};

}  // namespace zel::ZEL_LEVEL
