#include "catalog/names.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <set>

namespace catalog {
namespace {

constexpr size_t fewNames = 5;
constexpr int mostEdits = 3;

template <typename Named>
std::optional<int> numberIn(std::span<const Named> all, std::string_view name) {
    const auto found = std::ranges::lower_bound(all, name, {}, &Named::name);
    if (found == all.end() || found->name != name) return {};
    return static_cast<int>(found - all.begin());
}

template <typename Named>
std::vector<std::string_view> namesOf(std::span<const Named> all) {
    std::vector<std::string_view> names;
    for (const Named& one : all) names.push_back(one.name);
    return names;
}

std::vector<std::string_view> distinct(std::initializer_list<std::string_view Conversion::*> members) {
    std::set<std::string_view> found;
    for (const Conversion& c : conversions())
        for (const auto member : members) found.insert(c.*member);
    found.erase("");
    return {found.begin(), found.end()};
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

int editDistance(std::string_view a, std::string_view b) {
    std::vector<int> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (size_t i = 0; i < a.size(); ++i) {
        int diagonal = row[0];
        row[0] = static_cast<int>(i) + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const int replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

// The nearest first.
std::vector<std::string_view> alike(std::string_view word, std::span<const std::string_view> names) {
    std::vector<std::pair<int, std::string_view>> found;
    const std::string wanted = lower(word);
    for (const std::string_view name : names) {
        const std::string known = lower(name);
        const int distance = known.find(wanted) != known.npos ? 0 : editDistance(wanted, known);
        if (distance <= mostEdits) found.emplace_back(distance, name);
    }
    std::ranges::sort(found);
    std::vector<std::string_view> nearest;
    for (size_t i = 0; i < found.size() && i < fewNames; ++i) nearest.push_back(found[i].second);
    return nearest;
}

std::string joined(std::span<const std::string_view> names) {
    std::string text;
    for (const std::string_view name : names) text += (text.empty() ? "" : ", ") + std::string(name);
    return text;
}

}  // namespace

std::optional<int> formatNumber(std::string_view name) { return numberIn(formats(), name); }
std::optional<int> functionNumber(std::string_view name) { return numberIn(functions(), name); }

const Format* findFormat(std::string_view name) {
    // What is full range by its name lies in memory as others do.
    const std::string plain = name.starts_with("yuvj") ? "yuv" + std::string(name.substr(4)) : std::string(name);
    for (const std::string& tried : {plain, plain + "le"})
        if (const auto number = formatNumber(tried)) return &formats()[*number];
    return nullptr;
}

const Function* findFunction(std::string_view name) {
    for (const std::string& tried : {std::string(name), "zeli" + std::string(name)})
        if (const auto number = functionNumber(tried)) return &functions()[*number];
    return nullptr;
}

std::vector<std::string_view> methods() { return distinct({&Conversion::method, &Conversion::verb}); }

std::string suggestion(std::string_view word, std::span<const std::string_view> names) {
    if (names.size() <= fewNames) return "; it is one of " + joined(names);
    const auto nearest = alike(word, names);
    return nearest.empty() ? "" : "; did you mean " + joined(nearest) + "?";
}

std::string suggestedFormats(std::string_view word) { return suggestion(word, namesOf(formats())); }
std::string suggestedFunctions(std::string_view word) { return suggestion(word, namesOf(functions())); }

}  // namespace catalog
