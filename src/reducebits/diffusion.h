// Error diffusion of the depths: what goes to a level leaves the difference to the pixels after it and below it.
#pragma once

#include "reducebits/noise.h"
#include "reducebits/samples.h"
#include "reducebits/thresholds.h"
#include "reducebits/wavefront.h"
#include "simd/strided.h"

namespace zel::ZEL_LEVEL {

enum class Diffusion { floydSteinberg, floydSteinbergByColumns, threeRows };

// Whoever looks two rows up.
struct DiffusionWeights {
    float before1, before2;        // columns to the left
    float above0, above1, above2;  // columns away, one row up
    float twoAbove0, twoAbove1;    // two rows up, where the farthest have 1
    float unit;
};
inline constexpr DiffusionWeights jarvisJudiceNinke{7, 5, 7, 5, 3, 5, 3, 0.020833334f}, stucki{8, 4, 8, 4, 2, 4, 2, 0.023809524f};

struct DiffusionConstants {
    Levels levels;
    float top, floor;
    float threshold;  // of all pixels, where there is no noise
    DiffusionWeights weights;
};

// A sample with what it has taken up becomes the level at or below it, or the one above it by a threshold. Beyond black and white
// nothing is left over, and NaN is black.
template <Diffusion kind, bool noisy>
class FloatDiffusion {
  public:
    using Cell = float;
    using Vector = Floats;
    static constexpr bool isNoisy = noisy, looksTwoUp = kind == Diffusion::threeRows;
    static constexpr int registers = independentVectors, rowsAbove = looksTwoUp ? 2 : 1, margin = rowsAbove,
                         lag = looksTwoUp ? 4 : 3;
    static constexpr float outside = -1e30f;

    ZEL_INLINE explicit FloatDiffusion(const DiffusionConstants& k)
        : step_(splatFloat(k.levels.step)),
          inverse_(splatFloat(k.levels.inverse)),
          top_(splatFloat(k.top)),
          floor_(splatFloat(k.floor)),
          threshold_(splatFloat(k.threshold)),
          weights_(k.weights) {}

    template <class Near>
    ZEL_INLINE Floats step(const Near& near, Floats s, Floats threshold, Floats& error) const {
        const Floats sum = s + takenUp(near);
        const Floats q = wholePart(sum * inverse_) * step_;
        const Floats q2 = levelOrNext(q, step_, noisy ? threshold : threshold_, sum - q);
        error = sum >= top_ ? Floats{} : sum >= floor_ ? sum - q2 : Floats{};
        return sum >= top_ ? top_ : sum >= floor_ ? q2 : Floats{};
    }

  private:
    template <class Near>
    ZEL_INLINE Floats takenUp(const Near& near) const {
        // Sixteenths are exact, so it is all the same when they are taken.
        constexpr float sixteenth = 0.0625f;
        if constexpr (kind == Diffusion::floydSteinberg) {
            return ((near.above(1) * (3 * sixteenth) + near.above(-1) * sixteenth) + near.above(0) * (5 * sixteenth)) +
                   near.before(1) * (7 * sixteenth);
        } else if constexpr (kind == Diffusion::floydSteinbergByColumns) {
            return ((near.above(1) * (3 * sixteenth) + near.above(0) * (5 * sixteenth)) + near.above(-1) * sixteenth) +
                   near.before(1) * (7 * sixteenth);
        } else {
            const DiffusionWeights& w = weights_;
            const Floats lane0 = (near.twoAbove(-2) + near.above(-2) * w.above2) + near.before(2) * w.before2,
                         lane1 = (near.twoAbove(-1) * w.twoAbove1 + near.above(-1) * w.above1) + near.before(1) * w.before1,
                         lane2 = near.twoAbove(0) * w.twoAbove0 + near.above(0) * w.above0,
                         lane3 = near.twoAbove(1) * w.twoAbove1 + near.above(1) * w.above1;
            return ((((lane0 + lane2) + (lane1 + lane3)) + near.twoAbove(2)) + near.above(2) * w.above2) * w.unit;
        }
    }

