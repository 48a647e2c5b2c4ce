// The level of the kernels under measurement, to which peers are held, too: a figure of a level is one for processors that have
// it and no more.
#pragma once

#include <cstdlib>
#include <string>

#include "frame/levels.h"

namespace bench {

// The environment variable ZELCC_BENCH_LEVEL names it, or the column of the small in-order cores, as frame/levels.h does. Without
// it, the highest that the processor has. Throws when the name is none of these or the processor lacks the level.
std::string selectedLevel();

// Null without the variable.
inline const char* wantedLevel() { return std::getenv("ZELCC_BENCH_LEVEL"); }

// Of what a peer takes, such as its own flags for instruction sets, that for the wanted level: up to SSSE3, up to AVX2 and what
// its processors have besides, or everything that it finds. Inline, for a peer in a library of its own asks it as well.
template <class Value>
Value byLevel(Value ssse3, Value avx2, Value everything) {
    const zel::Level* const level = wantedLevel() ? zel::findLevel(wantedLevel()) : nullptr;
    if (!level || level->features & zelCpuAvx512) return everything;
    return level->features & zelCpuAvx2 ? avx2 : ssse3;
}

std::string processorName();

}  // namespace bench
