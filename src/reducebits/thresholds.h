// Reduction without memory: every sample goes to the level below it or to the one above, by a threshold that depends on its
// place.
#pragma once

#include "frame/bypass.h"
#include "frame/driver.h"
#include "reducebits/noise.h"
#include "reducebits/samples.h"
#include "simd/byte_table.h"
#include "simd/part.h"
#include "simd/samples.h"

namespace zel::ZEL_LEVEL {

// Levels on a scale on which white is `top`: the distance between two of them, and its inverse.
struct Levels {
    float step, inverse;

    ZEL_INLINE Levels(int count, float top) : step(top / float(count - 1)), inverse(float(count - 1) / top) {}
};

// Thresholds of consecutive samples. Those of a pattern repeat themselves after a common multiple of all pixels and blocks, and
// go on for one more block.
constexpr int thresholdPeriod = 192, thresholdsAtOnce = thresholdPeriod + vectorBytes;
static_assert(thresholdPeriod % vectorBytes == 0);

// From the left to the right, samples are read before they are written.
template <class Threshold>
struct ReducedRow {
    const uint8_t* from;
    Destination to;
    size_t samples;
    const Threshold* thresholds;
    bool repeatsThresholds;
};

template <class Threshold>
using ReduceRow = void (*)(const Levels& levels, const ReducedRow<Threshold>& row);

struct SampleShape {
    int fromBytes, toBytes;
    bool keepsAlpha;
};

// The end of a row that does not fill a block: by one more block that ends with the row, unless the row is shorter, or the
// samples are gone that it would read again, or stores bypass the caches, for a line that just went past them should be left
// alone. `place`: of the end's thresholds.
template <class Threshold>
ZEL_NOINLINE void reduceRest(ReduceRow<Threshold> reduce, const Levels& levels, const ReducedRow<Threshold>& row,
                             SampleShape shape, size_t place) {
    const auto fromBytes = size_t(shape.fromBytes), toBytes = size_t(shape.toBytes), block = vectorBytes / toBytes;
    const size_t rest = row.samples % block, whole = row.samples - rest;
    const bool isInPlace = row.to < row.from + row.samples * fromBytes && row.from < row.to + row.samples * toBytes;
    if (whole != 0 && !isInPlace && !row.to.bypassing()) {
        const size_t first = row.samples - block, again = block - rest;
        place = place >= again ? place - again : place + thresholdPeriod - again;
        reduce(levels, {row.from + first * fromBytes, row.to + first * toBytes, block, row.thresholds + place, false});
        return;
    }
    alignas(64) uint8_t source[4 * vectorBytes], destination[vectorBytes];
    copyToBuffer(source, row.from + whole * fromBytes, rest * fromBytes, block * fromBytes);
    if (shape.keepsAlpha) copyToBuffer(destination, row.to + whole * toBytes, rest * toBytes, vectorBytes);
    reduce(levels, {source, destination, block, row.thresholds + place, false});
    copyFromBuffer(row.to + whole * toBytes, destination, rest * toBytes);
}

// Calls block(from, to, thresholds) for each vector of the row. `reduce` does the same to a row of one block.
template <class Threshold, class Block>
ZEL_INLINE void reduceRow(const Block& block, ReduceRow<Threshold> reduce, const Levels& levels, const ReducedRow<Threshold>& row,
                          SampleShape shape) {
    const auto fromBytes = size_t(shape.fromBytes), toBytes = size_t(shape.toBytes), blockSamples = vectorBytes / toBytes;
    const size_t whole = row.samples & -blockSamples;
    size_t place = 0;
    for (size_t i = 0; i < whole; i += blockSamples) {
        block(row.from + i * fromBytes, row.to + i * toBytes, row.thresholds + place);
        place += blockSamples;
        if (row.repeatsThresholds && place == thresholdPeriod) place = 0;
    }
    if (whole != row.samples) reduceRest(reduce, levels, row, shape, place);
}

// A sample s on the scale of the levels becomes
//
//     q = trunc(s / step) step, and one step more if the threshold is below s - q,
//
// trunc of which is the level. The scale is the source's own or, whatever the depths, that from 0 to 1. On the latter, rounded to
// nearest, each of 256 levels of bytes is its own number, so that it need only be counted.
enum class Scale { ofSource, unit, unitCounted };
template <class From, class To, Scale scale, bool keepsAlpha>
class Reduction {
  public:
    static void convert(const Levels& levels, const ReducedRow<float>& row) {
        const Reduction reduction(levels);
        reduceRow(reduction, convert, levels, row, {.fromBytes = From::bytes, .toBytes = To::bytes, .keepsAlpha = keepsAlpha});
    }

