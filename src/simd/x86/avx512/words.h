// The words that AVX-512 has in a form of its own.
#pragma once

#include "simd/x86/words.h"

namespace zel::ZEL_LEVEL {

namespace x86 {

// Bytes of v, and of a with b behind it, by the places in a pattern. Patterns are aligned.
ZEL_INLINE Register pattern(const void* p) { return _mm512_load_si512(p); }
ZEL_INLINE Bytes permute(Bytes v, const void* places) { return (Bytes)_mm512_permutexvar_epi8(pattern(places), (Register)v); }
ZEL_INLINE Bytes permute(Bytes a, const void* places, Bytes b) {
    return (Bytes)_mm512_permutex2var_epi8((Register)a, pattern(places), (Register)b);
}

ZEL_INLINE __m256i lowHalf(Bytes v) { return _mm512_castsi512_si256((Register)v); }
ZEL_INLINE __m256i highHalf(Bytes v) { return _mm512_extracti64x4_epi64((Register)v, 1); }
ZEL_INLINE void storeHalf(uint8_t* p, __m256i half) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), half); }
ZEL_INLINE __m256i loadHalf(const uint8_t* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }

}  // namespace x86

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)_mm512_loadu_si512(p); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    _mm512_storeu_si512(p, (Register)v);
}
ZEL_INLINE Bytes everyLane(const void* p) { return (Bytes)_mm512_broadcast_i32x4(x86::loadLane(p)); }

template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    const __m256i low = _mm256_inserti128_si256(_mm256_castsi128_si256(x86::loadLane(at(0))), x86::loadLane(at(1)), 1);
    const __m256i high = _mm256_inserti128_si256(_mm256_castsi128_si256(x86::loadLane(at(2))), x86::loadLane(at(3)), 1);
    return (Bytes)_mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1);
}
ZEL_INLINE void storeLanes(Destination p, ptrdiff_t stride, Bytes v) {
    x86::storeLane(p, _mm512_castsi512_si128((Register)v));
    x86::storeLane(p + stride, _mm512_extracti32x4_epi32((Register)v, 1));
    x86::storeLane(p + 2 * stride, _mm512_extracti32x4_epi32((Register)v, 2));
    x86::storeLane(p + 3 * stride, _mm512_extracti32x4_epi32((Register)v, 3));
}
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) { _mm512_stream_si512(reinterpret_cast<__m512i*>(p), (Register)v); }
template <class V>
ZEL_INLINE V computed(V v) {
#ifdef __AVX512F__  // otherwise wide vectors are emulated, and are no registers
    asm("" : "+v"(v));
#endif
    return v;
}

namespace x86 {

// Compilers make one load for each use by a mask of it, and a processor that doesn't foresee those waits for memory.
ZEL_INLINE Bytes loadOnce(const uint8_t* p) { return computed(loadBytes(p)); }

}  // namespace x86

ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)_mm512_set1_epi64(static_cast<int64_t>(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32));
}
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) { return (Words)_mm512_packus_epi32((Register)a, (Register)b); }
ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b) {
    return (Bytes)_mm512_ternarylogic_epi64((Register)which, (Register)a, (Register)b, 0xca);
}
template <int places>
ZEL_INLINE Words blend(Words a, Words b) {
    return (Words)_mm512_mask_mov_epi16((Register)a, places * 0x01010101u, (Register)b);
}
ZEL_INLINE Words highWords(Dwords a, Dwords b) {
    struct Places {
        alignas(64) uint16_t of[32];
    };
    static constexpr Places odd = [] {
        Places p{};
        for (int i = 0; i < 32; ++i) p.of[i] = uint16_t(i % 2 * 32 + i / 2 * 2 + 1);
        return p;
    }();
    return (Words)_mm512_permutex2var_epi16((Register)a, x86::pattern(odd.of), (Register)b);
}
ZEL_INLINE Bits signBits(Bytes v) { return _mm512_movepi8_mask((Register)v); }
ZEL_INLINE unsigned signBits(Dwords v) { return _mm512_movepi32_mask((Register)v); }
ZEL_INLINE Bits zeros(Bytes v) { return _mm512_testn_epi8_mask((Register)v, (Register)v); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return _mm512_cmpneq_epi32_mask((Register)a, (Register)b); }
ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b) { return (Bytes)_mm512_mask_blend_epi8(bits, (Register)b, (Register)a); }
ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b) {
    return (UWords)_mm512_mask_blend_epi16(static_cast<uint32_t>(bits), (Register)b, (Register)a);
}

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) {
    return (Bytes)_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), (Register)v);
}
ZEL_INLINE Bytes spreadHalves(Bytes v) {
    return (Bytes)_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), (Register)v);
}
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) {
    const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return (Bytes)_mm512_permutexvar_epi32(order, (Register)packed);
}
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b) {
    constexpr auto lanesOf = [](int half) { return 2 * half | (2 * half + 1) << 2; };
    return (Bytes)_mm512_shuffle_i64x2((Register)a, (Register)b, lanesOf(ofA) | lanesOf(ofB) << 4);
}
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) { return (Dwords)_mm512_alignr_epi32((Register)v, (Register)before, 15); }
ZEL_INLINE Words evenWords(Dwords a, Dwords b) {
    struct Places {
        alignas(64) uint16_t of[32];
    };
    static constexpr Places even = [] {
        Places p{};
        for (int i = 0; i < 32; ++i) p.of[i] = uint16_t(2 * i);
        return p;
    }();
    return (Words)_mm512_permutex2var_epi16((Register)a, x86::pattern(even.of), (Register)b);
}

