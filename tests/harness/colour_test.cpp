// Every conversion of three 8-bit channels on all 2^24 colours, for its block rule and for its tail rule.
#include "harness/conversion_test.h"
#include "harness/features.h"

namespace harness {
namespace {

constexpr int colours = 1 << 24;

// Gives the source the colours from `first` on, in runs of `perRow` pixels. At full resolution neighbours differ in all
// channels; below it the luma samples of a site run through the values that go with the site's chroma.
void fillColours(const Picture& picture, int first, int perRow) {
    const model::Image image = picture.image();
    const auto& [red, green, blue, alpha] = picture.layout->channels;
    const int siteWidth = 1 << green.xShift, siteHeight = 1 << green.yShift, sitePixels = siteWidth * siteHeight;
    for (int y = 0; y < picture.size.height; ++y) {
        for (int x = 0; x < picture.size.width; ++x) {
            const int inSite = y % siteHeight * siteWidth + x % siteWidth;
            uint32_t colour = first + y / siteHeight * perRow * siteHeight + x / siteWidth * sitePixels + inSite;
            if (sitePixels == 1) colour *= 0x9e3779b1;  // odd, so no colour is lost
            image.sample(red, x, y) = static_cast<uint8_t>(colour);
            if (inSite > 0) continue;
            image.sample(green, x, y) = static_cast<uint8_t>(colour >> 8);
            image.sample(blue, x, y) = static_cast<uint8_t>(colour >> 16);
        }
    }
}

}  // namespace

void ColourConversion::convertAllColours(int width, int perRow, const Placement& placement) {
    const ZelSize size{width, (16384 / width + 3) & ~3};
    Random random(seed());
    const auto [source, destination] = lay(size, {placement, placement}, random, Content::uniform);
    for (int first = 0; first < colours; first += perRow * size.height) {
        fillColours(source, first, perRow);
        const auto fault = compareWithModel(tested(), source, destination, size, 200);
        ASSERT_FALSE(fault) << tested().name << ", " << width << " x " << size.height << ", " << placement.name << ", features "
                            << featuresName() << ", colours from " << first << ": " << *fault;
    }
}

namespace {

constexpr int wide = 1024;

TEST_P(ColourConversion, BlockRuleMatchesModelOnAllColours) {
    const int blockPixels = tested().blocks(wide);
    convertAllColours(wide, blockPixels > 0 ? blockPixels : wide, aligned);
    if (tested().peculiarity == model::Peculiarity::differsByAlignment) convertAllColours(wide, blockPixels, dense);
}

// The widest row of whole sites without a block, 0 if there is none.
int tailWidth(const model::Export& tested) {
    const int siteWidth = std::max(1 << tested.source.channels[1].xShift, tested.geometry.site.width);
    for (int width = 64 - siteWidth; width > 0; width -= siteWidth)
        if (tested.blocks(width) <= 0) return width;
    return 0;
}

TEST_P(ColourConversion, TailRuleMatchesModelOnAllColours) {
    const int width = tailWidth(tested());
    if (width == 0) GTEST_SKIP() << "has no tail";
    convertAllColours(width, width, dense);
}

}  // namespace
}  // namespace harness
