// Model of the encoders, RGB to luma and chroma, studio range where nothing else is said:
//   Y  =  0.257 R + 0.504 G + 0.098 B + 16
//   Cb = -0.148 R - 0.291 G + 0.439 B + 128
//   Cr =  0.439 R - 0.368 G - 0.071 B + 128
// Each rule is an exact integer form of it; where and how often a rule floors is what sets it apart.
#pragma once

#include <algorithm>
#include <array>

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

// BT.709 in studio range, over sites of 2 x 2.
constexpr int high5(int sum, int c) { return sum * 32 * c >> 16; }

inline constexpr EncodeRule hdScalarOf4{[](Rgb p) { return (11993 * p.r + 40239 * p.g + 4063 * p.b + 0x108000) >> 16; },
                                        [](Rgb p) { return (11993 * p.r + 40239 * p.g + 4063 * p.b + 0x108000) >> 16; },
                                        [](Rgb s) {
                                            return Chroma{(-6619 * s.r - 22151 * s.g + 28770 * s.b + 0x2008000) >> 18,
                                                          (28770 * s.r - 26149 * s.g - 2621 * s.b + 0x2008000) >> 18};
                                        }};
constexpr int hdWordLuma(Rgb p) { return ((p.r * 5997 >> 8) + (p.g * 20120 >> 8) + (p.b * 2032 >> 8) + 2112) >> 7; }
inline constexpr EncodeRule hdWordOf4{hdWordLuma, hdWordLuma, [](Rgb s) {
                                          return Chroma{
                                              (16400 + high5(s.b, 28770) - (high5(s.r, 6619) + high5(s.g, 22151))) >> 7,
                                              (16400 + high5(s.r, 28770) - (high5(s.g, 26149) + high5(s.b, 2621))) >> 7};
                                      }};

// BT.709 with luma in full range. Nothing becomes 0 or 255.
constexpr int limit(int v) { return std::clamp(v, 1, 254); }

constexpr int fullLuma(Rgb p) { return limit((13959 * p.r + 46858 * p.g + 4719 * p.b + 32768) >> 16); }
constexpr int fullWordLuma(Rgb p) { return limit(((p.r * 6980 >> 8) + (p.g * 23429 >> 8) + (p.b * 2359 >> 8) + 64) >> 7); }
template <int CbOffset, int CrOffset, int Shift>
constexpr Chroma fullChroma(Rgb s) {
    return {limit((s.r * -7668 + s.g * -25821 + s.b * 33489 + CbOffset) >> Shift),
            limit((s.r * 33489 + s.g * -30409 + s.b * -3080 + CrOffset) >> Shift)};
}
// The sum of a pair is doubled, so that it counts as four pixels.
template <int Scale>
constexpr Chroma fullWordChroma(Rgb s) {
    const auto high = [](int sum, int c) { return sum * Scale * c >> 16; };
    return {limit((8224 + high(s.b, 16744) - (high(s.r, 3834) + high(s.g, 12911))) >> 6),
            limit((8224 + high(s.r, 16744) - (high(s.g, 15204) + high(s.b, 1540))) >> 6)};
}
inline constexpr EncodeRule fullScalarOf4{fullLuma, fullLuma, fullChroma<0x2008000, 0x2008000, 18>};
inline constexpr EncodeRule fullWordOf4{fullWordLuma, fullWordLuma, fullWordChroma<32>};
inline constexpr EncodeRule fullScalar422{fullLuma, fullLuma, fullChroma<0x1010000, 0x100fffe, 17>};
inline constexpr EncodeRule fullWord422{fullWordLuma, fullWordLuma, fullWordChroma<64>};
inline constexpr EncodeRule fullSingle{fullLuma, fullLuma, fullChroma<0x808000, 0x808000, 16>};

// Cb Y Cr Y: exact sums at scale 32768, and word luma beside rounded chroma.
constexpr int luma15(Rgb p) { return ((8422 * p.r + 16515 * p.g + 3212 * p.b + 16384) >> 15) + 16; }
constexpr Chroma chroma15(Rgb s) {
    return {((-2425 * s.r - 4768 * s.g + 7193 * s.b + 16384) >> 15) + 128,
            ((7193 * s.r - 6029 * s.g - 1163 * s.b + 16383) >> 15) + 128};
}
inline constexpr EncodeRule scalarAt15{luma15, luma15, chroma15};
inline constexpr EncodeRule wordWithRoundedChroma{halfWordLuma, halfWordLuma, [](Rgb s) {
                                                      return Chroma{
                                                          (((-9699 * s.r - 19071 * s.g + 28770 * s.b) >> 10) + 16448) >> 7,
                                                          (((28770 * s.r - 24117 * s.g - 4653 * s.b) >> 10) + 16448) >> 7};
                                                  }};

// The transfer function of BT.709, of which each value is the nearest.
inline constexpr std::array<uint8_t, 256> transferred{
    0,   4,   9,   14,  18,  23,  27,  30,  34,  37,  40,  43,  46,  48,  51,  53,  55,  58,  60,  62,  64,  66,  68,  70,
    72,  73,  75,  77,  78,  80,  82,  83,  85,  86,  88,  89,  91,  92,  94,  95,  97,  98,  99,  101, 102, 103, 104, 106,
    107, 108, 109, 111, 112, 113, 114, 115, 116, 118, 119, 120, 121, 122, 123, 124, 125, 126, 127, 128, 129, 130, 131, 132,
    133, 134, 135, 136, 137, 138, 139, 140, 141, 142, 143, 144, 145, 146, 147, 147, 148, 149, 150, 151, 152, 153, 154, 154,
    155, 156, 157, 158, 159, 159, 160, 161, 162, 163, 164, 164, 165, 166, 167, 168, 168, 169, 170, 171, 171, 172, 173, 174,
    174, 175, 176, 177, 177, 178, 179, 180, 180, 181, 182, 182, 183, 184, 185, 185, 186, 187, 187, 188, 189, 189, 190, 191,
    191, 192, 193, 193, 194, 195, 195, 196, 197, 197, 198, 199, 199, 200, 201, 201, 202, 203, 203, 204, 205, 205, 206, 206,
    207, 208, 208, 209, 209, 210, 211, 211, 212, 213, 213, 214, 214, 215, 216, 216, 217, 217, 218, 218, 219, 220, 220, 221,
    221, 222, 223, 223, 224, 224, 225, 225, 226, 227, 227, 228, 228, 229, 229, 230, 230, 231, 232, 232, 233, 233, 234, 234,
    235, 235, 236, 236, 237, 238, 238, 239, 239, 240, 240, 241, 241, 242, 242, 243, 243, 244, 244, 245, 245, 246, 246, 247,
    247, 248, 248, 249, 249, 250, 251, 251, 252, 252, 253, 253, 254, 254, 255, 255};

// What an encoder sees of the source.
constexpr Rgb asItIs(Rgb p) { return p; }
constexpr Rgb transferredRgb(Rgb p) { return {transferred[p.r], transferred[p.g], transferred[p.b]}; }

// A last pixel without its partner gets its luma and the chroma that stands first in the stream.
template <const EncodeRule& Block, const EncodeRule& Tail, const EncodeRule& Lone = Tail, Rgb (*Seen)(Rgb) = asItIs>
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
                    const Rgb pixel =
                        Seen({c.source.sample(red, x, y), c.source.sample(green, x, y), c.source.sample(blue, x, y)});
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
