#!/usr/bin/python3 -B
"""try.py SOURCE PACKAGE: the page "Try it" of the site, which is built for this, with the package for JavaScript, in Chromium: a state by
its address, another conversion, the slider, the difference, planes, the pixel by keys, a picture of the reader's, and files of frames. Then "Run it" in the
entries of functions. --show FOLDER leaves pictures of the page there."""

import functools
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "browser"))
import chromium  # noqa: E402
from chromium import NARROW, WIDE  # noqa: E402

source, package = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
show = pathlib.Path(sys.argv[4]) if sys.argv[3:4] == ["--show"] else None
chromium.need("the page Try it", {"/usr/bin/sphinx-build": "python3-sphinx", "/usr/lib/python3/dist-packages/furo": "furo",
                                  "/usr/lib/python3/dist-packages/myst_parser": "python3-myst-parser"})
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402
from selenium.webdriver.support.ui import Select, WebDriverWait  # noqa: E402

faults = []


def expect(what, holds):
    if not holds:
        faults.append(what)


def text(name):
    return browser.find_element(By.ID, f"try-{name}").text


def choose(name, value):
    Select(browser.find_element(By.ID, f"try-{name}")).select_by_value(value)


def compiles(what):
    """The calls of C that the page shows."""
    code = f'#include <stddef.h>\n#include "zelcc.h"\n#include "zelvideo.h"\nvoid chain(void);\nvoid chain(void) {{\n{text("c")}\n}}\n'
    made = subprocess.run(["gcc", "-std=c99", "-Wall", "-Wextra", "-pedantic", "-Werror", "-fsyntax-only", f"-I{source / 'include'}", "-xc", "-"], input=code,
                          capture_output=True, text=True)
    expect(f"{what} is no C: {made.stderr}{code}", made.returncode == 0 and "(" in text("c"))


def take(name, content):
    path = pathlib.Path(folder, name)
    path.write_bytes(content)
    before = text("figures")
    browser.find_element(By.ID, "try-file").send_keys(str(path))
    WebDriverWait(browser, 20).until(lambda _: text("figures") != before)


def fill(name, value):
    before = text("figures")
    field = browser.find_element(By.ID, f"try-{name}")
    browser.execute_script("arguments[0].value = arguments[1]; arguments[0].dispatchEvent(new Event('change'))", field, str(value))
    WebDriverWait(browser, 20).until(lambda _: text("figures") != before)


def pixels():
    """Of the canvas: its size and the sum of its bytes."""
    return browser.execute_script("""const c = document.getElementById('try-canvas');
        const d = c.getContext('2d').getImageData(0, 0, c.width, c.height).data;
        return [c.width, c.height, d.reduce((sum, byte) => sum + byte, 0)];""")


def look(size, scheme, name):
    chromium.screen(browser, size, scheme)
    wider = browser.execute_script("return document.documentElement.scrollWidth - document.documentElement.clientWidth")
    expect(f"the page is {wider} pixels wider than the screen of {size[0]}", wider <= 0)
    if show:
        show.mkdir(parents=True, exist_ok=True)
        browser.save_screenshot(str(show / f"{name}.png"))


