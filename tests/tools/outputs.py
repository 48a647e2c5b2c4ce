#!/usr/bin/env python3
"""What becomes of files that zelcc writes: they are whole or what they were before, and none of them is the input.

    outputs.py ZELCC"""

import os
import signal
import stat
import subprocess
import sys
import time
import unittest

from tool import ZELCC, InDirectory, run, zelcc

FAILURE, USAGE, NO_WAY, NO_FILE = 1, 2, 3, 4
GRAY = ["--from", "gray", "--size", "2x1"]
MOSAIC = ["--from", "bayer_rggb8", "--to", "rgb24", "--size", "2x2", "--demosaic", "ahd"]  # too small for it
HEADER = b"YUV4MPEG2 W2 H1 F25:1 Ip A1:1 Cmono\n"
Y4M = HEADER + b"".join(b"FRAME\n" + frame for frame in (b"ab", b"cd", b"ef"))
OLD = b"what stood there before"

# What a shell is told to do in a folder where in.y4m, in-3.y4m, link.y4m and name.y4m are one file and in-1.y4m is another.
LOSING = [
    "convert in.y4m in.y4m",
    "convert in.y4m ./../{folder}/in.y4m",
    "convert in.y4m link.y4m",
    "convert link.y4m name.y4m",
    "convert in.y4m in-%d.y4m",
    "convert in-3.y4m in-%01d.y4m --frames 3",
    "convert - in.y4m <in.y4m",
    "convert - in-%d.y4m <in.y4m",
    "convert in.y4m - --output-kind y4m >>in.y4m",
    "convert in.y4m /dev/stdout --output-kind y4m >>in.y4m",
    "convert - - --output-kind y4m <in.y4m 1<>in.y4m",
    "convert - - --from gray --to gray --size 2x1 <in.y4m 1<>in.y4m",
]


def as_another_user() -> None:
    """Who owns nothing; root may write whatever there is."""
    if os.geteuid() == 0:
        os.setgroups([])
        os.setgid(65534)
        os.setuid(65534)


