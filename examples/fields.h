// An interlaced frame in 4:2:0 and back in 4:2:2, by conversions that keep its fields apart and by ones that take it for a
// picture of one moment.
#pragma once

#include <vector>

#include "measured_call.h"
#include "picture.h"

// A frame of two moments: the scene has moved sideways by the time the odd rows are taken. Whole chroma sites of both fields.
Picture interlaced(const Picture& scene, int32_t movement);

struct FieldComparison {
    std::vector<Conversion> conversions;  // there and back, field-blind and then field-aware; errors are those of 4:2:0 alone
    Picture sideBySide;                   // the field-blind result and the field-aware one; empty when a conversion failed
    Picture detail;                       // of both, enlarged, where they differ most
};

FieldComparison compareFields(const Picture& frame);
