"""The recipes of docs/python.md, each in a process of its own beside a clip, with the engine that it is for. One that isn't installed is
named and left out."""

import importlib.util
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import numpy as np

import zelcc

PAGE = pathlib.Path(__file__).resolve().parents[2] / "docs" / "python.md"
RECIPES = dict(re.findall(r"^```python recipe: (.*?)\n(.*?)^```$", PAGE.read_text(), re.MULTILINE | re.DOTALL))
WIDTH, HEIGHT, FRAMES = 96, 64, 5


def exact_rgb(planes):
    """Limited BT.709 in real numbers, chroma repeated."""
    y, cb, cr = (plane.astype(float) for plane in planes)
    luma = (y - 16) / 219
    blue, red = ((chroma.repeat(2, 0).repeat(2, 1) - 128) / 224 for chroma in (cb, cr))
    kr, kb = 0.2126, 0.0722
    r, b = luma + 2 * (1 - kr) * red, luma + 2 * (1 - kb) * blue
    rgb = np.stack([r, (luma - kr * r - kb * b) / (1 - kr - kb), b], axis=-1)
    return np.clip(255 * rgb, 0, 255)


class Recipes(unittest.TestCase):
    def run_recipe(self, title, *results):
        code = RECIPES[title]
        missing = [name for name in re.findall(r"^import (\w+)", code, re.MULTILINE) if importlib.util.find_spec(name) is None]
        if missing:
            print(f"Skipped: {title}, for {', '.join(missing)} is not installed")
            self.skipTest("not installed")
        with tempfile.TemporaryDirectory() as folder:
            clip = pathlib.Path(folder, "clip.mp4")
            subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=size={WIDTH}x{HEIGHT}:rate=25", "-frames:v",
                            str(FRAMES), "-pix_fmt", "yuv420p", "-c:v", "mpeg4", "-q:v", "2", str(clip)], check=True)
            raw = subprocess.run(["ffmpeg", "-v", "error", "-i", str(clip), "-f", "rawvideo", "-"], check=True, capture_output=True).stdout
            keep = "".join(f"\nnumpy.save({name!r}, numpy.asarray({name}))" for name in results)
            program = pathlib.Path(folder, "recipe.py")
            program.write_text(f"import numpy\n{code}{keep}\n")
            subprocess.run([sys.executable, "-B", str(program)], cwd=folder, check=True, env=dict(os.environ, OMP_NUM_THREADS="1"))
            frames = np.frombuffer(raw, np.uint8).reshape(FRAMES, -1)
            self.frames = np.stack([exact_rgb(zelcc.planes(frame, "yuv420p", WIDTH, HEIGHT)) for frame in frames])
            return [np.load(pathlib.Path(folder, f"{name}.npy")) for name in results]

    def test_tensors(self):
        tensors, = self.run_recipe("a clip to tensors of PyTorch", "tensors")
        self.assertEqual(tensors.shape, (FRAMES, 3, HEIGHT, WIDTH))
        self.assertLess(np.abs(tensors.transpose(0, 2, 3, 1) - self.frames).max(), 1.5)

    def test_loader(self):
        batch, = self.run_recipe("clips by workers of a DataLoader", "batch")
        self.assertEqual(batch.shape, (2, FRAMES, HEIGHT, WIDTH, 3))
        self.assertLess(np.abs(batch - self.frames).max(), 1.5)

    def test_dask(self):
        rgb, gray, means = self.run_recipe("blocks of dask", "rgb", "gray", "means")
        np.testing.assert_array_equal(gray, zelcc.convert(rgb, "rgb24", "gray"))
        np.testing.assert_allclose(means, zelcc.convert(rgb, "rgb24", "lab24").mean(axis=(1, 2)))


if __name__ == "__main__":
    unittest.main()
