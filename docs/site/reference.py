"""The pages of the headers: an entry for every function."""

import collections
import functools
import pathlib
import re

from catalog import facts, formats, functions, headers
from catalog.headers import Function, Header

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
TITLES = {
    "lumachroma": "RGB and YCbCr", "yuv": "RGB and analog YUV", "chroma": "Chroma layouts", "packed_sources": "From 16-bit pixels",
    "packed_destinations": "To 16-bit pixels", "intensity": "Gray, colour twist, gamma and tone mapping",
    "colorimetric": "XYZ and Photo YCC", "lab": "LUV and Lab", "hls": "HLS and HSV", "lifting": "YCoCg", "reducebits": "Fewer levels",
    "rawsensor": "Raw sensors",
}
# In what the matrix of a name is known by.
MATRICES = {"601": "BT.601, studio range", "709": "BT.709, studio range", "709-full": "BT.709, full range", "yuv": "analog YUV"}


@functools.cache
def names() -> frozenset[str]:
    return frozenset(f.name for f in headers.functions())


def slug(heading: str) -> str:
    """The anchor of a heading."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


# --- from the words of a comment to Markdown


def escaped(text: str) -> str:
    return re.sub(r"([*_<\[\]|$])", r"\\\1", text)


def inline(text: str) -> str:
    """A line of prose: names become links or code, and what Markdown would take for its own is kept."""
    result = []
    for part in re.split(r"(docs/\w+\.md|\bzel\w+\*?|\bpow\b|\b\w+\[[^ ]*\])", text):
        if part in names():
            result.append(f"{{c:func}}`{part}`")
        elif page := re.fullmatch(r"docs/(\w+)\.md", part):
            result.append(f"[{page[1]}](../{page[1]}.md)")
        elif re.fullmatch(r"zel\w+\*?|pow|\w+\[[^ ]*\]", part):
            result.append(f"`{part}`")
        else:
            result.append(escaped(part))
    return "".join(result)


def markdown(text: str) -> str:
    """Paragraphs and lists as they are, indented lines as blocks, and the word that a paragraph is about in bold."""
    lines, block = [], []
    for line in [*text.splitlines(), ""]:
        if line.startswith("    ") and not (lines and lines[-1].startswith("- ")):
            block.append(line[4:])
            continue
        if block and not line:
            block.append("")
            continue
        if block:
            lines += ["```text", *"\n".join(block).rstrip().splitlines(), "```", ""]
            block = []
        starts = not lines or not lines[-1]
        if not starts and re.match(r"[-+>#] ", line) and not re.match(r"- |  ", lines[-1]):
            line = f"\\{line}"  # no list begins in the middle of a sentence
        topic = re.match(r"([A-Z][a-z]+(?: [a-z]+)?)\. ", line) if starts else None
        lines.append(f"**{topic[1]}.** " + inline(line[topic.end():]) if topic else inline(line))
    if block:
        lines += ["```text", *"\n".join(block).rstrip().splitlines(), "```"]
    return "\n".join(lines).strip() + "\n"


# --- what a header says


def paragraphs(text: str) -> list[str]:
    return re.split(r"\n\n(?! )", text)


def without_examples(text: str) -> str:
    return "\n\n".join(p for p in paragraphs(text) if not p.startswith("Example"))


def worked_pixel(function: Function) -> str:
    """Of the examples above a function those that are about it."""
    for text in (function.text, function.family):
        examples = [" ".join(p.split()) for p in paragraphs(text) if p.startswith("Example")]
        if not examples:
            continue
        parts = re.split(r"; |(?<=\.) (?=[A-Z0-9_]\w*: )", re.sub(r"^Example(?: of a whole image)?,? ?", "", examples[0]).rstrip("."))
        labelled = [(m[1], m[2]) if (m := re.match(r"(\w*): (.*)", part)) else ("", part) for part in parts]
        own = [what for label, what in labelled if label and label in function.name]
        return "; ".join(own or [what for label, what in labelled if not label] or [examples[0]])
    return ""


@functools.cache
def calls() -> dict[str, tuple[str, list[str]]]:
    """Of each function the smallest size and the statuses, errors first."""
    found: dict[str, tuple[str, list[str]]] = {}
    for line in (ROOT / "docs" / "statuses.txt").read_text().splitlines():
        if not line.startswith("#"):
            name, size, *words = line.split()
            earlier = found.get(name, ("", []))[1]
            all_words = sorted(dict.fromkeys(earlier + words), key=lambda word: (word == "empty", word == "zelStsNoErr"))
            found[name] = size.replace("x", " x "), all_words
    return found


@functools.cache
def formulas(header: Header) -> list[tuple[str, list[str]]]:
    """The sets of three formulas at a header's beginning, which may stand side by side, each with the letters that it gives."""
    found = []
    for block in re.findall(r"(?:^    .*\n?)+", header.text, re.MULTILINE):
        sides: dict[int, list[str]] = collections.defaultdict(list)
        for line in block.splitlines():
            for number, side in enumerate(re.split(r" {4,}(?=[A-Z]\w? +=)", line.strip())):
                if re.match(r"[A-Z][br]? +=", side):
                    sides[number].append(side)
        found += [(" ".join(line.split()[0] for line in lines), lines) for lines in sides.values() if len(lines) == 3]
    return found


