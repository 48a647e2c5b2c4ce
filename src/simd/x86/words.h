// Words that are one instruction, under the same name at every level.
#pragma once

#include "simd/words/crossing.h"
#include "simd/words/floats.h"
#include "simd/words/integers.h"
#include "simd/words/memory.h"
#include "simd/words/rounding.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes splatByte(uint8_t x) { return (Bytes)ZEL_MM(set1_epi8)(static_cast<char>(x)); }
ZEL_INLINE Words splatWord(int x) { return (Words)ZEL_MM(set1_epi16)(static_cast<short>(x)); }
ZEL_INLINE Dwords splatDword(int32_t x) { return (Dwords)ZEL_MM(set1_epi32)(x); }
ZEL_INLINE Floats splatFloat(float x) { return (Floats)ZEL_MM(set1_ps)(x); }
ZEL_INLINE Doubles splatDouble(double x) { return (Doubles)ZEL_MM(set1_pd)(x); }
ZEL_INLINE Words splatWords(int even, int odd) {
    return (Words)splatDword(int32_t(uint32_t(uint16_t(even)) | uint32_t(odd) << 16));
}

ZEL_INLINE Words mulHigh(Words a, Words b) { return (Words)ZEL_MM(mulhi_epi16)((Register)a, (Register)b); }
ZEL_INLINE UWords mulHigh(UWords a, UWords b) { return (UWords)ZEL_MM(mulhi_epu16)((Register)a, (Register)b); }
ZEL_INLINE Words mulRound(Words a, Words b) { return (Words)ZEL_MM(mulhrs_epi16)((Register)a, (Register)b); }
ZEL_INLINE Dwords mulAddPairs(Words a, Words b) { return (Dwords)ZEL_MM(madd_epi16)((Register)a, (Register)b); }
ZEL_INLINE Words mulAddBytes(Bytes a, Bytes signedBytes) {
    return (Words)ZEL_MM(maddubs_epi16)((Register)a, (Register)signedBytes);
}
ZEL_INLINE UWords mulHighOfBytes(UWords a, UWords b) { return mulHigh(a, b); }
ZEL_INLINE Bytes packBytes(Words a, Words b) { return (Bytes)ZEL_MM(packus_epi16)((Register)a, (Register)b); }
ZEL_INLINE Bytes packSignedBytes(Words a, Words b) { return (Bytes)ZEL_MM(packs_epi16)((Register)a, (Register)b); }
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b) {
    return lowThenHighHalves(packBytes((Words)a & splatWord(0x00ff), (Words)b & splatWord(0x00ff)));
}
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b) {
    return lowThenHighHalves(packBytes((Words)((UWords)a >> 8), (Words)((UWords)b >> 8)));
}
ZEL_INLINE Words packWords(Dwords a, Dwords b) { return (Words)ZEL_MM(packs_epi32)((Register)a, (Register)b); }

ZEL_INLINE Words mulTop(Words a, Words b) { return mulHigh(a, b); }
template <int bits>
ZEL_INLINE Words evenTimes(Bytes a) {
    return mulAddBytes(a, (Bytes)splatWord(1 << bits));
}
template <int bits>
ZEL_INLINE Words oddTimes(Bytes a) {
    return mulAddBytes(a, (Bytes)splatWord(1 << (bits + 8)));
}
template <int bits>
ZEL_INLINE Words pairSums(Bytes a) {
    return mulAddBytes(a, splatByte(1 << bits));
}
template <int bits>
ZEL_INLINE Bytes packShifted(Words a, Words b) {
    return packBytes(a >> bits, b >> bits);
}
template <int bits>
ZEL_INLINE Bytes packRounded(Words a, Words b) {
    return packBytes(mulRound(a, splatWord(1 << (15 - bits))), mulRound(b, splatWord(1 << (15 - bits))));
}

ZEL_INLINE Words absolute(Words v) { return (Words)ZEL_MM(abs_epi16)((Register)v); }
ZEL_INLINE Dwords absolute(Dwords v) { return (Dwords)ZEL_MM(abs_epi32)((Register)v); }

ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b) { return (Bytes)ZEL_MM(adds_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)ZEL_MM(adds_epu16)((Register)a, (Register)b); }
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b) { return (Bytes)ZEL_MM(subs_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b) { return (UWords)ZEL_MM(subs_epu16)((Register)a, (Register)b); }
ZEL_INLINE Bytes subtractSignedSaturated(Bytes a, Bytes b) { return (Bytes)ZEL_MM(subs_epi8)((Register)a, (Register)b); }
ZEL_INLINE Words subtractSignedSaturated(Words a, Words b) { return (Words)ZEL_MM(subs_epi16)((Register)a, (Register)b); }

ZEL_INLINE Bytes atMost(Bytes v, Bytes limit) { return (Bytes)ZEL_MM(min_epu8)((Register)v, (Register)limit); }
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit) { return (Bytes)ZEL_MM(max_epu8)((Register)v, (Register)limit); }
ZEL_INLINE Words atMost(Words v, Words limit) { return (Words)ZEL_MM(min_epi16)((Register)v, (Register)limit); }
ZEL_INLINE Words atLeast(Words v, Words limit) { return (Words)ZEL_MM(max_epi16)((Register)v, (Register)limit); }

