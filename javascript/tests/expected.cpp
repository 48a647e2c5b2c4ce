// What each function makes of small images, called by the catalogue from the library itself: its name, the size, the status, and
// a sum of the destination's bytes. The test of the package computes the same by its own calls.
#include <cstdio>
#include <cstring>
#include <vector>

#include "catalog/registry.h"

namespace {

using catalog::Extra;

struct Image {
    const catalog::Format& format;
    std::vector<uint8_t> bytes;
    size_t offsets[4];

    Image(const catalog::Format& f, ZelSize size) : format(f), offsets{} {
        size_t end = 0;
        for (int i = 0; i < f.planeCount; ++i) {
            offsets[i] = end;
            end += static_cast<size_t>(f.planes[i].rowBytes(size.width) * f.planes[i].rows(size.height));
        }
        bytes.resize(end);
    }

    catalog::Side side(const std::array<int8_t, 4>& order, ZelSize size) {
        catalog::Side made;
        for (int i = 0; i < format.planeCount; ++i) {
            made.planes[static_cast<size_t>(i)] = bytes.data() + offsets[order[static_cast<size_t>(i)]];
            made.steps[static_cast<size_t>(i)] =
                static_cast<int32_t>(format.planes[static_cast<size_t>(order[static_cast<size_t>(i)])].rowBytes(size.width));
        }
        return made;
    }
};

uint32_t next(uint32_t& state) { return (state = state * 1664525 + 1013904223) >> 16; }

template <typename T>
void fillFloats(std::vector<uint8_t>& bytes, uint32_t& state) {
    for (size_t i = 0; i < bytes.size(); i += sizeof(T)) {
        const T value = static_cast<T>(next(state) % 1024) / 1024;
        std::memcpy(&bytes[i], &value, sizeof value);
    }
}

void fill(Image& image) {
    uint32_t state = 12345;
    if (image.format.element == catalog::Element::f32) return fillFloats<float>(image.bytes, state);
    if (image.format.element == catalog::Element::f64) return fillFloats<double>(image.bytes, state);
    for (uint8_t& byte : image.bytes) byte = static_cast<uint8_t>(next(state));
}

uint32_t sumOf(const std::vector<uint8_t>& bytes) {
    uint32_t sum = 0x811c9dc5;
    for (const uint8_t byte : bytes) sum = (sum ^ byte) * 0x01000193;
    return sum;
}

void print(const catalog::Function& function, const catalog::Conversion& conversion, ZelSize size) {
    constexpr float matrix[16] = {0.75f, 0.5f, -0.25f, 3.5f,  -0.125f, 1.25f, 0.375f, -7,
                                  0.25f, 0.5f, 0.125f, 0.25f, 0.5f,    0.25f, 0,      1};
    constexpr double doubles[3] = {0.75, 0.5, -0.25};
    Image source(catalog::formats()[conversion.source], size), target(catalog::formats()[conversion.target], size);
    fill(function.sourcePlanes ? source : target);
    catalog::Call call{.source = source.side(conversion.sourceOrder, size),
                       .destination = target.side(conversion.targetOrder, size)};
    call.size = size;
    call.region = {0, 0, size.width, size.height};
    call.alpha = static_cast<uint32_t>(catalog::opaque(function.to));
    call.coefficients = function.takesDoubles ? static_cast<const void*>(doubles) : matrix;
    call.levels = 5;
    call.noise = function.takes(Extra::reduction) ? 20 : 0;
    call.grid = zelBayerGBRG;
    std::vector<uint8_t> temporary;
    if (function.takes(Extra::temporary)) {
        call.temporaryStep = static_cast<int32_t>(function.temporaryStep(size.width));
        temporary.resize(static_cast<size_t>(catalog::Function::temporaryRows * call.temporaryStep));
        call.temporary = temporary.data();
    }
    const ZelStatus status = function.call(call);
    std::printf("%.*s %d %d %d %u\n", static_cast<int>(function.name.size()), function.name.data(), size.width, size.height,
                status, static_cast<unsigned>(sumOf(target.bytes)));
}

}  // namespace

int main() {
    const catalog::Conversion* before = nullptr;
    for (const catalog::Conversion& c : catalog::conversions()) {
        if (before && before->function == c.function) continue;  // one that looks at no meaning of its channels
        before = &c;
        for (const ZelSize size : {ZelSize{64, 16}, ZelSize{104, 8}}) print(catalog::functions()[c.function], c, size);
    }
}
