// Kernels of rules on the three channels of 8-bit pixels, in fixed point. The fourth byte of a pixel stays.
#pragma once

#include "frame/layouts.h"
#include "frame/passes.h"
#include "simd/lifted_pixels.h"

namespace zel::ZEL_LEVEL {

// Rule::of turns lifted channels into words, of which the results are the bytes that saturation gives.
template <class Pixels, class Rule>
struct WordKernel {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const size_t at = block * blockPixels * Pixels::bytes;
        const Lifted x = Pixels::load(row.in[0] + at);
        const WordPixel first = Rule::of(x.first), second = Rule::of(x.second);
        Pixels::store(row.out[0] + at, first, second);
    }
};

// A linear form over channels that are bytes: (a x0 + b x1 + c x2) >> shift, exactly, in 32 bits. The multiply-add takes signed
// words; what a coefficient has beyond them is its high part.
struct Form {
    int32_t a, b, c;
};

constexpr int32_t lowPart(int32_t k) { return static_cast<int16_t>(k); }
constexpr int32_t highPart(int32_t k) { return (k - lowPart(k)) >> 16; }

// Channels in pairs for the multiply-add.
struct WordPairs {
    Words abLow, abHigh, c0Low, c0High;

    ZEL_INLINE explicit WordPairs(const WordPixel& p) {
        abLow = interleaveLow(p.a, p.b);
        abHigh = interleaveHigh(p.a, p.b);
        c0Low = interleaveLow(p.c, Words{});
        c0High = interleaveHigh(p.c, Words{});
    }
};

template <Form form, int shift>
ZEL_INLINE Words sumOf(const WordPairs& pairs) {
    static_assert(highPart(form.a) == 0 && highPart(form.b) == 0 && highPart(form.c) == 0);
    const Words ab = splatWords(form.a, form.b), c0 = splatWords(form.c, 0);
    return packWords((mulAddPairs(pairs.abLow, ab) + mulAddPairs(pairs.c0Low, c0)) >> shift,
                     (mulAddPairs(pairs.abHigh, ab) + mulAddPairs(pairs.c0High, c0)) >> shift);
}

template <class Rule>
using WordKernel3 = WordKernel<LiftedPixels<3>, Rule>;
template <class Rule>
using WordKernel4 = WordKernel<LiftedPixels<4>, Rule>;

// A kernel of the columns up to a multiple and one of the others.
template <class Block, class Tail>
constexpr Conversion bytePixels3 = {.site = {1, 1},
                                    .from = layoutOf({{0, 3}}),
                                    .to = layoutOf({{0, 3}}),
                                    .block = withoutConstants<Block>,
                                    .tail = withoutConstants<Tail>,
                                    .blockColumns = wholeBlocks<8>};
template <class Block, class Tail>
constexpr Conversion bytePixels4 = {.site = {1, 1},
                                    .from = layoutOf({{0, 4}}),
                                    .to = layoutOf({{0, 4}}),
                                    .block = withoutConstants<Block>,
                                    .tail = withoutConstants<Tail>,
                                    .blockColumns = wholeBlocks<4>,
                                    .keepsAlpha = true};

}  // namespace zel::ZEL_LEVEL
