// A picture's way from RGB to a luma-chroma layout and back, measured.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame420.h"
#include "measured_call.h"
#include "picture.h"

struct RoundTrip {
    std::string layout;
    std::vector<Conversion> conversions;  // there, and unless that failed, back
    Picture decoded;                      // empty when a conversion failed
    std::optional<Frame420> frame;
};

RoundTrip planar420(const Picture& original);
RoundTrip semiPlanar420(const Picture& original);
RoundTrip packed422(const Picture& original);
