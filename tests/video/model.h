// The conversions of libzelvideo once more, a sample at a time, from the definitions of docs/video.md and H.273 alone.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "zelvideo.h"

namespace video {

// A picture in memory that the model reads and writes, whoever owns it.
struct Picture {
    ZelvFormat format;
    ZelSize size;
    std::array<uint8_t*, 4> planes;
    std::array<int32_t, 4> steps;
};

int planeCount(const ZelvFormat&);
int rowBytes(const ZelvFormat&, int plane, int width);
int rowCount(const ZelvFormat&, int plane, int height);

enum Channel { first, second, third, alpha };
int sitesAcross(const ZelvFormat&);  // pixels
int sitesDown(const ZelvFormat&);
bool isRgb(const ZelvFormat&);
bool isGray(const ZelvFormat&);
bool has(const ZelvFormat&, char letter);

// A sample as a number: of a pixel, or of a site where the channel is chroma.
uint32_t sample(const Picture&, Channel, int x, int y);
void setSample(const Picture&, Channel, int x, int y, uint32_t value);

// Rows of the destination from the source.
void convert(const Picture& from, const Picture& to, const ZelvOptions&);

// The exact value of each channel of the destination, of a pixel of the source that has a site of its own.
using Exact = std::array<long double, 3>;
Exact exact(const ZelvFormat& from, const ZelvFormat& to, const std::array<uint32_t, 3>& pixel);

}  // namespace video
