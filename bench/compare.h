// Measurement by comparison: export, copy and peers take turns in short slices, so that whatever else the machine does meets
// all of them alike, and the figures that matter are ratios.
#pragma once

#include <string>

#include "workload.h"

namespace bench {

struct Effort {
    int rounds = 15;                  // slices a contender
    double sliceSeconds = 0.008;      // a slice is at least one call
    std::vector<std::string> others;  // builds of the library that take part
    bool best = false;                // the fastest slices count, not the median ones
};

struct Figure {
    std::string name;
    double seconds;  // a call, the median over the slices
    double ratio;    // how many times as long as the export it takes, the median over the rounds
};

struct Comparison {
    std::string name;
    std::string taskName;  // of the first of its twins
    Size size;
    double bytes;
    Figure self;
    Figure copy, streamedCopy;
    std::vector<Figure> others;
    std::vector<Figure> peers;  // the fastest first
};

Comparison compare(const Export& row, Size size, const Effort& effort);

// One line of the text table, and its head.
std::string tableHead();
std::string tableLine(const Comparison& comparison);

// All comparisons of a run, with the machine, as a JSON document.
std::string toJson(const std::vector<Comparison>& comparisons);

}  // namespace bench
