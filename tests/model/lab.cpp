// The exports of LUV and Lab, a row each.
#include "model/lab.h"

#include <limits>
#include <type_traits>

#include "zelcc/lab.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};

constexpr int all(int width) { return width; }
constexpr int blocksOf4(int width) { return width & ~3; }
constexpr int blocksOf8(int width) { return width & ~7; }

constexpr Layout c3of8u = pixels(Element::u8, 3), c4of8u = pixels(Element::u8, 4);
constexpr Layout c3of16u = pixels(Element::u16, 3), c4of16u = pixels(Element::u16, 4);
constexpr Layout c3of16s = pixels(Element::s16, 3), c4of16s = pixels(Element::s16, 4);
constexpr Layout c3of32f = pixels(Element::f32, 3), c4of32f = pixels(Element::f32, 4);
// Steps of Lab count as they are.
constexpr Layout lab16u = pixels(Element::u16, 3, 1), lab32f = pixels(Element::f32, 3, 1);

// Which side has blue first.
enum class Blue { last, firstInSource, firstInDestination };

// Integers are counted from the lowest one, cut off and limited.
template <class Sample>
float numberOf(Sample v) {
    return static_cast<float>(v - std::numeric_limits<Sample>::min());
}
template <>
float numberOf(float v) {
    return v;
}
template <class Sample>
Sample sampleOf(float v) {
    if constexpr (std::is_same_v<Sample, float>) {
        return v;
    } else {
        constexpr int lowest = std::numeric_limits<Sample>::min(), highest = std::numeric_limits<Sample>::max();
        return static_cast<Sample>(std::clamp(static_cast<int>(v), 0, highest - lowest) + lowest);
    }
}

template <class From, class To, LuvRule rule, Blue blue = Blue::last>
void converting(const Conversion& c) {
    const auto& from = c.source.layout->channels;
    const auto& to = c.destination.layout->channels;
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            FloatTriplet p;
            for (int i = 0; i < 3; ++i) p[i] = numberOf(c.source.load<From>(from[blue == Blue::firstInSource ? 2 - i : i], x, y));
            p = rule(p, {x < c.blockPixels});
            for (int i = 0; i < 3; ++i)
                c.destination.store(to[blue == Blue::firstInDestination ? 2 - i : i], x, y, sampleOf<To>(p[i]));
        }
}

constexpr Export row(const char* name, Entry entry, const Layout& source, const Layout& destination, Model model, Blocks blocks) {
    Export e{name, entry, source, destination, everyPixel, blocks, model};
    e.isRowwise = true;
    return e;
}
constexpr Export row(const char* name, Entry entry, const Layout& layout, Model model, Blocks blocks = all) {
    return row(name, entry, layout, layout, model, blocks);
}

constexpr Model luv8u = converting<uint8_t, uint8_t, luvOfBytes>, luv16u = converting<uint16_t, uint16_t, luvOfWords>,
                luv16s = converting<int16_t, int16_t, luvOfWords>, luv32f = converting<float, float, luvOfFloats>,
                rgb8u = converting<uint8_t, uint8_t, bytesOfLuv>, rgb16u = converting<uint16_t, uint16_t, wordsOfLuv>,
                rgb16s = converting<int16_t, int16_t, wordsOfLuv>, rgb32f = converting<float, float, floatsOfLuv>;
constexpr auto fromBgr = Blue::firstInSource, toBgr = Blue::firstInDestination;

constexpr Export exports[] = {
    row(NAMED(zeliRGBToLUV_8u_C3R), c3of8u, luv8u),
    row(NAMED(zeliRGBToLUV_8u_AC4R), c4of8u, luv8u),
    row(NAMED(zeliBGRToLUV_8u_C3R), c3of8u, converting<uint8_t, uint8_t, luvOfBytes, fromBgr>),
    row(NAMED(zeliRGBToLUV_16u_C3R), c3of16u, luv16u, blocksOf4),
    row(NAMED(zeliRGBToLUV_16u_AC4R), c4of16u, luv16u, blocksOf4),
    row(NAMED(zeliRGBToLUV_16s_C3R), c3of16s, luv16s, blocksOf4),
    row(NAMED(zeliRGBToLUV_16s_AC4R), c4of16s, luv16s, blocksOf4),
    row(NAMED(zeliRGBToLUV_32f_C3R), c3of32f, luv32f, blocksOf4),
    row(NAMED(zeliRGBToLUV_32f_AC4R), c4of32f, luv32f, blocksOf4),
    row(NAMED(zeliBGRToLUV_32f_C3R), c3of32f, converting<float, float, luvOfFloats, fromBgr>, blocksOf4),
    row(NAMED(zeliLUVToRGB_8u_C3R), c3of8u, rgb8u, blocksOf8),
    row(NAMED(zeliLUVToRGB_8u_AC4R), c4of8u, rgb8u, blocksOf8),
    row(NAMED(zeliLUVToBGR_8u_C3R), c3of8u, converting<uint8_t, uint8_t, bytesOfLuv, toBgr>, blocksOf8),
    row(NAMED(zeliLUVToRGB_16u_C3R), c3of16u, rgb16u, blocksOf4),
    row(NAMED(zeliLUVToRGB_16u_AC4R), c4of16u, rgb16u, blocksOf4),
    row(NAMED(zeliLUVToRGB_16s_C3R), c3of16s, rgb16s, blocksOf4),
    row(NAMED(zeliLUVToRGB_16s_AC4R), c4of16s, rgb16s, blocksOf4),
    row(NAMED(zeliLUVToRGB_32f_C3R), c3of32f, rgb32f),
    row(NAMED(zeliLUVToRGB_32f_AC4R), c4of32f, rgb32f),
    row(NAMED(zeliLUVToBGR_32f_C3R), c3of32f, converting<float, float, floatsOfLuv, toBgr>),

    row(NAMED(zeliRGBToLab_8u_C3R), c3of8u, converting<uint8_t, uint8_t, labBytesOfBytes>),
    row(NAMED(zeliBGRToLab_8u_C3R), c3of8u, converting<uint8_t, uint8_t, labBytesOfBytes, fromBgr>),
    row(NAMED(zeliBGRToLab_8u16u_C3R), c3of8u, lab16u, converting<uint8_t, uint16_t, labWordsOfBytes, fromBgr>, all),
    row(NAMED(zeliRGBToLab_32f_C3R), lab32f, converting<float, float, labOfFloats>),
    row(NAMED(zeliBGRToLab_32f_C3R), lab32f, converting<float, float, labOfFloats, fromBgr>),
    row(NAMED(zeliLabToRGB_8u_C3R), c3of8u, converting<uint8_t, uint8_t, bytesOfLab>),
    row(NAMED(zeliLabToBGR_8u_C3R), c3of8u, converting<uint8_t, uint8_t, bytesOfLab, toBgr>),
    row(NAMED(zeliLabToBGR_16u8u_C3R), lab16u, c3of8u, converting<uint16_t, uint8_t, bytesOfLabWords, toBgr>, all),
    row(NAMED(zeliLabToRGB_32f_C3R), lab32f, converting<float, float, floatsOfLab>),
    row(NAMED(zeliLabToBGR_32f_C3R), lab32f, converting<float, float, floatsOfLab, toBgr>),
};

}  // namespace

std::span<const Export> labExports() { return exports; }

}  // namespace model
