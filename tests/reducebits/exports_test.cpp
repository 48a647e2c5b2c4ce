#include "harness/conversion_test.h"

namespace harness {

INSTANTIATE_TEST_SUITE_P(ReduceBits, Conversion, rows(model::reduceBitsExports()), nameOf);
INSTANTIATE_TEST_SUITE_P(ReduceBits, InPlaceConversion, rows(model::reduceBitsExports(), hasOneLayout), nameOf);

}  // namespace harness
