#include "synthetic_photograph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace bench {
namespace {

using Colour = SyntheticPhotograph::Colour;

Colour mix(const Colour& a, const Colour& b, double share) {
    Colour result;
    for (int c = 0; c < 3; ++c) result[c] = a[c] + (b[c] - a[c]) * share;
    return result;
}
Colour lit(const Colour& colour, double light) { return mix({0, 0, 0}, colour, light); }

double latticeAt(int x, int y) {
    uint32_t h = uint32_t(x) * 0x9e3779b1u ^ uint32_t(y) * 0x85ebca77u;
    h = (h ^ h >> 15) * 0x2c1b3c6du;
    h = (h ^ h >> 12) * 0x297a2d39u;
    return (h ^ h >> 15) / 4294967295.0;
}

// From 0 to 1, smooth over a distance of about 1.
double noiseAt(double x, double y) {
    const double left = std::floor(x), top = std::floor(y);
    const auto smooth = [](double t) { return t * t * (3 - 2 * t); };
    const double across = smooth(x - left), down = smooth(y - top);
    const auto row = [&](int j) {
        const double a = latticeAt(int(left), int(top) + j), b = latticeAt(int(left) + 1, int(top) + j);
        return a + (b - a) * across;
    };
    return row(0) + (row(1) - row(0)) * down;
}

struct Place {
    double x, y;
    Place turnedAround(const Place& centre, double angle) const {
        const double dx = x - centre.x, dy = y - centre.y;
        return {dx * std::cos(angle) - dy * std::sin(angle), dx * std::sin(angle) + dy * std::cos(angle)};
    }
};

Colour landscape(const Place& p) {
    const double horizon = 250 + 25 * std::sin(p.x / 90) + 6 * noiseAt(p.x / 5, 3);
    if (p.y < horizon) return mix({0.30, 0.48, 0.80}, {0.82, 0.86, 0.90}, std::pow(std::max(p.y, 0.0) / 290, 1.5));
    const double blades = noiseAt(p.x / 1.6 + p.y / 9, p.y / 5), patches = noiseAt(p.x / 40, p.y / 25);
    return lit(mix({0.22, 0.42, 0.12}, {0.50, 0.48, 0.20}, patches), 0.5 + 0.8 * blades);
}

void addWall(const Place& p, Colour& colour) {
    const Place q = p.turnedAround({150, 330}, 0.12);
    if (std::abs(q.x) > 115 || std::abs(q.y) > 85) return;
    const double row = std::floor(q.y / 11), along = q.x / 26 + (int(row) % 2 == 0 ? 0 : 0.5);
    const double inRow = q.y - 11 * row, inBrick = 26 * (along - std::floor(along));
    const double grain = 0.8 + 0.4 * noiseAt(q.x / 1.8, q.y / 1.8);
    const bool isMortar = inRow < 1.6 || inBrick < 1.6;
    const double tint = latticeAt(int(std::floor(along)), int(row));
    colour = lit(isMortar ? Colour{0.72, 0.70, 0.66} : mix({0.52, 0.24, 0.17}, {0.66, 0.37, 0.25}, tint), grain);
}

// Spokes, so that edges of all directions come closer to each other towards the centre.
void addWheel(const Place& p, Colour& colour) {
    const Place q = p.turnedAround({390, 150}, 0.05);
    const double radius = std::hypot(q.x, q.y);
    if (radius > 105) return;
    const bool isSpoke = std::sin(32 * std::atan2(q.y, q.x)) > 0 && radius > 20 && radius < 96;
    colour = isSpoke ? Colour{0.20, 0.13, 0.10} : Colour{0.93, 0.89, 0.78};
}

void addFence(const Place& p, Colour& colour) {
    const Place q = p.turnedAround({620, 400}, -0.07);
    if (std::abs(q.x) > 130 || std::abs(q.y) > 70) return;
    const double picket = q.x / 6.5 - std::floor(q.x / 6.5);
    const bool isRail = std::abs(std::abs(q.y) - 40) < 4;
    if (picket < 0.5 || isRail) colour = lit({0.94, 0.93, 0.90}, isRail && picket >= 0.5 ? 0.8 : 1);
}

void addBall(const Place& p, const Place& centre, double radius, const Colour& own, Colour& colour) {
    const double x = (p.x - centre.x) / radius, y = (p.y - centre.y) / radius, squared = x * x + y * y;
    if (squared > 1) return;
    const double light = 0.35 + 0.65 * std::max(0.0, std::sqrt(1 - squared) * 0.7 - 0.4 * x - 0.5 * y);
    colour = lit(own, std::min(light, 1.0));
}

// Thin dark lines on a bright sheet, as print has them.
void addSheet(const Place& p, Colour& colour) {
    const Place q = p.turnedAround({620, 130}, 0.35);
    if (std::abs(q.x) > 80 || std::abs(q.y) > 60) return;
    const double line = q.y / 9 - std::floor(q.y / 9);
    const bool isInk = std::abs(q.x) < 68 && line > 0.25 && line < 0.8 &&
                       noiseAt(q.x / 2.2, 7 * std::floor(q.y / 9) + std::floor(line * 4)) > 0.5;
    colour = isInk ? Colour{0.10, 0.10, 0.16} : Colour{0.95, 0.94, 0.92};
}

Colour sceneAt(const Place& p) {
    Colour colour = landscape(p);
    addWall(p, colour);
    addWheel(p, colour);
    addFence(p, colour);
    addSheet(p, colour);
    addBall(p, {90, 110}, 55, {0.85, 0.16, 0.12}, colour);
    addBall(p, {215, 150}, 40, {0.16, 0.26, 0.78}, colour);
    addBall(p, {380, 400}, 60, {0.92, 0.76, 0.14}, colour);
    return colour;
}

}  // namespace

// The mean over an aperture somewhat wider than a pixel, as a lens and a sensor take it.
SyntheticPhotograph::SyntheticPhotograph() : pixels(size_t(width) * height) {
    constexpr int samples = 6;
    constexpr double aperture = 1.5;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            Colour& pixel = pixels[size_t(y) * width + size_t(x)];
            pixel = {};
            for (int i = 0; i < samples * samples; ++i) {
                const double dx = (i % samples + 0.5) / samples - 0.5, dy = (i / samples + 0.5) / samples - 0.5;
                const Colour colour = sceneAt({x + 0.5 + aperture * dx, y + 0.5 + aperture * dy});
                for (int c = 0; c < 3; ++c) pixel[c] += std::min(colour[c], 1.0) / (samples * samples);
            }
        }
}

}  // namespace bench