def formula(function: Function, header: Header) -> list[str]:
    """Of conversions between colours and codes, by their matrix."""
    served = functions.conversions_of(function)[0]
    is_analog = served.matrix == "yuv"
    if not served.matrix:
        return []
    is_encoder = re.match(r"zeli(?:RGB|BGR)", function.name)
    gives = "R G B" if not is_encoder else "Y U V" if is_analog else "Y Cb Cr"
    fitting = [lines for letters, lines in formulas(header)
               if letters == gives and (is_encoder or (" V " in lines[0] or "(V " in lines[0]) == is_analog)]
    number = {"709": 1, "709-full": 2}.get(served.matrix, 0)
    if number >= len(fitting):
        raise ValueError(f"{header.name} has no formula of {function.name}")
    return fitting[number]


# --- what was measured and tested


@functools.cache
def speeds() -> dict[str, dict[str, dict[str, str]]]:
    """By function and size, what stands in each column."""
    found: dict[str, dict[str, dict[str, str]]] = collections.defaultdict(dict)
    size, head = "", [""]
    for line in (ROOT / "docs" / "benchmarks.md").read_text().splitlines():
        if heading := re.fullmatch(r"## (\d+ x \d+)", line):
            size = heading[1]
        elif size and line.startswith("| Export |"):
            head = [cell.strip() for cell in line.split("|")[2:-1]]
        elif size and (row := re.match(r"\| `(zeli\w+)` \|(.*)\|$", line)):
            found[row[1]][size] = dict(zip(head, (cell.strip() for cell in row[2].split("|"))))
    return found


def cut_in_words(number: str, what: str) -> str:
    if number == "none":
        return f"not between {what}s"
    multiple, _, last = number.partition(":")
    words = f"between any {what}s" if multiple == "1" else f"at multiples of {multiple} {what}s"
    return words + (f" (the last part has {last} or more)" if last else "")


# --- an entry


def format_link(found: formats.Format) -> str:
    known = {formats.of_bytes(key).name: layout.title for key, layout in formats.LAYOUTS.items()}
    title = known.get(found.name, found.title)
    name = f" `{found.name}`" if found.name in formats.known_to_ffmpeg() else ""
    if found.name in known:
        return f"[{title}](../layouts.md#{slug(title)}){name}"
    return f"{title}{name}"


def fields(function: Function) -> list[tuple[str, str]]:
    served = functions.conversions_of(function)
    result = [("From", ", or ".join(dict.fromkeys(format_link(c.source) for c in served))),
              ("To", ", or ".join(dict.fromkeys(format_link(c.target) for c in served)))]
    if served[0].matrix:
        result.append(("Colour", f"[{MATRICES[served[0].matrix]}](../matrices.md#names)"))
    if pixel := worked_pixel(function):
        result.append(("Worked pixel", inline(pixel)))
    size, words = calls()[function.name]
    empty = "; a region without pixels is no error" if "empty" in words else ""
    result.append(("Smallest size", size + empty))
    result.append(("Status", ", ".join(f"`{word}`" for word in words if word != "empty")))
    for columns, rows, method in facts.cuts()[function.name]:
        way = f", {inline(method)}" if method else ""
        result.append((f"Parts{way}", f"{cut_in_words(columns, 'column')}, {cut_in_words(rows, 'row')} "
                       "([more](../exactness.md#at-which-multiple-an-image-may-be-cut))"))
    for size, cells in speeds().get(function.name, {}).items():
        peer = cells["Fastest peer"]
        ratios = [cell for name, cell in cells.items() if cell and name.endswith(" ratio")]
        measured = {name: cell for name, cell in cells.items() if cell and f"{name} ratio" in cells}
        values = [f"{level} {cell}" for level, cell in measured.items()]
        beside = f"; {', '.join(ratios)} times {escaped(peer)}" if ratios and peer not in ("none", "") else ""
        unit = "GB/s (of copies)" if any("(" in cell for cell in measured.values()) else "million calls a second"
        result.append((f"Speed, {size}", f"{', '.join(values)} {unit}".rstrip() + beside))
    return result


def entry(function: Function, header: Header, place: str) -> list[str]:
    """What is said of a function; its formula stands in a place of the page, if not here."""
    declaration = function.declaration.rstrip(";")
    lines = [f"::::{{c:function}} {declaration}", ""]
    rule = formula(function, header)
    if rule:
        lines += ["```text", *rule, "```", ""]
    facts = fields(function)
    if not rule:
        facts.insert(2, ("Formula", place))
    lines += [f":{name}: {value}" for name, value in facts]
    return [*lines, "::::", ""]


