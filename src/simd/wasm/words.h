// The words of the vector layer by WebAssembly in one lane. Those of integers stand here, the others in the files below.
#pragma once

#include "simd/wasm/float_words.h"
#include "simd/wasm/memory_words.h"
#include "simd/words/by_lanes.h"
#include "simd/words/integers.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes splatByte(uint8_t x) { return (Bytes)wasm_u8x16_splat(x); }
ZEL_INLINE Words splatWord(int x) { return (Words)wasm_i16x8_splat(static_cast<int16_t>(x)); }
ZEL_INLINE Dwords splatDword(int32_t x) { return (Dwords)wasm_i32x4_splat(x); }
ZEL_INLINE Words splatWords(int even, int odd) {
    return (Words)splatDword(int32_t(uint32_t(uint16_t(even)) | uint32_t(odd) << 16));
}
ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)wasm_u64x2_splat(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32);
}

ZEL_INLINE Words highWords(Dwords a, Dwords b) {
    return (Words)__builtin_shufflevector((Words)a, (Words)b, 1, 9, 3, 11, 5, 13, 7, 15);
}

namespace wasm {
// The high words of eight dwords in order.
ZEL_INLINE v128_t upperWords(v128_t low, v128_t high) { return wasm_i16x8_shuffle(low, high, 1, 3, 5, 7, 9, 11, 13, 15); }
}  // namespace wasm

// Each by a multiply-add with a factor without the words beside it, for the high words of dwords then stand where they belong.
// The factors are mostly constant.
ZEL_INLINE Words mulHigh(Words a, Words b) {
    const v128_t x = (v128_t)a, y = (v128_t)b;
    const v128_t even = wasm_i32x4_dot_i16x8(x, wasm_v128_and(y, wasm_i32x4_const_splat(0xffff)));
    const v128_t odd = wasm_i32x4_dot_i16x8(x, wasm_v128_andnot(y, wasm_i32x4_const_splat(0xffff)));
    return (Words)wasm_i16x8_shuffle(wasm_u32x4_shr(even, 16), odd, 0, 9, 2, 11, 4, 13, 6, 15);
}
ZEL_INLINE UWords mulHigh(UWords a, UWords b) {
    const v128_t x = (v128_t)a, y = (v128_t)b;
    return (UWords)wasm::upperWords(wasm_u32x4_extmul_low_u16x8(x, y), wasm_u32x4_extmul_high_u16x8(x, y));
}
// A byte times both bytes of the other one: few machines have products of whole words' high halves.
ZEL_INLINE UWords mulHighOfBytes(UWords a, UWords b) {
    const UWords byte = a >> 8;
    return byte * (b >> 8) + (byte * (b & 0xff) >> 8);
}
ZEL_INLINE Words mulRound(Words a, Words b) { return (Words)wasm_i16x8_q15mulr_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE Dwords mulAddPairs(Words a, Words b) { return (Dwords)wasm_i32x4_dot_i16x8((v128_t)a, (v128_t)b); }
ZEL_INLINE Words mulAddBytes(Bytes a, Bytes signedBytes) {
    const Words even = (Words)((UWords)a & 0xff) * ((Words)((UWords)signedBytes << 8) >> 8);
    const Words odd = (Words)((UWords)a >> 8) * ((Words)signedBytes >> 8);
    return (Words)wasm_i16x8_add_sat((v128_t)even, (v128_t)odd);
}

ZEL_INLINE Bytes packBytes(Words a, Words b) { return (Bytes)wasm_u8x16_narrow_i16x8((v128_t)a, (v128_t)b); }
ZEL_INLINE Bytes packSignedBytes(Words a, Words b) { return (Bytes)wasm_i8x16_narrow_i16x8((v128_t)a, (v128_t)b); }
ZEL_INLINE Words packWords(Dwords a, Dwords b) { return (Words)wasm_i16x8_narrow_i32x4((v128_t)a, (v128_t)b); }
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b) { return (Words)wasm_u16x8_narrow_i32x4((v128_t)a, (v128_t)b); }