with tempfile.TemporaryDirectory() as folder:
    site = pathlib.Path(folder, "site")
    subprocess.run([source / "docs" / "site" / "build", "--without-pictures", f"--package={package}", site], check=True, stdout=subprocess.DEVNULL)
    with chromium.served(functools.partial(chromium.Handler, directory=site)) as address, chromium.started() as browser:
        browser.get(f"{address}/try.html#to=p010le&matrix=2020")
        WebDriverWait(browser, 60).until(lambda _: "PSNR" in text("figures"))
        expect(f"the address doesn't choose: {text('figures')}", text("figures").startswith("rgba → p010le → rgba: PSNR"))
        expect(f"no matrix in the line of Python: {text('python')}", 'convert(image, "rgba", "p010le", matrix="2020")' in text("python"))
        expect(f"no call of the video library: {text('c')}", "zelvConvert" in text("c"))

        expect("a picture is asked for its size", not browser.find_element(By.ID, "try-width").is_displayed())
        compiles("a step by the video library")
        choose("view", "planes")
        luma = browser.execute_script("""const c = document.getElementById('try-canvas'), d = c.getContext('2d').getImageData(0, 0, 480, 320).data;
            return [d[4 * 80 * 480], d[4 * (80 * 480 + 160)]];""")
        expect(f"red and green of the page's own picture have other luma: {luma}", 60 < luma[0] < luma[1] < 200)
        choose("view", "slider")
        choose("matrix", "601")
        choose("to", "yuv420p")
        compiles("a call with planes in another order")
        expect(f"no calls of functions: {text('c')}", "zeliRGBToYCrCb420_8u_AC4P3R" in text("c"))
        expect(f"the address stays: {browser.current_url}", browser.current_url.endswith("#to=yuv420p"))
        half = pixels()
        browser.execute_script("const s = document.getElementById('try-slider'); s.value = 0; s.dispatchEvent(new Event('input'));")
        expect("the slider shows no more of the result", pixels() != half)
        choose("view", "difference")
        expect("a difference is as light as a picture", pixels()[2] < half[2])
        choose("view", "planes")
        expect(f"planes of 4:2:0 are not below each other: {pixels()}", pixels()[1] == 320 + 160 + 160 + 3 * 4)

        choose("view", "slider")
        browser.find_element(By.ID, "try-stage").send_keys(Keys.ARROW_RIGHT, Keys.SHIFT, Keys.ARROW_DOWN)
        expect(f"keys don't move the pixel: {text('pixel')}", text("pixel").startswith("pixel 1, 10\nsource "))
        samples = text("pixel").splitlines()[2]
        expect(f"no samples of the planes: {samples}", samples.startswith("yuv420p  Y ") and "Cb" in samples and "Cr" in samples)

        choose("to", "rgb24")
        expect(f"RGB is lossless: {text('figures')}", "every byte as before" in text("figures"))
        choose("to", "nv12")
        choose("to", "v210")
        choose("view", "planes")
        expect(f"v210 has no planes of its own samples: {pixels()}", pixels()[1] == 3 * (320 + 4))
        expect(f"v210 has no group of bytes: {text('pixel')}", re.search(r"v210 +bytes( \w\w){16}$", text("pixel"), re.MULTILINE))
        choose("to", "nv12")
        choose("view", "slider")
        choose("then", "rgb565le")
        expect(f"a chain is refused: {text('figures')}", text("figures").startswith("rgba → nv12 → rgb565le → rgba: PSNR"))
        word = re.search(r"rgb565le +bytes (\w\w) (\w\w)$", text("pixel"), re.MULTILINE)
        result = [int(byte) for byte in text("pixel").splitlines()[-1].split()[1:4]]
        bits = int(word[2] + word[1], 16) if word else 0
        expect(f"the word isn't the pixel's: {text('pixel')}", [bits >> 11, bits >> 5 & 63, bits & 31] == [result[0] >> 3, result[1] >> 2, result[2] >> 3])
        expect(f"the shell goes another way: {text('shell')}", "--from nv12 --size 480x320 step1.raw step2.raw --to rgb565le" in text("shell"))
        choose("method", "dither")
        expect(f"the program's other dither is not told: {text('shell')}", text("shell").splitlines()[0].startswith("# the program dithers"))
        expect(f"no dither by one function: {text('shell')}", "step2.raw --to rgb565le --matrix 601 --dither bayer" in text("shell"))
        choose("method", "filter")
        expect(f"a step is said to have a filter that it lacks: {text('python')}", "filter" in text("python").splitlines()[0]
               and "filter" not in text("python").splitlines()[2])
        expect(f"no filter in the shell: {text('shell')}", text("shell").splitlines()[0].endswith("--to nv12 --matrix 601 --filter"))
        choose("method", "")
        choose("from", "yuyv422")
        expect(f"the picture isn't the format's from which is chosen: {text('figures')}", text("figures").startswith("yuyv422 → nv12 → rgb565le → yuyv422: PSNR"))
        compiles("a chain from another format")
        choose("from", "rgba")

        for size, name in ((WIDE, "wide"), (NARROW, "narrow")):
            for scheme in ("light", "dark"):
                look(size, scheme, f"{name}-{scheme}")

        picture = pathlib.Path(folder, "picture.ppm.png")
        browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})
        browser.save_screenshot(str(picture))
        browser.find_element(By.ID, "try-file").send_keys(str(picture))
        WebDriverWait(browser, 20).until(lambda _: " 480 x 320 " not in text("figures"))
        expect(f"a picture of the reader's isn't taken: {text('figures')}", "PSNR" in text("figures") and pixels()[0] == 720)

        def frame(luma, cb, cr):
            return bytes([luma] * 64 + [cb] * 16 + [cr] * 16)

        choose("to", "rgba")
        choose("then", "")
        take("clip-8x8.yuv", frame(81, 90, 240) + frame(145, 54, 34))
        expect(f"frames aren't taken by their name: {text('figures')}", text("figures").startswith("yuv420p → rgba → yuv420p: frame 1 of 2, "))
        expect(f"no red pixel with its bytes: {text('pixel')}",
               "Y 81 (bytes 51) | Cb 90 (bytes 5a) | Cr 240 (bytes f0)" in text("pixel") and re.search(r"source +254 0 0 255$", text("pixel"), re.MULTILINE))
        expect(f"the shell has another source: {text('shell')}", text("shell").startswith("zelcc convert --from yuv420p --size 8x8 clip-8x8.yuv "))
        compiles("a call from planes")
        expect("frames are not asked for their size", browser.find_element(By.ID, "try-width").is_displayed())
        fill("frame", 2)
        expect(f"the second frame isn't green: {text('pixel')}", "Y 145 " in text("pixel"))
        expect(f"the address lacks what was chosen: {browser.current_url}", "from=yuv420p&width=8&height=8&frame=2&to=rgba" in browser.current_url)
        fill("width", 800)
        expect(f"a frame beyond the file is not refused: {text('figures')}", "192 bytes, and a frame of yuv420p of this size 9600" in text("figures"))
        take("deep.y4m", b"YUV4MPEG2 W4 H2 F25:1 C422p10 XCOLORRANGE=FULL\nFRAME\n" + b"\x04\x01" * 8 + b"\x00\x02" * 8)
        expect(f"Y4M isn't taken by its header: {text('figures')}", text("figures").startswith("yuv422p10le → rgba → yuv422p10le: frame 1 of 1, "))
        expect(f"no words with their bytes: {text('pixel')}", "Y 260 (bytes 04 01) | Cb 512 (bytes 00 02)" in text("pixel"))
        expect(f"no range of the header: {text('python')}", 'range="full"' in text("python"))
        take("noise", bytes(100))
        expect(f"what no name tells is not what was chosen, or other samples are said to be the same: {text('figures')}",
               "frame 1 of 3, every pixel as before, though not every sample" in text("figures"))
        for size, name in ((WIDE, "frame-wide"), (NARROW, "frame-narrow")):
            look(size, "light", name)
        for page, name, results in (("lumachroma", "zeliRGBToYCbCr_8u_C3R", "82 90 240"), ("lumachroma", "zeliRGBToYCbCr420_8u_C3P3R", "Cr: 34"),
                                    ("intensity", "zeliColorTwist32f_8u_C3R", "R G B: "), ("rawsensor", "zeliCFAToRGB_8u_C1C3R", "R G B: ")):
            browser.get("about:blank")
            browser.get(f"{address}/reference/{page}.html#c.{name}")
            button = browser.find_element(By.CSS_SELECTOR, f"button[aria-label='Run {name}']")
            browser.execute_script("arguments[0].click()", button)
            WebDriverWait(browser, 20).until(lambda _: browser.find_elements(By.CSS_SELECTOR, ".run-output"))
            output = browser.find_element(By.CSS_SELECTOR, ".run-output").text
            expect(f"{name} run gives {output}", results in output)
            look(WIDE, "light", name)
        field = browser.find_element(By.CSS_SELECTOR, ".run input")
        browser.execute_script("arguments[0].value = '7'; arguments[0].dispatchEvent(new Event('input'))", field)
        expect("samples that are changed change nothing", browser.find_element(By.CSS_SELECTOR, ".run-output").text != output)
        for message in chromium.complaints(browser):
            expect(f"the console says {message}", False)

print("the page Try it:", *(faults or ["all as meant"]), sep="\n")
sys.exit(bool(faults))
