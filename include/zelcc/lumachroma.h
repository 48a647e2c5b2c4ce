/* Conversion between RGB and luma-chroma images: 4:4:4, subsampling encoders, upsampling decoders. */
#ifndef ZELCC_LUMACHROMA_H
#define ZELCC_LUMACHROMA_H

#include "zelcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 4:4:4 */
ZEL_API ZelStatus zeliRGBToYCbCr_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                           ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToBGR_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCrToRGB_8u_AC4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB_8u_C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3C3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3C4R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                          ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCrToRGB_8u_P3R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                        ZelSize roiSize);

/* RGB to subsampled */
ZEL_API ZelStatus zeliBGRToYCbCr411_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr411_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_AC4C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                              ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliBGRToYCrCb420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C3P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                             uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr420_8u_C4P2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDstY, int32_t dstYStep,
                                             uint8_t* pDstCbCr, int32_t dstCbCrStep, ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_C3P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                             const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCbCr422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb420_8u_AC4P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3],
                                              const int32_t dstStep[3], ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb422_8u_C3C2R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliRGBToYCrCb422_8u_P3C2R(const uint8_t* const pSrc[3], int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);

/* subsampled to RGB */
ZEL_API ZelStatus zeliYCbCr411ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr411ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToBGR_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr420ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr422ToBGR_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCbCr422ToRGB_8u_P3C3R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToBGR_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToBGR_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb420ToBGR_Filter_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                                    int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P2C3R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P2C4R(const uint8_t* pSrcY, int32_t srcYStep, const uint8_t* pSrcCbCr, int32_t srcCbCrStep,
                                             uint8_t* pDst, int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb420ToRGB_8u_P3C4R(const uint8_t* const pSrc[3], const int32_t srcStep[3], uint8_t* pDst,
                                             int32_t dstStep, ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb422ToBGR_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToBGR_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2C3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2C4R(const uint8_t* pSrc, int32_t srcStep, uint8_t* pDst, int32_t dstStep,
                                             ZelSize roiSize, uint8_t aval);
ZEL_API ZelStatus zeliYCrCb422ToRGB_8u_C2P3R(const uint8_t* pSrc, int32_t srcStep, uint8_t* const pDst[3], int32_t dstStep,
                                             ZelSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
