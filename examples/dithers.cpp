#include "dithers.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "gray_picture.h"
#include "side_by_side.h"

namespace {

struct Method {
    const char* name;
    ZelDitherType type;
};
constexpr std::array<Method, 5> methods{{{"nearest", zelDitherNone},
                                         {"bayer", zelDitherBayer},
                                         {"floyd-steinberg", zelDitherFS},
                                         {"jarvis-judice-ninke", zelDitherJJN},
                                         {"stucki", zelDitherStucki}}};
constexpr std::array<int32_t, 3> levelNumbers{2, 4, 8};
constexpr int32_t someNoise = 25;

// Empty when a conversion failed; noise does not change the nearest level.
struct Reduced {
    Picture plain, noisy;
};
Reduced reduced(const Picture& original, const Method& method, int32_t levels, Study& study) {
    const auto reduce = [&](int32_t noise, Picture& result) {
        const std::string name = "zeliReduceBits_8u_C3R, " + std::string(method.name) + ", " + std::to_string(levels) +
                                 " levels, noise " + std::to_string(noise);
        return study.call(name, original.size, [&] {
            return zeliReduceBits_8u_C3R(original.pixels.data(), original.step(), result.pixels.data(), result.step(),
                                         original.size, noise, method.type, levels);
        });
    };
    Picture plain(original.size), noisy(original.size);
    if (!reduce(0, plain)) return {};
    if (method.type == zelDitherNone) return {std::move(plain), {}};
    if (!reduce(someNoise, noisy)) return {};
    return {std::move(plain), std::move(noisy)};
}

void reduceByAllMethods(const Picture& original, int32_t levels, Study& study) {
    const std::string name = std::to_string(levels) + "-levels-";
    std::vector<Reduced> results;
    std::vector<const Picture*> shown{&original};
    for (const Method& method : methods) {
        results.push_back(reduced(original, method, levels, study));
        const auto& [plain, noisy] = results.back();
        if (plain.pixels.empty()) return;
        study.keep(name + method.name, noisy.pixels.empty() ? plain : beside(plain, noisy));
    }
    for (const Reduced& result : results) shown.push_back(&result.plain);
    study.keep(name + "detail", detailBeside(shown));
}

// Black and white, in bits and back.
void reduceToBits(const Picture& original, Study& study) {
    const ZelSize size = original.size;
    GrayPicture gray(size), blackAndWhite(size);
    const int32_t bitStep = (size.width + 7) / 8;
    std::vector<uint8_t> bits(std::size_t(bitStep) * std::size_t(size.height));
    zeliRGBToGray_8u_C3C1R(original.pixels.data(), original.step(), gray.samples.data(), size.width, size);
    if (!study.call("zeliReduceBits_8u1u_C1R, stucki", size, [&] {
            return zeliReduceBits_8u1u_C1R(gray.samples.data(), size.width, bits.data(), bitStep, 0, size, 0, 0, zelDitherStucki,
                                           127);
        }))
        return;
    for (int32_t y = 0; y < size.height; ++y)
        for (int32_t x = 0; x < size.width; ++x) {
            const uint8_t byte = bits[std::size_t(y) * std::size_t(bitStep) + std::size_t(x / 8)];
            blackAndWhite.samples[std::size_t(y) * std::size_t(size.width) + std::size_t(x)] = byte << x % 8 & 0x80 ? 255 : 0;
        }
    study.keep("bits", blackAndWhite.asColour());
}

}  // namespace

Study dithers(const Picture& original) {
    Study study;
    for (const int32_t levels : levelNumbers) reduceByAllMethods(original, levels, study);
    reduceToBits(original, study);
    return study;
}
