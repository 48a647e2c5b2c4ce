// Calls that nobody should make: what is refused must leave everything as it was, and what is not refused must stay in its rows.
#include <pmmintrin.h>

#include <cfenv>
#include <cmath>
#include <limits>
#include <vector>

#include "cases.h"
#include "harness/features.h"
#include "model/export.h"

namespace fuzz {
namespace {

constexpr int widest = 200, highest = 8, farthest = 2048;  // pixels, rows, bytes from row to row
constexpr size_t planeBytes = 1 << 16;                     // with room for all rows before and behind the middle

// Both images, a plane after the other: they may share memory.
class Arena {
  public:
    Arena() : bytes_(8 * planeBytes) {}

    uint8_t* middle(int plane) { return bytes_.data() + planeBytes * static_cast<size_t>(plane) + planeBytes / 2; }
    std::vector<uint8_t>& bytes() { return bytes_; }

  private:
    std::vector<uint8_t> bytes_;
};

struct Case {
    model::Call call;
    bool isRefused;  // because of a null pointer
    bool sharesMemory;
};

int32_t stepOf(int rowBytes, Choices& choices) {
    switch (choices.below(4)) {
        case 0:
            return choices.from(-farthest, farthest);
        case 1:
            return choices.from(-2, 2);
        case 2:
            return -rowBytes - choices.below(40);
        default:
            return rowBytes + choices.below(40);
    }
}

model::Operand operandOf(const model::Export& tested, const model::Layout& layout, Arena& arena, int firstPlane, ZelSize size,
                         Choices& choices) {
    model::Operand operand;
    const int width = std::max(size.width, 0);
    for (int i = 0; i < layout.planeCount; ++i) {
        operand.planes[i] = arena.middle(firstPlane + i) + choices.below(64);
        const int rowBytes = layout.planes[i].rowBytes(width);
        operand.steps[i] = tested.entry.takesSteps ? stepOf(rowBytes, choices) : rowBytes;
        if (tested.firstParameters().hasIntegers) operand.steps[i] &= -8;  // whether odd ones are rounded depends on the dither
        if (layout.hasCommonStep() && i > 0) operand.steps[i] = operand.steps[0];
    }
    return operand;
}

model::Parameters parametersOf(const model::Export& tested, Choices& choices) {
    model::Parameters p = tested.firstParameters();
    constexpr float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float odd[] = {nan, inf, -inf, 0, -0.0f, 1e38f, -1e38f, 1e-45f, 1, 0.5f, -1, 65536};
    constexpr int32_t wrong[] = {INT32_MIN, -1, 0, 1, 2, 3, 4, 5, 100, 101, 255, 256, 257, 65536, 65537, INT32_MAX};
    if (p.hasCoefficients && choices.flag()) {
        std::array<double, 16> coefficients;
        for (double& c : coefficients) c = choices.oneOf(odd);
        p = model::withCoefficients(coefficients);
    }
    for (float& number : p.numbers)
        if (choices.flag()) number = choices.oneOf(odd);
    for (int32_t& integer : p.integers)
        if (p.hasIntegers && choices.flag()) integer = choices.oneOf(wrong);
    return p;
}

// Where the export looks for null pointers, one of them.
void putNull(const model::Export& tested, model::Call& call, Choices& choices) {
    if (tested.needsCoefficients && choices.below(4) == 0) {
        call.parameters.hasCoefficients = false;
        return;
    }
    const bool trustsArrays = tested.peculiarity == model::Peculiarity::trustsSourceArray;
    if (trustsArrays || choices.flag()) {
        const bool ofSource = !tested.entry.isInPlace && choices.flag();
        const model::Layout& layout = ofSource ? tested.source : tested.destination;
        const int checked =
            tested.peculiarity == model::Peculiarity::trustsFourthPlane ? std::min(layout.planeCount, 3) : layout.planeCount;
        (ofSource ? call.source : call.destination).planes[choices.below(checked)] = nullptr;
    } else {
        call.nullArgument = choices.below(tested.entry.pointerArguments);
    }
}

Case caseOf(const model::Export& tested, Arena& arena, Choices& choices) {
    constexpr int wrong[] = {INT32_MIN, -65536, -1, 0};
    constexpr int huge[] = {INT32_MAX, INT32_MAX - 1, 1 << 30, 1 << 24};
    ZelSize size{choices.from(1, widest), choices.from(1, highest)};
    if (choices.below(4) == 0) size.width = choices.oneOf(wrong);
    if (choices.below(4) == 0) size.height = choices.oneOf(wrong);

    Case made{{}, choices.below(4) == 0, false};
    made.sharesMemory = !tested.entry.isInPlace && choices.below(4) == 0;
    const int destinationPlane = made.sharesMemory ? choices.below(4) : 4;
    made.call = {.source = operandOf(tested, tested.source, arena, 0, size, choices),
                 .destination = operandOf(tested, tested.destination, arena, destinationPlane, size, choices),
                 .size = size,
                 .alpha = static_cast<uint8_t>(choices.below(256)),
                 .slice = tested.slice.argument,
                 .parameters = parametersOf(tested, choices)};
    if (!made.isRefused) return made;
    putNull(tested, made.call, choices);
    if (size.width > 0 && choices.flag()) made.call.size.width = choices.oneOf(huge);
    if (size.height > 0 && choices.flag()) made.call.size.height = choices.oneOf(huge);
    return made;
}

// The rows of the destination get what they have after the call: whatever remains different was not theirs.
void acceptRows(const model::Export& tested, const model::Call& call, Arena& arena, std::vector<uint8_t>& before) {
    if (call.size.width < 1 || call.size.height < 1) return;
    const ZelSize size = tested.destinationSize(call.size);
    const model::Layout& layout = tested.destination;
    for (int i = 0; i < layout.planeCount; ++i) {
        std::ptrdiff_t pitch = layout.pitch(call.destination.steps[i]);
        if (tested.peculiarity == model::Peculiarity::halvesStepOfColumn && call.size.width == 1) pitch /= 2;
        for (int row = -tested.slice.destinationRowsAbove[i]; row < layout.planes[i].rows(size.height); ++row) {
            const uint8_t* first = call.destination.planes[i] + row * pitch;
            std::copy_n(first, layout.planes[i].rowBytes(size.width), before.begin() + (first - arena.bytes().data()));
        }
    }
}

constexpr unsigned control = 0xffc0;  // all of the register but the flags of exceptions, which are sticky

}  // namespace

std::optional<std::string> tryHostile(const model::Export& tested, Choices& choices) {
    static Arena arena;
    const Case made = caseOf(tested, arena, choices);
    choices.random().fill(arena.bytes(), choices.flag() ? harness::Content::uniform : harness::Content::extremes);
    std::vector<uint8_t> before = arena.bytes();

    constexpr unsigned rounding[] = {_MM_ROUND_NEAREST, _MM_ROUND_DOWN, _MM_ROUND_UP, _MM_ROUND_TOWARD_ZERO};
    constexpr unsigned flushing[] = {0, _MM_FLUSH_ZERO_ON, _MM_DENORMALS_ZERO_ON, _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON};
    const unsigned own = _mm_getcsr(), state = _MM_MASK_MASK | choices.oneOf(rounding) | choices.oneOf(flushing);
    _mm_setcsr(state);
    const ZelStatus status = tested.entry.call(made.call);
    const unsigned after = _mm_getcsr();
    _mm_setcsr(own);

    const auto fault = [&](const std::string& words) {
        return std::string(tested.name) + tested.slice.name + ", " + std::to_string(made.call.size.width) + " x " +
               std::to_string(made.call.size.height) + ", status " + std::to_string(status) + ": " + words;
    };
    if ((after & control) != state) return fault("the processor's state is " + std::to_string(after & control));
    if (made.isRefused && status >= zelStsNoErr) return fault("a null pointer is not refused");
    if (status >= zelStsNoErr) {
        if (tested.peculiarity == model::Peculiarity::misplacesByFirstStep) return std::nullopt;
        acceptRows(tested, made.call, arena, before);
    }
    if (before == arena.bytes()) return std::nullopt;
    const auto at = std::ranges::mismatch(before, arena.bytes()).in1 - before.begin();
    return fault("byte " + std::to_string(at % planeBytes) + " of plane " + std::to_string(at / planeBytes) + " is written");
}

}  // namespace fuzz
