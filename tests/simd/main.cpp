// The test program of the vector layer, one for each level: it ends with 77 where the processor lacks the level.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "zelcore.h"

namespace {

// Before anything else: whatever the compiler made of the tests' own code needs the level, too.
[[gnu::constructor(101)]] void leaveWithoutLevel() {
    constexpr char reason[] = "Skipped: this processor lacks " ZEL_LEVEL_NAME "\n";
    constexpr int skipped = 77;
    if ((zelGetEnabledCpuFeatures() & ZEL_LEVEL_FEATURES) == ZEL_LEVEL_FEATURES) return;
    if (write(STDOUT_FILENO, reason, std::strlen(reason)) < 0) std::abort();
    _exit(skipped);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    std::printf("Levels: %s; 1 of 1 cases\n", ZEL_LEVEL_NAME);
    return RUN_ALL_TESTS();
}
