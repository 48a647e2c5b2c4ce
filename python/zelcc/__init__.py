"""Colour conversion of images in NumPy arrays, with results that are defined to the last bit.

Every function of the library is here by its C name, and `convert` goes from format to format by name.
"""

from . import _native
from ._convert import Format, Image, PlaneForm, Step, convert, formats, planes, steps
from ._frame import from_frame
from ._native import *
from ._native import __version__

__all__ = ["Format", "Image", "PlaneForm", "Step", "__version__", "convert", "formats", "from_frame", "planes", "steps"]
__all__ += _native.__all__
