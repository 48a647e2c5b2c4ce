// Words of floats and doubles. What rounds does so by the mode of the thread, unless it is said otherwise.
#pragma once

#include "simd/words/types.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Floats splatFloat(float x);
ZEL_INLINE Doubles splatDouble(double x);

ZEL_INLINE Floats toFloats(Dwords v);

// The result of an operation, rounded by the mode of the thread where the compiler has not been told of it: of a sum or its first
// operand, whichever a condition picks, some make a sum with a zero, and so at times another zero.
ZEL_INLINE Floats byMode(Floats v);

// To the integer, rounded or toward zero. NaN and what no dword can hold, above and below, give the lowest dword.
ZEL_INLINE Dwords rounded(Floats v);
ZEL_INLINE Dwords truncated(Floats v);
ZEL_INLINE int32_t truncated(double x);
// Two vectors' worth of doubles.
ZEL_INLINE Dwords truncated(Doubles low, Doubles high);

// To the integer toward zero, of what a dword can hold; of anything else any number. A zero may lose its sign.
ZEL_INLINE Floats wholePart(Floats v);

// v < limit ? v : limit and v > limit ? v : limit. So NaN on either side gives the limit, and so does a zero of either sign
// compared with another.
ZEL_INLINE Floats atMost(Floats v, Floats limit);
ZEL_INLINE Floats atLeast(Floats v, Floats limit);

// 1 / v to about 12 bits. How the rest is filled differs between vendors, but on one it is the same at every level.
// A processor that has no such approximation takes 1 / v.
ZEL_INLINE Floats approximateReciprocal(Floats v);

// a b + c, rounded once by a level that fuses, as its traits say, and twice by others. So it is for what only has to come near a
// result; what relies on the one rounding asks the traits.
ZEL_INLINE Floats nearMulAdd(Floats a, Floats b, Floats c);

// The float at one place of each lane, at all places of the lane.
template <int place>
ZEL_INLINE Floats everyOf(Floats v);

// The first or the second half of the elements of a vector, as doubles; and two such halves back, rounded.
template <int half>
ZEL_INLINE Doubles widened(Floats v);
template <int half>
ZEL_INLINE Doubles widened(Dwords v);
ZEL_INLINE Floats narrowed(Doubles low, Doubles high);

}  // namespace zel::ZEL_LEVEL
