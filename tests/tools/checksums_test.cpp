// The list of published checksums, and what is told of a function or a described conversion by its checksum.
#include "tools/checksums.h"

#include <gtest/gtest.h>

namespace tool {
namespace {

TEST(PublishedChecksums, AreOfAllSubjects) {
    const Checksums list = readChecksums(publishedText());
    EXPECT_EQ(functionSubjects().size(), catalog::functions().size());
    EXPECT_EQ(list.size(), allSubjects().size());
    for (const Subject& s : allSubjects()) {
        const auto found = list.find(s.name);
        ASSERT_NE(found, list.end()) << s.name;
        EXPECT_EQ(found->second.back().sum.starts_with(byProcessor), s.dependsOnProcessor) << s.name;
    }
}

// Either side has every format, and every meaning that a side can have.
TEST(PublishedChecksums, AreOfAllDescriptions) {
    std::string sources, targets, options;
    for (const Subject& s : describedSubjects()) {
        const size_t first = s.name.find(':') + 1, second = s.name.find(':', first) + 1, third = s.name.find(':', second);
        sources.append(",").append(s.name, first, second - 1 - first).append(",");
        targets.append(",").append(s.name, second, third == std::string::npos ? third : third - second).append(",");
        if (third != std::string::npos) options.append(",").append(s.name, third + 1).append(",");
    }
    const auto expectIn = [](const std::string& text, std::string_view word) {
        EXPECT_NE(text.find(std::string(",").append(word).append(",")), std::string::npos) << word << " is not in " << text;
    };
    std::vector<std::string_view> words = {"limited", "full", "left", "center", "topleft", "given"};
    for (const catalog::Format& f : catalog::formats())
        if (f.description.depth) words.push_back(f.name);
    for (const catalog::Matrix& m : catalog::matrices())
        if (m.number) words.push_back(m.name);
    for (const std::string_view word : words) {
        expectIn(sources, word);
        expectIn(targets, word);
    }
    for (const char* word : {"linear", "sited", "ordered"}) expectIn(options, word);
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
    for (const Subject& s : allSubjects()) {
        const std::string_view wanted = wantedSum(list.find(s.name)->second.back());
        if (wanted.empty()) continue;
        EXPECT_EQ(hexadecimal(s.sum()), wanted) << s.name;
    }
}

// Different subjects, and functions of the same rule in other layouts, have different checksums.
TEST(Checksum, TellsSubjectsApart) {
    std::map<std::string, std::string_view> seen;
    int repeated = 0;
    for (const auto& [name, entries] : readChecksums(publishedText()))
        if (!entries.back().sum.starts_with(byProcessor) && !seen.emplace(entries.back().sum, name).second) ++repeated;
    EXPECT_LT(repeated, 60);
}

}  // namespace
}  // namespace tool
