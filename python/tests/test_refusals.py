"""What is refused, and by which sentence."""

import unittest
import warnings

import numpy as np

import zelcc

IMAGE = np.zeros((16, 32, 3), np.uint8)
GRAY = np.zeros((16, 32), np.uint8)
Y, C = np.zeros((16, 32), np.uint8), np.zeros((8, 16), np.uint8)
encode, decode, twice = zelcc.zeliRGBToYCbCr420_8u_C3P3R, zelcc.zeliYCbCr420ToRGB_8u_P3C3R, zelcc.zeliRGBToYCbCr_8u_C3R


def steps_apart(shape, between):
    return np.zeros((shape[0], shape[1] + between), np.uint8)[:, :shape[1]]


def overlapping_rows():
    return np.lib.stride_tricks.as_strided(np.zeros(4096, np.uint8), (16, 32, 3), (48, 3, 1))


# The call, the argument that is named, and words of the sentence.
REFUSED = [
    (lambda: encode(IMAGE.astype(np.uint16)), "source", "of uint8, not uint16"),
    (lambda: encode(GRAY), "source", r"the shape \(height, width, 3\), not \(16, 32\)"),
    (lambda: encode(np.zeros((16, 32, 4), np.uint8)), "source", r"not \(16, 32, 4\)"),
    (lambda: encode([[1, 2, 3]]), "source", "must be an array, not list"),
    (lambda: encode("an image"), "source", "must be of uint8"),
    (lambda: encode(IMAGE[..., ::-1]), "source", "pixels without gaps"),
    (lambda: encode(IMAGE[:, ::2]), "source", "pixels without gaps"),
    (lambda: encode(IMAGE.transpose(1, 0, 2)), "source", "pixels without gaps"),
    (lambda: twice(IMAGE, overlapping_rows()), "out", "rows that overlap"),
    (lambda: encode(IMAGE, (Y, C)), "out", "must have 3 planes, not 2"),
    (lambda: encode(IMAGE, Y), "out", "a list or tuple of 3 planes, not numpy.ndarray"),
    (lambda: encode(IMAGE, (Y, C.copy(), C[:, :15])), "out[2]", r"\(8, 16\), not \(8, 15\)"),
    (lambda: encode(IMAGE, (Y, C, C)), "out[2]", "shares memory with plane 1"),
    (lambda: decode((Y, C, None)), "source[2]", "must be of uint8, not object"),
    (lambda: decode((Y, C, C), IMAGE.view()[:8]), "out", r"\(16, 32, 3\), not \(8, 32, 3\)"),
    (lambda: twice(IMAGE[1:], IMAGE[:-1]), "out", "shares memory with source without being the same image"),
    (lambda: zelcc.zeliRGBToGray_8u_C3C1R(IMAGE, IMAGE[:, :, 0]), "out", "pixels without gaps"),
    (lambda: zelcc.zeliRGBToRGB565_8u16u_C3R(IMAGE, IMAGE.reshape(-1)[:1024].view(np.uint16).reshape(16, 32)), "out",
     "shares memory with source"),
    (lambda: zelcc.zeliRGBToYCbCr_8u_C3P3R(IMAGE, (Y, Y.copy(), steps_apart((16, 32), 1))), "out[2]", "33 bytes apart and the first plane 32"),
    (lambda: zelcc.zeliYCbCr420ToYCbCr422_8u_P3R((Y, C, C), (Y.copy(), steps_apart((16, 16), 1), steps_apart((16, 16), 2))), "out",
     "planes of chroma with one step"),
    (lambda: zelcc.zeliRGBToYUV420_8u_C3P3(np.zeros((16, 40, 3), np.uint8)[:, :32]), "source", "takes no steps"),
    (lambda: zelcc.zeliReduceBits_16u_C1R(np.zeros((4, 4), ">u2")), "source", "the machine's order of bytes"),
    (lambda: zelcc.zeliReduceBits_16u_C1R(np.zeros((4, 9), np.uint8)[:, :8].view(np.uint16)), "source", "whole number of samples"),
    (lambda: zelcc.zeliYCbCr422ToBGR565_8u16u_C2C3R(np.zeros((4, 1, 2), np.uint8)), "source", "2 or more pixels wide"),
    (lambda: zelcc.zeliGrayToRGB_8u_C1C4R(GRAY, aval=256), "aval", "from 0 to 255"),
    (lambda: zelcc.zeliYCoCgToSBGR_16s_P3C4R([np.zeros((2, 2), np.int16)] * 3, aval=40000), "aval", "from -32768 to 32767"),
    (lambda: zelcc.zeliColorTwist32f_8u_C3R(IMAGE, matrix=np.eye(3)), "matrix", "12 numbers"),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY, grid=1, region=(20, 0, 13, 4)), "region", "inside the image"),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY, grid=1, region=(2147483647, 0, 13, 4)), "region", "inside the image"),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY, grid="rgbg"), "grid", "one of bggr, rggb, gbrg and grbg"),
    (lambda: zelcc.zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R((Y, np.zeros((8, 16, 2), np.uint8)), layout=4, above=2), "above", "4 or more"),
]

