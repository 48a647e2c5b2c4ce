// The exports between chroma layouts, a row each, and a row for each slice where an export asks for it.
#include "zelcc/chroma.h"

#include "model/chroma_repacking.h"
#include "model/chroma_resampling.h"

namespace model {
namespace {

constexpr Geometry pairs{{2, 1}, {2, 1}};
constexpr Geometry pairsWarn{{2, 1}, {2, 1}, zelStsOddSizeWarn};
constexpr Geometry pairsOfAnyHeight{{2, anyHeight}, {2, 1}};
constexpr Geometry squares{{2, 2}, {2, 2}};
constexpr Geometry fours{{4, 1}, {4, 1}};
constexpr Geometry foursOfAnyHeight{{4, anyHeight}, {4, 1}};
constexpr Geometry foldedSites{{4, 2}, {4, 2}};
constexpr Geometry foldedSitesOrRefused{{4, 2}, {4, 2}, zelStsSizeErr};
constexpr Geometry sixteensOrRefused{{4, 4}, {4, 4}, zelStsSizeErr};
constexpr Geometry fieldPairs{{2, 4}, {2, 4}, zelStsOddSizeWarn};
constexpr Geometry eightRows{{2, 8}, {2, 8}};

constexpr auto misplaces = Peculiarity::misplacesByFirstStep;
constexpr auto trusts = Peculiarity::trustsSourceArray;

// Blocks are counted in samples of a plane here, so the models find them themselves.
constexpr int ofTheModel(int) { return 0; }

constexpr Export row(const char* name, Entry entry, const Layout& from, const Layout& to, Geometry geometry, Model model,
                     Peculiarity peculiarity = Peculiarity::none, Checks checks = Checks::planesBeforeSize,
                     const Slice& slice = {}) {
    return {name, entry, from, to, geometry, ofTheModel, model, checks, peculiarity, slice};
}

// A slice inside an image reads three rows of luma above it and writes two.
constexpr Slice top{"Top", topSlice};
constexpr Slice middle{"Middle", middleSlice, {3, 1}, {2, 1, 1}};
constexpr Slice bottom{"Bottom", bottomSlice, {3, 1}, {2, 1, 1}};
constexpr Slice whole{"Whole", wholeImage};

constexpr Export toPacked(const Slice& slice) {
    const auto peculiarity = slice.argument == wholeImage ? Peculiarity::unevenRows : Peculiarity::none;
    return row(NAMED(zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R), nv12, yuyv, squares, smoothToPacked, peculiarity,
               Checks::planesBeforeSize, slice);
}
constexpr Export toPlanes(const Slice& slice) {
    return row(NAMED(zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R), nv12, yCrCb420, squares, smoothToPlanes, Peculiarity::none,
               Checks::emptyThenPointers, slice);
}

constexpr Export exports[] = {
    // Other storage, the same chroma.
    row(NAMED(zeliCbYCr422ToYCbCr422_8u_C2R), uyvy, yuyv, pairs, samePixel),
    row(NAMED(zeliCbYCr422ToYCbCr422_8u_C2P3R), uyvy, yCbCr422, pairs, samePixel),
    row(NAMED(zeliYCbCr422ToCbYCr422_8u_C2R), yuyv, uyvy, pairs, samePixel),
    row(NAMED(zeliYCbCr422ToCbYCr422_8u_P3C2R), yCbCr422, uyvy, pairsWarn, samePixel),
    row(NAMED(zeliYCbCr422ToYCrCb422_8u_C2R), yuyv, yvyu, pairsOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr422ToYCrCb422_8u_P3C2R), yCbCr422, yvyu, pairsOfAnyHeight, samePixel),
    row(NAMED(zeliYCrCb422ToYCbCr422_8u_C2P3R), yvyu, yCbCr422, pairs, samePixel),
    row(NAMED(zeliYCbCr422_8u_C2P3R), yuyv, yCbCr422, pairs, samePixel),
    row(NAMED(zeliYCbCr422_8u_P3C2R), yCbCr422, yuyv, pairs, samePixel),
    row(NAMED(zeliYCbCr411_8u_P2P3R), nv11, yCbCr411, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411_8u_P3P2R), yCbCr411, nv11, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr420_8u_P2P3R), nv12, yCbCr420, squares, samePixel),
    row(NAMED(zeliYCbCr420_8u_P3P2R), yCbCr420, nv12, squares, samePixel),
    row(NAMED(zeliYCbCr420ToYCrCb420_8u_P2P3R), nv12, yCrCb420, squares, samePixel, Peculiarity::none, Checks::emptyThenPlanes),
    row(NAMED(zeliYCrCb420ToYCbCr420_8u_P3P2R), yCrCb420, nv12, squares, samePixel),

    // 4:2:2 to 4:2:0: every second row of chroma is dropped.
    row(NAMED(zeliCbYCr422ToYCbCr420_8u_C2P2R), uyvy, nv12, squares, samePixel),
    row(NAMED(zeliCbYCr422ToYCbCr420_8u_C2P3R), uyvy, yCbCr420, squares, samePixel),
    row(NAMED(zeliCbYCr422ToYCrCb420_8u_C2P3R), uyvy, yCrCb420, squares, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr420_8u_C2P2R), yuyv, nv12, squares, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr420_8u_C2P3R), yuyv, yCbCr420, squares, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr420_8u_P3P2R), yCbCr422, nv12, squares, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr420_8u_P3R), yCbCr422, yCbCr420, squares, samePixel),
    row(NAMED(zeliYCbCr422ToYCrCb420_8u_C2P3R), yuyv, yCrCb420, squares, samePixel),
    row(NAMED(zeliYCrCb422ToYCbCr420_8u_C2P3R), yvyu, yCbCr420, squares, samePixel),

    // 4:2:0 to 4:2:2: every row of chroma is repeated.
    row(NAMED(zeliYCbCr420ToCbYCr422_8u_P2C2R), nv12, uyvy, squares, samePixel),
    row(NAMED(zeliYCbCr420ToYCbCr422_8u_P2C2R), nv12, yuyv, squares, samePixel),
    row(NAMED(zeliYCbCr420ToYCbCr422_8u_P2P3R), nv12, yCbCr422, squares, samePixelMisplacing, misplaces),
    row(NAMED(zeliYCbCr420ToYCbCr422_8u_P3R), yCbCr420, yCbCr422, squares, samePixelMisplacing, misplaces),
    row(NAMED(zeliYCrCb420ToCbYCr422_8u_P3C2R), yCrCb420, uyvy, squares, samePixel, trusts),
    row(NAMED(zeliYCrCb420ToYCbCr422_8u_P3C2R), yCrCb420, yuyv, squares, samePixel, trusts),
    row(NAMED(zeliYCrCb420ToYCbCr422_8u_P3R), yCrCb420, yCbCr422, squares, samePixelMisplacing, misplaces),

    // 4:2:2 to 4:1:1: every second chroma sample is dropped.
    row(NAMED(zeliCbYCr422ToYCbCr411_8u_C2P3R), uyvy, yCbCr411, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr411_8u_C2P2R), yuyv, nv11, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr411_8u_C2P3R), yuyv, yCbCr411, fours, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr411_8u_P3P2R), yCbCr422, nv11, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr422ToYCbCr411_8u_P3R), yCbCr422, yCbCr411, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCrCb422ToYCbCr411_8u_C2P3R), yvyu, yCbCr411, foursOfAnyHeight, samePixel),

    // 4:1:1 to 4:2:2: every chroma sample is repeated.
    row(NAMED(zeliYCbCr411ToYCbCr422_8u_P2C2R), nv11, yuyv, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411ToYCbCr422_8u_P2P3R), nv11, yCbCr422, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411ToYCbCr422_8u_P3C2R), yCbCr411, yuyv, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411ToYCbCr422_8u_P3R), yCbCr411, yCbCr422, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411ToYCrCb422_8u_P3C2R), yCbCr411, yvyu, foursOfAnyHeight, samePixel),
    row(NAMED(zeliYCbCr411ToYCrCb422_8u_P3R), yCbCr411, yCrCb422, foursOfAnyHeight, samePixel),

    // 4:1:1 to 4:2:0 without loss.
    row(NAMED(zeliYCbCr411ToYCbCr420_8u_P2P3R), nv11, yCbCr420, foldedSites, fold),
    row(NAMED(zeliYCbCr411ToYCbCr420_8u_P3P2R), yCbCr411, nv12, foldedSites, fold),
    row(NAMED(zeliYCbCr411ToYCbCr420_8u_P3R), yCbCr411, yCbCr420, foldedSites, fold),
    row(NAMED(zeliYCbCr411ToYCrCb420_8u_P2P3R), nv11, yCrCb420, foldedSites, fold),

    // And back.
    row(NAMED(zeliYCbCr420ToYCbCr411_8u_P2P3R), nv12, yCbCr411, foldedSites, unfold),
    row(NAMED(zeliYCbCr420ToYCbCr411_8u_P3P2R), yCbCr420, nv11, foldedSites, unfold),
    row(NAMED(zeliYCrCb420ToYCbCr411_8u_P3P2R), yCrCb420, nv11, foldedSites, unfold),

    // Between 4:1:1 and 4:2:0 by means.
    row(NAMED(zeliYCbCr411To420_8u_P3R), yCbCr411, yCbCr420, sixteensOrRefused, doubleSamples),
    row(NAMED(zeliYCbCr420To411_8u_P3R), yCbCr420, yCbCr411, foldedSitesOrRefused, doubleRows),

    // Chroma of a quarter of the pixels each way.
    row(NAMED(zeliYCbCr1620To420_8u_P3R), yCbCr1620, yCbCr420, sixteensOrRefused, doubleSamplesAndRows),
    row(NAMED(zeliYCbCr420To1620_8u_P3R), yCbCr420, yCbCr1620, sixteensOrRefused, samePixel),

    // Interlaced frames.
    row(NAMED(zeliYCbCr422To420_Interlace_8u_P3R), yCbCr422, yCbCr420, fieldPairs, halveFields),
    row(NAMED(zeliCbYCr422ToYCbCr420_Interlace_8u_C2P3R), uyvy, yCbCr420, fieldPairs, halveFields),
    row(NAMED(zeliYCbCr420To422_Interlace_8u_P3R), yCbCr420, yCbCr422, fieldPairs, doubleFields),
    row(NAMED(zeliYCbCr420ToCbYCr422_Interlace_8u_P3C2R), yCbCr420, uyvy, fieldPairs, doubleFields),

    // Filters.
    row(NAMED(zeliYCbCr420ToYCbCr422_Filter_8u_P3R), yCbCr420, yCbCr422, eightRows, interpolateRows),
    row(NAMED(zeliYCrCb420ToYCbCr422_Filter_8u_P3R), yCrCb420, yCbCr422, eightRows, interpolateRows),
    row(NAMED(zeliYCbCr420ToYCbCr422_Filter_8u_P2P3R), nv12, yCbCr422, eightRows, interpolateRows),
    toPacked(top),
    toPacked(middle),
    toPacked(bottom),
    toPacked(whole),
    toPlanes(top),
    toPlanes(middle),
    toPlanes(bottom),
    toPlanes(whole),
};

}  // namespace

std::span<const Export> chromaExports() { return exports; }

}  // namespace model
