#include "catalog/colours.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace catalog {
namespace {

bool hasChroma(const Format& f) { return f.model == Model::ycbcr; }

// By the matrix and range of the functions where nothing else is said.
bool rangeOf(const Format& f, const Colour& colour) {
    if (colour.isFullRange) return *colour.isFullRange;
    const Matrix* matrix = findMatrix(colour.matrix);
    return f.model == Model::gray || (matrix && matrix->isFullRange.value_or(false));
}

bool differ(const Format& source, const Format& target, const Colours& colours) {
    return hasChroma(source) && hasChroma(target) &&
           (colours.source.matrix != colours.target.matrix || rangeOf(source, colours.source) != rangeOf(target, colours.target));
}

// Whether functions give what the colours say.
bool isExact(const Format& source, const Format& target, const Colours& colours, std::span<const Step> steps) {
    if (steps.empty()) return true;
    // Gray has the full range, and luma that becomes gray as it is keeps its own.
    if (source.model == Model::gray && !rangeOf(source, colours.source)) return false;
    if (hasChroma(source) && target.model == Model::gray && colours.target.isFullRange &&
        *colours.target.isFullRange != rangeOf(source, colours.source))
        return false;
    if (!hasChroma(source) && target.model == Model::gray && !rangeOf(target, colours.target)) return false;
    const bool isByMatrix =
        std::ranges::any_of(steps, [](const Step& s) { return s.conversion && !s.conversion->matrix.empty(); });
    const Format& coded = hasChroma(source) ? source : target;
    const Colour& colour = hasChroma(source) ? colours.source : colours.target;
    const Matrix* matrix = findMatrix(colour.matrix);
    return !isByMatrix || (matrix && matrix->isFullRange == rangeOf(coded, colour));
}

// What is neither luma and chroma nor described itself may become so by functions.
bool mayBeDescribed(const Format& f, const Colour& colour) {
    return (!hasChroma(f) && canonical(f).description.depth == 0) || describe(canonical(f), colour);
}

}  // namespace

const Matrix* findMatrix(std::string_view name) {
    const auto found = std::ranges::find(matrices(), name, &Matrix::name);
    return found == matrices().end() ? nullptr : &*found;
}

bool saysFullRange(std::string_view formatName) { return formatName.starts_with("yuvj"); }

std::optional<ZelvFormat> describe(const Format& format, const Colour& colour) {
    const Description& d = format.description;
    if (d.depth == 0) return {};
    ZelvFormat made{};
    made.layout = d.layout;
    std::strncpy(made.components, d.components, sizeof made.components - 1);
    made.sampling = d.sampling;
    made.depth = d.depth;
    made.alignment = d.alignment;
    made.range = zelvFull;
    if (format.model == Model::rgb) return made;
    const Matrix* matrix = findMatrix(colour.matrix);
    if (!matrix || !matrix->number) return {};
    made.matrix = *matrix->number;
    made.range = rangeOf(format, colour) ? zelvFull : zelvLimited;
    made.location = d.sampling == zelv444 ? zelvLeft : colour.location;
    return made;
}

std::optional<std::vector<Step>> path(const Format& source, const Format& target, const Colours& colours, Wishes wishes) {
    const auto metByVideo = std::exchange(wishes.metByVideo, nullptr);
    if (!differ(source, target, colours)) {
        wishes.matrix = hasChroma(source) ? colours.source.matrix : colours.target.matrix;
        auto steps = path(source, target, wishes);
        if (steps && isExact(source, target, colours, *steps)) return steps;
    }
    if (!metByVideo || !mayBeDescribed(source, colours.source) || !mayBeDescribed(target, colours.target)) return {};
    if (canonical(source).description.depth && canonical(target).description.depth &&
        metByVideo(canonical(source), canonical(target)) == wishes.all)
        return std::vector{Step::byVideo(source, target)};
    wishes.matrix = "none";  // functions convert what lies between
    wishes.metByVideo = metByVideo;
    return path(source, target, wishes);
}

ZelvOptions videoOptions(std::string_view method) {
    const bool filters = method == "filter", dithers = method == "dither";
    return {filters ? zelvLinear : zelvRepeat, filters ? zelvSited : zelvMean, dithers ? zelvOrdered : zelvRound};
}

Wishes byMethod(std::string_view method) {
    Wishes wishes = byMethod("", method);
    const ZelvOptions options = videoOptions(method);
    const bool isInterlaced = method == "interlaced";
    wishes.metByVideo = [=](const Format& from, const Format& to) -> std::optional<int> {
        if (isInterlaced && from.site.height != to.site.height) return {};
        const bool filters = options.up == zelvLinear && from.site != to.site;
        return filters || (options.dither == zelvOrdered && to.bits < from.bits);
    };
    return wishes;
}

ZelStatus makePlan(ZelvPlan* plan, const Format& source, const Format& target, const Colours& colours,
                   const ZelvOptions& options) {
    const auto from = describe(source, colours.source), to = describe(target, colours.target);
    return from && to ? zelvMakePlan(plan, &*from, &*to, &options) : ZelStatus{zelStsBadArgErr};
}

}  // namespace catalog
