#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

constexpr int floatTablePlaces = 128;

struct FloatTables {
    alignas(64) float of[floatTablePlaces][2];
    constexpr float& at(int function, int place) { return of[place][function]; }
};

struct FloatPair {
    Floats first, second;
};

ZEL_INLINE FloatPair lookUp(const FloatTables& tables, Dwords places) {
    const auto row = [&](int i) ZEL_INLINE_LAMBDA { return vld1_f32(tables.of[places[i]]); };
    const float32x4_t low = vcombine_f32(row(0), row(1)), high = vcombine_f32(row(2), row(3));
    return {(Floats)vuzp1q_f32(low, high), (Floats)vuzp2q_f32(low, high)};
}

}  // namespace zel::ZEL_LEVEL
