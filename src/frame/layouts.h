// Pixel layouts on the streams of a row: where a kernel's blocks come from and go to.
#pragma once

#include "frame/conversion.h"
#include "simd/pixels.h"

namespace zel::ZEL_LEVEL {

// Packed pixels in one stream.
template <class Pixels>
struct FromPacked {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int stream = 0) {
        return Pixels::load(row.in[stream] + block * blockPixels * Pixels::bytes);
    }
};

struct FromPlanes {
    ZEL_INLINE static Triple load(const Row& row, size_t block, int stream = 0) {
        const auto plane = [&](int i) { return loadBytes(row.in[stream + i] + block * blockPixels); };
        return {plane(0), plane(1), plane(2)};
    }
};

struct ToPacked3 {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Triple t) {
        Interleaved3::store<order>(row.out[stream] + block * blockPixels * 3, t);
    }
};

// The fourth byte of every pixel is the caller's alpha.
struct ToPacked4 {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Triple t) {
        Interleaved4::store<order>(row.out[stream] + block * blockPixels * 4, t, splatByte(uint8_t(row.alpha.bits)));
    }
};

struct ToPlanes {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int stream, size_t block, Triple t) {
        const auto put = [&](int i, Bytes v) {
            storeVector(row.out[stream + i] + block * blockPixels,
                        order == Order::natural ? v : shuffle(v, everyLane(quads::natural)));
        };
        put(0, t.a);
        put(1, t.b);
        put(2, t.c);
    }
};

}  // namespace zel::ZEL_LEVEL
