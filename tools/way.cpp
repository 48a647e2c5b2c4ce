#include "tools/way.h"

#include <algorithm>
#include <queue>
#include <set>
#include <tuple>

#include "tools/errors.h"
#include "tools/steps.h"

namespace tool {

namespace {

// What a way loses, then its functions, then how many of them are second choice.
using Cost = std::tuple<int, int, int>;

// Functions that make chroma of the rows of two sites, and so want the whole image, and one whose image has rows by four.
constexpr std::string_view betweenRows[] = {"zeliYCbCr1620To420_8u_P3R", "zeliYCbCr420To411_8u_P3R"};
constexpr std::string_view byFourRows = "zeliYCbCr411To420_8u_P3R";

bool isBetweenRows(const Step& step) { return std::ranges::find(betweenRows, step.function().name) != std::end(betweenRows); }

constexpr int little = 1, some = 10, much = 100, never = -1;

// What an image loses in a format on the way between two others.
int lossIn(const Format& f, const Format& from, const Format& to) {
    if (&f == &from || &f == &to) return 0;
    const Space space = spaceOf(f), first = spaceOf(from), last = spaceOf(to);
    if (space == Space::gray && first != Space::gray && last != Space::gray) return never;
    int loss = 0;
    const Site site = siteOf(f), a = siteOf(from), b = siteOf(to);
    const bool countsSites = space == Space::ycbcr;
    if (countsSites && (site.width > std::max(a.width, b.width) || site.height > std::max(a.height, b.height))) loss += much;
    if (bitsOf(f) < std::min(bitsOf(from), bitsOf(to))) loss += much;
    if (isWord(f) && !isWord(from) && !isWord(to)) loss += much;
    if (hasAlpha(from) && hasAlpha(to) && !hasAlpha(f)) loss += some;
    // Samples are rounded once more in spaces that are neither end's, unless they are reversible.
    const bool isNeeded = space == first || space == last;
    const bool isExact = f.name.starts_with("ycocgr") || (space == Space::rgb && (first != last || first == Space::other));
    if (!isNeeded && !isExact) loss += space == Space::other ? 3 * little : 2 * little;
    return loss;
}

// How a function compares with others between the same formats.
int secondChoice(const Step& step) {
    if (step.exchanges) return 2;
    const bool losesAlpha = hasAlpha(step.sourceFormat()) && step.alpha != Alpha::copied && step.alpha != Alpha::written;
    const bool reducesAlpha = hasAlpha(step.targetFormat()) && step.source == step.target && step.alpha == Alpha::written;
    const auto crosses = [](const Format& f, const std::array<int8_t, 4>& order) {
        return spaceOf(f) == Space::ycbcr && !std::is_sorted(order.begin(), order.begin() + f.planeCount);
    };
    const Conversion& c = *step.conversion;
    const bool namesOtherOrder = crosses(step.sourceFormat(), c.sourceOrder) || crosses(step.targetFormat(), c.targetOrder);
    const bool isSpecial = isBetweenRows(step) || step.function().name == byFourRows;
    return isSpecial + losesAlpha + reducesAlpha + (step.alpha == Alpha::opaqueAfter) + namesOtherOrder;
}

// A format, the wishes that are met so far, and what samples of YCoCg were made of, which they become again and nothing else.
struct State {
    int format, met;
    Element origin;
    auto operator<=>(const State&) const = default;
};

struct Reached {
    Cost cost;
    State before;
    const Step* step;
};

struct Found {
    Way way;
    int loss;
};

class Search {
  public:
    Search(const Format& from, const Format& to, const Wishes& wishes) : from_(from), to_(to), demands_(wishes) {
        const State start{numberOf(from), 0, from.element};
        push(start, {}, start, nullptr);
    }

