#!/usr/bin/env python3
"""CHANGELOG.md names every function and every described conversion whose published checksum has changed, in the version that changed it.

    changelog.py CHECKSUMS CHANGELOG VERSION"""

import pathlib
import re
import sys
import unittest

SECTION = re.compile(r"^## (\d+\.\d+\.\d+)\n(.*?)(?=^## |\Z)", re.MULTILINE | re.DOTALL)
RESULTS = re.compile(r"^Results:(.*?)(?:\n\n|\Z)", re.MULTILINE | re.DOTALL)


def read_checksums(text: str) -> dict[str, list[tuple[str, str]]]:
    lines = (line.split() for line in text.splitlines() if line and not line.startswith("#"))
    return {words[0]: list(zip(words[1::2], words[2::2])) for words in lines}


def problems(checksums: str, changelog: str, version: str) -> list[str]:
    found = []
    sections = dict(SECTION.findall(changelog))
    named: dict[str, set[str]] = {}
    for number, text in sections.items():
        results = RESULTS.search(text)
        if not results:
            found.append(f"version {number} doesn't say whether results changed, in a paragraph that begins with \"Results:\"")
        named[number] = set(re.findall(r"`(zeli\w+|zelv:[^`\s]+)`", results[1])) if results else set()
    if version not in sections:
        found.append(f"there is no section of version {version}")
    listed = read_checksums(checksums)
    changed = {(version_of, name) for name, entries in listed.items() for version_of, _ in entries[1:]}
    for number, name in sorted(changed):
        if name not in named.get(number, set()):
            found.append(f"{name} has changed in version {number}, which doesn't name it among its results")
    for number, names in named.items():
        for name in sorted(names):
            if (number, name) not in changed and not any(sum_of.startswith("by-processor") for _, sum_of in listed.get(name, [])):
                found.append(f"{name} is named in version {number}, but its checksum has not changed in it")
    return found


class Problems(unittest.TestCase):
    LIST = "# words\nzeliA 1.0.0 00 1.1.0 01\nzeliB 1.0.0 00\nzeliC 1.0.0 by-processor:02\n"
    FIRST = "## 1.0.0\n\nResults: the first.\n"

    def check(self, section: str, *words: str, checksums: str = LIST, version: str = "1.1.0") -> None:
        found = problems(checksums, "# Changes\n\n" + section + self.FIRST, version)
        self.assertEqual(len(found), len(words), found)
        for problem, word in zip(found, words):
            self.assertIn(word, problem)

    def test_of_sections(self) -> None:
        self.check("## 1.1.0\n\n- All new.\n\nResults: other ones of `zeliA`, which\nrounds.\n\n")
        self.check("## 1.1.0\n\nResults: of `zeliC` on\nmachines, `zeliA`.\n\n")
        self.check("## 1.1.0\n\nResults: unchanged.\n\n", "zeliA has changed in version 1.1.0")
        self.check("## 1.1.0\n\n- `zeliA` is new.\n\nResults: unchanged.\n\n", "zeliA has changed in version 1.1.0")
        self.check("## 1.1.0\n\nResults: `zeliA`, `zeliB`.\n\n", "zeliB is named")
        self.check("## 1.1.0\n\n- Words.\n\n", "doesn't say", "zeliA has changed")
        self.check("## 1.1.0\n\nResults: `zelv:a:b`.\n\n", checksums="zelv:a:b 1.0.0 00 1.1.0 01\n")
        self.check("", "no section of version 1.1.0", "zeliA has changed")

    def test_of_a_change_within_a_version(self) -> None:
        self.check("", "zeliB has changed in version 1.0.0", checksums="zeliB 1.0.0 00 1.0.0 01\n", version="1.0.0")


if __name__ == "__main__":
    CHECKSUMS, CHANGELOG, VERSION = sys.argv[1:4]
    if not unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful():
        sys.exit(1)
    FOUND = problems(pathlib.Path(CHECKSUMS).read_text(), pathlib.Path(CHANGELOG).read_text(), VERSION)
    print("\n".join(FOUND))
    sys.exit(bool(FOUND))
