// A picture in gray, by luma and through a red filter, and under two matrices: more saturated, and in sepia.
#pragma once

#include "study.h"

Study recoloured(const Picture& original);
