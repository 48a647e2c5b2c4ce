"""Runs the program zelcc and FFmpeg for the tests."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ZELCC = sys.argv[1] if len(sys.argv) > 1 else "zelcc"
SKIPPED = 77


def run(arguments: list[str], data: bytes = b"", **options) -> subprocess.CompletedProcess:
    return subprocess.run([ZELCC, *arguments], input=data, capture_output=True, check=False, **options)


def zelcc(*arguments: str, data: bytes = b"") -> bytes:
    done = run(list(arguments), data)
    if done.returncode:
        raise AssertionError(f"zelcc {' '.join(arguments)}: {done.stderr.decode()}")
    return done.stdout


def ffmpeg(*arguments: str, data: bytes = b"") -> bytes:
    done = subprocess.run(["ffmpeg", "-v", "error", "-nostdin" if not data else "-y", *arguments], input=data, capture_output=True,
                          check=False)
    if done.returncode:
        raise AssertionError(f"ffmpeg {' '.join(arguments)}: {done.stderr.decode()}")
    return done.stdout


def has_ffmpeg() -> bool:
    return shutil.which("ffmpeg") is not None


class InDirectory(unittest.TestCase):
    """A test with a directory of its own."""

    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = pathlib.Path(directory.name)

    def file(self, name: str, content: bytes | None = None) -> str:
        path = self.directory / name
        if content is not None:
            path.write_bytes(content)
        return str(path)
