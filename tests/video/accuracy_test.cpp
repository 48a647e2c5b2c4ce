// How far results are from the exact values of H.273, over all inputs of 8 bits and the corners of the cubes above.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "harness/random.h"
#include "video/frames.h"
#include "video/model.h"

namespace video {
namespace {

using Pixel = std::array<uint32_t, 3>;

constexpr ZelvFormat rgb(int depth, int range) {
    return {zelvPlanar, "RGB", zelv444, depth, zelvLowBits, zelvMatrixRgb, range, 0, 0, 0};
}
constexpr ZelvFormat yuv(int depth, int matrix, int range) {
    return {zelvPlanar, "YUV", zelv444, depth, zelvLowBits, matrix, range, 0, 0, 0};
}
constexpr int matrices[] = {1, 4, 5, 7, 8, 9};

// Pixels in a row each.
class Row {
  public:
    Row(const ZelvFormat& f, int width)
        : bytes_(static_cast<size_t>(3 * width * (f.depth > 8 ? 2 : 1))), width_(width), wide_(f.depth > 8) {}
    Picture picture(const ZelvFormat& f) {
        const int step = width_ * (wide_ ? 2 : 1);
        Picture p{f, {width_, 1}, {}, {step, step, step, step}};
        for (int c = 0; c < 3; ++c) p.planes[static_cast<size_t>(c)] = bytes_.data() + c * step;
        return p;
    }
    void set(int x, const Pixel& pixel) {
        for (int c = 0; c < 3; ++c) {
            uint8_t* const at = bytes_.data() + (c * width_ + x) * (wide_ ? 2 : 1);
            at[0] = static_cast<uint8_t>(pixel[static_cast<size_t>(c)]);
            if (wide_) at[1] = static_cast<uint8_t>(pixel[static_cast<size_t>(c)] >> 8);
        }
    }
    uint32_t get(int c, int x) const {
        const uint8_t* const at = bytes_.data() + (c * width_ + x) * (wide_ ? 2 : 1);
        return at[0] | (wide_ ? uint32_t{at[1]} << 8 : 0);
    }

  private:
    std::vector<uint8_t> bytes_;
    int width_;
    bool wide_;
};

struct Converted {
    const ZelvFormat &from, &to;
    std::vector<Pixel> operator()(const std::vector<Pixel>& pixels) const {
        const int width = static_cast<int>(pixels.size());
        ZelvPlan plan;
        EXPECT_EQ(zelvMakePlan(&plan, &from, &to, nullptr), zelStsNoErr);
        Row in(from, width), out(to, width);
        for (int x = 0; x < width; ++x) in.set(x, pixels[static_cast<size_t>(x)]);
        const Picture f = in.picture(from), t = out.picture(to);
        EXPECT_EQ(zelvConvert(&plan, f.planes.data(), f.steps.data(), t.planes.data(), t.steps.data(), f.size), zelStsNoErr);
        std::vector<Pixel> results(pixels.size());
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c) results[static_cast<size_t>(x)][static_cast<size_t>(c)] = out.get(c, x);
        return results;
    }
};

// The exact value is a sum of one number for each channel, before it is bounded.
class Exactly {
  public:
    Exactly(const ZelvFormat& from, const ZelvFormat& to) : most_(std::ldexp(1.0, to.depth) - 1) {
        const ZelvFormat wide = to;
        // What bounding would hide is found by differences around a gray that all formats hold.
        const uint32_t middle = 1u << (from.depth - 1), step = 1u << (from.depth - 5);
        base_ = toDoubles(exact(from, wide, {middle, middle, middle}));
        for (size_t j = 0; j < 3; ++j) {
            Pixel p{middle, middle, middle};
            p[j] += step;
            const auto moved = toDoubles(exact(from, wide, p));
            for (size_t i = 0; i < 3; ++i) slope_[i][j] = (moved[i] - base_[i]) / step;
        }
        middle_ = middle;
    }
    double of(size_t i, const std::array<double, 3>& samples) const {
        double sum = base_[i];
        for (size_t j = 0; j < 3; ++j) sum += slope_[i][j] * (samples[j] - middle_);
        return sum < 0 ? 0 : sum > most_ ? most_ : sum;
    }
    double operator()(size_t i, const Pixel& p) const {
        return of(i, {static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])});
    }

  private:
    static std::array<double, 3> toDoubles(const Exact& e) {
        return {static_cast<double>(e[0]), static_cast<double>(e[1]), static_cast<double>(e[2])};
    }
    double most_, middle_ = 0;
    std::array<double, 3> base_{};
    std::array<std::array<double, 3>, 3> slope_{};
};

