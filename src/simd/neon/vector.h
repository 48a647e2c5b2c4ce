// Vectors of one lane of 16 bytes, by Advanced SIMD.
#pragma once

#include <arm_neon.h>

#include <cstddef>
#include <cstdint>

#include "simd/level.h"

namespace zel::ZEL_LEVEL {

constexpr int lanes = 1;
constexpr int laneBytes = 16;
constexpr int vectorBytes = lanes * laneBytes;

typedef uint8_t Bytes __attribute__((vector_size(vectorBytes)));
typedef int16_t Words __attribute__((vector_size(vectorBytes)));
typedef uint16_t UWords __attribute__((vector_size(vectorBytes)));
typedef int32_t Dwords __attribute__((vector_size(vectorBytes)));
typedef uint32_t UDwords __attribute__((vector_size(vectorBytes)));
typedef uint64_t UQwords __attribute__((vector_size(vectorBytes)));

// The compiler's own names of the same vectors.
namespace arm {

ZEL_INLINE uint8x16_t u8(auto v) { return (uint8x16_t)v; }
ZEL_INLINE int8x16_t s8(auto v) { return (int8x16_t)v; }
ZEL_INLINE uint16x8_t u16(auto v) { return (uint16x8_t)v; }
ZEL_INLINE int16x8_t s16(auto v) { return (int16x8_t)v; }
ZEL_INLINE uint32x4_t u32(auto v) { return (uint32x4_t)v; }
ZEL_INLINE int32x4_t s32(auto v) { return (int32x4_t)v; }
ZEL_INLINE uint64x2_t u64(auto v) { return (uint64x2_t)v; }

}  // namespace arm

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)vld1q_u8(static_cast<const uint8_t*>(p)); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    vst1q_u8(static_cast<uint8_t*>(p), arm::u8(v));
}
ZEL_INLINE Bytes everyLane(const void* p) { return loadBytes(p); }

ZEL_INLINE Bytes splatByte(uint8_t x) { return (Bytes)vdupq_n_u8(x); }
ZEL_INLINE Words splatWord(int x) { return (Words)vdupq_n_s16(int16_t(x)); }
ZEL_INLINE Dwords splatDword(int32_t x) { return (Dwords)vdupq_n_s32(x); }
ZEL_INLINE Words splatWords(int even, int odd) {
    return (Words)splatDword(int32_t(uint32_t(uint16_t(even)) | uint32_t(odd) << 16));
}
ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd) {
    return (Dwords)vdupq_n_u64(uint64_t(uint32_t(even)) | uint64_t(uint32_t(odd)) << 32);
}

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

template <class V>
ZEL_INLINE V computed(V v) {
    asm("" : "+w"(v));
    return v;
}

template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    return loadBytes(at(0));
}
ZEL_INLINE Bytes loadLanes(const uint8_t* p, ptrdiff_t) { return loadBytes(p); }

constexpr size_t lineBytes = 64;
enum class Use { read, written };
template <Use use>
ZEL_INLINE void prefetch(const uint8_t* p, size_t bytes) {
    for (size_t i = 0; i < bytes + lineBytes - 1; i += lineBytes) __builtin_prefetch(p + i, use == Use::written);
}

// No store bypasses the caches.
class Destination {
  public:
    ZEL_INLINE Destination(uint8_t* p, bool = false) : p_(p) {}
    ZEL_INLINE operator uint8_t*() const { return p_; }
    ZEL_INLINE bool bypassing() const { return false; }
    template <class Number>
    ZEL_INLINE friend Destination operator+(Destination d, Number bytes) {
        return {d.p_ + bytes};
    }

  private:
    uint8_t* p_;
};
ZEL_INLINE bool isMultiple(const uint8_t* p, size_t bytes) { return reinterpret_cast<uintptr_t>(p) % bytes == 0; }
template <class V>
ZEL_INLINE void storeVector(Destination p, V v) {
    storeVector(static_cast<void*>(static_cast<uint8_t*>(p)), v);
}
ZEL_INLINE void storeLanes(Destination p, ptrdiff_t, Bytes v) { storeVector(p, v); }
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) { storeVector(static_cast<void*>(p), v); }
ZEL_INLINE void storeFence() {}

ZEL_INLINE Words loadWidened(const uint8_t* p) { return (Words)vmovl_u8(vld1_u8(p)); }

