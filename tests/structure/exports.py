"""exports.py EXPORTS.DEF LIBRARY: the library offers exactly the listed names, under its version, and needs next to nothing."""

import re
import sys

from binaries import output, symbols
from export_list import exports
from verdict import conclude

# What a shared library in C needs of the dynamic loader and of the C library that the compiler may call without being asked.
RUNTIME = {"__cxa_finalize", "__gmon_start__", "_ITM_deregisterTMCloneTable", "_ITM_registerTMCloneTable",
           "memcpy", "memmove", "memset", "memcmp", "__stack_chk_fail"}
MATHEMATICS = {"pow"}
ZELCORE = {"zelGetEnabledCpuFeatures", "zelGetMaxCacheSizeB", "zelMalloc", "zelFree"}
NEEDED_LIBRARIES = re.compile(r"libzelcore\.so\.8|libc\.so\.6|libm\.so\.6|ld-linux.*")


def order_faults(listed):
    for name, following in zip(listed, listed[1:]):
        if following.encode() <= name.encode():
            yield f"exports.def: {following} must not stand after {name}"


def offer_faults(listed, library):
    offered = {s.name for s in symbols(library, "--dynamic", "--defined-only", "--with-symbol-versions") if s.kind != "A"}
    expected = {f"{name}@@ZELCC_8" for name in listed}
    yield from (f"{name} is not exported" for name in sorted(expected - offered))
    yield from (f"{name} is exported, but not listed" for name in sorted(offered - expected))


def need_faults(library):
    for symbol in symbols(library, "--dynamic", "--undefined-only"):
        if symbol.name.split("@")[0] not in RUNTIME | MATHEMATICS | ZELCORE:
            yield f"the library needs {symbol.name}"


def dynamic_faults(library):
    dynamic = output("readelf", "--dynamic", "--wide", library)
    if "soname: [libzelcc.so.8]" not in dynamic:
        yield "the soname is not libzelcc.so.8"
    if "BIND_NOW" not in dynamic or "GNU_RELRO" not in output("readelf", "--program-headers", "--wide", library):
        yield "the dispatch table stays writable after loading"
    for name in re.findall(r"\(NEEDED\).*\[(.*)\]", dynamic):
        if not NEEDED_LIBRARIES.fullmatch(name):
            yield f"the library needs {name}"


listed_names = exports(sys.argv[1])
conclude([*order_faults(listed_names), *offer_faults(listed_names, sys.argv[2]), *need_faults(sys.argv[2]),
          *dynamic_faults(sys.argv[2])], f"{len(listed_names)} exports")
