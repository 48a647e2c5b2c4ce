"""The formats that libzelvideo converts and no function names, and how that library describes a format."""

from collections.abc import Iterator
from typing import NamedTuple

from catalog.formats import Format, Plane


class Description(NamedTuple):
    """A ZelvFormat without its colours, by the numbers of zelvideo.h."""
    layout: int
    components: str
    sampling: int
    depth: int
    alignment: int


PLANAR, SEMI_PLANAR, INTERLEAVED, PAIRED, DWORDS, V210 = range(6)
SITES = {"444": (1, 1), "422": (2, 1), "420": (2, 2), "440": (1, 2), "411": (4, 1)}  # in the order of zelvideo.h
LETTERS = {"Cb": "U", "Cr": "V", "-": "X"}  # others are their own
DEPTHS = {"8u": 8, "16u": 16, "32f": 32}
# By the numbers of zelvideo.h, and the range that functions have of a matrix: full or not, if there are some.
MATRICES = {"601": (6, False), "709": (1, False), "2020": (9, None), "240m": (7, None), "fcc": (4, None), "ycgco": (8, None),
            "709-full": (None, True), "yuv": (None, True)}
# Names that say the range too; the rest of them is another format's.
FULL_RANGE = ["yuvj411p", "yuvj420p", "yuvj422p", "yuvj440p", "yuvj444p"]


def sites_by_name(sites: str) -> str:
    return ":".join(sites)


def words(depth: int, high: bool = False) -> str:
    where = " at the upper end of 16-bit words" if high and 8 < depth < 16 else ""
    return f"{depth}-bit{where}"


def of_planes(name: str, title: str, planes: list[tuple[str, int, int]], depth: int, high: bool = False) -> Format:
    """Planes as channels, width and height."""
    size = 1 if depth == 8 else 2
    return Format(name, title, "8u" if depth == 8 else "16u",
                  tuple(Plane(tuple(c.split()), size * len(c.split()), w, h) for c, w, h in planes), depth=depth, high=high)


def planar() -> Iterator[Format]:
    deep = {"yuv": {"420": (9, 10, 12, 14, 16), "422": (9, 10, 12, 14, 16), "444": (9, 10, 12, 14, 16), "440": (8, 10, 12)},
            "yuva": {"420": (8, 9, 10, 16), "422": (8, 9, 10, 12, 16), "444": (9, 10, 12, 16)}}
    for prefix, samplings in deep.items():
        alpha = [("A", 1, 1)] if prefix == "yuva" else []
        for sites, depths in samplings.items():
            for depth in depths:
                yield of_planes(f"{prefix}{sites}p{'' if depth == 8 else f'{depth}le'}",
                                f"YCbCr{' and alpha' if alpha else ''} {sites_by_name(sites)}, {words(depth)}, planes",
                                [("Y", 1, 1), ("Cb", *SITES[sites]), ("Cr", *SITES[sites]), *alpha], depth)
    for depth in (9, 10, 12, 14):
        yield of_planes(f"gray{depth}le", f"gray, {words(depth)}", [("Y", 1, 1)], depth)
        yield of_planes(f"gbrp{depth}le", f"RGB, {words(depth)}, 3 planes", [(c, 1, 1) for c in "GBR"], depth)
    for depth in (10, 12):
        yield of_planes(f"gbrap{depth}le", f"RGB and alpha, {words(depth)}, 4 planes", [(c, 1, 1) for c in "GBRA"], depth)


def semi_planar() -> Iterator[Format]:
    for name, sites, chroma, depth, high in (
            ("nv16", "422", "Cb Cr", 8, False), ("nv24", "444", "Cb Cr", 8, False), ("nv42", "444", "Cr Cb", 8, False),
            ("nv20le", "422", "Cb Cr", 10, False),
            *((f"p{digit}{depth}le", sites, "Cb Cr", depth, depth < 16)
              for digit, sites in (("0", "420"), ("2", "422"), ("4", "444")) for depth in (10, 12, 16))):
        yield of_planes(name, f"{chroma.replace(' ', '')} pairs, {sites_by_name(sites)}, {words(depth, high)}",
                        [("Y", 1, 1), (chroma, *SITES[sites])], depth, high)


def packed() -> Iterator[Format]:
    for name, channels, depth in (
            ("0rgb", "- R G B", 8), ("0bgr", "- B G R", 8), ("rgb0", "R G B -", 8), ("bgr0", "B G R -", 8), ("argb", "A R G B", 8),
            ("abgr", "A B G R", 8), ("ayuv", "A Y Cb Cr", 8), ("vuya", "Cr Cb Y A", 8), ("vuyx", "Cr Cb Y -", 8),
            ("uyva", "Cb Y Cr A", 8), ("vyu444", "Cr Y Cb", 8), ("ayuv64le", "A Y Cb Cr", 16), ("xv36le", "Cb Y Cr -", 12),
            ("xv48le", "Cb Y Cr -", 16)):
        yield of_planes(name, f"packed {channels}, {words(depth, True)}", [(channels, 1, 1)], depth, 8 < depth < 16)
    for name, channels, depth in (("yvyu422", "Y Cr Y Cb", 8), ("y210le", "Y Cb Y Cr", 10), ("y212le", "Y Cb Y Cr", 12),
                                  ("y216le", "Y Cb Y Cr", 16)):
        yield of_planes(name, f"packed {channels}, 4:2:2, {words(depth, True)}", [(channels, 2, 1)], depth, 8 < depth < 16)


def dwords() -> Iterator[Format]:
    """Of the dwords' channels, the last has two bits."""
    for name, title, channels in (("x2rgb10le", "RGB", "B G R -"), ("x2bgr10le", "BGR", "R G B -"), ("xv30le", "YCbCr 4:4:4", "Cb Y Cr -")):
        yield Format(name, f"{title} packed into words of 32 bits, 10-bit", "32u", (Plane(tuple(channels.split()), 4),),
                     fields=(10, 10, 10), depth=10)
    # A row is filled up to 128 bytes. The pixels of a site are those of these.
    yield Format("v210", "YCbCr 4:2:2, 10-bit, six pixels in 16 bytes, rows of whole 128 bytes", "32u",
                 (Plane(tuple("Cb Y Cr Y".split()), 128, 48),), fields=(10, 10, 10), depth=10)


def formats() -> dict[str, Format]:
    return {f.name: f for made in (planar(), semi_planar(), packed(), dwords()) for f in made}


def description(f: Format) -> Description | None:
    """How the library describes the format, if it does."""
    depth = f.depth or DEPTHS.get(f.element, 0)
    if f.model not in ("rgb", "ycbcr", "gray") or not depth or (f.fields and not f.depth) or (depth == 32 and f.model != "rgb"):
        return None
    planes = ["".join(LETTERS.get(c, c) for c in p.channels) for p in f.planes]
    chroma = next(((p.width, p.height) for p in f.planes if "Cb" in p.channels), (1, 1))
    if f.name == "v210":
        return Description(V210, "YUV", 1, depth, 0)
    if chroma not in SITES.values():
        return None
    sampling = list(SITES.values()).index(chroma)
    if f.fields:
        layout = DWORDS
    elif len(planes) == 1 and planes[0].count("Y") == 2:
        layout = PAIRED
    elif len(planes) == 1 and len(planes[0]) > 1:
        layout = INTERLEAVED
    else:
        layout = SEMI_PLANAR if len(planes) == 2 else PLANAR
    if layout not in (PLANAR, SEMI_PLANAR) and sampling != (layout == PAIRED):
        return None
    return Description(layout, "".join(planes), sampling, depth, int(f.high))
