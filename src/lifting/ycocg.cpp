// The lifting transforms: packed pixels to and from three planes of luma and differences, between bytes, words and dwords.
#include "lifting/ycocg.h"

#include "frame/layouts.h"
#include "frame/passes.h"
#include "simd/samples.h"
#include "zelcc/lifting.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr int blockWords = vectorBytes / 2;

// A channel of bytes in its first or second half, as words in the order of the pixels.
struct Halves {
    Words first, second;

    ZEL_INLINE explicit Halves(Bytes channel) {
        const Bytes spread = spreadHalves(channel);
        first = lowBytes(spread);
        second = highBytes(spread);
    }
};

ZEL_INLINE void storePlanes(const Row& row, size_t vector, const auto& x) {
    storeVector(row.out[0] + vector * vectorBytes, x.y);
    storeVector(row.out[1] + vector * vectorBytes, x.co);
    storeVector(row.out[2] + vector * vectorBytes, x.cg);
}

// Bytes to planes of words. No sum of bytes leaves a word.
template <class Pixels, class Transform>
struct BytesToWords : FewOperations {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = FromPacked<Pixels>::load(row, block);
        const Halves b(t.a), g(t.b), r(t.c);
        storePlanes(row, 2 * block, Transform::forward(Colour<Words>{b.first, g.first, r.first}));
        storePlanes(row, 2 * block + 1, Transform::forward(Colour<Words>{b.second, g.second, r.second}));
    }
};

// Planes of words to bytes: what wraps in a word is then limited to a byte.
template <class To, class Transform>
struct WordsToBytes : FewOperations {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto plane = [&](int i) { return loadInPackOrder(row.in[i] + block * 2 * vectorBytes); };
        const PackOrder y = plane(0), co = plane(1), cg = plane(2);
        const auto low = Transform::inverse(LumaAndDifferences<Words>{(Words)y.first, (Words)co.first, (Words)cg.first});
        const auto high = Transform::inverse(LumaAndDifferences<Words>{(Words)y.second, (Words)co.second, (Words)cg.second});
        To::template store<Order::natural>(row, 0, block,
                                           {packBytes(low.b, high.b), packBytes(low.g, high.g), packBytes(low.r, high.r)});
    }
};

// Bytes to bytes, red first, with the differences around 128. What no byte holds is limited.
struct BiasedForward : FewOperations {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = FromPacked<Interleaved3>::load(row, block);
        const auto low = half(lowBytes(t.a), lowBytes(t.b), lowBytes(t.c)),
                   high = half(highBytes(t.a), highBytes(t.b), highBytes(t.c));
        ToPlanes::store<Order::natural>(row, 0, block,
                                        {packBytes(low.y, high.y), packBytes(low.co, high.co), packBytes(low.cg, high.cg)});
    }

  private:
    ZEL_INLINE static LumaAndDifferences<Words> half(Words r, Words g, Words b) {
        const auto x = Plain::forward(Colour<Words>{b, g, r});
        return {x.y, x.co + 128, x.cg + 128};
    }
};

struct BiasedInverse : FewOperations {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = FromPlanes::load(row, block);
        const auto low = half(lowBytes(t.a), lowBytes(t.b), lowBytes(t.c)),
                   high = half(highBytes(t.a), highBytes(t.b), highBytes(t.c));
        ToPacked3::store<Order::natural>(row, 0, block,
                                         {packBytes(low.r, high.r), packBytes(low.g, high.g), packBytes(low.b, high.b)});
    }

  private:
    ZEL_INLINE static Colour<Words> half(Words y, Words co, Words cg) {
        return Plain::inverse(LumaAndDifferences<Words>{y, co - 128, cg - 128});
    }
};

// Words to planes of words. The reversible transform wraps like its inverse.
template <class Pixels>
struct ReversibleWords : FewOperations {
    static constexpr int sites = blockWords;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Pixels::load(row.in[0] + block * sites * Pixels::bytes);
        storePlanes(row, block, Reversible::forward(Colour<Words>{x.a, x.b, x.c}));
    }
};

// The plain one by means, which need no more than 16 bits. With s = (R + B + 1) >> 1,
//
//     Y = (s - ((R ^ B) & 1) + G + 1) >> 1,    Co = -((B - R) >> 1),    Cg = -((s - G) >> 1)
//
// are the same numbers. A difference of 32768, one beyond the words, is bounded in the leading columns and wraps in the last
// ones. Meant: with one of both throughout, such pixels would change.
enum class Narrowing { saturated, wrapped };

