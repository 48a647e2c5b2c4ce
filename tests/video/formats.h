// Formats of every kind, by a choice of numbers: what the sweeps and the fuzz target draw from.
#pragma once

#include <cstring>

#include "zelvideo.h"

namespace video {

struct Shape {
    int32_t layout;
    const char* components;
};
inline constexpr Shape shapes[] = {
    {zelvPlanar, "Y"},         {zelvPlanar, "YUV"},       {zelvPlanar, "YVU"},       {zelvPlanar, "YUVA"},
    {zelvPlanar, "GBR"},       {zelvPlanar, "GBRA"},      {zelvPlanar, "RGB"},       {zelvSemiPlanar, "YUV"},
    {zelvSemiPlanar, "YVU"},   {zelvInterleaved, "RGB"},  {zelvInterleaved, "BGR"},  {zelvInterleaved, "RGBA"},
    {zelvInterleaved, "ABGR"}, {zelvInterleaved, "BGRX"}, {zelvInterleaved, "XRGB"}, {zelvInterleaved, "YUV"},
    {zelvInterleaved, "AYUV"}, {zelvInterleaved, "VUYA"}, {zelvInterleaved, "UYVX"}, {zelvPaired, "YUYV"},
    {zelvPaired, "UYVY"},      {zelvPaired, "YVYU"},      {zelvPaired, "VYUY"},      {zelvDwords, "UYVA"},
    {zelvDwords, "VYUX"},      {zelvDwords, "BGRX"},      {zelvDwords, "RGBA"},      {zelvV210, "YUV"},
};

// `below(n)` gives a number from 0 to n - 1.
template <class Below>
ZelvFormat anyFormat(const Below& below) {
    constexpr int32_t depths[] = {8, 8, 10, 10, 9, 12, 14, 16, 32}, matrices[] = {1, 4, 5, 6, 7, 8, 9, zelvMatrixGiven};
    const Shape& shape = shapes[below(static_cast<int>(sizeof shapes / sizeof *shapes))];
    const bool rgb = std::strchr(shape.components, 'R'), gray = std::strlen(shape.components) == 1;
    ZelvFormat f{};
    f.layout = shape.layout;
    std::strcpy(f.components, shape.components);
    const bool isPaired = f.layout == zelvPaired || f.layout == zelvV210, isTen = f.layout == zelvDwords || f.layout == zelvV210;
    if (isPaired)
        f.sampling = zelv422;
    else if (!rgb && !gray && f.layout <= zelvSemiPlanar)
        f.sampling = below(5);
    f.depth = isTen ? 10 : depths[below(rgb ? 9 : 8)];
    if (!isTen && f.depth > 8 && f.depth < 32) f.alignment = below(2);
    f.range = f.depth == 32 ? zelvFull : below(2);
    if (!rgb) f.matrix = matrices[below(8)];
    if (f.matrix == zelvMatrixGiven) {
        f.kr = below(7501);
        f.kb = below(7501 - f.kr);
    }
    if (f.sampling != zelv444) f.location = below(3);
    return f;
}

}  // namespace video
