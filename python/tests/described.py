"""The functions as their docstrings describe them, and arrays for them at the edge of memory."""

import ctypes
import inspect
import mmap
import re
from collections.abc import Callable
from typing import Any

import numpy as np

import zelcc

NAMES = [name for name in dir(zelcc) if name.startswith("zeli")]
GIVEN = {"matrix": np.array([[0.5, 0.25, 0.25, 3], [0, 1, 0, -4], [0.125, 0, 0.75, 0], [0, 0, 0, 1]]), "coeffs": [0.25, 0.5, 0.25],
         "grid": zelcc.zelBayerGRBG}


class Described:
    """A function with the shapes and types that its docstring promises."""

    def __init__(self, name: str) -> None:
        self.name = name
        self.call: Callable[..., Any] = getattr(zelcc, name)
        self.parameters = inspect.signature(self.call).parameters
        lines = self.call.__doc__.splitlines()
        self.images = {}
        for argument in ("source", "out"):
            line = next((line for line in lines if line.startswith(f"{argument}: ")), None)
            if line:
                shapes = re.findall(r"\((?:\(.*?\) // \d|\w+), (?:\(.*?\) // \d|\w+)(?:, \d)?\)", line)
                self.images[argument] = shapes, np.dtype(re.search(r" of (u?int\d+|float\d+)", line)[1]), "planes of" in line
        self.in_place = "out" not in self.images

    def shapes(self, argument: str, width: int, height: int) -> list[tuple[int, ...]]:
        return [eval(shape, {"width": width, "height": height}) for shape in self.images[argument][0]]

    def dtype(self, argument: str) -> np.dtype[Any]:
        return self.images[argument][1]

    def argument(self, argument: str, arrays: list[np.ndarray]) -> Any:
        return arrays if self.images[argument][2] else arrays[0]

    def keywords(self) -> dict[str, Any]:
        found = {name: GIVEN[name] for name in self.parameters if name in GIVEN}
        if "matrix" in found and "_C4R" not in self.name:
            found["matrix"] = found["matrix"][:3]
        return found

    def filled(self, argument: str, width: int, height: int, random: np.random.Generator,
               place: Callable[[tuple[int, ...], Any], np.ndarray]) -> list[np.ndarray]:
        arrays = []
        for shape in self.shapes(argument, width, height):
            array = place(shape, self.dtype(argument))
            array[...] = sample(random, shape, array.dtype)
            arrays.append(array)
        return arrays


def sample(random: np.random.Generator, shape: tuple[int, ...], dtype: np.dtype[Any]) -> np.ndarray:
    if dtype.kind == "f":
        return random.random(shape).astype(dtype)
    limits = np.iinfo(dtype)
    # The reversible transforms have samples of no more bits than their colours.
    return random.integers(max(limits.min, -2000), min(limits.max, 65535), shape, dtype, endpoint=True)


def plain(shape: tuple[int, ...], dtype: Any) -> np.ndarray:
    return np.empty(shape, dtype)


def cropped(shape: tuple[int, ...], dtype: Any) -> np.ndarray:
    """The middle of a larger image."""
    larger = np.zeros((shape[0] + 4, shape[1] + 9, *shape[2:]), dtype)
    return larger[2:-2, 4:-5]


def upward(shape: tuple[int, ...], dtype: Any) -> np.ndarray:
    return cropped(shape, dtype)[::-1]


def field(shape: tuple[int, ...], dtype: Any) -> np.ndarray:
    return cropped((2 * shape[0], *shape[1:]), dtype)[1::2]


PAGE = mmap.PAGESIZE
libc = ctypes.CDLL(None, use_errno=True)
libc.mprotect.argtypes = [ctypes.c_void_p, ctypes.c_size_t, ctypes.c_int]


class Fenced:
    """Arrays that end where memory ends, or begin where it begins: any access beyond ends the program."""

    def __init__(self, at_end: bool) -> None:
        self.at_end = at_end

    def __call__(self, shape: tuple[int, ...], dtype: Any) -> np.ndarray:
        size = int(np.prod(shape)) * np.dtype(dtype).itemsize
        pages = -(-size // PAGE) + 2
        memory = mmap.mmap(-1, pages * PAGE)
        whole = np.frombuffer(memory, np.uint8)
        for page in (0, pages - 1):
            if libc.mprotect(whole.ctypes.data + page * PAGE, PAGE, 0):
                raise OSError(ctypes.get_errno(), "mprotect")
        begin = (pages - 1) * PAGE - size if self.at_end else PAGE
        return whole[begin:begin + size].view(dtype).reshape(shape)
