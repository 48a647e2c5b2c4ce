// Model of the decoders to pixels packed into one 16-bit word, whose fields are cut from the bytes of R, G and B or dithered.
#pragma once

#include "model/luma_decoding.h"
#include "model/packed_words.h"

namespace model {

inline constexpr Layout yCbCr422AndRest = roundedUp(yCbCr422), yCbCr420AndRest = roundedUp(yCbCr420);

// The lowest bit and the number of bits of each field.
struct Field {
    int at, bits;
};
struct Format {
    Field red, green, blue;
};
inline constexpr Format bgr444{{8, 4}, {4, 4}, {0, 4}}, rgb444{{0, 4}, {4, 4}, {8, 4}};
inline constexpr Format bgr555{{10, 5}, {5, 5}, {0, 5}}, rgb555{{0, 5}, {5, 5}, {10, 5}};
inline constexpr Format bgr565{{11, 5}, {5, 6}, {0, 5}}, rgb565{{0, 5}, {5, 6}, {11, 5}};

using Pack = uint16_t (*)(Rgb colour, int x, int y);

template <const Format& F>
uint16_t cut(Rgb c, int, int) {
    const auto field = [](Field f, int v) { return v >> (8 - f.bits) << f.at; };
    return static_cast<uint16_t>(field(F.red, c.r) | field(F.green, c.g) | field(F.blue, c.b));
}

// Thresholds by row and column, for a distance of levels of 4352, and of 2105 or half as much.
inline constexpr int thresholds4[4][4]{
    {0, 2312, 578, 2890}, {3468, 1156, 4046, 1734}, {867, 3179, 289, 2601}, {4335, 2023, 3757, 1445}};
inline constexpr int thresholds5[4][4]{
    {0, 1118, 279, 1398}, {1678, 559, 1957, 839}, {419, 1538, 139, 1258}, {2097, 978, 1817, 699}};

constexpr int dithered(int bits, int v, int x, int y) {
    const int threshold5 = thresholds5[y & 3][x & 3];
    const int threshold = bits == 4 ? thresholds4[y & 3][x & 3] : bits == 5 ? threshold5 : threshold5 >> 1;
    const int distance = bits == 4 ? 4352 : bits == 5 ? 2105 : 1036;
    const int level = (v * ((1 << bits) - 1)) >> 8;
    return v * 256 - level * distance > threshold ? level + 1 : level;
}

template <const Format& F>
uint16_t dither(Rgb c, int x, int y) {
    const auto field = [&](Field f, int v) { return dithered(f.bits, v, x, y) << f.at; };
    return static_cast<uint16_t>(field(F.red, c.r) | field(F.green, c.g) | field(F.blue, c.b));
}

// Studio range.
inline constexpr DecodeRule wordBCut = wordDecode<wordSetB, 0, Green::subtracts>;
inline constexpr DecodeRule wordBRounded = wordDecode<wordSetB, 8, Green::subtracts>;
// Pairs of pixels that are no block have biases of their own.
constexpr Rgb pairDecode(Ycc p) {
    const int luma = 76284 * p.y;
    return {sat8((luma + 104595 * p.cr - 14608761) >> 16), sat8((luma - 25690 * p.cb - 53281 * p.cr + 8887730) >> 16),
            sat8((luma + 132186 * p.cb - 18140365) >> 16)};
}

// Analog YUV.
constexpr Rgb yuvDecode(Ycc p) {
    const int luma = p.y * 16, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + high(v, 9338)) >> 4), sat8((luma - high(v, 4759) - high(u, 3227)) >> 4),
            sat8((luma + high(u, 16646)) >> 4)};
}
constexpr Rgb yuvDecodeAtEdges(Ycc p) {
    const int luma = p.y * 65536, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + v * 74711) >> 16), sat8((luma - v * 38076 - u * 25821) >> 16), sat8((luma + u * 133169) >> 16)};
}

inline Ycc samplesAt(const Conversion& c, int x, int y) {
    const auto& [luma, cb, cr, none] = c.source.layout->channels;
    return {c.source.sample(luma, x, y), c.source.sample(cb, x, y), c.source.sample(cr, x, y)};
}

inline void storeWord(const Conversion& c, int x, int y, uint16_t word) {
    c.destination.store(c.destination.layout->channels[0], x, y, word);
}

// Pixels with chroma in their place.
template <Pack P, DecodeRule Block, DecodeRule Tail = Block>
void toWords(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            const DecodeRule rule = x < c.blockPixels ? Block : Tail;
            storeWord(c, x, y, P(rule(samplesAt(c, x, y)), x, y));
        }
}

// The same, but that a single column is left alone.
template <Pack P, DecodeRule Rule>
void columnsToWords(const Conversion& c) {
    if (c.size.width > 1) toWords<P, Rule>(c);
}

