// The noise that dithering may add, as constant data: it is the same in every call, but for its bounds. Compiled once, for all
// levels.
#pragma once

#include <cstdint>

namespace zel {

constexpr int noiseNumbers = 1024;  // a power of two

// A pixel of column x and row y takes the number at (place[x] + 2 y) mod 1024, columns mod 1024. The first places stand once more
// behind the last ones, so that several can be read from any column on.
struct NoisePlaces {
    uint16_t ofColumn[noiseNumbers + 16];
    uint16_t ofFour[noiseNumbers + 16];  // four columns, from a multiple of 4 on, have the place of the first one
};

struct NoiseTables {
    int32_t sequence[noiseNumbers];  // the numbers of the generator, evenly distributed over all integers
    NoisePlaces places;
};
extern const NoiseTables noiseTables;

}  // namespace zel
