// The functions of cases.js from the library itself, at its lowest level, on the same size: a line of name and ms for each.
//     c++ -O2 -rdynamic -std=c++20 -Iinclude -Izelcore javascript/bench/native.cpp -Lbuild/release -lzelcc -lzelvideo
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "zelcc.h"
#include "zelcore.h"
#include "zelvideo.h"

// The libraries ask the program first.
extern "C" [[gnu::visibility("default")]] uint64_t zelGetEnabledCpuFeatures(void) { return zelCpuSsse3; }

namespace {

constexpr int width = 1920, height = 1080, rounds = 60;
constexpr ZelSize size{width, height};
constexpr int32_t steps[] = {width, width / 2, width / 2};
std::vector<uint8_t> rgba(width*height * 4, 90), frame(width*height * 3 / 2, 120);
uint8_t *const luma = frame.data(), *const chroma = luma + width * height;
uint8_t* const planes[] = {luma, chroma, chroma + width* height / 4};
uint8_t* const swapped[] = {luma, planes[2], chroma};

template <typename Run>
void print(const char* name, Run run) {
    double least = 1e9;
    for (int i = 0; i < rounds; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        if (run() != zelStsNoErr) return std::puts(name), void();
        least = std::min(least, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
    std::printf("%s %.4f\n", name, least);
}

void printVideo(const char* name, bool semiPlanar, bool decodes) {
    const ZelvFormat coded{
        semiPlanar ? zelvSemiPlanar : zelvPlanar, "YUV", zelv420, 8, 0, zelvMatrix2020, zelvLimited, zelvLeft, 0, 0};
    const ZelvFormat packed{zelvInterleaved, "RGBA", zelv444, 8, 0, zelvMatrixRgb, zelvFull, 0, 0, 0};
    ZelvPlan plan;
    if (zelvMakePlan(&plan, decodes ? &coded : &packed, decodes ? &packed : &coded, nullptr) != zelStsNoErr) return;
    const int32_t codedSteps[] = {width, semiPlanar ? width : width / 2, width / 2}, packedStep[] = {4 * width};
    uint8_t* const pixels[] = {rgba.data()};
    print(name, [&] {
        return decodes ? zelvConvert(&plan, planes, codedSteps, pixels, packedStep, size)
                       : zelvConvert(&plan, pixels, packedStep, planes, codedSteps, size);
    });
}

}  // namespace

int main() {
    print("zeliYCbCr420ToRGB_8u_P2C4R",
          [] { return zeliYCbCr420ToRGB_8u_P2C4R(luma, width, chroma, width, rgba.data(), 4 * width, size, 255); });
    print("zeliYCrCb420ToRGB_8u_P3C4R",
          [] { return zeliYCrCb420ToRGB_8u_P3C4R(swapped, steps, rgba.data(), 4 * width, size, 255); });
    print("zeliRGBToYCbCr420_8u_C4P2R",
          [] { return zeliRGBToYCbCr420_8u_C4P2R(rgba.data(), 4 * width, luma, width, chroma, width, size); });
    print("zeliRGBToYCrCb420_8u_AC4P3R",
          [] { return zeliRGBToYCrCb420_8u_AC4P3R(rgba.data(), 4 * width, swapped, steps, size); });
    printVideo("nv12-rgba", true, true);
    printVideo("yuv420p-rgba", false, true);
    printVideo("rgba-nv12", true, false);
    printVideo("rgba-yuv420p", false, false);
}
