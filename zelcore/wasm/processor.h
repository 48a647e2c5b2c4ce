// The machine tells nothing of itself: whoever loads the module has made sure that it has vectors.
#pragma once

#include <cstdint>

#include "zelcore.h"

namespace {

uint64_t processorFeatures() { return 0; }

// No store bypasses the caches, so nothing depends on their size.
[[maybe_unused]] int64_t largestCache() { return 0; }

}  // namespace
