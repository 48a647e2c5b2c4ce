#include <algorithm>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// Exports that differ in their layouts alone share rules and model; one of them goes through all colours.
bool isFirstOfItsRules(const model::Export& e) {
    const auto exports = model::lumachromaExports();
    return &e == &*std::ranges::find(exports, e.model, &model::Export::model);
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(LumaChroma, Conversion, rows(model::lumachromaExports()), nameOf);
INSTANTIATE_TEST_SUITE_P(LumaChroma, InPlaceConversion, rows(model::lumachromaExports(), hasOneLayout), nameOf);
INSTANTIATE_TEST_SUITE_P(LumaChroma, ColourConversion, rows(model::lumachromaExports(), isFirstOfItsRules), nameOf);

}  // namespace harness
