// Images around the sizes from which on a conversion stores past the cache. No result may tell which way it went.
#include <set>

#include "harness/conversion_test.h"

namespace harness {
namespace {

class LargeImage : public Conversion {};
class LargeLumaPlane : public Conversion {};

constexpr int width = 1024;  // the rows of every plane are whole cache lines

// On either side of each threshold: bytes of all steps times the height, pixels, and bytes that one conversion counts by itself.
std::set<int> heightsAroundThresholds(const model::Export& tested) {
    int rowBytes = 0;
    for (const model::Layout* layout : {&tested.source, &tested.destination})
        for (const model::PlaneShape& plane : layout->planes) rowBytes += plane.rowBytes(width);
    struct Threshold {
        int size, perRow;
    };
    std::set<int> heights;
    for (const auto [size, perRow] : {Threshold{0x80000, rowBytes}, {348602, width}, {0x80000, width}, {0x180000, width * 7 / 2}})
        heights.insert({size / perRow / 8 * 8, size / perRow / 8 * 8 + 8});
    return heights;
}

TEST_P(LargeImage, MatchesModelOnEitherSideOfTheThresholds) {
    for (const int height : heightsAroundThresholds(tested()))
        for (const Placements& placements : {Placements{aligned, aligned}, {dense, aligned}, {aligned, dense}}) {
            if (!isSampled()) continue;
            ASSERT_TRUE(matchesModel({width, height}, placements));
        }
}

// Luma planes whose distance modulo 65536 lies in and beside the range that isn't stored past the cache.
TEST_P(LargeLumaPlane, MatchesModelAtEveryDistance) {
    constexpr ZelSize size{width, 520};
    constexpr size_t lumaBytes = size_t{width} * size.height, apart = (lumaBytes / 65536 + 1) * 65536;
    Random random(seed());
    auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    GuardedMemory memory;
    const std::span<uint8_t> both = memory.pages(2 * apart + lumaBytes);
    random.fill(both, Content::uniform);
    source.planes[0] = {both.data(), width, both.first(lumaBytes)};
    for (const size_t distance : {0, 65216, 65217, 65232, 65504, 65519, 65520}) {
        const std::span<uint8_t> luma = both.subspan(apart + distance, lumaBytes);
        destination.planes[0] = {luma.data(), width, luma};
        if (!isSampled()) continue;
        const auto fault = compareWithModel(tested(), source, destination, size, 0);
        ASSERT_FALSE(fault) << tested().name << ", luma planes at distance " << distance << ": " << *fault;
    }
}

bool takesWholeImages(const model::Export& e) { return e.slice.argument == 0 || e.slice.argument == 21; }
bool copiesLumaPlanes(const model::Export& e) {
    return takesWholeImages(e) && e.source.planeCount > 1 && e.destination.planeCount > 1;
}

INSTANTIATE_TEST_SUITE_P(Chroma, LargeImage, rows(model::chromaExports(), takesWholeImages), nameOf);
INSTANTIATE_TEST_SUITE_P(Chroma, LargeLumaPlane, rows(model::chromaExports(), copiesLumaPlanes), nameOf);

}  // namespace
}  // namespace harness
