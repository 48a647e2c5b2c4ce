// The words that AVX2 has in a form of its own.
#pragma once

#include "simd/words/by_lanes.h"
#include "simd/x86/words.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)_mm256_loadu_si256(static_cast<const __m256i*>(p)); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    _mm256_storeu_si256(static_cast<__m256i*>(p), (Register)v);
}
ZEL_INLINE Bytes everyLane(const void* p) { return (Bytes)_mm256_broadcastsi128_si256(x86::loadLane(p)); }
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    return (Bytes)_mm256_inserti128_si256(_mm256_castsi128_si256(x86::loadLane(at(0))), x86::loadLane(at(1)), 1);
}

namespace x86 {

ZEL_INLINE __m128i lowLane(Bytes v) { return _mm256_castsi256_si128((Register)v); }
ZEL_INLINE __m128i highLane(Bytes v) { return _mm256_extracti128_si256((Register)v, 1); }

}  // namespace x86

ZEL_INLINE void storeLanes(Destination p, ptrdiff_t stride, Bytes v) {
    const auto put = [&](int l, __m128i x) { x86::storeLane(p + l * stride, x); };
    put(0, _mm256_castsi256_si128((Register)v));
    put(1, _mm256_extracti128_si256((Register)v, 1));
}
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) { _mm256_stream_si256(reinterpret_cast<__m256i*>(p), (Register)v); }
template <class V>
ZEL_INLINE V computed(V v) {
    asm("" : "+x"(v));
    return v;
}

ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)_mm256_set1_epi64x(static_cast<int64_t>(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32));
}
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) { return (Words)_mm256_packus_epi32((Register)a, (Register)b); }
ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b) {
    return (Bytes)_mm256_blendv_epi8((Register)b, (Register)a, (Register)which);
}
template <int places>
ZEL_INLINE Words blend(Words a, Words b) {
    return (Words)_mm256_blend_epi16((Register)a, (Register)b, places);
}
ZEL_INLINE Words highWords(Dwords a, Dwords b) { return blend<0xaa>((Words)(UDwords(a) >> 16), (Words)b); }
ZEL_INLINE Bits signBits(Bytes v) { return static_cast<Bits>(_mm256_movemask_epi8((Register)v)); }
ZEL_INLINE unsigned signBits(Dwords v) { return unsigned(_mm256_movemask_ps((__m256)v)); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return 0xff & ~signBits((Dwords)((Dwords)a == (Dwords)b)); }

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) { return (Bytes)_mm256_permute4x64_epi64((Register)v, 0xd8); }
ZEL_INLINE Bytes spreadHalves(Bytes v) { return (Bytes)_mm256_permute4x64_epi64((Register)v, 0xd8); }
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) {
    return (Bytes)_mm256_permutevar8x32_epi32((Register)packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b) {
    if constexpr (ofA == 0 && ofB == 1) return (Bytes)_mm256_blend_epi32((Register)a, (Register)b, 0xf0);  // crosses nothing
    return (Bytes)_mm256_permute2x128_si256((Register)a, (Register)b, ofA | (2 + ofB) << 4);
}
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) {
    const auto middle = (Bytes)_mm256_permute2x128_si256((Register)before, (Register)v, 0x21);
    return (Dwords)window<12>(middle, (Bytes)v);
}

ZEL_INLINE Words loadWidened(const uint8_t* p) { return (Words)_mm256_cvtepu8_epi16(x86::loadLane(p)); }
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
    return (UDwords)_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) { return (UDwords)_mm256_cvtepu16_epi32(x86::loadLane(p)); }
template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at) {
    const auto qword = [&](int i) ZEL_INLINE_LAMBDA { return reinterpret_cast<const __m64*>(at(i)); };
    const auto two = [&](int i)
                         ZEL_INLINE_LAMBDA { return _mm_loadh_pi(_mm_loadl_pi(_mm_setzero_ps(), qword(i)), qword(i + 1)); };
    return (Bytes)_mm256_set_m128(two(2), two(0));
}
template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at) {
    const __m256d even = _mm256_set_m128d(_mm_load_pd(at(2)), _mm_load_pd(at(0)));
    const __m256d odd = _mm256_set_m128d(_mm_load_pd(at(3)), _mm_load_pd(at(1)));
    return {(Doubles)_mm256_unpacklo_pd(even, odd), (Doubles)_mm256_unpackhi_pd(even, odd)};
}
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
    return (Dwords)_mm256_i32gather_epi32(static_cast<const int*>(table), (Register)places, 4);
}

ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    const Bytes sorted = lowThenHighHalves(v);
    x86::storeCached(low, x86::lowLane(sorted));
    x86::storeCached(high, x86::highLane(sorted));
}
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) { x86::storeLane(p, x86::lowLane(lowThenHighHalves(v))); }
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
    const __m256i sorted = _mm256_permutevar8x32_epi32((Register)v, _mm256_setr_epi32(0, 4, 2, 6, 0, 0, 0, 0));
    x86::storeLowQword(first, _mm256_castsi256_si128(sorted));
    x86::storeHighQword(second, _mm256_castsi256_si128(sorted));
}
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
    alignas(16) constexpr uint8_t lowest[16] = {0,    4,    8,    12,   0x80, 0x80, 0x80, 0x80,
                                                0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
    const Bytes packed = shuffle((Bytes)v, everyLane(lowest));
    x86::storeLowQword(p, _mm_unpacklo_epi32(x86::lowLane(packed), x86::highLane(packed)));
}

ZEL_INLINE Floats wholePart(Floats v) { return (Floats)_mm256_round_ps((__m256)v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c) { return (Floats)_mm256_fmadd_ps((__m256)a, (__m256)b, (__m256)c); }
ZEL_INLINE Floats approximateReciprocal(Floats v) { return (Floats)_mm256_rcp_ps((__m256)v); }
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
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    return (Dwords)_mm256_set_m128i(_mm256_cvttpd_epi32((__m256d)high), _mm256_cvttpd_epi32((__m256d)low));
}

}  // namespace zel::ZEL_LEVEL
