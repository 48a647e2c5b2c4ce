// What emulated words are made of: halves, masks, elements.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#pragma GCC diagnostic ignored "-Wignored-attributes"
#pragma GCC diagnostic ignored "-Wpsabi"

#define WORD [[gnu::always_inline]] static inline
#define I __m512i
#define F __m512
#define D __m512d

namespace zel::ZEL_LEVEL {
namespace of512 {

template <class T, int count>
struct Array {
    T of[count];
    WORD constexpr int size() { return count; }
};
template <class T, class V>
WORD auto elements(V v) {
    return __builtin_bit_cast(Array<T, sizeof(V) / sizeof(T)>, v);
}
template <class V, class E>
WORD V vector(E elements) {
    return __builtin_bit_cast(V, elements);
}

WORD __m256i low(I v) { return elements<__m256i>(v).of[0]; }
WORD __m256i high(I v) { return elements<__m256i>(v).of[1]; }
WORD __m256 low(F v) { return elements<__m256>(v).of[0]; }
WORD __m256 high(F v) { return elements<__m256>(v).of[1]; }
WORD __m256d low(D v) { return elements<__m256d>(v).of[0]; }
WORD __m256d high(D v) { return elements<__m256d>(v).of[1]; }
WORD __m128i low(__m256i v) { return _mm256_castsi256_si128(v); }
WORD __m128i high(__m256i v) { return _mm256_extracti128_si256(v, 1); }
WORD __m128 low(__m256 v) { return _mm256_castps256_ps128(v); }
WORD __m128 high(__m256 v) { return _mm256_extractf128_ps(v, 1); }
WORD I whole(__m256i low, __m256i high) { return vector<I>(Array<__m256i, 2>{low, high}); }
WORD F whole(__m256 low, __m256 high) { return vector<F>(Array<__m256, 2>{low, high}); }
WORD D whole(__m256d low, __m256d high) { return vector<D>(Array<__m256d, 2>{low, high}); }
WORD __m256i whole(__m128i low, __m128i high) { return _mm256_set_m128i(high, low); }
WORD __m256 whole(__m128 low, __m128 high) { return _mm256_set_m128(high, low); }

// The bits of a mask as elements of all ones or of none, and the signs of elements as a mask.
WORD __m256i spread8(uint32_t k) {
    const __m256i bytes = _mm256_shuffle_epi8(_mm256_set1_epi32(int(k)),
                                              _mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303));
    const __m256i bit = _mm256_set1_epi64x(int64_t(0x8040201008040201));
    return _mm256_cmpeq_epi8(_mm256_and_si256(bytes, bit), bit);
}
WORD __m256i spread16(uint32_t k) {
    const __m256i bit = _mm256_setr_epi16(1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, -32768);
    return _mm256_cmpeq_epi16(_mm256_and_si256(_mm256_set1_epi16(short(k)), bit), bit);
}
WORD __m256i spread32(uint32_t k) {
    const __m256i bit = _mm256_setr_epi32(1, 2, 4, 8, 16, 32, 64, 128);
    return _mm256_cmpeq_epi32(_mm256_and_si256(_mm256_set1_epi32(int(k)), bit), bit);
}
WORD __m256i spread64(uint32_t k) {
    const __m256i bit = _mm256_setr_epi64x(1, 2, 4, 8);
    return _mm256_cmpeq_epi64(_mm256_and_si256(_mm256_set1_epi64x(k), bit), bit);
}
WORD I mask8(uint64_t k) { return whole(spread8(uint32_t(k)), spread8(uint32_t(k >> 32))); }
WORD I mask16(uint64_t k) { return whole(spread16(uint32_t(k)), spread16(uint32_t(k >> 16))); }
WORD I mask32(uint64_t k) { return whole(spread32(uint32_t(k)), spread32(uint32_t(k >> 8))); }
WORD I mask64(uint64_t k) { return whole(spread64(uint32_t(k)), spread64(uint32_t(k >> 4))); }

WORD uint64_t signs8(I v) {
    return uint32_t(_mm256_movemask_epi8(low(v))) | uint64_t(uint32_t(_mm256_movemask_epi8(high(v)))) << 32;
}
WORD uint64_t signs16(I v) {
    return uint32_t(_mm256_movemask_epi8(_mm256_permute4x64_epi64(_mm256_packs_epi16(low(v), high(v)), 0xd8)));
}
WORD uint64_t signs32(I v) { return uint64_t(_mm256_movemask_ps((__m256)low(v)) | _mm256_movemask_ps((__m256)high(v)) << 8); }
WORD uint64_t signs64(I v) { return uint64_t(_mm256_movemask_pd((__m256d)low(v)) | _mm256_movemask_pd((__m256d)high(v)) << 4); }

// Bytes of yes where mask has all ones, of no elsewhere.
template <class V>
WORD V choose(I mask, V yes, V no) {
    const auto half = [](__m256i m, auto y, auto n) { return _mm256_blendv_epi8((__m256i)n, (__m256i)y, m); };
    return (V)whole(half(low(mask), low(yes), low(no)), half(high(mask), high(yes), high(no)));
}

// The bytes of v at places of 0 to 63, of which there is one in every byte of index.
WORD __m256i permuted(__m256i index, I v) {
    __m256i result{};
    const auto lanes = elements<__m128i>(v);
    for (int lane = 0; lane < 4; ++lane) {
        const __m256i isHere =
            _mm256_cmpeq_epi8(_mm256_and_si256(index, _mm256_set1_epi8(0x30)), _mm256_set1_epi8(char(16 * lane)));
        const __m256i here =
            _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(lanes.of[lane]), _mm256_and_si256(index, _mm256_set1_epi8(15)));
        result = _mm256_or_si256(result, _mm256_and_si256(isHere, here));
    }
    return result;
}
WORD I permuted(I index, I v) { return whole(permuted(low(index), v), permuted(high(index), v)); }

