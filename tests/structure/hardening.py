"""hardening.py [--shadow-stack] FILES: of programs and libraries the stack can't be executed, links are bound and write-protected at
load, and where the C library has checked functions, some are called. Programs and modules check their stack, of which the libraries have hardly
any. With the option all are marked for shadow stacks."""

import os
import sys

from binaries import output, symbols
from verdict import conclude

CHECKED = {"printf", "fprintf", "snprintf", "vsnprintf", "strcpy", "longjmp"}


def faults(path, has_shadow_stack):
    segments = output("readelf", "--program-headers", "--wide", path)
    stack = next((line.split()[-2] for line in segments.splitlines() if "GNU_STACK" in line), "none")
    if "E" in stack or stack == "none":
        yield f"{path}: the stack can be executed"
    if "BIND_NOW" not in output("readelf", "--dynamic", "--wide", path) or "GNU_RELRO" not in segments:
        yield f"{path}: links stay writable after loading"
    needed = {s.name.split("@")[0] for s in symbols(path, "--dynamic", "--undefined-only")}
    if "__stack_chk_fail" not in needed and not os.path.basename(path).startswith("lib"):
        yield f"{path}: no stack is checked"
    # Clang has none for printf and its like in C++.
    if needed & CHECKED and not any(name.endswith("_chk") for name in needed):
        yield f"{path}: calls {', '.join(sorted(needed & CHECKED))} unchecked"
    if has_shadow_stack and "SHSTK" not in output("readelf", "--notes", path):
        yield f"{path}: not marked for shadow stacks"


arguments = sys.argv[1:]
marked = "--shadow-stack" in arguments
paths = [a for a in arguments if a != "--shadow-stack"]
conclude([fault for path in paths for fault in faults(path, marked)], f"{len(paths)} files")
