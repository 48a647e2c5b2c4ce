// The noise of a call: the numbers of the generator between two bounds.
#pragma once

#include "frame/memory.h"
#include "reducebits/noise_tables.h"
#include "simd/doubles.h"

namespace zel::ZEL_LEVEL {

class Noise {
  public:
    ZEL_INLINE Noise() : numbers_(noiseNumbers) {}

    ZEL_INLINE bool hasMemory() const { return numbers_.get(); }

    // The middle and the width of the range are rounded to floats first.
    ZEL_INLINE void fill(float low, float high) {
        constexpr double unit = 2.3283064365387e-10;  // not quite 2^-32, and that is meant
        const Doubles scale = splatDouble(double(high - low) * unit), mean = splatDouble(double(low + high) * 0.5);
        for (int i = 0; i < noiseNumbers; i += vectorNumbers) {
            const auto r = (Dwords)loadBytes(noiseTables.sequence + i);
            storeVector(numbers_.get() + i, narrowed(widened<0>(r) * scale + mean, widened<1>(r) * scale + mean));
        }
    }

    // Of some columns from x on, in row y.
    ZEL_INLINE void read(const uint16_t* places, int x, int y, float* to, int columns) const {
        int i = 0;
        for (; i + vectorNumbers <= columns; i += vectorNumbers)
            storeVector(to + i, at((Dwords)loadWordsAsDwords(bytesOf(places + columnOf(x + i))), y));
        for (; i < columns; ++i) to[i] = numbers_.get()[unsigned(places[columnOf(x + i)] + 2 * y) % noiseNumbers];
    }

  private:
    static constexpr int vectorNumbers = vectorBytes / 4;

    ZEL_INLINE static unsigned columnOf(int x) { return unsigned(x) % noiseNumbers; }
    ZEL_INLINE static const uint8_t* bytesOf(const uint16_t* words) { return reinterpret_cast<const uint8_t*>(words); }
    ZEL_INLINE Floats at(Dwords places, int y) const {
        return (Floats)lookUp(numbers_.get(), (places + splatDword(2 * y)) & splatDword(noiseNumbers - 1));
    }

    CallMemory<float> numbers_;
};

}  // namespace zel::ZEL_LEVEL
