#!/usr/bin/env python3
"""What inputs say of themselves is obeyed or refused, and what lies in them beside pictures is told."""

import math
import unittest

from tool import InDirectory, run, zelcc

DONE, FAILURE, USAGE, UNSUPPORTED, NO_FILE = range(5)
SIDE = 64
SIZE = f"{SIDE}x{SIDE}"


def picture(side: int = SIDE) -> bytes:
    """Smooth colours, as rgb24."""
    wave = lambda i, turns: round(127.5 + 110 * math.sin(turns * math.pi * i / side))
    return bytes(v for y in range(side) for x in range(side) for v in (wave(x, 2), wave(y, 2), wave(x + y, 1)))


def encoded(kind: str, side: int = SIDE) -> bytes:
    return zelcc("convert", "-", "-", "--from", "rgb24", "--size", f"{side}x{side}", "--output-kind", kind, data=picture(side))


def y4m(tags: str, pixels: str = "yuv420p") -> bytes:
    raw = zelcc("convert", "-", "-", "--from", "rgb24", "--to", pixels, "--size", SIZE, data=picture())
    return f"YUV4MPEG2 W{SIDE} H{SIDE} F25:1 {tags}\nFRAME\n".encode() + raw


def likeness(a: bytes, b: bytes) -> float:
    """The PSNR of bytes."""
    error = sum((x - y) ** 2 for x, y in zip(a, b, strict=True)) / len(a)
    return 10 * math.log10(255 ** 2 / error) if error else 99


def header(stream: bytes) -> list[str]:
    return stream.split(b"\n")[0].decode().split()


class Colours(unittest.TestCase):
    def test_come_back_by_what_is_written(self) -> None:
        for matrix in ("601", "709", "2020", "240m", "fcc", "ycgco", "709-full", "yuv"):
            with self.subTest(matrix):
                written = zelcc("convert", "-", "-", "--from", "rgb24", "--to", "yuv420p", "--size", SIZE, "--matrix", matrix,
                                "--output-kind", "y4m", data=picture())
                self.assertEqual("XCOLORRANGE=FULL" in header(written), matrix in ("709-full", "yuv"))
                self.assertEqual(zelcc("convert", "-", "-", "--output-kind", "y4m", data=written), written)
                self.assertGreater(likeness(zelcc("convert", "-", "-", "--to", "rgb24", data=written), picture()), 36)

    def test_are_those_of_file_and_caller(self) -> None:
        full, limited = "C420jpeg XCOLORRANGE=FULL", "C420jpeg XCOLORRANGE=LIMITED"
        for tags, options, code, words in [
            (full, "", DONE, "zelvConvert"), (full, "--matrix 709", DONE, "zelvConvert"),
            (full, "--matrix 709-full", DONE, "709HDTV"), (full, "--range limited", DONE, "ToRGB_8u"),
            (limited, "", DONE, "ToRGB_8u"), (limited, "--matrix yuv", UNSUPPORTED, "--matrix 709 or 601"),
            ("C420jpeg", "--range full", DONE, "zelvConvert"), ("C420jpeg", "--matrix 709-full", DONE, "709HDTV"),
            (full, "--to yuv422p", DONE, ""), ("C420jpeg XZELCC_MATRIX=2020", "", DONE, "zelvConvert"),
            ("C420jpeg XZELCC_MATRIX=2021", "", UNSUPPORTED, "--matrix"), (full, "--to yuv422p --range full:limited", DONE, "zelvConvert"),
            ("C420jpeg XZELCC_MATRIX=709", "", DONE, "709CSC"), ("XZELCC_MATRIX=709", "--matrix 601", DONE, "ToRGB_8u"),
        ]:
            with self.subTest(tags=tags, options=options):
                to = [] if "--to" in options else ["--to", "rgb24"]
                done = run(["convert", "-", "-", *to, *options.split()], y4m(tags))
                self.assertEqual(done.returncode, code, done.stderr)
                self.assertIn(words, done.stderr.decode())

    def test_come_back_by_both_sides(self) -> None:
        """Of a stream whose matrix and range become others, the colours stay."""
        for matrix, span in [("709:2020", "limited:full"), ("fcc:240m", "full"), ("601", "full:limited")]:
            first = zelcc("convert", "-", "-", "--from", "rgb24", "--to", "yuv444p12le", "--size", SIZE, "--output-kind", "y4m",
                          "--matrix", matrix.split(":")[0], "--range", span.split(":")[0], data=picture())
            second = zelcc("convert", "-", "-", "--matrix", matrix, "--range", span, "--output-kind", "y4m", data=first)
            self.assertEqual("XCOLORRANGE=FULL" in header(second), span.endswith("full"))
            self.assertGreater(likeness(zelcc("convert", "-", "-", "--to", "rgb24", data=second), picture()), 60, matrix)

    def test_gray_has_the_range_of_the_file(self) -> None:
        full = y4m("Cmono", "gray")
        frame = full.split(b"FRAME\n", 1)[1]
        limited = b"YUV4MPEG2 W64 H64 F25:1 Cmono XCOLORRANGE=LIMITED\nFRAME\n" + bytes(round(16 + v * 219 / 255) for v in frame)
        gray = lambda data, *options: zelcc("convert", "-", "-", "--to", "rgb24", *options, data=data)[::3]
        self.assertEqual(gray(full), frame)
        self.assertEqual(gray(full.replace(b"Cmono", b"Cmono XCOLORRANGE=FULL")), frame)
        self.assertEqual(gray(limited, "--range", "full"), limited.split(b"FRAME\n", 1)[1])
        self.assertGreater(likeness(gray(limited), frame), 50)


