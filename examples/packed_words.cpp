#include "packed_words.h"

#include <utility>

#include "side_by_side.h"

namespace {

using Packing = ZelStatus (*)(const uint8_t* pSrc, int32_t srcStep, uint16_t* pDst, int32_t dstStep, ZelSize roiSize);

// Red lies in the lowest bits.
struct Format {
    const char* name;
    int red, green, blue;  // bits
    const char* cutName;
    Packing cut;
    const char* ditheredName;
    Packing dithered;
};

#define FORMAT(name, red, green, blue)                                                                  \
    {                                                                                                   \
#name, red, green, blue, "zeliYCbCrToRGB" #name "_8u16u_C3R", zeliYCbCrToRGB##name##_8u16u_C3R, \
            "zeliYCbCrToRGB" #name "Dither_8u16u_C3R", zeliYCbCrToRGB##name##Dither_8u16u_C3R           \
    }
constexpr Format formats[] = {FORMAT(565, 5, 6, 5), FORMAT(555, 5, 5, 5), FORMAT(444, 4, 4, 4)};
#undef FORMAT

// As a display shows it: the highest value of a field is full brightness.
uint8_t shown(int word, int shift, int bits) {
    const int highest = (1 << bits) - 1;
    return static_cast<uint8_t>(((word >> shift & highest) * 255 + highest / 2) / highest);
}

Picture shown(const std::vector<uint16_t>& words, ZelSize size, const Format& format) {
    Picture picture(size);
    uint8_t* pixel = picture.pixels.data();
    for (const uint16_t word : words) {
        *pixel++ = shown(word, 0, format.red);
        *pixel++ = shown(word, format.red, format.green);
        *pixel++ = shown(word, format.red + format.green, format.blue);
    }
    return picture;
}

}  // namespace

Study packedWords(const Picture& original) {
    const ZelSize size = original.size;
    Study study;
    Picture ycc(size);
    if (!study.call("zeliRGBToYCbCr_8u_C3R", size, [&] {
            return zeliRGBToYCbCr_8u_C3R(original.pixels.data(), original.step(), ycc.pixels.data(), ycc.step(), size);
        }))
        return study;

    std::vector<uint16_t> words(std::size_t(size.width) * std::size_t(size.height));
    for (const Format& format : formats) {
        const auto pack = [&](const char* name, Packing packing) {
            return study.call(name, size,
                              [&] { return packing(ycc.pixels.data(), ycc.step(), words.data(), 2 * size.width, size); });
        };
        if (!pack(format.cutName, format.cut)) continue;
        const Picture cut = shown(words, size, format);
        if (!pack(format.ditheredName, format.dithered)) continue;
        const Picture dithered = shown(words, size, format);
        const std::string name = std::string("rgb") + format.name;
        study.keep(name, beside(cut, dithered));
        study.keep(name + "-bands", bandsBeside(original, cut, dithered));
    }
    return study;
}
