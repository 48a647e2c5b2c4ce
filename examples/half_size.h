// A picture at half its size, averaged as it is stored and averaged in linear light, where fine bright detail keeps its light.
#pragma once

#include "study.h"

struct HalfSize : Study {
    SampleError difference;  // of the two results
};

HalfSize halfSize(const Picture& original);
