#include "tools/way.h"

#include <algorithm>

#include "catalog/path.h"
#include "tools/errors.h"
#include "tools/steps.h"

namespace tool {

namespace {

// Functions that make chroma of the rows of two sites, and so want the whole image, and one whose image has rows by four.
constexpr std::string_view betweenRows[] = {"zeliYCbCr1620To420_8u_P3R", "zeliYCbCr420To411_8u_P3R"};
constexpr std::string_view byFourRows = "zeliYCbCr411To420_8u_P3R";

bool isBetweenRows(const Step& step) { return std::ranges::find(betweenRows, step.function().name) != std::end(betweenRows); }

std::string names(const std::vector<const Format*>& formats) {
    std::string text;
    for (const Format* f : formats) text += (text.empty() ? "" : " ") + std::string(f->name);
    return text;
}

}  // namespace

ZelDitherType Wishes::ditherType() const {
    if (dither == "floyd-steinberg") return zelDitherFS;
    if (dither == "jarvis") return zelDitherJJN;
    if (dither == "stucki") return zelDitherStucki;
    return dither == "bayer" ? zelDitherBayer : zelDitherNone;
}

bool Step::wantsWholeImage(const Wishes& wishes) const {
    if (moves()) return false;
    const Conversion& c = *conversion;
    if (c.verb.starts_with("tone-") || sourceFormat().grid >= 0) return true;
    if (c.method == "filter" || c.method == "interlaced" || isBetweenRows(*this)) return true;
    if (c.verb != "reduce") return false;
    const bool byPlaceAlone = wishes.dither.empty() || wishes.dither == "none" || wishes.dither == "bayer";
    return !byPlaceAlone || wishes.noise.value_or(0) != 0;
}

Site Step::site(const Wishes& wishes) const {
    Site site = common(siteOf(sourceFormat()), siteOf(targetFormat()));
    if (moves()) return site;
    // The pattern of a dither has four rows; a site of fields has two of each.
    const bool repeats = conversion->method == "dither" || (conversion->verb == "reduce" && wishes.dither == "bayer");
    if (conversion->method == "interlaced" || repeats || function().name == byFourRows) site.height = std::lcm(site.height, 4);
    return site;
}

bool Step::interpolatesRows() const {
    if (moves()) return false;
    const bool getsRows = siteOf(targetFormat()).height < siteOf(sourceFormat()).height;
    return isBetweenRows(*this) || (conversion->method == "filter" && getsRows && spaceOf(targetFormat()) != Space::rgb);
}

bool Step::interpolatesColumns() const {
    return !moves() && conversion->method == "filter" && spaceOf(targetFormat()) == Space::rgb;
}

std::optional<Way> findWay(const Format& from, const Format& to, const Wishes& wishes) {
    const Demands demands(wishes);
    const auto met = [&](const Conversion& c) { return demands.metBy(stepOf(c)); };
    const auto found = catalog::path(from, to, {.matrix = wishes.matrix, .met = met, .all = demands.all()});
    if (!found) return std::nullopt;
    Way way;
    for (const catalog::Step& s : *found)
        way.push_back(s.conversion ? stepOf(*s.conversion) : Step{nullptr, numberOf(*s.source), numberOf(*s.target)});
    return way;
}

std::vector<const Format*> reachable(const Format& from, const Wishes& wishes) {
    std::vector<const Format*> found;
    for (const Format& f : catalog::formats())
        if (findWay(from, canonical(f), wishes)) found.push_back(&f);
    return found;
}

std::string describe(const Way& way) {
    std::string text;
    for (const Step& step : way) {
        text += (step.moves() ? "samples are moved" : std::string(step.function().name)) + "  " +
                std::string(step.sourceFormat().name) + " -> " + std::string(step.targetFormat().name) + "\n";
    }
    return text.empty() ? "no function: the planes are copied\n" : text;
}

Way wayOrRefusal(const Format& from, const Format& to, const Wishes& wishes) {
    if (auto way = findWay(from, to, wishes)) return *way;
    std::string wanted;
    const Demands demands(wishes);
    for (const std::string& name : demands.names()) wanted += (wanted.empty() ? " with " : " and ") + name;
    const auto others = reachable(from, wishes);
    std::string text = "no functions lead from " + std::string(from.name) + " to " + std::string(to.name) + wanted +
                       " by matrix " + wishes.matrix + ".\n";
    if (!wishes.demosaic.empty() && spaceOf(from) == Space::gray)
        text += "A mosaic in a gray picture is told by --from bayer_rggb" + std::string(bitsOf(from) == 16 ? "16le" : "8") +
                ", or bggr, gbrg or grbg instead of rggb.";
    else if (others.empty())
        text += "Nothing is reachable from " + std::string(from.name) + " so" + (wanted.empty() ? "." : "; ask for less.");
    else
        text += "Reachable from " + std::string(from.name) + ": " + names(others);
    throw NoWayError(text);
}

}  // namespace tool
