// The noise of a call: the numbers of the generator between two bounds.
#pragma once

#include "frame/memory.h"
#include "reducebits/noise_tables.h"
#include "simd/transposed.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

class Noise {
  public:
    ZEL_INLINE Noise() : numbers_(noiseNumbers) {}

    ZEL_INLINE bool hasMemory() const { return numbers_.get(); }

    // The middle and the width of the range are rounded to floats first.
    ZEL_INLINE void fill(float low, float high) {
        constexpr double unit = 2.3283064365387e-10;  // Meant: not quite 2^-32, by which dithers would change
        const Doubles scale = splatDouble(double(high - low) * unit), mean = splatDouble(double(low + high) * 0.5);
        for (int i = 0; i < noiseNumbers; i += vectorNumbers) {
            const auto r = (Dwords)loadBytes(noiseTables.sequence + i);
            storeVector(numbers_.get() + i, narrowed(widened<0>(r) * scale + mean, widened<1>(r) * scale + mean));
        }
    }

    // Of some columns from x on, in row y.
    ZEL_INLINE void read(const uint16_t* places, int x, int y, float* to, int columns) const {
        // One by one where a vector has only four of them.
        int i = 0;
        for (; vectorNumbers > 4 && i + vectorNumbers <= columns; i += vectorNumbers)
            storeVector(to + i, at((Dwords)loadWordsAsDwords(bytesOf(places + columnOf(x + i))), y));
        for (; i < columns; ++i) to[i] = numbers_.get()[unsigned(places[columnOf(x + i)] + 2 * y) % noiseNumbers];
    }

    // Whole vectors.
    ZEL_INLINE Floats numbers(int i) const { return (Floats)loadBytes(numbers_.get() + i); }

  private:
    static constexpr int vectorNumbers = vectorBytes / 4;

    ZEL_INLINE static unsigned columnOf(int x) { return unsigned(x) % noiseNumbers; }
    ZEL_INLINE static const uint8_t* bytesOf(const uint16_t* words) { return reinterpret_cast<const uint8_t*>(words); }
    ZEL_INLINE Floats at(Dwords places, int y) const {
        return (Floats)lookUp(numbers_.get(), (places + splatDword(2 * y)) & splatDword(noiseNumbers - 1));
    }

    CallMemory<float> numbers_;
};

// The same numbers for four rows at a time. From a row to the next one every column goes on by two numbers; so where the even
// numbers stand together, and the odd ones do, one load finds a column's numbers of four rows.
class NoiseOfRows {
  public:
    static constexpr int rows = 4;

    ZEL_INLINE explicit NoiseOfRows(const Noise& noise) {
        for (int i = 0; i < half; i += vectorNumbers) {
            const auto low = (Bytes)noise.numbers(2 * i), high = (Bytes)noise.numbers(2 * i + vectorNumbers);
            storeVector(dealt_ + i, lowThenHighHalves((Bytes)evenDwords((Dwords)low, (Dwords)high)));
            storeVector(dealt_ + oddNumbers + i, lowThenHighHalves((Bytes)oddDwords((Dwords)low, (Dwords)high)));
        }
        // The first ones follow the last ones.
        for (int i = 0; i < rows; ++i) {
            dealt_[half + i] = dealt_[i];
            dealt_[oddNumbers + half + i] = dealt_[oddNumbers + i];
        }
    }

    // Of the columns from 0 on, in the rows from y on; up to a whole vector.
    ZEL_NOINLINE void read(int y, int columns, float (&to)[rows][noiseNumbers]) const {
        for (int x = 0; x < columns && x < noiseNumbers; x += vectorNumbers) {
            const auto places = (Dwords)loadWordsAsDwords(reinterpret_cast<const uint8_t*>(noiseTables.places.ofColumn + x));
            alignas(64) int32_t at[vectorNumbers];
            storeVector(at, (((places >> 1) + splatDword(y)) & splatDword(half - 1)) + (-(places & 1) & splatDword(oddNumbers)));
            Dwords v[rows];
            unrolled<rows>([&](int i) ZEL_INLINE_LAMBDA {
                v[i] = (Dwords)loadLanesAt([&](int lane) ZEL_INLINE_LAMBDA { return dealt_ + at[4 * lane + i]; });
            });
            transpose(v);
            unrolled<rows>([&](int i) ZEL_INLINE_LAMBDA { storeVector(to[i] + x, v[i]); });
        }
    }

  private:
    static constexpr int half = noiseNumbers / 2, oddNumbers = half + rows, vectorNumbers = vectorBytes / 4;

    alignas(64) float dealt_[2 * oddNumbers];
};

}  // namespace zel::ZEL_LEVEL
