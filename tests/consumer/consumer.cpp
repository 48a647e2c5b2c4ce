#include <zelcc.h>

#include <array>
#include <cstdio>

int main() {
    constexpr std::array<uint8_t, 3> black{};
    std::array<uint8_t, 3> yCbCr{};
    if (zeliRGBToYCbCr_8u_C3R(black.data(), 3, yCbCr.data(), 3, ZelSize{1, 1}) != zelStsNoErr) return 1;
    std::printf("C++, %s: %d %d %d\n", zelccGetLibVersion()->version, yCbCr[0], yCbCr[1], yCbCr[2]);
    return yCbCr == std::array<uint8_t, 3>{16, 128, 128} ? 0 : 1;
}
