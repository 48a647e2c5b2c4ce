// Vectors of 16-byte lanes: one lane at the level ssse3, two at avx2, four at avx512. Arithmetic, comparison, shifts by a
// constant and logic come from the compiler's vector types; this header names what C++ has no word for. Every operation stays
// inside its lane unless its comment says otherwise, so a wide vector is several narrow ones side by side and one source serves
// all levels.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

constexpr int lanes = ZEL_LANES;
constexpr int laneBytes = 16;
constexpr int vectorBytes = lanes * laneBytes;

typedef uint8_t Bytes __attribute__((vector_size(vectorBytes)));
typedef int16_t Words __attribute__((vector_size(vectorBytes)));
typedef uint16_t UWords __attribute__((vector_size(vectorBytes)));
typedef int32_t Dwords __attribute__((vector_size(vectorBytes)));
typedef uint32_t UDwords __attribute__((vector_size(vectorBytes)));
typedef uint64_t UQwords __attribute__((vector_size(vectorBytes)));

#if ZEL_LANES == 4
using Register = __m512i;
#define ZEL_MM(op) _mm512_##op
#elif ZEL_LANES == 2
using Register = __m256i;
#define ZEL_MM(op) _mm256_##op
#else
using Register = __m128i;
#define ZEL_MM(op) _mm_##op
#endif

ZEL_INLINE Bytes loadBytes(const void* p) {
#if ZEL_LANES == 4
    return (Bytes)_mm512_loadu_si512(p);
#elif ZEL_LANES == 2
    return (Bytes)_mm256_loadu_si256(static_cast<const __m256i*>(p));
#else
    return (Bytes)_mm_loadu_si128(static_cast<const __m128i*>(p));
#endif
}

template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
#if ZEL_LANES == 4
    _mm512_storeu_si512(p, (Register)v);
#elif ZEL_LANES == 2
    _mm256_storeu_si256(static_cast<__m256i*>(p), (Register)v);
#else
    _mm_storeu_si128(static_cast<__m128i*>(p), (Register)v);
#endif
}

// The same 16 bytes in every lane.
ZEL_INLINE Bytes everyLane(const void* p) {
    const __m128i lane = _mm_loadu_si128(static_cast<const __m128i*>(p));
#if ZEL_LANES == 4
    return (Bytes)_mm512_broadcast_i32x4(lane);
#elif ZEL_LANES == 2
    return (Bytes)_mm256_broadcastsi128_si256(lane);
#else
    return (Bytes)lane;
#endif
}

ZEL_INLINE Bytes splatByte(uint8_t x) { return (Bytes)ZEL_MM(set1_epi8)(static_cast<char>(x)); }
ZEL_INLINE Words splatWord(int x) { return (Words)ZEL_MM(set1_epi16)(static_cast<short>(x)); }
ZEL_INLINE Dwords splatDword(int32_t x) { return (Dwords)ZEL_MM(set1_epi32)(x); }

// Two words or dwords in turn.
ZEL_INLINE Words splatWords(int even, int odd) {
    return (Words)splatDword(int32_t(uint32_t(uint16_t(even)) | uint32_t(odd) << 16));
}
ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    const auto pair = static_cast<int64_t>(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32);
#if ZEL_LANES == 4
    return (Dwords)_mm512_set1_epi64(pair);
#else
    return (Dwords)ZEL_MM(set1_epi64x)(pair);
#endif
}

// f(0), f(1) .. f(n - 1), written out: the numbers are constants, so that what they pick stays in registers.
template <int value>
struct Constant {
    constexpr operator int() const { return value; }
};
template <int n, int i = 0, class F>
ZEL_INLINE void unrolled(const F& f) {
    if constexpr (i < n) {
        f(Constant<i>{});
        unrolled<n, i + 1>(f);
    }
}

