"""The functions of the library and the formats of their images, as data: read off the public headers and off the names, so that
no list is kept by hand. The converter, the Python package and the documentation are made from it."""