double worst(const ZelvFormat& from, const ZelvFormat& to, const std::vector<Pixel>& pixels) {
    const Exactly exactly(from, to);
    const std::vector<Pixel> results = Converted{from, to}(pixels);
    double most = 0;
    for (size_t x = 0; x < pixels.size(); ++x)
        for (size_t i = 0; i < 3; ++i) most = std::max(most, std::abs(results[x][i] - exactly(i, pixels[x])));
    return most;
}

double limitOf(int depth) { return depth <= 10 ? 0.51 : depth <= 12 ? 0.6 : 1.0; }

std::vector<std::pair<ZelvFormat, ZelvFormat>> pairsOf(int sourceDepth, int depth) {
    std::vector<std::pair<ZelvFormat, ZelvFormat>> pairs;
    for (const int matrix : matrices)
        for (int ranges = 0; ranges < 4; ++ranges) {
            const int a = ranges & 1, b = ranges >> 1;
            pairs.emplace_back(rgb(sourceDepth, a), yuv(depth, matrix, b));
            pairs.emplace_back(yuv(sourceDepth, matrix, a), rgb(depth, b));
            pairs.emplace_back(yuv(sourceDepth, matrix, a), yuv(depth, matrix == 9 ? 1 : 9, b));
            pairs.emplace_back(yuv(sourceDepth, matrix, a), yuv(depth, matrix, b));
        }
    return pairs;
}

TEST(VideoAccuracy, IsKeptOnAllColours) {
    std::vector<Pixel> slice(256 * 256);
    double most = 0;
    for (const auto& [from, to] : pairsOf(8, 8)) {
        for (uint32_t c = 0; c < 256; ++c) {
            for (uint32_t i = 0; i < slice.size(); ++i) slice[i] = {i >> 8, i & 255, c};
            most = std::max(most, worst(from, to, slice));
        }
        ASSERT_LE(most, 0.51) << from.components << from.matrix << from.range << " to " << to.components << to.matrix << to.range;
    }
    std::printf("farthest of 8 bits: %.4f\n", most);
}

TEST(VideoAccuracy, IsKeptAtCornersAndRandomColours) {
    harness::Random random(3);
    for (const int sourceDepth : {8, 10, 12, 16})
        for (const int depth : {8, 10, 12, 16}) {
            const uint32_t top = (1u << sourceDepth) - 1;
            std::vector<Pixel> pixels;
            for (int corner = 0; corner < 8; ++corner)
                pixels.push_back({corner & 1 ? top : 0, corner & 2 ? top : 0, corner & 4 ? top : 0});
            while (pixels.size() < 5000) {
                const uint64_t n = random.next();
                pixels.push_back(
                    {static_cast<uint32_t>(n) & top, static_cast<uint32_t>(n >> 16) & top, static_cast<uint32_t>(n >> 32) & top});
            }
            double most = 0;
            for (const auto& [from, to] : pairsOf(sourceDepth, depth)) {
                most = std::max(most, worst(from, to, pixels));
                ASSERT_LE(most, limitOf(depth)) << sourceDepth << " to " << depth << " bits, " << from.components << from.matrix
                                                << from.range << " to " << to.components << to.matrix << to.range;
            }
            std::printf("farthest of %d to %d bits: %.4f\n", sourceDepth, depth, most);
        }
}

// Weights of places in one direction.
using Weights = std::vector<std::pair<int, double>>;

// Of sites at a pixel: of the one that it lies in, or of both around it by their distances.
Weights atPixel(int pixel, int width, bool sited, bool linear) {
    if (!linear || width == 1) return {{pixel / width, 1}};
    const double place = (pixel - (sited ? 0 : (width - 1) / 2.0)) / width, before = std::floor(place);
    return {{static_cast<int>(before), 1 - (place - before)}, {static_cast<int>(before) + 1, place - before}};
}
// Of pixels at a site.
Weights atSite(int site, int width, bool sited, bool weighed) {
    Weights weights;
    if (sited && weighed)
        for (int k = 1 - width; k < width; ++k)
            weights.emplace_back(site * width + k, (width - std::abs(k)) / double(width * width));
    else
        for (int k = 0; k < width; ++k) weights.emplace_back(site * width + k, 1.0 / width);
    return weights;
}