// The value, computed here: compilers like to put sums off until they are used, and keep all that they are made of until then.
template <class V>
ZEL_INLINE V computed(V v) {
#if ZEL_LANES < 4
    asm("" : "+x"(v));
#elif defined(__AVX512F__)  // otherwise wide vectors are emulated, and are no registers
    asm("" : "+v"(v));
#endif
    return v;
}

// Lane l from the 16 bytes at at(l).
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    const auto lane = [&](int l) ZEL_INLINE_LAMBDA { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at(l))); };
#if ZEL_LANES == 1
    return (Bytes)lane(0);
#else
    const __m256i pair = _mm256_inserti128_si256(_mm256_castsi128_si256(lane(0)), lane(1), 1);
#if ZEL_LANES == 2
    return (Bytes)pair;
#else
    const __m256i upper = _mm256_inserti128_si256(_mm256_castsi128_si256(lane(2)), lane(3), 1);
    return (Bytes)_mm512_inserti64x4(_mm512_castsi256_si512(pair), upper, 1);
#endif
#endif
}
// At p + l*stride.
ZEL_INLINE Bytes loadLanes(const uint8_t* p, [[maybe_unused]] ptrdiff_t stride) {
    return loadLanesAt([&](int l) ZEL_INLINE_LAMBDA { return p + l * stride; });
}

// The size of a line of the caches.
constexpr size_t lineBytes = 64;

// Asks for bytes that are needed some time later, where the processor can't foresee it.
enum class Use { read, written };
template <Use use>
ZEL_INLINE void prefetch(const uint8_t* p, size_t bytes) {
    for (size_t i = 0; i < bytes + lineBytes - 1; i += lineBytes) __builtin_prefetch(p + i, use == Use::written);
}

// Where vectors go, and whether they bypass the caches there. Only whole lines gain by that, so halves of vectors never do.
class Destination {
  public:
    ZEL_INLINE Destination(uint8_t* p, bool bypassing = false) : p_(p), bypassing_(bypassing) {}
    ZEL_INLINE operator uint8_t*() const { return p_; }
    ZEL_INLINE bool bypassing() const { return __builtin_expect(bypassing_, false); }

    template <class Number>
    ZEL_INLINE friend Destination operator+(Destination d, Number bytes) {
        return {d.p_ + bytes, d.bypassing_};
    }

  private:
    uint8_t* p_;
    bool bypassing_;
};

ZEL_INLINE bool isMultiple(const uint8_t* p, size_t bytes) { return reinterpret_cast<uintptr_t>(p) % bytes == 0; }

ZEL_INLINE void storeLane(Destination p, __m128i x) {
    if (p.bypassing() && isMultiple(p, laneBytes))
        _mm_stream_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(p)), x);
    else
        _mm_storeu_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(p)), x);
}

// Lane l to the 16 bytes at p + l*stride.
ZEL_INLINE void storeLanes(Destination p, [[maybe_unused]] ptrdiff_t stride, Bytes v) {
    const auto put = [&](int l, __m128i x) { storeLane(p + l * stride, x); };
#if ZEL_LANES == 1
    put(0, (__m128i)v);
#elif ZEL_LANES == 2
    put(0, _mm256_castsi256_si128((Register)v));
    put(1, _mm256_extracti128_si256((Register)v, 1));
#else
    put(0, _mm512_castsi512_si128((Register)v));
    put(1, _mm512_extracti32x4_epi32((Register)v, 1));
    put(2, _mm512_extracti32x4_epi32((Register)v, 2));
    put(3, _mm512_extracti32x4_epi32((Register)v, 3));
#endif
}

// Bypasses the caches, to a multiple of the vector.
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) {
#if ZEL_LANES == 4
    _mm512_stream_si512(reinterpret_cast<__m512i*>(p), (Register)v);
#elif ZEL_LANES == 2
    _mm256_stream_si256(reinterpret_cast<__m256i*>(p), (Register)v);
#else
    _mm_stream_si128(reinterpret_cast<__m128i*>(p), (Register)v);
#endif
}

