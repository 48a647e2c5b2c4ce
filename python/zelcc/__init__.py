"""Colour conversion of images in NumPy arrays, with results that are defined to the last bit.

Every function of the library is here by its C name, and `convert` goes from format to format by name.
"""

from ._convert import Format, Image, convert, formats, planes, steps
from ._native import *

__all__ = [name for name in globals() if not name.startswith("_")]
