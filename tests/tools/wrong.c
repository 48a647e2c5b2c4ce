/* A function of the library that gives another result: what zelcc check is there to find. */
#include <zelcc.h>

ZelStatus zeliRGBToGray_8u_C3C1R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize) {
    (void)pSrc, (void)srcStep, (void)dstStep, (void)roiSize;
    *pDst = 1;
    return zelStsNoErr;
}
