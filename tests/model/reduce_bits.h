// Model of the reduction of bit depth, a pixel at a time.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

// The number generator behind the noise, in its two forms.
class NoiseGenerator {
  public:
    NoiseGenerator(double mean, double scale) : mean_(mean), scale_(scale) {}

    static NoiseGenerator ofIntegers(int low, int high) { return {(low + high) * 0.5, (high - low) * unit}; }
    static NoiseGenerator ofFloats(float low, float high) {
        const float sum = low + high, difference = high - low;
        return {sum * 0.5, difference * unit};
    }

    double next() {
        const uint32_t t = b_ - d_ + borrow_;
        const bool isNegative = static_cast<int32_t>(t) < 0;
        d_ = b_;
        b_ = a_;
        a_ = isNegative ? t - 18 : t;
        borrow_ = isNegative ? 0xffffffff : 0;
        c_ = c_ * 69069 + 1013904243;
        return static_cast<int32_t>(a_ + c_) * scale_ + mean_;
    }

  private:
    static constexpr double unit = 2.3283064365387e-10;

    double mean_, scale_;
    uint32_t c_ = 1131199209, a_ = 0, b_ = a_ * 69069 + 1013904243, d_ = b_ * 69069 + 1013904243, borrow_ = 0xffffffff;
};

class NoiseTable {
  public:
    NoiseTable(float low, float high) {
        NoiseGenerator scramble = NoiseGenerator::ofIntegers(0, 1024), noise = NoiseGenerator::ofFloats(low, high);
        for (int i = 0; i < 1024; ++i) {
            places_[i] = static_cast<uint16_t>(static_cast<int>(scramble.next()));
            numbers_[i] = static_cast<float>(noise.next());
        }
    }
    float at(int x, int y) const { return numbers_[(places_[x & 1023] + 2 * y + x) & 1023]; }

  private:
    std::array<uint16_t, 1024> places_;
    std::array<float, 1024> numbers_;
};

// A depth token. The samples of the source are numbers from 0 to `top`.
template <class From, class To>
struct ReducedDepth {
    static constexpr bool isFloat = std::is_same_v<From, float>;
    static constexpr float top = isFloat ? 1 : sizeof(From) == 1 ? 255 : 65535;
    static constexpr int offset = std::is_same_v<To, int16_t> ? 32768 : 0;
    static constexpr int white = sizeof(To) == 1 ? 255 : 65535;  // of the destination, before the offset
    // Floyd-Steinberg of these adds up in another order, and rounds.
    static constexpr bool roundsFloydSteinberg = isFloat || (std::is_same_v<From, int16_t> && sizeof(To) == 1);

    static float number(From p) {
        if constexpr (std::is_same_v<From, int16_t>) return static_cast<float>(p + 32768);
        return p;
    }
    static int integer(float level, float bias = 0) {
        if constexpr (isFloat) return truncated(level * white + bias);
        const int i = truncated(level + bias);
        return sizeof(To) < sizeof(From) ? i >> 8 : i;
    }
    static To saturated(int integer) {
        return static_cast<To>(std::clamp<int64_t>(int64_t{integer} - offset, -offset, white - offset));
    }
    static To cutOff(int integer) { return static_cast<To>(integer - offset); }
};

struct ReductionRequest {
    int noise, dither, levels;

    explicit ReductionRequest(const Conversion& c)
        : noise(c.parameters.integers[0]), dither(c.parameters.integers[1]), levels(c.parameters.integers[2]) {}
};

enum class ReducedLayout { c1, c3, ac4, c4 };
constexpr int channelsOf(ReducedLayout layout) { return layout == ReducedLayout::c1 ? 1 : layout == ReducedLayout::c4 ? 4 : 3; }

// `sample(c, x, y, value)` gives every channel of a pixel its result.
template <class From, class To, ReducedLayout layout, class Rule>
void forEachReduced(const Conversion& conversion, Rule rule) {
    for (int y = 0; y < conversion.size.height; ++y)
        for (int x = 0; x < conversion.size.width; ++x)
            for (int c = 0; c < channelsOf(layout); ++c) {
                const From p = conversion.source.load<From>(conversion.source.layout->channels[c], x, y);
                conversion.destination.store<To>(conversion.destination.layout->channels[c], x, y, rule(p, x, y, c));
            }
}

template <class From, class To, ReducedLayout layout>
void reduceToNearest(const Conversion& conversion, int levels) {
    using Depth = ReducedDepth<From, To>;
    const float last = static_cast<float>(levels - 1), step = 1 / last, half = 0.5f / last;
    const int channels = channelsOf(layout), run = channels * conversion.size.width;
    forEachReduced<From, To, layout>(conversion, [&](From p, int x, int, int c) -> To {
        float v = Depth::number(p);
        if (!Depth::isFloat) v *= sizeof(From) == 1 ? 0.003921569f : 1.5259022e-5f;
        float q = static_cast<float>(truncated(last * v)) * step;
        if (v - q > half) q += step;
        const int integer = truncated(q * Depth::white);
        const bool isTail = x * channels + c >= (run & ~3) && layout != ReducedLayout::ac4;
        if (Depth::isFloat && sizeof(To) == 1 && isTail)
            return static_cast<To>(std::clamp<int>(static_cast<int16_t>(integer), 0, 255));
        if (Depth::isFloat && std::is_same_v<To, uint16_t> && layout != ReducedLayout::ac4) return static_cast<To>(integer);
        return Depth::saturated(integer);
    });
}

