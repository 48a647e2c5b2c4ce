// What colour spaces are good for: the lightness of a picture raised in Lab and in HLS, its hue turned in HSV, and its chroma in
// LUV, which is seen as a map.
#pragma once

#include "study.h"

Study colourSpaces(const Picture& original);
