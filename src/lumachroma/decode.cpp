// YCbCr with subsampled chroma to RGB. Chroma is replicated over the pixels of its site; one export interpolates it along the
// row.
#include "frame/layouts.h"
#include "lumachroma/decoding.h"
#include "zelcc/lumachroma.h"

namespace zel::ZEL_LEVEL {
namespace {

// The chroma of the sites of a block, as words.
struct SiteChroma {
    Words p, q;
};

// Sources: luma of `rows` rows and the chroma under them.
template <int rows>
struct ChromaPlanes {
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int r) { return loadBytes(row.in[r] + block * blockPixels); }
    ZEL_INLINE static SiteChroma chroma(const Row& row, size_t block, const uint8_t*) {
        const size_t at = block * blockPixels / 2;
        return {loadWidened(row.in[rows] + at), loadWidened(row.in[rows + 1] + at)};
    }
};

// Interleaved bytes in either order: `order` is the shuffle that puts p first.
ZEL_INLINE SiteChroma chromaOf(Bytes pairs, const uint8_t* order) {
    const Bytes sorted = shuffle(pairs, everyLane(order));
    return {evenBytes(sorted), oddBytes(sorted)};
}

struct ChromaInterleaved {
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int r) { return loadBytes(row.in[r] + block * blockPixels); }
    ZEL_INLINE static SiteChroma chroma(const Row& row, size_t block, const uint8_t* order) {
        return chromaOf(loadBytes(row.in[2] + block * blockPixels), order);
    }
};

// Y0 C Y1 C'
struct PackedPairs {
    ZEL_INLINE static Bytes luma(const Row& row, size_t block, int) {
        const uint8_t* p = row.in[0] + block * blockPixels * 2;
        return inOrder(packBytes(evenBytes(loadBytes(p)), evenBytes(loadBytes(p + vectorBytes))));
    }
    ZEL_INLINE static SiteChroma chroma(const Row& row, size_t block, const uint8_t* order) {
        const uint8_t* p = row.in[0] + block * blockPixels * 2;
        return chromaOf(inOrder(packBytes(oddBytes(loadBytes(p)), oddBytes(loadBytes(p + vectorBytes)))), order);
    }
};

// A rule with the order in which interleaved chroma comes.
template <class Rule>
struct DecodeConstants {
    typename Rule::Constants rule;
    const uint8_t* order;
};

// Sites of two pixels a row, on one row or on two.
template <int rows, class From, class Rule, class To>
struct PairKernel {
    using Constants = DecodeConstants<Rule>;
    static constexpr int sites = blockPixels / 2;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const Rule rule(k.rule);
        for (size_t i = 0; i < count; ++i) {
            const SiteChroma chroma = From::chroma(row, i, k.order);
            const auto terms = rule.chroma(chroma.p, chroma.q);
            for (int r = 0; r < rows; ++r) To::template store<Rule::order>(row, r, i, rule.pixels(From::luma(row, i, r), terms));
        }
    }
};

// The same with chroma interpolated along the row: the odd pixel of a site takes the rounded mean of its site and the next. The
// chroma streams come a second time, one site on.
template <class Rule, class To>
struct FilteredKernel {
    using Constants = DecodeConstants<Rule>;
    static constexpr int sites = blockPixels / 2;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const Rule rule(k.rule);
        for (size_t i = 0; i < count; ++i) {
            const auto sample = [&](int stream) { return loadWidened(row.in[stream] + i * sites); };
            const Words p = sample(2), q = sample(3), pNext = sample(4), qNext = sample(5);
            const auto even = rule.chroma(p, q), odd = rule.chroma((p + pNext + 1) >> 1, (q + qNext + 1) >> 1);
            for (int r = 0; r < 2; ++r)
                To::template store<Rule::order>(row, r, i, rule.pixels(loadBytes(row.in[r] + i * blockPixels), even, odd));
        }
    }
};