ZEL_INLINE Bytes mean(Bytes a, Bytes b) { return (Bytes)ZEL_MM(avg_epu8)((Register)a, (Register)b); }
ZEL_INLINE UWords mean(UWords a, UWords b) { return (UWords)ZEL_MM(avg_epu16)((Register)a, (Register)b); }

ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpacklo_epi8)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpackhi_epi8)((Register)a, (Register)b); }
ZEL_INLINE Words interleaveLow(Words a, Words b) { return (Words)ZEL_MM(unpacklo_epi16)((Register)a, (Register)b); }
ZEL_INLINE Words interleaveHigh(Words a, Words b) { return (Words)ZEL_MM(unpackhi_epi16)((Register)a, (Register)b); }
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b) { return (Dwords)ZEL_MM(unpacklo_epi32)((Register)a, (Register)b); }
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b) { return (Dwords)ZEL_MM(unpackhi_epi32)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpacklo_epi64)((Register)a, (Register)b); }
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b) { return (Bytes)ZEL_MM(unpackhi_epi64)((Register)a, (Register)b); }

ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b) { return (Dwords)ZEL_MM(shuffle_ps)((FloatRegister)a, (FloatRegister)b, 0x88); }
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b) { return (Dwords)ZEL_MM(shuffle_ps)((FloatRegister)a, (FloatRegister)b, 0xdd); }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinQwords(Bytes a, Bytes b) {
    constexpr int ofLanes = ((1 << 2 * lanes) - 1) / 3 * (ofA + 2 * ofB);
    return (Bytes)ZEL_MM(shuffle_pd)((DoubleRegister)a, (DoubleRegister)b, ofLanes);
}
template <int place>
ZEL_INLINE Bytes window(Bytes low, Bytes high) {
    return (Bytes)ZEL_MM(alignr_epi8)((Register)high, (Register)low, place);
}
ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern) { return (Bytes)ZEL_MM(shuffle_epi8)((Register)a, (Register)pattern); }

ZEL_INLINE Floats byMode(Floats v) { return v; }
ZEL_INLINE Floats toFloats(Dwords v) { return (Floats)ZEL_MM(cvtepi32_ps)((Register)v); }
ZEL_INLINE Dwords rounded(Floats v) { return (Dwords)ZEL_MM(cvtps_epi32)((FloatRegister)v); }
ZEL_INLINE Dwords truncated(Floats v) { return (Dwords)ZEL_MM(cvttps_epi32)((FloatRegister)v); }
ZEL_INLINE int32_t truncated(double x) { return _mm_cvttsd_si32(_mm_set_sd(x)); }
ZEL_INLINE Floats atMost(Floats v, Floats limit) { return (Floats)ZEL_MM(min_ps)((FloatRegister)v, (FloatRegister)limit); }
ZEL_INLINE Floats atLeast(Floats v, Floats limit) { return (Floats)ZEL_MM(max_ps)((FloatRegister)v, (FloatRegister)limit); }
template <int place>
ZEL_INLINE Floats everyOf(Floats v) {
    return (Floats)ZEL_MM(shuffle_ps)((FloatRegister)v, (FloatRegister)v, place * 0x55);
}

namespace x86 {

ZEL_INLINE __m128i loadLane(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
ZEL_INLINE void storeLane(Destination p, __m128i x) {
    if (p.bypassing() && isMultiple(p, laneBytes))
        _mm_stream_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(p)), x);
    else
        _mm_storeu_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(p)), x);
}
// Not to bypass the caches.
ZEL_INLINE void storeCached(uint8_t* p, __m128i x) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), x); }
ZEL_INLINE void storeLowQword(uint8_t* p, __m128i x) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), x); }
ZEL_INLINE void storeHighQword(uint8_t* p, __m128i x) { _mm_storeh_pd(reinterpret_cast<double*>(p), _mm_castsi128_pd(x)); }

}  // namespace x86

ZEL_INLINE Bytes loadLanes(const uint8_t* p, [[maybe_unused]] ptrdiff_t stride) {
    return loadLanesAt([&](int l) ZEL_INLINE_LAMBDA { return p + l * stride; });
}

ZEL_INLINE void moveAtOnce(uint8_t* to, const uint8_t* from, size_t bytes) {
    asm volatile("rep movsb" : "+D"(to), "+S"(from), "+c"(bytes) : : "memory");
}

ZEL_INLINE void storeFence() { _mm_sfence(); }

// Bits 13 and 14 of the control word are the mode, 0 to nearest.
constexpr uint32_t roundingField = 0x6000;
ZEL_INLINE bool roundsToNearest() { return (_mm_getcsr() & roundingField) == 0; }
ZEL_INLINE uint32_t setRoundNearestState() {
    const uint32_t old = _mm_getcsr();
    if ((old & roundingField) != 0) _mm_setcsr(old & ~roundingField);
    return old;
}
ZEL_INLINE void restoreRoundState(uint32_t old) {
    if ((old & roundingField) != 0) _mm_setcsr(old);
}

}  // namespace zel::ZEL_LEVEL
