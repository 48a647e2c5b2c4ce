#include "tools/sizes.h"

#include <charconv>
#include <optional>

#include "tools/errors.h"

namespace tool {

namespace {

// Numbers with the separators between them and nothing else, as in 1920x1080 or 640x480+16+8.
std::optional<std::vector<int>> numbersOf(std::string_view text, std::string_view separators) {
    std::vector<int> numbers;
    const char *at = text.data(), *const end = text.data() + text.size();
    for (size_t i = 0;; ++i) {
        int value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc() || value < 0 || value > largestSide) return std::nullopt;
        numbers.push_back(value);
        at = next;
        if (i == separators.size()) break;
        if (at == end || *at != separators[i]) return std::nullopt;
        ++at;
    }
    return at == end ? std::optional(numbers) : std::nullopt;
}

}  // namespace

Size parseSize(const std::string& text) {
    const auto n = numbersOf(text, "x");
    if (!n || (*n)[0] < 1 || (*n)[1] < 1) throw UsageError("--size takes width and height, as in 1920x1080, not \"" + text + '"');
    return {(*n)[0], (*n)[1]};
}

Rect parseCrop(const std::string& text, const Format& format, Size size, bool hasFields) {
    if (text.empty()) return {0, 0, size};
    const auto n = numbersOf(text, "x++");
    if (!n || (*n)[0] < 1 || (*n)[1] < 1)
        throw UsageError("--crop takes a size and the corner, as in 640x480+16+8, not \"" + text + '"');
    const Rect part{(*n)[2], (*n)[3], {(*n)[0], (*n)[1]}};
    if (part.x + part.size.width > size.width || part.y + part.size.height > size.height)
        throw UsageError("--crop " + text + " goes beyond the frame of " + std::to_string(size.width) + 'x' +
                         std::to_string(size.height));
    Site site = format.grid >= 0 ? Site{2, 2} : format.site;
    if (hasFields) site.height *= 2;
    if (part.x % site.width || part.y % site.height)
        throw UsageError("--crop has to begin at a whole group of " + std::string(format.name) + ", a multiple of " +
                         std::to_string(site.width) + " across and " + std::to_string(site.height) + " down");
    return part;
}

}  // namespace tool
