// The version record and the column of the dispatch table that it stands for. The library reads the processor features once,
// when it is loaded, so each mask needs a process of its own: this program again, which prints the record.
#include "zelcc/version.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "frame/levels.h"

namespace {

std::string versionWithFeatures(const std::string& mask) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe");
    const char* const runner = std::getenv("ZELCC_TEST_RUNNER");  // an emulator that can't start itself
    const std::string command =
        "ZELCC_TEST_FEATURES=" + mask + " " + (runner ? runner : "") + " '" + program + "' --print-version";
    std::string output;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[200];
        if (std::fgets(buffer, sizeof buffer, pipe)) output = buffer;
        pclose(pipe);
    }
    return output;
}

TEST(Version, FollowsBits4And5OfTheFeatures) {
    const std::string neon = "8 2 2 46212|v8|zelCC NEON (v8)|8.2.2 (r46212)|Apr  1 2015\n";
    if (zel::findLevel("neon")) {
        for (const char* mask : {"0", "0x10000", "0x330", "0xffffffffffffffff"})
            EXPECT_EQ(versionWithFeatures(mask), neon) << mask;
        return;
    }
    const std::string ssse3 = "8 2 2 46212|v8|zelCC SSSE3 (v8)|8.2.2 (r46212)|Apr  1 2015\n";
    const std::string smallCore = "8 2 2 46212|s8|zelCC Lume (s8)|8.2.2 (r46212)|Apr  1 2015\n";
    const struct {
        const char* mask;
        const std::string& record;
    } cases[] = {
        {"0", ssse3},
        {"0x10", ssse3},
        {"0x20", ssse3},
        {"0x30", smallCore},
        {"0x310", ssse3},
        {"0x330", smallCore},
        {"0xffffffffffffffef", ssse3},
        {"0xffffffffffffffdf", ssse3},
        {"0xffffffffffffffff", smallCore},
        {"0xffffffff00000030", smallCore},
        {"0x3000000000", ssse3},
    };
    for (const auto& c : cases) EXPECT_EQ(versionWithFeatures(c.mask), c.record) << c.mask;
}

TEST(Version, IsTheSameRecordOnEveryCall) {
    const ZelLibraryVersion* version = zelccGetLibVersion();
    EXPECT_EQ(zelccGetLibVersion(), version);
    EXPECT_EQ(version->targetCpu[2], 0);
    EXPECT_EQ(version->targetCpu[3], 0);
}

}  // namespace
