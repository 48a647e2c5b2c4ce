// Gamma: the three colour samples of every pixel through a transfer curve or its inverse, as bytes, 16-bit words and floats. A
// rule replaces vectors of samples, whatever pixel they belong to; the layout says where the vectors lie and which samples are
// alpha.
#include "frame/memory.h"
#include "frame/parameters.h"
#include "frame/passes.h"
#include "intensity/gamma_curve.h"
#include "intensity/gamma_power.h"
#include "simd/samples.h"
#include "zelcc/intensity.h"

namespace zel::ZEL_LEVEL {
namespace {

enum class Pixels { withoutAlpha, withAlpha };

// Bytes: a table of all results.
template <class Curve>
class ByteGamma {
  public:
    using Constants = NoConstants;
    using Element = uint8_t;

    ZEL_INLINE explicit ByteGamma(const Constants&) {}

    template <int count>
    ZEL_INLINE void replace(Bytes (&samples)[count]) const {
        results_.replace(samples);
    }

  private:
    ByteLookup<curveOfBytes<Curve>> results_;
};

// Words and floats: if bounds of a result have the same single-precision number, the result has it too. Where they have not, one
// sample in thousands, the rule of single samples decides.
struct Bounds {
    Doubles low, high;
};

// Results on a scale that has so many units between black and white, from an offset on.
template <class Curve>
class ScaledCurve {
  public:
    ZEL_INLINE ScaledCurve(double unit, double offset)
        : offset_(splatDouble(offset)),
          lowFactor_(splatDouble(Curve::factor * unit * (1 - powerError))),
          highFactor_(splatDouble(Curve::factor * unit * (1 + powerError))),
          lowTerm_(splatDouble(offset - Curve::subtrahend * unit - roundings(unit, offset))),
          highTerm_(splatDouble(offset - Curve::subtrahend * unit + roundings(unit, offset))) {}

    // Of a value, and what the line gives for it before the offset.
    ZEL_INLINE Bounds operator()(Doubles v, Doubles line) const {
        const Doubles u = Curve::base(v), power = powers_(u), result = line + offset_;
        // Outside the table the upper bound is no number and differs from the lower one.
        const auto outside = (Doubles) ~(u < endOfBases);
        return {v < Curve::knee ? result : power * lowFactor_ + lowTerm_,
                either(v < Curve::knee ? result : power * highFactor_ + highTerm_, outside)};
    }

  private:
    // More than all roundings of either way to a result make up but for those that grow with the power.
    static double roundings(double unit, double offset) { return 0x1p-49 * (unit + __builtin_fabs(offset)); }

    ZEL_INLINE static Doubles either(Doubles a, Doubles b) { return (Doubles)((UQwords)a | (UQwords)b); }

    Doubles offset_, lowFactor_, highFactor_, lowTerm_, highTerm_;
    Powers<Curve> powers_;
};

template <class Curve>
class WordGamma {
  public:
    using Constants = NoConstants;
    using Element = uint16_t;

    ZEL_INLINE explicit WordGamma(const Constants&) : curve_(65535, 0.5) {}

    ZEL_INLINE Bytes replaced(Bytes x, Pixels) const {
        const auto words = (UWords)x;
        const Results low = half((Dwords)interleaveLow((Words)x, Words{})),
                      high = half((Dwords)interleaveHigh((Words)x, Words{}));
        if ((low.doubtful | high.doubtful) != 0) return (Bytes)bySingles(words);
        return (Bytes)packWords(low.words << 16 >> 16, high.words << 16 >> 16);
    }

  private:
    struct Results {
        Dwords words;
        unsigned doubtful;
    };

    ZEL_INLINE Results half(Dwords x) const {
        const Bounds a = halfOfHalf(widened<0>(x)), b = halfOfHalf(widened<1>(x));
        const Floats f = narrowed(a.low, b.low);
        const Dwords r = truncated(f), tie = (Dwords)(f == __builtin_convertvector(r, Floats)) & r & 1;
        return {r - tie, differing(f, narrowed(a.high, b.high))};
    }
    ZEL_INLINE Bounds halfOfHalf(Doubles x) const { return curve_(x * wordUnit, x * Curve::slope); }
    ZEL_NOINLINE static UWords bySingles(UWords x) {
        for (int i = 0; i < vectorBytes / 2; ++i) x[i] = gammaOfWord<Curve>(x[i]);
        return x;
    }

