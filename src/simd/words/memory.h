// Words for whole vectors and lanes in memory, at any address unless it is said otherwise.
#pragma once

#include "simd/words/types.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes loadBytes(const void* p);

template <class V>
ZEL_INLINE void storeVector(void* p, V v);

// The same 16 bytes in every lane.
ZEL_INLINE Bytes everyLane(const void* p);

// Lane l from the 16 bytes at at(l).
template <class At>
ZEL_INLINE Bytes loadLanesAt(const At& at);

// At p + l * stride.
ZEL_INLINE Bytes loadLanes(const uint8_t* p, ptrdiff_t stride);

// The value, computed here: compilers like to put sums off until they are used, and keep all that they are made of until then.
template <class V>
ZEL_INLINE V computed(V v);

// The size of a line of the caches.
constexpr size_t lineBytes = 64;

// Asks for bytes that are needed some time later, where the processor can't foresee it. They need not exist.
enum class Use { read, written };
template <Use use>
ZEL_INLINE void prefetch(const uint8_t* p, size_t bytes) {
    for (size_t i = 0; i < bytes + lineBytes - 1; i += lineBytes) __builtin_prefetch(p + i, use == Use::written);
}

// Moves bytes to where none of them come from, by the one operation that the processor has for it. It takes some time to begin.
ZEL_INLINE void moveAtOnce(uint8_t* to, const uint8_t* from, size_t bytes);

}  // namespace zel::ZEL_LEVEL

namespace zel::ZEL_FRAME {

// Where vectors go, and whether they bypass the caches there. Only whole lines gain by that, so halves of vectors never do. A
// level that has no such stores takes plain ones.
class Destination {
  public:
    ZEL_INLINE Destination(uint8_t* p, bool bypassing = false) : p_(p), bypassing_(bypassing) {}
    ZEL_INLINE operator uint8_t*() const { return p_; }
    ZEL_INLINE bool bypassing() const { return __builtin_expect(bypassing_, false); }

    template <class Number>
    ZEL_INLINE friend Destination operator+(Destination d, Number bytes) {
        return {d.p_ + bytes, d.bypassing_};
    }

  private:
    uint8_t* p_;
    bool bypassing_;
};

}  // namespace zel::ZEL_FRAME

namespace zel::ZEL_LEVEL {

ZEL_INLINE bool isMultiple(const uint8_t* p, size_t bytes) { return reinterpret_cast<uintptr_t>(p) % bytes == 0; }

// Lane l to the 16 bytes at p + l * stride, in the order of the lanes.
ZEL_INLINE void storeLanes(Destination p, ptrdiff_t stride, Bytes v);

// Bypasses the caches, to a multiple of the vector.
ZEL_INLINE void streamVector(uint8_t* p, Bytes v);

// Stores that bypassed the caches come before all that follow.
ZEL_INLINE void storeFence();

template <class V>
ZEL_INLINE void storeVector(Destination p, V v) {
    if (p.bypassing() && isMultiple(p, vectorBytes))
        streamVector(p, (Bytes)v);
    else
        storeVector(static_cast<void*>(static_cast<uint8_t*>(p)), v);
}

// Vectors that follow each other.
template <class... V>
ZEL_INLINE void storeVectors(Destination p, V... v) {
    int i = 0;
    (storeVector(p + vectorBytes * i++, v), ...);
}

}  // namespace zel::ZEL_LEVEL
