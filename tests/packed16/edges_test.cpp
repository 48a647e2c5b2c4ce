// What the tests of all conversions don't reach: every phase of a dither with every byte, edges whose rules are their own on all
// colours, regions beside each other, and rows without room for what is written beyond them.
#include <algorithm>
#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

const model::Export& exportNamed(std::string_view name) {
    const auto exports = model::packedDestinationExports();
    return *std::ranges::find_if(exports, [&](const model::Export& e) { return e.name == name; });
}

struct Pictures {
    PictureMemory sourceMemory, destinationMemory;
    Picture source, destination;

    Pictures(const model::Export& tested, ZelSize size)
        : source(sourceMemory.lay(tested.source, tested.sourceSize(size), aligned)),
          destination(destinationMemory.lay(tested.destination, tested.destinationSize(size), aligned)) {}
};

// Gray of full range becomes itself in all three channels.
TEST(PackedDither, HasEveryThresholdForEveryByte) {
    constexpr ZelSize size{1024, 4};
    for (const char* name : {"zeliYUV420ToBGR444Dither_8u16u_P3C3R", "zeliYUV420ToRGB555Dither_8u16u_P3C3R",
                             "zeliYUV420ToBGR565Dither_8u16u_P3C3R"}) {
        const model::Export& tested = exportNamed(name);
        const Pictures pictures(tested, size);
        const auto& [luma, u, v, none] = tested.source.channels;
        const model::Image image = pictures.source.image();
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                image.sample(luma, x, y) = static_cast<uint8_t>(x / 4);
                image.sample(u, x, y) = image.sample(v, x, y) = 128;
            }
        EXPECT_EQ(compareWithModel(tested, pictures.source, pictures.destination, size, 0), std::nullopt) << name;
    }
}

TEST(PackedDither, LeavesWhiteWhiteButForOneGreen) {
    constexpr ZelSize size{80, 8};
    const model::Export& tested = exportNamed("zeliYUV420ToBGR565Dither_8u16u_P3C3R");
    const Pictures pictures(tested, size);
    for (int plane = 0; plane < 3; ++plane)
        std::ranges::fill(pictures.source.planes[plane].memory, static_cast<uint8_t>(plane == 0 ? 255 : 128));
    ASSERT_EQ(
        tested.entry.call({.source = pictures.source.operand(), .destination = pictures.destination.operand(), .size = size}),
        zelStsNoErr);
    const model::Image image = pictures.destination.image();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            ASSERT_EQ(image.load<uint16_t>(tested.destination.channels[0], x, y), y % 4 == 3 && x % 4 == 0 ? 0xffdf : 0xffff)
                << x << ", " << y;
}

// Two parts of a region make up the whole if the pattern goes on.
TEST(PackedDither, BeginsAnewAtEveryRegion) {
    constexpr ZelSize size{160, 12};
    const model::Export& tested = exportNamed("zeliYCbCrToRGB565Dither_8u16u_C3R");
    const Pictures whole(tested, size), parts(tested, size);
    Random random(seed());
    whole.source.fill(random, Content::uniform);
    const auto convert = [&](const Pictures& to, int x, int y, ZelSize part) {
        model::Operand source = whole.source.operand(), destination = to.destination.operand();
        source.planes[0] += y * source.steps[0] + 3 * x;
        destination.planes[0] += y * destination.steps[0] + 2 * x;
        ASSERT_EQ(tested.entry.call({.source = source, .destination = destination, .size = part}), zelStsNoErr);
    };
    convert(whole, 0, 0, size);
    for (const int column : {4, 36, 68, 100, 6, 33, 71}) {
        for (const int row : {4, 8, 5}) {
            for (const auto& [x, width] : {std::pair{0, column}, {column, size.width - column}})
                for (const auto& [y, height] : {std::pair{0, row}, {row, size.height - row}})
                    convert(parts, x, y, {width, height});
            const bool goesOn = column % 4 == 0 && row % 4 == 0;
            EXPECT_EQ(std::ranges::equal(parts.destination.planes[0].memory, whole.destination.planes[0].memory), goesOn)
                << "parts at " << column << ", " << row;
        }
    }
}

