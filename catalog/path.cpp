#include "catalog/path.h"

#include <algorithm>
#include <numeric>
#include <queue>

namespace catalog {
namespace {

// Many functions lead between formats of these. The others have functions from and to RGB alone: no way leads through them.
bool isCommon(Model model) { return model == Model::rgb || model == Model::ycbcr || model == Model::gray; }

bool mayLieBetween(const Format& way, const Format& source, const Format& target) {
    const bool inColour = source.model != Model::gray && target.model != Model::gray;
    return isCommon(way.model) && way.bits >= std::min(source.bits, target.bits) &&
           way.site.width <= std::max(source.site.width, target.site.width) &&
           way.site.height <= std::max(source.site.height, target.site.height) &&
           (hasAlpha(way) || !hasAlpha(source) || !hasAlpha(target)) && (way.model != Model::gray || !inColour);
}

// Pixels that one sample of the channel serves, nothing if there is none: where a channel repeats in a unit, as luma of packed
// 4:2:2 does, fewer than the unit.
std::optional<Site> siteOf(const Format& f, std::string_view channel) {
    for (const Plane& p : f.usedPlanes()) {
        int count = 0;
        p.forEachSample([&](std::string_view sample) { count += sample == channel; });
        if (count) return Site{p.width / count, p.height};
    }
    return {};
}

// All channels of the other, but for alpha, at the same sites.
bool holds(const Format& f, const Format& other) {
    bool result = true;
    for (const Plane& p : other.usedPlanes())
        p.forEachSample(
            [&](std::string_view sample) { result = result && (sample == "A" || siteOf(f, sample) == siteOf(other, sample)); });
    return result;
}

// Costs, so that moving samples costs more than a function that does the same, and losing some most. Of functions that are
// alike, one that writes alpha is taken, and one that has its planes in the order of the formats.
enum Cost {
    otherOrder = 1,
    leavesAlpha = 2,
    sameSamples = 20,
    moving = 30,
    otherSites = 60,
    otherModel = 100,
    otherDepth = 100,
    lumaAsItIs = 190,
    byVideo = 200
};

int costOf(const Format& source, const Format& target) {
    if (source.bits != target.bits) return otherDepth + (source.model != target.model ? otherModel : 0);
    // Gray has the full range, which luma seldom has: over colours it gets it.
    if (source.model == Model::ycbcr && target.model == Model::gray) return lumaAsItIs;
    if (source.model != target.model || !isCommon(source.model)) return otherModel;
    return source.site == target.site ? sameSamples : otherSites;
}

int costOf(const Function& function, const Conversion& c) {
    const auto isSorted = [](int format, const std::array<int8_t, 4>& order) {
        return std::is_sorted(order.begin(), order.begin() + formats()[format].planeCount);
    };
    const bool isInOrder = isSorted(c.source, c.sourceOrder) && isSorted(c.target, c.targetOrder);
    return (isInOrder ? 0 : otherOrder) + (function.alpha == Alpha::written ? 0 : leavesAlpha);
}

std::array<int8_t, 4> chained(const std::array<int8_t, 4>& order, const std::array<int8_t, 4>& then) {
    std::array<int8_t, 4> result{};
    for (int i = 0; i < 4; ++i) result[i] = then[order[i]];
    return result;
}

struct Arrival {
    int cost = INT32_MAX;
    int from = -1;  // node
    const Conversion* by = nullptr;
    bool isByVideo = false;
};

}  // namespace

bool canRearrange(const Format& source, const Format& target) {
    const auto fillsSamples = [](const Format& f) {
        return !f.description.depth || f.description.depth == 8 * bytesOf(f.element);
    };
    return fillsSamples(source) && fillsSamples(target) && source.element == target.element && !source.isPacked &&
           !target.isPacked && source.model != Model::gray && source.grid == target.grid && holds(source, target) &&
           holds(target, source);
}

bool mixesFields(const Conversion& conversion) {
    return conversion.method != "interlaced" &&
           formats()[conversion.source].site.height != formats()[conversion.target].site.height;
}

Wishes byMethod(std::string_view matrix, std::string_view method) {
    const auto met = [method](const Conversion& c) -> std::optional<int> {
        if (!method.empty() && (c.method == method || c.verb == method)) return 1;
        if (method == "interlaced" && mixesFields(c)) return {};
        const bool isPlain = c.method.empty() || (c.method == "bilinear" && method != "ahd");
        const bool keepsMeaning = c.verb.empty() || (c.verb == "reduce" && c.source != c.target);
        return isPlain && keepsMeaning ? std::optional(0) : std::nullopt;
    };
    return {.matrix = matrix, .met = met, .all = method.empty() ? 0 : 1};
}

std::optional<std::vector<Step>> path(const Format& source, const Format& target, const Wishes& wishes) {
    const int count = static_cast<int>(formats().size());
    // Of formats that differ in the order of planes alone, one stands for all.
    const int start = source.canonical, end = target.canonical;
    static const std::vector<std::vector<int>> moves = [] {  // formats to which samples of each are moved
        std::vector<std::vector<int>> all(formats().size());
        for (size_t from = 0; from < all.size(); ++from)
            for (size_t to = 0; to < all.size(); ++to)
                if (from != to && formats()[to].canonical == static_cast<int>(to) && canRearrange(formats()[from], formats()[to]))
                    all[from].push_back(static_cast<int>(to));
        return all;
    }();

    // A node is a format and the wishes that are met so far, as the multiple of the number of formats.
    std::vector<Arrival> arrivals(static_cast<size_t>(count) * (wishes.all + 1));
    using Entry = std::pair<int, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    const auto reach = [&](int node, const Arrival& arrival) {
        if (arrival.cost >= arrivals[node].cost) return;
        arrivals[node] = arrival;
        open.emplace(arrival.cost, node);
    };
    const int goal = end + wishes.all * count;
    const auto mayGo = [&](int next) { return next == end || next == start || mayLieBetween(formats()[next], source, target); };
    // What an image says of its colours is known of the ends alone: in between there is RGB.
    const auto mayBeByVideo = [&](int from, int to) {
        const auto isEnd = [&](int format, int is) { return format == is || formats()[format].model == Model::rgb; };
        return formats()[to].canonical == to && formats()[from].description.depth && formats()[to].description.depth &&
               (from == start || to == end) && isEnd(from, start) && isEnd(to, end);
    };
    reach(start, {.cost = 0});
    while (!open.empty()) {
        const auto [cost, node] = open.top();
        open.pop();
        if (node == goal) break;
        if (cost > arrivals[node].cost) continue;
        const int format = node % count, before = node / count;
        for (const Conversion& c : conversions()) {
            const Function& function = functions()[c.function];
            if (!function.takesSteps || function.sourcePlanes == 0) continue;
            if (c.source != format || !mayGo(c.target) || (!c.matrix.empty() && c.matrix != wishes.matrix)) continue;
            const std::optional<int> met = wishes.met(c);
            if (met && (*met & before) == 0)
                reach(c.target + (before | *met) * count,
                      {cost + costOf(formats()[format], formats()[c.target]) + costOf(function, c), node, &c});
        }
        for (const int next : moves[format])
            if (mayGo(next)) reach(next + before * count, {cost + moving, node});
        for (int next = 0; wishes.metByVideo && next < count; ++next) {
            if (next == format || !mayGo(next) || !mayBeByVideo(format, next)) continue;
            const std::optional<int> met = wishes.metByVideo(formats()[format], formats()[next]);
            if (met && (*met & before) == 0)
                reach(next + (before | *met) * count,
                      {cost + byVideo + costOf(formats()[format], formats()[next]), node, nullptr, true});
        }
    }
    if (arrivals[goal].cost == INT32_MAX) return {};

    std::vector<Step> steps;
    for (int node = goal; arrivals[node].from >= 0; node = arrivals[node].from) {
        const Conversion* c = arrivals[node].by;
        Step step{.conversion = c,
                  .source = &formats()[arrivals[node].from % count],
                  .target = &formats()[node % count],
                  .isByVideo = arrivals[node].isByVideo};
        if (c) step.sourceOrder = c->sourceOrder, step.targetOrder = c->targetOrder;
        steps.insert(steps.begin(), step);
    }
    if (steps.empty() && &source != &target) steps.push_back({.source = &source, .target = &target});
    if (!steps.empty() && steps.front().conversion) steps.front().sourceOrder = chained(steps.front().sourceOrder, source.order);
    if (!steps.empty() && steps.back().conversion) steps.back().targetOrder = chained(steps.back().targetOrder, target.order);
    if (!steps.empty()) steps.front().source = &source, steps.back().target = &target;
    return steps;
}

Site wholeSites(std::span<const Step> steps) {
    // Chroma in planes of its own may be filled in part, pixels that share an element may not.
    if (steps.size() == 1 && steps[0].isByVideo)
        return {std::lcm(steps[0].source->planes[0].width, steps[0].target->planes[0].width), 1};
    Site site;
    const auto add = [&](Site other) { site = {std::lcm(site.width, other.width), std::lcm(site.height, other.height)}; };
    for (const Step& s : steps) {
        if (s.conversion)
            add(functions()[s.conversion->function].site);
        else
            add(s.source->site), add(s.target->site);
    }
    return site;
}

}  // namespace catalog
