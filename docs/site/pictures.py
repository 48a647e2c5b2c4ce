"""The pictures: those of the example program, cut and scaled for the pages, and colour bars by the wrong matrix."""

import importlib.machinery
import importlib.util
import pathlib
import subprocess
import tempfile
from typing import NamedTuple

PHOTOGRAPH = pathlib.Path("/usr/share/backgrounds/mate/nature/Dune.jpg")


class Picture(NamedTuple):
    page: str
    heading: str  # it stands behind this line
    name: str
    parts: tuple[str, ...]  # pictures of the program by the ends of their names, side by side
    caption: str
    crop: tuple[int, int, int, int] | None = None  # left, top, width and height, of each
    width: int = 0  # of each part, where it is scaled


DETAIL = (620, 380, 300, 240)
PICTURES = [
    Picture("dithering.md", "# Dithering", "dithers.png", ("4-levels-nearest", "4-levels-bayer", "4-levels-floyd-steinberg"),
            "Four levels: nearest, ordered, error diffusion.", DETAIL),
    Picture("spaces.md", "# Colour spaces", "hues.jpg", ("hue-turned",), "Hues turned in HSV by steps of 60 degrees.", width=1000),
    Picture("recipes.md", "## One field of an interlaced frame", "fields.png", ("fields-detail",),
            "Chroma of an interlaced frame from 4:2:2 to 4:2:0 and back, fields mixed and fields kept apart, enlarged."),
    Picture("recipes.md", "## A display of 16 bits a pixel", "bands.png", ("rgb444-bands",),
            "A sky in 444, low bits cut off and dithered, enlarged."),
    Picture("recipes.md", "## Half the size, in linear light", "half.png", ("half-detail",),
            "Half the size without and with linear light, enlarged."),
]
# One photograph in slices, each by another conversion.
SLICES = ("420-planar", "saturated", "gray-luma", "sepia", "4-levels-floyd-steinberg", "2-levels-stucki")


def program(root: pathlib.Path) -> pathlib.Path:
    """The example program: that of the release build where it has one, otherwise one of its own."""
    for build in (root / "build" / "release", root / "build" / "pictures"):
        path = build / "examples" / "roundtrip"
        if path.exists() or build.name == "pictures":
            break
    if build.name == "pictures":
        subprocess.run(["cmake", "-S", root, "-B", build, "-G", "Ninja", "-DZELCC_EXAMPLES=ON", "-DZELCC_TESTS=OFF"], check=True)
    subprocess.run(["cmake", "--build", build, "--target", "roundtrip"], check=True)
    return path


def beside(images):
    from PIL import Image
    gap = 8 if len(images) > 1 else 0
    result = Image.new("RGB", (sum(i.width + gap for i in images) - gap, images[0].height), "white")
    x = 0
    for image in images:
        result.paste(image, (x, 0))
        x += image.width + gap
    return result


def save_slices(load, path: pathlib.Path) -> None:
    from PIL import Image
    whole = load(SLICES[0])
    width = whole.width // len(SLICES)
    result = Image.new("RGB", whole.size)
    for i, name in enumerate(SLICES):
        result.paste(load(name).crop((i * width, 0, (i + 1) * width, whole.height)), (i * width, 0))
    result = result.crop((0, whole.height // 4, width * len(SLICES), whole.height))
    result.resize((1400, 1400 * result.height // result.width)).save(path, quality=85)


def bars(root: pathlib.Path):
    """Of each mistake its heading, and bars as they were above bars as they become."""
    loader = importlib.machinery.SourceFileLoader("matrices", str(root / "docs" / "matrices"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("matrices", loader))
    loader.exec_module(module)
    for source, reader, _ in module.MISTAKES:
        shapes = []
        for i, rgb in enumerate(module.BARS.values()):
            for row, colour in enumerate((rgb, reader.decode(source.encode(rgb)))):
                shapes.append(f'<rect x="{80 * i}" y="{44 * row}" width="80" height="44" fill="rgb{colour}"/>')
        yield f"### {source.title} read as {reader.title}", ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 640 88" width="640" '
                                                            f'height="88">{"".join(shapes)}</svg>\n')


def make(root: pathlib.Path, directory: pathlib.Path) -> None:
    from PIL import Image
    directory.mkdir()
    for number, (_, drawing) in enumerate(bars(root)):
        (directory / f"bars{number}.svg").write_text(drawing)
    with tempfile.TemporaryDirectory() as made:
        subprocess.run([program(root), PHOTOGRAPH, made], check=True, stdout=subprocess.DEVNULL)

        def load(name: str):
            return Image.open(f"{made}/{PHOTOGRAPH.stem}-{name}.png").convert("RGB")

        for picture in PICTURES:
            images = [load(part) for part in picture.parts]
            if picture.crop:
                x, y, width, height = picture.crop
                images = [image.crop((x, y, x + width, y + height)) for image in images]
            if picture.width:
                images = [image.resize((picture.width, image.height * picture.width // image.width)) for image in images]
            beside(images).save(directory / picture.name, quality=85)
        save_slices(load, directory / "slices.jpg")


def figure(name: str, caption: str, words: str) -> str:
    return f':::{{figure}} /pictures/{name}\n:alt: "{words}"\n\n{caption}\n:::\n'


def placed(root: pathlib.Path, pages: dict[str, str]) -> dict[str, str]:
    """The pages with the pictures behind their headings."""
    result = dict(pages)
    figures = [(p.page, p.heading, figure(p.name, p.caption, p.caption.rstrip("."))) for p in PICTURES]
    slices = figure("slices.jpg", "One photograph: decoded from 4:2:0, saturated, gray, sepia, four levels and two.",
                    "A photograph in six slices, each by another conversion")
    figures.append(("index.md", "# zelCC", slices))
    for number, (heading, _) in enumerate(bars(root)):
        drawing = figure(f"bars{number}.svg", "Above as it was, below as it becomes.", "Colour bars, right and wrong")
        figures.append(("matrices.md", heading, drawing))
    for page, heading, text in figures:
        if f"{heading}\n" not in result[page]:
            raise ValueError(f"{page} has no heading {heading}")
        before, after = result[page].split(f"{heading}\n", 1)
        result[page] = f"{before}{heading}\n\n{text}{after}"
    return result
