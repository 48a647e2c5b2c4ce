// Interleaved bytes by loads and stores of structures.
#pragma once

#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

namespace arm {

template <Order order>
ZEL_INLINE uint8x16_t sorted(Bytes v) {
    if constexpr (order == Order::natural) return u8(v);
    return vzip1q_u8(u8(v), vextq_u8(u8(v), u8(v), 8));
}

}  // namespace arm

struct Interleaved3 {
    static constexpr int bytes = 3;

    ZEL_INLINE static Triple load(const uint8_t* p) {
        const uint8x16x3_t v = vld3q_u8(p);
        return {(Bytes)v.val[0], (Bytes)v.val[1], (Bytes)v.val[2]};
    }
    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t) {
        using arm::sorted;
        vst3q_u8(p, (uint8x16x3_t{{sorted<order>(t.a), sorted<order>(t.b), sorted<order>(t.c)}}));
    }
};

struct Interleaved4 {
    static constexpr int bytes = 4;
    static constexpr bool wantsDealt = false;

    ZEL_INLINE static Triple load(const uint8_t* p) {
        const Quad q = loadFour(p);
        return {q.a, q.b, q.c};
    }
    ZEL_INLINE static Quad loadFour(const uint8_t* p) {
        const uint8x16x4_t v = vld4q_u8(p);
        return {(Bytes)v.val[0], (Bytes)v.val[1], (Bytes)v.val[2], (Bytes)v.val[3]};
    }
    template <Order order>
    ZEL_INLINE static void store(Destination p, Triple t, Bytes alpha) {
        using arm::sorted;
        vst4q_u8(p, (uint8x16x4_t{{sorted<order>(t.a), sorted<order>(t.b), sorted<order>(t.c), arm::u8(alpha)}}));
    }
    template <Order order>
    ZEL_INLINE static void storeDealt(Destination p, Triple t, Bytes alpha) {
        store<order>(p, t, alpha);
    }
    template <Order order>
    ZEL_INLINE static void storeColours(uint8_t* p, Triple t) {
        store<order>(p, t, (Bytes)vld4q_u8(p).val[3]);
    }
};

constexpr Order wordOrder(Order order) { return order; }

template <Order order>
ZEL_INLINE PixelWords joinBytes(Bytes low, Bytes high) {
    return {(Words)interleaveLow(low, high), (Words)interleaveHigh(low, high)};
}
template <Order order>
ZEL_INLINE void storePixelWords(Destination p, PixelWords w) {
    if constexpr (order == Order::split) {
        vst2q_u16(reinterpret_cast<uint16_t*>(static_cast<uint8_t*>(p)), (uint16x8x2_t{{arm::u16(w.low), arm::u16(w.high)}}));
    } else {
        storeVector(p, w.low);
        storeVector(p + vectorBytes, w.high);
    }
}

}  // namespace zel::ZEL_LEVEL
