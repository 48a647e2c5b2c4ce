#include "exports.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "library.h"

namespace bench {

namespace {

using catalog::Extra;
using catalog::Model;
using enum Layout;
using enum Variant;

struct NamedLayout {
    std::string_view name;
    Layout layout;
};
constexpr NamedLayout subsampled[] = {{"yuv422p", i422}, {"yuv420p", i420}, {"yuv411p", i411}, {"yuv410p", i410},
                                      {"nv12", nv12},    {"nv21", nv21},    {"nv11", nv11},    {"yuyv422", yuy2},
                                      {"yvyu422", yvyu}, {"uyvy422", uyvy}, {"monob", bits}};

// Spaces that RGB is converted to and from. Their packed pixels are painted as RGB is, or as luma and chroma.
struct Space {
    std::string_view prefix;  // of its formats' names
    Variant to, from;
    bool isLumaChroma = false;
};
constexpr Space spaces[] = {
    {"xyz", toXyz, fromXyz}, {"ycc", toYcc, fromYcc}, {"hls", toHls, fromHls, true},      {"hsv", toHsv, fromHsv, true},
    {"luv", toLuv, fromLuv}, {"lab", toLab, fromLab}, {"ycocgr", reversible, reversible}, {"ycocg", lift, lift}};

const Space* spaceOf(const catalog::Format& format) {
    for (const Space& space : spaces)
        if (format.name.starts_with(space.prefix)) return &space;
    return nullptr;
}

Layout layoutOf(const catalog::Format& format) {
    for (const auto& [name, layout] : subsampled)
        if (format.name == name) return layout;
    if (format.model == Model::gray || format.model == Model::mosaic) return gray;
    if (format.planeCount == 4) return i444a;
    if (format.planeCount == 3) return format.model == Model::rgb ? rgbPlanes : i444;
    const Space* const space = spaceOf(format);
    if (format.model == Model::ycbcr || (space && space->isLumaChroma)) return hasAlpha(format) ? ycc32 : ycc24;
    const std::string_view channels = format.planes[0].channels;
    const bool isBlueFirst = format.isPacked ? channels.ends_with('B') : channels.starts_with('B');
    if (isBlueFirst) return hasAlpha(format) ? bgra32 : bgr24;
    return hasAlpha(format) ? rgba32 : rgb24;
}

Depth depthOf(const catalog::Format& format) {
    constexpr Depth depths[] = {Depth::u8, Depth::u8, Depth::s8, Depth::u16, Depth::s16, Depth::s32, Depth::f32, Depth::f64};
    if (!format.isPacked || format.element == catalog::Element::u1) return depths[static_cast<int>(format.element)];
    if (format.bits == 4) return Depth::word444;
    return format.name.find("565") != format.name.npos ? Depth::word565 : Depth::word555;
}

Format formatOf(int number) {
    const catalog::Format& format = catalog::formats()[static_cast<size_t>(number)];
    return {layoutOf(format), depthOf(format)};
}

struct NamedVariant {
    std::string_view name;  // of a verb, method or matrix
    Variant variant;
};
constexpr NamedVariant namedVariants[] = {{"gamma", curve},        {"linear", inverseCurve},    {"twist", matrix},
                                          {"tone-mean", byMean},   {"tone-maximum", byMaximum}, {"dither", dithered},
                                          {"bilinear", mosaic},    {"ahd", homogeneity},        {"interlaced", fieldwise},
                                          {"filter", interpolate}, {"709", matrix709},          {"709-full", matrix709Full}};

Variant variantOf(const catalog::Function& function, const catalog::Conversion& c) {
    if (function.sourcePlanes == 0) return inPlace;
    if (function.takes(Extra::slice)) return smooth;
    for (const auto& [name, variant] : namedVariants)
        if (c.verb == name || c.method == name || c.matrix == name) return variant;
    if (const Space* space = spaceOf(catalog::formats()[c.target])) return space->to;
    if (const Space* space = spaceOf(catalog::formats()[c.source])) return space->from;
    return replicate;
}

struct Reduction {
    std::string_view suffix;
    Variant variant;
    ZelDitherType dither;
    int noise;
};
constexpr Reduction reductions[] = {{"", toLevels, zelDitherNone, 0},
                                    {"/bayer", ordered, zelDitherBayer, 0},
                                    {"/bayer+noise", orderedWithNoise, zelDitherBayer, 20},
                                    {"/fs", floydSteinberg, zelDitherFS, 0},
                                    {"/fs+noise", floydSteinbergWithNoise, zelDitherFS, 20},
                                    {"/jjn", jarvisJudiceNinke, zelDitherJJN, 0},
                                    {"/stucki", stucki, zelDitherStucki, 0},
                                    {"/stucki+noise", stuckiWithNoise, zelDitherStucki, 20}};

// Bits are black or white by a threshold, or the error goes on by one method.
bool serves(const catalog::Function& function, const Reduction& reduction) {
    return !function.takes(Extra::threshold) || reduction.dither == zelDitherNone || reduction.suffix == "/stucki";
}

// The planes of red, green and blue are in the order in which the function takes them, and those of luma and chroma in the
// format's.
catalog::Side sideOf(const Image& image, const catalog::Format& format, const std::array<int8_t, 4>& order) {
    catalog::Side side;
    for (size_t i = 0; i < static_cast<size_t>(format.planeCount); ++i) {
        const Plane& plane = image.planes[format.model == Model::rgb ? i : static_cast<size_t>(order[i])];
        side.planes[i] = plane.data;
        side.steps[i] = plane.step;
    }
    return side;
}

// Without what twins differ in.
Task ownTaskOf(Task task) {
    constexpr std::pair<Layout, Layout> twins[] = {{bgr24, rgb24}, {bgra32, rgba32}, {nv21, nv12}, {yvyu, yuy2}, {uyvy, yuy2}};
    for (const auto& [twin, first] : twins) {
        if (task.source.layout == twin) task.source.layout = first;
        if (task.destination.layout == twin) task.destination.layout = first;
    }
    if (task.variant == matrix709 || task.variant == matrix709Full) task.variant = replicate;
    return task;
}

std::vector<Export> allExports() {
    std::vector<Export> all;
    for (const catalog::Conversion& c : catalog::conversions()) {
        const catalog::Function& function = catalog::functions()[c.function];
        if (!all.empty() && all.back().function == &function) continue;  // one of its formats will do
        const Format from = formatOf(c.source), to = formatOf(c.target);
        const std::string name(function.name);
        if (c.verb != "reduce") {
            all.push_back({name, {from, to, variantOf(function, c)}, &function, &c});
            continue;
        }
        for (const Reduction& r : reductions)
            if (serves(function, r))
                all.push_back({name + std::string(r.suffix), {from, to, r.variant}, &function, &c, r.dither, r.noise});
    }
    return all;
}

}  // namespace

Call Export::bind(const Image& source, const Image& destination) const {
    const auto formats = catalog::formats();
    const auto [width, height] = source.size;
    catalog::Call call{.source = sideOf(source, formats[conversion->source], conversion->sourceOrder),
                       .destination = sideOf(destination, formats[conversion->target], conversion->targetOrder),
                       .size = {width, height},
                       .region = {0, 0, width, height},
                       .alpha = static_cast<uint32_t>(catalog::opaque(function->to)),
                       .coefficients = parameters<float>,
                       .noise = noise,
                       .levels = function->from == function->to ? 8 : 256,
                       .dither = dither};
    if (function->takesDoubles) call.coefficients = parameters<double>;
    std::shared_ptr<uint8_t[]> memory;
    if (function->takes(Extra::temporary)) {
        const int64_t step = function->temporaryStep(width);
        memory = std::make_shared<uint8_t[]>(static_cast<size_t>(step * catalog::Function::temporaryRows));
        call.temporary = memory.get();
        call.temporaryStep = static_cast<int32_t>(step);
    }
    return [callAt = function->callAt, entry = bound(function->entry), call, memory] { return callAt(entry, call); };
}

std::span<const Export> exports() {
    static const std::vector<Export> all = allExports();
    return all;
}

const std::string& taskNameOf(const Export& row) {
    return std::ranges::find(exports(), ownTaskOf(row.task), [](const Export& other) { return ownTaskOf(other.task); })->name;
}

}  // namespace bench