    std::optional<Found> run() {
        while (!queue_.empty()) {
            const auto [cost, state] = queue_.top();
            queue_.pop();
            if (!settled_.insert(state).second) continue;
            if (state.met == demands_.all() && state.format == numberOf(to_)) return Found{wayTo(state), std::get<0>(cost)};
            for (const Step& step : allSteps())
                if (step.source == state.format) follow(step, state, cost);
        }
        return std::nullopt;
    }

  private:
    Way wayTo(State state) const {
        Way way;
        while (const Step* step = reached_.at(state).step) {
            way.push_back(*step);
            state = reached_.at(state).before;
        }
        std::ranges::reverse(way);
        return way;
    }

    void push(const State& state, const Cost& cost, const State& before, const Step* step) {
        const auto found = reached_.find(state);
        if (found != reached_.end() && found->second.cost <= cost) return;
        reached_.insert_or_assign(state, Reached{cost, before, step});
        queue_.emplace(cost, state);
    }

    void follow(const Step& step, const State& state, const Cost& cost) {
        const auto met = demands_.metBy(step);
        if (!met || (*met & state.met)) return;
        const Format& target = step.targetFormat();
        const bool leavesLifting = spaceOf(step.sourceFormat()) == Space::ycocg && state.format != numberOf(from_);
        if (leavesLifting && state.origin != target.element) return;
        const State next{step.target, state.met | *met,
                         spaceOf(target) == Space::ycocg ? step.sourceFormat().element : target.element};
        int loss = lossIn(target, from_, to_);
        if (loss == never) return;
        const bool returnsLater = &target == &to_ && &from_ != &to_ && next.met != demands_.all();
        if (returnsLater) loss += 2 * little;
        const auto& [lost, count, second] = cost;
        push(next, {lost + loss, count + 1, second + secondChoice(step)}, state, &step);
    }

    struct Entry {
        Cost cost;
        State state;
        auto operator<=>(const Entry&) const = default;
        Entry(const Cost& c, const State& s) : cost(c), state(s) {}
    };

    const Format& from_;
    const Format& to_;
    Demands demands_;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue_;
    std::map<State, Reached> reached_;
    std::set<State> settled_;
};

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
    const Conversion& c = *conversion;
    if (c.verb.starts_with("tone-") || sourceFormat().grid >= 0) return true;
    if (c.method == "filter" || c.method == "interlaced" || isBetweenRows(*this)) return true;
    if (c.verb != "reduce") return false;
    const bool byPlaceAlone = wishes.dither.empty() || wishes.dither == "none" || wishes.dither == "bayer";
    return !byPlaceAlone || wishes.noise.value_or(0) != 0;
}

Site Step::site(const Wishes& wishes) const {
    Site site = common(siteOf(sourceFormat()), siteOf(targetFormat()));
    // The pattern of a dither has four rows; a site of fields has two of each.
    const bool repeats = conversion->method == "dither" || (conversion->verb == "reduce" && wishes.dither == "bayer");
    if (conversion->method == "interlaced" || repeats || function().name == byFourRows) site.height = std::lcm(site.height, 4);
    return site;
}

std::optional<Way> findWay(const Format& from, const Format& to, const Wishes& wishes) {
    auto found = Search(from, to, wishes).run();
    if (!found) return std::nullopt;
    // A wish alone is no reason to lose much: what meets it then isn't what it was meant for.
    if (found->loss >= much) {
        const Wishes none{.matrix = wishes.matrix};
        const auto plain = Search(from, to, none).run();
        if (plain && plain->loss < much) return std::nullopt;
    }
    return std::move(found->way);
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
        text += std::string(step.function().name) + "  " + std::string(step.sourceFormat().name) + " -> " +
                std::string(step.targetFormat().name) + (step.exchanges ? ", red and blue exchanged" : "") + "\n";
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
    if (others.empty())
        text += "Nothing is reachable from " + std::string(from.name) + " so" + (wanted.empty() ? "." : "; ask for less.");
    else
        text += "Reachable from " + std::string(from.name) + ": " + names(others);
    throw NoWayError(text);
}

}  // namespace tool
