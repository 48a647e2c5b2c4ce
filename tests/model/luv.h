// Model of LUV. Channels are in the order R, G, B and L, U, V.
#pragma once

#include "model/colorimetric.h"
#include "model/reciprocal.h"

namespace model {

struct Columns {
    bool inBlock;
};
using LuvRule = FloatTriplet (*)(FloatTriplet, Columns);

inline FloatTriplet luvOfBytes(FloatTriplet p, Columns) {
    const auto [sumX, sumY, sumZ] = toXyz(p);
    const float x = sumX / 255.0f, y = sumY / 255.0f, z = sumZ / 255.0f;
    const auto root = static_cast<float>(std::pow(double{y}, 0.3333333432674408));
    const float l = y <= 0.008856f ? y * 903.3f : root * 116 - 16;
    const float d = (z * 3 + x) + 15 * y;
    const float u = y == 0 ? 0 : 4 * x / d, v = y == 0 ? 0 : 9 * y / d;
    const float uf = (u - 0.197839f) * 13 * l + 134, vf = 13 * l * (v - 0.468342f) + 140;
    return {255 * l / 100, uf * 255 / 354 + 0.5f, vf * 255 / 262 + 0.5f};
}

// The root by the table and some terms of the series.
inline float rootByTable(float y, int row, int terms) {
    float t, r;
    if (row == 0) {
        t = 0.19926899671554565f, r = 126.38040161132812f;
    } else if (row == 1) {
        t = 0.25053301453590393f, r = 63.592041015625f;
    } else if (row == 127) {
        t = 1.0000330209732056f, r = 0.9998999834060669f;
    } else {
        t = static_cast<float>(std::cbrt((row + 1.0128) / 128));
        r = static_cast<float>(1 / (double{t} * double{t} * double{t}));
    }
    constexpr float c[] = {0.3333333432674408f,  0.1111111119389534f,   0.06172839552164078f,  0.041152264922857285f,
                           0.03017832711338997f, 0.023472031578421593f, 0.019001169130206108f, 0.015834307298064232f};
    const float x = (y - t * t * t) * r;
    float s = 0;
    for (int i = terms - 1; i >= 0; --i) s = (i == terms - 1 ? 0 : s * x) + (i % 2 == 0 ? c[i] : -c[i]);
    return t * (s * x + 1);
}

inline float lightnessByTable(float y, int row, int terms) {
    return y <= 0.008856f ? y * 903.3f : rootByTable(y, row, terms) * 116 - 16;
}

inline FloatTriplet luvOfFloats(FloatTriplet p, Columns columns) {
    const auto [x, y, z] = toXyz(p);
    const float place = y * 127.998046875f;
    const float l = lightnessByTable(y, place > 127 ? 127 : place > 0 ? static_cast<int>(place) : 0, 8);
    float d = (3 * z + 15 * y) + x;
    if (d == 0 && !columns.inBlock) return {l, 0, 0};
    if (d == 0) d += 3;
    const float inverse = refinedReciprocal(d);
    return {l, 13 * l * (4 * x * inverse - 0.197839f), 13 * l * (9 * y * inverse - 0.468342f)};
}

inline FloatTriplet luvOfWords(FloatTriplet p, Columns columns) {
    const auto [x, y, z] = toXyz(p);
    const float l = lightnessByTable(y * 1.5259021893143654e-05f, std::min(static_cast<int>(y) >> 9, 127), 6);
    float d = (3 * z + 15 * y) + x;
    if (d == 0 && !columns.inBlock) return {l * 655.35f, 0, 0};
    if (d == 0) d += 3;
    const float inverse = refinedReciprocal(d), u = 4 * x * inverse, v = 9 * y * inverse;
    return {l * 655.3499755859375f, ((u - 0.197839f) * 13 * l + 134) * 185.1271209716797f,
            (13 * (v - 0.468342f) * l + 140) * 250.1335906982422f + 0.5f};
}

inline float cubeOf(float t) { return t * t * t; }

// The last columns divide.
inline FloatTriplet rgbOfLuvByDivision(FloatTriplet p, float full) {
    const float l = p[0] * 100 / full, u = p[1] * 354 / full - 134, v = p[2] * 262 / full - 140;
    if (l < 9e-05f) return {};
    const float y = (l >= 7.9996247f ? cubeOf((l + 16) / 116) : l / 903.3f) * full;
    const float up = u / (13 * l) + 0.19783941f, vp = v / (13 * l) + 0.4683422f;
    const float w = y / (std::fabs(vp) < 1.1920929e-05f ? vp + 9e-05f : vp);
    const float x = up * 2.25f * w, z = (w * 3 - 5 * y) - x / 3;
    const float blue = 0.055648f * x - 0.204043f * y, blueOfZ = 1.057311f * z;
    return {((0.5f - 1.53715f * y) + 3.240479f * x) - 0.498535f * z, ((1.875991f * y + 0.5f) - 0.969256f * x) + 0.041556f * z,
            static_cast<float>(std::trunc((double{blue} + 0.5) + double{blueOfZ}))};
}

inline FloatTriplet rgbOfLuvByReciprocals(FloatTriplet p, double full, float (*reciprocal)(float)) {
    const float l = p[0] * float(100 / full), u = p[1] * float(354 / full) - 134, v = p[2] * float(262 / full) - 140;
    if (l < 9e-05f) return {};
    const float y = (l >= 7.9996247f ? cubeOf((l + 16) * float(1 / 116.0)) : l * float(1 / 903.3)) * float(full);
    const float q = reciprocal(13 * l), up = u * q + 0.19783941f, vp = v * q + 0.4683422f;
    const float w = y * reciprocal(std::fabs(vp) < 1.1920929e-05f ? vp + 9e-05f : vp);
    const float x = up * 2.25f * w, z = (w * 3 - 5 * y) - x * float(1 / 3.0);
    return {((0.5f - 1.53715f * y) + 3.240479f * x) - 0.498535f * z, ((1.875991f * y + 0.5f) - 0.969256f * x) + 0.041556f * z,
            ((0.055648f * x - 0.204043f * y) + 0.5f) + 1.057311f * z};
}

inline FloatTriplet bytesOfLuv(FloatTriplet p, Columns columns) {
    return columns.inBlock ? rgbOfLuvByReciprocals(p, 255, approximateReciprocal) : rgbOfLuvByDivision(p, 255);
}
inline FloatTriplet wordsOfLuv(FloatTriplet p, Columns columns) {
    return columns.inBlock ? rgbOfLuvByReciprocals(p, 65535, refinedReciprocal) : rgbOfLuvByDivision(p, 65535);
}

inline FloatTriplet floatsOfLuv(FloatTriplet p, Columns) {
    const auto [l, u, v] = p;
    if (l < 9e-05f) return {};
    const float y = l >= 7.9996247f ? cubeOf((l + 16) / 116) : l / 903.3f;
    const float vp = v / (13 * l) + 0.468342f, up = u / (13 * l) + 0.197839f;
    const float w = y / (std::fabs(vp) < 1.1920929e-07f ? vp + 9e-05f : vp);
    const float x = up * 2.25f * w, z = (w * 3 - 5 * y) - x / 3;
    return upTo1({(3.240479f * x - 1.53715f * y) - 0.498535f * z, (1.875991f * y - 0.969256f * x) + 0.041556f * z,
                  (0.055648f * x - 0.204043f * y) + 1.057311f * z});
}

}  // namespace model
