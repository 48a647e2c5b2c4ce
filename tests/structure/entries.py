"""entries.py EXPORTS.DEF LIBRARY: an exported entry stands on a 16-byte boundary, reads the dispatch index and jumps through its
own row of the dispatch table, which is the row of its place in the list. It does nothing else."""

import re
import sys

from binaries import instructions, output, symbols
from export_list import exports
from verdict import conclude

BOUNDARY = 16


def references_x86_64(entry):
    """The addresses of index and row that the entry uses, or None where it has another form."""
    form = [r"mov +0x[0-9a-f]+\(%rip\),%eax", r"lea +0x[0-9a-f]+\(%rip\),%r11", r"jmp +\*\(%r11,%rax,8\)"]
    if len(entry) == len(form) and all(re.fullmatch(f, i.text) for f, i in zip(form, entry)):
        return entry[0].refers_to, entry[1].refers_to


def references_i386(entry):
    form = [r"call +[0-9a-f]+ <programCounter>", r"mov +0x([0-9a-f]+)\(%ecx\),%eax", r"jmp +\*0x([0-9a-f]+)\(%ecx,%eax,4\)"]
    if len(entry) != len(form):
        return None
    matches = [re.fullmatch(f, i.text) for f, i in zip(form, entry)]
    if all(matches):
        after_call = entry[1].address
        return after_call + int(matches[1][1], 16), after_call + int(matches[2][1], 16)


def faults(names, library):
    wide = "ELF64" in output("readelf", "--file-header", library)
    references, row_size = (references_x86_64, 16) if wide else (references_i386, 8)
    addresses = {s.name: s for s in symbols(library)}
    index, table = addresses["zelDispatchIndex"].address, addresses["zelDispatchTable"].address
    code = {i.address: i for i in instructions(library)}
    for place, name in enumerate(names):
        entry = addresses[name]
        if entry.address % BOUNDARY:
            yield f"{name} stands at {entry.address:#x}"
        body = [code[a] for a in range(entry.address, entry.address + entry.size) if a in code]
        if references(body) != (index, table + place * row_size):
            yield "\n    ".join([f"{name} does not jump through row {place}:", *(i.text for i in body)])


listed = exports(sys.argv[1])
conclude(list(faults(listed, sys.argv[2])), f"{len(listed)} entries")