    ZEL_INLINE void operator()(const uint8_t* from, Destination to, const float* thresholds) const {
        Dwords levels[To::parts];
        unrolled<To::parts>([&](int i) ZEL_INLINE_LAMBDA {
            levels[i] =
                level(From::load(from + i * vectorFloats * From::bytes), (Floats)loadBytes(thresholds + i * vectorFloats));
        });
        constexpr bool takesHighBytes = scale == Scale::ofSource && To::white < From::top;
        Bytes packed;
        if constexpr (takesHighBytes)
            packed = To::packHighBytes(levels);
        else
            packed = To::pack(levels);
        if constexpr (keepsAlpha)
            storeThreeOfFour<To::bytes>(to, packed);
        else
            storeVector(to, packed);
    }

  private:
    ZEL_INLINE explicit Reduction(const Levels& levels) : step_(splatFloat(levels.step)), inverse_(splatFloat(levels.inverse)) {}

    ZEL_INLINE Dwords level(Floats s, Floats threshold) const {
        if constexpr (scale != Scale::ofSource && From::unit != 1) s = s * splatFloat(From::unit);
        if constexpr (scale == Scale::unitCounted) {
            const Dwords below = truncated(s * inverse_);
            return below - (Dwords)(threshold < s - toFloats(below) * step_);
        }
        const Floats q = whole(s * inverse_) * step_;
        const Floats q2 = levelOrNext(q, step_, threshold, s - q);
        return truncated(scale == Scale::unit ? q2 * splatFloat(To::white) : q2);
    }

    // Of floats that no dword holds, the lowest one.
    ZEL_INLINE static Floats whole(Floats x) {
        if constexpr (From::top == 1) return toFloats(truncated(x));
        return wholePart(x);
    }

    Floats step_, inverse_;
};

// Floats beyond white in the last samples of a row, behind a multiple of 4: the low 16 bits of the level are taken as a signed
// word before they are bounded to a byte, so the brightest come out black. Meant: bounded first, they would be
// white.
template <Scale scale>
ZEL_NOINLINE void reduceFloatsToBytes(const Levels& levels, const ReducedRow<float>& row) {
    uint8_t last[3];
    const size_t whole = row.samples & ~size_t{3};
    for (size_t i = whole; i < row.samples; ++i) {
        const Floats s = splatFloat(From32f::loadOne(row.from + i * 4));
        const Floats q = toFloats(truncated(s * splatFloat(levels.inverse))) * splatFloat(levels.step);
        const Floats q2 = splatFloat(row.thresholds[0]) < s - q ? q + splatFloat(levels.step) : q;
        const auto word = int16_t(truncated(q2 * splatFloat(To8u::white))[0]);
        last[i - whole] = uint8_t(word < 0 ? 0 : word > 255 ? 255 : word);
    }
    Reduction<From32f, To8u, scale, false>::convert(levels, row);
    for (size_t i = whole; i < row.samples; ++i) row.to[i] = last[i - whole];
}

// Words to 256 levels as bytes: in steps of 257 the rule has a form in integers. With an addend a of 256 less the threshold, cut
// off, and not below 0, and m = p + a or 65535 if that is less, a sample p becomes
//
//     trunc(255 (m + 1) / 65536) = (m - (m >> 8)) >> 8.
template <bool isSigned, bool keepsAlpha>
class WordsToBytes {
  public:
    static void convert(const Levels& levels, const ReducedRow<uint16_t>& row) {
        reduceRow(WordsToBytes(), convert, levels, row, {.fromBytes = 2, .toBytes = 1, .keepsAlpha = keepsAlpha});
    }

    ZEL_INLINE void operator()(const uint8_t* from, Destination to, const uint16_t* addends) const {
        const UWords first = level(from, addends), second = level(from + vectorBytes, addends + vectorBytes / 2);
        const Bytes packed = lowThenHighHalves(packBytes((Words)first, (Words)second));
        if constexpr (keepsAlpha)
            storeThreeOfFour<1>(to, packed);
        else
            storeVector(to, packed);
    }

