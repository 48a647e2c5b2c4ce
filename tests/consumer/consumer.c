#include <stdio.h>
#include <zelcc.h>

int main(void) {
    const uint8_t black[3] = {0, 0, 0};
    const ZelSize onePixel = {1, 1};
    uint8_t yCbCr[3] = {0, 0, 0};
    if (zeliRGBToYCbCr_8u_C3R(black, 3, yCbCr, 3, onePixel) != zelStsNoErr) return 1;
    printf("C, %s: %d %d %d\n", zelccGetLibVersion()->version, yCbCr[0], yCbCr[1], yCbCr[2]);
    return yCbCr[0] == 16 && yCbCr[1] == 128 && yCbCr[2] == 128 ? 0 : 1;
}
