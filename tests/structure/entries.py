"""entries.py EXPORTS.DEF LIBRARY: an exported entry stands on a 16-byte boundary, reads the dispatch index and jumps through its
own row of the dispatch table, which is the row of its place in the list. It does nothing else. Where there is one level and so no
index, it jumps through its own place in the table of its group."""

import re
import sys

from binaries import instructions, output, symbols
from export_list import exports_by_group
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


def place_aarch64(entry):
    """The address of the pointer that the entry jumps to, or None where it has another form."""
    form = [r"adrp\tx16, ([0-9a-f]+) <.*>", r"ldr\tx16, \[x16, #(\d+)\]", r"br\tx16"]
    matches = [re.fullmatch(f, i.text) for f, i in zip(form, entry)]
    return int(matches[0][1], 16) + int(matches[1][1]) if len(entry) == len(form) and all(matches) else None


def dispatched_faults(names, library, bodies, addresses):
    wide = "ELF64" in output("readelf", "--file-header", library)
    references, row_size = (references_x86_64, 16) if wide else (references_i386, 8)
    index, table = addresses["zelDispatchIndex"].address, addresses["zelDispatchTable"].address
    for place, name in enumerate(names):
        if references(bodies[name]) != (index, table + place * row_size):
            yield "\n    ".join([f"{name} does not jump through row {place}:", *(i.text for i in bodies[name])])


def direct_faults(groups, bodies, addresses):
    places = {}
    for name, group in groups.items():
        places[group] = places.get(group, -1) + 1
        table = next(s for s in addresses.values() if re.fullmatch(rf"zel_[a-z0-9]+_{group}", s.name))
        if place_aarch64(bodies[name]) != table.address + 8 * places[group]:
            yield "\n    ".join([f"{name} does not jump to place {places[group]} of {group}:", *(i.text for i in bodies[name])])


def faults(groups, library):
    addresses = {s.name: s for s in symbols(library)}
    code = {i.address: i for i in instructions(library)}
    bodies = {}
    for name in groups:
        entry = addresses[name]
        if entry.address % BOUNDARY:
            yield f"{name} stands at {entry.address:#x}"
        bodies[name] = [code[a] for a in range(entry.address, entry.address + entry.size) if a in code]
    if "zelDispatchTable" in addresses:
        yield from dispatched_faults(groups, library, bodies, addresses)
    else:
        yield from direct_faults(groups, bodies, addresses)


listed = exports_by_group(sys.argv[1])
conclude(list(faults(listed, sys.argv[2])), f"{len(listed)} entries")
