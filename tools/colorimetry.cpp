#include "tools/colorimetry.h"

#include <algorithm>

#include "tools/errors.h"
#include "tools/output.h"

namespace tool {

namespace {

// What an option says of either side: a pair, or one for all sides that have such a thing.
struct Sides {
    std::string source, target;
    bool isPair = false;
};

Sides sidesOf(const std::string& option) {
    const size_t colon = option.find(':');
    if (colon == option.npos) return {option, option};
    return {option.substr(0, colon), option.substr(colon + 1), true};
}

struct NamedLocation {
    std::string_view name;
    Location location;
    int32_t number;
};
constexpr NamedLocation locations[] = {{"left", {Place::first, Place::centre}, zelvLeft},
                                       {"center", {Place::centre, Place::centre}, zelvCentre},
                                       {"topleft", {Place::first, Place::first}, zelvTopLeft}};

constexpr std::string_view ranges[] = {"limited", "full"};

// As FFmpeg calls them.
constexpr std::pair<std::string_view, std::string_view> ffmpegNames[] = {
    {"bt709", "709"},     {"bt601", "601"},       {"smpte170m", "601"},  {"bt470bg", "601"},
    {"bt2020nc", "2020"}, {"bt2020_ncl", "2020"}, {"smpte240m", "240m"}, {"tv", "limited"},
    {"mpeg", "limited"},  {"pc", "full"},         {"jpeg", "full"}};
std::string_view rangeName(bool isFull) { return ranges[isFull]; }

bool hasChroma(const Format& f) { return f.model == Model::ycbcr; }

bool isByMatrix(const Step& step) {
    if (step.isByVideo) return hasChroma(step.sourceFormat()) != hasChroma(step.targetFormat());
    return step.conversion && !step.conversion->matrix.empty();
}

bool changesChromaRows(const Way& way) {
    return std::ranges::any_of(way, [](const Step& s) { return s.sourceFormat().site.height != s.targetFormat().site.height; });
}

std::string sourceMatrix(const ConvertOptions& options, const Stated& stated) {
    if (!options.matrix.empty()) return sidesOf(options.matrix).source;
    if (stated.colour.matrix.empty()) return catalog::Colour().matrix;
    if (catalog::findMatrix(stated.colour.matrix)) return stated.colour.matrix;
    throw UnsupportedError(stated.name + " says that its matrix is " + stated.colour.matrix +
                           ", which is not known here; --matrix says by which one to convert it all the same");
}

// Nothing where nobody knows.
std::optional<bool> sourceRange(const ConvertOptions& options, const Stated& stated) {
    if (!options.range.empty()) return sidesOf(options.range).source == rangeName(true);
    if (catalog::saysFullRange(options.from)) return true;
    return stated.colour.isFullRange;
}

std::optional<bool> targetRange(const ConvertOptions& options) {
    if (!options.range.empty()) return sidesOf(options.range).target == rangeName(true);
    return catalog::saysFullRange(options.to) ? std::optional(true) : std::nullopt;
}

void checkNames(const ConvertOptions& options) {
    const auto contradicts = [&](const std::string& format, const std::string& range) {
        return catalog::saysFullRange(format) && !range.empty() && range != rangeName(true);
    };
    const Sides range = sidesOf(options.range);
    if (contradicts(options.from, range.source) || contradicts(options.to, range.target))
        throw UsageError("yuvj is full range by its name, and --range says otherwise; the name without the j leaves it open");
}

const NamedLocation* namedLocation(const std::string& name) { return std::ranges::find(locations, name, &NamedLocation::name); }

Location locationOf(const ConvertOptions& options, const Stated& stated) {
    if (options.location.empty()) return stated.colour.location;
    return namedLocation(sidesOf(options.location).source)->location;
}

int32_t numberOf(Location location) {
    const auto found = std::ranges::find(locations, location, &NamedLocation::location);
    return found == std::end(locations) ? zelvLeft : found->number;
}

// An option that is no pair speaks of luma and chroma where a side has them, and else of gray.
catalog::Colours coloursOf(const ConvertOptions& options, const Stated& stated, const Format& from, const Format& to) {
    catalog::Colours c;
    const bool both = hasChroma(from) && hasChroma(to);
    const Sides matrix = sidesOf(options.matrix), range = sidesOf(options.range), location = sidesOf(options.location);
    c.source.matrix = sourceMatrix(options, stated);
    c.target.matrix = !options.matrix.empty() ? matrix.target : c.source.matrix;
    if (!options.range.empty() && !range.isPair && !hasChroma(from) && hasChroma(to))
        c.source.isFullRange = stated.colour.isFullRange;
    else
        c.source.isFullRange = sourceRange(options, stated);
    if (hasChroma(to) || range.isPair || !hasChroma(from)) c.target.isFullRange = targetRange(options);
    if (both && !c.target.isFullRange) c.target.isFullRange = c.source.isFullRange;
    c.source.location = numberOf(locationOf(options, stated));
    c.target.location = location.isPair ? namedLocation(location.target)->number : both ? c.source.location : zelvLeft;
    return c;
}

// A matrix of functions alone, which have one range.
void checkRange(const Stated& stated, const Format& from, const Format& to, const Wishes& wishes) {
    for (const auto& [format, colour] : {std::pair(&from, &wishes.colours.source), std::pair(&to, &wishes.colours.target)}) {
        const catalog::Matrix* matrix = catalog::findMatrix(colour->matrix);
        if (!hasChroma(*format) || matrix->number || colour->isFullRange.value_or(true)) continue;
        throw UnsupportedError((format == &from ? stated.name : "the output") + " is in limited range, and matrix " +
                               colour->matrix + " has the full one; say --matrix 709 or 601, or --range full whatever " +
                               stated.name + " says");
    }
}

// A repeated sample is the nearest wherever it lies; one that a function interpolates is right at one place alone, where
// libzelvideo asks where it is.
void heedLocation(const ConvertOptions& options, const Stated& stated, const Format& from, Decision& d) {
    const Location l = locationOf(options, stated);
    for (const Step& s : d.way) {
        const bool isRight = s.interpolatesRows()      ? l.down != Place::centre
                             : s.interpolatesColumns() ? l.across != Place::centre
                                                       : true;
        if (!isRight) {
            d.wishes.filtersAtSites = s.interpolatesColumns();
            if (auto way = s.interpolatesColumns() ? findWay(canonical(from), canonical(d.to), d.wishes) : std::nullopt) {
                d.way = std::move(*way);
                return;
            }
            throw UnsupportedError(std::string(s.function().name) + " interpolates chroma that lies on the " +
                                   (s.interpolatesRows() ? "upper row" : "left column") + " of its pixels, and that of " +
                                   stated.name + " lies between them; leave --filter out, or say --location topleft");
        }
        if (isByMatrix(s)) return;  // behind it chroma is made anew
    }
}

// A way that keeps the fields apart, where the plain one would mix them.
void heedFields(const ConvertOptions& options, const Stated& stated, const Format& from, Decision& d) {
    if (!hasFields(options, stated) || d.wishes.interlaced || !changesChromaRows(d.way)) return;
    const std::string what = stated.name + " is interlaced (I" + stated.interlacing + "), and ";
    if (stated.interlacing == "m")
        throw UnsupportedError(what +
                               "its frames are of different kinds; --interlaced or --progressive takes all of them as one");
    d.wishes.interlaced = true;
    auto way = findWay(canonical(from), canonical(d.to), d.wishes);
    if (!way)
        throw UnsupportedError(what + "no functions keep its fields apart on the way from " + std::string(from.name) + " to " +
                               std::string(d.to.name) + "; --progressive takes its frames as whole");
    d.way = std::move(*way);
}

Place placeBehind(Place before, int siteBefore, int siteAfter, const Step& step) {
    if (siteAfter == 1) return Place::unknown;
    if (isByMatrix(step)) return Place::centre;  // the mean of the site
    if (siteBefore == siteAfter) return before;
    // Every other sample is dropped, or one is put between.
    return siteBefore == 1 || before == Place::first ? Place::first : Place::unknown;
}

Location locationBehind(Location l, const Step& step) {
    const Site before = step.sourceFormat().site, after = step.targetFormat().site;
    const bool ofFields = step.conversion && step.conversion->method == "interlaced" && after.height == 2;
    return {placeBehind(l.across, before.width, after.width, step),
            ofFields ? Place::centre : placeBehind(l.down, before.height, after.height, step)};
}

Colour colourOfOutput(const ConvertOptions& options, const Stated& stated, const Format& from, const Decision& d) {
    const auto& [source, target] = d.wishes.colours;
    Colour colour{.location = locationOf(options, stated)};
    for (const Step& step : d.way) colour.location = locationBehind(colour.location, step);
    if (d.wishes.filter && std::ranges::any_of(d.way, &Step::isByVideo) && d.to.site != Site{})
        colour.location = std::ranges::find(locations, target.location, &NamedLocation::number)->location;
    const bool isMade = std::ranges::any_of(d.way, [](const Step& s) { return s.isByVideo || isByMatrix(s); });
    const bool isFull = catalog::findMatrix(target.matrix)->isFullRange.value_or(false);
    if (hasChroma(d.to)) {
        const bool isKnown = isMade || !options.matrix.empty();
        colour.matrix = isKnown ? target.matrix : stated.colour.matrix;
        colour.isFullRange = target.isFullRange;
        if (isKnown && isFull && !colour.isFullRange) colour.isFullRange = true;
    }
    // Luma that became gray as it is.
    if (d.to.model == Model::gray && hasChroma(from) && !isMade) colour.isFullRange = source.isFullRange.value_or(isFull);
    if (d.to.model == Model::gray && d.way.empty()) colour.isFullRange = source.isFullRange;
    if (colour.matrix == catalog::Colour().matrix) colour.matrix.clear();
    return colour;
}

// One name, or two with a colon between them.
template <typename Names>
std::string refusal(const std::string& text, const Names& names) {
    const Sides sides = sidesOf(text);
    for (const std::string& word : {sides.source, sides.target})
        if (std::ranges::find(names, word) == names.end()) {
            std::vector<std::string_view> known(names.begin(), names.end());
            return '"' + word + "\" is not known" + catalog::suggestion(word, known);
        }
    return {};
}

}  // namespace

std::string withOwnNames(const std::string& option) {
    const auto own = [](const std::string& word) {
        const auto* const found = std::ranges::find(ffmpegNames, word, &std::pair<std::string_view, std::string_view>::first);
        return found == std::end(ffmpegNames) ? word : std::string(found->second);
    };
    const Sides sides = sidesOf(option);
    return sides.isPair ? own(sides.source) + ':' + own(sides.target) : own(option);
}

std::string refusedMatrix(const std::string& text) {
    std::vector<std::string> names;
    for (const catalog::Matrix& m : catalog::matrices()) names.emplace_back(m.name);
    return refusal(text, names);
}

std::string refusedRange(const std::string& text) {
    return refusal(text, std::vector<std::string>(std::begin(ranges), std::end(ranges)));
}

std::string refusedLocation(const std::string& text) {
    std::vector<std::string> names;
    for (const NamedLocation& l : locations) names.emplace_back(l.name);
    return refusal(text, names);
}

bool hasFields(const ConvertOptions& options, const Stated& stated) {
    if (options.isProgressive) return false;
    return options.wishes.interlaced || stated.interlacing == "t" || stated.interlacing == "b" || stated.interlacing == "m";
}

Decision decide(const ConvertOptions& options, const Stated& stated, const Format& from) {
    checkNames(options);
    ConvertOptions known = options;
    known.wishes.colours.source.matrix = known.wishes.colours.target.matrix = sourceMatrix(options, stated);
    const Format& to = targetFormat(known, from);
    known.wishes.colours = coloursOf(options, stated, from, to);
    checkRange(stated, from, to, known.wishes);
    Decision d{.to = to,
               .wishes = known.wishes,
               .way = wayOrRefusal(canonical(from), canonical(to), known.wishes),
               .colour = {},
               .interlacing = stated.interlacing};
    heedFields(options, stated, from, d);
    heedLocation(options, stated, from, d);
    d.colour = colourOfOutput(options, stated, from, d);
    if (options.isProgressive) d.interlacing = "p";
    if (options.wishes.interlaced && d.interlacing == "p") d.interlacing = "t";
    return d;
}

}  // namespace tool
