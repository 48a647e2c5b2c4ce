// The chroma of an image as rows of samples, which is what the rules between chroma layouts are about.
#pragma once

#include "model/export.h"

namespace model {

// One of the two chroma channels, by its place in the rows of samples that a region has.
class ChromaRows {
  public:
    ChromaRows(const Image& image, int channel) : image_(image), channel_(image.layout->channels[channel]) {}

    uint8_t& at(int row, int sample) const {
        return image_.sample(channel_, sample * (1 << channel_.xShift), row * (1 << channel_.yShift));
    }
    int rows(ZelSize size) const { return size.height >> channel_.yShift; }
    int samples(ZelSize size) const { return size.width >> channel_.xShift; }

  private:
    const Image& image_;
    const Channel& channel_;
};

inline void copyLuma(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x)
            c.destination.sample(c.destination.layout->channels[0], x, y) = c.source.sample(c.source.layout->channels[0], x, y);
}

// Sets every chroma sample to rule(source, row, sample).
template <class Rule>
void setChroma(const Conversion& c, Rule rule) {
    for (const int channel : {1, 2}) {
        const ChromaRows from(c.source, channel), to(c.destination, channel);
        for (int row = 0; row < to.rows(c.size); ++row)
            for (int i = 0; i < to.samples(c.size); ++i) to.at(row, i) = static_cast<uint8_t>(rule(from, row, i));
    }
}

constexpr int roundedMean(int a, int b) { return (a + b + 1) >> 1; }
constexpr int truncatedMean(int a, int b) { return (a + b) >> 1; }
constexpr int mean(int a, int b, bool rounds) { return rounds ? roundedMean(a, b) : truncatedMean(a, b); }

}  // namespace model
