// Numbers that end in traps or wrong comparisons where they aren't thought of, at each place in a row of floats.
#include <cmath>
#include <limits>

#include "harness/conversion_test.h"

namespace harness {
namespace {

class UnusualNumber : public Conversion {
  protected:
    template <class T>
    void tryEverywhere() {
        using Limits = std::numeric_limits<T>;
        constexpr ZelSize size{37, 1};  // wide vectors, narrow ones and a tail
        for (const T number : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::denorm_min(),
                               -Limits::denorm_min(), -T{0}, Limits::max(), Limits::lowest(), Limits::min()}) {
            for (int x = 0; x < size.width; ++x) {
                Random random(seed() + x);
                const auto [source, destination] = lay(size, {dense, dense}, random, Content::uniform);
                const model::Image image = source.image();
                const int channels = tested().source.planeCount == 3 ? 3 : tested().source.planes[0].unitBytes / int{sizeof(T)};
                image.store(image.layout->channels[x % channels], x, 0, number);
                const auto choice = tested().parameters;
                const model::Parameters parameters = choice.empty() ? model::Parameters{} : choice[x % choice.size()];
                const auto fault = compareWithModel(tested(), source, destination, size, 0, parameters);
                ASSERT_FALSE(fault) << tested().name << ", " << number << " in pixel " << x << ": " << *fault;
            }
        }
    }
};

TEST_P(UnusualNumber, MatchesModelInEveryPlaceOfARow) {
    tested().source.element == model::Element::f64 ? tryEverywhere<double>() : tryEverywhere<float>();
}

bool readsFloats(const model::Export& e) { return e.source.element >= model::Element::f32; }

INSTANTIATE_TEST_SUITE_P(Intensity, UnusualNumber, rows(model::intensityExports(), readsFloats), nameOf);
INSTANTIATE_TEST_SUITE_P(Hue, UnusualNumber, rows(model::hueExports(), readsFloats), nameOf);

}  // namespace
}  // namespace harness
