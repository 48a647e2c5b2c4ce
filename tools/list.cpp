#include "tools/list.h"

#include <algorithm>
#include <cstdio>

#include "tools/errors.h"
#include "tools/formats.h"

namespace tool {

namespace {

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

std::string padded(std::string_view text, size_t width) {
    return std::string(text) + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string lineOf(const Format& f) {
    return padded(f.name, 16) + std::string(f.title) + (f.ffmpegName.empty() ? " (not in FFmpeg)" : "");
}

std::string lineOf(const Function& f) { return padded(f.name, 44) + std::string(f.header); }

std::string lineOf(const Conversion& c) {
    const auto formats = catalog::formats();
    std::string line = padded(formats[c.source].name, 14) + "-> " + padded(formats[c.target].name, 14) +
                       padded(catalog::functions()[c.function].name, 44);
    for (std::string_view word : {c.verb, c.matrix, c.method})
        if (!word.empty()) line += std::string(word) + ' ';
    while (line.ends_with(' ')) line.pop_back();
    return line;
}

template <typename All>
int print(const All& all, const std::vector<std::string>& words) {
    int count = 0;
    for (const auto& one : all) {
        const std::string line = lineOf(one), text = lower(line);
        if (!std::ranges::all_of(words, [&](const std::string& w) { return text.find(lower(w)) != std::string::npos; })) continue;
        std::puts(line.c_str());
        ++count;
    }
    return count;
}

// Whether a word may mean a format of libzelvideo, which converts each of its formats to each.
bool nameDescribed(const std::vector<std::string>& words) {
    return std::ranges::any_of(words, [](const std::string& w) {
        return std::ranges::any_of(catalog::formats(), [&](const catalog::Format& f) {
            return f.description.depth != 0 && f.name.find(lower(w)) != std::string_view::npos;
        });
    });
}
constexpr const char* howDescribedAreConverted =
    ", or ask convert --dry-run: what libzelvideo describes it converts to all the rest, and that isn't listed";

}  // namespace

int list(const std::string& what, const std::vector<std::string>& words) {
    int count = 0;
    const bool isAll = what == "all";
    if (isAll || what == "formats") count += print(catalog::formats(), words);
    if (isAll || what == "conversions") count += print(catalog::conversions(), words);
    if (what == "functions") count += print(catalog::functions(), words);
    if (count == 0)
        throw DataError(std::string("nothing in the list has all of these words; give fewer") +
                        (what == "conversions" && nameDescribed(words) ? howDescribedAreConverted : ""));
    return success;
}

}  // namespace tool
