// Floating-point numbers as integers: whatever has no 32-bit integer becomes the least one.
#pragma once

#include <cfenv>
#include <cmath>
#include <cstdint>

namespace model {

// Toward zero, whatever the mode.
inline int32_t truncated(double v) { return v > -0x1p31 - 1 && v < 0x1p31 ? static_cast<int32_t>(v) : INT32_MIN; }

// By the current rounding mode.
inline int32_t toInteger(float v) { return v >= -0x1p31f && v < 0x1p31f ? static_cast<int32_t>(std::lrint(v)) : INT32_MIN; }

// Rounds to nearest while it lives.
class NearestRounding {
  public:
    NearestRounding() : previous_(std::fegetround()) { std::fesetround(FE_TONEAREST); }
    NearestRounding(const NearestRounding&) = delete;
    ~NearestRounding() { std::fesetround(previous_); }

  private:
    int previous_;
};

}  // namespace model
