// A picture as a raw sensor sees it, through each grid, and its colours made again by both methods: whole, and where they are
// hardest to make, enlarged beside the original.
#pragma once

#include "study.h"

Study mosaics(const Picture& original);
