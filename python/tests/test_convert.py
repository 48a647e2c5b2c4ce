"""Conversion by the names of formats."""

import unittest
import unittest.mock

import numpy as np

import zelcc
from described import cropped, sample, upward


def image_of(name, width, height, random):
    form = zelcc.formats()[name]
    planes = tuple(sample(random, shape, form.dtype) for shape in form.shapes(width, height))
    return planes if len(planes) > 1 else planes[0]


def as_list(image):
    return list(image) if isinstance(image, tuple) else [image]


class Convert(unittest.TestCase):
    def setUp(self):
        self.random = np.random.default_rng(3)
        self.rgb = self.random.integers(0, 256, (24, 32, 3), np.uint8)

    def test_every_pair_that_has_a_way(self):
        ways = 0
        names = list(zelcc.formats())
        for source in names:
            image = image_of(source, 13, 9, self.random)
            for target in names:
                try:
                    zelcc.steps(source, target)
                except ValueError as error:
                    self.assertIn("no functions lead from", str(error))
                    continue
                if zelcc.formats()[source].dtype == np.uint8 and source == "monob":
                    continue  # its width is in bytes
                ways += 1
                with self.subTest(source=source, target=target):
                    result = as_list(self.convert_over(0x55, image, source, target))
                    for one, other in zip(result, as_list(self.convert_over(0xaa, image, source, target))):
                        np.testing.assert_array_equal(one, other)
                    form = zelcc.formats()[target]
                    self.assertEqual(tuple(r.shape for r in result), form.shapes(48 if source == "v210" else 13, 9))
                    self.assertTrue(all(r.dtype == form.dtype for r in result))
        self.assertGreater(ways, 3000)

    def convert_over(self, content, *arguments):
        """On memory of a content of its own, so that what isn't written shows."""
        def filled(shape, dtype=np.dtype(float), order="C"):
            return np.full(int(np.prod(shape)) * np.dtype(dtype).itemsize, content, np.uint8).view(dtype).reshape(shape)

        with unittest.mock.patch.object(np, "empty", filled):
            return zelcc.convert(*arguments)

    def test_moved_samples(self):
        r, g, b = (self.rgb[..., i] for i in range(3))
        rgba = zelcc.convert(self.rgb, "rgb24", "rgba")
        np.testing.assert_array_equal(rgba, np.dstack([self.rgb, np.full_like(r, 255)]))
        np.testing.assert_array_equal(zelcc.convert(self.rgb, "rgb24", "bgr24"), self.rgb[..., ::-1])
        for plane, expected in zip(zelcc.convert(self.rgb, "rgb24", "gbrp"), (g, b, r)):
            np.testing.assert_array_equal(plane, expected)
        y, cbcr = zelcc.convert(self.rgb, "rgb24", "nv12")
        swapped = zelcc.convert((y, cbcr), "nv12", "nv21")
        np.testing.assert_array_equal(swapped[1], cbcr[..., ::-1])
        planar = zelcc.convert((y, cbcr), "nv12", "yv12")
        np.testing.assert_array_equal(planar[1], cbcr[..., 1])
        np.testing.assert_array_equal(planar[2], cbcr[..., 0])
        yuyv = zelcc.convert(self.rgb, "rgb24", "yuyv422")
        back = zelcc.convert(zelcc.convert(yuyv, "yuyv422", "yv16"), "yv16", "yvyu422")
        np.testing.assert_array_equal(back[..., 0], yuyv[..., 0])
        np.testing.assert_array_equal(back[:, 0::2, 1], yuyv[:, 1::2, 1])
        copied = zelcc.convert(self.rgb, "rgb24", "rgb24")
        np.testing.assert_array_equal(copied, self.rgb)
        self.assertFalse(np.shares_memory(copied, self.rgb))

    def test_the_way(self):
        def names(*arguments, **wishes):
            return [step.function for step in zelcc.steps(*arguments, **wishes)]

        self.assertEqual(names("rgb24", "nv12"), ["zeliRGBToYCbCr420_8u_C3P2R"])
        self.assertEqual(names("bgr24", "nv12", matrix="709"), ["zeliBGRToYCbCr420_709CSC_8u_C3P2R"])
        self.assertEqual(names("bgr24", "rgb24"), [None])
        self.assertEqual(names("yuv420p", "yuv422p", method="filter"), ["zeliYCbCr420ToYCbCr422_Filter_8u_P3R"])
        self.assertEqual(names("bayer_grbg8", "rgb24", method="ahd"), ["zeliDemosaicAHD_8u_C1C3R"])
        np.testing.assert_array_equal(zelcc.convert(self.rgb, "rgb24", "bgr24", method="gamma"),
                                      zelcc.zeliGammaFwd_8u_C3R(self.rgb)[..., ::-1])
        # No way between colours is over gray, words or fewer sites.
        for source in ("rgb24", "bgra", "gbrp", "yuv444p", "lab24", "rgb48le"):
            for target in ("hsv24", "yuv24", "bgr24", "xyz24", "rgba"):
                for step in zelcc.steps(source, target)[:-1]:
                    form = zelcc.formats()[step.target]
                    self.assertTrue(all(p.width == 1 for p in form.planes) and form.name[:4] != "gray", form.name)
        with self.assertRaisesRegex(ValueError, "no functions lead from rgb24 to bayer_rggb8"):
            zelcc.convert(self.rgb, "rgb24", "bayer_rggb8")
        for arguments, message in ((("rgb25", "nv12"), "no format is named 'rgb25'; did you mean rgb24,"),
                                   (("rgb24", "nv12", "2021"), "no matrix is named '2021'; did you mean 2020"),
                                   (("rgb24", "nv12", "709", "filtre"), "no method is named 'filtre'; did you mean filter")):
            source, target, *how = arguments
            with self.assertRaisesRegex(ValueError, message):
                zelcc.convert(self.rgb, source, target, **dict(zip(("matrix", "method"), how)))

    def test_video_of_other_colours(self):
        """What the video library does, against the exact values."""
        def convert(image, *names, **how):
            self.assertEqual([step.function for step in zelcc.steps(*names, **how)], ["zelvConvert"])
            return zelcc.convert(image, *names, **how)

        rgb = self.rgb[:23, :31]
        for matrix, red, blue in (("601", .299, .114), ("709", .2126, .0722), ("2020", .2627, .0593), ("240m", .212, .087)):
            for span, least, steps in (("full", 0, 1023), ("limited", 64, 876)):
                with self.subTest(matrix, range=span):
                    y, cb, _ = convert(rgb, "rgb24", "yuv444p10le", matrix=matrix, range=span)
                    luma = rgb @ np.array([red, 1 - red - blue, blue])
                    self.assertLess(np.abs(y - (least + luma * steps / 255)).max(), 0.51)
                    chroma = (rgb[..., 2] - luma) / (2 - 2 * blue) * (1023 if span == "full" else 896) / 255 + 512
                    self.assertLess(np.abs(cb - chroma.clip(0, 1023)).max(), 0.51)
                    planes = convert(rgb, "rgb24", "p010le", matrix=matrix, range=span)
                    np.testing.assert_array_equal(planes[0], y << 6)
                    self.assertEqual(planes[1].shape, (12, 16, 2))
                    back = convert((y, cb, _), "yuv444p10le", "rgb24", matrix=matrix, range=span)
                    self.assertLessEqual(np.abs(back.astype(int) - rgb).max(), 1)
        jpeg = convert(rgb, "rgb24", "yuvj420p")
        np.testing.assert_array_equal(jpeg[0], convert(rgb, "rgb24", "yuv420p", range="full")[0])
        limited = convert(jpeg, "yuvj420p", "nv12", range=("full", "limited"))
        self.assertLess(np.abs(limited[0] - (16 + jpeg[0].astype(float) * 219 / 255)).max(), 0.51)
        words = convert(rgb, "rgb24", "x2rgb10le")
        self.assertEqual((words.dtype, words.shape), (np.uint32, (23, 31)))
        np.testing.assert_array_equal(words >> 20 & 1023, (rgb[..., 0] * (1023 / 255) + .5).astype(int))
        hls = zelcc.convert((y, cb, _), "yuv444p10le", "hls24", matrix="240m")
        self.assertEqual(hls.shape, rgb.shape)
        self.assertEqual(zelcc.steps("nv12", "rgb24", range="limited"), zelcc.steps("nv12", "rgb24"))
        for how, message in (({"range": "wide"}, "no range is named 'wide'"), ({"location": "right"}, "no location is named 'right'"),
                             ({"matrix": "yuv", "range": "limited"}, "no functions lead .* and the range 'limited'")):
            with self.assertRaisesRegex(ValueError, message):
                zelcc.convert(jpeg, "yuv420p", "rgb24", **how)
        with self.assertRaisesRegex(ValueError, "full range by its name"):
            zelcc.convert(jpeg, "yuvj420p", "rgb24", range="limited")

    def test_filters_at_sites(self):
        jpeg = zelcc.convert(self.rgb, "rgb24", "yuvj420p")
        made = [zelcc.convert(jpeg, "yuvj420p", "rgb24", method="filter", location=place) for place in ("left", "center", "topleft")]
        error = lambda image: np.square(image.astype(float) - self.rgb).mean()
        self.assertEqual(min(range(3), key=lambda i: error(made[i])), 1)

    def test_outputs_and_steps(self):
        for height, width in ((24, 32), (9, 13)):
            image = self.rgb[:height, :width]
            expected = zelcc.convert(image.copy(), "rgb24", "yv12", matrix="709")
            for place in (cropped, upward):
                out = [place(plane.shape, plane.dtype) for plane in expected]
                given = zelcc.convert(image, "rgb24", "yv12", matrix="709", out=out)
                for g, o, e in zip(given, out, expected):
                    self.assertIs(g, o)
                    np.testing.assert_array_equal(o, e)
        with self.assertRaisesRegex(ValueError, "shares memory"):
            zelcc.convert(self.rgb, "rgb24", "bgr24", out=self.rgb)

    def test_odd_sizes_repeat_the_last_pixels(self):
        odd = self.rgb[:23, :31]
        y, cb, cr = zelcc.convert(odd, "rgb24", "yuv420p")
        whole = zelcc.convert(np.pad(odd, ((0, 1), (0, 1), (0, 0)), "edge"), "rgb24", "yuv420p")
        np.testing.assert_array_equal(y, whole[0][:23, :31])
        np.testing.assert_array_equal(cr, whole[2])
        self.assertEqual(zelcc.convert((y, cb, cr), "yuv420p", "bgra").shape, (23, 31, 4))

    def test_alpha(self):
        rgba = np.dstack([self.rgb, self.rgb[..., 0]])
        for target in ("yuva32", "hsva32", "bgra", "yuva444p"):
            back = zelcc.convert(zelcc.convert(rgba, "rgba", target, matrix="yuv"), target, "rgba", matrix="yuv")
            with self.subTest(target):
                np.testing.assert_array_equal(back[..., 3], rgba[..., 3])
        self.assertTrue((zelcc.convert(self.rgb, "rgb24", "bgra")[..., 3] == 255).all())
        deep = rgba.astype(np.uint16) * 257
        np.testing.assert_array_equal(zelcc.convert(deep, "rgba64le", "bgra")[..., 3], rgba[..., 3])
        yuv = zelcc.convert(self.rgb, "rgb24", "yuv420p", matrix="yuv")
        self.assertTrue((zelcc.convert(yuv, "yuv420p", "rgba", matrix="yuv")[..., 3] == 255).all())

    def test_further_arguments_reach_the_last_function(self):
        gray = zelcc.convert(self.rgb, "rgb24", "gray", method="weights", coeffs=[0, 1, 0])
        np.testing.assert_array_equal(gray, self.rgb[..., 1])
        bits = zelcc.convert(self.rgb, "rgb24", "monob", threshold=40)
        np.testing.assert_array_equal(bits, np.packbits(zelcc.convert(self.rgb, "rgb24", "gray") > 40, axis=1))
        for source, target in (("rgb24", "gray"), ("rgb24", "bgr24"), ("bgr24", "nv21")):
            with self.assertRaisesRegex(TypeError, "unexpected keyword argument 'threshold'"):
                zelcc.convert(self.rgb, source, target, threshold=40)
        deep = self.rgb.astype(np.uint16) << 8
        few = zelcc.convert(deep, "rgb48le", "bgr24", levels=2)
        self.assertEqual(set(np.unique(few)), {0, 255})

    def test_planes_of_a_buffer(self):
        data = bytes(range(36)) + bytes(18)
        y, cbcr = zelcc.planes(data, "nv12", 6, 6)
        self.assertEqual((y.shape, cbcr.shape, cbcr[0, 0, 0], y[5, 5]), ((6, 6), (3, 3, 2), 0, 35))
        with self.assertRaisesRegex(ValueError, "has 54 bytes, but nv12 of 6 x 5 has 48"):
            zelcc.planes(data, "nv12", 6, 5)
        with self.assertRaisesRegex(ValueError, "too few"):
            zelcc.planes(data, "nv12", 8, 6)
        with self.assertRaisesRegex(ValueError, "must be a list or tuple of 2 planes"):
            zelcc.convert(cbcr[None], "nv12", "rgb24")
        with self.assertRaisesRegex(ValueError, r"\[1\]: must have the shape \(3, 3, 2\), not \(3, 3\)"):
            zelcc.convert((y, cbcr[..., 0]), "nv12", "rgb24")
        with self.assertRaisesRegex(ValueError, r"image\[1\] must have the shape \(3, 3, 2\), not \(3, 3\), for nv12 of 5 x 5"):
            zelcc.convert((y[:5, :5], cbcr[..., 0]), "nv12", "rgb24")


if __name__ == "__main__":
    unittest.main()
