// Prints what the conversions of a picture came to.
#pragma once

#include <vector>

#include "round_trip.h"

void printTable(const std::vector<RoundTrip>& trips);
