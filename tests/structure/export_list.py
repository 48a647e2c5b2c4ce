"""The list of exports: src/frame/exports.def."""

import re


def exports(path):
    with open(path) as file:
        return re.findall(r"^ZEL_EXPORT\((\w+),", file.read(), re.MULTILINE)


def exports_by_group(path):
    with open(path) as file:
        return dict(re.findall(r"^ZEL_EXPORT\((\w+), (\w+),", file.read(), re.MULTILINE))
