// A picture at few levels, by every method of dithering, without noise and with it. Then all methods enlarged beside the
// original, where cutting to the nearest level changes most.
#pragma once

#include "study.h"

Study dithers(const Picture& original);