class Outputs(InDirectory):
    def path(self, name: str, content: bytes = OLD):
        self.file(name, content)
        return self.directory / name

    def assert_nothing_beside(self) -> None:
        self.assertEqual([p.name for p in self.directory.iterdir() if p.name.startswith(".")], [])

    def test_are_never_the_input(self) -> None:
        for line in LOSING:
            with self.subTest(line):
                source, first = self.path("in.y4m", Y4M), self.path("in-1.y4m")
                for name, link in (("link.y4m", os.symlink), ("name.y4m", os.link), ("in-3.y4m", os.link)):
                    (self.directory / name).unlink(missing_ok=True)
                    link(source, self.directory / name)
                done = subprocess.run(f"{ZELCC} {line.format(folder=self.directory.name)}", shell=True, capture_output=True,
                                      check=False, cwd=self.directory, timeout=60)
                self.assertEqual(done.returncode, USAGE, done.stderr)
                self.assertIn(b"same file", done.stderr)
                self.assertEqual((source.read_bytes(), first.read_bytes()), (Y4M, OLD))

    def test_of_a_frame_that_goes_to_the_input_after_all(self) -> None:
        """Of pictures that follow each other nobody knows how many there are."""
        pictures = zelcc("convert", "-", "-", "--output-kind", "png", "--to", "gray", data=Y4M)
        source = self.path("in-3.png", pictures)
        self.assertEqual(run(["convert", str(source), self.file("in-%d.png")]).returncode, USAGE)
        self.assertEqual(source.read_bytes(), pictures)

    def test_are_left_by_an_error(self) -> None:
        no_frame, short = Y4M[:len(HEADER) + 7], Y4M[:-1]
        for data, name, code, left, *options in ((no_frame, "old.y4m", FAILURE, OLD),
                                                 (short, "old.y4m", FAILURE, Y4M[:-8]),  # frames before are whole
                                                 (Y4M, "old.png", USAGE, OLD),  # which holds a single one
                                                 (b"abcd", "old.ppm", NO_WAY, OLD, *MOSAIC)):
            with self.subTest(name=name, code=code):
                output = self.path(name)
                self.assertEqual(run(["convert", "-", str(output), *options], data).returncode, code)
                self.assertEqual(output.read_bytes(), left)
                self.assert_nothing_beside()

    def test_are_left_by_a_signal(self) -> None:
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                output = self.path("old.y4m")
                with subprocess.Popen([ZELCC, "convert", "-q", "-", str(output)], stdin=subprocess.PIPE) as process:
                    process.stdin.write(Y4M)
                    process.stdin.flush()
                    while not any(p.name.startswith(".") for p in self.directory.iterdir()):
                        self.assertIsNone(process.poll())
                        time.sleep(0.01)
                    process.send_signal(number)
                    self.assertEqual(process.wait(60), -number)
                self.assertEqual(output.read_bytes(), OLD)
                self.assert_nothing_beside()

    def test_keep_what_a_name_stands_for(self) -> None:
        """Mode, links and other names of the file."""
        source = self.file("in.y4m", Y4M)
        output, new, linked = self.path("old.y4m"), self.directory / "new.y4m", self.directory / "linked.y4m"
        output.chmod(0o640)
        os.symlink("old.y4m", linked)
        zelcc("convert", source, str(linked))
        self.assertTrue(linked.is_symlink())
        self.assertEqual((output.read_bytes(), stat.S_IMODE(output.stat().st_mode)), (Y4M, 0o640))
        os.symlink("new.y4m", self.directory / "dangling.y4m")
        run(["convert", source, self.file("dangling.y4m")], umask=0o027)
        self.assertEqual((new.read_bytes(), stat.S_IMODE(new.stat().st_mode)), (Y4M, 0o640))
        output.write_bytes(OLD)
        os.link(output, self.directory / "other.y4m")
        zelcc("convert", source, str(output))
        self.assertEqual((self.directory / "other.y4m").read_bytes(), Y4M)

    def test_obey_permissions(self) -> None:
        output, written = self.path("old.pgm"), b"P5\n2 1\n255\nab"
        self.directory.chmod(0o555)  # a folder that takes no other file
        self.addCleanup(self.directory.chmod, 0o755)
        for mode, data, code, content in ((0o444, b"ab", NO_FILE, OLD), (0o666, b"a", FAILURE, OLD), (0o666, b"ab", 0, written)):
            output.chmod(mode)
            done = run(["convert", "-", str(output), *GRAY], data, preexec_fn=as_another_user)
            self.assertEqual((done.returncode, output.read_bytes()), (code, content), done.stderr)

    def test_may_be_pipes_and_open_files(self) -> None:
        source, pipe = self.file("in.y4m", Y4M), self.file("pipe.y4m")
        os.mkfifo(pipe)
        for line in (f"{ZELCC} convert {source} {pipe} & cat {pipe}; wait",
                     f"{ZELCC} convert {source} /dev/stdout --output-kind y4m | cat",
                     f"{ZELCC} convert {source} /dev/fd/3 --output-kind y4m 3>&1 >/dev/null | cat",
                     f"exec 3>{self.file('open')}; {ZELCC} convert {source} /dev/fd/3 --output-kind y4m; cat /dev/fd/3"):
            with self.subTest(line):
                self.assertEqual(subprocess.run(line, shell=True, stdout=subprocess.PIPE, check=True, timeout=60).stdout, Y4M)


class Pipes(unittest.TestCase):
    def test_are_not_waited_for_after_an_error(self) -> None:
        """Though the other end of the pipe says nothing more, and doesn't leave."""
        for arguments, code in ((["/dev/full", *GRAY, "--to", "gray"], NO_FILE),
                                (["-", *MOSAIC], NO_WAY)):
            with self.subTest(arguments), subprocess.Popen([ZELCC, "convert", "-", *arguments], stdin=subprocess.PIPE,
                                                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
                process.stdin.write(b"abcd")
                process.stdin.flush()
                self.assertEqual(process.wait(60), code)

    def test_tell_that_nobody_got_the_words(self) -> None:
        with open("/dev/full", "wb") as full:
            for command in ("--help", "list", "info"):
                done = subprocess.run([ZELCC, command], stdout=full, stderr=subprocess.DEVNULL, check=False)
                self.assertEqual(done.returncode, NO_FILE, command)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
