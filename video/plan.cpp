// From two descriptions to a plan: the checks, and the coefficients as exact fractions, rounded once.
#include "plan.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <type_traits>

#include "identifier.h"
#include "zelvideo.h"

namespace {

using zelv::Alpha;
using zelv::Combination;
using zelv::Model;
using zelv::Plan;
using zelv::Side;

static_assert(sizeof(Plan) <= sizeof(ZelvPlan) && std::is_trivially_copyable_v<Plan>);

enum Field { noField, layout, components, sampling, depth, alignment, matrix, range, location, weights };

constexpr int unit = 10000;  // of Kr and Kb
constexpr int floatDepth = 22;

struct Weights {
    int red, blue;
};

bool weightsOf(const ZelvFormat& f, Weights& w) {
    switch (f.matrix) {
        case zelvMatrix709:
            w = {2126, 722};
            return true;
        case zelvMatrixFcc:
            w = {3000, 1100};
            return true;
        case zelvMatrix470:
        case zelvMatrix601:
            w = {2990, 1140};
            return true;
        case zelvMatrix240:
            w = {2120, 870};
            return true;
        case zelvMatrix2020:
            w = {2627, 593};
            return true;
        case zelvMatrixYCgCo:
            w = {0, 0};
            return true;
        case zelvMatrixGiven:
            w = {f.kr, f.kb};
            return true;
        default:
            return false;
    }
}

// What the letters say: which channel stands where. -1 for a letter that there is not.
constexpr int channelOf(char letter) {
    switch (letter) {
        case 'Y':
        case 'R':
            return 0;
        case 'U':
        case 'G':
            return 1;
        case 'V':
        case 'B':
            return 2;
        case 'A':
        case 'X':
            return zelv::alphaChannel;
        default:
            return -1;
    }
}

bool readPaired(const char (&letters)[8], Side& side) {
    constexpr char orders[][5] = {"YUYV", "UYVY", "YVYU", "VYUY"};
    for (const char* order : orders)
        if (std::strcmp(letters, order) == 0) {
            side.model = Model::luma;
            side.samples = 4;
            for (int i = 3; i >= 0; --i) side.place[channelOf(letters[i])] = static_cast<uint8_t>(i);
            return true;
        }
    return false;
}

bool readComponents(const ZelvFormat& f, Side& side) {
    if (!std::memchr(f.components, 0, sizeof f.components)) return false;
    if (f.layout == zelvPaired) return readPaired(f.components, side);
    const auto count = static_cast<int>(std::strlen(f.components));
    unsigned rgb = 0, luma = 0;
    for (int i = 0; i < count; ++i) {
        const char letter = f.components[i];
        const int channel = channelOf(letter);
        if (channel < 0) return false;
        const bool isColour = letter == 'R' || letter == 'G' || letter == 'B', isAlpha = channel == zelv::alphaChannel;
        if ((rgb | luma) >> channel & 1) return false;
        if (isColour || isAlpha) rgb |= 1u << channel;
        if (!isColour) luma |= 1u << channel;
        if (isAlpha) side.alpha = letter == 'A' ? Alpha::present : Alpha::filler;
        side.place[channel] = static_cast<uint8_t>(i);
    }
    const bool three = (rgb & 7) == 7 || (luma & 7) == 7, both = (rgb & 7) != 0 && (luma & 7) != 0;
    if (both) return false;
    side.model = (rgb & 7) != 0 ? Model::rgb : three ? Model::luma : Model::gray;
    side.samples = static_cast<uint8_t>(count);
    switch (f.layout) {
        case zelvPlanar:
            return (three && side.alpha != Alpha::filler) || (count == 1 && luma == 1);
        case zelvSemiPlanar:
            return luma == 7 && side.place[0] == 0;
        case zelvInterleaved:
            return three;
        case zelvDwords:
            return three && count == 4 && side.place[zelv::alphaChannel] == 3;
        default:
            return std::strcmp(f.components, "YUV") == 0;
    }
}

bool readSampling(const ZelvFormat& f, Side& side) {
    constexpr uint8_t across[] = {0, 1, 1, 0, 2}, down[] = {0, 0, 1, 1, 0};
    if (f.sampling < zelv444 || f.sampling > zelv411) return false;
    side.sitesAcross = across[f.sampling];
    side.sitesDown = down[f.sampling];
    if (f.layout == zelvPaired || f.layout == zelvV210) return f.sampling == zelv422;
    const bool canBeAny = side.model == Model::luma && (f.layout == zelvPlanar || f.layout == zelvSemiPlanar);
    return canBeAny || f.sampling == zelv444;
}

bool readDepth(const ZelvFormat& f, Side& side) {
    if (f.layout == zelvDwords || f.layout == zelvV210) {
        side.depth = 10;
        side.alphaDepth = 2;
        return f.depth == 10;
    }
    side.isFloat = f.depth == 32;
    side.depth = side.alphaDepth = static_cast<uint8_t>(side.isFloat ? 16 : f.depth);
    if (side.isFloat) return side.model == Model::rgb;
    return f.depth == 8 || f.depth == 9 || f.depth == 10 || f.depth == 12 || f.depth == 14 || f.depth == 16;
}

// The first field that is refused.
Field read(const ZelvFormat& f, Side& side) {
    if (f.layout < zelvPlanar || f.layout > zelvV210) return layout;
    side.layout = static_cast<zelv::Layout>(f.layout);
    if (!readComponents(f, side)) return components;
    if (!readSampling(f, side)) return sampling;
    if (!readDepth(f, side)) return depth;
    const bool hasSpareBits = f.layout != zelvDwords && f.layout != zelvV210 && !side.isFloat && f.depth > 8;
    if (f.alignment != zelvLowBits && !(f.alignment == zelvHighBits && hasSpareBits)) return alignment;
    side.shift = static_cast<uint8_t>(f.alignment == zelvHighBits ? 16 - side.depth : 0);
    Weights w;
    if (side.model == Model::rgb ? f.matrix != zelvMatrixRgb : !weightsOf(f, w)) return matrix;
    if ((f.range != zelvLimited && f.range != zelvFull) || (side.isFloat && f.range != zelvFull)) return range;
    const bool hasSites = side.sitesAcross + side.sitesDown > 0;
    if (f.location < zelvLeft || f.location > (hasSites ? zelvTopLeft : 0)) return location;
    side.leftSited = f.location != zelvCentre;
    side.topSited = f.location == zelvTopLeft;
    const bool given = f.matrix == zelvMatrixGiven;
    if (given ? f.kr < 0 || f.kb < 0 || f.kr > 7500 || f.kb > 7500 || f.kr + f.kb > 7500 : f.kr != 0 || f.kb != 0) return weights;
    side.planes = static_cast<uint8_t>(f.layout == zelvPlanar ? side.samples : f.layout == zelvSemiPlanar ? 2 : 1);
    return noField;
}

// A matrix of integers over a denominator for each row and one for all.
struct Matrix {
    int64_t of[3][3], row[3], all;
};

constexpr Matrix same = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {1, 1, 1}, 1};

