"""names.py DIRECTORY: a type of a level's namespace has one definition among the headers there. Two of one name in two families
would be two meanings of it, and sources that include different ones would break the rule of one definition unseen. The vector
layer is left out: its files are alternatives of each other."""

import collections
import pathlib
import re
import sys

from verdict import conclude

DEFINITION = re.compile(r"(?:(?:struct|class|enum class) (\w+)(?: final)?(?: :.*)? ?\{|using (\w+) = )")


def types_in(text):
    """The types that are defined in namespaces, by their whole names."""
    scope = []
    for line in text.splitlines():
        line = re.sub(r"^template <.*?> (?=struct|class|using)", "", line)
        if opened := re.match(r"(?:inline )?namespace ([\w:]+) \{$", line):
            scope.append(opened[1])
        elif re.match(r"\}  // namespace", line):
            scope.pop()
        elif defined := DEFINITION.match(line):
            yield "::".join([*scope, defined[1] or defined[2]])


directory = pathlib.Path(sys.argv[1])
places = collections.defaultdict(set)
for header in sorted(directory.rglob("*.h")):
    name = header.relative_to(directory).as_posix()
    if not name.startswith("simd/"):
        for defined in types_in(header.read_text()):
            places[defined].add(name)
faults = [f"{name} is defined in {' and in '.join(sorted(files))}" for name, files in places.items() if len(files) > 1]
if len(places) < 100:
    faults.append(f"only {len(places)} types were found")
conclude(faults, f"{len(places)} types")
