// Model of hue, lightness and saturation, and of hue, saturation and value: one pixel at a time, with the channels in the order
// R, G, B and H, L, S or H, S, V.
#pragma once

#include <algorithm>
#include <array>
#include <limits>

#include "model/export.h"
#include "model/reciprocal.h"
#include "model/rounding.h"

namespace model {

template <class T>
using Hues = std::array<T, 3>;

// A pixel's samples to others. In the first pixels of a row a rule may differ from that of the others.
template <class T>
using HueRule = Hues<T> (*)(Hues<T>);

template <class T, HueRule<T> block, HueRule<T> tail = block>
void hueConversion(const Conversion& c) {
    const auto &from = c.source.layout->channels, &to = c.destination.layout->channels;
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            Hues<T> p;
            for (int i = 0; i < 3; ++i) p[i] = c.source.load<T>(from[i], x, y);
            p = x < c.blockPixels ? block(p) : tail(p);
            for (int i = 0; i < 3; ++i) c.destination.store(to[i], x, y, p[i]);
            // Alpha moves where it is a plane of its own on one side.
            if (std::max(c.source.layout->planeCount, c.destination.layout->planeCount) == 4)
                c.destination.store(to[3], x, y, c.source.load<T>(from[3], x, y));
        }
}

// Samples as numbers from 0 on.
template <class T>
constexpr int lowestSample = std::numeric_limits<T>::min();
template <class T>
constexpr float fullScale = static_cast<float>(std::numeric_limits<T>::max()) - lowestSample<T>;

template <class T>
Hues<float> numbersOf(Hues<T> p) {
    return {float(p[0] - lowestSample<T>), float(p[1] - lowestSample<T>), float(p[2] - lowestSample<T>)};
}
template <class T>
T limitedSample(int v) {
    return static_cast<T>(std::clamp(v, 0, int(fullScale<T>)) + lowestSample<T>);
}

inline float highestOf(Hues<float> p) {
    const float first = p[0] > p[1] ? p[0] : p[1];
    return first > p[2] ? first : p[2];
}
inline float lowestOf(Hues<float> p) {
    const float first = p[0] < p[1] ? p[0] : p[1];
    return first < p[2] ? first : p[2];
}

template <class T>
constexpr float hueScale = sizeof(T) == 1 ? 0.7083333134651184f : 182.0416717529297f;
template <class T>
constexpr float degreesOfHue = sizeof(T) == 1 ? 1.4117647409439087f : 0.005493247881531715f;
template <class T>
constexpr float unitOfSample = sizeof(T) == 1 ? 0.003921568859368563f : 1.5259021893143654e-05f;

template <class T, float (*reciprocal)(float)>
Hues<T> toHls(Hues<T> samples) {
    const Hues<float> p = numbersOf(samples);
    const auto [r, g, b] = p;
    const float highest = highestOf(p), lowest = lowestOf(p), d = highest - lowest, s = highest + lowest, l = 0.5f * s;
    const auto sample = [](float v) { return limitedSample<T>(truncated(v)); };
    if (d == 0) return {sample(0), sample(l), sample(0)};
    const float room = l <= fullScale<T> / 2 ? s : 2 * fullScale<T> - s;
    float hf;
    if (highest == r)
        hf = ((g - b) * 60) * reciprocal(d);
    else if (highest == g)
        hf = ((b - r) * 60) * reciprocal(d) + 120;
    else
        hf = ((r - g) * 60) * reciprocal(d) + 240;
    if (hf < 0) hf += 360;
    return {sample(hf * hueScale<T>), sample(l), sample((d * reciprocal(room)) * fullScale<T>)};
}

inline Hues<float> toHlsOfFloats(Hues<float> p) {
    const auto [r, g, b] = p;
    const float highest = highestOf(p), lowest = lowestOf(p), d = highest - lowest, s = highest + lowest, l = 0.5f * s;
    if (d <= 1.1920928955078125e-07f) return {0, l, 0};
    float hf;
    if (highest == r)
        hf = ((g - b) * 60) / d;
    else if (highest == g)
        hf = 120 + ((b - r) * 60) / d;
    else
        hf = ((r - g) * 60) / d + 240;
    if (hf < 0) hf += 360;
    return {hf / 360, l, l <= 0.5f ? d / s : d / (2 - s)};
}

// Hue in degrees, lightness and saturation from 0 to 1.
template <bool divides>
Hues<float> fromHls(Hues<float> p) {
    const auto [h, l, s] = p;
    const float m1 = l > 0.5f ? (l + s) - l * s : divides ? (1 + s) * l : l + l * s, m2 = 2 * l - m1, d = m1 - m2;
    const auto ramp = [&](float degrees) {
        return divides ? (d * degrees) / 60 + m2 : (degrees * 0.01666666753590107f) * d + m2;
    };
    const auto at = [&](float degrees) {
        if (degrees < 60) return ramp(degrees);
        if (degrees < 180) return m1;
        return degrees < 240 ? ramp(240 - degrees) : m2;
    };
    float red = h + 120, blue = h - 120;
    if (red > 360) red -= 360;
    if (blue < 0) blue += 360;
    return {at(red), at(h), at(blue)};
}

