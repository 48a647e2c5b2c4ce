#include <string_view>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// The formats share their rules, and both orders of the fields do.
bool isOfOneFormat(const model::Export& e) { return std::string_view(e.name).find("BGR565") != std::string_view::npos; }

}  // namespace

INSTANTIATE_TEST_SUITE_P(PackedDestinations, ColourConversion, rows(model::packedDestinationExports(), isOfOneFormat), nameOf);

}  // namespace harness
