#include "video/model.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace video {
namespace {

using Real = long double;

int floorDivide(int64_t a, int64_t b) { return static_cast<int>(a >= 0 ? a / b : -((-a + b - 1) / b)); }
int rounded(int64_t a, int64_t b) { return floorDivide(2 * a + b, 2 * b); }

char letterOf(const ZelvFormat& f, Channel c) {
    if (c == alpha) return has(f, 'A') ? 'A' : 'X';
    return (isRgb(f) ? "RGB" : "YUV")[c];
}
int placeOf(const ZelvFormat& f, Channel c) {
    const char* found = std::strchr(f.components, letterOf(f, c));
    return found ? static_cast<int>(found - f.components) : -1;
}
int bytesOf(const ZelvFormat& f) { return f.depth == 32 ? 4 : f.depth > 8 ? 2 : 1; }
bool isChroma(const ZelvFormat& f, Channel c) { return !isRgb(f) && (c == second || c == third); }

// Where a sample is: a container of some bytes, and its bits there.
struct Place {
    int plane, offset, bytes, shift, bits;
};

Place placeIn(const ZelvFormat& f, Channel c, int x) {
    const int bytes = bytesOf(f), place = placeOf(f, c), shift = f.alignment == zelvHighBits ? 16 - f.depth : 0;
    switch (f.layout) {
        case zelvPlanar:
            return {place, x * bytes, bytes, shift, f.depth};
        case zelvSemiPlanar:
            if (c == first) return {0, x * bytes, bytes, shift, f.depth};
            return {1, (2 * x + place - 1) * bytes, bytes, shift, f.depth};
        case zelvInterleaved:
            return {0, (x * static_cast<int>(std::strlen(f.components)) + place) * bytes, bytes, shift, f.depth};
        case zelvPaired: {
            const int inPair = c == first ? place + x % 2 * 2 : place, pair = c == first ? x / 2 : x;
            return {0, (pair * 4 + inPair) * bytes, bytes, shift, f.depth};
        }
        case zelvDwords:
            return {0, x * 4, 4, 10 * place, c == alpha ? 2 : 10};
        default: {
            const int number = c == first ? 2 * x + 1 : c == second ? 4 * x : 4 * x + 2;
            return {0, number / 3 * 4, 4, number % 3 * 10, 10};
        }
    }
}

uint32_t mask(int bits) { return bits == 32 ? ~0u : (1u << bits) - 1; }

// Real numbers behind samples.
struct Scale {
    Real zero, steps;
};
Scale scaleOf(const ZelvFormat& f, Channel c, int depth) {
    const Real unit = std::ldexp(Real{1}, depth - 8);
    const Real steps = f.range == zelvFull                             ? std::ldexp(Real{1}, depth) - 1
                       : isChroma(f, c) && f.matrix != zelvMatrixYCgCo ? 224 * unit
                                                                       : 219 * unit;
    return {isChroma(f, c) ? 128 * unit : f.range == zelvFull ? 0 : 16 * unit, steps};
}

struct Weights {
    Real r, b;
};
Weights weightsOf(const ZelvFormat& f) {
    const auto parts = [](int r, int b) { return Weights{Real(r) / 10000, Real(b) / 10000}; };
    switch (f.matrix) {
        case zelvMatrix709:
            return parts(2126, 722);
        case zelvMatrixFcc:
            return parts(3000, 1100);
        case zelvMatrix240:
            return parts(2120, 870);
        case zelvMatrix2020:
            return parts(2627, 593);
        case zelvMatrixGiven:
            return parts(f.kr, f.kb);
        default:
            return parts(2990, 1140);
    }
}

using Matrix = std::array<std::array<Real, 3>, 3>;
constexpr Matrix unity{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

Matrix encoder(const ZelvFormat& f) {
    if (isRgb(f)) return unity;
    if (f.matrix == zelvMatrixYCgCo) return {{{0.25L, 0.5L, 0.25L}, {-0.25L, 0.5L, -0.25L}, {0.5L, 0, -0.5L}}};
    const auto [r, b] = weightsOf(f);
    const Real g = 1 - r - b, u = 2 * (1 - b), v = 2 * (1 - r);
    return {{{r, g, b}, {-r / u, -g / u, (1 - b) / u}, {(1 - r) / v, -g / v, -b / v}}};
}
Matrix decoder(const ZelvFormat& f) {
    if (isRgb(f)) return unity;
    if (f.matrix == zelvMatrixYCgCo) return {{{1, -1, 1}, {1, 1, 0}, {1, -1, -1}}};
    const auto [r, b] = weightsOf(f);
    const Real g = 1 - r - b;
    return {{{1, 0, 2 * (1 - r)}, {1, -2 * b * (1 - b) / g, -2 * r * (1 - r) / g}, {1, 2 * (1 - b), 0}}};
}

bool sameMatrix(const ZelvFormat& a, const ZelvFormat& b) {
    if (isRgb(a) || isRgb(b)) return isRgb(a) && isRgb(b);
    const Weights v = weightsOf(a), w = weightsOf(b);
    const bool x = a.matrix == zelvMatrixYCgCo, y = b.matrix == zelvMatrixYCgCo;
    return x == y && (x || (v.r == w.r && v.b == w.b));
}

Matrix between(const ZelvFormat& from, const ZelvFormat& to) {
    if (isGray(from)) return isRgb(to) ? Matrix{{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}} : unity;
    if (sameMatrix(from, to)) return unity;
    const Matrix a = encoder(to), b = decoder(from);
    Matrix m{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) m[i][j] += a[i][k] * b[k][j];
    return m;
}

int depthOf(const ZelvFormat& f, bool source) { return f.depth == 32 ? (source ? 16 : 22) : f.depth; }

struct Term {
    int64_t high, low;
};

// The sums, with their coefficients as the page rounds them.
struct Sums {
    Term terms[3][3];
    int64_t offset[3];
    int shift;
};

Sums sumsOf(const ZelvFormat& from, const ZelvFormat& to, const ZelvOptions& options) {
    const Matrix m = between(from, to);
    const int depth = depthOf(to, false), sourceDepth = depthOf(from, true);
    const bool isRounded8 = depth == 8 && options.dither == zelvRound, encodes = isRgb(from) && !isRgb(to);
    const int rows = isGray(to) ? 1 : 3;
    const auto coefficients = [&](int scale, auto& c) {
        for (int i = 0; i < rows; ++i) {
            const Scale out = depth == 22 ? Scale{0, 4194304} : scaleOf(to, Channel(i), depth);
            const Real unit = std::ldexp(Real{1}, scale + 31 - depth);
            Real gain = 0;
            for (int j = 0; j < 3; ++j) {
                const Real in = std::ldexp(scaleOf(from, Channel(j), sourceDepth).steps, 16 - sourceDepth);
                c[i][j] = std::llround(m[i][j] * out.steps / in * unit);
                if (scale == 15) c[i][j] = floorDivide(c[i][j] + 16384, 32768) * int64_t{32768};
                if (j == 0) gain = out.steps / in * unit;
            }
            if (!encodes) continue;
            int64_t sum = isChroma(to, Channel(i)) ? 0 : std::llround(gain);
            if (scale == 15) sum = floorDivide(sum + 16384, 32768) * int64_t{32768};
            int64_t* const greatest =
                std::max_element(c[i], c[i] + 3, [](int64_t a, int64_t b) { return std::llabs(a) < std::llabs(b); });
            *greatest += sum - c[i][0] - c[i][1] - c[i][2];
        }
    };
    int64_t c[3][3] = {};
    int scale = 13;
    bool allWhole = false;
    if (encodes && isRounded8) {
        coefficients(15, c);
        allWhole = true;
        for (int i = 0; i < rows; ++i)
            for (const int64_t x : c[i]) allWhole = allWhole && std::llabs(x) < int64_t{32767} * 32768;
        if (allWhole) scale = 15;
    }
    if (!allWhole) coefficients(13, c);
    Sums sums{};
    sums.shift = scale + 16 - depth;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            Term& t = sums.terms[i][j];
            t.high = floorDivide(c[i][j] + 16384, 32768);
            t.low = c[i][j] - t.high * 32768;
            if (isRounded8 && !encodes && (j == 0 || isRgb(from))) t.low = 0;
        }
    for (int i = 0; i < 3; ++i) {
        if (isChroma(to, Channel(i))) continue;
        const Scale out = depth == 22 ? Scale{0, 4194304} : scaleOf(to, first, depth), in = scaleOf(from, first, 16);
        const Real full =
            from.range == zelvFull ? std::ldexp(scaleOf(from, first, sourceDepth).steps, 16 - sourceDepth) : in.steps;
        sums.offset[i] = std::llround(std::ldexp(out.zero - std::ldexp(Real{1}, depth - 1), sums.shift)) +
                         std::llround(std::ldexp(out.steps * (32768 - in.zero) / full, sums.shift));
    }
    return sums;
}

int threshold(int x, int y) {
    constexpr int small[2][2] = {{0, 2}, {3, 1}};
    return 16 * small[y & 1][x & 1] + 4 * small[y >> 1 & 1][x >> 1 & 1] + small[y >> 2 & 1][x >> 2 & 1];
}

class Conversion {
  public:
    Conversion(const Picture& from, const Picture& to, const ZelvOptions& options)
        : from_(from), to_(to), options_(options), sums_(sumsOf(from.format, to.format, options)) {}

