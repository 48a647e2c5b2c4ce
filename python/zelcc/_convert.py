"""Conversion between formats by name, over as many functions as it takes."""

from __future__ import annotations  # help shows the names of types, not all formats that they stand for

import functools
import inspect
import math
import os
import threading
from collections.abc import Callable, Sequence
from concurrent.futures import ThreadPoolExecutor, wait
from typing import Any, NamedTuple, cast, get_args, overload

import numpy as np
import numpy.typing as npt

from . import _arrays, _native
from ._names import Location, Matrix, Method, Packed, Planar, Range

Plane = npt.NDArray[Any]
Image = Plane | tuple[Plane, ...]
Matrices = Matrix | tuple[Matrix, Matrix]
Ranges = Range | tuple[Range, Range] | None
Locations = Location | tuple[Location, Location]


class PlaneForm(NamedTuple):
    channels: tuple[str, ...]  # of the samples of a unit
    width: int  # pixels that an element of the array serves
    height: int
    depth: int  # of the last axis, 0 if there is none

    def shape(self, width: int, height: int) -> tuple[int, ...]:
        sides = -(-height // self.height), -(-width // self.width)
        return (*sides, self.depth) if self.depth else sides


class Format(NamedTuple):
    name: str
    title: str
    dtype: np.dtype[Any]
    planes: tuple[PlaneForm, ...]
    ffmpeg_name: str  # empty where FFmpeg doesn't have it
    grid: int  # of a mosaic, as ZelBayerGrid; otherwise -1

    @property
    def has_alpha(self) -> bool:
        return any("A" in plane.channels for plane in self.planes)

    def shapes(self, width: int, height: int) -> tuple[tuple[int, ...], ...]:
        """Of the planes of an image."""
        return tuple(plane.shape(width, height) for plane in self.planes)


class Step(NamedTuple):
    function: str | None  # or zelvConvert, by which libzelvideo converts; none where samples are moved as they are
    source: str
    target: str
    source_order: tuple[int, ...]  # for each plane of the function that of the format
    target_order: tuple[int, ...]
    writes_alpha: bool


class _Colours(NamedTuple):
    """What is said of both sides, and by which method chroma and bits become fewer or more."""
    matrix: tuple[str, str]
    range: tuple[str, str]  # empty where nothing is known
    location: tuple[str, str]
    method: str


class _Path(NamedTuple):
    steps: tuple[Step, ...]
    width: int  # of the sites that all steps convert as a whole
    height: int
    function: Callable[..., Any] | None  # that does all of it on arrays as they come
    colours: _Colours
    image_types: type | tuple[type, ...]  # which it takes
    out_types: type | tuple[type, ...]
    axes: int  # of the first plane of one image
    rows: int  # at whose multiples an image may be cut and comes out the same, 0 if it may nowhere


@functools.cache
def formats() -> dict[str, Format]:
    """All formats by name: the shape and type of their planes."""
    made = {}
    for name, title, dtype, parts, ffmpeg_name, grid in _native._formats():
        forms = tuple(PlaneForm(tuple(channels.split()), width, height, depth if depth > 1 else 0)
                      for channels, width, height, depth in parts)
        made[name] = Format(name, title, dtype, forms, ffmpeg_name, grid)
    return made


def _unknown(kind: str, word: str, names: tuple[str, ...]) -> str:
    return f"no {kind} is named {word!r}{_native._suggestion(word, names)}"


def _format(name: str) -> Format:
    found = formats().get(_plain(name))
    if found is None:
        raise ValueError(_unknown("format", name, tuple(formats())))
    return found


def _plain(name: str) -> str:
    """yuvj420p is yuv420p whose range is told by the name."""
    return name.replace("yuvj", "yuv", 1)


def _is_full(name: str) -> bool:
    return name.startswith("yuvj")


def _has_chroma(form: Format) -> bool:
    return any("Cb" in plane.channels for plane in form.planes)


def _pair(kind: str, words: Any, names: tuple[str, ...]) -> tuple[str, str]:
    pair = words if isinstance(words, tuple) else (words, words)
    for word in pair:
        if word not in names:
            raise ValueError(_unknown(kind, word, names))
    return cast(tuple[str, str], pair)


def _ranges(source: str, target: str, given: Ranges) -> tuple[str, str]:
    """An argument that is no pair speaks of luma and chroma where a side has them, and else of gray."""
    first, last = _pair("range", given, get_args(Range)) if given else ("", "")
    for name, said in ((source, first), (target, last)):
        if _is_full(name) and said == "limited":
            raise ValueError(f"{name} is full range by its name; {_plain(name)} leaves it open")
    from_chroma, to_chroma = _has_chroma(_format(source)), _has_chroma(_format(target))
    if not isinstance(given, tuple):
        if to_chroma and not from_chroma:
            first = ""
        if from_chroma and not to_chroma:
            last = ""
    first, last = "full" if _is_full(source) else first, "full" if _is_full(target) else last
    return first, last or (first if from_chroma and to_chroma else "")


@functools.cache
def _path(source: str, target: str, matrix: Matrices, range: Ranges, location: Locations, method: str) -> _Path:
    _format(source), _format(target)
    _pair("method", method, get_args(Method))
    colours = _Colours(_pair("matrix", matrix, get_args(Matrix)), _ranges(source, target, range),
                       _pair("location", location, get_args(Location)), method)
    found = _native._path(_plain(source), _plain(target), *colours)
    if found is None:
        wish = f" by {method}" if method else ""
        said = f" and the range {range!r}" if range else ""
        raise ValueError(f"no functions lead from {source} to {target}{wish} with the matrix {matrix!r}{said}")
    taken = tuple(Step(*step) for step in found[0])
    return _Path(taken, found[1], found[2], _only_function(taken), colours, _types(source), _types(target),
                 _arrays.axes(_format(source)), _rows_of_part(taken, found[2], method))


def _rows_of_part(taken: tuple[Step, ...], site: int, method: str) -> int:
    if any(_format(step.source).grid >= 0 for step in taken):
        return 0  # pixels of a mosaic are made of rows around them
    # The video library's pattern of dither has eight rows, and its filters look at those around.
    of_video = 0 if method == "filter" else 8

    def of_step(step: Step) -> int:
        if step.function is None:
            return 1
        return of_video if step.function == _VIDEO else _native._rows_of_part(step.function)

    return math.lcm(site, *(of_step(step) for step in taken))


def _types(format: str) -> type | tuple[type, ...]:
    return (tuple, list) if len(_format(format).planes) > 1 else np.ndarray


_VIDEO = "zelvConvert"


def _only_function(taken: tuple[Step, ...]) -> Callable[..., Any] | None:
    if len(taken) != 1 or taken[0].function in (None, _VIDEO) or _format(taken[0].source).grid >= 0:
        return None
    step = taken[0]
    is_in_order = all(order == tuple(sorted(order)) for order in (step.source_order, step.target_order))
    if not is_in_order or (_format(step.target).has_alpha and not step.writes_alpha):
        return None
    function: Callable[..., Any] = getattr(_native, cast(str, step.function))
    return function


def _shared_out(path: _Path, extras: dict[str, Any]) -> list[dict[str, Any]]:
    """The further arguments of each step: each goes to the last function that takes it."""
    shares: list[dict[str, Any]] = [{} for _ in path.steps]
    for name, value in extras.items():
        for step, share in zip(reversed(path.steps), reversed(shares)):
            if step.function not in (None, _VIDEO) and name in _keywords(step.function):
                share[name] = value
                break
        else:
            functions = ", ".join(step.function for step in path.steps if step.function)
            raise TypeError(f"convert() got an unexpected keyword argument '{name}': {functions or 'a move of samples'} takes none")
    return shares


_OF_REGIONS = ("grid", "region", "layout", "above")  # images are whole here, and formats say what their grid is


@functools.cache
def _keywords(function: str) -> frozenset[str]:
    parameters = inspect.signature(getattr(_native, function)).parameters.values()
    return frozenset(p.name for p in parameters if p.kind is p.KEYWORD_ONLY and p.name not in _OF_REGIONS)


def steps(source: Packed | Planar, target: Packed | Planar, *, matrix: Matrices = "601", range: Ranges = None,
          location: Locations = "left", method: Method = "") -> tuple[Step, ...]:
    """The functions that `convert` takes for this, in their order."""
    return _path(source, target, matrix, range, location, method).steps


def planes(data: npt.NDArray[Any] | bytes | bytearray | memoryview, format: Packed | Planar, width: int, height: int) -> Image:
    """The planes of a file or buffer, in which they follow each other without gaps, as arrays that share its memory."""
    form = _format(format)
    if isinstance(data, np.ndarray) and not data.flags.c_contiguous:
        raise ValueError("data must be contiguous")
    bytes_ = data.reshape(-1).view(np.uint8) if isinstance(data, np.ndarray) else np.frombuffer(data, np.uint8)
    found, begin = [], 0
    for shape in form.shapes(width, height):
        end = begin + int(np.prod(shape)) * form.dtype.itemsize
        if end > bytes_.size:
            raise ValueError(f"data has {bytes_.size} bytes, too few for {format} of {width} x {height}")
        found.append(bytes_[begin:end].view(form.dtype).reshape(shape))
        begin = end
    if begin != bytes_.size:
        raise ValueError(f"data has {bytes_.size} bytes, but {format} of {width} x {height} has {begin}")
    return found[0] if len(found) == 1 else tuple(found)


def _checked(name: str, image: object, form: Format, size: tuple[int, int] | None) -> tuple[tuple[Plane, ...], tuple[int, int]]:
    """The planes of an argument, and width and height."""
    found = _arrays.as_planes(name, image, form, name == "out")
    first = found[0]
    if first.ndim < 2:
        raise ValueError(f"{name} must have rows and columns, but its shape is {first.shape}")
    # A bit image is as wide as it is said to be.
    width, height = size or (first.shape[1] * form.planes[0].width, first.shape[0] * form.planes[0].height)
    for i, (plane, shape) in enumerate(zip(found, form.shapes(width, height))):
        where = name if len(found) == 1 else f"{name}[{i}]"
        if plane.dtype != form.dtype:
            raise ValueError(_arrays.type_fault(where, plane.dtype, form))
        if plane.shape != shape:
            raise ValueError(f"{where} must have the shape {shape}, not {plane.shape}, for {form.name} of {width} x {height}")
    return found, (width, height)


def _widened(arrays: tuple[Plane, ...], form: Format, width: int, height: int) -> tuple[Plane, ...]:
    """With the last column and row repeated up to the size."""
    result = []
    for plane, shape in zip(arrays, form.shapes(width, height)):
        more = [(0, new - old) for new, old in zip(shape, plane.shape)]
        result.append(np.pad(plane, more, mode="edge"))
    return tuple(result)


def _alpha(form: Format, arrays: tuple[Plane, ...]) -> Plane:
    number = next(i for i, plane in enumerate(form.planes) if "A" in plane.channels)
    plane = arrays[number]
    return plane[..., form.planes[number].channels.index("A")] if plane.ndim == 3 else plane


def _finish_alpha(step: Step, source: tuple[Plane, ...], target: tuple[Plane, ...]) -> None:
    """Some functions leave alpha alone, or at 0."""
    before, after = _format(step.source), _format(step.target)
    if step.writes_alpha or not after.has_alpha:
        return
    opaque: float = 1 if after.dtype.kind == "f" else np.iinfo(after.dtype).max
    is_kept = before.has_alpha and before.dtype == after.dtype
    _alpha(after, target)[...] = _alpha(before, source) if is_kept else opaque


def _run(step: Step, source: tuple[Plane, ...], target: tuple[Plane, ...], colours: _Colours, extras: dict[str, Any]) -> None:
    def argument(arrays: tuple[Plane, ...], order: tuple[int, ...]) -> Image:
        return arrays[0] if len(arrays) == 1 else tuple(arrays[i] for i in order)

    if step.function is None:
        _native._rearrange(step.source, argument(source, step.source_order), step.target, argument(target, step.target_order))
        return
    if step.function == _VIDEO:
        _native._convert_video(step.source, argument(source, step.source_order), step.target, argument(target, step.target_order),
                               *colours)
        return
    function: Callable[..., Any] = getattr(_native, step.function)
    if _format(step.source).grid >= 0:
        extras = {**extras, "grid": _format(step.source).grid}
    function(argument(source, step.source_order), argument(target, step.target_order), **extras)
    _finish_alpha(step, source, target)


@functools.cache
def _pool(threads: int) -> ThreadPoolExecutor:
    """Kept, since threads take longer to start than a frame to convert; a process that is forked starts its own."""
    return ThreadPoolExecutor(threads, "zelcc")


os.register_at_fork(after_in_child=_pool.cache_clear)

_Parts = list[tuple[tuple[Plane, ...], tuple[Plane, ...]]]


def _convert_parts(parts: _Parts, source: Packed | Planar, target: Packed | Planar, threads: int, how: dict[str, Any]) -> None:
    def run(part: tuple[tuple[Plane, ...], tuple[Plane, ...]]) -> None:
        given, made = (planes if len(planes) > 1 else planes[0] for planes in part)
        convert(cast(Any, given), source, target, out=cast(Any, made), **how)

    if threads == 1 or len(parts) < 2:
        for part in parts:
            run(part)
        return
    remaining = iter(parts)  # a part at a time for each thread, of which the caller's is one
    taking = threading.Lock()

    def work() -> None:
        while True:
            with taking:
                part = next(remaining, None)
            if part is None:
                return
            run(part)

    others = [_pool(threads - 1).submit(work) for _ in range(min(threads, len(parts)) - 1)]
    try:
        work()
    finally:
        wait(others)
    for other in others:
        other.result()  # which raises what one of them does


_CACHE_BYTES = 1 << 22  # of the largest cache: shorter strips would spend more time on calls


def _is_in_place(step: Step) -> bool:
    """Whether it only exchanges channels of each pixel, as between rgb24 and bgr24."""
    before, after = _format(step.source), _format(step.target)
    return step.function is None and len(before.planes) == 1 and before.dtype == after.dtype and (
        sorted(before.planes[0].channels) == sorted(after.planes[0].channels))


def _rows_in_cache(path: _Path, width: int, height: int) -> int:
    """Of a strip whose images between the steps stay in the cache; all where there are none or the results would show the cuts."""
    between = [_format(step.target) for step, following in zip(path.steps, path.steps[1:]) if not _is_in_place(following)]
    if not between or not path.rows:
        return height
    wide = -(-width // path.width) * path.width
    of_rows = max(sum(int(np.prod(shape)) for shape in form.shapes(wide, path.rows)) * form.dtype.itemsize for form in between)
    return max(_CACHE_BYTES // of_rows, 1) * path.rows


def _strips(path: _Path, arrays: tuple[Plane, ...], before: Format, made: tuple[Plane, ...], after: Format, height: int,
            threads: int, most: int) -> _Parts:
    """As many of whole parts as there are threads, or more of so many rows, or one where the results would show the cuts."""
    shares = any(np.may_share_memory(a, b) for a in arrays for b in made)
    rows = height if shares or not path.rows else min(-(-height // (threads * path.rows)) * path.rows, most)

    def cut(planes: tuple[Plane, ...], form: Format, row: int) -> tuple[Plane, ...]:
        return tuple(plane[row // p.height:-(-min(row + rows, height) // p.height)] for plane, p in zip(planes, form.planes))

    return [(cut(arrays, before, row), cut(made, after, row)) for row in range(0, height, max(rows, 1))]


def _convert_all(count: int, given: tuple[Plane, ...], source: Packed | Planar, target: Packed | Planar,
                 out: Any, threads: int, **how: Any) -> Image:
    """Images one by one, into planes of all."""
    before, after = _format(source), _format(target)
    first = before.planes[0]
    width, height = given[0].shape[2] * first.width, given[0].shape[1] * first.height
    if out is None:
        made = tuple(np.zeros((count, *shape), after.dtype) for shape in after.shapes(width, height))
    else:
        made = _arrays.as_planes("out", out, after, True)
        if _arrays.count(made, after) != count:
            raise ValueError(f"out must be of {count} images as image is")
    parts = [(tuple(p[i] for p in given), tuple(p[i] for p in made)) for i in range(count)]
    _convert_parts(parts, source, target, threads, how)
    if out is not None and not isinstance(out, (tuple, list)):
        return cast(Image, out)
    return made if len(made) > 1 else made[0]


@overload
def convert(image: npt.ArrayLike | Sequence[Plane], source: Packed | Planar, target: Packed, *, matrix: Matrices = "601",
            range: Ranges = None, location: Locations = "left", method: Method = "", threads: int = 1, out: Plane | None = None,
            **extras: Any) -> Plane: ...


@overload
def convert(image: npt.ArrayLike | Sequence[Plane], source: Packed | Planar, target: Planar, *, matrix: Matrices = "601",
            range: Ranges = None, location: Locations = "left", method: Method = "", threads: int = 1,
            out: Sequence[Plane] | None = None, **extras: Any) -> tuple[Plane, ...]: ...


def convert(image: npt.ArrayLike | Sequence[Plane], source: Packed | Planar, target: Packed | Planar, *,
            matrix: Matrices = "601", range: Ranges = None, location: Locations = "left", method: Method = "",
            threads: int = 1, out: Plane | Sequence[Plane] | None = None, **extras: Any) -> Image:
    """Converts an image, or a list of its planes, from a format to another, by the way over functions that loses least.

    Many images convert in one call where arrays have one axis more, before the others. Planes of one size may be stacked, as
    (3, height, width), and those of 4:2:0 follow each other in one array of height * 3 // 2 rows. Arrays of other libraries are read
    where they lie, by their buffers, __array_interface__ or DLPack.

    matrix and range are those of luma and chroma, or pairs where both sides have them and differ; without a range it is that of
    the functions, limited but for "709-full" and "yuv", and of names like yuvj420p the full one. location is where chroma lies,
    which matters where it is filtered. Where functions have exactly that matrix and range, they are called, and otherwise the video
    library does all in one step, which zelcc.steps calls zelvConvert.

    method asks for one step of a kind: chroma by filter, or of interlaced frames; gamma, or linear for its inverse; words
    by dither; a mosaic by ahd; gray by weights, which are given as coeffs; floats to bytes by tone-maximum or tone-mean.
    Otherwise all steps are by the plain way. Further arguments go to the last function that takes them, by their C names. A
    size that is none of whole chroma sites is converted with its last column and row repeated. zelcc.steps tells which
    functions are called. Elements of v210 are rows' 48 pixels; how wide an image is, out tells.

    threads convert strips of rows of an image, or some of many images each, with the same results for any number of them. Where
    rows depend on those above, as by error diffusion and in mosaics, an image stays whole.
    """
    path = _path(source, target, matrix, range, location, method)
    if threads == 1 and path.function and isinstance(image, path.image_types) and (out is None or isinstance(out, path.out_types)):
        planes: Any = image
        first = planes if isinstance(planes, np.ndarray) else planes[0] if planes else None
        if isinstance(first, np.ndarray) and first.ndim == path.axes and not (
                first.shape[0] % path.height or first.shape[1] % path.width):
            return cast(Image, path.function(image, out, **extras))
    if threads < 1:
        raise ValueError(f"threads must be 1 or more, not {threads}")
    before, after = _format(source), _format(target)
    how = {"matrix": matrix, "range": range, "location": location, "method": method, **extras}
    given = _arrays.as_planes("image", image, before)
    number_of_images = _arrays.count(given, before)
    if number_of_images is not None:
        return _convert_all(number_of_images, given, source, target, out, threads, **how)
    size = None
    if before.planes[0].width > 1 and out is not None:  # of which elements of the image are several
        first = _arrays.as_planes("out", out, after, True)[0]
        size = first.shape[1] * after.planes[0].width, first.shape[0]
    arrays, (width, height) = _checked("image", given if len(given) > 1 else given[0], before, size)
    result = None if out is None else _checked("out", out, after, (width, height))[0]
    most = _rows_in_cache(path, width, height)
    if threads > 1 or most < height:
        target_planes = tuple(np.zeros(s, after.dtype) for s in after.shapes(width, height)) if result is None else result
        parts = _strips(path, arrays, before, target_planes, after, height, threads, most)
        if len(parts) > 1:
            _convert_parts(parts, source, target, threads, how)
            if out is not None and not isinstance(out, (tuple, list)):
                return cast(Image, out)
            return target_planes if len(target_planes) > 1 else target_planes[0]
    whole = -(-width // path.width) * path.width, -(-height // path.height) * path.height
    is_whole = whole == (width, height)
    if not is_whole:
        arrays = _widened(arrays, before, *whole)
    elif result is not None and len(path.steps) == 1 and path.steps[0].function is None:
        if any(np.shares_memory(plane, other) for plane in result for other in arrays):
            raise ValueError("out shares memory with image")
    if not path.steps:
        final = tuple(plane.copy() for plane in arrays)
    # A result in the memory of the image is written by the last step alone.
    apart = result is None or not any(np.may_share_memory(a, b) for a in arrays for b in result)
    for number, (step, own_extras) in enumerate(zip(path.steps, _shared_out(path, extras))):
        if number > 0 and apart and _is_in_place(step):
            _run(step, arrays, arrays, path.colours, own_extras)
            continue
        is_last = all(apart and _is_in_place(later) for later in path.steps[number + 1:])
        form = _format(step.target)
        own = result is not None and is_last and is_whole
        new = np.zeros if form.planes[0].width > 1 else np.empty  # what is behind the last pixel of an element is none
        final = cast(tuple[Plane, ...], result) if own else tuple(new(s, form.dtype) for s in form.shapes(*whole))
        _run(step, arrays, final, path.colours, own_extras)
        arrays = final
    if not is_whole:
        final = tuple(np.ascontiguousarray(plane[:shape[0], :shape[1]])
                      for plane, shape in zip(final, after.shapes(width, height)))
    if result is not None:
        if result is not final:
            for plane, made in zip(result, final):
                plane[...] = made
        final = result
    if out is not None and not isinstance(out, (tuple, list)):
        return cast(Image, out)
    return final[0] if len(final) == 1 else final