// Sites of four pixels of one row.
template <class To>
struct QuadKernel {
    using Constants = ExactDecodeConstants;
    static constexpr int sites = blockPixels / 4;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const ExactDecode rule(k);
        for (size_t i = 0; i < count; ++i) {
            const Bytes p = loadQuadrupled(row.in[1] + i * sites), q = loadQuadrupled(row.in[2] + i * sites);
            To::template store<ExactDecode::order>(row, 0, i, rule.pixels(loadBytes(row.in[0] + i * blockPixels), p, q));
        }
    }
};

alignas(16) constexpr uint8_t asStored[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
alignas(16) constexpr uint8_t exchanged[16] = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14};

using bt601::Channels;
using bt601::DecodeMatrix;

// The folded word rules: the biases of luma and chroma stand in the offsets, and raw samples are multiplied.
constexpr WordDecodeConstants folded(const DecodeMatrix& m, int offsetR, int offsetG, int offsetB, Channels channels) {
    WordDecodeConstants k = bt601::word(m, channels, Green::subtracts, 0);
    const bool rgb = channels == Channels::rgb;
    k.lumaBias = k.chromaBias = 0;
    k.offsetA = int16_t(rgb ? -offsetR : -offsetB);
    k.offsetB = int16_t(offsetG);
    k.offsetC = int16_t(rgb ? -offsetB : -offsetR);
    k.shift = 3;
    return k;
}
constexpr WordDecodeConstants folded420CbCr(Channels channels) {
    return folded({4769, 6537, 3330, 1605, 8263}, 1779, 1089, 2211, channels);
}
constexpr WordDecodeConstants folded420CrCb(Channels channels) {
    return folded({4768, 6537, 3330, 1606, 8262}, 1779, 1084, 2210, channels);
}
constexpr WordDecodeConstants folded422(Channels channels) {
    return folded({4768, 6537, 3330, 1606, 8262}, 1783, 1085, 2214, channels);
}

// No rounding term at all: results truncate, and are meant to.
constexpr WordDecodeConstants plain(Channels channels) {
    WordDecodeConstants k = bt601::word({4769, 6537, 3330, 1605, 8263}, channels, Green::subtracts, 0);
    k.shift = 3;
    return k;
}

// The rule at scale 4096 in the terms of the one at 65536.
constexpr ExactDecodeConstants exact4096(Channels channels) {
    return bt601::exact({16 * 4769, 16 * 6537, -16 * 3330, -16 * 1605, 16 * 8263}, channels, 0);
}

// A packed row of a single pixel has one chroma byte, which serves as both. The biases are not those of the other rules.
constexpr ExactDecodeConstants exactAlone(Channels channels) {
    ExactDecodeConstants k = bt601::exact(bt601::exactA, channels, 0);
    const bool rgb = channels == Channels::rgb;
    k.biasA = rgb ? -14608761 : -18140365;
    k.biasB = 8887730;
    k.biasC = rgb ? -18140365 : -14608761;
    return k;
}

// 4:1:1 has coefficients of its own for luma and for green.
constexpr ExactDecodeConstants exact411 = bt601::exact({76294, 104595, -53281, -25625, 132186}, Channels::bgr, 32768);

// The constants of a kernel as an object of its own, so that kernels can point to it.
template <class Rule, typename Rule::Constants (*rule)(Channels), Channels channels, const uint8_t* order>
constexpr DecodeConstants<Rule> constantsOf{rule(channels), order};

template <const DecodeMatrix& matrix, Green green>
constexpr WordDecodeConstants word(Channels channels) {
    return bt601::word(matrix, channels, green, 8);
}
template <const DecodeMatrix& matrix, int rounding>
constexpr ExactDecodeConstants exact(Channels channels) {
    return bt601::exact(matrix, channels, rounding);
}

// Kernels by geometry, source and destination, with the rule, the channel order and, where chroma is interleaved, its order.
using WordRule = WordDecodeConstants (*)(Channels);
using ExactRule = ExactDecodeConstants (*)(Channels);

