// RGB and BGR to and from hue, lightness and saturation.
#include "zelcc/hls.h"

#include "colorimetric/hls_rules.h"
#include "colorimetric/shared_rules.h"

namespace zel::ZEL_LEVEL {
namespace {

using Unsigned = WordSamples<false, CutOff>;
using Signed = WordSamples<true, CutOff>;
using SignedNearest = WordSamples<true, ToNearest>;

// In the leading columns the reciprocals of bytes are those of the processor.
template <class Layout, int pixels>
constexpr Conversion toHls = byteConversion<Layout, Layout, ToHls<Bare>, ToHls<Refined>>(wholeBlocks<pixels>);
template <class Layout>
constexpr Conversion fromHls = byteConversion<Layout, Layout, FromHls>();

template <template <class> class Pixels>
constexpr Conversion fromHlsOfSigned = sampleConversion<SignedNearest, Pixels>(
    floatKernel<SignedNearest, Pixels, FromHlsOfSigned<Multiplying>>, floatKernel<Signed, Pixels, FromHlsOfSigned<Dividing>>);

// Blue first. These look at the steps, and all but one before the size.
constexpr Conversion checkingSteps(Conversion c, Checks checks = {Check::pointers, Check::planes, Check::steps, Check::size}) {
    c.checks = checks;
    return c;
}
template <class From, class To>
constexpr Conversion bgrToHls = checkingSteps(byteConversion<From, To, ToHls<Bare>, ToHls<Refined>, reversed>(wholeBlocks<4>));
template <class From, class To>
constexpr Conversion hlsToBgr = checkingSteps(byteConversion<From, To, FromHls, FromHls, inOrder, reversed>());

}  // namespace

namespace rows {

constexpr auto zeliRGBToHLS_8u_C3R = toHls<Packed3, 8>;
constexpr auto zeliRGBToHLS_8u_AC4R = toHls<ColoursOf4, 4>;
constexpr auto zeliRGBToHLS_16u_C3R = floatConversion<Unsigned, ThreeSamples, ToHlsOfWords>;
constexpr auto zeliRGBToHLS_16u_AC4R = floatConversion<Unsigned, FourSamples, ToHlsOfWords>;
constexpr auto zeliRGBToHLS_16s_C3R = floatConversion<Signed, ThreeSamples, ToHlsOfWords>;
constexpr auto zeliRGBToHLS_16s_AC4R = floatConversion<Signed, FourSamples, ToHlsOfWords>;
constexpr auto zeliRGBToHLS_32f_C3R = floatConversion<FloatSamples, ThreeSamples, ToHlsOfFloats>;
constexpr auto zeliRGBToHLS_32f_AC4R = floatConversion<FloatSamples, FourSamples, ToHlsOfFloats>;

constexpr auto zeliBGRToHLS_8u_AC4R =
    checkingSteps(bgrToHls<ColoursOf4, ColoursOf4>, {Check::pointers, Check::size, Check::steps});
constexpr auto zeliBGRToHLS_8u_C3P3R = bgrToHls<Packed3, Planes3>;
constexpr auto zeliBGRToHLS_8u_P3C3R = bgrToHls<Planes3, Packed3>;
constexpr auto zeliBGRToHLS_8u_P3R = bgrToHls<Planes3, Planes3>;
constexpr auto zeliBGRToHLS_8u_AC4P4R = bgrToHls<Packed4, Planes4>;
constexpr auto zeliBGRToHLS_8u_AP4C4R = bgrToHls<Planes4, Packed4>;
constexpr auto zeliBGRToHLS_8u_AP4R = bgrToHls<Planes4, Planes4>;

constexpr auto zeliHLSToRGB_8u_C3R = fromHls<Packed3>;
constexpr auto zeliHLSToRGB_8u_AC4R = fromHls<ColoursOf4>;
constexpr auto zeliHLSToRGB_16u_C3R = floatConversion<Unsigned, ThreeSamples, FromHlsOfUnsigned<false>, FromHlsOfUnsigned<true>>;
constexpr auto zeliHLSToRGB_16u_AC4R = floatConversion<Unsigned, FourSamples, FromHlsOfUnsigned<false>, FromHlsOfUnsigned<true>>;
constexpr auto zeliHLSToRGB_16s_C3R = fromHlsOfSigned<ThreeSamples>;
constexpr auto zeliHLSToRGB_16s_AC4R = fromHlsOfSigned<FourSamples>;
constexpr auto zeliHLSToRGB_32f_C3R =
    floatConversion<FloatSamples, ThreeSamples, FromHlsOfFloats<Multiplying>, FromHlsOfFloats<Dividing>>;
constexpr auto zeliHLSToRGB_32f_AC4R =
    floatConversion<FloatSamples, FourSamples, FromHlsOfFloats<Multiplying>, FromHlsOfFloats<Dividing>>;

constexpr auto zeliHLSToBGR_8u_C3P3R = hlsToBgr<Packed3, Planes3>;
constexpr auto zeliHLSToBGR_8u_P3C3R = hlsToBgr<Planes3, Packed3>;
constexpr auto zeliHLSToBGR_8u_P3R = hlsToBgr<Planes3, Planes3>;
constexpr auto zeliHLSToBGR_8u_AC4P4R = hlsToBgr<Packed4, Planes4>;
constexpr auto zeliHLSToBGR_8u_AP4C4R = hlsToBgr<Planes4, Packed4>;
constexpr auto zeliHLSToBGR_8u_AP4R = hlsToBgr<Planes4, Planes4>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_hls ~, 1
#define ZEL_GROUP hls
#include "frame/table.h"
