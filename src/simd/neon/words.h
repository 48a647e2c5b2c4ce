// The words of the vector layer by Advanced SIMD, in one lane. Those of integers stand here, the others in the files below.
#pragma once

#include "simd/neon/float_words.h"
#include "simd/neon/memory_words.h"
#include "simd/neon/registers.h"
#include "simd/words/integers.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes splatByte(uint8_t x) { return (Bytes)vdupq_n_u8(x); }
ZEL_INLINE Words splatWord(int x) { return (Words)vdupq_n_s16(int16_t(x)); }
ZEL_INLINE Dwords splatDword(int32_t x) { return (Dwords)vdupq_n_s32(x); }
ZEL_INLINE Words splatWords(int even, int odd) {
    return (Words)splatDword(int32_t(uint32_t(uint16_t(even)) | uint32_t(odd) << 16));
}
ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)vdupq_n_u64(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32);
}

// Whole products, for the doubled ones that have a high half in one instruction saturate where both are -32768.
ZEL_INLINE Words mulHigh(Words a, Words b) {
    using namespace arm;
    const int32x4_t low = vmull_s16(vget_low_s16(s16(a)), vget_low_s16(s16(b))), high = vmull_high_s16(s16(a), s16(b));
    return (Words)vuzp2q_s16(s16(low), s16(high));
}
ZEL_INLINE UWords mulHigh(UWords a, UWords b) {
    using namespace arm;
    const uint32x4_t low = vmull_u16(vget_low_u16(u16(a)), vget_low_u16(u16(b))), high = vmull_high_u16(u16(a), u16(b));
    return (UWords)vuzp2q_u16(u16(low), u16(high));
}
// The doubled product.
ZEL_INLINE Words mulTop(Words a, Words b) { return (Words)vqdmulhq_s16(arm::s16(a), arm::s16(b)); }
ZEL_INLINE Words mulRound(Words a, Words b) { return (Words)vqrdmulhq_s16(arm::s16(a), arm::s16(b)); }
ZEL_INLINE Dwords mulAddPairs(Words a, Words b) {
    using namespace arm;
    const int32x4_t low = vmull_s16(vget_low_s16(s16(a)), vget_low_s16(s16(b))), high = vmull_high_s16(s16(a), s16(b));
    return (Dwords)vpaddq_s32(low, high);
}
ZEL_INLINE Words mulAddBytes(Bytes a, Bytes signedBytes) {
    const Words even = (Words)((UWords)a & 0xff) * ((Words)((UWords)signedBytes << 8) >> 8);
    const Words odd = (Words)((UWords)a >> 8) * ((Words)signedBytes >> 8);
    return (Words)vqaddq_s16(arm::s16(even), arm::s16(odd));
}
ZEL_INLINE UWords mulHighOfBytes(UWords a, UWords b) { return mulHigh(a, b); }

ZEL_INLINE Bytes packBytes(Words a, Words b) { return (Bytes)vqmovun_high_s16(vqmovun_s16(arm::s16(a)), arm::s16(b)); }
ZEL_INLINE Bytes packSignedBytes(Words a, Words b) { return (Bytes)vqmovn_high_s16(vqmovn_s16(arm::s16(a)), arm::s16(b)); }
ZEL_INLINE Words packWords(Dwords a, Dwords b) { return (Words)vqmovn_high_s32(vqmovn_s32(arm::s32(a)), arm::s32(b)); }
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) { return (Words)vqmovun_high_s32(vqmovun_s32(arm::s32(a)), arm::s32(b)); }

template <int bits>
ZEL_INLINE Words evenTimes(Bytes a) {
    return (Words)((UWords)a << 8 >> (8 - bits));
}
template <int bits>
ZEL_INLINE Words oddTimes(Bytes a) {
    return (Words)((UWords)a >> 8 << bits);
}
template <int bits>
ZEL_INLINE Words pairSums(Bytes a) {
    return (Words)vpaddlq_u8(arm::u8(a)) << bits;
}
template <int bits>
ZEL_INLINE Bytes packShifted(Words a, Words b) {
    return (Bytes)vqshrun_high_n_s16(vqshrun_n_s16(arm::s16(a), bits), arm::s16(b), bits);
}
template <int bits>
ZEL_INLINE Bytes packRounded(Words a, Words b) {
    return (Bytes)vqrshrun_high_n_s16(vqrshrun_n_s16(arm::s16(a), bits), arm::s16(b), bits);
}

