"""The declarations of include/zelcc, with their arguments and the words that stand above them."""

import functools
import pathlib
import re
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Argument(NamedTuple):
    type: str  # of one element, without pointers and const: uint8_t, int32_t, ZelSize ...
    name: str
    is_pointer: bool = False
    count: int = 0  # of elements where it is an array, of planes, steps or numbers
    is_const: bool = False  # what it points to, or what the array holds


class Function(NamedTuple):
    name: str
    arguments: tuple[Argument, ...]
    declaration: str
    text: str  # what stands above the declaration, and holds for all down to the next such text
    family: str  # what stands above the family
    header: str

    @property
    def in_place(self) -> bool:
        return any(a.name == "pSrcDst" for a in self.arguments)


class Header(NamedTuple):
    name: str
    text: str
    functions: tuple[Function, ...]


ARGUMENT = re.compile(r"(?P<const>const )?(?P<type>\w+)(?P<pointer>\*)?(?: const)? (?P<name>\w+)(?:\[(?P<count>\d+)\])?")
# A text for what follows, a text about a family, or a declaration.
PIECE = re.compile(r"/\*\*(?P<text>.*?)\*/|/\*(?P<family>.*?)\*/|ZEL_API (?P<declaration>[^;]+;)", re.DOTALL)


def words(comment: str) -> str:
    return "\n".join(re.sub(r"^ ?\* ?", "", line.strip(" ")) if line.strip().startswith("*") else line.strip()
                     for line in comment.strip().splitlines()).strip()


def argument(text: str) -> Argument:
    match = ARGUMENT.fullmatch(text)
    if not match:
        raise ValueError(f"an argument that can't be read: {text}")
    return Argument(match["type"], match["name"], bool(match["pointer"]), int(match["count"] or 0), bool(match["const"]))


def functions_of(path: pathlib.Path) -> Header:
    source = path.read_text()
    opening, text, family = "", "", ""
    found = []
    for piece in PIECE.finditer(source):
        if piece["declaration"]:
            declaration = " ".join(piece["declaration"].split())
            match = re.fullmatch(r"ZelStatus (\w+)\((.*)\);", declaration)
            if match:
                arguments = tuple(argument(part.strip()) for part in match[2].split(","))
                found.append(Function(match[1], arguments, declaration, text, family, path.name))
        elif piece["text"] is not None:
            text = words(piece["text"])
        elif not opening:
            opening = words(piece["family"])
        else:
            family, text = words(piece["family"]), ""
    return Header(path.name, opening, tuple(found))


@functools.cache
def headers() -> tuple[Header, ...]:
    return tuple(functions_of(path) for path in sorted((ROOT / "include" / "zelcc").glob("*.h")))


@functools.cache
def functions() -> tuple[Function, ...]:
    return tuple(sorted((f for header in headers() for f in header.functions), key=lambda f: f.name))
