// The exports that read packed words, and those between words and bytes, a row each.
#include "zelcc/packed_sources.h"

#include "model/luma_encoding.h"
#include "model/packed_words.h"

namespace model {
namespace {

// Y = 0.299 R + 0.587 G + 0.114 B, U = 0.492 (B - Y) + 128, V = 0.877 (R - Y) + 128. A rule gives each pixel a luma number at
// some scale, from which both its luma and, by their sum, the chroma of its site are made.
struct YuvRule {
    int (*number)(Rgb pixel);
    int (*luma)(int number);
    Chroma (*chroma)(Rgb sum, int numbers);
};

constexpr int exactNumber(Rgb p) { return 19595 * p.r + 38470 * p.g + 7471 * p.b; }
constexpr int exactLumaOf(int number) { return (number + 32768) >> 16; }
constexpr int truncatedLumaOf(int number) { return number >> 16; }
template <int Offset, int Shift>
constexpr Chroma exactDifferences(Rgb s, int numbers) {
    const auto difference = [&](int own) { return (own * 65536 - numbers + Offset) >> 16; };
    return {((difference(s.b) * 32244) >> Shift) + 128, sat8(((difference(s.r) * 57475) >> Shift) + 128)};
}

constexpr int wordNumber(Rgb p) { return (p.r * 9798 >> 8) + (p.g * 19235 >> 8) + (p.b * 3736 >> 8); }
constexpr int wordLumaOf(int number) { return (number + 64) >> 7; }
template <int Pixels, int Cu>
constexpr Chroma wordDifferences(Rgb s, int numbers) {
    const auto scaled = [&](int own, int c) { return ((own * 128 / Pixels - numbers / Pixels) * c) >> 16; };
    return {sat8((8224 + scaled(s.b, Cu)) >> 6), sat8((8224 + scaled(s.r, 28737)) >> 6)};
}

constexpr YuvRule exactOf4{exactNumber, exactLumaOf, exactDifferences<131071, 18>};
constexpr YuvRule truncatedOf4{exactNumber, truncatedLumaOf, exactDifferences<131071, 18>};
constexpr YuvRule truncatedOf2{exactNumber, truncatedLumaOf, exactDifferences<65535, 17>};
template <int Pixels, int Cu>
constexpr YuvRule wordsOf{wordNumber, wordLumaOf, wordDifferences<Pixels, Cu>};

template <const YuvRule& Block, const YuvRule& Tail>
void encodeYuv(const Conversion& c) {
    const auto& [red, green, blue, alpha] = c.source.layout->channels;
    const auto& [luma, u, v, none] = c.destination.layout->channels;
    const int siteHeight = 1 << u.yShift;
    for (int top = 0; top < c.size.height; top += siteHeight) {
        for (int left = 0; left < c.size.width; left += 2) {
            const YuvRule& rule = left < c.blockPixels ? Block : Tail;
            Rgb sum;
            int numbers = 0;
            for (int y = top; y < top + siteHeight; ++y) {
                for (int x = left; x < left + 2; ++x) {
                    const Rgb pixel{c.source.sample(red, x, y), c.source.sample(green, x, y), c.source.sample(blue, x, y)};
                    const int number = rule.number(pixel);
                    sum = {sum.r + pixel.r, sum.g + pixel.g, sum.b + pixel.b};
                    numbers += number;
                    c.destination.sample(luma, x, y) = static_cast<uint8_t>(rule.luma(number));
                }
            }
            const Chroma chroma = rule.chroma(sum, numbers);
            c.destination.sample(u, left, top) = static_cast<uint8_t>(chroma.cb);
            c.destination.sample(v, left, top) = static_cast<uint8_t>(chroma.cr);
        }
    }
}

constexpr Geometry everyPixel{{1, 1}, {1, 1}};
constexpr Geometry encode420{{2, 2}, {2, 2}};
constexpr Geometry encode422{{2, 1}, {2, 1}};
constexpr Geometry encode411{{4, 1}, {1, 1}};  // luma of every pixel, chroma of whole sites
constexpr Geometry yuv420{{2, 2}, {2, 2}, zelStsOddSizeWarn};
constexpr Geometry yuv420OfRgb{{1, 1}, {2, 2}, zelStsOddSizeWarn};
constexpr Geometry yuv422OfRgb{{1, 1}, {2, 1}, zelStsOddSizeWarn};

constexpr int all(int width) { return width; }
constexpr int blocksOf32(int width) { return width & ~31; }
// The single block of half the size is meant to look at fewer bits than the loop before it.
constexpr int blocksOf420(int width) { return (width & ~15) + ((width & 7) >= 4 ? 4 : 0); }
constexpr int blocksOf422(int width) { return (width & ~31) + ((width & 15) >= 8 ? 8 : 0); }

ZelStatus statusOf411(const Conversion& c) { return c.size.width % 4 == 0 ? zelStsNoErr : zelStsOddSizeWarn; }

template <const Fields& fields, Model model>
constexpr Model bgr = ofExpandedWords<fields, bgr24, model>;
template <const Fields& fields, Model model>
constexpr Model rgb = ofExpandedWords<fields, rgb24, model>;

constexpr Model ycc420 = encode<wordOf4, scalarOf4>, ycc422 = encode<word422, scalar422>;
constexpr Model bgrYuv420 = encodeYuv<wordsOf<4, 16122>, exactOf4>;
constexpr Model rgbYuv420 = encodeYuv<wordsOf<4, 16121>, truncatedOf4>, rgbYuv422 = encodeYuv<wordsOf<2, 16121>, truncatedOf2>;

constexpr auto planesFirst = Checks::planesBeforeSize, planesLast = Checks::planesAfterSize;

constexpr Export encode(const char* name, Entry entry, const Layout& layout, Geometry geometry, Blocks blocks, Model model,
                        Checks checks = planesFirst) {
    return {name, entry, words, layout, geometry, blocks, model, checks};
}

constexpr Export toQuads(const char* name, Entry entry, Model model) {
    Export e = encode(name, entry, yCbCr411, encode411, blocksOf32, model);
    e.contentStatus = statusOf411;
    return e;
}

constexpr Export exports[] = {
    toQuads(NAMED(zeliBGR555ToYCbCr411_16u8u_C3P3R), bgr<fields555, ycc420>),
    toQuads(NAMED(zeliBGR565ToYCbCr411_16u8u_C3P3R), bgr<fields565, ycc420>),
    encode(NAMED(zeliBGR555ToYCbCr420_16u8u_C3P3R), yCbCr420, encode420, blocksOf420, bgr<fields555, ycc420>),
    encode(NAMED(zeliBGR565ToYCbCr420_16u8u_C3P3R), yCbCr420, encode420, blocksOf420, bgr<fields565, ycc420>),
    encode(NAMED(zeliBGR555ToYCrCb420_16u8u_C3P3R), yCrCb420, encode420, blocksOf420, bgr<fields555, ycc420>),
    encode(NAMED(zeliBGR565ToYCrCb420_16u8u_C3P3R), yCrCb420, encode420, blocksOf420, bgr<fields565, ycc420>),
    encode(NAMED(zeliBGR555ToYCbCr422_16u8u_C3C2R), yuyv, encode422, blocksOf422, bgr<fields555, ycc422>),
    encode(NAMED(zeliBGR565ToYCbCr422_16u8u_C3C2R), yuyv, encode422, blocksOf422, bgr<fields565, ycc422>),
    encode(NAMED(zeliBGR555ToYCbCr422_16u8u_C3P3R), yCbCr422, encode422, blocksOf422, bgr<fields555, ycc422>),
    encode(NAMED(zeliBGR565ToYCbCr422_16u8u_C3P3R), yCbCr422, encode422, blocksOf422, bgr<fields565, ycc422>),

    encode(NAMED(zeliBGR555ToYUV420_16u8u_C3P3R), yCbCr420, yuv420, blocksOf420, bgr<fields555, bgrYuv420>),
    encode(NAMED(zeliBGR565ToYUV420_16u8u_C3P3R), yCbCr420, yuv420, blocksOf420, bgr<fields565, bgrYuv420>),
    encode(NAMED(zeliRGB565ToYUV420_16u8u_C3P3R), yCbCr420, yuv420OfRgb, blocksOf420, rgb<fields565, rgbYuv420>, planesLast),
    encode(NAMED(zeliRGB565ToYUV422_16u8u_C3P3R), yCbCr422, yuv422OfRgb, blocksOf422, rgb<fields565, rgbYuv422>, planesLast),

    {NAMED(zeliBGR565ToBGR_16u8u_C3R), words, bgr24, everyPixel, all, expandWords<fields565>},
    {NAMED(zeliRGB565ToRGB_16u8u_C3R), words, rgb24, everyPixel, all, expandWords<fields565>},
    {NAMED(zeliBGRToBGR565_8u16u_C3R), bgr24, words, everyPixel, all, packWords<fields565>},
    {NAMED(zeliRGBToRGB565_8u16u_C3R), rgb24, words, everyPixel, all, packWords<fields565>},
};

}  // namespace

std::span<const Export> packedSourceExports() { return exports; }

}  // namespace model
