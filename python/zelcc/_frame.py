"""Frames that PyAV decodes, converted where they lie by what they say of themselves."""

from __future__ import annotations

import functools
from typing import Any, cast

import numpy as np

from ._convert import Format, Image, Plane, _format, _has_chroma, _is_full, convert, formats
from ._names import Location, Matrix, Packed, Planar, Range

# By FFmpeg's numbers. What it has for unspecified is none of them.
_MATRICES: dict[int, Matrix] = {1: "709", 4: "fcc", 5: "601", 6: "601", 7: "240m", 8: "ycgco", 9: "2020"}
_RANGES: dict[int, Range] = {1: "limited", 2: "full"}


@functools.cache
def _by_ffmpeg() -> dict[str, str]:
    return {form.ffmpeg_name: form.name for form in formats().values() if form.ffmpeg_name}


def _planes(frame: Any, form: Format) -> tuple[Plane, ...]:
    """Arrays over the frame's own memory, with the distance of its rows."""
    def array(plane: Any, shape: tuple[int, ...]) -> Plane:
        bytes_ = form.dtype.itemsize
        strides = (plane.line_size, *([bytes_ * shape[2]] if len(shape) == 3 else []), bytes_)
        return np.ndarray(shape, form.dtype, plane, strides=strides)

    return tuple(array(plane, shape) for plane, shape in zip(frame.planes, form.shapes(frame.width, frame.height)))


def from_frame(frame: Any, format: Packed | Planar = "rgb24", *, matrix: Matrix | None = None, range: Range | None = None,
               location: Location = "left", **how: Any) -> Image:
    """Converts a decoded av.VideoFrame, whose planes are read where they lie, as `convert` does with its further arguments.

    Format, matrix and range are the frame's own. What it leaves open, as all do in PyAV before 11, is asked for rather than guessed,
    and an argument overrules what it says. PyAV doesn't tell where chroma lies, which matters to method="filter" alone, so it is where location says. Interlaced
    frames need method="interlaced".
    """
    name = str(frame.format.name)
    plain = name if _is_full(name) else _by_ffmpeg().get(name, name)
    before, after = _format(plain), _format(format)
    found: Matrix | None = matrix or _MATRICES.get(int(getattr(frame, "colorspace", 2)))
    said: Range | None = range or ("full" if _is_full(name) else _RANGES.get(int(getattr(frame, "color_range", 0))))
    if _has_chroma(before):
        if not found:
            raise ValueError('the frame doesn\'t say by which matrix its luma and chroma were made; give matrix=, as "601" or "709"')
        if not said:
            raise ValueError('the frame doesn\'t say its range; give range="limited" or range="full"')
    planes = _planes(frame, before)
    image = planes if len(planes) > 1 else planes[0]
    if not (_has_chroma(before) or _has_chroma(after)):
        found, said = None, None
    return cast(Image, convert(cast(Any, image), cast(Any, plain), cast(Any, format), matrix=found or "601", range=said,
                               location=location, **how))
