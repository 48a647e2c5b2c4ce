"""exactness.py SOURCE ZELCC_TESTS: every statement of docs/exactness.md names a test, every test that it names is there, and
docs/strips.txt has a line for every function and each of its methods, docs/statuses.txt one for every function."""

import collections
import pathlib
import re
import subprocess
import sys

root, program = pathlib.Path(sys.argv[1]), sys.argv[2]
METHODS = {"zelDitherNone", "zelDitherBayer", "noise or error diffusion"}


def tests_of_program():
    listed = subprocess.run([program, "--gtest_list_tests"], stdout=subprocess.PIPE, text=True, check=True).stdout
    suite = ""
    for line in listed.splitlines():
        if not line.startswith("  "):
            suite = re.sub(r"^(?:\w+/)?(\w+)\.(?:\s.*)?$", r"\1", line)
        else:
            yield f"{suite}.{line.strip().split('/')[0].split(' ')[0]}"


def tests_of_build():
    for path in (root / "tests/CMakeLists.txt", root / "tests/tools/CMakeLists.txt", root / "tests/emulation/emulation.cmake"):
        text = path.read_text()
        yield from re.findall(r"add_test\(NAME ([\w.-]+) ", text)
        yield from (f"structure.{name}" for name in re.findall(r"^add_structure_test\((\w+) ", text, re.MULTILINE))
        yield from (f"results.{name}" for name in re.findall(r"^ *add_results\(([\w-]+) ", text, re.MULTILINE))


def faults_of_page():
    known = set(tests_of_program()) | set(tests_of_build())
    if len(known) < 100:
        yield f"only {len(known)} tests were found"
    column = None
    for number, line in enumerate((root / "docs/exactness.md").read_text().splitlines(), 1):
        cells = [cell.strip() for cell in line.strip("|").split("|")] if line.startswith("|") else []
        if not cells:
            column = None
        elif column is None:
            column = cells.index("Held by") if "Held by" in cells else -1
        elif column >= 0 and not line.startswith("| ---"):
            names = re.findall(r"`([^`]+)`", cells[column])
            if not names:
                yield f"line {number} names no test"
            yield from (f"line {number}: there is no test {name}" for name in names if name not in known)


def faults_of_list():
    exports = re.findall(r"^ZEL_EXPORT\((zeli\w+),", (root / "src/frame/exports.def").read_text(), re.MULTILINE)
    methods = collections.defaultdict(list)
    for line in (root / "docs/strips.txt").read_text().splitlines():
        if not line.startswith("#"):
            name, _, _, *method = line.split(" ", 3)
            methods[name] += method or [""]
    for name in sorted(set(exports) | set(methods)):
        expected = {""}
        if name.startswith("zeliReduceBits"):
            expected = METHODS - {"zelDitherBayer"} if "_8u1u_" in name else METHODS
        if name not in exports or sorted(methods[name]) != sorted(expected):
            yield f"strips.txt has {methods[name]} for {name}"
    lines = (root / "docs/statuses.txt").read_text().splitlines()
    if {line.split()[0] for line in lines if not line.startswith("#")} != set(exports):
        yield "statuses.txt has not all functions, or others"


faults = [*faults_of_page(), *faults_of_list()]
print("\n".join(faults) or "The page names tests that are there, and the list is complete.")
sys.exit(1 if faults else 0)
