// The processor features that the library under test gets to see, which choose its kernels when it is loaded.
#pragma once

#include <cstdint>
#include <string>

namespace harness {

// From the environment variable ZELCC_TEST_FEATURES: ssse3, avx2, avx512, s8 or a mask as a number; by default the best level
// of this processor.
uint64_t features();

// The variable's value, or what stands for it.
std::string featuresName();
bool isLevel(const std::string& name);
bool isNumber(const std::string& name);
bool processorHas(uint64_t features);

}  // namespace harness
