// Bytes to bits, by a threshold alone or with error diffusion. The first pixel of a row may lie at any bit of its first byte; the
// highest bit comes first.
#pragma once

#include "frame/memory.h"
#include "reducebits/wavefront.h"

namespace zel::ZEL_LEVEL {

// Bits of a row, from an offset in its first byte on. What lies before them is kept. What lies behind them in their last byte is
// kept too, but cleared in a row that begins behind the first bit of a byte and ends in the same byte. Meant:
// with these bits kept, such rows would end otherwise.
class BitRow {
  public:
    ZEL_INLINE BitRow(uint8_t* to, int offset, int width)
        : to_(to), offset_(offset), clearedBehind_(offset != 0 && offset + int64_t{width} < 8 ? 8 - offset - width : 0) {}

    // Up to 64 pixels from x on, of which the first is the highest of the bits.
    ZEL_INLINE void store(int x, uint64_t bits, int pixels) const {
        const size_t first = size_t(offset_) + size_t(x);
        uint8_t* to = to_ + first / 8;
        for (int skipped = int(first % 8); pixels > 0; skipped = 0, ++to) {
            const int n = 8 - skipped < pixels ? 8 - skipped : pixels;
            const int behind = 8 - skipped - n;
            const auto written = uint8_t(((1u << (n + clearedBehind_)) - 1) << (behind - clearedBehind_));
            *to = uint8_t((*to & ~written) | (unsigned(bits >> (64 - n)) << behind & written));
            bits <<= n;
            pixels -= n;
        }
    }

  private:
    uint8_t* to_;
    int offset_, clearedBehind_;
};

// The first pixel is the highest bit.
ZEL_INLINE uint64_t bitsAbove(const uint8_t* from, int pixels, uint8_t threshold) {
    uint64_t bits = 0;
    for (int i = 0; i < pixels; ++i) bits |= uint64_t{from[i] > threshold} << (63 - i);
    return bits;
}

ZEL_NOINLINE inline void thresholdRow(const uint8_t* from, uint8_t* to, int offset, int width, uint8_t threshold) {
    const BitRow row(to, offset, width);
    int x = (8 - offset) % 8;
    if (x > width) x = width;
    row.store(0, bitsAbove(from, x, threshold), x);
    // The bits of a mask count from the lowest.
    alignas(16) constexpr uint8_t backward[16] = {7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8};
    const Bytes pattern = everyLane(backward), limit = splatByte(threshold);
    uint8_t* bytes = to + (offset + x) / 8;
    for (; x + vectorBytes <= width; x += vectorBytes, bytes += vectorBytes / 8) {
        const Bytes pixels = shuffle(loadBytes(from + x), pattern);
        const uint64_t bits = signBits((Bytes)(pixels > limit));
        __builtin_memcpy(bytes, &bits, vectorBytes / 8);
    }
    if (x < width) row.store(x, bitsAbove(from + x, width - x, threshold), width - x);
}

// The weights of Stucki in integers: 23 / 1024 in place of 1 / 42, so a part of every error is lost, and errors are eighths of a
// level.
class BitDiffusion {
  public:
    using Cell = int32_t;
    using Vector = Dwords;
    static constexpr bool isNoisy = false;
    static constexpr int registers = independentVectors, rowsAbove = 2, margin = 2, lag = 4;
    static constexpr int32_t outside = INT32_MIN;

    ZEL_INLINE explicit BitDiffusion(uint8_t threshold) : threshold_(splatDword(threshold << 13)) {}

    template <class Near>
    ZEL_INLINE Dwords step(const Near& near, Dwords s, Floats, Dwords& error) const {
        const Dwords twos = (near.twoAbove(-1) + near.twoAbove(1)) + (near.above(-2) + near.above(2)),
                     fours = (near.twoAbove(0) + near.above(-1)) + (near.above(1) + near.before(2)),
                     eights = near.above(0) + near.before(1);
        const Dwords g = (near.twoAbove(-2) + near.twoAbove(2)) + (twos << 1) + (fours << 2) + (eights << 3);
        const Dwords sum = (s << 13) + (g << 4) + (g << 3) - g;
        const auto isSet = (Dwords)(sum > threshold_);
        error = ((sum >> 10) - (isSet & 2047)) & ~(s >> 31);
        return isSet;
    }