// Packed 4:2:2 gives the last pixel of an odd row one chroma byte.
inline Ycc lastOfOddRow(const Conversion& c, int y, bool takesPrevious) {
    const auto& [luma, cb, cr, none] = c.source.layout->channels;
    const int x = c.size.width - 1;
    const int own = c.source.sample(cb, x, y);
    return {c.source.sample(luma, x, y), own, takesPrevious ? c.source.sample(cr, x - 2, y) : own};
}

template <Pack P>
void packed422ToWords(const Conversion& c) {
    const Plane& destination = c.destination.planes[0];
    const int pairs = c.size.width & ~1;
    for (int y = 0; y < c.size.height; ++y) {
        if (c.size.width == 1) {
            const Rgb colour = pairDecode(lastOfOddRow(c, y, false));
            const uint8_t bytes[3]{uint8_t(colour.r), uint8_t(colour.g), uint8_t(colour.b)};
            std::memcpy(destination.first + y * (destination.step / 2), bytes, 3);
            continue;
        }
        for (int x = 0; x < pairs; ++x) {
            const DecodeRule rule = x < c.blockPixels ? wordBCut : pairDecode;
            storeWord(c, x, y, P(rule(samplesAt(c, x, y)), x, y));
        }
        if (pairs < c.size.width) storeWord(c, pairs, y, P(scalarATruncated(lastOfOddRow(c, y, true)), pairs, y));
    }
}

template <Pack P>
void packed422ToDitheredWords(const Conversion& c) {
    const int pairs = c.size.width & ~1;
    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < pairs; ++x) storeWord(c, x, y, P(wordBCut(samplesAt(c, x, y)), x, y));
        if (pairs < c.size.width) storeWord(c, pairs, y, P(wordBCut(lastOfOddRow(c, y, false)), pairs, y));
    }
}

// Columns behind the whole sites have the chroma of the last of these.
template <Pack P>
void quadsToWords(const Conversion& c) {
    const auto& [luma, cb, cr, none] = c.source.layout->channels;
    const int whole = c.size.width & ~3;
    for (int y = 0; y < c.size.height; ++y) {
        for (int x = 0; x < whole; ++x) storeWord(c, x, y, P(wordBRounded(samplesAt(c, x, y)), x, y));
        for (int x = whole; x < c.size.width; ++x) {
            const Ycc pixel{c.source.sample(luma, x, y), c.source.sample(cb, whole - 1, y), c.source.sample(cr, whole - 1, y)};
            storeWord(c, x, y, P(scalarA(pixel), x, y));
        }
    }
}

// Pairs of YUV rows whose number of pairs is 2 more than a multiple of 4 go on for one pair.
constexpr int yuvPairColumns(int width) { return (width & ~1) + (width / 2 % 4 == 2 ? 2 : 0); }
constexpr Room roomOfYuv(ZelSize size) {
    const int beyond = size.width > 1 && size.height > 1 ? yuvPairColumns(size.width) - size.width : 0;
    return beyond > 0 ? Room{beyond, beyond} : Room{};
}

template <Pack P>
void yuvToWords(const Conversion& c) {
    const auto [width, height] = c.size;
    if (width == 1 || height == 1) return;
    for (int y = 0; y < (height & ~1); ++y) {
        for (int x = 0; x < yuvPairColumns(width); ++x) storeWord(c, x, y, P(yuvDecode(samplesAt(c, x, y)), x, y));
        if (width % 2 != 0) storeWord(c, width - 1, y, P(yuvDecodeAtEdges(samplesAt(c, width - 1, y)), width - 1, y));
    }
    if (height % 2 == 0) return;
    for (int x = 0; x < width; ++x) storeWord(c, x, height - 1, P(yuvDecodeAtEdges(samplesAt(c, x, height - 1)), x, height - 1));
}

// The last row of an odd height goes on for two pixels where the width is odd too.
constexpr Room roomOfDither420(ZelSize size) { return size.width % 2 != 0 && size.height % 2 != 0 ? Room{2, 2} : Room{}; }

template <Pack P, DecodeRule Rule>
void planar420ToDitheredWords(const Conversion& c) {
    const auto [width, height] = c.size;
    for (int y = 0; y < height; ++y) {
        const int columns = y == height - 1 ? width + roomOfDither420(c.size).destination : width;
        for (int x = 0; x < columns; ++x) storeWord(c, x, y, P(Rule(samplesAt(c, x, y)), x, y));
    }
}

// A single pixel of packed 4:2:2 becomes three bytes.
constexpr Room roomOfPacked422(ZelSize size) { return size.width == 1 ? Room{0, 1} : Room{}; }

}  // namespace model
