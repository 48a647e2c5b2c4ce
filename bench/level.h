// The level of the kernels under measurement.
#pragma once

#include <string>

namespace bench {

// The environment variable ZELCC_BENCH_LEVEL names it, or the column of the small in-order cores, as frame/levels.h does. Without
// it, the highest that the processor has. Throws when the name is none of these or the processor lacks the level.
std::string selectedLevel();

std::string processorName();

}  // namespace bench
