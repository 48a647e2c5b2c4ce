"""processor.py DIRECTORIES: C++ that speaks of a processor stands in the vector layer, simd, and in the files below, which are
about the processor themselves."""

import pathlib
import re
import sys

from verdict import conclude

WORDS = re.compile(r"\b(_mm\d*_\w+|__m(64|128|256|512)[dih]?|_mm_malloc|__mmask\d+|ZEL_MM|ZEL_LANES|\w*intrin\.h|"
                   r"__builtin_ia32_\w+|__builtin_cpu_\w+|__(SSE|SSSE|AVX)\w*__|cpuid\w*|x?getbv|asm|__asm__)\b")
ABOUT_THE_PROCESSOR = {
    "frame/dispatch.cpp": "picks the level by what the processor has",
    "dispatch.cpp": "does so for the video library",
    "zelcore.cpp": "reports what the processor and the system have",
}


def words_in(path):
    return [match[0] for match in WORDS.finditer(re.sub(r"//.*", "", path.read_text()))]


found = {}
for directory in map(pathlib.Path, sys.argv[1:]):
    for path in sorted(directory.rglob("*.*")):
        if path.suffix in (".h", ".cpp", ".def"):
            found[path.relative_to(directory).as_posix()] = words_in(path)
faults = [f"{name} speaks of the processor: {', '.join(sorted(set(words)))}" for name, words in found.items()
          if words and not name.startswith("simd/") and name not in ABOUT_THE_PROCESSOR]
faults += [f"{name} is no longer about the processor" for name in ABOUT_THE_PROCESSOR if not found.get(name)]
if not any(words for name, words in found.items() if name.startswith("simd/")):
    faults.append("no word was found where all of them should stand")
conclude(faults, f"{len(found)} files")