Matrix toRgb(const ZelvFormat& f) {
    if (f.matrix == zelvMatrixRgb) return same;
    if (f.matrix == zelvMatrixYCgCo) return {{{1, -1, 1}, {1, 1, 0}, {1, -1, -1}}, {1, 1, 1}, 1};
    Weights w{};
    weightsOf(f, w);
    const int64_t r = w.red, b = w.blue, g = unit - r - b;
    return {{{g * unit, 0, 2 * (unit - r) * g},
             {g * unit, -2 * b * (unit - b), -2 * r * (unit - r)},
             {g * unit, 2 * (unit - b) * g, 0}},
            {1, 1, 1},
            g * unit};
}

Matrix fromRgb(const ZelvFormat& f) {
    if (f.matrix == zelvMatrixRgb) return same;
    if (f.matrix == zelvMatrixYCgCo) return {{{1, 2, 1}, {-1, 2, -1}, {2, 0, -2}}, {4, 4, 4}, 1};
    Weights w{};
    weightsOf(f, w);
    const int64_t r = w.red, b = w.blue, g = unit - r - b;
    return {{{r, g, b}, {-r, -g, unit - b}, {unit - r, -g, -b}}, {unit, 2 * (unit - b), 2 * (unit - r)}, 1};
}

bool sameMatrix(const ZelvFormat& a, const ZelvFormat& b) {
    Weights v{}, w{};
    return weightsOf(a, v) && weightsOf(b, w) && v.red == w.red && v.blue == w.blue &&
           (a.matrix == zelvMatrixYCgCo) == (b.matrix == zelvMatrixYCgCo);
}

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix p{{}, {a.row[0], a.row[1], a.row[2]}, b.all};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int n = 0; n < 3; ++n) p.of[i][j] += a.of[i][n] * b.of[n][j];
    return p;
}

