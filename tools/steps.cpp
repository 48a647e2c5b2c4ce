#include "tools/steps.h"

#include <algorithm>

#include "catalog/path.h"

namespace tool {

namespace {

Alpha alphaOf(const Step& step) {
    const Format& source = step.sourceFormat();
    const Format& target = step.targetFormat();
    if (!hasAlpha(target) || step.function().alpha == catalog::Alpha::written) return Alpha::written;
    if (step.function().alpha == catalog::Alpha::zero) return Alpha::opaqueAfter;
    const bool isAlike = hasAlpha(source) && source.planeCount == 1 && target.planeCount == 1 &&
                         source.planes[0].bytes == target.planes[0].bytes && source.element == target.element;
    return isAlike ? Alpha::copied : Alpha::opaqueBefore;
}

}  // namespace

Step stepOf(const Conversion& conversion) {
    Step step{&conversion, conversion.source, conversion.target};
    step.alpha = alphaOf(step);
    return step;
}

const std::vector<Step>& allSteps() {
    static const std::vector<Step> steps = [] {
        std::vector<Step> found;
        for (const Conversion& c : catalog::conversions()) {
            const Function& function = catalog::functions()[c.function];
            if (function.takesSteps && function.sourcePlanes != 0) found.push_back(stepOf(c));
        }
        return found;
    }();
    return steps;
}

Demands::Demands(const Wishes& wishes) : wishes_(wishes) {
    const auto demand = [&](bool is, const char* name) {
        if (is) names_.emplace_back(name);
    };
    demand(wishes.reduces(), "reduction");
    demand(!wishes.gamma.empty(), "gamma");
    demand(!wishes.toneMap.empty(), "tone-map");
    demand(!wishes.twist.empty(), "twist");
    demand(!wishes.weights.empty(), "weights");
    demand(wishes.filter, "filter");
    demand(wishes.interlaced, "interlaced");
    demand(!wishes.demosaic.empty(), "demosaic");
}

int Demands::bit(const std::string& name) const {
    const auto found = std::ranges::find(names_, name);
    return found == names_.end() ? 0 : 1 << (found - names_.begin());
}

std::optional<int> Demands::metByVerb(const Conversion& c) const {
    const auto only = [&](const char* name, bool is) { return is ? std::optional(bit(name)) : std::nullopt; };
    if (c.verb.empty()) return 0;
    if (c.verb == "reduce") {
        const bool toBits = catalog::formats()[c.target].element == Element::u1;
        // Bits have a threshold and one kind of error diffusion, other samples have levels.
        const bool serves = toBits ? !wishes_.levels && !wishes_.noise &&
                                         (wishes_.dither.empty() || wishes_.dither == "none" || wishes_.dither == "stucki")
                                   : !wishes_.threshold;
        if (c.source == c.target) return only("reduction", serves && wishes_.reduces());
        return only("reduction", serves);
    }
    if (c.verb == "gamma") return only("gamma", wishes_.gamma == "forward");
    if (c.verb == "linear") return only("gamma", wishes_.gamma == "inverse");
    if (c.verb == "tone-maximum") return only("tone-map", wishes_.toneMap == "maximum");
    if (c.verb == "tone-mean") return only("tone-map", wishes_.toneMap == "mean");
    const auto& function = catalog::functions()[c.function];
    return only("twist", static_cast<int>(wishes_.twist.size()) == function.coefficientCount);
}

std::optional<int> Demands::metByMethod(const Conversion& c) const {
    const auto only = [&](const char* name, bool is) { return is ? std::optional(bit(name)) : std::nullopt; };
    if (c.method.empty()) return 0;
    if (c.method == "filter") return only("filter", wishes_.filter && !wishes_.filtersAtSites);
    if (c.method == "interlaced") return only("interlaced", wishes_.interlaced);
    if (c.method == "gamma") return only("gamma", wishes_.gamma == "forward");
    if (c.method == "dither")
        return only("reduction", wishes_.dither == "bayer" && !wishes_.levels && !wishes_.noise && !wishes_.threshold);
    if (c.method == "weights") return only("weights", !wishes_.weights.empty());
    return only("demosaic", (c.method == "ahd") == (wishes_.demosaic == "ahd"));  // bilinear if nothing is said
}

std::optional<int> Demands::metBy(const Step& step) const {
    const Conversion& c = *step.conversion;
    if (wishes_.interlaced && catalog::mixesFields(c)) return std::nullopt;
    const auto byVerb = metByVerb(c), byMethod = metByMethod(c);
    if (!byVerb || !byMethod) return std::nullopt;
    return *byVerb | *byMethod;
}

std::optional<int> Demands::metByVideo(const Format& from, const Format& to) const {
    if (wishes_.interlaced && from.site.height != to.site.height) return std::nullopt;
    const ZelvOptions options = wishes_.videoOptions(from, to);
    return (options.up == zelvLinear && from.site != to.site ? bit("filter") : 0) |
           (options.dither == zelvOrdered ? bit("reduction") : 0);
}

}  // namespace tool