class Fields(unittest.TestCase):
    def test_are_kept_apart_if_the_file_has_them(self) -> None:
        plain, apart = (zelcc("convert", "-", "-", "--to", "rgb24", *options, data=y4m("Ip")) for options in ([], ["--interlaced"]))
        self.assertNotEqual(plain, apart)
        for tag, options, expected in [("It", [], apart), ("Ib", [], apart), ("I?", [], plain), ("It", ["--progressive"], plain),
                                       ("Im", ["--interlaced"], apart), ("Im", ["--progressive"], plain)]:
            self.assertEqual(zelcc("convert", "-", "-", "--to", "rgb24", *options, data=y4m(tag)), expected, tag)
        self.assertEqual(run(["convert", "-", "-", "--to", "rgb24"], y4m("Im")).returncode, UNSUPPORTED)
        refused = run(["convert", "-", "-", "--to", "yuv410p"], y4m("It"))
        self.assertEqual(refused.returncode, UNSUPPORTED)
        self.assertIn(b"--progressive", refused.stderr)

    def test_are_not_exchanged_by_a_cut(self) -> None:
        cut = ["convert", "-", "-", "--to", "rgb24", "--crop", "8x8+0+2"]
        self.assertEqual([run(cut, y4m(tag)).returncode for tag in ("Ip", "It")], [DONE, USAGE])

    def test_are_written(self) -> None:
        for tag, options, expected in [("It", [], "It"), ("It", ["--progressive"], "Ip"),
                                       ("Ip", ["--to", "yuv422p", "--interlaced"], "It")]:
            self.assertIn(expected, header(zelcc("convert", "-", "-", "--output-kind", "y4m", *options, data=y4m(tag))))


class Locations(unittest.TestCase):
    def test_are_kept_or_made(self) -> None:
        for tag, pixels, options, expected in [
            ("C420mpeg2", "yuv420p", [], "C420mpeg2"), ("C420paldv", "yuv420p", [], "C420paldv"), ("C420", "yuv420p", [], "C420"),
            ("XYSCSS=420MPEG2", "yuv420p", [], "C420mpeg2"), ("C444", "yuv444p", ["--to", "yuv420p"], "C420jpeg"),
            ("C420mpeg2", "yuv420p", ["--location", "topleft"], "C420paldv"), ("C422", "yuv422p", ["--to", "yuv420p"], "C420"),
        ]:
            with self.subTest(tag, options=options):
                done = zelcc("convert", "-", "-", "--output-kind", "y4m", *(options or ["--to", pixels]), data=y4m(tag, pixels))
                self.assertIn(expected, header(done))

    def test_are_heeded_by_filters(self) -> None:
        """A function that interpolates is taken where chroma lies as it has it."""
        for to, code, good in [("yuv422p", UNSUPPORTED, {"C420", "C420paldv"}), ("bgra", DONE, {"C420", "C420paldv", "C420mpeg2"})]:
            for tag in ("C420", "C420jpeg", "C420mpeg2", "C420paldv"):
                with self.subTest(tag, to=to):
                    call = ["convert", "-", "-", "--to", to, "--filter"]
                    done = run(call, y4m(tag))
                    self.assertEqual(done.returncode, DONE if tag in good else code)
                    self.assertEqual(b"by zelvConvert" in done.stderr, done.returncode == DONE and tag not in good)
                    self.assertEqual(run([*call, "--location", "topleft"], y4m(tag)).returncode, DONE)
        made = {where: zelcc("convert", "-", "-", "--to", "rgb24", "--filter", "--location", where, data=y4m("XZELCC_MATRIX=2020"))
                for where in ("left", "center", "topleft")}
        self.assertEqual(len(set(made.values())), 3)