// The integer nearest to number / divisor * 2^bits, halves away from zero. The result has at most 31 bits, the divisor 60. As
// many bits come of a division as the rest leaves free.
int32_t scaled(int64_t number, uint64_t divisor, int bits) {
    auto rest = static_cast<uint64_t>(number < 0 ? -number : number);
    uint64_t quotient = rest / divisor;
    rest %= divisor;
    while (bits > 0 && rest != 0) {
        const int step = std::min(bits, std::countl_zero(rest));
        rest <<= step;
        quotient = quotient << step | rest / divisor;
        rest %= divisor;
        bits -= step;
    }
    quotient <<= bits;
    quotient += rest << 1 >= divisor ? 1 : 0;
    const auto size = static_cast<int32_t>(quotient);
    return number < 0 ? -size : size;
}

// How a channel counts: the sample of 0 and the steps from 0 to 1, or from -1/2 to 1/2.
struct Scale {
    int32_t zero, steps;
};

Scale scaleOf(const ZelvFormat& f, const Side& side, int channel, int depth) {
    const bool isChroma = channel != 0 && side.model == Model::luma;
    const int32_t zero = isChroma ? 1 << (depth - 1) : f.range == zelvFull ? 0 : 16 << (depth - 8);
    if (f.range == zelvFull) return {zero, (1 << depth) - 1};
    return {zero, (isChroma && f.matrix != zelvMatrixYCgCo ? 224 : 219) << (depth - 8)};
}

constexpr int32_t middle = 32768;

// The source's in samples that fill a word.
Scale filled(const ZelvFormat& f, const Side& side, int channel) {
    const Scale s = scaleOf(f, side, channel, side.depth);
    return {s.zero << (16 - side.depth), s.steps << (16 - side.depth)};
}

Scale written(const ZelvFormat& f, const Side& side, int channel) {
    return side.isFloat ? Scale{0, 1 << floatDepth} : scaleOf(f, side, channel, side.depth);
}

constexpr int lowBits = 15;

void split(int32_t coefficient, int16_t& high, int16_t& low) {
    high = static_cast<int16_t>((coefficient + (1 << (lowBits - 1))) >> lowBits);
    low = static_cast<int16_t>(coefficient - high * (1 << lowBits));
}

constexpr int32_t whole(int32_t coefficient) { return (coefficient + (1 << (lowBits - 1))) >> lowBits << lowBits; }

// The greatest coefficient takes what rounding has left over.
void holdSum(int32_t (&row)[3], int32_t sum) {
    int greatest = 0;
    const auto size = [](int32_t x) { return x < 0 ? -x : x; };
    for (int j = 1; j < 3; ++j)
        if (size(row[j]) > size(row[greatest])) greatest = j;
    row[greatest] += sum - row[0] - row[1] - row[2];
}

class Numbers {
  public:
    Numbers(const ZelvFormat& from, const ZelvFormat& to, Plan& plan) : from_(from), to_(to), plan_(plan) {
        depth_ = plan.out.isFloat ? floatDepth : plan.out.depth;
    }

