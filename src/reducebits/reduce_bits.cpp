// Reduction of bit depth: samples to fewer levels, and to smaller samples where the name says so.
#include "reducebits/diffusion.h"
#include "reducebits/one_bit.h"
#include "reducebits/thresholds.h"
#include "zelcc/reducebits.h"

namespace zel::ZEL_LEVEL {
namespace {

// What a caller gives behind the size.
template <int maxLevels>
struct Request {
    uint32_t noise, dither;
    int32_t levels;

    ZEL_INLINE Request(int32_t noise, ZelDitherType dither, int32_t levels)
        : noise(uint32_t(noise)), dither(uint32_t(dither)), levels(levels) {}

    // Also where neither is used.
    ZEL_INLINE ZelStatus check() const {
        if (noise > 100) return zelStsNoiseValErr;
        return levels < 2 || levels > maxLevels ? zelStsDitherLevelsErr : zelStsNoErr;
    }
};

// Rules without memory.
struct Reducers {
    ReduceRow<float> toNearest, ordered, toNearestBesideAlpha, orderedBesideAlpha;
};
template <class From, class To, Scale ofNearest, Scale ofOrdered>
constexpr Reducers reducersOf(ReduceRow<float> toNearest = Reduction<From, To, ofNearest, false>::convert) {
    return {toNearest, Reduction<From, To, ofOrdered, false>::convert, Reduction<From, To, ofNearest, true>::convert,
            Reduction<From, To, ofOrdered, true>::convert};
}

// Two depths and how one becomes the other.
struct Depths {
    int fromBytes, toBytes;
    float top;                           // white of the source
    Reducers reducers, reducersCounted;  // the latter to 256 levels, rounded to nearest, where there is that form
    ReduceRow<uint16_t> wordsToBytes, wordsToBytesBesideAlpha;  // to 256 levels, where depths have that form
    LoadSamples load[5];                                        // by the samples of a pixel
    StoreLevels store[5];
    LevelScale scale;
    Diffusion floydSteinberg;
    float floydSteinbergBias;  // before a level is cut off; the other kinds of diffusion have none
    float floor;               // of what is above black
    bool keepsUp;              // with memory
};

enum class Alpha { none, kept };

// Pixels in memory.
struct PixelLayout {
    int samples, channels;
    Alpha alpha;
};

// Floyd-Steinberg of 16s8u and of floats adds up in another order and rounds its levels.
template <class From, class To, bool differsInFloydSteinberg>
constexpr Depths depths(Reducers reducers = reducersOf < From, To, Scale::unit,
                        From::top == 1 ? Scale::unit : Scale::ofSource > (), Reducers counted = {}) {
    constexpr bool areFloats = From::top == 1, areWordsToBytes = From::bytes == 2 && To::bytes == 1;
    return {.fromBytes = From::bytes,
            .toBytes = To::bytes,
            .top = From::top,
            .reducers = reducers,
            .reducersCounted = counted,
            .wordsToBytes = areWordsToBytes ? WordsToBytes<From::isSigned, false>::convert : nullptr,
            .wordsToBytesBesideAlpha = areWordsToBytes ? WordsToBytes<From::isSigned, true>::convert : nullptr,
            .load = {nullptr, loadSamples<From, 1>, nullptr, loadSamples<From, 3>, loadSamples<From, 4>},
            .store = {nullptr, storeLevels<typename To::Sample, 1>, nullptr, storeLevels<typename To::Sample, 3>,
                      storeLevels<typename To::Sample, 4>},
            .scale = {.scale = areFloats ? To::white : 1,
                      .bias = 0,
                      .shift = To::white < From::top ? 8 : 0,
                      .offset = To::isSigned ? 32768 : 0},
            .floydSteinberg = differsInFloydSteinberg ? Diffusion::floydSteinbergByColumns : Diffusion::floydSteinberg,
            .floydSteinbergBias = differsInFloydSteinberg ? 0.5f : 0,
            .floor = areFloats ? 1.1920929e-7f : 0,
            .keepsUp = areFloats || From::bytes == To::bytes};
}

constexpr Depths from8u = depths<From8u, To8u, false>(), from16u = depths<From16u, To16u, false>(),
                 from16s = depths<From16s, To16s, false>(), from16uTo8u = depths<From16u, To8u, false>(),
                 from16sTo8u = depths<From16s, To8u, true>(),
                 from32fTo8u = depths<From32f, To8u, true>(
                     reducersOf<From32f, To8u, Scale::unit, Scale::unit>(reduceFloatsToBytes<Scale::unit>),
                     reducersOf<From32f, To8u, Scale::unitCounted, Scale::unitCounted>(reduceFloatsToBytes<Scale::unitCounted>)),
                 from32fTo16u = depths<From32f, To16u, true>(reducersOf<From32f, To16u, Scale::unit, Scale::unit>(
                     Reduction<From32f, ToLow16, Scale::unit, false>::convert)),
                 from32fTo16s = depths<From32f, To16s, true>();

constexpr PixelLayout c1{1, 1, Alpha::none}, c3{3, 3, Alpha::none}, ac4{4, 3, Alpha::kept}, c4{4, 4, Alpha::none};

// The conversion of an export. Steps count in bytes as given where there is no dither, and lose what is no whole sample
// elsewhere.
template <int maxLevels>
struct ReduceBits {
    using Extras = Request<maxLevels>;
    static constexpr bool takesStepsAsGiven = true;

