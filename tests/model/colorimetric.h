// Model of the linear spaces, XYZ and Photo YCC. Channels are in their stored order.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "model/export.h"
#include "model/rounding.h"

namespace model {

using FloatTriplet = std::array<float, 3>;
using ByteTriplet = std::array<int, 3>;

// A colour of floats to one; in the first pixels of a row a rule may differ from that of the others.
using FloatRule = FloatTriplet (*)(FloatTriplet);
using ByteRule = ByteTriplet (*)(ByteTriplet);

template <class Sample, class Convert>
void eachPixel(const Conversion& c, Convert convert) {
    const auto& from = c.source.layout->channels;
    const auto& to = c.destination.layout->channels;
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            std::array<Sample, 3> p;
            for (int i = 0; i < 3; ++i) p[i] = c.source.load<Sample>(from[i], x, y);
            p = convert(p, x < c.blockPixels);
            for (int i = 0; i < 3; ++i) c.destination.store(to[i], x, y, p[i]);
        }
}

template <ByteRule block, ByteRule tail>
void onBytes(const Conversion& c) {
    eachPixel<uint8_t>(c, [](std::array<uint8_t, 3> p, bool inBlock) {
        const ByteTriplet q = (inBlock ? block : tail)({p[0], p[1], p[2]});
        return std::array{static_cast<uint8_t>(q[0]), static_cast<uint8_t>(q[1]), static_cast<uint8_t>(q[2])};
    });
}

template <FloatRule rule>
void onFloats(const Conversion& c) {
    eachPixel<float>(c, [](FloatTriplet p, bool) { return rule(p); });
}

// Words are counted from the lowest one.
template <class Word, FloatRule rule, FloatRule tail = rule, bool blockIsRounded = false>
void onWords(const Conversion& c) {
    constexpr int lowest = std::numeric_limits<Word>::min();
    eachPixel<Word>(c, [](std::array<Word, 3> p, bool inBlock) {
        const FloatTriplet q = (inBlock ? rule : tail)({float(p[0] - lowest), float(p[1] - lowest), float(p[2] - lowest)});
        std::array<Word, 3> result;
        for (int i = 0; i < 3; ++i) {
            const auto whole = static_cast<int>(blockIsRounded && inBlock ? std::nearbyint(q[i]) : std::trunc(q[i]));
            result[i] = static_cast<Word>(std::clamp(whole, 0, 65535) + lowest);
        }
        return result;
    });
}

inline float upTo1(float v) { return v < 0 ? 0 : v > 1 ? 1 : v; }
inline FloatTriplet upTo1(FloatTriplet p) { return {upTo1(p[0]), upTo1(p[1]), upTo1(p[2])}; }
inline int byteOf(int v) { return std::clamp(v, 0, 255); }
inline ByteTriplet bytesOf(ByteTriplet p) { return {byteOf(p[0]), byteOf(p[1]), byteOf(p[2])}; }

inline float dot(float a, float b, float c, FloatTriplet p) { return (a * p[0] + b * p[1]) + c * p[2]; }
inline int dot(int a, int b, int c, ByteTriplet p) { return a * p[0] + b * p[1] + c * p[2]; }

inline FloatTriplet toXyz(FloatTriplet p) {
    return {dot(0.412453f, 0.35758f, 0.180423f, p), dot(0.212671f, 0.71516f, 0.072169f, p),
            dot(0.019334f, 0.119193f, 0.950227f, p)};
}
inline FloatTriplet fromXyz(FloatTriplet p) {
    return {dot(3.240479f, -1.53715f, -0.498535f, p), dot(-0.969256f, 1.875991f, 0.041556f, p),
            dot(0.055648f, -0.204043f, 1.057311f, p)};
}
inline FloatTriplet toXyzOfFloats(FloatTriplet p) {
    const auto [x, y, z] = toXyz(p);
    return {x, y, upTo1(z)};
}
inline FloatTriplet fromXyzOfFloats(FloatTriplet p) { return upTo1(fromXyz(p)); }

inline ByteTriplet toXyz15(ByteTriplet p) {
    return bytesOf({dot(13515, 11717, 5912, p) >> 15, dot(6969, 23434, 2365, p) >> 15, dot(634, 3906, 31137, p) >> 15});
}
inline ByteTriplet toXyz16(ByteTriplet p) {
    return {dot(27030, 23434, 11824, p) >> 16, dot(13937, 46868, 4729, p) >> 16, std::min(dot(1267, 7811, 62274, p) >> 16, 255)};
}
inline ByteTriplet fromXyz13(ByteTriplet p) {
    return bytesOf({dot(26546, -12591, -4083, p) >> 13, dot(-7939, 15368, 340, p) >> 13, dot(456, -1671, 8661, p) >> 13});
}
inline ByteTriplet fromXyz16(ByteTriplet p) {
    return bytesOf(
        {dot(212368, -100738, -32671, p) >> 16, dot(-63521, 122944, 2723, p) >> 16, dot(3646, -13372, 69291, p) >> 16});
}

