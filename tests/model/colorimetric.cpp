// The exports of the linear spaces, a row each.
#include "model/colorimetric.h"

#include "zelcc/colorimetric.h"

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

constexpr Export converting(const char* name, Entry entry, const Layout& layout, Model model, Blocks blocks = all) {
    Export e{name, entry, layout, layout, everyPixel, blocks, model};
    e.isRowwise = true;
    return e;
}

constexpr Model bytesToXyz = onBytes<toXyz15, toXyz16>, bytesFromXyz = onBytes<fromXyz13, fromXyz16>;
constexpr Model bytesToYcc = onBytes<toYccBlock, toYccTail>, bytesFromYcc = onBytes<fromYccBlock, fromYccTail>;
constexpr Model signedToYcc = onWords<int16_t, toYccNearest, toYccCutOff, true>;

constexpr Export exports[] = {
    converting(NAMED(zeliRGBToXYZ_8u_C3R), c3of8u, bytesToXyz, blocksOf8),
    converting(NAMED(zeliRGBToXYZ_8u_AC4R), c4of8u, bytesToXyz, blocksOf4),
    converting(NAMED(zeliRGBToXYZ_16u_C3R), c3of16u, onWords<uint16_t, toXyz>),
    converting(NAMED(zeliRGBToXYZ_16u_AC4R), c4of16u, onWords<uint16_t, toXyz>),
    converting(NAMED(zeliRGBToXYZ_16s_C3R), c3of16s, onWords<int16_t, toXyz>),
    converting(NAMED(zeliRGBToXYZ_16s_AC4R), c4of16s, onWords<int16_t, toXyz>),
    converting(NAMED(zeliRGBToXYZ_32f_C3R), c3of32f, onFloats<toXyzOfFloats>),
    converting(NAMED(zeliRGBToXYZ_32f_AC4R), c4of32f, onFloats<toXyzOfFloats>),
    converting(NAMED(zeliXYZToRGB_8u_C3R), c3of8u, bytesFromXyz, blocksOf8),
    converting(NAMED(zeliXYZToRGB_8u_AC4R), c4of8u, bytesFromXyz, blocksOf4),
    converting(NAMED(zeliXYZToRGB_16u_C3R), c3of16u, onWords<uint16_t, fromXyz>),
    converting(NAMED(zeliXYZToRGB_16u_AC4R), c4of16u, onWords<uint16_t, fromXyz>),
    converting(NAMED(zeliXYZToRGB_16s_C3R), c3of16s, onWords<int16_t, fromXyz>),
    converting(NAMED(zeliXYZToRGB_16s_AC4R), c4of16s, onWords<int16_t, fromXyz>),
    converting(NAMED(zeliXYZToRGB_32f_C3R), c3of32f, onFloats<fromXyzOfFloats>),
    converting(NAMED(zeliXYZToRGB_32f_AC4R), c4of32f, onFloats<fromXyzOfFloats>),

    converting(NAMED(zeliRGBToYCC_8u_C3R), c3of8u, bytesToYcc, blocksOf8),
    converting(NAMED(zeliRGBToYCC_8u_AC4R), c4of8u, bytesToYcc, blocksOf4),
    converting(NAMED(zeliRGBToYCC_16u_C3R), c3of16u, onWords<uint16_t, toYccOfUnsigned>),
    converting(NAMED(zeliRGBToYCC_16u_AC4R), c4of16u, onWords<uint16_t, toYccOfUnsigned>),
    converting(NAMED(zeliRGBToYCC_16s_C3R), c3of16s, signedToYcc, blocksOf4),
    converting(NAMED(zeliRGBToYCC_16s_AC4R), c4of16s, signedToYcc, blocksOf4),
    converting(NAMED(zeliRGBToYCC_32f_C3R), c3of32f, onFloats<toYcc>),
    converting(NAMED(zeliRGBToYCC_32f_AC4R), c4of32f, onFloats<toYcc>),
    converting(NAMED(zeliYCCToRGB_8u_C3R), c3of8u, bytesFromYcc, blocksOf8),
    converting(NAMED(zeliYCCToRGB_8u_AC4R), c4of8u, bytesFromYcc, blocksOf4),
    converting(NAMED(zeliYCCToRGB_16u_C3R), c3of16u, onWords<uint16_t, fromYccOfUnsigned>),
    converting(NAMED(zeliYCCToRGB_16u_AC4R), c4of16u, onWords<uint16_t, fromYccOfUnsigned>),
    converting(NAMED(zeliYCCToRGB_16s_C3R), c3of16s, onWords<int16_t, fromYccOfSigned>),
    converting(NAMED(zeliYCCToRGB_16s_AC4R), c4of16s, onWords<int16_t, fromYccOfSigned>),
    converting(NAMED(zeliYCCToRGB_32f_C3R), c3of32f, onFloats<fromYcc>),
    converting(NAMED(zeliYCCToRGB_32f_AC4R), c4of32f, onFloats<fromYcc>),
};

}  // namespace

std::span<const Export> colorimetricExports() { return exports; }

}  // namespace model
