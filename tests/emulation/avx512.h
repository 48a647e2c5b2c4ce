// The 512-bit words for a processor that has AVX2 alone: with this header before a kernel source, built with -mavx2, the level
// avx512 runs everywhere. What the processor has for 256 bits works on each half; the rest is spelled out. The functions hide the
// compiler's own of the same names, since they stand in the namespace of the level; a word that is missing here doesn't compile.
// tests/emulation/words.cpp compares them with the processor's. For g++, where immediates are arguments like others.
#pragma once

#include "each.h"
#include "of512.h"

#define __AVX512VBMI__ 1  // what src/simd/x86/level.h goes by

namespace zel::ZEL_LEVEL {

#define MASK_8 __mmask64
#define MASK_16 __mmask32
#define MASK_32 __mmask16
#define MASK_64 __mmask8
#define ALL_8 \
    ~uint64_t { 0 }
#define SELECT(bits, k, yes, no) of512::choose(of512::mask##bits(k), yes, no)

// The forms with a mask of a word with one or two vectors, and an immediate.
#define MASKED_1(V, A, bits, name)                                                                      \
    WORD V _mm512_mask_##name(V s, MASK_##bits k, A a) { return SELECT(bits, k, _mm512_##name(a), s); } \
    WORD V _mm512_maskz_##name(MASK_##bits k, A a) { return SELECT(bits, k, _mm512_##name(a), V{}); }
#define MASKED_2(V, bits, name)                                                                                 \
    WORD V _mm512_mask_##name(V s, MASK_##bits k, V a, V b) { return SELECT(bits, k, _mm512_##name(a, b), s); } \
    WORD V _mm512_maskz_##name(MASK_##bits k, V a, V b) { return SELECT(bits, k, _mm512_##name(a, b), V{}); }
#define MASKED_1_BY(V, bits, name)                                                                                  \
    WORD V _mm512_mask_##name(V s, MASK_##bits k, V a, int by) { return SELECT(bits, k, _mm512_##name(a, by), s); } \
    WORD V _mm512_maskz_##name(MASK_##bits k, V a, int by) { return SELECT(bits, k, _mm512_##name(a, by), V{}); }
#define MASKED_2_BY(V, bits, name)                                                                                          \
    WORD V _mm512_mask_##name(V s, MASK_##bits k, V a, V b, int by) { return SELECT(bits, k, _mm512_##name(a, b, by), s); } \
    WORD V _mm512_maskz_##name(MASK_##bits k, V a, V b, int by) { return SELECT(bits, k, _mm512_##name(a, b, by), V{}); }

// Words of both halves by themselves, with vectors V of elements of so many bits.
#define HALVES_1(V, bits, name)                                                                                     \
    WORD V _mm512_##name(V a) { return of512::whole(_mm256_##name(of512::low(a)), _mm256_##name(of512::high(a))); } \
    MASKED_1(V, V, bits, name)
#define HALVES_2(V, bits, name)                                                                                          \
    WORD V _mm512_##name(V a, V b) {                                                                                     \
        return of512::whole(_mm256_##name(of512::low(a), of512::low(b)), _mm256_##name(of512::high(a), of512::high(b))); \
    }                                                                                                                    \
    MASKED_2(V, bits, name)
#define HALVES_1_BY(V, bits, name)                                                                \
    WORD V _mm512_##name(V a, int by) {                                                           \
        return of512::whole(_mm256_##name(of512::low(a), by), _mm256_##name(of512::high(a), by)); \
    }                                                                                             \
    MASKED_1_BY(V, bits, name)
#define HALVES_2_BY(V, bits, name)                                                                                               \
    WORD V _mm512_##name(V a, V b, int by) {                                                                                     \
        return of512::whole(_mm256_##name(of512::low(a), of512::low(b), by), _mm256_##name(of512::high(a), of512::high(b), by)); \
    }                                                                                                                            \
    MASKED_2_BY(V, bits, name)
#define UNARY(bits, name) HALVES_1(I, bits, name)
#define BINARY(bits, name) HALVES_2(I, bits, name)
#define SHIFT(bits, name) HALVES_1_BY(I, bits, name)

WORD F _mm512_fmadd_ps(F a, F b, F c) {
    return of512::whole(_mm256_fmadd_ps(of512::low(a), of512::low(b), of512::low(c)),
                        _mm256_fmadd_ps(of512::high(a), of512::high(b), of512::high(c)));
}

EACH(UNARY, 8, abs_epi8)
EACH(UNARY, 16, abs_epi16)
EACH(UNARY, 32, abs_epi32)
EACH(BINARY, 8, add_epi8, sub_epi8, adds_epi8, adds_epu8, subs_epi8, subs_epu8, avg_epu8, max_epi8, max_epu8, min_epi8, min_epu8)
EACH(BINARY, 8, shuffle_epi8, unpacklo_epi8, unpackhi_epi8, packs_epi16, packus_epi16)
EACH(BINARY, 16, add_epi16, sub_epi16, adds_epi16, adds_epu16, subs_epi16, subs_epu16, avg_epu16, max_epi16, max_epu16, min_epi16)
EACH(BINARY, 16, min_epu16, mulhi_epi16, mulhi_epu16, mulhrs_epi16, mullo_epi16, unpacklo_epi16, unpackhi_epi16, packs_epi32)
EACH(BINARY, 16, packus_epi32, maddubs_epi16)
EACH(BINARY, 32, add_epi32, sub_epi32, max_epi32, max_epu32, min_epi32, min_epu32, mullo_epi32, unpacklo_epi32, unpackhi_epi32)
EACH(BINARY, 32, sllv_epi32, srlv_epi32, srav_epi32, madd_epi16)
EACH(BINARY, 64, add_epi64, sub_epi64, unpacklo_epi64, unpackhi_epi64, mul_epi32, mul_epu32, sllv_epi64, srlv_epi64)
EACH(SHIFT, 16, slli_epi16, srli_epi16, srai_epi16, shufflelo_epi16, shufflehi_epi16)
EACH(SHIFT, 32, slli_epi32, srli_epi32, srai_epi32)
EACH(SHIFT, 64, slli_epi64, srli_epi64)
HALVES_2_BY(I, 8, alignr_epi8)
// Its immediate is an enumerator, which would find the compiler's own function.
WORD I shuffle_epi32_(I a, int by) {
    return of512::whole(_mm256_shuffle_epi32(of512::low(a), by), _mm256_shuffle_epi32(of512::high(a), by));
}

WORD I _mm512_sad_epu8(I a, I b) {
    return of512::whole(_mm256_sad_epu8(of512::low(a), of512::low(b)), _mm256_sad_epu8(of512::high(a), of512::high(b)));
}
WORD I _mm512_bslli_epi128(I a, int by) {
    return of512::whole(_mm256_bslli_epi128(of512::low(a), by), _mm256_bslli_epi128(of512::high(a), by));
}
WORD I _mm512_bsrli_epi128(I a, int by) {
    return of512::whole(_mm256_bsrli_epi128(of512::low(a), by), _mm256_bsrli_epi128(of512::high(a), by));
}

#define BINARY_PS(V, name) HALVES_2(V, 32, name)
#define BINARY_PD(V, name) HALVES_2(V, 64, name)
EACH(BINARY_PS, F, add_ps, sub_ps, mul_ps, div_ps, max_ps, min_ps, and_ps, andnot_ps, or_ps, xor_ps, unpacklo_ps, unpackhi_ps)
EACH(BINARY_PD, D, add_pd, sub_pd, mul_pd, div_pd, max_pd, min_pd, and_pd, andnot_pd, or_pd, xor_pd, unpacklo_pd, unpackhi_pd)
HALVES_1(F, 32, sqrt_ps)
HALVES_1(D, 64, sqrt_pd)
HALVES_1(F, 32, moveldup_ps)
HALVES_1(F, 32, movehdup_ps)
HALVES_1(D, 64, movedup_pd)
HALVES_2_BY(F, 32, shuffle_ps)
HALVES_1_BY(F, 32, permute_ps)

// The count of all elements in a register.
#define SHIFT_ALL(bits, name)                                                                     \
    WORD I _mm512_##name(I a, __m128i by) {                                                       \
        return of512::whole(_mm256_##name(of512::low(a), by), _mm256_##name(of512::high(a), by)); \
    }
EACH(SHIFT_ALL, 0, sll_epi16, sll_epi32, sll_epi64, srl_epi16, srl_epi32, srl_epi64, sra_epi16, sra_epi32)

// Immediates have two bits for every lane of doubles, so the halves have each its own.
WORD D _mm512_shuffle_pd(D a, D b, int by) {
    return of512::whole(_mm256_shuffle_pd(of512::low(a), of512::low(b), by & 15),
                        _mm256_shuffle_pd(of512::high(a), of512::high(b), by >> 4));
}
MASKED_2_BY(D, 64, shuffle_pd)
WORD D _mm512_permute_pd(D a, int by) {
    return of512::whole(_mm256_permute_pd(of512::low(a), by & 15), _mm256_permute_pd(of512::high(a), by >> 4));
}
MASKED_1_BY(D, 64, permute_pd)

// Words that 256 bits don't have, by elements.
#define ELEMENTS_2(bits, T, name, expression)                                        \
    WORD I _mm512_##name(I v, I w) {                                                 \
        return of512::mapped2<T>(v, w, [](T a, T b) -> T { return T(expression); }); \
    }                                                                                \
    MASKED_2(I, bits, name)
