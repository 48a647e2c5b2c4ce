"""The layouts of 8-bit images and of packed words: their bytes, and what others call them."""

from typing import NamedTuple


class Plane(NamedTuple):
    unit: str  # samples that lie side by side, as channel and number of the sample in the unit
    width: int  # pixels that the unit covers
    height: int = 1


class Layout(NamedTuple):
    title: str
    group: str
    planes: list[Plane]
    fourcc: str
    ffmpeg: str
    v4l2: str
    libyuv: str
    fields: str = ""  # of a pixel's 16-bit word from the highest bit downward, as channel and number of bits


def pixels(order: str) -> list[Plane]:
    return [Plane(" ".join(f"{channel}0" for channel in order.split()), 1)]


def chroma_planes(first: str, second: str, width: int, height: int) -> list[Plane]:
    return [Plane("Y0", 1), Plane(f"{first}0", width, height), Plane(f"{second}0", width, height)]


def chroma_pairs(first: str, second: str, width: int, height: int) -> list[Plane]:
    return [Plane("Y0", 1), Plane(f"{first}0 {second}0", width, height)]


def word(title: str, fields: str, fourcc: str, ffmpeg: str, v4l2: str, libyuv: str = "") -> Layout:
    return Layout(title, "packed words", [], fourcc, ffmpeg, v4l2, libyuv, fields)


SWAPPED = "{}, planes 1 and 2 exchanged"

# Of each layout: the heading, the group of destinations it is in, its bytes, and its names elsewhere.
LAYOUTS = {
    "RGB C3": Layout("RGB, 3 bytes", "RGB", pixels("R G B"), "`raw `", "`rgb24`", "`RGB24`", "`RAW`"),
    "BGR C3": Layout("BGR, 3 bytes", "RGB", pixels("B G R"), "`24BG`", "`bgr24`", "`BGR24`", "`RGB24`"),
    "RGB C4": Layout("RGBA, 4 bytes", "RGB", pixels("R G B A"), "`AB24`", "`rgba`, `rgb0`", "`RGBA32`, `RGBX32`", "`ABGR`"),
    "BGR C4": Layout("BGRA, 4 bytes", "RGB", pixels("B G R A"), "`AR24`", "`bgra`, `bgr0`", "`ABGR32`, `XBGR32`", "`ARGB`"),
    "RGB P3": Layout("RGB, 3 planes", "RGB", [Plane("R0", 1), Plane("G0", 1), Plane("B0", 1)], "", "`gbrp`, planes in another order",
                     "", "three pointers"),
    "BGR444 C3": word("BGR 444, 16-bit words", "-4 R4 G4 B4", "`R444`, `XR12`", "`rgb444le`", "`RGB444`, `XRGB444`",
                      "`ARGB4444`, bits 15 to 12 alpha"),
    "RGB444 C3": word("RGB 444, 16-bit words", "-4 B4 G4 R4", "`XB12`", "`bgr444le`", "`XBGR444`"),
    "BGR555 C3": word("BGR 555, 16-bit words", "-1 R5 G5 B5", "`RGBO`, `XR15`", "`rgb555le`", "`RGB555`, `XRGB555`",
                      "`ARGB1555`, bit 15 alpha"),
    "RGB555 C3": word("RGB 555, 16-bit words", "-1 B5 G5 R5", "`XB15`", "`bgr555le`", "`XBGR555`"),
    "BGR565 C3": word("BGR 565, 16-bit words", "R5 G6 B5", "`RGBP`", "`rgb565le`", "`RGB565`", "`RGB565`"),
    "RGB565 C3": word("RGB 565, 16-bit words", "B5 G6 R5", "`BG16` of DRM", "`bgr565le`", ""),
    "YCbCr C3": Layout("YCbCr 4:4:4, 3 bytes", "4:4:4", pixels("Y Cb Cr"), "`YUV3`", "", "`YUV24`", ""),
    "YCbCr C4": Layout("YCbCr 4:4:4 and alpha, 4 bytes", "4:4:4", pixels("Y Cb Cr A"), "`YUVA`", "", "`YUVA32`, `YUVX32`", ""),
    "YCbCr P3": Layout("YCbCr 4:4:4, 3 planes", "4:4:4", chroma_planes("Cb", "Cr", 1, 1), "`I444`", "`yuv444p`", "`YUV444M`",
                       "`I444`"),
    "YCbCr P4": Layout("YCbCr 4:4:4 and alpha, 4 planes", "4:4:4", chroma_planes("Cb", "Cr", 1, 1) + [Plane("A0", 1)], "",
                       "`yuva444p`", "", "`I444` and a plane"),
    "YCbCr422 C2": Layout("YCbCr 4:2:2, packed", "4:2:2 packed", [Plane("Y0 Cb0 Y1 Cr0", 2)], "`YUY2`, `YUYV`", "`yuyv422`",
                          "`YUYV`", "`YUY2`"),
    "YCrCb422 C2": Layout("YCrCb 4:2:2, packed", "4:2:2 packed", [Plane("Y0 Cr0 Y1 Cb0", 2)], "`YVYU`", "`yvyu422`", "`YVYU`", ""),
    "CbYCr422 C2": Layout("CbYCr 4:2:2, packed", "4:2:2 packed", [Plane("Cb0 Y0 Cr0 Y1", 2)], "`UYVY`, `2vuy`", "`uyvy422`",
                          "`UYVY`", "`UYVY`"),
    "YCbCr422 P3": Layout("YCbCr 4:2:2, 3 planes", "4:2:2 planar", chroma_planes("Cb", "Cr", 2, 1), "`I422`", "`yuv422p`",
                          "`YUV422P`, `YUV422M`", "`I422`"),
    "YCrCb422 P3": Layout("YCrCb 4:2:2, 3 planes", "4:2:2 planar", chroma_planes("Cr", "Cb", 2, 1), "`YV16`",
                          SWAPPED.format("`yuv422p`"), "`YVU422M`", "`YV16`"),
    "YCbCr420 P3": Layout("YCbCr 4:2:0, 3 planes", "4:2:0", chroma_planes("Cb", "Cr", 2, 2), "`I420`, `IYUV`, `YU12`", "`yuv420p`",
                          "`YUV420`", "`I420`"),
    "YCrCb420 P3": Layout("YCrCb 4:2:0, 3 planes", "4:2:0", chroma_planes("Cr", "Cb", 2, 2), "`YV12`",
                          SWAPPED.format("`yuv420p`"), "`YVU420`", "`YV12`"),
    "YCbCr420 P2": Layout("YCbCr 4:2:0, 2 planes", "4:2:0", chroma_pairs("Cb", "Cr", 2, 2), "`NV12`", "`nv12`", "`NV12`", "`NV12`"),
    "YCrCb420 P2": Layout("YCrCb 4:2:0, 2 planes", "4:2:0", chroma_pairs("Cr", "Cb", 2, 2), "`NV21`", "`nv21`", "`NV21`", "`NV21`"),
    "YCbCr411 P3": Layout("YCbCr 4:1:1, 3 planes", "4:1:1", chroma_planes("Cb", "Cr", 4, 1), "`I411`, `Y41B`", "`yuv411p`",
                          "`YUV411P`", "`I411`"),
    "YCbCr411 P2": Layout("YCbCr 4:1:1, 2 planes", "4:1:1", chroma_pairs("Cb", "Cr", 4, 1), "`NV11`", "", "", ""),
    "YCbCr1620 P3": Layout("YCbCr 1620 (4:1:0), 3 planes", "4:1:0", chroma_planes("Cb", "Cr", 4, 4), "`YUV9`", "`yuv410p`", "`YUV410`", ""),
}
