// Loads and stores, and what moves elements between places of a vector and memory. No store bypasses the caches.
#pragma once

#include "simd/neon/registers.h"
#include "simd/words/crossing.h"
#include "simd/words/integers.h"
#include "simd/words/memory.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)vld1q_u8(static_cast<const uint8_t*>(p)); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    vst1q_u8(static_cast<uint8_t*>(p), arm::u8(v));
}
ZEL_INLINE Bytes everyLane(const void* p) { return loadBytes(p); }
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at) {
    return loadBytes(at(0));
}
ZEL_INLINE Bytes loadLanes(const uint8_t* p, ptrdiff_t) { return loadBytes(p); }
ZEL_INLINE void storeLanes(Destination p, ptrdiff_t, Bytes v) { storeVector(static_cast<void*>(static_cast<uint8_t*>(p)), v); }
ZEL_INLINE void streamVector(uint8_t* p, Bytes v) { storeVector(static_cast<void*>(p), v); }
ZEL_INLINE void moveAtOnce(uint8_t* to, const uint8_t* from, size_t bytes) { __builtin_memcpy(to, from, bytes); }

ZEL_INLINE void storeFence() {}

template <class V>
ZEL_INLINE V computed(V v) {
    asm("" : "+w"(v));
    return v;
}

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) { return v; }
ZEL_INLINE Bytes spreadHalves(Bytes v) { return v; }
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) { return packed; }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b) {
    return joinQwords<ofA, ofB>(a, b);
}
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) { return (Dwords)vextq_u32(arm::u32(before), arm::u32(v), 3); }
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b) { return (Bytes)vuzp1q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b) { return (Bytes)vuzp2q_u8(arm::u8(a), arm::u8(b)); }
ZEL_INLINE Words evenWords(Dwords a, Dwords b) { return (Words)vuzp1q_u16(arm::u16(a), arm::u16(b)); }

ZEL_INLINE Words loadWidened(const uint8_t* p) { return (Words)vmovl_u8(vld1_u8(p)); }
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
    uint32_t bytes;
    __builtin_memcpy(&bytes, p, 4);
    return (UDwords)vmovl_u16(vget_low_u16(vmovl_u8(vcreate_u8(bytes))));
}
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) { return (UDwords)vmovl_u16((uint16x4_t)vld1_u8(p)); }

template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at) {
    const float64x2_t even = vld1q_f64(at(0)), odd = vld1q_f64(at(1));
    return {(Doubles)vzip1q_f64(even, odd), (Doubles)vzip2q_f64(even, odd)};
}
ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p) { return {loadBytes(p), loadBytes(p + 16)}; }
template <bool deals>
ZEL_INLINE Parted loadParted(const uint8_t* p) {
    const uint8x16x2_t v = vld2q_u8(p);
    return {(Bytes)v.val[0], (Bytes)v.val[1]};
}
ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b) { vst2q_u8(p, (uint8x16x2_t{{arm::u8(a), arm::u8(b)}})); }

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
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
    const uint16x4_t words = vmovn_u32(arm::u32(v));
    const uint32_t bytes = vget_lane_u32((uint32x2_t)vmovn_u16(vcombine_u16(words, words)), 0);
    __builtin_memcpy(p, &bytes, 4);
}
ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v) { vst1_u8(p, (uint8x8_t)vmovn_u32(arm::u32(v))); }

template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at) {
    const auto qword = [&](int i) ZEL_INLINE_LAMBDA { return vld1_u8(reinterpret_cast<const uint8_t*>(at(i))); };
    return (Bytes)vcombine_u8(qword(0), qword(1));
}
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
    const auto at = [&](int i) ZEL_INLINE_LAMBDA {
        int32_t found;
        __builtin_memcpy(&found, static_cast<const uint8_t*>(table) + 4 * ptrdiff_t{places[i]}, 4);
        return found;
    };
    return Dwords{at(0), at(1), at(2), at(3)};
}

}  // namespace zel::ZEL_LEVEL