    void write() {
        const bool fromRgbToLuma = plan_.in.model == Model::rgb && plan_.out.model != Model::rgb;
        const bool isRounded8 = depth_ == 8 && !plan_.ordered;
        const Matrix m = matrix();
        scale_ = 13;
        if (fromRgbToLuma && isRounded8) {
            scale_ = 15;
            plan_.allAreWhole = computed(m, true);
        }
        if (!plan_.allAreWhole) {
            scale_ = 13;
            computed(m, fromRgbToLuma);
        }
        plan_.firstIsWhole = plan_.allAreWhole || (isRounded8 && !fromRgbToLuma);
        for (int i = 0; i < rows(); ++i)
            for (int j = 0; j < 3; ++j) {
                const bool isFirst = j == 0 || plan_.in.model == Model::rgb;
                split(plan_.firstIsWhole && isFirst ? whole(c_[i][j]) : c_[i][j], plan_.sums.high[i][j], plan_.sums.low[i][j]);
            }
        plan_.sums.shift = static_cast<uint8_t>(shift());
        writeOffsets();
        writeAlpha();
    }

  private:
    // 2^shift is the destination's unit.
    int shift() const { return scale_ + 16 - depth_; }
    int rows() const { return plan_.out.model == Model::gray ? 1 : 3; }

    Matrix matrix() {
        const bool fromGray = plan_.in.model == Model::gray, toRgbModel = plan_.out.model == Model::rgb;
        const bool alike = (plan_.in.model == Model::rgb) == toRgbModel && (toRgbModel || sameMatrix(from_, to_));
        plan_.combination = fromGray && toRgbModel ? Combination::gray
                            : fromGray || alike    ? Combination::channels
                                                   : Combination::matrix;
        if (plan_.combination == Combination::gray) return {{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}, {1, 1, 1}, 1};
        return plan_.combination == Combination::channels ? same : product(fromRgb(to_), toRgb(from_));
    }

    // Whether the high parts fit words.
    bool computed(const Matrix& m, bool holdsSums) {
        bool fits = true;
        for (int i = 0; i < rows(); ++i) {
            const int64_t steps = written(to_, plan_.out, i).steps;
            for (int j = 0; j < 3; ++j) {
                const Scale source = filled(from_, plan_.in, j);
                const auto divisor = static_cast<uint64_t>(m.row[i] * m.all * source.steps);
                c_[i][j] = m.of[i][j] == 0 ? 0 : scaled(m.of[i][j] * steps, divisor, shift() + lowBits);
                if (scale_ == 15) c_[i][j] = whole(c_[i][j]);
            }
            if (holdsSums) {
                const Scale source = filled(from_, plan_.in, 0);
                int32_t sum = scaled(steps, static_cast<uint64_t>(source.steps), shift() + lowBits);
                if (i > 0 && plan_.out.model == Model::luma) sum = 0;
                holdSum(c_[i], scale_ == 15 ? whole(sum) : sum);
            }
            for (const int32_t c : c_[i]) fits = fits && c < 32767 << lowBits && c > -(32767 << lowBits);
        }
        return fits;
    }

    void writeOffsets() {
        for (int i = 0; i < rows(); ++i) {
            const Scale source = filled(from_, plan_.in, 0), destination = written(to_, plan_.out, i);
            const bool isChroma = i > 0 && plan_.out.model == Model::luma;
            const int32_t away = (destination.zero - (1 << (depth_ - 1))) * (1 << shift());
            const int32_t ofMiddle =
                scaled(int64_t{destination.steps} * (middle - source.zero), static_cast<uint64_t>(source.steps), shift());
            plan_.sums.offset[i] = isChroma ? 0 : away + ofMiddle;
        }
    }