template <int rows, class From, class To, WordRule rule, Channels channels, const uint8_t* order = asStored>
constexpr Kernel wordKernel = kernel<PairKernel<rows, From, WordDecode, To>>(constantsOf<WordDecode, rule, channels, order>);
template <int rows, class From, class To, ExactRule rule, Channels channels, const uint8_t* order = asStored>
constexpr Kernel exactKernel = kernel<PairKernel<rows, From, ExactDecode, To>>(constantsOf<ExactDecode, rule, channels, order>);

// Layouts by site. Planes are taken in the order Y, p, q; crossed ones have p in the third plane.
constexpr Layout planes420{4, {{0, 2, 0, 2}, {0, 2, 1, 2}, {1, 1}, {2, 1}}},
    planes420Crossed{4, {{0, 2, 0, 2}, {0, 2, 1, 2}, {2, 1}, {1, 1}}};
constexpr Layout filteredPlanes420{6, {{0, 2, 0, 2}, {0, 2, 1, 2}, {2, 1}, {1, 1}, {2, 1, 0, 1, 1}, {1, 1, 0, 1, 1}}};
constexpr Layout semiPlanar420{3, {{0, 2, 0, 2}, {0, 2, 1, 2}, {1, 2}}}, packed422{1, {{0, 4}}};
constexpr Layout planes422{3, {{0, 2}, {1, 1}, {2, 1}}}, planes422Crossed{3, {{0, 2}, {2, 1}, {1, 1}}},
    planes411{3, {{0, 4}, {1, 1}, {2, 1}}};
constexpr Layout rgb24Two{2, {{0, 6, 0, 2}, {0, 6, 1, 2}}}, rgb32Two{2, {{0, 8, 0, 2}, {0, 8, 1, 2}}};
constexpr Layout rgb24Pair{1, {{0, 6}}}, rgb32Pair{1, {{0, 8}}}, rgbPlanesPair{3, {{0, 2}, {1, 2}, {2, 2}}};
constexpr Layout rgb24Quad{1, {{0, 12}}}, rgb32Quad{1, {{0, 16}}};

constexpr Conversion decode420(Layout from, Layout to, Kernel block, Kernel tail = {}, Checks checks = Checks::pointersFirst) {
    return {.site = {2, 2},
            .from = from,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = tail.blocks ? wholeBlocks<8> : nullptr,
            .oddSize = OddSize::warned,
            .checks = checks};
}

template <class To, Channels channels, WordRule rule, const uint8_t* order>
constexpr Conversion decodeSemiPlanar(Layout to, Checks checks = Checks::pointersFirst) {
    return decode420(semiPlanar420, to, wordKernel<2, ChromaInterleaved, To, rule, channels, order>, {}, checks);
}

// An odd pixel has a chroma byte of its own; the other one is the byte before its luma, which is the previous pair's.
inline void borrowChroma(uint8_t* site, const uint8_t* pixel, int, bool alone) {
    site[0] = site[2] = pixel[0];
    site[1] = pixel[1];
    site[3] = alone ? pixel[1] : pixel[-1];
}

constexpr Conversion decodePacked422(Layout to, Kernel block, Kernel tail, Kernel alone) {
    return {.site = {2, 1},
            .from = packed422,
            .to = to,
            .block = block,
            .tail = tail,
            .blockColumns = tail.blocks ? wholeBlocks<16> : nullptr,
            .oddPixel = {borrowChroma, tail.blocks ? tail : block, alone}};
}

template <class To, Channels channels, const uint8_t* order, const DecodeMatrix& matrix, Green green = Green::adds>
constexpr Conversion decodePacked(Layout to) {
    return decodePacked422(to, wordKernel<1, PackedPairs, To, word<matrix, green>, channels, order>,
                           exactKernel<1, PackedPairs, To, exact<bt601::exactA, 0>, channels, order>,
                           exactKernel<1, PackedPairs, To, exactAlone, channels, order>);
}

template <class To, Channels channels, const uint8_t* order>
constexpr Conversion decodePackedFolded(Layout to) {
    const Kernel rule = wordKernel<1, PackedPairs, To, folded422, channels, order>;
    return decodePacked422(to, rule, {}, rule);
}

