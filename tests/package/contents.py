"""contents.py INCLUDE PROCESSOR PACKAGES...: Debian packages have the same files on every processor, each for the one that they are
of, under the names that programs look for, and they ask for the libraries that these files need."""

import pathlib
import re
import subprocess
import sys
import tempfile

MACHINES = {  # by CMake's name: Debian's, that of its folders, and that of ELF files
    "x86_64": ("amd64", "x86_64-linux-gnu", "Advanced Micro Devices X86-64"),
    "aarch64": ("arm64", "aarch64-linux-gnu", "AArch64"),
}
LIBRARIES = ("zelcc", "zelcore", "zelvideo")
C, CPP = {"libc6"}, {"libc6", "libgcc-s1", "libstdc++6"}


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def expected(headers, folder, version):
    """What each package has besides its documents, and what it depends on; no files where they are too many to be named."""
    shared = {f"{folder}/lib{name}.so.{end}" for name in LIBRARIES for end in (version.split(".")[0], version)}
    development = {f"{folder}/lib{name}.{end}" for name in LIBRARIES for end in ("a", "so")}
    development |= {f"{folder}/pkgconfig/{name}.pc" for name in ("zelcc", "zelvideo")}
    development |= {f"{folder}/cmake/zelcc/zelcc{name}.cmake" for name in ("Config", "Config-release", "ConfigVersion")}
    development |= {f"usr/include/{name}" for name in headers} | {"usr/include/zelcore.h"}
    program = {"usr/bin/zelcc", "usr/share/man/man1/zelcc.1.gz", "usr/share/bash-completion/completions/zelcc"}
    return {
        "libzelcc8": (shared, C),
        "libzelcc-dev": (development, {"libzelcc8"}),
        "zelcc": (program, CPP | {"libjpeg62-turbo", "libpng16-16", "libzelcc8"}),
        "gstreamer1.0-zelcc": ({f"{folder}/gstreamer-1.0/libgstzelcc.so"}, None),
        "python3-zelcc": (None, None),
    }


def faults_of(name, fields, root, machine, files, needs):
    found = {str(path.relative_to(root)) for path in root.rglob("*") if path.is_symlink() or not path.is_dir()}
    found = {path for path in found if not path.startswith(f"usr/share/doc/{name}/")}
    if files is not None:
        yield from (f"{path} is missing" for path in sorted(files - found))
        yield from (f"{path} is not expected" for path in sorted(found - files))
    asked = dict(re.findall(r"([\w.+-]+)(?: \(([^)]*)\))?", fields["Depends"]))
    if needs is not None and set(asked) != needs:
        yield f"it depends on {sorted(asked)}, not on {sorted(needs)}"
    for path in sorted(path for path in found if re.search(r"\.(so|a)\b|/bin/", path) and not (root / path).is_symlink()):
        machines = set(re.findall(r"Machine: +(.*)", output("readelf", "--file-header", root / path)))
        if machines != {machine}:
            yield f"{path} is of {machines}"
        if path.endswith(".a"):
            continue
        if ".symtab" in output("readelf", "--section-headers", "--wide", root / path):
            yield f"{path} is not stripped"
        dynamic = output("readelf", "--dynamic", "--version-info", "--wide", root / path)
        soname = re.findall(r"SONAME.*\[(.*)\]", dynamic)
        if name == "libzelcc8" and (len(soname) != 1 or not (root / path).with_name(soname[0]).is_symlink()):
            yield f"{path} has the soname {soname}"
        if re.search("RPATH|RUNPATH", dynamic):
            yield f"{path} looks for libraries in a folder of its own"
        newest = max((tuple(map(int, v.split("."))) for v in re.findall(r"GLIBC_([\d.]+)", dynamic)), default=(0,))
        least = tuple(map(int, re.findall(r"\d+", asked.get("libc6", ""))))
        if "libc6" in asked and newest > least:
            yield f"{path} needs version {newest} of the C library, and {least} is asked for"


include, (architecture, triplet, machine) = pathlib.Path(sys.argv[1]), MACHINES[sys.argv[2]]
headers = {str(path.relative_to(include)) for path in include.rglob("*.h")}
faults, seen = [], set()
for package in sys.argv[3:]:
    fields = dict(re.findall(r"^([\w-]+): (.*)$", output("dpkg-deb", "-f", package), re.MULTILINE))
    name = fields["Package"]
    seen.add(name)
    files, needs = expected(headers, f"usr/lib/{triplet}", fields["Version"])[name]
    with tempfile.TemporaryDirectory() as directory:
        output("dpkg-deb", "-x", package, directory)
        faults += [f"{name}: {fault}" for fault in faults_of(name, fields, pathlib.Path(directory), machine, files, needs)]
    if fields["Architecture"] != architecture:
        faults.append(f"{name} is of the architecture {fields['Architecture']}")
faults += [f"there is no package {name}" for name in ("libzelcc8", "libzelcc-dev", "zelcc") if name not in seen]
print("\n".join(faults) or f"{len(seen)} packages of {architecture}")
sys.exit(1 if faults else 0)
