// A conversion that is called and timed, and what its result lacks.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <string>

#include "picture.h"

// Differences of all samples from the original's.
struct SampleError {
    double mean = 0;
    int largest = 0;
};

// Over the size of the decoded picture, which may lack the original's last row and column.
SampleError difference(const Picture& original, const Picture& decoded);

struct Conversion {
    std::string name;
    ZelStatus status = zelStsNoErr;
    double megapixelsPerSecond = 0;
    std::optional<SampleError> error;  // only where the result is a picture again
};

// The fastest call of a tenth of a second, after one that brings the memory in.
template <class Call>
Conversion timed(const char* name, ZelSize size, Call call) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    Conversion conversion{name, call(), 0, std::nullopt};
    if (conversion.status < 0) return conversion;

    Seconds best(std::numeric_limits<double>::max());
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(100);
    for (Clock::time_point start = Clock::now(); start < end;) {
        call();
        const Clock::time_point now = Clock::now();
        best = std::min<Seconds>(best, now - start);
        start = now;
    }
    const double pixels = double(size.width) * double(size.height);
    conversion.megapixelsPerSecond = pixels / std::max(best.count(), 1e-9) * 1e-6;
    return conversion;
}
