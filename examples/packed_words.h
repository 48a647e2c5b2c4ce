// A picture in words of 16 bits a pixel, formats 565, 555 and 444, the low bits cut off beside dithered: whole, and enlarged
// where cutting off leaves the most bands.
#pragma once

#include "study.h"

Study packedWords(const Picture& original);