    void writeAlpha() {
        const Side &in = plan_.in, &out = plan_.out;
        const int depth = out.isFloat ? floatDepth : out.alphaDepth, shift = 13 + 16 - depth;
        const int32_t sourceSteps = 65536 - (1 << (16 - in.alphaDepth)), steps = out.isFloat ? 1 << floatDepth : (1 << depth) - 1;
        split(scaled(steps, static_cast<uint64_t>(sourceSteps), shift + lowBits), plan_.sums.high[3][0], plan_.sums.low[3][0]);
        plan_.sums.offset[3] =
            scaled(int64_t{steps} * middle, static_cast<uint64_t>(sourceSteps), shift) - (1 << (depth - 1)) * (1 << shift);
        plan_.sums.alphaShift = static_cast<uint8_t>(shift);
    }

    const ZelvFormat &from_, &to_;
    Plan& plan_;
    int depth_, scale_ = 13;
    int32_t c_[3][3];
};

// Binary places that chroma gets on the way to pixels and on to the other side's sites, in one direction. A filter's weights are
// parts of a power of two; so is the distance of a pixel from a site, which is even where sites coincide with pixels.
int placesUp(int bits, bool sited, bool linear) { return linear && bits > 0 ? bits + (sited ? 0 : 1) : 0; }
int placesDown(int bits, bool sited, bool weighed) { return sited && weighed ? 2 * bits : bits; }

void compareGrids(Plan& plan) {
    const Side &in = plan.in, &out = plan.out;
    const bool hasSites = in.model == Model::luma;  // RGB has those of pixels
    const auto same = [&](int bits, int otherBits, bool sited, bool otherSited) {
        return hasSites ? bits == otherBits && (bits == 0 || sited == otherSited) : otherBits == 0;
    };
    plan.sameAcross = same(in.sitesAcross, out.sitesAcross, in.leftSited, out.leftSited);
    plan.sameDown = same(in.sitesDown, out.sitesDown, in.topSited, out.topSited);
    const int upAcross = hasSites ? placesUp(in.sitesAcross, in.leftSited, plan.linear) : 0;
    const int upDown = hasSites ? placesUp(in.sitesDown, in.topSited, plan.linear) : 0;
    const int across = plan.sameAcross ? 0 : upAcross + placesDown(out.sitesAcross, out.leftSited, plan.sited);
    const int down = plan.sameDown ? 0 : upDown + placesDown(out.sitesDown, out.topSited, plan.sited);
    const int ofPixels = plan.combination == Combination::matrix ? upAcross + upDown : 0;
    const int ofSites = in.model != Model::gray && out.model == Model::luma ? across + down : 0;
    plan.isFine = (in.isFloat ? 16 : in.depth) + std::max(ofPixels, ofSites) > 16;
}

constexpr bool isOneOf2(int32_t x) { return x == 0 || x == 1; }

}  // namespace

ZelStatus zelvMakePlan(ZelvPlan* pPlan, const ZelvFormat* pSource, const ZelvFormat* pDestination, const ZelvOptions* pOptions) {
    if (!pPlan || !pSource || !pDestination) return zelStsNullPtrErr;
    Plan plan{};
    if (const Field field = read(*pSource, plan.in)) return zelvStsSourceLayoutErr + 1 - field;
    if (const Field field = read(*pDestination, plan.out)) return zelvStsDestinationLayoutErr + 1 - field;
    const ZelvOptions options = pOptions ? *pOptions : ZelvOptions{};
    if (!isOneOf2(options.up)) return zelvStsUpErr;
    if (!isOneOf2(options.down)) return zelvStsDownErr;
    if (!isOneOf2(options.dither)) return zelvStsDitherErr;
    plan.linear = options.up == zelvLinear;
    plan.sited = options.down == zelvSited;
    plan.ordered = options.dither == zelvOrdered && !plan.out.isFloat;
    plan.identifier = zelv::planIdentifier;
    Numbers(*pSource, *pDestination, plan).write();
    compareGrids(plan);
    std::memset(pPlan, 0, sizeof *pPlan);
    std::memcpy(pPlan, &plan, sizeof plan);
    return zelStsNoErr;
}
