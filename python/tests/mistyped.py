"""Each line here is a mistake that the types tell of."""

import numpy as np

import zelcc

rgb = np.zeros((48, 64, 3), np.uint8)
zelcc.zeliRGBToYCbCr_8u_C3R([rgb])  # one array is no list
zelcc.zeliRGBToHLS_16u_C3R(rgb)  # the depth
zelcc.zeliYCbCr420ToRGB_8u_P3C3R(rgb)  # planes are a list
zelcc.zeliRGBToYCbCr_8u_C3R(rgb, aval=1)  # no such argument
zelcc.zeliCFAToRGB_8u_C1C3R(rgb)  # an argument that is missing
zelcc.zeliRGBToYCbCr_8u_C4R(rgb)  # no such function
zelcc.convert(rgb, "rgb24", "nv13")  # no such format
zelcc.convert(rgb, "rgb24", "nv12", matrix="2021")  # no such matrix
zelcc.convert(rgb, "rgb24", "nv12", method="sharp")  # no such method
