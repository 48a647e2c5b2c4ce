"""Colour conversion of images in NumPy arrays, with results that are defined to the last bit.

Every function of the library is here by its C name, and `convert` goes from format to format by name.
"""

from ._convert import Format as Format
from ._convert import Image as Image
from ._convert import PlaneForm as PlaneForm
from ._convert import Step as Step
from ._convert import convert as convert
from ._convert import formats as formats
from ._convert import planes as planes
from ._convert import steps as steps
from ._native import *