ELEMENTS_2(64, int64_t, max_epi64, a > b ? a : b)
ELEMENTS_2(64, int64_t, min_epi64, a < b ? a : b)
ELEMENTS_2(64, uint64_t, max_epu64, a > b ? a : b)
ELEMENTS_2(64, uint64_t, min_epu64, a < b ? a : b)
ELEMENTS_2(64, uint64_t, mullo_epi64, a* b)
ELEMENTS_2(16, uint16_t, sllv_epi16, b > 15 ? 0 : a << b)
ELEMENTS_2(16, uint16_t, srlv_epi16, b > 15 ? 0 : a >> b)
ELEMENTS_2(16, int16_t, srav_epi16, a >> (uint16_t(b) > 15 ? 15 : b))
ELEMENTS_2(64, int64_t, srav_epi64, a >> (uint64_t(b) > 63 ? 63 : b))
ELEMENTS_2(32, uint32_t, rolv_epi32, a << (b & 31) | a >> (-b & 31))
ELEMENTS_2(32, uint32_t, rorv_epi32, a >> (b & 31) | a << (-b & 31))
ELEMENTS_2(64, uint64_t, rolv_epi64, a << (b & 63) | a >> (-b & 63))
ELEMENTS_2(64, uint64_t, rorv_epi64, a >> (b & 63) | a << (-b & 63))
WORD I _mm512_abs_epi64(I v) {
    return of512::mapped<I, uint64_t, uint64_t>(v, [](uint64_t a) { return int64_t(a) < 0 ? -a : a; });
}
MASKED_1(I, I, 64, abs_epi64)
WORD I _mm512_srai_epi64(I v, int by) {
    return of512::mapped<I, int64_t, int64_t>(v, [=](int64_t a) { return a >> (unsigned(by) > 63 ? 63 : by); });
}
MASKED_1_BY(I, 64, srai_epi64)
#define ROTATE(bits, name)                                                                                             \
    WORD I _mm512_##name##_epi##bits(I a, int by) { return _mm512_##name##v_epi##bits(a, _mm512_set1_epi##bits(by)); } \
    MASKED_1_BY(I, bits, name##_epi##bits)
// Eight bytes, each from a bit of the quad word on.
WORD I _mm512_multishift_epi64_epi8(I from, I v) {
    const auto first = of512::elements<uint8_t>(from);
    const auto words = of512::elements<uint64_t>(v);
    of512::Array<uint8_t, 64> bytes;
    for (int i = 0; i < 64; ++i) {
        const int by = first.of[i] & 63;
        bytes.of[i] = uint8_t(words.of[i / 8] >> by | words.of[i / 8] << (-by & 63));
    }
    return of512::vector<I>(bytes);
}
MASKED_2(I, 8, multishift_epi64_epi8)

// Logic.
WORD I _mm512_and_si512(I a, I b) { return (I)((__v8du)a & (__v8du)b); }
WORD I _mm512_or_si512(I a, I b) { return (I)((__v8du)a | (__v8du)b); }
WORD I _mm512_xor_si512(I a, I b) { return (I)((__v8du)a ^ (__v8du)b); }
WORD I _mm512_andnot_si512(I a, I b) { return (I)(~(__v8du)a & (__v8du)b); }
#define LOGIC(bits, op)                                                            \
    WORD I _mm512_##op##_epi##bits(I a, I b) { return _mm512_##op##_si512(a, b); } \
    MASKED_2(I, bits, op##_epi##bits)
EACH(LOGIC, 32, and, or, xor, andnot)
EACH(LOGIC, 64, and, or, xor, andnot)
WORD I _mm512_ternarylogic_epi64(I a, I b, I c, int table) {
    __v8du result{};
    for (int i = 0; i < 8; ++i) {
        if (table >> i & 1)
            result |= (i & 4 ? (__v8du)a : ~(__v8du)a) & (i & 2 ? (__v8du)b : ~(__v8du)b) & (i & 1 ? (__v8du)c : ~(__v8du)c);
    }
    return (I)result;
}
WORD I _mm512_ternarylogic_epi32(I a, I b, I c, int table) { return _mm512_ternarylogic_epi64(a, b, c, table); }
#define TERNARY(bits, name)                                               \
    WORD I _mm512_mask_##name(I a, MASK_##bits k, I b, I c, int table) {  \
        return SELECT(bits, k, _mm512_##name(a, b, c, table), a);         \
    }                                                                     \
    WORD I _mm512_maskz_##name(MASK_##bits k, I a, I b, I c, int table) { \
        return SELECT(bits, k, _mm512_##name(a, b, c, table), I{});       \
    }
TERNARY(32, ternarylogic_epi32)
TERNARY(64, ternarylogic_epi64)

// Masks.
#define MASKS(bits, suffix)                                                                                     \
    WORD I _mm512_movm_##suffix(MASK_##bits k) { return of512::mask##bits(k); }                                 \
    WORD I _mm512_mask_mov_##suffix(I s, MASK_##bits k, I a) { return SELECT(bits, k, a, s); }                  \
    WORD I _mm512_maskz_mov_##suffix(MASK_##bits k, I a) { return SELECT(bits, k, a, I{}); }                    \
    WORD I _mm512_mask_blend_##suffix(MASK_##bits k, I a, I b) { return SELECT(bits, k, b, a); }                \
    WORD MASK_##bits _mm512_test_##suffix##_mask(I a, I b) {                                                    \
        return MASK_##bits(~of512::signs##bits(                                                                 \
            of512::whole(_mm256_cmpeq_##suffix(_mm256_and_si256(of512::low(a), of512::low(b)), __m256i{}),      \
                         _mm256_cmpeq_##suffix(_mm256_and_si256(of512::high(a), of512::high(b)), __m256i{})))); \
    }                                                                                                           \
    WORD MASK_##bits _mm512_testn_##suffix##_mask(I a, I b) { return MASK_##bits(~_mm512_test_##suffix##_mask(a, b)); }
MASKS(8, epi8)
MASKS(16, epi16)
MASKS(32, epi32)
MASKS(64, epi64)
WORD __mmask64 _mm512_movepi8_mask(I a) { return of512::signs8(a); }
WORD __mmask32 _mm512_movepi16_mask(I a) { return __mmask32(of512::signs16(a)); }
WORD __mmask16 _mm512_movepi32_mask(I a) { return __mmask16(of512::signs32(a)); }
WORD __mmask8 _mm512_movepi64_mask(I a) { return __mmask8(of512::signs64(a)); }
#define MASKS_OF_FLOATS(V, bits, suffix)                                                       \
    WORD V _mm512_mask_mov_##suffix(V s, MASK_##bits k, V a) { return SELECT(bits, k, a, s); } \
    WORD V _mm512_maskz_mov_##suffix(MASK_##bits k, V a) { return SELECT(bits, k, a, V{}); }   \
    WORD V _mm512_mask_blend_##suffix(MASK_##bits k, V a, V b) { return SELECT(bits, k, b, a); }
MASKS_OF_FLOATS(F, 32, ps)
MASKS_OF_FLOATS(D, 64, pd)
#define LOGIC_OF_MASKS(bits)                                                                                             \
    WORD __mmask##bits _kand_mask##bits(__mmask##bits a, __mmask##bits b) { return __mmask##bits(a & b); }               \
    WORD __mmask##bits _kandn_mask##bits(__mmask##bits a, __mmask##bits b) { return __mmask##bits(~a & b); }             \
    WORD __mmask##bits _kor_mask##bits(__mmask##bits a, __mmask##bits b) { return __mmask##bits(a | b); }                \
    WORD __mmask##bits _kxor_mask##bits(__mmask##bits a, __mmask##bits b) { return __mmask##bits(a ^ b); }               \
    WORD __mmask##bits _knot_mask##bits(__mmask##bits a) { return __mmask##bits(~a); }                                   \
    WORD unsigned char _kortestz_mask##bits##_u8(__mmask##bits a, __mmask##bits b) { return __mmask##bits(a | b) == 0; } \
    WORD unsigned char _kortestc_mask##bits##_u8(__mmask##bits a, __mmask##bits b) { return __mmask##bits(~(a | b)) == 0; }
LOGIC_OF_MASKS(8)
LOGIC_OF_MASKS(16)
LOGIC_OF_MASKS(32)
LOGIC_OF_MASKS(64)

// Comparisons.
#define COMPARE_AS(bits, T, suffix, name, op)                                                                                   \
    WORD MASK_##bits _mm512_##name##_##suffix##_mask(I a, I b) {                                                                \
        typedef T H __attribute__((vector_size(32)));                                                                           \
        return MASK_##bits(of512::signs##bits(                                                                                  \
            of512::whole((__m256i)((H)of512::low(a) op(H) of512::low(b)), (__m256i)((H)of512::high(a) op(H) of512::high(b))))); \
    }                                                                                                                           \
    WORD MASK_##bits _mm512_mask_##name##_##suffix##_mask(MASK_##bits k, I a, I b) {                                            \
        return MASK_##bits(k & _mm512_##name##_##suffix##_mask(a, b));                                                          \
    }
