#include "measured_call.h"

#include <cstdlib>

SampleError difference(const Picture& original, const Picture& decoded) {
    SampleError error;
    double sum = 0;
    for (int32_t y = 0; y < decoded.size.height; ++y) {
        const uint8_t* const a = original.pixels.data() + std::size_t(y) * std::size_t(original.step());
        const uint8_t* const b = decoded.pixels.data() + std::size_t(y) * std::size_t(decoded.step());
        for (int32_t x = 0; x < decoded.step(); ++x) {
            const int distance = std::abs(a[x] - b[x]);
            sum += distance;
            error.largest = std::max(error.largest, distance);
        }
    }
    error.mean = sum / double(decoded.pixels.size());
    return error;
}
