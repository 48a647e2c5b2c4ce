#!/usr/bin/python3 -B
"""browser.py SITE: the site as a reader has it, from a disk, in Chromium. Queries lead to the page that answers them, the start page to
installation and program, and narrow screens show that a table goes on. Nothing is reported on the console. --show QUERY... prints what is
found instead."""

import pathlib
import sys
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "browser"))
import chromium  # noqa: E402
from chromium import NARROW, WIDE  # noqa: E402

site = pathlib.Path(sys.argv[1]).resolve()
chromium.need("the site in a browser", {str(site / "index.html"): "the site, which needs python3-sphinx and furo,"})
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402
from selenium.webdriver.support.ui import WebDriverWait  # noqa: E402

# What readers type, and the first thing that they are led to.
QUERIES = {
    "camera nv12 opencv": "recipes.html#a-camera-s-nv12-to-opencv-s-cv-mat",
    "nv12 bgr": "recipes.html#a-camera-s-nv12-to-opencv-s-cv-mat",
    "COLOR_YUV2BGR_NV12": "recipes.html#a-camera-s-nv12-to-opencv-s-cv-mat",
    "webcam nv12": "recipes.html#a-camera-s-nv12-to-rgb",
    "bayer raw": "recipes.html#raw-to-picture",
    "rgb565 dither": "recipes.html#a-display-of-16-bits-a-pixel",
    "crop": "recipes.html#a-part-of-an-image",
    "BT.2020": "recipes.html#bt-2020-through-the-colour-twist",
    "I420ToARGB": "reference/lumachroma.html#c.zeliYCbCr420ToBGR_8u_P3C4R",  # of libyuv
    "uyvy422 bgra": "reference/lumachroma.html#c.zeliCbYCr422ToBGR_8u_C2C4R",  # of FFmpeg
    "YUY2 BGR": "reference/lumachroma.html#c.zeliYCbCr422ToBGR_8u_C2C3R",  # a FourCC
    "YUYV to gray": "reference/intensity.html#c.zeliYCbCr422ToGray_8u_C2C1R",  # of V4L2
    "Y42B RGB": "reference/lumachroma.html#c.zeliYCbCr422ToRGB_8u_P3C3R",  # of GStreamer
    "rgb to hsv": "reference/hls.html#rgb-to-hsv-16-bit-samples",
    "zeliRGBToYCbCr_8u_C3R": "reference/lumachroma.html#c.zeliRGBToYCbCr_8u_C3R",
    "pkg-config install": "index.html#install",
    "p010": "video.html#a-frame",
}
faults, checked = [], 0


def expect(what, found, wanted):
    global checked
    checked += 1
    if found != wanted:
        faults.append(f"{what}: {found} instead of {wanted}")


def look(page, size=WIDE, scheme="light"):
    chromium.screen(browser, size, scheme)
    browser.get(f"{site.as_uri()}/{page}")


def shown(selector):
    return [element for element in browser.find_elements(By.CSS_SELECTOR, selector) if element.is_displayed()]


def results():
    return [(urllib.parse.unquote(link.get_attribute("href")).removeprefix(f"{site.as_uri()}/"), link.text)
            for link in shown("#search-found a")]


def search(query):
    look("search.html?" + urllib.parse.urlencode({"q": query}))
    return results()


def check_search():
    for query, wanted in QUERIES.items():
        expect(query, (search(query) or [("nothing", "")])[0][0], wanted)
    expect("parameters", [text for _, text in search("dstStep") if text.startswith("dst")], [])
    expect("what there isn't", search("qqqq"), [])
    look("reference/lumachroma.html")
    browser.find_element(By.CSS_SELECTOR, ".sidebar-search").send_keys("nv21", Keys.ENTER)
    WebDriverWait(browser, 10).until(lambda _: "nv21" in browser.title)
    expect("the search beside a page", bool(results()), True)


def check_start():
    look("index.html")
    contents = {link.get_attribute("href").rpartition("#")[2] for link in browser.find_elements(By.CSS_SELECTOR, ".toc-tree a")}
    expect("the contents of the start page", {"install", "the-program"} - contents, set())
    ways = {link.get_attribute("href").rpartition("#")[2] for link in shown(".ways a")}
    expect("ways from the start page", {"install", "the-program"} - ways, set())


def check_try():
    """From a disk it says that it needs a server; served, tests/docs/try.py has it."""
    look("try.html")
    expect("the hint to a server", "http.server" in browser.find_element(By.ID, "try-status").text, True)


def check_width():
    """The matrix scrolls in its own place, and says so where it does."""
    for size in (WIDE, NARROW):
        look("matrix.html", size)
        table = "const table = document.querySelector('.matrix .table-wrapper');"
        goes_on = browser.execute_script(table + "return table.scrollWidth > table.clientWidth")
        expect(f"the matrix is wider than {size[0]} pixels", goes_on, size == NARROW)
        expect(f"its hint at {size[0]} pixels", bool(shown(".wide-hint")), goes_on)
    for page in ("index.html", "recipes.html", "layouts.html", "matrix.html", "reference/lumachroma.html", "search.html?q=bgra"):
        look(page, NARROW, "dark")
        expect(f"the width of {page}", browser.execute_script("return document.documentElement.scrollWidth"), NARROW[0])


with chromium.started() as browser:
    if "--show" in sys.argv:
        for query in sys.argv[sys.argv.index("--show") + 1:]:
            print(query, *(f"    {address}" for address, _ in search(query)[:5]), sep="\n")
        sys.exit(0)
    for check in (check_search, check_start, check_try, check_width):
        check()
        faults += [f"{check.__name__}: {message}" for message in chromium.complaints(browser)]
print("\n".join(faults))
print(f"{checked} checks, {len(faults)} faults")
sys.exit(1 if faults else 0)