    ScaledCurve<Curve> curve_;
};

template <class Curve>
class FloatGamma {
  public:
    using Constants = GammaRange;
    using Element = float;

    ZEL_INLINE explicit FloatGamma(const GammaRange& range)
        : range_(range),
          bottom_(splatFloat(range.bottom)),
          perWidth_(splatDouble(1.0 / double(range.width))),
          curve_(range.width, range.bottom) {}

    ZEL_INLINE Bytes replaced(Bytes x, Pixels pixels) const {
        const auto floats = (Floats)x;
        const Floats d = floats - bottom_;
        const Bounds a = half(widened<0>(d)), b = half(widened<1>(d));
        const Floats low = narrowed(a.low, b.low), high = narrowed(a.high, b.high);
        const unsigned doubtful = differing(low, high) & (pixels == Pixels::withAlpha ? 0x7777 : 0xffff);
        return (Bytes)(doubtful == 0 ? low : withSingles(low, floats, doubtful, range_));
    }

  private:
    ZEL_INLINE Bounds half(Doubles d) const { return curve_(d * perWidth_, d * Curve::slope); }
    ZEL_NOINLINE static Floats withSingles(Floats results, Floats x, unsigned which, GammaRange range) {
        for (int i = 0; i < vectorBytes / 4; ++i)
            if (which >> i & 1) results[i] = gammaOfFloat<Curve>(x[i], range);
        return results;
    }

    GammaRange range_;
    Floats bottom_;
    Doubles perWidth_;
    ScaledCurve<Curve> curve_;
};

// How the samples lie, and how many vectors of each stream are replaced at a time: a whole number of pixels.
struct Form {
    int streams, samples;  // a pixel has in each stream
    int vectors;
    Pixels pixels;
};
constexpr Form packed3{1, 3, 3, Pixels::withoutAlpha}, packed4{1, 4, 2, Pixels::withAlpha}, planes{3, 1, 1, Pixels::withoutAlpha};

template <class Element, const Form& form>
constexpr int sitesOf = form.vectors* vectorBytes / (form.samples * int{sizeof(Element)});

template <Pixels pixels, class Element>
ZEL_INLINE void storeSamples(Destination to, Bytes samples) {
    if constexpr (pixels == Pixels::withAlpha)
        storeThreeOfFour<sizeof(Element)>(to, samples);
    else
        storeVector(to, samples);
}

// All vectors of a block at a time.
template <class Rule, const Form& form>
class BlockKernel {
  public:
    using Constants = typename Rule::Constants;
    using Element = typename Rule::Element;
    static constexpr int sites = sitesOf<Element, form>;

    ZEL_INLINE explicit BlockKernel(const Constants& k) : rule_(k) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        constexpr int count = form.streams * form.vectors;
        const auto start = [&](int i) { return (block * form.vectors + unsigned(i % form.vectors)) * vectorBytes; };
        Bytes samples[count];
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA { samples[i] = loadBytes(row.in[i / form.vectors] + start(i)); });
        rule_.replace(samples);
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA {
            storeSamples<form.pixels, Element>(row.out[i / form.vectors] + start(i), samples[i]);
        });
    }

  private:
    Rule rule_;
};

// Rules of so many operations that one code serves all forms: a question at each vector costs nothing beside them.
template <class Rule>
ZEL_NOINLINE void replaceVectors(const typename Rule::Constants& k, const uint8_t* from, Destination to, size_t vectors,
                                 Pixels pixels) {
    using Element = typename Rule::Element;
    const Rule rule(k);
    for (size_t i = 0; i < vectors; ++i) {
        const Bytes samples = rule.replaced(loadBytes(from + i * vectorBytes), pixels);
        if (pixels == Pixels::withAlpha)
            storeSamples<Pixels::withAlpha, Element>(to + i * vectorBytes, samples);
        else
            storeSamples<Pixels::withoutAlpha, Element>(to + i * vectorBytes, samples);
    }
}

