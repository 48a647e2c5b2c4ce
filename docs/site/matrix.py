"""The pages that lead to a function: by source and destination, and by what other libraries call it."""

import collections
import re

import reference
from catalog import formats, functions
from catalog.formats import Format

VERBS = {"reduce": "fewer levels", "gamma": "curve applied", "linear": "curve undone", "twist": "colour twist",
         "tone-maximum": "by maximum", "tone-mean": "by mean"}
ORDER = ["RGB", "16-bit words", "4:4:4", "4:2:2 packed", "4:2:2 planar", "4:2:0", "4:1:1", "4:1:0", "gray", "XYZ", "LUV", "Lab", "HLS",
         "HSV", "YCC", "YCoCg", "mosaic", "bits"]


def group(found: Format) -> str:
    """What a format counts as in the matrix."""
    for key, layout in formats.LAYOUTS.items():
        if formats.of_bytes(key).name == found.name:
            return layout.group.replace("packed words", "16-bit words")
    word = found.title.split()[0].rstrip(",")
    return {"BGR": "RGB", "reversible": "YCoCg", "black": "bits", "raw": "mosaic"}.get(word, word)


def how(conversion: functions.Conversion) -> str:
    words = [VERBS.get(conversion.verb, ""), reference.MATRICES.get(conversion.matrix, ""), conversion.method]
    return ", ".join(word for word in words if word)


def anchor(source: str, target: str) -> str:
    return reference.slug(f"{source} to {target}")


def matrix_page() -> str:
    cells: dict[tuple[str, str], dict[tuple[str, str, str], list[str]]] = {}
    names = collections.defaultdict(set)
    for c in functions.conversions():
        ends = group(c.source), group(c.target)
        row = c.source.title, c.target.title, how(c)
        cells.setdefault(ends, {}).setdefault(row, []).append(c.function.name)
        names[ends].add(c.function.name)
    if unknown := {end for ends in cells for end in ends} - set(ORDER):
        raise ValueError(f"formats that are in no group: {unknown}")
    lines = ["# Source by destination", "", "From the row to the column: so many functions, and a link to them.", "",
             ":::{container} wide-hint", "", f"The table goes on to the right, to {ORDER[-1]}: it scrolls sideways.", "", ":::", "",
             "::::{container} matrix", "",
             "| from \\ to | " + " | ".join(ORDER) + " |", "| --- " + "| :---: " * len(ORDER) + "|"]
    for source in ORDER:
        counts = [f"[{len(names[source, target])}](#{anchor(source, target)})" if (source, target) in cells else "" for target in ORDER]
        if any(counts):
            lines.append(f"| **{source}** | " + " | ".join(counts) + " |")
    lines += ["", "::::", ""]
    for source in ORDER:
        for target in ORDER:
            if (source, target) not in cells:
                continue
            lines += [f"## {source} to {target}", "", "| From | To | By | Function |",
                      "| --- | --- | --- | --- |"]
            for (left, right, by), found in cells[source, target].items():
                links = "<br>".join(f"{{c:func}}`{name}`" for name in dict.fromkeys(found))
                lines.append(f"| {left} | {right} | {by} | {links} |")
            lines.append("")
    return "\n".join(lines)


def peers_page() -> str:
    """From what a peer calls it to the name here."""
    called = collections.defaultdict(dict)
    for name, sizes in reference.speeds().items():
        for cells in sizes.values():
            library, calls = re.fullmatch(r"(\w*)(?: [\d.]+)?,? ?(.*)", cells["Fastest peer"]).groups()
            if library not in ("none", ""):
                called[library].setdefault(calls or "its conversion of this format", {})[name] = None
    lines = ["# Names elsewhere", "", "The fastest call of another library for the same task, from the [benchmarks](benchmarks.md). Where "
             "several are listed, one follows the other. Results differ in rounding. [Layouts](layouts.md) and "
             "[matrices](matrices.md) have names elsewhere too.", ""]
    for library in sorted(called, key=str.lower):
        lines += [f"## {library}", "", "| There | Here |", "| --- | --- |"]
        for calls, found in sorted(called[library].items(), key=lambda item: item[0].lower()):
            links = "<br>".join(f"{{c:func}}`{name}`" for name in found)
            lines.append(f"| {reference.escaped(calls)} | {links} |")
        lines.append("")
    return "\n".join(lines)


def pages() -> dict[str, str]:
    return {"matrix.md": matrix_page(), "peers.md": peers_page()}