inline float lumaOf(FloatTriplet p) { return dot(0.299f, 0.587f, 0.114f, p); }

inline FloatTriplet toYcc(FloatTriplet p) {
    const float luma = lumaOf(p);
    return {0.7132668f * luma, (p[2] - luma) * 0.4368627f + 0.6117647f, (p[0] - luma) * 0.53192f + 0.5372549f};
}
inline FloatTriplet fromYcc(FloatTriplet p) {
    const float c1 = (p[1] - 0.6117647f) * 2.2179f, c2 = (p[2] - 0.5372549f) * 1.8215f, y = p[0] * 1.3584f;
    return upTo1({y + c2, (y - 0.194f * c1) - c2 * 0.509f, y + c1});
}
inline FloatTriplet toYccNearest(FloatTriplet p) {
    const float luma = lumaOf(p);
    return {0.7132668f * luma, (p[2] - luma) * 0.4368627f + 40092, (p[0] - luma) * 0.5319216f + 35209};
}
inline FloatTriplet toYccCutOff(FloatTriplet p) {
    const float luma = lumaOf(p);
    return {0.7132668f * luma + 0.49999f, (p[2] - luma) * 0.4368627f + 40092.5f, (p[0] - luma) * 0.5319216f + 35209.5f};
}
inline FloatTriplet fromYccOfSigned(FloatTriplet p) {
    const float y = p[0] * 1.3584f, c1 = (p[1] - 40092) * 2.2179f, c2 = (p[2] - 35209) * 1.8215f;
    return {y + c2, (y - c1 * 0.194f) - c2 * 0.509f, y + c1};
}
inline FloatTriplet toYccOfUnsigned(FloatTriplet p) {
    const auto [r, g, b] = p;
    return {((0.213267f * r + 0.49999f) + 0.418688f * g) + 0.0813124f * b,
            ((-0.130621f * r + 40092.5f) - 0.256437f * g) + 0.387058f * b,
            ((0.372876f * r + 35209.5f) - 0.312237f * g) - 0.0606389f * b};
}
inline FloatTriplet fromYccOfUnsigned(FloatTriplet p) {
    const float y = p[0] * 1.3584f + 0.49999f, c1 = p[1] - 40092, c2 = p[2] - 35209;
    return {1.8215f * c2 + y, (y - 0.4302726f * c1) - c2 * 0.92714345f, y + c1 * 2.2179f};
}

inline ByteTriplet toYccBlock(ByteTriplet p) {
    const auto [r, g, b] = p;
    const int luma = (r * 4898 >> 8) + (g * 9617 >> 8) + (b * 1867 >> 8);
    return bytesOf(
        {(luma * 2921 >> 16) >> 2, (((64 * b - luma) * 1789 >> 16) + 624) >> 2, (((64 * r - luma) * 2178 >> 16) + 548) >> 2});
}
inline ByteTriplet toYccTail(ByteTriplet p) {
    const auto [r, g, b] = p;
    const int luma = dot(4898, 9617, 1867, p);
    return {(luma >> 10) * 2921 >> 16, ((((b << 14) - luma) >> 10) * 1789 >> 16) - 100,
            ((((r << 14) - luma) >> 10) * 2178 >> 16) - 119};
}
inline ByteTriplet fromYccBlock(ByteTriplet p) {
    const int yy = p[0] * 5563 >> 8, c1 = (p[1] - 156) * 128 * 18168 >> 16, c2 = (p[2] - 137) * 128 * 14921 >> 16;
    return bytesOf({(yy + c2) >> 4, ((yy >> 1) + (c2 * -16679 >> 16) + (c1 * -6357 >> 16)) >> 3, (yy + c1) >> 4});
}
inline ByteTriplet fromYccTail(ByteTriplet p) {
    const int a = p[2] * 7460 - 1022020, b = p[1] * 9084 - 1417104, y = p[0] * 5564;
    return bytesOf({(a + y) >> 12, ((a >> 8) * -2084 + (b >> 8) * -794 + y * 16) >> 16, (y + b) >> 12});
}

}  // namespace model