// Stores that bypassed the caches come before all that follow.
ZEL_INLINE void storeFence() { _mm_sfence(); }

template <class V>
ZEL_INLINE void storeVector(Destination p, V v) {
    if (p.bypassing() && isMultiple(p, vectorBytes))
        streamVector(p, (Bytes)v);
    else
        storeVector(static_cast<void*>(static_cast<uint8_t*>(p)), v);
}

// Half a vector of consecutive bytes as words, in order over the whole vector.
ZEL_INLINE Words loadWidened(const uint8_t* p) {
#if ZEL_LANES == 4
    return (Words)_mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
#elif ZEL_LANES == 2
    return (Words)_mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
#else
    return (Words)_mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
#endif
}

// Words. Products keep their high half, floored or rounded; packs saturate and put the first operand into the lane's low half.
ZEL_INLINE Words mulHigh(Words a, Words b) { return (Words)ZEL_MM(mulhi_epi16)((Register)a, (Register)b); }
ZEL_INLINE UWords mulHigh(UWords a, UWords b) { return (UWords)ZEL_MM(mulhi_epu16)((Register)a, (Register)b); }
ZEL_INLINE Words mulRound(Words a, Words b) { return (Words)ZEL_MM(mulhrs_epi16)((Register)a, (Register)b); }
ZEL_INLINE Dwords mulAddPairs(Words a, Words b) { return (Dwords)ZEL_MM(madd_epi16)((Register)a, (Register)b); }
ZEL_INLINE Words mulAddPairs(Bytes a, Bytes b) { return (Words)ZEL_MM(maddubs_epi16)((Register)a, (Register)b); }
ZEL_INLINE Bytes packBytes(Words a, Words b) { return (Bytes)ZEL_MM(packus_epi16)((Register)a, (Register)b); }
ZEL_INLINE Bytes packSignedBytes(Words a, Words b) { return (Bytes)ZEL_MM(packs_epi16)((Register)a, (Register)b); }
ZEL_INLINE Words packWords(Dwords a, Dwords b) { return (Words)ZEL_MM(packs_epi32)((Register)a, (Register)b); }

// The greater and the lesser of unsigned bytes.
ZEL_INLINE Bytes greater(Bytes a, Bytes b) { return (Bytes)ZEL_MM(max_epu8)((Register)a, (Register)b); }
ZEL_INLINE Bytes lesser(Bytes a, Bytes b) { return (Bytes)ZEL_MM(min_epu8)((Register)a, (Register)b); }

// Without the sign; the lowest number stays as it is.
ZEL_INLINE Words absolute(Words v) { return (Words)ZEL_MM(abs_epi16)((Register)v); }
ZEL_INLINE Dwords absolute(Dwords v) { return (Dwords)ZEL_MM(abs_epi32)((Register)v); }

// Unsigned sums and signed differences, saturated.
ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b) { return (Bytes)ZEL_MM(adds_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)ZEL_MM(adds_epu16)((Register)a, (Register)b); }
ZEL_INLINE Bytes subtractSigned(Bytes a, Bytes b) { return (Bytes)ZEL_MM(subs_epi8)((Register)a, (Register)b); }
ZEL_INLINE Words subtractSigned(Words a, Words b) { return (Words)ZEL_MM(subs_epi16)((Register)a, (Register)b); }

// The lesser and the greater of unsigned bytes or of words, named for what they do to v.
ZEL_INLINE Bytes atMost(Bytes v, Bytes limit) { return (Bytes)ZEL_MM(min_epu8)((Register)v, (Register)limit); }
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit) { return (Bytes)ZEL_MM(max_epu8)((Register)v, (Register)limit); }
ZEL_INLINE Words atMost(Words v, Words limit) { return (Words)ZEL_MM(min_epi16)((Register)v, (Register)limit); }
ZEL_INLINE Words atLeast(Words v, Words limit) { return (Words)ZEL_MM(max_epi16)((Register)v, (Register)limit); }

