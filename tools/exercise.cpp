#include "tools/exercise.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

namespace tool {

namespace {

using catalog::Extra;

constexpr int marginRows = 4;        // before and behind a plane; slices reach into them
constexpr uint8_t untouched = 0xa5;  // what a destination holds before
constexpr size_t poolSamples = 1 << 16;

constexpr float twist[16] = {0.75f, 0.5f,  -0.25f, 3.5f,  -0.125f, 1.25f, 0.375f, -7.0f,
                             0.3f,  0.59f, 0.11f,  0.25f, 0.1f,    0.2f,  0.3f,   0.4f};
constexpr float weights[3] = {0.299f, 0.587f, 0.114f};
constexpr double exactWeights[3] = {0.299, 0.587, 0.114};

uint32_t next(uint64_t& state) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<uint32_t>(state >> 33);
}

// Floats of the range from black to white and a little beyond, and now and then of one that spaces such as Lab have.
double number(uint64_t& state) {
    const double unit = next(state) / 2147483648.0;
    return next(state) % 8 == 0 ? unit * 100 : unit * 1.25 - 0.125;
}

void appendSample(std::vector<uint8_t>& bytes, Element element, uint64_t& state) {
    const auto append = [&](auto value) {
        const auto* at = reinterpret_cast<const uint8_t*>(&value);
        bytes.insert(bytes.end(), at, at + sizeof value);
    };
    // One sample in four is the lowest or highest.
    const uint32_t extreme = next(state) % 8, any = next(state);
    const uint32_t word = extreme == 0   ? 0
                          : extreme == 1 ? UINT32_MAX
                          : extreme == 2 ? 0x80008080
                          : extreme == 3 ? 0x7fff7f7f
                                         : any;
    switch (element) {
        case Element::u1:
        case Element::u8:
        case Element::s8:
            return append(static_cast<uint8_t>(word));
        case Element::u16:
        case Element::s16:
            return append(static_cast<uint16_t>(word));
        case Element::s32:
            return append(static_cast<int32_t>(any % 0x40000) - 0x20000);  // what sums of 16-bit samples reach
        case Element::f32:
            return append(static_cast<float>(number(state)));
        case Element::f64:
            return append(number(state));
        case Element::u32:
            return append(word);
    }
}

// Samples of a type, of which all images of it are cut.
const std::vector<uint8_t>& pool(Element element) {
    static std::vector<uint8_t> pools[9];
    std::vector<uint8_t>& bytes = pools[static_cast<int>(element)];
    uint64_t state = 0x5eed + static_cast<uint64_t>(element);
    while (bytes.size() < poolSamples * static_cast<size_t>(catalog::bytesOf(element))) appendSample(bytes, element, state);
    return bytes;
}

template <typename Float>
uint64_t addFloats(uint64_t sum, const uint8_t* bytes, size_t count) {
    for (size_t i = 0; i + sizeof(Float) <= count; i += sizeof(Float)) {
        Float value;
        std::memcpy(&value, bytes + i, sizeof value);
        if (std::isnan(value)) value = std::numeric_limits<Float>::quiet_NaN();
        sum = addBytes(sum, &value, sizeof value);
    }
    return sum;
}

}  // namespace

uint64_t addBytes(uint64_t sum, const void* bytes, size_t count) {
    const auto* at = static_cast<const uint8_t*>(bytes);
    for (size_t i = 0; i < count; ++i) sum = (sum ^ at[i]) * 0x100000001b3;
    return sum;
}

Laid lay(const Format& format, Size size, Lay lay, bool takesSteps) {
    Planes planes;
    std::array<size_t, 4> offsets{};
    size_t bytes = 0;
    for (int i = 0; i < format.planeCount; ++i) {
        const catalog::Plane& p = format.planes[i];
        const int sample = catalog::bytesOf(format.element);
        const bool isTight = lay == Lay::boundary || !takesSteps;
        const auto step = static_cast<int32_t>(isTight ? p.rowBytes(size.width) : (p.rowBytes(size.width) + 79) / 16 * 16);
        const auto rows = static_cast<size_t>(p.rows(size.height));
        const bool isUpward = lay == Lay::upward && takesSteps;
        planes.steps[i] = isUpward ? -step : step;
        const size_t margin = static_cast<size_t>(roundUp(marginRows * step, 64));
        offsets[i] = bytes + margin + (lay == Lay::shifted ? static_cast<size_t>(sample) : 0) +
                     (isUpward ? static_cast<size_t>(step) * (rows - 1) : 0);
        bytes += (2 * margin + static_cast<size_t>(step) * rows + 127) / 64 * 64;
    }
    Laid image{format, Buffer(bytes), planes};
    for (int i = 0; i < format.planeCount; ++i) image.planes.data[i] = image.buffer.data() + offsets[i];
    return image;
}

