#include "reducebits/noise_tables.h"

namespace zel {
namespace {

// A subtract-with-borrow sequence with lags 2 and 3, to which a linear congruential one is added. It always starts from seed 0.
constexpr void fillSequence(int32_t (&sequence)[noiseNumbers]) {
    constexpr uint32_t factor = 69069, increment = 1013904243, modulusConstant = 18, seed = 0;
    uint32_t congruential = 1131199209, a = seed, b = a * factor + increment, d = b * factor + increment, borrow = uint32_t(-1);
    for (int32_t& number : sequence) {
        const uint32_t t = b - d + borrow;
        const bool isNegative = t >> 31;
        borrow = isNegative ? uint32_t(-1) : 0;
        d = b;
        b = a;
        a = isNegative ? t - modulusConstant : t;
        congruential = congruential * factor + increment;
        number = int32_t(a + congruential);
    }
}

constexpr NoiseTables makeTables() {
    // The same numbers, from 0 to 1023, scramble the places. Meant: the unit is not quite 2^-32, by which
    // the tables would change.
    constexpr double unit = 2.3283064365387e-10, mean = noiseNumbers / 2;
    NoiseTables tables{};
    fillSequence(tables.sequence);
    for (int i = 0; i < noiseNumbers + 16; ++i) {
        const int x = i % noiseNumbers, scrambled = int(double(tables.sequence[x]) * (noiseNumbers * unit) + mean);
        tables.places.ofColumn[i] = uint16_t((scrambled + x) % noiseNumbers);
    }
    for (int i = 0; i < noiseNumbers + 16; ++i) tables.places.ofFour[i] = tables.places.ofColumn[i & ~3];
    return tables;
}

}  // namespace

constinit const NoiseTables noiseTables = makeTables();

}  // namespace zel