inline constexpr int bayerOrder[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
inline float bayerAt(int x, int y) { return static_cast<float>(bayerOrder[y & 3][x & 3] / 15.0); }

template <class From, class To, ReducedLayout layout>
void reduceOrdered(const Conversion& conversion, const ReductionRequest& request) {
    using Depth = ReducedDepth<From, To>;
    const float last = static_cast<float>(request.levels - 1), step = Depth::top / last, inverse = last / Depth::top;
    const NoiseTable noise(static_cast<float>(-request.noise) / 100, static_cast<float>(request.noise) / 100);
    const bool forgetsAtEnd =
        layout == ReducedLayout::c4 || (layout == ReducedLayout::ac4 && sizeof(From) == 1 && sizeof(To) == 1);
    forEachReduced<From, To, layout>(conversion, [&](From p, int x, int y, int) {
        float threshold = bayerAt(x, y) * step;
        if (request.noise > 0) {
            threshold = (noise.at(x, y) + 0.0f + bayerAt(x, y)) * step;
            if (forgetsAtEnd && x >= conversion.size.width / 4 * 4) threshold = bayerAt(x, y);
        }
        const float s = Depth::number(p), q = static_cast<float>(truncated(s * inverse)) * step;
        return Depth::saturated(Depth::integer(threshold < s - q ? q + step : q));
    });
}

// Errors of a tall image, with two cells of margin on every side.
class ErrorImage {
  public:
    ErrorImage(int width, int height) : pitch_(width + 4), cells_(static_cast<size_t>(pitch_) * (height + 2)) {}
    float& at(int x, int y) { return cells_[static_cast<size_t>(y + 2) * pitch_ + x + 2]; }

  private:
    int pitch_;
    std::vector<float> cells_;
};

template <bool byColumns>
float gatherFloydSteinberg(ErrorImage& e, int x, int y) {
    const float right = e.at(x + 1, y - 1) * 3, left = e.at(x - 1, y - 1), above = e.at(x, y - 1) * 5,
                before = e.at(x - 1, y) * 7;
    return ((byColumns ? right + above + left : right + left + above) + before) * 0.0625f;
}

inline float gatherThreeRows(ErrorImage& e, int x, int y, bool isStucki) {
    static constexpr float weights[2][3][4] = {{{1, 3, 5, 3}, {3, 5, 7, 5}, {5, 7, 0, 0}},
                                               {{1, 2, 4, 2}, {2, 4, 8, 4}, {4, 8, 0, 0}}};
    const auto& [two, one, own] = weights[isStucki];
    float lane[4];
    for (int k = 0; k < 4; ++k)
        lane[k] = e.at(x - 2 + k, y - 2) * two[k] + e.at(x - 2 + k, y - 1) * one[k] + (k < 2 ? e.at(x - 2 + k, y) : 0) * own[k];
    const float sum = lane[0] + lane[2] + (lane[1] + lane[3]) + e.at(x + 2, y - 2) + e.at(x + 2, y - 1) * one[0];
    return sum * static_cast<float>(1.0 / (isStucki ? 42 : 48));
}

template <class From, class To, ReducedLayout layout>
void diffuse(const Conversion& conversion, const ReductionRequest& request) {
    using Depth = ReducedDepth<From, To>;
    const auto [width, height] = conversion.size;
    const float last = static_cast<float>(request.levels - 1), step = Depth::top / last, inverse = last / Depth::top;
    const float floor = Depth::isFloat ? 1.1920929e-7f : 0;
    const NoiseTable noise(static_cast<float>(50 - request.noise) * step / 100,
                           static_cast<float>(50 + request.noise) * step / 100);
    const bool isFloydSteinberg = request.dither == zelDitherFS;
    ErrorImage errors(width, height * channelsOf(layout));
    for (int c = 0; c < channelsOf(layout); ++c) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const int row = c * height + y;
                const float s = Depth::number(conversion.source.load<From>(conversion.source.layout->channels[c], x, y));
                const float sum = s + (isFloydSteinberg ? gatherFloydSteinberg<Depth::roundsFloydSteinberg>(errors, x, row)
                                                        : gatherThreeRows(errors, x, row, request.dither == zelDitherStucki));
                const auto set = [&](To value, float error) {
                    conversion.destination.store<To>(conversion.destination.layout->channels[c], x, y, value);
                    errors.at(x, row) = error;
                };
                if (sum >= Depth::top) {
                    set(static_cast<To>(Depth::white - Depth::offset), 0);
                } else if (!(sum >= floor)) {
                    set(static_cast<To>(-Depth::offset), 0);
                } else {
                    const int noiseX = !isFloydSteinberg && x < width / 4 * 4 ? x & ~3 : x;
                    const float threshold = request.noise > 0 ? noise.at(noiseX, y) : 0.5f * step;
                    float q = static_cast<float>(truncated(sum * inverse)) * step;
                    if (threshold < sum - q) q += step;
                    const float bias = isFloydSteinberg && Depth::roundsFloydSteinberg ? 0.5f : 0;
                    set(Depth::cutOff(Depth::integer(q, bias)), sum - q);
                }
            }
        }
    }
}

template <class From, class To, ReducedLayout layout>
void reduceBits(const Conversion& conversion) {
    const ReductionRequest request(conversion);
    switch (request.dither) {
        case zelDitherNone:
            return reduceToNearest<From, To, layout>(conversion, request.levels);
        case zelDitherBayer:
            return reduceOrdered<From, To, layout>(conversion, request);
        case zelDitherFS:
        case zelDitherJJN:
        case zelDitherStucki:
            return diffuse<From, To, layout>(conversion, request);
        default:
            return;
    }
}

}  // namespace model
