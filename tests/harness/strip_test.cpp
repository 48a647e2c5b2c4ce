// docs/strips.txt says at which columns and rows an image may be cut, so that its parts come out as the whole does: by which
// multiple and, behind a colon, how much the last part has to have; all of it for every conversion, and no less than is true.
// A test that fails prints the line that is right.
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// A name, a multiple of columns, one of rows, and in which case.
const std::set<std::string>& statedLines() {
    static const std::set<std::string> lines = [] {
        std::set<std::string> lines;
        std::ifstream file(ZELCC_STRIPS);
        for (std::string line; std::getline(file, line);) lines.insert(line);
        return lines;
    }();
    return lines;
}

// Sides of images: up to some blocks of the widest rule, and beside the ends of further ones. The highest multiple is one that
// leaves many places for a cut.
struct Sides {
    std::span<const int> lengths;
    int highestMultiple;
};
constexpr int widths[] = {2,  3,  4,  5,   6,   7,   8,   9,   11,  12,  15,  16,  17,  19,  20,  23, 24, 25,
                          31, 32, 33, 34,  35,  36,  37,  38,  39,  40,  47,  48,  49,  50,  51,  52, 63, 64,
                          66, 67, 68, 100, 101, 102, 103, 132, 136, 161, 196, 260, 264, 387, 390, 516};
constexpr int heights[] = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 16, 17, 18, 22, 27};
constexpr Sides columns{widths, 128}, rows{heights, 4};

using ParameterList = std::vector<model::Parameters>;

class StripConversion : public Conversion {
  protected:
    void expectStated(const ParameterList& parameters, const std::string& when) {
        std::ostringstream line;
        line << tested().name << ' ' << columnsOf(parameters) << ' ' << rowsOf(parameters) << when;
        EXPECT_TRUE(statedLines().contains(line.str())) << "strips.txt lacks the line\n" << line.str();
    }

  private:
    // An image that was converted as a whole and is converted again in two parts.
    struct Whole {
        ZelSize size;
        Pictures pictures;
        Snapshot before, after;
    };

    std::string columnsOf(const ParameterList& parameters) {
        if (!tested().entry.takesSteps) return "none";
        const auto blocks = tested().blocks;
        const int height = std::max(8, tested().geometry.minimum.height);
        return leastCuts(
            columns, unit([](const model::PlaneShape& p) { return p.xShift; }), parameters,
            [&](int width) {
                return ZelSize{width, height};
            },
            [&](Whole& whole, int cut, const model::Parameters& p) {
                // Columns of another rule may give other values, though the content at hand doesn't show it.
                const int width = whole.size.width;
                return std::min(blocks(width), cut) == blocks(cut) && std::max(blocks(width) - cut, 0) == blocks(width - cut) &&
                       isClean(whole, {cut, height}, {cut, 0}, {width - cut, height}, p);
            });
    }
    // Where no steps are given, the number of pixels has a say too.
    std::string rowsOf(const ParameterList& parameters) {
        return leastCuts(
            rows, unit([](const model::PlaneShape& p) { return p.yShift; }), parameters,
            [&](int height) {
                return ZelSize{height % 2 ? 20 : 76, height};
            },
            [&](Whole& whole, int cut, const model::Parameters& p) {
                const auto [width, height] = whole.size;
                return isClean(whole, {width, cut}, {0, cut}, {width, height - cut}, p);
            });
    }

    template <class Shift>
    int unit(Shift shift) const {
        int highest = 0;
        for (const model::Layout* layout : {&tested().source, &tested().destination})
            for (const model::PlaneShape& shape : layout->planes) highest = std::max(highest, shift(shape));
        return 1 << highest;
    }

