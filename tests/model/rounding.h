// Floating-point rounding as the processor does it.
#pragma once

#include <emmintrin.h>

#include <cfenv>
#include <cstdint>

namespace model {

// By the current rounding mode; whatever has no 32-bit integer becomes the least one.
inline int32_t toInteger(float v) { return _mm_cvtss_si32(_mm_set_ss(v)); }

// Toward zero, whatever the mode.
inline int32_t truncated(float v) { return _mm_cvttss_si32(_mm_set_ss(v)); }
inline int32_t truncated(double v) { return _mm_cvttsd_si32(_mm_set_sd(v)); }

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
