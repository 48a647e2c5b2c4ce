#!/usr/bin/env python3
"""FFmpeg as the other end: it produces what zelcc reads, and reads what zelcc writes, raw and in files, frame by frame."""

import math
import sys
import unittest

from tool import SKIPPED, InDirectory, ffmpeg, has_ffmpeg, run, zelcc

FRAMES = 3
UNSUPPORTED = 3
EVEN, ODD = (34, 18), (31, 17)
SIZES = [EVEN, ODD]


def test_pattern(size: tuple[int, int], pixels: str) -> bytes:
    """Frames with smooth areas and edges, in the format."""
    filters = f"format=rgb24,gblur=sigma=2,crop={size[0]}:{size[1]}:0:0:exact=1"
    return ffmpeg("-f", "lavfi", "-i", "testsrc2=size=64x48:rate=25", "-frames:v", str(FRAMES), "-vf", filters, "-f", "rawvideo",
                  "-sws_flags", "accurate_rnd+full_chroma_int+bilinear", "-pix_fmt", pixels, "-")


def by_ffmpeg(data: bytes, size: tuple[int, int], source: str, target: str) -> bytes:
    return ffmpeg("-f", "rawvideo", "-pix_fmt", source, "-s", f"{size[0]}x{size[1]}", "-i", "-", "-f", "rawvideo", "-sws_flags",
                  "accurate_rnd+full_chroma_int+bilinear", "-pix_fmt", target, "-", data=data)


def by_zelcc(data: bytes, size: tuple[int, int], source: str, target: str, *options: str) -> bytes:
    return zelcc("convert", "-", "-", "--from", source, "--to", target, "--size", f"{size[0]}x{size[1]}", *options, data=data)


def likeness(a: bytes, b: bytes) -> float:
    """The PSNR of bytes."""
    if len(a) != len(b):
        raise AssertionError(f"{len(a)} bytes and {len(b)}")
    error = sum((x - y) ** 2 for x, y in zip(a, b)) / len(a)
    return 10 * math.log10(255 ** 2 / error) if error else 99


def formats_of_both() -> list[str]:
    """Those that FFmpeg can convert from and to, too."""
    own = {line.split()[0] for line in zelcc("list", "formats").decode().splitlines()}
    known = {words[1]: words[0] for line in ffmpeg("-pix_fmts").decode().splitlines() if len(words := line.split()) >= 4}
    return sorted(name for name in own if known.get(name, "").startswith("IO"))


def reaches(source: str, target: str) -> bool:
    return run(["convert", "--from", source, "--to", target, "--dry-run"]).returncode == 0


# Least likeness of RGB to what FFmpeg makes of the same frames: what few bits and few chroma samples leave.
ROUGH = {"rgb444le": 22, "bgr444le": 22, "rgb555le": 28, "bgr555le": 28, "rgb565le": 28, "bgr565le": 28, "yuv410p": 22, "yuv411p": 24}


class Names(unittest.TestCase):
    def test_that_only_ffmpeg_has_are_told_as_such(self) -> None:
        own = {line.split()[0] for line in zelcc("list", "formats").decode().splitlines()}
        told = 0
        for line in ffmpeg("-pix_fmts").decode().splitlines():
            words = line.split()
            if len(words) != 5 or words[1] in own or words[1].startswith("yuvj") or not words[2].isdigit():
                continue
            done = run(["convert", "--from", words[1], "--to", "rgb24", "--dry-run"])
            message = done.stderr.decode()
            with self.subTest(words[1]):
                self.assertEqual(done.returncode, UNSUPPORTED, message)
                self.assertIn(f"takes or makes {words[1]}, which is FFmpeg's name of", message)
                depths = {int(depth) for depth in words[4].split("-")}
                if min(depths) >= 8:  # others are packed, or no samples
                    self.assertIn(f"{min(depths)}", message.split("FFmpeg's name")[1])
                self.assertEqual("big-endian" in message, words[1].endswith("be"))
                told += 1
        self.assertGreater(told, 80)
        self.assertEqual(run(["convert", "--from", "yuv421p", "--to", "rgb24", "--dry-run"]).returncode, 2)


