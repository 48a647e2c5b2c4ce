"""What arrays people have: of other libraries, of many images, of planes that are stacked."""

from __future__ import annotations

from collections.abc import Sequence
from typing import TYPE_CHECKING, Any, cast

import numpy as np
import numpy.typing as npt

if TYPE_CHECKING:
    from ._convert import Format

Plane = npt.NDArray[Any]


def viewed(name: str, given: object, is_written: bool = False) -> Plane:
    """An array over the memory of an object: by its buffer, __array_interface__ or DLPack. A source may be a list of numbers."""
    if isinstance(given, np.ndarray):
        return given
    if hasattr(given, "__dlpack__") and not hasattr(given, "__array_interface__"):
        try:
            found = np.from_dlpack(cast(Any, given))
        except (BufferError, RuntimeError, TypeError, ValueError) as error:
            raise ValueError(f"{name} can't be read where it lies: {error}; it must be in the memory of the processor, "
                             "of a type that NumPy has, and need no gradient") from error
        if not is_written or found.flags.writeable:
            return found
        found = np.asarray(given)  # some versions of NumPy give what they may not write
        if np.shares_memory(found, np.from_dlpack(cast(Any, given))):
            return found
        raise ValueError(f"{name} can't be written, it is read-only")
    if not is_written:
        return np.asarray(given)
    if hasattr(given, "__array_interface__"):
        return np.asarray(given)
    try:
        return np.asarray(memoryview(cast(Any, given)))
    except TypeError:
        raise ValueError(f"{name} must be an array, not {type(given).__name__}") from None


def type_fault(where: str, found: np.dtype[Any], form: Format) -> str:
    fault = f"{where} must be of {form.dtype}, not {found}, for {form.name}"
    if found.newbyteorder("=") == form.dtype:
        return f"{fault}: its bytes are in the other order, and {where}.astype({str(form.dtype)!r}) puts them in this machine's"
    if found.itemsize == form.dtype.itemsize and found.kind in "iu" and form.dtype.kind in "iu":
        return f"{fault}: if its bytes are meant so, give {where}.view({str(form.dtype)!r})"
    return f"{fault}: if its values are meant so, give {where}.astype({str(form.dtype)!r})"


def _has_equal_planes(form: Format) -> bool:
    return len(form.planes) > 1 and all((p.width, p.height, p.depth) == (1, 1, 0) for p in form.planes)


def _is_420(form: Format) -> bool:
    """Of planes that follow each other in rows of luma, as OpenCV has them."""
    sites = [(p.width, p.height, p.depth) for p in form.planes]
    return sites in ([(1, 1, 0), (2, 2, 2)], [(1, 1, 0), (2, 2, 0), (2, 2, 0)])


def _cut(name: str, array: Plane, form: Format, is_written: bool) -> tuple[Plane, ...]:
    """The planes of (..., height * 3 / 2, width)."""
    rows, width = array.shape[-2:]
    if rows % 3 or width % 2:
        raise ValueError(f"{name} must have height * 3 / 2 rows of an even width for {form.name} in one array, not {array.shape}")
    height = rows // 3 * 2
    before, chroma = array.shape[:-2], array[..., height:, :]
    if len(form.planes) == 2:
        parts: tuple[Plane, ...] = (chroma.reshape(*before, height // 2, width // 2, 2),)
    else:
        both = chroma.reshape(*before, 2, height // 2, width // 2)
        parts = both[..., 0, :, :], both[..., 1, :, :]
    if is_written and not all(np.shares_memory(part, array) for part in parts if part.size):
        raise ValueError(f"{name} must have rows without gaps for {form.name} in one array")
    return array[..., :height, :], *parts


def as_planes(name: str, image: object, form: Format, is_written: bool = False) -> tuple[Plane, ...]:
    """The planes of an image or of many, whose first axis is then one more: given in a list, or stacked in an array."""
    if len(form.planes) == 1:
        return (viewed(name, image, is_written),)
    if isinstance(image, (tuple, list)):
        if len(image) != len(form.planes):
            raise ValueError(f"{name} must be a list or tuple of {len(form.planes)} planes for {form.name}, not of {len(image)}")
        return tuple(viewed(f"{name}[{i}]", plane, is_written) for i, plane in enumerate(image))
    array = viewed(name, image, is_written)
    if _has_equal_planes(form) and array.ndim in (3, 4) and array.shape[-3] == len(form.planes):
        return tuple(array[..., i, :, :] for i in range(len(form.planes)))
    if _is_420(form) and array.ndim in (2, 3):
        return _cut(name, array, form, is_written)
    stacked = f", or an array ({len(form.planes)}, height, width)" if _has_equal_planes(form) else \
        ", or an array (height * 3 // 2, width)" if _is_420(form) else ""
    raise ValueError(f"{name} must be a list or tuple of {len(form.planes)} planes for {form.name}{stacked}")


def axes(form: Format) -> int:
    """Of the first plane of one image."""
    return 3 if form.planes[0].depth else 2


def count(planes: Sequence[Plane], form: Format) -> int | None:
    """How many images there are, where they are many in each plane."""
    if any(plane.ndim != (4 if p.depth else 3) for plane, p in zip(planes, form.planes)):
        return None
    if len({len(plane) for plane in planes}) > 1:
        raise ValueError(f"planes are of {', '.join(str(len(plane)) for plane in planes)} images")
    return len(planes[0])