constexpr Conversion decodePlanar422(Layout from, Kernel block, Kernel tail, int (*columns)(int)) {
    return {.site = {2, 1}, .from = from, .to = rgb24Pair, .block = block, .tail = tail, .blockColumns = columns};
}

constexpr Conversion decode411(Layout to, Kernel rule) { return {.site = {4, 1}, .from = planes411, .to = to, .block = rule}; }

constexpr Channels rgb = Channels::rgb, bgr = Channels::bgr;

// Tails of the planar 4:2:0 members.
template <class To, Channels channels>
constexpr Kernel tail420 = exactKernel<2, ChromaPlanes<2>, To, exact<bt601::exactA, 32768>, channels>;

constexpr Conversion planar420ToBgrPlain =
    decode420(planes420, rgb24Two, wordKernel<2, ChromaPlanes<2>, ToPacked3, plain, bgr>, tail420<ToPacked3, bgr>);
constexpr Conversion planar420ToBgr =
    decode420(planes420, rgb24Two, wordKernel<2, ChromaPlanes<2>, ToPacked3, word<bt601::wordB, Green::adds>, bgr>,
              tail420<ToPacked3, bgr>);

constexpr Kernel tail422 = exactKernel<1, ChromaPlanes<1>, ToPacked3, exact<bt601::exactB, 0>, rgb>;
constexpr Conversion planar422ToRgbPlain =
    decodePlanar422(planes422Crossed, wordKernel<1, ChromaPlanes<1>, ToPacked3, plain, rgb>, tail422, wholeBlocks<8>);
constexpr Conversion planar422ToRgb = decodePlanar422(
    planes422Crossed, wordKernel<1, ChromaPlanes<1>, ToPacked3, word<bt601::wordB, Green::adds>, rgb>, tail422, wholeBlocks<8>);

constexpr int filteredColumns(int width) { return ((width / 2 - 1) & ~7) * 2; }
constexpr Conversion filtered420(Kernel block, Kernel tail) {
    return {.site = {2, 2},
            .from = filteredPlanes420,
            .to = rgb32Two,
            .block = block,
            .tail = tail,
            .blockColumns = filteredColumns,
            .oddSize = OddSize::warned,
            .lastSiteAlone = true};
}

}  // namespace