template <class Rule, const Form& form>
struct StreamKernel {
    using Constants = typename Rule::Constants;
    static constexpr int sites = sitesOf<typename Rule::Element, form>;

    static void blocks(const Constants& k, const Row& row, size_t count) {
        for (int i = 0; i < form.streams; ++i) replaceVectors<Rule>(k, row.in[i], row.out[i], count * form.vectors, form.pixels);
    }
};

// Words by a table of all results, four at a time.
template <const Form& form>
struct TableKernel {
    using Constants = uint16_t;
    static constexpr int sites = form.vectors * 4 / form.samples;

    const uint16_t* table;

    ZEL_INLINE explicit TableKernel(const uint16_t& firstResult) : table(&firstResult) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        unrolled<form.streams * form.vectors>([&](int i) ZEL_INLINE_LAMBDA {
            const size_t start = (block * form.vectors + unsigned(i % form.vectors)) * 8;
            const uint8_t* from = row.in[i / form.vectors] + start;
            uint8_t* to = row.out[i / form.vectors] + start;
            uint64_t words;
            __builtin_memcpy(&words, from, 8);
            const auto result = [&](int place) { return uint64_t{table[words >> 16 * place & 0xffff]} << 16 * place; };
            words = result(0) | result(1) | result(2) | (form.pixels == Pixels::withAlpha ? alphaIn(to) : result(3));
            __builtin_memcpy(to, &words, 8);
        });
    }

  private:
    ZEL_INLINE static uint64_t alphaIn(const uint8_t* pixel) {
        uint16_t alpha;
        __builtin_memcpy(&alpha, pixel + 6, 2);
        return uint64_t{alpha} << 48;
    }
};

constexpr Checks stepsLast{Check::pointers, Check::planes, Check::size, Check::steps};

template <class Element, const Form& form>
constexpr Conversion conversion(Kernel kernel, Checks checks = stepsLast) {
    Layout layout{form.streams, {}};
    for (int i = 0; i < form.streams; ++i)
        layout.streams[i] = {.plane = uint8_t(i), .bytes = uint8_t(form.samples * sizeof(Element))};
    return {.site = {1, 1},
            .from = layout,
            .to = layout,
            .block = kernel,
            .checks = checks,
            .keepsAlpha = form.pixels == Pixels::withAlpha};
}

template <class Curve, const Form& form>
constexpr Conversion bytes() {
    return conversion<uint8_t, form>(withoutConstants<BlockKernel<ByteGamma<Curve>, form>>);
}

// Large images of words take a table of all results, in memory of the call.
struct WordConversion : Conversion {
    Kernel byTable;
    void (*replaceAll)(uint16_t* words, size_t count);
};

constexpr int wordValues = 65536;
constexpr uint64_t directSamples = 65536;  // at most

template <class Curve>
void replaceAll(uint16_t* words, size_t count) {
    const auto bytes = reinterpret_cast<uint8_t*>(words);
    replaceVectors<WordGamma<Curve>>(noConstants, bytes, Destination{bytes, false}, count * 2 / vectorBytes,
                                     Pixels::withoutAlpha);
}

[[maybe_unused]] ZEL_INLINE ZelStatus convert(const WordConversion& c, const Images& images, Nothing) {
    const Conversion& direct = c;
    if (3 * uint64_t(images.size.width) * uint64_t(images.size.height) <= directSamples) {
        convert(direct, images);
        return zelStsNoErr;
    }
    const CallMemory<uint16_t> table(wordValues);
    if (!table.get()) return zelStsMemAllocErr;
    for (int i = 0; i < wordValues; ++i) table.get()[i] = static_cast<uint16_t>(i);
    c.replaceAll(table.get(), wordValues);
    Conversion tabulated = c;
    tabulated.block = c.byTable;
    tabulated.block.constants = table.get();
    convert(tabulated, images);
    return zelStsNoErr;
}

template <class Curve, const Form& form>
constexpr WordConversion words() {
    return {conversion<uint16_t, form>(withoutConstants<StreamKernel<WordGamma<Curve>, form>>), parametric<TableKernel<form>>,
            replaceAll<Curve>};
}

struct RangeExtras {
    float bottom, top;