class Raw(InDirectory):
    def test_frames_have_the_same_bytes(self) -> None:
        """A copy finds the same number of frames, with no byte left over."""
        for name in formats_of_both():
            for size in SIZES:
                with self.subTest(name, size=size):
                    data = test_pattern(size, name)
                    self.assertEqual(by_zelcc(data, size, name, name), data)

    def test_colours_are_those_of_ffmpeg(self) -> None:
        compared = 0
        for name in formats_of_both():
            least = ROUGH.get(name, 30)
            data = test_pattern(EVEN, name)
            colours = by_ffmpeg(data, EVEN, name, "rgb24")
            if reaches(name, "rgb24") and not name.startswith("gray"):
                with self.subTest(f"from {name}"):
                    self.assertGreater(likeness(by_zelcc(data, EVEN, name, "rgb24"), colours), least)
                compared += 1
            if reaches("rgb24", name) and not name.startswith(("gray", "mono")):
                with self.subTest(f"to {name}"):
                    back = by_ffmpeg(by_zelcc(colours, EVEN, "rgb24", name), EVEN, name, "rgb24")
                    self.assertGreater(likeness(back, colours), least)
                compared += 1
        self.assertGreater(compared, 30)


def checksums(data: bytes, *options: str) -> list[str]:
    lines = ffmpeg(*options, "-i", "-", "-f", "framemd5", "-", data=data).decode().splitlines()
    return [line.split(",")[-1].strip() for line in lines if not line.startswith("#")]


