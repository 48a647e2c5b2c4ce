"""What the GNU binutils say about ELF files, as records."""

import os
import re
import subprocess
from typing import NamedTuple


def output(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


class Symbol(NamedTuple):
    name: str
    kind: str  # nm's letter: capital letters are global, W and V weak, U undefined
    address: int
    size: int


class Section(NamedTuple):
    name: str
    flags: str  # readelf's letters: W writable, A in memory, X executable
    size: int


class Instruction(NamedTuple):
    address: int
    text: str
    refers_to: int | None  # address that objdump works out for an operand relative to the program counter


def symbols(path, *options):
    found = []
    for line in output("nm", "--format=posix", "--no-demangle", *options, path).splitlines():
        name, kind, *numbers = line.split()
        address, size = [int(number, 16) for number in numbers + ["0", "0"]][:2]
        found.append(Symbol(name, kind, address, size))
    return found


def sections(path):
    row = re.compile(r"\s*\[ *\d+\] (\S+)\s+\S+\s+[0-9a-f]+ [0-9a-f]+ ([0-9a-f]+) [0-9a-f]+ +([A-Za-z]*) ")
    matches = map(row.match, output("readelf", "--section-headers", "--wide", path).splitlines())
    return [Section(m[1], m[3], int(m[2], 16)) for m in matches if m]


def objdump():
    """That of the processor that is built for, which the environment names where it isn't the one at hand."""
    return os.environ.get("OBJDUMP") or "objdump"


def instructions(path):
    row = re.compile(r"\s*([0-9a-f]+):\t(.*?)\s*(?:(?:#|//) ([0-9a-f]+) <.*>)?$")
    listing = output(objdump(), "--disassemble", "--no-show-raw-insn", path)
    matches = map(row.match, listing.splitlines())
    return [Instruction(int(m[1], 16), m[2], int(m[3], 16) if m[3] else None) for m in matches if m]


def level_of(path):
    """The level that an object file of the library was compiled for, from the directory that CMake puts it in."""
    match = re.search(r"zel(?:cc|video)_(\w+)\.dir/", path)
    return match[1] if match else None


def label(path):
    return " ".join(filter(None, [level_of(path), os.path.basename(path)]))