  private:
    Dwords threshold_;
};

// Bytes of an image and the bits that they become.
struct DiffusedBits {
    int offset, width;

    ZEL_INLINE void load(int32_t* cells, const RowPlace& place, int pixels) const {
        const uint8_t* const from = place.from + place.x;
        constexpr int n = vectorBytes / 4;
        const int whole = pixels & -n, rest = pixels & (n - 1);
        for (int i = 0; i < whole; i += n) storeVector(cells + i, loadBytesAsDwords(from + i));
        for (int i = 0; i < rest; ++i) cells[whole + i] = from[whole + i];
        prefetch<Use::read>(from + pixels, size_t(pixels));
    }
    ZEL_INLINE void store(const RowPlace& place, const int32_t* isSet, int pixels) const {
        constexpr int n = vectorBytes / 4;
        uint64_t bits = 0;
        for (int i = 0; i < pixels; i += n) bits |= uint64_t{signBits((Dwords)loadBytes(isSet + i))} << i;
        BitRow(place.to, offset, width).store(place.x, backward(bits), pixels);
    }

  private:
    ZEL_INLINE static uint64_t backward(uint64_t bits) {
        const auto exchanged = [](uint64_t v, int by, uint64_t low) { return (v >> by & low) | (v & low) << by; };
        bits = exchanged(bits, 1, 0x5555555555555555);
        bits = exchanged(bits, 2, 0x3333333333333333);
        return __builtin_bswap64(exchanged(bits, 4, 0x0f0f0f0f0f0f0f0f));
    }
};

ZEL_NOINLINE inline ZelStatus diffuseToBits(const TallImage& image, int offset, uint8_t threshold) {
    const int32_t cells = Wavefront<BitDiffusion>::cellsOf(image);
    const CallMemory<int32_t> passed(cells);
    if (!passed.get()) return zelStsMemAllocErr;
    for (int32_t i = 0; i < cells; ++i) passed.get()[i] = 0;
    Wavefront<BitDiffusion>(image, passed.get()).run(BitDiffusion(threshold), DiffusedBits{offset, image.size.width});
    return zelStsNoErr;
}

ZEL_NOINLINE inline ZelStatus reduceToBits(const uint8_t* from, int32_t fromStep, uint8_t* to, int32_t toStep, int32_t bitOffset,
                                           ZelSize size, uint32_t dither, uint8_t threshold) {
    if (!from || !to) return zelStsNullPtrErr;
    if (size.width < 1 || size.height < 1 || bitOffset < 0) return zelStsSizeErr;
    const int offset = bitOffset % 8;
    switch (dither) {
        case zelDitherNone:
            for (int y = 0; y < size.height; ++y) {
                thresholdRow(from, to, offset, size.width, threshold);
                from = moved(from, size_t(ptrdiff_t{fromStep}));
                to = moved(to, size_t(ptrdiff_t{toStep}));
            }
            return zelStsNoErr;
        case zelDitherStucki: {
            const int64_t rowBytes = (int64_t{offset} + size.width + 7) / 8;
            return diffuseToBits({.from = from,
                                  .fromStep = size_t(ptrdiff_t{fromStep}),
                                  .fromBytes = 1,
                                  .to = to,
                                  .toStep = size_t(ptrdiff_t{toStep}),
                                  .toBytes = 0,
                                  .size = size,
                                  .channels = 1,
                                  .rowsOverlap = (toStep < 0 ? -int64_t{toStep} : toStep) < rowBytes},
                                 offset, threshold);
        }
        default:
            return zelStsDitherTypeErr;
    }
}

}  // namespace zel::ZEL_LEVEL
