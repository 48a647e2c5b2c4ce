// Model of the decoders, luma and chroma to RGB, studio range where nothing else is said:
//   R = 1.164 (Y - 16) + 1.596 (Cr - 128)
//   G = 1.164 (Y - 16) - 0.813 (Cr - 128) - 0.392 (Cb - 128)
//   B = 1.164 (Y - 16) + 2.017 (Cb - 128)
// Chroma is replicated: every pixel of a site takes the site's own.
#pragma once

#include "model/luma_encoding.h"

namespace model {

struct Ycc {
    int y, cb, cr;
};

using DecodeRule = Rgb (*)(Ycc);

// The high half of the product of words: the sample scaled by 128, the coefficient by 8192 or 4096.
constexpr int high(int a, int c) { return a * 128 * c >> 16; }

struct WordCoefficients {
    int y, crToR, crToG, cbToG, cbToB;
};
inline constexpr WordCoefficients wordSetA{9536, 13074, 6660, 3203, 16523};
inline constexpr WordCoefficients wordSetB{9535, 13074, 6660, 3211, 16523};

// The floor of a negated product is not the negated floor.
enum class Green { addsNegated, subtracts };

template <WordCoefficients K, int Rounding, Green Form>
constexpr Rgb wordDecode(Ycc p) {
    const int luma = high(p.y - 16, K.y), u = p.cb - 128, v = p.cr - 128;
    const int green = Form == Green::addsNegated ? high(v, -K.crToG) + high(u, -K.cbToG) : -high(v, K.crToG) - high(u, K.cbToG);
    return {sat8((luma + high(v, K.crToR) + Rounding) >> 4), sat8((luma + green + Rounding) >> 4),
            sat8((luma + high(u, K.cbToB) + Rounding) >> 4)};
}

constexpr Rgb plainWordDecode(Ycc p) {
    const int luma = high(p.y - 16, 4769), u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + high(v, 6537)) >> 3), sat8((luma - (high(u, 1605) + high(v, 3330))) >> 3),
            sat8((luma + high(u, 8263)) >> 3)};
}

// Both offsets of the samples are folded into one constant a channel.
struct FoldedCoefficients {
    int y, crToR, crToG, cbToG, cbToB, offsetR, offsetG, offsetB;
};
inline constexpr FoldedCoefficients foldedSet420{4769, 6537, 3330, 1605, 8263, 1779, 1089, 2211};
inline constexpr FoldedCoefficients foldedSetCrCb420{4768, 6537, 3330, 1606, 8262, 1779, 1084, 2210};
inline constexpr FoldedCoefficients foldedSet422{4768, 6537, 3330, 1606, 8262, 1783, 1085, 2214};

template <FoldedCoefficients K>
constexpr Rgb foldedDecode(Ycc p) {
    const int luma = high(p.y, K.y);
    return {sat8((luma + high(p.cr, K.crToR) - K.offsetR) >> 3),
            sat8((luma - (high(p.cr, K.crToG) + high(p.cb, K.cbToG) - K.offsetG)) >> 3),
            sat8((luma + high(p.cb, K.cbToB) - K.offsetB) >> 3)};
}

struct ScalarCoefficients {
    int y, base, crToR, crToG, cbToG, cbToB;
};
inline constexpr ScalarCoefficients scalarSetA{76284, -1220544, 104595, -53281, -25690, 132186};
inline constexpr ScalarCoefficients scalarSetB{76282, -1220512, 104593, -53279, -25689, 132184};
inline constexpr ScalarCoefficients scalarSet411{76294, -1220704, 104595, -53281, -25625, 132186};

template <ScalarCoefficients K, int Rounding>
constexpr Rgb scalarDecode(Ycc p) {
    const int luma = K.y * p.y + K.base, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + K.crToR * v + Rounding) >> 16), sat8((luma + K.cbToG * u + K.crToG * v + Rounding) >> 16),
            sat8((luma + K.cbToB * u + Rounding) >> 16)};
}

constexpr Rgb scalarDecodeAt4096(Ycc p) {
    const int luma = 4769 * p.y - 76304, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + 6537 * v) >> 12), sat8((luma - 3330 * v - 1605 * u) >> 12), sat8((luma + 8263 * u) >> 12)};
}

// BT.709 in studio range.
inline constexpr WordCoefficients hdWordSet{9535, 14688, 4375, 1745, 17326};
inline constexpr ScalarCoefficients hdScalarSet{76284, -1220544, 117506, -34996, -13959, 138609};