    // The least multiple of a unit at which cuts leave no trace, whatever the content and the placement.
    template <class SizeOf, class IsClean>
    std::string leastCuts(const Sides& sides, int unit, const ParameterList& parameters, SizeOf sizeOf, IsClean isClean) {
        static constexpr Placement by8{.name = "at offset 8", .offsets = allPlanes(8), .stepUnit = 16};
        std::map<int, int> last;  // of each multiple, how much the last part has to have
        for (int multiple = unit; multiple <= sides.highestMultiple; multiple *= 2) last[multiple] = 1;
        for (const model::Parameters& p : parameters) {
            for (const int length : sides.lengths) {
                for (const Placement& placement : {aligned, by8}) {
                    for (const Content content : {Content::uniform, Content::extremes}) {
                        const auto whole = convertWhole(sizeOf(length), placement, content, p);
                        const int distance = length > 104 ? std::max(unit, 16) : unit;
                        for (int cut = distance; whole && cut < length; cut += distance) {
                            const int rest = length - cut;
                            int& needed = last[std::min(cut & -cut, sides.highestMultiple)];
                            if (rest >= needed && needed <= sides.highestMultiple && !isClean(*whole, cut, p)) needed = rest + 1;
                        }
                    }
                }
            }
        }
        // What holds of a multiple must hold of its multiples.
        for (auto i = last.rbegin(); i != last.rend(); ++i)
            if (i != last.rbegin()) i->second = std::max(i->second, std::prev(i)->second);
        for (const auto& [multiple, needed] : last) {
            if (needed > multiple) continue;
            std::ostringstream text;
            text << multiple;
            if (needed > 1) text << ':' << needed;
            return text.str();
        }
        return "none";
    }

    std::unique_ptr<Whole> convertWhole(ZelSize size, const Placement& placement, Content content, const model::Parameters& p) {
        Random random(seed() + static_cast<uint64_t>(size.width * 128 + size.height));
        const Pictures pictures = lay(size, {placement, placement}, random, content);
        std::unique_ptr<Whole> whole(new Whole{size, pictures, Snapshot(pictures.destination), Snapshot(pictures.destination)});
        if (!converts(pictures, {0, 0}, size, p)) return nullptr;
        whole->after.take();
        return whole;
    }

    bool isClean(Whole& whole, ZelSize first, std::pair<int, int> place, ZelSize second, const model::Parameters& p) {
        whole.before.restore();
        if (!converts(whole.pictures, {0, 0}, first, p) || !converts(whole.pictures, place, second, p)) return false;
        whole.after.acceptNaNs();
        return !whole.after.difference();
    }

    bool converts(const Pictures& pictures, std::pair<int, int> place, ZelSize size, const model::Parameters& p) {
        return tested().entry.call({.source = operandAt(pictures.source, place),
                                    .destination = operandAt(pictures.destination, place),
                                    .size = size,
                                    .alpha = 77,
                                    .slice = tested().slice.argument,
                                    .parameters = p}) >= zelStsNoErr;
    }

    static model::Operand operandAt(const Picture& picture, std::pair<int, int> place) {
        model::Operand operand = picture.operand();
        for (int i = 0; i < picture.layout->planeCount; ++i) {
            const model::PlaneShape& shape = picture.layout->planes[i];
            operand.planes[i] += (place.first >> shape.xShift) * shape.unitBytes +
                                 (place.second >> shape.yShift) * picture.layout->pitch(picture.planes[i].step);
        }
        return operand;
    }
};

bool isReduction(const model::Export& tested) { return std::string_view(tested.name).starts_with("zeliReduceBits"); }

// A reduction's method decides how images may be cut.
std::map<std::string, ParameterList> parametersByMethod(const model::Export& tested) {
    if (!isReduction(tested)) return {{"", {tested.firstParameters()}}};
    std::map<std::string, ParameterList> methods;
    for (const model::Parameters& p : tested.parameters) {
        const auto [noise, dither, levels] = p.integers;
        if (dither > zelDitherBayer) continue;  // nothing is done
        methods[dither == zelDitherNone                  ? " zelDitherNone"
                : dither == zelDitherBayer && noise == 0 ? " zelDitherBayer"
                                                         : " noise or error diffusion"]
            .push_back(p);
    }
    return methods;
}

TEST_P(StripConversion, ComesOutOfStripsAsOfOneCall) {
    for (const auto& [method, parameters] : parametersByMethod(tested())) expectStated(parameters, method);
}

INSTANTIATE_TEST_SUITE_P(Every, StripConversion, every(isOfWholeImages), nameOf);

}  // namespace
}  // namespace harness
