// From sites of four pixels of one row to luma and planes of chroma.
#pragma once

#include "frame/layouts.h"
#include "lumachroma/rules/chroma_pairs.h"

namespace zel::ZEL_LEVEL {

template <class From, class Luma, class Chroma>
struct QuadKernel : FewOperations {
    using Constants = EncodeConstants<Luma, Chroma>;
    static constexpr int sites = blockPixels / 4;

    Luma luma;
    Chroma chroma;

    ZEL_INLINE explicit QuadKernel(const Constants& k) : luma(k.luma), chroma(k.chroma) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Triple t = From::load(row, block);
        storeVector(row.out[0] + block * blockPixels, luma(t));
        storeQuarters(row.out[1] + block * sites, row.out[2] + block * sites, chroma(sums(t.a), sums(t.b), sums(t.c)).bounded());
    }

  private:
    // Each lane has its four sums twice.
    ZEL_INLINE static Words sums(Bytes x) {
        const Dwords quads = mulAddPairs(pairSums<Chroma::lift>(x), splatWord(1));
        return packWords(quads, quads);
    }
};

}  // namespace zel::ZEL_LEVEL
