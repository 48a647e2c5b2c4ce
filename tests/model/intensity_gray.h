// Model of the conversions to gray, a weighted sum of three channels in their stored order, and of those back from gray.
#pragma once

#include <algorithm>
#include <array>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

inline constexpr Parameters fixedWeights = withCoefficients({0.299, 0.587, 0.114});

template <class T>
const std::array<T, 16>& weightsOf(const Conversion& c) {
    const Parameters& p = c.parameters.hasCoefficients ? c.parameters : fixedWeights;
    if constexpr (std::is_same_v<T, double>)
        return p.doubles;
    else
        return p.floats;
}

template <class T>
std::array<T, 3> colourAt(const Conversion& c, int x, int y) {
    const auto& channels = c.source.layout->channels;
    return {c.source.load<T>(channels[0], x, y), c.source.load<T>(channels[1], x, y), c.source.load<T>(channels[2], x, y)};
}

// Every operation is rounded by itself, in this order.
template <class T, class Sample>
T weightedSum(const Conversion& c, std::array<Sample, 3> x) {
    const auto& w = weightsOf<T>(c);
    return (w[0] * T(x[0]) + w[1] * T(x[1])) + w[2] * T(x[2]);
}

template <class Gray>
void setGray(const Conversion& c, Gray gray) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) c.destination.store(c.destination.layout->channels[0], x, y, gray(x, y));
}

// Weights are words of 15 fractional bits, whatever of them fits. A block floors every product by itself, saturates the sums as
// words and reads the last of them as a signed one; the tail adds up exactly and cuts the result to a byte.
inline void grayOfBytes(const Conversion& c) {
    std::array<uint32_t, 3> k;
    for (int i = 0; i < 3; ++i) k[i] = static_cast<uint16_t>(truncated(double{weightsOf<float>(c)[i]} * 32768.0 + 0.5));
    setGray(c, [&](int x, int y) {
        const auto p = colourAt<uint8_t>(c, x, y);
        if (x >= c.blockPixels) return static_cast<uint8_t>((p[0] * k[0] + p[1] * k[1] + p[2] * k[2] + 16384) >> 15);
        uint32_t sum = 64;
        for (int i = 0; i < 3; ++i) sum += p[i] * k[i] >> 8;
        const auto word = static_cast<int16_t>(std::min<uint32_t>(sum, 65535));
        return static_cast<uint8_t>(std::clamp(word >> 7, 0, 255));
    });
}

inline void grayOfSignedWords(const Conversion& c) {
    setGray(c, [&](int x, int y) {
        const auto p = colourAt<int16_t>(c, x, y);
        const auto sum = weightedSum<float>(c, std::array{p[0] + 32768, p[1] + 32768, p[2] + 32768});
        const auto gray = static_cast<int32_t>(static_cast<uint32_t>(toInteger(sum)) - 32768);
        return static_cast<int16_t>(x < c.blockPixels ? std::clamp(gray, -32768, 32767) : gray);
    });
}

// In a block of four, words that don't fit spill into their neighbours; the last one's spill is lost.
inline void grayOfWords(const Conversion& c) {
    setGray(c, [&](int x, int y) {
        const auto at = [&](int i) {
            return static_cast<uint32_t>(toInteger(weightedSum<float>(c, colourAt<uint16_t>(c, i, y))));
        };
        const uint32_t own = at(x);
        if (x >= c.blockPixels) return static_cast<uint16_t>(own);
        constexpr std::array spiller{2, 0, 1, 2};
        return static_cast<uint16_t>(own | at((x & ~3) + spiller[x & 3]) >> 16);
    });
}

template <class T>
void grayOfNumbers(const Conversion& c) {
    setGray(c, [&](int x, int y) { return weightedSum<T>(c, colourAt<T>(c, x, y)); });
}

inline void lumaOnly(const Conversion& c) {
    setGray(c, [&](int x, int y) { return c.source.sample(c.source.layout->channels[0], x, y); });
}

template <class T>
T alphaOf(const Conversion& c) {
    if constexpr (std::is_same_v<T, uint8_t>) return c.alpha.value_or(0);
    if constexpr (std::is_same_v<T, uint16_t>) return c.parameters.word;
    return static_cast<T>(c.parameters.numbers[0]);
}

template <class T, int Channels>
void spreadGray(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x)
            for (int channel = 0; channel < Channels; ++channel)
                c.destination.store(c.destination.layout->channels[channel], x, y,
                                    channel == 3 ? alphaOf<T>(c) : c.source.load<T>(c.source.layout->channels[0], x, y));
}

}  // namespace model