ZEL_INLINE Words absolute(Words v) { return (Words)vabsq_s16(arm::s16(v)); }
ZEL_INLINE Dwords absolute(Dwords v) { return (Dwords)vabsq_s32(arm::s32(v)); }

ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b) { return (Bytes)vqaddq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)vqaddq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b) { return (Bytes)vqsubq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b) { return (UWords)vqsubq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes subtractSignedSaturated(Bytes a, Bytes b) { return (Bytes)vqsubq_s8(arm::s8(a), arm::s8(b)); }
ZEL_INLINE Words subtractSignedSaturated(Words a, Words b) { return (Words)vqsubq_s16(arm::s16(a), arm::s16(b)); }

ZEL_INLINE Bytes atMost(Bytes v, Bytes limit) { return (Bytes)vminq_u8(arm::u8(v), arm::u8(limit)); }
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit) { return (Bytes)vmaxq_u8(arm::u8(v), arm::u8(limit)); }
ZEL_INLINE Words atMost(Words v, Words limit) { return (Words)vminq_s16(arm::s16(v), arm::s16(limit)); }
ZEL_INLINE Words atLeast(Words v, Words limit) { return (Words)vmaxq_s16(arm::s16(v), arm::s16(limit)); }

ZEL_INLINE Bytes mean(Bytes a, Bytes b) { return (Bytes)vrhaddq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords mean(UWords a, UWords b) { return (UWords)vrhaddq_u16(arm::u16(a), arm::u16(b)); }

ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b) { return (Bytes)vbslq_u8(arm::u8(which), arm::u8(a), arm::u8(b)); }
template <int places>
ZEL_INLINE Words blend(Words a, Words b) {
    constexpr auto word = [](int i) { return int16_t(places >> i & 1 ? -1 : 0); };
    constexpr Words ofB{word(0), word(1), word(2), word(3), word(4), word(5), word(6), word(7)};
    return (Words)choose((Bytes)ofB, (Bytes)b, (Bytes)a);
}

ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b) { return (Bytes)vzip1q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b) { return (Bytes)vzip2q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Words interleaveLow(Words a, Words b) { return (Words)vzip1q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Words interleaveHigh(Words a, Words b) { return (Words)vzip2q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b) { return (Dwords)vzip1q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b) { return (Dwords)vzip2q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b) { return (Bytes)vzip1q_u64(arm::u64(a), arm::u64(b)); }
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b) { return (Bytes)vzip2q_u64(arm::u64(a), arm::u64(b)); }

ZEL_INLINE Words highWords(Dwords a, Dwords b) { return (Words)vtrn2q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b) { return (Dwords)vuzp1q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b) { return (Dwords)vuzp2q_u32(arm::u32(a), arm::u32(b)); }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinQwords(Bytes a, Bytes b) {
    return (Bytes)UQwords{((UQwords)a)[ofA], ((UQwords)b)[ofB]};
}
template <int place>
ZEL_INLINE Bytes window(Bytes low, Bytes high) {
    return (Bytes)vextq_u8(arm::u8(low), arm::u8(high), place);
}
// The processor finds 0 at all places beyond the vector.
ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern) { return (Bytes)vqtbl1q_u8(arm::u8(a), arm::u8(pattern & 0x8f)); }

namespace arm {
// A bit of its own for each byte of both halves.
ZEL_INLINE uint8x16_t bitOfByte() { return (uint8x16_t)vdupq_n_u64(0x8040201008040201); }
}  // namespace arm

ZEL_INLINE Bits signBits(Bytes v) {
    const uint8x16_t bits = vandq_u8((uint8x16_t)vshrq_n_s8(arm::s8(v), 7), arm::bitOfByte());
    const uint8x16_t pairs = vpaddq_u8(bits, bits), quads = vpaddq_u8(pairs, pairs);
    return vgetq_lane_u16((uint16x8_t)vpaddq_u8(quads, quads), 0);
}
ZEL_INLINE unsigned signBits(Dwords v) { return vaddvq_u32(arm::u32((UDwords)(v >> 31) & UDwords{1, 2, 4, 8})); }
ZEL_INLINE Bits zeros(Bytes v) { return signBits((Bytes)(v == 0)); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return signBits((Dwords)((Dwords)a != (Dwords)b)); }

ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b) {
    const uint8x16_t halves = vcombine_u8(vdup_n_u8(uint8_t(bits)), vdup_n_u8(uint8_t(bits >> 8)));
    return choose((Bytes)vtstq_u8(halves, arm::bitOfByte()), a, b);
}
ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b) {
    const UWords bitOfWord = {1, 2, 4, 8, 16, 32, 64, 128};
    return (UWords)choose((Bytes)vtstq_u16(vdupq_n_u16(bits), arm::u16(bitOfWord)), (Bytes)a, (Bytes)b);
}

}  // namespace zel::ZEL_LEVEL
