"""A program that uses the installed package: by names of formats and by a C name, and not beyond the edge of an array."""

import pathlib

import numpy as np
import zelcc

package = pathlib.Path(zelcc.__file__).parent
assert str(package) == "/usr/lib/python3/dist-packages/zelcc", package
assert {"py.typed", "_native.pyi", "__pycache__"} <= {file.name for file in package.iterdir()}

rgb = np.zeros((2, 4, 3), np.uint8)
rgb[:, :2] = 255, 0, 0
rgb[:, 2:] = 0, 0, 255
red, blue = [82, 90, 240], [41, 240, 110]
assert zelcc.zeliRGBToYCbCr_8u_C3R(rgb).tolist() == [[red, red, blue, blue]] * 2
y, cbcr = zelcc.convert(rgb, "rgb24", "nv12")
assert y.tolist() == [[82, 82, 41, 41]] * 2 and cbcr.tolist() == [[red[1:], blue[1:]]], (y, cbcr)

for refused in (rgb[..., :2], rgb[0], rgb.astype(np.uint16)):
    try:
        zelcc.zeliRGBToYCbCr_8u_C3R(refused)
    except zelcc.Error as error:
        assert (error.function, error.argument) == ("zeliRGBToYCbCr_8u_C3R", "source"), error
    else:
        raise AssertionError(f"{refused.shape} of {refused.dtype} was taken")
print("Python,", package)
