#include "tools/colorimetry.h"

#include <algorithm>

#include "tools/errors.h"
#include "tools/output.h"

namespace tool {

namespace {

struct Matrix {
    std::string_view name;
    bool isFullRange;
};
constexpr Matrix matrices[] = {{"601", false}, {"709", false}, {"709-full", true}, {"yuv", true}};
constexpr const char* usualMatrix = "601";

const Matrix* findMatrix(std::string_view name) {
    const auto found = std::ranges::find(matrices, name, &Matrix::name);
    return found == std::end(matrices) ? nullptr : found;
}

struct NamedLocation {
    std::string_view name;
    Location location;
};
constexpr NamedLocation locations[] = {{"left", {Place::first, Place::centre}},
                                       {"center", {Place::centre, Place::centre}},
                                       {"topleft", {Place::first, Place::first}}};

std::string_view rangeName(bool isFull) { return isFull ? "full" : "limited"; }

bool isByMatrix(const Step& step) { return !step.moves() && !step.conversion->matrix.empty(); }

bool changesChromaRows(const Way& way) {
    return std::ranges::any_of(way, [](const Step& s) { return s.sourceFormat().site.height != s.targetFormat().site.height; });
}

std::string matrixOf(const ConvertOptions& options, const Stated& stated) {
    if (!options.matrix.empty()) return options.matrix;
    if (stated.colour.matrix.empty()) return usualMatrix;
    if (findMatrix(stated.colour.matrix)) return stated.colour.matrix;
    throw UnsupportedError(stated.name + " says that its matrix is " + stated.colour.matrix +
                           ", which no function has; --matrix says by which one to convert it all the same");
}

// Nothing where neither the caller nor the file knows.
std::optional<bool> rangeOf(const ConvertOptions& options, const Stated& stated) {
    if (!options.range.empty()) return options.range == "full";
    return stated.colour.isFullRange;
}

Location locationOf(const ConvertOptions& options, const Stated& stated) {
    if (options.location.empty()) return stated.colour.location;
    return std::ranges::find(locations, options.location, &NamedLocation::name)->location;
}

// What overrules the file, where it has said what no function does.
std::string overruling(const ConvertOptions& options, const Stated& stated, bool isFull) {
    return options.range.empty() ? ", or --range " + std::string(rangeName(!isFull)) + " whatever " + stated.name + " says" : "";
}

void checkRange(const ConvertOptions& options, const Stated& stated, const Format& from, const Decision& d) {
    const auto isFull = rangeOf(options, stated);
    if (!isFull) return;
    const std::string who = options.range.empty() ? stated.name + " is" : "what is asked for is";
    const std::string what = who + " in " + std::string(rangeName(*isFull)) + " range, ";
    if (from.model == Model::gray && options.range.empty()) {
        if (*isFull || d.way.empty()) return;
        throw UnsupportedError(what + "and no function takes gray so; say --range full to take it as full whatever it says");
    }
    if (*isFull == findMatrix(d.wishes.matrix)->isFullRange || std::ranges::none_of(d.way, isByMatrix)) return;
    std::string others;
    for (const Matrix& m : matrices)
        if (m.isFullRange == *isFull) others += (others.empty() ? "" : " or ") + std::string(m.name);
    throw UnsupportedError(what + "which no function has of matrix " + d.wishes.matrix + "; say --matrix " + others +
                           " if it is of such a kind" + overruling(options, stated, *isFull));
}

// A repeated sample is the nearest wherever it lies; an interpolated one is right at one place alone.
void checkLocation(const ConvertOptions& options, const Stated& stated, const Way& way) {
    const Location l = locationOf(options, stated);
    for (const Step& s : way) {
        const bool isRight = s.interpolatesRows()      ? l.down != Place::centre
                             : s.interpolatesColumns() ? l.across != Place::centre
                                                       : true;
        if (!isRight)
            throw UnsupportedError(std::string(s.function().name) + " interpolates chroma that lies on the " +
                                   (s.interpolatesRows() ? "upper row" : "left column") + " of its pixels, and that of " +
                                   stated.name + " lies between them; leave --filter out, or say --location topleft");
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
    const bool ofFields = !step.moves() && step.conversion->method == "interlaced" && after.height == 2;
    return {placeBehind(l.across, before.width, after.width, step),
            ofFields ? Place::centre : placeBehind(l.down, before.height, after.height, step)};
}

Colour colourOfOutput(const ConvertOptions& options, const Stated& stated, const Format& from, const Decision& d) {
    Colour colour{.location = locationOf(options, stated)};
    for (const Step& step : d.way) colour.location = locationBehind(colour.location, step);
    const bool isFull = findMatrix(d.wishes.matrix)->isFullRange;
    const bool isMade = std::ranges::any_of(d.way, isByMatrix);
    if (d.to.model == Model::ycbcr) {
        const bool isKnown = isMade || !options.matrix.empty();
        colour.matrix = isKnown ? d.wishes.matrix : stated.colour.matrix;
        if (from.model != Model::gray || !options.range.empty()) colour.isFullRange = rangeOf(options, stated);
        if (isKnown && isFull && !colour.isFullRange) colour.isFullRange = true;
    }
    // Luma that became gray as it is.
    if (d.to.model == Model::gray && from.model == Model::ycbcr && !isMade)
        colour.isFullRange = rangeOf(options, stated).value_or(isFull);
    if (d.to.model == Model::gray && d.way.empty()) colour.isFullRange = rangeOf(options, stated);
    if (colour.matrix == usualMatrix) colour.matrix.clear();
    return colour;
}

}  // namespace

std::vector<std::string> matrixNames() {
    std::vector<std::string> names;
    for (const Matrix& m : matrices) names.emplace_back(m.name);
    return names;
}

bool hasFields(const ConvertOptions& options, const Stated& stated) {
    if (options.isProgressive) return false;
    return options.wishes.interlaced || stated.interlacing == "t" || stated.interlacing == "b" || stated.interlacing == "m";
}

Decision decide(const ConvertOptions& options, const Stated& stated, const Format& from) {
    ConvertOptions known = options;
    known.wishes.matrix = matrixOf(options, stated);
    const Format& to = targetFormat(known, from);
    Decision d{.to = to,
               .wishes = known.wishes,
               .way = wayOrRefusal(canonical(from), canonical(to), known.wishes),
               .colour = {},
               .interlacing = stated.interlacing};
    heedFields(options, stated, from, d);
    checkRange(options, stated, from, d);
    checkLocation(options, stated, d.way);
    d.colour = colourOfOutput(options, stated, from, d);
    if (options.isProgressive) d.interlacing = "p";
    if (options.wishes.interlaced && d.interlacing == "p") d.interlacing = "t";
    return d;
}

}  // namespace tool
