// The rounding modes that a caller's thread may be in.
#pragma once

#include <gtest/gtest.h>

#include <cfenv>
#include <string>

namespace zel::ZEL_LEVEL {

#ifdef FE_UPWARD
constexpr int modes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};
#else
constexpr int modes[] = {FE_TONEAREST};
#endif

template <class F>
void inAllModes(F f) {
    for (int mode : modes) {
        SCOPED_TRACE("rounding mode " + std::to_string(mode));
        std::fesetround(mode);
        f();
        std::fesetround(FE_TONEAREST);
    }
}

// Operations at run time, which the mode counts for, each by itself.
inline double now(double x) {
    volatile double v = x;
    return v;
}
inline float toFloat(double x) { return float(now(x)); }

}  // namespace zel::ZEL_LEVEL
