// Vectors of doubles from and to other elements, and exact comparison of results.
#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

// Half of the elements of a vector, as doubles, and back.
#if ZEL_LANES == 4
template <int half>
ZEL_INLINE Doubles widened(Floats v) {
    return (Doubles)_mm512_cvtps_pd(_mm512_extractf32x8_ps((__m512)v, half));
}
template <int half>
ZEL_INLINE Doubles widened(Dwords v) {
    return (Doubles)_mm512_cvtepi32_pd(_mm512_extracti64x4_epi64((Register)v, half));
}
ZEL_INLINE Floats narrowed(Doubles low, Doubles high) {
    return (Floats)_mm512_insertf32x8(_mm512_castps256_ps512(_mm512_cvtpd_ps((__m512d)low)), _mm512_cvtpd_ps((__m512d)high), 1);
}
#elif ZEL_LANES == 2
template <int half>
ZEL_INLINE Doubles widened(Floats v) {
    return (Doubles)_mm256_cvtps_pd(_mm256_extractf128_ps((__m256)v, half));
}
template <int half>
ZEL_INLINE Doubles widened(Dwords v) {
    return (Doubles)_mm256_cvtepi32_pd(_mm256_extracti128_si256((Register)v, half));
}
ZEL_INLINE Floats narrowed(Doubles low, Doubles high) {
    return (Floats)_mm256_insertf128_ps(_mm256_castps128_ps256(_mm256_cvtpd_ps((__m256d)low)), _mm256_cvtpd_ps((__m256d)high), 1);
}
#else
template <int half>
ZEL_INLINE Doubles widened(Floats v) {
    return (Doubles)_mm_cvtps_pd(half ? _mm_movehl_ps((__m128)v, (__m128)v) : (__m128)v);
}
template <int half>
ZEL_INLINE Doubles widened(Dwords v) {
    return (Doubles)_mm_cvtepi32_pd(half ? _mm_unpackhi_epi64((Register)v, (Register)v) : (Register)v);
}
ZEL_INLINE Floats narrowed(Doubles low, Doubles high) {
    return (Floats)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
}
#endif

// What no dword can hold gives the lowest one.
ZEL_INLINE int32_t truncated(double x) { return _mm_cvttsd_si32(_mm_set_sd(x)); }
ZEL_INLINE Dwords truncated(Floats v) { return (Dwords)ZEL_MM(cvttps_epi32)((FloatRegister)v); }

// Two vectors' worth of doubles, cut off; what no dword can hold gives the lowest one.
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
#if ZEL_LANES == 4
    const __m512i first = _mm512_castsi256_si512(_mm512_cvttpd_epi32((__m512d)low));
    return (Dwords)_mm512_inserti64x4(first, _mm512_cvttpd_epi32((__m512d)high), 1);
#elif ZEL_LANES == 2
    return (Dwords)_mm256_set_m128i(_mm256_cvttpd_epi32((__m256d)high), _mm256_cvttpd_epi32((__m256d)low));
#else
    return (Dwords)_mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)low), _mm_cvttpd_epi32((__m128d)high));
#endif
}

// What is left of v without the cube of a root that is right to 20 bits, nearly to single precision.
ZEL_INLINE Floats withoutCube(Floats v, Floats root) {
    const auto half = [](Doubles x, Doubles r) { return x - (r * r) * r; };
    return narrowed(half(widened<0>(v), widened<0>(root)), half(widened<1>(v), widened<1>(root)));
}

// A bit for every element of a comparison that holds.
ZEL_INLINE unsigned bitsOf(Dwords comparison) {
#if ZEL_LANES == 4
    return _mm512_movepi32_mask((Register)comparison);
#elif ZEL_LANES == 2
    return unsigned(_mm256_movemask_ps((__m256)comparison));
#else
    return unsigned(_mm_movemask_ps((__m128)comparison));
#endif
}

// A bit for every element that has not the same bits in both vectors.
ZEL_INLINE unsigned differing(Floats a, Floats b) {
#if ZEL_LANES == 4
    return _mm512_cmpneq_epi32_mask((Register)a, (Register)b);
#elif ZEL_LANES == 2
    return 0xff & ~unsigned(_mm256_movemask_ps((__m256)((Dwords)a == (Dwords)b)));
#else
    return 0xf & ~unsigned(_mm_movemask_ps((__m128)((Dwords)a == (Dwords)b)));
#endif
}

}  // namespace zel::ZEL_LEVEL
