"""The pictures of the example program, cut and scaled for the pages."""

import pathlib


def make(root: pathlib.Path, directory: pathlib.Path) -> None:
    pass


def placed(pages: dict[str, str]) -> dict[str, str]:
    return pages
