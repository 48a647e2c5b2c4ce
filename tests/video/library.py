"""library.py MAP LIBRARY OBJECTS: the video library offers what its map lists, needs next to nothing, writes nothing after loading but
its level and what the caches hold, and stays small."""

import os
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "structure"))
from binaries import output, sections, symbols  # noqa: E402
from verdict import conclude  # noqa: E402

LIMIT = 1500000
RUNTIME = {"__cxa_finalize", "__gmon_start__", "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable", "memcpy", "memmove", "memset",
           "memchr", "strcmp", "strlen", "__stack_chk_fail", "getauxval", "zelGetEnabledCpuFeatures",
           # The compiler's own, which divide 64 bits where words have 32.
           "__divdi3", "__moddi3", "__udivdi3", "__umoddi3", "__divmoddi4", "__udivmoddi4"}

script, library, *objects = sys.argv[1:]
listed = {f"{name}@@ZELVIDEO_8" for name in re.findall(r"^ +(zelv\w+);", pathlib.Path(script).read_text(), re.MULTILINE)}
offered = {s.name for s in symbols(library, "--dynamic", "--defined-only", "--with-symbol-versions") if s.kind != "A"}
faults = [f"{name} is offered or listed alone" for name in sorted(listed ^ offered)]
faults += [f"the library needs {s.name}" for s in symbols(library, "--dynamic", "--undefined-only") if s.name.split("@")[0] not in RUNTIME]
dynamic = output("readelf", "--dynamic", "--wide", library)
if "soname: [libzelvideo.so.8]" not in dynamic or "BIND_NOW" not in dynamic:
    faults.append("the soname or the binding at load is missing")
written = {path: sum(s.size for s in sections(path) if "W" in s.flags and not s.name.startswith((".data.rel.ro", ".init_array")))
           for path in objects}
faults += [f"{path} has {size} writable bytes" for path, size in written.items() if size > (8 if "dispatch" in path else 0)]
if os.path.getsize(library) > LIMIT:
    faults.append(f"{os.path.getsize(library)} bytes, the limit is {LIMIT}")
conclude(faults, f"{len(listed)} names, {os.path.getsize(library)} bytes")
