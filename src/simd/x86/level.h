// The levels of x86: SSSE3, AVX2, and AVX-512 with byte permutes.
#pragma once

#include <immintrin.h>

#if defined(__AVX512VBMI__)
#include "simd/x86/avx512/level.h"
#elif defined(__AVX2__)
#include "simd/x86/avx2/level.h"
#else
#include "simd/x86/ssse3/level.h"
#endif
