// Prints what conversions of a picture came to.
#pragma once

#include <vector>

#include "measured_call.h"

void printTable(const std::vector<Conversion>& conversions);