class Behind(InDirectory):
    """Bytes behind the picture of a file."""

    def test_padding_is_nothing(self) -> None:
        for kind in ("png", "jpeg", "pnm"):
            for padding in (bytes(100_000), b"\n", b"\r\n \0"):
                done = run(["convert", self.file("in", encoded(kind) + padding), self.file("out.ppm"), "--quiet"])
                self.assertEqual((done.returncode, done.stderr), (DONE, b""), kind)
                twice = encoded(kind) + padding + encoded(kind) + padding
                self.assertEqual(len(zelcc("convert", "-", "-", "--to", "rgb24", data=twice)), 2 * len(picture()), kind)

    def test_other_bytes_are_left_out_and_told(self) -> None:
        attached = encoded("jpeg").replace(b"\xff\xdb", b"\xff\xe2\0\x08MPF\0\0\0\xff\xdb", 1)
        for name, content in [("trailer", encoded("png") + b"trailer"), ("preview", encoded("jpeg") + bytes(9) + encoded("jpeg", 16)),
                              ("thumbnail", encoded("png") + encoded("png", 16)), ("other eye", attached + encoded("jpeg"))]:
            with self.subTest(name):
                done = run(["convert", self.file("in", content), self.file("out.ppm")])
                self.assertEqual(done.returncode, DONE, done.stderr)
                self.assertIn(b"are left out", done.stderr)
                self.assertEqual((self.directory / "out.ppm").read_bytes()[:2], b"P6")

    def test_pictures_of_a_pipe_are_not_left_out(self) -> None:
        for kind, tail, code in [("png", encoded("png", 16), UNSUPPORTED), ("jpeg", encoded("jpeg", 16), UNSUPPORTED),
                                 ("png", encoded("png") + b"junk", FAILURE)]:
            self.assertEqual(run(["convert", "-", "-", "--to", "rgb24"], encoded(kind) + tail).returncode, code, kind)


class Contents(InDirectory):
    def test_corrupt_pictures_are_refused(self) -> None:
        whole = encoded("jpeg", 256)
        scan = whole.index(b"\xff\xda") + 14
        middle = (scan + len(whole)) // 2
        for name, damaged in [("cut", whole[:middle] + whole[-2:]), ("gap", whole[:middle] + whole[middle + 40:]),
                              ("more", whole[:-2] + b"rubbish" * 9 + whole[-2:]), ("zeros", whole[:scan] + bytes(50) + whole[scan + 50:])]:
            done = run(["convert", "-", "-", "--to", "rgb24"], damaged)
            self.assertEqual((name, done.returncode), (name, FAILURE))
            self.assertIn(b"orrupt", done.stderr)

    def test_foreign_files_are_named(self) -> None:
        for begin, name in [(b"II*\0", "TIFF"), (b"RIFF\1\2\3\4WEBPVP8 ", "WebP"), (b"GIF89a", "GIF"), (b"\0\0\0\x1cftypisom", "MP4"),
                            (b"\0\0\0\x1cftypheic", "HEIF"), (b"\x1a\x45\xdf\xa3", "Matroska")]:
            done = run(["convert", self.file("in", begin + bytes(100)), "-", "--to", "rgb24"])
            self.assertEqual(done.returncode, UNSUPPORTED, name)
            self.assertIn(name, done.stderr.decode())
            raw = ["convert", "-", "-", "--from", "gray", "--to", "gray", "--size", "4x1"]
            self.assertEqual(run(raw, begin[:4]).returncode, DONE, name)

    def test_cmyk_is_named(self) -> None:
        """The four components of a header are enough."""
        inks = b"\xff\xd8\xff\xee\0\x0eAdobe\0\x64\0\0\0\0\0\xff\xc0\0\x14\x08\0\1\0\1\4" + b"".join(bytes([i, 0x11, 0]) for i in range(4))
        done = run(["convert", "-", "-", "--to", "rgb24"], inks + b"\xff\xda\0\x0e\4\0\0\1\0\2\0\3\0\0\x3f\0")
        self.assertEqual(done.returncode, UNSUPPORTED)
        self.assertIn(b"CMYK", done.stderr)


class Told(InDirectory):
    def test_is_what_gets_lost_or_has_no_effect(self) -> None:
        for call, words in [("--from rgba --to rgb24", "alpha is left out"), ("--from rgba --to yuva444p", ""),
                            ("--from rgba --to rgb565le", "alpha is left out"),
                            ("--from rgb24 --to rgb24 --dither bayer", "--dither changes nothing"),
                            ("--from rgb24 --to rgb24 --dither bayer --levels 4", ""), ("--from yuyv422 --to gray", "luma as it is"),
                            ("--from rgb48le --to rgb24 --dither stucki", ""), ("--from rgb24 --to rgb24 --dither none", "")]:
            with self.subTest(call):
                done = run(["convert", "-", "-", *call.split(), "--size", "4x4"], bytes(192))
                self.assertEqual(done.returncode, DONE, done.stderr)
                rest = done.stderr.decode().split("\n", 1)[1]
                self.assertIn(words, rest)
                self.assertEqual(rest == "", words == "")
                self.assertEqual(run(["convert", "-", "-", *call.split(), "--size", "4x4", "-q"], bytes(192)).stderr, b"")

    def test_is_what_to_say(self) -> None:
        mosaic = b"P5\n8 8\n255\n" + bytes(64)
        self.assertIn(b"--from bayer_rggb8", run(["convert", "-", "-", "--to", "rgb24", "--demosaic", "ahd"], mosaic).stderr)
        self.assertIn(b"folder", run(["convert", self.file("in", encoded("png")), str(self.directory)]).stderr)
        self.assertIn(b"empty", run(["convert", self.file("in", b""), "-"]).stderr)


if __name__ == "__main__":
    unittest.main(argv=["inputs"])