    Floats step_, inverse_, top_, floor_, threshold_;
    DiffusionWeights weights_;
};

// How levels become samples: trunc(level scale + bias) >> shift, less an offset. What a sample has no room for is cut off.
struct LevelScale {
    float scale, bias;
    int shift, offset;
};

// Samples of one channel.
using LoadSamples = void (*)(float* cells, const uint8_t* from, int pixels);
using StoreLevels = void (*)(uint8_t* to, const float* levels, const LevelScale& scale, int pixels);

template <class From, int channels>
void loadSamples(float* cells, const uint8_t* from, int pixels) {
    int i = 0;
    for (; i + vectorFloats <= pixels; i += vectorFloats, from += vectorFloats * channels * From::bytes) {
        if constexpr (channels == 1)
            storeVector(cells + i, From::load(from));
        else
            storeVector(cells + i, From::numbers(loadStrided<From::bytes, channels>(from)));
    }
    for (; i < pixels; ++i, from += channels * From::bytes) cells[i] = From::loadOne(from);
}

template <class Sample, int channels>
void storeLevels(uint8_t* to, const float* levels, const LevelScale& scale, int pixels) {
    constexpr int bytes = sizeof(Sample);
    const auto samplesAt = [&](int i) ZEL_INLINE_LAMBDA {
        const Floats x = (Floats)loadBytes(levels + i) * splatFloat(scale.scale) + splatFloat(scale.bias);
        return (truncated(x) >> scale.shift) - splatDword(scale.offset);
    };
    int i = 0;
    for (; i + vectorFloats <= pixels; i += vectorFloats, to += vectorFloats * channels * bytes) {
        const Dwords samples = samplesAt(i);
        if constexpr (channels != 1)
            storeStrided<bytes, channels>(to, samples);
        else if constexpr (bytes == 1)
            storeLowBytes(to, samples);
        else
            storeLowWords(to, samples);
    }
    if (i == pixels) return;
    // The levels behind the last pixel may be anything, but they are there.
    alignas(64) int32_t dwords[vectorFloats];
    storeVector(dwords, samplesAt(i));
    for (int k = 0; i < pixels; ++i, ++k, to += channels * bytes) __builtin_memcpy(to, dwords + k, bytes);
}

// The samples of an image and their noise.
struct DiffusedSamples {
    LoadSamples loadSamples;
    StoreLevels storeLevels;
    LevelScale scale;
    ptrdiff_t fromPixelBytes, toPixelBytes;
    const Noise* noise;
    int endOfFours;  // up to there four pixels share the noise of their first one

    // More rows go on at once than the processor fetches ahead by itself, so each asks for the next run of its own.
    ZEL_INLINE void load(float* cells, const RowPlace& place, int pixels) const {
        const uint8_t* from = place.from + place.x * fromPixelBytes;
        loadSamples(cells, from, pixels);
        const ptrdiff_t fromBytes = pixels * fromPixelBytes, toBytes = pixels * toPixelBytes;
        prefetch<Use::read>(from + fromBytes, size_t(fromBytes));
        prefetch<Use::written>(place.to + place.x * toPixelBytes + toBytes, size_t(toBytes));
    }
    ZEL_INLINE void store(const RowPlace& place, const float* levels, int pixels) const {
        storeLevels(place.to + place.x * toPixelBytes, levels, scale, pixels);
    }
    ZEL_NOINLINE void thresholds(float* to, const RowPlace& place, int pixels) const {
        const int fours = endOfFours - place.x < 0 ? 0 : endOfFours - place.x < pixels ? endOfFours - place.x : pixels;
        noise->read(noiseTables.places.ofFour, place.x, place.y, to, fours);
        noise->read(noiseTables.places.ofColumn, place.x + fours, place.y, to + fours, pixels - fours);
    }
};

template <class Rule>
ZEL_NOINLINE ZelStatus diffuse(const TallImage& image, const DiffusionConstants& constants, const DiffusedSamples& samples) {
    const int32_t cells = Wavefront<Rule>::cellsOf(image);
    const CallMemory<float> passed(cells);
    if (!passed.get()) return zelStsMemAllocErr;
    for (int32_t i = 0; i < cells; ++i) passed.get()[i] = 0;
    Wavefront<Rule>(image, passed.get()).run(Rule(constants), samples);
    return zelStsNoErr;
}

}  // namespace zel::ZEL_LEVEL
