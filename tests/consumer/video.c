#include <stdio.h>
#include <zelvideo.h>

int main(void) {
    const ZelvFormat rgb = {zelvInterleaved, "RGB", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
    const ZelvFormat yuv = {zelvPlanar, "YUV", zelv420, 10, zelvLowBits, zelvMatrix2020, zelvLimited, zelvLeft, 0, 0};
    const uint8_t white[3] = {255, 255, 255};
    uint16_t y = 0, u = 0, v = 0;
    const uint8_t* const from[1] = {white};
    uint8_t* const to[3] = {(uint8_t*)&y, (uint8_t*)&u, (uint8_t*)&v};
    const int32_t fromStep[1] = {3}, toStep[3] = {2, 2, 2};
    const ZelSize onePixel = {1, 1};
    ZelvPlan plan;
    if (zelvMakePlan(&plan, &rgb, &yuv, NULL) != zelStsNoErr) return 1;
    if (zelvConvert(&plan, from, fromStep, to, toStep, onePixel) != zelStsNoErr) return 1;
    printf("video: %d %d %d\n", y, u, v);
    return y == 940 && u == 512 && v == 512 ? 0 : 1;
}