// An edge of a region, which has a rule of its own.
struct Edge {
    const char* name;
    ZelSize size;
    int firstColumn, firstRow;
};

// All colours go through the edge; a chroma sample keeps its value while the pixels that share it go through lumas.
TEST(PackedEdges, MatchTheModelOnAllColours) {
    constexpr Edge edges[] = {
        {"zeliYUV420ToBGR565_8u16u_P3C3R", {2048, 3}, 0, 2},
        {"zeliYCbCr411ToBGR565_8u16u_P3C3R", {7, 4096}, 4, 0},
    };
    for (const Edge& edge : edges) {
        const model::Export& tested = exportNamed(edge.name);
        const Pictures pictures(tested, edge.size);
        const auto& [luma, cb, cr, none] = tested.source.channels;
        const model::Image image = pictures.source.image();
        uint32_t colour = 0;
        while (colour < 1u << 24) {
            for (int y = edge.firstRow; y < edge.size.height; ++y) {
                for (int x = edge.firstColumn; x < edge.size.width; ++x, ++colour) {
                    const int site = edge.firstColumn > 0 ? edge.firstColumn - 1 : x;  // whose chroma the pixel takes
                    if (edge.firstColumn > 0 ? x == edge.firstColumn : x % 2 == 0) {
                        image.sample(cb, site, y) = static_cast<uint8_t>(colour >> 8);
                        image.sample(cr, site, y) = static_cast<uint8_t>(colour >> 16);
                    }
                    image.sample(luma, x, y) = static_cast<uint8_t>(colour);
                }
            }
            ASSERT_EQ(compareWithModel(tested, pictures.source, pictures.destination, edge.size, 0), std::nullopt)
                << edge.name << ", colours up to " << colour;
        }
    }
}

TEST(PackedEdges, SinglePixelsMatchTheModelOnAllBytes) {
    constexpr ZelSize size{1, 65536};
    for (const char* name : {"zeliYCbCr422ToRGB555_8u16u_C2C3R", "zeliYCbCr422ToBGR565Dither_8u16u_C2C3R"}) {
        const model::Export& tested = exportNamed(name);
        const Pictures pictures(tested, size);
        const PicturePlane& plane = pictures.source.planes[0];
        for (int y = 0; y < size.height; ++y) {
            plane.first[y * plane.step] = static_cast<uint8_t>(y);
            plane.first[y * plane.step + 1] = static_cast<uint8_t>(y >> 8);
        }
        EXPECT_EQ(compareWithModel(tested, pictures.source, pictures.destination, size, 0), std::nullopt) << name;
    }
}

// Rows may follow each other without room for what is written beyond them. It is in other rows then, but does not stay there.
TEST(PackedEdges, PixelsOfTheRegionStayWhereRowsHaveNoRoom) {
    const model::Export& tested = exportNamed("zeliYUV420ToRGB444_8u16u_P3C3R");
    for (const int width : {4, 5, 12, 36, 69, 132, 261}) {
        for (const int direction : {1, -1}) {
            const ZelSize size{width, 7};
            const Pictures roomy(tested, size);
            Random random(seed());
            roomy.source.fill(random, Content::uniform);
            std::vector<uint16_t> dense(static_cast<size_t>(width) * (size.height + 2) + 4);
            model::Operand destination;
            destination.planes[0] = reinterpret_cast<uint8_t*>(dense.data() + width * (direction > 0 ? 1 : size.height));
            destination.steps[0] = direction * 2 * width;
            for (const model::Operand& to : {roomy.destination.operand(), destination})
                ASSERT_EQ(tested.entry.call({.source = roomy.source.operand(), .destination = to, .size = size}), zelStsNoErr);
            const model::Image expected = roomy.destination.image();
            for (int y = 0; y < size.height; ++y)
                for (int x = 0; x < width; ++x) {
                    uint16_t word;
                    std::memcpy(&word, destination.planes[0] + y * destination.steps[0] + 2 * x, sizeof word);
                    ASSERT_EQ(word, expected.load<uint16_t>(tested.destination.channels[0], x, y))
                        << width << " wide, direction " << direction << ", pixel " << x << ", " << y;
                }
        }
    }
}

}  // namespace
}  // namespace harness
