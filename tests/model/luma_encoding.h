// Model of the encoders, RGB to luma and chroma, studio range:
//   Y  =  0.257 R + 0.504 G + 0.098 B + 16
//   Cb = -0.148 R - 0.291 G + 0.439 B + 128
//   Cr =  0.439 R - 0.368 G - 0.071 B + 128
// Each rule is an exact integer form of it; where and how often a rule floors is what sets it apart.
#pragma once

#include <algorithm>

#include "model/export.h"

namespace model {

struct Rgb {
    int r = 0, g = 0, b = 0;
};

struct Chroma {
    int cb, cr;
};

constexpr int sat8(int v) { return std::clamp(v, 0, 255); }

// A chroma site: luma of its pixels (the first of a pair, the others), chroma from the channel sums over its pixels.
struct EncodeRule {
    int (*luma)(Rgb pixel);
    int (*secondLuma)(Rgb pixel);
    Chroma (*chroma)(Rgb sum);
};

// Exact sums, floored once. `Offset` holds the offset of the result and what is added for rounding.
template <int Offset>
constexpr int exactLuma(Rgb p) {
    return (16843 * p.r + 33030 * p.g + 6423 * p.b + Offset) >> 16;
}
template <int Offset, int Shift>
constexpr Chroma exactChroma(Rgb s) {
    return {(-9699 * s.r - 19071 * s.g + 28770 * s.b + Offset) >> Shift,
            (28770 * s.r - 24117 * s.g - 4653 * s.b + Offset) >> Shift};
}

// High multiplies of words: every product is floored by itself.
constexpr int wordLuma(Rgb p) { return (((p.r * 16843 >> 8) + (p.g * 33030 >> 8) + (p.b * 6423 >> 8) + 128) >> 8) + 16; }
constexpr int truncatedWordLuma(Rgb p) { return (((p.r * 16843 >> 8) + (p.g * 33030 >> 8) + (p.b * 6423 >> 8)) >> 8) + 16; }
constexpr int halfWordLuma(Rgb p) { return ((p.r * 8422 >> 8) + (p.g * 16515 >> 8) + (p.b * 3212 >> 8) + 2112) >> 7; }
constexpr Chroma wordChroma(Rgb p) {
    return {(((p.r * -9699 >> 9) + (p.g * -19071 >> 9) + (p.b * 28770 >> 9) + 64) >> 7) + 128,
            (((p.r * 28770 >> 9) + (p.g * -24117 >> 9) + (p.b * -4653 >> 9) + 64) >> 7) + 128};
}
template <int Offset, int Shift>
constexpr Chroma sumWordChroma(Rgb s) {
    const auto high = [](int sum, int c) { return sum * 32 * c >> 16; };
    return {(Offset + high(s.b, 28770) - (high(s.r, 9699) + high(s.g, 19071))) >> Shift,
            (Offset + high(s.r, 28770) - (high(s.g, 24117) + high(s.b, 4653))) >> Shift};
}

// Rounding high multiplies of words: every product is rounded, and the sum truncated but for a small constant.
constexpr int rounded(int x, int c) { return (x * c + 128) >> 8; }
constexpr int roundedSum(int sum, int c) { return (sum * 32 * c + 16384) >> 15; }

constexpr int roundedLuma(Rgb p) { return sat8((rounded(p.r, 4211) + rounded(p.g, 8258) + rounded(p.b, 1606) + 1026) >> 6); }
constexpr int plainRoundedLuma(Rgb p) { return ((rounded(p.r, 4211) + rounded(p.g, 8258) + rounded(p.b, 1606)) >> 6) + 16; }
constexpr Chroma roundedChroma(Rgb p) {
    return {sat8((rounded(p.b, 7193) - rounded(p.g, 4768) - rounded(p.r, 2425) + 8194) >> 6),
            sat8((rounded(p.r, 7193) - rounded(p.g, 6029) - rounded(p.b, 1163) + 8194) >> 6)};
}
constexpr Chroma roundedSumChroma(Rgb s) {
    return {sat8((roundedSum(s.b, 7193) - roundedSum(s.g, 4768) - roundedSum(s.r, 2425) + 8194) >> 6),
            sat8((roundedSum(s.r, 7193) - roundedSum(s.g, 6029) - roundedSum(s.b, 1163) + 8194) >> 6)};
}
constexpr Chroma plainRoundedSumChroma(Rgb s) {
    return {((roundedSum(s.b, 7193) - roundedSum(s.r, 2425) - roundedSum(s.g, 4768)) >> 6) + 128,
            ((roundedSum(s.r, 7193) - roundedSum(s.b, 1163) - roundedSum(s.g, 6029)) >> 6) + 128};
}

inline constexpr auto roundedToNearest = exactLuma<0x108000>;
inline constexpr auto truncated = exactLuma<0x100000>;

inline constexpr EncodeRule scalar444{roundedToNearest, roundedToNearest, exactChroma<0x808000, 16>};
inline constexpr EncodeRule word444{wordLuma, wordLuma, wordChroma};
inline constexpr EncodeRule rounded444{roundedLuma, roundedLuma, roundedChroma};

inline constexpr EncodeRule scalar422{roundedToNearest, roundedToNearest, exactChroma<0x1004000, 17>};
inline constexpr EncodeRule scalarPacked422{roundedToNearest, truncated, exactChroma<0x1010000, 17>};
inline constexpr EncodeRule word422{halfWordLuma, halfWordLuma, sumWordChroma<8200, 6>};
inline constexpr EncodeRule wordPacked422{truncatedWordLuma, truncatedWordLuma, exactChroma<0x1010000, 17>};

// Sites of four pixels: 2 x 2 and 4 x 1.
inline constexpr EncodeRule scalarOf4{roundedToNearest, roundedToNearest, exactChroma<0x2008000, 18>};
inline constexpr EncodeRule wordOf4{halfWordLuma, halfWordLuma, sumWordChroma<16400, 7>};
inline constexpr EncodeRule roundedOf4{roundedLuma, roundedLuma, roundedSumChroma};
inline constexpr EncodeRule plainRoundedOf4{plainRoundedLuma, plainRoundedLuma, plainRoundedSumChroma};

// A last pixel without its partner gets its luma and the chroma that stands first in the stream.
template <const EncodeRule& Block, const EncodeRule& Tail, const EncodeRule& Lone = Tail>
void encode(const Conversion& c) {
    const auto& [red, green, blue, alpha] = c.source.layout->channels;
    const auto& [luma, cb, cr, none] = c.destination.layout->channels;
    const int siteWidth = 1 << cb.xShift, siteHeight = 1 << cb.yShift;
    const auto put = [&](const Channel& channel, int x, int y, int value) {
        const int rowBytes = c.destination.layout->planes[channel.plane].rowBytes(c.size.width);
        if (channel.position(x) < rowBytes) c.destination.sample(channel, x, y) = static_cast<uint8_t>(value);
    };
    for (int top = 0; top < c.size.height; top += siteHeight) {
        for (int left = 0; left < c.size.width; left += siteWidth) {
            const int right = std::min(left + siteWidth, c.size.width);
            const EncodeRule& rule = right - left < siteWidth ? Lone : left < c.blockPixels ? Block : Tail;
            Rgb sum;
            for (int y = top; y < top + siteHeight; ++y) {
                for (int x = left; x < right; ++x) {
                    const Rgb pixel{c.source.sample(red, x, y), c.source.sample(green, x, y), c.source.sample(blue, x, y)};
                    sum = {sum.r + pixel.r, sum.g + pixel.g, sum.b + pixel.b};
                    put(luma, x, y, (x - left) % 2 == 0 ? rule.luma(pixel) : rule.secondLuma(pixel));
                }
            }
            const Chroma chroma = rule.chroma(sum);
            put(cb, left, top, chroma.cb);
            put(cr, left, top, chroma.cr);
        }
    }
}

}  // namespace model