    void run() {
        const ZelvFormat& f = to_.format;
        for (int p = 0; p < planeCount(f); ++p)
            for (int y = 0; y < rowCount(f, p, to_.size.height); ++y)
                std::memset(to_.planes[p] + ptrdiff_t{to_.steps[p]} * y, 0, static_cast<size_t>(rowBytes(f, p, to_.size.width)));
        for (int c = 0; c < (isGray(f) ? 1 : 3); ++c) {
            const auto channel = Channel(c);
            const int across = isChroma(f, channel) ? sitesAcross(f) : 1, down = isChroma(f, channel) ? sitesDown(f) : 1;
            for (int y = 0; y < (to_.size.height + down - 1) / down; ++y)
                for (int x = 0; x < (to_.size.width + across - 1) / across; ++x) put(channel, x, y);
        }
        if (has(f, 'A') || has(f, 'X')) putAlpha();
        const bool isPaired = f.layout == zelvPaired || f.layout == zelvV210;
        if (isPaired && to_.size.width % 2 != 0)
            for (int y = 0; y < to_.size.height; ++y)
                setSample(to_, first, to_.size.width, y, sample(to_, first, to_.size.width - 1, y));
    }

  private:
    // A sample as 16 bits around 0.
    int filled(Channel c, int x, int y) const {
        const ZelvFormat& f = from_.format;
        const uint32_t bits = sample(from_, c, x, y);
        if (f.depth != 32) {
            const int depth = c == alpha && f.layout == zelvDwords ? 2 : f.depth;
            return static_cast<int>(bits << (16 - depth)) - 32768;
        }
        float value;
        std::memcpy(&value, &bits, 4);
        if (!(value > 0)) value = 0;
        if (!(value < 1)) value = 1;
        const int cut = static_cast<int>(std::floor(std::ldexp(double{value}, 23)));
        return rounded(cut - rounded(cut, 65536), 128) - 32768;
    }

