"""Arrays of other libraries, many images in one call, and planes that are stacked."""

import array
import collections
import sys
import unittest
from typing import get_args

import numpy as np

import zelcc
from described import sample

try:
    import torch
except ImportError:
    torch = None


class Exported:
    """What has nothing but DLPack, as arrays of other libraries."""
    def __init__(self, inner):
        self.inner = inner

    def __dlpack__(self, **how):
        return self.inner.__dlpack__(**how)

    def __dlpack_device__(self):
        return self.inner.__dlpack_device__()


class Interface:
    def __init__(self, inner):
        self.__array_interface__ = inner.__array_interface__
        self.inner = inner


def as_list(image):
    return list(image) if isinstance(image, tuple) else [image]


def images_of(name, number, width, height, random):
    form = zelcc.formats()[name]
    return tuple(sample(random, (number, *shape), form.dtype) for shape in form.shapes(width, height))


class Arrays(unittest.TestCase):
    def setUp(self):
        self.random = np.random.default_rng(5)
        self.rgb = self.random.integers(0, 256, (12, 16, 3), np.uint8)

    def assert_equal(self, one, other):
        self.assertEqual(len(as_list(one)), len(as_list(other)))
        for a, b in zip(as_list(one), as_list(other)):
            np.testing.assert_array_equal(a, b)

    def test_many_images(self):
        for source, target, size in (("rgb24", "nv12", (13, 9)), ("nv12", "rgb24", (16, 12)), ("yuv444p", "bgr24", (7, 5)),
                                     ("rgb24", "gray", (8, 4)), ("yuyv422", "yuv420p", (16, 12)), ("bayer_rggb8", "rgb24", (16, 12)),
                                     ("gray", "rgb24", (3, 2))):
            with self.subTest(source=source, target=target):
                many = images_of(source, 3, *size, self.random)
                result = as_list(zelcc.convert(many if len(many) > 1 else many[0], source, target))
                out = tuple(np.zeros_like(plane) for plane in result)
                zelcc.convert(many if len(many) > 1 else many[0], source, target, out=out if len(out) > 1 else out[0])
                for i in range(3):
                    one = tuple(plane[i] for plane in many)
                    expected = zelcc.convert(one if len(one) > 1 else one[0], source, target)
                    self.assert_equal(tuple(plane[i] for plane in result), tuple(as_list(expected)))
                self.assert_equal(out, tuple(result))
        self.assertEqual(zelcc.convert(np.zeros((0, 4, 6, 3), np.uint8), "rgb24", "gray").shape, (0, 4, 6))
        self.assert_equal(zelcc.convert([self.rgb, self.rgb[::-1]], "rgb24", "gray")[1], zelcc.convert(self.rgb[::-1], "rgb24", "gray"))
        with self.assertRaisesRegex(ValueError, "out must be of 2 images"):
            zelcc.convert(np.stack([self.rgb] * 2), "rgb24", "gray", out=np.zeros((3, 12, 16), np.uint8))
        with self.assertRaisesRegex(ValueError, "planes are of 2, 3 images"):
            zelcc.convert((np.zeros((2, 4, 4), np.uint8), np.zeros((3, 2, 2, 2), np.uint8)), "nv12", "rgb24")

    def test_threads(self):
        """A sample of the pairs, by each method that leads from one to the other."""
        names = [name for name in zelcc.formats() if zelcc.formats()[name].planes[0].width == 1]
        of_method = {"weights": {"coeffs": [0.25, 0.5, 0.25]}, "twist": {}}
        cut = collections.Counter()
        pairs = [(source, target) for source in names for target in names if source != target]
        for method in get_args(zelcc._names.Method):
            for source, target in pairs[::61 if not method else 23]:
                try:
                    path = zelcc._convert._path(source, target, "601", None, "left", method)
                except ValueError:
                    continue
                height = 24 if path.rows > 1 else 11
                many = images_of(source, 1, 13, height, self.random)
                image = tuple(plane[0] for plane in many) if len(many) > 1 else many[0][0]
                with self.subTest(source=source, target=target, method=method):
                    how = {"method": method, **of_method.get(method, {})}
                    try:
                        expected = zelcc.convert(image, source, target, **how)
                    except TypeError:
                        continue  # it wants coefficients of a shape of its own
                    self.assert_equal(zelcc.convert(image, source, target, threads=3, **how), expected)
                    cut[method] += path.rows > 0
        self.assertGreater(cut[""], 30)
        self.assertGreater(len(cut), 4)

    def test_threads_of_others(self):
        out = np.zeros((12, 16), np.uint8)
        self.assertIs(zelcc.convert(self.rgb, "rgb24", "gray", threads=4, out=out), out)
        self.assert_equal(out, zelcc.convert(self.rgb, "rgb24", "gray"))
        many = np.stack([self.rgb, self.rgb[::-1], self.rgb[:, ::-1]])
        self.assert_equal(zelcc.convert(many, "rgb24", "nv12", threads=2), zelcc.convert(many, "rgb24", "nv12"))
        both = self.random.integers(0, 256, (14, 16, 3), np.uint8)  # of which rows are read and written at two places
        with self.assertRaises(ValueError):
            zelcc.convert(both[:12], "rgb24", "bgr24", out=both[2:], threads=2)
        with self.assertRaisesRegex(ValueError, "threads must be 1 or more"):
            zelcc.convert(self.rgb, "rgb24", "gray", threads=0)
        with self.assertRaisesRegex(TypeError, "unexpected keyword"):
            zelcc.convert(self.rgb, "rgb24", "gray", threads=2, colour=1)

    def test_a_chain_into_the_memory_of_its_image(self):
        out = self.random.integers(16, 236, (16, 16, 3), np.uint8)
        samples = out.reshape(-1)[-384:]  # behind the first pixels that are written
        planes = zelcc.planes(samples, "yuv420p", 16, 16)
        how = {"matrix": "709", "range": "limited"}
        expected = zelcc.convert([plane.copy() for plane in planes], "yuv420p", "rgb24", **how)
        zelcc.convert(planes, "yuv420p", "rgb24", out=out, **how)
        self.assert_equal(out, expected)

    def test_stacked_planes(self):
        expected = zelcc.convert(self.rgb, "rgb24", "gbrp")
        stacked = np.zeros((3, 12, 16), np.uint8)
        self.assertIs(zelcc.convert(self.rgb, "rgb24", "gbrp", out=stacked), stacked)
        self.assert_equal(tuple(stacked), expected)
        self.assert_equal(zelcc.convert(stacked, "gbrp", "rgb24"), self.rgb)
        many = np.stack([stacked, stacked[:, ::-1]])
        self.assert_equal(zelcc.convert(many, "gbrp", "rgb24")[1], self.rgb[::-1])
        for name in ("nv12", "nv21", "yuv420p"):
            with self.subTest(name):
                planes = zelcc.convert(self.rgb, "rgb24", name)
                one = np.concatenate([p.reshape(-1) for p in planes]).reshape(18, 16)
                self.assert_equal(zelcc.convert(one, name, "rgb24"), zelcc.convert(planes, name, "rgb24"))
                made = np.zeros_like(one)
                zelcc.convert(self.rgb, "rgb24", name, out=made)
                self.assert_equal(made, one)
                self.assert_equal(zelcc.convert(np.stack([one] * 2), name, "rgb24")[1], zelcc.convert(planes, name, "rgb24"))
                made = np.zeros((2, 18, 16), np.uint8)
                zelcc.convert(np.stack([self.rgb] * 2), "rgb24", name, out=made)
                self.assert_equal(made[1], one)
        wide = np.zeros((18, 32), np.uint8)[:, :16]  # rows of both chroma planes lie in one of luma
        with self.assertRaisesRegex(ValueError, "out must have rows without gaps for yuv420p"):
            zelcc.convert(self.rgb, "rgb24", "yuv420p", out=wide)
        for shape in ((17, 16), (18, 15)):
            with self.assertRaisesRegex(ValueError, r"height \* 3 / 2 rows of an even width"):
                zelcc.convert(np.zeros(shape, np.uint8), "nv12", "rgb24")
        with self.assertRaisesRegex(ValueError, "2 planes for nv12, or an array"):
            zelcc.convert(self.rgb[None, None], "nv12", "rgb24")

    def test_arrays_of_others(self):
        expected = zelcc.convert(self.rgb, "rgb24", "gray")
        flat = array.array("B", self.rgb.tobytes())
        buffer = memoryview(flat).cast("B", self.rgb.shape)
        for given in (Exported(self.rgb), Interface(self.rgb), buffer):
            self.assert_equal(zelcc.convert(given, "rgb24", "gray"), expected)
        planes = zelcc.convert(self.rgb, "rgb24", "nv12")
        self.assert_equal(zelcc.convert([Exported(p) for p in planes], "nv12", "rgb24"), zelcc.convert(planes, "nv12", "rgb24"))
        kept = array.array("B", bytes(12 * 16))
        zelcc.convert(self.rgb, "rgb24", "gray", out=memoryview(kept).cast("B", (12, 16)))
        self.assertEqual(kept.tobytes(), expected.tobytes())
        made = np.zeros((12, 16), np.uint8)
        zelcc.convert(self.rgb, "rgb24", "gray", out=Interface(made))
        self.assert_equal(made, expected)
        self.assert_equal(np.from_dlpack(Exported(zelcc.convert(self.rgb, "rgb24", "gray"))), expected)
        with self.assertRaisesRegex(ValueError, "out must be an array, not object"):
            zelcc.convert(self.rgb, "rgb24", "gray", out=object())

    @unittest.skipUnless(torch, "torch is not installed")
    def test_torch(self):
        tensor, out = torch.from_numpy(self.rgb.copy()), torch.zeros(12, 16, dtype=torch.uint8)
        expected = zelcc.convert(self.rgb, "rgb24", "gray")
        zelcc.convert(tensor, "rgb24", "gray", out=out)
        self.assert_equal(out.numpy(), expected)
        made = zelcc.convert(tensor, "rgb24", "gray")
        self.assertEqual(torch.from_dlpack(made).data_ptr(), made.ctypes.data)
        floats = torch.zeros(12, 16, 3, requires_grad=True)
        with self.assertRaisesRegex(ValueError, "image can't be read where it lies.*gradient"):
            zelcc.convert(floats, "rgbf32le", "rgb24")

    def test_foreign_types(self):
        other = ">" if sys.byteorder == "little" else "<"
        words = np.zeros((4, 6, 3), other + "u2")
        for image, source, said in ((words, "rgb48le", r"astype\('uint16'\)"), (words.view(np.int16), "rgb48le", r"view\('uint16'\)"),
                                    (words.astype(np.int64), "rgb24", r"astype\('uint8'\)")):
            for target in ("rgb24", "bgr24", "nv12"):
                if source == target or (source, target) == ("rgb48le", "rgb24"):
                    continue  # by one function, whose own errors are tested with the functions
                with self.subTest(image=image.dtype, source=source, target=target):
                    with self.assertRaisesRegex(ValueError, f"image must be of .* for {source}: .*{said}"):
                        zelcc.convert(image[:3, :5], source, target)
        with self.assertRaisesRegex(ValueError, "in the other order"):
            zelcc.convert(words[:3, :5], "rgb48le", "nv12")


if __name__ == "__main__":
    unittest.main()
