// Model of the reduction of bytes to bits, one bit after the other.
#pragma once

#include "zelcc/types.h"

namespace model {

struct BitImage {
    ZelSize size;
    int offset;  // of the first bit
    int threshold;
    int fromStep, toStep;
};

// The first row of the destination begins at the byte that has the first bit.
void reduceToBits(const BitImage& image, bool isDiffused, const uint8_t* from, uint8_t* to);

}  // namespace model
