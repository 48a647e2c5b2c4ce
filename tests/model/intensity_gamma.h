// Model of the gamma curves of video, with a linear part below a knee:
//   forward  4.5 v below 0.018,  1.099 v^0.45 - 0.099 from there on
//   inverse  v / 4.5 below 0.0812,  ((v + 0.099) / 1.099)^(1 / 0.45) from there on
#pragma once

#include <array>
#include <cfenv>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

// value is v in another unit, of which there are scale to 1. The power is scaled, the linear part takes the value as it is.
struct ForwardCurve {
    static double at(double v, double value, double scale) {
        return v < 0.018 ? value * 4.5 : (1.099 * std::pow(v, 0.45) - 0.099) * scale;
    }
};
struct InverseCurve {
    static double at(double v, double value, double scale) {
        return v < 0.0812 ? value * 0.2222222222222222 : std::pow((v + 0.099) * 0.9099181073703366, 2.2222222222222223) * scale;
    }
};

// Constant data, to which the caller's rounding is nothing. Ties go to even.
template <class Curve>
uint8_t curveOfByte(uint8_t x) {
    static const auto table = [] {
        const NearestRounding nearest;
        std::array<uint8_t, 256> t;
        for (int i = 0; i < 256; ++i) t[i] = static_cast<uint8_t>(std::nearbyint(255 * Curve::at(i / 255.0, i / 255.0, 1)));
        return t;
    }();
    return table[x];
}

// The sum is rounded to single precision, which makes ties that the exact one doesn't have.
template <class Curve>
uint16_t wordByArithmetic(uint16_t x) {
    const double value = x;
    const auto f = static_cast<float>(Curve::at(value * 1.5259021896696422e-05, value, 65535) + 0.5);
    int32_t r = truncated(f);
    if (r % 2 != 0 && f == static_cast<float>(r)) --r;
    return static_cast<uint16_t>(r);
}

// Remembers the words, which depend on the rounding mode.
template <class Curve>
uint16_t curveOfWord(uint16_t x) {
    static std::map<int, std::vector<uint16_t>> tables;
    std::vector<uint16_t>& table = tables[std::fegetround()];
    if (table.empty())
        for (int i = 0; i < 65536; ++i) table.push_back(wordByArithmetic<Curve>(static_cast<uint16_t>(i)));
    return table[x];
}

template <class Curve>
float curveOfFloat(float x, float minimum, float maximum) {
    const float range = maximum - minimum, d = x - minimum;
    const double v = d * (1.0 / double{range});
    return static_cast<float>(Curve::at(v, d, range) + double{minimum});
}

inline ZelStatus statusOfRange(const Conversion& c) {
    return 0.0f >= c.parameters.numbers[1] - c.parameters.numbers[0] ? zelStsRangeErr : zelStsNoErr;
}

template <class T, class Curve>
void applyCurve(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < c.size.width; ++x) {
            for (int i = 0; i < 3; ++i) {
                const auto value = c.source.load<T>(c.source.layout->channels[i], x, y);
                T result;
                if constexpr (std::is_same_v<T, uint8_t>)
                    result = curveOfByte<Curve>(value);
                else if constexpr (std::is_same_v<T, uint16_t>)
                    result = curveOfWord<Curve>(value);
                else
                    result = curveOfFloat<Curve>(value, c.parameters.numbers[0], c.parameters.numbers[1]);
                c.destination.store(c.destination.layout->channels[i], x, y, result);
            }
        }
    }
}

}  // namespace model
