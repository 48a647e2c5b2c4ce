// The control word of the processor's vectors: what conversions make of the caller's, and what they leave there.
#include <cfenv>

#include "harness/control_word.h"
#include "harness/conversion_test.h"

namespace harness {
namespace {

class ProcessorState : public Conversion {
  protected:
    bool setsRounding() const {
        const model::Element element = tested().source.element;
        return tested().needsCoefficients && element != model::Element::f32;  // the twists of integers
    }
};

// Puts everything back at the end of a test.
class KeptEnvironment {
  public:
    KeptEnvironment() { std::fegetenv(&environment_); }
    KeptEnvironment(const KeptEnvironment&) = delete;
    ~KeptEnvironment() { std::fesetenv(&environment_); }

  private:
    std::fenv_t environment_;
};

constexpr int roundingModes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};
constexpr ZelSize size{45, 2};

constexpr model::Parameters halves = [] {
    model::Parameters p = model::withCoefficients({0.5, 0.5, 0, 0.5, 0, 0.5, 0.5, -0.5, 0.5, 0, 0.5, 1, 0.5, 0, 0, 0.5});
    p.numbers = {0, 1};
    return p;
}();

TEST_P(ProcessorState, IsTheCallersAfterwards) {
    const KeptEnvironment kept;
    for (const int mode : roundingModes) {
        for (const uint64_t bits : control::cases) {
            Random random(seed());
            const auto [source, destination] = lay(size, {dense, dense}, random, Content::uniform);
            model::Call call{
                .source = source.operand(), .destination = destination.operand(), .size = size, .parameters = halves};

            std::fesetround(mode);
            const uint64_t before = (control::word() & ~(control::flags | control::flushesToZero)) | bits;
            control::set(before);
            const ZelStatus status = tested().entry.call(call);
            const uint64_t after = control::word();
            EXPECT_GE(status, zelStsNoErr);
            EXPECT_EQ(after & ~control::flags, before & ~control::flags) << "mode " << mode;
            EXPECT_EQ(after & before & control::flags, before & control::flags) << "flags are sticky";
            if (setsRounding() && before & control::roundingField) {
                EXPECT_EQ(after, before) << "the register comes back whole";
            }

            call.size.width = 0;
            control::set(before);
            EXPECT_EQ(tested().entry.call(call), zelStsSizeErr);
            EXPECT_EQ(control::word(), before) << "an error doesn't touch it";
#if defined(__x86_64__) || defined(__i386__)
            std::fenv_t environment;
            std::fegetenv(&environment);
            EXPECT_EQ(environment.__tags, 0xffff) << "the registers of the floating-point unit are free";
#endif
        }
    }
}

// Sums and conversions to integers go by the caller's mode, but for those that state one of their own; the model knows.
TEST_P(ProcessorState, DecidesHowResultsAreRounded) {
    const KeptEnvironment kept;
    for (const int mode : roundingModes) {
        for (const uint64_t bits : {uint64_t{0}, control::flushesToZero}) {
            for (int i = 0; i < 20; ++i) {
                std::fesetround(mode);
                control::set((control::word() & ~control::flushesToZero) | bits);
                ASSERT_TRUE(matchesModel({size.width + i, size.height}, {dense, aligned}))
                    << "mode " << mode << ", bits " << bits;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Intensity, ProcessorState, rows(model::intensityExports()), nameOf);
INSTANTIATE_TEST_SUITE_P(Hue, ProcessorState, rows(model::hueExports()), nameOf);

}  // namespace
}  // namespace harness
