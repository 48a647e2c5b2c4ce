// Two functions of 128 places, as tables of floats.
#pragma once

#include "simd/floats.h"

namespace zel::ZEL_LEVEL {

constexpr int floatTablePlaces = 128;

struct FloatPair {
    Floats first, second;
};

// Both functions of each place, 0 to 127. A FloatTables has them by at(function, place), to be filled by a constexpr function.
struct FloatTables;
ZEL_INLINE FloatPair lookUp(const FloatTables& tables, Dwords places);

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_FLOAT_TABLE
#include ZEL_OWN_FLOAT_TABLE
#else

namespace zel::ZEL_LEVEL {

// The two side by side, for loads of both.
struct FloatTables {
    alignas(64) float of[floatTablePlaces][2];
    constexpr float& at(int function, int place) { return of[place][function]; }
};

// Places are 0 to 127.
ZEL_INLINE FloatPair lookUp(const FloatTables& tables, Dwords places) {
    // Rows 0 and 1, and rows 2 and 3 of a lane's four.
    const auto rows = [&](int first) ZEL_INLINE_LAMBDA {
        return (Dwords)loadQwordsAt([&](int i) ZEL_INLINE_LAMBDA { return tables.of[places[i / 2 * 4 + i % 2 + first]]; });
    };
    const Dwords low = rows(0), high = rows(2);
    return {(Floats)evenDwords(low, high), (Floats)oddDwords(low, high)};
}

}  // namespace zel::ZEL_LEVEL

#endif