class Streams(InDirectory):
    def test_y4m_both_ways(self) -> None:
        for pixels in ("yuv420p", "yuv422p", "yuv444p", "yuv411p", "gray", "yuv420p10le", "yuv422p16le", "yuv444p12le", "gray10le"):
            for size in SIZES:
                if pixels[3:6] in ("420", "422") and pixels.endswith("le") and size[0] % 2:
                    continue  # FFmpeg cuts half a word of chroma off
                with self.subTest(pixels, size=size):
                    raw = test_pattern(size, pixels)
                    options = ("-f", "rawvideo", "-pix_fmt", pixels, "-s", f"{size[0]}x{size[1]}")
                    y4m = ffmpeg(*options, "-i", "-", "-strict", "-1", "-f", "yuv4mpegpipe", "-", data=raw)
                    self.assertEqual(zelcc("convert", "-", "-", "--to", pixels, data=y4m), raw)
                    written = by_zelcc(raw, size, pixels, pixels, "--output-kind", "y4m")
                    self.assertEqual(checksums(written, "-f", "yuv4mpegpipe"), checksums(raw, *options))

    def test_colours_of_other_matrices(self) -> None:
        """Both ways, as FFmpeg has them of the matrix, and not of another."""
        picture = test_pattern(EVEN, "rgb24")
        for matrix, theirs, other in (("2020", "bt2020", "601"), ("709", "bt709", "2020"), ("240m", "smpte240m", "fcc"), ("fcc", "fcc", "709")):
            for name in ("yuv444p10le", "p010le"):
                for span in ("full", "limited"):
                    with self.subTest(matrix, name=name, range=span):
                        options = f"matrix={theirs}:range={span}:flags=accurate_rnd+full_chroma_int+full_chroma_inp"
                        made = ffmpeg("-f", "rawvideo", "-pix_fmt", "rgb24", "-s", f"{EVEN[0]}x{EVEN[1]}", "-i", "-", "-vf",
                                      "scale=out_color_" + options.replace(":range", ":out_range"), "-pix_fmt", name, "-f", "rawvideo", "-",
                                      data=picture)
                        good, bad = (likeness(by_zelcc(made, EVEN, name, "rgb24", "--matrix", m, "--range", span), picture)
                                     for m in (matrix, other))
                        own = by_zelcc(picture, EVEN, "rgb24", name, "--matrix", matrix, "--range", span)
                        self.assertGreater(good, bad + (3 if name.startswith("yuv444") else 0))
                        self.assertGreater(likeness(by_zelcc(own, EVEN, name, "rgb24", "--matrix", matrix, "--range", span), picture), good - 1)

    def test_timing_is_kept(self) -> None:
        y4m = ffmpeg("-f", "lavfi", "-i", "testsrc2=size=16x16:rate=30000/1001", "-frames:v", "2", "-vf", "setsar=4/3", "-pix_fmt",
                     "yuv420p", "-f", "yuv4mpegpipe", "-")
        header = zelcc("convert", "-", "-", "--output-kind", "y4m", data=y4m).split(b"\n")[0]
        self.assertEqual(header, b"YUV4MPEG2 W16 H16 F30000:1001 Ip A4:3 C420jpeg")

    def test_what_ffmpeg_says_is_obeyed(self) -> None:
        """Ranges, fields and chroma locations as FFmpeg writes them; the fields as it converts them."""
        made = ("-f", "lavfi", "-i", "testsrc2=size=96x64:rate=2,setsar=1", "-frames:v", "1")
        full = ffmpeg(*made, "-pix_fmt", "yuvj444p", "-f", "yuv4mpegpipe", "-")
        colours = ffmpeg("-f", "yuv4mpegpipe", "-i", "-", "-vf", "scale=flags=accurate_rnd+full_chroma_int", "-pix_fmt", "rgb24", "-f",
                         "rawvideo", "-", data=full)
        self.assertGreater(likeness(zelcc("convert", "-", "-", "--to", "rgb24", data=full), colours), 36)
        self.assertLess(likeness(zelcc("convert", "-", "-", "--to", "rgb24", "--range", "limited", data=full), colours), 32)
        fields = ffmpeg(*made, "-vf", "format=yuv420p,setfield=tff", "-field_order", "tt", "-f", "yuv4mpegpipe", "-")
        self.assertIn(b" It ", fields.split(b"\n")[0])
        for option, interl in (([], 1), (["--progressive"], 0)):
            colours = ffmpeg("-f", "yuv4mpegpipe", "-i", "-", "-vf", f"scale=interl={interl}:flags=accurate_rnd+full_chroma_int",
                             "-pix_fmt", "rgb24", "-f", "rawvideo", "-", data=fields)
            results = {o: likeness(zelcc("convert", "-", "-", "--to", "rgb24", *o, data=fields), colours) for o in ((), ("--progressive",))}
            self.assertEqual(max(results, key=results.get), tuple(option), results)
        left = ffmpeg(*made, "-pix_fmt", "yuv420p", "-chroma_sample_location", "left", "-f", "yuv4mpegpipe", "-")
        self.assertIn(b" C420mpeg2", left.split(b"\n")[0])
        self.assertIn(b" C420mpeg2", zelcc("convert", "-", "-", "--output-kind", "y4m", data=left).split(b"\n")[0])

    def test_pictures_both_ways(self) -> None:
        kinds = [("png", "png", ("rgb24", "rgba", "gray", "rgb48le", "rgba64le", "gray16le"), True),
                 ("ppm", "pnm", ("rgb24", "rgb48le"), True), ("pgm", "pnm", ("gray", "gray16le"), True),
                 ("mjpeg", "jpeg", ("rgb24",), False)]
        endian = {"ppm": ("rgb48be",), "pgm": ("gray16be",), "png": ("rgb48be", "rgba64be", "gray16be")}
        for codec, kind, pixels, exact in kinds:
            for name in pixels:
                with self.subTest(f"{codec} {name}"):
                    size = ODD
                    raw = test_pattern(size, name)
                    stored = name.replace("le", "be") if name.replace("le", "be") in endian.get(codec, ()) else name
                    stored = "yuvj444p" if codec == "mjpeg" else stored
                    options = ("-f", "rawvideo", "-pix_fmt", name, "-s", f"{size[0]}x{size[1]}")
                    pictures = ffmpeg(*options, "-i", "-", "-c:v", codec, "-q:v", "1", "-pix_fmt", stored, "-f", "image2pipe", "-",
                                      data=raw)
                    read = zelcc("convert", "-", "-", "--to", name, data=pictures)
                    written = by_zelcc(raw, size, name, name, "--output-kind", kind)
                    back = ffmpeg("-f", "image2pipe", "-c:v", codec, "-i", "-", "-f", "rawvideo", "-pix_fmt", name, "-", data=written)
                    if exact:
                        self.assertEqual(read, raw)
                        self.assertEqual(back, raw)
                    else:
                        self.assertGreater(likeness(read, raw), 30)
                        self.assertGreater(likeness(back, raw), 26)  # it has half as much chroma

    def test_pfm_both_ways(self) -> None:
        """PFM begins with the bottom row; versions of FFmpeg begin with the top one."""
        rows = test_pattern(ODD, "grayf32le")[:ODD[0] * ODD[1] * 4]
        step = ODD[0] * 4
        turned = b"".join(rows[i:i + step] for i in range(len(rows) - step, -1, -step))
        options = ("-f", "rawvideo", "-pix_fmt", "grayf32le", "-s", f"{ODD[0]}x{ODD[1]}")
        picture = ffmpeg(*options, "-i", "-", "-c:v", "pfm", "-f", "image2pipe", "-", data=rows)
        self.assertIn(zelcc("convert", "-", "-", "--to", "grayf32le", data=picture), (rows, turned))
        written = by_zelcc(rows, ODD, "grayf32le", "grayf32le", "--output-kind", "pfm")
        self.assertTrue(written.endswith(rows[:step]))
        self.assertIn(ffmpeg("-f", "image2pipe", "-c:v", "pfm", "-i", "-", *options[:4], "-", data=written), (rows, turned))


if __name__ == "__main__":
    if not has_ffmpeg():
        print("Skipped: tool.ffmpeg, for Debian's ffmpeg is not installed")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0]])
