"""How the pages become a site."""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
project = "zelCC"
author = "the authors of zelCC"
release = re.search(r"project\(zelcc VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
language = "en"

extensions = ["myst_parser"]
myst_enable_extensions = ["colon_fence", "fieldlist"]
myst_heading_anchors = 3
primary_domain = "c"
highlight_language = "none"
toc_object_entries = False
smartquotes = False

html_theme = "furo"
html_title = f"zelCC {release}"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_copy_source = False
html_show_sphinx = False
html_show_copyright = False
# One file a page and an index that is a script: nothing is fetched, so that the search works from a disk.
html_use_index = True
pygments_style = "friendly"
pygments_dark_style = "monokai"