# The call, the argument, and the library's status.
ERRORS = [
    (lambda: twice(IMAGE[:0]), "source", "zelStsSizeErr"),
    (lambda: encode(IMAGE[:1]), "source", "zelStsSizeErr"),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY, grid=4), "grid", "zelStsBadArgErr"),
    (lambda: zelcc.zeliReduceBits_8u_C3R(IMAGE, levels=257), "levels", "zelStsDitherLevelsErr"),
    (lambda: zelcc.zeliReduceBits_8u_C3R(IMAGE, noise=101), "noise", "zelStsNoiseValErr"),
    (lambda: zelcc.zeliReduceBits_8u1u_C1R(GRAY, dtype=zelcc.zelDitherBayer), "dtype", "zelStsDitherTypeErr"),
    (lambda: zelcc.zeliReduceBits_8u1u_C1R(GRAY, dstBitOffset=-1), "dstBitOffset", "zelStsSizeErr"),
    (lambda: zelcc.zeliGammaFwd_32f_C3R(IMAGE.astype(np.float32), vMin=1, vMax=1), "vMax", "zelStsRangeErr"),
    (lambda: zelcc.zeliBGRToHLS_8u_P3R((Y[::-1], Y[::-1], Y[::-1])), "source", "zelStsStepErr"),
    (lambda: zelcc.zeliBGRToHLS_8u_AC4R(np.zeros((16, 32, 4), np.uint8), np.zeros((16, 32, 4), np.uint8)[::-1]), "out", "zelStsStepErr"),
]

MISUSED = [
    (lambda: encode(), "missing 1 required positional argument: 'source'"),
    (lambda: encode(IMAGE, None, None), "at most 2 positional"),
    (lambda: encode(IMAGE, source=IMAGE), "multiple values for argument 'source'"),
    (lambda: encode(IMAGE, aval=3), "unexpected keyword argument 'aval'"),
    (lambda: zelcc.zeliReduceBits_8u1u_C1R(GRAY, levels=3), "unexpected keyword argument 'levels'"),
    (lambda: zelcc.zeliColorTwist32f_8u_C3R(IMAGE), "missing 1 required keyword argument: 'matrix'"),
    (lambda: zelcc.zeliColorTwist32f_8u_C3R(IMAGE, matrix="twelve letters"), ""),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY), "missing 1 required keyword argument: 'grid'"),
    (lambda: zelcc.zeliCFAToRGB_8u_C1C3R(GRAY, grid=1.5), ""),
]


class Refusals(unittest.TestCase):
    def test_what_does_not_fit(self):
        for number, (call, argument, words) in enumerate(REFUSED):
            with self.subTest(number=number, words=words):
                with self.assertRaisesRegex(zelcc.Error, words) as caught:
                    call()
                error = caught.exception
                self.assertEqual(error.argument, argument)
                self.assertEqual((error.status, error.status_name), (None, None))
                self.assertTrue(str(error).startswith(f"{error.function}: {argument}: "))

    def test_what_the_library_refuses(self):
        for call, argument, status in ERRORS:
            with self.subTest(status):
                with self.assertRaisesRegex(zelcc.Error, status) as caught:
                    call()
                self.assertEqual(caught.exception.argument, argument)
                self.assertEqual(caught.exception.status_name, status)
                self.assertEqual(caught.exception.status, getattr(zelcc, status))

    def test_misuse(self):
        for call, words in MISUSED:
            with self.subTest(words), self.assertRaisesRegex(TypeError, words):
                call()

    def test_read_only(self):
        out = IMAGE.copy()
        out.flags.writeable = False
        encode(out)
        with self.assertRaisesRegex(zelcc.Error, "read-only"):
            twice(IMAGE, out)
        with self.assertRaisesRegex(zelcc.Error, "read-only"):
            zelcc.zeliGammaFwd_8u_C3IR(out)

    def test_warnings(self):
        with self.assertWarnsRegex(zelcc.StatusWarning, "zelStsOddSizeWarn"):
            y, cb, cr = encode(np.full((5, 7, 3), 255, np.uint8))
        self.assertEqual((cb.shape, y[0, 0], y[4].any(), y[:, 6].any()), ((3, 4), 235, False, False))
        with warnings.catch_warnings():
            warnings.simplefilter("error", zelcc.StatusWarning)
            with self.assertRaises(zelcc.StatusWarning):
                encode(np.zeros((5, 7, 3), np.uint8))
        with self.assertWarnsRegex(zelcc.StatusWarning, "zelStsNoOperationWarn"):
            toned = zelcc.zeliToneMapLinear_32f8u_C1R(np.full((8, 8), -1, np.float32))
        self.assertFalse(toned.any())

    def test_a_row_that_is_repeated(self):
        row = np.broadcast_to(np.arange(96, dtype=np.uint8).reshape(1, 32, 3), (16, 32, 3))
        np.testing.assert_array_equal(twice(row), twice(row.copy()))


if __name__ == "__main__":
    unittest.main()
