#!/usr/bin/env python3
"""The manual page and the completion know every option that the program has, and no other.

    documents.py ZELCC TOOLS"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from tool import ZELCC, zelcc

TOOLS = pathlib.Path(sys.argv[2])
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")


def options_of(*command: str) -> set[str]:
    return set(OPTION.findall(zelcc(*command, "--help").decode())) - {"--help", "--version"}


def completions(*words: str) -> list[str]:
    script = f"""source {TOOLS}/zelcc.bash
        PATH={pathlib.Path(ZELCC).parent}:$PATH
        compopt() {{ :; }}
        COMP_WORDS=({' '.join(f"'{w}'" for w in ('zelcc', *words))}) COMP_CWORD={len(words)}
        _zelcc zelcc '{words[-1]}' '{('zelcc', *words)[-2]}'
        printf '%s\\n' "${{COMPREPLY[@]}}\""""
    return subprocess.run(["bash", "-c", script], capture_output=True, check=True, text=True).stdout.split()


class Options(unittest.TestCase):
    def test_stand_in_the_manual_page(self) -> None:
        page = re.sub(r"\\f.", " ", (TOOLS / "zelcc.1").read_text().replace("\\-", "-"))
        known = set(OPTION.findall(page))
        offered = set().union(*(options_of(command) for command in ("convert", "list", "info", "check", "bench")))
        self.assertEqual(offered - known - {"--sums"}, set())  # which is for the program itself
        self.assertEqual(known - offered, set())

    def test_are_completed(self) -> None:
        for command in ("convert", "check", "bench"):
            self.assertEqual(set(completions(command, "-")) - {"--help"}, options_of(command), command)

    def test_values_are_completed(self) -> None:
        self.assertEqual(completions("convert", "--from", "nv1"), ["nv11", "nv12", "nv16"])
        self.assertEqual(completions("convert", "--matrix", "709"), ["709", "709-full"])
        self.assertEqual(completions("l"), ["list"])
        self.assertEqual(completions("bench", "zeliRGBToYCbCr_8u_C3R"), ["zeliRGBToYCbCr_8u_C3R"])
        self.assertEqual(len(completions("convert", "--to", "")), len(zelcc("list", "formats").splitlines()))

    @unittest.skipUnless(shutil.which("man"), "man is not installed")
    def test_the_page_is_well_formed(self) -> None:
        done = subprocess.run(["man", "--warnings", "-l", str(TOOLS / "zelcc.1")], capture_output=True, check=True, text=True,
                              env={**os.environ, "MANWIDTH": "100", "LC_ALL": "C.UTF-8"})
        self.assertEqual(done.stderr, "")
        self.assertIn("EXIT STATUS", done.stdout)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
