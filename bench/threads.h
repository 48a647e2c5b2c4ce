// One conversion on several cores: each thread converts a strip of the rows, with a call of its own.
#pragma once

#include <span>

#include "compare.h"

namespace bench {

// Measures each export at each size on one thread and on two, beside a copy of as many bytes, and prints a table.
void runThreads(std::span<const Export> rows, std::span<const Size> sizes, const Effort& effort);

}  // namespace bench
