"""The index of the search: every section and every function of the built pages, with the names that others have for its formats."""

import html.parser
import json
import pathlib
import re

from catalog import formats, functions, headers
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
PAGES = {"recipes": RECIPE, "architecture": MORE, "versions": MORE, "modelled-cycles": MORE, "peers": MORE}
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
        self.anchor, self.title, self.text, self.code = anchor, "", [], []


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
            self.inside[-1].text.append(data)
            if any(tag == "pre" for tag, _ in self.open):
                self.inside[-1].code.append(data)


def names_of(found: Format) -> str:
    """All that a format is called, in lower case."""
    said = [found.name, found.title, MODELS.get(found.model, found.model)]
    for key, layout in formats.LAYOUTS.items():
        if formats.of_bytes(key).name == found.name:
            said += [layout.title, layout.fourcc, layout.ffmpeg, layout.v4l2, layout.libyuv, ELSEWHERE.get(key, "")]
    return " ".join(dict.fromkeys(words(" ".join(said))))


def index(site: pathlib.Path) -> dict:
    """Of each entry: what it is, its title, its address, its words or first sentence, and the numbers of its formats, from and to."""
    numbers = {found.name: number for number, found in enumerate(functions.all_formats())}
    served = {f.name: functions.conversions_of(f) for f in headers.functions()}

    def ends(name: str) -> tuple[set[int], set[int]]:
        return {numbers[c.source.name] for c in served[name]}, {numbers[c.target.name] for c in served[name]}

    entries = []
    for path in sorted(site.rglob("*.html")):
        page = path.relative_to(site).with_suffix("").as_posix()
        if page in NOT_FOUND:
            continue
        kind = REFERENCE if page.startswith("reference/") else PAGES.get(page, MORE if page in BY_TITLE_ALONE else GUIDE)
        sections = Page(path).sections
        for section in sections:
            text = "" if page in BY_TITLE_ALONE else " ".join("".join(section.text).split())
            said = words(text)
            sources, targets = set(), set()
            is_recipe = kind == RECIPE and section is not sections[0]
            for name in served.keys() & set("".join(section.code).replace("(", " ").split() if is_recipe else []):
                sources, targets = sources | ends(name)[0], targets | ends(name)[1]
            of = "" if section is sections[0] else sections[0].title
            address = f"{page}.html" + (f"#{section.anchor}" if of else "")
            entries.append([GUIDE if kind == RECIPE and not is_recipe else kind, section.title, address, of, text[:160],
                            " ".join(dict.fromkeys(said)), sorted(sources), sorted(targets)])
    for function in headers.functions():
        sources, targets = ends(function.name)
        c = served[function.name][0]
        entries.append([FUNCTION, function.name, f"reference/{function.header.removesuffix('.h')}.html#c.{function.name}",
                        f"{c.source.title} to {c.target.title}", "", " ".join(word for word in (c.verb, c.matrix, c.method) if word not in ("", "601")),
                        sorted(sources), sorted(targets)])
    return {"formats": [names_of(found) for found in functions.all_formats()], "entries": entries}


def write(site: pathlib.Path) -> None:
    """A script, for a page on a disk can't fetch data."""
    text = json.dumps(index(site), ensure_ascii=False, separators=(",", ":"))
    (site / "_static" / "searchentries.js").write_text(f"const searchEntries = {text};\n")
