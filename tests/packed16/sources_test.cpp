#include <algorithm>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// Conversions of packed words, few enough to try them all.
class WordConversion : public Conversion {
  protected:
    static constexpr int words = 1 << 16;

    // Converts all words in rows of `width` pixels, of which the first `perRow` go through them: each word for all pixels of a
    // site, or words beside each other that differ in all fields.
    void convertAllWords(int width, int perRow) {
        const ZelSize size{width, 4};
        Random random(seed());
        const Pictures pictures = lay(size, {dense, dense}, random, Content::uniform);
        const Picture &source = pictures.source, &destination = pictures.destination;
        const model::Image image = source.image();
        const auto fill = [&](auto wordAt) {
            for (int y = 0; y < source.size.height; ++y)
                for (int x = 0; x < source.size.width; ++x)
                    image.store(source.layout->channels[0], x, y, static_cast<uint16_t>(wordAt(x, y)));
            const auto fault = compareWithModel(tested(), source, destination, size, 0);
            ASSERT_FALSE(fault) << tested().name << ", width " << width << ": " << *fault;
        };
        for (int first = 0; first < words; first += perRow) {
            fill([&](int x, int) { return first + x / 4; });
            fill([&](int x, int y) { return (first + x + words / 4 * y) * 0x9e37; });
        }
    }
};

TEST_P(WordConversion, BlockRuleMatchesModelOnAllWords) {
    const int width = 256, blockPixels = tested().blocks(width);
    ASSERT_EQ(blockPixels, width);
    convertAllWords(width, width / 4);
}

// The widest row of whole sites without a block.
TEST_P(WordConversion, TailRuleMatchesModelOnAllWords) {
    int width = 28;
    while (width > 0 && tested().blocks(width) > 0) width -= 2;
    if (width == 0) GTEST_SKIP() << "has no tail";
    convertAllWords(width, std::max(1, width / 4));
}

bool readsWords(const model::Export& e) { return e.source.channels[0].stride == 2; }
bool packsWords(const model::Export& e) { return !readsWords(e); }

INSTANTIATE_TEST_SUITE_P(PackedSources, WordConversion, rows(model::packedSourceExports(), readsWords), nameOf);
INSTANTIATE_TEST_SUITE_P(PackedSources, ColourConversion, rows(model::packedSourceExports(), packsWords), nameOf);

}  // namespace
}  // namespace harness
