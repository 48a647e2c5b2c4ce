"""levels.py OBJECTS: the object files of a level share no symbol with those of another level, which the linker could then take
for a lower one, and hold no instruction that the level's processors lack, nor one whose result isn't defined to the last bit. Products
and sums are fused only in the few whose rules come near a result first and then make sure of it."""

import os
import re
import sys

from binaries import instructions, label, level_of, symbols
from verdict import conclude

BEYOND_SSSE3 = {
    "an AVX instruction": r"v(?!er[rw]\b)|.*%[yz]mm",
    "an SSE4 instruction": r"(pblendw|pblendvb|blendv?p[sd]|round[sp][sd]|pm(in|ax)(sb|sd|uw|ud)|pmul(ld|dq)|pmov[sz]x\w+|ptest|"
                           r"p(extr|insr)[bdq]|packusdw|pcmpeqq|pcmpgtq|pcmp[ei]str[im]|mpsadbw|phminposuw|dpp[sd]|insertps|"
                           r"extractps|movntdqa|crc32\w?|popcnt\w?)\b|pextrw .*\)$",
}
BEYOND_AVX2 = {"an AVX-512 instruction": r".*%(zmm|[xy]mm(1[6-9]|2\d|3[01])|k[0-7])"}
FUSED = "a fused multiply-add"
MAY_FUSE = ("lab", "luv")
NOWHERE = {
    FUSED: r"vfn?m(add|sub)",
    "a reciprocal of other values": r"v(rcp|rsqrt)(14|28)",
    "a BMI instruction": r"(andn|bextr|bls[ir]|blsmsk|bzhi|mulx|pdep|pext|rorx|sarx|shlx|shrx)\w?\b",
}
FORBIDDEN = {
    "ssse3": BEYOND_SSSE3 | NOWHERE,
    "s8": BEYOND_SSSE3 | NOWHERE,
    "avx2": BEYOND_AVX2 | NOWHERE,
    "avx512": NOWHERE,
    "neon": {
        FUSED: r"fn?m(add|sub|la|ls)\b",
        "an instruction beyond the baseline": r"[su]dot|[us]?mmla|(ld1|st1)[bhwd]\b|.*\b[zp]\d+\.[bhsd]|sqrdmla?[hs]h|fcvt\w+\tv\d+\.\dh|"
                                              r"ld(add|clr|set|swp)|cas",
        "a reciprocal of other values": r"fr(ecp|sqrt)[ex]",
    },
}


def symbol_faults(path, level):
    own = re.compile(rf"_Z[A-Z]*N?K?3zel{len(level)}{level}|zel_{level}_\w+")
    same_at_all_levels = "__x86.get_pc_thunk."  # reads the program counter on i386
    for symbol in symbols(path, "--defined-only"):
        if not symbol.kind.islower() and not own.match(symbol.name) and not symbol.name.startswith(same_at_all_levels):
            yield f"{label(path)}: {symbol.kind} {symbol.name} is outside the level's namespace"


def instruction_faults(path, level):
    for what, pattern in FORBIDDEN[level].items():
        if what == FUSED and os.path.basename(path).split(".")[0] in MAY_FUSE:
            continue
        forbidden = re.compile(pattern)
        found = [i for i in instructions(path) if forbidden.match(i.text)]
        if found:
            yield f"{label(path)}: {what} at {found[0].address:#x} and {len(found) - 1} more: {found[0].text}"


levels = {path: level_of(path) for path in sys.argv[1:]}
conclude([fault for path, level in levels.items() for check in (symbol_faults, instruction_faults) for fault in check(path, level)],
         f"{len(levels)} object files of {len(set(levels.values()))} levels")
