// Loads and stores, and what moves elements between places of a vector and memory. There are no caches to bypass.
#pragma once

#include "simd/words/crossing.h"
#include "simd/words/integers.h"
#include "simd/words/memory.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes loadBytes(const void* p) { return (Bytes)wasm_v128_load(p); }
template <class V>
ZEL_INLINE void storeVector(void* p, V v) {
    wasm_v128_store(p, (v128_t)v);
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

// What is compiled here is compiled again for the machine, which alone knows its registers.
template <class V>
ZEL_INLINE V computed(V v) {
    return v;
}

ZEL_INLINE Bytes lowThenHighHalves(Bytes v) { return v; }
ZEL_INLINE Bytes spreadHalves(Bytes v) { return v; }
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed) { return packed; }
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b) {
    return joinQwords<ofA, ofB>(a, b);
}
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before) { return __builtin_shufflevector(before, v, 3, 4, 5, 6); }
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
}
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
}

ZEL_INLINE Words loadWidened(const uint8_t* p) { return (Words)wasm_u16x8_load8x8(p); }
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p) {
    return (UDwords)wasm_u32x4_extend_low_u16x8(wasm_u16x8_extend_low_u8x16(wasm_v128_load32_zero(p)));
}
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p) { return (UDwords)wasm_u32x4_load16x4(p); }

template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at) {
    return (Bytes)wasm_v128_load64_lane(at(1), wasm_v128_load64_zero(at(0)), 1);
}
template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at) {
    const v128_t even = wasm_v128_load(at(0)), odd = wasm_v128_load(at(1));
    return {(Doubles)wasm_i64x2_shuffle(even, odd, 0, 2), (Doubles)wasm_i64x2_shuffle(even, odd, 1, 3)};
}
ZEL_INLINE Dwords lookUp(const void* table, Dwords places) {
    const auto at = [&](int i) ZEL_INLINE_LAMBDA { return static_cast<const uint8_t*>(table) + 4 * ptrdiff_t{places[i]}; };
    v128_t found = wasm_v128_load32_zero(at(0));
    found = wasm_v128_load32_lane(at(1), found, 1);
    found = wasm_v128_load32_lane(at(2), found, 2);
    return (Dwords)wasm_v128_load32_lane(at(3), found, 3);
}

ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v) {
    wasm_v128_store64_lane(low, (v128_t)v, 0);
    wasm_v128_store64_lane(high, (v128_t)v, 1);
}
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v) { wasm_v128_store64_lane(p, (v128_t)v, 0); }
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v) {
    wasm_v128_store32_lane(first, (v128_t)v, 0);
    wasm_v128_store32_lane(second, (v128_t)v, 2);
}
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v) {
    const Bytes x = (Bytes)v;
    wasm_v128_store32_lane(p, (v128_t)__builtin_shufflevector(x, x, 0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12, 0, 4, 8, 12), 0);
}

}  // namespace zel::ZEL_LEVEL