// Unsigned differences, 0 where b is the greater one.
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b) { return (Bytes)ZEL_MM(subs_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b) { return (UWords)ZEL_MM(subs_epu16)((Register)a, (Register)b); }

// Rounded mean of unsigned bytes and words.
ZEL_INLINE Bytes mean(Bytes a, Bytes b) { return (Bytes)ZEL_MM(avg_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords mean(UWords a, UWords b) { return (UWords)ZEL_MM(avg_epu16)((Register)a, (Register)b); }

// The words at even places of a and those at odd places of b, where they are.
ZEL_INLINE Words evenThenOdd(Words a, Words b) {
#if ZEL_LANES == 4
    return (Words)_mm512_mask_mov_epi16((Register)a, 0xaaaaaaaa, (Register)b);
#elif ZEL_LANES == 2
    return (Words)_mm256_blend_epi16((Register)a, (Register)b, 0xaa);
#else
    return (a & splatWords(-1, 0)) | (b & splatWords(0, -1));
#endif
}

// The mean of unsigned words, cut off.
ZEL_INLINE UWords meanBelow(UWords a, UWords b) { return (a & b) + ((a ^ b) >> 1); }

// |a - b| of unsigned bytes or words.
template <class V>
ZEL_INLINE V distance(V a, V b) {
    return subtractSaturated(a, b) | subtractSaturated(b, a);
}

// Alternating elements of the low or high halves of the lanes of a and b, a first.
ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpacklo_epi8)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpackhi_epi8)((Register)a, (Register)b); }
ZEL_INLINE Words interleaveLow(Words a, Words b) { return (Words)ZEL_MM(unpacklo_epi16)((Register)a, (Register)b); }
ZEL_INLINE Words interleaveHigh(Words a, Words b) { return (Words)ZEL_MM(unpackhi_epi16)((Register)a, (Register)b); }
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b) { return (Dwords)ZEL_MM(unpacklo_epi32)((Register)a, (Register)b); }
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b) { return (Dwords)ZEL_MM(unpackhi_epi32)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpacklo_epi64)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpackhi_epi64)((Register)a, (Register)b); }

// The dwords at even places of the lanes of a and b, a in the low halves, and those at odd places.
ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b) {
    using Floating = decltype(ZEL_MM(setzero_ps)());
    return (Dwords)ZEL_MM(shuffle_ps)((Floating)a, (Floating)b, 0x88);
}
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b) {
    using Floating = decltype(ZEL_MM(setzero_ps)());
    return (Dwords)ZEL_MM(shuffle_ps)((Floating)a, (Floating)b, 0xdd);
}

// Bytes of a by the places in pattern; a place above 127 gives 0.
ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern) { return (Bytes)ZEL_MM(shuffle_epi8)((Register)a, (Register)pattern); }

// Words of a byte vector: the bytes at even places and at odd places, as numbers.
ZEL_INLINE Words evenBytes(Bytes a) { return (Words)a & splatWord(0x00ff); }
ZEL_INLINE Words oddBytes(Bytes a) { return (Words)((UWords)a >> 8); }

// The bytes of the low or the high half of each lane as words.
ZEL_INLINE Words lowBytes(Bytes a) { return (Words)interleaveLow(a, Bytes{}); }
ZEL_INLINE Words highBytes(Bytes a) { return (Words)interleaveHigh(a, Bytes{}); }

// Crosses lanes: the low halves of all lanes, then the high ones.
ZEL_INLINE Bytes lowThenHighHalves(Bytes v) {
#if ZEL_LANES == 4
    return (Bytes)_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), (Register)v);
#elif ZEL_LANES == 2
    return (Bytes)_mm256_permute4x64_epi64((Register)v, 0xd8);