    // From here on in parts of 1/256, which hold every mean of weights exactly.
    static int64_t part(int64_t sum, int64_t weights) {
        if (sum % weights != 0) throw std::logic_error("chroma with more than 8 places");
        return sum / weights;
    }

    int64_t site(Channel c, int x, int y) const {
        const int across = sitesAcross(from_.format), down = sitesDown(from_.format);
        return 256 * int64_t{filled(c, std::clamp(x, 0, (from_.size.width - 1) / across),
                                    std::clamp(y, 0, (from_.size.height - 1) / down))};
    }

    // Chroma at a column of sites and a row of pixels.
    int64_t atRow(Channel c, int x, int y) const {
        const ZelvFormat& f = from_.format;
        if (sitesDown(f) == 1) return site(c, x, y);
        if (options_.up == zelvRepeat) return site(c, x, y / 2);
        const int64_t near = site(c, x, y / 2);
        if (f.location == zelvTopLeft) return y % 2 == 0 ? near : part(near + site(c, x, y / 2 + 1), 2);
        return part(3 * near + site(c, x, y / 2 + (y % 2 == 0 ? -1 : 1)), 4);
    }

    // At a pixel, or where `bySites` at a column of sites and a row of pixels.
    int64_t atPixel(Channel c, int x, int y) const {
        const ZelvFormat& f = from_.format;
        const int across = sitesAcross(f);
        if (!isChroma(f, c)) return 256 * int64_t{filled(c, x, y)};
        return across == 1 ? atRow(c, x, y) : atColumn(x, [&](int s) { return atRow(c, s, y); });
    }

    template <class At>
    int64_t atColumn(int x, const At& at) const {
        const int across = sitesAcross(from_.format);
        if (options_.up == zelvRepeat) return at(x / across);
        const int place = from_.format.location == zelvCentre ? 2 * (x % across) + 1 - across : 2 * (x % across);
        const int other = place < 0 ? -1 : 1;
        return part((2 * across - std::abs(place)) * at(x / across) + std::abs(place) * at(x / across + other), 2 * across);
    }