// One direction of a format's chroma.
struct Grid {
    int width;
    bool sited;
    bool operator==(const Grid& g) const { return width == g.width && (width == 1 || sited == g.sited); }
};
Weights between(int site, const Grid& from, const Grid& to, const ZelvOptions& options, int pixels) {
    if (from == to) return {{site, 1}};
    Weights weights;
    for (const auto& [pixel, part] : atSite(site, to.width, to.sited, options.down == zelvSited))
        for (const auto& [at, weight] :
             atPixel(std::clamp(pixel, 0, pixels - 1), from.width, from.sited, options.up == zelvLinear))
            weights.emplace_back(at, part * weight);
    return weights;
}

TEST(VideoAccuracy, IsKeptOnOtherGrids) {
    harness::Random random(4);
    const auto below = [&](int n) { return static_cast<int>(random.next() % static_cast<uint64_t>(n)); };
    const auto drawn = [&](bool isRgb) {
        ZelvFormat f = isRgb ? rgb(0, below(2)) : yuv(0, matrices[below(6)], below(2));
        f.depth = std::array{8, 10, 12, 14, 16, 16}[static_cast<size_t>(below(6))];
        if (!isRgb) f.sampling = below(5);
        if (f.sampling != zelv444) f.location = below(3);
        return f;
    };
    std::array<double, 17> most{};
    for (int turn = 0; turn < 6000; ++turn) {
        const bool decodes = turn % 3 == 0;
        const ZelvFormat from = drawn(turn % 3 == 1), to = drawn(decodes);
        const ZelvOptions options = {below(2), below(2), 0};
        const ZelSize size = {1 + below(20), 1 + below(8)};
        ZelvPlan plan;
        ASSERT_EQ(zelvMakePlan(&plan, &from, &to, &options), zelStsNoErr);
        const Frame source(from, size, 0, false, false, random), result(to, size, 0, false, false, random);
        const auto subsampled = [](const ZelvFormat& f, int c) { return !isRgb(f) && c != 0; };
        const auto grid = [&](const ZelvFormat& f, int c, bool isDown) -> Grid {
            if (!subsampled(f, c)) return {1, false};
            return isDown ? Grid{sitesDown(f), f.location == zelvTopLeft} : Grid{sitesAcross(f), f.location != zelvCentre};
        };
        const auto count = [](int pixels, const Grid& g) { return (pixels + g.width - 1) / g.width; };
        // Samples at and near both ends are where roundings weigh most.
        const uint32_t top = (1u << from.depth) - 1;
        for (int c = 0; c < 3; ++c)
            for (int y = 0; y < count(size.height, grid(from, c, true)); ++y)
                for (int x = 0; x < count(size.width, grid(from, c, false)); ++x)
                    setSample(source.picture(), Channel(c), x, y,
                              std::array{0u, 1u, top, static_cast<uint32_t>(random.next()) & top}[static_cast<size_t>(below(4))]);
        ASSERT_EQ(run(plan, source.picture(), result.picture()), zelStsNoErr);
        const Exactly exactly(from, to);
        for (int c = 0; c < 3; ++c)
            for (int y = 0; y < count(size.height, grid(to, c, true)); ++y)
                for (int x = 0; x < count(size.width, grid(to, c, false)); ++x) {
                    std::array<double, 3> samples{};
                    for (int j = 0; j < 3; ++j) {
                        const Grid ours = grid(from, j, false), ofRows = grid(from, j, true);
                        // Chroma that is made of chroma has no luma in it, and none is looked at.
                        const bool isUnused = subsampled(to, c) && !isRgb(from) && j == 0;
                        for (const auto& [column, across] :
                             isUnused ? Weights{} : between(x, ours, grid(to, c, false), options, size.width))
                            for (const auto& [row, down] : between(y, ofRows, grid(to, c, true), options, size.height))
                                samples[static_cast<size_t>(j)] +=
                                    across * down *
                                    sample(source.picture(), Channel(j), std::clamp(column, 0, count(size.width, ours) - 1),
                                           std::clamp(row, 0, count(size.height, ofRows) - 1));
                    }
                    const double off =
                        std::abs(sample(result.picture(), Channel(c), x, y) - exactly.of(static_cast<size_t>(c), samples));
                    auto& farthest = most[static_cast<size_t>(to.depth)];
                    farthest = std::max(farthest, off);
                    ASSERT_LE(off, limitOf(to.depth)) << from.components << from.sampling << from.depth << from.location << " to "
                                                      << to.components << to.sampling << to.depth << to.location << ", up "
                                                      << options.up << ", down " << options.down << ", channel " << c;
                }
    }
    for (const int depth : {8, 10, 12, 14, 16})
        std::printf("farthest of %d bits on other grids: %.4f\n", depth, most[static_cast<size_t>(depth)]);
}

