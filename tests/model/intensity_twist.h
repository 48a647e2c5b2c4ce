// Model of the colour twists: an affine map of three channels, or a linear one of four, by the caller's matrix.
#pragma once

#include <algorithm>
#include <array>
#include <limits>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

// The order of the sums, of which every one is rounded to single precision.
inline float offsetFirst(const std::array<float, 4>& t, float x0, float x1, float x2) {
    return (t[3] + t[0] * x0) + (t[2] * x2 + t[1] * x1);
}
inline float offsetLast(const std::array<float, 4>& t, float x0, float x1, float x2) {
    return ((t[0] * x0 + t[1] * x1) + t[2] * x2) + t[3];
}

inline std::array<float, 4> matrixRow(const Conversion& c, int row) {
    const float* t = c.parameters.floats.data() + 4 * row;
    return {t[0], t[1], t[2], t[3]};
}

// Limits to the type's range. Something that is not a number becomes the upper limit.
template <class T>
T limited(float sum) {
    constexpr float low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
    sum = sum < high ? sum : high;
    if constexpr (!std::is_same_v<T, int8_t>) return static_cast<T>(toInteger(sum > low ? sum : low));
    return static_cast<T>(std::clamp(toInteger(sum), -128, 127));
}

template <class T>
void twist(const Conversion& c) {
    const auto &from = c.source.layout->channels, &to = c.destination.layout->channels;
    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < c.size.width; ++x) {
            std::array<float, 3> in;
            for (int i = 0; i < 3; ++i) in[i] = c.source.load<T>(from[i], x, y);
            for (int i = 0; i < 3; ++i) {
                const auto row = matrixRow(c, i);
                if constexpr (std::is_same_v<T, float>)
                    c.destination.store(to[i], x, y, offsetFirst(row, in[0], in[1], in[2]));
                else if constexpr (std::is_same_v<T, int8_t>)
                    c.destination.store(to[i], x, y, limited<T>(offsetLast(row, in[0], in[1], in[2])));
                else
                    c.destination.store(to[i], x, y, limited<T>(offsetFirst(row, in[0], in[1], in[2])));
            }
        }
    }
}

// Integers are computed to nearest, whatever the caller rounds to.
template <class T>
void twistToNearest(const Conversion& c) {
    const NearestRounding nearest;
    twist<T>(c);
}

inline void transformFour(const Conversion& c) {
    const auto& channels = c.source.layout->channels;
    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < c.size.width; ++x) {
            std::array<float, 4> in;
            for (int i = 0; i < 4; ++i) in[i] = c.source.load<float>(channels[i], x, y);
            for (int i = 0; i < 4; ++i) {
                const auto m = matrixRow(c, i);
                c.destination.store(channels[i], x, y, ((in[0] * m[0] + in[1] * m[1]) + in[2] * m[2]) + in[3] * m[3]);
            }
        }
    }
}

}  // namespace model