def first_words(text: str) -> str:
    """A heading of a text that begins with what it is about."""
    start = " ".join(paragraphs(text)[0].split()) if text else ""
    start = re.split(r"(?<!\d): |\. |[:.]$|, (?:\w+ = |with |and (?:its|a ))|: (?=\w+\[|the |another |chroma )", start)[0].rstrip(".:")
    if len(start) > 72:
        start = start[:start.rfind("," if "," in start[:72] else " ", 0, 72)]
    return start


def without_heading(text: str, heading: str) -> str:
    """A text whose first paragraph says no more than the heading, without it."""
    first, *others = paragraphs(text)
    return "\n\n".join(others) if " ".join(first.split()).rstrip(".:") == heading else text


def page(header: Header) -> str:
    title = TITLES[header.name.removesuffix(".h")]
    lines = [f"# {title}", "", f"`#include <zelcc/{header.name}>`, {len(header.functions)} functions.", "", markdown(header.text)]
    sections: dict[tuple[str, str], list[Function]] = {}
    for function in header.functions:
        key = (function.family, "" if function.family else function.text)
        sections.setdefault(key, []).append(function)
    taken = collections.Counter()
    subject = ""
    for (family, text), members in sections.items():
        heading = first_words(family or text) or "Functions"
        if same := re.match(r"The same(?: (?:of|for|by|with)|,) ", heading):
            heading = f"{subject}, {heading[same.end():]}"
        else:
            subject = heading.split(",")[0]
        taken[heading] += 1
        heading += f", {taken[heading]}" if taken[heading] > 1 else ""
        lines += [f"## {escaped(heading)}", ""]
        says = re.search(r"^    |\w = ", f"{family}\n{text or members[0].text}", re.MULTILINE)
        place = f"[above](#{slug(heading)})" if says else f"[at the top](#{slug(title)})"
        if family:
            lines += [markdown(without_examples(without_heading(family, heading)))]
        said = ""
        for function in members:
            if function.text != said:
                said = function.text
                lines += [markdown(without_examples(said))]
            lines += entry(function, header, place)
    return "\n".join(lines) + "\n"


def types_page() -> str:
    source = (ROOT / "include" / "zelcc" / "types.h").read_text()
    body = source[source.index("/**"):source.rindex("#ifdef __cplusplus")].strip()
    return ("# Types and status values\n\n`#include <zelcc.h>` has all of the library. These are the types that its functions share, and "
            f"what they return.\n\n```c\n{body}\n```\n")


def video_page() -> str:
    """libzelvideo's header: an entry for each call and each type, which says in its declaration what its fields are."""
    source = (ROOT / "include" / "zelvideo.h").read_text()
    body = source[source.index('extern "C" {'):]
    lines = ["# Video", "", "`#include <zelvideo.h>`, which is of the library `libzelvideo`. [Its page](../video.md) defines the results.", "",
             markdown(headers.words(re.match(r"/\*(.*?)\*/", source, re.DOTALL)[1])), "## Functions", ""]
    for text, declaration in re.findall(r"/\*\*((?:(?!\*/).)*)\*/\nZEL_API ([^;]+);", body, re.DOTALL):
        lines += [f"::::{{c:function}} {' '.join(declaration.split())}", "", markdown(headers.words(text)), "::::", ""]
    lines += ["## Types and values", ""]
    for text, members in re.findall(r"(?:/\*\*((?:(?!\*/).)*)\*/\n)?((?:enum|typedef struct \w+) \{(?:[^\n]*\};|.*?^\}[^;]*;))", body,
                                    re.DOTALL | re.MULTILINE):
        declaration = ["```c", *members.splitlines(), "```", ""]
        words = [markdown(headers.words(text))] if text else []
        if name := re.match(r"typedef struct (\w+)", members):
            lines += [f"::::{{c:struct}} {name[1]}", "", *words, *declaration, "::::", ""]
        else:
            lines += [*words, *declaration]
    return "\n".join(lines) + "\n"


def index_page() -> str:
    lines = ["# Functions", "", "A page for every header. The search finds parts of names too.", "", "| | Functions | For |",
             "| --- | ---: | --- |"]
    found = {h.name.removesuffix(".h"): h for h in headers.headers()}
    for name, title in TITLES.items():
        about = " ".join(paragraphs(found[name].text)[0].split())
        about = re.split(r"\. |\.$", about)[0]
        lines.append(f"| [{title}]({name}.md) | {len(found[name].functions)} | {inline(about)} |")
    lines += ["", "[Video](zelvideo.md) has the calls of `libzelvideo`. [Types and status values](types.md) are common to all.", "", "```{toctree}",
              ":hidden:", "", *TITLES, "zelvideo", "types", "```", ""]
    return "\n".join(lines)


def pages() -> dict[str, str]:
    documented = {h.name.removesuffix(".h"): h for h in headers.headers() if h.functions}
    if set(documented) - {"version"} != set(TITLES):
        raise ValueError(f"headers without a title, or titles without a header: {set(documented) ^ set(TITLES)}")
    result = {f"{name}.md": page(documented[name]) for name in TITLES}
    return result | {"zelvideo.md": video_page(), "types.md": types_page(), "index.md": index_page()}