    // A channel of the source at a place of the destination's chroma.
    int64_t onGrid(Channel c, int x, int y) const {
        const ZelvFormat &f = from_.format, &t = to_.format;
        const auto coincide = [&](int ours, int theirs, bool oursSited, bool theirsSited) {
            return ours == theirs && (ours == 1 || oursSited == theirsSited);
        };
        const int fromAcross = isRgb(f) ? 1 : sitesAcross(f), fromDown = isRgb(f) ? 1 : sitesDown(f);
        const int across = sitesAcross(t), down = sitesDown(t);
        const bool sameAcross = coincide(fromAcross, across, f.location != zelvCentre, t.location != zelvCentre);
        const bool sameDown = coincide(fromDown, down, f.location == zelvTopLeft, t.location == zelvTopLeft);
        // At a column, as finely as the destination needs it, and a row likewise.
        const auto at = [&](int column, int row) {
            if (!isChroma(f, c))
                return 256 *
                       int64_t{filled(c, std::clamp(column, 0, from_.size.width - 1), std::clamp(row, 0, from_.size.height - 1))};
            const auto inRow = [&](int s) {
                return sameDown ? site(c, s, row) : atRow(c, s, std::clamp(row, 0, from_.size.height - 1));
            };
            if (sameAcross) return inRow(column);
            const int bounded = std::clamp(column, 0, from_.size.width - 1);
            return fromAcross == 1 ? inRow(bounded) : atColumn(bounded, inRow);
        };
        const bool sited = options_.down == zelvSited;
        const auto weights = [&](int pixels, bool same, bool onPixel) -> std::vector<std::pair<int, int>> {
            if (same || pixels == 1) return {{0, 1}};
            std::vector<std::pair<int, int>> w;
            if (sited && onPixel)
                for (int k = 1 - pixels; k < pixels; ++k) w.emplace_back(k, pixels - std::abs(k));
            else
                for (int k = 0; k < pixels; ++k) w.emplace_back(k, 1);
            return w;
        };
        int64_t sum = 0, all = 0;
        const auto columns = weights(across, sameAcross, t.location != zelvCentre);
        const auto rows = weights(down, sameDown, t.location == zelvTopLeft);
        for (const auto& [k, weight] : columns)
            for (const auto& [n, ofRow] : rows) {
                sum += int64_t{weight} * ofRow * at(sameAcross ? x : x * across + k, sameDown ? y : y * down + n);
                all += weight * ofRow;
            }
        return part(sum, all);
    }

    void put(Channel c, int x, int y) {
        const ZelvFormat &f = from_.format, &t = to_.format;
        const int depth = depthOf(t, false);
        if (isGray(f) && isChroma(t, c)) {
            setSample(to_, c, x, y, 1u << (depth - 1));
            return;
        }
        int64_t parts[3] = {}, rest[3] = {};
        for (int j = 0; j < (isGray(f) ? 1 : 3); ++j) {
            const int64_t at = isChroma(t, c) && !(j == 0 && !isRgb(f)) ? onGrid(Channel(j), x, y)
                               : isChroma(t, c)                         ? 0
                                                                        : atPixel(Channel(j), x, y);
            parts[j] = floorDivide(at, 256);
            rest[j] = at - 256 * parts[j];
        }
        const auto& terms = sums_.terms[c];
        int64_t sum = sums_.offset[c];
        sum += floorDivide(terms[0].high * rest[0] + terms[1].high * rest[1] + terms[2].high * rest[2], 256);
        sum += terms[0].high * parts[0] + floorDivide(terms[0].low * parts[0], 32768);
        sum += terms[1].high * parts[1] + terms[2].high * parts[2] +
               floorDivide(terms[1].low * parts[1] + terms[2].low * parts[2], 32768);
        const int64_t unit = int64_t{1} << sums_.shift;
        const bool ordered = options_.dither == zelvOrdered && depth != 22;
        sum += ordered ? (2 * threshold(x, y) + 1) * unit / 128 : unit / 2;
        write(c, x, y, floorDivide(sum, unit), depth);
    }

    void write(Channel c, int x, int y, int64_t result, int depth) {
        if (depth == 22) {
            const float value = std::ldexp(static_cast<float>(result + (1 << 21)), -22);
            uint32_t bits;
            std::memcpy(&bits, &value, 4);
            setSample(to_, c, x, y, bits);
        } else {
            const int64_t middle = int64_t{1} << (depth - 1);
            setSample(to_, c, x, y, static_cast<uint32_t>(std::clamp(result, -middle, middle - 1) + middle));
        }
    }