template <class Pixels, Narrowing narrowing>
struct PlainWords : FewOperations {
    static constexpr int sites = blockWords;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Pixels::load(row.in[0] + block * sites * Pixels::bytes);
        const UWords b = fromZero(x.a), g = fromZero(x.b), r = fromZero(x.c);
        const UWords outer = mean(r, b), y = mean(outer - ((r ^ b) & 1), g);
        storePlanes(row, block,
                    LumaAndDifferences<Words>{(Words)fromZero((Words)y), halfDifference(r, b), halfDifference(g, outer)});
    }

  private:
    // By 32768, from signed to unsigned or back.
    ZEL_INLINE static UWords fromZero(Words v) { return (UWords)(v ^ splatWord(0x8000)); }

    // -((b - a) >> 1)
    ZEL_INLINE static Words halfDifference(UWords a, UWords b) {
        const auto negated = (Words)fromZero((Words)mean(b, ~a));
        return narrowing == Narrowing::saturated ? subtractSignedSaturated(Words{}, negated) : difference(Words{}, negated);
    }
};

// Words to planes of dwords: nothing wraps.
template <class Pixels, class Transform>
struct WordsToDwords : FewOperations {
    static constexpr int sites = blockWords;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto x = Pixels::load(row.in[0] + block * sites * Pixels::bytes);
        const auto spread = [](Words v) { return (Words)spreadHalves((Bytes)v); };
        const Words b = spread(x.a), g = spread(x.b), r = spread(x.c);
        storePlanes(row, 2 * block, Transform::forward(Colour<Dwords>{lowWords(b), lowWords(g), lowWords(r)}));
        storePlanes(row, 2 * block + 1, Transform::forward(Colour<Dwords>{highWords(b), highWords(g), highWords(r)}));
    }
};

// Packed words. The fourth one of a pixel is the caller's.
struct ToThreeWords {
    ZEL_INLINE static void store(const Row& row, size_t block, const Colour<Words>& x) {
        InterleavedThree<Depth16s>::store(row.out[0] + block * 3 * vectorBytes, {x.b, x.g, x.r});
    }
};
struct ToFourWords {
    ZEL_INLINE static void store(const Row& row, size_t block, const Colour<Words>& x) {
        storeFour<2>(row.out[0] + block * 4 * vectorBytes, Channels<Words>{x.b, x.g, x.r}, splatWord(int(row.alpha.bits)));
    }
};

template <class To, class Transform>
struct WordsToWords : FewOperations {
    static constexpr int sites = blockWords;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto plane = [&](int i) { return (Words)loadBytes(row.in[i] + block * vectorBytes); };
        To::store(row, block, Transform::inverse(LumaAndDifferences<Words>{plane(0), plane(1), plane(2)}));
    }
};

// Planes of dwords to words: the sums wrap in dwords, and their low words are stored.
template <class To, class Transform>
struct DwordsToWords : FewOperations {
    static constexpr int sites = blockWords;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const auto half = [&](int i) ZEL_INLINE_LAMBDA {
            const auto plane = [&](int p) { return (Dwords)loadBytes(row.in[p] + (2 * block + unsigned(i)) * vectorBytes); };
            return Transform::inverse(LumaAndDifferences<Dwords>{plane(0), plane(1), plane(2)});
        };
        const auto first = half(0), second = half(1);
        To::store(row, block, {evenWords(first.b, second.b), evenWords(first.g, second.g), evenWords(first.r, second.r)});
    }
};

constexpr Layout packed(int bytes) { return layoutOf({{0, uint8_t(bytes)}}); }
constexpr Layout planes(uint8_t bytes) { return layoutOf({{0, bytes}, {1, bytes}, {2, bytes}}); }

constexpr Conversion conversion(Layout from, Layout to, Kernel rule) {
    return {.site = {1, 1}, .from = from, .to = to, .block = rule, .checks = planesFirst};
}

// Without a minimum, an image without pixels is no error. Which exports have one is part of what they promise.
constexpr Conversion ofAnySize(Conversion c) {
    c.minimum = {INT32_MIN, INT32_MIN};
    return c;
}

template <class Pixels, class Transform>
constexpr Conversion bytesToWords = conversion(packed(Pixels::bytes), planes(2),
                                               withoutConstants<BytesToWords<Pixels, Transform>>);
template <class Pixels>
constexpr Conversion reversibleWords = ofAnySize(conversion(packed(Pixels::bytes), planes(2),
                                                            withoutConstants<ReversibleWords<Pixels>>));
template <class Pixels>
constexpr Conversion plainWords = [] {
    Conversion c = conversion(packed(Pixels::bytes), planes(2), withoutConstants<PlainWords<Pixels, Narrowing::saturated>>);
    c.tail = withoutConstants<PlainWords<Pixels, Narrowing::wrapped>>;
    c.blockColumns = wholeBlocks<4>;
    return c;
}();
template <class Pixels, class Transform>
constexpr Conversion wordsToDwords = conversion(packed(Pixels::bytes), planes(4),
                                                withoutConstants<WordsToDwords<Pixels, Transform>>);

