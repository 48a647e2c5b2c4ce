// Kernels of rules on the three channels of 8-bit pixels, in fixed point. The fourth byte of a pixel stays.
#pragma once

#include "frame/layouts.h"
#include "frame/passes.h"

namespace zel::ZEL_LEVEL {

// Half of a block: the channels as words.
struct WordPixel {
    Words a, b, c;
};

// Rule::of turns words into words, of which the results are the bytes that saturation gives.
template <class From, class To, class Rule>
struct BytePixelKernel {
    using Constants = NoConstants;
    static constexpr int sites = blockPixels;

    ZEL_INLINE explicit BytePixelKernel(Constants) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = From::load(row, block);
        const WordPixel low = Rule::of({lowBytes(t.a), lowBytes(t.b), lowBytes(t.c)});
        const WordPixel high = Rule::of({highBytes(t.a), highBytes(t.b), highBytes(t.c)});
        To::template store<Order::natural>(row, 0, block,
                                           {packBytes(low.a, high.a), packBytes(low.b, high.b), packBytes(low.c, high.c)});
    }
};

// A linear form over channels that are bytes: (a x0 + b x1 + c x2 + bias) >> shift, exactly, in 32 bits. The multiply-add takes
// signed words, so a coefficient beyond them is split, and the products of the parts above are whole after a shift by 16.
struct Form {
    int32_t a, b, c, bias = 0;
};

constexpr int32_t lowPart(int32_t k) { return static_cast<int16_t>(k); }
constexpr int32_t highPart(int32_t k) { return (k - lowPart(k)) >> 16; }

// Channels in pairs for the multiply-add.
struct WordPairs {
    Words abLow, abHigh, c1Low, c1High;

    ZEL_INLINE explicit WordPairs(const WordPixel& p) {
        const Words one = splatWord(1);
        abLow = interleaveLow(p.a, p.b);
        abHigh = interleaveHigh(p.a, p.b);
        c1Low = interleaveLow(p.c, one);
        c1High = interleaveHigh(p.c, one);
    }
};

template <Form form, int shift>
ZEL_INLINE Words sumOf(const WordPixel& p, const WordPairs& pairs) {
    constexpr bool isSplit = highPart(form.a) != 0 || highPart(form.b) != 0 || highPart(form.c) != 0;
    static_assert(!isSplit || shift == 16);
    static_assert(lowPart(form.bias) == form.bias);
    const Words ab = splatWords(lowPart(form.a), lowPart(form.b)), c1 = splatWords(lowPart(form.c), form.bias);
    Words sum = packWords((mulAddPairs(pairs.abLow, ab) + mulAddPairs(pairs.c1Low, c1)) >> shift,
                          (mulAddPairs(pairs.abHigh, ab) + mulAddPairs(pairs.c1High, c1)) >> shift);
    if (highPart(form.a) != 0) sum += p.a * splatWord(highPart(form.a));
    if (highPart(form.b) != 0) sum += p.b * splatWord(highPart(form.b));
    if (highPart(form.c) != 0) sum += p.c * splatWord(highPart(form.c));
    return sum;
}

// A block rule of the columns up to a multiple and a tail rule of the others.
template <class Block, class Tail>
constexpr Conversion bytePixels3 = {.site = {1, 1},
                                    .from = {1, {{0, 3}}},
                                    .to = {1, {{0, 3}}},
                                    .block = withoutConstants<BytePixelKernel<From3, ToPacked3, Block>>,
                                    .tail = withoutConstants<BytePixelKernel<From3, ToPacked3, Tail>>,
                                    .blockColumns = wholeBlocks<8>};
template <class Block, class Tail>
constexpr Conversion bytePixels4 = {.site = {1, 1},
                                    .from = {1, {{0, 4}}},
                                    .to = {1, {{0, 4}}},
                                    .block = withoutConstants<BytePixelKernel<From4, ToColoursOf4, Block>>,
                                    .tail = withoutConstants<BytePixelKernel<From4, ToColoursOf4, Tail>>,
                                    .blockColumns = wholeBlocks<4>,
                                    .keepsAlpha = true};

}  // namespace zel::ZEL_LEVEL
