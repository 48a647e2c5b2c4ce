"""data.py LEVELS OBJECTS: the object files of the library hold no data that is written after loading, but for the integers of
the dispatch, and run no code at load but the dispatch constructor. A processor with one level has no dispatch."""

import sys

from binaries import label, sections, symbols
from verdict import conclude

DISPATCH = {"zelDispatchIndex", "zelKernelLevel", "zelCachedCallBytes", "zelMovedAtOnceBytes"}
DISPATCH_SIZE = 4 * len(DISPATCH)


def faults(path):
    name = label(path)
    writable = [s for s in sections(path) if "W" in s.flags and s.size and not s.name.startswith(".data.rel.ro")]
    if "dispatch.cpp" not in name:
        yield from (f"{name}: {s.size} bytes in {s.name}" for s in writable)
        return
    data = sum(s.size for s in writable if s.name != ".init_array")
    if data != DISPATCH_SIZE or not DISPATCH <= {s.name for s in symbols(path) if s.kind in "BD"}:
        yield f"{name}: {data} writable bytes, where the dispatch has {DISPATCH_SIZE}"
    constructors = sum(s.size for s in writable if s.name == ".init_array")
    word = 8 if any(s.name.startswith(".rela") for s in sections(path)) else 4
    if constructors != word:
        yield f"{name}: {constructors // word} constructors, where the dispatch has 1"


level_count, objects = int(sys.argv[1]), sys.argv[2:]
if any("dispatch.cpp" in path for path in objects) != (level_count > 1):
    sys.exit(f"a dispatch of {level_count} levels")
conclude([fault for path in objects for fault in faults(path)], f"{len(objects)} object files")
