// The driver of error diffusion. A pixel takes up what the pixels before it and above it have left over, so neither a row nor a
// column can be done at once; but a diagonal can. The rows of an image stand in the lanes of vectors, and each lane is some
// pixels
// (`lag`) behind the one above it:
//
//     lane 0   . . . . . . . . x
//     lane 1   . . . . . x
//     lane 2   . . x
//
// A lane that has come to the end of its row goes on with the row that lies as far below as there are lanes. What the last lane
// leaves over is kept in memory until the first one comes to the row below. Channels follow each other as if they were one tall
// image, and so the last rows of a channel pass on to the first ones of the next. Meant: begun anew, the upper
// rows of all channels but the first would change.
//
// Between rows there is a margin for the neighbours of their first and last pixels; it leaves nothing over.
#pragma once

#include "frame/kernel.h"
#include "simd/floats.h"
#include "simd/transposed.h"

namespace zel::ZEL_LEVEL {

// An image as the diffusion walks through it.
struct TallImage {
    const uint8_t* from;
    size_t fromStep;
    int fromBytes;  // a sample
    uint8_t* to;
    size_t toStep;
    int toBytes;  // a sample, 0 of samples that share bytes
    ZelSize size;
    int channels;      // that are diffused
    bool rowsOverlap;  // in the destination, so that each has to be done before the next one
};

// A lane's pixel.
struct RowPlace {
    const uint8_t* from;  // of the first pixel of the row
    uint8_t* to;
    int x;  // negative before the first row
    int y;
    int channel;
    int64_t row;  // of the tall image
};

// The kinds of vectors: bits of a dword each.
template <class Vector>
ZEL_INLINE Vector loadCells(const void* p) {
    return (Vector)loadBytes(p);
}

// Vectors side by side hide how long each of them waits for its last result. Wide ones are no more than two: with more rows at
// once, those of pixels with several samples now and then took several times as long, and the last rows begin later.
constexpr int independentVectors = traits.independentVectors;

// A rule of diffusion has
//
//     Cell, Vector           what is diffused: floats or dwords
//     registers              vectors side by side, so that one need not wait for the other
//     rowsAbove, margin      rows that a pixel looks up to, and columns to the left and to the right
//     lag
//     isNoisy                every pixel has a threshold of its own
//     outside                a sample that leaves no error
//     step(near, s, threshold, error) -> what becomes of the samples s. The errors around them are near.above(j),
//     near.twoAbove(j)
//                            and near.before(j), j columns to the right, or to the left with before.
//
// and Samples has
//
//     load(cells, place, pixels), store(place, cells, pixels), thresholds(cells, place, pixels).
template <class Rule>
class Wavefront {
    using Cell = typename Rule::Cell;
    using Vector = typename Rule::Vector;

  public:
    static constexpr int lanesOfVector = vectorBytes / 4, lanes = Rule::registers * lanesOfVector;
    static_assert(std::has_single_bit(unsigned(lanes)));

    // Cells in which the errors of rows go round; none where there are too many.
    ZEL_INLINE static int32_t cellsOf(const TallImage& image) {
        const int64_t cells = Rule::rowsAbove * periodOf(image);
        return cells <= INT32_MAX / 4 ? int32_t(cells) : 0;
    }

    // `passed` has cellsOf(image) cells, all 0.
    ZEL_INLINE Wavefront(const TallImage& image, Cell* passed)
        : image_(image), active_(activeOf(image)), period_(int(periodOf(image))) {
        for (int i = 0; i < Rule::rowsAbove; ++i) passed_[i] = passed + ptrdiff_t{i} * period_;
        rows_ = int64_t{image.size.height} * image.channels;
        for (int l = 0; l < active_; ++l) {
            places_[l] = {};
            goDown(places_[l], l);
            places_[l].x = -l * Rule::lag;
        }
        // Lanes that stay empty.
        for (auto& run : runs_)
            for (Cell& cell : run) cell = Rule::outside;
    }

    template <class Samples>
    ZEL_INLINE void run(const Rule& rule, const Samples& samples) {
        const int64_t last = rows_ - 1;
        const auto inLane = int(last & (active_ - 1));  // the number of lanes is a power of two
        int64_t steps = (last >> __builtin_ctz(unsigned(active_))) * period_ + inLane * Rule::lag + image_.size.width;
        for (; steps > 0; steps -= runPixels) {
            for (int l = 0; l < active_; ++l) load(samples, l);
            for (int first = 0; first < runPixels; first += stepsAtOnce) takeSteps(rule, first);
            for (int l = 0; l < active_; ++l) store(samples, l);
        }
    }

  private:
    static constexpr int runPixels = 64, stepsAtOnce = 16;
    static constexpr int stepsKept = Rule::rowsAbove * Rule::lag + Rule::margin;

