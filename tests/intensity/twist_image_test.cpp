// Colour twist of images whose rows touch, overlap, or are many.
#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

bool isTwist(const model::Export& e) { return e.needsCoefficients; }
bool isTwistInPlace(const model::Export& e) { return isTwist(e) && e.entry.isInPlace; }
bool isTwistOfFloats(const model::Export& e) { return isTwist(e) && e.source.element == model::Element::f32; }

class Twist : public Conversion {};
class TwistInPlace : public Twist {};

// From 34993 samples on, floats may be stored past the cache.
TEST_P(Twist, MatchesModelOnEitherSideOfTheThreshold) {
    for (const ZelSize size : {ZelSize{11664, 1}, {11665, 1}, {1, 11664}, {1, 11665}, {108, 108}, {109, 108}}) {
        for (const int offset : {0, 1, 4, 8, 12}) {
            const Placement placement{.name = "at some offset", .offsets = allPlanes(offset)};
            ASSERT_TRUE(matchesModel(size, {placement, placement}));
            if (!tested().entry.isInPlace) {
                ASSERT_TRUE(matchesModel(size, {aligned, placement}));
                ASSERT_TRUE(matchesModel(size, {placement, aligned}));
            }
        }
    }
}

// A row may begin before the one above it ends: they are transformed one after the other, each from its left.
TEST_P(TwistInPlace, TakesOverlappingRowsFromTheTop) {
    constexpr ZelSize size{43, 5};
    const model::Layout& layout = tested().destination;
    for (const int pixels : {0, 1, 4, 5, 16, 42}) {
        Random random(seed());
        Picture picture = lay(size, {dense, dense}, random, Content::uniform).destination;
        for (PicturePlane& plane : picture.planes) plane.step = std::max(1, pixels * layout.planes[0].unitBytes);
        Snapshot expected(picture);
        const model::Image image = expected.image();
        const model::Parameters& parameters = tested().parameters[2];
        ASSERT_EQ(tested().entry.call({.source = {}, .destination = picture.operand(), .size = size, .parameters = parameters}),
                  zelStsNoErr);
        tested().model({.source = image,
                        .destination = image,
                        .size = size,
                        .blockPixels = size.width,
                        .aligned = false,
                        .alpha = {},
                        .parameters = parameters});
        expected.acceptNaNs();
        ASSERT_EQ(expected.difference(), std::nullopt) << tested().name << ", rows " << pixels << " pixels apart";
    }
}

INSTANTIATE_TEST_SUITE_P(Intensity, Twist, rows(model::intensityExports(), isTwistOfFloats), nameOf);
INSTANTIATE_TEST_SUITE_P(Intensity, TwistInPlace, rows(model::intensityExports(), isTwistInPlace), nameOf);

}  // namespace
}  // namespace harness
