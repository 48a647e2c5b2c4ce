"""What some functions compute, by models in NumPy and by the arrays of OpenCV and Pillow."""

import unittest

import cv2
import numpy as np
from PIL import Image

import zelcc

# Luma and chroma of RGB and back, of BT.601 and BT.709 in studio range: an exact value is met to a step and a quarter.
ENCODE_601 = np.array([[0.257, 0.504, 0.098], [-0.148, -0.291, 0.439], [0.439, -0.368, -0.071]])
ENCODE_709 = np.array([[0.183, 0.614, 0.062], [-0.101, -0.338, 0.439], [0.439, -0.399, -0.040]])
OFFSET = np.array([16, 128, 128])


def boxes(plane, width, height):
    """Means of the sites of chroma."""
    rows, columns = plane.shape[0] // height, plane.shape[1] // width
    return plane.reshape(rows, height, columns, width, -1).mean((1, 3)).squeeze()


class Values(unittest.TestCase):
    def setUp(self):
        random = np.random.default_rng(2)
        self.rgb = random.integers(0, 256, (48, 80, 3), np.uint8)
        # Smooth enough that no filter has anything to say.
        y, x = np.mgrid[0:48, 0:80]
        self.smooth = np.stack([x * 3, y * 5, x + y], -1).clip(0, 255).astype(np.uint8)

    def near(self, result, expected, limit):
        difference = np.abs(result.astype(float) - expected)
        self.assertLessEqual(difference.max(), limit)

    def test_luma_chroma_of_both_matrices(self):
        for f, matrix, image in ((zelcc.zeliRGBToYCbCr420_8u_C3P3R, ENCODE_601, self.rgb),
                                 (zelcc.zeliBGRToYCbCr420_709CSC_8u_C3P3R, ENCODE_709, self.rgb[..., ::-1].copy())):
            y, cb, cr = f(image)
            exact = self.rgb @ matrix.T + OFFSET
            self.near(y, exact[..., 0], 1.25)
            self.near(cb, boxes(exact[..., 1], 2, 2), 1.5)
            self.near(cr, boxes(exact[..., 2], 2, 2), 1.5)

    def test_packed_pixels(self):
        y, cb, cr = zelcc.zeliRGBToYCbCr422_8u_C3P3R(self.rgb)
        yuyv = zelcc.zeliYCbCr422_8u_P3C2R((y, cb, cr))
        np.testing.assert_array_equal(yuyv[..., 0], y)
        np.testing.assert_array_equal(yuyv[:, 0::2, 1], cb)
        np.testing.assert_array_equal(yuyv[:, 1::2, 1], cr)

    def test_words(self):
        r, g, b = (self.rgb[..., i].astype(int) for i in range(3))
        words = zelcc.zeliRGBToRGB565_8u16u_C3R(self.rgb)
        np.testing.assert_array_equal(words, r >> 3 | g >> 2 << 5 | b >> 3 << 11)

    def test_lifting_is_undone(self):
        colours = self.rgb.astype(np.int16)
        planes = zelcc.zeliSBGRToYCoCg_Rev_16s_C3P3R(colours)
        b, g, r = (colours[..., i].astype(int) for i in range(3))
        t = b + (r - b >> 1)
        np.testing.assert_array_equal(planes[0], t + (g - t >> 1))
        np.testing.assert_array_equal(planes[1], r - b)
        np.testing.assert_array_equal(planes[2], g - t)
        np.testing.assert_array_equal(zelcc.zeliYCoCgToSBGR_Rev_16s_P3C3R(planes), colours)

    def test_numbers_arrive(self):
        matrix = np.array([[0, 0, 1, 0], [1, 0, 0, 0], [0, 0.5, 0, 20]])
        twisted = zelcc.zeliColorTwist32f_8u_C3R(self.rgb, matrix=matrix)
        self.near(twisted, self.rgb @ matrix[:, :3].T + matrix[:, 3], 0.5)
        doubles = self.rgb.astype(np.float64)
        np.testing.assert_array_equal(zelcc.zeliColorToGray_64f_C3C1R(doubles, coeffs=(0.1, 0.7, 1 / 3)),
                                      doubles[..., 0] * 0.1 + doubles[..., 1] * 0.7 + doubles[..., 2] * (1 / 3))
        gray = self.rgb[..., 0].copy()
        self.assertTrue((zelcc.zeliGrayToRGB_8u_C1C4R(gray, aval=77)[..., 3] == 77).all())
        self.assertTrue((zelcc.zeliGrayToRGB_32f_C1C4R(gray.astype(np.float32))[..., 3] == 1).all())
        self.assertTrue((zelcc.zeliGrayToRGB_16u_C1C4R(gray.astype(np.uint16))[..., 3] == 65535).all())
        bits = zelcc.zeliReduceBits_8u1u_C1R(gray, threshold=99)
        np.testing.assert_array_equal(bits, np.packbits(gray > 99, axis=1))
        moved = zelcc.zeliReduceBits_8u1u_C1R(gray, threshold=99, dstBitOffset=3)
        np.testing.assert_array_equal(np.unpackbits(moved, axis=1)[:, 3:83], gray > 99)
        levels = zelcc.zeliReduceBits_8u_C3R(self.rgb, levels=5)
        self.assertEqual(set(np.unique(levels)), {0, 63, 127, 191, 255})

    def test_as_opencv(self):
        i420 = cv2.cvtColor(self.rgb, cv2.COLOR_RGB2YUV_I420)
        y, cb, cr = zelcc.planes(i420, "yuv420p", 80, 48)
        self.assertTrue(np.shares_memory(cb, i420))
        smooth = zelcc.planes(cv2.cvtColor(self.smooth, cv2.COLOR_RGB2YUV_I420), "yuv420p", 80, 48)
        self.near(zelcc.zeliRGBToYCbCr_8u_C3P3R(self.rgb)[0], y, 2)
        for ours, theirs in zip(zelcc.convert(self.smooth, "rgb24", "yuv420p"), smooth):
            self.near(ours, theirs, 3)
        self.near(zelcc.convert((y, cb, cr), "yuv420p", "bgr24"), cv2.cvtColor(i420, cv2.COLOR_YUV2BGR_I420), 2)
        self.near(zelcc.zeliRGBToGray_8u_C3C1R(self.rgb), cv2.cvtColor(self.rgb, cv2.COLOR_RGB2GRAY), 1)
        self.near(zelcc.zeliBGRToLab_8u_C3R(self.smooth), cv2.cvtColor(self.smooth, cv2.COLOR_LBGR2Lab), 2)

    def test_pictures_of_pillow(self):
        picture = Image.fromarray(self.rgb)
        y = zelcc.convert(picture, "rgb24", "gray")
        self.near(y, np.asarray(picture.convert("L")), 1)
        np.testing.assert_array_equal(zelcc.zeliRGBToYCbCr_8u_C3R(picture), zelcc.zeliRGBToYCbCr_8u_C3R(self.rgb))
        back = zelcc.convert(zelcc.convert(picture, "rgb24", "yuv444p"), "yuv444p", "rgb24")
        self.near(np.asarray(Image.fromarray(back)), self.rgb, 4)


if __name__ == "__main__":
    unittest.main()
