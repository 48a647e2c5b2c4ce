#include "tools/checksums.h"

#include <cstdio>
#include <sstream>

#include "frame/levels.h"

namespace tool {

namespace {

// All widths up to two of the widest blocks of a kernel, below and at the least sizes among them, and some that end elsewhere.
constexpr int narrow = 140;
constexpr int wide[] = {192, 255, 515, 1030};
constexpr int heights[] = {1, 2, 4, 3, 8, 5, 6, 12, 7};
constexpr Lay lays[] = {Lay::boundary, Lay::shifted, Lay::upward};

constexpr std::string_view heading =
    "# What every function makes of a fixed set of images: its name, and each version that changed it, with the checksum since;\n"
    "# likewise conversions of libzelvideo by zelv, both formats with what they mean, and options.\n"
    "# Written by zelcc check --write, which compares all levels first. A change beyond the first entry has to stand in\n"
    "# CHANGELOG.md. Where it says by-processor, results depend on the processor's vendor on x86, and levels are compared "
    "alone;\n"
    "# the checksum is that of all other processors.\n";

}  // namespace

uint64_t checksumOf(int variants, const AddImage& add) {
    uint64_t sum = emptySum;
    unsigned seed = 0;
    const auto addWidth = [&](int width, int variant) {
        const Size size{width, heights[seed % std::size(heights)]};
        sum = add(sum, size, lays[seed / 3 % std::size(lays)], variant, seed);
        ++seed;
    };
    for (int variant = 0; variant < variants; ++variant) {
        for (int width = 1; width <= narrow; ++width) addWidth(width, variant);
        for (const int width : wide) addWidth(width, variant);
    }
    return sum;
}

std::vector<Subject> functionSubjects() {
    std::vector<Subject> subjects;
    for (const Function& f : catalog::functions()) {
        const auto add = [&f](uint64_t sum, Size size, Lay lay, int variant, unsigned seed) {
            const Exercise exercise(f, size, lay, variant, seed);
            const ZelStatus status = exercise.call();
            return exercise.addTo(addBytes(sum, &status, sizeof status));
        };
        subjects.push_back({std::string(f.name), f.dependsOnProcessor, [&f, add] { return checksumOf(variantCount(f), add); }});
    }
    return subjects;
}

bool approximatesReciprocals() { return zel::levels::lowest == zelCpuSsse3; }

std::string_view wantedSum(const Published& entry) {
    const std::string_view sum = entry.sum;
    if (!sum.starts_with(byProcessor)) return sum;
    return approximatesReciprocals() ? std::string_view() : sum.substr(byProcessor.size());
}

std::string hexadecimal(uint64_t sum) {
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum));
    return text;
}

Checksums readChecksums(std::string_view text) {
    Checksums checksums;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        std::string name;
        Published entry;
        words >> name;
        while (words >> entry.version >> entry.sum) checksums[name].push_back(entry);
    }
    return checksums;
}

std::string writeChecksums(const Checksums& checksums) {
    std::string text(heading);
    for (const auto& [name, entries] : checksums) {
        text += name;
        for (const Published& entry : entries) text += ' ' + entry.version + ' ' + entry.sum;
        text += '\n';
    }
    return text;
}

}  // namespace tool