ZEL_INLINE Words loadWidened(const uint8_t* p) { return (Words)_mm512_cvtepu8_epi16(x86::loadHalf(p)); }
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) { return (UDwords)_mm512_cvtepu8_epi32(x86::loadLane(p)); }
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) { return (UDwords)_mm512_cvtepu16_epi32(x86::loadHalf(p)); }
template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at) {
    UQwords v{};
    unrolled<8>([&](int i) ZEL_INLINE_LAMBDA {
        uint64_t qword;
        __builtin_memcpy(&qword, at(i), 8);
        v[i] = qword;
    });
    return (Bytes)v;
}
template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at) {
    PairsOfDoubles v{};
    unrolled<8>([&](int i) ZEL_INLINE_LAMBDA {
        v.first[i] = at(i)[0];
        v.second[i] = at(i)[1];
    });
    return v;
}
ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p) {
    const Register low = (Register)loadBytes(p), high = (Register)loadBytes(p + 64);
    return {(Bytes)_mm512_permutex2var_epi64(low, _mm512_setr_epi64(0, 1, 4, 5, 8, 9, 12, 13), high),
            (Bytes)_mm512_permutex2var_epi64(low, _mm512_setr_epi64(2, 3, 6, 7, 10, 11, 14, 15), high)};
}
template <bool deals>
ZEL_INLINE Parted loadParted(const uint8_t* p) {
    struct Places {
        alignas(64) uint8_t even[64];
        alignas(64) uint8_t odd[64];
    };
    static constexpr Places places = [] {
        Places t{};
        for (int i = 0; i < 64; ++i) {
            t.even[i] = uint8_t(2 * i);
            t.odd[i] = uint8_t(2 * i + 1);
        }
        return t;
    }();
    const Bytes low = loadBytes(p), high = loadBytes(p + 64);
    return {x86::permute(low, places.even, high), x86::permute(low, places.odd, high)};
}
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) { return (Dwords)_mm512_i32gather_epi32((Register)places, table, 4); }

ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b) {
    a = spreadHalves(a);
    b = spreadHalves(b);
    storeVector(p, interleaveLow(a, b));
    storeVector(p + vectorBytes, interleaveHigh(a, b));
}
ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    const Bytes sorted = lowThenHighHalves(v);
    x86::storeHalf(low, x86::lowHalf(sorted));
    x86::storeHalf(high, x86::highHalf(sorted));
}
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) {
    const auto sorted = (Register)lowThenHighHalves(v);
    x86::storeLane(p, _mm512_castsi512_si128(sorted));
    x86::storeLane(p + laneBytes, _mm512_extracti32x4_epi32(sorted, 1));
}
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
    const __m512i sorted =
        _mm512_permutexvar_epi32(_mm512_setr_epi32(0, 4, 8, 12, 2, 6, 10, 14, 0, 0, 0, 0, 0, 0, 0, 0), (Register)v);
    x86::storeCached(first, _mm512_castsi512_si128(sorted));
    x86::storeCached(second, _mm512_extracti32x4_epi32(sorted, 1));
}
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) { x86::storeCached(p, _mm512_cvtepi32_epi8((Register)v)); }
ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v) { x86::storeHalf(p, _mm512_cvtepi32_epi16((Register)v)); }

ZEL_INLINE Floats wholePart(Floats v) { return (Floats)_mm512_roundscale_ps((__m512)v, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
// In halves, for the approximation of whole vectors has other values.
ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c) { return (Floats)_mm512_fmadd_ps((__m512)a, (__m512)b, (__m512)c); }
ZEL_INLINE Floats approximateReciprocal(Floats v) {
    const __m512 wide = (__m512)v;
    const __m256 low = _mm256_rcp_ps(_mm512_castps512_ps256(wide)), high = _mm256_rcp_ps(_mm512_extractf32x8_ps(wide, 1));
    return (Floats)_mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1);
}
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
ZEL_INLINE Dwords truncated(Doubles low, Doubles high) {
    const __m512i first = _mm512_castsi256_si512(_mm512_cvttpd_epi32((__m512d)low));
    return (Dwords)_mm512_inserti64x4(first, _mm512_cvttpd_epi32((__m512d)high), 1);
}

}  // namespace zel::ZEL_LEVEL
