"""processor.py DIRECTORIES: C++ that speaks of a processor stands in its folder of the vector layer, which has a level.h, and in the
files below, which are about the processor themselves."""

import pathlib
import re
import sys

from verdict import conclude

WORDS = re.compile(r"\b(_mm\d*_\w+|__m(64|128|256|512)[dih]?|_mm_malloc|__mmask\d+|ZEL_MM|(Float|Double)?Register|\w*intrin\.h|"
                   r"__builtin_ia32_\w+|__builtin_cpu_\w+|__(SSE|SSSE|AVX|ARM|aarch64|x86_64|i386)\w*__|arm_neon\.h|"
                   r"wasm_[a-z]*\d+\w*|"
                   r"v[a-z]\w*q_[usf](8|16|32|64)|\w+x\d+_t|cpuid\w*|x?getbv|getauxval|asm|__asm__)\b")
ABOUT_THE_PROCESSOR = {
    "simd/level.h": "picks the folder",
    "x86/processor.h": "reports what the processor and the system have",
    "aarch64/processor.h": "reports what the system has of the processor",
    "reciprocal.h": "has the one number of the models that is the processor's",
}


def words_in(path):
    return [match[0] for match in WORDS.finditer(re.sub(r"//.*", "", path.read_text()))]


found, folders = {}, set()
for directory in map(pathlib.Path, sys.argv[1:]):
    folders |= {path.parent.relative_to(directory).as_posix() + "/" for path in directory.glob("simd/*/level.h")}
    for path in sorted(directory.rglob("*.*")):
        if path.suffix in (".h", ".cpp", ".def"):
            found[path.relative_to(directory).as_posix()] = words_in(path)
faults = [f"{name} speaks of the processor: {', '.join(sorted(set(words)))}" for name, words in found.items()
          if words and not name.startswith(tuple(folders)) and name not in ABOUT_THE_PROCESSOR]
faults += [f"{name} is no longer about the processor" for name in ABOUT_THE_PROCESSOR if not found.get(name)]
faults += [f"no word was found in {folder}, where all of them should stand" for folder in sorted(folders)
           if not any(words for name, words in found.items() if name.startswith(folder))]
if not folders:
    faults.append("the vector layer has no processor")
conclude(faults, f"{len(found)} files")
