"""How the pages become a site."""

import pathlib
import re

import furo

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
templates_path = ["templates"]
html_css_files = ["site.css"]
html_js_files = [("run.js", {"defer": "defer"})]
html_copy_source = False
html_show_sphinx = False
html_show_copyright = False
html_use_index = True
pygments_style = "friendly"
pygments_dark_style = "monokai"

# Debian's theme is dark when it is told to be, but not where the reader's system is: so it is told what that looks like once more.
STYLE = (pathlib.Path(furo.__file__).parent / "theme/furo/static/styles/furo.css").read_text()
DARK = re.search(r'body\[data-theme="?dark"?\] *\{(.*?)\}', STYLE, re.DOTALL)[1]
html_theme_options = {"dark_css_variables": {name: value.strip() for name, value in re.findall(r"--([\w-]+):([^;}]+)", DARK)}}
