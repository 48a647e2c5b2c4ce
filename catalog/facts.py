"""What neither the name nor the declaration of a function tells, each fact once. docs/architecture.md names the tests of them."""

import collections
import functools
import re

from catalog.headers import ROOT, Function

# Headers that allow conversions in place, where both images lie in memory alike.
IN_PLACE = ("colorimetric.h", "hls.h", "lab.h", "lumachroma.h", "yuv.h")

# Results come from the processor's approximate reciprocal, which differs between vendors.
DEPENDS_ON_PROCESSOR = (r"zeli(RGBToHLS_(8u|16[us])|BGRToHLS_8u|RGBToHSV_8u|RGBToLUV_(16[us]|32f)|BGRToLUV_32f|LUVToRGB_(8u|16[us])"
                        r"|LUVToBGR_8u)_\w+")

# Chroma is repeated into planes of which some samples are placed by the step of the other.
NEEDS_EQUAL_STEPS = r"zeliYC[br]C[rb]420ToYCbCr422_8u_(P2)?P3R"

# What is read and written behind the region, as catalog/registry.h counts it.
BEYOND = {
    "pair": r"zeliYUV420To(RGB|BGR)\d+_8u16u_P3C3R",
    "corner": r"zeli(YCbCr|YUV)420To(RGB|BGR)\d+Dither_8u16u_P3C3R",
    "notAWord": r"zeliYCbCr422To(RGB|BGR)\d+_8u16u_C2C3R",
}

# Sites of rules that look at more rows than a sample of chroma serves: two of each field, eights, squares.
SITES = {
    (2, 4): r"zeli\w+_Interlace_\w+",
    (2, 8): r"zeli\w+420ToYCbCr422_Filter_8u_(P2)?P3R",
    (4, 4): r"zeliYCbCr(411To420|420To411)_8u_P3R",
}


def matching(function: Function, table: dict, default):
    return next((fact for fact, pattern in table.items() if re.fullmatch(pattern, function.name)), default)


def depends_on_processor(function: Function) -> bool:
    return bool(re.fullmatch(DEPENDS_ON_PROCESSOR, function.name))


def needs_equal_steps(function: Function) -> bool:
    return bool(re.fullmatch(NEEDS_EQUAL_STEPS, function.name))


def beyond(function: Function) -> str:
    return matching(function, BEYOND, "nothing")


def own_site(function: Function) -> tuple[int, int]:
    return matching(function, SITES, (1, 1))


@functools.cache
def cuts() -> dict[str, list[tuple[str, str, str]]]:
    """Of each function at which columns and rows an image may be cut, by method where it decides, as docs/strips.txt has it."""
    found = collections.defaultdict(list)
    for line in (ROOT / "docs" / "strips.txt").read_text().splitlines():
        if not line.startswith("#"):
            name, columns, rows, *method = line.split(" ", 3)
            found[name].append((columns, rows, method[0] if method else ""))
    return found


def rows_of_parts(function: Function) -> tuple[int, ...]:
    """To the nearest level, by a matrix of thresholds, and by noise or error diffusion; 0 if every cut may show."""
    rows = {method: 0 if rows == "none" else int(rows.partition(":")[0]) for _, rows, method in cuts()[function.name]}
    return tuple(rows.get(method, rows.get("", 0)) for method in ("zelDitherNone", "zelDitherBayer", "noise or error diffusion"))
