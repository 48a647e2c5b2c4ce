// RGB to and from CIE Lab, of bytes, floats, and between bytes and words.
#include "zelcc/lab.h"

#include "colorimetric/lab_rules.h"

namespace zel::ZEL_LEVEL {
namespace {

// This family takes steps as they are given, so rows of words and floats may start at any byte.
struct AnyStep : Conversion {
    static constexpr bool takesStepsAsGiven = true;
};

using FromBytes = NearlyThenExactly<lab::FromSamples<lab::ofBytes>>;
using FromWords = NearlyThenExactly<lab::FromSamples<lab::ofWords>>;

template <class Rule, OuterChannels from = inOrder, OuterChannels to = inOrder>
constexpr AnyStep floatsBy{floatConversion<FloatSamples, ThreeSamples, Rule, Rule, from, to>};

constexpr Layout packedBytes = layoutOf({{0, 3}}), packedWords = layoutOf({{0, 6}});

// Bytes B, G, R to words.
struct ToWordsKernel {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        alignas(64) uint8_t channels[3][blockPixels];
        const Triple t = From3::load(row, block);
        storeVector(channels[0], t.a);
        storeVector(channels[1], t.b);
        storeVector(channels[2], t.c);
        for (int half = 0; half < 2; ++half) {
            DwordPixel quarters[2];
            for (int i = 0; i < 2; ++i) {
                const auto floats = [&](int c) {
                    return toFloats((Dwords)loadBytesAsDwords(channels[c] + (2 * half + i) * (blockPixels / 4)));
                };
                quarters[i] = cutOff(lab::ToWords::of({floats(2), floats(1), floats(0)}));
            }
            InterleavedThree<Depth16u>::store(row.out[0] + (2 * block + unsigned(half)) * (vectorBytes * 3),
                                              {evenWords(quarters[0].a, quarters[1].a), evenWords(quarters[0].b, quarters[1].b),
                                               evenWords(quarters[0].c, quarters[1].c)});
        }
    }
};

// Words to bytes B, G, R.
struct FromWordsKernel {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        Words r[2], g[2], b[2];
        for (unsigned half = 0; half < 2; ++half) {
            const Channels<Words> x = InterleavedThree<Depth16u>::load(row.in[0] + (2 * block + half) * (vectorBytes * 3));
            DwordPixel quarters[2];
            unrolled<2>([&](auto i) ZEL_INLINE_LAMBDA {
                quarters[i] =
                    FromWords::bytes({Depth16u::toFloats<i>(x.a), Depth16u::toFloats<i>(x.b), Depth16u::toFloats<i>(x.c)});
            });
            r[half] = packWords(quarters[0].a, quarters[1].a);
            g[half] = packWords(quarters[0].b, quarters[1].b);
            b[half] = packWords(quarters[0].c, quarters[1].c);
        }
        const auto packed = [](const Words(&x)[2]) { return lowThenHighHalves(packBytes(x[0], x[1])); };
        ToPacked3::store<Order::natural>(row, 0, block, {packed(b), packed(g), packed(r)});
    }
};

template <class Rule, OuterChannels from = inOrder, OuterChannels to = inOrder>
constexpr AnyStep bytesBy{byteConversion<Packed3, Packed3, BytesRule<Rule>, BytesRule<Rule>, from, to>()};

template <class K>
constexpr AnyStep between(const Layout& from, const Layout& to) {
    return {{.site = {1, 1}, .from = from, .to = to, .block = withoutConstants<K>}};
}

}  // namespace

namespace rows {

constexpr auto zeliRGBToLab_8u_C3R = bytesBy<NearlyThenExactly<lab::ToBytes>>;
constexpr auto zeliBGRToLab_8u_C3R = bytesBy<NearlyThenExactly<lab::ToBytes>, reversed>;
constexpr auto zeliBGRToLab_8u16u_C3R = between<ToWordsKernel>(packedBytes, packedWords);
constexpr auto zeliRGBToLab_32f_C3R = floatsBy<lab::ToFloats>;
constexpr auto zeliBGRToLab_32f_C3R = floatsBy<lab::ToFloats, reversed>;

constexpr auto zeliLabToRGB_8u_C3R = bytesBy<FromBytes>;
constexpr auto zeliLabToBGR_8u_C3R = bytesBy<FromBytes, inOrder, reversed>;
constexpr auto zeliLabToBGR_16u8u_C3R = between<FromWordsKernel>(packedWords, packedBytes);
constexpr auto zeliLabToRGB_32f_C3R = floatsBy<lab::FromFloats>;
constexpr auto zeliLabToBGR_32f_C3R = floatsBy<lab::FromFloats, inOrder, reversed>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_lab ~, 1
#define ZEL_GROUP lab
#include "frame/table.h"
