// The words that SSSE3 has in a form of its own.
#pragma once

#include "simd/words/by_lanes.h"
#include "simd/x86/words.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)x86::loadLane(p); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    _mm_storeu_si128(static_cast<__m128i*>(p), (Register)v);
}
ZEL_INLINE Bytes everyLane(const void* p) { return (Bytes)x86::loadLane(p); }
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    return (Bytes)x86::loadLane(at(0));
}
ZEL_INLINE void storeLanes(Destination p, ptrdiff_t stride, Bytes v) {
    const auto put = [&](int l, __m128i x) { x86::storeLane(p + l * stride, x); };
    put(0, (__m128i)v);
}
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) { _mm_stream_si128(reinterpret_cast<__m128i*>(p), (Register)v); }
template <class V>
ZEL_INLINE V computed(V v) {
    asm("" : "+x"(v));
    return v;
}

ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)_mm_set1_epi64x(static_cast<int64_t>(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32));
}
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) {
    const Dwords middle = splatDword(32768);
    const auto lifted = [&](Dwords x) { return (x & ~(x >> 31)) - middle; };
    return packWords(lifted(a), lifted(b)) ^ splatWord(0x8000);
}
ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b) { return (a & which) | (b & ~which); }
template <int places>
ZEL_INLINE Words blend(Words a, Words b) {
    constexpr auto word = [](int i) { return int16_t(places >> i & 1 ? -1 : 0); };
    constexpr Words ofB{word(0), word(1), word(2), word(3), word(4), word(5), word(6), word(7)};
    return (a & ~ofB) | (b & ofB);
}
ZEL_INLINE Words highWords(Dwords a, Dwords b) { return (Words)(UDwords(a) >> 16) | ((Words)b & splatWords(0, -1)); }
ZEL_INLINE Bits signBits(Bytes v) { return static_cast<Bits>(_mm_movemask_epi8((Register)v)); }
ZEL_INLINE unsigned signBits(Dwords v) { return unsigned(_mm_movemask_ps((__m128)v)); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return 0xf & ~signBits((Dwords)((Dwords)a == (Dwords)b)); }

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) { return v; }
ZEL_INLINE Bytes spreadHalves(Bytes v) { return v; }
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) { return packed; }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b) {
    return joinQwords<ofA, ofB>(a, b);
}
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) { return (Dwords)window<12>((Bytes)before, (Bytes)v); }

ZEL_INLINE Words loadWidened(const uint8_t* p) {
    return (Words)_mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
}
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
    int32_t bytes;
    __builtin_memcpy(&bytes, p, 4);
    const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(bytes), _mm_setzero_si128());
    return (UDwords)_mm_unpacklo_epi16(words, _mm_setzero_si128());
}
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) {
    return (UDwords)_mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
}
template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at) {
    const auto qword = [&](int i) ZEL_INLINE_LAMBDA { return reinterpret_cast<const __m64*>(at(i)); };
    return (Bytes)_mm_loadh_pi(_mm_loadl_pi(_mm_setzero_ps(), qword(0)), qword(1));
}
template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at) {
    const __m128d even = _mm_load_pd(at(0)), odd = _mm_load_pd(at(1));
    return {(Doubles)_mm_unpacklo_pd(even, odd), (Doubles)_mm_unpackhi_pd(even, odd)};
}
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
    alignas(vectorBytes) int32_t found[vectorBytes / 4];
    for (int i = 0; i < vectorBytes / 4; ++i)
        __builtin_memcpy(&found[i], static_cast<const uint8_t*>(table) + 4 * ptrdiff_t{places[i]}, 4);
    return (Dwords)loadBytes(found);
}

ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    x86::storeLowQword(low, (Register)v);
    x86::storeHighQword(high, (Register)v);
}
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) { x86::storeLowQword(p, (Register)v); }
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
    const uint32_t dwords[2] = {((UDwords)v)[0], ((UDwords)v)[2]};
    __builtin_memcpy(first, &dwords[0], 4);
    __builtin_memcpy(second, &dwords[1], 4);
}
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
    alignas(16) constexpr uint8_t lowest[16] = {0,    4,    8,    12,   0x80, 0x80, 0x80, 0x80,
                                                0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
    const int32_t bytes = ((Dwords)shuffle((Bytes)v, everyLane(lowest)))[0];
    __builtin_memcpy(p, &bytes, sizeof bytes);
}

ZEL_INLINE Floats wholePart(Floats v) { return toFloats(truncated(v)); }
ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c) { return a * b + c; }
ZEL_INLINE Floats approximateReciprocal(Floats v) { return (Floats)_mm_rcp_ps((__m128)v); }
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
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    return (Dwords)_mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)low), _mm_cvttpd_epi32((__m128d)high));
}

}  // namespace zel::ZEL_LEVEL