    ZEL_INLINE static int activeOf(const TallImage& image) { return image.rowsOverlap ? 1 : lanes; }
    // The first lane reads what the last one has left over before the steps at hand.
    ZEL_INLINE static int64_t periodOf(const TallImage& image) {
        const int64_t row = int64_t{image.size.width} + Rule::margin, least = activeOf(image) * Rule::lag + stepsAtOnce;
        return row < least ? least : row;
    }

    // To the start of a row some rows further on, where the next channel follows the last row of one.
    ZEL_INLINE void goDown(RowPlace& place, int rows) const {
        const auto height = unsigned(image_.size.height);
        unsigned y = unsigned(place.y) + unsigned(rows);
        for (; y >= height; y -= height) ++place.channel;
        place.x = 0;
        place.y = int(y);
        place.row += rows;
        place.from = moved(image_.from, image_.fromStep * size_t(y) + size_t(place.channel) * size_t(image_.fromBytes));
        place.to = moved(image_.to, image_.toStep * size_t(y) + size_t(place.channel) * size_t(image_.toBytes));
    }

    // Takes a place along a run. Calls pixels(place, at, n) for those that are pixels and margin(at, n) for the others.
    template <class Pixels, class Margin>
    ZEL_INLINE void walk(RowPlace& place, const Pixels& pixels, const Margin& margin) const {
        if (place.x >= 0 && place.x <= image_.size.width - runPixels && place.row < rows_) {
            pixels(place, 0, runPixels);
            place.x += runPixels;
        } else {
            walkAcross(place, pixels, margin);
        }
    }
    template <class Pixels, class Margin>
    ZEL_NOINLINE void walkAcross(RowPlace& place, const Pixels& pixels, const Margin& margin) const {
        for (int at = 0; at < runPixels;) {
            const bool isPixel = place.x >= 0 && place.x < image_.size.width && place.row < rows_;
            const int end = place.x < 0 ? 0 : isPixel ? image_.size.width : period_;
            const int n = end - place.x < runPixels - at ? end - place.x : runPixels - at;
            if (isPixel)
                pixels(place, at, n);
            else
                margin(at, n);
            at += n;
            place.x += n;
            if (place.x == period_) goDown(place, active_);
        }
    }

    template <class Samples>
    ZEL_INLINE void load(const Samples& samples, int l) {
        RowPlace place = places_[l];
        walk(
            place,
            [&](const RowPlace& p, int at, int n) {
                samples.load(runs_[l] + at, p, n);
                if constexpr (Rule::isNoisy) samples.thresholds(thresholdRuns_[l] + at, p, n);
            },
            [&](int at, int n) {
                for (int i = at; i < at + n; ++i) runs_[l][i] = Rule::outside;
            });
    }
    template <class Samples>
    ZEL_INLINE void store(const Samples& samples, int l) {
        walk(
            places_[l], [&](const RowPlace& p, int at, int n) { samples.store(p, runs_[l] + at, n); }, [](int, int) {});
    }

    // Four steps of a register's lanes from their runs, and back.
    template <class C>
    ZEL_INLINE static void toSteps(const C (*runs)[runPixels], int first, C (*steps)[lanes]) {
        for (int r = 0; r < lanes; r += lanesOfVector)
            for (int t = 0; t < stepsAtOnce; t += 4) {
                Dwords v[4];
                unrolled<4>([&](int i) ZEL_INLINE_LAMBDA {
                    v[i] = (Dwords)loadLanes(reinterpret_cast<const uint8_t*>(runs[r + i] + first + t), 4 * sizeof(runs[0]));
                });
                transpose(v);
                unrolled<4>([&](int i) ZEL_INLINE_LAMBDA { storeVector(steps[t + i] + r, v[i]); });
            }
    }
    template <class C>
    ZEL_INLINE static void fromSteps(const C (*steps)[lanes], int first, C (*runs)[runPixels]) {
        for (int r = 0; r < lanes; r += lanesOfVector)
            for (int t = 0; t < stepsAtOnce; t += 4) {
                Dwords v[4];
                unrolled<4>([&](int i) ZEL_INLINE_LAMBDA { v[i] = (Dwords)loadBytes(steps[t + i] + r); });
                transpose(v);
                unrolled<4>([&](int i) ZEL_INLINE_LAMBDA {
                    storeLanes(reinterpret_cast<uint8_t*>(runs[r + i] + first + t), 4 * sizeof(runs[0]), (Bytes)v[i]);
                });
            }
    }

    // The errors around the pixels of a register, at one step.
    struct Near {
        const Wavefront& wave;
        int t, lane;
        Vector before1, before2;

