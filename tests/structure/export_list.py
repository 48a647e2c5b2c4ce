"""The list of exports: src/frame/exports.def."""

import re


def exports(path):
    with open(path) as file:
        return re.findall(r"^ZEL_EXPORT\((\w+),", file.read(), re.MULTILINE)