#else
    return v;
#endif
}

// Crosses lanes: what two packs in turn have made of four vectors, in the order of those.
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) {
#if ZEL_LANES == 4
    const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return (Bytes)_mm512_permutexvar_epi32(order, (Register)packed);
#elif ZEL_LANES == 2
    return (Bytes)_mm256_permutevar8x32_epi32((Register)packed, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
#else
    return packed;
#endif
}

// Crosses lanes: the first half of the vector to the low halves of the lanes, the second one to the high halves.
ZEL_INLINE Bytes spreadHalves(Bytes v) {
#if ZEL_LANES == 4
    return (Bytes)_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), (Register)v);
#elif ZEL_LANES == 2
    return (Bytes)_mm256_permute4x64_epi64((Register)v, 0xd8);
#else
    return v;
#endif
}

// Halves of a vector of signed words as dwords, by lanes.
ZEL_INLINE Dwords lowWords(Words v) { return (Dwords)interleaveLow(v, v) >> 16; }
ZEL_INLINE Dwords highWords(Words v) { return (Dwords)interleaveHigh(v, v) >> 16; }

// Crosses lanes: the low words of two vectors' worth of consecutive dwords.
ZEL_INLINE Words evenWords(Dwords a, Dwords b) {
#if ZEL_LANES == 4
    struct Places {
        alignas(64) uint16_t of[32];
    };
    static constexpr Places even = [] {
        Places p{};
        for (int i = 0; i < 32; ++i) p.of[i] = uint16_t(2 * i);
        return p;
    }();
    return (Words)_mm512_permutex2var_epi16((Register)a, _mm512_load_si512(even.of), (Register)b);
#else
    return (Words)lowThenHighHalves((Bytes)packWords(a << 16 >> 16, b << 16 >> 16));
#endif
}

// Cross lanes: of two vectors' worth of consecutive bytes those at even places, and those at odd ones.
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b) { return lowThenHighHalves(packBytes(evenBytes(a), evenBytes(b))); }
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b) { return lowThenHighHalves(packBytes(oddBytes(a), oddBytes(b))); }

// Crosses lanes: the low and high halves of all lanes of v, each half brought together, to two places of half a vector.
ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    [[maybe_unused]] const Register sorted = (Register)lowThenHighHalves(v);
#if ZEL_LANES == 4
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(low), _mm512_castsi512_si256(sorted));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(high), _mm512_extracti64x4_epi64(sorted, 1));
#elif ZEL_LANES == 2
    _mm_storeu_si128(reinterpret_cast<__m128i*>(low), _mm256_castsi256_si128(sorted));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(high), _mm256_extracti128_si256(sorted, 1));
#else
    _mm_storel_epi64(reinterpret_cast<__m128i*>(low), (Register)v);
    _mm_storeh_pd(reinterpret_cast<double*>(high), _mm_castsi128_pd((Register)v));
#endif
}

// Crosses lanes: the low halves of all lanes of v, to half a vector.
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) {
    [[maybe_unused]] const Register sorted = (Register)lowThenHighHalves(v);
#if ZEL_LANES == 4
    storeLane(p, _mm512_castsi512_si128(sorted));
    storeLane(p + laneBytes, _mm512_extracti32x4_epi32(sorted, 1));
#elif ZEL_LANES == 2
    storeLane(p, _mm256_castsi256_si128(sorted));
#else
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), (Register)v);
#endif
}

// Crosses lanes: the dwords 0 and 2 of all lanes of v, each brought together, to two places of a quarter of a vector.
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
#if ZEL_LANES == 4
    const __m512i sorted =
        _mm512_permutexvar_epi32(_mm512_setr_epi32(0, 4, 8, 12, 2, 6, 10, 14, 0, 0, 0, 0, 0, 0, 0, 0), (Register)v);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(first), _mm512_castsi512_si128(sorted));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(second), _mm512_extracti32x4_epi32(sorted, 1));
