#include "harness/conversion_test.h"

#include <signal.h>

#include <cstdlib>
#include <utility>

#include "harness/features.h"

namespace harness {
namespace {

// The call under test, for the message when it touches an inaccessible page.
struct {
    const char* name;
    ZelSize size;
    const Placements* placements;
} current;

struct sigaction previousAction;

void reportAccess(int signal, siginfo_t* info, void*) {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::fprintf(stderr, "Inaccessible byte at %p, features %s, in %s\n", info->si_addr, featuresName().c_str(),
                 test ? test->name() : "no test");
    if (current.name) {
        std::fprintf(stderr, "%s, %d x %d, source %s, destination %s\n", current.name, current.size.width, current.size.height,
                     current.placements->source.name, current.placements->destination.name);
    }
    sigaction(signal, &previousAction, nullptr);  // the access is repeated, and ends the process
}

void reportAccesses() {
    struct sigaction action {};
    action.sa_sigaction = reportAccess;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &previousAction);
}

uint64_t numberFrom(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? std::strtoull(value, nullptr, 0) : 1;
}

}  // namespace

uint64_t seed() { return numberFrom("ZELCC_TEST_SEED"); }

uint64_t sample() {
    static const uint64_t sample = std::max<uint64_t>(1, numberFrom("ZELCC_TEST_SAMPLE"));
    return sample;
}

void Conversion::SetUpTestSuite() {
    static const bool once = (reportAccesses(), true);
    static_cast<void>(once);
}

Conversion::Pictures Conversion::lay(ZelSize size, const Placements& placements, Random& random, Content content) {
    if (tested().entry.isInPlace) {
        const Picture picture = destinationMemory_.lay(tested().destination, tested().converted(size), placements.destination);
        picture.fill(random, content);
        return {picture, picture};
    }
    const Pictures pictures{
        sourceMemory_.lay(tested().source, tested().sourceSize(size), suited(tested(), placements.source, size),
                          tested().slice.sourceRowsAbove),
        destinationMemory_.lay(tested().destination, tested().destinationSize(size),
                               suited(tested(), placements.destination, size), tested().slice.destinationRowsAbove)};
    pictures.source.fill(random, content);
    pictures.destination.fill(random, Content::uniform);
    return pictures;
}

testing::AssertionResult Conversion::matchesModel(ZelSize size, const Placements& placements) {
    Random random(seed() + cases_);
    const Content content = cases_++ % 3 == 2 ? Content::extremes : Content::uniform;
    const auto [source, destination] = lay(size, placements, random, content);
    const auto alpha = static_cast<uint8_t>(random.next());
    const std::span<const model::Parameters> choice = tested().parameters;
    const model::Parameters parameters = choice.empty() ? model::Parameters{} : choice[random.next() % choice.size()];
    current = {tested().name, size, &placements};
    const auto fault = compareWithModel(tested(), source, destination, size, alpha, parameters);
    current = {};
    if (!fault) return testing::AssertionSuccess();
    return testing::AssertionFailure() << tested().name << tested().slice.name << ", " << size.width << " x " << size.height
                                       << ", source " << placements.source.name << ", destination " << placements.destination.name
                                       << ", features " << featuresName() << ", seed " << seed() << ": " << *fault;
}