// The places of bytes, from those of elements. Bit 6 tells two vectors apart.
template <class T>
WORD I places(I index) {
    auto bytes = Array<uint8_t, 64>{};
    const auto elements = of512::elements<T>(index);
    for (int i = 0; i < 64; ++i) bytes.of[i] = uint8_t(elements.of[i / int(sizeof(T))] * sizeof(T) + i % sizeof(T));
    return vector<I>(bytes);
}
WORD I permuted2(I a, I index, I b) {
    const auto half = [&](__m256i i) {
        return _mm256_blendv_epi8(permuted(i, a), permuted(i, b),
                                  _mm256_slli_epi16(_mm256_and_si256(i, _mm256_set1_epi8(64)), 1));
    };
    return whole(half(low(index)), half(high(index)));
}

// f of every element.
template <class R, class To, class T, class V, class Function>
WORD R mapped(V v, Function f) {
    const auto from = elements<T>(v);
    Array<To, sizeof(R) / sizeof(To)> to{};
    for (int i = 0; i < to.size() && i < from.size(); ++i) to.of[i] = f(from.of[i]);
    return vector<R>(to);
}
template <class T, class V, class Function>
WORD V mapped2(V v, V w, Function f) {
    auto a = elements<T>(v);
    const auto b = elements<T>(w);
    for (int i = 0; i < a.size(); ++i) a.of[i] = f(a.of[i], b.of[i]);
    return vector<V>(a);
}

template <class To, class From>
WORD To saturated(From v, To lowest, To highest) {
    return v < From(lowest) && From(lowest) < 0 ? lowest : v > From(highest) ? highest : To(v);
}

// Only bytes of chosen elements are touched.
template <class T, class V>
WORD V loaded(V source, uint64_t k, const void* p) {
    auto to = elements<T>(source);
    for (int i = 0; i < to.size(); ++i)
        if (k >> i & 1) __builtin_memcpy(&to.of[i], static_cast<const char*>(p) + i * sizeof(T), sizeof(T));
    return vector<V>(to);
}
template <class T, class V>
WORD void stored(void* p, uint64_t k, V v) {
    const auto from = elements<T>(v);
    for (int i = 0; i < from.size(); ++i)
        if (k >> i & 1) __builtin_memcpy(static_cast<char*>(p) + i * sizeof(T), &from.of[i], sizeof(T));
}
template <class T, class V>
WORD V compressed(V source, uint64_t k, V v) {
    auto to = elements<T>(source);
    const auto from = elements<T>(v);
    int n = 0;
    for (int i = 0; i < from.size(); ++i)
        if (k >> i & 1) to.of[n++] = from.of[i];
    return vector<V>(to);
}
template <class T, class V>
WORD V expanded(V source, uint64_t k, V v) {
    auto to = elements<T>(source);
    const auto from = elements<T>(v);
    int n = 0;
    for (int i = 0; i < to.size(); ++i)
        if (k >> i & 1) to.of[i] = from.of[n++];
    return vector<V>(to);
}
template <class T, class V, class Index>
WORD V gathered(V source, uint64_t k, Index index, const void* p, int scale) {
    auto to = elements<T>(source);
    for (int i = 0; i < to.size(); ++i)
        if (k >> i & 1) __builtin_memcpy(&to.of[i], static_cast<const char*>(p) + int64_t(index.of[i]) * scale, sizeof(T));
    return vector<V>(to);
}

}  // namespace of512

}  // namespace zel::ZEL_LEVEL