    void putAlpha() {
        const ZelvFormat &f = from_.format, &t = to_.format;
        const int from = f.layout == zelvDwords ? 2 : depthOf(f, true), to = t.layout == zelvDwords ? 2 : depthOf(t, false);
        const Real in = 65536 - std::ldexp(Real{1}, 16 - from), out = to == 22 ? 4194304 : std::ldexp(Real{1}, to) - 1;
        const int shift = 29 - to;
        const int64_t c = std::llround(std::ldexp(out / in, shift + 15)), high = floorDivide(c + 16384, 32768),
                      low = c - high * 32768;
        const int64_t offset = std::llround(std::ldexp(out / in * 32768, shift)) - (int64_t{1} << (to - 1 + shift));
        for (int y = 0; y < to_.size.height; ++y)
            for (int x = 0; x < to_.size.width; ++x) {
                if (has(f, 'A') && has(t, 'A')) {
                    const int64_t a = filled(alpha, x, y);
                    const int64_t sum = offset + high * a + floorDivide(low * a, 32768) + (int64_t{1} << (shift - 1));
                    write(alpha, x, y, floorDivide(sum, int64_t{1} << shift), to);
                } else {
                    setSample(to_, alpha, x, y, t.depth == 32 ? 0x3f800000 : (1u << to) - 1);
                }
            }
    }

    const Picture &from_, &to_;
    const ZelvOptions& options_;
    Sums sums_;
};

}  // namespace

bool has(const ZelvFormat& f, char letter) { return std::strchr(f.components, letter) != nullptr; }
bool isRgb(const ZelvFormat& f) { return has(f, 'R'); }
bool isGray(const ZelvFormat& f) { return !isRgb(f) && !has(f, 'U'); }
int sitesAcross(const ZelvFormat& f) {
    return f.sampling == zelv411 ? 4 : f.sampling == zelv422 || f.sampling == zelv420 ? 2 : 1;
}
int sitesDown(const ZelvFormat& f) { return f.sampling == zelv420 || f.sampling == zelv440 ? 2 : 1; }

int planeCount(const ZelvFormat& f) {
    return f.layout == zelvPlanar ? static_cast<int>(std::strlen(f.components)) : f.layout == zelvSemiPlanar ? 2 : 1;
}
int rowBytes(const ZelvFormat& f, int plane, int width) {
    const int sites = (width + sitesAcross(f) - 1) / sitesAcross(f), bytes = bytesOf(f);
    switch (f.layout) {
        case zelvPlanar:
            return (f.components[plane] == 'U' || f.components[plane] == 'V' ? sites : width) * bytes;
        case zelvSemiPlanar:
            return (plane == 0 ? width : 2 * sites) * bytes;
        case zelvInterleaved:
            return width * static_cast<int>(std::strlen(f.components)) * bytes;
        case zelvPaired:
            return sites * 4 * bytes;
        case zelvDwords:
            return width * 4;
        default:
            return (width + 5) / 6 * 16;
    }
}
int rowCount(const ZelvFormat& f, int plane, int height) {
    const bool ofSites = f.layout == zelvPlanar ? f.components[plane] == 'U' || f.components[plane] == 'V' : plane == 1;
    return ofSites ? (height + sitesDown(f) - 1) / sitesDown(f) : height;
}

uint32_t sample(const Picture& p, Channel c, int x, int y) {
    const Place place = placeIn(p.format, c, x);
    uint32_t container = 0;
    std::memcpy(&container, p.planes[place.plane] + ptrdiff_t{p.steps[place.plane]} * y + place.offset,
                static_cast<size_t>(place.bytes));
    return container >> place.shift & mask(place.bits);
}

void setSample(const Picture& p, Channel c, int x, int y, uint32_t value) {
    const Place place = placeIn(p.format, c, x);
    uint8_t* const at = p.planes[place.plane] + ptrdiff_t{p.steps[place.plane]} * y + place.offset;
    uint32_t container = 0;
    std::memcpy(&container, at, static_cast<size_t>(place.bytes));
    container = (container & ~(mask(place.bits) << place.shift)) | value << place.shift;
    std::memcpy(at, &container, static_cast<size_t>(place.bytes));
}

void convert(const Picture& from, const Picture& to, const ZelvOptions& options) { Conversion(from, to, options).run(); }

Exact exact(const ZelvFormat& from, const ZelvFormat& to, const std::array<uint32_t, 3>& pixel) {
    const Matrix m = between(from, to);
    Exact result{};
    for (int i = 0; i < 3; ++i) {
        Real value = 0;
        for (int j = 0; j < 3; ++j) {
            const Scale in = scaleOf(from, Channel(j), from.depth);
            value += m[i][j] * (pixel[j] - in.zero) / in.steps;
        }
        const Scale out = scaleOf(to, Channel(i), to.depth);
        result[i] = std::clamp(out.zero + value * out.steps, Real{0}, std::ldexp(Real{1}, to.depth) - 1);
    }
    return result;
}

}  // namespace video
