"""All functions by their C names, on arrays of every kind."""

import inspect
import pathlib
import re
import sys
import threading
import time
import unittest

import numpy as np

import zelcc
from described import NAMES, Described, Fenced, cropped, field, plain, sample, upward

FUNCTIONS = [Described(name) for name in NAMES]
# A step below 1 is an error to some, which say so.
UPWARD_IS_AN_ERROR = zelcc.zelStsStepErr
SIZES = [(32, 16), (34, 16), (33, 17), (13, 7), (12, 5), (5, 9), (4, 8), (3, 3), (2, 8), (1, 2), (2, 1), (1, 1)]


def outcome(f, source, out):
    """What a call gives: the status of an error, or the planes."""
    try:
        if f.in_place:
            f.call(f.argument("source", source), **f.keywords())
            return source
        f.call(f.argument("source", source), f.argument("out", out), **f.keywords())
        return out
    except zelcc.Error as error:
        return error.status if error.status is not None else str(error)


class Functions(unittest.TestCase):
    def setUp(self):
        self.random = np.random.default_rng(1)

    def images(self, f, width, height, place):
        source = f.filled("source", width, height, self.random, place)
        return source, [] if f.in_place else f.filled("out", width, height, self.random, place)

    def test_all_are_there(self):
        listed = set(re.findall(r"zeli\w+", (pathlib.Path(__file__).parents[2] / "src/frame/exports.def").read_text()))
        self.assertEqual(set(NAMES), listed)
        self.assertEqual(len(NAMES), 520)
        self.assertLess(set(NAMES), set(zelcc.__all__))
        self.assertTrue(all(hasattr(zelcc, name) for name in zelcc.__all__))
        project = (pathlib.Path(__file__).parents[2] / "CMakeLists.txt").read_text()
        self.assertIn(f"project(zelcc VERSION {zelcc.__version__} ", project)

    def test_help(self):
        for f in FUNCTIONS:
            self.assertIn(f.name, f.call.__doc__)
            words = f.call.__doc__.split("\nIn C, of zelcc/")[0]
            self.assertNotRegex(words, r"\b(p(Src|Dst|Tmp)\w*|tmpStep|unused\d)\b")
        self.assertLess(len(str(inspect.signature(zelcc.convert))), 320)  # types by their names

    def test_outputs_are_made(self):
        for f in FUNCTIONS:
            with self.subTest(f.name):
                source, out = self.images(f, 32, 16, plain)
                before = [s.copy() for s in source]
                made = f.call(f.argument("source", source), **f.keywords())
                made = list(made) if isinstance(made, tuple) else [made]
                if f.in_place:
                    self.assertTrue(any((a != b).any() for a, b in zip(made, before)))
                    continue
                self.assertEqual([m.shape for m in made], [o.shape for o in out])
                self.assertEqual([m.dtype for m in made], [o.dtype for o in out])
                # What a function keeps is 0 in an output that is made.
                for o in out:
                    o[...] = 0
                given = outcome(f, source, out)
                for m, g in zip(made, given):
                    np.testing.assert_array_equal(m, g)
                self.assertTrue(all(m.any() for m in made))

    def test_nothing_beyond_the_arrays(self):
        for at_end in (True, False):
            fenced = Fenced(at_end)
            for f in FUNCTIONS:
                for width, height in SIZES:
                    with self.subTest(f.name, width=width, height=height):
                        source, out = self.images(f, width, height, fenced)
                        kept = [s.copy() for s in source]
                        result = outcome(f, source, out)
                        if not f.in_place:
                            for s, k in zip(source, kept):
                                np.testing.assert_array_equal(s, k)
                        if (width, height) == SIZES[0]:
                            self.assertIsInstance(result, list)

    def test_nothing_beyond_with_further_arguments(self):
        u1 = np.uint8
        for place in (Fenced(True), Fenced(False)):
            def make(*shape, dtype=u1):
                array = place(shape, dtype)
                array[...] = sample(self.random, shape, np.dtype(dtype))
                return array

            for offset in range(8):
                for width in (1, 5, 8, 13, 35):
                    out = make(3, (width + offset + 7) // 8)
                    zelcc.zeliReduceBits_8u1u_C1R(make(3, width), out, dstBitOffset=offset + 8, dtype=zelcc.zelDitherStucki)
            for layout in (zelcc.zelSliceTop, zelcc.zelSliceMiddle, zelcc.zelSliceBottom):
                for height in (4, 6, 14):
                    for width in (2, 34, 39):
                        above = 4 * (layout != zelcc.zelSliceTop)
                        rows, half = height + above, (width + 1) // 2
                        source = make(rows, width), make(rows // 2, half, 2)
                        zelcc.zeliYCbCr420ToYCbCr422_Filter_8u_P2C2R(source, make(rows, width, 2), layout=layout, above=above)
                        planes = make(rows, width), make(rows // 2, half), make(rows // 2, half)
                        zelcc.zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R(source, planes, layout=layout, above=above)
            for f, dtype in ((zelcc.zeliCFAToRGB_8u_C1C3R, np.uint8), (zelcc.zeliCFAToRGB_16u_C1C3R, np.uint16),
                             (zelcc.zeliDemosaicAHD_8u_C1C3R, np.uint8), (zelcc.zeliDemosaicAHD_16u_C1C3R, np.uint16)):
                for x, y, width, height in ((0, 0, 23, 17), (3, 1, 20, 16), (22, 16, 1, 1), (7, 9, 5, 2), (1, 0, 2, 17)):
                    f(make(17, 23, dtype=dtype), make(height, width, 3, dtype=dtype), grid=zelcc.zelBayerGBRG, region=(x, y, width, height))

    def test_rows_are_where_the_steps_say(self):
        for f in FUNCTIONS:
            for width, height in ((34, 16), (13, 9), (12, 6)):
                source, out = self.images(f, width, height, plain)
                sources, outs = [s.copy() for s in source], [o.copy() for o in out]
                expected = outcome(f, source, out)
                for place in (cropped, upward, field):
                    with self.subTest(f.name, place=place.__name__, width=width):
                        laid, laid_out = ([self.laid(a, place) for a in arrays] for arrays in (sources, outs))
                        bases = [(a.base, a.base.copy()) for a in laid + laid_out]
                        result = outcome(f, laid, laid_out)
                        if place is upward and result == UPWARD_IS_AN_ERROR:
                            continue
                        if isinstance(result, str):
                            self.assertIn("must be contiguous, for this function takes no steps", result)
                            self.assertRegex(f.name, r"[CP]3$")
                            continue
                        self.assertEqual(isinstance(result, list), isinstance(expected, list))
                        if isinstance(expected, list):
                            for r, e in zip(result, expected):
                                np.testing.assert_array_equal(r, e)
                        for a, (base, before) in zip(laid + laid_out, bases):
                            a[...] = 0
                            rest = before
                            self.frame(rest, place, a.shape)[...] = 0
                            np.testing.assert_array_equal(base, rest)

    def frame(self, base, place, shape):
        inner = base[2:-2, 4:-5]
        return {"cropped": inner, "upward": inner[::-1], "field": inner[1::2]}[place.__name__]

    def laid(self, array, place):
        moved = place(array.shape, array.dtype)
        moved.base[...] = sample(self.random, moved.base.shape, moved.dtype)
        moved[...] = array
        return moved

    def test_in_place_is_the_same(self):
        tried = 0
        for f in FUNCTIONS:
            if f.in_place or f.shapes("source", 40, 6) != f.shapes("out", 40, 6) or f.dtype("source") != f.dtype("out"):
                continue
            source = f.filled("source", 40, 6, self.random, plain)
            out = [s.copy() for s in source]  # alpha that is kept
            expected = outcome(f, source, out)
            result = outcome(f, source, source)
            if isinstance(result, str):
                self.assertIn("out", result)
                self.assertIn("shares memory with source", result)
                continue
            with self.subTest(f.name):
                tried += 1
                for r, e in zip(result, expected):
                    np.testing.assert_array_equal(r, e)
        self.assertGreater(tried, 50)

    def test_fields_of_one_frame_do_not_overlap(self):
        frame = self.random.integers(0, 256, (16, 24, 3), np.uint8)
        expected = zelcc.zeliRGBToYCbCr_8u_C3R(frame[0::2].copy())
        zelcc.zeliRGBToYCbCr_8u_C3R(frame[0::2], frame[1::2])
        np.testing.assert_array_equal(frame[1::2], expected)

    def test_slices_make_the_whole(self):
        luma = self.random.integers(0, 256, (24, 32), np.uint8)
        chroma = self.random.integers(0, 256, (12, 16, 2), np.uint8)
        f = zelcc.zeliYCbCr420ToYCrCb420_Filter_8u_P2P3R
        whole, sliced = f((luma, chroma)), tuple(np.zeros_like(p) for p in f((luma, chroma)))

        def part(begin, end, layout, above):
            rows = slice(begin - above, end)
            pairs = slice((begin - above) // 2, end // 2)
            f((luma[rows], chroma[pairs]), [sliced[0][rows], sliced[1][pairs], sliced[2][pairs]], layout=layout, above=above)

        part(0, 8, zelcc.zelSliceTop, 0)
        part(8, 16, zelcc.zelSliceMiddle, 4)
        part(16, 24, zelcc.zelSliceBottom, 6)
        for a, b in zip(sliced, whole):
            np.testing.assert_array_equal(a, b)

    def test_regions_of_mosaics(self):
        raw = self.random.integers(0, 65536, (20, 24), np.uint16)
        for f in (zelcc.zeliCFAToRGB_16u_C1C3R, zelcc.zeliDemosaicAHD_16u_C1C3R):
            whole = f(raw, grid=zelcc.zelBayerRGGB)
            for name in ("bggr", "rggb", "gbrg", "grbg"):
                by_number = f(raw, grid=getattr(zelcc, f"zelBayer{name.upper()}"))
                np.testing.assert_array_equal(f(raw, grid=name), by_number)
            part = f(raw, grid=zelcc.zelBayerRGGB, region=(3, 5, 10, 7))
            self.assertEqual(part.shape, (7, 10, 3))
            if f is zelcc.zeliCFAToRGB_16u_C1C3R:
                np.testing.assert_array_equal(part, whole[5:12, 3:13])

    def test_the_lock_is_released(self):
        image = self.random.integers(0, 256, (1500, 2000, 3), np.uint8)
        events, turns = [], 0
        interval = sys.getswitchinterval()
        sys.setswitchinterval(30)  # nobody is made to hand the lock over

        def work():
            events.append("begin")
            zelcc.zeliReduceBits_8u_C3R(image, levels=3, dtype=zelcc.zelDitherJJN)
            events.append("end")

        try:
            thread = threading.Thread(target=work)
            thread.start()
            while "end" not in events:
                turns += "begin" in events
                time.sleep(0)
            thread.join()
        finally:
            sys.setswitchinterval(interval)
        self.assertGreater(turns, 20)


if __name__ == "__main__":
    unittest.main()
