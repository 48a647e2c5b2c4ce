"""The index of the search: every section and every function of the built pages, with the names that others have for its formats."""

import functools
import html.parser
import json
import pathlib
import re
from typing import NamedTuple

from catalog import formats, functions as known, headers
from catalog.formats import Format

# What other programs call the same bytes, where layouts don't say it: GStreamer, and the ends of OpenCV's COLOR_ codes.
ELSEWHERE = {
    "RGB C3": "RGB", "BGR C3": "BGR Mat CV_8UC3", "RGB C4": "RGBA RGBx ImageData", "BGR C4": "BGRA BGRx Mat CV_8UC4",
    "BGR565 C3": "RGB16 BGR565", "RGB565 C3": "BGR16", "BGR555 C3": "RGB15 BGR555", "RGB555 C3": "BGR15",
    "YCbCr C3": "v308", "YCbCr P3": "Y444", "YCbCr422 C2": "YUY2 YUYV YUNV", "YCrCb422 C2": "YVYU", "CbYCr422 C2": "UYVY UYNV Y422",
    "YCbCr422 P3": "Y42B", "YCrCb422 P3": "YV16", "YCbCr420 P3": "I420 IYUV", "YCrCb420 P3": "YV12", "YCbCr420 P2": "NV12",
    "YCrCb420 P2": "NV21", "YCbCr411 P3": "Y41B", "YCbCr1620 P3": "YUV9",
}
MODELS = {"rgb": "", "ycbcr": "yuv ycbcr", "gray": "gray", "mosaic": "bayer raw mosaic cfa", "ycocg": "ycocg"}

# What a page's sections are to a reader who searches, and how much they count before others that have the same words.
RECIPE, GUIDE, FUNCTION, REFERENCE, MORE = range(5)
PAGES = {"recipes": RECIPE, "architecture": MORE, "versions": MORE, "modelled-cycles": MORE, "peers": MORE, "benchmarks": MORE,
         "matrix": MORE}
BY_TITLE_ALONE = {"benchmarks", "matrix"}  # pages of hundreds of names
NOT_FOUND = {"genindex", "search"}
VOID = {"area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "source", "track", "wbr", "use"}


def words(text: str) -> list[str]:
    """As static/search.js takes a query apart."""
    text = re.sub(r"4:([0-4]):([0-4])", r"4\1\2", text)
    found = re.findall(r"[a-z0-9]+(?:_[a-z0-9]+)*", text.lower())
    return [part for word in found for part in ([word] if word.startswith("zel") else word.split("_"))]


class Section:
    def __init__(self, anchor: str):
        self.anchor, self.title = anchor, ""
        self.prose, self.code = [], []


class Page(html.parser.HTMLParser):
    """The sections of an article; what an entry of a function says is found by the function."""

    def __init__(self, path: pathlib.Path):
        super().__init__()
        self.open: list[tuple[str, str]] = []
        self.inside: list[Section] = []
        self.sections: list[Section] = []
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        if tag in VOID:
            return
        values = dict(attributes)
        classes = (values.get("class") or "").split()
        role = ""
        if tag == "section" and any(opened == "article" for opened, _ in self.open):
            role = "section"
            self.inside.append(Section(values["id"]))
            self.sections.append(self.inside[-1])
        elif re.fullmatch("h[1-6]", tag):
            role = "title"
        elif (tag == "dl" and "c" in classes) or "headerlink" in classes or tag in ("script", "style"):
            role = "left out"
        self.open.append((tag, role))

    def handle_endtag(self, tag):
        while self.open and tag not in VOID:
            opened, role = self.open.pop()
            if role == "section":
                self.inside.pop()
            if opened == tag:
                break

    def handle_data(self, data):
        roles = {role for _, role in self.open}
        if not self.inside or "left out" in roles:
            return
        if "title" in roles:
            self.inside[-1].title += data
        else:
            is_code = any(tag == "pre" for tag, _ in self.open)
            (self.inside[-1].code if is_code else self.inside[-1].prose).append(data)


def names_of(found: Format) -> str:
    """All that a format is called, in lower case."""
    said = [found.name, found.title, MODELS.get(found.model, found.model)]
    for key, layout in formats.LAYOUTS.items():
        if formats.of_bytes(key).name == found.name:
            said += [layout.title, layout.fourcc, layout.ffmpeg, layout.v4l2, layout.libyuv, ELSEWHERE.get(key, "")]
    return " ".join(dict.fromkeys(words(" ".join(said))))


class Entry(NamedTuple):
    kind: int
    title: str
    address: str
    part_of: str  # a page, or of a function from what to what it leads
    prose: str
    words: str
    sources: list[int]  # formats that functions here lead from, and those that they lead to
    targets: list[int]


@functools.cache
def ends() -> dict[str, tuple[set[int], set[int]]]:
    """Of each function the numbers of its formats."""
    numbers = {found.name: number for number, found in enumerate(known.all_formats())}
    found = {f.name: known.conversions_of(f) for f in headers.functions()}
    return {name: ({numbers[c.source.name] for c in served}, {numbers[c.target.name] for c in served}) for name, served in found.items()}


def of_section(section: Section, page: str, title: str) -> Entry:
    is_whole = section.title == title
    kind = REFERENCE if page.startswith("reference/") else PAGES.get(page, GUIDE)
    if kind == RECIPE and is_whole:
        kind = GUIDE
    if kind == GUIDE and section.title == "Speed":  # figures, and no answer
        kind = MORE
    prose, code = ("", "") if page in BY_TITLE_ALONE else (" ".join("".join(said).split()) for said in (section.prose, section.code))
    called = ends().keys() & set(re.findall(r"\w+", code)) if kind == RECIPE else ()
    sources, targets = (sorted(set().union(*(ends()[name][side] for name in called))) for side in (0, 1))
    return Entry(kind, section.title, f"{page}.html" + ("" if is_whole else f"#{section.anchor}"), "" if is_whole else title, prose[:160],
                 " ".join(dict.fromkeys(words(f"{prose} {code}"))), sources, targets)


def of_function(function: headers.Function) -> Entry:
    c = known.conversions_of(function)[0]
    special = [word for word in (c.verb, c.matrix, c.method) if word not in ("", "601")]
    return Entry(FUNCTION, function.name, f"reference/{function.header.removesuffix('.h')}.html#c.{function.name}",
                 f"{c.source.title} to {c.target.title}", "", " ".join(special), *map(sorted, ends()[function.name]))


def index(site: pathlib.Path) -> dict:
    pages = {path.relative_to(site).with_suffix("").as_posix(): path for path in sorted(site.rglob("*.html"))}
    entries = []
    for page, path in pages.items():
        if page not in NOT_FOUND:
            sections = Page(path).sections
            entries += [of_section(section, page, sections[0].title) for section in sections]
    entries += [of_function(function) for function in headers.functions()]
    return {"formats": [names_of(found) for found in known.all_formats()], "entries": entries}


def write(site: pathlib.Path) -> None:
    """A script, for a page on a disk can't fetch data."""
    text = json.dumps(index(site), ensure_ascii=False, separators=(",", ":"))
    (site / "_static" / "searchentries.js").write_text(f"const searchEntries = {text};\n")
