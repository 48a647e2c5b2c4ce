#include "harness/conversion_test.h"

namespace harness {
namespace {

// One layout of each rule goes through all colours.
bool convertsAllColours(const model::Export& e) {
    return e.source.element == model::Element::u8 && e.source.channels[3].stride == 0;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Colorimetric, Conversion, rows(model::colorimetricExports()), nameOf);
INSTANTIATE_TEST_SUITE_P(Colorimetric, InPlaceConversion, rows(model::colorimetricExports(), hasOneLayout), nameOf);
INSTANTIATE_TEST_SUITE_P(Colorimetric, ColourConversion, rows(model::colorimetricExports(), convertsAllColours), nameOf);

}  // namespace harness