#define COMPARE(bits, T, suffix)            \
    COMPARE_AS(bits, T, suffix, cmpeq, ==)  \
    COMPARE_AS(bits, T, suffix, cmpneq, !=) \
    COMPARE_AS(bits, T, suffix, cmplt, <)   \
    COMPARE_AS(bits, T, suffix, cmple, <=)  \
    COMPARE_AS(bits, T, suffix, cmpgt, >)   \
    COMPARE_AS(bits, T, suffix, cmpge, >=)
COMPARE(8, int8_t, epi8)
COMPARE(8, uint8_t, epu8)
COMPARE(16, int16_t, epi16)
COMPARE(16, uint16_t, epu16)
COMPARE(32, int32_t, epi32)
COMPARE(32, uint32_t, epu32)
COMPARE(64, int64_t, epi64)
COMPARE(64, uint64_t, epu64)
#define COMPARE_FLOATS(V, bits, suffix)                                                                                   \
    WORD MASK_##bits _mm512_cmp_##suffix##_mask(V a, V b, int by) {                                                       \
        return MASK_##bits(of512::signs##bits((I)of512::whole(_mm256_cmp_##suffix(of512::low(a), of512::low(b), by),      \
                                                              _mm256_cmp_##suffix(of512::high(a), of512::high(b), by)))); \
    }                                                                                                                     \
    WORD MASK_##bits _mm512_mask_cmp_##suffix##_mask(MASK_##bits k, V a, V b, int by) {                                   \
        return MASK_##bits(k & _mm512_cmp_##suffix##_mask(a, b, by));                                                     \
    }