// A rounded or saturated doubling product differs for the lowest number squared, so the whole products are halved.
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
ZEL_INLINE Words mulRound(Words a, Words b) { return (Words)vqrdmulhq_s16(arm::s16(a), arm::s16(b)); }
ZEL_INLINE Dwords mulAddPairs(Words a, Words b) {
    using namespace arm;
    const int32x4_t low = vmull_s16(vget_low_s16(s16(a)), vget_low_s16(s16(b))), high = vmull_high_s16(s16(a), s16(b));
    return (Dwords)vpaddq_s32(low, high);
}
ZEL_INLINE Words mulAddPairs(Bytes a, Bytes b) {
    using namespace arm;
    const Words even = (Words)((UWords)a & 0xff) * ((Words)((UWords)b << 8) >> 8),
                odd = (Words)((UWords)a >> 8) * ((Words)b >> 8);
    return (Words)vqaddq_s16(s16(even), s16(odd));
}
ZEL_INLINE Bytes packBytes(Words a, Words b) { return (Bytes)vqmovun_high_s16(vqmovun_s16(arm::s16(a)), arm::s16(b)); }
ZEL_INLINE Bytes packSignedBytes(Words a, Words b) { return (Bytes)vqmovn_high_s16(vqmovn_s16(arm::s16(a)), arm::s16(b)); }
ZEL_INLINE Words packWords(Dwords a, Dwords b) { return (Words)vqmovn_high_s32(vqmovn_s32(arm::s32(a)), arm::s32(b)); }

ZEL_INLINE Bytes greater(Bytes a, Bytes b) { return (Bytes)vmaxq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Bytes lesser(Bytes a, Bytes b) { return (Bytes)vminq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Words absolute(Words v) { return (Words)vabsq_s16(arm::s16(v)); }
ZEL_INLINE Dwords absolute(Dwords v) { return (Dwords)vabsq_s32(arm::s32(v)); }
ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b) { return (Bytes)vqaddq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords addSaturated(UWords a, UWords b) { return (UWords)vqaddq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes subtractSigned(Bytes a, Bytes b) { return (Bytes)vqsubq_s8(arm::s8(a), arm::s8(b)); }
ZEL_INLINE Words subtractSigned(Words a, Words b) { return (Words)vqsubq_s16(arm::s16(a), arm::s16(b)); }
ZEL_INLINE Bytes atMost(Bytes v, Bytes limit) { return lesser(v, limit); }
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit) { return greater(v, limit); }
ZEL_INLINE Words atMost(Words v, Words limit) { return (Words)vminq_s16(arm::s16(v), arm::s16(limit)); }
ZEL_INLINE Words atLeast(Words v, Words limit) { return (Words)vmaxq_s16(arm::s16(v), arm::s16(limit)); }
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b) { return (Bytes)vqsubq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b) { return (UWords)vqsubq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes mean(Bytes a, Bytes b) { return (Bytes)vrhaddq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords mean(UWords a, UWords b) { return (UWords)vrhaddq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE UWords meanBelow(UWords a, UWords b) { return (UWords)vhaddq_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes distance(Bytes a, Bytes b) { return (Bytes)vabdq_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE UWords distance(UWords a, UWords b) { return (UWords)vabdq_u16(arm::u16(a), arm::u16(b)); }

ZEL_INLINE Words evenThenOdd(Words a, Words b) { return (Words)vbslq_u16(arm::u16(splatWords(-1, 0)), arm::u16(a), arm::u16(b)); }

ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b) { return (Bytes)vzip1q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b) { return (Bytes)vzip2q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Words interleaveLow(Words a, Words b) { return (Words)vzip1q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Words interleaveHigh(Words a, Words b) { return (Words)vzip2q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b) { return (Dwords)vzip1q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b) { return (Dwords)vzip2q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b) { return (Bytes)vzip1q_u64(arm::u64(a), arm::u64(b)); }
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b) { return (Bytes)vzip2q_u64(arm::u64(a), arm::u64(b)); }

ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b) { return (Dwords)vuzp1q_u32(arm::u32(a), arm::u32(b)); }
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b) { return (Dwords)vuzp2q_u32(arm::u32(a), arm::u32(b)); }

ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern) { return (Bytes)vqtbl1q_u8(arm::u8(a), arm::u8(pattern)); }

ZEL_INLINE Words evenBytes(Bytes a) { return (Words)((UWords)a & 0x00ff); }
ZEL_INLINE Words oddBytes(Bytes a) { return (Words)((UWords)a >> 8); }
ZEL_INLINE Words lowBytes(Bytes a) { return (Words)vmovl_u8(vget_low_u8(arm::u8(a))); }
ZEL_INLINE Words highBytes(Bytes a) { return (Words)vmovl_high_u8(arm::u8(a)); }
ZEL_INLINE Dwords lowWords(Words v) { return (Dwords)vmovl_s16(vget_low_s16(arm::s16(v))); }
ZEL_INLINE Dwords highWords(Words v) { return (Dwords)vmovl_high_s16(arm::s16(v)); }

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) { return v; }
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) { return packed; }
ZEL_INLINE Bytes spreadHalves(Bytes v) { return v; }

ZEL_INLINE Words evenWords(Dwords a, Dwords b) { return (Words)vuzp1q_u16(arm::u16(a), arm::u16(b)); }
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b) { return (Bytes)vuzp1q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b) { return (Bytes)vuzp2q_u8(arm::u8(a), arm::u8(b)); }

ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    vst1_u8(low, vget_low_u8(arm::u8(v)));
    vst1_u8(high, vget_high_u8(arm::u8(v)));
}
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) { vst1_u8(p, vget_low_u8(arm::u8(v))); }
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
    const uint32_t dwords[2] = {((UDwords)v)[0], ((UDwords)v)[2]};
    __builtin_memcpy(first, &dwords[0], 4);
    __builtin_memcpy(second, &dwords[1], 4);
}
ZEL_INLINE Bytes loadQuarter(const uint8_t* p) {
    uint32_t bytes;
    __builtin_memcpy(&bytes, p, 4);
    return (Bytes)vsetq_lane_u32(bytes, vdupq_n_u32(0), 0);
}
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
    return (UDwords)vmovl_u16(vget_low_u16(arm::u16(lowBytes(loadQuarter(p)))));
}
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) { return (UDwords)vmovl_u16((uint16x4_t)vld1_u8(p)); }
ZEL_INLINE Bytes loadQuadrupled(const uint8_t* p) {
    const Bytes fourTimes = {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3};
    return shuffle(loadQuarter(p), fourTimes);
}

