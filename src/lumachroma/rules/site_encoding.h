// RGB to YCbCr: the arithmetic of chroma sites, from sums over their pixels.
#pragma once

#include "lumachroma/rules/chroma_pairs.h"
#include "lumachroma/rules/encoding.h"

namespace zel::ZEL_LEVEL {

// From the outer channels' differences; `firstFrom` names the channel whose difference comes first. Of sites of two pixels the
// sums may be doubled.
template <class Product, int shift, Outer firstFrom, bool doubled = false>
class DifferenceChroma {
  public:
    struct Constants {
        DifferenceConstants fromA, fromC;
    };
    static constexpr int lift = Product::lift + doubled;

    ZEL_INLINE explicit DifferenceChroma(const Constants& k) : fromA_(k.fromA), fromC_(k.fromC) {}

    ZEL_INLINE ScaledPair<shift> operator()(Words a, Words b, Words c) const {
        const Words fromA = (Words)fromA_(a, c, b), fromC = (Words)fromC_(c, a, b);
        if constexpr (firstFrom == Outer::a) return {fromA, fromC};
        return {fromC, fromA};
    }

  private:
    Difference<Product> fromA_, fromC_;
};

// Exact sums in 32 bits. Gray has no colour: the weights of a sample add up to 0, so it is made of the differences between its
// own channel and the other two, whose weights fit 16 bits:
//   (other (own - other channel) + green (own - green) + bias) >> shift
struct ExactChromaWeights {
    int16_t other, green;
    int32_t bias;
};

template <int shift, Outer firstFrom>
class ExactChroma {
  public:
    struct Constants {
        ExactChromaWeights fromA, fromC;
    };
    static constexpr int lift = 0;

    ZEL_INLINE explicit ExactChroma(const Constants& k)
        : fromA_(splatWords(k.fromA.green, k.fromA.other)),
          fromC_(splatWords(k.fromC.green, -k.fromC.other)),
          biasA_(splatDword(k.fromA.bias)),
          biasC_(splatDword(k.fromC.bias)) {}

    ZEL_INLINE ChromaPair operator()(Words a, Words b, Words c) const {
        const Words fromA = sums(ChannelPairs(a - b, a - c), fromA_, biasA_),
                    fromC = sums(ChannelPairs(c - b, a - c), fromC_, biasC_);
        return firstFrom == Outer::a ? ChromaPair{fromA, fromC} : ChromaPair{fromC, fromA};
    }

  private:
    ZEL_INLINE static Words sums(const ChannelPairs& differences, Words k, Dwords bias) {
        return packWords((mulAddPairs(differences.low, k) + bias) >> shift, (mulAddPairs(differences.high, k) + bias) >> shift);
    }

    Words fromA_, fromC_;
    Dwords biasA_, biasC_;
};

}  // namespace zel::ZEL_LEVEL
