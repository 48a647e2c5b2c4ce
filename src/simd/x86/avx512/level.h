// Four lanes, with permutes of bytes over whole vectors and masks. Most layouts and tables have forms of their own.
#pragma once

#define ZEL_WORDS "simd/x86/avx512/words.h"
#define ZEL_OWN_BYTE_TABLE "simd/x86/avx512/byte_table.h"
#define ZEL_OWN_FIELDS "simd/x86/avx512/fields.h"
#define ZEL_OWN_FLOAT_TABLE "simd/x86/avx512/float_table.h"
#define ZEL_OWN_LIFTED "simd/x86/avx512/lifted.h"
#define ZEL_OWN_LIFTED_PIXELS "simd/x86/avx512/lifted_pixels.h"
#define ZEL_OWN_OCTAVES "simd/x86/avx512/octaves.h"
#define ZEL_OWN_PART "simd/x86/avx512/part.h"
#define ZEL_OWN_PIXELS "simd/x86/avx512/pixels.h"
#define ZEL_OWN_PIXEL_DWORDS "simd/x86/avx512/pixel_dwords.h"
#define ZEL_OWN_SAMPLES "simd/x86/avx512/samples.h"
#define ZEL_OWN_SITES "simd/x86/avx512/sites.h"
#define ZEL_OWN_STRIDED "simd/x86/avx512/strided.h"

namespace zel::ZEL_LEVEL {

constexpr Traits traits{
    .lanes = 4,
    .bypasses = true,
    .bypassesByWholeLines = true,
    .bypassesByParts = true,
    .selectsAtOnce = true,
    .packsUnsignedWords = true,
    .looksUpQuickly = true,
    .fuses = true,
    .drivesByShape = true,
    .holdsConstants = true,
    .droppedBits = 16,
    .independentVectors = 2,
};

using Register = __m512i;
using FloatRegister = __m512;
using DoubleRegister = __m512d;
#define ZEL_MM(op) _mm512_##op

}  // namespace zel::ZEL_LEVEL
