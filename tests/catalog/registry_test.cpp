// The registry of functions and formats, which is read off the headers, beside what the tests know of the exports: the same
// planes on both sides, and arguments that arrive where they belong.
#include <algorithm>
#include <bit>
#include <map>
#include <sstream>

#include "catalog/names.h"
#include "harness/conversion_test.h"

namespace harness {
namespace {

class Registry : public Conversion {};

// The function leads through these, more than one where it looks at no meaning of its channels.
std::vector<const catalog::Conversion*> conversionsOf(std::string_view name) {
    std::vector<const catalog::Conversion*> found;
    for (const catalog::Conversion& c : catalog::conversions())
        if (catalog::functions()[c.function].name == name) found.push_back(&c);
    return found;
}

void expectPlanes(const catalog::Format& format, const std::array<int8_t, 4>& order, const model::Layout& layout) {
    ASSERT_EQ(format.planeCount, layout.planeCount) << format.name;
    for (int i = 0; i < layout.planeCount; ++i) {
        const catalog::Plane& plane = format.planes[order[i]];
        EXPECT_EQ(plane.rowBytes(32), layout.planes[i].rowBytes(32)) << format.name << " plane " << i;
        EXPECT_EQ(plane.rows(32), layout.planes[i].rows(32)) << format.name << " plane " << i;
    }
    if (layout.planeCount < 3) return;
    constexpr std::string_view names[] = {"R Y H", "G Cb L Co", "B Cr S Cg"};
    for (int channel = 0; channel < 3; ++channel) {
        const std::string_view name = format.planes[order[layout.channels[channel].plane]].channels;
        EXPECT_NE(names[channel].find(name), names[channel].npos) << format.name << " has " << name << " as channel " << channel;
    }
}

TEST_P(Registry, KnowsThePlanes) {
    const auto found = conversionsOf(tested().name);
    ASSERT_FALSE(found.empty());
    for (const catalog::Conversion* c : found) {
        expectPlanes(catalog::formats()[c->source], c->sourceOrder, tested().source);
        expectPlanes(catalog::formats()[c->target], c->targetOrder, tested().destination);
    }
}

TEST_P(Registry, KnowsWhatAsksForCare) {
    const catalog::Function& function = catalog::functions()[conversionsOf(tested().name).front()->function];
    for (int height = 1; height <= 4; ++height)
        for (int width = 1; width <= 40; ++width) {
            const model::Room room = tested().room ? tested().room({width, height}) : model::Room{};
            EXPECT_EQ(catalog::goesBeyond(function.beyond, {width, height}), room.source > 0 || room.destination > 0)
                << width << " x " << height;
        }
    EXPECT_EQ(function.needsEqualSteps, tested().peculiarity == model::Peculiarity::misplacesByFirstStep);
    // Whole sites are converted to the last pixel, and one of them is an image.
    const ZelSize site = tested().geometry.site, least = tested().geometry.minimum;
    EXPECT_EQ(function.site.width % site.width, 0) << function.site.width;
    EXPECT_EQ(function.site.height % site.height, 0) << function.site.height;
    EXPECT_GE(function.site.width, least.width);
    EXPECT_GE(function.site.height, least.height);
    const auto& [source, target] = std::pair(tested().source, tested().destination);
    if (function.worksInPlace) {
        EXPECT_EQ(source.planeCount, target.planeCount);
        for (int i = 0; i < source.planeCount; ++i) EXPECT_EQ(source.planes[i].rowBytes(32), target.planes[i].rowBytes(32));
    }
    // As many steps as planes where a plane has fewer samples than another.
    const auto steps = [&](const model::Layout& layout, int count) {
        bool isUneven = false;
        for (int i = 1; i < layout.planeCount; ++i)
            isUneven = isUneven || layout.planes[i].rowBytes(32) != layout.planes[0].rowBytes(32) ||
                       layout.planes[i].rows(32) != layout.planes[0].rows(32);
        return !function.takesSteps ? count == 0 : count == (isUneven ? layout.planeCount : 1);
    };
    EXPECT_TRUE(function.sourcePlanes == 0 || steps(source, function.sourceSteps)) << int{function.sourceSteps};
    EXPECT_TRUE(steps(target, function.targetSteps)) << int{function.targetSteps};
}

catalog::Side sideOf(const model::Operand& operand) {
    catalog::Side side{.steps = operand.steps};
    std::copy(operand.planes.begin(), operand.planes.end(), side.planes.begin());
    return side;
}

TEST_P(Registry, PassesTheArguments) {
    const catalog::Function& function = catalog::functions()[conversionsOf(tested().name).front()->function];
    Random random(seed());
    const ZelSize size = smallSize(36);
    auto [source, destination] =
        lay(size, {suited(tested(), dense, size), suited(tested(), dense, size)}, random, Content::uniform);
    const model::Parameters parameters = tested().firstParameters();

    const Snapshot untouched(destination);
    const model::Call call{.source = source.operand(),
                           .destination = destination.operand(),
                           .size = size,
                           .alpha = 0x5a,
                           .slice = tested().slice.argument,
                           .parameters = parameters};
    const ZelStatus expected = tested().entry.call(call);
    Snapshot result(destination);
    untouched.restore();

    uint32_t alpha = 0x5a;
    if (function.to == catalog::Element::u16 || function.to == catalog::Element::s16) alpha = parameters.word;
    if (function.to == catalog::Element::f32) alpha = std::bit_cast<uint32_t>(parameters.numbers[0]);
    const void* coefficients = nullptr;
    if (parameters.hasCoefficients)
        coefficients = function.takesDoubles ? static_cast<const void*>(parameters.doubles.data()) : parameters.floats.data();
    const ZelStatus status = function.call({.source = sideOf(call.source),
                                            .destination = sideOf(call.destination),
                                            .size = size,
                                            .alpha = alpha,
                                            .coefficients = coefficients,
                                            .lowest = parameters.numbers[0],
                                            .highest = parameters.numbers[1],
                                            .noise = parameters.integers[0],
                                            .levels = parameters.integers[2],
                                            .dither = parameters.integers[1],
                                            .slice = tested().slice.argument});
    EXPECT_EQ(status, expected);
    result.acceptNaNs();
    EXPECT_EQ(result.difference(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, Registry, every(), nameOf);

TEST(Formats, AreOnesThatCanBeTold) {
    std::map<std::string, std::string_view> known;
    for (const catalog::Format& f : catalog::formats()) {
        std::ostringstream content;
        content << static_cast<int>(f.element) << f.title.substr(0, f.title.find(','));
        for (const catalog::Plane& p : f.usedPlanes())
            content << ';' << f.bits << f.description.alignment << ' ' << p.channels << ' ' << p.bytes << ' ' << p.width << ' '
                    << p.height;
        const auto [first, isNew] = known.emplace(content.str(), f.name);
        EXPECT_TRUE(isNew) << f.name << " has the planes of " << first->second;
    }
    EXPECT_TRUE(std::ranges::is_sorted(catalog::formats(), {}, &catalog::Format::name));
    EXPECT_TRUE(std::ranges::is_sorted(catalog::functions(), {}, &catalog::Function::name));
}

std::string suggested(std::string_view word, std::vector<std::string_view> names) { return catalog::suggestion(word, names); }

TEST(Names, AreSuggested) {
    EXPECT_EQ(suggested("grey", {"gray", "linear", "gamma"}), "; it is one of gray, linear, gamma");
    EXPECT_EQ(suggested("filtre", catalog::methods()), "; did you mean filter?");
    EXPECT_EQ(suggested("rggb", {"zelBayerBGGR", "zelBayerRGGB", "zelBayerGBRG", "zelBayerGRBG", "zelDitherFS", "zelDitherJJN"}),
              "; did you mean zelBayerRGGB?");
    EXPECT_EQ(catalog::suggestedFormats("NV16"), "; did you mean nv16, nv11, nv12, yv16, nv21?");
    EXPECT_EQ(catalog::suggestedFormats("something else"), "");
    EXPECT_EQ(catalog::findFormat("gray16")->name, "gray16le");
    EXPECT_EQ(catalog::findFunction("RGBToGray_8u_C3C1R"), catalog::findFunction("zeliRGBToGray_8u_C3C1R"));
}

}  // namespace
}  // namespace harness