    const Depths& depths;
    const PixelLayout& layout;
    bool bareAtEnd;
    Site site{1, 1};
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks{Check::pointers, Check::size, Check::extras};
};

ZEL_INLINE float percent(uint32_t x) { return float(int(x)) / 100; }

[[maybe_unused]] ZEL_NOINLINE ZelStatus reduceOrdered(const Depths& d, const Reducers& reducers, const PixelLayout& layout,
                                                      bool bareAtEnd, const ReducedRows& rows, const Levels& levels,
                                                      uint32_t percentOfNoise) {
    const bool keepsAlpha = layout.alpha == Alpha::kept;
    const ReduceRow<float> reduce = keepsAlpha ? reducers.orderedBesideAlpha : reducers.ordered;
    if (percentOfNoise == 0) {
        reduceOrdered(rows, levels, {reduce, keepsAlpha, d.fromBytes == 1 ? reducers.ordered : nullptr});
        return zelStsNoErr;
    }
    Noise noise;
    if (!noise.hasMemory()) return zelStsMemAllocErr;
    noise.fill(-percent(percentOfNoise), percent(percentOfNoise));
    reduceOrdered(rows, levels, noise, bareAtEnd, d.fromBytes, d.toBytes, reduce);
    return zelStsNoErr;
}

template <bool noisy>
ZEL_INLINE ZelStatus diffuse(Diffusion kind, const TallImage& image, const DiffusionConstants& constants,
                             const DiffusedSamples& samples) {
    switch (kind) {
        case Diffusion::floydSteinberg:
            return ZEL_LEVEL::diffuse<FloatDiffusion<Diffusion::floydSteinberg, noisy>>(image, constants, samples);
        case Diffusion::floydSteinbergByColumns:
            return ZEL_LEVEL::diffuse<FloatDiffusion<Diffusion::floydSteinbergByColumns, noisy>>(image, constants, samples);
        default:
            return ZEL_LEVEL::diffuse<FloatDiffusion<Diffusion::threeRows, noisy>>(image, constants, samples);
    }
}

[[maybe_unused]] ZEL_NOINLINE ZelStatus diffuseErrors(const Depths& d, const PixelLayout& layout, const ReducedRows& rows,
                                                      const Levels& levels, uint32_t percentOfNoise, uint32_t dither) {
    const size_t distance = ptrdiff_t(rows.toStep) < 0 ? -rows.toStep : rows.toStep;
    const TallImage image{.from = rows.from,
                          .fromStep = rows.fromStep,
                          .fromBytes = d.fromBytes,
                          .to = rows.to,
                          .toStep = rows.toStep,
                          .toBytes = d.toBytes,
                          .size = rows.size,
                          .channels = layout.channels,
                          .rowsOverlap = rows.size.height > 1 && distance < rows.samples() * size_t(d.toBytes)};
    const bool twoRows = dither == zelDitherFS;
    const DiffusionConstants constants{.levels = levels,
                                       .top = d.top,
                                       .floor = d.floor,
                                       .threshold = 0.5f * levels.step,
                                       .weights = dither == zelDitherStucki ? stucki : jarvisJudiceNinke};
    DiffusedSamples samples{.loadSamples = d.load[layout.samples],
                            .storeLevels = d.store[layout.samples],
                            .scale = d.scale,
                            .fromPixelBytes = ptrdiff_t{layout.samples} * d.fromBytes,
                            .toPixelBytes = ptrdiff_t{layout.samples} * d.toBytes,
                            .noise = nullptr,
                            .endOfFours = twoRows ? 0 : rows.size.width & ~3};
    if (twoRows) samples.scale.bias = d.floydSteinbergBias;
    const Diffusion kind = twoRows ? d.floydSteinberg : Diffusion::threeRows;
    if (percentOfNoise == 0) return diffuse<false>(kind, image, constants, samples);

    Noise noise;
    if (!noise.hasMemory()) return zelStsMemAllocErr;
    const auto bound = [&](int percents) { return float(percents) * levels.step / 100; };
    noise.fill(bound(50 - int(percentOfNoise)), bound(50 + int(percentOfNoise)));
    samples.noise = &noise;
    return diffuse<true>(kind, image, constants, samples);
}

[[maybe_unused]] ZEL_NOINLINE ZelStatus reduceBits(const Depths& d, const PixelLayout& layout, bool bareAtEnd,
                                                   const Images& images, uint32_t noise, uint32_t dither, int32_t levels) {
    ReducedRows rows{.from = images.source[0],
                     .fromStep = size_t(images.sourceStep[0]),
                     .to = images.destination[0],
                     .toStep = size_t(images.destinationStep[0]),
                     .size = images.size,
                     .channels = layout.samples,
                     .bypassing = false};
    const size_t samples = rows.samples() * size_t(rows.size.height);
    const bool keepsAlpha = layout.alpha == Alpha::kept, isOrdered = dither == zelDitherBayer && noise == 0;
    const ReduceRow<uint16_t> inIntegers = levels != 256 || !(dither == zelDitherNone || isOrdered) ? nullptr
                                           : keepsAlpha                                             ? d.wordsToBytesBesideAlpha
                                                                                                    : d.wordsToBytes;
    const bool keepsUp = d.keepsUp || inIntegers;
    const Bypass bypassing(keepsUp && exceedsCaches(samples * size_t(d.fromBytes + d.toBytes)) && rows.from != rows.to);
    rows.bypassing = bypassing;
    if (dither != zelDitherNone) {
        rows.fromStep &= -size_t(d.fromBytes);
        rows.toStep &= -size_t(d.toBytes);
    }
    if (inIntegers) {
        reduceWordsToBytes(rows, Levels(levels, d.top), inIntegers, isOrdered ? orderedAddends : nearestAddends);
        return zelStsNoErr;
    }
    const bool counts = d.reducersCounted.toNearest && levels == 256 && roundsToNearest();
    const Reducers& reducers = counts ? d.reducersCounted : d.reducers;
    if (dither == zelDitherNone) {
        reduceToNearest(rows, Levels(levels, 1), 0.5f / float(levels - 1),
                        {keepsAlpha ? reducers.toNearestBesideAlpha : reducers.toNearest, keepsAlpha,
                         d.fromBytes == 1 ? reducers.toNearest : nullptr});
        return zelStsNoErr;
    }
    switch (dither) {
        case zelDitherFS:
        case zelDitherJJN:
        case zelDitherStucki:
            return diffuseErrors(d, layout, rows, Levels(levels, d.top), noise, dither);
        case zelDitherBayer:
            return reduceOrdered(d, reducers, layout, bareAtEnd, rows, Levels(levels, d.top), noise);
        default:  // is no error
            return zelStsNoErr;
    }
}

template <int maxLevels>
ZEL_INLINE ZelStatus convert(const ReduceBits<maxLevels>& r, const Images& images, const Request<maxLevels>& request) {
    return reduceBits(r.depths, r.layout, r.bareAtEnd, images, request.noise, request.dither, request.levels);
}

ZelStatus reduce8uTo1u(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, int32_t dstBitOffset,
                       ZelSize roiSize, int32_t, int32_t, ZelDitherType dtype, uint8_t threshold) {
    return reduceToBits(pSrc, srcStep, pDst, dstStep, dstBitOffset, roiSize, uint32_t(dtype), threshold);
}

constexpr ReduceBits<256> toBytes(const Depths& depths, const PixelLayout& layout, bool bareAtEnd = false) {
    return {depths, layout, bareAtEnd};
}
constexpr ReduceBits<65536> toWords(const Depths& depths, const PixelLayout& layout, bool bareAtEnd = false) {
    return {depths, layout, bareAtEnd};
}
constexpr bool bareAtEnd = true;

}  // namespace

namespace rows {

constexpr auto zeliReduceBits_8u_C1R = toBytes(from8u, c1);
constexpr auto zeliReduceBits_8u_C3R = toBytes(from8u, c3);
constexpr auto zeliReduceBits_8u_AC4R = toBytes(from8u, ac4, bareAtEnd);
constexpr auto zeliReduceBits_8u_C4R = toBytes(from8u, c4, bareAtEnd);
constexpr auto zeliReduceBits_16u_C1R = toWords(from16u, c1);
constexpr auto zeliReduceBits_16u_C3R = toWords(from16u, c3);
constexpr auto zeliReduceBits_16u_AC4R = toWords(from16u, ac4);
constexpr auto zeliReduceBits_16u_C4R = toWords(from16u, c4, bareAtEnd);
constexpr auto zeliReduceBits_16s_C1R = toWords(from16s, c1);
constexpr auto zeliReduceBits_16s_C3R = toWords(from16s, c3);
constexpr auto zeliReduceBits_16s_AC4R = toWords(from16s, ac4);
constexpr auto zeliReduceBits_16s_C4R = toWords(from16s, c4, bareAtEnd);
constexpr auto zeliReduceBits_16u8u_C1R = toBytes(from16uTo8u, c1);
constexpr auto zeliReduceBits_16u8u_C3R = toBytes(from16uTo8u, c3);
constexpr auto zeliReduceBits_16u8u_AC4R = toBytes(from16uTo8u, ac4);
constexpr auto zeliReduceBits_16u8u_C4R = toBytes(from16uTo8u, c4, bareAtEnd);
constexpr auto zeliReduceBits_16s8u_C1R = toBytes(from16sTo8u, c1);
constexpr auto zeliReduceBits_16s8u_C3R = toBytes(from16sTo8u, c3);
constexpr auto zeliReduceBits_16s8u_AC4R = toBytes(from16sTo8u, ac4);
constexpr auto zeliReduceBits_16s8u_C4R = toBytes(from16sTo8u, c4, bareAtEnd);
constexpr auto zeliReduceBits_32f8u_C1R = toBytes(from32fTo8u, c1);
constexpr auto zeliReduceBits_32f8u_C3R = toBytes(from32fTo8u, c3);
constexpr auto zeliReduceBits_32f8u_AC4R = toBytes(from32fTo8u, ac4);
constexpr auto zeliReduceBits_32f8u_C4R = toBytes(from32fTo8u, c4, bareAtEnd);
constexpr auto zeliReduceBits_32f16u_C1R = toWords(from32fTo16u, c1);
constexpr auto zeliReduceBits_32f16u_C3R = toWords(from32fTo16u, c3);
constexpr auto zeliReduceBits_32f16u_AC4R = toWords(from32fTo16u, ac4);
constexpr auto zeliReduceBits_32f16u_C4R = toWords(from32fTo16u, c4, bareAtEnd);
constexpr auto zeliReduceBits_32f16s_C1R = toWords(from32fTo16s, c1);
constexpr auto zeliReduceBits_32f16s_C3R = toWords(from32fTo16s, c3);
constexpr auto zeliReduceBits_32f16s_AC4R = toWords(from32fTo16s, ac4);
constexpr auto zeliReduceBits_32f16s_C4R = toWords(from32fTo16s, c4, bareAtEnd);
constexpr auto zeliReduceBits_8u1u_C1R = &reduce8uTo1u;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_reduce_bits ~, 1
#define ZEL_GROUP reduce_bits
#include "frame/table.h"