template <class To, int channels, class Transform>
constexpr Conversion wordsToBytes = ofAnySize(conversion(planes(2), packed(channels),
                                                         withoutConstants<WordsToBytes<To, Transform>>));
template <class To, int channels, class Transform>
constexpr Conversion wordsToWords = conversion(planes(2), packed(2 * channels), withoutConstants<WordsToWords<To, Transform>>);
template <class To, int channels, class Transform>
constexpr Conversion dwordsToWords = conversion(planes(4), packed(2 * channels), withoutConstants<DwordsToWords<To, Transform>>);

using Words3 = InterleavedThree<Depth16s>;
using Words4 = InterleavedFour<Depth16s>;

}  // namespace

namespace rows {

constexpr auto zeliBGRToYCoCg_8u16s_C3P3R = bytesToWords<Interleaved3, Plain>;
constexpr auto zeliBGRToYCoCg_8u16s_C4P3R = bytesToWords<Interleaved4, Plain>;
constexpr auto zeliBGRToYCoCg_Rev_8u16s_C3P3R = bytesToWords<Interleaved3, Reversible>;
constexpr auto zeliBGRToYCoCg_Rev_8u16s_C4P3R = bytesToWords<Interleaved4, Reversible>;
constexpr auto zeliSBGRToYCoCg_16s_C3P3R = plainWords<Words3>;
constexpr auto zeliSBGRToYCoCg_16s_C4P3R = plainWords<Words4>;
constexpr auto zeliSBGRToYCoCg_16s32s_C3P3R = wordsToDwords<Words3, Plain>;
constexpr auto zeliSBGRToYCoCg_16s32s_C4P3R = ofAnySize(wordsToDwords<Words4, Plain>);
constexpr auto zeliSBGRToYCoCg_Rev_16s_C3P3R = reversibleWords<Words3>;
constexpr auto zeliSBGRToYCoCg_Rev_16s_C4P3R = reversibleWords<Words4>;
constexpr auto zeliSBGRToYCoCg_Rev_16s32s_C3P3R = wordsToDwords<Words3, Reversible>;
constexpr auto zeliSBGRToYCoCg_Rev_16s32s_C4P3R = ofAnySize(wordsToDwords<Words4, Reversible>);
constexpr auto zeliRGBToYCoCg_8u_C3P3R = conversion(packed(3), planes(1), withoutConstants<BiasedForward>);

constexpr auto zeliYCoCgToBGR_16s8u_P3C3R = wordsToBytes<ToPacked3, 3, Plain>;
constexpr auto zeliYCoCgToBGR_16s8u_P3C4R = withAlpha(wordsToBytes<ToPacked4, 4, Plain>);
constexpr auto zeliYCoCgToBGR_Rev_16s8u_P3C3R = wordsToBytes<ToPacked3, 3, Reversible>;
constexpr auto zeliYCoCgToBGR_Rev_16s8u_P3C4R = withAlpha(wordsToBytes<ToPacked4, 4, Reversible>);
constexpr auto zeliYCoCgToRGB_8u_P3C3R = ofAnySize(conversion(planes(1), packed(3), withoutConstants<BiasedInverse>));
constexpr auto zeliYCoCgToSBGR_16s_P3C3R = ofAnySize(wordsToWords<ToThreeWords, 3, Plain>);
constexpr auto zeliYCoCgToSBGR_16s_P3C4R = withAlpha(wordsToWords<ToFourWords, 4, Plain>);
constexpr auto zeliYCoCgToSBGR_32s16s_P3C3R = dwordsToWords<ToThreeWords, 3, Plain>;
constexpr auto zeliYCoCgToSBGR_32s16s_P3C4R = withAlpha(dwordsToWords<ToFourWords, 4, Plain>);
constexpr auto zeliYCoCgToSBGR_Rev_16s_P3C3R = ofAnySize(wordsToWords<ToThreeWords, 3, Reversible>);
constexpr auto zeliYCoCgToSBGR_Rev_16s_P3C4R = withAlpha(ofAnySize(wordsToWords<ToFourWords, 4, Reversible>));
constexpr auto zeliYCoCgToSBGR_Rev_32s16s_P3C3R = ofAnySize(dwordsToWords<ToThreeWords, 3, Reversible>);
constexpr auto zeliYCoCgToSBGR_Rev_32s16s_P3C4R = withAlpha(ofAnySize(dwordsToWords<ToFourWords, 4, Reversible>));

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_lifting ~, 1
#define ZEL_GROUP lifting
#include "frame/table.h"
