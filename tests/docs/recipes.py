"""recipes.py SOURCE LIBRARY-DIRECTORY [--update] PAGE...: the recipes of the pages compile as C, each in a function of its own, and
print what stands below them. The compiler is CC with CFLAGS."""

import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"^```(c prelude|c|text)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
SEPARATOR = "---8<---\n"


def program_of(page):
    blocks = [(match[1], match[2]) for match in BLOCK.finditer(page)]
    recipes = [text for kind, text in blocks if kind == "c"]
    expected = [following[1] if following[0] == "text" else None
                for (kind, _), following in zip(blocks, blocks[1:] + [("", "")]) if kind == "c"]
    lines = [text for kind, text in blocks if kind == "c prelude"]
    lines += [f"static void recipe{i}(void) {{\n{text}}}\n" for i, text in enumerate(recipes)]
    lines += ["int main(void) {\n", *(f'    recipe{i}();\n    printf("{SEPARATOR[:-1]}\\n");\n' for i in range(len(recipes))), "}\n"]
    return "".join(lines), expected


def printed_by(source, root, libraries):
    with tempfile.TemporaryDirectory() as directory:
        path = pathlib.Path(directory, "recipes.c")
        path.write_text(source)
        compiler = [*shlex.split(os.environ.get("CC") or "cc"), *shlex.split(os.environ.get("CFLAGS", ""))]
        command = [*compiler, "-std=c99", "-O1", "-Wall", "-Wextra", "-Werror", f"-I{root}/include", str(path)]
        command += ["-o", f"{directory}/recipes", f"-L{libraries}", f"-L{libraries}/video", f"-L{libraries}/zelcore", "-lzelcc", "-lzelvideo", "-lzelcore",
                    f"-Wl,-rpath,{libraries}:{libraries}/video:{libraries}/zelcore"]
        subprocess.run(command, check=True)
        run = subprocess.run([f"{directory}/recipes"], stdout=subprocess.PIPE, text=True, check=True)
        return run.stdout.split(SEPARATOR)[:-1]


def updated(page, outputs):
    """The page with what the recipes print."""
    rest = iter(outputs)
    output = ""

    def replaced(match):
        nonlocal output
        if match[1] == "c":
            output = next(rest)
        return f"```text\n{output}```" if match[1] == "text" else match[0]

    return BLOCK.sub(replaced, page)


root, libraries, *pages = sys.argv[1:]
faults = checked = 0
for name in pages:
    if name == "--update":
        continue
    page = pathlib.Path(name).read_text()
    program, expected = program_of(page)
    outputs = printed_by(program, root, libraries)
    if "--update" in pages:
        pathlib.Path(name).write_text(updated(page, outputs))
    for number, (output, wanted) in enumerate(zip(outputs, expected, strict=True), 1):
        checked += 1
        if output != wanted:
            print(f"{name}: recipe {number} prints\n{output}instead of\n{wanted}")
            faults += 1
print(f"{checked} recipes, {faults} of them print something else")
sys.exit(1 if faults or not checked else 0)