  private:
    ZEL_INLINE static UWords level(const uint8_t* from, const uint16_t* addends) {
        const auto word = (UWords)loadBytes(from), sample = isSigned ? word ^ (UWords)splatWord(0x8000) : word;
        const UWords m = addSaturated(sample, (UWords)loadBytes(addends));
        return (m - (m >> 8)) >> 8;
    }
};

// The rows of an image and their pixels.
struct ReducedRows {
    const uint8_t* from;
    size_t fromStep;
    uint8_t* to;
    size_t toStep;
    ZelSize size;
    int channels;    // of a pixel, in memory
    bool bypassing;  // the caches, where whole vectors are stored

    ZEL_INLINE size_t samples() const { return size_t(size.width) * size_t(channels); }
};

// The thresholds of ordered dither, in steps.
inline constexpr float bayer[4][4] = {{0.0f, 0.53333336f, 0.13333334f, 0.6666667f},
                                      {0.8f, 0.26666668f, 0.93333334f, 0.4f},
                                      {0.2f, 0.73333335f, 0.06666667f, 0.6f},
                                      {1.0f, 0.46666667f, 0.8666667f, 0.33333334f}};

// Their order.
inline constexpr uint8_t bayerPlaces[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

struct RowRule {
    ReduceRow<float> reduce;
    bool keepsAlpha;
    ReduceRow<float> ofAllBytes;  // where samples are bytes: the same rule without alpha
};

// Bytes by tables of all results, where a lookup costs less than the rule. The rule itself fills them: what a byte becomes below
// its threshold, what above, and how many thresholds in ascending order it is above. One threshold for all needs one table.
class ByteResults {
  public:
    // What it takes to make the tables is little beside an image.
    ZEL_INLINE static bool pay(const ReducedRows& rows) {
        return traits.looksUpQuickly && rows.samples() * size_t(rows.size.height) >= 8192;
    }

    ZEL_NOINLINE ByteResults(const Levels& levels, const float* ascending, int count, ReduceRow<float> reduce) {
        const auto fill = [&](float threshold, uint8_t(&results)[256]) {
            alignas(64) float thresholds[thresholdsAtOnce];
            for (int i = 0; i < thresholdsAtOnce; i += vectorFloats) storeVector(thresholds + i, splatFloat(threshold));
            alignas(64) uint8_t bytes[256];
            for (int i = 0; i < 256; ++i) bytes[i] = uint8_t(i);
            reduce(levels, {bytes, results, 256, thresholds, true});
        };
        constexpr float unreachable = 1e30f;
        fill(count == 1 ? ascending[0] : unreachable, below_);
        fill(-unreachable, above_);
        for (int t = 0; t < count; ++t) {
            alignas(64) uint8_t results[256];
            fill(ascending[t], results);
            for (int i = 0; i < 256; i += vectorBytes) {
                const auto isAbove = (Bytes)(loadBytes(results + i) != loadBytes(below_ + i));
                storeVector(ranks_ + i, loadBytes(ranks_ + i) - isAbove);
            }
        }
    }

    // A row of thresholds, and their places among all, a period of them; none where all samples have the only one.
    struct RowThresholds {
        const float* values;
        const uint8_t* places;
    };
    // Row y has the thresholds ofRow(y).
    template <class OfRow>
    ZEL_INLINE void reduceRows(const ReducedRows& rows, const Levels& levels, const RowRule& rule, const OfRow& ofRow) const {
        const MadeByteTable below(below_), above(above_), ranks(ranks_);
        ReducedRow<float> row{rows.from, {rows.to, rows.bypassing}, rows.samples(), nullptr, true};
        const size_t whole = row.samples & -size_t{vectorBytes};
        for (int y = 0; y < rows.size.height; ++y) {
            const RowThresholds thresholds = ofRow(y);
            size_t place = 0;
            for (size_t i = 0; i < whole; i += vectorBytes) {
                const Bytes bytes = loadBytes(row.from + i);
                Bytes results = below[bytes];
                if (thresholds.places) results = ranks[bytes] > loadBytes(thresholds.places + place) ? above[bytes] : results;
                if (rule.keepsAlpha)
                    storeThreeOfFour<1>(row.to + i, results);
                else
                    storeVector(row.to + i, results);
                place = place + vectorBytes == thresholdPeriod ? 0 : place + vectorBytes;
            }
            row.thresholds = thresholds.values;
            if (whole != row.samples)
                reduceRest(rule.reduce, levels, row, {.fromBytes = 1, .toBytes = 1, .keepsAlpha = rule.keepsAlpha}, place);
            row.from = moved(row.from, rows.fromStep);
            row.to = {moved<uint8_t>(row.to, rows.toStep), rows.bypassing};
        }
    }

  private:
    alignas(64) uint8_t below_[256], above_[256], ranks_[256]{};
};

// Row y has the thresholds ofRow(y).
template <class Threshold, class OfRow>
ZEL_INLINE void reduceRows(const ReducedRows& rows, const Levels& levels, ReduceRow<Threshold> reduce, const OfRow& ofRow) {
    ReducedRow<Threshold> row{rows.from, {rows.to, rows.bypassing}, rows.samples(), nullptr, true};
    for (int y = 0; y < rows.size.height; ++y) {
        row.thresholds = ofRow(y);
        reduce(levels, row);
        row.from = moved(row.from, rows.fromStep);
        row.to = {moved<uint8_t>(row.to, rows.toStep), rows.bypassing};
    }
}

// To the nearest level.
ZEL_NOINLINE inline void reduceToNearest(const ReducedRows& rows, const Levels& levels, float threshold, const RowRule& rule) {
    alignas(64) float thresholds[thresholdsAtOnce];
    for (int i = 0; i < thresholdsAtOnce; i += vectorFloats) storeVector(thresholds + i, splatFloat(threshold));
    const auto ofRow = [&](int) { return thresholds; };
    if (!rule.ofAllBytes || !ByteResults::pay(rows)) return reduceRows(rows, levels, rule.reduce, ofRow);
    ByteResults(levels, &threshold, 1, rule.ofAllBytes).reduceRows(rows, levels, rule, [&](int) {
        return ByteResults::RowThresholds{thresholds, nullptr};
    });
}

// The same threshold for all samples of a pixel.
template <class Threshold>
ZEL_INLINE Threshold* repeat(Threshold threshold, Threshold* to, int channels) {
    for (int c = 0; c < channels; ++c) *to++ = threshold;
    return to;
}

// Thresholds of pixels as those of their samples, up to whole vectors of pixels.
ZEL_INLINE void repeatPixels(const float* from, float* to, int pixels, int channels) {
    for (int i = 0; i < pixels; i += vectorFloats, to += vectorFloats * channels) {
        if (channels == 1) {
            storeVector(to, loadBytes(from + i));
        } else if (channels == 3) {
            const Repeated<4, 3> repeated(reinterpret_cast<const uint8_t*>(from + i), 0);
            unrolled<3>([&](auto v) ZEL_INLINE_LAMBDA { storeVector(to + vectorFloats * v, repeated.template vector<v>()); });
        } else {
            const auto v = (Dwords)loadBytes(from + i);
            storeFour<4>(reinterpret_cast<uint8_t*>(to), Channels<Dwords>{v, v, v}, v);
        }
    }
}

// A matrix of thresholds that repeats itself, as far as a row goes, and one block.
template <class Threshold>
using Pattern = Threshold[4][thresholdsAtOnce + vectorBytes];
ZEL_INLINE int thresholdsOf(const ReducedRows& rows) {
    const size_t needed = rows.samples() + vectorBytes;
    return needed < thresholdsAtOnce ? int(needed) : thresholdsAtOnce;
}

ZEL_NOINLINE inline void reduceOrdered(const ReducedRows& rows, const Levels& levels, const RowRule& rule) {
    alignas(64) Pattern<float> pattern;
    for (int y = 0; y < 4 && y < rows.size.height; ++y) {
        alignas(64) float ofPixels[vectorFloats];
        storeVector(ofPixels, (Floats)everyLane(bayer[y]) * splatFloat(levels.step));
        for (int i = 0; i < thresholdsOf(rows); i += vectorFloats * rows.channels)
            repeatPixels(ofPixels, pattern[y] + i, vectorFloats, rows.channels);
    }
    const auto ofRow = [&](int y) { return pattern[y % 4]; };
    if (!rule.ofAllBytes || !ByteResults::pay(rows)) return reduceRows(rows, levels, rule.reduce, ofRow);
    float ascending[16];
    alignas(64) uint8_t places[4][thresholdPeriod];
    for (int y = 0; y < 4; ++y) {
        uint8_t* to = places[y];
        for (int x = 0; x < 4; ++x) ascending[bayerPlaces[y][x]] = bayer[y][x] * levels.step;
        for (int x = 0; to < places[y] + thresholdPeriod; ++x) to = repeat(bayerPlaces[y][x % 4], to, rows.channels);
    }
    ByteResults(levels, ascending, 16, rule.ofAllBytes).reduceRows(rows, levels, rule, [&](int y) {
        return ByteResults::RowThresholds{pattern[y % 4], places[y % 4]};
    });
}

// What words to 256 levels are raised by.
struct Addends {
    uint16_t at[4][4];
};
constexpr Addends addendsOf(float (*threshold)(int x, int y)) {
    Addends a{};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) {
            const int addend = 256 - int(threshold(x, y));
            a.at[y][x] = uint16_t(addend < 0 ? 0 : addend);
        }
    return a;
}
inline constexpr Addends nearestAddends = addendsOf([](int, int) { return 128.5f; }),
                         orderedAddends = addendsOf([](int x, int y) { return bayer[y][x] * 257; });

ZEL_NOINLINE inline void reduceWordsToBytes(const ReducedRows& rows, const Levels& levels, ReduceRow<uint16_t> reduce,
                                            const Addends& addends) {
    alignas(64) Pattern<uint16_t> pattern;
    for (int y = 0; y < 4 && y < rows.size.height; ++y) {
        uint16_t* to = pattern[y];
        for (int x = 0; to < pattern[y] + thresholdsOf(rows); ++x) to = repeat(addends.at[y][x % 4], to, rows.channels);
    }
    reduceRows(rows, levels, reduce, [&](int y) { return pattern[y % 4]; });
}

// With noise. `bareAtEnd`: the columns behind a multiple of 4 have the thresholds of the matrix alone, on no scale. Meant: a slip
// of old, without which the ends of rows would change.
ZEL_NOINLINE inline void reduceOrdered(const ReducedRows& rows, const Levels& levels, const Noise& noise, bool bareAtEnd,
                                       int bytesFrom, int bytesTo, ReduceRow<float> reduce) {
    constexpr int pixelsAtOnce = 256;
    alignas(64) float noiseOfRows[NoiseOfRows::rows][noiseNumbers], thresholds[pixelsAtOnce * 4];
    const NoiseOfRows dealt(noise);
    const uint8_t* from = rows.from;
    uint8_t* to = rows.to;
    const int width = rows.size.width, endOfFours = width & ~3;
    for (int y = 0; y < rows.size.height; ++y) {
        if (y % 4 == 0) dealt.read(y, width, noiseOfRows);
        const auto matrix = (Floats)everyLane(bayer[y % 4]);
        for (int first = 0; first < width; first += pixelsAtOnce) {
            const int pixels = width - first < pixelsAtOnce ? width - first : pixelsAtOnce;
            alignas(64) float ofPixels[pixelsAtOnce];
            for (int i = 0; i < pixels; i += vectorFloats) {
                const auto added = (Floats)loadBytes(noiseOfRows[y % 4] + (first + i) % noiseNumbers);
                storeVector(ofPixels + i, (added + matrix) * splatFloat(levels.step));
            }
            for (int x = endOfFours; bareAtEnd && x < first + pixels; ++x) ofPixels[x - first] = bayer[y % 4][x % 4];
            if (rows.channels != 1) repeatPixels(ofPixels, thresholds, pixels, rows.channels);
            const size_t before = size_t(first) * size_t(rows.channels);
            reduce(levels, {from + before * size_t(bytesFrom), Destination(to, rows.bypassing) + before * size_t(bytesTo),
                            size_t(pixels) * size_t(rows.channels), rows.channels == 1 ? ofPixels : thresholds, false});
        }
        from = moved(from, rows.fromStep);
        to = moved(to, rows.toStep);
    }
}

}  // namespace zel::ZEL_LEVEL