COMPARE_FLOATS(F, 32, ps)
COMPARE_FLOATS(D, 64, pd)
#define COMPARE_FLOATS_AS(by, name)                                                           \
    WORD __mmask16 _mm512_##name##_ps_mask(F a, F b) { return _mm512_cmp_ps_mask(a, b, by); } \
    WORD __mmask8 _mm512_##name##_pd_mask(D a, D b) { return _mm512_cmp_pd_mask(a, b, by); }
COMPARE_FLOATS_AS(_CMP_EQ_OQ, cmpeq)
COMPARE_FLOATS_AS(_CMP_LT_OS, cmplt)
COMPARE_FLOATS_AS(_CMP_LE_OS, cmple)
COMPARE_FLOATS_AS(_CMP_UNORD_Q, cmpunord)
COMPARE_FLOATS_AS(_CMP_NEQ_UQ, cmpneq)
COMPARE_FLOATS_AS(_CMP_NLT_US, cmpnlt)
COMPARE_FLOATS_AS(_CMP_NLE_US, cmpnle)
COMPARE_FLOATS_AS(_CMP_ORD_Q, cmpord)

// All elements alike, or one after the other.
WORD I _mm512_setzero_si512() { return I{}; }
WORD I _mm512_setzero_epi32() { return I{}; }
WORD F _mm512_setzero_ps() { return F{}; }
WORD D _mm512_setzero_pd() { return D{}; }
WORD I _mm512_undefined_epi32() { return I{}; }
WORD F _mm512_undefined_ps() { return F{}; }
WORD D _mm512_undefined_pd() { return D{}; }
WORD I _mm512_set1_epi8(char x) { return of512::whole(_mm256_set1_epi8(x), _mm256_set1_epi8(x)); }
WORD I _mm512_set1_epi16(short x) { return of512::whole(_mm256_set1_epi16(x), _mm256_set1_epi16(x)); }
WORD I _mm512_set1_epi32(int x) { return of512::whole(_mm256_set1_epi32(x), _mm256_set1_epi32(x)); }
WORD I _mm512_set1_epi64(long long x) { return of512::whole(_mm256_set1_epi64x(x), _mm256_set1_epi64x(x)); }
WORD F _mm512_set1_ps(float x) { return of512::whole(_mm256_set1_ps(x), _mm256_set1_ps(x)); }
WORD D _mm512_set1_pd(double x) { return of512::whole(_mm256_set1_pd(x), _mm256_set1_pd(x)); }
WORD I _mm512_set_epi32(int p, int o, int n, int m, int l, int k, int j, int i, int h, int g, int f, int e, int d, int c, int b,
                        int a) {
    return of512::whole(_mm256_setr_epi32(a, b, c, d, e, f, g, h), _mm256_setr_epi32(i, j, k, l, m, n, o, p));
}
WORD I _mm512_set_epi64(long long h, long long g, long long f, long long e, long long d, long long c, long long b, long long a) {
    return of512::whole(_mm256_setr_epi64x(a, b, c, d), _mm256_setr_epi64x(e, f, g, h));
}
WORD F _mm512_set_ps(float p, float o, float n, float m, float l, float k, float j, float i, float h, float g, float f, float e,
                     float d, float c, float b, float a) {
    return of512::whole(_mm256_setr_ps(a, b, c, d, e, f, g, h), _mm256_setr_ps(i, j, k, l, m, n, o, p));
}
WORD D _mm512_set_pd(double h, double g, double f, double e, double d, double c, double b, double a) {
    return of512::whole(_mm256_setr_pd(a, b, c, d), _mm256_setr_pd(e, f, g, h));
}
ROTATE(32, rol)
ROTATE(32, ror)
ROTATE(64, rol)
ROTATE(64, ror)

