#include "tools/formats.h"

#include <algorithm>

#include "tools/alike.h"
#include "tools/errors.h"
#include "tools/foreign.h"

namespace tool {

namespace {

bool hasChannel(const Format& format, std::string_view wanted) {
    return std::ranges::any_of(format.usedPlanes(), [&](const catalog::Plane& p) {
        return (" " + std::string(p.channels) + " ").find(" " + std::string(wanted) + " ") != std::string::npos;
    });
}

template <typename Named>
std::string suggestions(std::string_view word, std::span<const Named> all) {
    std::vector<std::string_view> names;
    for (const Named& one : all) names.push_back(one.name);
    return alike(word, names);
}

}  // namespace

Space spaceOf(const Format& format) {
    if (format.grid >= 0) return Space::mosaic;
    if (hasChannel(format, "R")) return Space::rgb;
    if (hasChannel(format, "Cb")) return Space::ycbcr;
    if (hasChannel(format, "Co")) return Space::ycocg;
    if (format.planeCount == 1 && hasChannel(format, "Y") && !hasChannel(format, "C1")) return Space::gray;
    return Space::other;
}

bool isWord(const Format& format) {
    return format.element == Element::u16 && format.planes[0].bytes == 2 && format.planes[0].channels.size() > 1;
}

int bitsOf(const Format& format) {
    if (isWord(format)) return format.name.find("444") != std::string_view::npos ? 4 : 5;
    constexpr int bits[] = {1, 8, 8, 16, 16, 32, 24, 53};
    return bits[static_cast<int>(format.element)];
}

Site siteOf(const Format& format) {
    Site site;
    for (const catalog::Plane& p : format.usedPlanes()) site = common(site, {p.width, p.height});
    return site;
}

int alphaPlane(const Format& format) {
    const int last = format.planeCount - 1;
    return format.planes[last].channels.ends_with('A') ? last : -1;
}

bool hasAlpha(const Format& format) { return alphaPlane(format) >= 0; }

const Format& canonical(const Format& format) { return format.sameAs.empty() ? format : formatNamed(format.sameAs); }

std::array<int, 4> fileOrder(const Format& format) {
    const Format& target = canonical(format);
    std::array<int, 4> order{};
    for (int i = 0; i < target.planeCount; ++i)
        while (format.planes[order[i]].channels != target.planes[i].channels) ++order[i];
    return order;
}

int numberOf(const Format& format) { return static_cast<int>(&format - catalog::formats().data()); }

const Format* findFormat(std::string_view name) {
    // As FFmpeg, a name without the order of bytes stands for the one that this processor has.
    for (const std::string& tried : {std::string(name), std::string(name) + "le"}) {
        const auto found = std::ranges::find(catalog::formats(), tried, &Format::name);
        if (found != catalog::formats().end()) return &*found;
    }
    return nullptr;
}

const Format& formatNamed(std::string_view name) {
    if (const Format* found = findFormat(name)) return *found;
    if (const auto meaning = meaningOf(name))
        throw UnsupportedError("no function takes or makes " + std::string(name) + ", which is FFmpeg's name of " + *meaning +
                               " (zelcc list formats shows what there is)");
    throw UsageError("there is no format \"" + std::string(name) + '"' + suggestions(name, catalog::formats()) +
                     " (zelcc list formats shows all)");
}

const Function& functionNamed(std::string_view name) {
    for (const Function& f : catalog::functions())
        if (f.name == name || f.name.substr(4) == name) return f;
    throw UsageError("there is no function \"" + std::string(name) + '"' + suggestions(name, catalog::functions()) +
                     " (zelcc list functions WORD finds them)");
}

const Conversion& conversionOf(const Function& function) {
    const auto number = &function - catalog::functions().data();
    return *std::ranges::find(catalog::conversions(), number, &Conversion::function);
}

}  // namespace tool
