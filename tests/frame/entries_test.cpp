// The exported entries as a program finds them, and that the tests leave none of them out.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <utility>

namespace {

constexpr const char* names[] = {
#define ZEL_EXPORT(name, group, columns) #name,
#include "../../src/frame/exports.def"
#undef ZEL_EXPORT
};

TEST(Entries, AreExportedOnBoundariesOf16Bytes) {
    for (const char* name : names) {
        const void* entry = dlsym(RTLD_NEXT, name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(entry) % 16, 0u) << name;
    }
}

// The export that a test of the sweep is about; a test's name may go on with the slice that it takes.
std::string sweptExport(const testing::TestInfo& test) {
    const std::string name = test.name(), sweep = "MatchesModelAtEverySizeAndPlacement/";
    std::string longest;
    if (!name.starts_with(sweep)) return longest;
    for (const std::string candidate : names)
        if (name.compare(sweep.size(), candidate.size(), candidate) == 0 && candidate.size() > longest.size())
            longest = candidate;
    return longest;
}

TEST(Entries, AreAllTested) {
    std::set<std::string> untested(std::begin(names), std::end(names));
    untested.erase("zelccGetLibVersion");
    const std::pair<const char*, const char*> ofTheirOwn[] = {{"ReduceBits/Bits", "zeliReduceBits_8u1u_C1R"}};  // suites of one
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (const auto& [name, tested] : ofTheirOwn)
            if (std::string(suite.name()) == name) untested.erase(tested);
        for (int k = 0; k < suite.total_test_count(); ++k) untested.erase(sweptExport(*suite.GetTestInfo(k)));
    }
    EXPECT_EQ(untested, std::set<std::string>());
}

}  // namespace
