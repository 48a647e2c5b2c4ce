#include "harness/conversion_test.h"

namespace harness {

INSTANTIATE_TEST_SUITE_P(Chroma, Conversion, rows(model::chromaExports()), nameOf);

}  // namespace harness
