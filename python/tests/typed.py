"""A small program whose types hold: checked by mypy, and run."""

from typing import Any

import numpy as np
import numpy.typing as npt

import zelcc
from zelcc import Error, Format, convert, planes

rgb = np.zeros((48, 64, 3), np.uint8)
nv12: tuple[npt.NDArray[Any], ...] = convert(rgb, "rgb24", "nv12", matrix="709")
back: npt.NDArray[Any] = convert(nv12, "nv12", "bgr24", matrix="709")
y, cb, cr = zelcc.zeliRGBToYCbCr420_8u_C3P3R(rgb)
again = zelcc.zeliYCbCr420ToRGB_8u_P2C4R(nv12, aval=128)
zelcc.zeliGammaInv_8u_C3IR(rgb)
twisted = zelcc.zeliColorTwist32f_8u_C3R(rgb, matrix=[[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0]])
bits = zelcc.zeliReduceBits_8u1u_C1R(y, dtype=zelcc.zelDitherStucki, threshold=127)
form: Format = zelcc.formats()["nv12"]
buffer = planes(np.zeros(64 * 72, np.uint8), "nv12", 64, 48)
try:
    zelcc.zeliRGBToYCbCr_8u_C3R(rgb[:, ::2])
except Error as error:
    name: str = error.function
    print(name, error.argument, error.status)
print(back.shape, again.shape, twisted.shape, bits.shape, form.title, len(buffer))
