"""The formats of images at every depth, by the names that users of FFmpeg know where it has one."""

import functools
import re
from typing import NamedTuple

from catalog.layouts import LAYOUTS

# Of each type of sample: its bytes, what ends the name of a packed format of three or four of them and of a plane, and the words.
ELEMENTS = {
    "8u": (1, "24", "32", "", "8-bit"),
    "8s": (1, "24s", "32s", "s", "signed 8-bit"),
    "16u": (2, "48le", "64le", "16le", "16-bit"),
    "16s": (2, "48s", "64s", "16s", "signed 16-bit"),
    "32s": (4, "96s", "128s", "32s", "signed 32-bit"),
    "32f": (4, "f32le", "f32le", "f32le", "float"),
    "64f": (8, "f64le", "f64le", "f64le", "double"),
}


class Plane(NamedTuple):
    channels: tuple[str, ...]  # of the samples that lie side by side and serve width x height pixels
    bytes: int
    width: int = 1
    height: int = 1


class Format(NamedTuple):
    name: str
    title: str
    element: str
    planes: tuple[Plane, ...]  # in the order of a file
    grid: str = ""  # of a mosaic
    fields: tuple[int, ...] = ()  # bits of each channel in a word
    depth: int = 0  # bits of a sample, where it has fewer than its type
    high: bool = False  # they are its upper ones

    @property
    def site(self) -> tuple[int, int]:
        return max(p.width for p in self.planes), max(p.height for p in self.planes)

    @property
    def channels(self) -> list[str]:
        return [channel for plane in self.planes for channel in plane.channels]

    @property
    def bits(self) -> int:
        """Of the narrowest channel; of floats those that are certain."""
        return self.depth or min(self.fields, default=BITS[self.element])

    @property
    def is_packed(self) -> bool:
        """Several channels or pixels share a sample."""
        return bool(self.fields) or self.element == "1u"

    @property
    def model(self) -> str:
        """What the channels mean, as catalog/registry.h counts it."""
        if self.grid:
            return "mosaic"
        if set(self.channels) == {"Y"}:
            return "gray"
        return next((model for channel, model in MODELS.items() if channel in self.channels), "other")

    @property
    def alpha_plane(self) -> int:
        return next((i for i, plane in enumerate(self.planes) if "A" in plane.channels), -1)


BITS = {"1u": 1, "8u": 8, "8s": 8, "16u": 16, "16s": 16, "32s": 32, "32u": 32, "32f": 24, "64f": 53}
MODELS = {"R": "rgb", "Cb": "ycbcr", "Co": "ycocg"}  # by a channel that no other has

# Planes of the same content in another order: what functions make of one format is as good as the other.
ORDERS = {"yv12": "yuv420p", "yv16": "yuv422p"}
GRIDS = ("bggr", "rggb", "gbrg", "grbg")  # in the order of ZelBayerGrid

# The channels of the spaces that are stored at several depths, and how their formats are named.
SPACES = {
    "RGB": ("R G B", "rgb"),
    "BGR": ("B G R", "bgr"),
    "XYZ": ("X Y Z", "xyz"),
    "LUV": ("L U V", "luv"),
    "Lab": ("L a b", "lab"),
    "HLS": ("H L S", "hls"),
    "HSV": ("H S V", "hsv"),
    "YCC": ("Y C1 C2", "ycc"),
    "YCoCg": ("Y Co Cg", "ycocg"),
    "YCoCgR": ("Y Co Cg", "ycocgr"),  # the reversible ones
}
# FFmpeg's planes are in the order G, B, R.
PLANAR_COLOUR = {3: ("gbrp", "G B R"), 4: ("gbrap", "G B R A")}


def of_bytes(key: str) -> Format:
    layout = LAYOUTS[key]
    if layout.fields:
        fields = re.findall(r"(\S)(\d)", layout.fields)
        bits = tuple(int(bits) for channel, bits in fields if channel != "-")
        return Format(name_of_bytes(key), layout.title, "16u", (Plane(tuple(channel for channel, _ in fields), 2),), fields=bits)
    planes = [Plane(tuple(re.findall(r"([A-Za-z]+)\d", p.unit)), len(p.unit.split()), p.width, p.height) for p in layout.planes]
    return Format(name_of_bytes(key), layout.title, "8u", tuple(planes))


OWN_NAMES = {"YCbCr C3": "yuv24", "YCbCr C4": "yuva32", "YCbCr411 P2": "nv11", "YCrCb422 P3": "yv16", "YCrCb420 P3": "yv12"}


def name_of_bytes(key: str) -> str:
    return OWN_NAMES.get(key) or re.match(r"`(\w+)`", LAYOUTS[key].ffmpeg)[1]


def of_depth(space: str, storage: str, element: str) -> Format:
    size, packed3, packed4, planar, words = ELEMENTS[element]
    channels, prefix = SPACES[space]
    letters = channels.split()
    count = int(storage[-1])
    if count == 4:
        letters = letters + ["A"]
    title = f"{space.replace('YCoCgR', 'reversible YCoCg')}{' and alpha' if count == 4 else ''}, {words}"
    if "P" in storage:
        name, order = f"{prefix}{'a' if count == 4 else ''}p", letters
        if space in ("RGB", "BGR"):
            name, order = PLANAR_COLOUR[count][0], PLANAR_COLOUR[count][1].split()
            title = title.replace(space, "RGB")
        return Format(name + planar, f"{title}, {count} planes", element, tuple(Plane((c,), size) for c in order))
    suffix = packed4 if count == 4 else packed3
    name = f"{prefix}{'a' if count == 4 else ''}{suffix}"
    if count == 4 and space in ("RGB", "BGR") and element == "8u":
        name = f"{prefix}a"
    return Format(name, title, element, (Plane(tuple(letters), size * count),))


def format_of(space: str, sites: str, storage: str, element: str) -> Format:
    """The format of one side of a function, by what its name says of it."""
    storage = storage.replace("A", "")
    if space == "Gray":
        size, _, _, planar, words = ELEMENTS[element]
        return Format(f"gray{planar}", f"gray, {words}", element, (Plane(("Y",), size),))
    if space == "bits":
        return Format("monob", "black and white, a bit a pixel", "1u", (Plane(("Y",) * 8, 1, 8),))
    if space in GRIDS:
        size = ELEMENTS[element][0]
        return Format(f"bayer_{space}{'8' if size == 1 else '16le'}", f"raw mosaic {space.upper()}, {8 * size}-bit", element,
                      (Plane(("S",), size),), space)
    if space in SPACES and not sites:
        return of_depth(space, storage, element)
    return of_bytes(f"{space}{sites} {storage}")


@functools.cache
def file_formats() -> dict[str, Format]:
    """Those that only files know, being another order of planes."""
    return {f.name: f for key in LAYOUTS if (f := of_bytes(key)).name in ORDERS}


# Names that are FFmpeg's too, of those that no table of layouts shows.
FFMPEG_NAMES = {"bgr48le", "bgra64le", "gbrap", "gbrp", "gbrp16le", "gbrpf32le", "gray", "gray16le", "grayf32le", "monob", "rgb48le",
                "rgba64le", "rgbf32le", "rgbaf32le"} | {f"bayer_{grid}{depth}" for grid in GRIDS for depth in ("8", "16le")}


@functools.cache
def known_to_ffmpeg() -> frozenset[str]:
    return frozenset(FFMPEG_NAMES | {name_of_bytes(key) for key in LAYOUTS if key not in OWN_NAMES})
