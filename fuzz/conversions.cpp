// Fuzz target: one call of an export on planes that end with their last byte, beside its model. The input picks the export, the
// size, the offsets and steps of all planes and their content. ZELCC_TEST_FEATURES picks the level, as in the tests.
#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include "harness/picture.h"

namespace {

using harness::Picture;
using harness::PicturePlane;

std::vector<const model::Export*> allExports() {
    std::vector<const model::Export*> all;
    for (const auto exports : model::families())
        for (const model::Export& e : exports) all.push_back(&e);
    return all;
}

// Choices by the bytes of the input, and behind its end by random numbers that follow from it. So the shortest input is a whole
// case, whose choices are as varied as any, and a longer one decides more of them by itself.
class Choices {
  public:
    Choices(const uint8_t* data, size_t size) : rest_(data, size), random_(hash(rest_)) {}

    int below(int count) {
        uint16_t word = static_cast<uint16_t>(random_.next() >> 48);
        if (rest_.size() >= sizeof word) {
            std::memcpy(&word, rest_.data(), sizeof word);
            rest_ = rest_.subspan(sizeof word);
        }
        return word % count;
    }
    int from(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool flag() { return below(2) == 1; }
    template <class T, size_t n>
    const T& oneOf(const T (&values)[n]) {
        return values[below(n)];
    }
    harness::Random& random() { return random_; }

    // Gives what is left of the input away.
    void putInto(std::span<uint8_t> bytes) {
        const size_t count = std::min(bytes.size(), rest_.size());
        std::copy_n(rest_.begin(), count, bytes.begin());
        rest_ = rest_.subspan(count);
    }

  private:
    static uint64_t hash(std::span<const uint8_t> bytes) {
        uint64_t hash = 0xcbf29ce484222325;
        for (const uint8_t byte : bytes) hash = (hash ^ byte) * 0x100000001b3;
        return hash;
    }

    std::span<const uint8_t> rest_;
    harness::Random random_;
};

// Owns the planes of a picture. The address sanitizer sees every access behind their last byte, and nearly every one before
// their first.
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::vector<const model::Export*> exports = allExports();
    Choices choices(data, size);
    const model::Export& tested = *exports[choices.below(static_cast<int>(exports.size()))];
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
    if (const auto fault = harness::compareWithModel(tested, source, destination.picture(), region, alpha, parameters)) {
        std::fprintf(stderr, "%s%s, %d x %d: %s\n", tested.name, tested.slice.name, region.width, region.height, fault->c_str());
        std::abort();
    }
    return 0;
}