    ZelStatus check() const { return 0.0f >= top - bottom ? zelStsRangeErr : zelStsNoErr; }
};

constexpr GammaRange rangeOf(const RangeExtras& extras) { return {extras.bottom, extras.top - extras.bottom}; }

template <class Curve, const Form& form>
constexpr Parametric<GammaRange, RangeExtras> floats() {
    return {conversion<float, form>(parametric<StreamKernel<FloatGamma<Curve>, form>>,
                                    {Check::extras, Check::pointers, Check::planes, Check::size, Check::steps}),
            rangeOf};
}

}  // namespace

namespace rows {

constexpr auto zeliGammaFwd_8u_C3R = bytes<GammaForward, packed3>();
constexpr auto zeliGammaFwd_8u_C3IR = bytes<GammaForward, packed3>();
constexpr auto zeliGammaFwd_8u_AC4R = bytes<GammaForward, packed4>();
constexpr auto zeliGammaFwd_8u_AC4IR = bytes<GammaForward, packed4>();
constexpr auto zeliGammaFwd_8u_P3R = bytes<GammaForward, planes>();
constexpr auto zeliGammaFwd_8u_IP3R = bytes<GammaForward, planes>();
constexpr auto zeliGammaFwd_16u_C3R = words<GammaForward, packed3>();
constexpr auto zeliGammaFwd_16u_C3IR = words<GammaForward, packed3>();
constexpr auto zeliGammaFwd_16u_AC4R = words<GammaForward, packed4>();
constexpr auto zeliGammaFwd_16u_AC4IR = words<GammaForward, packed4>();
constexpr auto zeliGammaFwd_16u_P3R = words<GammaForward, planes>();
constexpr auto zeliGammaFwd_16u_IP3R = words<GammaForward, planes>();
constexpr auto zeliGammaFwd_32f_C3R = floats<GammaForward, packed3>();
constexpr auto zeliGammaFwd_32f_C3IR = floats<GammaForward, packed3>();
constexpr auto zeliGammaFwd_32f_AC4R = floats<GammaForward, packed4>();
constexpr auto zeliGammaFwd_32f_AC4IR = floats<GammaForward, packed4>();
constexpr auto zeliGammaFwd_32f_P3R = floats<GammaForward, planes>();
constexpr auto zeliGammaFwd_32f_IP3R = floats<GammaForward, planes>();

constexpr auto zeliGammaInv_8u_C3R = bytes<GammaInverse, packed3>();
constexpr auto zeliGammaInv_8u_C3IR = bytes<GammaInverse, packed3>();
constexpr auto zeliGammaInv_8u_AC4R = bytes<GammaInverse, packed4>();
constexpr auto zeliGammaInv_8u_AC4IR = bytes<GammaInverse, packed4>();
constexpr auto zeliGammaInv_8u_P3R = bytes<GammaInverse, planes>();
constexpr auto zeliGammaInv_8u_IP3R = bytes<GammaInverse, planes>();
constexpr auto zeliGammaInv_16u_C3R = words<GammaInverse, packed3>();
constexpr auto zeliGammaInv_16u_C3IR = words<GammaInverse, packed3>();
constexpr auto zeliGammaInv_16u_AC4R = words<GammaInverse, packed4>();
constexpr auto zeliGammaInv_16u_AC4IR = words<GammaInverse, packed4>();
constexpr auto zeliGammaInv_16u_P3R = words<GammaInverse, planes>();
constexpr auto zeliGammaInv_16u_IP3R = words<GammaInverse, planes>();
constexpr auto zeliGammaInv_32f_C3R = floats<GammaInverse, packed3>();
constexpr auto zeliGammaInv_32f_C3IR = floats<GammaInverse, packed3>();
constexpr auto zeliGammaInv_32f_AC4R = floats<GammaInverse, packed4>();
constexpr auto zeliGammaInv_32f_AC4IR = floats<GammaInverse, packed4>();
constexpr auto zeliGammaInv_32f_P3R = floats<GammaInverse, planes>();
constexpr auto zeliGammaInv_32f_IP3R = floats<GammaInverse, planes>();

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_gamma ~, 1
#define ZEL_GROUP gamma
#include "frame/table.h"