#define BROADCAST(V, A, bits, name, half)                          \
    WORD V _mm512_##name(A a) { return of512::whole(half, half); } \
    MASKED_1(V, A, bits, name)
BROADCAST(I, __m128i, 8, broadcastb_epi8, _mm256_broadcastb_epi8(a))
BROADCAST(I, __m128i, 16, broadcastw_epi16, _mm256_broadcastw_epi16(a))
BROADCAST(I, __m128i, 32, broadcastd_epi32, _mm256_broadcastd_epi32(a))
BROADCAST(I, __m128i, 64, broadcastq_epi64, _mm256_broadcastq_epi64(a))
BROADCAST(F, __m128, 32, broadcastss_ps, _mm256_broadcastss_ps(a))
BROADCAST(D, __m128d, 64, broadcastsd_pd, _mm256_broadcastsd_pd(a))
BROADCAST(I, __m128i, 32, broadcast_i32x4, _mm256_broadcastsi128_si256(a))
BROADCAST(I, __m128i, 64, broadcast_i64x2, _mm256_broadcastsi128_si256(a))
BROADCAST(F, __m128, 32, broadcast_f32x4, _mm256_set_m128(a, a))
BROADCAST(D, __m128d, 64, broadcast_f64x2, _mm256_set_m128d(a, a))
BROADCAST(I, __m256i, 32, broadcast_i32x8, a)
BROADCAST(I, __m256i, 64, broadcast_i64x4, a)
BROADCAST(F, __m256, 32, broadcast_f32x8, a)
BROADCAST(D, __m256d, 64, broadcast_f64x4, a)

// Parts of a vector.
#define PARTS(V, P, count, extract, insert, bits)                                                     \
    WORD P _mm512_##extract(V v, int place) { return of512::elements<P>(v).of[place & (count - 1)]; } \
    WORD V _mm512_##insert(V v, P part, int place) {                                                  \
        auto parts = of512::elements<P>(v);                                                           \
        parts.of[place & (count - 1)] = part;                                                         \
        return of512::vector<V>(parts);                                                               \
    }
PARTS(I, __m128i, 4, extracti32x4_epi32, inserti32x4, 32)
PARTS(I, __m128i, 4, extracti64x2_epi64, inserti64x2, 64)
PARTS(I, __m256i, 2, extracti32x8_epi32, inserti32x8, 32)
PARTS(I, __m256i, 2, extracti64x4_epi64, inserti64x4, 64)
PARTS(F, __m128, 4, extractf32x4_ps, insertf32x4, 32)
PARTS(F, __m256, 2, extractf32x8_ps, insertf32x8, 32)
PARTS(D, __m128d, 4, extractf64x2_pd, insertf64x2, 64)
PARTS(D, __m256d, 2, extractf64x4_pd, insertf64x4, 64)
#define CAST(To, From, name) \
    WORD To _mm512_##name(From v) { return (To)v; }
CAST(F, I, castsi512_ps)
CAST(D, I, castsi512_pd)
CAST(I, F, castps_si512)
CAST(D, F, castps_pd)
CAST(I, D, castpd_si512)
CAST(F, D, castpd_ps)
WORD __m128i _mm512_castsi512_si128(I v) { return of512::low(of512::low(v)); }
WORD __m256i _mm512_castsi512_si256(I v) { return of512::low(v); }
WORD __m128 _mm512_castps512_ps128(F v) { return of512::low(of512::low(v)); }
WORD __m256 _mm512_castps512_ps256(F v) { return of512::low(v); }
WORD __m128d _mm512_castpd512_pd128(D v) { return _mm256_castpd256_pd128(of512::low(v)); }
WORD __m256d _mm512_castpd512_pd256(D v) { return of512::low(v); }
#define WIDEN(V, P, cast, zext)                                                                         \
    WORD V _mm512_##cast(P v) { return of512::vector<V>(of512::Array<P, sizeof(V) / sizeof(P)>{{v}}); } \
    WORD V _mm512_##zext(P v) { return of512::vector<V>(of512::Array<P, sizeof(V) / sizeof(P)>{{v}}); }
WIDEN(I, __m128i, castsi128_si512, zextsi128_si512)
WIDEN(I, __m256i, castsi256_si512, zextsi256_si512)
WIDEN(F, __m128, castps128_ps512, zextps128_ps512)
WIDEN(F, __m256, castps256_ps512, zextps256_ps512)
WIDEN(D, __m128d, castpd128_pd512, zextpd128_pd512)
WIDEN(D, __m256d, castpd256_pd512, zextpd256_pd512)
WORD int _mm512_cvtsi512_si32(I v) { return of512::elements<int>(v).of[0]; }
WORD float _mm512_cvtss_f32(F v) { return of512::elements<float>(v).of[0]; }
WORD double _mm512_cvtsd_f64(D v) { return of512::elements<double>(v).of[0]; }

// Permutes.
#define PERMUTE(V, bits, suffix, T)                                                                                             \
    WORD V _mm512_permutexvar_##suffix(I index, V v) { return (V)of512::permuted(of512::places<T>(index), (I)v); }              \
    WORD V _mm512_mask_permutexvar_##suffix(V s, MASK_##bits k, I index, V v) {                                                 \
        return SELECT(bits, k, _mm512_permutexvar_##suffix(index, v), s);                                                       \
    }                                                                                                                           \
    WORD V _mm512_maskz_permutexvar_##suffix(MASK_##bits k, I index, V v) {                                                     \
        return SELECT(bits, k, _mm512_permutexvar_##suffix(index, v), V{});                                                     \
    }                                                                                                                           \
    WORD V _mm512_permutex2var_##suffix(V a, I index, V b) { return (V)of512::permuted2((I)a, of512::places<T>(index), (I)b); } \
    WORD V _mm512_mask_permutex2var_##suffix(V a, MASK_##bits k, I index, V b) {                                                \
        return SELECT(bits, k, _mm512_permutex2var_##suffix(a, index, b), a);                                                   \
    }                                                                                                                           \
    WORD V _mm512_maskz_permutex2var_##suffix(MASK_##bits k, V a, I index, V b) {                                               \
        return SELECT(bits, k, _mm512_permutex2var_##suffix(a, index, b), V{});                                                 \
    }
