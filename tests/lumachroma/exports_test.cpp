#include <algorithm>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// Exports that differ in their layouts alone share rules and model; one of them goes through all colours. Those without steps
// have the rules of their siblings.
bool isFirstOfItsRules(const model::Export& e) {
    for (const auto exports : {model::lumachromaExports(), model::yuvExports()}) {
        const auto first = std::ranges::find(exports, e.model, &model::Export::model);
        if (first != exports.end()) return &*first == &e && e.entry.takesSteps;
    }
    return false;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(LumaChroma, ColourConversion, rows(model::lumachromaExports(), isFirstOfItsRules), nameOf);
INSTANTIATE_TEST_SUITE_P(AnalogYuv, ColourConversion, rows(model::yuvExports(), isFirstOfItsRules), nameOf);

}  // namespace harness
