// Bad arguments: which status is returned, which of two errors comes first, and that nothing is written.
#include <climits>
#include <set>

#include "harness/conversion_test.h"

namespace harness {
namespace {

class Rejection {
  public:
    Rejection(const model::Export& tested, const Picture& source, const Picture& destination)
        : tested_(tested),
          source_(source),
          destination_(destination),
          valid_{.source = source.operand(),
                 .destination = destination.operand(),
                 .size = source.size,
                 .alpha = 1,
                 .slice = tested.slice.argument,
                 .parameters = tested.firstParameters()} {}

    const model::Call& valid() const { return valid_; }

    // The status of a call that must leave both pictures alone.
    ZelStatus statusOf(const model::Call& call) const {
        const Snapshot source(source_), destination(destination_);
        const ZelStatus status = tested_.entry.call(call);
        EXPECT_EQ(source.difference(), std::nullopt);
        EXPECT_EQ(destination.difference(), std::nullopt);
        return status;
    }

    model::Call withNullArgument(int argument) const {
        model::Call call = valid_;
        call.nullArgument = argument;
        return call;
    }

    // Pointer arguments that are checked.
    std::vector<int> pointerArguments() const {
        std::vector<int> arguments;
        for (int i = tested_.peculiarity == model::Peculiarity::trustsSourceArray; i < tested_.entry.pointerArguments; ++i)
            arguments.push_back(i);
        if (tested_.needsCoefficients) arguments.push_back(tested_.entry.pointerArguments);
        return arguments;
    }

    // Calls that lack one entry of a plane array each. Fewer planes than three are arguments of their own.
    std::vector<model::Call> withNullPlanes() const {
        std::vector<model::Call> calls;
        for (const auto side : {&model::Call::source, &model::Call::destination}) {
            const model::Layout& layout = side == &model::Call::source ? tested_.source : tested_.destination;
            if (side == &model::Call::source && tested_.entry.isInPlace) continue;
            const int checked = std::min(layout.planeCount, tested_.peculiarity == model::Peculiarity::trustsFourthPlane ? 3 : 4);
            for (int plane = 0; plane < checked && layout.planeCount > 2; ++plane) {
                calls.push_back(valid_);
                (calls.back().*side).planes[plane] = nullptr;
            }
        }
        return calls;
    }

  private:
    const model::Export& tested_;
    const Picture& source_;
    const Picture& destination_;
    model::Call valid_;
};

TEST_P(Conversion, RejectsNullPointers) {
    Random random(seed());
    const auto [source, destination] = lay(smallSize(36), {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    for (const int i : rejection.pointerArguments())
        EXPECT_EQ(rejection.statusOf(rejection.withNullArgument(i)), zelStsNullPtrErr) << "pointer argument " << i;
    for (const model::Call& call : rejection.withNullPlanes()) EXPECT_EQ(rejection.statusOf(call), zelStsNullPtrErr);
}

TEST_P(Conversion, RejectsSizesBelowTheMinimum) {
    Random random(seed());
    const ZelSize size = smallSize(36), minimum = tested().geometry.minimum;
    const auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    const ZelStatus ofWidth = minimum.width == model::anyWidth ? zelStsNoErr : zelStsSizeErr;
    const ZelStatus ofHeight = minimum.height == model::anyHeight ? zelStsNoErr : zelStsSizeErr;
    const auto statusAt = [&](int width, int height) {
        model::Call call = rejection.valid();
        call.size = {width, height};
        return rejection.statusOf(call);
    };
    for (const int tooSmall : {INT_MIN, INT_MIN + 1, -size.width, -1, 0}) {
        EXPECT_EQ(statusAt(tooSmall, size.height), ofWidth) << "width " << tooSmall;
        EXPECT_EQ(statusAt(size.width, tooSmall), ofHeight) << "height " << tooSmall;
        EXPECT_EQ(statusAt(tooSmall, tooSmall), std::min(ofWidth, ofHeight)) << "width and height " << tooSmall;
    }
    if (ofWidth < 0) {
        EXPECT_EQ(statusAt(minimum.width - 1, size.height), zelStsSizeErr);
    }
    if (ofHeight < 0) {
        EXPECT_EQ(statusAt(size.width, minimum.height - 1), zelStsSizeErr);
    }
}

using StatusSet = std::set<ZelStatus>;

StatusSet firstErrorOfPointer(model::Checks checks, bool isEmpty) {
    const bool sizeFirst = checks == model::Checks::sizeThenPointers || (checks == model::Checks::emptyThenPointers && isEmpty);
    return {sizeFirst ? zelStsSizeErr : zelStsNullPtrErr};
}

StatusSet firstErrorOfEntry(model::Checks checks, bool isEmpty) {
    switch (checks) {
        case model::Checks::planesAfterSize:
            return {zelStsSizeErr};
        case model::Checks::planesBeforeSize:
        case model::Checks::stepsBeforeSize:
            return {zelStsNullPtrErr};
        case model::Checks::emptyThenPlanes:
        case model::Checks::emptyThenPointers:
            return {isEmpty ? zelStsSizeErr : zelStsNullPtrErr};
        default:
            return {zelStsSizeErr, zelStsNullPtrErr};
    }
}

TEST_P(Conversion, ReportsTheFirstOfTwoErrors) {
    Random random(seed());
    const ZelSize size = smallSize(36), minimum = tested().geometry.minimum;
    const auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    for (const ZelSize bad :
         {ZelSize{0, size.height}, ZelSize{size.width, 0}, ZelSize{INT_MIN, -1},
          ZelSize{std::max(minimum.width, 1) - 1, size.height}, ZelSize{std::max(minimum.width, 1) - 1, minimum.height}}) {
        if (tested().status(bad) >= 0) continue;
        const bool isEmpty = bad.width < 1 || bad.height < 1;
        const auto expectOneOf = [&](const StatusSet& expected, model::Call call, const char* what) {
            call.size = bad;
            const ZelStatus status = rejection.statusOf(call);
            EXPECT_TRUE(expected.contains(status)) << what << ", " << bad.width << " x " << bad.height << ": " << status;
        };
        for (const int i : rejection.pointerArguments())
            expectOneOf(firstErrorOfPointer(tested().checks, isEmpty), rejection.withNullArgument(i), "argument");
        for (const model::Call& call : rejection.withNullPlanes())
            expectOneOf(firstErrorOfEntry(tested().checks, isEmpty), call, "entry");
    }
}

TEST_P(StepCheckingConversion, RejectsStepsBelow1) {
    Random random(seed());
    const auto [source, destination] = lay(smallSize(36), {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    const ZelStatus ofBoth = tested().checks == model::Checks::stepsBeforeSize ? zelStsStepErr : zelStsSizeErr;
    for (const auto side : {&model::Call::source, &model::Call::destination}) {
        if (side == &model::Call::source && tested().entry.isInPlace) continue;
        for (const int32_t step : {0, -1, -1024, INT_MIN}) {
            model::Call call = rejection.valid();
            (call.*side).steps[0] = step;
            EXPECT_EQ(rejection.statusOf(call), zelStsStepErr) << "step " << step;
            model::Call withoutPointer = call;
            withoutPointer.nullArgument = 0;
            EXPECT_EQ(rejection.statusOf(withoutPointer), zelStsNullPtrErr) << "step " << step;
            call.size.height = 0;
            EXPECT_EQ(rejection.statusOf(call), ofBoth) << "step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, StepCheckingConversion, every([](const model::Export& e) { return e.checksSteps; }), nameOf);

}  // namespace
}  // namespace harness
