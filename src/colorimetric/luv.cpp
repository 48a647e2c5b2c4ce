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

template <class Layout, OuterChannels from = inOrder>
constexpr Conversion bytesToLuv = byteConversion<Layout, Layout, BytesRule<NearlyThenExactly<luv::ToBytes>>,
                                                 BytesRule<NearlyThenExactly<luv::ToBytes>>, from>();
template <class Layout, OuterChannels to = inOrder>
constexpr Conversion bytesFromLuv = byteConversion<Layout, Layout, BytesRule<CutOffBytes<FromBytes>>,
                                                   BytesRule<CutOffBytes<FromBytesOfTail>>, inOrder, to>(wholeBlocks<8>);

template <class Samples, template <class> class Pixels>
constexpr Conversion wordsToLuv = floatConversion<Samples, Pixels, luv::ToWords<false>, luv::ToWords<true>>;
template <class Samples, template <class> class Pixels>
constexpr Conversion wordsFromLuv = floatConversion<Samples, Pixels, FromWords, FromWordsOfTail>;

template <template <class> class Pixels, OuterChannels from = inOrder>
constexpr Conversion floatsToLuv = floatConversion<FloatSamples, Pixels, luv::ToFloats<false>, luv::ToFloats<true>, from>;
template <template <class> class Pixels, OuterChannels to = inOrder>
constexpr Conversion floatsFromLuv = floatConversion<FloatSamples, Pixels, luv::FromFloats, luv::FromFloats, inOrder, to>;

}  // namespace

namespace rows {

constexpr auto zeliRGBToLUV_8u_C3R = bytesToLuv<Packed3>;
constexpr auto zeliRGBToLUV_8u_AC4R = bytesToLuv<ColoursOf4>;
constexpr auto zeliBGRToLUV_8u_C3R = bytesToLuv<Packed3, reversed>;
constexpr auto zeliRGBToLUV_16u_C3R = wordsToLuv<Words16u, ThreeSamples>;
constexpr auto zeliRGBToLUV_16u_AC4R = wordsToLuv<Words16u, FourSamples>;
constexpr auto zeliRGBToLUV_16s_C3R = wordsToLuv<Words16s, ThreeSamples>;
constexpr auto zeliRGBToLUV_16s_AC4R = wordsToLuv<Words16s, FourSamples>;
constexpr auto zeliRGBToLUV_32f_C3R = floatsToLuv<ThreeSamples>;
constexpr auto zeliRGBToLUV_32f_AC4R = floatsToLuv<FourSamples>;
constexpr auto zeliBGRToLUV_32f_C3R = floatsToLuv<ThreeSamples, reversed>;

constexpr auto zeliLUVToRGB_8u_C3R = bytesFromLuv<Packed3>;
constexpr auto zeliLUVToRGB_8u_AC4R = bytesFromLuv<ColoursOf4>;
constexpr auto zeliLUVToBGR_8u_C3R = bytesFromLuv<Packed3, reversed>;
constexpr auto zeliLUVToRGB_16u_C3R = wordsFromLuv<Words16u, ThreeSamples>;
constexpr auto zeliLUVToRGB_16u_AC4R = wordsFromLuv<Words16u, FourSamples>;
constexpr auto zeliLUVToRGB_16s_C3R = wordsFromLuv<Words16s, ThreeSamples>;
constexpr auto zeliLUVToRGB_16s_AC4R = wordsFromLuv<Words16s, FourSamples>;
constexpr auto zeliLUVToRGB_32f_C3R = floatsFromLuv<ThreeSamples>;
constexpr auto zeliLUVToRGB_32f_AC4R = floatsFromLuv<FourSamples>;
constexpr auto zeliLUVToBGR_32f_C3R = floatsFromLuv<ThreeSamples, reversed>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_luv ~, 1
#define ZEL_GROUP luv
#include "frame/table.h"
