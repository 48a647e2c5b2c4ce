// Packed 16-bit words to three bytes a pixel and back. Bytes stand in the order of the fields, from the lowest upward.
#include "frame/passes.h"
#include "packed16/packing.h"
#include "simd/fields.h"
#include "zelcc/packed_sources.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr Layout wordPixels = layoutOf({{0, 2}}), bytePixels = layoutOf({{0, 3}});

struct ExpandWords {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        expand565(row.out[0] + block * blockPixels * 3, row.in[0] + block * blockPixels * 2);
    }
};

struct PackWords {
    static constexpr int sites = blockPixels;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        ToWords<Format565>::store<Order::natural>(row, 0, block, From3::load(row, block));
    }
};

constexpr Conversion wordsToBytes{.site = {1, 1}, .from = wordPixels, .to = bytePixels, .block = withoutConstants<ExpandWords>};
constexpr Conversion bytesToWords{.site = {1, 1}, .from = bytePixels, .to = wordPixels, .block = withoutConstants<PackWords>};

}  // namespace

namespace rows {

constexpr Conversion zeliBGR565ToBGR_16u8u_C3R = wordsToBytes;
constexpr Conversion zeliRGB565ToRGB_16u8u_C3R = wordsToBytes;
constexpr Conversion zeliBGRToBGR565_8u16u_C3R = bytesToWords;
constexpr Conversion zeliRGBToRGB565_8u16u_C3R = bytesToWords;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_triples16 ~, 1
#define ZEL_GROUP triples16
#include "frame/table.h"
