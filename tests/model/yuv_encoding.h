// Model of the encoders to analog YUV:
//   Y = 0.299 R + 0.587 G + 0.114 B,  U = 0.492 (B - Y) + 128,  V = 0.877 (R - Y) + 128
#pragma once

#include "model/luma_encoding.h"

namespace model {

// A pixel has a luma word, of which its luma is made. A site's chroma comes from the sums of the channels and of the luma words.
struct AnalogRule {
    int (*word)(Rgb pixel);
    int (*luma)(int word);
    Chroma (*chroma)(Rgb sum, int words);
};

template <int Shift, int Rounding = 0>
constexpr int lumaOf(int word) {
    return (word + Rounding) >> Shift;
}

// Exact sums at two scales.
constexpr int word65536(Rgb p) { return 19595 * p.r + 38470 * p.g + 7471 * p.b; }
constexpr int word32768(Rgb p) { return 9798 * p.r + 19235 * p.g + 3736 * p.b; }

// U of these rules stays in 16..239 of a byte; a wider one would be stored as its low byte.
constexpr int lowByte(int v) { return v & 255; }

template <int Rounding, int Shift>
constexpr Chroma differences(Rgb s, int words) {
    return {lowByte((((s.b * 65536 - words + Rounding) >> 16) * 32244 >> Shift) + 128),
            sat8(int(int64_t{(s.r * 65536 - words + Rounding) >> 16} * 57475 >> Shift) + 128)};
}
constexpr Chroma loneDifferences(Rgb p, int word) {
    return {lowByte((((p.b * 32768 - word + 16383) >> 15) * 16121 >> 15) - 128),
            sat8((((p.r * 32768 - word + 32767) >> 15) * 28737 >> 15) + 128)};
}

// Twice the luma.
constexpr int doubledWord(Rgb p) { return word32768(p) >> 14; }
constexpr int highHalf(int a, int c) { return a * c >> 16; }
template <int Halving>
constexpr Chroma doubledDifferences(Rgb s, int words) {
    return {(highHalf(2 * s.b - words, 16121) >> Halving) + 128, sat8((highHalf(2 * s.r - words, 28737) >> Halving) + 128)};
}

// Every product is rounded by itself.
constexpr int roundedWord(Rgb p) { return rounded(p.r, 4899) + rounded(p.g, 9617) + rounded(p.b, 1868); }
template <int Weight, int Halving>
constexpr Chroma roundedDifferences(Rgb s, int words) {
    const auto scaled = [&](int own, int c) { return ((Weight * own - (words >> Halving)) * c + 16384) >> 15; };
    return {sat8((scaled(s.b, 8061) >> 6) + 128), sat8((scaled(s.r, 14369) >> 6) + 128)};
}

// A matrix of its own, every product floored by itself.
constexpr int directWord(Rgb p) { return (p.r * 19595 >> 8) + (p.g * 38470 >> 8) + (p.b * 7471 >> 8); }
constexpr Chroma directMatrix(Rgb p, int) {
    const auto high = [](int x, int c) { return x * c >> 9; };
    return {sat8(((high(p.r, -4816) + high(p.g, -9469) + high(p.b, 14286) + 32) >> 6) + 128),
            sat8(((high(p.r, 20152) + high(p.g, -16875) + high(p.b, -3276) + 32) >> 6) + 128)};
}
constexpr int directTailWord(Rgb p) { return 19595 * p.r + 38469 * p.g + 7471 * p.b; }
constexpr Chroma directTailMatrix(Rgb p, int) {
    return {((-4816 * p.r - 9469 * p.g + 14286 * p.b + 16384) >> 15) + 128,
            sat8(((20152 * p.r - 16875 * p.g - 3276 * p.b + 16384) >> 15) + 128)};
}

inline constexpr AnalogRule direct{directWord, lumaOf<8, 128>, directMatrix};
inline constexpr AnalogRule directTail{directTailWord, lumaOf<16, 32768>, directTailMatrix};
inline constexpr AnalogRule scalarAnalog{word65536, lumaOf<16, 32768>, differences<32768, 16>};
inline constexpr AnalogRule truncatedAnalog{word65536, lumaOf<16>, differences<32767, 16>};
inline constexpr AnalogRule doubledAnalog{doubledWord, lumaOf<1>, doubledDifferences<0>};

inline constexpr AnalogRule scalarOf2{word65536, lumaOf<16>, differences<65535, 17>};
inline constexpr AnalogRule lonePixel{word32768, lumaOf<15>, loneDifferences};
inline constexpr AnalogRule doubledOf2{doubledWord, lumaOf<1>, doubledDifferences<1>};
inline constexpr AnalogRule roundedOf2{roundedWord, lumaOf<6>, roundedDifferences<64, 0>};

inline constexpr AnalogRule scalarAnalogOf4{word65536, lumaOf<16, 32768>, differences<131071, 18>};
inline constexpr AnalogRule roundedAnalogOf4{roundedWord, lumaOf<6>, roundedDifferences<32, 1>};

// The last pixel of an odd row is a site of its own, of which a packed row has no V.
template <const AnalogRule& Block, const AnalogRule& Tail, const AnalogRule& AlignedBlock = Block>
void encodeAnalog(const Conversion& c) {
    const auto& [red, green, blue, alpha] = c.source.layout->channels;
    const auto& [luma, u, v, alphaPlane] = c.destination.layout->channels;
    const int siteWidth = 1 << u.xShift, siteHeight = 1 << u.yShift;
    const auto put = [&](const Channel& channel, int x, int y, int value) {
        const int rowBytes = c.destination.layout->planes[channel.plane].rowBytes(c.size.width);
        if (channel.position(x) < rowBytes) c.destination.sample(channel, x, y) = static_cast<uint8_t>(value);
    };
    for (int top = 0; top < c.size.height; top += siteHeight) {
        for (int left = 0; left < c.size.width; left += siteWidth) {
            const int right = std::min(left + siteWidth, c.size.width);
            const AnalogRule& rule = right - left < siteWidth ? lonePixel
                                     : left >= c.blockPixels  ? Tail
                                     : c.aligned              ? AlignedBlock
                                                              : Block;
            Rgb sum;
            int words = 0;
            for (int y = top; y < top + siteHeight; ++y) {
                for (int x = left; x < right; ++x) {
                    const Rgb pixel{c.source.sample(red, x, y), c.source.sample(green, x, y), c.source.sample(blue, x, y)};
                    sum = {sum.r + pixel.r, sum.g + pixel.g, sum.b + pixel.b};
                    words += rule.word(pixel);
                    put(luma, x, y, rule.luma(rule.word(pixel)));
                    if (alphaPlane.plane > 0) put(alphaPlane, x, y, c.source.sample(alpha, x, y));
                }
            }
            const Chroma chroma = rule.chroma(sum, words);
            put(u, left, top, chroma.cb);
            put(v, left, top, chroma.cr);
        }
    }
}

}  // namespace model