        ZEL_INLINE Vector above(int j) const { return loadCells<Vector>(wave.above_[0][stepsKept + t - Rule::lag + j] + lane); }
        ZEL_INLINE Vector twoAbove(int j) const {
            return loadCells<Vector>(wave.above_[1][stepsKept + t - 2 * Rule::lag + j] + lane);
        }
        ZEL_INLINE Vector before(int j) const { return j == 1 ? before1 : before2; }
    };

    ZEL_NOINLINE void takeSteps(const Rule& rule, int first) {
        Cell passed[Rule::rowsAbove][stepsAtOnce];
        toSteps(runs_, first, steps_);
        if constexpr (Rule::isNoisy) toSteps(thresholdRuns_, first, thresholds_);
        for (int i = 0; i < Rule::rowsAbove; ++i) {
            int x = wrapped(x_ + (i + 1) * Rule::lag);
            for (Cell& cell : passed[i]) {
                cell = passed_[i][x];
                x = x + 1 == period_ ? 0 : x + 1;
            }
        }

        Vector before1[Rule::registers], before2[Rule::registers];
        for (int r = 0; r < Rule::registers; ++r) {
            before1[r] = before_[0][r];
            before2[r] = before_[1][r];
        }
        for (int t = 0; t < stepsAtOnce; ++t) {
            Vector error[Rule::registers], above{};
            unrolled<Rule::registers>([&](int r) ZEL_INLINE_LAMBDA {
                const int lane = r * lanesOfVector;
                const Near near{*this, t, lane, before1[r], before2[r]};
                const Vector s = loadCells<Vector>(steps_[t] + lane);
                const Floats threshold = Rule::isNoisy ? loadCells<Floats>(thresholds_[t] + lane) : Floats{};
                storeVector(steps_[t] + lane, rule.step(near, s, threshold, error[r]));
            });
            // What a lane has left over is above the lane that follows it.
            unrolled<Rule::registers>([&](int r) ZEL_INLINE_LAMBDA {
                const int lane = r * lanesOfVector;
                const Vector old = above, fromAbove = r == 0 ? (Vector)splatDword(bitsOf(passed[0][t])) : error[r - 1];
                above = (Vector)movedUp((Dwords)error[r], (Dwords)fromAbove);
                storeVector(above_[0][stepsKept + t] + lane, above);
                if constexpr (Rule::rowsAbove == 2) {
                    const Vector fromTwoAbove = r == 0 ? (Vector)splatDword(bitsOf(passed[1][t])) : old;
                    storeVector(above_[1][stepsKept + t] + lane, movedUp((Dwords)above, (Dwords)fromTwoAbove));
                }
                before2[r] = before1[r];
                before1[r] = error[r];
            });
            storeVector(ofLast_[t], error[Rule::registers - 1]);
        }
        for (int r = 0; r < Rule::registers; ++r) {
            before_[0][r] = before1[r];
            before_[1][r] = before2[r];
        }

        passOn();
        for (auto& above : above_) __builtin_memcpy(above, above + stepsAtOnce, sizeof above[0] * stepsKept);
        fromSteps(steps_, first, runs_);
        x_ = wrapped(x_ + stepsAtOnce);
    }

    // What the last lane and the one above it have left over goes into memory.
    ZEL_INLINE void passOn() {
        for (int i = 0; i < Rule::rowsAbove; ++i) {
            int x = wrapped(x_ - (active_ - 1 - i) * Rule::lag);
            for (int t = 0; t < stepsAtOnce; ++t) {
                const bool isLast = i == 0 && active_ == lanes;
                passed_[i][x] = isLast ? ofLast_[t][lanesOfVector - 1] : above_[0][stepsKept + t][active_ - i];
                x = x + 1 == period_ ? 0 : x + 1;
            }
        }
    }

    // Of a column that is less than a period away.
    ZEL_INLINE int wrapped(int x) const { return x < 0 ? x + period_ : x >= period_ ? x - period_ : x; }
    ZEL_INLINE static int32_t bitsOf(Cell cell) { return __builtin_bit_cast(int32_t, cell); }

    const TallImage& image_;
    const int active_, period_;
    int64_t rows_;
    int x_ = 0;  // of the first lane
    Cell* passed_[Rule::rowsAbove];
    RowPlace places_[lanes];
    alignas(64) Cell runs_[lanes][runPixels];
    alignas(64) float thresholdRuns_[Rule::isNoisy ? lanes : 1][runPixels];
    // The steps at hand, and the errors above the lanes, those of earlier steps first. What the last register leaves over.
    alignas(64) Cell above_[Rule::rowsAbove][stepsKept + stepsAtOnce][lanes]{};
    alignas(64) Cell steps_[stepsAtOnce][lanes];
    alignas(64) float thresholds_[Rule::isNoisy ? stepsAtOnce : 1][lanes];
    alignas(64) Cell ofLast_[stepsAtOnce][lanesOfVector];
    Vector before_[2][Rule::registers]{};
};

}  // namespace zel::ZEL_LEVEL
