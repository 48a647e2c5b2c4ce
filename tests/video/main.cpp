// The test program of libzelvideo: one run tests one level, see harness/features.h.
#include <gtest/gtest.h>

#include <cstdio>

#include "harness/features.h"

int main(int argc, char** argv) {
    if (!harness::canRun(harness::features())) {
        constexpr int skipped = 77;
        std::printf("Skipped: this processor lacks %s\n", harness::featuresName().c_str());
        return skipped;
    }
    testing::InitGoogleTest(&argc, argv);
    std::printf("Level: %s\n", harness::featuresName().c_str());
    return RUN_ALL_TESTS();
}
