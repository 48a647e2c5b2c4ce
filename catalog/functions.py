"""What each function leads from and to, read off its name, and by which matrix or method."""

import functools
import math
import re
from typing import NamedTuple

from catalog import facts, formats, headers, video
from catalog.formats import Format
from catalog.headers import Function

SPACE = r"S?(?:RGB|BGR|YCbCr|YCrCb|CbYCr|YUV|YCoCg|XYZ|LUV|Lab|HLS|HSV|YCC|Gray|Color|CFA)"
SITES = r"444|555|565|422|420|411|1620"
NAME = re.compile(
    rf"zeli(?:(?P<verb>ReduceBits|GammaFwd|GammaInv|ColorTwist|ToneMapLinear|ToneMapMean|DemosaicAHD)(?:32f)?"
    rf"|(?P<source>{SPACE})(?P<sourceSites>{SITES})?(?:To(?P<target>{SPACE})?(?P<sites>{SITES})?)?(?P<gamma>Gamma)?(?P<dither>Dither)?)"
    r"(?:_(?P<option>Filter|Interlace|709CSC|709HDTV|Rev))?"
    r"_(?P<depth>\d+[usf])(?P<toDepth>\d+[usf])?_(?P<form>I?A?[CP]\d)I?(?P<toForm>A?[CP]\d)?(?P<steps>R)?")
LUMA_CHROMA = {"YCbCr": "Y Cb Cr", "YCrCb": "Y Cr Cb", "CbYCr": "Cb Y Cr", "YUV": "Y Cb Cr"}
MATRICES = {"709CSC": "709", "709HDTV": "709-full"}
# Verbs that change what samples say, and not what they mean.
VERBS = {"ReduceBits": "reduce", "GammaFwd": "gamma", "GammaInv": "linear", "ColorTwist": "twist", "ToneMapLinear": "tone-maximum",
         "ToneMapMean": "tone-mean"}


class Conversion(NamedTuple):
    """A function between two formats. The orders say which plane of the format each plane of the function is."""
    function: Function
    source: Format
    target: Format
    source_order: tuple[int, ...]
    target_order: tuple[int, ...]
    verb: str = ""  # one of VERBS, where it changes samples
    matrix: str = ""  # where luma and chroma are computed or undone
    method: str = ""  # filter, interlaced, gamma, dither, bilinear or ahd, where there is a plain way too


def works_in_place(function: Function) -> bool:
    """With the same image on both sides."""
    match = NAME.fullmatch(function.name)
    form, depth = match["form"], match["depth"]
    return (function.header in facts.IN_PLACE and not match["sites"] and not match["sourceSites"] and "I" not in form
            and form in (match["toForm"] or form,) and (match["toDepth"] or depth) == depth)


def alpha(function: Function) -> str:
    """What becomes of the destination's, as catalog/registry.h counts it."""
    match = NAME.fullmatch(function.name)
    if (match["toForm"] or match["form"]).replace("I", "") != "AC4":
        return "written"
    return "zero" if match["form"] == "P3" else "kept"


def site(conversion: Conversion) -> tuple[int, int]:
    """Pixels of which only whole sites are converted to the last. A byte of bits may be filled in part."""
    sites = [f.site for f in (conversion.source, conversion.target) if f.element != "1u"] + [facts.own_site(conversion.function)]
    return math.lcm(*(width for width, _ in sites)), math.lcm(*(height for _, height in sites))


def side(space: str, sites: str, form: str, depth: str) -> tuple[Format, tuple[int, ...]]:
    """The format of one side, and which of its planes each plane of the function is."""
    storage = form.replace("I", "").replace("A", "")
    found = formats.format_of(space.replace("YCrCb", "YCbCr") if storage == "P3" else space, sites, storage, depth)
    if len(found.planes) < 3:
        return found, tuple(range(len(found.planes)))  # a plane alone, or luma and pairs of chroma
    letters = (LUMA_CHROMA.get(space) or formats.SPACES[space][0]).split() + ["A"]
    channels = [plane.channels for plane in found.planes]
    return found, tuple(channels.index((letter,)) for letter in letters[:len(channels)])


def conversions_of(function: Function) -> list[Conversion]:
    """All that a function serves: one that looks at no meaning of its channels serves several formats."""
    match = NAME.fullmatch(function.name)
    if not match:
        raise ValueError(f"{function.name} follows no rule of names")
    depth, to_depth = match["depth"], match["toDepth"] or match["depth"]
    form, to_form = match["form"], match["toForm"] or match["form"]
    result = []

    def add(space: str, sites: str, target: str, target_sites: str, **what: str) -> None:
        source, source_order = side(space, sites, form, depth)
        destination, target_order = side(target, target_sites, to_form, to_depth)
        result.append(Conversion(function, source, destination, source_order, target_order, **what))

    verb = match["verb"]
    if verb == "DemosaicAHD" or match["source"] == "CFA":
        for grid in formats.GRIDS:
            add(grid, "", "RGB", "", method="ahd" if verb else "bilinear")
        return result
    if verb:
        single = form.endswith("1")
        for space in ("Gray",) if single else ("RGB",) if "P" in form else ("RGB", "BGR"):
            add(space, "", "bits" if to_depth == "1u" else space, "", verb=VERBS[verb])
        return result
    if match["target"] == "Gray" and match["source"] in ("RGB", "Color"):
        for space in ("RGB", "BGR") if match["source"] == "Color" else ("RGB",):
            add(space, "", "Gray", "", method="weights" if match["source"] == "Color" else "")
        return result
    reversible = "R" if match["option"] == "Rev" else ""

    def space_of(name: str) -> str:
        name = name.removeprefix("S")
        return "YCbCr" if name == "YUV" else name + reversible if name == "YCoCg" else name

    sites = match["sourceSites"] or ""
    target = space_of(match["target"] or match["source"])
    is_colour = match["source"].removeprefix("S") in ("RGB", "BGR")
    target_sites = match["sites"] or ("" if match["target"] or is_colour else sites)
    coded = [name in LUMA_CHROMA for name in (match["source"], match["target"] or match["source"])]
    matrix = ""
    if coded[0] != coded[1] and target != "Gray":
        matrix = MATRICES.get(match["option"]) or ("yuv" if "YUV" in (match["source"], match["target"]) else "601")
    method = {"Filter": "filter", "Interlace": "interlaced"}.get(match["option"]) or (
        "gamma" if match["gamma"] else "dither" if match["dither"] else "")
    add(space_of(match["source"]), sites, target, target_sites, matrix=matrix, method=method)
    return result


@functools.cache
def conversions() -> tuple[Conversion, ...]:
    return tuple(c for f in headers.functions() for c in conversions_of(f))


@functools.cache
def all_formats() -> tuple[Format, ...]:
    found = video.formats() | {f.name: f for c in conversions() for f in (c.source, c.target)} | formats.file_formats()
    return tuple(found[name] for name in sorted(found))
