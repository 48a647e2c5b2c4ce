// From four-byte RGB to sites of two pixels a row by rules in words: nothing is taken apart before the products, and the sums of
// a site come from the same words as they do.
#pragma once

#include "lumachroma/kernels/encode_pairs.h"
#include "simd/lifted.h"

namespace zel::ZEL_LEVEL {

// Chroma in bytes of sites in the order of lifted pixels.
template <class From>
struct LiftedPair {
    Words first, second;
};
template <class From>
ZEL_INLINE void storeSites(uint8_t* first, uint8_t* second, LiftedPair<From> chroma) {
    From::storeSites(first, second, chroma.first, chroma.second);
}
template <class From>
ZEL_INLINE Bytes inTurn(LiftedPair<From> chroma) {
    return From::sitesInOrder(chroma.first | chroma.second << 8);
}

// Both rules give bytes, with nothing to be bounded.
template <int rows, class From, class Luma, class Chroma, class To>
struct EncodeLifted {
    using Constants = EncodeConstants<Luma, Chroma>;
    static constexpr int sites = blockPixels / 2;

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit EncodeLifted(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Part first = part<Half::first>(row, block), second = part<Half::second>(row, block);
        Bytes y{};
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            y = From::inOrder(first.luma[r], second.luma[r]);
            if constexpr (To::hasLumaStreams) storeVector(row.out[r] + block * blockPixels, y);
        });
        const auto sums = [](UWords x, UWords y) ZEL_INLINE_LAMBDA { return (Words)(From::pairMeans(x, y) >> shift); };
        const ChromaPair pair = chroma(sums(first.a, second.a), sums(first.b, second.b), sums(first.c, second.c)).unscaled();
        To::store(row, rows, block, y, LiftedPair<From>{pair.first, pair.second});
    }

  private:
    // Means of lifted samples are exact, as their low bits are 0. A mean of both rows' means of pairs is 64 times the sum of
    // samples that were lifted by 8 bits, and a mean of pairs of both rows' sums is 32 times that of samples lifted by 6.
    static_assert(Chroma::lift == 5);
    static constexpr int bits = Luma::bits, shift = bits == 8 ? 3 - rows : 0;

    struct Part {
        Words luma[rows];
        UWords a, b, c;  // of all rows together
    };

    template <Half half>
    ZEL_INLINE Part part(const Row& row, size_t block) const {
        Part part;
        unrolled<rows>([&](int r) ZEL_INLINE_LAMBDA {
            const LiftedHalf x = From::template half<half, bits>(row.in[r] + block * blockPixels * From::bytes);
            part.luma[r] = computed(luma.words(x));
            const auto together = [&](UWords& with, UWords x) ZEL_INLINE_LAMBDA {
                with = r == 0 ? x : bits == 8 ? mean(with, x) : with + x;
            };
            together(part.a, x.a);
            together(part.b, x.b);
            together(part.c, x.c);
        });
        return part;
    }
};

}  // namespace zel::ZEL_LEVEL
