#!/usr/bin/env python3
"""An emulated processor, which has reciprocals of its own, gives the published results.

    elsewhere.py ZELCC CHECKSUMS EMULATOR"""

import pathlib
import subprocess
import sys

zelcc, checksums, emulator = sys.argv[1:4]
lines = [line.split() for line in pathlib.Path(checksums).read_text().splitlines() if not line.startswith("#")]
published = {words[0]: words[-1] for words in lines if not words[-1].startswith("by-processor")}
sums = subprocess.run([emulator, "-cpu", "core2duo", zelcc, "check", "--sums"], stdout=subprocess.PIPE, check=True, text=True).stdout
found = dict(line.split() for line in sums.splitlines())
wrong = [name for name in published if found.get(name) != published[name]]
print(f"{len(published)} functions, {len(wrong)} of them with other results", *wrong, sep="\n")
sys.exit(bool(wrong))
