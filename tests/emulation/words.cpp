// What the 512-bit words make of random arguments. Built twice, by the processor's words and by the emulated ones: the program of
// the former gets the other's name and compares.
#include <immintrin.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <type_traits>

#include "each.h"

#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace zel::ZEL_LEVEL {
namespace {

using I = __m512i;
using F = __m512;
using D = __m512d;

uint64_t state;

uint64_t next() {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state * 0x2545f4914f6cdd1d;
}

// Any bits, extremes, small numbers of each width (which are counts and places), or floats around the limits of integers.
template <class T>
void fill(T& value) {
    constexpr uint8_t extremes[] = {0, 1, 0x7f, 0x80, 0xff};
    const uint64_t kind = next() % 8;
    const int width = 1 << (kind - 2);
    const float scale = float(1 << next() % 31) * (next() % 2 ? 1.0f : 8.0f);
    unsigned char bytes[sizeof(T) + 8];
    for (size_t i = 0; i < sizeof(T); ++i) {
        const uint64_t word = next();
        bytes[i] = uint8_t(word >> 8);
        if (kind == 1) bytes[i] = extremes[word % 5];
        if (kind >= 2 && kind < 6) bytes[i] = i % width == 0 ? uint8_t(word % 80) : 0;
        const float number = (float(int32_t(word)) * 0x1p-31f) * scale;
        if (kind == 6 && i % 4 == 0) std::memcpy(bytes + i, &number, 4), i += 3;
        const double wide = double(number) * (word >> 40 & 1 ? 1 : 0.1);
        if (kind == 7 && i % 8 == 0 && i + 8 <= sizeof bytes) std::memcpy(bytes + i, &wide, 8), i += 7;
    }
    std::memcpy(&value, bytes, sizeof(T));
}

alignas(64) unsigned char memory[256];

void fill(const void*& p) { p = memory; }
void fill(void*& p) { p = memory; }
template <int value>
struct Immediate {
    constexpr operator int() const { return value; }
};
template <int value>
void fill(Immediate<value>&) {}

std::map<std::string, uint64_t> results;

// Of two numbers that are none either may come out, so all count as one.
template <class Number, class T>
T withOneNaN(T value) {
    Number numbers[sizeof(T) / sizeof(Number)];
    std::memcpy(numbers, &value, sizeof value);
    for (Number& number : numbers)
        if (number != number) number = __builtin_nan("");
    std::memcpy(&value, numbers, sizeof value);
    return value;
}
template <class T>
T comparable(T value) {
    if constexpr (std::is_same_v<T, F>) return withOneNaN<float>(value);
    if constexpr (std::is_same_v<T, D>) return withOneNaN<double>(value);
    return value;
}

template <class T>
void note(const char* name, T value) {
    value = comparable(value);
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    for (const unsigned char byte : bytes) results[name] = (results[name] ^ byte) * 0x100000001b3;
}

// Calls word(Arguments ...) on random arguments.
template <class... Arguments, class Word>
[[gnu::noinline]] void tryWord(const char* name, Word word) {
    state = 0x9e3779b97f4a7c15;
    for (int i = 0; i < 400; ++i) {
        fill(memory);
        const auto call = [&](Arguments... arguments) {
            (fill(arguments), ...);
            if constexpr (std::is_void_v<decltype(word(arguments...))>) {
                word(arguments...);
                for (const unsigned char byte : memory) note(name, byte);
            } else {
                note(name, word(arguments...));
            }
        };
        call(Arguments{}...);
    }
}

// The same with the arguments of a word of this type; integers by value at its end are left out of it.
template <class R, class... Arguments, class Word>
void tryAs(const char* name, R (*)(Arguments...), Word word) {
    tryWord<Arguments...>(name, word);
}

#define TRY(unused, name) tryAs(#name, static_cast<decltype(&name)>(nullptr), [](auto... a) { return name(a...); });
#define TRY_512(unused, name) TRY(, _mm512_##name)
#define TRY_MASKED(unused, name) TRY(, _mm512_##name) TRY(, _mm512_mask_##name) TRY(, _mm512_maskz_##name)

#define BY(V, bits, name, by) tryWord<V>(#name " by " #by, [](V a) { return _mm512_##name(a, by); });
#define BY_2(V, bits, name, by) tryWord<V, V>(#name " by " #by, [](V a, V b) { return _mm512_##name(a, b, by); });

#define SHIFTS(unused, name) BY(I, , name, 0) BY(I, , name, 1) BY(I, , name, 7) BY(I, , name, 15) BY(I, , name, 40)
#define IMMEDIATE_I(unused, name) BY(I, , name, 0x1b) BY(I, , name, 0x93) BY(I, , name, 0x4e)
#define IMMEDIATE_F(unused, name) BY(F, , name, 0x1b) BY(F, , name, 0x93) BY(F, , name, 0x4e)
#define IMMEDIATE_D(unused, name) BY(D, , name, 0x1b) BY(D, , name, 0x93) BY(D, , name, 0x4e)
#define IMMEDIATE_2I(unused, name) BY_2(I, , name, 0x1b) BY_2(I, , name, 0x93) BY_2(I, , name, 0x4e) BY_2(I, , name, 5)
#define IMMEDIATE_2F(unused, name) BY_2(F, , name, 0x1b) BY_2(F, , name, 0x93) BY_2(F, , name, 0x4e)
#define IMMEDIATE_2D(unused, name) BY_2(D, , name, 0x1b) BY_2(D, , name, 0x93) BY_2(D, , name, 0x4e)
#define COUNTED(unused, name) \
    tryWord<I, __m128i>(#name, [](I a, __m128i by) { return _mm512_##name(a, _mm_and_si128(by, _mm_setr_epi32(63, 0, 0, 0))); });
#define COMPARE(unused, suffix)                                                                                  \
    EACH(TRY_512, , cmpeq_##suffix##_mask, cmpneq_##suffix##_mask, cmplt_##suffix##_mask, cmple_##suffix##_mask, \
         cmpgt_##suffix##_mask, cmpge_##suffix##_mask, mask_cmplt_##suffix##_mask)
#define NARROW(unused, of) EACH(TRY_512, , cvtep##of, cvtsep##of, cvtusep##of)
#define COMPRESS(unused, s) EACH(TRY_512, , mask_compress_##s, maskz_compress_##s, mask_expand_##s, maskz_expand_##s)
#define MEMORY(V, bits, mask, w, suffix)                                                                                \
    tryWord<V, mask>(#w "_mask_loadu_" #suffix, [](V s, mask k) { return w##_mask_loadu_##suffix(s, k, memory + 1); }); \
    tryWord<mask>(#w "_maskz_loadu_" #suffix, [](mask k) { return w##_maskz_loadu_##suffix(k, memory + 3); });          \
    tryWord<mask, V>(#w "_mask_storeu_" #suffix, [](mask k, V v) { w##_mask_storeu_##suffix(memory + 5, k, v); });
#define PARTS(V, P, extract, insert, last)                                        \
    tryWord<V>(#extract, [](V v) { return _mm512_##extract(v, last); });          \
    tryWord<V>(#extract " 0", [](V v) { return _mm512_##extract(v, 0); });        \
    tryWord<V, P>(#insert, [](V v, P p) { return _mm512_##insert(v, p, last); }); \
    tryWord<V, P>(#insert " 0", [](V v, P p) { return _mm512_##insert(v, p, 0); });
#define GATHER(X, name, places)                                    \
    tryWord<X>(#name, [](X index) {                                \
        X few;                                                     \
        std::memset(&few, places, sizeof few);                     \
        return _mm512_##name(index & few & (X{} + 15), memory, 8); \
    });
#define ROUND(V, suffix)                                                                               \
    tryWord<V>("floor_" #suffix, [](V v) { return _mm512_roundscale_##suffix(v, _MM_FROUND_FLOOR); }); \
    tryWord<V>("ceil_" #suffix, [](V v) { return _mm512_roundscale_##suffix(v, _MM_FROUND_CEIL); });   \
    tryWord<V>("nearest_" #suffix, [](V v) { return _mm512_roundscale_##suffix(v, _MM_FROUND_TO_NEAREST_INT); });

[[gnu::noinline]] void tryIntegers() {
    EACH(TRY_MASKED, , abs_epi8, abs_epi16, abs_epi32, abs_epi64, add_epi8, sub_epi8, adds_epi8, adds_epu8, subs_epi8, subs_epu8);
    EACH(TRY_MASKED, , avg_epu8, max_epi8, max_epu8, min_epi8, min_epu8, shuffle_epi8, unpacklo_epi8, unpackhi_epi8, packs_epi16);
    EACH(TRY_MASKED, , packus_epi16, add_epi16, sub_epi16, adds_epi16, adds_epu16, subs_epi16, subs_epu16, avg_epu16, max_epi16);
    EACH(TRY_MASKED, , max_epu16, min_epi16, min_epu16, mulhi_epi16, mulhi_epu16, mulhrs_epi16, mullo_epi16, unpacklo_epi16);
    EACH(TRY_MASKED, , unpackhi_epi16, packs_epi32, packus_epi32, maddubs_epi16, add_epi32, sub_epi32, max_epi32, max_epu32);
    EACH(TRY_MASKED, , min_epi32, min_epu32, mullo_epi32, unpacklo_epi32, unpackhi_epi32, sllv_epi32, srlv_epi32, srav_epi32);
    EACH(TRY_MASKED, , madd_epi16, add_epi64, sub_epi64, unpacklo_epi64, unpackhi_epi64, mul_epi32, mul_epu32, sllv_epi64);
    EACH(TRY_MASKED, , srlv_epi64, max_epi64, min_epi64, max_epu64, min_epu64, mullo_epi64, sllv_epi16, srlv_epi16, srav_epi16);
    EACH(TRY_MASKED, , srav_epi64, rolv_epi32, rorv_epi32, rolv_epi64, rorv_epi64, multishift_epi64_epi8, and_epi32, or_epi64);
    EACH(TRY_MASKED, , xor_epi32, andnot_epi32, andnot_epi64, permutexvar_epi8, permutexvar_epi16, permutexvar_epi32);
    EACH(TRY_MASKED, , permutexvar_epi64, permutex2var_epi8, permutex2var_epi16, permutex2var_epi32, permutex2var_epi64);
    EACH(TRY_512, , sad_epu8, and_si512, or_si512, xor_si512, andnot_si512);
    EACH(SHIFTS, , slli_epi16, srli_epi16, srai_epi16, slli_epi32, srli_epi32, srai_epi32, slli_epi64, srli_epi64, srai_epi64);
    EACH(SHIFTS, , rol_epi32, ror_epi32, rol_epi64, ror_epi64);
    EACH(COUNTED, , sll_epi16, sll_epi32, sll_epi64, srl_epi16, srl_epi32, srl_epi64, sra_epi16, sra_epi32);
    EACH(IMMEDIATE_I, , shufflelo_epi16, shufflehi_epi16, permutex_epi64);
    BY(I, , shuffle_epi32, _MM_PERM_ABCD);
    BY(I, , shuffle_epi32, _MM_PERM_CDAB);
    BY(I, , bslli_epi128, 3);
    BY(I, , bsrli_epi128, 9);
    EACH(IMMEDIATE_2I, , alignr_epi8, alignr_epi32, alignr_epi64, shuffle_i32x4, shuffle_i64x2);
    tryWord<I, I, I>("ternarylogic", [](I a, I b, I c) { return _mm512_ternarylogic_epi64(a, b, c, 0xca); });
    tryWord<I, I, I>("ternarylogic 2", [](I a, I b, I c) { return _mm512_ternarylogic_epi32(a, b, c, 0x1b); });
    tryWord<I, uint16_t, I, I>("ternarylogic 3",
                               [](I a, __mmask16 k, I b, I c) { return _mm512_mask_ternarylogic_epi32(a, k, b, c, 0x96); });
    EACH(TRY_512, , reduce_add_epi32, reduce_max_epi32, reduce_min_epi32, reduce_max_epu32, reduce_min_epu32);
}

[[gnu::noinline]] void tryMasks() {
    EACH(TRY_512, , movm_epi8, movm_epi16, movm_epi32, movm_epi64, movepi8_mask, movepi16_mask, movepi32_mask, movepi64_mask);
    EACH(TRY_512, , mask_mov_epi8, maskz_mov_epi16, mask_mov_epi32, maskz_mov_epi64, mask_mov_ps, maskz_mov_pd, mask_blend_epi8);
    EACH(TRY_512, , mask_blend_epi16, mask_blend_epi32, mask_blend_epi64, mask_blend_ps, mask_blend_pd, test_epi8_mask);
    EACH(TRY_512, , test_epi16_mask, test_epi32_mask, test_epi64_mask, testn_epi8_mask, testn_epi64_mask);
    COMPARE(, epi8);
    COMPARE(, epu8);
    COMPARE(, epi16);
    COMPARE(, epu16);
    COMPARE(, epi32);
    COMPARE(, epu32);
    COMPARE(, epi64);
    COMPARE(, epu64);
    EACH(TRY_512, , cmpeq_ps_mask, cmplt_ps_mask, cmple_ps_mask, cmpunord_ps_mask, cmpneq_ps_mask, cmpnlt_ps_mask,
         cmpnle_ps_mask);
    EACH(TRY_512, , cmpord_ps_mask, cmpeq_pd_mask, cmplt_pd_mask, cmple_pd_mask, cmpunord_pd_mask, cmpneq_pd_mask);
    EACH(TRY_512, , cmpnlt_pd_mask, cmpnle_pd_mask, cmpord_pd_mask);
    EACH(TRY, , _kand_mask64, _kandn_mask32, _kor_mask16, _kxor_mask8, _knot_mask32, _kortestz_mask64_u8, _kortestc_mask8_u8);
}

[[gnu::noinline]] void tryFloats() {
    EACH(TRY_MASKED, , add_ps, sub_ps, mul_ps, div_ps, max_ps, min_ps, and_ps, andnot_ps, or_ps, xor_ps, unpacklo_ps,
         unpackhi_ps);
    EACH(TRY_MASKED, , add_pd, sub_pd, mul_pd, div_pd, max_pd, min_pd, and_pd, andnot_pd, or_pd, xor_pd, unpacklo_pd,
         unpackhi_pd);
    EACH(TRY_MASKED, , sqrt_ps, sqrt_pd, moveldup_ps, movehdup_ps, movedup_pd, permutexvar_ps, permutexvar_pd, permutex2var_ps);
    EACH(TRY_MASKED, , permutex2var_pd, cvtepi32_ps, cvtps_epi32, cvttps_epi32, cvtepi32_pd, cvtps_pd, cvtepu32_ps, cvtepu32_pd);
    EACH(TRY_MASKED, , cvtepi64_pd, cvtepu64_pd, cvttps_epu32, cvtps_epu32);
    EACH(TRY_512, , permutevar_ps, permutevar_pd, cvtpd_ps, cvtpd_epi32, cvttpd_epi32);
    EACH(IMMEDIATE_F, , permute_ps);
    EACH(IMMEDIATE_D, , permute_pd, permutex_pd);
    EACH(IMMEDIATE_2F, , shuffle_ps, shuffle_f32x4);
    EACH(IMMEDIATE_2D, , shuffle_pd, shuffle_f64x2);
    ROUND(F, ps);
    ROUND(D, pd);
    tryWord<F>("cvt_roundps_epi32", [](F v) { return _mm512_cvt_roundps_epi32(v, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC); });
}

[[gnu::noinline]] void tryMoves() {
    EACH(TRY_MASKED, , cvtepu8_epi16, cvtepi8_epi16, cvtepu16_epi32, cvtepi16_epi32, cvtepu32_epi64, cvtepi32_epi64,
         cvtepu8_epi32);
    EACH(TRY_MASKED, , cvtepi8_epi32, cvtepu8_epi64, cvtepi8_epi64, cvtepu16_epi64, cvtepi16_epi64);
    NARROW(, i16_epi8);
    NARROW(, i32_epi8);
    NARROW(, i64_epi8);
    NARROW(, i32_epi16);
    NARROW(, i64_epi16);
    NARROW(, i64_epi32);
    EACH(TRY_MASKED, , broadcastb_epi8, broadcastw_epi16, broadcastd_epi32, broadcastq_epi64, broadcastss_ps, broadcastsd_pd);
    EACH(TRY_MASKED, , broadcast_i32x4, broadcast_i64x2, broadcast_f32x4, broadcast_f64x2, broadcast_i32x8, broadcast_i64x4);
    EACH(TRY_MASKED, , broadcast_f32x8, broadcast_f64x4);
    EACH(TRY_512, , set1_epi8, set1_epi16, set1_epi32, set1_epi64, set1_ps, set1_pd, cvtsi512_si32, cvtss_f32, cvtsd_f64);
    EACH(TRY_512, , set_epi32, set_epi64, set_ps, set_pd);
    EACH(TRY_512, , zextsi128_si512, zextsi256_si512, zextps128_ps512, zextps256_ps512, zextpd128_pd512, zextpd256_pd512);
    EACH(TRY_512, , castsi512_si128, castsi512_si256, castps512_ps128, castps512_ps256, castpd512_pd128, castpd512_pd256);
    EACH(TRY_512, , castsi512_ps, castpd_si512);
    PARTS(I, __m128i, extracti32x4_epi32, inserti32x4, 3);
    PARTS(I, __m128i, extracti64x2_epi64, inserti64x2, 2);
    PARTS(I, __m256i, extracti32x8_epi32, inserti32x8, 1);
    PARTS(I, __m256i, extracti64x4_epi64, inserti64x4, 1);
    PARTS(F, __m128, extractf32x4_ps, insertf32x4, 3);
    PARTS(F, __m256, extractf32x8_ps, insertf32x8, 1);
    PARTS(D, __m128d, extractf64x2_pd, insertf64x2, 1);
    PARTS(D, __m256d, extractf64x4_pd, insertf64x4, 1);
    COMPRESS(, epi32);
    COMPRESS(, epi64);
    COMPRESS(, ps);
    COMPRESS(, pd);
    EACH(TRY_512, , mask_compressstoreu_epi32, mask_compressstoreu_pd);
    EACH(TRY_512, , loadu_si512, loadu_epi8, loadu_ps, loadu_pd, storeu_si512, storeu_epi16, storeu_ps, storeu_pd, load_si512);
    EACH(TRY_512, , load_pd, store_si512, store_ps);
    tryWord<I>("stream_si512", [](I v) { _mm512_stream_si512(reinterpret_cast<I*>(memory), v); });
    MEMORY(I, 8, __mmask64, _mm512, epi8);
    MEMORY(I, 16, __mmask32, _mm512, epi16);
    MEMORY(I, 32, __mmask16, _mm512, epi32);
    MEMORY(I, 64, __mmask8, _mm512, epi64);
    MEMORY(F, 32, __mmask16, _mm512, ps);
    MEMORY(D, 64, __mmask8, _mm512, pd);
    MEMORY(__m256i, 8, __mmask32, _mm256, epi8);
    MEMORY(__m256i, 16, __mmask16, _mm256, epi16);
    MEMORY(__m256i, 32, __mmask8, _mm256, epi32);
    MEMORY(__m256, 32, __mmask8, _mm256, ps);
    MEMORY(__m128i, 8, __mmask16, _mm, epi8);
    MEMORY(__m128i, 16, __mmask8, _mm, epi16);
    MEMORY(__m128d, 64, __mmask8, _mm, pd);
    GATHER(I, i32gather_epi32, 0x0f);
}

}  // namespace
}  // namespace zel::ZEL_LEVEL

int main(int argc, char** argv) {
    using namespace zel::ZEL_LEVEL;
    __builtin_cpu_init();
    if (argc > 1 && !__builtin_cpu_supports("avx512vbmi")) {
        std::puts("Skipped: this processor has no such words to compare with");
        return 77;
    }
    tryIntegers();
    tryMasks();
    tryFloats();
    tryMoves();
    if (argc == 1) {
        for (const auto& [name, result] : results)
            std::printf("%s=%llx\n", name.c_str(), static_cast<unsigned long long>(result));
        return 0;
    }
    std::map<std::string, uint64_t> emulated;
    FILE* other = popen(argv[1], "r");
    char line[200];
    while (other && std::fgets(line, sizeof line, other)) {
        if (const char* sign = std::strrchr(line, '='))
            emulated[std::string(line, static_cast<size_t>(sign - line))] = std::strtoull(sign + 1, nullptr, 16);
    }
    int faults = other && pclose(other) == 0 ? 0 : 1;
    for (const auto& [name, result] : results) {
        if (emulated[name] == result) continue;
        std::printf("%s has other results\n", name.c_str());
        ++faults;
    }
    std::printf("%zu words: %d faults\n", results.size(), faults);
    return faults == 0 ? 0 : 1;
}
