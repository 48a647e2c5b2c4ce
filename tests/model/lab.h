// Model of Lab. Channels are in the order R, G, B and L, a, b.
#pragma once

#include "model/luv.h"

namespace model {

// X, Y and Z, added up from blue to red.
inline FloatTriplet xyzFromBlue(FloatTriplet p) {
    const auto [r, g, b] = p;
    return {(0.180423f * b + 0.35758f * g) + 0.412453f * r, (0.072169f * b + 0.71516f * g) + 0.212671f * r,
            (0.950227f * b + 0.119193f * g) + 0.019334f * r};
}
inline FloatTriplet xyzOfBytes(FloatTriplet p) {
    const auto [x, y, z] = xyzFromBlue(p);
    return {x / 242.366f, y / 255.0f, z / 277.632f};
}
inline FloatTriplet xyzOfFloats(FloatTriplet p) {
    const auto [x, y, z] = xyzFromBlue(p);
    return {static_cast<float>(double{x} / 0.950456023), y, static_cast<float>(double{z} / 1.08875394)};
}

inline double labPower(float v) { return std::pow(double{v}, 0.3333333432674408); }
inline float labCurve(float v) { return v > 0.008856f ? static_cast<float>(labPower(v)) : v * 7.787f + 0.13793103f; }
inline float labLightness(float y) { return y > 0.008856f ? 116 * labCurve(y) - 16 : 903.3f * y; }

inline FloatTriplet labBytesOfBytes(FloatTriplet p, Columns) {
    const auto [x, y, z] = xyzOfBytes(p);
    const float fx = labCurve(x), fy = labCurve(y), fz = labCurve(z);
    return {labLightness(y) * 255 / 100 + 0.5f, (fx - fy) * 500 + 128.5f, (fy - fz) * 200 + 128.5f};
}
inline FloatTriplet labWordsOfBytes(FloatTriplet p, Columns) {
    const auto [x, y, z] = xyzOfBytes(p);
    const float fx = labCurve(x), fy = labCurve(y), fz = labCurve(z);
    const float l = y > 0.008856f ? static_cast<float>(116.0 * labPower(y) - 16.0) : 903.3f * y;
    return {l * 65535 / 100, ((fx - fy) * 500 + 128) * 255, ((fy - fz) * 200 + 128) * 255};
}
inline FloatTriplet labOfFloats(FloatTriplet p, Columns) {
    const auto [x, y, z] = xyzOfFloats(p);
    const float fx = labCurve(x), fy = labCurve(y), fz = labCurve(z);
    return {labLightness(y), (fx - fy) * 500, (fy - fz) * 200};
}

inline FloatTriplet rgbOfXyz(float x, float y, float z) {
    return {(3.240479f * x - 1.53715f * y) - 0.498535f * z, (-0.969256f * x + 1.875991f * y) + 0.041556f * z,
            (0.055648f * x - 0.204043f * y) + 1.057311f * z};
}
inline FloatTriplet rgbOfCubes(float fx, float fy, float fz) {
    return rgbOfXyz(242.366f * fx * fx * fx, 255.0f * fy * fy * fy, 277.632f * fz * fz * fz);
}

inline FloatTriplet bytesOfLab(FloatTriplet p, Columns) {
    const float fy = (p[0] * 100.0f / 255 + 16) / 116;
    FloatTriplet rgb = rgbOfCubes((p[1] - 128) / 500 + fy, fy, fy - (p[2] - 128) / 200);
    for (float& v : rgb) v = static_cast<float>(std::trunc(double{v} + 0.5));
    return rgb;
}
inline FloatTriplet bytesOfLabWords(FloatTriplet p, Columns) {
    const float fy = (p[0] * 100.0f / 65535 + 16) / 116;
    return rgbOfCubes((p[1] / 255 - 128) / 500 + fy, fy, fy - (p[2] / 255 - 128) / 200);
}
inline FloatTriplet floatsOfLab(FloatTriplet p, Columns) {
    const float fy = (p[0] + 16) / 116, fx = p[1] / 500 + fy, fz = fy - p[2] / 200;
    return rgbOfXyz(0.950456f * fx * fx * fx, fy * fy * fy, 1.0887539f * fz * fz * fz);
}

}  // namespace model