namespace rows {

// The two exports whose arithmetic depends on alignment: images that lie on multiples of 16 throughout have a rule without
// rounding.
constexpr ByAlignment zeliYCbCr420ToBGR_8u_P3C3R{planar420ToBgrPlain, planar420ToBgr};
constexpr ByAlignment zeliYCbCr422ToRGB_8u_P3C3R{planar422ToRgbPlain, planar422ToRgb};

constexpr Conversion zeliYCbCr420ToBGR_8u_P3C4R =
    decode420(planes420, rgb32Two, wordKernel<2, ChromaPlanes<2>, ToPacked4, folded420CbCr, bgr>);
constexpr Conversion zeliYCbCr420ToRGB_8u_P3C3R =
    decode420(planes420Crossed, rgb24Two, wordKernel<2, ChromaPlanes<2>, ToPacked3, word<bt601::wordB, Green::adds>, rgb>,
              tail420<ToPacked3, rgb>);
constexpr Conversion zeliYCrCb420ToRGB_8u_P3C4R =
    decode420(planes420, rgb32Two, wordKernel<2, ChromaPlanes<2>, ToPacked4, word<bt601::wordB, Green::subtracts>, rgb>,
              tail420<ToPacked4, rgb>);

constexpr Conversion zeliYCbCr420ToBGR_8u_P2C3R = decodeSemiPlanar<ToPacked3, bgr, folded420CbCr, asStored>(rgb24Two);
constexpr Conversion zeliYCbCr420ToBGR_8u_P2C4R = decodeSemiPlanar<ToPacked4, bgr, folded420CbCr, asStored>(rgb32Two);
constexpr Conversion zeliYCbCr420ToRGB_8u_P2C3R = decodeSemiPlanar<ToPacked3, rgb, folded420CbCr, exchanged>(rgb24Two);
constexpr Conversion zeliYCbCr420ToRGB_8u_P2C4R = decodeSemiPlanar<ToPacked4, rgb, folded420CbCr, exchanged>(rgb32Two);
constexpr Conversion zeliYCrCb420ToBGR_8u_P2C3R = decodeSemiPlanar<ToPacked3, bgr, folded420CrCb, exchanged>(rgb24Two);
constexpr Conversion zeliYCrCb420ToBGR_8u_P2C4R =
    decodeSemiPlanar<ToPacked4, bgr, folded420CrCb, exchanged>(rgb32Two, Checks::sizeFirst);
constexpr Conversion zeliYCrCb420ToRGB_8u_P2C3R = decodeSemiPlanar<ToPacked3, rgb, folded420CrCb, asStored>(rgb24Two);
constexpr Conversion zeliYCrCb420ToRGB_8u_P2C4R =
    decodeSemiPlanar<ToPacked4, rgb, folded420CrCb, asStored>(rgb32Two, Checks::sizeFirst);

constexpr Conversion zeliYCrCb420ToBGR_Filter_8u_P3C4R =
    filtered420(kernel<FilteredKernel<WordDecode, ToPacked4>>(constantsOf<WordDecode, plain, bgr, asStored>),
                kernel<FilteredKernel<ExactDecode, ToPacked4>>(constantsOf<ExactDecode, exact4096, bgr, asStored>));

constexpr Conversion zeliYCbCr422ToRGB_8u_C2C3R = decodePacked<ToPacked3, rgb, exchanged, bt601::wordA>(rgb24Pair);
constexpr Conversion zeliYCbCr422ToRGB_8u_C2P3R = decodePacked<ToPlanes, rgb, exchanged, bt601::wordA>(rgbPlanesPair);
constexpr Conversion zeliYCrCb422ToRGB_8u_C2P3R = decodePacked<ToPlanes, rgb, asStored, bt601::wordA>(rgbPlanesPair);
constexpr Conversion zeliYCbCr422ToBGR_8u_C2C3R = decodePacked<ToPacked3, bgr, asStored, bt601::wordB>(rgb24Pair);
constexpr Conversion zeliYCbCr422ToBGR_8u_C2C4R =
    decodePacked<ToPacked4, bgr, asStored, bt601::wordB, Green::subtracts>(rgb32Pair);

constexpr Conversion zeliYCbCr422ToRGB_8u_C2C4R = decodePackedFolded<ToPacked4, rgb, exchanged>(rgb32Pair);
constexpr Conversion zeliYCrCb422ToRGB_8u_C2C3R = decodePackedFolded<ToPacked3, rgb, asStored>(rgb24Pair);
constexpr Conversion zeliYCrCb422ToRGB_8u_C2C4R = decodePackedFolded<ToPacked4, rgb, asStored>(rgb32Pair);
constexpr Conversion zeliYCrCb422ToBGR_8u_C2C3R = decodePackedFolded<ToPacked3, bgr, exchanged>(rgb24Pair);
constexpr Conversion zeliYCrCb422ToBGR_8u_C2C4R = decodePackedFolded<ToPacked4, bgr, exchanged>(rgb32Pair);

constexpr Conversion zeliYCbCr422ToBGR_8u_P3C3R =
    decodePlanar422(planes422, wordKernel<1, ChromaPlanes<1>, ToPacked3, word<bt601::wordB, Green::adds>, bgr>,
                    exactKernel<1, ChromaPlanes<1>, ToPacked3, exact<bt601::exactA, 0>, bgr>, wholeBlocks<16>);

constexpr Conversion zeliYCbCr411ToBGR_8u_P3C3R = decode411(rgb24Quad, kernel<QuadKernel<ToPacked3>>(exact411));
constexpr Conversion zeliYCbCr411ToBGR_8u_P3C4R = decode411(rgb32Quad, kernel<QuadKernel<ToPacked4>>(exact411));

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_decode ~, 1
#define ZEL_GROUP decode
#include "frame/table.h"
