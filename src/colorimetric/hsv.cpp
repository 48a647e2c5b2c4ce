// RGB to and from hue, saturation and value, at 8 and 16 bits.
#include "colorimetric/hsv_rules.h"
#include "colorimetric/shared_rules.h"
#include "zelcc/hls.h"

namespace zel::ZEL_LEVEL {
namespace {

template <class Layout>
constexpr Conversion toHsv = byteConversion<Layout, Layout, ToHsv<AfterBlue::red>, ToHsv<AfterBlue::green>>(wholeBlocks<4>);
template <class Layout>
constexpr Conversion fromHsv = byteConversion<Layout, Layout, FromHsv>();

}  // namespace

namespace rows {

constexpr auto zeliRGBToHSV_8u_C3R = toHsv<Packed3>;
constexpr auto zeliRGBToHSV_8u_AC4R = toHsv<ColoursOf4>;
constexpr auto zeliRGBToHSV_16u_C3R = floatConversion<WordSamples<false, CutOff>, ThreeSamples, ToHsvOfWords>;
constexpr auto zeliRGBToHSV_16u_AC4R = floatConversion<WordSamples<false, CutOff>, FourSamples, ToHsvOfWords>;
constexpr auto zeliHSVToRGB_8u_C3R = fromHsv<Packed3>;
constexpr auto zeliHSVToRGB_8u_AC4R = fromHsv<ColoursOf4>;
constexpr auto zeliHSVToRGB_16u_C3R = floatConversion<WordSamples<false, ToNearest>, ThreeSamples, FromHsvOfWords>;
constexpr auto zeliHSVToRGB_16u_AC4R = floatConversion<WordSamples<false, ToNearest>, FourSamples, FromHsvOfWords>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_hsv ~, 1
#define ZEL_GROUP hsv
#include "frame/table.h"