struct PackOrder {
    Bytes first, second;
};
ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p) { return {loadBytes(p), loadBytes(p + 16)}; }

struct Parted {
    Bytes even, odd;
};
template <bool deals = false>
ZEL_INLINE Parted loadParted(const uint8_t* p) {
    const uint8x16x2_t v = vld2q_u8(p);
    return {(Bytes)v.val[0], (Bytes)v.val[1]};
}
ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b) { vst2q_u8(p, (uint8x16x2_t{{arm::u8(a), arm::u8(b)}})); }

ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
    const auto at = [&](int i) ZEL_INLINE_LAMBDA {
        int32_t found;
        __builtin_memcpy(&found, static_cast<const uint8_t*>(table) + 4 * ptrdiff_t{places[i]}, 4);
        return found;
    };
    return Dwords{at(0), at(1), at(2), at(3)};
}

ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) { return (Dwords)vextq_u32(arm::u32(before), arm::u32(v), 3); }
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
    const uint16x4_t words = vmovn_u32(arm::u32(v));
    const uint32_t bytes = vget_lane_u32((uint32x2_t)vmovn_u16(vcombine_u16(words, words)), 0);
    __builtin_memcpy(p, &bytes, 4);
}
ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v) { vst1_u8(p, (uint8x8_t)vmovn_u32(arm::u32(v))); }

ZEL_INLINE unsigned signBits(Dwords v) { return vaddvq_u32(arm::u32((UDwords)(v >> 31) & UDwords{1, 2, 4, 8})); }
ZEL_INLINE uint64_t signBits(Bytes v) {
    // A bit of every byte of both halves, then sums of all eight.
    const uint8x16_t bits = vandq_u8((uint8x16_t)vshrq_n_s8(arm::s8(v), 7), (uint8x16_t)vdupq_n_u64(0x8040201008040201));
    const uint8x16_t pairs = vpaddq_u8(bits, bits), quads = vpaddq_u8(pairs, pairs);
    return vgetq_lane_u16((uint16x8_t)vpaddq_u8(quads, quads), 0);
}

}  // namespace zel::ZEL_LEVEL