TEST(VideoProperties, GrayStaysGrayAndBlackAndWhiteAreHit) {
    for (const int depth : {8, 9, 10, 12, 14, 16})
        for (const int matrix : matrices)
            for (const int range : {zelvLimited, zelvFull}) {
                const ZelvFormat in = rgb(8, zelvFull), out = yuv(depth, matrix, range);
                const uint32_t middle = 1u << (depth - 1), unit = 1u << (depth - 8);
                const uint32_t black = range == zelvFull ? 0 : 16 * unit, white = range == zelvFull ? 2 * middle - 1 : 235 * unit;
                std::vector<Pixel> grays;
                for (uint32_t g = 0; g < 256; ++g) grays.push_back({g, g, g});
                const auto coded = Converted{in, out}(grays), back = Converted{out, in}(coded);
                for (size_t g = 0; g < 256; ++g) {
                    ASSERT_EQ(coded[g][1], middle);
                    ASSERT_EQ(coded[g][2], middle);
                    ASSERT_EQ(back[g][0], back[g][1]);
                    ASSERT_EQ(back[g][0], back[g][2]);
                    if (range == zelvFull || depth > 8) {
                        ASSERT_EQ(back[g], grays[g]) << depth << " " << matrix << " " << range;
                    }
                }
                ASSERT_EQ(coded[0][0], black);
                ASSERT_EQ(coded[255][0], white);
            }
}

TEST(VideoProperties, MovedSamplesAndWiderRangesComeBack) {
    for (const int depth : {8, 10, 12, 16})
        for (const int matrix : matrices) {
            std::vector<Pixel> pixels;
            const uint32_t top = (1u << depth) - 1, unit = 1u << (depth - 8);
            for (uint32_t i = 0; i <= top; ++i) pixels.push_back({i, top - i, i / 2});
            const ZelvFormat limited = yuv(depth, matrix, zelvLimited), full = yuv(depth, matrix, zelvFull);
            EXPECT_EQ((Converted{full, full}(pixels)), pixels);
            for (const int other : {8, 10, 12, 14, 16}) {
                const ZelvFormat finer = yuv(other, matrix, zelvLimited);
                if (other < depth) continue;
                const auto shifted = Converted{limited, finer}(pixels);
                for (size_t i = 0; i < pixels.size(); ++i)
                    for (size_t c = 0; c < 3; ++c) ASSERT_EQ(shifted[i][c], pixels[i][c] << (other - depth));
                EXPECT_EQ((Converted{finer, limited}(shifted)), pixels);
                const ZelvFormat finerFull = yuv(other, matrix, zelvFull);
                EXPECT_EQ((Converted{finerFull, full}(Converted{full, finerFull}(pixels))), pixels);
            }
            // What limited range has between its ends fits the wider range and returns.
            const int chroma = matrix == zelvMatrixYCgCo ? 109 : 112;
            std::vector<Pixel> inside;
            for (uint32_t i = 16 * unit; i <= 235 * unit; ++i) {
                const uint32_t u = std::min<uint32_t>(i, (128 + static_cast<uint32_t>(chroma)) * unit);
                inside.push_back({i, std::max<uint32_t>(u, (128 - static_cast<uint32_t>(chroma)) * unit), 128 * unit});
            }
            EXPECT_EQ((Converted{full, limited}(Converted{limited, full}(inside))), inside) << depth << " " << matrix;
        }
}

}  // namespace
}  // namespace video