// BT.709 with luma in full range.
constexpr Rgb fullWordDecode(Ycc p) {
    const int luma = p.y << 4, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + high(v, 12616) + 8) >> 4), sat8((luma + high(v, -3760) + high(u, -1499) + 8) >> 4),
            sat8((luma + high(u, 14877) + 8) >> 4)};
}
constexpr Rgb fullFoldedDecode(Ycc p) {
    const int luma = p.y << 4;
    return {sat8((luma + high(p.cr, 12616) - 3146) >> 4), sat8((luma - (high(p.cr, 3760) + high(p.cb, 1499) - 1323)) >> 4),
            sat8((luma + high(p.cb, 14877) - 3711) >> 4)};
}
inline constexpr ScalarCoefficients fullScalarSet{65536, 0, 100925, -30081, -11993, 119013};

// An image one pixel wide has a single chroma byte, which stands for both.
constexpr Rgb singleChromaDecode(Ycc p) {
    const int luma = 76284 * p.y, chroma = p.cb;
    return {sat8((luma + 104595 * chroma - 14608761) >> 16), sat8((luma - 78971 * chroma + 8887730) >> 16),
            sat8((luma + 132186 * chroma - 18140365) >> 16)};
}

inline constexpr DecodeRule wordA = wordDecode<wordSetA, 8, Green::addsNegated>;
inline constexpr DecodeRule wordATruncated = wordDecode<wordSetA, 0, Green::addsNegated>;
inline constexpr DecodeRule wordB = wordDecode<wordSetB, 8, Green::addsNegated>;
inline constexpr DecodeRule wordBSubtracted = wordDecode<wordSetB, 8, Green::subtracts>;

inline constexpr DecodeRule folded420 = foldedDecode<foldedSet420>;
inline constexpr DecodeRule foldedCrCb420 = foldedDecode<foldedSetCrCb420>;
inline constexpr DecodeRule folded422 = foldedDecode<foldedSet422>;

inline constexpr DecodeRule scalarA = scalarDecode<scalarSetA, 32768>;
inline constexpr DecodeRule scalarATruncated = scalarDecode<scalarSetA, 0>;
inline constexpr DecodeRule scalarB = scalarDecode<scalarSetB, 32768>;
inline constexpr DecodeRule scalarBTruncated = scalarDecode<scalarSetB, 0>;
inline constexpr DecodeRule hdWord = wordDecode<hdWordSet, 8, Green::addsNegated>;
inline constexpr DecodeRule hdWordSubtracted = wordDecode<hdWordSet, 8, Green::subtracts>;
inline constexpr DecodeRule hdScalar = scalarDecode<hdScalarSet, 32768>;
inline constexpr DecodeRule fullScalar = scalarDecode<fullScalarSet, 32768>;
inline constexpr DecodeRule scalar411 = scalarDecode<scalarSet411, 32768>;

struct Decoder {
    DecodeRule block;
    DecodeRule tail;
    DecodeRule alignedBlock = nullptr;  // replaces the block rule in images on 16-byte boundaries
    DecodeRule onePixelWide = nullptr;  // replaces all rules in images one pixel wide
    bool interpolates = false;          // odd pixels take the mean of their site's chroma and the next one's
};

template <const Decoder& D>
void decode(const Conversion& c) {
    const auto& [luma, cb, cr, none] = c.source.layout->channels;
    const auto& [red, green, blue, alpha] = c.destination.layout->channels;
    const DecodeRule block = D.alignedBlock && c.aligned ? D.alignedBlock : D.block;
    const bool onePixelWide = D.onePixelWide && c.size.width == 1;

    // The last pixel of an odd packed row lacks the second chroma of its pair: it borrows the previous pair's, or where there
    // is none uses the first for both.
    const auto isInRow = [&](const Channel& channel, int x) {
        return channel.position(x) < c.source.layout->planes[channel.plane].rowBytes(c.size.width);
    };
    const auto chroma = [&](const Channel& own, const Channel& other, int x, int y) -> int {
        if (isInRow(own, x)) return c.source.sample(own, x, y);
        return x > 0 ? c.source.sample(own, x - 2, y) : c.source.sample(other, x, y);
    };
    const auto meanWithNext = [&](const Channel& channel, int x, int y) {
        return (c.source.sample(channel, x, y) + c.source.sample(channel, x + 1, y) + 1) >> 1;
    };

    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < c.size.width; ++x) {
            Ycc pixel{c.source.sample(luma, x, y), chroma(cb, cr, x, y), chroma(cr, cb, x, y)};
            if (D.interpolates && x % 2 == 1 && x + 1 < c.size.width) {
                pixel.cb = meanWithNext(cb, x, y);
                pixel.cr = meanWithNext(cr, x, y);
            }
            const DecodeRule rule = onePixelWide ? D.onePixelWide : x < c.blockPixels ? block : D.tail;
            const Rgb colour = rule(pixel);
            c.destination.sample(red, x, y) = static_cast<uint8_t>(colour.r);
            c.destination.sample(green, x, y) = static_cast<uint8_t>(colour.g);
            c.destination.sample(blue, x, y) = static_cast<uint8_t>(colour.b);
            if (c.alpha) c.destination.sample(alpha, x, y) = *c.alpha;
        }
    }
}

}  // namespace model
