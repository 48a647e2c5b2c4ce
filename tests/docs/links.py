"""links.py SOURCE DIRECTORY: builds the site without pictures into the directory. Every link inside it leads to a page and an anchor
that are there, every function has an entry, the search knows it, and every function that a page names exists."""

import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import urllib.parse

root, directory = map(pathlib.Path, sys.argv[1:])
missing = [package for package, path in (("python3-sphinx", "/usr/bin/sphinx-build"), ("furo", "/usr/lib/python3/dist-packages/furo"),
                                         ("python3-myst-parser", "/usr/lib/python3/dist-packages/myst_parser"))
           if not pathlib.Path(path).exists()]
if missing:
    print(f"Skipped: the site, for {', '.join(missing)} of Debian is not installed")
    sys.exit(77)


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors, self.links = {"", "top"}, set()
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.anchors |= {values[name] for name in ("id", "name") if values.get(name)}
        self.links |= {values[name] for name in ("href", "src") if values.get(name)}


def faults_of_links(pages):
    for path, page in pages.items():
        for link in sorted(page.links):
            parts = urllib.parse.urlsplit(link)
            if parts.scheme in ("http", "https"):
                if re.search(r"\.(?:css|js|woff2?)$", parts.path):
                    yield f"{path.name} fetches {link}"
                continue
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            if not target.exists():
                yield f"{path.name} leads to {link}, which is not there"
            elif target in pages and urllib.parse.unquote(parts.fragment) not in pages[target].anchors:
                yield f"{path.name} leads to {link}, where there is no such anchor"


def faults_of_entries(pages, exports, described):
    anchors = set().union(*(page.anchors for path, page in pages.items() if path.parent.name == "reference"))
    yield from (f"there is no entry for {name}" for name in described if f"c.{name}" not in anchors)
    index = (directory / "_static" / "searchentries.js").read_text()
    if not all(f'"{name}"' in index for name in exports):
        yield "the search doesn't know all functions"


def faults_of_names(exports):
    """A name in a page may stand for several functions, by their beginning."""
    for path in [*(root / "docs").glob("*.md"), *(root / "docs/site").glob("*.md"), root / "README.md"]:
        for name in set(re.findall(r"\bzeli[A-Z]\w*", path.read_text())):
            if not any(export.startswith(name.rstrip("_")) for export in exports):
                yield f"{path.name}: there is no function {name}"


exports = re.findall(r"^ZEL_EXPORT\((zeli\w+),", (root / "src/frame/exports.def").read_text(), re.MULTILINE)
shutil.rmtree(directory, ignore_errors=True)
subprocess.run([root / "docs/site/build", "--without-pictures", directory], check=True, stdout=subprocess.DEVNULL)
pages = {path.resolve(): Page(path) for path in directory.rglob("*.html")}
video = re.findall(r"^ZEL_API ZelStatus (\w+)|^typedef struct (\w+)", (root / "include/zelvideo.h").read_text(), re.MULTILINE)
described = [*exports, *("".join(names) for names in video)]
faults = [*faults_of_links(pages), *faults_of_entries(pages, exports, described), *faults_of_names(exports)]
print("\n".join(faults))
print(f"{len(pages)} pages, {sum(len(page.links) for page in pages.values())} links, {len(exports)} functions, {len(faults)} faults")
sys.exit(1 if faults or len(pages) < 20 or not exports else 0)
