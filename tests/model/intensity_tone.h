// Model of tone mapping: a float image is scaled to bytes by its maximum or by twice its mean.
#pragma once

#include <algorithm>
#include <array>
#include <cfloat>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

inline float luminanceAt(const Conversion& c, int x, int y) { return c.source.load<float>(c.source.layout->channels[0], x, y); }

inline float maximumOf(const Conversion& c) {
    float maximum = -FLT_MAX;
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x)
            if (luminanceAt(c, x, y) > maximum) maximum = luminanceAt(c, x, y);
    return maximum;
}

// A row is added up in double precision, but for the rounds of 16 samples between two 16-byte boundaries, whose samples meet in
// 16 single-precision sums first. A row that can't get to a boundary by whole samples has its rounds from the start.
inline double rowSum(const Conversion& c, int y) {
    const auto start = reinterpret_cast<uintptr_t>(c.source.address(c.source.layout->channels[0], 0, y));
    const int width = c.size.width, toBoundary = static_cast<int>(-start % 16 / 4);
    const int lead = start % 4 != 0 ? 0 : std::min(width, toBoundary), rounds = (width - lead) / 16;
    double sum = 0;
    for (int x = 0; x < lead; ++x) sum += luminanceAt(c, x, y);
    std::array<float, 16> lanes{};
    for (int x = lead; x < lead + 16 * rounds; ++x) lanes[(x - lead) % 16] += luminanceAt(c, x, y);
    for (const float lane : lanes) sum += lane;
    for (int x = lead + 16 * rounds; x < width; ++x) sum += luminanceAt(c, x, y);
    return sum;
}

inline double twiceTheMean(const Conversion& c) {
    double sum = 0;
    for (int y = 0; y < c.size.height; ++y) sum += rowSum(c, y);
    const double mean = sum / (double(c.size.width) * double(c.size.height));
    return mean + mean;
}

template <class Statistic>
ZelStatus warningBelowZero(Statistic statistic) {
    return statistic < 0 ? zelStsNoOperationWarn : zelStsNoErr;
}
inline ZelStatus statusOfMaximum(const Conversion& c) { return warningBelowZero(maximumOf(c)); }
inline ZelStatus statusOfMean(const Conversion& c) { return warningBelowZero(twiceTheMean(c)); }

template <class ToByte>
void setTones(const Conversion& c, ToByte toByte) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x)
            c.destination.sample(c.destination.layout->channels[0], x, y) = toByte(luminanceAt(c, x, y));
}

inline void clearTones(const Conversion& c) {
    setTones(c, [](float) { return uint8_t{0}; });
}

// What is below zero wraps.
inline void toneMapByMaximum(const Conversion& c) {
    const float maximum = maximumOf(c);
    if (maximum <= 1.1754944e-38f) return clearTones(c);
    const float scale = 255.0f / maximum;
    setTones(c, [&](float x) { return static_cast<uint8_t>(truncated(x * scale)); });
}

inline void toneMapByMean(const Conversion& c) {
    const double twice = twiceTheMean(c);
    if (twice <= 1.1754943508222875e-38) return clearTones(c);
    const auto scale = static_cast<float>(255.0 / twice);
    setTones(c, [&](float x) {
        const float product = x * scale;
        return static_cast<uint8_t>(product >= 255 ? 255 : product > 0 ? truncated(product) : 0);
    });
}

}  // namespace model