namespace {

// Conversions that look at several rows of chroma sites only show it in regions of some height.
bool needsManyRows(const model::Export& tested) { return tested.geometry.minimum.height > 2 || *tested.slice.name; }

// Every width up to more than two of the widest blocks, and some large ones, at block borders and beside them.
std::vector<ZelSize> sweepSizes(const model::Export& tested) {
    const int minimum = tested.geometry.minimum.height, siteWidth = tested.geometry.site.width;
    const std::vector<int> few = needsManyRows(tested) ? std::vector{minimum, minimum + 9} : std::vector{1, 2};
    const std::vector<int> several = needsManyRows(tested) ? std::vector{minimum, 4, 8, 16, 19} : std::vector{1, 2, 3, 4};
    std::vector<ZelSize> sizes;
    if (tested.isRowwise) {
        for (int width = 1; width <= 145; ++width) sizes.push_back({width, width % 4 + 1});
        for (int width : {191, 192, 255, 256, 257, 511, 640, 1021}) sizes.push_back({width, 2});
        return sizes;
    }
    for (int width = 1; width <= 70; ++width)
        for (int height : {1, 2, 3, 4, 5, 8, 11}) sizes.push_back({width, height});
    for (int width = 71; width <= 145; ++width)
        for (int height : few) sizes.push_back({width, height});
    for (int width : {191, 192, 193, 255, 256, 257, 320, 511, 640, 1021})
        for (int height : several) sizes.push_back({width, height});
    if (siteWidth > 2)  // as many sites as there were pixels
        for (int width = siteWidth; width <= 145 * siteWidth; width += siteWidth)
            for (int height : {4, 8}) sizes.push_back({width, height});
    return sizes;
}

TEST_P(Conversion, MatchesModelAtEverySizeAndPlacement) {
    for (const Placements& placements : placements()) {
        if (!suits(placements)) continue;
        for (const ZelSize size : sweepSizes(tested())) {
            if (!isSampled()) continue;
            ASSERT_TRUE(matchesModel(size, placements));
        }
    }
}

// Images larger than the caches that zelcore reports, which conversions may treat in their own way.
TEST_P(Conversion, MatchesModelOnFrames) {
    for (const auto& [size, placement] : {std::pair(ZelSize{1280, 720}, aligned), {{1283, 721}, dense}}) {
        if (!isSampled()) continue;
        EXPECT_TRUE(matchesModel(size, {placement, placement}));
    }
}

// A sample of the sweep for slow machines, emulated ones above all.
TEST_P(Conversion, MatchesModelQuickly) {
    for (const Placements& placements : placements()) {
        if (!suits(placements)) continue;
        for (const int width : {1, 3, 6, 13, 22, 31, 48, 70, 139, 276})
            ASSERT_TRUE(matchesModel({width, needsManyRows(tested()) ? 8 : 4}, placements));
    }
}

// Where alignment decides between rules, each pointer and each step has a say; elsewhere none has.
TEST_P(Conversion, MatchesModelWithOneMisalignedOperand) {
    const auto sweep = [&](const Placements& placements) {
        for (const int width : {8, 16, 38, 75, 131, 256})
            for (const int height : {2, needsManyRows(tested()) ? 8 : 4}) ASSERT_TRUE(matchesModel({width, height}, placements));
    };
    for (int plane = 0; plane < 3; ++plane) {
        for (const int by : {1, 8, 15}) {
            Placement offset = aligned, longer = aligned;
            offset.name = "with one plane off its alignment";
            offset.offsets = onlyPlane(plane, by);
            longer.name = "with one step off its alignment";
            longer.gaps = onlyPlane(plane, by);
            for (const Placement& placement : {offset, longer}) {
                sweep({placement, aligned});
                sweep({aligned, placement});
            }
        }
    }
}

TEST_P(InPlaceConversion, GivesTheSameResultInPlace) {
    Random random(seed());
    for (const Placement& placement : {aligned, dense}) {
        for (const int width : {1, 2, 7, 16, 33, 70, 131, 640}) {
            const ZelSize size{width, 3};
            Picture source = lay(size, {placement, aligned}, random, Content::uniform).source;
            Picture destination = source;
            destination.layout = &tested().destination;
            const auto fault = compareWithModel(tested(), source, destination, size, 0);
            ASSERT_FALSE(fault) << tested().name << " in place, width " << width << ", " << placement.name << ": " << *fault;
        }
    }
}

bool hasOneLayout(const model::Export& e) { return e.source == e.destination && !e.entry.isInPlace; }

INSTANTIATE_TEST_SUITE_P(Every, Conversion, every(), nameOf);
INSTANTIATE_TEST_SUITE_P(Every, InPlaceConversion, every(hasOneLayout), nameOf);

}  // namespace
}  // namespace harness
