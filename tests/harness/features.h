// The processor features that the library under test gets to see, which choose its kernels when it is loaded.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace harness {

// From the environment variable ZELCC_TEST_FEATURES: a level or column (frame/levels.h) or a mask as a number; by default the
// best level of this processor. "all" stands for that one in the library of the program, and has comparisons with the model run
// through all levels, see levels().
uint64_t features();

// The variable's value, or what stands for it.
std::string featuresName();
bool isLevel(const std::string& name);
bool isNumber(const std::string& name);
// Whether they run here: AVX-512 runs anywhere that has AVX2 when the program is linked with its emulation.
bool canRun(uint64_t features);
bool processorHas(uint64_t features);
extern const bool emulatesAvx512;

// A library to compare with the model.
struct Level {
    const char* name;
    void* library;                   // as dlopen returns it; null for that of the program
    bool hasOwnExportsOnly = false;  // the others have the same code at another level
};

// One, or with "all" those of the processor, which are copies of the library that were loaded with other features.
std::span<const Level> levels();

// Counts what went through all levels(), for a test that doesn't compare at all of them must not run as if it did.
void noteLevels();
uint64_t levelsNoted();

}  // namespace harness
