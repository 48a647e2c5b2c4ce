#include "tools/alike.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace tool {

namespace {

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

}  // namespace

std::string alike(std::string_view word, std::span<const std::string_view> names) {
    std::vector<std::pair<int, std::string_view>> found;
    for (const std::string_view name : names) {
        const bool isPart = name.find(word) != std::string_view::npos;
        const int distance = isPart ? 0 : editDistance(word, name);
        if (distance <= 3) found.emplace_back(distance, name);
    }
    std::ranges::sort(found);
    std::string text;
    for (size_t i = 0; i < found.size() && i < 5; ++i) text += (i ? ", " : "; did you mean ") + std::string(found[i].second);
    return text.empty() ? text : text + "?";
}

}  // namespace tool
