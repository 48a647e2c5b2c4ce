"""Frames of PyAV, and what stands for them where it is not installed."""

import types
import unittest

import numpy as np

import zelcc

try:
    import av
except ImportError:
    av = None


class Plane(bytearray):
    line_size = 0


def frame_of(name, width, height, random, padding=32, **says):
    """With rows further apart than their pixels, as decoders leave them."""
    form = zelcc.formats()[name.replace("yuvj", "yuv")]
    planes, arrays = [], []
    for shape in form.shapes(width, height):
        row = int(np.prod(shape[1:])) * form.dtype.itemsize
        plane = Plane(random.integers(0, 256, shape[0] * (row + padding), np.uint8).tobytes())
        plane.line_size = row + padding
        rows = np.frombuffer(plane, np.uint8).reshape(shape[0], -1)[:, :row]
        planes.append(plane)
        arrays.append(np.ascontiguousarray(rows).view(form.dtype).reshape(shape))
    says = {"colorspace": 1, "color_range": 1, **says}
    return types.SimpleNamespace(format=types.SimpleNamespace(name=name), width=width, height=height, planes=planes, **says), tuple(arrays)


class Frames(unittest.TestCase):
    def setUp(self):
        self.random = np.random.default_rng(8)

    def test_what_a_frame_says(self):
        for name, says, how in (("yuv420p", {}, ("709", "limited")), ("nv12", {"colorspace": 6}, ("601", "limited")),
                                ("yuv420p", {"color_range": 2}, ("709", "full")), ("yuvj420p", {"color_range": 0}, ("709", "full")),
                                ("yuv444p", {"colorspace": 9}, ("2020", "limited")), ("yuv420p10le", {"colorspace": 9}, ("2020", "limited"))):
            for size in ((32, 16), (13, 9)):
                with self.subTest(name=name, says=says, size=size):
                    frame, planes = frame_of(name, *size, self.random, **says)
                    expected = zelcc.convert(planes, name, "rgb24", matrix=how[0], range=how[1])
                    np.testing.assert_array_equal(zelcc.from_frame(frame), expected)

    def test_what_it_leaves_open(self):
        frame, planes = frame_of("yuv420p", 16, 8, self.random, colorspace=2, color_range=0)
        with self.assertRaisesRegex(ValueError, "give matrix="):
            zelcc.from_frame(frame)
        with self.assertRaisesRegex(ValueError, "give range="):
            zelcc.from_frame(frame, matrix="709")
        np.testing.assert_array_equal(zelcc.from_frame(frame, "bgr24", matrix="709", range="full"),
                                      zelcc.convert(planes, "yuv420p", "bgr24", matrix="709", range="full"))
        frame.format.name = "pal8"
        with self.assertRaisesRegex(ValueError, "no format is named 'pal8'"):
            zelcc.from_frame(frame)
        rgb, planes = frame_of("rgb24", 16, 8, self.random, colorspace=0, color_range=0)
        np.testing.assert_array_equal(zelcc.from_frame(rgb, "bgr24"), planes[0][..., ::-1])

    @unittest.skipUnless(av, "PyAV is not installed")
    def test_frames_of_pyav(self):
        frame = av.VideoFrame(50, 38, "yuv420p")
        for plane in frame.planes:
            plane.update(self.random.integers(0, 256, plane.buffer_size, np.uint8).tobytes())
        planes = zelcc.planes(np.ascontiguousarray(frame.to_ndarray()), "yuv420p", 50, 38)
        made = zelcc.from_frame(frame, matrix="709", range="limited")
        np.testing.assert_array_equal(made, zelcc.convert(planes, "yuv420p", "rgb24", matrix="709", range="limited"))


if __name__ == "__main__":
    unittest.main()
