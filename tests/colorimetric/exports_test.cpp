#include "harness/conversion_test.h"

namespace harness {
namespace {

// One layout of each rule of bytes goes through all colours; the one of words to bytes has too many.
bool convertsAllColours(const model::Export& e) {
    return e.source.element == model::Element::u8 && e.source.channels[3].stride == 0;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Colorimetric, ColourConversion, rows(model::colorimetricExports(), convertsAllColours), nameOf);
INSTANTIATE_TEST_SUITE_P(Lab, ColourConversion, rows(model::labExports(), convertsAllColours), nameOf);

}  // namespace harness