#elif ZEL_LANES == 2
    const __m256i sorted = _mm256_permutevar8x32_epi32((Register)v, _mm256_setr_epi32(0, 4, 2, 6, 0, 0, 0, 0));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(first), _mm256_castsi256_si128(sorted));
    _mm_storeh_pd(reinterpret_cast<double*>(second), _mm_castsi128_pd(_mm256_castsi256_si128(sorted)));
#else
    const uint32_t dwords[2] = {((UDwords)v)[0], ((UDwords)v)[2]};
    __builtin_memcpy(first, &dwords[0], 4);
    __builtin_memcpy(second, &dwords[1], 4);
#endif
}

// A quarter of a vector of consecutive bytes as dwords, in order over the whole vector.
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
#if ZEL_LANES == 4
    return (UDwords)_mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
#elif ZEL_LANES == 2
    return (UDwords)_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
#else
    int32_t bytes;
    __builtin_memcpy(&bytes, p, 4);
    const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(bytes), _mm_setzero_si128());
    return (UDwords)_mm_unpacklo_epi16(words, _mm_setzero_si128());
#endif
}

// Half a vector of consecutive words as dwords, in order over the whole vector.
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) {
#if ZEL_LANES == 4
    return (UDwords)_mm512_cvtepu16_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
#elif ZEL_LANES == 2
    return (UDwords)_mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
#else
    return (UDwords)_mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
#endif
}

// A quarter of a vector of consecutive bytes, each four times.
ZEL_INLINE Bytes loadQuadrupled(const uint8_t* p) {
    alignas(16) constexpr uint8_t fourTimes[16] = {0, 0, 0, 0, 4, 4, 4, 4, 8, 8, 8, 8, 12, 12, 12, 12};
    return shuffle((Bytes)loadBytesAsDwords(p), everyLane(fourTimes));
}

// Two vectors' worth of consecutive bytes, dealt out to two vectors in turn by lanes, so that a pack of the two is in order.
struct PackOrder {
    Bytes first, second;
};
ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p) {
#if ZEL_LANES == 4
    const Register low = (Register)loadBytes(p), high = (Register)loadBytes(p + 64);
    return {(Bytes)_mm512_permutex2var_epi64(low, _mm512_setr_epi64(0, 1, 4, 5, 8, 9, 12, 13), high),
            (Bytes)_mm512_permutex2var_epi64(low, _mm512_setr_epi64(2, 3, 6, 7, 10, 11, 14, 15), high)};
#else
    return {loadLanes(p, 32), loadLanes(p + 16, 32)};
#endif
}

// Crosses lanes: of two vectors' worth of consecutive bytes those at even places, and those at odd ones. Where there are two
// lanes they can be dealt out to them in turn by fours, rather than one half to each.
struct Parted {
    Bytes even, odd;
};
#if ZEL_LANES == 4
struct PartedPatterns {
    alignas(64) uint8_t even[64];
    alignas(64) uint8_t odd[64];
};
inline constexpr PartedPatterns parted = [] {
    PartedPatterns p{};
    for (int i = 0; i < 64; ++i) {
        p.even[i] = uint8_t(2 * i);
        p.odd[i] = uint8_t(2 * i + 1);
    }
    return p;
}();
#endif
template <bool deals = false>
ZEL_INLINE Parted loadParted(const uint8_t* p) {
#if ZEL_LANES == 4
    const Register low = (Register)loadBytes(p), high = (Register)loadBytes(p + 64);
    return {(Bytes)_mm512_permutex2var_epi8(low, (Register)loadBytes(parted.even), high),
            (Bytes)_mm512_permutex2var_epi8(low, (Register)loadBytes(parted.odd), high)};
#else
    alignas(16) constexpr uint8_t evenThenOdd[16] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
    const PackOrder pairs =
        deals ? PackOrder{spreadHalves(loadBytes(p)), spreadHalves(loadBytes(p + vectorBytes))} : loadInPackOrder(p);
    const Bytes pattern = everyLane(evenThenOdd), first = shuffle(pairs.first, pattern), second = shuffle(pairs.second, pattern);
    return {interleaveLow64(first, second), interleaveHigh64(first, second)};
#endif
}

