// Tone mapping: floats to bytes by a factor that the image itself gives, so that its maximum or twice its mean becomes white.
#include "frame/bypass.h"
#include "frame/driver.h"
#include "intensity/fill.h"
#include "simd/part.h"
#include "simd/vector.h"
#include "zelcc/intensity.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr int vectorFloats = vectorBytes / 4;

ZEL_INLINE Floats loadFloats(const uint8_t* row, size_t sample) { return (Floats)loadBytes(row + sample * 4); }
ZEL_INLINE float loadFloat(const uint8_t* row, size_t sample) {
    float x;
    __builtin_memcpy(&x, row + sample * 4, 4);
    return x;
}

// NaN is never the maximum, nor is anything below the lowest finite float.
float maximumOf(const Images& images) {
    const auto width = unsigned(images.size.width);
    constexpr float lowest = -0x1.fffffep127f;
    Floats maxima[4] = {splatFloat(lowest), splatFloat(lowest), splatFloat(lowest), splatFloat(lowest)};
    float maximum = lowest;
    const uint8_t* row = images.source[0];
    for (int rows = images.size.height; rows != 0; --rows, row = moved(row, size_t(images.sourceStep[0]))) {
        size_t i = 0;
        for (; i + 4 * vectorFloats <= width; i += 4 * vectorFloats)
            unrolled<4>([&](int v) ZEL_INLINE_LAMBDA { maxima[v] = atLeast(loadFloats(row, i + v * vectorFloats), maxima[v]); });
        for (; i + vectorFloats <= width; i += vectorFloats) maxima[0] = atLeast(loadFloats(row, i), maxima[0]);
        if (i < width && width >= vectorFloats) {
            maxima[1] = atLeast(loadFloats(row, width - vectorFloats), maxima[1]);
        } else {
            for (; i < width; ++i) maximum = loadFloat(row, i) > maximum ? loadFloat(row, i) : maximum;
        }
    }
    const Floats best = atLeast(atLeast(maxima[0], maxima[1]), atLeast(maxima[2], maxima[3]));
    for (int i = 0; i < vectorFloats; ++i) maximum = best[i] > maximum ? best[i] : maximum;
    return maximum;
}

// Sixteen sums of floats take a row from its first multiple of 16 bytes on, in turn, and are then added in their order. What
// stands before and behind whole rounds is added by single samples, as doubles. So the last bits of the sum depend on the address
// of the row. Meant: the order is part of the result, and another one would change its last bits.
double sumOfRow(const uint8_t* row, size_t width) {
    const auto address = reinterpret_cast<uintptr_t>(row);
    const size_t toBoundary = address % 4 != 0 ? 0 : (16 - address % 16) % 16 / 4;
    double sum = 0;
    size_t i = 0;
    for (const size_t lead = toBoundary < width ? toBoundary : width; i < lead; ++i) sum += double(loadFloat(row, i));
    constexpr int vectors = 16 / vectorFloats;
    Floats lanes[vectors]{};
    for (; i + 16 <= width; i += 16)
        unrolled<vectors>([&](int v) ZEL_INLINE_LAMBDA { lanes[v] += loadFloats(row, i + v * vectorFloats); });
    for (int v = 0; v < vectors; ++v)
        for (int lane = 0; lane < vectorFloats; ++lane) sum += double(lanes[v][lane]);
    for (; i < width; ++i) sum += double(loadFloat(row, i));
    return sum;
}

double meanOf(const Images& images) {
    double sum = 0;
    const uint8_t* row = images.source[0];
    for (int rows = images.size.height; rows != 0; --rows, row = moved(row, size_t(images.sourceStep[0])))
        sum += sumOfRow(row, size_t(images.size.width));
    return sum / (double(images.size.width) * double(images.size.height));
}

// Bytes of products. One that no byte holds: its low 8 bits, and one that no dword holds has none; or the nearest byte, and NaN
// has none.
struct Wrapped {
    ZEL_INLINE static Dwords bytes(Floats products) { return truncated(products) & splatDword(0xff); }
};
struct Bounded {
    ZEL_INLINE static Dwords bytes(Floats products) { return truncated(atMost(atLeast(products, Floats{}), splatFloat(255))); }
};

// From the left to the right, and samples are read before their bytes are written: a row may be scaled over itself.
template <class Rule>
class Scaling {
  public:
    ZEL_INLINE explicit Scaling(float factor) : factor_(splatFloat(factor)) {}

    ZEL_INLINE void operator()(const uint8_t* from, Destination to, size_t width) const {
        size_t i = 0;
        for (; i + vectorBytes <= width; i += vectorBytes) block(from + i * 4, to + i);
        if (i == width) return;
        if (width >= size_t{vectorBytes} && from != to && !to.bypassing()) {
            block(from + (width - vectorBytes) * 4, to + width - vectorBytes);
            return;
        }
        alignas(64) uint8_t samples[4 * vectorBytes], bytes[vectorBytes];
        copyToBuffer(samples, from + i * 4, (width - i) * 4, sizeof samples);
        block(samples, bytes);
        copyFromBuffer(to + i, bytes, width - i);
    }

  private:
    ZEL_INLINE void block(const uint8_t* from, Destination to) const {
        const auto bytes = [&](int v) { return Rule::bytes(loadFloats(from, v * vectorFloats) * factor_); };
        storeVector(to, inOrderOfQuarters(packBytes(packWords(bytes(0), bytes(1)), packWords(bytes(2), bytes(3)))));
    }

    Floats factor_;
};

template <class Rule>
void scale(const Images& images, float factor) {
    const Scaling<Rule> scaleRow(factor);
    const auto width = size_t(images.size.width);
    const uint8_t* from = images.source[0];
    uint8_t* to = images.destination[0];
    const Bypass bypassing(from != to && exceedsCaches(width * size_t(images.size.height) * 5));
    for (int rows = images.size.height; rows != 0; --rows) {
        scaleRow(from, {to, bypassing}, width);
        from = moved(from, size_t(images.sourceStep[0]));
        to = moved(to, size_t(images.destinationStep[0]));
    }
}

struct ToneMap {
    using Extras = Nothing;

    // What becomes white, and the bytes of the samples by it.
    double (*white)(const Images& images);
    void (*scale)(const Images& images, double white);
    Site site{1, 1};
    Minimum minimum{1, 1};
    OddSize oddSize = OddSize::accepted;
    Checks checks = pointersFirst;
};

// NaN is no reason to do anything else than scale.
[[maybe_unused]] ZEL_INLINE ZelStatus convert(const ToneMap& map, const Images& images, Nothing) {
    constexpr double smallestNormal = 0x1p-126;
    const double white = map.white(images);
    if (white < 0) return zelStsNoOperationWarn;
    if (white <= smallestNormal)
        fillImage(0, images.destination[0], images.destinationStep[0], images.size);
    else
        map.scale(images, white);
    return zelStsNoErr;
}

// By the maximum, which itself may become 254: the factor is rounded to a float, and the products are cut off.
constexpr ToneMap linear{[](const Images& images) { return double(maximumOf(images)); },
                         [](const Images& images, double white) { scale<Wrapped>(images, 255.0f / float(white)); }};
constexpr ToneMap byMean{[](const Images& images) { return 2 * meanOf(images); },
                         [](const Images& images, double white) { scale<Bounded>(images, float(255.0 / white)); }};

}  // namespace

namespace rows {

constexpr ToneMap zeliToneMapLinear_32f8u_C1R = linear;
constexpr ToneMap zeliToneMapMean_32f8u_C1R = byMean;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_tone_map ~, 1
#define ZEL_GROUP tone_map
#include "frame/table.h"
