// The list of published checksums, and what is told of a function by its checksum.
#include "tools/checksums.h"

#include <gtest/gtest.h>

namespace tool {
namespace {

TEST(PublishedChecksums, AreOfAllFunctions) {
    const Checksums list = readChecksums(publishedText());
    EXPECT_EQ(list.size(), catalog::functions().size());
    for (const Function& f : catalog::functions()) {
        const auto found = list.find(f.name);
        ASSERT_NE(found, list.end()) << f.name;
        EXPECT_EQ(found->second.back().sum.starts_with(byProcessor), f.dependsOnProcessor) << f.name;
    }
}

TEST(PublishedChecksums, KeepTheirHistory) {
    const std::string text = "zeliA 8.2.2 00ff 8.3.0 0100\nzeliB 8.2.2 by-processor:02\n";
    const Checksums list = readChecksums(text);
    EXPECT_EQ(list.at("zeliA").size(), 2u);
    EXPECT_EQ(list.at("zeliA").back().sum, "0100");
    const std::string written = writeChecksums(list);
    EXPECT_EQ(written.substr(written.find("zeliA")), text);
}

// At the level of this process; the program compares all of them.
TEST(PublishedChecksums, HoldOnThisProcessor) {
    const Checksums list = readChecksums(publishedText());
    for (const Function& f : catalog::functions()) {
        const std::string_view wanted = wantedSum(list.find(f.name)->second.back());
        if (wanted.empty()) continue;
        EXPECT_EQ(hexadecimal(checksum(f)), wanted) << f.name;
    }
}

// Different functions, and those of the same rule in other layouts, have different checksums.
TEST(Checksum, TellsFunctionsApart) {
    std::map<std::string, std::string_view> seen;
    int repeated = 0;
    for (const auto& [name, entries] : readChecksums(publishedText()))
        if (!entries.back().sum.starts_with(byProcessor) && !seen.emplace(entries.back().sum, name).second) ++repeated;
    EXPECT_LT(repeated, 60);
}

}  // namespace
}  // namespace tool