inline Hues<uint8_t> fromHlsOfBytes(Hues<uint8_t> p) {
    const auto [h, l, s] = numbersOf(p);
    const auto colour = fromHls<false>({h * degreesOfHue<uint8_t>, l * unitOfSample<uint8_t>, s * unitOfSample<uint8_t>});
    Hues<uint8_t> samples;
    for (int i = 0; i < 3; ++i) samples[i] = limitedSample<uint8_t>(truncated(colour[i] * 255));
    return samples;
}

template <bool inBlock>
Hues<uint16_t> fromHlsOfUnsigned(Hues<uint16_t> p) {
    if (!inBlock && p[2] == 0) return {p[1], p[1], p[1]};
    const auto [h, l, s] = numbersOf(p);
    const auto colour = fromHls<false>({h * degreesOfHue<uint16_t>, l * unitOfSample<uint16_t>, s * unitOfSample<uint16_t>});
    Hues<uint16_t> samples;
    for (int i = 0; i < 3; ++i) samples[i] = static_cast<uint16_t>(std::clamp(truncated(colour[i] * 32767.5f), 0, 32767) << 1);
    return samples;
}

inline Hues<int16_t> fromHlsOfSignedBlock(Hues<int16_t> p) {
    const auto [h, l, s] = numbersOf(p);
    const auto colour = fromHls<false>({h * degreesOfHue<int16_t>, l * unitOfSample<int16_t>, s * unitOfSample<int16_t>});
    Hues<int16_t> samples;
    for (int i = 0; i < 3; ++i)
        samples[i] = static_cast<int16_t>(std::clamp(toInteger(colour[i] * 65535) - 32768, -32768, 32767));
    return samples;
}
inline Hues<int16_t> fromHlsOfSignedTail(Hues<int16_t> p) {
    const auto [h, l, s] = numbersOf(p);
    const auto colour = fromHls<true>({(h * 360) / 65535, l / 65535, s / 65535});
    Hues<int16_t> samples;
    for (int i = 0; i < 3; ++i) samples[i] = static_cast<int16_t>(truncated(colour[i] * 65535 + 0.49998998641967773f) - 32768);
    return samples;
}

template <bool divides>
Hues<float> fromHlsOfFloats(Hues<float> p) {
    if (p[2] == 0) return {p[1], p[1], p[1]};
    return fromHls<divides>({p[0] * 360, p[1], p[2]});
}

// In sixths of the circle; of channels that share the maximum the last one counts, but in blocks red before green.
inline float sixthsOf(Hues<float> p, float highest, float q, bool redBeforeGreen) {
    const auto [r, g, b] = p;
    const float tr = (highest - r) * q, tg = (highest - g) * q, tb = (highest - b) * q;
    float sixths = 0;
    if (r == highest) sixths = tb - tg;
    if (g == highest && !(redBeforeGreen && r == highest)) sixths = (tr - tb) + 2;
    if (b == highest) sixths = (tg - tr) + 4;
    return sixths;
}

template <bool inBlock>
Hues<uint8_t> toHsv(Hues<uint8_t> samples) {
    const Hues<float> p = numbersOf(samples);
    const float highest = highestOf(p), d = highest - lowestOf(p);
    const auto value = static_cast<uint8_t>(highest);
    if (highest == 0 || d == 0) return {0, 0, value};
    float hf = sixthsOf(p, highest, approximateReciprocal(d), inBlock) * 42.5f;
    if (hf < 0) hf += 255;
    return {limitedSample<uint8_t>(toInteger(hf)), limitedSample<uint8_t>(toInteger((approximateReciprocal(highest) * d) * 255)),
            value};
}

inline Hues<uint16_t> toHsvOfWords(Hues<uint16_t> samples) {
    const Hues<float> p = numbersOf(samples);
    const float highest = highestOf(p), d = highest - lowestOf(p);
    const auto value = static_cast<uint16_t>(highest);
    if (highest == 0 || d == 0) return {0, 0, value};
    float hs = sixthsOf(p, highest, 1 / d, false);
    if (hs + 1.1920928955078125e-07f < 0) hs += 6;
    return {static_cast<uint16_t>(truncated((hs * 65535) / 6 + 0.5f)),
            static_cast<uint16_t>(truncated((d / highest) * 65535 + 0.5f)), value};
}

template <class T>
Hues<T> fromHsv(Hues<T> samples) {
    if (samples[1] == 0) return {samples[2], samples[2], samples[2]};
    const auto [hx, sx, value] = numbersOf(samples);
    const float hf = ((hx == fullScale<T> ? 0 : hx) * 0.01666666753590107f) * degreesOfHue<T>;
    const int i = truncated(hf);
    const float f = hf - float(i), a = value * (sx * unitOfSample<T>), p = value - a, b = f * a;
    const T v = samples[2], low = limitedSample<T>(toInteger(p)), falling = limitedSample<T>(toInteger(value - b)),
            rising = limitedSample<T>(toInteger(p + b));
    switch (i) {
        case 0:
            return {v, rising, low};
        case 1:
            return {falling, v, low};
        case 2:
            return {low, v, rising};
        case 3:
            return {low, falling, v};
        case 4:
            return {rising, low, v};
        case 5:
            return {v, low, falling};
        default:
            return {0, 0, 0};
    }
}

}  // namespace model
