#include "catalog/path.h"

#include <algorithm>
#include <bit>
#include <queue>

namespace catalog {
namespace {

enum class Model { colour, lumaChroma, gray, other };

// What a format can hold of an image.
struct Content {
    Model model;
    int bits;
    int siteWidth = 1, siteHeight = 1;  // of chroma
    bool hasAlpha = false;
    bool isPacked = false;  // into words or bits
};

bool has(const Format& f, std::string_view channel) {
    for (const Plane& p : f.usedPlanes())
        for (std::string_view rest = p.channels; !rest.empty();) {
            const size_t end = std::min(rest.find(' '), rest.size());
            if (rest.substr(0, end) == channel) return true;
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    return false;
}

int channelsOf(const Plane& p) { return 1 + static_cast<int>(std::ranges::count(p.channels, ' ')); }

Content contentOf(const Format& f) {
    constexpr int bits[] = {1, 8, 8, 16, 16, 32, 24, 53};  // floats by what is certain of them
    Content c{.model = Model::other, .bits = bits[static_cast<int>(f.element)], .hasAlpha = has(f, "A")};
    c.isPacked = f.planes[0].bytes < channelsOf(f.planes[0]) * bytesOf(f.element);
    if (c.isPacked && f.element == Element::u16) c.bits = has(f, "-") && channelsOf(f.planes[0]) == 4 ? 4 : 5;
    for (const Plane& p : f.usedPlanes())
        c.siteWidth = std::max(c.siteWidth, p.width), c.siteHeight = std::max(c.siteHeight, p.height);
    if (has(f, "R")) c.model = Model::colour;
    if (has(f, "Cb")) c.model = Model::lumaChroma;
    if (f.planeCount == 1 && has(f, "Y") && !has(f, "Cb") && !has(f, "C1")) c.model = Model::gray;
    return c;
}

bool mayLieBetween(const Content& way, const Content& source, const Content& target) {
    const bool inColour = source.model != Model::gray && target.model != Model::gray;
    return way.model != Model::other && way.bits >= std::min(source.bits, target.bits) &&
           way.siteWidth <= std::max(source.siteWidth, target.siteWidth) &&
           way.siteHeight <= std::max(source.siteHeight, target.siteHeight) &&
           (way.hasAlpha || !source.hasAlpha || !target.hasAlpha) && (way.model != Model::gray || !inColour);
}

// Where a sample of a channel lies: so many bytes from the first of its plane's unit.
struct Place {
    int plane, offset;
};

// A channel that repeats in a unit, as luma of packed 4:2:2 does, has a place for each pixel.
std::vector<Place> placesOf(const Format& f, std::string_view channel) {
    std::vector<Place> found;
    for (int i = 0; i < f.planeCount; ++i) {
        int offset = 0;
        for (std::string_view rest = f.planes[i].channels; !rest.empty(); offset += bytesOf(f.element)) {
            const size_t end = std::min(rest.find(' '), rest.size());
            if (rest.substr(0, end) == channel) found.push_back({i, offset});
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return found;
}

std::vector<std::string_view> namesOf(const Format& f) {
    std::vector<std::string_view> names;
    for (const Plane& p : f.usedPlanes())
        for (std::string_view rest = p.channels; !rest.empty();) {
            const size_t end = std::min(rest.find(' '), rest.size());
            if (!std::ranges::count(names, rest.substr(0, end))) names.push_back(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    return names;
}

// Pixels along a side that one sample of the channel serves.
ZelSize siteOf(const Format& f, const std::vector<Place>& places) {
    const Plane& p = f.planes[places[0].plane];
    return {p.width / static_cast<int>(places.size()), p.height};
}

// Costs, so that moving samples is dearer than a function that does the same, and losing some is dearest. Of functions that are
// alike, one that writes alpha is taken, and one that has its planes in the order of the formats.
enum Cost {
    otherOrder = 1,
    leavesAlpha = 2,
    sameSamples = 20,
    moving = 30,
    otherSites = 60,
    otherModel = 100,
    otherDepth = 100,
    lumaAsItIs = 190
};

int costOf(const Content& source, const Content& target) {
    if (source.bits != target.bits) return otherDepth + (source.model != target.model ? otherModel : 0);
    // Gray has the full range, which luma seldom has: over colours it gets it.
    if (source.model == Model::lumaChroma && target.model == Model::gray) return lumaAsItIs;
    if (source.model != target.model || source.model == Model::other) return otherModel;
    const bool sameSites = source.siteWidth == target.siteWidth && source.siteHeight == target.siteHeight;
    return sameSites ? sameSamples : otherSites;
}

int costOf(const Function& function, const Conversion& c) {
    const auto isSorted = [](int format, const std::array<int8_t, 4>& order) {
        return std::is_sorted(order.begin(), order.begin() + formats()[format].planeCount);
    };
    const bool isInOrder = isSorted(c.source, c.sourceOrder) && isSorted(c.target, c.targetOrder);
    return (isInOrder ? 0 : otherOrder) + (function.keepsAlpha ? leavesAlpha : 0);
}

// The format that a node of the graph is, for those that differ in the order of planes alone.
int representative(int format) {
    const Format& f = formats()[format];
    return f.sameAs.empty() ? format : *formatNumber(f.sameAs);
}

// For each plane of the representative the plane of the format.
std::array<int8_t, 4> orderOf(const Format& f) {
    if (f.sameAs.empty()) return {0, 1, 2, 3};
    const Format& r = formats()[*formatNumber(f.sameAs)];
    std::array<int8_t, 4> order{};
    for (int i = 0; i < r.planeCount; ++i)
        for (int j = 0; j < f.planeCount; ++j)
            if (f.planes[j].channels == r.planes[i].channels) order[i] = static_cast<int8_t>(j);
    return order;
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
};

}  // namespace

std::optional<int> formatNumber(std::string_view name) {
    const auto found = std::ranges::lower_bound(formats(), name, {}, &Format::name);
    if (found == formats().end() || found->name != name) return {};
    return static_cast<int>(found - formats().begin());
}

std::optional<int> functionNumber(std::string_view name) {
    const auto found = std::ranges::lower_bound(functions(), name, {}, &Function::name);
    if (found == functions().end() || found->name != name) return {};
    return static_cast<int>(found - functions().begin());
}

bool canRearrange(const Format& source, const Format& target) {
    const Content a = contentOf(source), b = contentOf(target);
    if (source.element != target.element || a.isPacked || b.isPacked || a.model == Model::gray || source.grid != target.grid)
        return false;
    for (const std::string_view name : namesOf(target)) {
        const auto from = placesOf(source, name), to = placesOf(target, name);
        if (from.empty() && name == "A") continue;
        if (from.empty()) return false;
        const ZelSize one = siteOf(source, from), other = siteOf(target, to);
        if (one.width != other.width || one.height != other.height) return false;
    }
    return std::ranges::all_of(namesOf(source), [&](std::string_view name) { return name == "A" || has(target, name); });
}

Wishes byMethod(std::string_view matrix, std::string_view method) {
    const auto met = [method](const Conversion& c) -> std::optional<int> {
        if (!method.empty() && (c.method == method || c.verb == method)) return 1;
        // Fields are mixed where chroma gets or loses rows in a plain way.
        const bool mixesRows = contentOf(formats()[c.source]).siteHeight != contentOf(formats()[c.target]).siteHeight;
        if (method == "interlaced" && mixesRows) return {};
        const bool isPlain = c.method.empty() || (c.method == "bilinear" && method != "ahd");
        const bool keepsMeaning = c.verb.empty() || (c.verb == "reduce" && c.source != c.target);
        return isPlain && keepsMeaning ? std::optional(0) : std::nullopt;
    };
    return {.matrix = matrix, .met = met, .all = method.empty() ? 0 : 1};
}

std::optional<std::vector<Step>> path(const Format& source, const Format& target, const Wishes& wishes) {
    const int count = static_cast<int>(formats().size());
    const int start = static_cast<int>(&source - formats().data()), end = static_cast<int>(&target - formats().data());
    const Content first = contentOf(source), last = contentOf(target);
    static const std::vector<Content> contents = [] {
        std::vector<Content> all;
        for (const Format& f : formats()) all.push_back(contentOf(f));
        return all;
    }();
    static const std::vector<std::vector<int>> moves = [] {  // formats to which samples of each are moved
        std::vector<std::vector<int>> all(formats().size());
        for (size_t from = 0; from < all.size(); ++from)
            for (size_t to = 0; to < all.size(); ++to)
                if (from != to && formats()[to].sameAs.empty() && canRearrange(formats()[from], formats()[to]))
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
    const int goal = representative(end) + wishes.all * count;
    const auto mayGo = [&](int next) {
        return next == representative(end) || next == representative(start) || mayLieBetween(contents[next], first, last);
    };
    reach(representative(start), {.cost = 0});
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
                      {cost + costOf(contents[format], contents[c.target]) + costOf(function, c), node, &c});
        }
        for (const int next : moves[format])
            if (mayGo(next)) reach(next + before * count, {cost + moving, node, nullptr});
    }
    if (arrivals[goal].cost == INT32_MAX) return {};

    std::vector<Step> steps;
    for (int node = goal; arrivals[node].from >= 0; node = arrivals[node].from) {
        const Conversion* c = arrivals[node].by;
        Step step{.conversion = c,
                  .source = &formats()[arrivals[node].from % count],
                  .target = &formats()[node % count],
                  .sourceOrder = c ? c->sourceOrder : std::array<int8_t, 4>{0, 1, 2, 3},
                  .targetOrder = c ? c->targetOrder : std::array<int8_t, 4>{0, 1, 2, 3}};
        steps.insert(steps.begin(), step);
    }
    if (steps.empty() && start != end) steps.push_back({nullptr, &source, &target, {0, 1, 2, 3}, {0, 1, 2, 3}});
    if (!steps.empty() && steps.front().conversion)
        steps.front().sourceOrder = chained(steps.front().sourceOrder, orderOf(source));
    if (!steps.empty() && steps.back().conversion) steps.back().targetOrder = chained(steps.back().targetOrder, orderOf(target));
    if (!steps.empty()) steps.front().source = &source, steps.back().target = &target;
    return steps;
}

ZelSize wholeSites(std::span<const Step> steps) {
    ZelSize size{1, 1};
    for (const Step& s : steps) {
        for (const Format* f : {s.source, s.target})
            for (const Plane& p : f->usedPlanes())
                if (f->element != Element::u1) size = {std::max(size.width, p.width), std::max(size.height, p.height)};
        if (!s.conversion) continue;
        // Rules that look at rows around take fields of two, or eights of them.
        if (s.conversion->method == "interlaced") size.height = std::max(size.height, 4);
        if (s.conversion->method == "filter") size.height = 8;
    }
    if (size.width == 4) size.height = std::max(size.height, 4);  // means between 4:1:1 and 4:2:0 are of squares
    return size;
}

uint32_t opaque(Element element) {
    switch (element) {
        case Element::u8:
            return 255;
        case Element::s8:
            return 127;
        case Element::u16:
            return 65535;
        case Element::s16:
            return 32767;
        case Element::s32:
            return INT32_MAX;
        case Element::f32:
            return std::bit_cast<uint32_t>(1.0f);
        default:
            return 1;
    }
}

}  // namespace catalog
