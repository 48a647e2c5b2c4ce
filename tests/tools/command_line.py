#!/usr/bin/env python3
"""The command line of zelcc: exit codes, messages, pipes and files, as scripts see them."""

import os
import pty
import subprocess
import sys
import unittest

from tool import ZELCC, InDirectory, run, zelcc

RAW = ["--from", "nv12", "--to", "rgb24", "--size", "4x2"]
DONE, FAILURE, USAGE, UNSUPPORTED, NO_FILE = range(5)

# What is called, its exit code, and words of the message.
CALLS = [
    ("convert - - --from nv12 --to rgb24 --size 4x2", DONE, ""),
    ("convert - - --from nv12 --to rgb24 --size 4x4", FAILURE, "frame 1 has 12 of 24 bytes"),
    ("convert - - --from nv12 --to rgb24", USAGE, "--size"),
    ("convert - - --from nv12 --size 4x2", USAGE, "--to"),
    ("convert - - --from nv21x --to rgb24 --size 4x2", USAGE, "nv21"),
    ("convert - - --from nv12 --to rgb24 --size 4", USAGE, "1920x1080"),
    ("convert - - --from nv12 --to rgb24 --size 0x2", USAGE, "1920x1080"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --crop 4x2+1+0", USAGE, "beyond"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --crop 2x2+1+0", USAGE, "multiple of 2"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --crop 2x2+2+0", DONE, ""),
    ("convert - - --from nv12 --to bayer_rggb8 --size 4x2", UNSUPPORTED, "Reachable from nv12"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --matrix 2021", USAGE, "did you mean 2020"),
    ("convert - - --from nv12 --to nv12 --size 4x2 --matrix 709:20200", USAGE, "did you mean 2020"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --range full:most", USAGE, "one of limited, full"),
    ("convert - - --from gray10le --to rgb24 --size 4x2 --matrix yuv", UNSUPPORTED, "no functions lead from gray10le"),
    ("convert - - --from rgb24 --to gray12le --size 4x2 --matrix 709-full", UNSUPPORTED, "to gray12le"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --matrix yuv --range limited", UNSUPPORTED, "has the full one"),
    ("convert - - --from yuvj420p --to rgb24 --size 4x2 --range limited", USAGE, "by its name"),
    ("convert - - --from nv12 --to rgb24 --size 4x2 --threads 0", USAGE, "--threads"),
    ("convert /nonexistent/in - --from nv12 --to rgb24 --size 4x2", NO_FILE, "cannot open /nonexistent/in"),
    ("convert - /nonexistent/out --from nv12 --to rgb24 --size 4x2", NO_FILE, "cannot write /nonexistent/out"),
    ("convert - /dev/full --from nv12 --to rgb24 --size 4x2", NO_FILE, "No space left"),
    ("convert - out.png --from nv12 --to yuyv422 --size 4x2", USAGE, "can't hold yuyv422"),
    ("convert --from nv12 --to rgb24", USAGE, "--dry-run"),
    ("convert --from nv12 --to rgb24 --dry-run", DONE, ""),
    ("convert - - --from bayer_rggb8 --to rgb24 --size 4x3 --demosaic ahd", UNSUPPORTED, "too small"),
    ("convert - - --from gray --to gray --size 4x3 --levels 1", USAGE, "--levels"),
    ("convert - - --from rgb24 --to gray --size 2x2 --weights 1,0", USAGE, "three numbers"),
    ("convert --weights 1,0,0 - - --from rgb24 --to gray --size 2x2", DONE, ""),
    ("convert --twist 1,0 - - --from rgb24 --to rgb24 --size 2x2", USAGE, "12 or 16"),
    ("convert - - --from rgbf32le --to rgbf32le --size 1x1 --gamma forward --gamma-range 0", USAGE, "--gamma-range"),
    ("convert - - --from rgbf32le --to rgbf32le --size 1x1 --gamma forward --gamma-range 1,0", USAGE, "upper end"),
    ("convert - - --from rgbf32le --to rgbf32le --size 1x1 --gamma forward --gamma-range 0,2", DONE, ""),
    ("list formats nosuchword", FAILURE, "fewer"),
    ("list nosuchlist", USAGE, "nosuchlist"),
    ("bench nosuchfunction", USAGE, "list functions"),
    ("bench RGBToGray_8u_C3C1R --seconds 0.01 --size 64x64", DONE, ""),
    ("check nosuchfunction", USAGE, "no function"),
    ("", USAGE, "subcommand"),
    ("covert - -", USAGE, "one of convert, list"),
    ("--help", DONE, ""),
    ("convert --help", DONE, ""),
    ("--version", DONE, ""),
    ("info", DONE, ""),
]


class ExitCodes(InDirectory):
    def test_of_all_calls(self) -> None:
        for call, code, words in CALLS:
            with self.subTest(call):
                done = run(call.split(), bytes(12), cwd=self.directory)
                message = done.stderr.decode()
                self.assertEqual(done.returncode, code, message)
                self.assertIn(words, message)
                if code == DONE:
                    self.assertRegex(message, r"\A(zelcc: by .*\n)?\Z")

    def test_of_a_level_that_is_not_there(self) -> None:
        done = run(["info"], env={**os.environ, "ZELCC_LEVEL": "avx1024"})
        self.assertEqual(done.returncode, USAGE)
        self.assertIn(b"ssse3", done.stderr)


    def test_of_a_huge_frame(self) -> None:
        self.assertEqual(run(["convert", "-", "-", "--to", "gray"], b"YUV4MPEG2 W2000000000 H1 Cmono\nFRAME\n").returncode, UNSUPPORTED)


class Converting(InDirectory):
    def test_frames_before_a_short_one_are_whole(self) -> None:
        whole = zelcc("convert", "-", "-", *RAW, data=bytes(range(24)))
        done = run(["convert", "-", self.file("out"), *RAW], bytes(range(24)) + b"short")
        self.assertEqual(done.returncode, FAILURE)
        self.assertIn(b"frame 3", done.stderr)
        self.assertEqual((self.directory / "out").read_bytes(), whole)

    def test_content_goes_before_the_name(self) -> None:
        path = self.file("picture.jpg", b"P5\n2 1\n255\nab")
        self.assertEqual(zelcc("convert", path, "-", "--to", "gray"), b"ab")
        path = self.file("picture.png", b"ab")
        self.assertIn(b"is no png file", run(["convert", path, "-", "--to", "gray"]).stderr)

    def test_numbered_files(self) -> None:
        zelcc("convert", "-", self.file("f%03d.pgm"), "--from", "gray", "--size", "2x1", data=b"abcdef")
        self.assertEqual([(self.directory / f"f00{i}.pgm").read_bytes()[-2:] for i in (1, 2, 3)], [b"ab", b"cd", b"ef"])
        self.assertEqual(run(["convert", "-", self.file("f.png"), "--from", "gray", "--size", "2x1"], b"abcd").returncode, USAGE)

    def test_a_mosaic_in_a_gray_picture(self) -> None:
        pgm = b"P5\n6 6\n255\n" + bytes(range(36))
        raw = zelcc("convert", "-", "-", "--from", "bayer_grbg8", "--to", "rgb24", "--size", "6x6", "--demosaic", "ahd", data=pgm[-36:])
        self.assertEqual(zelcc("convert", "-", "-", "--from", "bayer_grbg8", "--to", "rgb24", "--demosaic", "ahd", data=pgm), raw)

    def test_the_frame_count(self) -> None:
        self.assertEqual(zelcc("convert", "-", "-", *RAW, "--frames", "2", data=bytes(48)), zelcc("convert", "-", "-", *RAW, data=bytes(24)))
        self.assertEqual(zelcc("convert", "-", "-", *RAW, "--frames", "0", data=bytes(48)), b"")

    def test_the_dry_run_names_the_functions(self) -> None:
        self.assertEqual(zelcc("convert", "--from", "nv12", "--to", "rgb24", "--dry-run"), b"zeliYCbCr420ToRGB_8u_P2C3R  nv12 -> rgb24\n")

    def test_the_functions_are_told(self) -> None:
        self.assertEqual(run(["convert", "-", "-", *RAW], bytes(12)).stderr, b"zelcc: by zeliYCbCr420ToRGB_8u_P2C3R\n")
        several = ["convert", "-", "-", "--from", "rgb24", "--to", "rgb565le", "--size", "2x2"]
        self.assertEqual(run(several, bytes(12)).stderr, b"zelcc: by moved samples, zeliBGRToBGR565_8u16u_C3R\n")
        self.assertEqual(run([*several, "--quiet"], bytes(12)).stderr, b"")

    def test_a_reader_that_leaves_ends_it(self) -> None:
        command = f"head -c 12000000 /dev/zero | {ZELCC} convert - - --from gray --to gray --size 1000x1000 | head -c 1"
        self.assertEqual(subprocess.run(command, shell=True, capture_output=True, timeout=60, check=True).stdout, b"\0")


    def test_a_frame_is_not_held_back(self) -> None:
        command = [ZELCC, "convert", "-", "-", "--to", "gray"]
        with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            process.stdin.write(b"YUV4MPEG2 W2 H2 Cmono\nFRAME\nabcd")
            process.stdin.flush()
            self.assertEqual(os.read(process.stdout.fileno(), 100), b"abcd")
            process.stdin.write(b"FRAME\nefgh")
            process.stdin.close()
            self.assertEqual(process.stdout.read(), b"efgh")


class Levels(unittest.TestCase):
    def test_are_those_of_the_library(self) -> None:
        for level, name in (("s8", b"s8"), ("ssse3", b"v8")):
            shown = run(["info"], env={**os.environ, "ZELCC_LEVEL": level}).stdout
            self.assertIn(b"level      " + level.encode(), shown)
            self.assertRegex(shown, b"class .*[(]" + name + b"[)]")

    def test_a_wrong_result_is_found(self) -> None:
        """Another function takes the place of the library's."""
        done = run(["check", "RGBToGray_8u_C3C1R"], env={**os.environ, "LD_PRELOAD": sys.argv[2]})
        self.assertEqual(done.returncode, FAILURE, done.stderr)
        self.assertIn(b"zeliRGBToGray_8u_C3C1R is not as published at s8 ssse3", done.stdout)
        self.assertIn(b"1 wrong", done.stdout)


class Progress(InDirectory):
    def stderr_on_a_terminal(self, *options: str) -> bytes:
        terminal, end = pty.openpty()
        with subprocess.Popen([ZELCC, "convert", "-", "/dev/null", "--from", "nv12", "--to", "rgb24", "--size", "4x2", *options],
                              stdin=subprocess.PIPE, stderr=end) as process:
            process.communicate(bytes(36))
        os.close(end)
        shown = b""
        try:
            while part := os.read(terminal, 4096):
                shown += part
        except OSError:  # all is read
            pass
        finally:
            os.close(terminal)
        return shown

    def test_is_shown_on_a_terminal_alone(self) -> None:
        self.assertIn(b"frame 3,", self.stderr_on_a_terminal())
        self.assertIn(b"frames/s", self.stderr_on_a_terminal())
        self.assertEqual(self.stderr_on_a_terminal("--quiet"), b"")


class Words(unittest.TestCase):
    def test_of_ffmpeg_mean_the_same(self) -> None:
        frame = bytes(range(200, 224))
        for theirs, ours in ((["--matrix", "bt2020nc", "--range", "tv"], ["--matrix", "2020", "--range", "limited"]),
                             (["--matrix", "smpte240m", "--range", "jpeg"], ["--matrix", "240m", "--range", "full"])):
            with self.subTest(theirs):
                made = [zelcc("convert", "-", "-", "--from", "p010le", "--to", "rgb24", "--size", "4x2", *words, data=frame)
                        for words in (theirs, ours, [])]
                self.assertEqual(made[0], made[1])
                self.assertNotEqual(made[0], made[2])
        pair = zelcc("convert", "-", "-", "--from", "nv12", "--to", "nv21", "--size", "4x2", "--matrix", "smpte170m:bt709",
                     "--dry-run", data=bytes(12))
        self.assertIn(b"zelvConvert", pair)


class Lists(unittest.TestCase):
    def test_name_what_is_converted_without_one(self) -> None:
        self.assertIn(b"libzelvideo", run(["list", "conversions", "p010"]).stderr)

    def test_are_filtered_by_all_words(self) -> None:
        lines = zelcc("list", "conversions", "nv12", "RGB24").decode().splitlines()
        self.assertEqual(len(lines), 2)
        self.assertEqual(len(zelcc("list", "functions").splitlines()), 520)
        self.assertTrue(zelcc("list", "formats", "NV12").startswith(b"nv12 "))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