ZEL_INLINE Words mulTop(Words a, Words b) { return mulHigh(a, b); }
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
    return (Words)wasm_u16x8_extadd_pairwise_u8x16((v128_t)a) << bits;
}
template <int bits>
ZEL_INLINE Bytes packShifted(Words a, Words b) {
    return packBytes(a >> bits, b >> bits);
}
template <int bits>
ZEL_INLINE Bytes packRounded(Words a, Words b) {
    static_assert(bits <= 7, "what a sum loses by its limit must be beyond a byte");
    const v128_t half = wasm_i16x8_const_splat(1 << (bits - 1));
    return packShifted<bits>((Words)wasm_i16x8_add_sat((v128_t)a, half), (Words)wasm_i16x8_add_sat((v128_t)b, half));
}

ZEL_INLINE Words absolute(Words v) { return (Words)wasm_i16x8_abs((v128_t)v); }
ZEL_INLINE Dwords absolute(Dwords v) { return (Dwords)wasm_i32x4_abs((v128_t)v); }

ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b) { return (Bytes)wasm_u8x16_add_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)wasm_u16x8_add_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b) { return (Bytes)wasm_u8x16_sub_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b) { return (UWords)wasm_u16x8_sub_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE Bytes subtractSignedSaturated(Bytes a, Bytes b) { return (Bytes)wasm_i8x16_sub_sat((v128_t)a, (v128_t)b); }
ZEL_INLINE Words subtractSignedSaturated(Words a, Words b) { return (Words)wasm_i16x8_sub_sat((v128_t)a, (v128_t)b); }

ZEL_INLINE Bytes atMost(Bytes v, Bytes limit) { return (Bytes)wasm_u8x16_min((v128_t)v, (v128_t)limit); }
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit) { return (Bytes)wasm_u8x16_max((v128_t)v, (v128_t)limit); }
ZEL_INLINE Words atMost(Words v, Words limit) { return (Words)wasm_i16x8_min((v128_t)v, (v128_t)limit); }
ZEL_INLINE Words atLeast(Words v, Words limit) { return (Words)wasm_i16x8_max((v128_t)v, (v128_t)limit); }

ZEL_INLINE Bytes mean(Bytes a, Bytes b) { return (Bytes)wasm_u8x16_avgr((v128_t)a, (v128_t)b); }
ZEL_INLINE UWords mean(UWords a, UWords b) { return (UWords)wasm_u16x8_avgr((v128_t)a, (v128_t)b); }

ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b) { return (Bytes)wasm_v128_bitselect((v128_t)a, (v128_t)b, (v128_t)which); }
template <int places>
ZEL_INLINE Words blend(Words a, Words b) {
    constexpr auto from = [](int i) { return places >> i & 1 ? 8 + i : i; };
    return __builtin_shufflevector(a, b, from(0), from(1), from(2), from(3), from(4), from(5), from(6), from(7));
}

ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
}
ZEL_INLINE Words interleaveLow(Words a, Words b) { return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11); }
ZEL_INLINE Words interleaveHigh(Words a, Words b) { return __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15); }
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b) { return __builtin_shufflevector(a, b, 0, 4, 1, 5); }
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b) { return __builtin_shufflevector(a, b, 2, 6, 3, 7); }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinQwords(Bytes a, Bytes b) {
    return (Bytes)__builtin_shufflevector((UQwords)a, (UQwords)b, ofA, 2 + ofB);
}
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b) { return joinQwords<0, 0>(a, b); }
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b) { return joinQwords<1, 1>(a, b); }

ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b) { return __builtin_shufflevector(a, b, 0, 2, 4, 6); }
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b) { return __builtin_shufflevector(a, b, 1, 3, 5, 7); }

template <int place>
ZEL_INLINE Bytes window(Bytes low, Bytes high) {
    constexpr int p = place;
    return __builtin_shufflevector(low, high, p, p + 1, p + 2, p + 3, p + 4, p + 5, p + 6, p + 7, p + 8, p + 9, p + 10, p + 11,
                                   p + 12, p + 13, p + 14, p + 15);
}
// The machine finds 0 at all places beyond the vector.
ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern) {
    return (Bytes)wasm_i8x16_swizzle((v128_t)a, wasm_v128_and((v128_t)pattern, wasm_u8x16_const_splat(0x8f)));
}

ZEL_INLINE Bits signBits(Bytes v) { return static_cast<Bits>(wasm_i8x16_bitmask((v128_t)v)); }
ZEL_INLINE unsigned signBits(Dwords v) { return wasm_i32x4_bitmask((v128_t)v); }
ZEL_INLINE unsigned differing(Floats a, Floats b) { return signBits((Dwords)((Dwords)a != (Dwords)b)); }

}  // namespace zel::ZEL_LEVEL
