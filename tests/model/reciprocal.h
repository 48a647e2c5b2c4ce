// What the library takes 1 / x for where it need not be exact. Of all that the models compute this alone is the processor's.
#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace model {

inline float approximateReciprocal(float x) {
#if defined(__SSE__)
    return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(x)));
#else
    return 1 / x;
#endif
}

// One step of Newton's.
inline float refinedReciprocal(float x) {
    const float r = approximateReciprocal(x);
    return 2 * r - (x * r) * r;
}

}  // namespace model
