// Two results of the same picture in one, so that the eye can compare them.
#pragma once

#include "picture.h"

// One beside the other, with a gap of black. They have the same height.
Picture beside(const Picture& left, const Picture& right);

// One above the other, with the same gap. They have the same width.
Picture above(const Picture& upper, const Picture& lower);

// Mid-gray where two pictures of the same size agree, brighter where the right one is and darker where the left one is, by ten
// times the difference.
Picture amplifiedDifference(const Picture& left, const Picture& right);

// The region in which the first two of some pictures of the same size differ most, of all of them and enlarged.
Picture detailBeside(const std::vector<const Picture*>& pictures);
inline Picture detailBeside(const Picture& left, const Picture& right) { return detailBeside({&left, &right}); }

// The region in which `coarse`, a picture of few colours, has the most bands where the original is smooth: of it and of another
// picture, enlarged.
Picture bandsBeside(const Picture& original, const Picture& coarse, const Picture& other);
