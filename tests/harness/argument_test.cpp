// Bad arguments: which status is returned, which of two errors comes first, and that nothing is written.
#include <climits>

#include "harness/conversion_test.h"

namespace harness {
namespace {

class Rejection {
  public:
    Rejection(const model::Export& tested, const Picture& source, const Picture& destination)
        : tested_(tested),
          source_(source),
          destination_(destination),
          valid_{.source = source.operand(), .destination = destination.operand(), .size = source.size, .alpha = 1} {}

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

    // Calls that lack one plane each.
    std::vector<model::Call> withNullPlanes() const {
        std::vector<model::Call> calls;
        for (const auto side : {&model::Call::source, &model::Call::destination}) {
            const model::Layout& layout = side == &model::Call::source ? tested_.source : tested_.destination;
            for (int plane = 0; plane < layout.planeCount; ++plane) {
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

constexpr ZelSize size{36, 4};

TEST_P(Conversion, RejectsNullPointers) {
    Random random(seed());
    const auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    for (int i = 0; i < tested().entry.pointerArguments; ++i)
        EXPECT_EQ(rejection.statusOf(rejection.withNullArgument(i)), zelStsNullPtrErr) << "pointer argument " << i;
    for (const model::Call& call : rejection.withNullPlanes()) EXPECT_EQ(rejection.statusOf(call), zelStsNullPtrErr);
}

TEST_P(Conversion, RejectsSizesBelowTheMinimum) {
    Random random(seed());
    const auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    model::Call call = rejection.valid();
    for (const int tooSmall : {INT_MIN, INT_MIN + 1, -size.width, -1, 0}) {
        call.size = {tooSmall, size.height};
        EXPECT_EQ(rejection.statusOf(call), zelStsSizeErr) << "width " << tooSmall;
        call.size = {size.width, tooSmall};
        EXPECT_EQ(rejection.statusOf(call), zelStsSizeErr) << "height " << tooSmall;
        call.size = {tooSmall, tooSmall};
        EXPECT_EQ(rejection.statusOf(call), zelStsSizeErr) << "width and height " << tooSmall;
    }
    const ZelSize minimum = tested().geometry.minimum;
    call.size = {minimum.width - 1, size.height};
    EXPECT_EQ(rejection.statusOf(call), zelStsSizeErr);
    call.size = {size.width, minimum.height - 1};
    EXPECT_EQ(rejection.statusOf(call), zelStsSizeErr);
}

TEST_P(Conversion, ReportsTheFirstOfTwoErrors) {
    Random random(seed());
    const auto [source, destination] = lay(size, {aligned, aligned}, random, Content::uniform);
    const Rejection rejection(tested(), source, destination);
    const bool sizeFirst = tested().peculiarity == model::Peculiarity::sizeBeforePointers;
    const bool planesLast = tested().peculiarity == model::Peculiarity::planesAfterSize;
    const ZelStatus first = sizeFirst ? zelStsSizeErr : zelStsNullPtrErr;
    for (const ZelSize bad : {ZelSize{0, size.height}, ZelSize{size.width, 0}, ZelSize{INT_MIN, -1}}) {
        for (int i = 0; i < tested().entry.pointerArguments; ++i) {
            model::Call call = rejection.withNullArgument(i);
            call.size = bad;
            EXPECT_EQ(rejection.statusOf(call), first) << "pointer argument " << i;
        }
        // Entries of a plane array may be looked at before the size or after it, but for the exports that fix it.
        for (model::Call& call : rejection.withNullPlanes()) {
            call.size = bad;
            const ZelStatus status = rejection.statusOf(call);
            const bool isDestination = call.source.planes == rejection.valid().source.planes;
            if (planesLast && !isDestination)
                EXPECT_EQ(status, zelStsSizeErr);
            else
                EXPECT_TRUE(status == zelStsSizeErr || status == zelStsNullPtrErr) << status;
        }
    }
}

}  // namespace
}  // namespace harness