void fill(const Laid& image, unsigned seed) {
    const auto& samples = pool(image.format.element);
    const auto bytes = static_cast<size_t>(catalog::bytesOf(image.format.element));
    size_t at = seed * 7919u % poolSamples * bytes;
    // Samples lie on their own boundaries in a plane, and its margins are a multiple of them.
    for (size_t i = 0; i < image.buffer.size();) {
        const size_t count = std::min(samples.size() - at, image.buffer.size() - i);
        std::memcpy(image.buffer.data() + i, samples.data() + at, count);
        i += count;
        at = 0;
    }
}

void clear(const Laid& image) { std::memset(image.buffer.data(), untouched, image.buffer.size()); }

uint64_t addTo(uint64_t sum, const Laid& image) {
    const Buffer& bytes = image.buffer;
    if (image.format.element == Element::f32) return addFloats<float>(sum, bytes.data(), bytes.size());
    if (image.format.element == Element::f64) return addFloats<double>(sum, bytes.data(), bytes.size());
    return addBytes(sum, bytes.data(), bytes.size());
}

int variantCount(const Function& function) {
    int count = 1;
    if (function.takes(Extra::reduction)) count = 10;
    if (function.takes(Extra::grid) || function.takes(Extra::threshold)) count = 4;
    if (function.takes(Extra::slice)) count = 4;
    if (function.takes(Extra::range)) count = 2;
    return count;
}

Exercise::Exercise(const Function& function, Size size, Lay lay, int variant, unsigned seed)
    : function_(function),
      conversion_(conversionOf(function)),
      source_(tool::lay(catalog::formats()[conversion_.source], size, lay, function.takesSteps)),
      target_(tool::lay(catalog::formats()[conversion_.target], size, lay, function.takesSteps)) {
    call_.size = {size.width, size.height};
    call_.region = {0, 0, size.width, size.height};
    for (int i = 0; i < 4; ++i) {
        const auto from = static_cast<size_t>(conversion_.sourceOrder[i]), to = static_cast<size_t>(conversion_.targetOrder[i]);
        call_.source.planes[i] = source_.planes.data[from];
        call_.source.steps[i] = source_.planes.steps[from];
        call_.destination.planes[i] = target_.planes.data[to];
        call_.destination.steps[i] = target_.planes.steps[to];
    }
    if (function.sourcePlanes > 0) {
        fill(source_, seed);
        clear(target_);
    } else {
        fill(target_, seed);
    }
    addArguments(variant);
}

void Exercise::addArguments(int variant) {
    constexpr int levels[] = {256, 2, 5, 16};
    constexpr int slices[] = {zelSliceTop | zelSliceMiddle | zelSliceBottom, zelSliceTop, zelSliceMiddle, zelSliceBottom};
    call_.alpha = 0x3f405a5a;  // 0.7514 as a float
    call_.coefficients = twist;
    if (function_.coefficientCount == 3)
        call_.coefficients = function_.takesDoubles ? static_cast<const void*>(exactWeights) : weights;
    call_.lowest = variant ? -0.5f : 0;
    call_.highest = variant ? 2.0f : 1;
    call_.dither = static_cast<ZelDitherType>(variant % 5);
    call_.noise = variant / 5 * 30;
    call_.levels = levels[static_cast<size_t>(variant) % 4];
    call_.grid = variant % 4;
    call_.slice = slices[variant % 4];
    if (function_.takes(Extra::threshold)) {
        call_.dither = variant % 2 ? zelDitherStucki : zelDitherNone;
        call_.threshold = variant < 2 ? 127 : 40;
        call_.bitOffset = variant < 2 ? 0 : 3;
    }
    if (!function_.takes(Extra::temporary)) return;
    call_.temporaryStep = static_cast<int32_t>(function_.temporaryStep(call_.size.width));
    temporary_ = Buffer(Function::temporaryRows * static_cast<size_t>(call_.temporaryStep));
    call_.temporary = temporary_.data();
}

ZelStatus Exercise::callStrip(int row, int rows) const {
    catalog::Call call = call_;
    call.size.height = rows;
    const Planes source = source_.planes.fromRow(source_.format, row), target = target_.planes.fromRow(target_.format, row);
    for (int i = 0; i < 4; ++i) {
        call.source.planes[i] = source.data[static_cast<size_t>(conversion_.sourceOrder[i])];
        call.destination.planes[i] = target.data[static_cast<size_t>(conversion_.targetOrder[i])];
    }
    return function_.call(call);
}

}  // namespace tool
