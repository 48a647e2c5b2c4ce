// Fuzz target: one call of an export on planes that end with their last byte, beside its model. The input picks the export, the
// size, the offsets and steps of all planes and their content. ZELCC_TEST_FEATURES picks the level, as in the tests.
#include <fuzzer/FuzzedDataProvider.h>
#include <sanitizer/asan_interface.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "harness/picture.h"

namespace {

using harness::Picture;
using harness::PicturePlane;

// Owns the planes of a picture. The address sanitizer sees every access behind their last byte, and nearly every one before
// their first.
class HeapPicture {
  public:
    HeapPicture(const model::Export& tested, const model::Layout& layout, ZelSize region, ZelSize size,
                const std::array<int, 4>& rowsAbove, FuzzedDataProvider& input)
        : picture_{&layout, size, {}} {
        const bool bottomUp = tested.entry.takesSteps && !tested.checksSteps && input.ConsumeBool();
        const int stepUnit = input.PickValueInArray({1, 1, 2, 16});
        size_t previousStep = 0;
        for (int i = 0; i < layout.planeCount; ++i) {
            const size_t rowBytes = layout.planes[i].rowBytes(size.width),
                         rows = layout.planes[i].rows(size.height) + rowsAbove[i];
            size_t step = (rowBytes + input.ConsumeIntegralInRange(0, 40)) / stepUnit * stepUnit;
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
            const size_t offset = input.ConsumeBool() ? input.ConsumeIntegralInRange(0, 31) : 0;

            memory_[i].reset(static_cast<uint8_t*>(std::malloc(offset + extent)));
            ASAN_POISON_MEMORY_REGION(memory_[i].get(), offset);
            PicturePlane& plane = picture_.planes[i];
            plane.memory = {memory_[i].get() + offset, extent};
            plane.first = plane.memory.data();
            plane.step = signedStep;
            plane.rowsAbove = rowsAbove[i];
            if (bottomUp && extent > 0) plane.first += (rows - 1) * pitch;
            if (extent > 0) plane.first += plane.rowsAbove * layout.pitch(plane.step);
        }
    }

    const Picture& picture() const { return picture_; }

  private:
    struct Free {
        void operator()(uint8_t* p) const { std::free(p); }
    };
    Picture picture_;
    std::array<std::unique_ptr<uint8_t, Free>, 4> memory_;
};

// Bytes from the input where they matter most, at the start of the planes, and random ones from there on.
void fill(const Picture& picture, FuzzedDataProvider& input) {
    harness::Random random(input.ConsumeIntegral<uint32_t>());
    picture.fill(random, input.ConsumeBool() ? harness::Content::uniform : harness::Content::extremes);
    for (const PicturePlane& p : picture.usedPlanes()) input.ConsumeData(p.memory.data(), p.memory.size() / 2);
}

// One of those that the tests try, or any coefficients.
model::Parameters parametersOf(const model::Export& tested, FuzzedDataProvider& input) {
    if (tested.parameters.empty()) return {};
    model::Parameters parameters = tested.parameters[input.ConsumeIntegralInRange<size_t>(0, tested.parameters.size() - 1)];
    if (!parameters.hasCoefficients || input.ConsumeBool()) return parameters;
    std::array<double, 16> coefficients;
    for (double& c : coefficients) c = input.ConsumeFloatingPointInRange(-3.0, 3.0);
    return model::withCoefficients(coefficients);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    const auto families = model::families();
    const auto exports = families[input.ConsumeIntegralInRange<size_t>(0, families.size() - 1)];
    const model::Export& tested = exports[input.ConsumeIntegralInRange<size_t>(0, exports.size() - 1)];
    ZelSize region{input.ConsumeIntegralInRange(1, 300), input.ConsumeIntegralInRange(1, 6)};
    if (input.ConsumeBool()) region.height *= 4;
    if (input.ConsumeBool()) region = tested.converted(region);
    const auto alpha = input.ConsumeIntegral<uint8_t>();

    const model::Parameters parameters = parametersOf(tested, input);
    const HeapPicture apart(tested, tested.source, region, tested.sourceSize(region), tested.slice.sourceRowsAbove, input);
    const HeapPicture destination(tested, tested.destination, region, tested.destinationSize(region),
                                  tested.slice.destinationRowsAbove, input);
    const Picture& source = tested.entry.isInPlace ? destination.picture() : apart.picture();
    fill(source, input);
    if (const auto fault = harness::compareWithModel(tested, source, destination.picture(), region, alpha, parameters)) {
        std::fprintf(stderr, "%s%s, %d x %d: %s\n", tested.name, tested.slice.name, region.width, region.height, fault->c_str());
        std::abort();
    }
    return 0;
}
