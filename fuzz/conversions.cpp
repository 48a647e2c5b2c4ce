// Fuzz target: one call of an export on planes that end with their last byte, beside its model, or one with wrong arguments. The
// input picks the export, the size, the offsets and steps of all planes and their content. ZELCC_TEST_FEATURES picks the level,
// as in the tests.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "cases.h"
#include "harness/picture.h"
#include "heap_memory.h"

namespace fuzz {
namespace {

using harness::Picture;
using harness::PicturePlane;

std::vector<const model::Export*> allExports() {
    std::vector<const model::Export*> all;
    for (const auto exports : model::families())
        for (const model::Export& e : exports) all.push_back(&e);
    return all;
}

// Owns the planes of a picture.
class HeapPicture {
  public:
    HeapPicture(const model::Export& tested, const model::Layout& layout, ZelSize region, ZelSize size,
                const std::array<int, 4>& rowsAbove, Choices& choices)
        : picture_{&layout, size, {}} {
        const bool bottomUp = tested.entry.takesSteps && !tested.checksSteps && choices.flag();
        const int stepUnit = choices.oneOf({1, 1, 2, 16});
        size_t previousStep = 0;
        for (int i = 0; i < layout.planeCount; ++i) {
            const size_t rowBytes = layout.planes[i].rowBytes(size.width),
                         rows = layout.planes[i].rows(size.height) + rowsAbove[i];
            size_t step = (rowBytes + choices.below(41)) / stepUnit * stepUnit;
            if (step < rowBytes) step += stepUnit;
            if (layout.hasCommonStep() && i > 0) step = previousStep;
            if (!tested.entry.takesSteps) step = layout.planes[i].rowBytes(region.width);
            // What is misplaced by the shorter step is in the plane still.
            if (tested.peculiarity == model::Peculiarity::misplacesByFirstStep && i == 2 && step < previousStep)
                step = previousStep;
            previousStep = step;
            const auto signedStep = static_cast<int32_t>(bottomUp ? 0 - step : step);
            const size_t pitch = std::abs(layout.pitch(signedStep));
            const size_t extent = rowBytes == 0 || rows == 0 ? 0 : (rows - 1) * pitch + rowBytes;
            const size_t offset = choices.flag() ? choices.below(32) : 0;

            memory_[i] = HeapMemory(extent, offset);
            PicturePlane& plane = picture_.planes[i];
            plane.memory = memory_[i].bytes();
            plane.first = plane.memory.data();
            plane.step = signedStep;
            plane.rowsAbove = rowsAbove[i];
            if (bottomUp && extent > 0) plane.first += (rows - 1) * pitch;
            if (extent > 0) plane.first += plane.rowsAbove * layout.pitch(plane.step);
        }
    }

    const Picture& picture() const { return picture_; }

  private:
    Picture picture_;
    std::array<HeapMemory, 4> memory_;
};

// What is left of the input at the start of the planes, random numbers elsewhere.
void fill(const Picture& picture, Choices& choices) {
    picture.fill(choices.random(), choices.flag() ? harness::Content::uniform : harness::Content::extremes);
    for (const PicturePlane& p : picture.usedPlanes()) choices.putInto(p.memory.first(p.memory.size() / 2));
}

// One of those that the tests try, or any coefficients.
model::Parameters parametersOf(const model::Export& tested, Choices& choices) {
    if (tested.parameters.empty()) return {};
    model::Parameters parameters = tested.parameters[choices.below(static_cast<int>(tested.parameters.size()))];
    if (!parameters.hasCoefficients || choices.flag()) return parameters;
    std::array<double, 16> coefficients;
    for (double& c : coefficients) c = choices.from(-30000, 30000) / 10000.0;
    return model::withCoefficients(coefficients);
}

std::optional<std::string> tryConversion(const model::Export& tested, Choices& choices) {
    ZelSize region{choices.from(1, choices.oneOf({20, 80, 300})), choices.from(1, 6)};
    if (choices.flag()) region.height *= 4;
    if (choices.flag()) region = tested.converted(region);
    const auto alpha = static_cast<uint8_t>(choices.below(256));

    const model::Parameters parameters = parametersOf(tested, choices);
    const HeapPicture apart(tested, tested.source, region, tested.sourceSize(region), tested.slice.sourceRowsAbove, choices);
    const HeapPicture destination(tested, tested.destination, region, tested.destinationSize(region),
                                  tested.slice.destinationRowsAbove, choices);
    const Picture& source = tested.entry.isInPlace ? destination.picture() : apart.picture();
    fill(source, choices);
    const auto fault = harness::compareWithModel(tested, source, destination.picture(), region, alpha, parameters);
    if (!fault) return std::nullopt;
    return std::string(tested.name) + tested.slice.name + ", " + std::to_string(region.width) + " x " +
           std::to_string(region.height) + ": " + *fault;
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::vector<const model::Export*> exports = fuzz::allExports();
    constexpr int ofMosaics = 32, ofBits = 8;  // as many cases as this number of exports has
    const int ofConversions = static_cast<int>(exports.size());
    fuzz::Choices choices(data, size);
    const int chosen = choices.below(ofConversions + ofMosaics + ofBits);
    const auto fault = chosen < ofConversions && choices.below(3) == 0 ? fuzz::tryHostile(*exports[chosen], choices)
                       : chosen < ofConversions                        ? fuzz::tryConversion(*exports[chosen], choices)
                       : chosen < ofConversions + ofMosaics            ? fuzz::tryMosaic(choices)
                                                                       : fuzz::tryBits(choices);
    if (fault) {
        std::fprintf(stderr, "%s\n", fault->c_str());
        std::abort();
    }
    return 0;
}
