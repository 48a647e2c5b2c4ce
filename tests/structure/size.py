"""size.py EXPORTS.DEF OBJECTS: prints how much code the levels have, and holds the mean of an export, all levels together, to the
limit."""

import sys

from binaries import level_of, output, sections
from export_list import exports
from verdict import conclude

LIMITS = {"ELF64": 4608, "ELF32": 5376}


def code_size(paths):
    # A function that several object files carry has a section of its own name in each, and the linker keeps one.
    merged = {s.name: s.size for path in paths for s in sections(path) if "X" in s.flags and s.name.startswith(".text._Z")}
    own = sum(s.size for path in paths for s in sections(path) if "X" in s.flags and s.name not in merged)
    return own + sum(merged.values())


count = len(exports(sys.argv[1]))
by_level = {}
for object_path in sys.argv[2:]:
    by_level.setdefault(level_of(object_path), []).append(object_path)
sizes = {level: code_size(paths) for level, paths in by_level.items()}
sizes["all"] = sum(sizes.values())
print(f"{'level':8}{'code':>10}{'an export':>12}   bytes")
for level, size in sizes.items():
    print(f"{level:8}{size:>10}{size / count:>12.0f}")
mean = sizes["all"] / count
limit = next(limit for form, limit in LIMITS.items() if form in output("readelf", "--file-header", sys.argv[2]))
conclude([f"{mean:.0f} bytes an export, the limit is {limit}"] if mean > limit else [], f"{count} exports")
