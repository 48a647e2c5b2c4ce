// The exports of the hue spaces, a row each.
#include "model/hls.h"

#include "zelcc/hls.h"

namespace model {
namespace {

constexpr Geometry everyPixel{{1, 1}, {1, 1}};

constexpr int all(int width) { return width; }
constexpr int blocksOf4(int width) { return width & ~3; }
constexpr int blocksOf8(int width) { return width & ~7; }

// Channels in the order red, green, blue or hue first.
constexpr Layout c3 = pixels(Element::u8, 3), ac4 = pixels(Element::u8, 4), p3 = threePlanes(Element::u8), ap4 = yuva444;
constexpr Layout c3of16u = pixels(Element::u16, 3), ac4of16u = pixels(Element::u16, 4);
constexpr Layout c3of16s = pixels(Element::s16, 3), ac4of16s = pixels(Element::s16, 4);
constexpr Layout c3of32f = pixels(Element::f32, 3), ac4of32f = pixels(Element::f32, 4);

constexpr Layout blueFirst(Layout l) {
    std::swap(l.channels[0], l.channels[2]);
    return l;
}
constexpr Layout bgrPlanes = blueFirst(p3), bgraPlanes = blueFirst(ap4);

constexpr Export ofRgb(const char* name, Entry entry, const Layout& layout, Model model, Blocks blocks = all) {
    Export e{name, entry, layout, layout, everyPixel, blocks, model};
    e.isRowwise = true;
    return e;
}

constexpr Export ofBgr(const char* name, Entry entry, const Layout& source, const Layout& destination, Model model,
                       Blocks blocks = all) {
    Export e{name, entry, source, destination, everyPixel, blocks, model, Checks::stepsBeforeSize};
    e.isRowwise = true;
    e.checksSteps = true;
    return e;
}
constexpr Export sizeFirst(Export e) {
    e.checks = Checks::planesBeforeSize;
    return e;
}

constexpr Model bytesToHls = hueConversion<uint8_t, toHls<uint8_t, approximateReciprocal>, toHls<uint8_t, refinedReciprocal>>;
constexpr Model unsignedToHls = hueConversion<uint16_t, toHls<uint16_t, refinedReciprocal>>;
constexpr Model signedToHls = hueConversion<int16_t, toHls<int16_t, refinedReciprocal>>;
constexpr Model floatsToHls = hueConversion<float, toHlsOfFloats>;
constexpr Model bytesFromHls = hueConversion<uint8_t, fromHlsOfBytes>;
constexpr Model unsignedFromHls = hueConversion<uint16_t, fromHlsOfUnsigned<true>, fromHlsOfUnsigned<false>>;
constexpr Model signedFromHls = hueConversion<int16_t, fromHlsOfSignedBlock, fromHlsOfSignedTail>;
constexpr Model floatsFromHls = hueConversion<float, fromHlsOfFloats<false>, fromHlsOfFloats<true>>;
constexpr Model bytesToHsv = hueConversion<uint8_t, toHsv<true>, toHsv<false>>;

constexpr Export exports[] = {
    ofRgb(NAMED(zeliRGBToHLS_8u_C3R), c3, bytesToHls, blocksOf8),
    ofRgb(NAMED(zeliRGBToHLS_8u_AC4R), ac4, bytesToHls, blocksOf4),
    ofRgb(NAMED(zeliRGBToHLS_16u_C3R), c3of16u, unsignedToHls),
    ofRgb(NAMED(zeliRGBToHLS_16u_AC4R), ac4of16u, unsignedToHls),
    ofRgb(NAMED(zeliRGBToHLS_16s_C3R), c3of16s, signedToHls),
    ofRgb(NAMED(zeliRGBToHLS_16s_AC4R), ac4of16s, signedToHls),
    ofRgb(NAMED(zeliRGBToHLS_32f_C3R), c3of32f, floatsToHls),
    ofRgb(NAMED(zeliRGBToHLS_32f_AC4R), ac4of32f, floatsToHls),
    sizeFirst(ofBgr(NAMED(zeliBGRToHLS_8u_AC4R), bgra32, ac4, bytesToHls, blocksOf4)),
    ofBgr(NAMED(zeliBGRToHLS_8u_C3P3R), bgr24, p3, bytesToHls, blocksOf4),
    ofBgr(NAMED(zeliBGRToHLS_8u_P3C3R), bgrPlanes, c3, bytesToHls, blocksOf4),
    ofBgr(NAMED(zeliBGRToHLS_8u_P3R), bgrPlanes, p3, bytesToHls, blocksOf4),
    ofBgr(NAMED(zeliBGRToHLS_8u_AC4P4R), bgra32, ap4, bytesToHls, blocksOf4),
    ofBgr(NAMED(zeliBGRToHLS_8u_AP4C4R), bgraPlanes, ac4, bytesToHls, blocksOf4),
    ofBgr(NAMED(zeliBGRToHLS_8u_AP4R), bgraPlanes, ap4, bytesToHls, blocksOf4),

    ofRgb(NAMED(zeliHLSToRGB_8u_C3R), c3, bytesFromHls),
    ofRgb(NAMED(zeliHLSToRGB_8u_AC4R), ac4, bytesFromHls),
    ofRgb(NAMED(zeliHLSToRGB_16u_C3R), c3of16u, unsignedFromHls, blocksOf4),
    ofRgb(NAMED(zeliHLSToRGB_16u_AC4R), ac4of16u, unsignedFromHls, blocksOf4),
    ofRgb(NAMED(zeliHLSToRGB_16s_C3R), c3of16s, signedFromHls, blocksOf4),
    ofRgb(NAMED(zeliHLSToRGB_16s_AC4R), ac4of16s, signedFromHls, blocksOf4),
    ofRgb(NAMED(zeliHLSToRGB_32f_C3R), c3of32f, floatsFromHls, blocksOf4),
    ofRgb(NAMED(zeliHLSToRGB_32f_AC4R), ac4of32f, floatsFromHls, blocksOf4),
    ofBgr(NAMED(zeliHLSToBGR_8u_C3P3R), c3, bgrPlanes, bytesFromHls),
    ofBgr(NAMED(zeliHLSToBGR_8u_P3C3R), p3, bgr24, bytesFromHls),
    ofBgr(NAMED(zeliHLSToBGR_8u_P3R), p3, bgrPlanes, bytesFromHls),
    ofBgr(NAMED(zeliHLSToBGR_8u_AC4P4R), ac4, bgraPlanes, bytesFromHls),
    ofBgr(NAMED(zeliHLSToBGR_8u_AP4C4R), ap4, bgra32, bytesFromHls),
    ofBgr(NAMED(zeliHLSToBGR_8u_AP4R), ap4, bgraPlanes, bytesFromHls),

    ofRgb(NAMED(zeliRGBToHSV_8u_C3R), c3, bytesToHsv, blocksOf4),
    ofRgb(NAMED(zeliRGBToHSV_8u_AC4R), ac4, bytesToHsv, blocksOf4),
    ofRgb(NAMED(zeliRGBToHSV_16u_C3R), c3of16u, hueConversion<uint16_t, toHsvOfWords>),
    ofRgb(NAMED(zeliRGBToHSV_16u_AC4R), ac4of16u, hueConversion<uint16_t, toHsvOfWords>),
    ofRgb(NAMED(zeliHSVToRGB_8u_C3R), c3, hueConversion<uint8_t, fromHsv<uint8_t>>),
    ofRgb(NAMED(zeliHSVToRGB_8u_AC4R), ac4, hueConversion<uint8_t, fromHsv<uint8_t>>),
    ofRgb(NAMED(zeliHSVToRGB_16u_C3R), c3of16u, hueConversion<uint16_t, fromHsv<uint16_t>>),
    ofRgb(NAMED(zeliHSVToRGB_16u_AC4R), ac4of16u, hueConversion<uint16_t, fromHsv<uint16_t>>),
};

}  // namespace

std::span<const Export> hueExports() { return exports; }

}  // namespace model
