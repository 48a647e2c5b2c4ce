// The level of the kernels under measurement.
#pragma once

#include <string>

namespace bench {

// The environment variable ZELCC_BENCH_LEVEL names it: ssse3, avx2, avx512, or s8 for the small in-order cores. Without it,
// the highest that the processor has. Throws when the name is none of these or the processor lacks the level.
std::string selectedLevel();

std::string processorName();

}  // namespace bench
