// Several calls one after the other: how much it matters whether each goes over whole frames, or all of them over strips that
// stay in the caches.
#pragma once

#include <span>

#include "compare.h"

namespace bench {

// Measures at each size, and prints a table. Other builds of the library take part.
void runPipelines(std::span<const Size> sizes, const Effort& effort);

}  // namespace bench
