// What a level is handed: arguments that have been checked.
#pragma once

#include <cstdint>

#include "plan.h"

namespace zelv {

struct Call {
    const Plan* plan;
    const uint8_t* const* from;
    const int32_t* fromStep;
    uint8_t* const* to;
    const int32_t* toStep;
    int32_t width, height, firstRow, endRow;
    bool bypassing = false;  // stores bypass the caches where rows begin with a line of them
};

using Convert = void (*)(const Call&);

}  // namespace zelv
