"""headers.py EXPORTS.DEF PATHS: each public header, named or in a directory, compiles alone, as strict C99 and as C++, and together
they declare exactly the listed exports. CC, CXX and CFLAGS come from the environment."""

import os
import pathlib
import re
import subprocess
import sys

from binaries import output
from export_list import exports
from verdict import conclude

LANGUAGES = [(os.environ["CC"], "c", "-std=c99", "-Wstrict-prototypes"), (os.environ["CXX"], "c++", "-std=c++11")]


def compile_faults(header, include_options):
    for compiler, language, *options in LANGUAGES:
        result = subprocess.run([compiler, "-x", language, *options, "-pedantic", "-Wall", "-Wextra", "-Werror", "-fsyntax-only",
                                 *os.environ["CFLAGS"].split(), *include_options, "-"],
                                input=f'#include "{header}"\n', capture_output=True, text=True)
        if result.returncode:
            yield f"{header} as {language}:\n{result.stderr}"


def declaration_faults(names, include_options):
    text = output(os.environ["CC"], "-E", "-P", *include_options, "-x", "c", "-", input='#include "zelcc.h"\n')
    declared = re.findall(r"\b(zelcc\w+|zeli\w+) *\(", text)
    yield from (f"{name} is declared {declared.count(name)} times" for name in names if declared.count(name) != 1)
    yield from (f"{name} is declared, but not listed" for name in sorted(set(declared) - set(names)))


paths = [pathlib.Path(p) for p in sys.argv[2:]]
folders = {p if p.is_dir() else p.parent: sorted(p.rglob("*.h")) if p.is_dir() else [p] for p in paths}
includes = [f"-I{folder}" for folder in folders]
headers = [h.relative_to(folder) for folder, found in folders.items() for h in found]
faults = [fault for h in headers for fault in compile_faults(h, includes)]
conclude([*faults, *declaration_faults(exports(sys.argv[1]), includes)], f"{len(headers)} headers")
