// The test program: one run tests one selection of kernels, or all levels together, see harness/features.h.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "frame/levels.h"
#include "harness/conversion_test.h"
#include "harness/features.h"
#include "zelcc/version.h"

namespace {

// Where all levels run in one process, what calls the library by itself would only ever try one.
class AllLevels : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { before_ = harness::levelsNoted(); }
    void OnTestEnd(const testing::TestInfo& test) override {
        if (harness::levelsNoted() > before_ || !test.result()->Passed()) return;
        ADD_FAILURE() << test.test_suite_name() << "." << test.name()
                      << " compares at one level: it must not be called MatchesModel";
    }
    uint64_t before_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    const std::string name = harness::featuresName();
    if (!harness::isLevel(name) && !harness::isNumber(name)) {
        std::fprintf(stderr, "ZELCC_TEST_FEATURES=%s: none of", name.c_str());
        for (const zel::Level& level : zel::levels::all) std::fprintf(stderr, " %s,", level.name);
        std::fprintf(stderr, " all nor a number\n");
        return 2;
    }
    if (argc == 2 && std::strcmp(argv[1], "--print-version") == 0) {
        const ZelLibraryVersion& v = *zelccGetLibVersion();
        std::printf("%d %d %d %d|%.4s|%s|%s|%s\n", v.major, v.minor, v.majorBuild, v.build, v.targetCpu, v.name, v.version,
                    v.buildDate);
        return 0;
    }
    // A mask beyond the processor runs: the library itself has to stay within it.
    if (harness::isLevel(name) && !harness::canRun(harness::features())) {
        constexpr int skipped = 77;
        std::printf("Skipped: this processor lacks %s\n", name.c_str());
        return skipped;
    }
    testing::InitGoogleTest(&argc, argv);
    std::printf("Levels:");
    for (const harness::Level& level : harness::levels()) {
        const bool isEmulated = harness::emulatesAvx512 && std::strcmp(level.name, "avx512") == 0;
        std::printf(" %s%s", level.name, isEmulated ? "-emulated" : "");
    }
    std::printf("; 1 of %llu cases (ZELCC_TEST_SAMPLE), seed %llu (ZELCC_TEST_SEED)\n",
                static_cast<unsigned long long>(harness::sample()), static_cast<unsigned long long>(harness::seed()));
    if (harness::levels().size() > 1) testing::UnitTest::GetInstance()->listeners().Append(new AllLevels);
    return RUN_ALL_TESTS();
}
