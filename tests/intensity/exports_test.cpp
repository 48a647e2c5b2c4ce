#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// The rules of bytes to gray, without weights that would have to be tried as well.
bool convertsAllColours(const model::Export& e) { return std::string_view(e.name).starts_with("zeliRGBToGray_8u_"); }

}  // namespace

INSTANTIATE_TEST_SUITE_P(Intensity, ColourConversion, rows(model::intensityExports(), convertsAllColours), nameOf);

}  // namespace harness
