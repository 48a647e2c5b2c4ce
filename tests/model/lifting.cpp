// The lifting transforms, a row each.
#include "model/lifting.h"

#include "zelcc/lifting.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};
constexpr Geometry anySize{{anyWidth, anyHeight}, {1, 1}};  // of which nothing is converted where a side is below 1

constexpr int all(int width) { return width; }
constexpr int blocksOf4(int width) { return width & ~3; }

constexpr Layout c3of8u = pixels(Element::u8, 3), c4of8u = pixels(Element::u8, 4);
constexpr Layout c3of16s = pixels(Element::s16, 3), c4of16s = pixels(Element::s16, 4);
constexpr Layout p3of8u = threePlanes(Element::u8), p3of16s = threePlanes(Element::s16), p3of32s = threePlanes(Element::s32);

constexpr Parameters alphas[] = {{.word = 0x1234}, {.word = 0}, {.word = 0xff80}};

constexpr Export lifted(const char* name, Entry entry, const Layout& source, const Layout& destination, Geometry geometry,
                        Model model, Blocks blocks = all) {
    Export e{name, entry, source, destination, geometry, blocks, model, Checks::planesBeforeSize};
    e.isRowwise = true;
    if (destination == c4of16s) e.parameters = alphas;
    return e;
}

constexpr Model toWords = lifting<uint8_t, int16_t, plainForward, Fit::wraps>;
constexpr Model toWordsRev = lifting<uint8_t, int16_t, reversibleForward<16>, Fit::wraps>;
constexpr Model wordsToWords = lifting<int16_t, int16_t, plainForward, Fit::saturatesInBlocks>;
constexpr Model wordsToWordsRev = lifting<int16_t, int16_t, reversibleForward<16>, Fit::wraps>;
constexpr Model wordsToDwords = lifting<int16_t, int32_t, plainForward, Fit::wraps>;
constexpr Model wordsToDwordsRev = lifting<int16_t, int32_t, reversibleForward<32>, Fit::wraps>;
constexpr Model fromWords = lifting<int16_t, uint8_t, plainInverse, Fit::saturatesOfLowWord>;
constexpr Model fromWordsRev = lifting<int16_t, uint8_t, reversibleInverse<16>, Fit::saturatesOfLowWord>;
constexpr Model wordsFromWords = lifting<int16_t, int16_t, plainInverse, Fit::wraps>;
constexpr Model wordsFromWordsRev = lifting<int16_t, int16_t, reversibleInverse<16>, Fit::wraps>;
constexpr Model wordsFromDwords = lifting<int32_t, int16_t, plainInverse, Fit::wraps>;
constexpr Model wordsFromDwordsRev = lifting<int32_t, int16_t, reversibleInverse<32>, Fit::wraps>;

constexpr Export exports[] = {
    lifted(NAMED(zeliBGRToYCoCg_8u16s_C3P3R), c3of8u, p3of16s, everyPixel, toWords),
    lifted(NAMED(zeliBGRToYCoCg_8u16s_C4P3R), c4of8u, p3of16s, everyPixel, toWords),
    lifted(NAMED(zeliBGRToYCoCg_Rev_8u16s_C3P3R), c3of8u, p3of16s, everyPixel, toWordsRev),
    lifted(NAMED(zeliBGRToYCoCg_Rev_8u16s_C4P3R), c4of8u, p3of16s, everyPixel, toWordsRev),
    lifted(NAMED(zeliSBGRToYCoCg_16s_C3P3R), c3of16s, p3of16s, everyPixel, wordsToWords, blocksOf4),
    lifted(NAMED(zeliSBGRToYCoCg_16s_C4P3R), c4of16s, p3of16s, everyPixel, wordsToWords, blocksOf4),
    lifted(NAMED(zeliSBGRToYCoCg_16s32s_C3P3R), c3of16s, p3of32s, everyPixel, wordsToDwords),
    lifted(NAMED(zeliSBGRToYCoCg_16s32s_C4P3R), c4of16s, p3of32s, anySize, wordsToDwords),
    lifted(NAMED(zeliSBGRToYCoCg_Rev_16s_C3P3R), c3of16s, p3of16s, anySize, wordsToWordsRev),
    lifted(NAMED(zeliSBGRToYCoCg_Rev_16s_C4P3R), c4of16s, p3of16s, anySize, wordsToWordsRev),
    lifted(NAMED(zeliSBGRToYCoCg_Rev_16s32s_C3P3R), c3of16s, p3of32s, everyPixel, wordsToDwordsRev),
    lifted(NAMED(zeliSBGRToYCoCg_Rev_16s32s_C4P3R), c4of16s, p3of32s, anySize, wordsToDwordsRev),
    lifted(NAMED(zeliRGBToYCoCg_8u_C3P3R), c3of8u, p3of8u, everyPixel, lifting<uint8_t, uint8_t, biasedForward, Fit::saturates>),
    lifted(NAMED(zeliYCoCgToBGR_16s8u_P3C3R), p3of16s, c3of8u, anySize, fromWords),
    lifted(NAMED(zeliYCoCgToBGR_16s8u_P3C4R), p3of16s, c4of8u, anySize, fromWords),
    lifted(NAMED(zeliYCoCgToBGR_Rev_16s8u_P3C3R), p3of16s, c3of8u, anySize, fromWordsRev),
    lifted(NAMED(zeliYCoCgToBGR_Rev_16s8u_P3C4R), p3of16s, c4of8u, anySize, fromWordsRev),
    lifted(NAMED(zeliYCoCgToRGB_8u_P3C3R), p3of8u, c3of8u, anySize, lifting<uint8_t, uint8_t, biasedInverse, Fit::saturates>),
    lifted(NAMED(zeliYCoCgToSBGR_16s_P3C3R), p3of16s, c3of16s, anySize, wordsFromWords),
    lifted(NAMED(zeliYCoCgToSBGR_16s_P3C4R), p3of16s, c4of16s, everyPixel, wordsFromWords),
    lifted(NAMED(zeliYCoCgToSBGR_32s16s_P3C3R), p3of32s, c3of16s, everyPixel, wordsFromDwords),
    lifted(NAMED(zeliYCoCgToSBGR_32s16s_P3C4R), p3of32s, c4of16s, everyPixel, wordsFromDwords),
    lifted(NAMED(zeliYCoCgToSBGR_Rev_16s_P3C3R), p3of16s, c3of16s, anySize, wordsFromWordsRev),
    lifted(NAMED(zeliYCoCgToSBGR_Rev_16s_P3C4R), p3of16s, c4of16s, anySize, wordsFromWordsRev),
    lifted(NAMED(zeliYCoCgToSBGR_Rev_32s16s_P3C3R), p3of32s, c3of16s, anySize, wordsFromDwordsRev),
    lifted(NAMED(zeliYCoCgToSBGR_Rev_32s16s_P3C4R), p3of32s, c4of16s, anySize, wordsFromDwordsRev),
};

}  // namespace

std::span<const Export> liftingExports() { return exports; }

}  // namespace model
