#include "tools/way.h"

#include <algorithm>

#include "catalog/path.h"
#include "tools/errors.h"
#include "tools/steps.h"

namespace tool {

namespace {

constexpr int orderedRows = 8;  // of libzelvideo's pattern

// Rows at whose multiples an image may be cut for the step, 0 if it may not.
int rowsOfPart(const Step& step, const Wishes& wishes) {
    if (!step.isByVideo) return step.function().rowsOfPart(wishes.ditherType(), wishes.noise.value_or(0) != 0);
    const ZelvOptions options = wishes.videoOptions(step.sourceFormat(), step.targetFormat());
    const bool looksAtRowsAround = options.up != zelvRepeat || options.down != zelvMean;
    return looksAtRowsAround ? 0 : options.dither == zelvOrdered ? orderedRows : 1;
}

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

ZelvOptions Wishes::videoOptions(const Format& from, const Format& to) const {
    const bool isOrdered = dither == "bayer" && !levels && !noise && !threshold && to.bits < from.bits;
    return {filter ? zelvLinear : zelvRepeat, filter ? zelvSited : zelvMean, isOrdered ? zelvOrdered : zelvRound};
}

bool Step::wantsWholeImage(const Wishes& wishes) const {
    // Parts of a mosaic are regions, and not images of their own.
    return !moves() && (sourceFormat().grid >= 0 || rowsOfPart(*this, wishes) == 0);
}

Site Step::site(const Wishes& wishes) const {
    Site site = common(sourceFormat().site, targetFormat().site);
    if (moves()) return site;
    if (conversion) site = common(site, function().site);
    if (!wantsWholeImage(wishes)) site.height = std::lcm(site.height, rowsOfPart(*this, wishes));
    return site;
}

bool Step::interpolatesRows() const {
    if (!conversion || conversion->method == "interlaced") return false;
    return sourceFormat().model == Model::ycbcr && targetFormat().model == Model::ycbcr && rowsOfPart(*this, {}) == 0;
}

bool Step::interpolatesColumns() const {
    return conversion && conversion->method == "filter" && targetFormat().model == Model::rgb;
}

std::optional<Way> findWay(const Format& from, const Format& to, const Wishes& wishes) {
    const Demands demands(wishes);
    const auto met = [&](const Conversion& c) { return demands.metBy(stepOf(c)); };
    const auto metByVideo = [&](const Format& a, const Format& b) { return demands.metByVideo(a, b); };
    const auto found = catalog::path(from, to, wishes.colours, {.met = met, .all = demands.all(), .metByVideo = metByVideo});
    if (!found) return std::nullopt;
    Way way;
    for (const catalog::Step& s : *found)
        way.push_back(s.conversion ? stepOf(*s.conversion)
                                   : Step{.conversion = nullptr,
                                          .source = numberOf(*s.source),
                                          .target = numberOf(*s.target),
                                          .isByVideo = s.isByVideo});
    return way;
}

std::vector<const Format*> reachable(const Format& from, const Wishes& wishes) {
    std::vector<const Format*> found;
    for (const Format& f : catalog::formats())
        if (findWay(from, canonical(f), wishes)) found.push_back(&f);
    return found;
}

std::string nameOf(const Step& step) {
    if (step.isByVideo) return "zelvConvert";
    return step.moves() ? "moved samples" : std::string(step.function().name);
}

std::string describe(const Way& way) {
    std::string text;
    for (const Step& step : way) {
        text +=
            nameOf(step) + "  " + std::string(step.sourceFormat().name) + " -> " + std::string(step.targetFormat().name) + "\n";
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
                       " by matrix " + wishes.colours.source.matrix +
                       (wishes.colours.source.matrix == wishes.colours.target.matrix ? "" : ":" + wishes.colours.target.matrix) +
                       ".\n";
    if (!wishes.demosaic.empty() && from.model == Model::gray)
        text += "A mosaic in a gray picture is told by --from bayer_rggb" + std::string(from.bits == 16 ? "16le" : "8") +
                ", or bggr, gbrg or grbg instead of rggb.";
    else if (others.empty())
        text += "Nothing is reachable from " + std::string(from.name) + " so" + (wanted.empty() ? "." : "; ask for less.");
    else
        text += "Reachable from " + std::string(from.name) + ": " + names(others);
    throw NoWayError(text);
}

}  // namespace tool