// Crosses lanes: the bytes of a and b in turn, two vectors' worth.
ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b) {
#if ZEL_LANES == 4
    a = spreadHalves(a);
    b = spreadHalves(b);
    storeVector(p, interleaveLow(a, b));
    storeVector(p + vectorBytes, interleaveHigh(a, b));
#else
    storeLanes(p, 32, interleaveLow(a, b));
    storeLanes(p + 16, 32, interleaveHigh(a, b));
#endif
}

// The dwords of a table at some places.
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
#if ZEL_LANES == 4
    return (Dwords)_mm512_i32gather_epi32((Register)places, table, 4);
#elif ZEL_LANES == 2
    return (Dwords)_mm256_i32gather_epi32(static_cast<const int*>(table), (Register)places, 4);
#else
    alignas(vectorBytes) int32_t found[vectorBytes / 4];
    for (int i = 0; i < vectorBytes / 4; ++i)
        __builtin_memcpy(&found[i], static_cast<const uint8_t*>(table) + 4 * ptrdiff_t{places[i]}, 4);
    return (Dwords)loadBytes(found);
#endif
}

// Crosses lanes: the elements of v one place up; the lowest is the highest of `before`.
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) {
#if ZEL_LANES == 4
    return (Dwords)_mm512_alignr_epi32((Register)v, (Register)before, 15);
#elif ZEL_LANES == 2
    const Register middle = _mm256_permute2x128_si256((Register)before, (Register)v, 0x21);
    return (Dwords)_mm256_alignr_epi8((Register)v, middle, 12);
#else
    return (Dwords)_mm_alignr_epi8((Register)v, (Register)before, 12);
#endif
}

// Crosses lanes: the low byte of every dword, to a quarter of a vector.
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
#if ZEL_LANES == 4
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm512_cvtepi32_epi8((Register)v));
#else
    alignas(16) constexpr uint8_t lowest[16] = {0,    4,    8,    12,   0x80, 0x80, 0x80, 0x80,
                                                0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
    const Bytes packed = shuffle((Bytes)v, everyLane(lowest));
#if ZEL_LANES == 2
    const __m128i low = _mm256_castsi256_si128((Register)packed), high = _mm256_extracti128_si256((Register)packed, 1);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_unpacklo_epi32(low, high));
#else
    const int32_t bytes = ((Dwords)packed)[0];
    __builtin_memcpy(p, &bytes, sizeof bytes);
#endif
#endif
}

// Crosses lanes: the low word of every dword, to half a vector.
ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v) {
#if ZEL_LANES == 4
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_cvtepi32_epi16((Register)v));
#else
    const Dwords words = v << 16 >> 16;
    storeLowHalves(p, (Bytes)packWords(words, words));
#endif
}

// A bit for every element, the lowest for the first: its sign.
ZEL_INLINE unsigned signBits(Dwords v) {
#if ZEL_LANES == 4
    return _mm512_movepi32_mask((Register)v);
#elif ZEL_LANES == 2
    return unsigned(_mm256_movemask_ps((__m256)v));
#else
    return unsigned(_mm_movemask_ps((__m128)v));
#endif
}
ZEL_INLINE uint64_t signBits(Bytes v) {
#if ZEL_LANES == 4
    return _mm512_movepi8_mask((Register)v);
#elif ZEL_LANES == 2
    return unsigned(_mm256_movemask_epi8((Register)v));
#else
    return unsigned(_mm_movemask_epi8((Register)v));
#endif
}

}  // namespace zel::ZEL_LEVEL
