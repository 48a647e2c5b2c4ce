#!/usr/bin/env python3
"""zelcc where memory, threads, bytes to read or room to write give out, at each call that asks for them: it says so and ends with
an exit code, and leaves the old file or a whole new one, and nothing beside it.

    faults.py ZELCC LIBRARY_OF_FAULTS"""

import os
import subprocess
import sys
import unittest
from collections.abc import Iterator

from tool import InDirectory, run, zelcc

FAULTS = sys.argv[2]
DONE, FAILURE, NO_FILE = 0, 1, 4
FRAMES = 3
OLD = b"what stood there before"
# Of the calls for memory the last ones are all tried, and some of those before, by which the command line is read.
LAST, STRIDE = 80, 307

# Input, output, its first file, and options. Between them they have the readers and writers by which memory changes hands.
CONVERSIONS = [
    ("in.png", "out.jpg", "out.jpg"),
    ("in.jpg", "out.png", "out.png"),
    ("in.y4m", "out-%d.ppm", "out-1.ppm"),
    ("in.y4m", "out.y4m", "out.y4m", "--to", "yuv422p"),
]


class Faults(InDirectory):
    def setUp(self) -> None:
        super().setUp()
        noise = os.urandom(256 * 256 * 3)  # so large that an encoder's buffer has to grow
        for name in ("in.png", "in.jpg"):
            zelcc("convert", "--from", "rgb24", "--size", "256x256", "-", self.file(name), data=noise)
        zelcc("convert", "--from", "rgb24", "--size", "64x64", "-", self.file("in.y4m"), "--to", "yuv420p", "-q",
              data=noise[:64 * 64 * 3] * FRAMES)

    def convert(self, conversion: tuple, **environment: str) -> subprocess.CompletedProcess:
        source, target, _, *options = conversion
        return run(["convert", source, target, "--threads", "2", "--quiet", *options], cwd=self.directory,
                   env={**os.environ, **environment})

    def calls(self, conversion: tuple, kind: str) -> int:
        self.convert(conversion, LD_PRELOAD=FAULTS, ZELCC_FAULT=f"{kind}:0", ZELCC_FAULT_COUNT="count")
        return int((self.directory / "count").read_text())

    def outcomes(self, conversion: tuple, kind: str, numbers: list[int]) -> Iterator[tuple[int, bytes]]:
        """Exit code and file where the call of this number fails, and where all after it do as well."""
        path = self.directory / conversion[2]
        for fault in (f"{kind}:{number}{after}" for number in numbers for after in ("", "+")):
            path.write_bytes(OLD)
            done = self.convert(conversion, LD_PRELOAD=FAULTS, ZELCC_FAULT=fault)
            self.assertGreaterEqual(done.returncode, 0, f"{fault}: {done}")
            self.assertEqual(done.returncode == DONE, done.stderr == b"", f"{fault}: {done}")
            self.assertEqual([p.name for p in self.directory.iterdir() if p.name.startswith(".")], [], fault)
            yield done.returncode, path.read_bytes()

    def check(self, kind: str, code: int, others: set[int], numbers=lambda count: range(1, count + 1)) -> None:
        for conversion in CONVERSIONS:
            with self.subTest(conversion):
                count = self.calls(conversion, kind)
                whole = (self.directory / conversion[2]).read_bytes()
                found = set()
                for ended, content in self.outcomes(conversion, kind, numbers(count)):
                    found.add(ended)
                    # Of an input that breaks off the frames before are kept.
                    self.assertTrue(content in (OLD, whole) or (kind != "write" and whole.startswith(content) and content))
                    self.assertTrue(content == whole or ended != DONE)
                self.assertIn(code, found)
                self.assertLessEqual(found, {code, *others})

    def test_of_memory(self) -> None:
        def numbers(count: int) -> list[int]:
            return [*range(1, count - LAST, STRIDE), *range(count - LAST, count + 1)]
        # Done where it is a thread that has no memory to start with; libpng tells of its own lack as of any other error.
        self.check("memory", FAILURE, {DONE, NO_FILE}, numbers)

    def test_of_threads(self) -> None:
        self.check("thread", DONE, set())

    def test_of_reads(self) -> None:
        self.check("read", NO_FILE, set())

    def test_of_writes(self) -> None:
        self.check("write", NO_FILE, {DONE})  # done where it is the input that is closed


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
