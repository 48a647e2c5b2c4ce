// Model of the conversions between chroma layouts that move samples, and of the few that take a plain mean of two.
#pragma once

#include "model/chroma_samples.h"

namespace model {

// Every sample of the destination is the source's at the same pixel: what is lost was between, and what is repeated is shared.
inline void samePixel(const Conversion& c) {
    for (int channel = 0; channel < 3; ++channel) {
        const Channel &from = c.source.layout->channels[channel], &to = c.destination.layout->channels[channel];
        for (int y = 0; y < c.size.height; y += 1 << to.yShift)
            for (int x = 0; x < c.size.width; x += 1 << to.xShift) c.destination.sample(to, x, y) = c.source.sample(from, x, y);
    }
}

// 4:2:0 to 4:2:2 where the second row of a pair, in the last plane and for the samples behind the last block of 64 and before
// the last few, stands one step of the plane before it below the first row.
inline void samePixelMisplacing(const Conversion& c) {
    copyLuma(c);
    const Plane &before = c.destination.planes[1], &last = c.destination.planes[2];
    const int samples = c.size.width / 2;
    for (int row = 0; row < c.size.height / 2; ++row) {
        for (int i = 0; i < samples; ++i) {
            const bool isMisplaced = i >= (samples & ~63) && i < (samples & ~7);
            for (const int channel : {1, 2}) {
                const uint8_t value = ChromaRows(c.source, channel).at(row, i);
                const ChromaRows to(c.destination, channel);
                to.at(2 * row, i) = value;
                if (c.destination.layout->channels[channel].plane == 2 && isMisplaced)
                    last.first[2 * row * last.step + before.step + i] = value;
                else
                    to.at(2 * row + 1, i) = value;
            }
        }
    }
}

// Two rows of 4:1:1 become one of 4:2:0 with twice the samples, in turns.
inline void fold(const Conversion& c) {
    copyLuma(c);
    setChroma(c, [](const ChromaRows& from, int row, int i) { return from.at(2 * row + i % 2, i / 2); });
}
inline void unfold(const Conversion& c) {
    copyLuma(c);
    setChroma(c, [](const ChromaRows& from, int row, int i) { return from.at(row / 2, 2 * i + row % 2); });
}

// Blocks of 16 source samples round their means, as long as a sample remains behind them.
constexpr bool isInBlockOf16(int sample, int samples) { return sample < ((samples - 1) & ~15); }

// 4:1:1 to 4:2:0: samples are doubled by means with the next one; every second row is dropped.
inline void doubleSamples(const Conversion& c) {
    copyLuma(c);
    const int samples = c.size.width / 4;
    setChroma(c, [&](const ChromaRows& from, int row, int i) {
        const int left = i / 2, right = left + 1;
        if (i % 2 == 0 || right == samples) return int{from.at(2 * row, left)};
        return mean(from.at(2 * row, left), from.at(2 * row, right), isInBlockOf16(left, samples));
    });
}

// 4:2:0 to 4:1:1: every second sample is dropped; rows are doubled by means with the next one.
inline void doubleRows(const Conversion& c) {
    copyLuma(c);
    const int samples = c.size.width / 4, sourceRows = c.size.height / 2;
    setChroma(c, [&](const ChromaRows& from, int row, int i) {
        const int upper = row / 2, lower = upper + 1;
        if (row % 2 == 0 || lower == sourceRows) return int{from.at(upper, 2 * i)};
        return mean(from.at(upper, 2 * i), from.at(lower, 2 * i), i < (samples & ~31));
    });
}

// Chroma of a quarter of the pixels each way to 4:2:0. The sample in the middle of four takes its right neighbour's mean with
// the one below, not the mean of all four.
inline void doubleSamplesAndRows(const Conversion& c) {
    copyLuma(c);
    const int samples = c.size.width / 4, sourceRows = c.size.height / 4;
    setChroma(c, [&](const ChromaRows& from, int row, int i) {
        const int upper = row / 2, left = i / 2;
        const bool hasLower = row % 2 == 1 && upper + 1 < sourceRows, hasRight = i % 2 == 1 && left + 1 < samples;
        const bool rounds = isInBlockOf16(left, samples);
        const auto vertical = [&](int sample) {
            return hasLower ? mean(from.at(upper, sample), from.at(upper + 1, sample), rounds) : from.at(upper, sample);
        };
        if (!hasRight) return vertical(left);
        const int horizontal = mean(from.at(upper, left), from.at(upper, left + 1), rounds);
        return hasLower ? mean(horizontal, vertical(left + 1), rounds) : horizontal;
    });
}

}  // namespace model
