#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

bool convertsAllColours(const model::Export& e) {
    return e.source.element == model::Element::u8 && std::string_view(e.name).find("C4") == std::string_view::npos;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Lifting, ColourConversion, rows(model::liftingExports(), convertsAllColours), nameOf);

}  // namespace harness
