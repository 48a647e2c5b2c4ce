"""recipes.py SOURCE LIBRARY-DIRECTORY [--update] [--opencv] PAGE...: the recipes of the pages compile as C, each in a function of its
own, and print what stands below them. With --opencv those in C++ instead, which are whole programs and use OpenCV. The compilers are CC
and CXX with CFLAGS."""

import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(c prelude|c|cpp|text)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
SEPARATOR = "---8<---\n"
OPENCV = ["-isystem/usr/include/opencv4", "-lopencv_core"]


def recipes_of(page, language):
    """The recipes in a language, each with what stands below it."""
    blocks = [(match[1], match[2]) for match in BLOCK.finditer(page)]
    return [(text, following[1] if following[0] == "text" else None)
            for (kind, text), following in zip(blocks, blocks[1:] + [("", "")]) if kind == language]


def program_of(page):
    lines = [match[2] for match in BLOCK.finditer(page) if match[1] == "c prelude"]
    recipes = [text for text, _ in recipes_of(page, "c")]
    lines += [f"static void recipe{i}(void) {{\n{text}}}\n" for i, text in enumerate(recipes)]
    lines += ["int main(void) {\n", *(f'    recipe{i}();\n    printf("{SEPARATOR[:-1]}\\n");\n' for i in range(len(recipes))), "}\n"]
    return "".join(lines)


def printed_by(source, root, libraries, suffix, compiler, options):
    with tempfile.TemporaryDirectory() as directory:
        path = pathlib.Path(directory, f"recipes{suffix}")
        path.write_text(source)
        command = [*compiler, "-O1", "-Wall", "-Wextra", "-Werror", f"-I{root}/include", str(path)]
        command += ["-o", f"{directory}/recipes", f"-L{libraries}", f"-L{libraries}/video", f"-L{libraries}/zelcore", "-lzelcc", "-lzelvideo", "-lzelcore",
                    f"-Wl,-rpath,{libraries}:{libraries}/video:{libraries}/zelcore", *options]
        subprocess.run(command, check=True)
        return subprocess.run([f"{directory}/recipes"], stdout=subprocess.PIPE, text=True, check=True).stdout


def outputs_of(page, language, root, libraries):
    flags = shlex.split(os.environ.get("CFLAGS", ""))
    if language == "cpp":
        compiler = [*shlex.split(os.environ.get("CXX") or "c++"), *flags, "-std=c++20"]
        with tempfile.TemporaryDirectory() as directory:  # a linker that is root's would put its file in the place of /dev/null
            probe = subprocess.run([*compiler, "-x", "c++", "-", "-o", f"{directory}/probe", *OPENCV], text=True, capture_output=True,
                                   input="#include <opencv2/core.hpp>\nint main() { cv::Mat().release(); }\n")
        if probe.returncode:
            print("Skipped: the recipes with OpenCV, for its core is not there for this compiler")
            sys.exit(77)
        return [printed_by(text, root, libraries, ".cpp", compiler, OPENCV) for text, _ in recipes_of(page, "cpp")]
    compiler = [*shlex.split(os.environ.get("CC") or "cc"), *flags, "-std=c99"]
    return printed_by(program_of(page), root, libraries, ".c", compiler, []).split(SEPARATOR)[:-1]


def updated(page, language, outputs):
    """The page with what the recipes print."""
    rest = iter(outputs)
    block = output = ""

    def replaced(match):
        nonlocal block, output
        if match[1] != "text":
            block = match[1]
        if match[1] == language:
            output = next(rest)
        return f"```text\n{output}```" if match[1] == "text" and block == language else match[0]

    return BLOCK.sub(replaced, page)


root, libraries, *pages = sys.argv[1:]
options = [page for page in pages if page.startswith("--")]
language = "cpp" if "--opencv" in options else "c"
faults = checked = 0
for name in pages:
    if name in options:
        continue
    page = pathlib.Path(name).read_text()
    outputs = outputs_of(page, language, root, libraries)
    if "--update" in options:
        pathlib.Path(name).write_text(updated(page, language, outputs))
    for number, (output, (_, wanted)) in enumerate(zip(outputs, recipes_of(page, language), strict=True), 1):
        checked += 1
        if output != wanted:
            print(f"{name}: recipe {number} prints\n{output}instead of\n{wanted}")
            faults += 1
print(f"{checked} recipes, {faults} of them print something else")
sys.exit(1 if faults or not checked else 0)
