// RGB to and from CIE LUV at four depths.
#include "colorimetric/luv_rules.h"
#include "zelcc/lab.h"

namespace zel::ZEL_LEVEL {
namespace {

using FromBytes = luv::FromSamples<luv::ofBytes, luv::ByReciprocals<false>>;
using FromBytesOfTail = luv::FromSamples<luv::ofBytes, luv::ByDivision>;
using FromWords = luv::FromSamples<luv::ofWords, luv::ByReciprocals<true>>;
using FromWordsOfTail = luv::FromSamples<luv::ofWords, luv::ByDivision>;

using Words16u = WordSamples<false, CutOff>;
using Words16s = WordSamples<true, CutOff>;

template <class From, class To>
constexpr auto bytesToLuv = bytesByFloats<From, To, NearlyThenExactly<luv::ToBytes>>;
template <class From, class To>
constexpr auto bytesFromLuv = bytesByFloats<From, To, CutOffBytes<FromBytes>, CutOffBytes<FromBytesOfTail>>;

template <class Samples, template <class> class Pixels>
constexpr auto wordsToLuv = floatPixels<Samples, Pixels, luv::ToWords<false>, luv::ToWords<true>>;
template <class Samples, template <class> class Pixels>
constexpr auto wordsFromLuv = floatPixels<Samples, Pixels, FromWords, FromWordsOfTail>;

template <template <class> class Pixels>
constexpr auto floatsToLuv = floatPixels<FloatSamples, Pixels, luv::ToFloats<false>, luv::ToFloats<true>>;

}  // namespace

namespace rows {

constexpr auto zeliRGBToLUV_8u_C3R = bytesToLuv<From3, ToPacked3>;
constexpr auto zeliRGBToLUV_8u_AC4R = bytesToLuv<From4, ToColoursOf4>;
constexpr auto zeliBGRToLUV_8u_C3R = bytesToLuv<FromReversed<From3>, ToPacked3>;
constexpr auto zeliRGBToLUV_16u_C3R = wordsToLuv<Words16u, ThreeSamples>;
constexpr auto zeliRGBToLUV_16u_AC4R = wordsToLuv<Words16u, FourSamples>;
constexpr auto zeliRGBToLUV_16s_C3R = wordsToLuv<Words16s, ThreeSamples>;
constexpr auto zeliRGBToLUV_16s_AC4R = wordsToLuv<Words16s, FourSamples>;
constexpr auto zeliRGBToLUV_32f_C3R = floatsToLuv<ThreeSamples>;
constexpr auto zeliRGBToLUV_32f_AC4R = floatsToLuv<FourSamples>;
constexpr auto zeliBGRToLUV_32f_C3R =
    floatPixels<FloatSamples, ThreeSamples, FromBgr<luv::ToFloats<false>>, FromBgr<luv::ToFloats<true>>>;

constexpr auto zeliLUVToRGB_8u_C3R = bytesFromLuv<From3, ToPacked3>;
constexpr auto zeliLUVToRGB_8u_AC4R = bytesFromLuv<From4, ToColoursOf4>;
constexpr auto zeliLUVToBGR_8u_C3R = bytesFromLuv<From3, ToReversed<ToPacked3>>;
constexpr auto zeliLUVToRGB_16u_C3R = wordsFromLuv<Words16u, ThreeSamples>;
constexpr auto zeliLUVToRGB_16u_AC4R = wordsFromLuv<Words16u, FourSamples>;
constexpr auto zeliLUVToRGB_16s_C3R = wordsFromLuv<Words16s, ThreeSamples>;
constexpr auto zeliLUVToRGB_16s_AC4R = wordsFromLuv<Words16s, FourSamples>;
constexpr auto zeliLUVToRGB_32f_C3R = floatPixels<FloatSamples, ThreeSamples, luv::FromFloats>;
constexpr auto zeliLUVToRGB_32f_AC4R = floatPixels<FloatSamples, FourSamples, luv::FromFloats>;
constexpr auto zeliLUVToBGR_32f_C3R = floatPixels<FloatSamples, ThreeSamples, ToBgr<luv::FromFloats>>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_luv ~, 1
#define ZEL_GROUP luv
#include "frame/table.h"