PERMUTE(I, 8, epi8, uint8_t)
PERMUTE(I, 16, epi16, uint16_t)
PERMUTE(I, 32, epi32, uint32_t)
PERMUTE(I, 64, epi64, uint64_t)
PERMUTE(F, 32, ps, uint32_t)
PERMUTE(D, 64, pd, uint64_t)
WORD F _mm512_permutevar_ps(F a, I by) {
    return of512::whole(_mm256_permutevar_ps(of512::low(a), of512::low(by)),
                        _mm256_permutevar_ps(of512::high(a), of512::high(by)));
}
WORD D _mm512_permutevar_pd(D a, I by) {
    return of512::whole(_mm256_permutevar_pd(of512::low(a), of512::low(by)),
                        _mm256_permutevar_pd(of512::high(a), of512::high(by)));
}
WORD I _mm512_permutex_epi64(I a, int by) {
    return of512::whole(_mm256_permute4x64_epi64(of512::low(a), by), _mm256_permute4x64_epi64(of512::high(a), by));
}
WORD D _mm512_permutex_pd(D a, int by) { return (D)_mm512_permutex_epi64((I)a, by); }
#define LANES(V, bits, name)                                                                                  \
    WORD V _mm512_##name(V a, V b, int by) {                                                                  \
        const auto x = of512::elements<__m128i>(a), y = of512::elements<__m128i>(b);                          \
        return of512::vector<V>(                                                                              \
            of512::Array<__m128i, 4>{x.of[by & 3], x.of[by >> 2 & 3], y.of[by >> 4 & 3], y.of[by >> 6 & 3]}); \
    }                                                                                                         \
    MASKED_2_BY(V, bits, name)
LANES(I, 32, shuffle_i32x4)
LANES(I, 64, shuffle_i64x2)
LANES(F, 32, shuffle_f32x4)
LANES(D, 64, shuffle_f64x2)
#define ALIGN(bits, T, name)                                             \
    WORD I _mm512_##name(I a, I b, int by) {                             \
        const auto x = of512::elements<T>(a), y = of512::elements<T>(b); \
        auto to = x;                                                     \
        for (int i = 0, n = to.size(); i < n; ++i) {                     \
            const int from = i + (by & (n - 1));                         \
            to.of[i] = from < n ? y.of[from] : x.of[from - n];           \
        }                                                                \
        return of512::vector<I>(to);                                     \
    }                                                                    \
    MASKED_2_BY(I, bits, name)
ALIGN(32, uint32_t, alignr_epi32)
ALIGN(64, uint64_t, alignr_epi64)

// Memory.
#define MEMORY(V, P, suffix)                                                                       \
    WORD V _mm512_loadu_##suffix(const void* p) {                                                  \
        const auto* halves = static_cast<const char*>(p);                                          \
        return (V)of512::whole(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(halves)),       \
                               _mm256_loadu_si256(reinterpret_cast<const __m256i*>(halves + 32))); \
    }                                                                                              \
    WORD void _mm512_storeu_##suffix(void* p, V v) {                                               \
        auto* halves = static_cast<char*>(p);                                                      \
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(halves), (__m256i)of512::low(v));           \
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(halves + 32), (__m256i)of512::high(v));     \
    }
MEMORY(I, int, si512)
MEMORY(I, int, epi8)
MEMORY(I, int, epi16)
MEMORY(I, int, epi32)
MEMORY(I, int, epi64)
MEMORY(F, float, ps)
MEMORY(D, double, pd)
// Where the processor refuses an address off its boundary, so does this.
#define ALIGNED(V, suffix)                                                                     \
    WORD V _mm512_load_##suffix(const void* p) {                                               \
        if (reinterpret_cast<uintptr_t>(p) % 64 != 0) __builtin_trap();                        \
        return _mm512_loadu_##suffix(p);                                                       \
    }                                                                                          \
    WORD void _mm512_store_##suffix(void* p, V v) {                                            \
        if (reinterpret_cast<uintptr_t>(p) % 64 != 0) __builtin_trap();                        \
        _mm512_storeu_##suffix(p, v);                                                          \
    }                                                                                          \
    WORD void _mm512_stream_##suffix(void* p, V v) {                                           \
        if (reinterpret_cast<uintptr_t>(p) % 64 != 0) __builtin_trap();                        \
        auto* halves = static_cast<char*>(p);                                                  \
        _mm256_stream_si256(reinterpret_cast<__m256i*>(halves), (__m256i)of512::low(v));       \
        _mm256_stream_si256(reinterpret_cast<__m256i*>(halves + 32), (__m256i)of512::high(v)); \
    }
ALIGNED(I, si512)
ALIGNED(I, epi32)
ALIGNED(I, epi64)
ALIGNED(F, ps)
ALIGNED(D, pd)
#define MASKED_MEMORY(V, w, bits, mask, suffix, T)                                                   \
    WORD V w##_mask_loadu_##suffix(V s, mask k, const void* p) { return of512::loaded<T>(s, k, p); } \
    WORD V w##_maskz_loadu_##suffix(mask k, const void* p) { return of512::loaded<T>(V{}, k, p); }   \
    WORD void w##_mask_storeu_##suffix(void* p, mask k, V v) { of512::stored<T>(p, k, v); }
