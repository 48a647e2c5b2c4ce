// A picture at few levels, by every method of dithering, without noise and with it.
#pragma once

#include "study.h"

Study dithers(const Picture& original);