MASKED_MEMORY(I, _mm512, 8, __mmask64, epi8, uint8_t)
MASKED_MEMORY(I, _mm512, 16, __mmask32, epi16, uint16_t)
MASKED_MEMORY(I, _mm512, 32, __mmask16, epi32, uint32_t)
MASKED_MEMORY(I, _mm512, 64, __mmask8, epi64, uint64_t)
MASKED_MEMORY(F, _mm512, 32, __mmask16, ps, float)
MASKED_MEMORY(D, _mm512, 64, __mmask8, pd, double)
MASKED_MEMORY(__m256i, _mm256, 8, __mmask32, epi8, uint8_t)
MASKED_MEMORY(__m256i, _mm256, 16, __mmask16, epi16, uint16_t)
MASKED_MEMORY(__m256i, _mm256, 32, __mmask8, epi32, uint32_t)
MASKED_MEMORY(__m256i, _mm256, 64, __mmask8, epi64, uint64_t)
MASKED_MEMORY(__m256, _mm256, 32, __mmask8, ps, float)
MASKED_MEMORY(__m256d, _mm256, 64, __mmask8, pd, double)
MASKED_MEMORY(__m128i, _mm, 8, __mmask16, epi8, uint8_t)
MASKED_MEMORY(__m128i, _mm, 16, __mmask8, epi16, uint16_t)
MASKED_MEMORY(__m128i, _mm, 32, __mmask8, epi32, uint32_t)
MASKED_MEMORY(__m128i, _mm, 64, __mmask8, epi64, uint64_t)
MASKED_MEMORY(__m128, _mm, 32, __mmask8, ps, float)
MASKED_MEMORY(__m128d, _mm, 64, __mmask8, pd, double)
#define COMPRESS(V, bits, suffix, T)                                                                        \
    WORD V _mm512_mask_compress_##suffix(V s, MASK_##bits k, V v) { return of512::compressed<T>(s, k, v); } \
    WORD V _mm512_maskz_compress_##suffix(MASK_##bits k, V v) { return of512::compressed<T>(V{}, k, v); }   \
    WORD V _mm512_mask_expand_##suffix(V s, MASK_##bits k, V v) { return of512::expanded<T>(s, k, v); }     \
    WORD V _mm512_maskz_expand_##suffix(MASK_##bits k, V v) { return of512::expanded<T>(V{}, k, v); }       \
    WORD void _mm512_mask_compressstoreu_##suffix(void* p, MASK_##bits k, V v) {                            \
        of512::stored<T>(p, (uint64_t{1} << __builtin_popcount(k)) - 1, of512::compressed<T>(V{}, k, v));   \
    }
COMPRESS(I, 32, epi32, uint32_t)
COMPRESS(I, 64, epi64, uint64_t)
COMPRESS(F, 32, ps, float)
COMPRESS(D, 64, pd, double)
#define GATHER(V, bits, index, suffix, X, T, J)                                                      \
    WORD V _mm512_##index##gather_##suffix(X i, const void* p, int scale) {                          \
        return of512::gathered<T>(V{}, ~uint64_t{0}, of512::elements<J>(i), p, scale);               \
    }                                                                                                \
    WORD V _mm512_mask_##index##gather_##suffix(V s, MASK_##bits k, X i, const void* p, int scale) { \
        return of512::gathered<T>(s, k, of512::elements<J>(i), p, scale);                            \
    }
GATHER(I, 32, i32, epi32, I, uint32_t, int32_t)
GATHER(F, 32, i32, ps, I, float, int32_t)
GATHER(I, 64, i32, epi64, __m256i, uint64_t, int32_t)
GATHER(D, 64, i32, pd, __m256i, double, int32_t)
GATHER(I, 64, i64, epi64, I, uint64_t, int64_t)
GATHER(D, 64, i64, pd, I, double, int64_t)

// Conversions of half a vector into a whole one.
#define CONVERT_WHOLE(V, A, bits, name)                                                                             \
    WORD V _mm512_##name(A a) { return of512::whole(_mm256_##name(of512::low(a)), _mm256_##name(of512::high(a))); } \
    MASKED_1(V, A, bits, name)
CONVERT_WHOLE(I, __m256i, 16, cvtepu8_epi16)
CONVERT_WHOLE(I, __m256i, 16, cvtepi8_epi16)
CONVERT_WHOLE(I, __m256i, 32, cvtepu16_epi32)
CONVERT_WHOLE(I, __m256i, 32, cvtepi16_epi32)
CONVERT_WHOLE(I, __m256i, 64, cvtepu32_epi64)
CONVERT_WHOLE(I, __m256i, 64, cvtepi32_epi64)
CONVERT_WHOLE(F, I, 32, cvtepi32_ps)
CONVERT_WHOLE(I, F, 32, cvtps_epi32)
CONVERT_WHOLE(I, F, 32, cvttps_epi32)
CONVERT_WHOLE(D, __m256i, 64, cvtepi32_pd)
CONVERT_WHOLE(D, __m256, 64, cvtps_pd)
WORD __m256 _mm512_cvtpd_ps(D a) { return of512::whole(_mm256_cvtpd_ps(of512::low(a)), _mm256_cvtpd_ps(of512::high(a))); }
WORD __m256i _mm512_cvtpd_epi32(D a) {
    return of512::whole(_mm256_cvtpd_epi32(of512::low(a)), _mm256_cvtpd_epi32(of512::high(a)));
}
WORD __m256i _mm512_cvttpd_epi32(D a) {
    return of512::whole(_mm256_cvttpd_epi32(of512::low(a)), _mm256_cvttpd_epi32(of512::high(a)));
}
// Of a quarter or less, by elements.
#define CONVERT(V, A, bits, name, To, From)                                 \
    WORD V _mm512_##name(A a) {                                             \
        return of512::mapped<V, To, From>(a, [](From x) { return To(x); }); \
    }                                                                       \
    MASKED_1(V, A, bits, name)
CONVERT(I, __m128i, 32, cvtepu8_epi32, uint32_t, uint8_t)
CONVERT(I, __m128i, 32, cvtepi8_epi32, int32_t, int8_t)
CONVERT(I, __m128i, 64, cvtepu8_epi64, uint64_t, uint8_t)
CONVERT(I, __m128i, 64, cvtepi8_epi64, int64_t, int8_t)
CONVERT(I, __m128i, 64, cvtepu16_epi64, uint64_t, uint16_t)
CONVERT(I, __m128i, 64, cvtepi16_epi64, int64_t, int16_t)
CONVERT(F, I, 32, cvtepu32_ps, float, uint32_t)
CONVERT(D, __m256i, 64, cvtepu32_pd, double, uint32_t)
CONVERT(D, I, 64, cvtepi64_pd, double, int64_t)
CONVERT(D, I, 64, cvtepu64_pd, double, uint64_t)
// To narrower elements: what is beyond them is cut off, or saturated.
#define NARROW(V, A, suffix, from, To, From, UTo, UFrom)                                                       \
    WORD V _mm512_cvtep##from##_##suffix(A a) {                                                                \
        return of512::mapped<V, To, From>(a, [](From x) { return To(x); });                                    \
    }                                                                                                          \
    WORD V _mm512_cvtsep##from##_##suffix(A a) {                                                               \
        constexpr To highest = To(UTo(-1) >> 1), lowest = To(-highest - 1);                                    \
        return of512::mapped<V, To, From>(a, [](From x) { return of512::saturated<To>(x, lowest, highest); }); \
    }                                                                                                          \
    WORD V _mm512_cvtusep##from##_##suffix(A a) {                                                              \
        return of512::mapped<V, UTo, UFrom>(a, [](UFrom x) { return of512::saturated<UTo>(x, 0, UTo(-1)); });  \
    }
NARROW(__m256i, I, epi8, i16, int8_t, int16_t, uint8_t, uint16_t)
NARROW(__m128i, I, epi8, i32, int8_t, int32_t, uint8_t, uint32_t)
NARROW(__m128i, I, epi8, i64, int8_t, int64_t, uint8_t, uint64_t)
NARROW(__m256i, I, epi16, i32, int16_t, int32_t, uint16_t, uint32_t)
NARROW(__m128i, I, epi16, i64, int16_t, int64_t, uint16_t, uint64_t)
NARROW(__m256i, I, epi32, i64, int32_t, int64_t, uint32_t, uint64_t)
// What no unsigned dword can hold gives the highest one.
WORD I _mm512_cvttps_epu32(F a) {
    return of512::mapped<I, uint32_t, float>(a, [](float x) { return x > -1 && x < 4294967296.0f ? uint32_t(int64_t(x)) : ~0u; });
}
MASKED_1(I, F, 32, cvttps_epu32)
#define ROUND(V, bits, suffix)                                                                                      \
    WORD V _mm512_roundscale_##suffix(V a, int how) {                                                               \
        return of512::whole(_mm256_round_##suffix(of512::low(a), how), _mm256_round_##suffix(of512::high(a), how)); \
    }                                                                                                               \
    MASKED_1_BY(V, bits, roundscale_##suffix)                                                                       \
    WORD V _mm512_floor_##suffix(V a) { return _mm512_roundscale_##suffix(a, _MM_FROUND_FLOOR); }                   \
    WORD V _mm512_ceil_##suffix(V a) { return _mm512_roundscale_##suffix(a, _MM_FROUND_CEIL); }
ROUND(F, 32, ps)
ROUND(D, 64, pd)
WORD I _mm512_cvtps_epu32(F a) { return _mm512_cvttps_epu32(_mm512_roundscale_ps(a, _MM_FROUND_CUR_DIRECTION)); }
MASKED_1(I, F, 32, cvtps_epu32)
WORD I _mm512_cvt_roundps_epi32(F a, int how) { return _mm512_cvttps_epi32(_mm512_roundscale_ps(a, how)); }

// Sums and the like of all elements, those of floats by halves of halves.
#define REDUCE(T, name, op)                          \
    WORD T _mm512_reduce_##name(I v) {               \
        const auto e = of512::elements<T>(v);        \
        T all = e.of[0];                             \
        for (int i = 1; i < e.size(); ++i) all = op; \
        return all;                                  \
    }
REDUCE(int32_t, add_epi32, int32_t(uint32_t(all) + uint32_t(e.of[i])))
REDUCE(int32_t, max_epi32, all > e.of[i] ? all : e.of[i])
REDUCE(int32_t, min_epi32, all < e.of[i] ? all : e.of[i])
REDUCE(uint32_t, max_epu32, all > e.of[i] ? all : e.of[i])
REDUCE(uint32_t, min_epu32, all < e.of[i] ? all : e.of[i])

}  // namespace zel::ZEL_LEVEL

#define _mm512_shuffle_epi32(a, by) shuffle_epi32_(a, by)

#undef ALIGN
#undef ALIGNED
#undef ALL_8
#undef BINARY
#undef BINARY_PD
#undef BINARY_PS
#undef BROADCAST
#undef CAST
#undef COMPARE
#undef COMPARE_AS
#undef COMPARE_FLOATS
#undef COMPARE_FLOATS_AS
#undef COMPRESS
#undef CONVERT
#undef CONVERT_WHOLE
#undef D
#undef ELEMENTS_2
#undef F
#undef GATHER
#undef HALVES_1
#undef HALVES_1_BY
#undef HALVES_2
#undef HALVES_2_BY
#undef I
#undef LANES
#undef LOGIC
#undef LOGIC_OF_MASKS
#undef MASKED_1
#undef MASKED_1_BY
#undef MASKED_2
#undef MASKED_2_BY
#undef MASKED_MEMORY
#undef MASKS
#undef MASKS_OF_FLOATS
#undef MASK_16
#undef MASK_32
#undef MASK_64
#undef MASK_8
#undef MEMORY
#undef NARROW
#undef PARTS
#undef PERMUTE
#undef REDUCE
#undef ROTATE
#undef ROUND
#undef SELECT
#undef SHIFT
#undef SHIFT_ALL
#undef TERNARY
#undef UNARY
#undef WIDEN
#undef WORD
